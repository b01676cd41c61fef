// SPDX-License-Identifier: BSL-1.0

/// \file
/// Lets each allocation of each operation of the kit fail: the operation throws std::bad_alloc,
/// leaks nothing and leaves existing objects unchanged.

#include "catalogue_words.hpp"

#include <host/host.hpp>

#include <support/allocations.hpp>
#include <support/make_entries.hpp>

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <new>
#include <string>
#include <utility>
#include <vector>

namespace lf::import::host {
namespace {

using support::FailingAllocations;
using support::makeName;
using support::makePackage;
using support::makeWildcard;
using support::Shortage;

constexpr MessageCatalogue catalogue({WORDS});

/// Two nested scopes; the inner one sees and hides imports of each kind.
struct Scopes {
    std::shared_ptr<Scope<int>> outer = std::make_shared<Scope<int>>();
    std::shared_ptr<Scope<int>> inner = std::make_shared<Scope<int>>(outer);
    UseRecord<int> uses;

    Scopes() {
        add(*outer, makePackage(u"aPackage.withAName.thatIsTooLong.forAShortText@^1"));
        add(*outer, makePackage(u"p"));
        add(*outer, makeName(u"shapes.aNameThatIsTooLongForAShortText"));
        add(*outer, makeWildcard(u"shapes.*"));
        add(*inner, makeName(u"other.p"));
        add(*inner, makeWildcard(u"shapes.*"));
    }

    static void add(Scope<int>& scope, ImportEntry entry) {
        (void)scope.addStatic(std::move(entry), 1);
    }

