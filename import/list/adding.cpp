// SPDX-License-Identifier: BSL-1.0

// Adding entries. An addition first does all lookups, in other lists as well, then makes room in
// the indexes, and stores last. Until then, the list is unchanged.

#include <import/list/import_list.hpp>

#include <import/diagnostics/make_msg_id.hpp>

#include <utility>
#include <variant>

namespace lf::import {

namespace {

using message_arguments::IntroducedName;
using message_arguments::RefusedImport;
using resource_core::GenericMsgIDHolder;

GenericMsgIDHolder precedenceViolation(std::u16string_view refused, std::u16string_view name) {
    return makeMsgHolder<"PrecedenceViolation">(RefusedImport(refused), IntroducedName(name));
}

GenericMsgIDHolder invalidAbbreviation() {
    return makeMsgHolder<"InvalidPackageFunctionAbbreviation">();
}

} // namespace

std::optional<GenericMsgIDHolder> ImportList::addDynamicImportEntry(ImportEntry&& entry) {
    return add(std::move(entry), Mode::Dynamic);
}

std::optional<GenericMsgIDHolder> ImportList::addStaticImportEntry(ImportEntry&& entry) {
    return add(std::move(entry), Mode::Static);
}

ImportList::Refusal ImportList::add(ImportEntry&& entry, Mode mode) {
    if (auto* const package = std::get_if<PackageImportEntry>(&entry)) {
        return addPackage(std::move(*package), mode);
    }
    if (auto* const name = std::get_if<FullyQualifiedImportEntry>(&entry)) {
        return addFullyQualified(std::move(*name));
    }
    return addWildcard(std::get<WildcardImportEntry>(std::move(entry)));
}

ImportList::Refusal ImportList::refusePackage(PackageImportEntry const& entry, NameKey const& name,
                                              Mode mode) const {
    if (findOwn<PackageImportEntry>(name) != nullptr) {
        return makeMsgHolder<"PackageRedeclared">(
            RefusedImport(entry.getPackageSpecifier().ToString()));
    }
    if (findOwn<FullyQualifiedImportEntry>(name) != nullptr) {
        return precedenceViolation(entry.getPackageSpecifier().ToString(), name.text);
    }
    if (mode == Mode::Static && holdsRootElement(name)) {
        return invalidAbbreviation();
    }
    return std::nullopt;
}

ImportList::Refusal ImportList::addPackage(PackageImportEntry&& entry, Mode mode) {
    NameKey const name(entry.getIntroducedName(), key);
    if (auto refusal = refusePackage(entry, name, mode)) {
        return refusal;
    }
    EntryPosition const position(packageEntries.size(), EntryPosition::Kind::Named);
    packageIndexByName.makeRoomForOneMore();
    packageEntries.emplace_back(std::move(entry), EntryHashes{.introducedName = name.hash});
    packageIndexByName.insert(name.hash, position);
    return std::nullopt;
}

// After making room in the indexes, only the vector can fail, and then it is unchanged.
template <typename Entry>
void ImportList::storeDotted(std::vector<StoredEntry<Entry>>& entries, EntryPosition position,
                             std::type_identity_t<Entry>&& entry, EntryHashes hashes,
                             NameKey const& root) {
    bool const isRootNew = !holdsRootElement(root);
    rawArguments.makeRoomForOneMore();
    rootElements.makeRoomForOneMore();
    entries.emplace_back(std::move(entry), hashes);
    rawArguments.insert(hashes.rawArgument, position);
    if (isRootNew) {
        rootElements.insert(root.hash, position);
    }
}

ImportList::Refusal ImportList::addFullyQualified(FullyQualifiedImportEntry&& entry) {
    NameKey const raw(entry.getRawArgument(), key);
    if (holdsRawArgument(raw)) {
        return std::nullopt;
    }
    NameKey const name(entry.getIntroducedName(), key);
    if (findOwn<PackageImportEntry>(name) != nullptr) {
        return precedenceViolation(raw.text, name.text);
    }
    NameKey const root(entry.getRootElement(), key);
    if (findPackage(root, CheckAncestorList::Yes)) {
        return invalidAbbreviation();
    }
    bool const isNameNew = findOwn<FullyQualifiedImportEntry>(name) == nullptr;
    EntryPosition const position(fullyQualifiedEntries.size(), EntryPosition::Kind::Named);
    fullyQualifiedIndexByName.makeRoomForOneMore();
    storeDotted(fullyQualifiedEntries, position, std::move(entry),
                {.introducedName = name.hash, .rawArgument = raw.hash}, root);
    if (isNameNew) {
        fullyQualifiedIndexByName.insert(name.hash, position);
    }
    return std::nullopt;
}

ImportList::Refusal ImportList::addWildcard(WildcardImportEntry&& entry) {
    NameKey const raw(entry.getRawArgument(), key);
    if (holdsRawArgument(raw)) {
        return std::nullopt;
    }
    NameKey const root(entry.getRootElement(), key);
    if (findPackage(root, CheckAncestorList::Yes)) {
        return invalidAbbreviation();
    }
    storeDotted(wildcardEntries,
                EntryPosition(wildcardEntries.size(), EntryPosition::Kind::Wildcard),
                std::move(entry), {.rawArgument = raw.hash}, root);
    return std::nullopt;
}

} // namespace lf::import
