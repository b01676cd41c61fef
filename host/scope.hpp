// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The imports of a scope together with their places in the source: what the lists of the library
/// decide, said in terms of the host's own source.
///
/// Everything here reads and adds as the lists do: reading from several threads is safe while no
/// thread adds to the scope or to an enclosing one; what throws leaves all as it was.

#include <host/overloaded.hpp>
#include <host/text.hpp>

#include <import/import_list.hpp>
#include <import/messages.hpp>

#include <algorithm>
#include <concepts>
#include <cstddef>
#include <iterator>
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

/// An entry of a scope and where it comes from.
template <typename Place>
struct Import {
    /// As it was added.
    ImportEntry entry;
    /// Whatever the host says of its place.
    Place place;
    /// Whether it was added dynamically.
    bool isDynamic;

    /// What it imports.
    ImportKind kind() const noexcept { return kindOf(entry); }
};

/// An import as another scope sees it.
template <typename Place>
struct ScopedImport {
    /// Never null; owned by its scope, as long as that lives.
    Import<Place> const* imported;
    /// How many scopes out it is: 0 in the scope that was asked, 1 in its parent.
    std::size_t distance;

    /// Whether both are the very same import, seen from the same distance.
    friend bool operator==(ScopedImport const&, ScopedImport const&) = default;
};

/// An import that a scope's parent sees and the scope does not.
template <typename Place>
struct HiddenImport {
    /// What is hidden, as the scope would see it.
    ScopedImport<Place> hidden;
    /// The scope's own import that hides it; null if only a foreign list knows why.
    Import<Place> const* by;
};

/// An addition was stored.
template <typename Place>
struct Stored {
    /// Lives as long as its scope.
    Import<Place> const* imported;
};

/// An addition was accepted and not stored, since the scope has it already.
template <typename Place>
struct Repeated {
    /// What it repeats; null if only a foreign list knows.
    Import<Place> const* earlier;
};

/// An addition was refused.
template <typename Place>
struct Refused {
    /// Why.
    resource_core::GenericMsgIDHolder message;
    /// What it conflicts with, in this scope or an enclosing one; nothing if only a
    /// foreign list knows.
    std::optional<ScopedImport<Place>> conflict;
};

/// What became of an addition; std::visit wants every case to be dealt with.
template <typename Place>
using Addition = std::variant<Stored<Place>, Repeated<Place>, Refused<Place>>;

/// What a used name may come from.
template <typename Place>
struct Resolution {
    /// What introduces the name, the nearest first: at most one package and one fully qualified
    /// import.
    std::vector<ScopedImport<Place>> imports;
    /// Where nothing introduces it: the visible wildcards, any of which may supply it, outward.
    std::vector<ScopedImport<Place>> wildcards;
    /// How many segments of a dotted name all this is about: 2 where `net.http.get` is found as a
    /// member of the package `net.http`. What follows them is no affair of imports.
    std::size_t numberOfSegments = 1;
};

namespace detail {

/// Gives up a share of a scope. What its destruction gives up in turn is destroyed here, one after
/// the other, so that deep nesting does not become deep recursion.
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

/// \p key, which is one of the library's: another one does not compile.
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
/// The list of the library decides; what stands beside it only tells where an entry that the list
/// names comes from. Entries are therefore held twice. Neither copied nor moved: scopes are shared,
/// as lists are, and keep a share of their parent.
///
/// \tparam Place the host's own notion of a place, a source range or a node; it can be moved.
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
    /// What became of an addition.
    using Addition = host::Addition<Place>;
    /// What a used name may come from.
    using Resolution = host::Resolution<Place>;

    /// A scope without imports, within \p enclosing or, when that is null, an outermost one.
    explicit Scope(std::shared_ptr<Scope const> enclosing = nullptr)
        : Scope(enclosing, createImportList(enclosing ? enclosing->list : nullptr)) {}

    /// The same on any list, the library's or a foreign one.
    ///
    /// \p ownList is empty and has the list of \p enclosing as its parent. It and the lists around
    /// it must answer with entries that they store: others have no place and are left out.
    Scope(std::shared_ptr<Scope const> enclosing, std::unique_ptr<IImportList> ownList)
        : parent(std::move(enclosing)), list(std::move(ownList)) {}

    Scope(Scope const&) = delete;
    Scope& operator=(Scope const&) = delete;

    ~Scope() { detail::releaseScope(std::move(parent)); }

    /// Adds an entry whose command holds from the start of its scope, with the guarantees of
    /// IImportList::addStaticImportEntry.
    [[nodiscard]] Addition addStatic(ImportEntry&& entry, Place place) {
        return add(std::move(entry), std::move(place), false);
    }

    /// Adds an entry whose command runs when the program reaches it, with the guarantees of
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

    /// What the name of a use may come from. Of a dotted name as many leading segments as some
    /// import introduces; only packages introduce several.
    Resolution resolve(std::u16string_view usedName) const {
        std::u16string_view name = usedName;
        std::size_t longest = name.size();
        while (true) {
            if (name.size() <= longest) {
                if (std::vector<ScopedImport> found = find(name); !found.empty()) {
                    return {std::move(found), {}, numberOfSegmentsOf(name)};
                }
            }
            std::size_t const dot = name.rfind(u'.');
            if (dot == std::u16string_view::npos) {
                return {{}, visible(ImportKind::Wildcard), 1};
            }
            if (name.size() == usedName.size()) {
                longest = longestVisibleName();
            }
            name = name.substr(0, dot);
        }
    }

