// SPDX-License-Identifier: BSL-1.0

#include <import/parser/classification.hpp>

#include <support/row_name.hpp>

#include <gtest/gtest.h>

#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace lf::import {
namespace {

using fl::i18n::ustring_to_utf8;
using resource_core::GenericMsgIDHolder;

// A record as one line of text.
class Description {
  public:
    std::string operator()(FullyQualifiedImportArgument const& name) const {
        return "name " + ustring_to_utf8(name.rawArgument) + " root " +
               ustring_to_utf8(name.rootElement) + " introduces " +
               ustring_to_utf8(name.introducedName) + warning(name.warning);
    }

    std::string operator()(WildcardImportArgument const& wildcard) const {
        return "wildcard " + ustring_to_utf8(wildcard.rawArgument) + " root " +
               ustring_to_utf8(wildcard.rootElement) + warning(wildcard.warning);
    }

    std::string operator()(PackageNameImportArgument const& package) const {
        return "package " + ustring_to_utf8(package.name);
    }

    std::string operator()(VersionedPackageImportArgument const& package) const {
        return "versioned " + ustring_to_utf8(package.specifier.ToString());
    }

    std::string operator()(AsClauseImportArgument const&) const { return "as"; }

    std::string operator()(InvalidImportArgument const& invalid) const {
        return "invalid " + message(invalid.msgHolder);
    }

    std::string operator()(IgnoredArgument const& ignored) const {
        return "ignored '" + ustring_to_utf8(ignored.text) + "'";
    }

  private:
    static std::string message(GenericMsgIDHolder const& holder) {
        auto const& [arguments, catalogue, key] = holder.getMsgID();
        std::string text = catalogue + "/" + key + "(";
        for (auto const& argument : arguments) {
            text += (&argument == &arguments.front() ? "" : ", ") +
                    ustring_to_utf8(std::get<std::u16string>(argument));
        }
        return text + ")";
    }

    static std::string warning(std::optional<GenericMsgIDHolder> const& holder) {
        return holder ? ", warning " + message(*holder) : "";
    }
};

template <typename... Records>
std::string describe(std::variant<Records...> const& record) {
    return std::visit(Description{}, record);
}

struct Row {
    std::u16string argument;
    std::string packagesOn;
    std::string packagesOff;
    std::string why;

