// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Finds the files that the user means.

#include <import_explorer/source_file.hpp>

#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace explorer {

/// Scripts are recognised by it.
inline constexpr std::string_view scriptSuffix = ".import";

/// Which files of a folder are meant.
enum class FileFilter {
    Scripts,
    AllFiles,
};

/// A file to read, or why something that may be meant is not read.
using FoundFile = std::variant<std::string, LoadFailure>;

/// The files at \p paths, in that order; a folder stands for the files in and below it, sorted by
/// name. Within a folder, hidden files and folders are left out. Symbolic links are not followed,
/// since they can lead in circles: each that leads to a folder, or would be read as a file, is a
/// failure.
std::vector<FoundFile> findFiles(std::vector<std::string> const& paths, FileFilter filter);

} // namespace explorer
