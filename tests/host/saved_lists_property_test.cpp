// SPDX-License-Identifier: BSL-1.0

/// \file
/// Saves and loads the lists of random programs; each must give the same answers as before.

#include <examples/hosts/saved_lists.hpp>

#include <support/list_answers.hpp>
#include <support/list_program.hpp>
#include <support/make_entries.hpp>
#include <support/observed_entries.hpp>
#include <support/random_check.hpp>
#include <support/random_programs.hpp>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace {

using lf::import::IImportList;
using support::AddStep;
using support::CloneStep;
using support::CreateStep;
using support::ListStep;
using support::makeName;
using support::makePackage;
using testing::ElementsAre;

std::vector<std::u16string> const names{u"a", u"b", u"A", u"a.b"};

/// The lists of a program, parents before their children.
class Family {
  public:
    Family() { create(std::nullopt); }

    void perform(CreateStep const& step) {
        if (lists.size() < support::maximalNumberOfLists) {
            bool const hasParent = step.parent < lists.size();
            create(hasParent ? std::optional(numberOf(step.parent)) : std::nullopt);
        }
    }

    void perform(CloneStep const& step) {
        if (lists.size() < support::maximalNumberOfLists) {
            std::size_t const original = numberOf(step.list);
            lists.push_back(lists[original]->clone());
            parents.push_back(parents[original]);
        }
    }

    void perform(AddStep const& step) {
        IImportList& list = *lists[numberOf(step.list)];
        auto entry = support::makeEntry(step.entry);
        (void)(step.addition == support::Addition::Static
                   ? list.addStaticImportEntry(std::move(entry))
                   : list.addDynamicImportEntry(std::move(entry)));
    }

    /// The same lists, after saving and loading each of them.
    Family reloaded() const {
        Family result;
        for (std::size_t number = 1; number < lists.size(); ++number) {
            result.create(parents[number]);
        }
        for (std::size_t number = lists.size(); number-- > 0;) {
            saved_lists::load(saved_lists::save(*lists[number]), *result.lists[number]);
        }
        return result;
    }

    std::vector<support::Answers> answers() const {
        std::vector<support::Answers> all;
        for (auto const& list : lists) {
            all.push_back(support::answersOf(*list, names));
        }
        return all;
    }

  private:
    void create(std::optional<std::size_t> parent) {
        lists.push_back(lf::import::createImportList(parent ? lists[*parent] : nullptr));
        parents.push_back(parent);
    }

    std::size_t numberOf(std::size_t back) const { return lists.size() - 1 - back % lists.size(); }

    std::vector<std::shared_ptr<IImportList>> lists;
    std::vector<std::optional<std::size_t>> parents;
};

TEST(SavedLists, ReadBackWhateverWasAdded) {
    support::checkOnRandomCases(3'000, [] {
        support::ListProgram const program = *support::anyProgram();
        Family family;
        for (ListStep const& step : program.steps) {
            std::visit([&](auto const& itsStep) { family.perform(itsStep); }, step);
        }
        RC_ASSERT(family.reloaded().answers() == family.answers());
    });
}

/// An outer list with a package, and an inner list with a name that starts with that package.
struct Nested {
    Nested() {
        inner->addStaticImportEntry(makeName(u"a.b"));
        inner->addDynamicImportEntry(makePackage(u"a"));
        outer->addStaticImportEntry(makePackage(u"a"));
    }

    std::shared_ptr<IImportList> outer = lf::import::createImportList(nullptr);
    std::shared_ptr<IImportList> inner = lf::import::createImportList(outer);
};

TEST(SavedLists, NameDottedImportsBeforePackages) {
    EXPECT_THAT(saved_lists::save(*Nested().inner), ElementsAre("n\ta\tb\ta.b", "p\ta\ta"));
}

TEST(SavedLists, DoNotReadBackInAnotherOrder) {
    Nested const saved;
    auto const list = lf::import::createImportList(nullptr);
    saved_lists::Lines lines = saved_lists::save(*saved.inner);
    std::swap(lines.front(), lines.back());
    EXPECT_THROW(saved_lists::load(lines, *list), std::runtime_error) << "the package first";

    auto const outer = std::shared_ptr(lf::import::createImportList(nullptr));
    auto const inner = lf::import::createImportList(outer);
    saved_lists::load(saved_lists::save(*saved.outer), *outer);
    EXPECT_THROW(saved_lists::load(saved_lists::save(*saved.inner), *inner), std::runtime_error)
        << "the outer list first";
}

TEST(SavedLists, DoNotReadBackStatically) {
    auto const list = lf::import::createImportList(nullptr);
    EXPECT_FALSE(list->addStaticImportEntry(makeName(u"a.b")));
    EXPECT_TRUE(list->addStaticImportEntry(makePackage(u"a")));
}

} // namespace
