// SPDX-License-Identifier: BSL-1.0

/// \file
/// Random programs that create lists and add entries; after every step each list must give the same
/// answers as the model.

#include <support/list_program.hpp>
#include <support/message_keys.hpp>
#include <support/random_check.hpp>
#include <support/random_programs.hpp>

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace {

constexpr int numberOfPrograms = 20'000;

TEST(RandomLists, AnswerAfterEveryStepWhatTheRulesSay) {
    std::set<std::string> keys;
    support::checkOnRandomCases(numberOfPrograms, [&keys] {
        support::ListProgramRun run;
        run.run(*support::anyProgram());
        keys.insert(run.keys().begin(), run.keys().end());
    });
    // A run that never produces some key tests too little. The empty text stands for acceptance.
    std::set<std::string> expected = support::keyTextsOf(lf::import::listMessages);
    expected.insert("");
    EXPECT_EQ(keys, expected);
}

} // namespace
