// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Private: iterates over the pieces of a separated text.

#include <string_view>

namespace Oxtavel::KeldarComponents {

/// Whether \p test holds for each piece of \p text between separators. Tests them in order, up to
/// the first for which it does not. An empty text is one empty piece.
template <typename Test>
bool allPieces(std::u16string_view text, char16_t separator, Test&& test) {
    for (;;) {
        auto const end = text.find(separator);
        if (!test(text.substr(0, end))) {
            return false;
        }
        if (end == std::u16string_view::npos) {
            return true;
        }
        text.remove_prefix(end + 1);
    }
}

} // namespace Oxtavel::KeldarComponents
