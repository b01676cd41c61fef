// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Decodes UTF-8 text character by character.

#include <cstddef>
#include <optional>
#include <string_view>

namespace explorer {

/// A decoded character.
struct DecodedCharacter {
    /// The code point; nothing if the bytes are ill-formed.
    std::optional<char32_t> codePoint;
    /// Size in bytes, at least one.
    std::size_t size = 0;
};

/// Decodes the first character of \p text, which must not be empty.
DecodedCharacter decodeCharacter(std::string_view text);

/// Whether \p byte can only occur inside a character.
constexpr bool isContinuationByte(char byte) noexcept {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

/// The number of characters in \p text, which must be well-formed.
std::size_t countCharacters(std::string_view text);

/// Offset of the first ill-formed sequence in \p text; nothing if there is none.
std::optional<std::size_t> findIllFormedByte(std::string_view text);

} // namespace explorer
