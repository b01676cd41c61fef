// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The syntax tree: a script in which every line is a command.

#include <cstddef>
#include <string_view>
#include <vector>

namespace lf::astapi {

/// A word of a script: its line and its position in the line.
struct Node {
    std::size_t line = 0;
    std::size_t word = 0;
};

class SyntaxTree;

/// An argument of a command. Owns nothing.
struct ArgumentNode {
    SyntaxTree const* tree;
    Node node;
};

/// One `import` command. Owns nothing.
struct ImportCommandView {
    SyntaxTree const* tree;
    Node node;
};

/// Views of the words of a text, which must outlive it.
class SyntaxTree {
  public:
    /// Lines end in a newline; words are separated by single blanks.
    explicit SyntaxTree(std::u16string_view script);

    /// Every line, from its first word on.
    std::vector<ImportCommandView> commands() const;

    /// The number of words after the first one.
    std::size_t getNumberOfArguments(Node command) const;
    ArgumentNode getArgument(Node command, std::size_t index) const;
    std::u16string_view getText(Node argument) const;

  private:
    std::vector<std::vector<std::u16string_view>> lines;
};

} // namespace lf::astapi
