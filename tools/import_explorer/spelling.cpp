// SPDX-License-Identifier: BSL-1.0
#include <import_explorer/spelling.hpp>

#include <import_explorer/utf8.hpp>

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>
#include <vector>

namespace explorer {

namespace {

/// A bit for each character of a name.
using Bits = std::uint64_t;
static_assert(longestComparedName <= 64);

constexpr std::size_t mostBytesOfCharacter = 4;
constexpr char32_t replacement = U'\uFFFD';

std::size_t countCharacters(std::string_view text) {
    return text.size() -
           static_cast<std::size_t>(std::count_if(text.begin(), text.end(), isContinuationByte));
}

char32_t takeCharacter(std::string_view& text) {
    DecodedCharacter const character = decodeCharacter(text);
    text.remove_prefix(character.size);
    return character.codePoint.value_or(replacement);
}

/// Tells how many changes make other texts to one name. A column of the table of distances between
/// all beginnings is kept as the differences of neighbours, which are -1, 0 or 1, in two words of
/// bits, so that each character of the other text takes a few operations instead of a column.
class NameDistance {
  public:
    /// \param name has at least one character and at most longestComparedName.
    explicit NameDistance(std::string_view name) {
        for (; !name.empty(); ++size) {
            addPlace(takeCharacter(name), Bits{1} << size);
        }
    }

    std::size_t numberOfCharacters() const noexcept { return size; }

    std::size_t to(std::string_view other) const {
        Bits const lastRow = Bits{1} << (size - 1);
        Bits rises = ~Bits{0};
        Bits falls = 0;
        Bits diagonals = 0;
        Bits placesBefore = 0;
        std::size_t distance = size;
        while (!other.empty()) {
            Bits const places = placesOf(takeCharacter(other));
            Bits const swapped = ((~diagonals & places) << 1U) & placesBefore;
            diagonals = (((places & rises) + rises) ^ rises) | places | falls | swapped;
            Bits const risesAcross = falls | ~(diagonals | rises);
            Bits const fallsAcross = diagonals & rises;
            distance += (risesAcross & lastRow) != 0 ? 1 : 0;
            distance -= (fallsAcross & lastRow) != 0 ? 1 : 0;
            rises = (fallsAcross << 1U) | ~(diagonals | (risesAcross << 1U) | 1U);
            falls = ((risesAcross << 1U) | 1U) & diagonals;
            placesBefore = places;
        }
        return distance;
    }

  private:
    void addPlace(char32_t character, Bits place) {
        if (character < ascii.size()) {
            ascii.at(character) |= place;
        } else {
            others.emplace_back(character, place);
        }
    }

    /// Where in the name \p character stands.
    Bits placesOf(char32_t character) const {
        if (character < ascii.size()) {
            return ascii.at(character);
        }
        Bits places = 0;
        for (auto const& [other, place] : others) {
            places |= other == character ? place : 0;
        }
        return places;
    }

    std::size_t size = 0;
    std::array<Bits, 128> ascii{};
    std::vector<std::pair<char32_t, Bits>> others;
};

} // namespace

std::optional<std::size_t> findNearestSpelling(std::string_view name,
                                               std::span<std::string_view const> candidates) {
    if (name.empty() || countCharacters(name) > longestComparedName) {
        return std::nullopt;
    }
    NameDistance const distanceFromName(name);
    std::size_t const size = distanceFromName.numberOfCharacters();
    std::optional<std::size_t> nearest;
    // Only what is nearer than this is of interest.
    std::size_t bound = (size + 2) / 3 + 1;
    for (std::size_t index = 0; index < std::min(candidates.size(), mostComparedNames); ++index) {
        std::string_view const candidate = candidates[index];
        if (candidate.size() > mostBytesOfCharacter * longestComparedName) {
            continue;
        }
        auto const [shorter, longer] = std::minmax({size, countCharacters(candidate)});
        if (longer > longestComparedName || longer - shorter >= bound) {
            continue;
        }
        std::size_t const distance = distanceFromName.to(candidate);
        if (distance < bound && distance < longer) {
            bound = distance;
            nearest = index;
        }
    }
    return nearest;
}

} // namespace explorer
