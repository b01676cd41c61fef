// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Reading UTF-8 text character by character.

#include <cstddef>
#include <optional>
#include <string_view>

namespace explorer {

/// The first character of a text.
struct DecodedCharacter {
    /// The code point; nothing when the bytes are ill-formed.
    std::optional<char32_t> codePoint;
    /// How many bytes it takes, at least one.
    std::size_t size = 0;
};

/// The first character of \p text, which must not be empty.
DecodedCharacter decodeCharacter(std::string_view text);

/// Whether \p byte can only stand inside of a character.
constexpr bool isContinuationByte(char byte) noexcept {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

/// The number of characters of \p text, well-formed UTF-8.
std::size_t countCharacters(std::string_view text);

/// Where the first ill-formed sequence of \p text begins; nothing for well-formed UTF-8.
std::optional<std::size_t> findIllFormedByte(std::string_view text);

} // namespace explorer
