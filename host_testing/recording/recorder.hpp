// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The recording platform: the headers of the reference platform with services whose answers are a
/// test's, and which note what they are asked. Link gleigem::recorded, the library on this
/// platform, in place of gleigem::gleigem.

#include <lf/astapi/import_command_view.hpp>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace lf::import::host_testing::recording {

/// The services that record.
enum class Service : std::uint8_t {
    /// lf::features
    FeatureSwitch,
    /// lf::util
    Identifier,
    /// lfu
    ReservedWord,
    /// The factory of version ranges
    RangeFactory,
    /// The constructor of a package specifier
    Specifier,
    /// Its text
    SpecifierText,
    /// The first question to a RecordingTree
    NumberOfArguments,
    /// The second
    Argument,
    /// The third
    ArgumentText,
};

/// One question; what does not belong to it is as in an unused one.
struct Question {
    /// Who was asked.
    Service service{};
    /// What Identifier, ReservedWord, Specifier and SpecifierText are asked about.
    std::u16string text{};
    /// Of ReservedWord.
    int selector = 0;
    /// The name of the tree that the last three are asked of.
    std::string tree{};
    /// The command or the argument that they are asked about.
    lf::astapi::NodeHandle node = 0;
    /// Of Argument.
    std::size_t index = 0;

    /// Whether all members are equal.
    friend bool operator==(Question const&, Question const&) = default;
};

/// One line for a person to read.
std::ostream& operator<<(std::ostream& stream, Question const& question);

/// isPackageImportsFeatureOn()
Question featureSwitch();
/// isValidIdentifier(text)
Question identifier(std::u16string text);
/// isReservedWord(text, selector)
Question reservedWord(std::u16string text, int selector);
/// GetComponentVersionRangeFactory()
Question rangeFactory();
/// The constructor of PackageSpecifier with this text
Question specifier(std::u16string text);
/// ToString() of a specifier that is this text
Question specifierText(std::u16string text);
/// getNumberOfArguments(command) of the tree of this name
Question numberOfArguments(std::string tree, lf::astapi::NodeHandle command);
/// getArgument(command, index) of that tree
Question argument(std::string tree, lf::astapi::NodeHandle command, std::size_t index);
/// getText(argument) of that tree
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

    /// The answer of isValidIdentifier.
    std::function<bool(std::u16string_view)> isIdentifier = isAsciiIdentifier;
    /// The answer of isReservedWord.
    std::function<bool(std::u16string_view)> isReserved = isOneOfThreeReservedWords;
    /// Whether a text makes a specifier; any other is refused by the exception for that.
    std::function<bool(std::u16string_view)> isSpecifier = isNameWithOrWithoutNumbers;
    /// What the descriptor library calls a package that is written so, without its range.
    std::function<std::u16string(std::u16string)> packageName = std::identity();
    /// The answer of isPackageImportsFeatureOn.
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

/// The recorder that all services of this platform share. `recorder() = Recorder()` before each
/// test forgets what was asked and brings the rules back. For one thread.
Recorder& recorder();

} // namespace lf::import::host_testing::recording
