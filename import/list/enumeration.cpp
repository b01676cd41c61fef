// SPDX-License-Identifier: BSL-1.0

// Enumeration of the visible entries. One view walks a whole chain. An ancestor's entry is visible
// if none of the lists before it hides it by its own contents.

#include <import/list/import_list.hpp>

#include <range/v3/iterator/default_sentinel.hpp>
#include <range/v3/range/access.hpp>
#include <range/v3/view/any_view.hpp>
#include <range/v3/view/facade.hpp>
#include <range/v3/view/transform.hpp>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace lf::import {

namespace {

template <typename Entry>
using AnyView = ranges::any_view<Entry const&, ranges::category::forward>;

EntryHashes hashesOf(FullyQualifiedImportEntry const& entry, HashKey const& key) noexcept {
    return {.introducedName = key.hash(entry.getIntroducedName()),
            .rawArgument = key.hash(entry.getRawArgument())};
}

EntryHashes hashesOf(WildcardImportEntry const& entry, HashKey const& key) noexcept {
    return {.rawArgument = key.hash(entry.getRawArgument())};
}

EntryHashes hashesOf(PackageImportEntry const& entry, HashKey const& key) noexcept {
    return {.introducedName = key.hash(entry.getIntroducedName())};
}

// Whether a list of \p lists hides an ancestor's entry.

bool isHidden(FullyQualifiedImportEntry const& entry, EntryHashes hashes,
              ListChain lists) noexcept {
    NameKey const name(entry.getIntroducedName(), hashes.introducedName);
    NameKey const raw(entry.getRawArgument(), hashes.rawArgument);
    return std::ranges::any_of(lists, [&](ImportList const& list) {
        return list.findOwn<PackageImportEntry>(name) != nullptr || list.holdsRawArgument(raw);
    });
}

bool isHidden(WildcardImportEntry const& entry, EntryHashes hashes, ListChain lists) noexcept {
    NameKey const raw(entry.getRawArgument(), hashes.rawArgument);
    return std::ranges::any_of(lists,
                               [&](ImportList const& list) { return list.holdsRawArgument(raw); });
}

bool isHidden(PackageImportEntry const& entry, EntryHashes hashes, ListChain lists) noexcept {
    NameKey const name(entry.getIntroducedName(), hashes.introducedName);
    return std::ranges::any_of(lists, [&](ImportList const& list) {
        return list.findOwn<PackageImportEntry>(name) != nullptr ||
               list.findOwn<FullyQualifiedImportEntry>(name) != nullptr;
    });
}

// A filter of the names in the lists that a cursor has passed. An entry whose names it does not
// have is visible, and these lists need not be searched.
class PassedNames {
  public:
    void add(ImportList const& list) noexcept {
        if (list.getNumberOfEntries(IImportList::CheckAncestorList::No) > mostEntries) {
            words.fill(~std::uint64_t{0}); // reading all of it would cost more than it saves
            return;
        }
        for (auto const& [entry, hashes] : list.ownEntries<PackageImportEntry>()) {
            add(hashes.introducedName);
        }
        for (auto const& [entry, hashes] : list.ownEntries<FullyQualifiedImportEntry>()) {
            add(hashes.introducedName);
            add(hashes.rawArgument);
        }
        for (auto const& [entry, hashes] : list.ownEntries<WildcardImportEntry>()) {
            add(hashes.rawArgument);
        }
    }

    bool mayHide(PackageImportEntry const& /*entry*/, EntryHashes hashes) const noexcept {
        return mayHold(hashes.introducedName);
    }

    bool mayHide(FullyQualifiedImportEntry const& /*entry*/, EntryHashes hashes) const noexcept {
        return mayHold(hashes.introducedName) || mayHold(hashes.rawArgument);
    }

    bool mayHide(WildcardImportEntry const& /*entry*/, EntryHashes hashes) const noexcept {
        return mayHold(hashes.rawArgument);
    }

  private:
    static constexpr std::size_t mostEntries = 64;

    void add(NameHash hash) noexcept { words[hash % words.size()] |= filterBitsOf(hash); }

    bool mayHold(NameHash hash) const noexcept {
        std::uint64_t const bits = filterBitsOf(hash);
        return (words[hash % words.size()] & bits) == bits;
    }

    std::array<std::uint64_t, 32> words{};
};

// A position among the visible entries of a chain.
template <typename Entry>
class ChainCursor {
  public:
    ChainCursor() = default;

    explicit ChainCursor(ImportList const& list) noexcept : asked(&list) {
        moveTo(&list);
        skipHidden();
    }

    Entry const& read() const noexcept { return place->entry; }

    void next() noexcept {
        ++place;
        skipHidden();
    }

    bool equal(ChainCursor const& other) const noexcept { return place == other.place; }

