// SPDX-License-Identifier: BSL-1.0
#include <fl/i18n/ustring_conversions.hpp>

#include <unicode/utf16.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

namespace fl::i18n {

namespace {

/// Code point by code point, since ICU's whole-string conversions stop at lengths of 31 bits.
void appendAsUtf8(std::u16string_view text, std::string& result) {
    for (std::size_t index = 0; index < text.size();) {
        UChar32 codePoint = 0;
        U16_NEXT_OR_FFFD(text, index, text.size(), codePoint);
        std::array<std::uint8_t, U8_MAX_LENGTH> bytes{};
        std::size_t length = 0;
        U8_APPEND_UNSAFE(bytes, length, codePoint);
        result.append(bytes.data(), bytes.data() + length);
    }
}

} // namespace

std::string ustring_to_utf8(std::u16string_view text) {
    auto const isNotAscii = [](char16_t unit) { return unit > 0x7F; };
    std::u16string_view::const_iterator const asciiEnd =
        std::find_if(text.begin(), text.end(), isNotAscii);
    std::string result(text.begin(), asciiEnd);
    appendAsUtf8(text.substr(result.size()), result);
    return result;
}

} // namespace fl::i18n
