// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The imports of a scope with their places in the source.
///
/// The guarantees are those of import lists: several threads can read while no thread adds to the
/// scope or to an enclosing one, and an operation that throws changes nothing.

#include <host/overloaded.hpp>
#include <host/text.hpp>

#include <import/import_list.hpp>
#include <import/messages.hpp>

#include <algorithm>
#include <array>
#include <concepts>
#include <cstddef>
#include <limits>
#include <list>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace lf::import::host {

/// An entry of a scope with its place.
template <typename Place>
struct Import {
    /// The entry as it was added.
    ImportEntry entry;
    /// The place, as given by the host.
    Place place;
    /// Whether it was added dynamically.
    bool isDynamic;

    /// The kind of the entry.
    ImportKind kind() const noexcept { return kindOf(entry); }
};

/// An import as another scope sees it.
template <typename Place>
struct ScopedImport {
    /// Never null; owned by its scope and valid as long as the scope exists.
    Import<Place> const* imported;
    /// The number of scopes outward: 0 for the scope itself, 1 for its parent.
    std::size_t distance;

    /// Whether both are the same object at the same distance.
    friend bool operator==(ScopedImport const&, ScopedImport const&) = default;
};

/// An import that is visible in a scope's parent and hidden in the scope.
template <typename Place>
struct HiddenImport {
    /// The hidden import; its distance is that from the scope.
    ScopedImport<Place> hidden;
    /// The scope's own import that hides it; null if a foreign list hides it for its own reasons.
    Import<Place> const* by;
};

/// An addition was stored.
template <typename Place>
struct Stored {
    /// Valid as long as its scope exists.
    Import<Place> const* imported;
};

/// An addition was accepted and not stored, because the scope already has the import.
template <typename Place>
struct Repeated {
    /// The import that it repeats; null if only a foreign list knows it.
    Import<Place> const* earlier;
};

/// An addition was refused.
template <typename Place>
struct Refused {
    /// The reason.
    resource_core::GenericMsgIDHolder message;
    /// The import that it conflicts with, in this scope or an enclosing one; empty if only a
    /// foreign list knows it.
    std::optional<ScopedImport<Place>> conflict;
};

/// The result of an addition. std::visit requires a function for each case.
template <typename Place>
using Addition = std::variant<Stored<Place>, Repeated<Place>, Refused<Place>>;

/// The imports that a used name may come from.
template <typename Place>
struct Resolution {
    /// The imports that introduce the name, the nearest first: at most one package and one fully
    /// qualified import.
    std::vector<ScopedImport<Place>> imports;
    /// If no import introduces it, the visible wildcards, the innermost first. Any of them may
    /// supply the name.
    std::vector<ScopedImport<Place>> wildcards;
    /// How many leading segments of a dotted name the imports introduce: 2 if `net.http.get` is
    /// found as a member of the package `net.http`. Imports say nothing about the other segments.
    std::size_t numberOfSegments = 1;
};

/// As a limit for a number of imports: no limit.
inline constexpr std::size_t withoutLimit = std::numeric_limits<std::size_t>::max();

/// A leading part of a dotted name is looked up if it has at most this many segments, so that the
/// time for a use is linear in its length.
inline constexpr std::size_t mostSegmentsOfPrefix = 32;

namespace detail {

/// Releases a share of a scope. Shares that its destruction releases in turn are released here, one
/// after the other, so that deep nesting does not cause deep recursion.
template <typename Scope>
void releaseScope(std::shared_ptr<Scope const> share) noexcept {
    static thread_local std::shared_ptr<Scope const>* waiting = nullptr;
    if (waiting != nullptr && *waiting == nullptr) {
        *waiting = std::move(share);
        return;
    }
    std::shared_ptr<Scope const> next;
    auto* const enclosing = std::exchange(waiting, &next);
    while (share != nullptr) {
        share.reset();
        share.swap(next);
    }
    waiting = enclosing;
}

/// Returns \p key. A key that the library does not have does not compile.
consteval std::string_view keyOf(std::string_view key) {
    return std::ranges::find(messageKeys, key, &MessageKey::key)->key;
}

/// The visible entries of one kind.
template <ValidEntry Entry>
auto entriesOf(IImportList const& list, IImportList::CheckAncestorList check) {
    if constexpr (std::same_as<Entry, PackageImportEntry>) {
        return list.getPackageImportEntries(check);
    } else if constexpr (std::same_as<Entry, FullyQualifiedImportEntry>) {
        return list.getFullyQualifiedImportEntries(check);
    } else {
        return list.getWildcardImportEntries(check);
    }
}

} // namespace detail

