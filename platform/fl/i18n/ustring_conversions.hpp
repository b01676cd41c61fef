// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Conversions of UTF-16 text.

#include <gleigem_platform/export.hpp>

#include <string>
#include <string_view>

namespace fl::i18n {

/// \p text in UTF-8; each ill-formed unit (an unpaired surrogate) becomes U+FFFD.
GLEIGEM_PLATFORM_EXPORT std::string ustring_to_utf8(std::u16string_view text);

} // namespace fl::i18n