    friend void PrintTo(Row const& row, std::ostream* stream) { *stream << row.why; }
};

class Classification : public testing::TestWithParam<Row> {};

TEST_P(Classification, FollowsTheGrammarWithPackageImports) {
    Row const& row = GetParam();
    EXPECT_EQ(describe(classifyArgument(row.argument)), row.packagesOn) << row.why;
}

TEST_P(Classification, FollowsTheLegacyGrammar) {
    Row const& row = GetParam();
    EXPECT_EQ(describe(classifyLegacyArgument(row.argument)), row.packagesOff) << row.why;
}

std::string const noDot = "invalid KELDAR:lang/ImportArgumentWithoutDot()";

std::string bad(std::string const& argument) {
    return "invalid KELDAR:lang/InvalidImportArgument(" + argument + ")";
}

// clang-format off
std::vector<Row> const rows{
    {u"", "ignored ''", "ignored ''", "an empty argument is ignored"},

    {u"a.b.c", "name a.b.c root a introduces c", "name a.b.c root a introduces c", "a dotted name"},
    {u"a.b", "name a.b root a introduces b", "name a.b root a introduces b", "the shortest dotted name"},
    {u"for.x", "name for.x root for introduces x", "name for.x root for introduces x", "only the last segment may not be a reserved word"},
    {u"a.for.x", "name a.for.x root a introduces x", "name a.for.x root a introduces x", "a middle segment may be a reserved word"},
    {u"as.as", "name as.as root as introduces as", "name as.as root as introduces as", "`as` is an ordinary identifier in a name"},
    {u"a.AS", "name a.AS root a introduces AS", "name a.AS root a introduces AS", "case is preserved"},
    {u"\u00E4.\U00010400", "name \u00E4.\U00010400 root \u00E4 introduces \U00010400", "name \u00E4.\U00010400 root \u00E4 introduces \U00010400", "identifiers are Unicode's, the supplementary planes included"},

    {u"a.b.*", "wildcard a.b.* root a", "wildcard a.b.* root a", "everything below a prefix"},
    {u"a.*", "wildcard a.* root a", "wildcard a.* root a", "the shortest prefix"},
    {u"for.*", "wildcard for.* root for", "wildcard for.* root for", "a prefix may be a reserved word"},

    {u"1a.*", bad("1a.*"), "wildcard 1a.* root 1a, warning KELDAR:lang/MalformedImportArgumentWarning(1a.*)", "a bad prefix is checked before the wildcard"},
    {u"..*", bad("..*"), "wildcard ..* root , warning KELDAR:lang/MalformedImportArgumentWarning(..*)", "empty segments are invalid"},
    {u"*.*", bad("*.*"), "wildcard *.* root *, warning KELDAR:lang/MalformedImportArgumentWarning(*.*)", "a star is a wildcard only at the end"},
    {u"a.1.*", bad("a.1.*"), "wildcard a.1.* root a, warning KELDAR:lang/MalformedImportArgumentWarning(a.1.*)", "a bad segment in the middle"},
    {u".*", bad(".*"), "invalid KELDAR:lang/MalformedImportArgumentWarning(.*)", "no prefix at all"},

    {u"1a.b", bad("1a.b"), "name 1a.b root 1a introduces b", "a legacy name may have a bad prefix"},
    {u"a.*.b", bad("a.*.b"), "name a.*.b root a introduces b", "a star in the middle is a bad segment"},
    {u"a..b", bad("a..b"), "name a..b root a introduces b", "an empty segment in the middle"},
    {u"a.b.", bad("a.b."), "name a.b. root a introduces ", "an empty last segment"},
    {u".x", bad(".x"), "name .x root  introduces x", "an empty first segment"},
    {u".", bad("."), "name . root  introduces ", "nothing but a dot"},
    {u"..", bad(".."), "name .. root  introduces ", "only dots"},
    {u"a.**", bad("a.**"), "name a.** root a introduces **", "two stars are not a wildcard"},
    {u"a. b", bad("a. b"), "name a. b root a introduces  b", "blanks are not trimmed"},
    {u"a.1", bad("a.1"), "name a.1 root a introduces 1", "a last segment that is not an identifier"},
    {std::u16string(u"a.") + char16_t{0xD800}, bad("a.\uFFFD"), "name a.\uFFFD root a introduces \uFFFD", "an unpaired surrogate is not an identifier"},

    {u"a.b.for", "invalid KELDAR:lang/KeywordInImportArgument(a.b.for, for)", "name a.b.for root a introduces for, warning KELDAR:lang/KeywordInImportArgumentWarning(a.b.for, for)", "the introduced name is a reserved word"},
    {u"1a.for", bad("1a.for"), "name 1a.for root 1a introduces for, warning KELDAR:lang/KeywordInImportArgumentWarning(1a.for, for)", "a bad prefix comes before the reserved word"},
    {u"a.For", "name a.For root a introduces For", "name a.For root a introduces For", "reserved words are case-sensitive"},

    {u"pkg", "package pkg", noDot, "a word names a package"},
    {u"As", "package As", noDot, "only the exact `as` is the alias keyword"},
    {u"AS", "package AS", noDot, "only the exact `as` is the alias keyword"},
    {u"ass", "package ass", noDot, "a longer word is not `as`"},
    {u"as", "as", noDot, "the alias keyword"},
    {u"as ", bad("as "), noDot, "blanks are not trimmed"},
    {u"for", "invalid KELDAR:lang/KeywordInImportArgument(for, for)", noDot, "a reserved word, twice: the argument and the word in it"},
    {u"1a", bad("1a"), noDot, "no identifier"},
    {u"*", bad("*"), noDot, "a star alone is not a wildcard"},
    {u"a*", bad("a*"), noDot, "no identifier"},

    {u"pkg@1.2.3", "versioned pkg@1.2.3", "name pkg@1.2.3 root pkg@1 introduces 3", "the legacy grammar has no packages"},
    {u"pkg@^1", "versioned pkg@^1", noDot, "a version without dots"},
    {u"a.b@2", "versioned a.b@2", "name a.b@2 root a introduces b@2", "the `@` comes before the dots"},
    {u"pkg.sub@1.0", "versioned pkg.sub@1.0", "name pkg.sub@1.0 root pkg introduces 0", "a dotted package name"},
    {u"for@1", "versioned for@1", noDot, "the descriptor library decides which names are valid"},
    {u"@", bad("@"), noDot, "a specifier that the descriptor library rejects"},
    {u"pkg@", bad("pkg@"), noDot, "no version"},
    {u"pkg@x.y", bad("pkg@x.y"), "name pkg@x.y root pkg@x introduces y", "no version"},
    {u"@a.*", bad("@a.*"), "wildcard @a.* root @a, warning KELDAR:lang/MalformedImportArgumentWarning(@a.*)", "an `@` makes it a package"},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(EveryRow, Classification, testing::ValuesIn(rows), support::RowName{});

} // namespace
} // namespace lf::import
