// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The exception for text that is not a package specifier.

#include <foundation/core/except/exception.hpp>
#include <gleigem_platform/export.hpp>

#include <exception>

namespace kpm::arguments {

/// Tag of the exception for a text that is not a package specifier or version range.
struct GLEIGEM_PLATFORM_EXPORT InvalidPackageSpecifier {
    /// The text that what() returns.
    static constexpr char const* description = "invalid package specifier";
};

} // namespace kpm::arguments

namespace foundation::core::except {

extern template class GLEIGEM_PLATFORM_EXPORT
    Exception<kpm::arguments::InvalidPackageSpecifier, std::exception>;

} // namespace foundation::core::except
