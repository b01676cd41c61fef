// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The results of the library and of the host kit as one line of text each, to print and to compare
/// in tests. Needs no test framework.

#include <host/command.hpp>
#include <host/scope.hpp>
#include <host/text.hpp>

#include <import/argument_parser.hpp>
#include <import/entries.hpp>
#include <import/import_list.hpp>
#include <import/messages.hpp>
#include <import/platform.hpp>

#include <concepts>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace lf::import::host_testing {

/// `error KeywordInImportArgument("a.for", "for")`. For a message that is not the library's, its
/// catalogue precedes the key.
inline std::string describe(resource_core::BaseMsgID const& message) {
    std::string const text = host::toUtf8(message);
    bool const isOurs = message.catalogue == messageCatalogue;
    return (severityOf(message.key) == Severity::Error ? "error " : "warning ") +
           (isOurs ? text.substr(messageCatalogue.size() + 1) : text);
}

/// The message in \p holder, or null. Owned by the holder.
inline resource_core::BaseMsgID const* messageIn(resource_core::GenericMsgIDHolder const& holder) {
    try {
        return &holder.getMsgID();
    } catch (resource_core::GenericMsgIDHolder::EmptyGenericMsgIDHolder const&) {
        return nullptr;
    }
}

/// As its message; `no message` for an empty holder.
inline std::string describe(resource_core::GenericMsgIDHolder const& holder) {
    auto const* const message = messageIn(holder);
    return message == nullptr ? "no message" : describe(*message);
}

/// The entry as a user would write it: `matrix@^2.1 as m`.
template <host::ValidEntry Entry>
std::string describe(Entry const& entry) {
    return host::toUtf8(entry);
}

/// As the entry that \p entry holds.
///
/// \throws std::bad_variant_access for a valueless entry.
inline std::string describe(ImportEntry const& entry) {
    return host::toUtf8(entry);
}

/// As its message.
inline std::string describe(InvalidImportEntry const& entry) {
    return describe(entry.getMsgHolder());
}

/// The argument and the entry: `2: matrix@^2.1 as m`.
template <typename Entry>
std::string describe(std::pair<Entry, ImportArgumentIndex> const& parsed) {
    return std::to_string(parsed.second) + ": " + describe(parsed.first);
}

/// As the alternative that \p parsed holds.
inline std::string describe(ParsedImportEntry const& parsed) {
    return std::visit([](auto const& held) { return describe(held); }, parsed);
}

/// The argument and the entry and, with an alias clause, the argument of the package:
/// `2 of 0: matrix@^2.1 as m`.
inline std::string describe(host::CommandEntry const& found) {
    std::string place = std::to_string(found.argument);
    if (found.importedArgument != found.argument) {
        place += " of " + std::to_string(found.importedArgument);
    }
    return place + ": " + describe(found.entry);
}

/// The argument and the message: `1: error InvalidImportArgument("1x")`.
inline std::string describe(host::CommandDiagnostic const& problem) {
    return std::to_string(problem.argument) + ": " + describe(problem.message);
}

/// As the alternative that \p item holds.
inline std::string describe(host::CommandItem const& item) {
    return std::visit([](auto const& held) { return describe(held); }, item);
}

/// One line for each element of what a parser or readCommand returns.
template <typename Element>
std::vector<std::string> describe(std::vector<Element> const& elements) {
    std::vector<std::string> lines;
    lines.reserve(elements.size());
    for (Element const& element : elements) {
        lines.push_back(describe(element));
    }
    return lines;
}

/// One line for each entry that is visible in \p list: names, then wildcards, then packages, each
/// from the list outward.
inline std::vector<std::string> describeVisible(IImportList const& list) {
    constexpr auto yes = IImportList::CheckAncestorList::Yes;
    std::vector<std::string> lines;
    for (auto const& name : list.getFullyQualifiedImportEntries(yes)) {
        lines.push_back(describe(name));
    }
    for (auto const& wildcard : list.getWildcardImportEntries(yes)) {
        lines.push_back(describe(wildcard));
    }
    for (auto const& package : list.getPackageImportEntries(yes)) {
        lines.push_back(describe(package));
    }
    return lines;
}

/// \p parts in one line: `a.b, c.* and m`; `nothing` if there are none.
inline std::string joined(std::vector<std::string> const& parts) {
    std::string text;
    for (std::size_t index = 0; index < parts.size(); ++index) {
        bool const isLast = index + 1 == parts.size();
        text += index == 0 ? "" : isLast ? " and " : ", ";
        text += parts[index];
    }
    return parts.empty() ? "nothing" : text;
}

/// Calls \p visitor with the valid entry or the resource_core::BaseMsgID that \p value is about, if
/// there is one. A value is an entry, a message or its holder, an element of what a parser or
/// readCommand returns, the result of an addition to a list or to a Scope, or an import of a Scope.
template <typename Value, typename Visitor>
void visitSubject(Value const& value, Visitor const& visitor) {
    if constexpr (host::ValidEntry<Value> || std::same_as<Value, resource_core::BaseMsgID>) {
        visitor(value);
    } else if constexpr (std::same_as<Value, resource_core::GenericMsgIDHolder>) {
        if (auto const* const message = messageIn(value)) {
            visitor(*message);
        }
    } else if constexpr (std::same_as<Value, InvalidImportEntry>) {
        visitSubject(value.getMsgHolder(), visitor);
    } else if constexpr (requires { value.entry; }) {
        visitSubject(value.entry, visitor);
    } else if constexpr (requires { value.message; }) {
        visitSubject(value.message, visitor);
    } else if constexpr (requires { value.imported->entry; }) {
        visitSubject(value.imported->entry, visitor);
    } else if constexpr (requires { value.first; }) {
        visitSubject(value.first, visitor);
    } else if constexpr (requires { value.valueless_by_exception(); }) {
        std::visit([&](auto const& held) { visitSubject(held, visitor); }, value);
    } else if constexpr (requires { value.has_value(); }) {
        if (value) {
            visitSubject(*value, visitor);
        }
    } else {
        static_assert(
            requires { value.earlier; }, "this is neither an entry nor a message");
    }
}

} // namespace lf::import::host_testing
