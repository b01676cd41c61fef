// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// On this host, packages and their versions are numbers: `12`, `12@5..9`.

#include <oxtavel/keldar_components/component_version_range.hpp>

#include <iosfwd>
#include <optional>
#include <string>
#include <utility>

namespace Oxtavel::KeldarComponents {

class PackageSpecifier {
  public:
    /// Leading zeros are ignored; a number has at most nine digits.
    PackageSpecifier(std::u16string const& text, IComponentVersionRangeFactory const& factory);

    /// The number, converted to text on each call.
    std::u16string Name() const;

    std::u16string ToString() const;

  private:
    std::optional<std::pair<unsigned, unsigned>> versions;
    unsigned number;
};

std::ostream& operator<<(std::ostream& stream, PackageSpecifier const& specifier);

} // namespace Oxtavel::KeldarComponents
