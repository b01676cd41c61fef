// SPDX-License-Identifier: BSL-1.0
#include "foreign_list.hpp"

#include <utility>

namespace identity {

using lf::import::FoundFullyQualifiedName;
using lf::import::FoundImportEntry;
using lf::import::FullyQualifiedImportEntry;
using lf::import::IImportList;
using lf::import::ImportEntry;
using lf::import::PackageImportEntry;
using lf::import::WildcardImportEntry;
using resource_core::GenericMsgIDHolder;

ForeignList::ForeignList() : inner(lf::import::createImportList(nullptr)) {}

ForeignList::ForeignList(ForeignList const& other)
    : IImportList(other), inner(other.inner->clone()) {}

ForeignList::~ForeignList() = default;

std::optional<GenericMsgIDHolder> ForeignList::addDynamicImportEntry(ImportEntry&& entry) {
    return inner->addDynamicImportEntry(std::move(entry));
}

std::optional<GenericMsgIDHolder> ForeignList::addStaticImportEntry(ImportEntry&& entry) {
    return inner->addStaticImportEntry(std::move(entry));
}

std::optional<FoundImportEntry> ForeignList::findPackageImportEntry(std::u16string_view name,
                                                                    CheckAncestorList check) const {
    return inner->findPackageImportEntry(name, check);
}

std::optional<FoundFullyQualifiedName>
ForeignList::findFullyQualifiedImportEntry(std::u16string_view name,
                                           CheckAncestorList check) const {
    return inner->findFullyQualifiedImportEntry(name, check);
}

ranges::any_view<FullyQualifiedImportEntry const&, ranges::category::forward>
ForeignList::getFullyQualifiedImportEntries(CheckAncestorList check) const {
    return inner->getFullyQualifiedImportEntries(check);
}

ranges::any_view<WildcardImportEntry const&, ranges::category::forward>
ForeignList::getWildcardImportEntries(CheckAncestorList check) const {
    return inner->getWildcardImportEntries(check);
}

ranges::any_view<PackageImportEntry const&, ranges::category::forward>
ForeignList::getPackageImportEntries(CheckAncestorList check) const {
    return inner->getPackageImportEntries(check);
}

std::shared_ptr<IImportList const> ForeignList::getParent() const {
    return inner->getParent();
}

std::unique_ptr<IImportList> ForeignList::clone() const {
    return std::make_unique<ForeignList>(*this);
}

bool ForeignList::isEmpty(CheckAncestorList check) const {
    return inner->isEmpty(check);
}

std::size_t ForeignList::getNumberOfEntries(CheckAncestorList check) const {
    return inner->getNumberOfEntries(check);
}

} // namespace identity
