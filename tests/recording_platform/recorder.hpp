// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// What the recording platform was asked, and the rules by which it answers.

#include <lf/astapi/import_command_view.hpp>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace recording_platform {

/// The services of a host.
enum class Service : std::uint8_t {
    FeatureSwitch,
    Identifier,
    ReservedWord,
    RangeFactory,
    Specifier,
    SpecifierText,
    NumberOfArguments,
    Argument,
    ArgumentText,
};

/// One question; what does not belong to it is as in an unused one.
struct Question {
    Service service{};
    /// What Identifier, ReservedWord, Specifier and SpecifierText are asked about.
    std::u16string text;
    /// Of ReservedWord.
    int selector = 0;
    /// The name of the tree that the last three are asked of.
    std::string tree;
    /// The command or the argument that they are asked about.
    lf::astapi::NodeHandle node = 0;
    /// Of Argument.
    std::size_t index = 0;

    friend bool operator==(Question const&, Question const&) = default;
};

/// One line for a person to read.
std::ostream& operator<<(std::ostream& stream, Question const& question);

Question featureSwitch();
Question identifier(std::u16string text);
Question reservedWord(std::u16string text, int selector);
Question rangeFactory();
Question specifier(std::u16string text);
Question specifierText(std::u16string text);
Question numberOfArguments(std::string tree, lf::astapi::NodeHandle command);
Question argument(std::string tree, lf::astapi::NodeHandle command, std::size_t index);
Question argumentText(std::string tree, lf::astapi::NodeHandle argument);

/// Letters, digits and underscores, without a digit at the start; plain ASCII.
bool isAsciiIdentifier(std::u16string_view text);

/// `for`, `while` and `end`.
bool isOneOfThreeReservedWords(std::u16string_view text);

/// Identifiers joined by dots, and perhaps `@` with numbers joined by dots behind them.
bool isNameWithOrWithoutNumbers(std::u16string_view text);

/// The log and the rules, all of them open to tests.
struct Recorder {
    /// Every question since the start, in the order in which they were asked.
    std::vector<Question> log;

    std::function<bool(std::u16string_view)> isIdentifier = isAsciiIdentifier;
    std::function<bool(std::u16string_view)> isReserved = isOneOfThreeReservedWords;
    std::function<bool(std::u16string_view)> isSpecifier = isNameWithOrWithoutNumbers;
    /// What the descriptor library calls a package that is written so, without its range.
    std::function<std::u16string(std::u16string)> packageName = std::identity();
    bool isFeatureOn = true;

    /// Called for each question once it is in the log and before it is answered; can throw, and can
    /// change the answer.
    std::function<void()> beforeAnswer = [] {};

    /// Sets beforeAnswer: calls \p action at the \p nth question to \p service from now on, counted
    /// from 1.
    void whenAsked(Service service, std::size_t nth, std::function<void()> action);

    /// Takes a question down.
    void ask(Question question);
};

/// The recorder that all services of this platform share.
Recorder& recorder();

} // namespace recording_platform
