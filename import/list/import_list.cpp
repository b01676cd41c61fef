// SPDX-License-Identifier: BSL-1.0

#include <import/list/import_list.hpp>

#include <algorithm>
#include <typeinfo>
#include <utility>

namespace lf::import {

IImportList::~IImportList() = default;

namespace {

// Releases a reference to a list without recursing into its ancestors: while a list is destroyed,
// the reference to its parent waits for the loop that releases the list. A foreign or shared list
// is released immediately, in its own loop, so that a host's destructor can rely on it.
void release(std::shared_ptr<IImportList const> share) noexcept {
    static thread_local std::shared_ptr<IImportList const>* place = nullptr;
    bool const canWait = share.use_count() == 1 && asImportList(share.get()) != nullptr;
    if (canWait && place != nullptr && *place == nullptr) {
        *place = std::move(share);
        return;
    }
    std::shared_ptr<IImportList const> next;
    auto* const outerPlace = std::exchange(place, canWait ? &next : nullptr);
    while (share != nullptr) {
        share.reset();
        share.swap(next);
    }
    place = outerPlace;
}

} // namespace

std::unique_ptr<IImportList> createImportList(std::shared_ptr<IImportList const> parent) {
    return std::make_unique<ImportList>(std::move(parent));
}

// Compares the address of the type information, which belongs to this copy of the library.
// dynamic_cast may compare its name, which a second copy shares and which a class compiled without
// RTTI lacks.
ImportList const* asImportList(IImportList const* list) noexcept {
    return list != nullptr && &typeid(*list) == &typeid(ImportList)
               ? static_cast<ImportList const*>(list)
               : nullptr;
}

ImportList::ImportList(std::shared_ptr<IImportList const> itsParent)
    : enclosing(asImportList(itsParent.get())),
      outermost(enclosing != nullptr && enclosing->outermost != nullptr ? enclosing->outermost
                                                                        : enclosing),
      key(HashKey::ofThisProcess()),
      parent(std::move(itsParent)) {}

ImportList::~ImportList() {
    release(std::move(parent));
}

std::shared_ptr<IImportList const> ImportList::getParent() const {
    return parent;
}

std::unique_ptr<IImportList> ImportList::clone() const {
    return std::make_unique<ImportList>(*this);
}

bool ImportList::isEmpty(CheckAncestorList check) const {
    if (check != CheckAncestorList::Yes) {
        return numberOfOwnEntries() == 0;
    }
    bool const isChainEmpty = std::ranges::all_of(
        chain(), [](ImportList const& list) { return list.numberOfOwnEntries() == 0; });
    auto const& foreign = foreignAncestor();
    return isChainEmpty && (foreign == nullptr || foreign->isEmpty(check));
}

std::size_t ImportList::getNumberOfEntries(CheckAncestorList check) const {
    if (check != CheckAncestorList::Yes) {
        return numberOfOwnEntries();
    }
    std::size_t count = 0;
    for (ImportList const& list : chain()) {
        count += list.numberOfOwnEntries();
    }
    auto const& foreign = foreignAncestor();
    return foreign == nullptr ? count : count + foreign->getNumberOfEntries(check);
}

std::size_t ImportList::numberOfOwnEntries() const noexcept {
    return fullyQualifiedEntries.size() + wildcardEntries.size() + packageEntries.size();
}

} // namespace lf::import
