// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The range over a list and its ancestors that serves every walk.

#include <import/list/import_list.hpp>

#include <cstddef>
#include <iterator>

namespace lf::import {

/// A list and its ancestors, innermost first, as far as they are ImportLists.
class ListChain {
  public:
    class Iterator {
      public:
        using value_type = ImportList;
        using difference_type = std::ptrdiff_t;

        Iterator() noexcept = default;

        explicit Iterator(ImportList const* first) noexcept : list(first) {}

        ImportList const& operator*() const noexcept { return *list; }

        Iterator& operator++() noexcept {
            list = list->ancestors().first;
            return *this;
        }

        Iterator operator++(int) noexcept {
            Iterator const before = *this;
            ++*this;
            return before;
        }

        friend bool operator==(Iterator const&, Iterator const&) noexcept = default;

      private:
        ImportList const* list = nullptr;
    };

    /// \param first may be null, for an empty range.
    explicit ListChain(ImportList const* first) noexcept : innermost(first) {}

    /// From \p first outward up to, but without, \p last.
    ListChain(ImportList const* first, ImportList const* last) noexcept
        : innermost(first), outermost(last) {}

    Iterator begin() const noexcept { return Iterator(innermost); }

    Iterator end() const noexcept { return Iterator(outermost); }

  private:
    ImportList const* innermost;
    ImportList const* outermost = nullptr;
};

static_assert(std::forward_iterator<ListChain::Iterator>);

} // namespace lf::import