/// The imports of one scope, each with its place.
///
/// The import list makes all decisions; the scope adds where its entries come from, and for that
/// holds a second copy of each. A scope cannot be copied or moved. Like a list, it is shared and
/// owns a share of its parent.
///
/// \tparam Place a place in the host's source, such as a source range or a node; movable.
template <typename Place>
class Scope {
  public:
    /// An entry of this scope.
    using Import = host::Import<Place>;
    /// An import that this scope sees.
    using ScopedImport = host::ScopedImport<Place>;
    /// An import that this scope hides.
    using HiddenImport = host::HiddenImport<Place>;
    /// The first case of an Addition.
    using Stored = host::Stored<Place>;
    /// The second case of an Addition.
    using Repeated = host::Repeated<Place>;
    /// The third case of an Addition.
    using Refused = host::Refused<Place>;
    /// The result of an addition.
    using Addition = host::Addition<Place>;
    /// The imports that a used name may come from.
    using Resolution = host::Resolution<Place>;

    /// An empty scope within \p enclosing, or an outermost one if \p enclosing is null.
    explicit Scope(std::shared_ptr<Scope const> enclosing = nullptr)
        : Scope(enclosing, createImportList(enclosing ? enclosing->list : nullptr)) {}

    /// The same with an import list of the library or a foreign one.
    ///
    /// \p ownList must be empty and have the list of \p enclosing as its parent. It and its
    /// ancestors must return entries that they store: other entries have no place and are left out.
    Scope(std::shared_ptr<Scope const> enclosing, std::unique_ptr<IImportList> ownList)
        : parent(std::move(enclosing)), list(std::move(ownList)) {}

    Scope(Scope const&) = delete;
    Scope& operator=(Scope const&) = delete;

    ~Scope() { detail::releaseScope(std::move(parent)); }

    /// Adds an entry of a command that applies to its whole scope, with the guarantees of
    /// IImportList::addStaticImportEntry.
    [[nodiscard]] Addition addStatic(ImportEntry&& entry, Place place) {
        return add(std::move(entry), std::move(place), false);
    }

    /// Adds an entry of a command that applies when the program reaches it, with the guarantees of
    /// IImportList::addDynamicImportEntry.
    [[nodiscard]] Addition addDynamic(ImportEntry&& entry, Place place) {
        return add(std::move(entry), std::move(place), true);
    }

    /// The imports that introduce exactly this name, the nearest first: those that
    /// IImportList::findPackageImportEntry and findFullyQualifiedImportEntry find.
    std::vector<ScopedImport> find(std::u16string_view name) const {
        std::vector<ScopedImport> found;
        appendPackage(name, found);
        appendFullyQualified(name, found);
        if (found.size() == 2 && found[1].distance < found[0].distance) {
            std::swap(found[0], found[1]);
        }
        return found;
    }

    /// The imports that a used name may come from. For a dotted name, the longest leading part that
    /// an import introduces, of at most mostSegmentsOfPrefix segments unless it is the whole name;
    /// only packages introduce several segments.
    ///
    /// \param usedName a name, dotted or not, as the script uses it.
    /// \param mostWildcards how many wildcards the result has at most. Others are not visited, so
    /// that a use does not take time for each visible wildcard.
    Resolution resolve(std::u16string_view usedName,
                       std::size_t mostWildcards = withoutLimit) const {
        std::u16string_view name = usedName;
        while (true) {
            if (std::vector<ScopedImport> found = find(name); !found.empty()) {
                return {std::move(found), {}, numberOfSegmentsOf(name)};
            }
            std::size_t const dot = name.rfind(u'.');
            if (dot == std::u16string_view::npos) {
                return {{}, visible(ImportKind::Wildcard, mostWildcards), 1};
            }
            bool const isWhole = name.size() == usedName.size();
            name = isWhole ? longestPrefixToTry(name.substr(0, dot)) : name.substr(0, dot);
        }
    }

    /// The same for a name in UTF-8.
    Resolution resolve(std::string_view usedName, std::size_t mostWildcards = withoutLimit) const {
        return resolve(Utf16Text(usedName).view(), mostWildcards);
    }

    /// The visible imports of one kind, but at most the first \p most: those of this scope in the
    /// order of addition, then those of its parent, and so on, as the getters of IImportList
    /// enumerate them.
    std::vector<ScopedImport> visible(ImportKind kind, std::size_t most = withoutLimit) const {
        switch (kind) {
        case ImportKind::Package:
            return visibleOfType<PackageImportEntry>(most);
        case ImportKind::FullyQualified:
            return visibleOfType<FullyQualifiedImportEntry>(most);
        case ImportKind::Wildcard:
            return visibleOfType<WildcardImportEntry>(most);
        }
        return {};
    }

