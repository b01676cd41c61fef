// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Reads one `import` command and returns its entries and diagnostics by value, each with its
/// argument.

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
    /// Move it into the list of the command's scope.
    ImportEntry entry;
    /// The argument that the parser reports for it: with an alias clause, the alias.
    ImportArgumentIndex argument;
    /// The argument that names what is imported: with an alias clause, the package.
    ImportArgumentIndex importedArgument;
};

/// A diagnostic of a command.
struct CommandDiagnostic {
    /// Never empty.
    resource_core::GenericMsgIDHolder message;
    /// The result of severityOf for the message's key.
    Severity severity;
    /// The argument that it is about.
    ImportArgumentIndex argument;
};

/// One element of a command. std::visit requires a function for both alternatives, so that no
/// diagnostic is ignored by accident.
using CommandItem = std::variant<CommandEntry, CommandDiagnostic>;

/// What to do with the valid arguments of a command in error.
enum class Salvage : std::uint8_t {
    /// Return only the diagnostic: a command in error imports nothing.
    No,
    /// Return their entries as well. For editors, where a command is in error while the user types
    /// it.
    Yes,
};

/// With Salvage::Yes, a command with more invalid arguments than this gives no entries, so that the
/// cost of reading it is linear in its length.
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

/// Asks the feature switch at most once, so that a command that is parsed several times is always
/// parsed with the same grammar.
inline Behavior settle(Behavior behavior) {
    if (behavior != Behavior::FollowFeatureSwitch) {
        return behavior;
    }
    return lf::features::isPackageImportsFeatureOn() ? Behavior::WithPackageImports
                                                     : Behavior::WithoutPackageImports;
}

template <ValidEntry Entry>
CommandItem toItem(Entry&& entry, ImportArgumentIndex argument) {
    return CommandEntry{std::forward<Entry>(entry), argument, argument};
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

/// The diagnostic that replaces all entries, or null. A warning about an entry is never alone.
inline CommandDiagnostic const* rejectionOf(std::vector<CommandItem> const& items) {
    return items.size() == 1 ? std::get_if<CommandDiagnostic>(items.data()) : nullptr;
}

/// The entry that may belong to an alias clause, or null. Without the texts, only this is
/// known: such an entry is the only one, and is not reported at the first argument.
inline CommandEntry* possibleAliasIn(std::vector<CommandItem>& items) {
    auto* const entry = items.size() == 1 ? std::get_if<CommandEntry>(items.data()) : nullptr;
    bool const isPossible = entry != nullptr && entry->argument > 0 &&
                            std::holds_alternative<PackageImportEntry>(entry->entry);
    return isPossible ? entry : nullptr;
}

/// The index of the first argument that is not empty. If a command imports one package, this is the
/// package: empty arguments are ignored.
inline ImportArgumentIndex firstTakingPart(Arguments const& texts) {
    auto const first = std::ranges::find_if_not(texts, &std::u16string::empty);
    return static_cast<ImportArgumentIndex>(first - texts.begin());
}

inline ImportArgumentIndex argumentOf(CommandItem const& item) {
    return std::visit([](auto const& held) { return held.argument; }, item);
}

/// The entries that \p texts give without the invalid arguments, and the diagnostic of the whole
/// command, in the order of the arguments.
inline std::vector<CommandItem> salvage(CommandDiagnostic const& rejection, Arguments texts,
                                        Behavior behavior) {
    std::vector<CommandItem> items{rejection};
    for (std::size_t count = 0; count < mostArgumentsPassedOver; ++count) {
        // An empty argument is ignored, and those after it keep their indexes.
        texts.at(static_cast<std::size_t>(rejectionOf(items)->argument)).clear();
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

/// \param texts returns the arguments as texts; called only if they are needed.
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

/// Parses the arguments of one command.
///
/// \returns its entries and diagnostics in the order of the arguments; a warning follows the entry
/// that it is about.
///
/// \throws std::bad_alloc, and whatever the host's services throw. Bad input produces diagnostics,
/// never exceptions.
[[nodiscard]] inline std::vector<CommandItem>
readCommand(cppcompat::span<std::u16string const> arguments, Behavior behavior,
            Salvage salvage = Salvage::No) {
    auto const texts = [&] { return detail::Arguments(arguments.begin(), arguments.end()); };
    return detail::read(arguments, texts, behavior, salvage);
}

/// The same for a command in the host's syntax tree. The tree is read once more if there is an
/// alias clause or an error.
[[nodiscard]] inline std::vector<CommandItem> readCommand(lf::astapi::ImportCommandView command,
                                                          Behavior behavior,
                                                          Salvage salvage = Salvage::No) {
    auto const texts = [&] { return detail::textsOf(command); };
    return detail::read(command, texts, behavior, salvage);
}

} // namespace lf::import::host
