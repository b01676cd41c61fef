// SPDX-License-Identifier: BSL-1.0
#include <host/command.hpp>

#include <host_testing/describe.hpp>

#include <support/observed_entries.hpp>
#include <support/row_name.hpp>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

namespace lf::import::host {
namespace {

using enum Behavior;
using host_testing::describe;
using Texts = std::vector<std::u16string>;

static_assert(std::is_nothrow_move_constructible_v<CommandItem>);
static_assert(std::is_nothrow_move_assignable_v<CommandItem>);

/// A command whose arguments are the nodes 0, 1, 2, ...
class Tree final : public lf::astapi::ISyntaxTree {
  public:
    explicit Tree(Texts arguments) : texts(std::move(arguments)) {}

    std::size_t getNumberOfArguments(lf::astapi::NodeHandle) const override { return texts.size(); }

    lf::astapi::ArgumentNode getArgument(lf::astapi::NodeHandle, std::size_t index) const override {
        return {this, index};
    }

    std::u16string getText(lf::astapi::NodeHandle argument) const override {
        return texts.at(static_cast<std::size_t>(argument));
    }

  private:
    Texts texts;
};

struct CommandRow {
    Behavior behavior;
    Salvage salvage;
    Texts arguments;
    std::vector<std::string> items;
    std::string_view why;

