// SPDX-License-Identifier: BSL-1.0

#include <import_explorer/syntax_tree.hpp>

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace explorer {
namespace {

ImportCommand makeCommand(std::vector<std::string> const& texts) {
    ImportCommand command;
    for (std::string const& text : texts) {
        command.arguments.push_back({text, {}});
    }
    return command;
}

std::vector<std::u16string> textsOf(lf::astapi::ImportCommandView command) {
    std::vector<std::u16string> texts;
    for (std::size_t index = 0; index < command.tree->getNumberOfArguments(command.node); ++index) {
        lf::astapi::ArgumentNode const argument = command.tree->getArgument(command.node, index);
        texts.push_back(argument.tree->getText(argument.node));
    }
    return texts;
}

TEST(SyntaxTree, AnswersForEachOfItsCommands) {
    ImportCommand const first = makeCommand({"a.b", "", "图.é.😀"});
    ImportCommand const second = makeCommand({});
    ImportCommand const third = makeCommand({"c"});
    SyntaxTree tree;
    auto const firstView = tree.add(first);
    auto const secondView = tree.add(second);
    auto const thirdView = tree.add(third);
    EXPECT_EQ(textsOf(firstView), (std::vector<std::u16string>{u"a.b", u"", u"图.é.😀"}));
    EXPECT_EQ(textsOf(secondView), std::vector<std::u16string>{});
    EXPECT_EQ(textsOf(thirdView), std::vector<std::u16string>{u"c"});
}

TEST(SyntaxTree, RefusesHandlesThatAreNotItsOwn) {
    ImportCommand const command = makeCommand({"a"});
    SyntaxTree tree;
    tree.add(command);
    EXPECT_THROW(tree.getNumberOfArguments(2), std::out_of_range);
    EXPECT_THROW(tree.getText(2), std::out_of_range);
}

} // namespace
} // namespace explorer