    /// As above, for a name in UTF-8.
    Resolution resolve(std::string_view usedName) const {
        return resolve(Utf16Text(usedName).view());
    }

    /// The visible imports of one kind: this scope's in the order of their addition, then outward,
    /// as the getters of IImportList enumerate them.
    std::vector<ScopedImport> visible(ImportKind kind) const {
        switch (kind) {
        case ImportKind::Package:
            return visibleOfType<PackageImportEntry>();
        case ImportKind::FullyQualified:
            return visibleOfType<FullyQualifiedImportEntry>();
        case ImportKind::Wildcard:
            return visibleOfType<WildcardImportEntry>();
        }
        return {};
    }

    /// What the parent sees and this scope hides: packages, then fully qualified imports, then
    /// wildcards, each in the order of the parent.
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

    /// The imports of this scope alone, in the order of their addition across all kinds. Added
    /// again in this order and manner they give an equal list.
    std::list<Import> const& imports() const noexcept { return contents.imports; }

    /// The enclosing scope; null for an outermost one.
    std::shared_ptr<Scope const> const& getParent() const noexcept { return parent; }

    /// The list that decides, to be read; never null.
    std::shared_ptr<IImportList const> getList() const noexcept { return list; }

  private:
    using Check = IImportList::CheckAncestorList;
    /// Keys are views into the entries of the imports.
    using Index = std::map<std::u16string_view, Import const*>;

    /// Of several imports with the same key the first stands in an index.
    struct Contents {
        std::list<Import> imports;
        Index packagesByName;
        Index namesByName;
        Index dottedByText;
        Index dottedByRoot;
        std::size_t longestName = 0;

        Contents() = default;

        /// One import alone.
        explicit Contents(Import&& imported) {
            imports.push_back(std::move(imported));
            Import const& only = imports.front();
            std::visit([&](auto const& entry) { enter(entry, &only); }, only.entry);
            longestName = introducedNameOf(only.entry).size();
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

        /// Takes over what stands in \p more. Allocates nothing, so that it cannot fail.
        void append(Contents& more) noexcept {
            imports.splice(imports.end(), more.imports);
            packagesByName.merge(more.packagesByName);
            namesByName.merge(more.namesByName);
            dottedByText.merge(more.dottedByText);
            dottedByRoot.merge(more.dottedByRoot);
            longestName = std::max(longestName, more.longestName);
        }
    };

    static Import const* lookUp(Index const& index, std::u16string_view key) noexcept {
        auto const position = index.find(key);
        return position == index.end() ? nullptr : position->second;
    }

    static std::size_t numberOfSegmentsOf(std::u16string_view name) noexcept {
        return 1 + static_cast<std::size_t>(std::ranges::count(name, u'.'));
    }

    // Adding: all that can fail comes before the list is asked, save what it itself does.

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

    /// The other party of a refusal. Which one it is, the key says; where it is to be looked for,
    /// the kind of the entry.
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

    // Finding: the list says which entry, by its address; the scope is the one whose list has that.

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

    std::size_t longestVisibleName() const noexcept {
        std::size_t longest = 0;
        for (Scope const* scope = this; scope != nullptr; scope = scope->parent.get()) {
            longest = std::max(longest, scope->contents.longestName);
        }
        return longest;
    }

    // Enumerating: what is visible is a part of all entries of the chain, in the same order.

    template <typename Entry>
    using Pair = std::pair<Entry const*, ScopedImport>;

    /// The entries of one kind that the lists of the chain store, each with its import.
    template <typename Entry>
    std::vector<Pair<Entry>> allOfType() const {
        std::vector<Pair<Entry>> pairs;
        std::size_t distance = 0;
        for (Scope const* scope = this; scope != nullptr; scope = scope->parent.get()) {
            std::list<Import> const& imports = scope->contents.imports;
            auto imported = imports.begin();
            for (Entry const& entry : detail::entriesOf<Entry>(*scope->list, Check::No)) {
                imported = std::find_if(imported, imports.end(), [](Import const& candidate) {
                    return std::holds_alternative<Entry>(candidate.entry);
                });
                if (imported == imports.end()) {
                    break;
                }
                pairs.emplace_back(&entry, ScopedImport{&*imported++, distance});
            }
            ++distance;
        }

        return pairs;
    }

    template <typename Entry>
    std::vector<ScopedImport> visibleOfType() const {
        std::vector<ScopedImport> result;
        auto const all = allOfType<Entry>();
        auto next = all.begin();
        for (Entry const& entry : detail::entriesOf<Entry>(*list, Check::Yes)) {
            auto const found = std::ranges::find(next, all.end(), &entry, &Pair<Entry>::first);
            if (found != all.end()) {
                result.push_back(found->second);
                next = std::next(found);
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

/// Which imports the uses of a program have reached. A value of one thread; the scopes that it has
/// heard of must outlive what is asked of it.
template <typename Place>
class UseRecord {
  public:
    /// Takes down that a use came to this: what introduces its name is reached, or else every
    /// wildcard that may supply it.
    void add(Resolution<Place> const& resolution) {
        // Merging allocates nothing, so that a use is taken down whole or not at all.
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
