// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The factory of version ranges; the library only passes it on.

namespace Oxtavel::KeldarComponents {

/// Empty, since specifiers in this language parse editions themselves.
class IComponentVersionRangeFactory {};

IComponentVersionRangeFactory const& GetComponentVersionRangeFactory();

} // namespace Oxtavel::KeldarComponents
