// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The identifiers of the language.

#include <string_view>

namespace lf::util {

template <typename CharT>
using ConvertibleBasicStringView = std::basic_string_view<CharT>;

/// Whether the text is lower-case ASCII words joined by single hyphens: `left-wing`.
bool isValidIdentifier(ConvertibleBasicStringView<char16_t> text);

} // namespace lf::util
