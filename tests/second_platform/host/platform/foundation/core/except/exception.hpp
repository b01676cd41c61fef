// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Exceptions with this host's own tag and texts.

#include <string>
#include <utility>

namespace foundation::core::except {

template <typename Tag, typename Base>
class Exception : public Base {
  public:
    explicit Exception(std::string itsWords) : words(std::move(itsWords)) {}

    char const* what() const noexcept override { return words.c_str(); }

  private:
    std::string words;
};

} // namespace foundation::core::except
