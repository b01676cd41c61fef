// SPDX-License-Identifier: BSL-1.0
#include <import_explorer/display_width.hpp>

#include <import_explorer/utf8.hpp>

#include <unicode/uchar.h>

#include <array>
#include <cstdint>

namespace explorer {

namespace {

std::string inHexadecimal(std::uint32_t value, std::size_t digits) {
    std::string text(digits, '0');
    for (std::size_t index = digits; index > 0; --index) {
        text[index - 1] = "0123456789ABCDEF"[value % 16U];
        value /= 16U;
    }
    return text;
}

/// `<U+202E>`, `<U+E0001>`
std::string nameOf(char32_t codePoint) {
    std::size_t digits = 4;
    while (codePoint >> (4 * digits) != 0) {
        ++digits;
    }
    return "<U+" + inHexadecimal(codePoint, digits) + ">";
}

/// Control characters, directional formatting, and invisible or unassigned characters. The two
/// joiners are needed to write some languages and are safe.
bool isHarmful(char32_t codePoint) {
    constexpr char32_t zeroWidthNonJoiner = 0x200C;
    constexpr char32_t zeroWidthJoiner = 0x200D;
    constexpr std::uint32_t harmful =
        U_GC_CC_MASK | U_GC_CF_MASK | U_GC_CN_MASK | U_GC_CO_MASK | U_GC_ZL_MASK | U_GC_ZP_MASK;
    return codePoint != zeroWidthNonJoiner && codePoint != zeroWidthJoiner &&
           (U_GET_GC_MASK(static_cast<UChar32>(codePoint)) & harmful) != 0;
}

std::size_t widthOf(char32_t codePoint) {
    if (codePoint < 0x300U) {
        return 1;
    }
    auto const character = static_cast<UChar32>(codePoint);
    constexpr std::uint32_t combining = U_GC_MN_MASK | U_GC_ME_MASK | U_GC_CF_MASK;
    if ((U_GET_GC_MASK(character) & combining) != 0) {
        return 0;
    }
    // Vowels and trailing consonants of a Hangul syllable combine with its leading consonant.
    int32_t const syllable = u_getIntPropertyValue(character, UCHAR_HANGUL_SYLLABLE_TYPE);
    if (syllable == U_HST_VOWEL_JAMO || syllable == U_HST_TRAILING_JAMO) {
        return 0;
    }
    int32_t const eastAsianWidth = u_getIntPropertyValue(character, UCHAR_EAST_ASIAN_WIDTH);
    return eastAsianWidth == U_EA_WIDE || eastAsianWidth == U_EA_FULLWIDTH ? 2 : 1;
}

} // namespace

DisplayedCharacter display(std::string_view text) {
    if (text.front() == '\t') {
        return {"\t", 1, 1};
    }
    DecodedCharacter const character = decodeCharacter(text);
    if (!character.codePoint) {
        std::string name;
        for (char const byte : text.substr(0, character.size)) {
            name += "<" + inHexadecimal(static_cast<unsigned char>(byte), 2) + ">";
        }
        std::size_t const width = name.size();
        return {std::move(name), width, character.size};
    }
    if (isHarmful(*character.codePoint)) {
        std::string name = nameOf(*character.codePoint);
        std::size_t const width = name.size();
        return {std::move(name), width, character.size};
    }
    return {std::string(text.substr(0, character.size)), widthOf(*character.codePoint),
            character.size};
}

DisplayedText fit(std::string_view text, std::size_t columns, Tabs tabs) {
    DisplayedText result;
    std::size_t cost = 0;
    while (result.size < text.size()) {
        DisplayedCharacter character = display(text.substr(result.size));
        if (character.isTab() && tabs == Tabs::Named) {
            character.text = nameOf(U'\t');
            character.width = character.text.size();
        }
        cost += character.cost();
        if (cost > columns) {
            break;
        }
        result.text += character.text;
        result.width += character.width;
        result.size += character.size;
    }
    return result;
}

DisplayedText displayText(std::string_view text, std::size_t columns) {
    DisplayedText whole = fit(text, columns, Tabs::Named);
    if (whole.size == text.size()) {
        return whole;
    }
    DisplayedText beginning = fit(text, columns - cutMark.size(), Tabs::Named);
    beginning.text += cutMark;
    beginning.width += cutMark.size();
    return beginning;
}

} // namespace explorer
