// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Reads one `import` command: entries and diagnostics as values, each with its argument.

#include <host/overloaded.hpp>
#include <host/text.hpp>

#include <import/argument_parser.hpp>
#include <import/messages.hpp>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace lf::import::host {

/// A valid entry of a command.
struct CommandEntry {
    /// To be moved into the list of the command's scope.
    ImportEntry entry;
    /// The argument that the parser names for it: under an alias clause that of the alias.
    ImportArgumentIndex argument;
    /// The argument that says what is imported: under an alias clause that of the package.
    ImportArgumentIndex importedArgument;
};

/// A diagnostic of a command.
struct CommandDiagnostic {
    /// Never empty.
    resource_core::GenericMsgIDHolder message;
    /// As severityOf the message's key.
    Severity severity;
    /// The argument that it is about.
    ImportArgumentIndex argument;
};

/// One element of a command. std::visit wants both to be dealt with, so that no diagnostic is
/// passed over in silence.
using CommandItem = std::variant<CommandEntry, CommandDiagnostic>;

/// What becomes of the acceptable arguments of a command in error.
enum class Salvage : std::uint8_t {
    /// Nothing, as the rules want it: the diagnostic is all.
    No,
    /// Their entries stand beside the diagnostic. For editors, in which a command is in error while
    /// it is being typed.
    Yes,
};

/// With Salvage::Yes, a command gives no entries when more arguments than these are in the way, so
/// that its cost stays linear in its length.
inline constexpr std::size_t mostArgumentsPassedOver = 32;

namespace detail {

using Arguments = std::vector<std::u16string>;

inline Arguments textsOf(lf::astapi::ImportCommandView const& command) {
    Arguments texts;
    while (texts.size() <
           static_cast<std::size_t>(command.tree->getNumberOfArguments(command.node))) {
        auto const argument = command.tree->getArgument(command.node, texts.size());
        texts.emplace_back(argument.tree->getText(argument.node));
    }
    return texts;
}

/// Asks the feature switch at most once, so that a command that is parsed several times is parsed
/// by one grammar.
inline Behavior settle(Behavior behavior) {
    if (behavior != Behavior::FollowFeatureSwitch) {
        return behavior;
    }
    return lf::features::isPackageImportsFeatureOn() ? Behavior::WithPackageImports
                                                     : Behavior::WithoutPackageImports;
}

template <ValidEntry Entry>
CommandItem toItem(Entry&& entry, ImportArgumentIndex argument) {
    return CommandEntry{std::move(entry), argument, argument};
}

inline CommandItem toItem(InvalidImportEntry&& entry, ImportArgumentIndex argument) {
    auto const& message = entry.getMsgHolder();
    return CommandDiagnostic{message, severityOf(message.getMsgID().key), argument};
}

template <typename Command>
std::vector<CommandItem> parse(Command const& command, Behavior behavior) {
    auto const parser = createImportArgumentParser(command, behavior);
    std::vector<ParsedImportEntry>& parsed = parser->parse();
    std::vector<CommandItem> items;
    items.reserve(parsed.size());
    for (ParsedImportEntry& element : parsed) {
        items.push_back(std::visit(
            [](auto& pair) { return toItem(std::move(pair.first), pair.second); }, element));
    }
    return items;
}

/// The diagnostic that stands in place of all entries, or null. One that stands beside an entry is
/// never alone.
inline CommandDiagnostic const* rejectionOf(std::vector<CommandItem> const& items) {
    return items.size() == 1 ? std::get_if<CommandDiagnostic>(items.data()) : nullptr;
}

/// The entry of an alias clause, or null, as far as that can be told without the texts: one that
/// may be of an alias clause is the only one, and behind the first argument.
inline CommandEntry* possibleAliasIn(std::vector<CommandItem>& items) {
    auto* const entry = items.size() == 1 ? std::get_if<CommandEntry>(items.data()) : nullptr;
    bool const isPossible = entry != nullptr && entry->argument > 0 &&
                            std::holds_alternative<PackageImportEntry>(entry->entry);
    return isPossible ? entry : nullptr;
}

/// A package that is imported alone is named by the first argument that is not empty: empty ones
/// take no part.
inline ImportArgumentIndex firstTakingPart(Arguments const& texts) {
    auto const first = std::ranges::find_if_not(texts, &std::u16string::empty);
    return static_cast<ImportArgumentIndex>(first - texts.begin());
}

inline ImportArgumentIndex argumentOf(CommandItem const& item) {
    return std::visit([](auto const& held) { return held.argument; }, item);
}

/// The entries that \p texts give without the arguments that are in the way, besides the diagnostic
/// of the whole command, all in the order of the arguments.
inline std::vector<CommandItem> salvage(CommandDiagnostic const& rejection, Arguments texts,
                                        Behavior behavior) {
    std::vector<CommandItem> items{rejection};
    for (std::size_t count = 0; count < mostArgumentsPassedOver; ++count) {
        // An empty argument takes no part, and those behind it keep their indexes.
        texts.at(rejectionOf(items)->argument).clear();
        items = parse(texts, behavior);
        if (rejectionOf(items) == nullptr) {
            break;
        }
    }
    if (rejectionOf(items) != nullptr) {
        return {rejection};
    }
    if (auto* const alias = possibleAliasIn(items)) {
        alias->importedArgument = firstTakingPart(texts);
    }
    auto const behind = std::ranges::find_if(
        items, [&](CommandItem const& item) { return argumentOf(item) > rejection.argument; });
    items.insert(behind, rejection);
    return items;
}

/// \param texts answers the arguments as texts; asked only where they are needed.
template <typename Command, typename Texts>
std::vector<CommandItem> read(Command const& command, Texts const& texts, Behavior behavior,
                              Salvage salvages) {
    Behavior const settled = settle(behavior);
    std::vector<CommandItem> items = parse(command, settled);
    if (auto* const alias = possibleAliasIn(items)) {
        alias->importedArgument = firstTakingPart(texts());
    }
    auto const* const rejection = rejectionOf(items);
    return rejection != nullptr && salvages == Salvage::Yes ? salvage(*rejection, texts(), settled)
                                                            : std::move(items);
}

} // namespace detail

/// Parses the arguments of one command: its entries and diagnostics, in the order of the arguments,
/// a warning behind the entry that it is about.
///
/// \throws std::bad_alloc, and what the host's services throw; bad input is never thrown.
[[nodiscard]] inline std::vector<CommandItem>
readCommand(cppcompat::span<std::u16string const> arguments, Behavior behavior,
            Salvage salvage = Salvage::No) {
    auto const texts = [&] { return detail::Arguments(arguments.begin(), arguments.end()); };
    return detail::read(arguments, texts, behavior, salvage);
}

/// As above, for a command in the host's syntax tree. The tree is read once more where an alias
/// clause or an error wants it.
[[nodiscard]] inline std::vector<CommandItem> readCommand(lf::astapi::ImportCommandView command,
                                                          Behavior behavior,
                                                          Salvage salvage = Salvage::No) {
    auto const texts = [&] { return detail::textsOf(command); };
    return detail::read(command, texts, behavior, salvage);
}

} // namespace lf::import::host
