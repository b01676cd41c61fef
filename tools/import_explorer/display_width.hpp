// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// How text looks on a terminal: how wide it is, what of it must not get there, and where it is
/// cut.

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

namespace explorer {

/// Stands where text was cut.
inline constexpr std::string_view cutMark = "...";

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

    /// The columns that it counts for where text is cut. A character of no width counts as well, so
    /// that a heap of them cannot fill the screen.
    std::size_t cost() const noexcept { return std::max<std::size_t>(width, 1); }
};

/// How the first character of \p text, which must not be empty, is printed.
DisplayedCharacter display(std::string_view text);

/// What is printed for a tab.
enum class Tabs {
    /// The tab itself.
    Kept,
    /// Its name.
    Named,
};

/// The beginning of a text, as it is printed on one line.
struct DisplayedText {
    std::string text;
    std::size_t width = 0;
    /// The number of bytes that it takes in the source.
    std::size_t size = 0;
};

/// As much of the beginning of \p text as costs at most \p columns. Nothing else decides where text
/// is cut.
DisplayedText fit(std::string_view text, std::size_t columns, Tabs tabs);

/// \p text for one line of a terminal: made harmless, tabs included, and cut where it costs more
/// than \p columns, which must have room for the mark; a cut text ends with it.
DisplayedText displayText(std::string_view text, std::size_t columns);

} // namespace explorer
