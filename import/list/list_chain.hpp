// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// A forward range over a list and its ancestors.
///
/// A *chain* is a list and its ancestors, innermost first, as far as they are ImportLists of this
/// copy of the library. A *foreign* list is any other IImportList: one of a host, or of a second
/// copy of the library in the process. A chain ends before a foreign parent, which is used through
/// the interface.

#include <import/import_list.hpp>

#include <cstddef>
#include <iterator>
#include <memory>

namespace lf::import {

class ImportList;

class ListChain {
  public:
    class Iterator {
      public:
        using value_type = ImportList;
        using difference_type = std::ptrdiff_t;

        Iterator() noexcept = default;

        explicit Iterator(ImportList const* first) noexcept : list(first) {}

        ImportList const& operator*() const noexcept { return *list; }

        Iterator& operator++() noexcept;

        Iterator operator++(int) noexcept {
            Iterator const before = *this;
            ++*this;
            return before;
        }

        friend bool operator==(Iterator const&, Iterator const&) noexcept = default;

      private:
        ImportList const* list = nullptr;
    };

    /// \param first may be null, for an empty chain.
    explicit ListChain(ImportList const* first) noexcept : innermost(first) {}

    /// From \p first outward, up to but excluding \p last.
    ListChain(ImportList const* first, ImportList const* last) noexcept
        : innermost(first), beyond(last) {}

    /// From \p first outward to the end.
    explicit ListChain(Iterator first) noexcept : innermost(first) {}

    bool isEmpty() const noexcept { return innermost == beyond; }

    Iterator begin() const noexcept { return innermost; }

    Iterator end() const noexcept { return beyond; }

  private:
    Iterator innermost;
    Iterator beyond;
};

} // namespace lf::import
