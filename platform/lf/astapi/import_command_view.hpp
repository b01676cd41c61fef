// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// An `import` command in a syntax tree.

#include <gleigem_platform/export.hpp>

#include <cstddef>
#include <cstdint>
#include <string>

namespace lf::astapi {

/// Identifies a node within one syntax tree.
using NodeHandle = std::uint64_t;

struct ArgumentNode;

/// The interface of a syntax tree.
class GLEIGEM_PLATFORM_EXPORT ISyntaxTree {
  public:
    ISyntaxTree() = default;
    ISyntaxTree(ISyntaxTree const&) = default;
    ISyntaxTree& operator=(ISyntaxTree const&) = default;
    virtual ~ISyntaxTree();

    /// The number of arguments of \p command.
    virtual std::size_t getNumberOfArguments(NodeHandle command) const = 0;

    /// The argument at the zero-based \p index, below the number of arguments.
    virtual ArgumentNode getArgument(NodeHandle command, std::size_t index) const = 0;

    /// The text of an argument node of this tree, as written.
    virtual std::u16string getText(NodeHandle argument) const = 0;
};

/// One argument of a command. Does not own the tree.
struct GLEIGEM_PLATFORM_EXPORT ArgumentNode {
    /// The tree that the node belongs to.
    ISyntaxTree const* tree = nullptr;
    /// The argument within that tree.
    NodeHandle node = 0;
};

/// One `import` command. Does not own the tree.
struct GLEIGEM_PLATFORM_EXPORT ImportCommandView {
    /// The tree that the command belongs to.
    ISyntaxTree const* tree = nullptr;
    /// The command within that tree.
    NodeHandle node = 0;
};

} // namespace lf::astapi
