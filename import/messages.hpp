// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The diagnostics of the library: one catalogue, and for each key its severity and arguments.
///
/// A host writes the words for each key into its own message catalogue, and can check that
/// catalogue against messages or messageKeys. The line of a key here is the only list of keys in
/// the library.

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <tuple>

namespace lf::import {

/// The catalogue of every message of this library.
inline constexpr std::string_view messageCatalogue = "KELDAR:lang";

/// The severity of a diagnostic.
enum class Severity : std::uint8_t {
    /// The diagnostic accompanies the import, which is valid. The argument `.*` without package
    /// imports is the exception: its warning is all that the command yields.
    Warning,
    /// The diagnostic replaces the import.
    Error,
};

/// The kinds of message arguments, all UTF-16 text. Each is a type of its own, so that arguments
/// cannot be swapped.
namespace message_arguments {

/// The text of an argument.
struct Text {
    /// Not owned.
    std::u16string_view text;

    /// Views \p argument.
    constexpr explicit Text(std::u16string_view argument) noexcept : text(argument) {}
};

// clang-format off

/// The import argument, exactly as written.
struct ImportArgument : Text { using Text::Text; };

/// The reserved word found in the import argument.
struct ReservedWord : Text { using Text::Text; };

/// The argument in place of an alias, as written.
struct RejectedAlias : Text { using Text::Text; };

/// The import that is refused: the specifier of a package, the raw argument of a name.
struct RefusedImport : Text { using Text::Text; };

/// The name that the refused entry introduces.
struct IntroducedName : Text { using Text::Text; };

// clang-format on

} // namespace message_arguments

/// A kind of diagnostic, with the types of its arguments in the order in which messages carry them.
template <typename... Arguments>
struct MessageDefinition {
    /// Identifies the kind within the catalogue.
    std::string_view key;
    /// The severity of every message of the kind.
    Severity severity;
};

// clang-format off

/// The kinds of diagnostic that a parser returns among its entries.
inline constexpr auto parserMessages = [] {
    using namespace message_arguments;
    using enum Severity;
    return std::tuple{
        // The argument is neither a name, nor a wildcard, nor a package.
        MessageDefinition<ImportArgument>{"InvalidImportArgument", Error},
        // Without package imports: a wildcard has a bad prefix, or none.
        MessageDefinition<ImportArgument>{"MalformedImportArgumentWarning", Warning},
        // The name to be introduced is a reserved word.
        MessageDefinition<ImportArgument, ReservedWord>{"KeywordInImportArgument", Error},
        // Without package imports: the name to be introduced is a reserved word.
        MessageDefinition<ImportArgument, ReservedWord>{"KeywordInImportArgumentWarning", Warning},
        // Without package imports: every argument needs a dot.
        MessageDefinition<>{"ImportArgumentWithoutDot", Error},
        // The alias is not a plain name.
        MessageDefinition<RejectedAlias>{"InvalidAliasName", Error},
        // There is no alias, or more than one.
        MessageDefinition<>{"IncorrectNumberOfAlias", Error},
        // There is no package before `as`, or more than one.
        MessageDefinition<>{"IncorrectNumberOfPackagesForAlias", Error},
        // One command imports both names and packages.
        MessageDefinition<>{"MixedImportType", Error},
        // A second `as`.
        MessageDefinition<>{"MultipleAsClauses", Error},
        // `as` follows a name or wildcard.
        MessageDefinition<>{"NamespaceWithAlias", Error},
    };
}();

/// The kinds of diagnostic with which a list refuses an entry.
inline constexpr auto listMessages = [] {
    using namespace message_arguments;
    using enum Severity;
    return std::tuple{
        // The scope already has a package under this name.
        MessageDefinition<RefusedImport>{"PackageRedeclared", Error},
        // The scope already introduces this name by an import of the other kind.
        MessageDefinition<RefusedImport, IntroducedName>{"PrecedenceViolation", Error},
        // A dotted import starts with the name that a package import introduces.
        MessageDefinition<>{"InvalidPackageFunctionAbbreviation", Error},
    };
}();

// clang-format on

/// Every kind of diagnostic: a tuple of MessageDefinition.
inline constexpr auto messages = std::tuple_cat(parserMessages, listMessages);

/// A kind of diagnostic as plain data.
struct MessageKey {
    /// Identifies the kind within the catalogue.
    std::string_view key;
    /// The severity of every message of the kind.
    Severity severity;
    /// The number of arguments of every message of the kind.
    std::size_t numberOfArguments;

    /// The data of \p definition.
    template <typename... Arguments>
    constexpr explicit MessageKey(MessageDefinition<Arguments...> const& definition) noexcept
        : key(definition.key),
          severity(definition.severity),
          numberOfArguments(sizeof...(Arguments)) {}
};

/// The data of each of \p definitions, in the same order.
template <typename... Definitions>
constexpr std::array<MessageKey, sizeof...(Definitions)>
keysOf(std::tuple<Definitions...> const& definitions) noexcept {
    return std::apply([](auto const&... each) { return std::array{MessageKey(each)...}; },
                      definitions);
}

/// Every kind of diagnostic as plain data, in the order of messages.
inline constexpr auto messageKeys = keysOf(messages);

/// The severity of messages with exactly this key. A key that is not in messageKeys is an error,
/// even if it ends in "Warning".
constexpr Severity severityOf(std::string_view key) noexcept {
    for (MessageKey const& known : messageKeys) {
        if (known.key == key) {
            return known.severity;
        }
    }
    return Severity::Error;
}

} // namespace lf::import
