// SPDX-License-Identifier: BSL-1.0

#include <import/rendering.hpp>

#include <import/platform.hpp>

#include <cstddef>
#include <locale>
#include <string>
#include <string_view>

namespace lf::import {

namespace {

using fl::i18n::ustring_to_utf8;
using UStream = std::basic_ostream<char16_t>;

template <typename Facet>
concept Complete = requires {
    sizeof(Facet);
};

// Whether the stream's buffer accepts the whole text.
template <typename Char>
bool putPaddedWithBlanks(std::basic_ostream<Char>& stream, std::basic_string_view<Char> piece) {
    auto const width = static_cast<std::size_t>(stream.width(0));
    std::basic_string<Char> text(piece.size() < width ? width - piece.size() : 0, Char(' '));
    bool const left = (stream.flags() & std::ios_base::adjustfield) == std::ios_base::left;
    text.insert(left ? 0 : text.size(), piece);
    auto const size = static_cast<std::streamsize>(text.size());
    return stream.rdbuf()->sputn(text.data(), size) == size;
}

// Sets badbit in a handler. As for any insertion, the caught exception is rethrown if the stream's
// exceptions() ask for it, and is not replaced by std::ios_base::failure.
template <typename Char>
void setBadInHandler(std::basic_ostream<Char>& stream) {
    try {
        stream.setstate(std::ios_base::badbit);
    } catch (std::ios_base::failure const&) { // NOLINT(bugprone-empty-catch): replaced below
    }
    if ((stream.exceptions() & std::ios_base::badbit) != 0) {
        throw;
    }
}

template <typename Char>
void insertPaddedWithBlanks(std::basic_ostream<Char>& stream, std::basic_string_view<Char> piece) {
    typename std::basic_ostream<Char>::sentry const ready(stream);
    if (!ready) {
        return;
    }
    bool complete = false;
    try {
        complete = putPaddedWithBlanks(stream, piece);
    } catch (...) {
        return setBadInHandler(stream);
    }
    if (!complete) {
        stream.setstate(std::ios_base::failbit | std::ios_base::badbit);
    }
}

// An ordinary insertion needs the stream's fill character, and so std::ctype. Standard libraries
// without std::ctype<char16_t>, such as libc++, cannot have a fill character, so blanks are used.
template <typename Char>
void insert(std::basic_ostream<Char>& stream, std::basic_string_view<Char> piece) {
    if constexpr (Complete<std::ctype<Char>>) {
        stream << piece;
    } else {
        insertPaddedWithBlanks(stream, piece);
    }
}

void insert(UStream& stream, std::u16string_view piece) {
    insert<char16_t>(stream, piece);
}

bool hasAlias(PackageImportEntry const& entry) {
    return entry.getIntroducedName() != std::u16string_view(entry.getPackageSpecifier().Name());
}

} // namespace

std::ostream& operator<<(std::ostream& stream, FullyQualifiedImportEntry const& entry) {
    return stream << ustring_to_utf8(entry.getRawArgument());
}

std::ostream& operator<<(std::ostream& stream, WildcardImportEntry const& entry) {
    return stream << ustring_to_utf8(entry.getRawArgument());
}

std::ostream& operator<<(std::ostream& stream, PackageImportEntry const& entry) {
    stream << entry.getPackageSpecifier();
    if (hasAlias(entry)) {
        stream << " as " << ustring_to_utf8(entry.getIntroducedName());
    }
    return stream;
}

UStream& operator<<(UStream& stream, FullyQualifiedImportEntry const& entry) {
    insert(stream, entry.getRawArgument());
    return stream;
}

UStream& operator<<(UStream& stream, WildcardImportEntry const& entry) {
    insert(stream, entry.getRawArgument());
    return stream;
}

UStream& operator<<(UStream& stream, PackageImportEntry const& entry) {
    insert(stream, entry.getPackageSpecifier().ToString());
    if (hasAlias(entry)) {
        insert(stream, u" as ");
        insert(stream, entry.getIntroducedName());
    }
    return stream;
}

} // namespace lf::import
