// SPDX-License-Identifier: BSL-1.0
#include <lf/util/identifier.hpp>

#include <unicode/uchar.h>
#include <unicode/utf16.h>

#include <array>
#include <cstddef>

namespace lf::util {

namespace {

constexpr std::size_t asciiSize = 0x80;

/// Whether an ASCII unit continues an identifier.
constexpr auto asciiContinues = [] {
    std::array<bool, asciiSize> table{};
    for (char16_t const unit :
         std::u16string_view(u"abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_")) {
        table[unit] = true;
    }
    return table;
}();

constexpr bool isAsciiDigit(char16_t unit) noexcept {
    return unit >= u'0' && unit <= u'9';
}

/// Whether a character has this property and is visible. Some versions of Unicode allow invisible
/// characters in identifiers, so that different names could look the same.
bool isVisibleWith(UProperty property, UChar32 character) {
    return u_hasBinaryProperty(character, property) &&
           !u_hasBinaryProperty(character, UCHAR_DEFAULT_IGNORABLE_CODE_POINT);
}

/// Whether all code points from \p index on are valid in an identifier. U16_NEXT yields an unpaired
/// surrogate as itself, and no surrogate has either property.
bool continuesByUnicode(std::u16string_view text, std::size_t index) {
    if (index == 0) {
        UChar32 first = 0;
        U16_NEXT(text, index, text.size(), first);
        if (!isVisibleWith(UCHAR_XID_START, first)) {
            return false;
        }
    }
    while (index < text.size()) {
        UChar32 next = 0;
        U16_NEXT(text, index, text.size(), next);
        if (!isVisibleWith(UCHAR_XID_CONTINUE, next)) {
            return false;
        }
    }
    return true;
}

} // namespace

bool isValidIdentifier(ConvertibleBasicStringView<char16_t> text) {
    std::u16string_view const view = text;
    if (view.empty() || isAsciiDigit(view.front())) {
        return false;
    }
    for (std::size_t index = 0; index < view.size(); ++index) {
        char16_t const unit = view[index];
        if (unit >= asciiSize) {
            return continuesByUnicode(view, index);
        }
        if (!asciiContinues[unit]) {
            return false;
        }
    }
    return true;
}

} // namespace lf::util
