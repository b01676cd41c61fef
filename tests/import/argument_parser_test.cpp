// SPDX-License-Identifier: BSL-1.0

#include <import/argument_parser.hpp>

#include <support/observed_entries.hpp>
#include <support/outcomes.hpp>

#include <gtest/gtest.h>

#include <cstddef>
#include <limits>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

namespace lf::import {
namespace {

static_assert(static_cast<int>(Behavior::WithoutPackageImports) == 0);
static_assert(static_cast<int>(Behavior::WithPackageImports) == 1);
static_assert(static_cast<int>(Behavior::FollowFeatureSwitch) == 2);

static_assert(std::is_same_v<ImportArgumentIndex, std::uint64_t>);
static_assert(std::is_same_v<ParsedImportEntry,
                             std::variant<std::pair<FullyQualifiedImportEntry, std::uint64_t>,
                                          std::pair<WildcardImportEntry, std::uint64_t>,
                                          std::pair<PackageImportEntry, std::uint64_t>,
                                          std::pair<InvalidImportEntry, std::uint64_t>>>);
static_assert(std::is_nothrow_move_constructible_v<ParsedImportEntry>);
static_assert(std::is_nothrow_move_assignable_v<ParsedImportEntry>);

static_assert(std::has_virtual_destructor_v<IImportArgumentParser>);
static_assert(std::is_abstract_v<IImportArgumentParser>);

// Hosts can implement the interface.
class OtherParser final : public IImportArgumentParser {
  public:
    std::vector<ParsedImportEntry>& parse() override { return entries; }

  private:
    std::vector<ParsedImportEntry> entries;
};

static_assert(std::is_default_constructible_v<OtherParser>);
static_assert(std::is_copy_constructible_v<OtherParser>);
static_assert(std::is_copy_assignable_v<OtherParser>);

class FollowFeatureSwitch : public testing::Test {
  protected:
    void TearDown() override { lf::features::setPackageImportsFeature(true); }

    std::vector<std::u16string> command{u"mypkg"};
};

TEST_F(FollowFeatureSwitch, AcceptsPackagesWhileTheFeatureIsOn) {
    lf::features::setPackageImportsFeature(true);
    EXPECT_EQ(support::parseTexts(command, Behavior::FollowFeatureSwitch),
              std::vector{support::package(0, u"mypkg", u"mypkg")});
}

TEST_F(FollowFeatureSwitch, RejectsPackagesWhileTheFeatureIsOff) {
    lf::features::setPackageImportsFeature(false);
    EXPECT_EQ(support::parseTexts(command, Behavior::FollowFeatureSwitch),
              std::vector{support::error(0, "ImportArgumentWithoutDot")});
}

TEST_F(FollowFeatureSwitch, IsSettledWhenTheParserIsCreated) {
    auto const parser = createImportArgumentParser(command, Behavior::FollowFeatureSwitch);
    lf::features::setPackageImportsFeature(false);
    EXPECT_EQ(support::observe(parser->parse()),
              std::vector{support::package(0, u"mypkg", u"mypkg")});
}

TEST_F(FollowFeatureSwitch, IsNotAskedWhenTheBehaviorIsGiven) {
    lf::features::setPackageImportsFeature(false);
    EXPECT_EQ(support::parseTexts(command, Behavior::WithPackageImports),
              std::vector{support::package(0, u"mypkg", u"mypkg")});
    lf::features::setPackageImportsFeature(true);
    EXPECT_EQ(support::parseTexts(command, Behavior::WithoutPackageImports),
              std::vector{support::error(0, "ImportArgumentWithoutDot")});
}

TEST(Parser, DoesNotKeepTheTexts) {
    auto texts = std::make_unique<std::vector<std::u16string>>(1, u"averylongroot.averylongname");
    auto const parser = createImportArgumentParser(*texts, Behavior::WithPackageImports);
    texts.reset();
    EXPECT_EQ(support::observe(parser->parse()),
              std::vector{support::fullyQualified(0, u"averylongroot.averylongname",
                                                  u"averylongroot", u"averylongname")});
}

/// A tree that first reports more arguments than fit into memory.
class PromisingTree final : public lf::astapi::ISyntaxTree {
  public:
    std::size_t getNumberOfArguments(lf::astapi::NodeHandle /*command*/) const override {
        return std::exchange(promised, 2);
    }

    lf::astapi::ArgumentNode getArgument(lf::astapi::NodeHandle /*command*/,
                                         std::size_t index) const override {
        return {this, index};
    }

    std::u16string getText(lf::astapi::NodeHandle argument) const override {
        return argument == 0 ? u"a.b" : u"c.d";
    }

  private:
    mutable std::size_t promised = std::numeric_limits<std::size_t>::max();
};

TEST(Parser, DoesNotTrustATreeWithAnyAmountOfMemory) {
    PromisingTree const tree;
    auto const parser = createImportArgumentParser(lf::astapi::ImportCommandView{&tree, 0},
                                                   Behavior::WithPackageImports);
    EXPECT_EQ(parser->parse().size(), 2U);
}

TEST(Parser, LetsEntriesBeMovedOutOfItsResult) {
    std::vector<std::u16string> const command{u"a.b.averylongname"};
    auto const parser = createImportArgumentParser(command, Behavior::WithPackageImports);
    auto& result = std::get<std::pair<FullyQualifiedImportEntry, ImportArgumentIndex>>(
        parser->parse().front());
    FullyQualifiedImportEntry const taken = std::move(result.first);
    EXPECT_EQ(taken.getIntroducedName(), u"averylongname");
    EXPECT_EQ(result.first.getIntroducedName(), u"");
}

#if !defined(NDEBUG)

TEST(ParserDeathTest, RefusesACommandThatHasNoTree) {
    EXPECT_DEATH(
        createImportArgumentParser(lf::astapi::ImportCommandView{}, Behavior::WithPackageImports),
        "has a tree");
}

TEST(ParserDeathTest, RefusesToParseTwice) {
    std::vector<std::u16string> const command{u"a.b"};
    auto const parser = createImportArgumentParser(command, Behavior::WithPackageImports);
    parser->parse();
    EXPECT_DEATH(parser->parse(), "parses once");
}

#endif

} // namespace
} // namespace lf::import
