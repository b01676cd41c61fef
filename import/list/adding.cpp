// SPDX-License-Identifier: BSL-1.0

// Adding entries. Every container is made ready before the entry is moved in, which cannot fail: an
// entry is stored everywhere or nowhere.

#include <import/list/import_list.hpp>

#include <import/make_msg_id.hpp>

#include <algorithm>
#include <string>
#include <utility>
#include <variant>

namespace lf::import {

namespace {

using messages::IntroducedName;
using messages::RefusedImport;
using resource_core::GenericMsgIDHolder;

// A name inserted into a hashed container, unless it is there already, and taken out again unless
// it is kept.
template <typename Container>
class TentativeInsertion {
  public:
    template <typename... Mapped>
    TentativeInsertion(Container& target, NameKey const& name, Mapped... mapped)
        : container(target), position(target.find(name)), isPending(position == target.end()) {
        if (isPending) {
            position = container.emplace(std::u16string(name.text), mapped...).first;
        }
    }

    TentativeInsertion(TentativeInsertion const&) = delete;
    TentativeInsertion& operator=(TentativeInsertion const&) = delete;

    ~TentativeInsertion() {
        if (isPending) {
            container.erase(position);
        }
    }

    void keep() noexcept { isPending = false; }

  private:
    Container& container;
    typename Container::iterator position;
    bool isPending;
};

template <typename Entry>
void makeRoomForOneMore(std::vector<Entry>& entries) {
    if (entries.size() == entries.capacity()) {
        entries.reserve(std::max<std::size_t>(1, 2 * entries.size()));
    }
}

GenericMsgIDHolder precedenceViolation(std::u16string_view refused, std::u16string_view name) {
    return makeMsgHolder<messages::precedenceViolation>(RefusedImport(refused),
                                                        IntroducedName(name));
}

GenericMsgIDHolder invalidAbbreviation() {
    return makeMsgHolder<messages::invalidPackageFunctionAbbreviation>();
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

ImportList::Refusal ImportList::checkDynamicPackage(PackageImportEntry const& entry) const {
    NameKey const name(entry.getIntroducedName());
    if (findOwnPackage(name) != nullptr) {
        return makeMsgHolder<messages::packageRedeclared>(
            RefusedImport(entry.getPackageSpecifier().ToString()));
    }
    if (findOwnFullyQualified(name) != nullptr) {
        return precedenceViolation(entry.getPackageSpecifier().ToString(), name.text);
    }
    return std::nullopt;
}

ImportList::Refusal ImportList::checkStaticPackage(PackageImportEntry const& entry) const {
    if (auto refusal = checkDynamicPackage(entry)) {
        return refusal;
    }
    if (rootElements.contains(NameKey(entry.getIntroducedName()))) {
        return invalidAbbreviation();
    }
    return std::nullopt;
}

ImportList::Refusal ImportList::addPackage(PackageImportEntry&& entry, PackageConflictCheck check) {
    if (auto refusal = (this->*check)(entry)) {
        return refusal;
    }
    makeRoomForOneMore(packageEntries);
    packageIndexByName.emplace(entry.getIntroducedName(), packageEntries.size());
    packageFilter.add(NameKey(entry.getIntroducedName()));
    packageEntries.push_back(std::move(entry));
    return std::nullopt;
}

ImportList::Refusal ImportList::addFullyQualified(FullyQualifiedImportEntry&& entry) {
    NameKey const rawArgument(entry.getRawArgument());
    NameKey const introducedName(entry.getIntroducedName());
    if (holdsRawArgument(rawArgument)) {
        return std::nullopt;
    }
    if (findOwnPackage(introducedName) != nullptr) {
        return precedenceViolation(rawArgument.text, introducedName.text);
    }
    if (findPackageImportEntry(entry.getRootElement(), CheckAncestorList::Yes)) {
        return invalidAbbreviation();
    }
    TentativeInsertion raw(rawArguments, rawArgument);
    TentativeInsertion name(fullyQualifiedIndexByName, introducedName,
                            fullyQualifiedEntries.size());
    TentativeInsertion root(rootElements, NameKey(entry.getRootElement()));
    makeRoomForOneMore(fullyQualifiedEntries);
    raw.keep();
    name.keep();
    root.keep();
    fullyQualifiedFilter.add(introducedName);
    rawArgumentFilter.add(rawArgument);
    fullyQualifiedEntries.push_back(std::move(entry));
    return std::nullopt;
}

ImportList::Refusal ImportList::addWildcard(WildcardImportEntry&& entry) {
    NameKey const rawArgument(entry.getRawArgument());
    if (holdsRawArgument(rawArgument)) {
        return std::nullopt;
    }
    if (findPackageImportEntry(entry.getRootElement(), CheckAncestorList::Yes)) {
        return invalidAbbreviation();
    }
    TentativeInsertion raw(rawArguments, rawArgument);
    TentativeInsertion root(rootElements, NameKey(entry.getRootElement()));
    makeRoomForOneMore(wildcardEntries);
    raw.keep();
    root.keep();
    rawArgumentFilter.add(rawArgument);
    wildcardEntries.push_back(std::move(entry));
    return std::nullopt;
}

} // namespace lf::import
