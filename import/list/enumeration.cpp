// SPDX-License-Identifier: BSL-1.0

// Enumeration of the visible entries. All ImportLists of a chain are one view with a cursor of
// three words, however deep the chain; each entry of an ancestor is put to every list on the way to
// it, by that list's own contents alone.

#include <import/list/import_list.hpp>
#include <import/list/list_chain.hpp>

#include <range/v3/iterator/default_sentinel.hpp>
#include <range/v3/range/access.hpp>
#include <range/v3/view/any_view.hpp>
#include <range/v3/view/facade.hpp>
#include <range/v3/view/ref.hpp>
#include <range/v3/view/remove_if.hpp>

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

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
    NameKey name;
    NameKey rawArgument;
};

template <>
class Hiding<WildcardImportEntry> {
  public:
    explicit Hiding(WildcardImportEntry const& entry) noexcept
        : rawArgument(entry.getRawArgument()) {}

    bool by(ImportList const& list) const noexcept { return list.holdsRawArgument(rawArgument); }

  private:
    NameKey rawArgument;
};

template <>
class Hiding<PackageImportEntry> {
  public:
    explicit Hiding(PackageImportEntry const& entry) noexcept : name(entry.getIntroducedName()) {}

    bool by(ImportList const& list) const noexcept {
        return list.findOwnPackage(name) != nullptr || list.findOwnFullyQualified(name) != nullptr;
    }

  private:
    NameKey name;
};

// Whether a list of \p lists hides \p entry.
template <typename Entry>
bool isHidden(Entry const& entry, ListChain lists) noexcept {
    Hiding<Entry> const hiding(entry);
    return std::ranges::any_of(lists, [&](ImportList const& list) { return hiding.by(list); });
}

// The place of a walk through the visible entries of a list and its ancestors, as far as they are
// ImportLists.
template <typename Entry>
class RunCursor {
  public:
    RunCursor() = default;

    explicit RunCursor(ImportList const& list) noexcept : asked(&list) {
        moveTo(&list);
        skipHidden();
    }

    Entry const& read() const noexcept { return *entry; }

    void next() noexcept {
        ++entry;
        skipHidden();
    }

    bool equal(RunCursor const& other) const noexcept { return entry == other.entry; }

    bool equal(ranges::default_sentinel_t) const noexcept { return reached == nullptr; }

  private:
    // Null ends the walk.
    void moveTo(ImportList const* list) noexcept {
        reached = list;
        entry = list != nullptr ? list->ownEntries<Entry>().data() : nullptr;
    }

    void skipHidden() noexcept {
        while (reached != nullptr) {
            std::vector<Entry> const& entries = reached->ownEntries<Entry>();
            for (Entry const* const end = entries.data() + entries.size(); entry != end; ++entry) {
                if (reached == asked || !isHidden(*entry, ListChain(asked, reached))) {
                    return;
                }
            }
            moveTo(reached->ancestors().first);
        }
    }

    ImportList const* asked = nullptr;
    ImportList const* reached = nullptr; // null at the end
    Entry const* entry = nullptr;        // of the list reached
};

// The visible entries of a list all of whose ancestors are ImportLists.
template <typename Entry>
class VisibleEntries : public ranges::view_facade<VisibleEntries<Entry>> {
  public:
    VisibleEntries() = default;

    explicit VisibleEntries(ImportList const& list) noexcept : asked(&list) {}

  private:
    friend ranges::range_access;

    RunCursor<Entry> begin_cursor() const { return RunCursor<Entry>(*asked); }

    ranges::default_sentinel_t end_cursor() const { return {}; }

    ImportList const* asked = nullptr;
};

template <typename Entry>
using AnyView = ranges::any_view<Entry const&, ranges::category::forward>;

// The visible entries of a list that has an ancestor of another make: behind those of the
// ImportLists what that ancestor answers, less what they hide.
//
// ranges::concat_view joins views, too, but when a copy of its iterator runs out of memory, that
// destroys an iterator that was never made.
template <typename Entry>
class VisibleAndForeignEntries : public ranges::view_facade<VisibleAndForeignEntries<Entry>> {
  public:
    VisibleAndForeignEntries() = default;

    VisibleAndForeignEntries(ImportList const& list, AnyView<Entry> answer)
        : asked(&list), foreignEntries(std::move(answer), HiddenOnTheWay{&list}) {}

  private:
    friend ranges::range_access;

    struct HiddenOnTheWay {
        ImportList const* asked;

        bool operator()(Entry const& entry) const { return isHidden(entry, ListChain(asked)); }
    };

    using ForeignEntries = ranges::remove_if_view<AnyView<Entry>, HiddenOnTheWay>;

    class Cursor {
      public:
        Cursor() = default;

        Cursor(ImportList const& list, ForeignEntries& behind) : foreignEntries(&behind) {
            moveTo(RunCursor<Entry>(list));
        }

        Entry const& read() const { return isInRun() ? run.read() : *foreign; }

        void next() {
            if (!isInRun()) {
                ++foreign;
                return;
            }
            RunCursor<Entry> following = run;
            following.next();
            moveTo(following);
        }

        bool equal(Cursor const& other) const {
            return run.equal(other.run) && (isInRun() || foreign == other.foreign);
        }

        bool equal(ranges::default_sentinel_t) const {
            return !isInRun() && foreign == ranges::end(*foreignEntries);
        }

      private:
        bool isInRun() const noexcept { return !run.equal(ranges::default_sentinel); }

        void moveTo(RunCursor<Entry> const& place) {
            if (place.equal(ranges::default_sentinel)) {
                foreign = ranges::begin(*foreignEntries);
            }
            run = place;
        }

        RunCursor<Entry> run;
        ranges::iterator_t<ForeignEntries> foreign; // singular while in the run
        ForeignEntries* foreignEntries = nullptr;
    };

    Cursor begin_cursor() { return Cursor(*asked, foreignEntries); }

    ranges::default_sentinel_t end_cursor() const { return {}; }

    ImportList const* asked = nullptr;
    ForeignEntries foreignEntries;
};

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
    return VisibleAndForeignEntries<Entry>(list, (foreign->*getter)(check));
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
