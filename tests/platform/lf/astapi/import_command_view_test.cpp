// SPDX-License-Identifier: BSL-1.0
#include <lf/astapi/import_command_view.hpp>

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using namespace lf::astapi;

/// A tree of one command: the node 0, with the nodes from 1 on as arguments.
class OneCommandTree final : public ISyntaxTree {
  public:
    explicit OneCommandTree(std::vector<std::u16string> arguments, bool* isAlive = nullptr)
        : texts(std::move(arguments)), alive(isAlive) {}

    OneCommandTree(OneCommandTree const&) = delete;
    OneCommandTree& operator=(OneCommandTree const&) = delete;

    ~OneCommandTree() override {
        if (alive != nullptr) {
            *alive = false;
        }
    }

    std::size_t getNumberOfArguments(NodeHandle) const override { return texts.size(); }

    ArgumentNode getArgument(NodeHandle, std::size_t index) const override {
        return {this, index + 1};
    }

    std::u16string getText(NodeHandle argument) const override {
        return texts.at(static_cast<std::size_t>(argument - 1));
    }

  private:
    std::vector<std::u16string> texts;
    bool* alive;
};

TEST(ImportCommandView, NamesNoTreeByDefault) {
    EXPECT_EQ(ImportCommandView().tree, nullptr);
    EXPECT_EQ(ArgumentNode().tree, nullptr);
}

TEST(ImportCommandView, IsASmallHandle) {
    static_assert(std::is_trivially_copyable_v<ImportCommandView>);
    static_assert(std::is_trivially_copyable_v<ArgumentNode>);
}

TEST(ImportCommandView, ReachesTheArgumentsOfItsCommandThroughTheTree) {
    OneCommandTree const tree({u"a.b", u"as"});
    ImportCommandView const view{&tree, 0};

    std::vector<std::u16string> texts;
    for (std::size_t index = 0; index < view.tree->getNumberOfArguments(view.node); ++index) {
        ArgumentNode const argument = view.tree->getArgument(view.node, index);
        texts.push_back(argument.tree->getText(argument.node));
    }
    EXPECT_EQ(texts, (std::vector<std::u16string>{u"a.b", u"as"}));
}

TEST(SyntaxTree, IsDestroyedThroughItsInterface) {
    bool alive = true;
    std::unique_ptr<ISyntaxTree> tree =
        std::make_unique<OneCommandTree>(std::vector<std::u16string>{}, &alive);
    EXPECT_NE(dynamic_cast<OneCommandTree*>(tree.get()), nullptr);
    tree.reset();
    EXPECT_FALSE(alive);
}

} // namespace
