// SPDX-License-Identifier: BSL-1.0

#include <import/import.hpp>

#include <iostream>
#include <sstream>
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

    std::ostringstream text;
    text << entry;
    std::cout << text.str() << '\n';
    return text.str() == "a.b.c" && index == 0 ? 0 : 1;
}
