// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The diagnostics of the library: one catalogue, fourteen keys, their severity and their arguments.
///
/// A host writes the words for each key into its own message catalogue; messageKeys is the list that it
/// can check that catalogue against.

#include <array>
#include <cstddef>
#include <string_view>

namespace lf::import {

/// The catalogue of every message of this library.
inline constexpr std::string_view messageCatalogue = "KELDAR:lang";

/// How grave a diagnostic is: a warning stands beside its import, an error in place of it.
enum class Severity { Warning, Error };

/// The meanings that message arguments can have, as types, so that they cannot be swapped. All are
/// UTF-16 text.
namespace message_arguments {

/// The import argument, exactly as written.
struct ImportArgument {
    constexpr explicit ImportArgument(std::u16string_view argument) noexcept : text(argument) {}
    std::u16string_view text;
};

/// The reserved word found in an import argument.
struct ReservedWord {
    constexpr explicit ReservedWord(std::u16string_view word) noexcept : text(word) {}
    std::u16string_view text;
};

/// The text that stands where an alias should.
struct RejectedAlias {
    constexpr explicit RejectedAlias(std::u16string_view alias) noexcept : text(alias) {}
    std::u16string_view text;
};

/// What the refused entry imports: a package's specifier, or the raw argument of a name.
struct RefusedImport {
    constexpr explicit RefusedImport(std::u16string_view import_) noexcept : text(import_) {}
    std::u16string_view text;
};

/// The name that the refused entry would have introduced.
struct IntroducedName {
    constexpr explicit IntroducedName(std::u16string_view name) noexcept : text(name) {}
    std::u16string_view text;
};

} // namespace message_arguments

} // namespace lf::import
