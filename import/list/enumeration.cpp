// SPDX-License-Identifier: BSL-1.0

// Enumeration of the visible entries. All ImportLists of a chain are one view with a cursor of
// three words, however deep the chain; each entry of an ancestor is put to every list on the way to
// it, by that list's own contents alone.

#include <import/list/import_list.hpp>
#include <import/list/list_chain.hpp>

#include <range/v3/iterator/default_sentinel.hpp>
#include <range/v3/view/any_view.hpp>
#include <range/v3/view/concat.hpp>
#include <range/v3/view/facade.hpp>
#include <range/v3/view/ref.hpp>
#include <range/v3/view/remove_if.hpp>

#include <algorithm>
#include <cstddef>

namespace lf::import {

namespace {

// By what a list hides an ancestor's entry; names are hashed once for all lists on the way.
template <typename Entry>
class Hiding;

template <>
class Hiding<FullyQualifiedImportEntry> {
  public:
    explicit Hiding(FullyQualifiedImportEntry const& entry) noexcept
        : name(entry.getIntroducedName()), rawArgument(entry.getRawArgument()) {}

    bool by(ImportList const& list) const noexcept {
        return list.findOwnPackage(name) != nullptr || list.holdsRawArgument(rawArgument);
    }

  private:
    HashedName name;
    HashedName rawArgument;
};

template <>
class Hiding<WildcardImportEntry> {
  public:
    explicit Hiding(WildcardImportEntry const& entry) noexcept
        : rawArgument(entry.getRawArgument()) {}

    bool by(ImportList const& list) const noexcept { return list.holdsRawArgument(rawArgument); }

  private:
    HashedName rawArgument;
};

template <>
class Hiding<PackageImportEntry> {
  public:
    explicit Hiding(PackageImportEntry const& entry) noexcept : name(entry.getIntroducedName()) {}

    bool by(ImportList const& list) const noexcept {
        return list.findOwnPackage(name) != nullptr || list.findOwnFullyQualified(name) != nullptr;
    }

  private:
    HashedName name;
};

// Whether a list of \p lists hides \p entry.
template <typename Entry>
bool isHidden(Entry const& entry, ListChain lists) {
    Hiding<Entry> const hiding(entry);
    return std::ranges::any_of(lists, [&](ImportList const& list) { return hiding.by(list); });
}

// The visible entries of a list and its ancestors, as far as they are ImportLists.
template <typename Entry>
class VisibleEntries : public ranges::view_facade<VisibleEntries<Entry>> {
  public:
    VisibleEntries() = default;

    explicit VisibleEntries(ImportList const& list) noexcept : asked(&list) {}

  private:
    friend ranges::range_access;

    class Cursor {
      public:
        Cursor() = default;

        explicit Cursor(ImportList const& list) : asked(&list), reached(&list) { skipHidden(); }

        Entry const& read() const { return reached->ownEntries<Entry>()[position]; }

        void next() {
            ++position;
            skipHidden();
        }

        bool equal(Cursor const& other) const noexcept {
            return reached == other.reached && position == other.position;
        }

        bool equal(ranges::default_sentinel_t) const noexcept { return reached == nullptr; }

      private:
        void skipHidden() {
            while (reached != nullptr && !isAtVisibleEntry()) {
                if (position < reached->ownEntries<Entry>().size()) {
                    ++position;
                } else {
                    reached = reached->ancestors().first;
                    position = 0;
                }
            }
        }

        bool isAtVisibleEntry() const {
            return position < reached->ownEntries<Entry>().size() &&
                   !isHidden(read(), ListChain(asked, reached));
        }

        ImportList const* asked = nullptr;
        ImportList const* reached = nullptr; // null at the end
        std::size_t position = 0;
    };

    Cursor begin_cursor() const { return Cursor(*asked); }

    ranges::default_sentinel_t end_cursor() const { return {}; }

    ImportList const* asked = nullptr;
};

template <typename Entry>
using AnyView = ranges::any_view<Entry const&, ranges::category::forward>;

template <typename Entry>
AnyView<Entry> visibleEntries(ImportList const& list, IImportList::CheckAncestorList check,
                              AnyView<Entry> (IImportList::*getter)(IImportList::CheckAncestorList)
                                  const) {
    if (check != IImportList::CheckAncestorList::Yes) {
        return ranges::ref_view(list.ownEntries<Entry>());
    }
    IImportList const* const foreign = list.ancestors().foreign;
    if (foreign == nullptr) {
        return VisibleEntries<Entry>(list);
    }
    auto const isHiddenOnTheWay = [&list](Entry const& entry) {
        return isHidden(entry, ListChain(&list));
    };
    return ranges::concat_view(VisibleEntries<Entry>(list),
                               ranges::remove_if_view((foreign->*getter)(check), isHiddenOnTheWay));
}

} // namespace

AnyView<FullyQualifiedImportEntry>
ImportList::getFullyQualifiedImportEntries(CheckAncestorList check) const {
    return visibleEntries(*this, check, &IImportList::getFullyQualifiedImportEntries);
}

AnyView<WildcardImportEntry> ImportList::getWildcardImportEntries(CheckAncestorList check) const {
    return visibleEntries(*this, check, &IImportList::getWildcardImportEntries);
}

AnyView<PackageImportEntry> ImportList::getPackageImportEntries(CheckAncestorList check) const {
    return visibleEntries(*this, check, &IImportList::getPackageImportEntries);
}

} // namespace lf::import
