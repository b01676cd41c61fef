// SPDX-License-Identifier: BSL-1.0

/// \file
/// Random programs that make lists and add to them; after every step each list must answer as its
/// twin in the model does.

#include <support/list_program.hpp>
#include <support/message_keys.hpp>
#include <support/random_check.hpp>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <cstddef>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace {

using support::ListProgram;
using support::ListStep;

constexpr int numberOfPrograms = 20'000;

ListProgram makeProgram(rc::Random random) {
    return support::ListProgramMaker([&random](std::size_t bound) {
               return static_cast<std::size_t>(random.next() % bound);
           })
        .program();
}

rc::Gen<ListProgram> anyProgram() {
    return [](rc::Random const& random, int) {
        return rc::shrinkable::shrinkRecur(makeProgram(random), [](ListProgram const& program) {
            return rc::seq::map(rc::shrink::removeChunks(program.steps),
                                [reach = program.otherReach](std::vector<ListStep> steps) {
                                    return ListProgram{std::move(steps), reach};
                                });
        });
    };
}

TEST(RandomLists, AnswerAfterEveryStepWhatTheRulesSay) {
    std::set<std::string> keys;
    support::checkOnRandomCases(numberOfPrograms, [&keys] {
        support::ListProgramRun run;
        run.run(*anyProgram());
        keys.insert(run.keys().begin(), run.keys().end());
    });
    // A run that misses a key tests too little. The empty text stands for acceptance.
    std::set<std::string> expected = support::keyTextsOf(lf::import::listMessages);
    expected.insert("");
    EXPECT_EQ(keys, expected);
}

} // namespace
