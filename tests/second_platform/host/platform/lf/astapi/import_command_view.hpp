// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// A syntax tree with shared ownership, whose nodes are identified by paths.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace lf::astapi {

struct NodePath {
    std::string steps;
};

struct ArgumentNode;

class CommandTree : public std::enable_shared_from_this<CommandTree> {
  public:
    explicit CommandTree(std::vector<std::u16string> argumentTexts);

    std::uint32_t getNumberOfArguments(NodePath const& command) const;
    ArgumentNode getArgument(NodePath const& command, std::size_t index) const;
    std::u16string const& getText(NodePath const& argument) const;

  private:
    std::vector<std::u16string> texts;
};

struct ArgumentNode {
    std::shared_ptr<CommandTree const> tree;
    NodePath node;
};

struct ImportCommandView {
    std::shared_ptr<CommandTree const> tree;
    NodePath node;
};

} // namespace lf::astapi
