// SPDX-License-Identifier: BSL-1.0

#include <host/host.hpp>
#include <import/import.hpp>

#include <iostream>
#include <string>
#include <utility>
#include <variant>
#include <vector>

int main() {
    using namespace lf::import;

    std::vector<std::u16string> const arguments{u"a.b.c"};
    auto const parser = createImportArgumentParser(arguments, Behavior::WithPackageImports);
    auto const& [entry, index] =
        std::get<std::pair<FullyQualifiedImportEntry, ImportArgumentIndex>>(parser->parse().at(0));

    std::string const text = host::toUtf8(entry);
    std::cout << text << '\n';
    return text == "a.b.c" && index == 0 ? 0 : 1;
}
