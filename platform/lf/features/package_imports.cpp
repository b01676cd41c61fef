// SPDX-License-Identifier: BSL-1.0
#include <lf/features/package_imports.hpp>

#include <atomic>

namespace lf::features {

namespace {

constinit std::atomic<bool> packageImports = true;

} // namespace

bool isPackageImportsFeatureOn() {
    return packageImports;
}

void setPackageImportsFeature(bool on) {
    packageImports = on;
}

} // namespace lf::features
