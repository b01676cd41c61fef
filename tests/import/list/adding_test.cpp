// SPDX-License-Identifier: BSL-1.0

#include <import/import_list.hpp>

#include <support/make_entries.hpp>
#include <support/row_name.hpp>

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace lf::import {
namespace {

using resource_core::BaseMsgID;
using support::makeName;
using support::makePackage;
using support::makeWildcard;
using enum IImportList::CheckAncestorList;

enum class Verdict { Stored, Skipped, Redeclared, Precedence, Abbreviation };
using enum Verdict;

// The outcome of adding one entry after another: to the same list, to a child and to a grandchild.
struct Row {
    std::string why;
    ImportEntry first;
    ImportEntry second;

    struct {
        Verdict statically, dynamically;
    } sameList, child, grandchild;

    friend void PrintTo(Row const& row, std::ostream* stream) { *stream << row.why; }
};

FullyQualifiedImportEntry nameWithRawArgument(std::u16string const& raw) {
    return FullyQualifiedImportEntry(FullyQualifiedImportArgument{u"a", u"b", raw, {}});
}

// clang-format off
std::vector<Row> const conflictMatrix{
    // why                                             first                second                  same list                     child                         grandchild
    {"package, package: the same name",                makePackage(u"p"),   makePackage(u"p"),      {Redeclared, Redeclared},     {Stored, Stored},             {Stored, Stored}},
    {"package, package: another version",              makePackage(u"p@1"), makePackage(u"p@2"),    {Redeclared, Redeclared},     {Stored, Stored},             {Stored, Stored}},
    {"package, package: an alias that is the name",    makePackage(u"p"),   makePackage(u"q", u"p"),{Redeclared, Redeclared},     {Stored, Stored},             {Stored, Stored}},
    {"package, package: another alias",                makePackage(u"p"),   makePackage(u"p", u"q"),{Stored, Stored},             {Stored, Stored},             {Stored, Stored}},
    {"package, package: different names",              makePackage(u"p"),   makePackage(u"q"),      {Stored, Stored},             {Stored, Stored},             {Stored, Stored}},

    {"package, name: nothing in common",               makePackage(u"p"),   makeName(u"a.b"),       {Stored, Stored},             {Stored, Stored},             {Stored, Stored}},
    {"package, name: it introduces the name",          makePackage(u"p"),   makeName(u"a.p"),       {Precedence, Precedence},     {Stored, Stored},             {Stored, Stored}},
    {"package, name: it starts with the name",         makePackage(u"p"),   makeName(u"p.b"),       {Abbreviation, Abbreviation}, {Abbreviation, Abbreviation}, {Abbreviation, Abbreviation}},
    {"package, name: it does both",                    makePackage(u"p"),   makeName(u"p.p"),       {Precedence, Precedence},     {Abbreviation, Abbreviation}, {Abbreviation, Abbreviation}},
    {"package, name: it has the name in the middle",   makePackage(u"p"),   makeName(u"a.p.b"),     {Stored, Stored},             {Stored, Stored},             {Stored, Stored}},
    {"aliased package, name: it starts with the alias",makePackage(u"p", u"q"), makeName(u"q.b"),   {Abbreviation, Abbreviation}, {Abbreviation, Abbreviation}, {Abbreviation, Abbreviation}},
    {"aliased package, name: it starts with the package's own name", makePackage(u"p", u"q"), makeName(u"p.b"), {Stored, Stored}, {Stored, Stored},             {Stored, Stored}},

    {"package, wildcard: nothing in common",           makePackage(u"p"),   makeWildcard(u"a.*"),   {Stored, Stored},             {Stored, Stored},             {Stored, Stored}},
    {"package, wildcard: it starts with the name",     makePackage(u"p"),   makeWildcard(u"p.*"),   {Abbreviation, Abbreviation}, {Abbreviation, Abbreviation}, {Abbreviation, Abbreviation}},
    {"package, wildcard: it ends with the name",       makePackage(u"p"),   makeWildcard(u"a.p.*"), {Stored, Stored},             {Stored, Stored},             {Stored, Stored}},

    {"name, package: nothing in common",               makeName(u"a.b"),    makePackage(u"p"),      {Stored, Stored},             {Stored, Stored},             {Stored, Stored}},
    {"name, package: the introduced name",             makeName(u"a.b"),    makePackage(u"b"),      {Precedence, Precedence},     {Stored, Stored},             {Stored, Stored}},
    {"name, package: the root element",                makeName(u"a.b"),    makePackage(u"a"),      {Abbreviation, Stored},       {Stored, Stored},             {Stored, Stored}},
    {"name, package: both",                            makeName(u"a.a"),    makePackage(u"a"),      {Precedence, Precedence},     {Stored, Stored},             {Stored, Stored}},
    {"name, package: an alias that is the introduced name", makeName(u"a.b"), makePackage(u"p", u"b"), {Precedence, Precedence},  {Stored, Stored},             {Stored, Stored}},
    {"name, package: an alias that is the root element", makeName(u"a.b"),  makePackage(u"p", u"a"),{Abbreviation, Stored},       {Stored, Stored},             {Stored, Stored}},
    {"name, package: a version of the introduced name", makeName(u"a.b"),   makePackage(u"b@1.2"),  {Precedence, Precedence},     {Stored, Stored},             {Stored, Stored}},
    {"name, package: an alias of a version",           makeName(u"a.b"),    makePackage(u"p@^3", u"b"), {Precedence, Precedence}, {Stored, Stored},             {Stored, Stored}},

    {"name, name: the same raw argument",              makeName(u"a.b"),    makeName(u"a.b"),       {Skipped, Skipped},           {Stored, Stored},             {Stored, Stored}},
    {"name, name: the same ends",                      makeName(u"a.x.b"),  makeName(u"a.y.b"),     {Stored, Stored},             {Stored, Stored},             {Stored, Stored}},
    {"name, name: the same introduced name",           makeName(u"a.b"),    makeName(u"c.b"),       {Stored, Stored},             {Stored, Stored},             {Stored, Stored}},
    {"name, name: the same root element",              makeName(u"a.b"),    makeName(u"a.c"),       {Stored, Stored},             {Stored, Stored},             {Stored, Stored}},
    {"name, name: it starts with the introduced name", makeName(u"a.b"),    makeName(u"b.c"),       {Stored, Stored},             {Stored, Stored},             {Stored, Stored}},
    {"name, name: nothing in common",                  makeName(u"a.b"),    makeName(u"c.d"),       {Stored, Stored},             {Stored, Stored},             {Stored, Stored}},

    {"name, wildcard: the same raw argument",          nameWithRawArgument(u"a.*"), makeWildcard(u"a.*"), {Skipped, Skipped},     {Stored, Stored},             {Stored, Stored}},
    {"name, wildcard: the same root element",          makeName(u"a.b"),    makeWildcard(u"a.*"),   {Stored, Stored},             {Stored, Stored},             {Stored, Stored}},
    {"name, wildcard: it starts with the introduced name", makeName(u"a.b"), makeWildcard(u"b.*"),  {Stored, Stored},             {Stored, Stored},             {Stored, Stored}},
    {"name, wildcard: nothing in common",              makeName(u"a.b"),    makeWildcard(u"c.*"),   {Stored, Stored},             {Stored, Stored},             {Stored, Stored}},

    {"wildcard, package: the root element",            makeWildcard(u"a.*"), makePackage(u"a"),     {Abbreviation, Stored},       {Stored, Stored},             {Stored, Stored}},
    {"wildcard, package: the end of the prefix",       makeWildcard(u"a.b.*"), makePackage(u"b"),   {Stored, Stored},             {Stored, Stored},             {Stored, Stored}},
    {"wildcard, package: nothing in common",           makeWildcard(u"a.*"), makePackage(u"p"),     {Stored, Stored},             {Stored, Stored},             {Stored, Stored}},

    {"wildcard, name: the same raw argument",          makeWildcard(u"a.*"), nameWithRawArgument(u"a.*"), {Skipped, Skipped},     {Stored, Stored},             {Stored, Stored}},
    {"wildcard, name: the same root element",          makeWildcard(u"a.*"), makeName(u"a.b"),      {Stored, Stored},             {Stored, Stored},             {Stored, Stored}},
    {"wildcard, name: nothing in common",              makeWildcard(u"a.*"), makeName(u"c.d"),      {Stored, Stored},             {Stored, Stored},             {Stored, Stored}},

    {"wildcard, wildcard: the same raw argument",      makeWildcard(u"a.*"), makeWildcard(u"a.*"),  {Skipped, Skipped},           {Stored, Stored},             {Stored, Stored}},
    {"wildcard, wildcard: the same root element",      makeWildcard(u"a.*"), makeWildcard(u"a.b.*"),{Stored, Stored},             {Stored, Stored},             {Stored, Stored}},
    {"wildcard, wildcard: nothing in common",          makeWildcard(u"a.*"), makeWildcard(u"c.*"),  {Stored, Stored},             {Stored, Stored},             {Stored, Stored}},
};

// clang-format on

// The import as the user would write it; empty for a moved-from entry.
struct Written {
    std::u16string operator()(PackageImportEntry const& entry) const {
        return entry.getPackageSpecifier().ToString();
    }

    template <typename Dotted>
    std::u16string operator()(Dotted const& entry) const {
        return std::u16string(entry.getRawArgument());
    }
};

std::u16string introducedName(ImportEntry const& entry) {
    auto const* const package = std::get_if<PackageImportEntry>(&entry);
    return std::u16string(package != nullptr
                              ? package->getIntroducedName()
                              : std::get<FullyQualifiedImportEntry>(entry).getIntroducedName());
}

BaseMsgID expectedMessage(Verdict verdict, ImportEntry const& entry) {
    std::u16string const refused = std::visit(Written{}, entry);
    switch (verdict) {
    case Redeclared:
        return {{refused}, "KELDAR:lang", "PackageRedeclared"};
    case Precedence:
        return {{refused, introducedName(entry)}, "KELDAR:lang", "PrecedenceViolation"};
    default:
        return {{}, "KELDAR:lang", "InvalidPackageFunctionAbbreviation"};
    }
}

using Add = decltype(&IImportList::addStaticImportEntry);

// Adds the second entry of a row to \p list and compares the outcome with the verdict.
void expectVerdict(Row const& row, IImportList& list, Add add, Verdict verdict) {
    std::size_t const before = list.getNumberOfEntries(No);
    ImportEntry entry = row.second;
    auto const refusal = (list.*add)(std::move(entry));
    EXPECT_EQ(list.getNumberOfEntries(No), before + (verdict == Stored ? 1 : 0)) << row.why;
    std::u16string const left = std::visit(Written{}, entry);
    EXPECT_EQ(left, verdict == Stored ? u"" : std::visit(Written{}, row.second))
        << row.why << ": an entry is moved from exactly when it is stored";
    bool const isAccepted = verdict == Stored || verdict == Skipped;
    ASSERT_EQ(refusal.has_value(), !isAccepted) << row.why;
    if (refusal) {
        EXPECT_EQ(refusal->getMsgID(), expectedMessage(verdict, row.second)) << row.why;
    }
}

class ConflictMatrix : public testing::TestWithParam<Row> {
  protected:
    static std::shared_ptr<IImportList> listWithFirst() {
        std::shared_ptr<IImportList> list = createImportList(nullptr);
        EXPECT_FALSE(list->addDynamicImportEntry(ImportEntry(GetParam().first)));
        return list;
    }
};

TEST_P(ConflictMatrix, InTheSameList) {
    Row const& row = GetParam();
    expectVerdict(row, *listWithFirst(), &IImportList::addStaticImportEntry,
                  row.sameList.statically);
    expectVerdict(row, *listWithFirst(), &IImportList::addDynamicImportEntry,
                  row.sameList.dynamically);
}

TEST_P(ConflictMatrix, InAChild) {
    Row const& row = GetParam();
    auto const parent = listWithFirst();
    expectVerdict(row, *createImportList(parent), &IImportList::addStaticImportEntry,
                  row.child.statically);
    expectVerdict(row, *createImportList(parent), &IImportList::addDynamicImportEntry,
                  row.child.dynamically);
}

TEST_P(ConflictMatrix, InAGrandchild) {
    Row const& row = GetParam();
    std::shared_ptr<IImportList const> const parent = createImportList(listWithFirst());
    expectVerdict(row, *createImportList(parent), &IImportList::addStaticImportEntry,
                  row.grandchild.statically);
    expectVerdict(row, *createImportList(parent), &IImportList::addDynamicImportEntry,
                  row.grandchild.dynamically);
}

INSTANTIATE_TEST_SUITE_P(EveryCell, ConflictMatrix, testing::ValuesIn(conflictMatrix),
                         support::RowName{});

class Adding : public testing::Test {
  protected:
    std::shared_ptr<IImportList> parent = createImportList(nullptr);
    std::shared_ptr<IImportList> list = createImportList(parent);
};

TEST_F(Adding, StoresAllButTheIndexedNameOfASecondNameThatIntroducesTheSame) {
    ASSERT_FALSE(list->addStaticImportEntry(makeName(u"a.x")));
    ASSERT_FALSE(list->addStaticImportEntry(makeName(u"b.x")));
    EXPECT_EQ(list->findFullyQualifiedImportEntry(u"x", No)->rawArgument, u"a.x");
    EXPECT_EQ(list->getNumberOfEntries(No), 2U);
    EXPECT_TRUE(list->addStaticImportEntry(makePackage(u"b"))) << "its root element counts";
    ASSERT_FALSE(list->addStaticImportEntry(makeName(u"b.x")));
    EXPECT_EQ(list->getNumberOfEntries(No), 2U) << "its raw argument counts";
}

TEST_F(Adding, TellsManyNamesApart) {
    constexpr std::u16string_view letters = u"abcdefghijklmnopqrstuvwxyz";
    for (char16_t const first : letters) {
        for (char16_t const second : letters) {
            std::u16string const name{first, second};
            ASSERT_FALSE(list->addStaticImportEntry(makeName(u"root." + name)));
            ASSERT_FALSE(list->addStaticImportEntry(makeWildcard(u"root." + name + u".*")));
            ASSERT_FALSE(list->addStaticImportEntry(makePackage(name + u"_")));
        }
    }
    EXPECT_EQ(list->getNumberOfEntries(No), 3 * letters.size() * letters.size());
}

TEST_F(Adding, LetsANameOfThisListHideTheAncestorsPackageThatItWouldCollideWith) {
    ASSERT_FALSE(parent->addStaticImportEntry(makePackage(u"p")));
    ASSERT_FALSE(list->addStaticImportEntry(makeName(u"a.p")));
    EXPECT_FALSE(list->addStaticImportEntry(makeName(u"p.b")));
    EXPECT_FALSE(list->addStaticImportEntry(makeWildcard(u"p.*")));
    EXPECT_EQ(list->getNumberOfEntries(No), 3U);
}

TEST_F(Adding, SkipsARepeatedRawArgumentBeforeItLooksForConflicts) {
    ASSERT_FALSE(list->addStaticImportEntry(makeName(u"p.b")));
    ASSERT_FALSE(list->addDynamicImportEntry(makePackage(u"p")));
    EXPECT_FALSE(list->addStaticImportEntry(makeName(u"p.b")));
    EXPECT_TRUE(list->addStaticImportEntry(makeName(u"p.c")));
}

TEST_F(Adding, DoesNotTestAPackageAgainstTheRootElementsOfAncestors) {
    ASSERT_FALSE(parent->addStaticImportEntry(makeWildcard(u"p.*")));
    EXPECT_FALSE(list->addStaticImportEntry(makePackage(u"p")));
}

TEST_F(Adding, TestsTheNameBeforeTheRootElementOfAStaticPackage) {
    ASSERT_FALSE(list->addStaticImportEntry(makeWildcard(u"p.*")));
    ASSERT_FALSE(list->addDynamicImportEntry(makePackage(u"p")));
    auto const refusal = list->addStaticImportEntry(makePackage(u"p@1"));
    ASSERT_TRUE(refusal);
    EXPECT_EQ(refusal->getMsgID(), (BaseMsgID{{u"p@1"}, "KELDAR:lang", "PackageRedeclared"}));
}

TEST_F(Adding, LeavesNoTraceOfARefusedEntry) {
    ASSERT_FALSE(list->addStaticImportEntry(makePackage(u"p")));
    ASSERT_TRUE(list->addStaticImportEntry(makeName(u"a.b.p")));
    ASSERT_TRUE(list->addStaticImportEntry(makeWildcard(u"p.x.*")));
    EXPECT_FALSE(list->findFullyQualifiedImportEntry(u"p", No));
    EXPECT_FALSE(list->addStaticImportEntry(makePackage(u"a"))) << "`a` is no root element";
    EXPECT_EQ(list->getNumberOfEntries(No), 2U);
}

TEST_F(Adding, NeverChangesTheParent) {
    ASSERT_FALSE(list->addStaticImportEntry(makePackage(u"p")));
    ASSERT_FALSE(list->addStaticImportEntry(makeName(u"a.b")));
    EXPECT_TRUE(parent->isEmpty(No));
}

TEST_F(Adding, ThrowsForAnEntryWithoutAValue) {
    ImportEntry entry = makeName(u"a.b");
    EXPECT_THROW(entry.emplace<PackageImportEntry>(PackageNameImportArgument{u"1 no name"}),
                 std::exception);
    ASSERT_TRUE(entry.valueless_by_exception());
    EXPECT_THROW(list->addStaticImportEntry(std::move(entry)), std::bad_variant_access);
    EXPECT_THROW(list->addDynamicImportEntry(std::move(entry)), std::bad_variant_access);
    EXPECT_TRUE(list->isEmpty(No));
}

} // namespace
} // namespace lf::import
