// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The diagnostics of the library: one catalogue, fourteen keys, their severity and their
/// arguments.
///
/// A host writes the words for each key into its own message catalogue; messageKeys is what it can
/// check that catalogue against.

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace lf::import {

/// The catalogue of every message of this library.
inline constexpr std::string_view messageCatalogue = "KELDAR:lang";

/// How grave a diagnostic is.
enum class Severity : std::uint8_t {
    /// The import stands; the diagnostic stands beside it.
    Warning,
    /// The diagnostic stands in place of the import.
    Error,
};

/// What the arguments of messages mean. Each meaning is a type of its own, so that arguments cannot
/// be swapped; all are UTF-16 text.
namespace message_arguments {

/// The import argument, exactly as written.
struct ImportArgument {
    /// Not owned.
    std::u16string_view text;

    /// Views \p argument.
    constexpr explicit ImportArgument(std::u16string_view argument) noexcept : text(argument) {}
};

/// The reserved word found in the import argument.
struct ReservedWord {
    /// Not owned.
    std::u16string_view text;

    /// Views \p word.
    constexpr explicit ReservedWord(std::u16string_view word) noexcept : text(word) {}
};

/// What stands in the place of an alias, as written.
struct RejectedAlias {
    /// Not owned.
    std::u16string_view text;

    /// Views \p alias.
    constexpr explicit RejectedAlias(std::u16string_view alias) noexcept : text(alias) {}
};

/// What the refused entry imports: the specifier of a package, the raw argument of a name.
struct RefusedImport {
    /// Not owned.
    std::u16string_view text;

    /// Views \p refused.
    constexpr explicit RefusedImport(std::u16string_view refused) noexcept : text(refused) {}
};

/// The name that the refused entry introduces.
struct IntroducedName {
    /// Not owned.
    std::u16string_view text;

    /// Views \p name.
    constexpr explicit IntroducedName(std::u16string_view name) noexcept : text(name) {}
};

} // namespace message_arguments

/// A kind of diagnostic, with the types of its arguments in the order in which messages carry them.
template <typename... Arguments>
struct MessageDefinition {
    /// What names the kind within the catalogue.
    std::string_view key;
    /// Of every message of the kind.
    Severity severity;
};

/// The fourteen kinds of diagnostic.
namespace messages {

using namespace message_arguments;
using enum Severity;

// clang-format off

/// The argument is no name, wildcard or package.
inline constexpr MessageDefinition<ImportArgument> invalidImportArgument{"InvalidImportArgument", Error};
/// Without package imports: a wildcard has a bad prefix, or none.
inline constexpr MessageDefinition<ImportArgument> malformedImportArgumentWarning{"MalformedImportArgumentWarning", Warning};
/// The name to be introduced is a reserved word.
inline constexpr MessageDefinition<ImportArgument, ReservedWord> keywordInImportArgument{"KeywordInImportArgument", Error};
/// Without package imports: the name to be introduced is a reserved word.
inline constexpr MessageDefinition<ImportArgument, ReservedWord> keywordInImportArgumentWarning{"KeywordInImportArgumentWarning", Warning};
/// Without package imports: every argument needs a dot.
inline constexpr MessageDefinition<> importArgumentWithoutDot{"ImportArgumentWithoutDot", Error};
/// What follows `as` is no plain name.
inline constexpr MessageDefinition<RejectedAlias> invalidAliasName{"InvalidAliasName", Error};
/// `as` is followed by no name, or by more than one.
inline constexpr MessageDefinition<> incorrectNumberOfAlias{"IncorrectNumberOfAlias", Error};
/// `as` follows no package, or more than one.
inline constexpr MessageDefinition<> incorrectNumberOfPackagesForAlias{"IncorrectNumberOfPackagesForAlias", Error};
/// One command imports both names and packages.
inline constexpr MessageDefinition<> mixedImportType{"MixedImportType", Error};
/// A second `as`.
inline constexpr MessageDefinition<> multipleAsClauses{"MultipleAsClauses", Error};
/// `as` follows a name or wildcard.
inline constexpr MessageDefinition<> namespaceWithAlias{"NamespaceWithAlias", Error};
/// The scope already has a package under this name.
inline constexpr MessageDefinition<RefusedImport> packageRedeclared{"PackageRedeclared", Error};
/// The scope already introduces this name by an import of the other kind.
inline constexpr MessageDefinition<RefusedImport, IntroducedName> precedenceViolation{"PrecedenceViolation", Error};
/// A dotted import starts with a name that a package import introduces.
inline constexpr MessageDefinition<> invalidPackageFunctionAbbreviation{"InvalidPackageFunctionAbbreviation", Error};

// clang-format on

} // namespace messages

/// A kind of diagnostic as plain data.
struct MessageKey {
    /// What names the kind within the catalogue.
    std::string_view key;
    /// Of every message of the kind.
    Severity severity;
    /// How many arguments each message of the kind carries.
    std::size_t numberOfArguments;

    /// The data of \p definition.
    template <typename... Arguments>
    constexpr explicit MessageKey(MessageDefinition<Arguments...> const& definition) noexcept
        : key(definition.key),
          severity(definition.severity),
          numberOfArguments(sizeof...(Arguments)) {}
};

/// Every kind of diagnostic, once. A message can be made only of what stands here.
inline constexpr std::array messageKeys{
    MessageKey(messages::invalidImportArgument),
    MessageKey(messages::malformedImportArgumentWarning),
    MessageKey(messages::keywordInImportArgument),
    MessageKey(messages::keywordInImportArgumentWarning),
    MessageKey(messages::importArgumentWithoutDot),
    MessageKey(messages::invalidAliasName),
    MessageKey(messages::incorrectNumberOfAlias),
    MessageKey(messages::incorrectNumberOfPackagesForAlias),
    MessageKey(messages::mixedImportType),
    MessageKey(messages::multipleAsClauses),
    MessageKey(messages::namespaceWithAlias),
    MessageKey(messages::packageRedeclared),
    MessageKey(messages::precedenceViolation),
    MessageKey(messages::invalidPackageFunctionAbbreviation),
};

/// The severity of the messages with exactly this key; one that is not in messageKeys is an error,
/// however it ends.
constexpr Severity severityOf(std::string_view key) noexcept {
    for (MessageKey const& known : messageKeys) {
        if (known.key == key) {
            return known.severity;
        }
    }
    return Severity::Error;
}

} // namespace lf::import
