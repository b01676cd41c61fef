// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The recording platform: the headers of the reference platform, with services that record each
/// question and give the answers that a test has set. Link gleigem::recorded, the library on this
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
    /// The text of a package specifier
    SpecifierText,
    /// RecordingTree::getNumberOfArguments
    NumberOfArguments,
    /// RecordingTree::getArgument
    Argument,
    /// RecordingTree::getText
    ArgumentText,
};

/// One question. Members that its service does not use keep their defaults.
struct Question {
    /// The service that was asked.
    Service service{};
    /// The text for Identifier, ReservedWord, Specifier and SpecifierText.
    std::u16string text{};
    /// The selector for ReservedWord.
    int selector = 0;
    /// The name of the tree for NumberOfArguments, Argument and ArgumentText.
    std::string tree{};
    /// The command or argument, for the same services.
    lf::astapi::NodeHandle node = 0;
    /// The index for Argument.
    std::size_t index = 0;

    /// Whether all members are equal.
    friend bool operator==(Question const&, Question const&) = default;
};

/// Prints one readable line.
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

/// Identifiers joined by dots, optionally followed by `@` and numbers joined by dots.
bool isNameWithOrWithoutNumbers(std::u16string_view text);

/// The log of questions and the rules for answers. Tests can change both.
struct Recorder {
    /// All questions in the order in which they were asked.
    std::vector<Question> log;

    /// The answer of isValidIdentifier.
    std::function<bool(std::u16string_view)> isIdentifier = isAsciiIdentifier;
    /// The answer of isReservedWord.
    std::function<bool(std::u16string_view)> isReserved = isOneOfThreeReservedWords;
    /// Whether a text is a valid specifier. For any other text, the constructor throws the
    /// exception for invalid specifiers.
    std::function<bool(std::u16string_view)> isSpecifier = isNameWithOrWithoutNumbers;
    /// The name of a package, from its text without the version range.
    std::function<std::u16string(std::u16string)> packageName = std::identity();
    /// The answer of isPackageImportsFeatureOn.
    bool isFeatureOn = true;

    /// Called for each question once it is in the log and before it is answered; can throw, and can
    /// change the answer.
    std::function<void()> beforeAnswer = [] {};

    /// Sets beforeAnswer: calls \p action at the \p nth question to \p service from now on, counted
    /// from 1.
    void whenAsked(Service service, std::size_t nth, std::function<void()> action);

    /// Adds a question to the log, then calls beforeAnswer.
    void ask(Question question);
};

/// The recorder that all services of this platform share. Use `recorder() = Recorder()` before each
/// test to clear the log and reset the rules. Not for concurrent use.
Recorder& recorder();

} // namespace lf::import::host_testing::recording
