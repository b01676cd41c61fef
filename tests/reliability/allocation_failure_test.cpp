// SPDX-License-Identifier: BSL-1.0

/// \file
/// Every allocation of every public operation fails, either alone or with all later ones:
/// std::bad_alloc is thrown, nothing leaks, and no existing object changes.

#include <support/allocations.hpp>
#include <support/foreign_import_list.hpp>
#include <support/make_entries.hpp>
#include <support/row_name.hpp>

#include <import/import.hpp>

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <iostream>
#include <memory>
#include <new>
#include <optional>
#include <ostream>
#include <sstream>
#include <streambuf>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

namespace lf::import {
namespace {

using Oxtavel::KeldarComponents::GetComponentVersionRangeFactory;
using Oxtavel::KeldarComponents::PackageSpecifier;
using resource_core::BaseMsgID;
using resource_core::GenericMsgIDHolder;
using support::FailingAllocations;
using support::makeName;
using support::makePackage;
using support::makeWildcard;
using support::Shortage;
using enum IImportList::CheckAncestorList;
using namespace std::string_literals;

using Texts = std::vector<std::u16string>;

// Printed at the end of the program.

struct Figure {
    std::size_t operations = 0;
    std::size_t allocations = 0;
};

Figure figure;

class FigurePrinter final : public testing::Environment {
  public:
    void TearDown() override {
        std::cout << "Failed " << figure.allocations << " allocations of " << figure.operations
                  << " operations, each alone and with all that follow.\n";
    }
};

[[maybe_unused]] testing::Environment* const figurePrinter =
    testing::AddGlobalTestEnvironment(new FigurePrinter);

// The observable state of values, field by field in the order of declaration.

std::u16string widened(std::string const& text) {
    return {text.begin(), text.end()};
}

std::u16string textOf(GenericMsgIDHolder const& holder) {
    if (holder.isEmpty()) {
        return u"no message";
    }
    BaseMsgID const& message = holder.getMsgID();
    std::u16string text = widened(message.catalogue) + u' ' + widened(message.key);
    for (resource_core::MsgArgument const& argument : message.arguments) {
        text += u' ' + std::get<std::u16string>(argument);
    }
    return text;
}

std::u16string textOf(std::optional<GenericMsgIDHolder> const& holder) {
    return holder ? textOf(*holder) : u"none";
}

Texts fieldsOf(PackageSpecifier const& specifier) {
    return {specifier.Name(), specifier.ToString().substr(specifier.Name().size())};
}

Texts fieldsOf(PackageNameImportArgument const& argument) {
    return {argument.name};
}

Texts fieldsOf(VersionedPackageImportArgument const& argument) {
    return fieldsOf(argument.specifier);
}

Texts fieldsOf(FullyQualifiedImportArgument const& argument) {
    return {argument.rootElement, argument.introducedName, argument.rawArgument,
            textOf(argument.warning)};
}

Texts fieldsOf(WildcardImportArgument const& argument) {
    return {argument.rootElement, argument.rawArgument, textOf(argument.warning)};
}

Texts fieldsOf(AsClauseImportArgument const&) {
    return {};
}

Texts fieldsOf(IgnoredArgument const& argument) {
    return {argument.text};
}

Texts fieldsOf(InvalidImportArgument const& argument) {
    return {textOf(argument.msgHolder)};
}

Texts fieldsOf(PackageImportEntry const& entry) {
    Texts fields = fieldsOf(entry.getPackageSpecifier());
    fields.emplace_back(entry.getIntroducedName());
    return fields;
}

Texts fieldsOf(FullyQualifiedImportEntry const& entry) {
    return {std::u16string(entry.getIntroducedName()), std::u16string(entry.getRawArgument()),
            std::u16string(entry.getRootElement())};
}

Texts fieldsOf(WildcardImportEntry const& entry) {
    return {std::u16string(entry.getRawArgument()), std::u16string(entry.getRootElement())};
}

Texts fieldsOf(InvalidImportEntry const& entry) {
    return {textOf(entry.getMsgHolder())};
}

Texts fieldsOf(BaseMsgID const& message) {
    return {textOf(GenericMsgIDHolder(message))};
}

void append(Texts const& more, Texts& texts) {
    texts.insert(texts.end(), more.begin(), more.end());
}

template <typename... Alternatives>
Texts fieldsOf(std::variant<Alternatives...> const& value) {
    return std::visit([](auto const& alternative) { return fieldsOf(alternative); }, value);
}

template <typename Value>
Texts fieldsOf(std::optional<Value> const& value) {
    return value ? fieldsOf(*value) : Texts{u"none"};
}

Texts fieldsOf(std::vector<ParsedImportEntry> const& entries) {
    Texts texts;
    for (ParsedImportEntry const& entry : entries) {
        append(std::visit([](auto const& pair) { return fieldsOf(pair.first); }, entry), texts);
    }
    return texts;
}

// Failing every allocation.

/// The state of an operation that has failed.
enum class AfterFailure { CanBeRepeated, IsOver };

/// An operation on its own objects.
///
/// \tparam Prepare creates the objects.
/// \tparam Run     performs the operation on them.
/// \tparam Observe returns their observable state as Texts.
template <typename Prepare, typename Run, typename Observe>
struct Operation {
    Prepare prepare;
    Run run;
    Observe observe;
    AfterFailure afterFailure = AfterFailure::CanBeRepeated;
};

template <typename Prepare, typename Run, typename Observe, typename... More>
Operation(Prepare, Run, Observe, More...) -> Operation<Prepare, Run, Observe>;

/// \returns whether an allocation failed; expects std::bad_alloc exactly then.
template <typename Action>
bool runsOutOfMemory(std::size_t allowed, Shortage shortage, Action const& action) {
    bool cameOut = false;
    bool failed = false;
    {
        FailingAllocations const failing(allowed, shortage);
        try {
            action();
        } catch (std::bad_alloc const&) {
            cameOut = true;
        }
        failed = failing.hasFailed();
    }
    EXPECT_EQ(cameOut, failed) << "std::bad_alloc is thrown exactly if an allocation failed";
    return failed;
}

/// Makes an operation fail at one allocation, if it gets that far.
///
/// \param after the observable state after the operation finally succeeds.
/// \returns whether it got that far.
template <typename AnOperation>
bool failsAt(std::size_t allowed, Shortage shortage, AnOperation const& operation,
             Texts const& after) {
    std::size_t const live = support::countLiveAllocations();
    bool failed = false;
    {
        auto objects = operation.prepare();
        Texts const before = operation.observe(objects);
        failed = runsOutOfMemory(allowed, shortage, [&] { operation.run(objects); });
        if (failed) {
            EXPECT_EQ(operation.observe(objects), before) << "existing objects are unchanged";
        }
        if (failed && operation.afterFailure == AfterFailure::CanBeRepeated) {
            operation.run(objects);
        }
        if (!failed || operation.afterFailure == AfterFailure::CanBeRepeated) {
            EXPECT_EQ(operation.observe(objects), after) << "with memory the operation succeeds";
        }
    }
    EXPECT_EQ(support::countLiveAllocations(), live) << "nothing leaks";
    return failed;
}

/// The observable state after the operation succeeds.
template <typename AnOperation>
Texts undisturbed(AnOperation const& operation) {
    auto objects = operation.prepare();
    operation.run(objects);
    return operation.observe(objects);
}

/// Fails every allocation of \p operation.
///
/// \returns the number of allocations.
template <typename AnOperation>
std::size_t failEveryAllocation(AnOperation const& operation) {
    Texts const after = undisturbed(operation);
    std::array<std::size_t, 2> counts{};
    for (Shortage const shortage : {Shortage::Passing, Shortage::Lasting}) {
        std::size_t& count = counts.at(static_cast<std::size_t>(shortage));
        while (!testing::Test::HasFailure() && failsAt(count, shortage, operation, after)) {
            ++count;
            SCOPED_TRACE(testing::Message() << count << " allocations allowed");
        }
    }
    EXPECT_EQ(counts.front(), counts.back());
    ++figure.operations;
    figure.allocations += counts.front();
    return counts.front();
}

/// For operations that must succeed without any memory.
template <typename Action>
void expectNoAllocation(Action const& action) {
    std::size_t const before = support::countAllocations();
    action();
    EXPECT_EQ(support::countAllocations(), before);
    ++figure.operations;
}

// Records and entries. Their texts do not fit into a small-string buffer.

GenericMsgIDHolder message(std::u16string const& argument) {
    return GenericMsgIDHolder(BaseMsgID{{argument, u"another argument of the message"},
                                        "SomeCatalogue:withALongName",
                                        "AKeyWithALongName"});
}

PackageSpecifier specifier(std::u16string const& text) {
    return {text, GetComponentVersionRangeFactory()};
}

/// Two values of a type, different in every field.
template <typename Value>
struct Samples;

template <>
struct Samples<PackageNameImportArgument> {
    PackageNameImportArgument one{u"thePackageName"};
    PackageNameImportArgument other{u"another"};
};

template <>
struct Samples<VersionedPackageImportArgument> {
    VersionedPackageImportArgument one{
        specifier(u"thePackageName@>=1000000000.2,<3-prerelease+thebuild")};
    VersionedPackageImportArgument other{specifier(u"another")};
};

template <>
struct Samples<FullyQualifiedImportArgument> {
    FullyQualifiedImportArgument one{u"theRootElement", u"theIntroducedName",
                                     u"theRootElement.theIntroducedName", message(u"the warning")};
    FullyQualifiedImportArgument other{u"a", u"b", u"a.b", message(u"another warning")};
};

template <>
struct Samples<WildcardImportArgument> {
    WildcardImportArgument one{u"theRootElement", u"theRootElement.*", message(u"the warning")};
    WildcardImportArgument other{u"a", u"a.*", std::nullopt};
};

template <>
struct Samples<AsClauseImportArgument> {
    AsClauseImportArgument one;
    AsClauseImportArgument other;
};

template <>
struct Samples<IgnoredArgument> {
    IgnoredArgument one{u"the ignored argument"};
    IgnoredArgument other{u"another"};
};

template <>
struct Samples<InvalidImportArgument> {
    InvalidImportArgument one{message(u"the error")};
    InvalidImportArgument other{message(u"another error")};
};

template <>
struct Samples<PackageImportEntry> {
    PackageImportEntry one = makePackage(u"thePackageName@^1.2,<1.20", u"theIntroducedName");
    PackageImportEntry other = makePackage(u"another", u"b");
};

template <>
struct Samples<FullyQualifiedImportEntry> {
    FullyQualifiedImportEntry one = makeName(u"theRootElement.theIntroducedName");
    FullyQualifiedImportEntry other = makeName(u"a.b");
};

template <>
struct Samples<WildcardImportEntry> {
    WildcardImportEntry one = makeWildcard(u"theRootElement.*");
    WildcardImportEntry other = makeWildcard(u"a.*");
};

template <>
struct Samples<InvalidImportEntry> {
    InvalidImportEntry one{InvalidImportArgument{message(u"the error")}};
    InvalidImportEntry other{InvalidImportArgument{message(u"another error")}};
};

template <typename Value>
class Values : public testing::Test {};

using ValueTypes =
    testing::Types<PackageNameImportArgument, VersionedPackageImportArgument,
                   FullyQualifiedImportArgument, WildcardImportArgument, AsClauseImportArgument,
                   IgnoredArgument, InvalidImportArgument, PackageImportEntry,
                   FullyQualifiedImportEntry, WildcardImportEntry, InvalidImportEntry>;
TYPED_TEST_SUITE(Values, ValueTypes);

/// A value and an operation on it.
template <typename Value, typename Result>
struct Making {
    Value source;
    std::optional<Result> result;

