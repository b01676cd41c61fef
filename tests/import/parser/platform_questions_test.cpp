// SPDX-License-Identifier: BSL-1.0

/// \file
/// What the parser asks its host, in which order, and how it treats the host's exceptions.

#include <support/allocations.hpp>
#include <support/observed_entries.hpp>
#include <support/outcomes.hpp>
#include <support/row_name.hpp>

#include <host_testing/recording/recorder.hpp>
#include <host_testing/recording/recording_tree.hpp>
#include <import/import.hpp>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <exception>
#include <functional>
#include <limits>
#include <memory>
#include <new>
#include <ostream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace {

namespace recording = lf::import::host_testing::recording;

using lf::import::Behavior;
using lf::import::IImportArgumentParser;
using recording::argument;
using recording::argumentText;
using recording::featureSwitch;
using recording::identifier;
using recording::numberOfArguments;
using recording::Question;
using recording::rangeFactory;
using recording::Recorder;
using recording::recorder;
using recording::RecordingTree;
using recording::Service;
using recording::specifier;
using recording::specifierText;
using support::error;

using Arguments = std::vector<std::u16string>;
using Log = std::vector<Question>;
using InvalidSpecifier =
    foundation::core::except::Exception<kpm::arguments::InvalidPackageSpecifier, std::exception>;

using PackageAndIndex = std::pair<lf::import::PackageImportEntry, lf::import::ImportArgumentIndex>;

constexpr auto on = Behavior::WithPackageImports;
constexpr auto off = Behavior::WithoutPackageImports;
constexpr auto follow = Behavior::FollowFeatureSwitch;

Question reserved(std::u16string text) {
    return recording::reservedWord(std::move(text), 8);
}

std::unique_ptr<IImportArgumentParser> createParser(Arguments const& arguments, Behavior behavior) {
    return lf::import::createImportArgumentParser(arguments, behavior);
}

std::unique_ptr<IImportArgumentParser> createParser(RecordingTree const& tree, Behavior behavior) {
    return lf::import::createImportArgumentParser(tree.command(), behavior);
}

/// The questions that \p action asks.
Log questionsOf(std::function<void()> const& action) {
    recorder().log.clear();
    action();
    return recorder().log;
}

bool isAskedOfATree(Question const& question) {
    return question.service == Service::NumberOfArguments ||
           question.service == Service::Argument || question.service == Service::ArgumentText;
}

std::size_t countOf(Service service, Log const& log) {
    return static_cast<std::size_t>(
        std::count_if(log.begin(), log.end(),
                      [&](Question const& question) { return question.service == service; }));
}

class PlatformQuestions : public testing::Test {
  protected:
    PlatformQuestions() { recorder() = Recorder(); }
};

// Classification

struct ClassificationRow {
    std::u16string argument;
    Behavior behavior;
    Log questions;
    std::string why;

    friend void PrintTo(ClassificationRow const& row, std::ostream* stream) { *stream << row.why; }
};

class ClassificationQuestions : public PlatformQuestions,
                                public testing::WithParamInterface<ClassificationRow> {};

