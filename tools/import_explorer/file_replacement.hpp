// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Replaces the contents of a file at once.

#include <optional>
#include <string>
#include <string_view>

namespace explorer {

/// Replaces the contents of the file at \p path by \p contents if it still has the contents
/// \p expected: whoever reads it sees one or the other, whole, even after a crash. Mode and owner
/// stay; a symbolic link stays a link to the file. Refused are what is no regular file, a file with
/// other hard links, which would keep the old contents, and one that is not writable.
///
/// \returns in words why the file was not replaced, or nothing
std::optional<std::string> replaceFile(std::string const& path, std::string_view expected,
                                       std::string_view contents);

} // namespace explorer
