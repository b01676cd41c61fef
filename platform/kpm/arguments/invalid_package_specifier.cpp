// SPDX-License-Identifier: BSL-1.0
#include <kpm/arguments/invalid_package_specifier.hpp>

namespace foundation::core::except {

template class Exception<kpm::arguments::InvalidPackageSpecifier, std::exception>;

} // namespace foundation::core::except