    /// The imports that are visible in the parent and hidden in this scope: packages, then fully
    /// qualified imports, then wildcards, each in the order of the parent.
    std::vector<HiddenImport> hidden() const {
        std::vector<HiddenImport> result;
        if (parent != nullptr) {
            for (ImportKind const kind :
                 {ImportKind::Package, ImportKind::FullyQualified, ImportKind::Wildcard}) {
                appendHidden(kind, result);
            }
        }
        return result;
    }

    /// The imports of this scope alone, in the order of addition across all kinds. Adding them
    /// again in this order, statically or dynamically as before, gives an equal list.
    std::list<Import> const& imports() const noexcept { return contents.imports; }

    /// The enclosing scope; null for an outermost one.
    std::shared_ptr<Scope const> const& getParent() const noexcept { return parent; }

    /// The import list of this scope, for reading; never null.
    std::shared_ptr<IImportList const> getList() const noexcept { return list; }

  private:
    using Check = IImportList::CheckAncestorList;
    /// Keys are views into the entries of Contents::imports.
    using Index = std::map<std::u16string_view, Import const*>;

    /// An index holds the first of several imports with the same key.
    struct Contents {
        std::list<Import> imports;
        /// Indexed by ImportKind, each in the order of addition.
        std::array<std::list<Import const*>, std::variant_size_v<ImportEntry>> importsOfKind;
        Index packagesByName;
        Index namesByName;
        Index dottedByText;
        Index dottedByRoot;
        /// The largest number of segments of an introduced name.
        std::size_t mostSegments = 0;

        Contents() = default;

        /// A single import.
        explicit Contents(Import&& imported) {
            imports.push_back(std::move(imported));
            Import const& only = imports.front();
            std::visit([&](auto const& entry) { enter(entry, &only); }, only.entry);
            importsOfKind[only.entry.index()].push_back(&only);
            mostSegments = numberOfSegmentsOf(introducedNameOf(only.entry));
        }

        void enter(PackageImportEntry const& entry, Import const* imported) {
            packagesByName.emplace(entry.getIntroducedName(), imported);
        }

        void enter(FullyQualifiedImportEntry const& entry, Import const* imported) {
            namesByName.emplace(entry.getIntroducedName(), imported);
            enterDotted(entry, imported);
        }

        void enter(WildcardImportEntry const& entry, Import const* imported) {
            enterDotted(entry, imported);
        }

        template <typename Entry>
        void enterDotted(Entry const& entry, Import const* imported) {
            dottedByText.emplace(entry.getRawArgument(), imported);
            dottedByRoot.emplace(entry.getRootElement(), imported);
        }

        /// Moves the contents of \p more into this. Allocates nothing, so it cannot fail.
        void append(Contents& more) noexcept {
            imports.splice(imports.end(), more.imports);
            for (std::size_t kind = 0; kind < importsOfKind.size(); ++kind) {
                importsOfKind[kind].splice(importsOfKind[kind].end(), more.importsOfKind[kind]);
            }
            packagesByName.merge(more.packagesByName);
            namesByName.merge(more.namesByName);
            dottedByText.merge(more.dottedByText);
            dottedByRoot.merge(more.dottedByRoot);
            mostSegments = std::max(mostSegments, more.mostSegments);
        }
    };

    static Import const* lookUp(Index const& index, std::u16string_view key) noexcept {
        auto const position = index.find(key);
        return position == index.end() ? nullptr : position->second;
    }

    static std::size_t numberOfSegmentsOf(std::u16string_view name) noexcept {
        return 1 + static_cast<std::size_t>(std::ranges::count(name, u'.'));
    }

    // Adding: everything that can fail is done before the entry is added to the list.

    Addition add(ImportEntry&& entry, Place&& place, bool isDynamic) {
        Contents addition(Import{entry, std::move(place), isDynamic});
        std::size_t const sizeBefore = list->getNumberOfEntries(Check::No);
        auto refusal = isDynamic ? list->addDynamicImportEntry(std::move(entry))
                                 : list->addStaticImportEntry(std::move(entry));
        ImportEntry const& added = addition.imports.front().entry;
        if (refusal) {
            auto const conflict = findConflict(refusal->getMsgID().key, added);
            return Refused{std::move(*refusal), conflict};
        }
        if (list->getNumberOfEntries(Check::No) == sizeBefore) {
            return Repeated{findSameText(added)};
        }
        contents.append(addition);
        return Stored{&contents.imports.back()};
    }

