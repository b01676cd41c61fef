// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Random programs that create lists and add to them. After every step each list must answer as its
/// twin in the model does.

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

/// Makes a list; counted inward, 0 is the list made last, and the first that does not exist is no
/// parent.
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
    /// Used for questions in addition to model::withAncestors.
    model::Reach otherReach;
};

std::ostream& operator<<(std::ostream& stream, ListProgram const& program);

/// Makes programs whose entries have so few names that conflicts are frequent.
class ListProgramMaker {
  public:
    /// A number below its argument.
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

/// Runs a program; starts with one list of the library.
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