    static Texts observe(Making const& objects) {
        Texts texts = fieldsOf(objects.source);
        append(fieldsOf(objects.result), texts);
        return texts;
    }
};

TYPED_TEST(Values, AreCopiedWholeOrNotAtAll) {
    using Objects = Making<TypeParam, TypeParam>;
    std::size_t const allocations = failEveryAllocation(
        Operation{[] {
                      return Objects{Samples<TypeParam>().one, {}};
                  },
                  [](Objects& objects) { objects.result.emplace(std::as_const(objects.source)); },
                  Objects::observe});
    EXPECT_EQ(allocations == 0, std::is_empty_v<TypeParam>);
}

TYPED_TEST(Values, NeedNoMemoryToMove) {
    Samples<TypeParam> samples;
    std::optional<TypeParam> target;
    expectNoAllocation([&] { target.emplace(std::move(samples.one)); });
    expectNoAllocation([&] { samples.other = std::move(*target); });
    EXPECT_EQ(fieldsOf(samples.other), fieldsOf(Samples<TypeParam>().one));
}

/// Whether the first \p fields equal those of \p source and the rest those of \p target, as after a
/// field-by-field assignment that ended early.
::testing::AssertionResult areAssignedUpToAField(Texts const& fields, Texts const& source,
                                                 Texts const& target) {
    std::size_t assigned = 0;
    while (assigned < fields.size() && fields[assigned] == source[assigned]) {
        ++assigned;
    }
    for (std::size_t field = assigned; field < fields.size(); ++field) {
        if (fields[field] != target[field]) {
            return ::testing::AssertionFailure() << "field " << field << " is neither";
        }
    }
    return ::testing::AssertionSuccess();
}

// Copy assignment copies field by field, as documented. If memory runs out, the target keeps some
// of its old texts: a value that can be read, assigned to and destroyed, but a different one.
// Values with a single field, which are the rejected and the plain ones, do not change.
TYPED_TEST(Values, AreAssignedFieldByField) {
    Texts const source = fieldsOf(Samples<TypeParam>().one);
    Texts const target = fieldsOf(Samples<TypeParam>().other);
    std::size_t allocations = 0;
    for (Shortage const shortage : {Shortage::Passing, Shortage::Lasting}) {
        bool failed = true;
        for (allocations = 0; failed && !this->HasFailure(); allocations += failed ? 1 : 0) {
            std::size_t const live = support::countLiveAllocations();
            {
                Samples<TypeParam> values;
                failed = runsOutOfMemory(allocations, shortage,
                                         [&] { values.other = std::as_const(values.one); });
                EXPECT_EQ(fieldsOf(values.one), source);
                EXPECT_TRUE(areAssignedUpToAField(fieldsOf(values.other), source, target));
                if (failed && target.size() == 1) {
                    EXPECT_EQ(fieldsOf(values.other), target);
                }
                values.other = std::as_const(values.one);
                EXPECT_EQ(fieldsOf(values.other), source);
            }
            EXPECT_EQ(support::countLiveAllocations(), live) << "nothing leaks";
        }
    }
    EXPECT_EQ(allocations == 0, std::is_empty_v<TypeParam>);
    ++figure.operations;
    figure.allocations += allocations;
}

/// If they cannot allocate, constructors do not change their argument.
template <typename Entry, typename Argument>
std::size_t failConstructor(Argument const& argument) {
    using Objects = Making<Argument, Entry>;
    return failEveryAllocation(
        Operation{[&] {
                      return Objects{argument, {}};
                  },
                  [](Objects& objects) { objects.result.emplace(std::move(objects.source)); },
                  Objects::observe});
}

TEST(Constructors, LeaveTheirArgumentsWholeWhenTheyFail) {
    EXPECT_GT(failConstructor<PackageImportEntry>(Samples<PackageNameImportArgument>().one), 1U);
    EXPECT_GT(failConstructor<PackageImportEntry>(Samples<VersionedPackageImportArgument>().one),
              0U);
    EXPECT_GT(failConstructor<InvalidImportEntry>(message(u"the error").getMsgID()), 3U);
}

TEST(Constructors, NeedNoMemoryToTakeOverWhatTheirArgumentsHold) {
    Samples<FullyQualifiedImportArgument> names;
    Samples<WildcardImportArgument> wildcards;
    Samples<InvalidImportArgument> errors;
    Samples<PackageImportEntry> packages;
    Samples<PackageNameImportArgument> aliases;
    expectNoAllocation([&] { FullyQualifiedImportEntry const entry(std::move(names.one)); });
    expectNoAllocation([&] { WildcardImportEntry const entry(std::move(wildcards.one)); });
    expectNoAllocation([&] { InvalidImportEntry const entry(std::move(errors.one)); });
    expectNoAllocation([&] {
        PackageImportEntry const entry(std::move(packages.one), std::move(aliases.one));
        EXPECT_EQ(entry.getIntroducedName(), u"thePackageName");
    });
}

TEST(Constructors, NeedNoMemoryForEmptyRecords) {
    expectNoAllocation([] {
        PackageNameImportArgument const name;
        FullyQualifiedImportArgument const fullyQualified;
        WildcardImportArgument const wildcard;
        [[maybe_unused]] AsClauseImportArgument const asClause;
        IgnoredArgument const ignored;
        InvalidImportArgument const invalid;
    });
}

TEST(Accessors, NeedNoMemory) {
    Samples<FullyQualifiedImportEntry> const names;
    Samples<WildcardImportEntry> const wildcards;
    Samples<InvalidImportEntry> const errors;
    Samples<PackageImportEntry> const packages;
    expectNoAllocation([&] {
        EXPECT_FALSE(names.one.getIntroducedName().empty() || names.one.getRawArgument().empty() ||
                     names.one.getRootElement().empty());
        EXPECT_FALSE(wildcards.one.getRawArgument().empty() ||
                     wildcards.one.getRootElement().empty());
        EXPECT_FALSE(packages.one.getIntroducedName().empty());
        EXPECT_FALSE(packages.one.getPackageSpecifier().Name().empty());
        EXPECT_FALSE(errors.one.getMsgHolder().isEmpty());
        EXPECT_FALSE(errors.one.isWarning());
        EXPECT_TRUE(errors.one.holdsMsgWithKey("AKeyWithALongName"));
    });
}

// Parsers.

struct CommandRow {
    Texts command;
    std::string why;
    Behavior behavior = Behavior::WithPackageImports;
};

class Commands : public testing::TestWithParam<CommandRow> {};

/// One command; its arguments are the nodes 0, 1, 2, ...
class CommandTree final : public lf::astapi::ISyntaxTree {
  public:
    explicit CommandTree(Texts itsTexts) : texts(std::move(itsTexts)) {}

