// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// How text is shown on a terminal: its width, escapes for unsafe characters, and truncation.

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

namespace explorer {

/// The end of truncated text.
inline constexpr std::string_view cutMark = "...";

/// A character as printed.
struct DisplayedCharacter {
    /// The text to print: the character itself or, if it could control or confuse a terminal, an
    /// escape such as `<U+001B>`. A tab stays a tab.
    std::string text;
    /// Width in columns; 1 for a tab.
    std::size_t width = 0;
    /// Size in bytes of the source.
    std::size_t size = 0;

    bool isTab() const noexcept { return text == "\t"; }

    /// The columns that it counts for truncation. A character without width counts as one column,
    /// so that a sequence of them cannot fill the screen.
    std::size_t cost() const noexcept { return std::max<std::size_t>(width, 1); }
};

/// How to print the first character of \p text, which must not be empty.
DisplayedCharacter display(std::string_view text);

/// How to print tabs.
enum class Tabs {
    /// As they are.
    Kept,
    /// As an escape.
    Named,
};

/// The beginning of a text, printed on one line.
struct DisplayedText {
    std::string text;
    std::size_t width = 0;
    /// Size in bytes of the source.
    std::size_t size = 0;
};

/// The longest beginning of \p text that costs at most \p columns. All truncation uses this
/// function.
DisplayedText fit(std::string_view text, std::size_t columns, Tabs tabs);

/// \p text for one line of a terminal: unsafe characters and tabs are escaped, and text that costs
/// more than \p columns is truncated and ends with cutMark. \p columns must be at least the width
/// of cutMark.
DisplayedText displayText(std::string_view text, std::size_t columns);

} // namespace explorer
