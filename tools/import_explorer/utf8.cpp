// SPDX-License-Identifier: BSL-1.0
#include <import_explorer/utf8.hpp>

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
// The macro of ICU converts implicitly.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion"
    U8_NEXT(text, size, text.size(), codePoint);
#pragma GCC diagnostic pop
    if (codePoint < 0) {
        return {std::nullopt, size};
    }
    return {static_cast<char32_t>(codePoint), size};
}

std::size_t countCharacters(std::string_view text) {
    auto const others = std::count_if(text.begin(), text.end(), isContinuationByte);
    return text.size() - static_cast<std::size_t>(others);
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

} // namespace explorer
