// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Shows a range of a source line with carets below it.

#include <cstddef>
#include <string>
#include <string_view>

namespace explorer {

/// Two lines of text to be printed below each other, with margins of the same width.
struct Excerpt {
    /// The source line, or the part of a long line around the range.
    std::string source;
    /// `^~~~` below the range. Contains the tabs of the source, so that both lines align.
    std::string caret;
};

/// Shows the bytes from \p begin to \p end of \p line in an excerpt of about \p width columns.
Excerpt makeExcerpt(std::string_view line, std::size_t begin, std::size_t end,
                    std::size_t width = 100);

} // namespace explorer
