// SPDX-License-Identifier: BSL-1.0

/// \file
/// The library on a host that answers every question differently from the reference platform: the
/// library knows identifiers, reserved words, packages, messages and trees only from its host.

#include <second_platform/host.hpp>
#include <support/allocations.hpp>
#include <support/row_name.hpp>

#include <host_testing/contract.hpp>
#include <host_testing/describe.hpp>
#include <import/import.hpp>

#include <gtest/gtest.h>

#include <cstddef>
#include <exception>
#include <functional>
#include <iostream>
#include <memory>
#include <ostream>
#include <sstream>
#include <streambuf>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace lf::import {
namespace {

using host_testing::describe;
using Oxtavel::KeldarComponents::GetComponentVersionRangeFactory;
using Oxtavel::KeldarComponents::PackageSpecifier;
using second_platform::host;
using enum IImportList::CheckAncestorList;

using Arguments = std::vector<std::u16string>;
using InvalidSpecifier =
    foundation::core::except::Exception<kpm::arguments::InvalidPackageSpecifier, std::exception>;

constexpr auto on = Behavior::WithPackageImports;
constexpr auto off = Behavior::WithoutPackageImports;
constexpr auto follow = Behavior::FollowFeatureSwitch;

using Lines = std::vector<std::string>;

Lines parse(IImportArgumentParser& parser) {
    return describe(parser.parse());
}

std::unique_ptr<IImportArgumentParser> createParserOfTexts(Arguments const& command,
                                                           Behavior behavior) {
    return createImportArgumentParser(command, behavior);
}

std::unique_ptr<IImportArgumentParser> createParserOfATree(Arguments const& command,
                                                           Behavior behavior) {
    auto const tree = std::make_shared<astapi::CommandTree const>(command);
    return createImportArgumentParser(astapi::ImportCommandView{tree, {"root"}}, behavior);
}

struct CommandRow {
    Arguments command;
    Behavior behavior;
    Lines lines;
    std::string why;