TEST_P(ClassificationQuestions, AreTheseInThisOrder) {
    ClassificationRow const& row = GetParam();
    EXPECT_EQ(questionsOf([&] { createParser(Arguments{row.argument}, row.behavior); }),
              row.questions)
        << row.why;
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(WithPackageImports, ClassificationQuestions, testing::ValuesIn(std::vector<ClassificationRow>{
    {u"", on, {}, "an ignored argument needs no answer"},
    {u"as", on, {}, "nor does the word as"},
    {u"pkg", on, {identifier(u"pkg"), reserved(u"pkg")}, "each service is asked once about a word"},
    {u"for", on, {identifier(u"for"), reserved(u"for")}, "also about a reserved word"},
    {u"1x", on, {identifier(u"1x")}, "no further question about an invalid identifier"},
    {u"*", on, {identifier(u"*")}, "a lone star is a word like any other"},
    {u"a.b.c", on, {identifier(u"a"), identifier(u"b"), identifier(u"c"), reserved(u"c")}, "segments in order, only the last one as a reserved word"},
    {u"for.end.c", on, {identifier(u"for"), identifier(u"end"), identifier(u"c"), reserved(u"c")}, "segments before the last may be reserved words"},
    {u"a.b.for", on, {identifier(u"a"), identifier(u"b"), identifier(u"for"), reserved(u"for")}, "a reserved last segment"},
    {u"1a.b.c", on, {identifier(u"1a")}, "no questions after the first invalid segment"},
    {u"a.1b.c.d", on, {identifier(u"a"), identifier(u"1b")}, "in any position"},
    {u"a.b.1c", on, {identifier(u"a"), identifier(u"b"), identifier(u"1c")}, "an invalid last segment is not asked about as a reserved word"},
    {u"a.b.*", on, {identifier(u"a"), identifier(u"b")}, "the star of a wildcard is not asked about"},
    {u"1a.*", on, {identifier(u"1a")}, "a wildcard with an invalid prefix"},
    {u".*", on, {identifier(u"")}, "a wildcard with an empty prefix"},
    {u"a.", on, {identifier(u"a"), identifier(u"")}, "an empty last segment is a segment"},
    {u"a..b", on, {identifier(u"a"), identifier(u"")}, "an empty segment is bad"},
    {u"v@1.2", on, {rangeFactory(), specifier(u"v@1.2")}, "only the descriptor library is asked, about the whole text"},
    {u"a.b@1", on, {rangeFactory(), specifier(u"a.b@1")}, "dots do not matter in a specifier"},
    {u"for@1x", on, {rangeFactory(), specifier(u"for@1x")}, "nor does an invalid version"},
    {u"@", on, {rangeFactory(), specifier(u"@")}, "nor an empty name and version"},
}), support::RowName{});

INSTANTIATE_TEST_SUITE_P(WithoutPackageImports, ClassificationQuestions, testing::ValuesIn(std::vector<ClassificationRow>{
    {u"", off, {}, "no question about an ignored argument"},
    {u".*", off, {}, "nor about a wildcard without a prefix"},
    {u"pkg", off, {}, "nor about text without a dot"},
    {u"for", off, {}, "not even about a reserved word"},
    {u"as", off, {}, "nor about the word as"},
    {u"v@1", off, {}, "nor about a package with a version"},
    {u"a.b.c", off, {identifier(u"a"), identifier(u"b"), reserved(u"c")}, "whether the last segment is an identifier does not matter"},
    {u"a.for", off, {identifier(u"a"), reserved(u"for")}, "a reserved last segment"},
    {u"1a.2b.c", off, {identifier(u"1a"), reserved(u"c")}, "after the first invalid segment only the last one is checked"},
    {u"a.b.*", off, {identifier(u"a"), identifier(u"b")}, "the star of a wildcard is not asked about"},
    {u"1a.b.*", off, {identifier(u"1a")}, "a wildcard with an invalid prefix"},
    {u"a.", off, {identifier(u"a"), reserved(u"")}, "an empty last segment is a segment"},
    {u"v@1.2", off, {identifier(u"v@1"), reserved(u"2")}, "an at sign means nothing"},
}), support::RowName{});

// clang-format on

/// Every concatenation of up to five texts that matter to classification.
Arguments manyTexts() {
    std::array<std::u16string_view, 6> const pieces{u"a", u"1", u"for", u".", u"*", u"@"};
    Arguments texts{u""};
    std::size_t first = 0;
    for (int length = 1; length <= 5; ++length) {
        std::size_t const end = texts.size();
        for (; first < end; ++first) {
            for (std::u16string_view const piece : pieces) {
                texts.push_back(texts[first] + std::u16string(piece));
            }
        }
    }
    return texts;
}

void expectFrugality(std::u16string const& text, Log const& log) {
    std::size_t numberOfFailures = 0;
    for (Question const& question : log) {
        if (question.service == Service::ReservedWord) {
            EXPECT_EQ(question.selector, 8);
        }
        if (question.service == Service::Identifier) {
            EXPECT_EQ(numberOfFailures, 0) << question << " after a failure";
            numberOfFailures += recording::isAsciiIdentifier(question.text) ? 0 : 1;
        }
    }
    EXPECT_LE(countOf(Service::ReservedWord, log), 1);
    EXPECT_LE(countOf(Service::Identifier, log),
              static_cast<std::size_t>(1 + std::count(text.begin(), text.end(), u'.')));
    EXPECT_EQ(countOf(Service::FeatureSwitch, log), 0);
}

TEST_F(PlatformQuestions, AreFewForEveryText) {
    for (std::u16string const& text : manyTexts()) {
        for (Behavior const behavior : {on, off}) {
            SCOPED_TRACE(model::quoted(text) + (behavior == on ? " on" : " off"));
            expectFrugality(text, questionsOf([&] { createParser(Arguments{text}, behavior); }));
        }
        if (HasFailure()) {
            return;
        }
    }
}

TEST_F(PlatformQuestions, AreTheSameFromBothFactories) {
    Arguments const command{u"a.b.for", u"", u"v@1", u"pkg", u"as", u"1a.c.*", u"for.x"};
    for (Behavior const behavior : {on, off, follow}) {
        RecordingTree const tree("tree", command);
        Log fromTree = questionsOf([&] { createParser(tree, behavior)->parse(); });
        std::erase_if(fromTree, isAskedOfATree);
        EXPECT_EQ(questionsOf([&] { createParser(command, behavior)->parse(); }), fromTree);
        EXPECT_FALSE(fromTree.empty());
    }
}

// The feature switch

TEST_F(PlatformQuestions, AskTheFeatureSwitchFirstAndOnceWhenToldToFollowIt) {
    for (bool const isOn : {true, false}) {
        recorder().isFeatureOn = isOn;
        for (Arguments const& command : {Arguments{}, Arguments{u"a.b", u"c", u"d.*"}}) {
            RecordingTree const tree("tree", command);
            Log const fromTexts = questionsOf([&] { createParser(command, follow)->parse(); });
            Log const fromTree = questionsOf([&] { createParser(tree, follow)->parse(); });
            for (Log const& log : {fromTexts, fromTree}) {
                ASSERT_FALSE(log.empty());
                EXPECT_EQ(log.front(), featureSwitch());
                EXPECT_EQ(countOf(Service::FeatureSwitch, log), 1);
            }
        }
    }
}

TEST_F(PlatformQuestions, LeaveTheFeatureSwitchAloneForEveryOtherBehavior) {
    for (int const value :
         {0, 1, 3, 8, -1, -2, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        auto const behavior = static_cast<Behavior>(value);
        Arguments const command{u"a.b", u"c"};
        RecordingTree const tree("tree", command);
        Log const fromTexts = questionsOf([&] { createParser(command, behavior)->parse(); });
        Log const fromTree = questionsOf([&] { createParser(tree, behavior)->parse(); });
        EXPECT_EQ(countOf(Service::FeatureSwitch, fromTexts), 0) << value;
        EXPECT_EQ(countOf(Service::FeatureSwitch, fromTree), 0) << value;
    }
}

TEST_F(PlatformQuestions, FollowWhatTheFeatureSwitchAnswers) {
    recorder().isFeatureOn = true;
    EXPECT_EQ(support::parseTexts({u"pkg"}, follow),
              std::vector{support::package(0, u"pkg", u"pkg")});
    recorder().isFeatureOn = false;
    EXPECT_EQ(support::parseTexts({u"pkg"}, follow),
              std::vector{error(0, "ImportArgumentWithoutDot")});
}

// The command grammar

struct GrammarRow {
    Arguments command;
    Log questions;
    std::string why;

    friend void PrintTo(GrammarRow const& row, std::ostream* stream) { *stream << row.why; }
};

class GrammarQuestions : public PlatformQuestions,
                         public testing::WithParamInterface<GrammarRow> {};

TEST_P(GrammarQuestions, AreTheseInThisOrder) {
    GrammarRow const& row = GetParam();
    std::unique_ptr<IImportArgumentParser> const parser = createParser(row.command, on);
    EXPECT_EQ(questionsOf([&] { parser->parse(); }), row.questions) << row.why;
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(WithPackageImports, GrammarQuestions, testing::ValuesIn(std::vector<GrammarRow>{
    {{}, {}, "an empty command"},
    {{u"a.b", u"c.*"}, {}, "names are already classified"},
    {{u"v@1", u"w@2"}, {}, "so are packages with versions"},
    {{u"p", u"q"}, {rangeFactory(), specifier(u"p"), rangeFactory(), specifier(u"q")}, "a plain package gets its specifier when its entry is read"},
    {{u"p", u"as", u"x"}, {rangeFactory(), specifier(u"p")}, "an alias has no specifier"},
    {{u"p", u"as", u"v@1"}, {rangeFactory(), specifier(u"p"), specifierText(u"v@1")}, "a versioned package instead of an alias is converted to text"},
    {{u"p", u"as", u"a.b"}, {rangeFactory(), specifier(u"p")}, "a name instead of an alias needs no conversion"},
    {{u"p", u"1x"}, {}, "no specifier if an argument is rejected"},
    {{u"as", u"p"}, {}, "nor after a stray as"},
    {{u"a.b", u"p"}, {}, "nor for a package among names"},
    {{u"p", u"a.b", u"q"}, {rangeFactory(), specifier(u"p")}, "nor after the first error"},
}), support::RowName{});

// clang-format on

TEST_F(PlatformQuestions, LeaveARefusedPlainNameToTheCaller) {
    recorder().isSpecifier = [](std::u16string_view text) { return text != u"q"; };
    std::unique_ptr<IImportArgumentParser> const parser =
        createParser(Arguments{u"p", u"q", u"r"}, on);

    recorder().log.clear();
    EXPECT_THROW(parser->parse(), InvalidSpecifier);
    EXPECT_EQ(recorder().log,
              (Log{rangeFactory(), specifier(u"p"), rangeFactory(), specifier(u"q")}));
}

// Exceptions of the host

/// An exception without a base class.
struct Failure {
    std::size_t number;
};

/// Runs \p action, which must rethrow \p thrown itself.
void expectThrown(std::exception_ptr const& thrown, std::function<void()> const& action) {
    try {
        action();
        ADD_FAILURE() << "no exception came out";
    } catch (...) {
        EXPECT_EQ(std::current_exception(), thrown) << "another exception came out";
    }
}

/// Makes the question at \p position of the log throw \p thrown.
void failAtPosition(std::size_t position, std::exception_ptr const& thrown) {
    recorder().beforeAnswer = [position, thrown] {
        if (recorder().log.size() == position + 1) {
            std::rethrow_exception(thrown);
        }
    };
}

struct BehaviorRow {
    Behavior behavior;
    std::string why;

    friend void PrintTo(BehaviorRow const& row, std::ostream* stream) { *stream << row.why; }
};

/// A command for which the factory uses every service that factories use.
class ExceptionsOfTheHost : public PlatformQuestions,
                            public testing::WithParamInterface<BehaviorRow> {
  protected:
    RecordingTree tree{"tree", {u"a.b.*", u"", u"v@1", u"for.x", u"1a.b", u"w@x", u"pkg", u"as"}};
    Behavior behavior = GetParam().behavior;
    Log undisturbed = questionsOf([this] { createParser(tree, behavior); });
};

TEST_P(ExceptionsOfTheHost, LeaveTheFactoryUnchangedAndEndItsQuestions) {
    for (std::size_t position = 0; position < undisturbed.size(); ++position) {
        for (std::exception_ptr const& thrown :
             {std::make_exception_ptr(Failure{position}), std::make_exception_ptr(std::bad_alloc()),
              std::make_exception_ptr(std::runtime_error("out of order"))}) {
            SCOPED_TRACE(testing::Message() << position << ": " << undisturbed[position]);
            failAtPosition(position, thrown);

            recorder().log.clear();
            std::size_t const live = support::countLiveAllocations();
            expectThrown(thrown, [this] { createParser(tree, behavior); });
            EXPECT_EQ(recorder().log,
                      Log(undisturbed.begin(),
                          undisturbed.begin() + static_cast<std::ptrdiff_t>(position) + 1));
            recorder().log.clear();
            EXPECT_EQ(support::countLiveAllocations(), live) << "nothing is left behind";
        }
    }
}

TEST_P(ExceptionsOfTheHost, AreARejectionOnlyWhenTheDescriptorLibraryRefuses) {
    std::size_t numberOfRejections = 0;
    for (std::size_t position = 0; position < undisturbed.size(); ++position) {
        SCOPED_TRACE(testing::Message() << position << ": " << undisturbed[position]);
        std::exception_ptr const refusal = std::make_exception_ptr(InvalidSpecifier());
        failAtPosition(position, refusal);

        recorder().log.clear();
        Service const service = undisturbed[position].service;
        if (service == Service::RangeFactory || service == Service::Specifier) {
            EXPECT_NO_THROW(createParser(tree, behavior));
            ++numberOfRejections;
        } else {
            expectThrown(refusal, [this] { createParser(tree, behavior); });
            EXPECT_EQ(recorder().log.size(), position + 1);
        }
    }
    // A factory and a specifier for each of the two arguments with a version.
    EXPECT_EQ(numberOfRejections, behavior == off ? 0 : 4);
}

INSTANTIATE_TEST_SUITE_P(EveryBehavior, ExceptionsOfTheHost,
                         testing::Values(BehaviorRow{on, "with package imports"},
                                         BehaviorRow{off, "without package imports"},
                                         BehaviorRow{follow, "as the feature switch says"}),
                         support::RowName{});

TEST_F(PlatformQuestions, GoOnBehindARefusedSpecifier) {
    for (Service const refusing : {Service::RangeFactory, Service::Specifier}) {
        recorder().whenAsked(refusing, 1, [] { throw InvalidSpecifier(); });
        Log expected{rangeFactory(), specifier(u"v@1"), identifier(u"a"), identifier(u"b"),
                     reserved(u"b")};
        if (refusing == Service::RangeFactory) {
            std::erase(expected, specifier(u"v@1"));
        }
        Arguments const command{u"v@1", u"a.b"};

        std::vector<model::Outcome> outcomes;
        EXPECT_EQ(questionsOf([&] { outcomes = support::parseTexts(command, on); }), expected);
        EXPECT_EQ(outcomes, std::vector{error(0, "InvalidImportArgument", {u"v@1"})});
    }
}

TEST_F(PlatformQuestions, DecideUnderWhichNameAPackageIsImported) {
    recorder().packageName = [](std::u16string const& name) { return u"the_" + name; };

    for (auto const* const written : {u"package", u"package@1"}) {
        auto const parser = createParser(Arguments{written}, on);
        auto const& parsed = std::get<PackageAndIndex>(parser->parse().front());
        EXPECT_EQ(parsed.first.getPackageSpecifier().Name(), u"the_package");
        EXPECT_EQ(parsed.first.getIntroducedName(), u"the_package");
    }
}

TEST_F(PlatformQuestions, CatchADescriptorExceptionOfADerivedType) {
    struct Derived : InvalidSpecifier {};

    recorder().whenAsked(Service::Specifier, 1, [] { throw Derived(); });
    EXPECT_EQ(support::parseTexts({u"v@1"}, on),
              std::vector{error(0, "InvalidImportArgument", {u"v@1"})});
}

TEST_F(PlatformQuestions, EndWithAnExceptionDuringTheParse) {
    Arguments const command{u"p", u"as", u"v@1"};
    Log const undisturbed{rangeFactory(), specifier(u"p"), specifierText(u"v@1")};
    for (std::size_t position = 0; position < undisturbed.size(); ++position) {
        for (std::exception_ptr const& thrown : {std::make_exception_ptr(Failure{position}),
                                                 std::make_exception_ptr(InvalidSpecifier())}) {
            SCOPED_TRACE(testing::Message() << undisturbed[position]);
            std::unique_ptr<IImportArgumentParser> const parser = createParser(command, on);
            recorder().log.clear();
            failAtPosition(position, thrown);
            expectThrown(thrown, [&] { parser->parse(); });
            EXPECT_EQ(recorder().log.size(), position + 1);
            recorder().beforeAnswer = [] {};
        }
    }
}

// The syntax tree

class SyntaxTreeQuestions : public PlatformQuestions {
  protected:
    static Question count() { return numberOfArguments("tree", RecordingTree::commandNode); }

    static Question node(std::size_t index) {
        return argument("tree", RecordingTree::commandNode, index);
    }

    static Question text(std::size_t index) {
        return argumentText("tree", RecordingTree::firstArgumentNode + index);
    }

    RecordingTree tree{"tree"};
};

TEST_F(SyntaxTreeQuestions, AreTwoCountsForACommandWithoutArguments) {
    EXPECT_EQ(questionsOf([&] { createParser(tree, on); }), (Log{count(), count()}));
}

TEST_F(SyntaxTreeQuestions, ClassifyEachArgumentBeforeTheNextIsFetched) {
    tree.append(u"a.b");
    tree.append(u"v@1");
    tree.append(u"pkg");
    // clang-format off
    EXPECT_EQ(questionsOf([&] { createParser(tree, on); }),
              (Log{count(),
                   count(), node(0), text(0), identifier(u"a"), identifier(u"b"), reserved(u"b"),
                   count(), node(1), text(1), rangeFactory(), specifier(u"v@1"),
                   count(), node(2), text(2), identifier(u"pkg"), reserved(u"pkg"),
                   count()}));
    // clang-format on
}

TEST_F(SyntaxTreeQuestions, GoOnBehindARejectedArgument) {
    tree.append(u"1x");
    tree.append(u"as");
    EXPECT_EQ(questionsOf([&] { createParser(tree, on); }),
              (Log{count(), count(), node(0), text(0), identifier(u"1x"), count(), node(1), text(1),
                   count()}));
}

TEST_F(SyntaxTreeQuestions, AskTheTreeThatANodeBelongsToForItsText) {
    RecordingTree otherTree("other tree", {u"x.y", u"c.*"});
    tree.append(u"a.*");
    tree.append({&otherTree, RecordingTree::firstArgumentNode + 1});
    Question const otherText = argumentText("other tree", RecordingTree::firstArgumentNode + 1);

    std::unique_ptr<IImportArgumentParser> parser;
    EXPECT_EQ(questionsOf([&] { parser = createParser(tree, off); }),
              (Log{count(), count(), node(0), text(0), identifier(u"a"), count(), node(1),
                   otherText, identifier(u"c"), count()}));
    EXPECT_EQ(support::observe(parser->parse()), (std::vector{support::wildcard(0, u"a.*", u"a"),
                                                              support::wildcard(1, u"c.*", u"c")}));
}

TEST_F(SyntaxTreeQuestions, EndWithTheFactory) {
    tree.append(u"a.b");
    std::unique_ptr<IImportArgumentParser> const parser = createParser(tree, off);
    EXPECT_EQ(questionsOf([&] { parser->parse(); }), Log());
}

TEST_F(SyntaxTreeQuestions, ReachAnArgumentThatAppearsWhileAnotherIsRead) {
    tree.append(u"");
    recorder().whenAsked(Service::ArgumentText, 1, [this] { tree.append(u""); });
    EXPECT_EQ(questionsOf([&] { createParser(tree, on); }),
              (Log{count(), count(), node(0), text(0), count(), node(1), text(1), count()}));
}

TEST_F(SyntaxTreeQuestions, ReachAnArgumentThatAppearsAtTheLastMoment) {
    tree.append(u"");
    // The third count would otherwise end the loop.
    recorder().whenAsked(Service::NumberOfArguments, 3, [this] { tree.append(u""); });
    EXPECT_EQ(questionsOf([&] { createParser(tree, on); }),
              (Log{count(), count(), node(0), text(0), count(), node(1), text(1), count()}));
}

TEST_F(SyntaxTreeQuestions, EndWhereTheTreeEndsAtThatMoment) {
    for (int i = 0; i < 4; ++i) {
        tree.append(u"");
    }
    recorder().whenAsked(Service::ArgumentText, 2, [this] {
        tree.removeLast();
        tree.removeLast();
    });
    EXPECT_EQ(questionsOf([&] { createParser(tree, on); }),
              (Log{count(), count(), node(0), text(0), count(), node(1), text(1), count()}));
}

TEST_F(SyntaxTreeQuestions, EndWhereTheTreeHasShrunkBelowWhatWasRead) {
    tree.append(u"a.*");
    tree.append(u"b.*");
    recorder().whenAsked(Service::ArgumentText, 2, [this] {
        tree.removeLast();
        tree.removeLast();
    });
    std::unique_ptr<IImportArgumentParser> parser;
    EXPECT_EQ(questionsOf([&] { parser = createParser(tree, off); }),
              (Log{count(), count(), node(0), text(0), identifier(u"a"), count(), node(1), text(1),
                   identifier(u"b"), count()}));
    // Arguments that were read before are kept.
    EXPECT_EQ(support::observe(parser->parse()), (std::vector{support::wildcard(0, u"a.*", u"a"),
                                                              support::wildcard(1, u"b.*", u"b")}));
}

} // namespace
