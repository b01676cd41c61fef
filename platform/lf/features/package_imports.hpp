// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The feature switch of package imports. Safe to use from several threads.

#include <gleigem_platform/export.hpp>

namespace lf::features {

/// Whether `import` can import packages. On when the process starts.
GLEIGEM_PLATFORM_EXPORT bool isPackageImportsFeatureOn();

/// Turns package imports on or off for the whole process.
GLEIGEM_PLATFORM_EXPORT void setPackageImportsFeature(bool on);

} // namespace lf::features
