// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The tag of a refused package specifier, which is nothing but a name here.

namespace kpm::arguments {

struct InvalidPackageSpecifier;

} // namespace kpm::arguments
