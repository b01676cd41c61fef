// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// How text looks on a terminal: how wide it is, and what of it must not get there.

#include <cstddef>
#include <string>
#include <string_view>

namespace explorer {

/// One character as it is printed.
struct DisplayedCharacter {
    /// What to print: the character itself or, for one that could command or confuse a terminal,
    /// its name, such as `<U+001B>`. A tab stays a tab.
    std::string text;
    /// The number of columns that it takes; 1 for a tab.
    std::size_t width = 0;
    /// The number of bytes that it takes in the source.
    std::size_t size = 0;

    bool isTab() const noexcept { return text == "\t"; }
};

/// How the first character of \p text, which must not be empty, is printed.
DisplayedCharacter display(std::string_view text);

/// A text on one line, with its width.
struct DisplayedText {
    std::string text;
    std::size_t width = 0;
};

/// \p text for one line of a terminal: made harmless, tabs included, and cut behind
/// \p maximumWidth columns.
DisplayedText displayText(std::string_view text, std::size_t maximumWidth);

} // namespace explorer
