// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Converts UTF-16 text for narrow streams.

#include <string>
#include <string_view>

namespace fl::i18n {

/// \p text with a question mark for each unit that is not ASCII, as the names of this language are.
std::string ustring_to_utf8(std::u16string_view text);

} // namespace fl::i18n
