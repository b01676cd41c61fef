// SPDX-License-Identifier: BSL-1.0
#include <host/scope.hpp>

#include <support/make_entries.hpp>
#include <support/wrapped_import_list.hpp>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>
#include <set>
#include <string>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

namespace lf::import::host {
namespace {

using support::makeName;
using support::makePackage;
using support::makeWildcard;
using testing::ElementsAre;
using testing::IsEmpty;

/// A move-only place.
using Line = std::unique_ptr<int>;
using LineScope = Scope<Line>;
using NumberScope = Scope<int>;

static_assert(!std::is_copy_constructible_v<NumberScope>);
static_assert(!std::is_move_constructible_v<NumberScope>);
static_assert(std::is_nothrow_move_constructible_v<NumberScope::Addition>);
static_assert(std::is_nothrow_move_constructible_v<NumberScope::Resolution>);
static_assert(std::is_copy_constructible_v<UseRecord<int>>);

/// Stores \p entry, which must be new and without conflict.
template <typename Place, typename Entry>
Import<Place> const* store(Scope<Place>& scope, Entry entry, Place place) {
    auto const result = scope.addStatic(std::move(entry), std::move(place));
    return std::get<Stored<Place>>(result).imported;
}

/// The entry, its place and its distance: `circle at 5, 2 out`.
std::string describe(ScopedImport<int> const& scoped) {
    return toUtf8(scoped.imported->entry) + " at " + std::to_string(scoped.imported->place) + ", " +
           std::to_string(scoped.distance) + " out";
}

std::vector<std::string> describe(std::vector<ScopedImport<int>> const& imports) {
    std::vector<std::string> texts(imports.size());
    std::ranges::transform(imports, texts.begin(),
                           [](ScopedImport<int> const& scoped) { return describe(scoped); });
    return texts;
}

// Adding.

TEST(AnAddition, KeepsEntryPlaceAndManner) {
    LineScope scope;
    auto const first = scope.addStatic(makeName(u"a.b"), std::make_unique<int>(3));
    auto const second = scope.addDynamic(makePackage(u"p"), std::make_unique<int>(4));
    Import<Line> const& name = *std::get<LineScope::Stored>(first).imported;
    Import<Line> const& package = *std::get<LineScope::Stored>(second).imported;
    EXPECT_EQ(toUtf8(name.entry), "a.b");
    EXPECT_EQ(*name.place, 3);
    EXPECT_FALSE(name.isDynamic);
    EXPECT_EQ(package.kind(), ImportKind::Package);
    EXPECT_EQ(*package.place, 4);
    EXPECT_TRUE(package.isDynamic);
}

TEST(ARepeatedImport, NamesTheEarlierOne) {
    NumberScope scope;
    auto const* const name = store(scope, makeName(u"a.b"), 1);
    auto const* const wildcard = store(scope, makeWildcard(u"a.*"), 2);
    auto const again = scope.addStatic(makeName(u"a.b"), 3);
    EXPECT_EQ(std::get<NumberScope::Repeated>(again).earlier, name);
    auto const wildcardAgain = scope.addDynamic(makeWildcard(u"a.*"), 4);
    EXPECT_EQ(std::get<NumberScope::Repeated>(wildcardAgain).earlier, wildcard);
    EXPECT_EQ(scope.imports().size(), 2U);
}

TEST(ARefusedImport, IsNotConsumed) {
    NumberScope scope;
    store(scope, makePackage(u"p"), 1);
    ImportEntry entry = makePackage(u"p@2");
    auto const result = scope.addStatic(std::move(entry), 2);
    EXPECT_TRUE(std::holds_alternative<NumberScope::Refused>(result));
    EXPECT_EQ(toUtf8(entry), "p@2");
}

TEST(AValuelessEntry, IsRefusedAsByALists) {
    struct Throws {
        explicit operator FullyQualifiedImportEntry() const { throw 1; }
    };

    ImportEntry entry = makeName(u"a.b");
    EXPECT_ANY_THROW(entry.emplace<FullyQualifiedImportEntry>(Throws()));
    ASSERT_TRUE(entry.valueless_by_exception());
    NumberScope scope;
    EXPECT_THROW((void)scope.addStatic(std::move(entry), 1), std::bad_variant_access);
    EXPECT_THAT(scope.imports(), IsEmpty());
}

/// Entries with every kind of conflict between them, and some without any.
std::vector<ImportEntry> entriesOfTheMatrix() {
    return {makePackage(u"p"),       makePackage(u"p@1"),    makePackage(u"q", u"p"),
            makePackage(u"p", u"q"), makePackage(u"p.q@1"),  makeName(u"p.q"),
            makeName(u"q.p"),        makeName(u"p.p"),       makeName(u"x.y"),
            makeWildcard(u"p.*"),    makeWildcard(u"p.q.*"), makeWildcard(u"q.*"),
            makeWildcard(u"x.*"),    makeName(u"x.p.q"),     makeWildcard(u"x.p.*")};
}

TEST(TheConflictMatrix, NamesTheOtherPartyOfEveryRefusal) {
    std::set<std::string> refusals;
    for (ImportEntry const& earlier : entriesOfTheMatrix()) {
        for (ImportEntry const& later : entriesOfTheMatrix()) {
            for (bool const isDynamic : {false, true}) {
                for (std::size_t const distance : {0U, 1U, 2U}) {
                    auto scope = std::make_shared<NumberScope>();
                    auto const* const first = store(*scope, earlier, 7);
                    for (std::size_t count = distance; count > 0; --count) {
                        scope = std::make_shared<NumberScope>(std::move(scope));
                    }
                    auto const result = isDynamic ? scope->addDynamic(ImportEntry(later), 8)
                                                  : scope->addStatic(ImportEntry(later), 8);
                    if (auto const* const refused = std::get_if<NumberScope::Refused>(&result)) {
                        refusals.insert(refused->message.getMsgID().key);
                        EXPECT_EQ(refused->conflict, (ScopedImport<int>{first, distance}))
                            << toUtf8(later) << " against " << toUtf8(earlier);
                    }
                }
            }
        }
    }
    // Every key must occur.
    EXPECT_THAT(refusals, ElementsAre("InvalidPackageFunctionAbbreviation", "PackageRedeclared",
                                      "PrecedenceViolation"));
}

TEST(AConflict, IsTheFirstOfSeveral) {
    NumberScope scope;
    store(scope, makeName(u"x.a"), 1);
    store(scope, makeName(u"y.a"), 2);
    auto const byName = scope.addStatic(makePackage(u"a"), 3);
    EXPECT_EQ(describe(std::get<NumberScope::Refused>(byName).conflict.value()), "x.a at 1, 0 out");
    store(scope, makeWildcard(u"x.*"), 4);
    auto const byRoot = scope.addStatic(makePackage(u"x"), 5);
    EXPECT_EQ(describe(std::get<NumberScope::Refused>(byRoot).conflict.value()), "x.a at 1, 0 out");
}

/// Refuses every addition with its own message.
class RefusingImportList final : public support::WrappedImportList {
  public:
    RefusingImportList() : WrappedImportList(createImportList(nullptr)) {}

