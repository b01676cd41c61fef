// SPDX-License-Identifier: BSL-1.0
#include "foreign_import_list.hpp"

#include <range/v3/view/any_view.hpp>
#include <range/v3/view/concat.hpp>
#include <range/v3/view/ref.hpp>

#include <algorithm>
#include <variant>

namespace support {

using lf::import::EntryOrigin;
using lf::import::FoundFullyQualifiedName;
using lf::import::FoundImportEntry;
using lf::import::FullyQualifiedImportEntry;
using lf::import::IImportList;
using lf::import::ImportEntry;
using lf::import::PackageImportEntry;
using lf::import::WildcardImportEntry;
using resource_core::GenericMsgIDHolder;

namespace {

template <typename Entry>
using AnyView = ranges::any_view<Entry const&, ranges::category::forward>;

template <typename Entry>
Entry const* findByName(std::vector<Entry> const& entries, std::u16string_view name) {
    auto const position = std::ranges::find(entries, name, &Entry::getIntroducedName);
    return position == entries.end() ? nullptr : &*position;
}

} // namespace

DelegatingImportList::DelegatingImportList(std::unique_ptr<IImportList> list)
    : WrappedImportList(std::move(list)) {}

std::unique_ptr<IImportList> DelegatingImportList::clone() const {
    return std::make_unique<DelegatingImportList>(*this);
}

IImportList const& DelegatingImportList::ask(Question question, CheckAncestorList check) const {
    ++counts[{question, check}];
    if (beforeAnswer) {
        beforeAnswer();
    }
    return WrappedImportList::ask(question, check);
}

ForeignImportList::ForeignImportList(std::shared_ptr<IImportList const> enclosing,
                                     model::ForeignManners const& itsManners)
    : parent(std::move(enclosing)), manners(itsManners) {}

bool ForeignImportList::asksParent(CheckAncestorList check) const {
    return manners.asksParent && check == CheckAncestorList::Yes && parent != nullptr;
}

std::optional<GenericMsgIDHolder> ForeignImportList::addDynamicImportEntry(ImportEntry&& entry) {
    if (auto* const package = std::get_if<PackageImportEntry>(&entry)) {
        packageEntries.push_back(std::move(*package));
    } else if (auto* const name = std::get_if<FullyQualifiedImportEntry>(&entry)) {
        fullyQualifiedEntries.push_back(std::move(*name));
    } else {
        wildcardEntries.push_back(std::get<WildcardImportEntry>(std::move(entry)));
    }
    return std::nullopt;
}

std::optional<GenericMsgIDHolder> ForeignImportList::addStaticImportEntry(ImportEntry&& entry) {
    return addDynamicImportEntry(std::move(entry));
}

std::optional<FoundImportEntry>
ForeignImportList::findPackageImportEntry(std::u16string_view name, CheckAncestorList check) const {
    if (auto const* const own = findByName(packageEntries, name)) {
        return FoundImportEntry{*own, static_cast<EntryOrigin>(manners.ownOrigin)};
    }
    return asksParent(check) ? parent->findPackageImportEntry(name, check) : std::nullopt;
}

std::optional<FoundFullyQualifiedName>
ForeignImportList::findFullyQualifiedImportEntry(std::u16string_view name,
                                                 CheckAncestorList check) const {
    if (auto const* const own = findByName(fullyQualifiedEntries, name)) {
        return FoundFullyQualifiedName{own->getRawArgument(),
                                       static_cast<EntryOrigin>(manners.ownOrigin)};
    }
    return asksParent(check) ? parent->findFullyQualifiedImportEntry(name, check) : std::nullopt;
}

AnyView<FullyQualifiedImportEntry>
ForeignImportList::getFullyQualifiedImportEntries(CheckAncestorList check) const {
    ranges::ref_view const own(fullyQualifiedEntries);
    if (!asksParent(check)) {
        return own;
    }
    return ranges::concat_view(own, parent->getFullyQualifiedImportEntries(check));
}

AnyView<WildcardImportEntry>
ForeignImportList::getWildcardImportEntries(CheckAncestorList check) const {
    ranges::ref_view const own(wildcardEntries);
    if (!asksParent(check)) {
        return own;
    }
    return ranges::concat_view(own, parent->getWildcardImportEntries(check));
}

AnyView<PackageImportEntry>
ForeignImportList::getPackageImportEntries(CheckAncestorList check) const {
    ranges::ref_view const own(packageEntries);
    if (!asksParent(check)) {
        return own;
    }
    return ranges::concat_view(own, parent->getPackageImportEntries(check));
}

std::shared_ptr<IImportList const> ForeignImportList::getParent() const {
    return manners.namesParent ? parent : nullptr;
}

std::unique_ptr<IImportList> ForeignImportList::clone() const {
    return std::make_unique<ForeignImportList>(*this);
}

bool ForeignImportList::isEmpty(CheckAncestorList check) const {
    return getNumberOfEntries(check) == 0;
}

std::size_t ForeignImportList::getNumberOfEntries(CheckAncestorList check) const {
    std::size_t const own =
        fullyQualifiedEntries.size() + wildcardEntries.size() + packageEntries.size();
    return asksParent(check) ? own + parent->getNumberOfEntries(check) : own;
}

} // namespace support
