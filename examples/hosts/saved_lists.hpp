// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Import lists as lines of UTF-8 text, in an order that can always be loaded. The texts must be
/// well-formed and contain no tabs and newlines, like identifiers.

#include <host/text.hpp>

#include <import/import_list.hpp>

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Saves and loads the lists of a file.
namespace saved_lists {

/// The entries of one list; each line consists of a letter for the kind and the texts, separated by
/// tabs.
using Lines = std::vector<std::string>;

/// Saves the own entries of \p list: names and wildcards before packages, since a dotted import
/// that starts with the name of a package is refused, while such a package can be added dynamically
/// afterwards.
inline Lines save(lf::import::IImportList const& list) {
    constexpr auto own = lf::import::IImportList::CheckAncestorList::No;
    auto const utf8 = [](auto const& text) { return fl::i18n::ustring_to_utf8(text); };
    Lines lines;
    for (auto const& name : list.getFullyQualifiedImportEntries(own)) {
        lines.push_back("n\t" + utf8(name.getRootElement()) + '\t' +
                        utf8(name.getIntroducedName()) + '\t' + utf8(name.getRawArgument()));
    }
    for (auto const& wildcard : list.getWildcardImportEntries(own)) {
        lines.push_back("w\t" + utf8(wildcard.getRootElement()) + '\t' +
                        utf8(wildcard.getRawArgument()));
    }
    for (auto const& package : list.getPackageImportEntries(own)) {
        lines.push_back("p\t" + utf8(package.getPackageSpecifier().ToString()) + '\t' +
                        utf8(package.getIntroducedName()));
    }
    return lines;
}

namespace detail {

/// The parts of \p line between tabs.
inline std::vector<std::u16string> piecesOf(std::string_view line) {
    std::vector<std::u16string> pieces;
    std::size_t tab = 0;
    while ((tab = line.find('\t')) != std::string_view::npos) {
        pieces.emplace_back(lf::import::host::Utf16Text(line.substr(0, tab)).view());
        line.remove_prefix(tab + 1);
    }
    pieces.emplace_back(lf::import::host::Utf16Text(line).view());
    return pieces;
}

inline lf::import::ImportEntry entryOf(std::string_view line) {
    using namespace lf::import;
    std::vector<std::u16string> const pieces = piecesOf(line);
    if (pieces.at(0) == u"n") {
        return FullyQualifiedImportEntry(
            FullyQualifiedImportArgument{pieces.at(1), pieces.at(2), pieces.at(3), {}});
    }
    if (pieces.at(0) == u"w") {
        return WildcardImportEntry(WildcardImportArgument{pieces.at(1), pieces.at(2), {}});
    }
    Oxtavel::KeldarComponents::PackageSpecifier specifier(
        pieces.at(1), Oxtavel::KeldarComponents::GetComponentVersionRangeFactory());
    return PackageImportEntry(
        PackageImportEntry(VersionedPackageImportArgument{std::move(specifier)}),
        PackageNameImportArgument{pieces.at(2)});
}

} // namespace detail

/// Adds \p lines to an empty list whose ancestors are still empty. Load inner lists before outer
/// ones, since an outer package may have been added after an inner import that starts with its
/// name.
///
/// \throws std::runtime_error if the list refuses a line; std::out_of_range and the exceptions of
///         the platform for a line that save() does not write.
inline void load(Lines const& lines, lf::import::IImportList& list) {
    for (std::string const& line : lines) {
        if (list.addDynamicImportEntry(detail::entryOf(line))) {
            throw std::runtime_error("refused: " + line);
        }
    }
}

} // namespace saved_lists
