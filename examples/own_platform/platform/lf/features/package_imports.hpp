// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The feature switch of package imports, which this language has always had.

namespace lf::features {

/// Yes.
bool isPackageImportsFeatureOn();

} // namespace lf::features
