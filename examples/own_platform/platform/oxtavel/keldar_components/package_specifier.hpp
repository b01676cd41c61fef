// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// A package and the editions wanted of it.

#include <oxtavel/keldar_components/component_version_range.hpp>

#include <iosfwd>
#include <string>

namespace Oxtavel::KeldarComponents {

/// `birds`, `birds@3` for its third edition, `birds@3+` for that and all later ones.
class PackageSpecifier {
  public:
    /// \throws the exception of kpm::arguments::InvalidPackageSpecifier for any other text.
    PackageSpecifier(std::u16string const& text, IComponentVersionRangeFactory const& factory);

    /// The package's own name.
    std::u16string const& Name() const { return name; }

    /// Text that reads back as the same package and editions.
    std::u16string ToString() const;

  private:
    std::u16string name;
    std::u16string editions; ///< empty for any
};

std::ostream& operator<<(std::ostream& stream, PackageSpecifier const& specifier);

} // namespace Oxtavel::KeldarComponents