    std::size_t getNumberOfArguments(lf::astapi::NodeHandle) const override { return texts.size(); }

    lf::astapi::ArgumentNode getArgument(lf::astapi::NodeHandle, std::size_t index) const override {
        return {this, index};
    }

    std::u16string getText(lf::astapi::NodeHandle argument) const override {
        return texts.at(static_cast<std::size_t>(argument));
    }

    Texts const& argumentTexts() const { return texts; }

  private:
    Texts texts;
};

struct Parsing {
    CommandTree tree;
    std::unique_ptr<IImportArgumentParser> parser{};
    std::vector<ParsedImportEntry>* result = nullptr;

    static Texts observe(Parsing const& objects) {
        Texts texts = objects.tree.argumentTexts();
        if (objects.result != nullptr) {
            append(fieldsOf(*objects.result), texts);
        }
        return texts;
    }
};

auto prepareCommand(Texts const& command) {
    return [&command] { return Parsing{CommandTree(command)}; };
}

TEST_P(Commands, GetAParserOrNone) {
    CommandRow const& row = GetParam();
    // The factory classifies the arguments; parse(), which reads them, can be called only once.
    auto const observe = [](Parsing& objects) {
        objects.result = objects.parser == nullptr ? nullptr : &objects.parser->parse();
        return Parsing::observe(objects);
    };
    EXPECT_GT(failEveryAllocation(Operation{prepareCommand(row.command),
                                            [&](Parsing& objects) {
                                                objects.parser = createImportArgumentParser(
                                                    objects.tree.argumentTexts(), row.behavior);
                                            },
                                            observe}),
              0U);
    EXPECT_GT(failEveryAllocation(Operation{
                  prepareCommand(row.command),
                  [&](Parsing& objects) {
                      objects.parser = createImportArgumentParser({&objects.tree, 0}, row.behavior);
                  },
                  observe}),
              0U);
}

// A parser that ran out of memory has no result and can only be destroyed.
TEST_P(Commands, AreParsedOrNot) {
    CommandRow const& row = GetParam();
    std::size_t const allocations = failEveryAllocation(Operation{
        [&] {
            Parsing objects = prepareCommand(row.command)();
            objects.parser = createImportArgumentParser(objects.tree.argumentTexts(), row.behavior);
            return objects;
        },
        [](Parsing& objects) { objects.result = &objects.parser->parse(); }, Parsing::observe,
        AfterFailure::IsOver});
    EXPECT_GT(allocations, 0U);
}

constexpr auto legacy = Behavior::WithoutPackageImports;

// clang-format off
INSTANTIATE_TEST_SUITE_P(OfEveryKind, Commands, testing::ValuesIn(std::vector<CommandRow>{
    {{u"rootElement.introducedName", u"", u"rootElement.middle.*"}, "names"},
    {{u"packageName", u"", u"otherPackage@>=1.2.3-prerelease,<2"}, "packages"},
    {{u"packageName", u"as", u"introducedName"}, "an alias"},
    {{u"packageName@^1.2", u"as", u"introducedName"}, "an alias of a version"},
    {{u"packageName", u"as", u"a.introducedName"}, "a name instead of an alias"},
    {{u"packageName", u"as", u"rootElement.*"}, "a wildcard instead of an alias"},
    {{u"packageName", u"as", u"otherPackage@1.2"}, "a version instead of an alias"},
    {{u"packageName", u"as", u"as"}, "a second as instead of an alias"},
    {{u"packageName", u"as"}, "no alias"},
    {{u"packageName", u"as", u"introducedName", u"otherName"}, "two aliases"},
    {{u"packageName", u"as", u"introducedName", u"as"}, "a second as after an alias"},
    {{u"packageName", u"otherPackage", u"as", u"introducedName"}, "two packages for an alias"},
    {{u"as", u"introducedName"}, "no package for an alias"},
    {{u"rootElement.introducedName", u"packageName"}, "a package after a name"},
    {{u"packageName", u"rootElement.introducedName"}, "a name after a package"},
    {{u"rootElement.introducedName", u"as", u"introducedName"}, "an alias of a name"},
    {{u"rootElement.introducedName", u"1rootElement.*"}, "a rejected name"},
    {{u"rootElement.function"}, "a keyword as name"},
    {{u"function"}, "a keyword as package"},
    {{u"1packageName"}, "a rejected word"},
    {{u"packageName@no version"}, "a refused specifier"},
    {{u"packageName"}, "the feature switch", Behavior::FollowFeatureSwitch},
    {{u"rootElement.introducedName", u"", u"rootElement.middle.*"}, "names without package imports", legacy},
    {{u"rootElement.function", u"1rootElement.*"}, "warnings", legacy},
    {{u".*"}, "nothing to import", legacy},
    {{u"packageName"}, "no dot", legacy},
}), support::RowName{});

// clang-format on

// Lists.

struct Scopes {
    std::shared_ptr<IImportList> outermost;
    std::shared_ptr<IImportList> parent;
    std::shared_ptr<IImportList> list;
    std::optional<ImportEntry> entry{};
    std::optional<GenericMsgIDHolder> answer{};
    std::unique_ptr<IImportList> newList{};
    std::ptrdiff_t count = 0;
};

template <typename Entry>
void appendEntries(ranges::any_view<Entry const&, ranges::category::forward> view, Texts& texts) {
    for (Entry const& entry : view) {
        append(fieldsOf(entry), texts);
    }
}

/// The answers to all questions that do not change a list.
Texts answersOf(IImportList const& list) {
    Texts texts;
    for (auto const check : {No, Yes}) {
        appendEntries(list.getFullyQualifiedImportEntries(check), texts);
        appendEntries(list.getWildcardImportEntries(check), texts);
        appendEntries(list.getPackageImportEntries(check), texts);
        texts.push_back(widened(std::to_string(list.getNumberOfEntries(check))));
        texts.emplace_back(list.isEmpty(check) ? u"empty" : u"not empty");
        for (std::u16string_view const name :
             {u"rootElement", u"introducedName", u"packageName", u"newIntroducedName",
              u"newPackageName", u"newRootElement", u"outerPackageName"}) {
            auto const package = list.findPackageImportEntry(name, check);
            append(package ? fieldsOf(package->entry) : Texts{u"no package"}, texts);
            auto const found = list.findFullyQualifiedImportEntry(name, check);
            texts.emplace_back(found ? found->rawArgument : u"no name");
        }
    }
    return texts;
}

/// The answers of a copy of \p list after adding other entries, which take the place of entries
/// whose addition failed, and again after adding entries like the failed ones.
Texts answersAfterOthers(IImportList const& list) {
    auto const copy = list.clone();
    Texts texts;
    for (std::u16string const& name : {u"another"s, u"new"s}) {
        copy->addStaticImportEntry(makePackage(name + u"PackageName", name + u"IntroducedName"));
        copy->addStaticImportEntry(makeName(
            std::u16string(name).append(u"RootElement.").append(name).append(u"PackageName")));
        copy->addStaticImportEntry(makeWildcard(name + u"RootElement.*"));
        append(answersOf(*copy), texts);
    }
    return texts;
}

/// A list also stores data about its entries, which affects later additions, so a copy is tested.
Texts textsOf(IImportList const& list) {
    Texts texts = answersOf(list);
    for (ImportEntry const& probe :
         {ImportEntry(makePackage(u"newRootElement")), ImportEntry(makePackage(u"rootElement")),
          ImportEntry(makePackage(u"newIntroducedName")),
          ImportEntry(makePackage(u"newPackageName")),
          ImportEntry(makeName(u"newRootElement.newIntroducedName")),
          ImportEntry(makeWildcard(u"newRootElement.*"))}) {
        auto const copy = list.clone();
        texts.push_back(textOf(copy->addStaticImportEntry(ImportEntry(probe))));
        texts.push_back(widened(std::to_string(copy->getNumberOfEntries(No))));
    }
    append(answersAfterOthers(list), texts);
    return texts;
}

Texts observeScopes(Scopes const& scopes) {
    Texts texts;
    for (IImportList const* const list :
         std::array<IImportList const*, 4>{scopes.outermost.get(), scopes.parent.get(),
                                           scopes.list.get(), scopes.newList.get()}) {
        append(list == nullptr ? Texts{u"none"} : textsOf(*list), texts);
    }
    append(fieldsOf(scopes.entry), texts);
    texts.push_back(textOf(scopes.answer));
    for (auto const shares : {scopes.outermost.use_count(), scopes.parent.use_count(),
                              scopes.list.use_count(), scopes.count}) {
        texts.push_back(widened(std::to_string(shares)));
    }
    return texts;
}

/// An outermost list, its child and its grandchild, each with an entry of each kind.
Scopes makeScopes(std::shared_ptr<IImportList> outermost = createImportList(nullptr)) {
    Scopes scopes{std::move(outermost), nullptr, nullptr};
    scopes.parent = createImportList(scopes.outermost);
    scopes.list = createImportList(scopes.parent);
    scopes.outermost->addStaticImportEntry(makePackage(u"outerPackageName@^1.2"));
    for (auto const& list : {scopes.outermost, scopes.parent, scopes.list}) {
        list->addStaticImportEntry(makeName(u"rootElement.introducedName"));
        list->addStaticImportEntry(makeWildcard(u"rootElement.*"));
        list->addStaticImportEntry(makePackage(u"packageName@^1.2", u"thePackageName"));
    }
    return scopes;
}

/// The same, with a foreign list as the outermost one.
Scopes makeScopesInAForeignOne() {
    return makeScopes(
        std::make_shared<support::ForeignImportList>(nullptr, model::ForeignManners{}));
}

/// Makes both ways of adding \p entry fail, on a list that also has \p numberOfMore entries of each
/// kind.
void failAdding(ImportEntry const& entry, int numberOfMore = 0) {
    for (auto const add :
         {&IImportList::addStaticImportEntry, &IImportList::addDynamicImportEntry}) {
        failEveryAllocation(Operation{
            [&] {
                Scopes scopes = makeScopes();
                for (int number = 0; number < numberOfMore; ++number) {
                    std::u16string const name = u"numberedName" + widened(std::to_string(number));
                    scopes.list->addStaticImportEntry(
                        makeName(std::u16string(name).append(u".n").append(name)));
                    scopes.list->addStaticImportEntry(makePackage(u"p" + name));
                    if (number < 5) { // so that the set of both kinds grows at a different size
                        scopes.list->addStaticImportEntry(makeWildcard(name + u".*"));
                    }
                }
                scopes.entry = entry;
                return scopes;
            },
            [add](Scopes& scopes) {
                scopes.answer = (*scopes.list.*add)(std::move(*scopes.entry));
            },
            observeScopes});
    }
}

// Sizes around those at which the containers of a list reallocate.
TEST(Adding, StoresAnEntryEverywhereOrNowhere) {
    for (int const numberOfMore : {0, 1, 2, 3, 5, 6, 7, 10, 11, 12, 13, 26, 27, 28}) {
        SCOPED_TRACE(numberOfMore);
        failAdding(makeName(u"newRootElement.newIntroducedName"), numberOfMore);
        failAdding(makeWildcard(u"newRootElement.*"), numberOfMore);
        failAdding(makePackage(u"newPackageName@1.2", u"newIntroducedName"), numberOfMore);
        if (HasFailure()) {
            return;
        }
    }
}

TEST(Adding, StoresTheFirstEntryEverywhereOrNowhere) {
    for (ImportEntry const& entry : {ImportEntry(makeName(u"newRootElement.newIntroducedName")),
                                     ImportEntry(makeWildcard(u"newRootElement.*")),
                                     ImportEntry(makePackage(u"newPackageName"))}) {
        failEveryAllocation(Operation{[&] {
                                          Scopes scopes;
                                          scopes.list = createImportList(nullptr);
                                          scopes.entry = entry;
                                          return scopes;
                                      },
                                      [](Scopes& scopes) {
                                          scopes.answer = scopes.list->addStaticImportEntry(
                                              std::move(*scopes.entry));
                                      },
                                      observeScopes});
    }
}

TEST(Adding, SkipsARepeatedEntryOrFails) {
    failAdding(makeName(u"rootElement.introducedName"));
    failAdding(makeWildcard(u"rootElement.*"));
}

TEST(Adding, RefusesAnEntryOrFails) {
    failAdding(makePackage(u"newPackageName", u"thePackageName")); // declared already
    failAdding(makePackage(u"newPackageName", u"introducedName")); // a name introduces that
    failAdding(makePackage(u"newPackageName", u"rootElement"));    // refused statically only
    failAdding(makeName(u"newRootElement.thePackageName"));        // a package introduces that
    failAdding(makeName(u"thePackageName.newIntroducedName"));     // starts with a package
    failAdding(makeWildcard(u"outerPackageName.*"));               // starts with an outer package
}

TEST(Lists, AreCreatedOrNot) {
    auto const create = [](Scopes& scopes) { scopes.newList = createImportList(scopes.list); };
    EXPECT_GT(failEveryAllocation(Operation{[] { return makeScopes(); }, create, observeScopes}),
              0U);
    EXPECT_GT(failEveryAllocation(Operation{makeScopesInAForeignOne, create, observeScopes}), 0U);
}

TEST(Lists, AreClonedWholeOrNotAtAll) {
    auto const clone = [](Scopes& scopes) { scopes.newList = scopes.list->clone(); };
    EXPECT_GT(failEveryAllocation(Operation{[] { return makeScopes(); }, clone, observeScopes}),
              10U);
    EXPECT_GT(failEveryAllocation(Operation{makeScopesInAForeignOne, clone, observeScopes}), 10U);
}

/// Gets a view of all entries of one kind and iterates over it twice.
template <typename Entry>
void failGetter(ranges::any_view<Entry const&, ranges::category::forward> (IImportList::*getter)(
    IImportList::CheckAncestorList) const) {
    for (auto const prepare :
         {+[] { return makeScopes(); }, +[] { return makeScopesInAForeignOne(); }}) {
        for (auto const check : {No, Yes}) {
            std::size_t const allocations =
                failEveryAllocation(Operation{prepare,
                                              [=](Scopes& scopes) {
                                                  auto view = (*scopes.list.*getter)(check);
                                                  std::ptrdiff_t count = 0;
                                                  auto const end = view.end();
                                                  for (auto at = view.begin(); at != end; at++) {
                                                      ++count;
                                                  }
                                                  count += ranges::distance(view);
                                                  scopes.count = count;
                                              },
                                              observeScopes});
            EXPECT_GT(allocations, 0U) << "type erasure allocates";
        }
    }
}

TEST(Lists, AreEnumeratedOrNot) {
    failGetter(&IImportList::getFullyQualifiedImportEntries);
    failGetter(&IImportList::getWildcardImportEntries);
    failGetter(&IImportList::getPackageImportEntries);
}

TEST(Lists, AnswerEveryOtherQuestionWithoutMemory) {
    for (Scopes const& scopes : std::array{makeScopes(), makeScopesInAForeignOne()}) {
        for (auto const check : {No, Yes}) {
            for (std::u16string_view const name :
                 {u"thePackageName", u"introducedName", u"outerPackageName", u"missingName"}) {
                expectNoAllocation([&] { scopes.list->findPackageImportEntry(name, check); });
                expectNoAllocation(
                    [&] { scopes.list->findFullyQualifiedImportEntry(name, check); });
            }
            expectNoAllocation([&] { scopes.list->isEmpty(check); });
            expectNoAllocation([&] { scopes.list->getNumberOfEntries(check); });
        }
        expectNoAllocation([&] { EXPECT_EQ(scopes.list->getParent(), scopes.parent); });
    }
}

// Printing.

template <typename Char>
struct Printing {
    ImportEntry entry;
    std::basic_stringbuf<Char> buffer{};
    std::basic_ostream<Char> stream{&buffer};

