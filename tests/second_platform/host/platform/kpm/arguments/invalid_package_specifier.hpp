// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The tag of a rejected package specifier, here only a name.

namespace kpm::arguments {

struct InvalidPackageSpecifier;

} // namespace kpm::arguments