    /// The stored and visible imports and the number of entries of each scope, in UTF-8.
    std::vector<std::string> observe() const {
        std::vector<std::string> texts;
        for (auto const& scope : {outer, inner}) {
            for (Import<int> const& imported : scope->imports()) {
                texts.push_back(toUtf8(imported.entry) + (uses.reaches(imported) ? " used" : ""));
            }
            for (auto const kind :
                 {ImportKind::Package, ImportKind::FullyQualified, ImportKind::Wildcard}) {
                for (ScopedImport<int> const& scoped : scope->visible(kind)) {
                    texts.push_back(toUtf8(scoped.imported->entry));
                }
            }
            texts.push_back(std::to_string(
                scope->getList()->getNumberOfEntries(IImportList::CheckAncestorList::Yes)));
        }
        return texts;
    }
};

/// Expects \p run to throw std::bad_alloc exactly if an allocation fails.
///
/// \returns whether an allocation failed.
template <typename Run>
bool runsOutOfMemory(std::size_t allowed, Shortage shortage, Run const& run) {
    bool cameOut = false;
    bool failed = false;
    {
        FailingAllocations const failing(allowed, shortage);
        try {
            run();
        } catch (std::bad_alloc const&) {
            cameOut = true;
        }
        failed = failing.hasFailed();
    }
    EXPECT_EQ(cameOut, failed) << "std::bad_alloc is thrown exactly if an allocation fails";
    return failed;
}

/// Lets each allocation of \p run fail in turn; each call gets new scopes.
///
/// \returns the number of allocations.
template <typename Run>
std::size_t failEveryAllocation(Run const& run) {
    std::size_t count = 0;
    for (Shortage const shortage : {Shortage::Passing, Shortage::Lasting}) {
        bool failed = true;
        for (count = 0; failed && !testing::Test::HasFailure(); ++count) {
            std::size_t const live = support::countLiveAllocations();
            {
                Scopes scopes;
                std::vector<std::string> const before = scopes.observe();
                failed = runsOutOfMemory(count, shortage, [&] { run(scopes); });
                if (failed) {
                    EXPECT_EQ(scopes.observe(), before) << "at allocation " << count;
                }
            }
            EXPECT_EQ(support::countLiveAllocations(), live) << "at allocation " << count;
        }
    }
    return count - 1;
}

/// Adds copies of \p entry, statically and dynamically, and lets each allocation fail.
template <typename Entry>
std::size_t failEveryAllocationOfAdding(Entry const& entry) {
    std::size_t total = 0;
    for (bool const isDynamic : {false, true}) {
        total += failEveryAllocation([&](Scopes& scopes) {
            ImportEntry added = entry;
            Scope<int>& scope = *scopes.inner;
            (void)(isDynamic ? scope.addDynamic(std::move(added), 2)
                             : scope.addStatic(std::move(added), 2));
        });
    }
    return total;
}

TEST(WithoutMemory, AScopeIsMadeWholeOrNotAtAll) {
    EXPECT_GT(failEveryAllocation(
                  [](Scopes& scopes) { (void)std::make_shared<Scope<int>>(scopes.inner); }),
              0U);
}

TEST(WithoutMemory, AnImportIsStoredWithItsPlaceOrNotAtAll) {
    EXPECT_GT(failEveryAllocationOfAdding(makePackage(u"another@1", u"alias")), 0U);
    EXPECT_GT(failEveryAllocationOfAdding(makeName(u"another.nameThatIsTooLongForAShortText")), 0U);
    EXPECT_GT(failEveryAllocationOfAdding(makeWildcard(u"another.*")), 0U);
}

TEST(WithoutMemory, ARepetitionOrRefusalChangesNothing) {
    EXPECT_GT(failEveryAllocationOfAdding(makeWildcard(u"shapes.*")), 0U);
    EXPECT_GT(failEveryAllocationOfAdding(makePackage(u"p")), 0U);
    EXPECT_GT(failEveryAllocationOfAdding(makeWildcard(u"p.*")), 0U);
}

TEST(WithoutMemory, WhatIsAskedOfAScopeFailsAndChangesNothing) {
    using Resolution = Scope<int>::Resolution;
    EXPECT_GT(failEveryAllocation([](Scopes& scopes) {
                  (void)scopes.inner->resolve("aPackage.withAName.thatIsTooLong.forAShortText.x");
              }),
              0U);
    EXPECT_GT(failEveryAllocation([](Scopes& scopes) { (void)scopes.inner->resolve(u"unknown"); }),
              0U);
    EXPECT_GT(failEveryAllocation([](Scopes& scopes) { (void)scopes.inner->hidden(); }), 0U);
    EXPECT_GT(failEveryAllocation([](Scopes& scopes) {
                  Resolution const resolution = scopes.inner->resolve(u"unknown");
                  scopes.uses.add(resolution);
              }),
              0U);
    EXPECT_GT(
        failEveryAllocation([](Scopes& scopes) { (void)scopes.uses.unreached(*scopes.outer); }),
        0U);
}

TEST(WithoutMemory, ANameThatNothingIntroducesIsLookedUp) {
    Scope<int> scope;
    (void)scope.addStatic(makeName(u"a.b"), 1);
    std::size_t const before = support::countAllocations();
    bool const isKnown = !scope.find(Utf16Text("unknown")).empty();
    EXPECT_EQ(support::countAllocations(), before);
    EXPECT_FALSE(isKnown);
}

TEST(WithoutMemory, ACommandIsReadWholeOrNotAtAll) {
    std::vector<std::vector<std::u16string>> const commands{
        {u"shapes.aNameThatIsTooLongForAShortText", u"b.*"},
        {u"aPackageThatIsTooLongForAShortText@1", u"as", u"p"},
        {u"shapes.circle", u"b.", u"shapes.aNameThatIsTooLongForAShortText"}};
    for (std::vector<std::u16string> const& command : commands) {
        EXPECT_GT(failEveryAllocation([&](Scopes&) {
                      (void)readCommand(command, Behavior::WithPackageImports, Salvage::Yes);
                  }),
                  0U);
    }
}

TEST(WithoutMemory, TextsAreMadeWholeOrNotAtAll) {
    std::string const longText(Utf16Text::lengthWithoutAllocation + 1, 'n');
    ImportEntry const package = makePackage(u"aPackageThatIsTooLongForAShortText@1", u"p");
    resource_core::BaseMsgID const message{
        {std::u16string(u"an argument that is too long for a short text")},
        std::string(messageCatalogue),
        "InvalidImportArgument"};
    EXPECT_GT(failEveryAllocation([&](Scopes&) { (void)Utf16Text(longText); }), 0U);
    EXPECT_GT(failEveryAllocation([&](Scopes&) { (void)toUtf8(package); }), 0U);
    EXPECT_GT(failEveryAllocation([&](Scopes&) { (void)toUtf8(message); }), 0U);
    EXPECT_GT(failEveryAllocation([&](Scopes&) { (void)catalogue.format(message); }), 0U);
    EXPECT_GT(failEveryAllocation([&](Scopes&) { (void)segmentsOf(u"a.b.c"); }), 0U);
    EXPECT_GT(failEveryAllocation([&](Scopes&) { (void)isSameImport(package, package); }), 0U);
    EXPECT_GT(failEveryAllocation([](Scopes& scopes) {
                  (void)fingerprintOf(*scopes.inner->getList(),
                                      IImportList::CheckAncestorList::Yes);
              }),
              0U);
}

} // namespace
} // namespace lf::import::host
