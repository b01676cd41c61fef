// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// What makes version ranges, of which the library knows only that it is there.

namespace Oxtavel::KeldarComponents {

/// Nothing: the specifiers of this language read their editions themselves.
class IComponentVersionRangeFactory {};

IComponentVersionRangeFactory const& GetComponentVersionRangeFactory();

} // namespace Oxtavel::KeldarComponents
