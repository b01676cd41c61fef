// SPDX-License-Identifier: BSL-1.0

#include <import/list/name_index.hpp>

#include <algorithm>
#include <utility>

namespace lf::import {

namespace {

constexpr std::size_t fewestSlots = 8;

// Beyond this, runs of taken slots grow long.
constexpr std::size_t mostNames(std::size_t slots) {
    return slots - slots / 4;
}

} // namespace

void NameIndex::makeRoomForOneMore() {
    if (taken < mostNames(slots.size())) {
        return;
    }
    NameIndex grown;
    grown.slots.resize(std::max(fewestSlots, 2 * slots.size()));
    grown.filter = NameFilter(mostNames(grown.slots.size()));
    for (Slot const& slot : slots) {
        if (slot.position) {
            grown.insert(slot.hash, slot.position);
        }
    }
    *this = std::move(grown);
}

void NameIndex::insert(NameHash hash, EntryPosition position) noexcept {
    std::size_t place = placeOf(hash);
    while (slots[place].position) {
        place = placeOf(place + 1);
    }
    slots[place] = {.hash = hash, .position = position};
    filter.add(hash);
    ++taken;
}

} // namespace lf::import
