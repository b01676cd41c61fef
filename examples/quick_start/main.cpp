// SPDX-License-Identifier: BSL-1.0
#include <import/import.hpp>

#include <iostream>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

using namespace lf::import;

/// Parses one command, adds its imports to a scope, and prints the result for each argument.
void readImport(std::vector<std::u16string> const& command, IImportList& scope) {
    auto const handle = [&scope](auto& parsed) {
        auto& [entry, argument] = parsed;
        std::cout << "argument " << argument << ": ";
        if constexpr (std::is_same_v<decltype(parsed.first), InvalidImportEntry>) {
            std::cout << entry.getMsgHolder().getMsgID().key << '\n';
        } else {
            std::cout << "imports " << entry;
            if (auto const refusal = scope.addStaticImportEntry(std::move(entry))) {
                std::cout << ", refused: " << refusal->getMsgID().key;
            }
            std::cout << '\n';
        }
    };
    auto const parser = createImportArgumentParser(command, Behavior::WithPackageImports);
    for (ParsedImportEntry& parsed : parser->parse()) {
        std::visit(handle, parsed);
    }
}

int main() {
    std::shared_ptr<IImportList> const file = createImportList(nullptr);
    std::unique_ptr<IImportList> const function = createImportList(file);

    readImport({u"matrix@^2.1", u"as", u"m"}, *file);
    readImport({u"shapes.circle", u"colours.*"}, *function);
    readImport({u"m.solve"}, *function);
    readImport({u"shapes."}, *function);

    using enum IImportList::CheckAncestorList;
    if (auto const found = function->findPackageImportEntry(u"m", Yes)) {
        std::cout << "in the function, m is " << found->entry << '\n';
    }
}
