// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The reserved words of the language.

#include <string>

namespace lfu {

/// Whether \p word is `let`, `then` or `use`. The selector is ignored: there is one dialect.
bool isReservedWord(std::u16string const& word, int selector);

} // namespace lfu
