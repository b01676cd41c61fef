// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// A package and the requested editions.

#include <oxtavel/keldar_components/component_version_range.hpp>

#include <iosfwd>
#include <string>
#include <string_view>

namespace Oxtavel::KeldarComponents {

/// `birds`, `birds@3` for its third edition, `birds@3+` for that and all later ones.
class PackageSpecifier {
  public:
    /// \throws the exception of kpm::arguments::InvalidPackageSpecifier for any other text.
    PackageSpecifier(std::u16string text, IComponentVersionRangeFactory const& factory);

    /// The name of the package.
    std::u16string_view Name() const { return ToString().substr(0, asWritten.find(u'@')); }

    /// Text that can be parsed as the same package and editions.
    std::u16string_view ToString() const { return asWritten; }

  private:
    std::u16string asWritten;
};

std::ostream& operator<<(std::ostream& stream, PackageSpecifier const& specifier);

} // namespace Oxtavel::KeldarComponents
