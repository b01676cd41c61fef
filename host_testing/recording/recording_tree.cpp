// SPDX-License-Identifier: BSL-1.0
#include "recording_tree.hpp"

#include "recorder.hpp"

#include <cstddef>
#include <utility>

namespace lf::import::host_testing::recording {

using lf::astapi::ArgumentNode;
using lf::astapi::NodeHandle;

RecordingTree::RecordingTree(std::string treeName, std::vector<std::u16string> const& argumentTexts)
    : name(std::move(treeName)) {
    for (std::u16string const& text : argumentTexts) {
        append(text);
    }
}

ArgumentNode RecordingTree::append(std::u16string text) {
    ArgumentNode const argument{this, firstArgumentNode + texts.size()};
    texts[argument.node] = std::move(text);
    arguments.push_back(argument);
    return argument;
}

std::size_t RecordingTree::getNumberOfArguments(NodeHandle askedCommand) const {
    recorder().ask(numberOfArguments(name, askedCommand));
    return arguments.size();
}

ArgumentNode RecordingTree::getArgument(NodeHandle askedCommand, std::size_t index) const {
    recorder().ask(argument(name, askedCommand, index));
    return arguments.at(index);
}

std::u16string RecordingTree::getText(NodeHandle askedArgument) const {
    recorder().ask(argumentText(name, askedArgument));
    return texts.at(static_cast<std::size_t>(askedArgument));
}

} // namespace lf::import::host_testing::recording
