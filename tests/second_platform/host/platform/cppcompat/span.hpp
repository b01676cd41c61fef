// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// This host's own span, which only supports iteration.

#include <concepts>
#include <cstddef>
#include <utility>

namespace cppcompat {

template <typename Element>
class span {
  public:
    template <typename Container>
    requires std::convertible_to<decltype(std::declval<Container const&>().data()), Element*>
    span(Container const& container)
    noexcept : first(container.data()), last(container.data() + container.size()) {}

    Element* begin() const noexcept { return first; }

    Element* end() const noexcept { return last; }

    std::size_t size() const noexcept { return static_cast<std::size_t>(last - first); }

  private:
    Element* first;
    Element* last;
};

} // namespace cppcompat
