// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Replaces the reference platform's header: a specifier whose move constructor may throw.

namespace Oxtavel::KeldarComponents {

struct PackageSpecifier {
    PackageSpecifier(PackageSpecifier&& other);
};

} // namespace Oxtavel::KeldarComponents
