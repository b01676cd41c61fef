// SPDX-License-Identifier: BSL-1.0

#include <import/list/import_list.hpp>

#include <import/list/list_chain.hpp>

#include <algorithm>
#include <utility>

namespace lf::import {

IImportList::~IImportList() = default;

namespace {

// Gives up a share of a list without recursing into its ancestors, of which there may be a hundred
// thousand: a list that dies while another's share is being given up leaves its parent's share to
// the loop that is running further out in this thread. Only a list of another make that owns
// several lists fills that one place; the loop then runs nested.
void release(std::shared_ptr<IImportList const> share) noexcept {
    static thread_local std::shared_ptr<IImportList const>* place = nullptr;
    if (place != nullptr && *place == nullptr) {
        *place = std::move(share);
        return;
    }
    std::shared_ptr<IImportList const> next;
    auto* const outerPlace = std::exchange(place, &next);
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

ListRun ListRun::from(IImportList const* list) noexcept {
    if (auto const* const own = dynamic_cast<ImportList const*>(list)) {
        return {.first = own, .foreign = own->ancestors().foreign};
    }
    return {.first = nullptr, .foreign = list};
}

ImportList::ImportList(std::shared_ptr<IImportList const> enclosing) noexcept
    : parent(std::move(enclosing)), enclosingLists(ListRun::from(parent.get())) {}

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
    bool const isRunEmpty = std::ranges::all_of(
        ListChain(this), [](ImportList const& list) { return list.numberOfOwnEntries() == 0; });
    IImportList const* const foreign = enclosingLists.foreign;
    return isRunEmpty && (foreign == nullptr || foreign->isEmpty(check));
}

std::size_t ImportList::getNumberOfEntries(CheckAncestorList check) const {
    if (check != CheckAncestorList::Yes) {
        return numberOfOwnEntries();
    }
    std::size_t count = 0;
    for (ImportList const& list : ListChain(this)) {
        count += list.numberOfOwnEntries();
    }
    IImportList const* const foreign = enclosingLists.foreign;
    return foreign == nullptr ? count : count + foreign->getNumberOfEntries(check);
}

std::size_t ImportList::numberOfOwnEntries() const noexcept {
    return fullyQualifiedEntries.size() + wildcardEntries.size() + packageEntries.size();
}

} // namespace lf::import
