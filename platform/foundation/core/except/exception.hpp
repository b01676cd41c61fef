// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Exceptions distinguished by a tag, for failures that need no class of their own.

#include <gleigem_platform/export.hpp>

namespace foundation::core::except {

/// The failure that \p Tag names; also caught as \p Base.
///
/// \tparam Tag  has a static text `description`, which what() returns.
/// \tparam Base an exception class with a virtual `what() const noexcept`, such as std::exception.
///
/// A tag that is used across libraries declares its instantiation `extern template` beside itself
/// and defines it once, so that there is one type information for all libraries.
template <typename Tag, typename Base>
class GLEIGEM_PLATFORM_EXPORT Exception : public Base {
  public:
    Exception() noexcept = default;
    Exception(Exception const&) noexcept = default;
    Exception& operator=(Exception const&) noexcept = default;
    ~Exception() override;

    /// A short description. Points to a string literal.
    char const* what() const noexcept override;
};

template <typename Tag, typename Base>
Exception<Tag, Base>::~Exception() = default;

template <typename Tag, typename Base>
char const* Exception<Tag, Base>::what() const noexcept {
    return Tag::description;
}

} // namespace foundation::core::except
