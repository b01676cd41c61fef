// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Stands before the reference platform's header: a specifier whose move may throw.

namespace Oxtavel::KeldarComponents {

struct PackageSpecifier {
    PackageSpecifier(PackageSpecifier&& other);
};

} // namespace Oxtavel::KeldarComponents