    Import const* findSameText(ImportEntry const& entry) const {
        return std::visit(
            [&](auto const& held) -> Import const* {
                if constexpr (requires { held.getRawArgument(); }) {
                    return lookUp(contents.dottedByText, held.getRawArgument());
                } else {
                    return nullptr;
                }
            },
            entry);
    }

    /// The import that a refused entry conflicts with. The key and the kind of the entry determine
    /// which index to search.
    std::optional<ScopedImport> findConflict(std::string_view key, ImportEntry const& entry) const {
        if (key == detail::keyOf("InvalidPackageFunctionAbbreviation")) {
            return std::visit([&](auto const& held) { return findSharedRoot(held); }, entry);
        }
        std::u16string_view const name = introducedNameOf(entry);
        if (key == detail::keyOf("PackageRedeclared")) {
            return own(lookUp(contents.packagesByName, name));
        }
        if (key == detail::keyOf("PrecedenceViolation")) {
            bool const isPackage = kindOf(entry) == ImportKind::Package;
            return own(lookUp(isPackage ? contents.namesByName : contents.packagesByName, name));
        }
        return std::nullopt;
    }

    std::optional<ScopedImport> findSharedRoot(PackageImportEntry const& entry) const {
        return own(lookUp(contents.dottedByRoot, entry.getIntroducedName()));
    }

    template <typename Entry>
    std::optional<ScopedImport> findSharedRoot(Entry const& dotted) const {
        std::vector<ScopedImport> found;
        appendPackage(dotted.getRootElement(), found);
        return found.empty() ? std::nullopt : std::optional(found.front());
    }

    static std::optional<ScopedImport> own(Import const* imported) {
        return imported == nullptr ? std::nullopt : std::optional(ScopedImport{imported, 0});
    }

    // Finding: the list finds an entry; its address identifies the scope whose list stores it.

    void appendPackage(std::u16string_view name, std::vector<ScopedImport>& found) const {
        if (auto const package = list->findPackageImportEntry(name, Check::Yes)) {
            appendHolder(
                name, &Contents::packagesByName,
                [&](IImportList const& candidate) {
                    auto const own = candidate.findPackageImportEntry(name, Check::No);
                    return own && &own->entry == &package->entry;
                },
                found);
        }
    }

    void appendFullyQualified(std::u16string_view name, std::vector<ScopedImport>& found) const {
        if (auto const entry = list->findFullyQualifiedImportEntry(name, Check::Yes)) {
            appendHolder(
                name, &Contents::namesByName,
                [&](IImportList const& candidate) {
                    auto const own = candidate.findFullyQualifiedImportEntry(name, Check::No);
                    return own && own->rawArgument.data() == entry->rawArgument.data();
                },
                found);
        }
    }

    template <typename Holds>
    void appendHolder(std::u16string_view name, Index Contents::*index, Holds const& holds,
                      std::vector<ScopedImport>& found) const {
        std::size_t distance = 0;
        for (Scope const* scope = this; scope != nullptr; scope = scope->parent.get()) {
            if (holds(*scope->list)) {
                if (Import const* const imported = lookUp(scope->contents.*index, name)) {
                    found.push_back({imported, distance});
                }
                return;
            }
            ++distance;
        }
    }

    /// The longest part of \p prefix to look up. It has at most mostSegmentsOfPrefix segments and
    /// at most as many as an import of the chain introduces.
    std::u16string_view longestPrefixToTry(std::u16string_view prefix) const noexcept {
        std::size_t segments = 1;
        for (Scope const* scope = this; scope != nullptr; scope = scope->parent.get()) {
            segments = std::max(segments, scope->contents.mostSegments);
        }
        std::size_t end = 0;
        for (segments = std::min(segments, mostSegmentsOfPrefix); segments > 0; --segments) {
            end = prefix.find(u'.', end);
            if (end == std::u16string_view::npos) {
                return prefix;
            }
            ++end;
        }
        return prefix.substr(0, end - 1);
    }

    // Enumerating: the visible entries are a subsequence of all entries of the chain.

    /// The entries of one kind that the lists of the chain store, each with its import. Reads them
    /// lazily.
    template <typename Entry>
    class StoredEntries {
      public:
        explicit StoredEntries(Scope const& innermost) { open(&innermost); }

        /// The import of \p entry; nothing if no list stores it. Call it with entries in their
        /// order.
        std::optional<ScopedImport> find(Entry const& entry) {
            for (std::size_t index = next; index < stored.size() || readOne(); ++index) {
                if (stored[index].first == &entry) {
                    next = index + 1;
                    return stored[index].second;
                }
            }
            return std::nullopt;
        }

