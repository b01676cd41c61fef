// SPDX-License-Identifier: BSL-1.0

/// \file
/// Sizes that a code generator or an attacker may produce.

#include <model/parser_model.hpp>
#include <support/make_entries.hpp>
#include <support/observed_entries.hpp>
#include <support/outcomes.hpp>

#include <import/import.hpp>

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace lf::import {
namespace {

using support::makeName;
using support::makePackage;
using support::makeWildcard;
using enum IImportList::CheckAncestorList;

constexpr auto on = Behavior::WithPackageImports;
constexpr auto off = Behavior::WithoutPackageImports;

using Arguments = std::vector<std::u16string>;

class ANameOfTenMegabytes : public testing::Test {
  protected:
    // Starts in ASCII and continues outside of it.
    std::u16string const name = std::u16string(4'999'999, u'n') + u'\u00FC';
};

TEST_F(ANameOfTenMegabytes, IsParsedAsAnyOther) {
    // EXPECT_EQ would print the texts.
    EXPECT_TRUE(support::parseTexts({name}, on) == std::vector{support::package(0, name, name)});
    EXPECT_TRUE(support::parseTexts({u"p", u"as", name}, on) ==
                std::vector{support::package(2, u"p", name)});
    EXPECT_TRUE(support::parseTexts({name + u"@1.2"}, on) ==
                std::vector{support::package(0, name + u"@1.2", name)});
    EXPECT_TRUE(support::parseTree({u"a." + name}, on) ==
                std::vector{support::fullyQualified(0, u"a." + name, u"a", name)});
    EXPECT_TRUE(support::parseTree({name + u".*"}, off) ==
                std::vector{support::wildcard(0, name + u".*", name)});
}

TEST_F(ANameOfTenMegabytes, IsRejectedAsAnyOther) {
    std::u16string const bad = name + u' ';
    EXPECT_TRUE(support::parseTexts({bad}, on) ==
                std::vector{support::error(0, "InvalidImportArgument", {bad})});
    EXPECT_TRUE(support::parseTexts({bad}, off) ==
                std::vector{support::error(0, "ImportArgumentWithoutDot")});
    EXPECT_TRUE(support::parseTexts({u"p@" + name}, on) ==
                std::vector{support::error(0, "InvalidImportArgument", {u"p@" + name})});
}

TEST_F(ANameOfTenMegabytes, IsStoredFoundAndPrinted) {
    auto const list = createImportList(nullptr);
    ASSERT_FALSE(list->addStaticImportEntry(makePackage(u"p", name)));
    ASSERT_TRUE(list->addStaticImportEntry(makeName(u"a." + name)).has_value());
    auto const found = list->findPackageImportEntry(name, No);
    ASSERT_TRUE(found.has_value());
    std::ostringstream stream;
    stream << found->entry;
    EXPECT_EQ(stream.str().size(), std::string("p as ").size() + name.size() + 1);
}

TEST(ADottedNameOfAMillionSegments, IsParsedAsAnyOther) {
    std::u16string prefix;
    for (int segment = 0; segment < 1'000'000; ++segment) {
        prefix += u"a.";
    }
    EXPECT_TRUE(support::parseTexts({prefix + u"z"}, on) ==
                std::vector{support::fullyQualified(0, prefix + u"z", u"a", u"z")});
    EXPECT_TRUE(support::parseTexts({prefix + u"*"}, off) ==
                std::vector{support::wildcard(0, prefix + u"*", u"a")});
}

class ACommandOfAMillionArguments : public testing::Test {
  protected:
    static constexpr std::size_t size = 1'000'000;
};

TEST_F(ACommandOfAMillionArguments, GivesAMillionEntries) {
    auto const parser = createImportArgumentParser(Arguments(size, u"a.b"), off);
    EXPECT_EQ(parser->parse().size(), size);
}

TEST_F(ACommandOfAMillionArguments, GivesAMillionEntriesFromATree) {
    EXPECT_EQ(support::parseTree(Arguments(size, u"a.*"), on).size(), size);
}

TEST_F(ACommandOfAMillionArguments, GivesNothingWhenAllAreIgnored) {
    EXPECT_EQ(support::parseTexts(Arguments(size, u""), on).size(), 0U);
}

TEST_F(ACommandOfAMillionArguments, SkipsTheIgnoredOnes) {
    Arguments command(size, u"");
    command[size / 2] = u"p";
    command[size / 2 + 1] = u"as";
    command.back() = u"q";
    EXPECT_EQ(support::parseTexts(command, on),
              std::vector{support::package(size - 1, u"p", u"q")});
}

TEST_F(ACommandOfAMillionArguments, GivesOneErrorWhenTheLastIsWrong) {
    Arguments command(size, u"p");
    command.back() = u"as";
    EXPECT_EQ(support::parseTexts(command, on),
              std::vector{support::error(size - 1, "IncorrectNumberOfPackagesForAlias")});
}

std::u16string numbered(std::u16string const& text, int number) {
    std::string const digits = std::to_string(number);
    return text + std::u16string(digits.begin(), digits.end());
}

TEST(AListOfAMillionEntries, AnswersEveryQuestion) {
    constexpr int numberOfEachKind = 333'334;
    std::shared_ptr<IImportList> const list = createImportList(nullptr);
    for (int number = 0; number < numberOfEachKind; ++number) {
        ASSERT_FALSE(list->addStaticImportEntry(makePackage(numbered(u"p", number))));
        ASSERT_FALSE(list->addStaticImportEntry(makeName(numbered(u"root.n", number))));
        ASSERT_FALSE(list->addStaticImportEntry(makeWildcard(numbered(u"root.w", number) + u".*")));
    }
    auto const child = createImportList(list);
    EXPECT_EQ(child->getNumberOfEntries(Yes), 1'000'002U);
    EXPECT_EQ(ranges::distance(child->getPackageImportEntries(Yes)), numberOfEachKind);
    EXPECT_EQ(ranges::distance(child->getFullyQualifiedImportEntries(Yes)), numberOfEachKind);
    EXPECT_EQ(ranges::distance(list->getWildcardImportEntries(No)), numberOfEachKind);
    EXPECT_TRUE(child->findPackageImportEntry(u"p333333", Yes));
    EXPECT_EQ(list->findFullyQualifiedImportEntry(u"n333333", No)->rawArgument, u"root.n333333");
    EXPECT_TRUE(list->addStaticImportEntry(makePackage(u"p0")).has_value()) << "declared already";
    EXPECT_EQ(list->clone()->getNumberOfEntries(No), 1'000'002U);
}

// Generated code can be nested this deeply, so nothing may recurse.
class AChainOfAHundredThousandLists : public testing::Test {
  protected:
    static constexpr int depth = 100'000;
};

TEST_F(AChainOfAHundredThousandLists, AnswersEveryQuestionAndIsDestroyed) {
    std::shared_ptr<IImportList> innermost = createImportList(nullptr);
    ASSERT_FALSE(innermost->addStaticImportEntry(makePackage(u"outermost")));
    for (int level = 1; level < depth; ++level) {
        innermost = createImportList(innermost);
        ASSERT_FALSE(innermost->addStaticImportEntry(makePackage(u"p")));
    }
    EXPECT_TRUE(innermost->findPackageImportEntry(u"outermost", Yes));
    EXPECT_FALSE(innermost->findPackageImportEntry(u"missing", Yes));
    EXPECT_FALSE(innermost->findFullyQualifiedImportEntry(u"missing", Yes));
    EXPECT_EQ(innermost->getNumberOfEntries(Yes), 100'000U);
    EXPECT_FALSE(innermost->isEmpty(Yes));
    EXPECT_EQ(ranges::distance(innermost->getPackageImportEntries(Yes)), 2) << "`p` hides the rest";
    EXPECT_EQ(ranges::distance(innermost->getFullyQualifiedImportEntries(Yes)), 0);
    EXPECT_EQ(ranges::distance(innermost->getWildcardImportEntries(Yes)), 0);
    std::weak_ptr<IImportList const> const parent = innermost->getParent();
    innermost.reset();
    EXPECT_TRUE(parent.expired());
}

TEST_F(AChainOfAHundredThousandLists, IsEmptyWhenEveryListIs) {
    std::shared_ptr<IImportList> list = createImportList(nullptr);
    for (int level = 1; level < depth; ++level) {
        list = createImportList(list);
    }
    EXPECT_TRUE(list->isEmpty(Yes));
}

TEST(EveryUtf16Unit, MeansAsAnArgumentWhatTheRulesSay) {
    for (unsigned unit = 0; unit < 0x10000; ++unit) {
        Arguments const command{std::u16string(1, static_cast<char16_t>(unit))};
        for (auto const behavior : {on, off}) {
            auto const expected = model::parseCommand(command, behavior == on);
            ASSERT_EQ(support::parseTexts(command, behavior), expected) << unit;
            ASSERT_EQ(support::parseTree(command, behavior), expected) << unit;
        }
    }
}

} // namespace
} // namespace lf::import
