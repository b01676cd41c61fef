// SPDX-License-Identifier: BSL-1.0
#include <import_explorer/fixes.hpp>

#include <import_explorer/syntax_tree.hpp>

#include <host/command.hpp>

#include <algorithm>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <variant>
#include <vector>

namespace explorer {

namespace {

constexpr std::string_view keyOfRedeclaredPackage = "PackageRedeclared";
constexpr std::size_t firstNumber = 2;

using Names = std::unordered_set<std::string_view>;

std::string_view lastPartOf(std::string_view name) {
    return name.substr(name.rfind('.') + 1);
}

std::string_view firstPartOf(std::string_view name) {
    return name.substr(0, name.find('.'));
}

void insertIfAny(Names& names, std::optional<std::string> const& name) {
    if (name) {
        names.insert(*name);
    }
}

template <typename Function>
void forEachEntry(AnalysedFile const& file, Function function) {
    for (std::size_t command = 0; command < file.commands.size(); ++command) {
        std::vector<AnalysedEntry> const& entries = file.commands[command].entries;
        for (std::size_t entry = 0; entry < entries.size(); ++entry) {
            function(EntryReference{command, entry}, entries[entry]);
        }
    }
}

/// The entry that a diagnostic of an argument is about. Entries are in the order of arguments.
EntryReference entryOf(AnalysedFile const& file, Diagnostic const& diagnostic) {
    std::size_t const command = diagnostic.command.value();
    std::vector<AnalysedEntry> const& entries = file.commands.at(command).entries;
    auto const found =
        std::partition_point(entries.begin(), entries.end(), [&](AnalysedEntry const& entry) {
            return entry.argument < *diagnostic.argument;
        });
    return {command, static_cast<std::size_t>(found - entries.begin())};
}

/// Determines which unused imports can be removed without changing the meaning of the rest.
class Removals {
  public:
    explicit Removals(AnalysedFile const& analysed) : file(analysed) {
        forEachEntry(file, [this](EntryReference const&, AnalysedEntry const& entry) {
            if (entry.kind == EntryKind::Package) {
                packages.insert(entry.introducedName.value());
            } else {
                roots.insert(entry.rootElement.value());
            }
            if (entry.outcome == EntryOutcome::Refused) {
                insertIfAny(refused, entry.introducedName);
                insertIfAny(refused, entry.rootElement);
            }
            if (entry.outcome == EntryOutcome::Repeated) {
                kept.insert(entry.earlier.value());
            }
        });
        for (Diagnostic const& diagnostic : file.diagnostics) {
            isReadWhole = isReadWhole && !hidesUses(diagnostic);
            if (diagnostic.finding == Finding::UnknownName && diagnostic.note) {
                kept.insert(diagnostic.note->entry);
            }
        }
    }

    bool allow(EntryReference const& reference) const {
        AnalysedEntry const& entry = file.at(reference);
        return isReadWhole && !kept.contains(reference) && !isIn(refused, entry.introducedName) &&
               !isIn(refused, entry.rootElement) && !mayHidePackage(entry);
    }

  private:
    /// A part of the script that was not understood may use any import.
    static bool hidesUses(Diagnostic const& diagnostic) {
        return diagnostic.key.empty() && (diagnostic.finding == Finding::ScriptProblem ||
                                          diagnostic.finding == Finding::ScopeTooDeep);
    }

    static bool isIn(Names const& names, std::optional<std::string> const& name) {
        return name && names.contains(*name);
    }

    /// A name hides a package of an enclosing scope from the dotted imports in its own scope.
    bool mayHidePackage(AnalysedEntry const& entry) const {
        return entry.kind != EntryKind::Package && isIn(packages, entry.introducedName) &&
               isIn(roots, entry.introducedName);
    }

