// SPDX-License-Identifier: BSL-1.0

#include <import/rendering.hpp>

#include <gtest/gtest.h>

#include <iomanip>
#include <optional>
#include <ostream>
#include <sstream>
#include <streambuf>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace lf::import {
namespace {

using Oxtavel::KeldarComponents::GetComponentVersionRangeFactory;
using Oxtavel::KeldarComponents::PackageSpecifier;

template <typename Entry>
concept Printable = requires(Entry const& entry, std::ostream& narrow,
                             std::basic_ostream<char16_t>& wide) {
    narrow << entry;
    wide << entry;
};

static_assert(Printable<PackageImportEntry>);
static_assert(Printable<FullyQualifiedImportEntry>);
static_assert(Printable<WildcardImportEntry>);
static_assert(!Printable<InvalidImportEntry>);

// Collects the output of a UTF-16 stream, up to its capacity.
class Utf16Buffer final : public std::basic_streambuf<char16_t> {
  public:
    explicit Utf16Buffer(std::size_t maximum = 1000) : capacity(maximum) {}

    std::u16string text;

  protected:
    int_type overflow(int_type unit) override {
        if (text.size() == capacity) {
            return traits_type::eof();
        }
        text.push_back(traits_type::to_char_type(unit));
        return unit;
    }

  private:
    std::size_t capacity;
};

ImportEntry name(std::u16string const& raw) {
    return FullyQualifiedImportEntry(FullyQualifiedImportArgument{u"root", u"last", raw, {}});
}

ImportEntry wildcard(std::u16string const& raw) {
    return WildcardImportEntry(WildcardImportArgument{u"root", raw, {}});
}

ImportEntry package(std::u16string const& text, std::optional<std::u16string> alias = {}) {
    PackageImportEntry entry(
        VersionedPackageImportArgument{PackageSpecifier(text, GetComponentVersionRangeFactory())});
    return alias ? PackageImportEntry(std::move(entry), PackageNameImportArgument{*alias}) : entry;
}

struct Row {
    ImportEntry entry;
    std::string narrow;
    std::u16string wide;
    std::string why;
};

std::vector<Row> const rows{
    {name(u"a.b.c"), "a.b.c", u"a.b.c", "a name prints as written"},
    {wildcard(u"a.b.*"), "a.b.*", u"a.b.*", "a wildcard prints as written"},
    {package(u"p"), "p", u"p", "a package prints as its specifier"},
    {package(u"p@^1.2,<1.9"), "p@^1.2,<1.9", u"p@^1.2,<1.9", "a version is not an alias"},
    {package(u"p@1", u"q"), "p@1 as q", u"p@1 as q", "an alias follows the specifier"},
    {package(u"p", u"p"), "p", u"p", "an alias equal to the name is omitted"},
    {package(u"p", u"P"), "p as P", u"p as P", "names are case-sensitive"},
    {package(u"pp", u"p"), "pp as p", u"pp as p", "names are compared whole"},
    {package(u"p", u""), "p as ", u"p as ", "an empty alias is not omitted"},
    {name(u"\u00FC.\U0001D4D0"), "\u00FC.\U0001D4D0", u"\u00FC.\U0001D4D0",
     "narrow text is UTF-8, wide text is unchanged"},
    {package(u"\u00FC", u"\u4E2D"), "\u00FC as \u4E2D", u"\u00FC as \u4E2D",
     "narrow text is UTF-8, wide text is unchanged"},
    {name(u""), "", u"", "nothing is added"},
};

TEST(Rendering, WritesNarrowText) {
    for (Row const& row : rows) {
        std::ostringstream stream;
        std::visit([&](auto const& entry) { EXPECT_EQ(&(stream << entry), &stream); }, row.entry);
        EXPECT_EQ(stream.str(), row.narrow) << row.why;
    }
}

TEST(Rendering, WritesWideText) {
    for (Row const& row : rows) {
        Utf16Buffer buffer;
        std::basic_ostream<char16_t> stream(&buffer);
        std::visit([&](auto const& entry) { EXPECT_EQ(&(stream << entry), &stream); }, row.entry);
        EXPECT_EQ(buffer.text, row.wide) << row.why;
    }
}

/// Counts how often a stream flushes it.
template <typename Unit>
class FlushCounter final : public std::basic_stringbuf<Unit> {
  public:
    int flushes = 0;

  protected:
    int sync() override {
        ++flushes;
        return 0;
    }
};

template <typename Unit>
int countFlushes(ImportEntry const& printed) {
    FlushCounter<Unit> buffer;
    std::basic_ostream<Unit> stream(&buffer);
    std::visit([&](auto const& entry) { stream << entry; }, printed);
    EXPECT_FALSE(buffer.str().empty());
    return buffer.flushes;
}

TEST(Rendering, LeavesFlushingToTheHost) {
    for (ImportEntry const& printed : {name(u"a.b"), wildcard(u"a.*"), package(u"p", u"q")}) {
        EXPECT_EQ(countFlushes<char>(printed), 0);
        EXPECT_EQ(countFlushes<char16_t>(printed), 0);
    }
}

TEST(Rendering, AppliesWidthAndFillToTheFirstPiece) {
    std::ostringstream stream;
    std::visit(
        [&](auto const& entry) { stream << std::setw(6) << std::setfill('.') << entry << '|'; },
        package(u"p@1", u"q"));
    std::visit([&](auto const& entry) { stream << std::left << std::setw(6) << entry << '|'; },
               name(u"a.b"));
    EXPECT_EQ(stream.str(), "...p@1 as q|a.b...|");
}

TEST(Rendering, SpendsTheWidthOfAWideStreamOnTheFirstPiece) {
    for (ImportEntry const& printed : {name(u"a.b"), wildcard(u"a.*"), package(u"pkg", u"q")}) {
        Utf16Buffer buffer;
        std::basic_ostream<char16_t> stream(&buffer);
        stream.width(2);
        std::visit([&](auto const& entry) { stream << entry; }, printed);
        EXPECT_EQ(stream.width(), 0);
        EXPECT_TRUE(stream.good());
    }
}

TEST(Rendering, LeavesErrorsInTheStreamsState) {
    for (ImportEntry const& printed : {name(u"a.b"), wildcard(u"a.*"), package(u"p", u"q")}) {
        Utf16Buffer buffer(2);
        std::basic_ostream<char16_t> wide(&buffer);
        std::ostream narrow(nullptr);
        std::visit(
            [&](auto const& entry) {
                EXPECT_NO_THROW(wide << entry);
                EXPECT_NO_THROW(narrow << entry);
            },
            printed);
        EXPECT_TRUE(wide.fail());
        EXPECT_TRUE(narrow.fail());
    }
}

} // namespace
} // namespace lf::import
