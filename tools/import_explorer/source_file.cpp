// SPDX-License-Identifier: BSL-1.0
#include <import_explorer/source_file.hpp>

#include <import_explorer/utf8.hpp>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <memory>
#include <system_error>
#include <utility>

namespace explorer {

namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

/// Protects against special files that never end.
constexpr std::size_t maximumSize = std::size_t{1} << 30U;

struct CloseFile {
    void operator()(std::FILE* file) const noexcept {
        // The file was only read, so closing it cannot lose data.
        static_cast<void>(std::fclose(file));
    }
};

std::string lastError() {
    return std::generic_category().message(errno);
}

std::string inHexadecimal(char byte) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    auto const value = static_cast<unsigned char>(byte);
    return {'0', 'x', digits[value / 16U], digits[value % 16U]};
}

/// The position after the end of the line at \p begin.
std::size_t beginOfNextLine(std::string_view text, std::size_t begin) {
    std::size_t const end = text.find_first_of("\r\n", begin);
    if (end == std::string_view::npos) {
        return text.size();
    }
    return end + (text.substr(end).starts_with("\r\n") ? 2 : 1);
}

std::variant<std::string, LoadFailure> readAll(std::FILE* file, std::string const& name) {
    std::string bytes;
    std::array<char, 65536> chunk{};
    while (std::size_t const size = std::fread(chunk.data(), 1, chunk.size(), file)) {
        bytes.append(chunk.data(), size);
        if (bytes.size() > maximumSize) {
            return LoadFailure{name, "cannot read: larger than 1 GiB", std::nullopt};
        }
    }
    if (std::ferror(file) != 0) {
        return LoadFailure{name, "cannot read: " + lastError(), std::nullopt};
    }
    return bytes;
}

} // namespace

SourceFile::SourceFile(std::string name, std::string text)
    : fileName(std::move(name)), contents(std::move(text)) {
    std::size_t begin = contents.starts_with(byteOrderMark) ? byteOrderMark.size() : 0;
    while (begin < contents.size()) {
        lineBegins.push_back(begin);
        begin = beginOfNextLine(contents, begin);
    }
}

std::string_view SourceFile::line(std::size_t number) const {
    std::size_t const begin = lineBegin(number);
    std::size_t const next = number < lineBegins.size() ? lineBegins[number] : contents.size();
    std::string_view line = std::string_view(contents).substr(begin, next - begin);
    for (char const end : {'\n', '\r'}) {
        if (line.ends_with(end)) {
            line.remove_suffix(1);
        }
    }
    return line;
}

std::variant<SourceFile, LoadFailure> makeSourceFile(std::string name, std::string bytes) {
    std::size_t const nul = bytes.find('\0');
    std::optional<std::size_t> const illFormed =
        findIllFormedByte(std::string_view(bytes).substr(0, std::min(nul, bytes.size())));
    if (illFormed) {
        return LoadFailure{std::move(name),
                           "not UTF-8 text: byte " + inHexadecimal(bytes[*illFormed]), illFormed};
    }
    if (nul != std::string::npos) {
        return LoadFailure{std::move(name), "not a text file: byte 0x00", nul};
    }
    return SourceFile(std::move(name), std::move(bytes));
}

std::variant<SourceFile, LoadFailure> loadSourceFile(std::string const& path) {
    bool const fromStandardInput = path == standardInputPath;
    std::string const name = fromStandardInput ? "<stdin>" : path;
    std::unique_ptr<std::FILE, CloseFile> const opened(
        fromStandardInput ? nullptr : std::fopen(path.c_str(), "rb"));
    if (!fromStandardInput && !opened) {
        return LoadFailure{name, "cannot open: " + lastError(), std::nullopt};
    }
    auto bytes = readAll(fromStandardInput ? stdin : opened.get(), name);
    if (auto* failure = std::get_if<LoadFailure>(&bytes)) {
        return std::move(*failure);
    }
    return makeSourceFile(name, std::move(std::get<std::string>(bytes)));
}

} // namespace explorer
