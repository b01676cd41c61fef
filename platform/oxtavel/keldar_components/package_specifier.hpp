// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The name of a package together with its required versions.

#include <gleigem_platform/export.hpp>
#include <oxtavel/keldar_components/component_version_range.hpp>

#include <iosfwd>
#include <string>

namespace Oxtavel::KeldarComponents {

/// A package name with a version range: `pkg`, `pkg.sub@^1.2`. A moved-from specifier has an empty
/// name.
class GLEIGEM_PLATFORM_EXPORT PackageSpecifier {
  public:
    /// Reads `name` or `name@range`: the name consists of identifiers joined by dots, and
    /// \p factory creates the range.
    ///
    /// \throws foundation::core::except::Exception<kpm::arguments::InvalidPackageSpecifier,
    ///         std::exception> for any other text, and the exceptions of the factory.
    PackageSpecifier(std::u16string const& text, IComponentVersionRangeFactory const& factory);

    /// The name of the package, without the range.
    std::u16string const& Name() const noexcept { return name; }

    /// Name and range as text that reads as an equal specifier.
    std::u16string ToString() const;

    friend bool operator==(PackageSpecifier const&, PackageSpecifier const&) = default;

  private:
    std::u16string name;
    /// Without comparators if the specifier has no range.
    ComponentVersionRange range;
};

/// Writes the text of ToString() in UTF-8, as one string.
GLEIGEM_PLATFORM_EXPORT std::ostream& operator<<(std::ostream& stream,
                                                 PackageSpecifier const& specifier);

} // namespace Oxtavel::KeldarComponents
