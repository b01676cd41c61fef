// SPDX-License-Identifier: BSL-1.0
#include <import_explorer/syntax_tree.hpp>

#include <host/text.hpp>

namespace explorer {

lf::astapi::ImportCommandView SyntaxTree::add(ImportCommand const& command) {
    lf::astapi::NodeHandle const node = nodes.size();
    nodes.push_back({{}, command.arguments.size()});
    for (Word const& argument : command.arguments) {
        nodes.push_back({argument.text, 0});
    }
    return {this, node};
}

std::size_t SyntaxTree::getNumberOfArguments(lf::astapi::NodeHandle command) const {
    return nodes.at(static_cast<std::size_t>(command)).numberOfArguments;
}

lf::astapi::ArgumentNode SyntaxTree::getArgument(lf::astapi::NodeHandle command,
                                                 std::size_t index) const {
    return {this, command + 1 + index};
}

std::u16string SyntaxTree::getText(lf::astapi::NodeHandle argument) const {
    std::string_view const text = nodes.at(static_cast<std::size_t>(argument)).text;
    return std::u16string(lf::import::host::Utf16Text(text).view());
}

} // namespace explorer
