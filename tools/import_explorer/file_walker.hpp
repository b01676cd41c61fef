// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Finds the files to read.

#include <import_explorer/source_file.hpp>

#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace explorer {

/// Files with this suffix are scripts.
inline constexpr std::string_view scriptSuffix = ".import";

/// Which files in a folder to read.
enum class FileFilter {
    Scripts,
    AllFiles,
};

/// The path of a file to read, or why something cannot be read.
using FoundFile = std::variant<std::string, LoadFailure>;

/// Returns the files at \p paths, in that order. A folder stands for all files in and below it,
/// sorted by name, without hidden files and folders. Symbolic links in folders are not followed,
/// because they can form cycles: a link to a folder, or one that matches \p filter, is reported as
/// a failure.
std::vector<FoundFile> findFiles(std::vector<std::string> const& paths, FileFilter filter);

} // namespace explorer
