// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The identifier test of the language.

#include <gleigem_platform/export.hpp>

#include <string>
#include <string_view>

namespace lf::util {

/// A string view that every kind of string converts to and that converts back to a
/// std::basic_string_view. Valid as long as the text it views.
template <typename CharT>
class ConvertibleBasicStringView {
  public:
    /// A view of the same text as \p text.
    // NOLINTNEXTLINE(google-explicit-constructor): conversion is the purpose of this type.
    constexpr ConvertibleBasicStringView(std::basic_string_view<CharT> text) noexcept
        : view(text) {}

    /// A view of the whole string.
    // NOLINTNEXTLINE(google-explicit-constructor): as above.
    constexpr ConvertibleBasicStringView(std::basic_string<CharT> const& text) noexcept
        : view(text) {}

    /// A view of the zero-terminated text, which must not be null.
    // NOLINTNEXTLINE(google-explicit-constructor): as above.
    constexpr ConvertibleBasicStringView(CharT const* text) : view(text) {}

    /// The viewed text.
    // NOLINTNEXTLINE(google-explicit-constructor): as above.
    constexpr operator std::basic_string_view<CharT>() const noexcept { return view; }

  private:
    std::basic_string_view<CharT> view;
};

/// Whether the text is an identifier: a code point with XID_Start or an underscore, then any number
/// with XID_Continue, in the version of Unicode that ICU supports. Invisible characters
/// (Default_Ignorable_Code_Point) and unpaired surrogates are refused in every version.
GLEIGEM_PLATFORM_EXPORT bool isValidIdentifier(ConvertibleBasicStringView<char16_t> text);

} // namespace lf::util