      private:
        using Entries =
            decltype(detail::entriesOf<Entry>(std::declval<IImportList const&>(), Check::No));

        bool readOne() {
            while (scope != nullptr) {
                if (hasOne()) {
                    stored.emplace_back(&*position, ScopedImport{*imported, distance});
                    ++position;
                    ++imported;
                    return true;
                }
                open(scope->parent.get());
                ++distance;
            }
            return false;
        }

        bool hasOne() { return imported != importsOf(*scope).end() && position != entries.end(); }

        /// Does not enumerate a list without entries of this kind.
        void open(Scope const* opened) {
            scope = opened;
            if (scope == nullptr) {
                return;
            }
            imported = importsOf(*scope).begin();
            if (imported != importsOf(*scope).end()) {
                entries = detail::entriesOf<Entry>(*scope->list, Check::No);
                position = entries.begin();
            }
        }

        static std::list<Import const*> const& importsOf(Scope const& owner) noexcept {
            return owner.contents.importsOfKind[static_cast<std::size_t>(kindOfType<Entry>)];
        }

        Scope const* scope = nullptr;
        std::size_t distance = 0;
        typename std::list<Import const*>::const_iterator imported;
        Entries entries;
        decltype(std::declval<Entries&>().begin()) position;
        std::vector<std::pair<Entry const*, ScopedImport>> stored;
        std::size_t next = 0;
    };

    template <typename Entry>
    std::vector<ScopedImport> visibleOfType(std::size_t most) const {
        std::vector<ScopedImport> result;
        if (most == 0) {
            return result;
        }
        StoredEntries<Entry> stored(*this);
        for (Entry const& entry : detail::entriesOf<Entry>(*list, Check::Yes)) {
            if (auto const imported = stored.find(entry)) {
                result.push_back(*imported);
                if (result.size() == most) {
                    break;
                }
            }
        }
        return result;
    }

    void appendHidden(ImportKind kind, std::vector<HiddenImport>& result) const {
        std::vector<ScopedImport> const seen = visible(kind);
        auto next = std::ranges::find_if(
            seen, [](std::size_t distance) { return distance > 0; }, &ScopedImport::distance);
        for (ScopedImport candidate : parent->visible(kind)) {
            ++candidate.distance;
            if (next != seen.end() && *next == candidate) {
                ++next;
            } else {
                result.push_back({candidate, findHider(candidate.imported->entry)});
            }
        }
    }

    Import const* findHider(ImportEntry const& entry) const {
        std::u16string_view const name = introducedNameOf(entry);
        if (kindOf(entry) == ImportKind::Package) {
            auto const* const package = lookUp(contents.packagesByName, name);
            return package != nullptr ? package : lookUp(contents.namesByName, name);
        }
        auto const* const package = kindOf(entry) == ImportKind::FullyQualified
                                        ? lookUp(contents.packagesByName, name)
                                        : nullptr;
        return package != nullptr ? package : findSameText(entry);
    }

    std::shared_ptr<Scope const> parent;
    std::shared_ptr<IImportList> list;
    Contents contents;
}; // namespace lf::import::host

/// Which imports the uses of a program have reached. Not for concurrent use. The scopes of the
/// resolutions that were added must exist while it is queried.
template <typename Place>
class UseRecord {
  public:
    /// Records the resolution of a use: the imports that introduce its name are reached, or else
    /// every wildcard that may supply it.
    void add(Resolution<Place> const& resolution) {
        // Merging allocates nothing, so that a use is recorded completely or not at all.
        std::set<Import<Place> const*> imports;
        for (ScopedImport<Place> const& scoped : resolution.imports) {
            imports.insert(scoped.imported);
        }
        for (ScopedImport<Place> const& scoped : resolution.wildcards) {
            imports.insert(scoped.imported);
        }
        reached.merge(imports);
    }

    /// Whether a use has reached \p imported.
    bool reaches(Import<Place> const& imported) const { return reached.contains(&imported); }

    /// The imports of \p scope alone that no use has reached, in the order of their addition.
    std::vector<Import<Place> const*> unreached(Scope<Place> const& scope) const {
        std::vector<Import<Place> const*> result;
        for (Import<Place> const& imported : scope.imports()) {
            if (!reaches(imported)) {
                result.push_back(&imported);
            }
        }
        return result;
    }

  private:
    std::set<Import<Place> const*> reached;
};

} // namespace lf::import::host
