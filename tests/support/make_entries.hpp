// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Valid entries from short texts.

#include <import/entries.hpp>

#include <string>
#include <utility>

namespace support {

/// `a.b.c`, with the root element before the first dot and the introduced name after the last.
inline lf::import::FullyQualifiedImportEntry makeName(std::u16string const& raw) {
    return lf::import::FullyQualifiedImportEntry(lf::import::FullyQualifiedImportArgument{
        raw.substr(0, raw.find(u'.')), raw.substr(raw.rfind(u'.') + 1), raw, {}});
}

/// `a.b.*`, with the root element before the first dot.
inline lf::import::WildcardImportEntry makeWildcard(std::u16string const& raw) {
    return lf::import::WildcardImportEntry(
        lf::import::WildcardImportArgument{raw.substr(0, raw.find(u'.')), raw, {}});
}

/// `pkg` or `pkg@^1`, under its own name.
inline lf::import::PackageImportEntry makePackage(std::u16string const& specifier) {
    return lf::import::PackageImportEntry(
        lf::import::VersionedPackageImportArgument{Oxtavel::KeldarComponents::PackageSpecifier(
            specifier, Oxtavel::KeldarComponents::GetComponentVersionRangeFactory())});
}

/// The same under another name.
inline lf::import::PackageImportEntry makePackage(std::u16string const& specifier,
                                                  std::u16string const& alias) {
    return {makePackage(specifier), lf::import::PackageNameImportArgument{alias}};
}

} // namespace support
