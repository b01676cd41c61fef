// SPDX-License-Identifier: BSL-1.0

/// \file
/// Reads the import commands of a script and looks a few names up.

#include <import/import.hpp>

#include <iostream>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <variant>

namespace {

using namespace lf::import;

/// The host's text for a message: here its key and its arguments.
std::string wordsFor(resource_core::BaseMsgID const& message) {
    std::string words = message.key;
    for (resource_core::MsgArgument const& argument : message.arguments) {
        words += ' ' + fl::i18n::ustring_to_utf8(std::get<std::u16string>(argument));
    }
    return words;
}

void report(resource_core::BaseMsgID const& message) {
    std::cout << "wrong  " << wordsFor(message) << '\n';
}

/// Adds the imports of a command to the scope and reports errors.
template <typename Entry>
void take(Entry&& entry, IImportList& scope) {
    if constexpr (std::is_same_v<Entry, InvalidImportEntry>) {
        report(entry.getMsgHolder().getMsgID());
    } else {
        std::cout << "reads  " << entry << '\n';
        if (auto const conflict = scope.addStaticImportEntry(std::forward<Entry>(entry))) {
            report(conflict->getMsgID());
        }
    }
}

} // namespace

int main() {
    lf::astapi::SyntaxTree const script(u"import birds.left-wing plants.*\n"
                                        u"import shapes@3+ as s\n"
                                        u"import shapes@3..5\n"
                                        u"import birds.let\n"
                                        u"import other.left-wing\n"
                                        u"import s\n");
    std::shared_ptr<IImportList> const scope = createImportList(nullptr);
    for (lf::astapi::ImportCommandView const command : script.commands()) {
        auto const parser = createImportArgumentParser(command, Behavior::FollowFeatureSwitch);
        for (ParsedImportEntry& parsed : parser->parse()) {
            std::visit([&](auto& entry) { take(std::move(entry.first), *scope); }, parsed);
        }
    }

    auto const innerScope = createImportList(scope);
    using enum IImportList::CheckAncestorList;
    if (auto const found = innerScope->findPackageImportEntry(u"s", Yes)) {
        std::cout << "s is the package " << found->entry.getPackageSpecifier() << '\n';
    }
    if (auto const found = innerScope->findFullyQualifiedImportEntry(u"left-wing", Yes)) {
        std::cout << "left-wing is " << fl::i18n::ustring_to_utf8(found->rawArgument) << '\n';
    }
}
