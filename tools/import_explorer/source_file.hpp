// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// A text file in UTF-8 with its lines and positions in it.

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace explorer {

/// A range of text within one line.
struct SourceRange {
    /// Byte offset of the first byte, from the beginning of the file.
    std::size_t begin = 0;
    /// Byte offset after the last byte.
    std::size_t end = 0;
    /// Line number, counted from 1.
    std::size_t line = 1;
    /// Column of the first character in its line, counted in characters from 1.
    std::size_t column = 1;
};

/// A file with its text. Views of its text are valid until it is moved or destroyed.
class SourceFile {
  public:
    /// \param text must be valid UTF-8.
    SourceFile(std::string fileName, std::string text);

    std::string const& name() const noexcept { return fileName; }

    /// Size in bytes.
    std::size_t size() const noexcept { return contents.size(); }

    std::size_t numberOfLines() const noexcept { return lineBegins.size(); }

    /// Byte offset of the beginning of line \p number, counted from 1. A byte order mark does not
    /// belong to the first line.
    std::size_t lineBegin(std::size_t number) const { return lineBegins.at(number - 1); }

    /// Line \p number, counted from 1, without its line end (LF, CR LF or CR).
    std::string_view line(std::size_t number) const;

    /// The whole text, including a byte order mark.
    std::string_view text() const noexcept { return contents; }

    std::string_view text(SourceRange const& range) const {
        return std::string_view(contents).substr(range.begin, range.end - range.begin);
    }

  private:
    std::string fileName;
    std::string contents;
    std::vector<std::size_t> lineBegins;
};

/// Why a file or folder was not read.
struct LoadFailure {
    /// The file or folder.
    std::string name;
    /// The reason in words.
    std::string reason;
    /// Byte offset of the first invalid byte, if that is the reason.
    std::optional<std::size_t> offset;
};

/// Creates a file from \p bytes. Fails unless they are valid UTF-8 without NUL.
std::variant<SourceFile, LoadFailure> makeSourceFile(std::string name, std::string bytes);

/// The path of standard input.
inline constexpr std::string_view standardInputPath = "-";

/// Reads the file at \p path, or standard input.
std::variant<SourceFile, LoadFailure> loadSourceFile(std::string const& path);

} // namespace explorer
