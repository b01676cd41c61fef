// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// An index of the entries of a list by name.

#include <import/list/name_filter.hpp>
#include <import/list/name_hash.hpp>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <stdexcept>
#include <vector>

namespace lf::import {

/// The position of an entry in the vector of its kind, or none.
class EntryPosition {
  public:
    /// Identifies the vector: dotted entries of both kinds share an index.
    enum class Kind : std::uint8_t { Named = 0, Wildcard = 1 };

    constexpr EntryPosition() noexcept = default;

    /// \throws std::length_error if \p position is too large.
    constexpr EntryPosition(std::size_t position, Kind kind)
        : code(2 * checked(position) + static_cast<std::uint32_t>(kind)) {}

    constexpr explicit operator bool() const noexcept { return code != nowhere; }

    constexpr Kind kind() const noexcept { return static_cast<Kind>(code % 2); }

    constexpr std::size_t position() const noexcept { return code / 2; }

  private:
    static constexpr std::uint32_t nowhere = std::numeric_limits<std::uint32_t>::max();

    static constexpr std::uint32_t checked(std::size_t position) {
        return position < nowhere / 2 ? static_cast<std::uint32_t>(position)
                                      : throw std::length_error("too many entries for one list");
    }

    std::uint32_t code = nowhere;
};

/// Maps names to positions. Names are stored in the entries only: the caller compares a name with
/// that of an entry.
///
/// A hash table with open addressing behind a filter. Names are never removed.
class NameIndex { // NOLINT(bugprone-exception-escape): as NameFilter
  public:
    /// False if the index does not have the name.
    bool mayHold(NameKey const& name) const noexcept {
        return filter.mayHold(name.hash, name.filterBits);
    }

    /// A position with \p hash for which \p hasName returns true, if there is one.
    template <typename HasName>
    EntryPosition find(NameHash hash, HasName hasName) const noexcept {
        for (std::size_t place = placeOf(hash); !slots.empty() && slots[place].position;
             place = placeOf(place + 1)) {
            if (slots[place].hash == hash && hasName(slots[place].position)) {
                return slots[place].position;
            }
        }
        return {};
    }

    /// Makes sure that the next insertion succeeds.
    ///
    /// \throws std::bad_alloc, with the index unchanged.
    void makeRoomForOneMore();

    /// Must follow makeRoomForOneMore.
    void insert(NameHash hash, EntryPosition position) noexcept;

  private:
    struct Slot {
        NameHash hash = 0;
        EntryPosition position;
    };

    std::size_t placeOf(std::size_t number) const noexcept { return number & (slots.size() - 1); }

    NameFilter filter;
    std::vector<Slot> slots; ///< empty, or a power of two with some free slots
    std::size_t taken = 0;
};

} // namespace lf::import
