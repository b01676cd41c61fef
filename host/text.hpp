// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Converts between the UTF-8 texts of a host and the UTF-16 texts, entries and messages of the
/// library, and splits dotted names.

#include <import/entries.hpp>
#include <import/platform.hpp>
#include <import/rendering.hpp>

#include <array>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

namespace lf::import::host {

/// One of the three kinds of valid entries.
template <typename Entry>
concept ValidEntry = std::same_as<Entry, PackageImportEntry> ||
    std::same_as<Entry, FullyQualifiedImportEntry> || std::same_as<Entry, WildcardImportEntry>;

/// What an entry imports. The order is that of the alternatives of ImportEntry.
enum class ImportKind : std::uint8_t {
    /// `pkg@^1.2 as p`
    Package,
    /// `a.b.c`
    FullyQualified,
    /// `a.b.*`
    Wildcard,
};

/// The kind of a type of entries.
template <ValidEntry Entry>
inline constexpr ImportKind kindOfType =
    std::same_as<Entry, PackageImportEntry>          ? ImportKind::Package
    : std::same_as<Entry, FullyQualifiedImportEntry> ? ImportKind::FullyQualified
                                                     : ImportKind::Wildcard;

/// The kind of \p entry, which must not be valueless.
inline ImportKind kindOf(ImportEntry const& entry) noexcept {
    return static_cast<ImportKind>(entry.index());
}

namespace detail {

/// A character at the start of a text.
struct DecodedCharacter {
    char32_t codePoint;
    /// In bytes.
    std::size_t size;
};

/// Well-formed characters of several bytes. Only the limits of the second byte depend on the first
/// byte.
struct Utf8Row {
    unsigned char lowestFirst;
    unsigned char highestFirst;
    unsigned char lowestSecond;
    unsigned char highestSecond;
    unsigned char size;
};

inline constexpr std::array utf8Rows{
    Utf8Row{0xC2, 0xDF, 0x80, 0xBF, 2}, Utf8Row{0xE0, 0xE0, 0xA0, 0xBF, 3},
    Utf8Row{0xE1, 0xEC, 0x80, 0xBF, 3}, Utf8Row{0xED, 0xED, 0x80, 0x9F, 3},
    Utf8Row{0xEE, 0xEF, 0x80, 0xBF, 3}, Utf8Row{0xF0, 0xF0, 0x90, 0xBF, 4},
    Utf8Row{0xF1, 0xF3, 0x80, 0xBF, 4}, Utf8Row{0xF4, 0xF4, 0x80, 0x8F, 4},
};

inline constexpr char32_t replacementCharacter = U'\uFFFD';

/// The first character of \p text, which has several bytes and belongs to \p row. An incomplete
/// character becomes one U+FFFD.
constexpr DecodedCharacter decodeSeveralBytes(std::string_view text, Utf8Row const& row) noexcept {
    char32_t codePoint = static_cast<unsigned char>(text[0]) & (0x7FU >> row.size);
    for (std::size_t index = 1; index < row.size; ++index) {
        auto const byte = index < text.size() ? static_cast<unsigned char>(text[index]) : 0U;
        unsigned const lowest = index == 1 ? row.lowestSecond : 0x80U;
        unsigned const highest = index == 1 ? row.highestSecond : 0xBFU;
        if (byte < lowest || byte > highest) {
            return {replacementCharacter, index};
        }
        codePoint = codePoint << 6U | (byte & 0x3FU);
    }
    return {codePoint, row.size};
}

/// The first character of \p text, which must not be empty; U+FFFD if it is ill-formed.
constexpr DecodedCharacter decodeFirst(std::string_view text) noexcept {
    auto const first = static_cast<unsigned char>(text[0]);
    if (first < 0x80U) {
        return {first, 1};
    }
    for (Utf8Row const& row : utf8Rows) {
        if (first >= row.lowestFirst && first <= row.highestFirst) {
            return decodeSeveralBytes(text, row);
        }
    }
    return {replacementCharacter, 1};
}

/// Writes \p utf8 to \p target, which must have room for as many units as \p utf8 has bytes.
///
/// \returns the number of units written.
constexpr std::size_t writeUtf16(std::string_view utf8, char16_t* target) noexcept {
    std::size_t size = 0;
    while (!utf8.empty()) {
        auto const [codePoint, bytes] = decodeFirst(utf8);
        if (codePoint < 0x10000U) {
            target[size++] = static_cast<char16_t>(codePoint);
        } else {
            target[size++] = static_cast<char16_t>(0xD7C0U + (codePoint >> 10U));
            target[size++] = static_cast<char16_t>(0xDC00U + (codePoint & 0x3FFU));
        }
        utf8.remove_prefix(bytes);
    }
    return size;
}

} // namespace detail

/// A UTF-8 text as UTF-16, for lookups: `list.findPackageImportEntry(Utf16Text(name), Check::Yes)`.
///
/// A value that owns its text. Ill-formed sequences become U+FFFD as the Unicode standard
/// recommends: one for each maximal part of a character.
class Utf16Text {
  public:
    /// Texts of up to this many bytes need no allocation.
    static constexpr std::size_t lengthWithoutAllocation = 64;

