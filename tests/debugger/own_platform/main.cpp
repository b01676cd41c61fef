// SPDX-License-Identifier: BSL-1.0

// The program that own_platform_test.py debugs, on a platform whose types the printers do not know.

#include <import/import.hpp>

#include <memory>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace {

using namespace lf::import;

[[gnu::noinline]] void stopHere() {
    asm volatile(""); // keeps the call
}

template <typename Entry>
Entry entryOf(std::vector<std::u16string> const& arguments) {
    auto const parser = createImportArgumentParser(arguments, Behavior::WithPackageImports);
    return std::get<std::pair<Entry, ImportArgumentIndex>>(std::move(parser->parse().at(0))).first;
}

} // namespace

int main() {
    auto const name = entryOf<FullyQualifiedImportEntry>({u"a.b.c"});
    auto const wildcard = entryOf<WildcardImportEntry>({u"a.b.*"});
    auto const package = entryOf<PackageImportEntry>({u"matrix@2", u"as", u"m"});
    auto const invalid = entryOf<InvalidImportEntry>({u"a."});
    std::shared_ptr<IImportList> const list = createImportList(nullptr);
    (void)list->addStaticImportEntry(FullyQualifiedImportEntry(name));
    (void)list->addStaticImportEntry(PackageImportEntry(package));
    stopHere();
    bool const isRight =
        !wildcard.getRawArgument().empty() && invalid.holdsMsgWithKey("InvalidImportArgument");
    return isRight ? 0 : 1;
}
