// SPDX-License-Identifier: BSL-1.0

/// \file
/// How lists release their parents: without recursion, whatever owns them, and without a
/// delay that a host could observe.

#include <support/foreign_import_list.hpp>
#include <support/row_name.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace lf::import {
namespace {

using support::DelegatingImportList;

using List = std::shared_ptr<IImportList const>;
using Log = std::vector<std::string>;

/// \p list with an \p action that runs when its last owner releases it.
List withAction(std::unique_ptr<IImportList> list, std::function<void()> action) {
    return {list.release(), [action = std::move(action)](IImportList const* body) {
                action();
                std::default_delete<IImportList const>()(body);
            }};
}

/// A chain of \p parents lists, each owned only by the next.
List makeChain(std::size_t parents, List outermost = nullptr) {
    List list = createImportList(std::move(outermost));
    for (std::size_t number = 0; number < parents; ++number) {
        list = createImportList(std::move(list));
    }
    return list;
}

/// A foreign list that logs its destruction.
class LoggedList : public DelegatingImportList {
  public:
    LoggedList(std::string itsName, Log& itsLog)
        : DelegatingImportList(createImportList(nullptr)), name(std::move(itsName)), log(itsLog) {}

    LoggedList(LoggedList const&) = delete;
    LoggedList& operator=(LoggedList const&) = delete;

    ~LoggedList() override { log.push_back(name); }

  private:
    std::string name;
    Log& log;
};

/// A foreign list that owns a list of the library whose parent refers back to the owner, like the
/// parent of a host's helper may.
class Owner final : public DelegatingImportList {
  public:
    /// \param between the number of the library's lists between the helper and that parent.
    Owner(std::size_t between, Log& itsLog)
        : DelegatingImportList(createImportList(nullptr)),
          log(itsLog),
          helper(
              makeChain(between, std::make_shared<LoggedList>("the parent of its helper", log))) {}

    Owner(Owner const&) = delete;
    Owner& operator=(Owner const&) = delete;

    ~Owner() override {
        helper.reset();
        log.emplace_back("the owner");
    }

  private:
    Log& log;
    List helper;
};

/// How an owner is destroyed.
struct Row {
    std::string why;
    std::size_t listsInside;  ///< around the owner
    std::size_t listsBetween; ///< the helper and its foreign parent

    friend void PrintTo(Row const& row, std::ostream* stream) { *stream << row.why; }
};

class AForeignParent : public testing::TestWithParam<Row> {};

TEST_P(AForeignParent, IsGivenUpBeforeTheListIsGone) {
    Log log;
    List list = std::make_shared<Owner>(GetParam().listsBetween, log);
    if (GetParam().listsInside != 0) {
        list = makeChain(GetParam().listsInside - 1, std::move(list));
    }
    list.reset();
    EXPECT_EQ(log, (Log{"the parent of its helper", "the owner"}));
}

INSTANTIATE_TEST_SUITE_P(WhenItsOwnerEnds, AForeignParent,
                         testing::Values(Row{"with its last share", 0, 0},
                                         Row{"in the release of a list", 1, 0},
                                         Row{"in the release of many lists", 10, 0},
                                         Row{"and there is a list between", 1, 1},
                                         Row{"and there are many lists between", 10, 10}),
                         support::RowName{});

TEST(AListThatDiesInTheReleaseOfAnother, GivesAForeignParentUpAtOnce) {
    Log log;
    auto list = createImportList(withAction(createImportList(nullptr), [&log] {
        List inner = createImportList(std::make_shared<LoggedList>("the foreign parent", log));
        inner.reset();
        log.emplace_back("the list");
    }));
    list.reset();
    EXPECT_EQ(log, (Log{"the foreign parent", "the list"}));
}

TEST(AListThatDiesInTheReleaseOfAnother, LetsGoOfAParentThatOthersOwnToo) {
    List const shared = createImportList(nullptr);
    long sharesInside = 0;
    auto list = createImportList(withAction(createImportList(nullptr), [&] {
        createImportList(shared).reset();
        sharesInside = shared.use_count();
    }));
    list.reset();
    EXPECT_EQ(sharesInside, 1);
}

/// How far the stack of this thread has grown from the first measurement to the deepest one.
class StackProbe {
  public:
    void look() {
        // Sanitizers may keep local variables elsewhere.
        auto const place = reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0));
        first = first == 0 ? place : first;
        deepest = std::max(deepest, first > place ? first - place : place - first);
    }

    std::size_t growth() const { return deepest; }

  private:
    std::uintptr_t first = 0;
    std::uintptr_t deepest = 0;
};

