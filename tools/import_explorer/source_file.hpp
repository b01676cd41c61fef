// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// A text file as a source of commands: its UTF-8 text, its lines, and places in it.

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace explorer {

/// A stretch of text within one line.
struct SourceRange {
    /// Byte offset of the first byte, from the beginning of the file.
    std::size_t begin = 0;
    /// Byte offset behind the last byte.
    std::size_t end = 0;
    /// The line, from 1.
    std::size_t line = 1;
    /// Where in its line the first character stands, counted in characters, from 1.
    std::size_t column = 1;
};

/// A file with its text. Views of it live as long as it lives unmoved.
class SourceFile {
  public:
    /// A file called \p fileName with the text \p text, which must be UTF-8.
    SourceFile(std::string fileName, std::string text);

    std::string const& name() const noexcept { return fileName; }

    /// In bytes.
    std::size_t size() const noexcept { return contents.size(); }

    std::size_t numberOfLines() const noexcept { return lineBegins.size(); }

    /// Byte offset at which the line with the one-based \p number begins; a byte order mark belongs
    /// to no line.
    std::size_t lineBegin(std::size_t number) const { return lineBegins.at(number - 1); }

    /// The line with the one-based \p number, without its end (LF, CR LF or CR).
    std::string_view line(std::size_t number) const;

    /// All of it, with a byte order mark.
    std::string_view text() const noexcept { return contents; }

    std::string_view text(SourceRange const& range) const {
        return std::string_view(contents).substr(range.begin, range.end - range.begin);
    }

  private:
    std::string fileName;
    std::string contents;
    std::vector<std::size_t> lineBegins;
};

/// Why a file, or a folder, was not read.
struct LoadFailure {
    /// The file or folder.
    std::string name;
    /// The reason in words.
    std::string reason;
    /// Byte offset of the byte that is no text, where that is the reason.
    std::optional<std::size_t> offset;
};

/// The file that is called \p name and consists of \p bytes. Text is UTF-8 without NUL.
std::variant<SourceFile, LoadFailure> makeSourceFile(std::string name, std::string bytes);

/// The path that stands for standard input.
inline constexpr std::string_view standardInputPath = "-";

/// Reads the file at \p path, or standard input.
std::variant<SourceFile, LoadFailure> loadSourceFile(std::string const& path);

} // namespace explorer
