// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// On this host, narrow text is plain ASCII.

#include <string>
#include <string_view>

namespace fl::i18n {

/// \p text with a question mark for every unit that is not ASCII.
std::string ustring_to_utf8(std::u16string_view text);

} // namespace fl::i18n
