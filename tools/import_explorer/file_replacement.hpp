// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Replaces the contents of a file atomically.

#include <optional>
#include <string>
#include <string_view>

namespace explorer {

/// Atomically replaces the contents of the file at \p path by \p contents if they still equal
/// \p expected. Readers see either the old or the new contents, even after a crash. Keeps mode
/// and owner, and follows symbolic links. Refuses anything but a regular file, a file that is not
/// writable, and a file with other hard links, which would keep the old contents.
///
/// \returns why the file was not replaced, or nothing on success.
std::optional<std::string> replaceFile(std::string const& path, std::string_view expected,
                                       std::string_view contents);

} // namespace explorer