    void print() {
        std::visit([this](auto const& itsEntry) { stream << itsEntry; }, entry);
    }

    static Texts observe(Printing const& objects) { return fieldsOf(objects.entry); }
};

/// An exception from converting the text is passed on. If writing fails, the stream catches the
/// exception, sets its bad bit, and rethrows only if asked to.
template <typename Char>
void failPrinting(ImportEntry const& entry) {
    using Objects = Printing<Char>;
    std::size_t const allocations =
        failEveryAllocation(Operation{[&] { return Objects{entry}; },
                                      [](Objects& objects) {
                                          objects.print();
                                          if (objects.stream.bad()) {
                                              throw std::bad_alloc();
                                          }
                                          EXPECT_TRUE(objects.stream.good());
                                      },
                                      Objects::observe, AfterFailure::IsOver});
    EXPECT_GT(allocations, 0U);
    failEveryAllocation(Operation{[&] { return Objects{entry}; },
                                  [](Objects& objects) {
                                      objects.stream.exceptions(std::ios_base::badbit);
                                      objects.print();
                                  },
                                  Objects::observe, AfterFailure::IsOver});
}

TEST(Printing, MakesTheStreamBadOrFails) {
    for (ImportEntry const& entry : {ImportEntry(makeName(u"rootElement.introducedName.\u00FC")),
                                     ImportEntry(makeWildcard(u"rootElement.\u00FC.*")),
                                     ImportEntry(makePackage(u"packageName@^1.2,<1.20")),
                                     ImportEntry(makePackage(u"packageName", u"introducedName"))}) {
        failPrinting<char>(entry);
        failPrinting<char16_t>(entry);
    }
}

} // namespace
} // namespace lf::import
