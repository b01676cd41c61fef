// SPDX-License-Identifier: BSL-1.0

// Adding entries. Every container is made ready before the entry is moved in, which cannot fail: an
// entry is stored everywhere or nowhere.

#include <import/list/import_list.hpp>

#include <import/diagnostics/make_msg_id.hpp>

#include <algorithm>
#include <string>
#include <utility>
#include <variant>

namespace lf::import {

namespace {

using message_arguments::IntroducedName;
using message_arguments::RefusedImport;
using resource_core::GenericMsgIDHolder;

auto insert(NameSet& names, std::u16string&& name) {
    return names.insert(std::move(name));
}

auto insert(NameIndex& positions, std::u16string&& name, std::size_t position) {
    return positions.try_emplace(std::move(name), position);
}

// A name inserted into a hashed container, unless it is there already, and taken out again unless
// it is kept. Whether a name is there is asked by inserting it, with one hash for both: adding a
// dotted import takes a tenth less time.
template <typename Container>
class TentativeInsertion {
  public:
    template <typename... Mapped>
    TentativeInsertion(Container& target, std::u16string_view name, Mapped... mapped)
        : container(target), pending(insert(target, std::u16string(name), mapped...)) {}

    TentativeInsertion(TentativeInsertion const&) = delete;
    TentativeInsertion& operator=(TentativeInsertion const&) = delete;

    ~TentativeInsertion() {
        if (isNew()) {
            container.erase(pending.first);
        }
    }

    bool isNew() const noexcept { return pending.second; }

    void keep() noexcept { pending.second = false; }

  private:
    Container& container;
    std::pair<typename Container::iterator, bool> pending; // true until it is kept
};

template <typename Entry>
void makeRoomForOneMore(std::vector<Entry>& entries) {
    if (entries.size() == entries.capacity()) {
        entries.reserve(std::max<std::size_t>(1, 2 * entries.size()));
    }
}

GenericMsgIDHolder precedenceViolation(std::u16string_view refused, std::u16string_view name) {
    return makeMsgHolder<"PrecedenceViolation">(RefusedImport(refused), IntroducedName(name));
}

GenericMsgIDHolder invalidAbbreviation() {
    return makeMsgHolder<"InvalidPackageFunctionAbbreviation">();
}

} // namespace

std::optional<GenericMsgIDHolder> ImportList::addDynamicImportEntry(ImportEntry&& entry) {
    return add(std::move(entry), &ImportList::checkDynamicPackage);
}

std::optional<GenericMsgIDHolder> ImportList::addStaticImportEntry(ImportEntry&& entry) {
    return add(std::move(entry), &ImportList::checkStaticPackage);
}

ImportList::Refusal ImportList::add(ImportEntry&& entry, PackageConflictCheck check) {
    if (auto* const package = std::get_if<PackageImportEntry>(&entry)) {
        return addPackage(std::move(*package), check);
    }
    if (auto* const name = std::get_if<FullyQualifiedImportEntry>(&entry)) {
        return addFullyQualified(std::move(*name));
    }
    return addWildcard(std::get<WildcardImportEntry>(std::move(entry)));
}

ImportList::Refusal ImportList::checkDynamicPackage(PackageImportEntry const& entry,
                                                    NameKey const& name) const {
    if (findOwnPackage(name) != nullptr) {
        return makeMsgHolder<"PackageRedeclared">(
            RefusedImport(entry.getPackageSpecifier().ToString()));
    }
    if (findOwnFullyQualified(name) != nullptr) {
        return precedenceViolation(entry.getPackageSpecifier().ToString(), name.text);
    }
    return std::nullopt;
}

ImportList::Refusal ImportList::checkStaticPackage(PackageImportEntry const& entry,
                                                   NameKey const& name) const {
    if (auto refusal = checkDynamicPackage(entry, name)) {
        return refusal;
    }
    if (rootElements.contains(name)) {
        return invalidAbbreviation();
    }
    return std::nullopt;
}

ImportList::Refusal ImportList::addPackage(PackageImportEntry&& entry, PackageConflictCheck check) {
    NameKey const name(entry.getIntroducedName());
    if (auto refusal = (this->*check)(entry, name)) {
        return refusal;
    }
    makeRoomForOneMore(packageEntries);
    insert(packageIndexByName, std::u16string(name.text), packageEntries.size());
    packageFilter.add(name);
    packageEntries.push_back(std::move(entry));
    return std::nullopt;
}

ImportList::Refusal ImportList::addFullyQualified(FullyQualifiedImportEntry&& entry) {
    TentativeInsertion raw(rawArguments, entry.getRawArgument());
    if (!raw.isNew()) {
        return std::nullopt;
    }
    NameKey const introducedName(entry.getIntroducedName());
    if (findOwnPackage(introducedName) != nullptr) {
        return precedenceViolation(entry.getRawArgument(), introducedName.text);
    }
    if (findPackageImportEntry(entry.getRootElement(), CheckAncestorList::Yes)) {
        return invalidAbbreviation();
    }
    TentativeInsertion name(fullyQualifiedIndexByName, introducedName.text,
                            fullyQualifiedEntries.size());
    TentativeInsertion root(rootElements, entry.getRootElement());
    makeRoomForOneMore(fullyQualifiedEntries);
    raw.keep();
    name.keep();
    root.keep();
    fullyQualifiedFilter.add(introducedName);
    rawArgumentFilter.add(NameKey(entry.getRawArgument()));
    fullyQualifiedEntries.push_back(std::move(entry));
    return std::nullopt;
}

ImportList::Refusal ImportList::addWildcard(WildcardImportEntry&& entry) {
    TentativeInsertion raw(rawArguments, entry.getRawArgument());
    if (!raw.isNew()) {
        return std::nullopt;
    }
    if (findPackageImportEntry(entry.getRootElement(), CheckAncestorList::Yes)) {
        return invalidAbbreviation();
    }
    TentativeInsertion root(rootElements, entry.getRootElement());
    makeRoomForOneMore(wildcardEntries);
    raw.keep();
    root.keep();
    rawArgumentFilter.add(NameKey(entry.getRawArgument()));
    wildcardEntries.push_back(std::move(entry));
    return std::nullopt;
}

} // namespace lf::import
