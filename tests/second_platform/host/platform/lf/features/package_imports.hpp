// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The feature switch.

namespace lf::features {

bool isPackageImportsFeatureOn();

} // namespace lf::features