    /// Converts \p utf8.
    ///
    /// \throws std::bad_alloc, only for a text longer than lengthWithoutAllocation.
    explicit Utf16Text(std::string_view utf8) {
        if (utf8.size() <= lengthWithoutAllocation) {
            size = detail::writeUtf16(utf8, shortText.data());
        } else {
            longText.resize(utf8.size());
            longText.resize(detail::writeUtf16(utf8, longText.data()));
        }
    }

    /// The text, valid until this object changes or is destroyed.
    std::u16string_view view() const noexcept {
        return longText.empty() ? std::u16string_view(shortText.data(), size) : longText;
    }

    /// The same as view().
    // NOLINTNEXTLINE(google-explicit-constructor): its purpose is to be passed as a name.
    operator std::u16string_view() const noexcept { return view(); }

  private:
    std::array<char16_t, lengthWithoutAllocation> shortText{};
    std::size_t size = 0;
    std::u16string longText; ///< empty for a text that shortText holds
};

/// \p entry in UTF-8, as a user would write the import.
///
/// \throws std::bad_alloc, and whatever the host's services throw.
template <ValidEntry Entry>
std::string toUtf8(Entry const& entry) {
    std::ostringstream stream;
    // Without this, a stream that runs out of memory would silently keep a part of the text.
    stream.exceptions(std::ios_base::badbit);
    stream << entry;
    return std::move(stream).str();
}

/// The same for the entry that \p entry holds.
///
/// \throws std::bad_variant_access for a valueless entry.
inline std::string toUtf8(ImportEntry const& entry) {
    return std::visit([](auto const& held) { return toUtf8(held); }, entry);
}

/// The argument of a message as UTF-8. Arguments of the library's messages are UTF-16 texts; a
/// host's own messages can also have numbers and narrow texts.
template <typename... Alternatives>
std::string argumentToUtf8(std::variant<Alternatives...> const& argument) {
    return std::visit(
        []<typename Value>(Value const& value) -> std::string {
            if constexpr (std::is_convertible_v<Value const&, std::u16string_view>) {
                return fl::i18n::ustring_to_utf8(value);
            } else if constexpr (std::is_convertible_v<Value const&, std::string>) {
                return value;
            } else {
                return std::to_string(value);
            }
        },
        argument);
}

/// \p message in UTF-8, for logs and tests: `KELDAR:lang:PackageRedeclared("matrix@^2")`. Use a
/// MessageCatalogue for words that users read.
inline std::string toUtf8(resource_core::BaseMsgID const& message) {
    std::string text = message.catalogue + ':' + message.key + '(';
    std::string_view separator;
    for (auto const& argument : message.arguments) {
        text += separator;
        text += '"' + argumentToUtf8(argument) + '"';
        separator = ", ";
    }
    return text + ')';
}

/// The name that \p entry introduces: a view into it, empty for a wildcard.
inline std::u16string_view introducedNameOf(ImportEntry const& entry) {
    return std::visit(
        [](auto const& held) -> std::u16string_view {
            if constexpr (requires { held.getIntroducedName(); }) {
                return held.getIntroducedName();
            } else {
                return {};
            }
        },
        entry);
}

/// The segments of a dotted name, views into \p name: `a`, `b` and `c` of `a.b.c`. A name without
/// a dot is its only segment; segments may be empty.
inline std::vector<std::u16string_view> segmentsOf(std::u16string_view name) {
    std::vector<std::u16string_view> segments;
    std::size_t dot = 0;
    while ((dot = name.find(u'.')) != std::u16string_view::npos) {
        segments.push_back(name.substr(0, dot));
        name.remove_prefix(dot + 1);
    }
    segments.push_back(name);
    return segments;
}

/// The name whose members \p wildcard imports, a view into it: `a.b` of `a.b.*`.
inline std::u16string_view prefixOf(WildcardImportEntry const& wildcard) noexcept {
    std::u16string_view const raw = wildcard.getRawArgument();
    std::size_t const dot = raw.rfind(u'.');
    return dot == std::u16string_view::npos ? std::u16string_view() : raw.substr(0, dot);
}

} // namespace lf::import::host
