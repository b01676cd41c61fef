// SPDX-License-Identifier: BSL-1.0

/// \file
/// Lists of the library nested in foreign lists: the number of questions that a lookup asks them,
/// and that its answers do not depend on skipping questions.

#include <support/foreign_import_list.hpp>
#include <support/make_entries.hpp>
#include <support/row_name.hpp>

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace lf::import {
namespace {

using support::DelegatingImportList;
using support::makeName;
using support::makePackage;
using support::makeWildcard;
using enum IImportList::CheckAncestorList;

using List = std::shared_ptr<IImportList const>;

// The number of questions.

/// An operation on the innermost list and its result.
struct Row {
    std::string why;
    bool (*find)(IImportList& list);
    bool finds;

    friend void PrintTo(Row const& row, std::ostream* stream) { *stream << row.why; }
};

bool findsPackage(IImportList& list, std::u16string_view name) {
    return list.findPackageImportEntry(name, Yes).has_value();
}

bool findsName(IImportList& list, std::u16string_view name) {
    return list.findFullyQualifiedImportEntry(name, Yes).has_value();
}

bool refuses(IImportList& list, ImportEntry entry) {
    return list.addStaticImportEntry(std::move(entry)).has_value();
}

class QuestionsToNestedForeignLists : public testing::TestWithParam<Row> {
  protected:
    class TooManyQuestions : public std::exception {};

    /// Performs the operation in a list nested in \p depth foreign lists.
    ///
    /// \returns the number of questions they are asked; stops the test if there are far too many.
    static std::size_t questionsAt(std::size_t depth) {
        std::size_t questions = 0;
        std::shared_ptr<IImportList> const outermost = createImportList(nullptr);
        EXPECT_FALSE(outermost->addStaticImportEntry(makePackage(u"package")));
        EXPECT_FALSE(outermost->addStaticImportEntry(makeName(u"root.name")));
        List enclosing = outermost;
        for (std::size_t level = 0; level < depth; ++level) {
            auto foreign = std::make_shared<DelegatingImportList>(createImportList(enclosing));
            foreign->beforeAnswers([&questions, depth] {
                if (++questions > 100 * depth) {
                    throw TooManyQuestions();
                }
            });
            enclosing = std::move(foreign);
        }
        EXPECT_EQ(GetParam().find(*createImportList(enclosing)), GetParam().finds);
        return questions;
    }
};

TEST_P(QuestionsToNestedForeignLists, GrowAsTheChainDoes) {
    for (std::size_t const depth : std::to_array<std::size_t>({20, 40, 80, 1'000})) {
        EXPECT_LE(questionsAt(depth), depth) << "no list is asked twice";
    }
}

INSTANTIATE_TEST_SUITE_P(
    OfEveryKind, QuestionsToNestedForeignLists,
    testing::Values(
        Row{"a package that no list has",
            [](IImportList& list) { return findsPackage(list, u"x"); }, false},
        Row{"a package of the outermost list",
            [](IImportList& list) { return findsPackage(list, u"package"); }, true},
        Row{"a name that no list has", [](IImportList& list) { return findsName(list, u"x"); },
            false},
        Row{"a name of the outermost list",
            [](IImportList& list) { return findsName(list, u"name"); }, true},
        Row{"a name to add, whose root element no list has",
            [](IImportList& list) { return refuses(list, makeName(u"x.y")); }, false},
        Row{"a name to add, whose root element is a package",
            [](IImportList& list) { return refuses(list, makeName(u"package.y")); }, true},
        Row{"a wildcard to add, whose root element no list has",
            [](IImportList& list) { return refuses(list, makeWildcard(u"x.*")); }, false},
        Row{"a wildcard to add, whose root element is a package",
            [](IImportList& list) { return refuses(list, makeWildcard(u"package.*")); }, true}),
    support::RowName{});

// The answers.

/// Looks up names literally as documented: asks every list on the way.
class LiteralImportList final : public DelegatingImportList {
  public:
    explicit LiteralImportList(List const& parent)
        : DelegatingImportList(createImportList(parent)) {}

    std::optional<FoundImportEntry> findPackageImportEntry(std::u16string_view name,
                                                           CheckAncestorList check) const override {
        auto own = DelegatingImportList::findPackageImportEntry(name, No);
        if (own || check != Yes || DelegatingImportList::findFullyQualifiedImportEntry(name, No)) {
            return own;
        }
        for (List list = getParent(); list != nullptr; list = list->getParent()) {
            if (auto const found = list->findPackageImportEntry(name, Yes)) {
                return FoundImportEntry{found->entry, EntryOrigin::Ancestor};
            }
        }
        return std::nullopt;
    }

    std::optional<FoundFullyQualifiedName>
    findFullyQualifiedImportEntry(std::u16string_view name,
                                  CheckAncestorList check) const override {
        auto own = DelegatingImportList::findFullyQualifiedImportEntry(name, No);
        if (own || check != Yes || DelegatingImportList::findPackageImportEntry(name, No)) {
            return own;
        }
        for (List list = getParent(); list != nullptr; list = list->getParent()) {
            if (auto const found = list->findFullyQualifiedImportEntry(name, Yes)) {
                return FoundFullyQualifiedName{found->rawArgument, EntryOrigin::Ancestor};
            }
        }
        return std::nullopt;
    }
};

/// Creates the lists that the foreign lists delegate to, and those between them.
using MakeList = std::unique_ptr<IImportList> (*)(List const& parent);

std::unique_ptr<IImportList> makeOwn(List const& parent) {
    return createImportList(parent);
}

std::unique_ptr<IImportList> makeLiteral(List const& parent) {
    return std::make_unique<LiteralImportList>(parent);
}

/// How a foreign list changes the answers of the list that it delegates to.
enum class Manner : std::uint8_t {
    PassesOn,
    AsksWithoutAncestors,
    NamesNoParent,
    AsksASecondName,
    Throws, ///< but for the root element, so that names can be added
    CatchesExceptions,
    MakesItsParentWhenAsked,
};

constexpr std::array manners{
    Manner::PassesOn,
    Manner::AsksWithoutAncestors,
    Manner::NamesNoParent,
    Manner::AsksASecondName,
    Manner::Throws,
    Manner::CatchesExceptions,
    Manner::MakesItsParentWhenAsked,
};

std::u16string const name = u"x";
std::u16string const secondName = u"second";
std::u16string const root = u"root";

class MannerlyImportList final : public DelegatingImportList {
  public:
    MannerlyImportList(List const& parent, Manner itsManner, MakeList itsMakeList)
        : DelegatingImportList(itsMakeList(parent)), manner(itsManner), makeList(itsMakeList) {}

    std::optional<FoundImportEntry> findPackageImportEntry(std::u16string_view text,
                                                           CheckAncestorList check) const override {
        return answer<FoundImportEntry>(text, [&](std::u16string_view asked) {
            return DelegatingImportList::findPackageImportEntry(asked, reachOf(check));
        });
    }

    std::optional<FoundFullyQualifiedName>
    findFullyQualifiedImportEntry(std::u16string_view text,
                                  CheckAncestorList check) const override {
        return answer<FoundFullyQualifiedName>(text, [&](std::u16string_view asked) {
            return DelegatingImportList::findFullyQualifiedImportEntry(asked, reachOf(check));
        });
    }

    List getParent() const override {
        switch (manner) {
        case Manner::NamesNoParent:
            return nullptr;
        case Manner::MakesItsParentWhenAsked:
            return makeList(DelegatingImportList::getParent());
        default:
            return DelegatingImportList::getParent();
        }
    }

  private:
    bool asksASecondName(std::u16string_view text) const {
        return manner == Manner::AsksASecondName && text == name;
    }

    CheckAncestorList reachOf(CheckAncestorList check) const {
        return manner == Manner::AsksWithoutAncestors ? No : check;
    }

    template <typename Found, typename Find>
    std::optional<Found> answer(std::u16string_view text, Find const& find) const {
        if (manner == Manner::Throws && text != root) {
            throw NoAnswer();
        }
        try {
            auto found = find(text);
            return found || !asksASecondName(text) ? found : find(secondName);
        } catch (NoAnswer const&) {
            if (manner == Manner::CatchesExceptions) {
                return std::nullopt;
            }
            throw;
        }
    }

    Manner manner;
    MakeList makeList;
};

/// A list of the chains to compare: the library's own, with or without an entry, or foreign.
struct Link {
    std::optional<Manner> manner;
    std::optional<ImportEntry> entry;
};

std::vector<Link> allLinks() {
    std::vector<Link> links{{std::nullopt, std::nullopt},
                            {std::nullopt, makePackage(name)},
                            {std::nullopt, makeName(root + u"." + name)},
                            {std::nullopt, makePackage(secondName)}};
    for (Manner const manner : manners) {
        links.push_back({manner, std::nullopt});
    }
    return links;
}

/// A list nested in \p links, which are ordered from the outermost inward.
std::shared_ptr<IImportList> makeChain(std::vector<Link> const& links, MakeList makeList) {
    std::shared_ptr<IImportList> enclosing;
    for (Link const& link : links) {
        if (link.manner) {
            enclosing = std::make_shared<MannerlyImportList>(enclosing, *link.manner, makeList);
        } else {
            enclosing = makeList(enclosing);
        }
        if (link.entry) {
            EXPECT_FALSE(enclosing->addDynamicImportEntry(ImportEntry(*link.entry)));
        }
    }
    return makeList(enclosing);
}

/// The result of \p find, or that it throws.
template <typename Find>
std::u16string outcomeOf(Find const& find) {
    try {
        return find();
    } catch (DelegatingImportList::NoAnswer const&) {
        return u"an exception";
    }
}

std::vector<std::u16string> lookUp(IImportList const& list) {
    std::vector<std::u16string> outcomes;
    for (std::u16string const& each : {name, secondName}) {
        outcomes.push_back(outcomeOf([&]() -> std::u16string {
            auto const found = list.findPackageImportEntry(each, Yes);
            return found ? std::u16string(found->entry.getIntroducedName()) : u"no package";
        }));
        outcomes.push_back(outcomeOf([&]() -> std::u16string {
            auto const found = list.findFullyQualifiedImportEntry(each, Yes);
            return found ? std::u16string(found->rawArgument) : u"no name";
        }));
    }
    return outcomes;
}

class EveryChainWithForeignLists : public testing::Test {
  protected:
    /// Compares \p links and all chains that extend it inward by up to \p more lists.
    void compare(std::vector<Link>& links, int more) {
        auto const list = makeChain(links, makeOwn);
        ASSERT_EQ(lookUp(*list), lookUp(*makeChain(links, makeLiteral))) << describe(links);
        ++numberOfChains;
        for (std::size_t next = 0; more > 0 && next < kinds.size(); ++next) {
            links.push_back(kinds[next]);
            compare(links, more - 1);
            links.pop_back();
        }
    }

    static std::string describe(std::vector<Link> const& links) {
        std::string text = "outermost first:";
        for (Link const& link : links) {
            text += link.manner ? " foreign " + std::to_string(static_cast<int>(*link.manner))
                                : std::string(link.entry ? " with an entry" : " empty");
        }
        return text;
    }

    std::vector<Link> const kinds = allLinks();
    int numberOfChains = 0;
};

TEST_F(EveryChainWithForeignLists, AnswersAsTheWalkDoesThatAsksEveryList) {
    std::vector<Link> links;
    compare(links, 3);
    EXPECT_EQ(numberOfChains, 1 + 11 + 11 * 11 + 11 * 11 * 11);
}

TEST(QuestionsToListsThatCatchWhatAnotherThrows, GrowAsTheChainDoes) {
    for (std::size_t const depth : {10U, 20U, 40U}) {
        std::size_t questions = 0;
        List enclosing = std::make_shared<MannerlyImportList>(nullptr, Manner::Throws, makeOwn);
        for (std::size_t level = 0; level < depth; ++level) {
            auto foreign =
                std::make_shared<MannerlyImportList>(enclosing, Manner::CatchesExceptions, makeOwn);
            foreign->beforeAnswers([&questions, depth] {
                if (++questions > 100 * depth) {
                    throw std::runtime_error("too many questions");
                }
            });
            enclosing = std::move(foreign);
        }
        EXPECT_THROW(findsPackage(*createImportList(enclosing), u"x"),
                     DelegatingImportList::NoAnswer);
        EXPECT_LE(questions, depth) << "no list is asked twice";
    }
}

// Ownership.

/// Transfers its only reference to its parent to the caller of getParent(). Expects to be alive
/// whenever it is asked.
class ParentGivingList final : public DelegatingImportList {
  public:
    explicit ParentGivingList(List itsParent)
        : DelegatingImportList(createImportList(nullptr)), parent(std::move(itsParent)) {}

    static std::shared_ptr<ParentGivingList> around(List parent) {
        auto list = std::make_shared<ParentGivingList>(std::move(parent));
        list->self = list;
        list->beforeAnswers([self = list->self] { EXPECT_FALSE(self.expired()) << "is asked"; });
        return list;
    }

    List getParent() const override {
        EXPECT_FALSE(self.expired()) << "is asked for its parent";
        return std::exchange(parent, nullptr);
    }

  private:
    std::weak_ptr<ParentGivingList const> self;
    mutable List parent;
};

TEST(AForeignListThatGivesAwayItsOnlyReferenceToItsParent, IsWalkedPast) {
    for (auto const looksUp : {findsPackage, findsName}) {
        auto const outermost = ParentGivingList::around(nullptr);
        auto const middle = ParentGivingList::around(createImportList(outermost));
        List const outer = ParentGivingList::around(ParentGivingList::around(middle));
        auto const list = createImportList(createImportList(outer));
        EXPECT_FALSE(looksUp(*list, u"missing"));
        EXPECT_EQ(middle->questions().size(), 1U) << "it was asked once";
        EXPECT_EQ(outermost->questions().size(), 1U);
    }
}

TEST(AForeignListThatGivesAwayItsOnlyReferenceToItsParent, IsWalkedPastWithinAnotherLookup) {
    for (auto const looksUp : {findsPackage, findsName}) {
        auto const outermost = ParentGivingList::around(nullptr);
        List const outer =
            ParentGivingList::around(ParentGivingList::around(createImportList(outermost)));
        List const asking =
            std::make_shared<DelegatingImportList>(createImportList(createImportList(outer)));
        EXPECT_FALSE(looksUp(*createImportList(asking), u"missing"));
        EXPECT_EQ(outermost->questions().size(), 1U);
    }
}

} // namespace
} // namespace lf::import