    friend std::ostream& operator<<(std::ostream& stream, CommandRow const& row) {
        return stream << row.why;
    }
};

class ReadCommand : public testing::TestWithParam<CommandRow> {};

TEST_P(ReadCommand, GivesEntriesAndDiagnostics) {
    CommandRow const& row = GetParam();
    EXPECT_EQ(describe(readCommand(row.arguments, row.behavior, row.salvage)), row.items)
        << row.why;
    Tree const tree(row.arguments);
    lf::astapi::ImportCommandView const command{&tree, 0};
    EXPECT_EQ(describe(readCommand(command, row.behavior, row.salvage)), row.items)
        << row.why << ", in a tree";
}

constexpr auto plain = Salvage::No;
constexpr auto salvaged = Salvage::Yes;

INSTANTIATE_TEST_SUITE_P(
    Plainly, ReadCommand,
    testing::Values(CommandRow{WithPackageImports,
                               plain,
                               {u"a.b", u"c.*"},
                               {"0: a.b", "1: c.*"},
                               "each entry has its argument"},
                    CommandRow{WithPackageImports, plain, {u"", u""}, {}, "nothing is imported"},
                    CommandRow{WithPackageImports,
                               plain,
                               {u"", u"p", u"q@1"},
                               {"1: p", "2: q@1"},
                               "empty arguments are counted"},
                    CommandRow{WithPackageImports,
                               plain,
                               {u"", u"p"},
                               {"1: p"},
                               "a lone package behind the first argument is no alias"},
                    CommandRow{WithPackageImports,
                               plain,
                               {u"p", u"as", u"q"},
                               {"2 of 0: p as q"},
                               "an alias names its package"},
                    CommandRow{WithPackageImports,
                               plain,
                               {u"", u"p@1", u"", u"as", u"", u"p"},
                               {"5 of 1: p@1"},
                               "also where empty arguments stand between and the names are equal"},
                    CommandRow{WithPackageImports,
                               plain,
                               {u"a.b", u"c.", u"d.e"},
                               {"1: error InvalidImportArgument(\"c.\")"},
                               "an error is all there is"},
                    CommandRow{WithoutPackageImports,
                               plain,
                               {u"a.b", u"1.*", u"c.d"},
                               {"0: a.b", "1: 1.*",
                                "1: warning MalformedImportArgumentWarning(\"1.*\")", "2: c.d"},
                               "a warning stands behind its entry"},
                    CommandRow{
                        WithoutPackageImports,
                        plain,
                        {u"a.b", u".*"},
                        {"1: warning MalformedImportArgumentWarning(\".*\")"},
                        "a warning about a wildcard of nothing stands in place of the command"}),
    support::RowName());

INSTANTIATE_TEST_SUITE_P(
    Salvaging, ReadCommand,
    testing::Values(CommandRow{WithPackageImports,
                               salvaged,
                               {u"shapes.circle", u"effects.spin", u"colours."},
                               {"0: shapes.circle", "1: effects.spin",
                                "2: error InvalidImportArgument(\"colours.\")"},
                               "what stands before the error is imported"},
                    CommandRow{WithPackageImports,
                               salvaged,
                               {u"a.b", u"c.", u"d.e"},
                               {"0: a.b", "1: error InvalidImportArgument(\"c.\")", "2: d.e"},
                               "and what stands behind it"},
                    CommandRow{WithPackageImports,
                               salvaged,
                               {u"1", u"a.b", u"2", u"c.d"},
                               {"0: error InvalidImportArgument(\"1\")", "1: a.b", "3: c.d"},
                               "the diagnostic is the one of the command, the first"},
                    CommandRow{WithPackageImports,
                               salvaged,
                               {u"a.b", u"p", u"c.d"},
                               {"0: a.b", "1: error MixedImportType()", "2: c.d"},
                               "what breaks a rule is in the way"},
                    CommandRow{WithPackageImports,
                               salvaged,
                               {u"p", u"as"},
                               {"0: p", "1: error IncorrectNumberOfAlias()"},
                               "without its alias a package stands"},
                    CommandRow{WithPackageImports,
                               salvaged,
                               {u"p", u"as", u"a.b"},
                               {"0: p", "2: error InvalidAliasName(\"a.b\")"},
                               "or with one that is none"},
                    CommandRow{WithPackageImports,
                               salvaged,
                               {u"", u"p", u"as", u"q", u"r"},
                               {"3 of 1: p as q", "4: error IncorrectNumberOfAlias()"},
                               "a salvaged alias names its package"},
                    CommandRow{WithPackageImports,
                               salvaged,
                               {u"as", u"p"},
                               {"0: error IncorrectNumberOfPackagesForAlias()", "1: p"},
                               "behind the first argument, but no alias clause any more"},
                    CommandRow{WithPackageImports,
                               salvaged,
                               {u"1"},
                               {"0: error InvalidImportArgument(\"1\")"},
                               "there may be nothing to be salvaged"},
                    CommandRow{WithPackageImports,
                               salvaged,
                               {u"a.b", u"c.*"},
                               {"0: a.b", "1: c.*"},
                               "a command without error is not touched"},
                    CommandRow{WithoutPackageImports,
                               salvaged,
                               {u"1.*", u"p", u"a.b"},
                               {"0: 1.*", "0: warning MalformedImportArgumentWarning(\"1.*\")",
                                "1: error ImportArgumentWithoutDot()", "2: a.b"},
                               "a salvaged entry keeps its warning"},
                    CommandRow{WithoutPackageImports,
                               salvaged,
                               {u"a.b", u".*"},
                               {"0: a.b", "1: warning MalformedImportArgumentWarning(\".*\")"},
                               "a warning in place of the command is in the way, too"}),
    support::RowName());

TEST(ReadCommandAsTheFeatureSwitchSays, AsksItOnceForAWholeCommand) {
    lf::features::setPackageImportsFeature(false);
    Texts const command{u"p", u"a.b"};
    EXPECT_EQ(describe(readCommand(command, FollowFeatureSwitch, salvaged)),
              (std::vector<std::string>{"0: error ImportArgumentWithoutDot()", "1: a.b"}));
    lf::features::setPackageImportsFeature(true);
    EXPECT_EQ(describe(readCommand(command, FollowFeatureSwitch, salvaged)),
              (std::vector<std::string>{"0: p", "1: error MixedImportType()"}));
}

TEST(ReadCommandWithSalvage, GivesUpWhenTooMuchIsInTheWay) {
    Texts bearable(mostArgumentsPassedOver, u"1");
    bearable.emplace_back(u"a.b");
    EXPECT_EQ(readCommand(bearable, WithPackageImports, salvaged).size(), 2U);
    bearable.emplace_back(u"1");
    EXPECT_EQ(describe(readCommand(bearable, WithPackageImports, salvaged)),
              std::vector<std::string>{"0: error InvalidImportArgument(\"1\")"});
}

/// Visits all sequences of up to four arguments from a set that produces every error of a command.
template <typename Visit>
void forEachShortCommand(Visit const& visit) {
    static std::array<std::u16string, 7> const arguments{u"",    u"a.b", u"c.*", u"p",
                                                         u"q@1", u"as",  u"1."};
    for (std::size_t length = 0; length <= 4; ++length) {
        std::vector<std::size_t> digits(length);
        while (true) {
            Texts command(length);
            std::ranges::transform(digits, command.begin(),
                                   [](std::size_t digit) { return arguments.at(digit); });
            visit(command);
            auto const carry = std::ranges::find_if(
                digits, [](std::size_t digit) { return digit + 1 < arguments.size(); });
            if (carry == digits.end()) {
                break;
            }
            ++*carry;
            std::fill(digits.begin(), carry, 0);
        }
    }
}

TEST(ReadCommandOfEveryShape, SaysWhatTheParserSays) {
    forEachShortCommand([](Texts const& command) {
        std::vector<model::Outcome> const expected =
            support::parseTexts(command, WithPackageImports);
        std::vector<CommandItem> const items = readCommand(command, WithPackageImports);
        ASSERT_EQ(items.size(), expected.size());
        for (std::size_t index = 0; index < items.size(); ++index) {
            model::Outcome outcome = std::visit(
                Overloaded{
                    [](CommandEntry const& entry) {
                        return std::visit([](auto const& held) { return support::describe(held); },
                                          entry.entry);
                    },
                    [](CommandDiagnostic const& diagnostic) {
                        return support::describe(InvalidImportEntry(diagnostic.message.getMsgID()));
                    }},
                items[index]);
            outcome.index = detail::argumentOf(items[index]);
            ASSERT_EQ(outcome, expected[index]);
        }
    });
}

/// Copies the arguments that \p entry comes from, including those of an alias clause.
void copyClause(Texts const& command, CommandEntry const& entry, Texts& target) {
    auto const argument = static_cast<std::size_t>(entry.argument);
    auto const imported = static_cast<std::size_t>(entry.importedArgument);
    target[argument] = command[argument];
    if (imported != argument) {
        target[imported] = command[imported];
        auto const package = command.begin() + static_cast<std::ptrdiff_t>(imported);
        auto const keyword = std::find(package, command.end(), u"as");
        target[static_cast<std::size_t>(keyword - command.begin())] = u"as";
    }
}

TEST(SalvageOfEveryShape, KeepsTheDiagnosticAndNothingThatIsInError) {
    forEachShortCommand([](Texts const& command) {
        std::vector<CommandItem> const plainly = readCommand(command, WithPackageImports);
        std::vector<CommandItem> const items = readCommand(command, WithPackageImports, salvaged);
        auto const isDiagnostic = [](CommandItem const& item) {
            return std::holds_alternative<CommandDiagnostic>(item);
        };
        ASSERT_EQ(std::ranges::count_if(items, isDiagnostic),
                  std::ranges::count_if(plainly, isDiagnostic));
        auto const diagnostic = std::ranges::find_if(items, isDiagnostic);
        if (diagnostic == items.end()) {
            ASSERT_EQ(describe(items), describe(plainly));
            return;
        }
        ASSERT_EQ(describe(*diagnostic), describe(plainly.front()));
        ASSERT_TRUE(std::ranges::is_sorted(items, {}, detail::argumentOf));
        // Salvage invents nothing: a command with only these arguments has the same entries.
        Texts remaining(command.size());
        for (CommandItem const& item : items) {
            if (auto const* const entry = std::get_if<CommandEntry>(&item)) {
                copyClause(command, *entry, remaining);
            }
        }
        std::vector<std::string> entries = describe(items);
        entries.erase(entries.begin() + (diagnostic - items.begin()));
        ASSERT_EQ(describe(readCommand(remaining, WithPackageImports)), entries);
    });
}

} // namespace
} // namespace lf::import::host