constexpr std::size_t manyLists = 2'000;
/// Recursion would need much more than this for so many lists.
constexpr std::size_t fewFrames = std::size_t{16} * 1'024;

/// What else the deleter of a list destroys when it releases a list of a long chain.
struct CompanyRow {
    std::string why;
    std::size_t chainsBefore; ///< the list itself
    std::size_t chainsAfter;
    std::size_t lengthOfEach;

    friend void PrintTo(CompanyRow const& row, std::ostream* stream) { *stream << row.why; }
};

class ListsThatDieTogether : public testing::TestWithParam<CompanyRow> {
  protected:
    /// Creates a list whose ancestors all measure the stack in their destruction.
    List makeProbed(std::size_t parents) {
        List list;
        for (std::size_t number = 0; number <= parents; ++number) {
            list = withAction(createImportList(std::move(list)), [this] {
                stack.look();
                ++deaths;
            });
        }
        return list;
    }

    std::vector<List> makeCompany(std::size_t chains) {
        std::vector<List> lists(chains);
        std::ranges::generate(lists, [this] { return makeProbed(GetParam().lengthOfEach - 1); });
        return lists;
    }

    StackProbe stack;
    std::size_t deaths = 0;
};

TEST_P(ListsThatDieTogether, NeedNoStackEach) {
    CompanyRow const& row = GetParam();
    auto const company = [&](List& body) {
        return List(body.get(), [before = makeCompany(row.chainsBefore), body,
                                 after = makeCompany(row.chainsAfter)](auto const*) mutable {
            before.clear();
            body.reset();
            after.clear();
        });
    };
    List own = makeProbed(manyLists - 1);
    List held = company(own);
    own.reset();
    auto list = createImportList(std::move(held));
    list.reset();
    EXPECT_EQ(deaths, manyLists + (row.chainsBefore + row.chainsAfter) * row.lengthOfEach);
    EXPECT_LT(stack.growth(), fewFrames);
}

INSTANTIATE_TEST_SUITE_P(InOneDeleter, ListsThatDieTogether,
                         testing::Values(CompanyRow{"alone", 0, 0, 0},
                                         CompanyRow{"after one list", 1, 0, 1},
                                         CompanyRow{"before one list", 0, 1, 1},
                                         CompanyRow{"after a long chain", 1, 0, manyLists},
                                         CompanyRow{"before a long chain", 0, 1, manyLists},
                                         CompanyRow{"between long chains", 2, 2, manyLists}),
                         support::RowName{});

/// Creates a list with \p parents ancestors, each destroyed by a deleter that also releases another
/// list, whose parent is released while the ancestor's is pending.
List makeAccompanied(std::size_t parents, StackProbe& stack) {
    List list;
    for (std::size_t number = 0; number <= parents; ++number) {
        list = List(createImportList(std::move(list)).release(),
                    [&stack, company = makeChain(2)](IImportList const* body) mutable {
                        stack.look();
                        std::default_delete<IImportList const>()(body);
                        company.reset();
                    });
    }
    return list;
}

TEST(ListsThatDieEachBeforeAnother, NeedNoStackEach) {
    StackProbe stack;
    auto list = createImportList(makeAccompanied(manyLists, stack));
    list.reset();
    EXPECT_LT(stack.growth(), fewFrames);
}

TEST(AListOfAThread, IsDestroyedWhenTheThreadEnds) {
    List const outermost = createImportList(nullptr);
    std::weak_ptr<IImportList const> parent;
    std::thread([&] {
        static thread_local List list;
        list = makeChain(10, outermost);
        parent = list->getParent();
        EXPECT_EQ(outermost.use_count(), 2);
    }).join();
    EXPECT_TRUE(parent.expired());
    EXPECT_EQ(outermost.use_count(), 1);
}

} // namespace
} // namespace lf::import
