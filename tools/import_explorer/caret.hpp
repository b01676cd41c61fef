// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Shows a stretch of a source line by the line and a run of carets below it.

#include <cstddef>
#include <string>
#include <string_view>

namespace explorer {

/// Two lines of text that belong below each other, both behind a margin of the same width.
struct Excerpt {
    /// The source line or, of a long one, the part around the stretch.
    std::string source;
    /// `^~~~` below the stretch. Tabs of the source stand here as well.
    std::string caret;
};

/// Shows the bytes from \p begin to \p end of \p line, about \p width columns of it.
Excerpt makeExcerpt(std::string_view line, std::size_t begin, std::size_t end,
                    std::size_t width = 100);

} // namespace explorer