    friend void PrintTo(CommandRow const& row, std::ostream* stream) { *stream << row.why; }
};

class SecondPlatform : public testing::TestWithParam<CommandRow> {};

TEST_P(SecondPlatform, SaysWhatACommandMeans) {
    CommandRow const& row = GetParam();
    EXPECT_EQ(parse(*createParserOfTexts(row.command, row.behavior)), row.lines);
    EXPECT_EQ(parse(*createParserOfATree(row.command, row.behavior)), row.lines);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(EveryRow, SecondPlatform, testing::ValuesIn(std::vector<CommandRow>{
    {{u"1.2.3"}, on, {"0: 1.2.3"}, "identifiers are numbers"},
    {{u"1.2.*"}, on, {"0: 1.2.*"}, "in wildcards, too"},
    {{u"a.b"}, on, {"0: error InvalidImportArgument(\"a.b\")"}, "letters are not identifiers"},
    {{u"for"}, on, {"0: error InvalidImportArgument(\"for\")"}, "a word that is reserved elsewhere is just invalid"},
    {{u"1.13"}, on, {"0: error KeywordInImportArgument(\"1.13\", \"13\")"}, "the unlucky number is reserved"},
    {{u"13.1"}, on, {"0: 13.1"}, "unless it comes first"},
    {{u"666"}, on, {"0: error KeywordInImportArgument(\"666\", \"666\")"}, "also as the name of a package"},
    {{u"12"}, on, {"0: 12"}, "packages are numbers"},
    {{u"007"}, on, {"0: 7"}, "the specifier provides the introduced name"},
    {{u"12@5..9"}, on, {"0: 12@5..9"}, "ranges have two numbers"},
    {{u"12@^1.2"}, on, {"0: error InvalidImportArgument(\"12@^1.2\")"}, "the ranges of other hosts are invalid"},
    {{u"pkg@5..9"}, on, {"0: error InvalidImportArgument(\"pkg@5..9\")"}, "and so are their names"},
    {{u"12@5..9", u"as", u"34"}, on, {"2: 12@5..9 as 34"}, "an alias is a number"},
    {{u"12", u"as", u"p"}, on, {"2: error InvalidImportArgument(\"p\")"}, "not a word"},
    {{u"12", u"as", u"5@01..2"}, on, {"2: error InvalidAliasName(\"5@1..2\")"}, "the host converts specifiers to text"},
    {{u"a.13"}, off, {"0: a.13", "0: warning KeywordInImportArgumentWarning(\"a.13\", \"13\")"}, "without package imports a reserved number is a warning"},
    {{u"a.*"}, off, {"0: a.*", "0: warning MalformedImportArgumentWarning(\"a.*\")"}, "and so is an invalid prefix"},
    {{u"12"}, off, {"0: error ImportArgumentWithoutDot()"}, "and a package is an error"},
    {{u"12"}, follow, {"0: error ImportArgumentWithoutDot()"}, "the feature starts off"},
}), support::RowName{});

// clang-format on

class OnASecondPlatform : public testing::Test {
  protected:
    void TearDown() override { host() = {}; }

    static PackageImportEntry package(std::u16string const& text, std::u16string const& alias) {
        return {PackageImportEntry(VersionedPackageImportArgument{
                    PackageSpecifier(text, GetComponentVersionRangeFactory())}),
                PackageNameImportArgument{alias}};
    }

    static FullyQualifiedImportEntry name() {
        return FullyQualifiedImportEntry(FullyQualifiedImportArgument{u"1", u"3", u"1.2.3", {}});
    }

    template <typename Char>
    static std::basic_string<Char> printed(auto const& entry) {
        std::basic_stringbuf<Char> buffer;
        std::basic_ostream<Char> stream(&buffer);
        stream << entry;
        return buffer.str();
    }
};

TEST_F(OnASecondPlatform, ThePlatformKeepsTheContract) {
    for (host_testing::CheckedPromise const& promise :
         host_testing::checkContract(u"12", u"12@5..9")) {
        EXPECT_TRUE(promise.isKept()) << promise;
    }
}

TEST_F(OnASecondPlatform, TheFeatureSwitchIsTheHosts) {
    host().packageImports = true;
    EXPECT_EQ(parse(*createParserOfTexts({u"12"}, follow)), Lines{"0: 12"});
}

TEST_F(OnASecondPlatform, ARefusedNameIsTheHostsException) {
    auto const parser = createParserOfTexts({u"1234567890"}, on);
    try {
        parser->parse();
        FAIL() << "nothing was thrown";
    } catch (InvalidSpecifier const& exception) {
        EXPECT_STREQ(exception.what(), "a number was wanted");
    }
}

TEST_F(OnASecondPlatform, AnEmptyHolderIsTheHostsException) {
    InvalidImportEntry entry(resource_core::BaseMsgID{{1.5}, "catalogue", "key"});
    InvalidImportEntry const taken = std::move(entry);
    EXPECT_TRUE(taken.holdsMsgWithKey("key"));
    try {
        entry.isWarning();
        FAIL() << "nothing was thrown";
    } catch (resource_core::GenericMsgIDHolder::EmptyGenericMsgIDHolder const& exception) {
        EXPECT_STREQ(exception.what(), "nothing held");
    }
}

TEST_F(OnASecondPlatform, ListsSpeakOfSpecifiersInTheHostsWords) {
    auto const list = createImportList(nullptr);
    EXPECT_FALSE(list->addStaticImportEntry(package(u"12@5..9", u"34")));
    EXPECT_FALSE(list->addStaticImportEntry(name()));
    auto const redeclared = list->addStaticImportEntry(package(u"007@1..2", u"34"));
    ASSERT_TRUE(redeclared.has_value());
    EXPECT_EQ(describe(*redeclared), "error PackageRedeclared(\"7@1..2\")");
    auto const violation = list->addDynamicImportEntry(package(u"8", u"3"));
    ASSERT_TRUE(violation.has_value());
    EXPECT_EQ(describe(*violation), "error PrecedenceViolation(\"8\", \"3\")");

    auto const child = createImportList(list->clone());
    auto const found = child->findPackageImportEntry(u"34", Yes);
    ASSERT_TRUE(found.has_value());
    EXPECT_EQ(describe(found->entry), "12@5..9 as 34");
    EXPECT_EQ(child->findFullyQualifiedImportEntry(u"3", Yes)->rawArgument, u"1.2.3");
}

TEST_F(OnASecondPlatform, EntriesArePrintedInTheHostsWords) {
    EXPECT_EQ(printed<char>(package(u"012@5..9", u"34")), "12@5..9 as 34");
    EXPECT_EQ(printed<char16_t>(package(u"012@5..9", u"34")), u"12@5..9 as 34");
    EXPECT_EQ(printed<char>(package(u"012", u"12")), "12") << "Name() is of the moment";
    EXPECT_EQ(printed<char>(package(u"12", u"\u00FC")), "12 as ?") << "narrow text is ASCII";
    EXPECT_EQ(printed<char16_t>(package(u"12", u"\u00FC")), u"12 as \u00FC");
}

// Exceptions

/// An exception without a base class.
struct Failure {};

/// An operation of the library for a host, and the list that it may use.
using Action = std::function<void(IImportList& list)>;

/// Operations that between them use every service.
std::vector<Action> actions() {
    Arguments const names{u"1.2.3", u"1.*", u"", u"1.13"};
    Arguments const packages{u"12", u"5@6..7"};
    Arguments const misplaced{u"12", u"as", u"5@6..7"};
    std::vector<Action> all;
    for (Arguments const& command : {names, packages, misplaced}) {
        for (auto const behavior : {on, off, follow}) {
            all.emplace_back(
                [=](IImportList&) { createParserOfTexts(command, behavior)->parse(); });
            all.emplace_back(
                [=](IImportList&) { createParserOfATree(command, behavior)->parse(); });
        }
    }
    return all;
}

class ExceptionsOfEveryService : public OnASecondPlatform {
  protected:
    void SetUp() override {
        ASSERT_FALSE(list->addStaticImportEntry(package(u"12@5..9", u"34")));
        ASSERT_FALSE(list->addStaticImportEntry(name()));
    }

    Lines observation() const {
        Lines lines{std::to_string(list->getNumberOfEntries(No))};
        for (PackageImportEntry const& entry : list->getPackageImportEntries(No)) {
            lines.push_back(describe(entry));
        }
        for (FullyQualifiedImportEntry const& entry : list->getFullyQualifiedImportEntries(No)) {
            lines.push_back(describe(entry));
        }
        return lines;
    }

    /// Makes the question with this number fail while \p action runs.
    ///
    /// \returns whether there was such a question.
    bool failsAt(std::size_t question, Action const& action) {
        std::exception_ptr const thrown = std::make_exception_ptr(Failure());
        std::size_t const live = support::countLiveAllocations();
        bool cameOut = false;
        host().failure = thrown;
        host().questionsUntilFailure = question;
        try {
            action(*list);
        } catch (...) {
            cameOut = true;
            EXPECT_EQ(std::current_exception(), thrown) << "another exception came out";
        }
        bool const wasAsked = !host().questionsUntilFailure;
        host().questionsUntilFailure.reset();
        EXPECT_EQ(support::countLiveAllocations(), live) << "nothing is left behind";
        EXPECT_EQ(cameOut, wasAsked);
        return wasAsked;
    }

    std::unique_ptr<IImportList> list = createImportList(nullptr);
};

TEST_F(ExceptionsOfEveryService, ComeOutUnchangedAndLeaveNothingBehind) {
    PackageImportEntry const redeclared = package(u"8@1..2", u"34");
    PackageImportEntry const misnamed = package(u"8@1..2", u"3");
    PackageImportEntry const rooted = package(u"8", u"1");
    FullyQualifiedImportEntry const fullyQualified = name();
    WildcardImportEntry const wildcard(WildcardImportArgument{u"34", u"34.*", {}});
    VersionedPackageImportArgument const argument{
        PackageSpecifier(u"12@5..9", GetComponentVersionRangeFactory())};

    std::vector<Action> all = actions();
    all.emplace_back([&](IImportList& target) { target.addStaticImportEntry(redeclared); });
    all.emplace_back([&](IImportList& target) { target.addDynamicImportEntry(misnamed); });
    all.emplace_back([&](IImportList& target) { target.addStaticImportEntry(rooted); });
    all.emplace_back([&](IImportList& target) { target.addStaticImportEntry(wildcard); });
    all.emplace_back([&](IImportList&) { printed<char>(redeclared); });
    all.emplace_back([&](IImportList&) { printed<char16_t>(redeclared); });
    all.emplace_back([&](IImportList&) { printed<char>(fullyQualified); });
    all.emplace_back([&](IImportList&) { printed<char>(wildcard); });
    all.emplace_back([&](IImportList&) {
        PackageImportEntry const entry{VersionedPackageImportArgument(argument)};
    });
    all.emplace_back(
        [&](IImportList&) { PackageImportEntry const entry(PackageNameImportArgument{u"12"}); });

    Lines const before = observation();
    std::size_t numberOfFailures = 0;
    for (std::size_t action = 0; action < all.size(); ++action) {
        for (std::size_t question = 0; failsAt(question, all[action]); ++question) {
            SCOPED_TRACE(testing::Message() << "action " << action << ", question " << question);
            EXPECT_EQ(observation(), before);
            ++numberOfFailures;
            ASSERT_FALSE(HasFailure());
        }
    }
    for (std::size_t const failures : host().failures) {
        EXPECT_GT(failures, 0U) << "every service failed";
    }
    std::cout << "Let " << second_platform::numberOfServices << " services fail at "
              << numberOfFailures << " questions of " << all.size() << " operations.\n";
}

} // namespace
} // namespace lf::import
