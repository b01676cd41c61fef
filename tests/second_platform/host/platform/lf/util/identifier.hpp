// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// On this host, identifiers are numbers.

#include <concepts>
#include <string_view>

namespace lf::util {

template <typename CharT>
struct ConvertibleBasicStringView : std::basic_string_view<CharT> {
    template <typename Text>

    requires std::convertible_to<Text const&, std::basic_string_view<CharT>>
    ConvertibleBasicStringView(Text const& text) : std::basic_string_view<CharT>(text) {}
};

/// Whether the text consists of ASCII digits.
bool isValidIdentifier(ConvertibleBasicStringView<char16_t> text);

} // namespace lf::util
