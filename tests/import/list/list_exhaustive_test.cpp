// SPDX-License-Identifier: BSL-1.0

/// \file
/// All short chains of lists in which each list is the library's or foreign, and contains a name as
/// a package, as a fully qualified import, or not at all.

#include <support/outcomes.hpp>
#include <support/row_name.hpp>
#include <support/twin_lists.hpp>

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace {

using model::Outcome;
using support::Addition;
using support::ListMake;
using support::Maker;
using support::TwinLists;

std::u16string const name = u"x";
Outcome const package = support::package(0, name, name);

/// `root.name`
Outcome dotted(std::u16string const& root, std::u16string const& introducedName) {
    return support::fullyQualified(0, root + u'.' + introducedName, root, introducedName);
}

/// Compares library and model on all chains of up to \p itsLength lists in which all foreign lists
/// are of the same kind.
class EveryChain {
  public:
    EveryChain(ListMake const& otherMake, std::size_t itsLength)
        : makes{ListMake{}, otherMake}, maximalLength(itsLength) {}

    /// \returns the number of chains.
    std::size_t compare() {
        lengthen();
        return numberOfChains;
    }

  private:
    /// Extends the chain by one list in every way and compares.
    void lengthen() {
        // Equal raw arguments hide each other and different ones do not: cover both.
        std::u16string const root = lists.size() % 2 == 0 ? u"even" : u"odd";
        std::array<std::optional<Outcome>, 3> const holdings{std::nullopt, package,
                                                             dotted(root, name)};
        for (ListMake const& make : makes) {
            for (std::optional<Outcome> const& holding : holdings) {
                putIn(make, holding);
                compareInnermost();
                if (lists.size() < maximalLength) {
                    lengthen();
                }
                lists.removeLast();
            }
        }
    }

    void putIn(ListMake const& make, std::optional<Outcome> const& holding) {
        if (lists.size() == 0) {
            lists.create(make, std::nullopt);
        } else {
            lists.create(make, innermost());
        }
        if (holding) {
            ASSERT_FALSE(lists.add(innermost(), Addition::Dynamic, *holding));
        }
        lists.checkOwnEntries(innermost());
    }

    void compareInnermost() {
        ++numberOfChains;
        lists.checkAnswers(innermost(), {name}, model::thisListOnly);
        lists.clone(innermost());
        for (Outcome const& entry :
             {support::wildcard(0, name + u".*", name), dotted(name, u"y"), dotted(u"y", name)}) {
            lists.add(innermost(), Addition::Static, entry);
        }
        lists.add(innermost(), Addition::Static, package);
        lists.add(innermost(), Addition::Dynamic, package);
        lists.removeLast();
    }

    std::size_t innermost() const { return lists.size() - 1; }

    std::array<ListMake, 2> makes;
    std::size_t maximalLength;
    TwinLists lists;
    std::size_t numberOfChains = 0;
};

struct Row {
    std::string why;
    ListMake otherMake;
    std::size_t maximalLength;
    std::size_t numberOfChains;

    friend void PrintTo(Row const& row, std::ostream* stream) { *stream << row.otherMake; }
};

class EveryShortChain : public testing::TestWithParam<Row> {};

TEST_P(EveryShortChain, AnswersWhatTheRulesSay) {
    EveryChain chains(GetParam().otherMake, GetParam().maximalLength);
    EXPECT_EQ(chains.compare(), GetParam().numberOfChains);
}

ListMake foreign(bool asksParent, bool namesParent) {
    return {.maker = Maker::Foreign,
            .manners = {.asksParent = asksParent, .namesParent = namesParent}};
}

// There are 6^n chains of n lists.
INSTANTIATE_TEST_SUITE_P(
    WithLists, EveryShortChain,
    testing::Values(
        Row{"that delegate to the library", {.maker = Maker::Delegating, .manners = {}}, 6, 55'986},
        Row{"that ask and name their parent", foreign(true, true), 5, 9'330},
        Row{"that only ask their parent", foreign(true, false), 5, 9'330},
        Row{"that only name their parent", foreign(false, true), 5, 9'330},
        Row{"that know no parent", foreign(false, false), 5, 9'330}),
    support::RowName{});

} // namespace
