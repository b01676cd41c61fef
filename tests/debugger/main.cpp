// SPDX-License-Identifier: BSL-1.0

// The program that printers_test.py debugs: gdb stops it in stopHere() and prints the variables of
// main.

#include <import/import.hpp>

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <numeric>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace {

using namespace lf::import;
using resource_core::BaseMsgID;
using resource_core::GenericMsgIDHolder;

[[gnu::noinline]] void stopHere() {
    asm volatile(""); // keeps the call
}

std::unique_ptr<IImportArgumentParser> parserOf(std::vector<std::u16string> const& arguments) {
    return createImportArgumentParser(arguments, Behavior::WithPackageImports);
}

// The only entry of a command.
template <typename Entry>
Entry entryOf(std::vector<std::u16string> const& arguments) {
    auto const parser = parserOf(arguments);
    return std::get<std::pair<Entry, ImportArgumentIndex>>(std::move(parser->parse().at(0))).first;
}

std::shared_ptr<IImportList> listOf(std::shared_ptr<IImportList const> parent) {
    return createImportList(std::move(parent));
}

} // namespace

int main() {
    auto const name = entryOf<FullyQualifiedImportEntry>({u"a.b.c"});
    auto const unicodeName = entryOf<FullyQualifiedImportEntry>({u"Größe.図形.円"});
    auto const wildcard = entryOf<WildcardImportEntry>({u"a.b.*"});
    auto const package = entryOf<PackageImportEntry>({u"matrix"});
    auto const aliased = entryOf<PackageImportEntry>({u"matrix@^2.1", u"as", u"m"});
    auto const ranged = entryOf<PackageImportEntry>({u"p@>=1.2.3-rc.1+b7,<2,~1,=1,>0,<=9,4,*"});
    auto const invalid = entryOf<InvalidImportEntry>({u"a.while"});
    [[maybe_unused]] auto const& specifier = aliased.getPackageSpecifier();

    auto movedFromName = name;
    auto const nameMovedTo = std::move(movedFromName);
    auto movedFromPackage = aliased;
    auto const packageMovedTo = std::move(movedFromPackage);
    auto movedFromInvalid = invalid;
    auto const invalidMovedTo = std::move(movedFromInvalid);

    BaseMsgID const message{.arguments = {std::uint64_t{7}, std::string("na\"rrow\n"),
                                          std::u16string(u"wide \xD800 円")},
                            .catalogue = "some:catalogue",
                            .key = "SomeKey"};
    GenericMsgIDHolder const holder(message);
    GenericMsgIDHolder const emptyHolder;

    ImportEntry const nameInVariant = name;
    ImportEntry const wildcardInVariant = wildcard;
    ImportEntry const packageInVariant = aliased;
    auto const parser = parserOf({u"matrix@^2.1", u"as", u"m"});
    [[maybe_unused]] ParsedImportEntry const& parsedPackage = parser->parse().at(0);
    auto const failingParser = parserOf({u"a.b", u"a.while"});
    [[maybe_unused]] ParsedImportEntry const& parsedInvalid = failingParser->parse().at(0);

    auto const outer = listOf(nullptr);
    outer->addStaticImportEntry(WildcardImportEntry(wildcard));
    auto const inner = listOf(outer);
    inner->addStaticImportEntry(FullyQualifiedImportEntry(name));
    inner->addStaticImportEntry(FullyQualifiedImportEntry(unicodeName));
    inner->addStaticImportEntry(PackageImportEntry(aliased));
    auto const empty = listOf(outer);

    // Memory that contains no valid objects.
    [[maybe_unused]] std::array<std::byte, 512> const zeros{};
    std::array<std::uint32_t, 128> ascending{};
    std::iota(ascending.begin(), ascending.end(), 0x1111'1111);
    std::array<std::byte, 512> highest{};
    highest.fill(std::byte{0xFF});

    stopHere();
}
