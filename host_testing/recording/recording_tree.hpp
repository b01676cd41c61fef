// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// A syntax tree of one command that records what it is asked.

#include <lf/astapi/import_command_view.hpp>

#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace lf::import::host_testing::recording {

/// Logs questions in the platform's recorder, under the tree's name. You can change the tree at any
/// time, even while it is read.
class RecordingTree final : public lf::astapi::ISyntaxTree {
  public:
    /// A command with these arguments, all of them of this tree.
    explicit RecordingTree(std::string treeName,
                           std::vector<std::u16string> const& argumentTexts = {});

    /// The command.
    lf::astapi::ImportCommandView command() const { return {this, commandNode}; }

    /// Adds an argument to the command and returns its node.
    lf::astapi::ArgumentNode append(std::u16string text);

    /// Adds an argument to the command that belongs to another tree.
    void append(lf::astapi::ArgumentNode foreign) { arguments.push_back(foreign); }

    /// Removes the last argument of the command.
    void removeLast() { arguments.pop_back(); }

    /// Logs the question and returns the current number of arguments.
    std::size_t getNumberOfArguments(lf::astapi::NodeHandle askedCommand) const override;
    /// Logs the question and returns the argument.
    ///
    /// \throws std::out_of_range if there is no argument with this index.
    lf::astapi::ArgumentNode getArgument(lf::astapi::NodeHandle askedCommand,
                                         std::size_t index) const override;
    /// Logs the question and returns the text.
    ///
    /// \throws std::out_of_range for a node that is not of this tree.
    std::u16string getText(lf::astapi::NodeHandle askedArgument) const override;

    /// The node of the command.
    static constexpr lf::astapi::NodeHandle commandNode = 70;
    /// The node of the first argument; the following ones are consecutive.
    static constexpr lf::astapi::NodeHandle firstArgumentNode = 100;

  private:
    std::string name;
    std::vector<lf::astapi::ArgumentNode> arguments;
    std::map<lf::astapi::NodeHandle, std::u16string> texts;
};

} // namespace lf::import::host_testing::recording
