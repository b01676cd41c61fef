// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The feature switch of package imports, which are always on in this language.

namespace lf::features {

/// Always true.
bool isPackageImportsFeatureOn();

} // namespace lf::features
