// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The reserved words of the language.

#include <gleigem_platform/export.hpp>

#include <string>

namespace lfu {

/// Whether \p word is a reserved word, case-sensitively.
///
/// A word that is special only in some contexts, such as `as`, is not reserved.
/// \param word in UTF-16, of any length.
/// \param selector chooses a dialect of the language. There is only one, so it is ignored.
GLEIGEM_PLATFORM_EXPORT bool isReservedWord(std::u16string const& word, int selector);

} // namespace lfu
