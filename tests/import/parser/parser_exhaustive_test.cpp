// SPDX-License-Identifier: BSL-1.0

/// \file
/// Every command of up to six arguments, one representative of each kind of argument.

#include <model/parser_model.hpp>
#include <support/observed_entries.hpp>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <set>
#include <string>
#include <vector>

namespace {

using lf::import::Behavior;
using model::Outcome;
using testing::UnorderedElementsAre;

using Arguments = std::vector<std::u16string>;

constexpr std::size_t maximalLength = 6;
/// Both factories share all but the reading of the arguments, so that shorter commands will do.
constexpr std::size_t maximalLengthInATree = 4;

/// One of each kind. With package imports, `1a.*` is rejected like `1x`, so that there are two
/// rejections to tell apart; without them it is accepted with a warning, `v@1.2` is a dotted name,
/// and every other text without a dot is rejected.
std::array<std::u16string, 8> const representatives{u"a.b", u"c.*", u"pkg", u"v@1.2",
                                                    u"as",  u"",    u"1x",  u"1a.*"};

/// Calls \p visit with \p command and with all that begin with it and have at most \p room more
/// arguments.
template <typename Visit>
void forEachCommand(Visit const& visit, std::size_t room = maximalLength,
                    Arguments const& command = {}) {
    visit(command);
    if (room == 0) {
        return;
    }
    Arguments longer = command;
    longer.emplace_back();
    for (std::u16string const& representative : representatives) {
        longer.back() = representative;
        forEachCommand(visit, room - 1, longer);
    }
}

struct Findings {
    std::size_t numberOfCommands = 0;
    std::set<std::string> keys;
};

void expectAgreement(Arguments const& command, Behavior behavior,
                     std::vector<Outcome> const& expected) {
    EXPECT_EQ(support::parseTexts(command, behavior), expected)
        << "as texts: " << testing::PrintToString(command);
    if (command.size() <= maximalLengthInATree) {
        EXPECT_EQ(support::parseTree(command, behavior), expected)
            << "in a tree: " << testing::PrintToString(command);
    }
}

/// Compares library and model on every command, up to the first difference.
Findings compareOnEveryCommand(Behavior behavior, bool packageImportsOn) {
    Findings findings;
    forEachCommand([&](Arguments const& command) {
        if (testing::Test::HasFailure()) {
            return;
        }
        ++findings.numberOfCommands;
        std::vector<Outcome> const expected = model::parseCommand(command, packageImportsOn);
        expectAgreement(command, behavior, expected);
        for (Outcome const& outcome : expected) {
            if (outcome.kind == model::OutcomeKind::Invalid) {
                findings.keys.insert(outcome.key);
            }
        }
    });
    return findings;
}

// 8^0 + 8^1 + ... + 8^6
constexpr std::size_t numberOfAllCommands = 299'593;

TEST(EveryShortCommand, MeansWithPackageImportsWhatTheRulesSay) {
    Findings const findings = compareOnEveryCommand(Behavior::WithPackageImports, true);

    EXPECT_EQ(findings.numberOfCommands, numberOfAllCommands);
    EXPECT_THAT(findings.keys,
                UnorderedElementsAre("InvalidImportArgument", "InvalidAliasName",
                                     "IncorrectNumberOfAlias", "IncorrectNumberOfPackagesForAlias",
                                     "MixedImportType", "MultipleAsClauses", "NamespaceWithAlias"));
}

TEST(EveryShortCommand, MeansWithoutPackageImportsWhatTheRulesSay) {
    Findings const findings = compareOnEveryCommand(Behavior::WithoutPackageImports, false);

    EXPECT_EQ(findings.numberOfCommands, numberOfAllCommands);
    EXPECT_THAT(findings.keys,
                UnorderedElementsAre("ImportArgumentWithoutDot", "MalformedImportArgumentWarning"));
}

} // namespace
