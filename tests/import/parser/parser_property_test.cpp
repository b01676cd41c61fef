// SPDX-License-Identifier: BSL-1.0

/// \file
/// Random commands, library against model.

#include <model/parser_model.hpp>
#include <support/message_keys.hpp>
#include <support/observed_entries.hpp>
#include <support/random_check.hpp>

#include <lf/features/package_imports.hpp>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <array>
#include <cstddef>
#include <initializer_list>
#include <ostream>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using namespace std::string_view_literals;

using lf::import::Behavior;
using model::Outcome;

constexpr int numberOfCommands = 100'000;
constexpr std::size_t maximalNumberOfArguments = 8;
constexpr std::size_t maximalNumberOfSegments = 4;
constexpr std::size_t maximalNumberOfPieces = 7;

/// Arguments that print unambiguously when a property fails.
struct Command {
    std::vector<std::u16string> arguments;
};

std::ostream& operator<<(std::ostream& stream, Command const& command) {
    stream << "import";
    for (std::u16string const& argument : command.arguments) {
        stream << ' ' << model::quoted(argument);
    }
    return stream;
}

/// Creates texts from a few simple choices, since the combinators of rapidcheck are slow.
class TextMaker {
  public:
    explicit TextMaker(rc::Random const& source) : random(source) {}

    Command command() {
        Command result;
        for (std::size_t count = below(maximalNumberOfArguments + 1); count > 0; --count) {
            result.arguments.push_back(argument());
        }
        return result;
    }

  private:
    /// Mostly accepted arguments, since one rejected argument decides the whole command.
    std::u16string argument() {
        static constexpr auto forms = std::to_array<Form>({
            {8, [](TextMaker& make) { return make.prefix() + make.identifier(); }},
            {4, [](TextMaker& make) { return make.prefix() + u"*"; }},
            {8, [](TextMaker& make) { return make.identifier(); }},
            {3, [](TextMaker& make) { return make.identifier() + u"@" + make.versionRange(); }},
            {6, [](TextMaker&) { return std::u16string(u"as"); }},
            {3, [](TextMaker&) { return std::u16string(); }},
            {1, [](TextMaker& make) { return make.prefix() + make.reservedWord(); }},
            {1, [](TextMaker& make) { return make.reservedWord(); }},
            {3, [](TextMaker& make) { return make.anyText(); }},
        });
        return oneOf(forms);
    }

    /// One or more segments, each with its dot.
    std::u16string prefix() {
        std::u16string result = identifier() + u".";
        for (std::size_t count = below(maximalNumberOfSegments); count > 0; --count) {
            result += (below(8) == 0 ? reservedWord() : identifier()) + u".";
        }
        return result;
    }

    std::u16string identifier() {
        return oneOf({u"a", u"b", u"As", u"AS", u"_", u"a1", u"\u00E9", u"e\u0301", u"\u540D\u524D",
                      u"\U0001D400", u"x\U0001D7D8"});
    }

    std::u16string reservedWord() { return oneOf({u"for", u"end", u"import"}); }

    std::u16string versionRange() {
        return oneOf(
            {u"1", u"1.2", u"^1.2.3", u">=1,<2.0", u"*", u"1-rc.1+7", u"", u"01", u"@1", u".*"});
    }

    /// Arbitrary text.
    std::u16string anyText() {
        static constexpr auto forms = std::to_array<Form>({
            {4,
             [](TextMaker& make) {
                 return make.oneOf({u".", u"*", u"@", u".*", u"..", u"as"});
             }},
            {3, [](TextMaker& make) { return make.identifier(); }},
            {1, [](TextMaker& make) { return make.reservedWord(); }},
            {2, [](TextMaker& make) { return make.oddity(); }},
        });
        std::u16string text;
        for (std::size_t count = below(maximalNumberOfPieces + 1); count > 0; --count) {
            text += oneOf(forms);
        }
        return text;
    }

    /// A unit that is invalid in an identifier or at its start, including look-alikes of special
    /// characters and surrogates.
    std::u16string oddity() {
        static constexpr std::u16string_view units =
            u"\0 \t1,-^>=\u0301\u2024\uFF0E\uFF0A\uFF20\uFFFD\U0001F600\U0001D400"sv;
        return {units[below(units.size())]};
    }

    /// A way to create a text, chosen with a probability proportional to its weight.
    struct Form {
        std::size_t weight;
        std::u16string (*make)(TextMaker&);
    };

    template <std::size_t numberOfForms>
    std::u16string oneOf(std::array<Form, numberOfForms> const& forms) {
        std::size_t total = 0;
        for (Form const& form : forms) {
            total += form.weight;
        }
        std::size_t choice = below(total);
        auto const* form = forms.data();
        while (choice >= form->weight) {
            choice -= form->weight;
            ++form;
        }
        return form->make(*this);
    }

    std::u16string oneOf(std::initializer_list<std::u16string_view> texts) {
        return std::u16string(texts.begin()[below(texts.size())]);
    }

    std::size_t below(std::size_t bound) { return static_cast<std::size_t>(random.next() % bound); }

    rc::Random random;
};

/// The command with fewer arguments, then with shorter ones.
rc::Seq<Command> simplerCommands(Command const& command) {
    auto const asCommand = [](std::vector<std::u16string> arguments) {
        return Command{std::move(arguments)};
    };
    auto const shorterText = [](std::u16string const& text) {
        return rc::shrink::removeChunks(text);
    };
    return rc::seq::concat(
        rc::seq::map(rc::shrink::removeChunks(command.arguments), asCommand),
        rc::seq::map(rc::shrink::eachElement(command.arguments, shorterText), asCommand));
}

rc::Gen<Command> anyCommand() {
    return [](rc::Random const& random, int) {
        return rc::shrinkable::shrinkRecur(
            TextMaker(random).command(), [](Command const& each) { return simplerCommands(each); });
    };
}

void checkAgreement(Command const& command, Behavior behavior,
                    std::vector<Outcome> const& expected) {
    std::vector<Outcome> const fromTexts = support::parseTexts(command.arguments, behavior);
    RC_ASSERT(fromTexts == expected);
    std::vector<Outcome> const fromTree = support::parseTree(command.arguments, behavior);
    RC_ASSERT(fromTree == expected);
}

class RandomCommand : public testing::Test {
  protected:
    void TearDown() override { lf::features::setPackageImportsFeature(true); }
};

TEST_F(RandomCommand, MeansWhatTheRulesSayForEachBehaviorAndFactory) {
    std::set<std::string> keys;
    support::checkOnRandomCases(numberOfCommands, [&keys](bool featureOn) {
        Command const command = *anyCommand();
        std::vector<Outcome> const withPackages = model::parseCommand(command.arguments, true);
        std::vector<Outcome> const withoutPackages = model::parseCommand(command.arguments, false);
        lf::features::setPackageImportsFeature(featureOn);

        checkAgreement(command, Behavior::WithPackageImports, withPackages);
        checkAgreement(command, Behavior::WithoutPackageImports, withoutPackages);
        checkAgreement(command, Behavior::FollowFeatureSwitch,
                       featureOn ? withPackages : withoutPackages);

        for (std::vector<Outcome> const* outcomes : {&withPackages, &withoutPackages}) {
            for (Outcome const& outcome : *outcomes) {
                keys.insert(outcome.key);
            }
        }
    });
    // A run that never produces some key tests too little. The empty text stands for valid entries.
    std::set<std::string> expected = support::keyTextsOf(lf::import::parserMessages);
    expected.insert("");
    EXPECT_EQ(keys, expected);
}

} // namespace
