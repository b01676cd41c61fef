// SPDX-License-Identifier: BSL-1.0

/// \file
/// Random programs that create scopes and add imports to them. After every step, the imports that
/// each scope reports must be the entries of the model.

#include "twin_scopes.hpp"

#include <support/list_program.hpp>
#include <support/random_check.hpp>
#include <support/random_programs.hpp>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace {

using support::AddStep;
using support::CreateStep;
using support::ListProgram;
using support::ListStep;
using support::TwinScopes;

// Half of the names are dotted; only packages introduce dotted names.
std::vector<std::u16string> const names{u"a", u"b", u"A", u"", u"a.b", u"b.a", u"a.A", u"a.b.a"};

/// Skips the cloning steps of a program: scopes cannot be cloned.
class ScopeProgramRun {
  public:
    ScopeProgramRun() { scopes.create({}, std::nullopt); }

    std::set<std::string> run(std::vector<ListStep> const& steps) {
        for (ListStep const& step : steps) {
            std::visit([this](auto const& itsStep) { perform(itsStep); }, step);
            scopes.checkScopes();
            for (std::u16string const& name : names) {
                scopes.checkName(name);
            }
        }
        return seenOutcomes;
    }

  private:
    void perform(CreateStep const& step) {
        if (scopes.size() < support::maximalNumberOfLists) {
            bool const hasParent = step.parent < scopes.size();
            scopes.create(step.make,
                          hasParent ? std::optional(numberOf(step.parent)) : std::nullopt);
        }
    }

    void perform(AddStep const& step) {
        seenOutcomes.insert(scopes.add(numberOf(step.list), step.addition, step.entry));
    }

    void perform(support::CloneStep const&) {}

    std::size_t numberOf(std::size_t back) const {
        return scopes.size() - 1 - back % scopes.size();
    }

    TwinScopes scopes;
    std::set<std::string> seenOutcomes;
};

/// Gives some packages a dotted name.
void lengthenNames(std::vector<ListStep>& steps, rc::Random& random) {
    for (ListStep& step : steps) {
        auto* const add = std::get_if<AddStep>(&step);
        if (add != nullptr && add->entry.kind == model::OutcomeKind::Package &&
            random.next() % 2 == 0) {
            add->entry.introducedName += random.next() % 2 == 0 ? u".b" : u".b.a";
        }
    }
}

std::vector<ListStep> makeProgram(rc::Random random) {
    ListProgram program = support::makeProgram(random);
    lengthenNames(program.steps, random);
    return std::move(program.steps);
}

rc::Gen<std::vector<ListStep>> anyProgram() {
    return [](rc::Random const& random, int) {
        return rc::shrinkable::shrinkRecur(
            makeProgram(random), [](auto const& steps) { return rc::shrink::removeChunks(steps); });
    };
}

TEST(RandomScopes, SayAfterEveryStepWhatTheModelSays) {
    std::set<std::string> outcomes;
    support::checkOnRandomCases(
        1'500, [&outcomes] { outcomes.merge(ScopeProgramRun().run(*anyProgram())); });
    // Every outcome must occur.
    EXPECT_THAT(outcomes, testing::UnorderedElementsAre("stored", "repeated", "PackageRedeclared",
                                                        "PrecedenceViolation",
                                                        "InvalidPackageFunctionAbbreviation"));
}

} // namespace