    AnalysedFile const& file;
    Names packages;
    Names roots;
    Names refused;
    std::set<EntryReference> kept;
    bool isReadWhole = true;
};

/// Makes aliases that do not occur in a file.
class Aliases {
  public:
    explicit Aliases(AnalysedFile const& file) {
        forEachEntry(file, [this](EntryReference const&, AnalysedEntry const& entry) {
            insertIfAny(taken, entry.introducedName);
            insertIfAny(taken, entry.rootElement);
        });
        for (AnalysedUse const& analysed : file.uses) {
            taken.insert(analysed.use.name.text);
            taken.insert(firstPartOf(analysed.use.name.text));
        }
    }

    /// \p name with a number, if \p package can be imported under it. \p name must live as long as
    /// this object.
    std::optional<std::string> find(std::string_view name, std::string const& package) {
        std::string alias;
        std::size_t& number = numbers.try_emplace(name, firstNumber).first->second;
        do {
            alias = std::string(name).append(std::to_string(number++));
        } while (taken.contains(alias) || given.contains(alias));
        if (!isAccepted(package, alias)) {
            return std::nullopt;
        }
        return *given.insert(std::move(alias)).first;
    }

  private:
    /// Whether the platform accepts \p alias as an alias of \p package.
    static bool isAccepted(std::string const& package, std::string const& alias) {
        ImportCommand const command{0, false, {{package, {}}, {"as", {}}, {alias, {}}}, {}};
        SyntaxTree tree;
        std::vector<lf::import::host::CommandItem> const items = lf::import::host::readCommand(
            tree.add(command), lf::import::Behavior::WithPackageImports);
        return std::ranges::any_of(items, [](lf::import::host::CommandItem const& item) {
            return std::holds_alternative<lf::import::host::CommandEntry>(item);
        });
    }

    Names taken;
    std::unordered_set<std::string> given;
    std::unordered_map<std::string_view, std::size_t> numbers;
};

class FixFinder {
  public:
    explicit FixFinder(AnalysedFile const& analysed)
        : file(analysed), removals(analysed), aliases(analysed) {}

    /// \param diagnostic one that may have a fix.
    std::optional<Fix> find(Diagnostic const& diagnostic) {
        EntryReference const reference = entryOf(file, diagnostic);
        if (diagnostic.key == keyOfRedeclaredPackage) {
            return mendRedeclaredPackage(reference);
        }
        bool const isRemovable =
            diagnostic.finding == Finding::RepeatedImport || removals.allow(reference);
        return isRemovable ? std::optional(Fix{reference, {}}) : std::nullopt;
    }

  private:
    std::optional<Fix> mendRedeclaredPackage(EntryReference const& reference) {
        AnalysedEntry const& entry = file.at(reference);
        if (file.at(entry.earlier.value()).text == entry.text) {
            return Fix{reference, {}};
        }
        AnalysedCommand const& analysed = file.commands.at(reference.command);
        std::optional<std::string> alias =
            aliases.find(lastPartOf(entry.introducedName.value()),
                         analysed.command.arguments.at(entry.argument).text);
        return alias ? std::optional(Fix{reference, std::move(*alias)}) : std::nullopt;
    }

    AnalysedFile const& file;
    Removals removals;
    Aliases aliases;
};

bool mayHaveFix(Diagnostic const& diagnostic) {
    return diagnostic.key == keyOfRedeclaredPackage ||
           diagnostic.finding == Finding::UnusedImport ||
           diagnostic.finding == Finding::RepeatedImport;
}

} // namespace

void proposeFixes(AnalysedFile& file) {
    if (std::ranges::none_of(file.diagnostics, mayHaveFix)) {
        return;
    }
    FixFinder finder(file);
    for (Diagnostic& diagnostic : file.diagnostics) {
        if (mayHaveFix(diagnostic)) {
            diagnostic.fix = finder.find(diagnostic);
        }
    }
}

std::string_view wordsFor(Fix const& fix) noexcept {
    return fix.alias.empty() ? "remove this import" : "import it as '{1}'";
}

} // namespace explorer
