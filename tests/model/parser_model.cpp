// SPDX-License-Identifier: BSL-1.0

// The rules as three tables: how an argument is classified with package imports, how without them,
// and which commands are errors. Each kind of argument has a letter, so that a command is a word
// over these letters:
//
//   n  a dotted name          p  a plain package           a  the word `as`
//   w  a wildcard             v  a package with versions   x  a rejected argument
//
// Ignored arguments do not appear in the word, but positions count them.

#include "parser_model.hpp"

#include <foundation/core/except/exception.hpp>
#include <kpm/arguments/invalid_package_specifier.hpp>
#include <lf/util/identifier.hpp>
#include <lfu/reserved_words.hpp>
#include <oxtavel/keldar_components/component_version_range.hpp>
#include <oxtavel/keldar_components/package_specifier.hpp>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <optional>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace model {
namespace {

using Oxtavel::KeldarComponents::GetComponentVersionRangeFactory;
using Oxtavel::KeldarComponents::PackageSpecifier;
using InvalidSpecifier =
    foundation::core::except::Exception<kpm::arguments::InvalidPackageSpecifier, std::exception>;

// The text of one argument and its properties.

struct Text {
    std::u16string whole;
    std::vector<std::u16string> segments; ///< what stands between dots; without a dot only one

    explicit Text(std::u16string const& text) : whole(text), segments(1) {
        for (char16_t const unit : text) {
            if (unit == u'.') {
                segments.emplace_back();
            } else {
                segments.back() += unit;
            }
        }
    }
};

bool isEmpty(Text const& text) {
    return text.whole.empty();
}

bool isDotStar(Text const& text) {
    return text.whole == u".*";
}

bool isAs(Text const& text) {
    return text.whole == u"as";
}

bool hasAt(Text const& text) {
    return std::ranges::count(text.whole, u'@') > 0;
}

bool hasNoDot(Text const& text) {
    return text.segments.size() == 1;
}

bool endsInStar(Text const& text) {
    return !hasNoDot(text) && text.segments.back() == u"*";
}

bool endsInReservedWord(Text const& text) {
    return lfu::isReservedWord(text.segments.back(), 8);
}

bool endsInNoIdentifier(Text const& text) {
    return !lf::util::isValidIdentifier(text.segments.back());
}

bool hasBadPrefix(Text const& text) {
    return !std::all_of(
        text.segments.begin(), text.segments.end() - 1,
        [](std::u16string const& segment) { return lf::util::isValidIdentifier(segment); });
}

bool isBadPrefixAndStar(Text const& text) {
    return endsInStar(text) && hasBadPrefix(text);
}

PackageSpecifier specifierOf(std::u16string const& text) {
    return {text, GetComponentVersionRangeFactory()};
}

bool isRefusedSpecifier(Text const& text) {
    if (!hasAt(text)) {
        return false;
    }
    try {
        specifierOf(text.whole);
    } catch (InvalidSpecifier const&) {
        return true;
    }
    return false;
}

bool isAnything(Text const& /*text*/) {
    return true;
}

// Classification of an argument: the first matching row decides.

constexpr char ignored = '-';

/// The arguments of a message.
enum class Carries : std::uint8_t { Nothing, TheArgument, TheArgumentAndItsEnd };

struct ArgumentRow {
    bool (*holds)(Text const&);
    char kind;
    /// The key of the error for a rejected argument, or of the warning for any other; empty for
    /// none.
    std::string_view key;
    Carries carries = Carries::Nothing;
};

// clang-format off
constexpr std::array withPackageImports{
    ArgumentRow{isEmpty,            ignored, ""},
    ArgumentRow{isRefusedSpecifier, 'x', "InvalidImportArgument", Carries::TheArgument},
    ArgumentRow{hasAt,              'v', ""},
    ArgumentRow{isAs,               'a', ""},
    ArgumentRow{hasBadPrefix,       'x', "InvalidImportArgument", Carries::TheArgument},
    ArgumentRow{endsInStar,         'w', ""},
    ArgumentRow{endsInNoIdentifier, 'x', "InvalidImportArgument", Carries::TheArgument},
    ArgumentRow{endsInReservedWord, 'x', "KeywordInImportArgument", Carries::TheArgumentAndItsEnd},
    ArgumentRow{hasNoDot,           'p', ""},
    ArgumentRow{isAnything,         'n', ""},
};

constexpr std::array withoutPackageImports{
    ArgumentRow{isEmpty,            ignored, ""},
    ArgumentRow{isDotStar,          'x', "MalformedImportArgumentWarning", Carries::TheArgument},
    ArgumentRow{hasNoDot,           'x', "ImportArgumentWithoutDot"},
    ArgumentRow{isBadPrefixAndStar, 'w', "MalformedImportArgumentWarning", Carries::TheArgument},
    ArgumentRow{endsInStar,         'w', ""},
    ArgumentRow{endsInReservedWord, 'n', "KeywordInImportArgumentWarning", Carries::TheArgumentAndItsEnd},
    ArgumentRow{isAnything,         'n', ""},
};

// clang-format on

struct Argument {
    char kind;
    std::size_t position;
    Text text;
    std::optional<Outcome> message;
};

Outcome invalid(std::string_view key, std::vector<std::u16string> messageArguments,
                std::size_t position) {
    Outcome outcome;
    outcome.kind = OutcomeKind::Invalid;
    outcome.index = position;
    outcome.catalogue = "KELDAR:lang";
    outcome.key = key;
    outcome.messageArguments = std::move(messageArguments);
    outcome.isWarning =
        key == "MalformedImportArgumentWarning" || key == "KeywordInImportArgumentWarning";
    return outcome;
}

std::vector<std::u16string> carried(Carries carries, Text const& text) {
    switch (carries) {
    case Carries::Nothing:
        break;
    case Carries::TheArgument:
        return {text.whole};
    case Carries::TheArgumentAndItsEnd:
        return {text.whole, text.segments.back()};
    }
    return {};
}

template <typename Rows>
Argument classify(Rows const& rows, std::u16string const& whole, std::size_t position) {
    Text text(whole);
    ArgumentRow const& row =
        *std::ranges::find_if(rows, [&](ArgumentRow const& each) { return each.holds(text); });
    std::optional<Outcome> message;
    if (!row.key.empty()) {
        message = invalid(row.key, carried(row.carries, text), position);
    }
    return {row.kind, position, std::move(text), std::move(message)};
}

// Errors of a command: its word matches exactly one row.

/// Sets of letters, one for each argument: `+` means one or more arguments of the set, `$` the end
/// of the command. Without `$`, the command may continue after the pattern.
using Pattern = std::array<std::string_view, 4>;

struct CommandRow {
    Pattern pattern;
    /// The error, at the last argument that the pattern covers; empty if there is none.
    std::string_view key;
};

// clang-format off
constexpr std::array commands{
    CommandRow{{"$"},                   ""},
    CommandRow{{"nw+", "$"},            ""},
    CommandRow{{"pv+", "$"},            ""},
    CommandRow{{"pv", "a", "p", "$"},   ""},
    CommandRow{{"a"},                   "IncorrectNumberOfPackagesForAlias"},
    CommandRow{{"pv", "pv+", "a"},      "IncorrectNumberOfPackagesForAlias"},
    CommandRow{{"nw+", "a"},            "NamespaceWithAlias"},
    CommandRow{{"nw+", "pv"},           "MixedImportType"},
    CommandRow{{"pv+", "nw"},           "MixedImportType"},
    CommandRow{{"pv", "a", "$"},        "IncorrectNumberOfAlias"},
    CommandRow{{"pv", "a", "a"},        "MultipleAsClauses"},
    CommandRow{{"pv", "a", "nwv"},      "InvalidAliasName"},
    CommandRow{{"pv", "a", "p", "a"},   "MultipleAsClauses"},
    CommandRow{{"pv", "a", "p", "nwpv"}, "IncorrectNumberOfAlias"},
};

// clang-format on

/// The number of arguments of \p word that the pattern covers; nothing if the word does not start
/// with the pattern.
std::optional<std::size_t> covers(Pattern const& pattern, std::string_view word) {
    std::size_t covered = 0;
    for (std::string_view const element : pattern) {
        if (element == "$" && covered != word.size()) {
            return std::nullopt;
        }
        if (element.empty() || element == "$") {
            break;
        }
        std::size_t const end = std::min(word.find_first_not_of(element, covered), word.size());
        if (end <= covered) {
            return std::nullopt;
        }
        covered = element.ends_with('+') ? end : covered + 1;
    }
    return covered;
}

/// Also checks the table: exactly one row must match each word.
CommandRow const& rowOf(std::string_view word) {
    auto const matches = [&](CommandRow const& row) {
        return covers(row.pattern, word).has_value();
    };
    if (std::ranges::count_if(commands, matches) != 1) {
        throw std::logic_error("not exactly one row for " + std::string(word));
    }
    return *std::ranges::find_if(commands, matches);
}

/// The text of an invalid alias, as the user wrote it.
std::u16string aliasText(Argument const& argument) {
    return argument.kind == 'v' ? specifierOf(argument.text.whole).ToString() : argument.text.whole;
}

Outcome entryOf(Argument const& argument) {
    Outcome outcome;
    outcome.index = argument.position;
    if (argument.kind == 'p' || argument.kind == 'v') {
        PackageSpecifier const specifier = specifierOf(argument.text.whole);
        outcome.kind = OutcomeKind::Package;
        outcome.introducedName = specifier.Name();
        outcome.specifier = specifier.ToString();
        return outcome;
    }
    outcome.kind = argument.kind == 'n' ? OutcomeKind::FullyQualified : OutcomeKind::Wildcard;
    outcome.rawArgument = argument.text.whole;
    outcome.rootElement = argument.text.segments.front();
    if (argument.kind == 'n') {
        outcome.introducedName = argument.text.segments.back();
    }
    return outcome;
}

std::vector<Outcome> entriesOf(std::vector<Argument> const& arguments, std::string_view word) {
    if (word.find('a') != std::string_view::npos) {
        Outcome renamed = entryOf(arguments.front());
        renamed.introducedName = arguments.back().text.whole;
        renamed.index = arguments.back().position;
        return {renamed};
    }
    std::vector<Outcome> outcomes;
    for (Argument const& argument : arguments) {
        outcomes.push_back(entryOf(argument));
        if (argument.message) {
            outcomes.push_back(*argument.message);
        }
    }
    return outcomes;
}

/// Classifies all arguments except ignored ones.
std::vector<Argument> classifyAll(std::vector<std::u16string> const& texts, bool packageImportsOn) {
    std::vector<Argument> arguments;
    for (std::size_t position = 0; position < texts.size(); ++position) {
        Argument argument = packageImportsOn
                                ? classify(withPackageImports, texts[position], position)
                                : classify(withoutPackageImports, texts[position], position);
        if (argument.kind != ignored) {
            arguments.push_back(std::move(argument));
        }
    }
    return arguments;
}

} // namespace

std::vector<Outcome> parseCommand(std::vector<std::u16string> const& arguments,
                                  bool packageImportsOn) {
    std::vector<Argument> const classified = classifyAll(arguments, packageImportsOn);
    auto const rejected = std::ranges::find(classified, 'x', &Argument::kind);
    if (rejected != classified.end()) {
        return {*rejected->message};
    }

    std::string word;
    for (Argument const& argument : classified) {
        word += argument.kind;
    }
    auto const& [pattern, key] = rowOf(word);
    if (key.empty()) {
        return entriesOf(classified, word);
    }
    Argument const& place = classified.at(*covers(pattern, word) - 1);
    bool const carriesTheAlias = key == "InvalidAliasName";
    return {invalid(key,
                    carriesTheAlias ? std::vector{aliasText(place)} : std::vector<std::u16string>{},
                    place.position)};
}

} // namespace model
