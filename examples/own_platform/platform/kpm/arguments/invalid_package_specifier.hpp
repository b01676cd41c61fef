// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The exception for text that is not a valid package specifier.

#include <foundation/core/except/exception.hpp>

#include <exception>

namespace kpm::arguments {

struct InvalidPackageSpecifier;

} // namespace kpm::arguments

namespace foundation::core::except {

template <>
class Exception<kpm::arguments::InvalidPackageSpecifier, std::exception> : public std::exception {
  public:
    /// Defined in the source file, so that all libraries share the type information.
    char const* what() const noexcept override;
};

} // namespace foundation::core::except
