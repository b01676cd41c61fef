// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Random programs that create lists and add to them. After every step each list must give the same
/// answers as the model.

#include <support/twin_lists.hpp>

#include <cstddef>
#include <functional>
#include <ostream>
#include <set>
#include <string>
#include <variant>
#include <vector>

namespace support {

inline constexpr std::size_t maximalNumberOfSteps = 20;
/// The model's cost is exponential in the length of a chain.
inline constexpr std::size_t maximalNumberOfLists = 7;

/// Creates a list. The parent is counted from the list created last, which is 0; the first number
/// without a list means no parent.
struct CreateStep {
    ListMake make;
    std::size_t parent;
};

struct CloneStep {
    std::size_t list;
};

struct AddStep {
    std::size_t list;
    Addition addition;
    model::Outcome entry;
};

using ListStep = std::variant<AddStep, CreateStep, CloneStep>;

struct ListProgram {
    std::vector<ListStep> steps;
    /// The reach to ask with in addition to model::withAncestors.
    model::Reach otherReach;
};

std::ostream& operator<<(std::ostream& stream, ListProgram const& program);

/// Creates programs with so few names that conflicts are frequent.
class ListProgramMaker {
  public:
    /// Returns a number below its argument.
    using Choice = std::function<std::size_t(std::size_t bound)>;

    explicit ListProgramMaker(Choice choice);

    ListProgram program();
    ListStep step();
    model::Reach otherReach();

  private:
    std::size_t nearList();
    ListMake make();
    model::Outcome entry();
    std::u16string name();

    Choice below;
};

/// Runs a program, starting with one list of the library.
class ListProgramRun {
  public:
    ListProgramRun();

    /// \throws Difference where library and model differ.
    void run(ListProgram const& program);

    /// The keys that additions returned; the empty text stands for acceptance.
    std::set<std::string> const& keys() const { return seenKeys; }

  private:
    void perform(CreateStep const& step);
    void perform(CloneStep const& step);
    void perform(AddStep const& step);
    std::size_t numberOf(std::size_t back) const;

    TwinLists lists;
    std::set<std::string> seenKeys;
};

} // namespace support
