// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Version ranges: the first and the last of consecutive numbers.

#include <string_view>
#include <utility>

namespace Oxtavel::KeldarComponents {

class IComponentVersionRangeFactory {
  public:
    virtual ~IComponentVersionRangeFactory() = default;

    /// Reads `5..9`.
    virtual std::pair<unsigned, unsigned> makeRange(std::u16string_view text) const = 0;
};

IComponentVersionRangeFactory const& GetComponentVersionRangeFactory();

} // namespace Oxtavel::KeldarComponents
