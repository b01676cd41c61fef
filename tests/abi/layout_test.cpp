// SPDX-License-Identifier: BSL-1.0

/// \file
/// The layout of the public value types, which is compiled into hosts. Tests the order of members
/// for every standard library, and sizes and offsets for libstdc++ on 64-bit machines.

#include <import/import.hpp>

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace lf::import {
namespace {

using Oxtavel::KeldarComponents::PackageSpecifier;
using resource_core::BaseMsgID;
using resource_core::GenericMsgIDHolder;

constexpr std::size_t text = sizeof(std::u16string);

static_assert(sizeof(PackageNameImportArgument) == text);
static_assert(sizeof(VersionedPackageImportArgument) == sizeof(PackageSpecifier));
static_assert(sizeof(IgnoredArgument) == text);
static_assert(sizeof(InvalidImportArgument) == sizeof(GenericMsgIDHolder));
static_assert(sizeof(AsClauseImportArgument) == 1);
static_assert(sizeof(PackageImportEntry) == sizeof(PackageSpecifier) + text);
static_assert(sizeof(FullyQualifiedImportEntry) == 3 * text);
static_assert(sizeof(WildcardImportEntry) == 2 * text);
static_assert(sizeof(InvalidImportEntry) == sizeof(GenericMsgIDHolder));

#if defined(__GLIBCXX__) && !defined(_GLIBCXX_DEBUG) && _GLIBCXX_USE_CXX11_ABI &&                  \
    __SIZEOF_POINTER__ == 8

template <typename Type, std::size_t size, std::size_t alignment = 8>
constexpr bool takes = sizeof(Type) == size && alignof(Type) == alignment;

static_assert(takes<PackageNameImportArgument, 32>);
static_assert(takes<FullyQualifiedImportArgument, 112>);
static_assert(takes<WildcardImportArgument, 80>);
static_assert(takes<AsClauseImportArgument, 1, 1>);
static_assert(takes<IgnoredArgument, 32>);
static_assert(takes<InvalidImportArgument, 8>);
static_assert(takes<FullyQualifiedImportEntry, 96>);
static_assert(takes<WildcardImportEntry, 64>);
static_assert(takes<InvalidImportEntry, 8>);
static_assert(takes<FoundImportEntry, 16>);
static_assert(takes<FoundFullyQualifiedName, 24>);
static_assert(takes<BaseMsgID, 88>);
static_assert(takes<GenericMsgIDHolder, 8>);
static_assert(takes<Behavior, 4, 4>);
static_assert(takes<EntryOrigin, 4, 4>);
static_assert(takes<IImportList::CheckAncestorList, 4, 4>);

// The size depends on the host's specifier; this is the size for the reference platform.
static_assert(takes<PackageSpecifier, 56>);
static_assert(takes<VersionedPackageImportArgument, 56>);
static_assert(takes<PackageImportEntry, 88>);
static_assert(takes<ParsedImportArgument, 120>);
static_assert(takes<ImportEntry, 104>);
static_assert(takes<ParsedImportEntry, 112>);

#endif

// Whether a record has a standard layout, and so offsets, depends on the standard library and the
// compiler.
template <typename Record, typename Member>
std::ptrdiff_t offsetOf(Record const& record, Member const& member) {
    return reinterpret_cast<char const*>(&member) - reinterpret_cast<char const*>(&record);
}

TEST(Layout, OfARecordIsTheOrderOfItsFields) {
    constexpr auto step = static_cast<std::ptrdiff_t>(text);
    PackageNameImportArgument const package;
    EXPECT_EQ(offsetOf(package, package.name), 0);
    FullyQualifiedImportArgument const name;
    EXPECT_EQ(offsetOf(name, name.rootElement), 0);
    EXPECT_EQ(offsetOf(name, name.introducedName), step);
    EXPECT_EQ(offsetOf(name, name.rawArgument), 2 * step);
    EXPECT_EQ(offsetOf(name, name.warning), 3 * step);
    WildcardImportArgument const wildcard;
    EXPECT_EQ(offsetOf(wildcard, wildcard.rootElement), 0);
    EXPECT_EQ(offsetOf(wildcard, wildcard.rawArgument), step);
    EXPECT_EQ(offsetOf(wildcard, wildcard.warning), 2 * step);
    IgnoredArgument const ignored;
    EXPECT_EQ(offsetOf(ignored, ignored.text), 0);
    InvalidImportArgument const invalid;
    EXPECT_EQ(offsetOf(invalid, invalid.msgHolder), 0);
}

TEST(Layout, OfWhatALookupFindsIsEntryOrigin) {
    FoundFullyQualifiedName const name{u"a.b", EntryOrigin::ThisList};
    EXPECT_EQ(offsetOf(name, name.rawArgument), 0);
    EXPECT_EQ(offsetOf(name, name.origin), sizeof(std::u16string_view));
    PackageImportEntry const entry(PackageNameImportArgument{u"p"});
    FoundImportEntry const package{entry, EntryOrigin::Ancestor};
    EXPECT_EQ(offsetOf(package, package.origin), sizeof(void*)) << "after the reference";
}

// The members of entries are private. A short text is stored inside its string, so the addresses of
// the views show the order of the members.
template <typename Entry>
bool isWithinMember(Entry const& entry, std::u16string_view view, std::size_t offset) {
    auto const* const member = reinterpret_cast<char const*>(&entry) + offset;
    auto const* const address = reinterpret_cast<char const*>(view.data());
    return address >= member && address < member + text;
}

TEST(Layout, OfAFullyQualifiedEntryIsNameRawArgumentRoot) {
    FullyQualifiedImportEntry const entry(FullyQualifiedImportArgument{u"a", u"b", u"a.b", {}});
    EXPECT_TRUE(isWithinMember(entry, entry.getIntroducedName(), 0));
    EXPECT_TRUE(isWithinMember(entry, entry.getRawArgument(), text));
    EXPECT_TRUE(isWithinMember(entry, entry.getRootElement(), 2 * text));
}

TEST(Layout, OfAWildcardEntryIsRawArgumentRoot) {
    WildcardImportEntry const entry(WildcardImportArgument{u"a", u"a.*", {}});
    EXPECT_TRUE(isWithinMember(entry, entry.getRawArgument(), 0));
    EXPECT_TRUE(isWithinMember(entry, entry.getRootElement(), text));
}

TEST(Layout, OfAPackageEntryIsSpecifierName) {
    PackageImportEntry const entry(PackageNameImportArgument{u"p"});
    EXPECT_EQ(static_cast<void const*>(&entry.getPackageSpecifier()), &entry);
    EXPECT_TRUE(isWithinMember(entry, entry.getIntroducedName(), sizeof(PackageSpecifier)));
}

TEST(Layout, OfAnInvalidEntryIsItsHolder) {
    InvalidImportEntry const entry(BaseMsgID{});
    EXPECT_EQ(static_cast<void const*>(&entry.getMsgHolder()), &entry);
}

} // namespace
} // namespace lf::import
