// SPDX-License-Identifier: BSL-1.0

#include <import_explorer/script_reader.hpp>

#include <gtest/gtest.h>

// Must be included after GoogleTest.
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include <cstddef>
#include <string>
#include <variant>
#include <vector>

namespace explorer {
namespace {

/// A line made of parts that are hard to parse in combination.
rc::Gen<std::string> anyLine() {
    auto const piece = rc::gen::element<std::string>(
        "import", "dynamic", "scope", "use", "a.b", "\"", "\"\"", "{", "}", ";", "#", "//", " ",
        "\t", "\r", "é", "図", "x{", "@^1,<2", "as", "*");
    return rc::gen::map(rc::gen::container<std::vector<std::string>>(piece),
                        [](std::vector<std::string> const& pieces) {
                            std::string line;
                            for (std::string const& text : pieces) {
                                line += text;
                            }
                            return line;
                        });
}

constexpr std::string_view landmark = "import landmark.of.ours";

bool isLandmark(Statement const& statement) {
    auto const* command = std::get_if<ImportCommand>(&statement);
    return command != nullptr && command->arguments.size() == 1 &&
           command->arguments.front().text == "landmark.of.ours";
}

/// Counts LF, CR LF and CR.
std::size_t countLineEnds(std::string_view text) {
    std::size_t ends = 0;
    for (std::size_t index = 0; index < text.size(); ++index) {
        bool const isFirstOfTwo = text.substr(index).starts_with("\r\n");
        ends += text[index] == '\n' || (text[index] == '\r' && !isFirstOfTwo) ? 1 : 0;
    }
    return ends;
}

RC_GTEST_PROP(ScriptReaderProperty, NoLineCostsAnother, ()) {
    auto const lines = *rc::gen::container<std::vector<std::string>>(anyLine());
    auto const syntax = *rc::gen::element(SourceSyntax::Script, SourceSyntax::Lines);
    std::string text;
    std::vector<std::size_t> expected;
    for (std::string const& line : lines) {
        text.append(line).append("\n");
        expected.push_back(countLineEnds(text) + 1);
        text.append(landmark).append("\n");
    }
    Script const script = readScript(SourceFile("any", text), syntax);
    std::vector<std::size_t> found;
    for (Statement const& statement : script.statements) {
        if (isLandmark(statement)) {
            found.push_back(std::get<ImportCommand>(statement).range.line);
        }
    }
    RC_ASSERT(found == expected);
}

RC_GTEST_PROP(ScriptReaderProperty, EveryRangeHoldsItsArgument, ()) {
    auto const lines = *rc::gen::container<std::vector<std::string>>(anyLine());
    auto const syntax = *rc::gen::element(SourceSyntax::Script, SourceSyntax::Lines);
    std::string text;
    for (std::string const& line : lines) {
        text.append("import ").append(line).append("\n");
    }
    Script const script = readScript(SourceFile("any", text), syntax);
    for (Statement const& statement : script.statements) {
        if (auto const* command = std::get_if<ImportCommand>(&statement)) {
            for (Word const& argument : command->arguments) {
                SourceRange const& range = argument.range;
                std::string const written = text.substr(range.begin, range.end - range.begin);
                RC_ASSERT(written == argument.text || written == '"' + argument.text + '"');
                RC_ASSERT(command->range.begin < range.begin);
                RC_ASSERT(range.end <= command->range.end);
            }
        }
    }
}

RC_GTEST_PROP(ScriptReaderProperty, ProblemsStandInSourceOrder, ()) {
    auto const lines = *rc::gen::container<std::vector<std::string>>(anyLine());
    std::string text;
    for (std::string const& line : lines) {
        text.append(line).append("\n");
    }
    Script const script = readScript(SourceFile("any", text), SourceSyntax::Script);
    for (std::size_t index = 1; index < script.problems.size(); ++index) {
        RC_ASSERT(script.problems[index - 1].range.begin <= script.problems[index].range.begin);
    }
    for (std::size_t index = 1; index < script.scopes.size(); ++index) {
        RC_ASSERT(script.scopes[index].parent.has_value());
        RC_ASSERT(*script.scopes[index].parent < index);
    }
}

} // namespace
} // namespace explorer
