// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The explorer's syntax tree, which the library reads commands from.

#include <import_explorer/script_reader.hpp>

#include <lf/astapi/import_command_view.hpp>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace explorer {

/// The import commands of a script as nodes: each command is followed by its arguments. The handle
/// of a node is its index.
class SyntaxTree final : public lf::astapi::ISyntaxTree {
  public:
    /// Adds the nodes of \p command, whose texts must outlive the tree. The view is valid until the
    /// tree is moved or destroyed.
    lf::astapi::ImportCommandView add(ImportCommand const& command);

    std::size_t getNumberOfArguments(lf::astapi::NodeHandle command) const override;
    lf::astapi::ArgumentNode getArgument(lf::astapi::NodeHandle command,
                                         std::size_t index) const override;
    std::u16string getText(lf::astapi::NodeHandle argument) const override;

  private:
    struct Node {
        /// Of an argument.
        std::string_view text;
        /// Of a command.
        std::size_t numberOfArguments = 0;
    };

    std::vector<Node> nodes;
};

} // namespace explorer
