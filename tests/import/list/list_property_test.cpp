// SPDX-License-Identifier: BSL-1.0

/// \file
/// Random programs that make lists and add to them; after every step each list must answer as its
/// twin in the model does.

#include <support/random_check.hpp>
#include <support/twin_lists.hpp>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <array>
#include <cstddef>
#include <limits>
#include <ostream>
#include <set>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace {

using model::Outcome;
using model::OutcomeKind;
using support::Addition;
using support::ListMake;
using support::Maker;
using support::TwinLists;

constexpr int numberOfPrograms = 20'000;
constexpr std::size_t maximalNumberOfSteps = 20;
/// The model's effort doubles with every list of a chain.
constexpr std::size_t maximalNumberOfLists = 7;

/// Makes a list; counted inward, 0 is the list made last, and the first that does not exist is no
/// parent.
struct Create {
    ListMake make;
    std::size_t parent;

    friend std::ostream& operator<<(std::ostream& stream, Create const& step) {
        return stream << "create " << step.make << ", parent " << step.parent << " back";
    }
};

struct Clone {
    std::size_t list;

    friend std::ostream& operator<<(std::ostream& stream, Clone const& step) {
        return stream << "clone " << step.list << " back";
    }
};

struct Add {
    std::size_t list;
    Addition addition;
    Outcome entry;

    friend std::ostream& operator<<(std::ostream& stream, Add const& step) {
        return stream << "add to " << step.list << " back "
                      << (step.addition == Addition::Static ? "statically " : "dynamically ")
                      << step.entry;
    }
};

using Step = std::variant<Add, Create, Clone>;

struct Program {
    std::vector<Step> steps;
    model::Reach otherReach;

    friend std::ostream& operator<<(std::ostream& stream, Program const& program) {
        stream << "other reach " << program.otherReach;
        for (Step const& step : program.steps) {
            std::visit([&](auto const& itsStep) { stream << '\n' << itsStep; }, step);
        }
        return stream;
    }
};

/// Few, so that conflicts are frequent; all of them are root elements, too.
std::vector<std::u16string> const names{u"a", u"b", u"A", u"",
                                        u"aNameThatIsTooLongToBeKeptWithinTheStringItself"};

std::array<std::u16string, 6> const rawArguments{
    u"a.b", u"b.a", u"a.*", u"b.*", u"", u"a.rawArgument.thatIsTooLong.toBeKept.withinTheString"};

std::array<std::u16string, 4> const specifiers{
    u"a", u"b@1", u"b@^1.2", u"aPackage.withAName.thatIsTooLong.toBeKept.withinTheString"};

std::array<model::Reach, 8> const otherReaches{0,
                                               0,
                                               0,
                                               2,
                                               3,
                                               -1,
                                               std::numeric_limits<model::Reach>::max(),
                                               std::numeric_limits<model::Reach>::min()};

class ProgramMaker {
  public:
    explicit ProgramMaker(rc::Random const& source) : random(source) {}

    Program program() {
        Program result;
        result.otherReach = oneOf(otherReaches);
        for (std::size_t count = below(maximalNumberOfSteps + 1); count > 0; --count) {
            result.steps.push_back(step());
        }
        return result;
    }

  private:
    Step step() {
        std::size_t const choice = below(10);
        if (choice == 0) {
            return Clone{below(maximalNumberOfLists)};
        }
        if (choice < 4) {
            return Create{make(), nearList()};
        }
        return Add{nearList(), below(2) == 0 ? Addition::Static : Addition::Dynamic, entry()};
    }

    /// Mostly one of the last two, so that chains become long.
    std::size_t nearList() { return below(1 + below(maximalNumberOfLists)); }

    ListMake make() {
        static constexpr std::array makers{Maker::Library, Maker::Library, Maker::Delegating,
                                           Maker::Foreign};
        return {.maker = oneOf(makers),
                .manners = {.asksParent = below(2) == 0,
                            .namesParent = below(2) == 0,
                            .ownOrigin =
                                below(2) == 0 ? model::Origin::ThisList : model::Origin::Ancestor}};
    }

    Outcome entry() {
        static constexpr std::array kinds{OutcomeKind::FullyQualified, OutcomeKind::Wildcard,
                                          OutcomeKind::Package};
        Outcome result;
        result.kind = oneOf(kinds);
        if (result.kind != OutcomeKind::Wildcard) {
            result.introducedName = name();
        }
        if (result.kind == OutcomeKind::Package) {
            result.specifier = oneOf(specifiers);
        } else {
            result.rawArgument = oneOf(rawArguments);
            result.rootElement = name();
        }
        return result;
    }

    /// Mostly one of the first two.
    std::u16string name() { return names[below(1 + below(names.size()))]; }

    template <typename Value, std::size_t size>
    Value oneOf(std::array<Value, size> const& values) {
        return values[below(values.size())];
    }

    std::size_t below(std::size_t bound) { return static_cast<std::size_t>(random.next() % bound); }

    rc::Random random;
};

rc::Gen<Program> anyProgram() {
    return [](rc::Random const& random, int) {
        return rc::shrinkable::shrinkRecur(
            ProgramMaker(random).program(), [](Program const& program) {
                return rc::seq::map(rc::shrink::removeChunks(program.steps),
                                    [reach = program.otherReach](std::vector<Step> steps) {
                                        return Program{std::move(steps), reach};
                                    });
            });
    };
}

/// A program that is being run; it begins with one list of the library.
class ProgramRun {
  public:
    ProgramRun() { lists.create({}, std::nullopt); }

    /// What the program's additions were answered with, the empty text standing for acceptance.
    std::set<std::string> const& keys() const { return seenKeys; }

    void take(Step const& step, model::Reach otherReach) {
        std::visit([this](auto const& itsStep) { perform(itsStep); }, step);
        lists.checkAll(names, otherReach);
    }

  private:
    void perform(Create const& step) {
        if (lists.size() == maximalNumberOfLists) {
            return;
        }
        if (step.parent < lists.size()) {
            lists.create(step.make, numberOf(step.parent));
        } else {
            lists.create(step.make, std::nullopt);
        }
    }

    void perform(Clone const& step) {
        if (lists.size() < maximalNumberOfLists) {
            lists.clone(numberOf(step.list));
        }
    }

    void perform(Add const& step) {
        auto const refusal = lists.add(numberOf(step.list), step.addition, step.entry);
        seenKeys.insert(refusal ? refusal->key : "");
    }

    std::size_t numberOf(std::size_t back) const { return lists.size() - 1 - back % lists.size(); }

    TwinLists lists;
    std::set<std::string> seenKeys;
};

TEST(RandomLists, AnswerAfterEveryStepWhatTheRulesSay) {
    std::set<std::string> keys;
    support::checkOnRandomCases(numberOfPrograms, [&keys] {
        Program const program = *anyProgram();
        ProgramRun run;
        for (Step const& step : program.steps) {
            run.take(step, program.otherReach);
        }
        keys.insert(run.keys().begin(), run.keys().end());
    });
    // A run that misses a key tests too little.
    EXPECT_THAT(keys, testing::UnorderedElementsAre("", "PackageRedeclared", "PrecedenceViolation",
                                                    "InvalidPackageFunctionAbbreviation"));
}

} // namespace
