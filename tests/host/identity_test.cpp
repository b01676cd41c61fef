// SPDX-License-Identifier: BSL-1.0
#include <host/identity.hpp>

#include <support/make_entries.hpp>
#include <support/random_check.hpp>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

namespace lf::import::host {
namespace {

using support::makeName;
using support::makePackage;
using support::makeWildcard;
using enum IImportList::CheckAncestorList;

/// Entries that differ from each other only in one text or in their kind.
std::vector<ImportEntry> differentEntries() {
    using Name = FullyQualifiedImportArgument;
    using Wildcard = WildcardImportArgument;
    return {makePackage(u"a"),
            makePackage(u"a", u"b"),
            makePackage(u"a@1"),
            makePackage(u"a@1", u"b"),
            makePackage(u"ab"),
            FullyQualifiedImportEntry(Name{u"a", u"b", u"a.b", {}}),
            FullyQualifiedImportEntry(Name{u"b", u"b", u"a.b", {}}),
            FullyQualifiedImportEntry(Name{u"a", u"a", u"a.b", {}}),
            FullyQualifiedImportEntry(Name{u"a", u"b", u"a.b.b", {}}),
            FullyQualifiedImportEntry(Name{u"", u"ab", u"a.b", {}}),
            FullyQualifiedImportEntry(Name{}),
            WildcardImportEntry(Wildcard{u"a", u"a.*", {}}),
            WildcardImportEntry(Wildcard{u"b", u"a.*", {}}),
            WildcardImportEntry(Wildcard{u"a", u"a.b.*", {}}),
            WildcardImportEntry(Wildcard{})};
}

TEST(IsSameImport, LooksAtEveryTextAndAtTheKind) {
    std::vector<ImportEntry> const entries = differentEntries();
    std::vector<ImportEntry> const again = differentEntries();
    for (std::size_t left = 0; left < entries.size(); ++left) {
        for (std::size_t right = 0; right < again.size(); ++right) {
            EXPECT_EQ(isSameImport(entries[left], again[right]), left == right)
                << left << " and " << right;
        }
    }
}

TEST(FingerprintOf, TellsDifferentEntriesApart) {
    std::vector<ImportEntry> const entries = differentEntries();
    for (std::size_t left = 0; left < entries.size(); ++left) {
        EXPECT_EQ(fingerprintOf(entries[left]), fingerprintOf(differentEntries()[left]));
        for (std::size_t right = 0; right < left; ++right) {
            EXPECT_NE(fingerprintOf(entries[left]), fingerprintOf(entries[right]))
                << left << " and " << right;
        }
    }
}

TEST(FingerprintOf, IsTheSameInEveryRun) {
    // Caches on disk contain fingerprints: a different value here changes their format.
    EXPECT_EQ(fingerprintOf(makeName(u"a.b.c")), 10019780290700107867U);
    EXPECT_EQ(fingerprintOf(makePackage(u"matrix@^2.1", u"m")), 3638776690878567855U);
}

TEST(ImportEntryHash, ServesHashedContainers) {
    std::unordered_set<ImportEntry, ImportEntryHash, ImportEntryEqual> entries;
    for (ImportEntry const& entry : differentEntries()) {
        EXPECT_TRUE(entries.insert(entry).second);
        EXPECT_FALSE(entries.insert(entry).second);
    }
}

std::unique_ptr<IImportList> makeList(std::vector<ImportEntry> entries,
                                      std::shared_ptr<IImportList const> parent = nullptr) {
    auto list = createImportList(std::move(parent));
    for (ImportEntry& entry : entries) {
        (void)list->addDynamicImportEntry(std::move(entry));
    }
    return list;
}

Fingerprint ownFingerprint(std::vector<ImportEntry> entries) {
    return fingerprintOf(*makeList(std::move(entries)), No);
}

TEST(FingerprintOf, OfAListSeesEveryEntry) {
    EXPECT_EQ(ownFingerprint({}), ownFingerprint({}));
    EXPECT_NE(ownFingerprint({}), ownFingerprint({makeWildcard(u"a.*")}));
    EXPECT_NE(ownFingerprint({makeName(u"a.b")}), ownFingerprint({makeName(u"a.c")}));
    EXPECT_NE(ownFingerprint({makeName(u"a.b")}),
              ownFingerprint({makeName(u"a.b"), makePackage(u"p")}));
}

TEST(FingerprintOf, OfAListSeesNoOrderButWhereItDecidesALookup) {
    EXPECT_EQ(ownFingerprint({makeName(u"a.b"), makeName(u"a.c"), makePackage(u"p")}),
              ownFingerprint({makePackage(u"p"), makeName(u"a.c"), makeName(u"a.b")}));
    EXPECT_NE(ownFingerprint({makeName(u"a.b"), makeName(u"c.b")}),
              ownFingerprint({makeName(u"c.b"), makeName(u"a.b")}))
        << "lookups find the first one";
}

TEST(FingerprintOf, OfAListReachesTheAncestorsWhenAsked) {
    std::shared_ptr<IImportList const> const parent = makeList({makeName(u"a.b")});
    std::shared_ptr<IImportList const> const other = makeList({makeName(u"a.c")});
    auto const inner = makeList({makePackage(u"p")}, parent);
    auto const innerOfOther = makeList({makePackage(u"p")}, other);
    EXPECT_EQ(fingerprintOf(*inner, No), fingerprintOf(*innerOfOther, No));
    EXPECT_NE(fingerprintOf(*inner, Yes), fingerprintOf(*innerOfOther, Yes));
    EXPECT_NE(fingerprintOf(*makeList({}, parent), Yes), fingerprintOf(*parent, Yes))
        << "an additional empty scope changes the nesting";

    std::shared_ptr<IImportList const> const package = makeList({makePackage(u"p")});
    EXPECT_NE(fingerprintOf(*inner, Yes),
              fingerprintOf(*makeList({makeName(u"a.b")}, package), Yes))
        << "the order of nesting matters";
}

/// Whether lookups of names have the same results in both lists.
bool answerAlike(IImportList const& left, IImportList const& right) {
    return std::ranges::all_of(std::u16string(u"abcd"), [&](char16_t unit) {
        std::u16string const name(1, unit);
        auto const one = left.findFullyQualifiedImportEntry(name, No);
        auto const other = right.findFullyQualifiedImportEntry(name, No);
        return one.has_value() == other.has_value() &&
               (!one || one->rawArgument == other->rawArgument);
    });
}

TEST(FingerprintOf, OfShuffledListsIsTheSameExactlyWhenTheyAnswerAlike) {
    std::size_t alike = 0;
    std::size_t different = 0;
    support::checkOnRandomCases(2'000, [&] {
        std::vector<ImportEntry> entries;
        for (int count = *rc::gen::inRange(0, 6); count > 0; --count) {
            std::u16string name = u"?.?";
            name.front() = *rc::gen::elementOf(std::u16string(u"wxyz"));
            name.back() = *rc::gen::elementOf(std::u16string(u"abcd"));
            entries.emplace_back(makeName(name));
        }
        auto const list = makeList(entries);
        for (std::size_t end = entries.size(); end > 1; --end) {
            std::swap(entries[end - 1], entries[*rc::gen::inRange<std::size_t>(0, end)]);
        }
        auto const shuffled = makeList(entries);
        bool const areAlike = answerAlike(*list, *shuffled);
        ++(areAlike ? alike : different);
        RC_ASSERT((fingerprintOf(*list, No) == fingerprintOf(*shuffled, No)) == areAlike);
    });
    // Both cases must occur.
    EXPECT_GT(alike, 100U);
    EXPECT_GT(different, 100U);
}

} // namespace
} // namespace lf::import::host
