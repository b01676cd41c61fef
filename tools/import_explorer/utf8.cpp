// SPDX-License-Identifier: BSL-1.0
#include <import_explorer/utf8.hpp>

#include <unicode/utf16.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <cstdint>

namespace explorer {

namespace {

constexpr bool isAscii(char byte) noexcept {
    return static_cast<unsigned char>(byte) < 0x80U;
}

} // namespace

DecodedCharacter decodeCharacter(std::string_view text) {
    if (isAscii(text.front())) {
        return {static_cast<char32_t>(text.front()), 1};
    }
    std::size_t size = 0;
    UChar32 codePoint = 0;
// The macro narrows in ways that are none of our making.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion"
    U8_NEXT(text, size, text.size(), codePoint);
#pragma GCC diagnostic pop
    if (codePoint < 0) {
        return {std::nullopt, size};
    }
    return {static_cast<char32_t>(codePoint), size};
}

std::optional<std::size_t> findIllFormedByte(std::string_view text) {
    for (std::size_t offset = 0; offset < text.size();) {
        if (isAscii(text[offset])) {
            ++offset;
            continue;
        }
        DecodedCharacter const character = decodeCharacter(text.substr(offset));
        if (!character.codePoint) {
            return offset;
        }
        offset += character.size;
    }
    return std::nullopt;
}

std::u16string toUtf16(std::string_view text) {
    if (std::all_of(text.begin(), text.end(), isAscii)) {
        return {text.begin(), text.end()};
    }
    std::u16string result;
    result.reserve(text.size());
    while (!text.empty()) {
        DecodedCharacter const character = decodeCharacter(text);
        char32_t const codePoint = character.codePoint.value_or(U'\uFFFD');
        if (U_IS_BMP(codePoint)) {
            result.push_back(static_cast<char16_t>(codePoint));
        } else {
            result.push_back(U16_LEAD(codePoint));
            result.push_back(U16_TRAIL(codePoint));
        }
        text.remove_prefix(character.size);
    }
    return result;
}

} // namespace explorer
