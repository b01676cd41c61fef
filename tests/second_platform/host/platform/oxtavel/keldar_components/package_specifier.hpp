// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Packages have numbers, and so have their versions: `12`, `12@5..9`.

#include <oxtavel/keldar_components/component_version_range.hpp>

#include <iosfwd>
#include <optional>
#include <string>
#include <utility>

namespace Oxtavel::KeldarComponents {

class PackageSpecifier {
  public:
    /// Leading zeros mean nothing; a number has nine digits at the most.
    PackageSpecifier(std::u16string const& text, IComponentVersionRangeFactory const& factory);

    /// The number, put into words anew each time.
    std::u16string Name() const;

    std::u16string ToString() const;

  private:
    std::optional<std::pair<unsigned, unsigned>> versions;
    unsigned number;
};

std::ostream& operator<<(std::ostream& stream, PackageSpecifier const& specifier);

} // namespace Oxtavel::KeldarComponents