    bool equal(ranges::default_sentinel_t) const noexcept { return isAtEnd(); }

    bool isAtEnd() const noexcept { return reached == nullptr; }

  private:
    // Null is the end.
    void moveTo(ImportList const* list) noexcept {
        reached = list;
        place = list != nullptr ? list->ownEntries<Entry>().data() : nullptr;
    }

    void skipHidden() noexcept {
        while (reached != nullptr) {
            auto const& entries = reached->ownEntries<Entry>();
            for (auto const* const end = entries.data() + entries.size(); place != end; ++place) {
                if (!passed.mayHide(place->entry, place->hashes) ||
                    !isHidden(place->entry, place->hashes, ListChain(asked, reached))) {
                    return;
                }
            }
            ImportList const* const next = reached->enclosingList();
            if (next != nullptr) {
                passed.add(*reached);
            }
            moveTo(next);
        }
    }

    ImportList const* asked = nullptr;
    ImportList const* reached = nullptr;       // null at the end
    StoredEntry<Entry> const* place = nullptr; // in the list reached
    PassedNames passed;
};

// The visible entries of a list without foreign ancestors.
template <typename Entry>
class VisibleEntries : public ranges::view_facade<VisibleEntries<Entry>> {
  public:
    VisibleEntries() = default;

    explicit VisibleEntries(ImportList const& list) noexcept : asked(&list) {}

  private:
    friend ranges::range_access;

    ChainCursor<Entry> begin_cursor() const { return ChainCursor<Entry>(*asked); }

    ranges::default_sentinel_t end_cursor() const { return {}; }

    ImportList const* asked = nullptr;
};

// The visible entries of a list with a foreign ancestor: those of the chain, then those that the
// ancestor returns and the chain does not hide.
//
// Not a ranges::concat_view: if memory runs out while its iterator is copied, it destroys an
// iterator that was never constructed.
template <typename Entry>
class VisibleAndForeignEntries : public ranges::view_facade<VisibleAndForeignEntries<Entry>> {
  public:
    VisibleAndForeignEntries() = default;

    VisibleAndForeignEntries(ImportList const& list, AnyView<Entry> answer)
        : asked(&list), foreignEntries(std::move(answer)) {}

  private:
    friend ranges::range_access;

    // Stores a pointer to its entry: if foreign lists wrap lists with foreign ancestors, reading
    // through all of them would make each step quadratic in their number.
    class Cursor {
      public:
        Cursor() = default;

        explicit Cursor(VisibleAndForeignEntries& itsView) : view(&itsView), own(*itsView.asked) {
            if (own.isAtEnd()) {
                foreign = ranges::begin(view->foreignEntries);
            }
            settle();
        }

        Entry const& read() const noexcept { return *entry; }

        void next() {
            if (own.isAtEnd()) {
                ++foreign;
            } else if (own.next(); own.isAtEnd()) {
                foreign = ranges::begin(view->foreignEntries);
            }
            settle();
        }

        bool equal(Cursor const& other) const {
            return own.equal(other.own) && (!own.isAtEnd() || foreign == other.foreign);
        }

        bool equal(ranges::default_sentinel_t) const noexcept { return entry == nullptr; }

      private:
        // Moves on to a visible entry unless it is at one.
        void settle() {
            if (!own.isAtEnd()) {
                entry = &own.read();
                return;
            }
            ImportList const& list = *view->asked;
            for (; foreign != ranges::end(view->foreignEntries); ++foreign) {
                entry = &*foreign;
                if (!isHidden(*entry, hashesOf(*entry, list.hashKey()), list.chain())) {
                    return;
                }
            }
            entry = nullptr;
        }

        VisibleAndForeignEntries* view = nullptr;
        ChainCursor<Entry> own;
        ranges::iterator_t<AnyView<Entry>> foreign; // singular while in the chain
        Entry const* entry = nullptr;               // null at the end
    };

    Cursor begin_cursor() { return Cursor(*this); }

    ranges::default_sentinel_t end_cursor() const { return {}; }

    ImportList const* asked = nullptr;
    AnyView<Entry> foreignEntries;
};

template <typename Entry>
AnyView<Entry> visibleEntries(ImportList const& list, IImportList::CheckAncestorList check,
                              AnyView<Entry> (IImportList::*getter)(IImportList::CheckAncestorList)
                                  const) {
    if (check != IImportList::CheckAncestorList::Yes) {
        return ranges::views::transform(list.ownEntries<Entry>(), &StoredEntry<Entry>::entry);
    }
    auto const& foreign = list.foreignAncestor();
    if (foreign == nullptr) {
        return VisibleEntries<Entry>(list);
    }
    return VisibleAndForeignEntries<Entry>(list, ((*foreign).*getter)(check));
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
