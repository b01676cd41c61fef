// SPDX-License-Identifier: BSL-1.0
#include <algorithm>
#include <import/import.hpp>
#include <iostream>

int main() {
    using namespace lf::import;
    auto const scope = createImportList(nullptr);
    auto const add = [&scope](auto& parsed) {
        if constexpr (std::is_constructible_v<ImportEntry, decltype(parsed.first)>) {
            std::cout << "argument " << parsed.second << " imports " << parsed.first << '\n';
            scope->addStaticImportEntry(std::move(parsed.first));
        }
    };
    std::vector<std::u16string> const command{u"matrix@^2.1", u"as", u"m"};
    auto const parser = createImportArgumentParser(command, Behavior::WithPackageImports);
    std::ranges::for_each(parser->parse(), [&](auto& parsed) { std::visit(add, parsed); });
    auto const found = scope->findPackageImportEntry(u"m", IImportList::CheckAncestorList::Yes);
    std::cout << "m is the package " << found->entry.getPackageSpecifier() << '\n';
}
