// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Names for the benchmarks: random, but the same in every run.

#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <random>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace workload {

/// Random integers from a fixed seed.
class Draws {
  public:
    /// A number less than \p bound.
    std::size_t below(std::size_t bound) { return engine() % bound; }

    /// One element of \p range.
    template <typename Range>
    auto const& oneOf(Range const& range) {
        return range[below(std::size(range))];
    }

  private:
    std::mt19937_64 engine{20240229};
};

/// The similarity of the names of a program.
enum class NameShape : std::uint8_t {
    /// `copyFrame`: one to four words in camel case.
    RandomWords,
    /// `Shape0003N0007Factory`: all of one length, with the same units at both ends.
    Alike,
    /// `AbstractQueryFilterListener`: words between a few prefixes and suffixes.
    ClassNames,
};

inline constexpr auto nameShapes =
    std::to_array({NameShape::RandomWords, NameShape::Alike, NameShape::ClassNames});

/// The name of the shape in benchmark names, such as `alike`.
std::string_view toString(NameShape shape);

/// Distinct identifiers, none of them a reserved word.
class NameSource {
  public:
    explicit NameSource(Draws& itsDraws, NameShape itsShape = NameShape::RandomWords)
        : draws(itsDraws), shape(itsShape) {}

    /// A name that was not returned before.
    std::u16string next();

    std::vector<std::u16string> take(std::size_t count);

  private:
    std::u16string draw();

    Draws& draws;
    NameShape shape;
    std::unordered_set<std::u16string> given;
};

/// One of the lower-case words that names are made of.
std::u16string_view drawWord(Draws& draws);

} // namespace workload