    std::optional<resource_core::GenericMsgIDHolder>
    addStaticImportEntry(ImportEntry&& /*entry*/) override {
        return resource_core::GenericMsgIDHolder({{}, "another", "NotToday"});
    }

    std::unique_ptr<IImportList> clone() const override {
        return std::make_unique<RefusingImportList>();
    }
};

TEST(ARefusalOfAnotherMake, NamesNoOtherParty) {
    NumberScope scope(nullptr, std::make_unique<RefusingImportList>());
    auto const result = scope.addStatic(makeName(u"a.b"), 1);
    EXPECT_EQ(std::get<NumberScope::Refused>(result).message.getMsgID().key, "NotToday");
    EXPECT_EQ(std::get<NumberScope::Refused>(result).conflict, std::nullopt);
}

// Resolving.

class NestedScopes : public testing::Test {
  protected:
    std::shared_ptr<NumberScope> outer = std::make_shared<NumberScope>();
    std::shared_ptr<NumberScope> middle = std::make_shared<NumberScope>(outer);
    std::shared_ptr<NumberScope> inner = std::make_shared<NumberScope>(middle);
};

TEST_F(NestedScopes, FindWhatIntroducesANameTheNearestFirst) {
    store(*outer, makePackage(u"n"), 1);
    store(*middle, makeName(u"a.n"), 2);
    EXPECT_THAT(describe(inner->find(u"n")), ElementsAre("a.n at 2, 1 out", "n at 1, 2 out"))
        << "a name hides a package only in its own scope";
    EXPECT_THAT(describe(middle->find(u"n")), ElementsAre("a.n at 2, 0 out"));
    EXPECT_THAT(describe(outer->find(u"n")), ElementsAre("n at 1, 0 out"));
    EXPECT_THAT(inner->find(u"N"), IsEmpty());
}

TEST_F(NestedScopes, OfferWildcardsForANameThatNothingIntroduces) {
    store(*outer, makeWildcard(u"a.*"), 1);
    store(*inner, makeWildcard(u"b.*"), 2);
    store(*inner, makeName(u"c.known"), 3);
    NumberScope::Resolution const unknown = inner->resolve(u"unknown");
    EXPECT_THAT(unknown.imports, IsEmpty());
    EXPECT_THAT(describe(unknown.wildcards), ElementsAre("b.* at 2, 0 out", "a.* at 1, 2 out"));
    NumberScope::Resolution const known = inner->resolve(u"known");
    EXPECT_THAT(describe(known.imports), ElementsAre("c.known at 3, 0 out"));
    EXPECT_THAT(known.wildcards, IsEmpty());
}

struct DottedRow {
    std::string_view usedName;
    std::string imported;
    std::size_t numberOfSegments;
    char const* why;
};

TEST_F(NestedScopes, ResolveTheLongestPrefixOfADottedUse) {
    store(*outer, makePackage(u"net.http@1"), 1);
    store(*middle, makePackage(u"net"), 2);
    store(*inner, makeName(u"shapes.circle"), 3);
    std::array const rows{
        DottedRow{"net.http.get", "net.http@1 at 1, 2 out", 2,
                  "the longest prefix, although it is farther out"},
        DottedRow{"net.http", "net.http@1 at 1, 2 out", 2, "the whole name"},
        DottedRow{"net.httpd.get", "net at 2, 1 out", 1, "only whole segments match"},
        DottedRow{"net", "net at 2, 1 out", 1, "a name without dots has no prefix"},
        DottedRow{"circle.radius", "shapes.circle at 3, 0 out", 1, "a member of an imported name"},
    };
    for (auto const& [usedName, imported, numberOfSegments, why] : rows) {
        NumberScope::Resolution const resolution = inner->resolve(usedName);
        EXPECT_THAT(describe(resolution.imports), ElementsAre(imported)) << why;
        EXPECT_EQ(resolution.numberOfSegments, numberOfSegments) << why;
    }
    NumberScope::Resolution const itself = inner->resolve(u"shapes.circle.radius");
    EXPECT_THAT(itself.imports, IsEmpty()) << "a dotted name that nothing introduces";
    EXPECT_EQ(itself.numberOfSegments, 1U);
}

TEST_F(NestedScopes, ResolveADottedNameWithoutEndInReasonableTime) {
    store(*outer, makePackage(u"net.http@1"), 1);
    std::u16string name = u"net.http";
    for (int count = 0; count < 200'000; ++count) {
        name += u".a";
    }
    EXPECT_EQ(inner->resolve(name).numberOfSegments, 2U);
}

TEST_F(NestedScopes, ResolvePrefixesOfUpToANumberOfSegments) {
    std::u16string name = u"a";
    for (std::size_t count = 1; count < mostSegmentsOfPrefix; ++count) {
        name += u".a";
    }
    store(*outer, makePackage(name), 1);
    EXPECT_EQ(inner->resolve(name + u".x.y").numberOfSegments, mostSegmentsOfPrefix);
    store(*middle, makePackage(name + u".x"), 2);
    EXPECT_EQ(inner->resolve(name + u".x.y").numberOfSegments, mostSegmentsOfPrefix)
        << "longer prefixes are not looked up";
    EXPECT_EQ(inner->resolve(name + u".x").numberOfSegments, mostSegmentsOfPrefix + 1)
        << "except for the whole name";
}

TEST_F(NestedScopes, ResolveToAsManyWildcardsAsAreWanted) {
    store(*outer, makeWildcard(u"a.*"), 1);
    store(*inner, makeWildcard(u"b.*"), 2);
    store(*inner, makeWildcard(u"c.*"), 3);
    EXPECT_THAT(describe(inner->resolve(u"x", 2).wildcards),
                ElementsAre("b.* at 2, 0 out", "c.* at 3, 0 out"));
    EXPECT_THAT(describe(inner->resolve("x", 3).wildcards).back(), "a.* at 1, 2 out");
    EXPECT_THAT(inner->resolve("x", 0).wildcards, IsEmpty());
}

// What is visible, hidden and unreached.

TEST_F(NestedScopes, ShowWhatIsVisibleOutward) {
    store(*outer, makePackage(u"p"), 1);
    store(*outer, makeName(u"a.b"), 2);
    store(*inner, makeName(u"c.b"), 3);
    store(*inner, makeName(u"c.p"), 4);
    EXPECT_THAT(describe(inner->visible(ImportKind::FullyQualified)),
                ElementsAre("c.b at 3, 0 out", "c.p at 4, 0 out", "a.b at 2, 2 out"));
    EXPECT_THAT(inner->visible(ImportKind::Package), IsEmpty());
    EXPECT_THAT(describe(middle->visible(ImportKind::Package)), ElementsAre("p at 1, 1 out"));
}

TEST_F(NestedScopes, SayWhatHidesWhat) {
    store(*outer, makePackage(u"p"), 1);
    store(*outer, makeName(u"a.b"), 2);
    store(*outer, makeName(u"a.c"), 3);
    store(*outer, makeWildcard(u"a.*"), 4);
    EXPECT_THAT(middle->hidden(), IsEmpty());
    store(*inner, makeName(u"x.p"), 5);
    store(*inner, makePackage(u"q", u"b"), 6);
    store(*inner, makeName(u"a.c"), 7);
    store(*inner, makeWildcard(u"a.*"), 8);
    std::vector<std::string> texts;
    for (HiddenImport<int> const& each : inner->hidden()) {
        texts.push_back(describe(each.hidden) + " by " + std::to_string(each.by->place));
    }
    EXPECT_THAT(texts, ElementsAre("p at 1, 2 out by 5", "a.b at 2, 2 out by 6",
                                   "a.c at 3, 2 out by 7", "a.* at 4, 2 out by 8"));
    EXPECT_THAT(outer->hidden(), IsEmpty()) << "an outermost scope hides nothing";
}

TEST_F(NestedScopes, KnowWhatNoUseHasReached) {
    store(*outer, makePackage(u"net.http@1"), 1);
    store(*outer, makeName(u"a.used"), 2);
    store(*outer, makeName(u"a.unused"), 3);
    store(*inner, makeWildcard(u"b.*"), 4);
    UseRecord<int> uses;
    auto const placesOfUnreached = [&](NumberScope const& scope) {
        std::vector<int> places;
        for (Import<int> const* const imported : uses.unreached(scope)) {
            places.push_back(imported->place);
        }
        return places;
    };
    EXPECT_THAT(placesOfUnreached(*outer), ElementsAre(1, 2, 3));
    uses.add(inner->resolve(u"used"));
    uses.add(inner->resolve(u"net.http.get"));
    EXPECT_THAT(placesOfUnreached(*outer), ElementsAre(3));
    EXPECT_THAT(placesOfUnreached(*inner), ElementsAre(4));
    uses.add(inner->resolve(u"whatever"));
    EXPECT_THAT(placesOfUnreached(*inner), IsEmpty()) << "a wildcard may supply an unknown name";
    EXPECT_TRUE(uses.reaches(inner->imports().front()));
}

TEST(AnImport, StaysWhereItIsWhileMoreAreAdded) {
    NumberScope scope;
    auto const* const first = store(scope, makeName(u"a.b"), 0);
    for (int count = 1; count < 1'000; ++count) {
        store(scope, makeName(u"a.n" + std::u16string(static_cast<std::size_t>(count), u'n')),
              count);
    }
    EXPECT_EQ(&scope.imports().front(), first);
    EXPECT_EQ(toUtf8(first->entry), "a.b");
}

TEST(ImportsAddedAgain, GiveAnEqualList) {
    NumberScope scope;
    store(scope, makeName(u"x.y"), 1);
    EXPECT_TRUE(
        std::holds_alternative<NumberScope::Stored>(scope.addDynamic(makePackage(u"x"), 2)));
    store(scope, makeName(u"z.y"), 3);
    NumberScope again;
    for (Import<int> const& imported : scope.imports()) {
        auto const result = imported.isDynamic ? again.addDynamic(ImportEntry(imported.entry), 0)
                                               : again.addStatic(ImportEntry(imported.entry), 0);
        EXPECT_TRUE(std::holds_alternative<NumberScope::Stored>(result));
    }
}

TEST(DeeplyNestedScopes, AreReadAndDestroyedWithoutRecursion) {
    auto scope = std::make_shared<NumberScope>();
    store(*scope, makeName(u"a.b"), 1);
    for (int depth = 0; depth < 100'000; ++depth) {
        scope = std::make_shared<NumberScope>(std::move(scope));
    }
    EXPECT_THAT(describe(scope->resolve(u"b.c").imports), ElementsAre("a.b at 1, 100000 out"));
    EXPECT_EQ(scope->visible(ImportKind::FullyQualified).size(), 1U);
    EXPECT_THAT(scope->hidden(), IsEmpty());
}

} // namespace
} // namespace lf::import::host
