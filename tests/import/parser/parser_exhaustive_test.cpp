// SPDX-License-Identifier: BSL-1.0

/// \file
/// All commands of up to six arguments, with one representative of each kind of argument.

#include <model/parser_model.hpp>
#include <support/message_keys.hpp>
#include <support/observed_entries.hpp>

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <set>
#include <string>
#include <vector>

namespace {

using lf::import::Behavior;
using model::Outcome;

using Arguments = std::vector<std::u16string>;

constexpr std::size_t maximalLength = 6;
/// The factories only differ in how they read arguments, so shorter commands suffice.
constexpr std::size_t maximalLengthInATree = 4;

using Representatives = std::array<std::u16string, 8>;

/// One of each kind of argument; two rejected ones, to see which one is reported.
Representatives const withPackageImports{u"a.b", u"c.*", u"pkg", u"v@1.2",
                                         u"as",  u"",    u"1x",  u"for"};

/// One of each kind, with and without a warning; two rejected ones, to see which one is reported.
Representatives const withoutPackageImports{u"a.b",   u"a.for", u"c.*", u"1a.*",
                                            u"v@1.2", u"as",    u"",    u".*"};

/// Calls \p visit with \p command and with every extension of it by at most \p more arguments.
template <typename Visit>
void forEachCommand(Representatives const& representatives, Visit const& visit, std::size_t more,
                    Arguments const& command = {}) {
    visit(command);
    if (more == 0) {
        return;
    }
    Arguments longer = command;
    longer.emplace_back();
    for (std::u16string const& representative : representatives) {
        longer.back() = representative;
        forEachCommand(representatives, visit, more - 1, longer);
    }
}

void expectAgreement(Arguments const& command, Behavior behavior,
                     std::vector<Outcome> const& expected) {
    EXPECT_EQ(support::parseTexts(command, behavior), expected)
        << "as texts: " << testing::PrintToString(command);
    if (command.size() <= maximalLengthInATree) {
        EXPECT_EQ(support::parseTree(command, behavior), expected)
            << "in a tree: " << testing::PrintToString(command);
    }
}

/// Compares library and model on every command and stops at the first difference.
///
/// \returns the number of commands.
std::size_t compareOnEveryCommand(Representatives const& representatives, Behavior behavior) {
    std::size_t numberOfCommands = 0;
    auto const compare = [&](Arguments const& command) {
        if (testing::Test::HasFailure()) {
            return;
        }
        ++numberOfCommands;
        expectAgreement(command, behavior,
                        model::parseCommand(command, behavior == Behavior::WithPackageImports));
    };
    forEachCommand(representatives, compare, maximalLength);
    return numberOfCommands;
}

// 8^0 + 8^1 + ... + 8^6
constexpr std::size_t numberOfAllCommands = 299'593;

TEST(EveryShortCommand, MeansWithPackageImportsWhatTheRulesSay) {
    EXPECT_EQ(compareOnEveryCommand(withPackageImports, Behavior::WithPackageImports),
              numberOfAllCommands);
}

TEST(EveryShortCommand, MeansWithoutPackageImportsWhatTheRulesSay) {
    EXPECT_EQ(compareOnEveryCommand(withoutPackageImports, Behavior::WithoutPackageImports),
              numberOfAllCommands);
}

TEST(EveryShortCommand, IsEnoughForEveryMessageOfTheParser) {
    std::set<std::string> keys;
    auto const collectKeys = [&](Representatives const& representatives, bool packageImportsOn) {
        auto const collect = [&](Arguments const& command) {
            for (Outcome const& outcome : model::parseCommand(command, packageImportsOn)) {
                if (outcome.kind == model::OutcomeKind::Invalid) {
                    keys.insert(outcome.key);
                }
            }
        };
        forEachCommand(representatives, collect, maximalLengthInATree);
    };
    collectKeys(withPackageImports, true);
    collectKeys(withoutPackageImports, false);
    EXPECT_EQ(keys, support::keyTextsOf(lf::import::parserMessages));
}

} // namespace
