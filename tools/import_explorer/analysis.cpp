// SPDX-License-Identifier: BSL-1.0
#include <import_explorer/analysis.hpp>

#include <import_explorer/fixes.hpp>
#include <import_explorer/import_scopes.hpp>
#include <import_explorer/message_catalogue.hpp>
#include <import_explorer/reached_wildcards.hpp>
#include <import_explorer/scope_views.hpp>
#include <import_explorer/syntax_tree.hpp>

#include <host/command.hpp>
#include <host/overloaded.hpp>
#include <host/spelling.hpp>

#include <import/import.hpp>

#include <range/v3/view/reverse.hpp>

#include <algorithm>
#include <utility>
#include <variant>

namespace explorer {

namespace {

using fl::i18n::ustring_to_utf8;
using lf::import::host::CommandDiagnostic;
using lf::import::host::CommandEntry;
using lf::import::host::Overloaded;

AnalysedEntry describe(CommandEntry const& parsed) {
    AnalysedEntry described;
    described.kind = lf::import::host::kindOf(parsed.entry);
    described.text = lf::import::host::toUtf8(parsed.entry);
    described.argument = static_cast<std::size_t>(parsed.argument);
    std::visit(
        [&](auto const& entry) {
            if constexpr (requires { entry.getIntroducedName(); }) {
                described.introducedName = ustring_to_utf8(entry.getIntroducedName());
            }
            if constexpr (requires { entry.getRootElement(); }) {
                described.rootElement = ustring_to_utf8(entry.getRootElement());
            }
        },
        parsed.entry);
    return described;
}

Diagnostic describe(resource_core::BaseMsgID const& message) {
    Diagnostic diagnostic;
    diagnostic.severity = lf::import::severityOf(message.key);
    diagnostic.key = message.key;
    diagnostic.words = messageCatalogue.wordsFor(message.key).value();
    for (resource_core::MsgArgument const& argument : message.arguments) {
        diagnostic.arguments.push_back(lf::import::host::argumentToUtf8(argument));
    }
    return diagnostic;
}

std::vector<AnalysedScope> describe(std::vector<Scope>&& scopes) {
    std::vector<AnalysedScope> result;
    result.reserve(scopes.size());
    for (Scope& scope : scopes) {
        std::size_t const level = scope.parent ? result.at(*scope.parent).level + 1 : 0;
        result.push_back({std::move(scope), level, {}, {}});
    }
    return result;
}

/// `a.b` are the first two elements of `a.b.c`.
std::string_view firstElementsOf(std::string_view name, std::size_t count) {
    std::size_t end = name.find('.');
    while (--count > 0 && end != std::string_view::npos) {
        end = name.find('.', end + 1);
    }
    return name.substr(0, end);
}

/// The names that \p scope and its enclosing scopes introduce, nearest scope and latest import
/// first.
std::vector<std::u16string_view> introducedNames(ImportScope const& scope, std::size_t most) {
    std::vector<std::u16string_view> names;
    for (ImportScope const* each = &scope; each != nullptr; each = each->getParent().get()) {
        for (ImportScope::Import const& imported : ranges::views::reverse(each->imports())) {
            if (names.size() == most) {
                return names;
            }
            if (imported.kind() != EntryKind::Wildcard) {
                names.push_back(lf::import::host::introducedNameOf(imported.entry));
            }
        }
    }
    return names;
}

/// Collects the results of the statements of a file, in source order.
class Analysis {
  public:
    /// \param scopes the lists to add entries to; if empty, commands are only parsed.
    Analysis(AnalysedFile& target, ImportScopes const& scopes, lf::import::Behavior chosen)
        : file(target), importScopes(scopes), wildcards(target.scopes), behavior(chosen) {}

    void operator()(ImportCommand&& command) {
        enter(command.scope);
        SyntaxTree tree;
        auto items = lf::import::host::readCommand(tree.add(command), behavior);
        file.commands.push_back({std::move(command), {}});
        file.commands.back().entries.reserve(items.size());
        for (lf::import::host::CommandItem& item : items) {
            std::visit(Overloaded{[this](CommandEntry& parsed) { add(parsed); },
                                  [this](CommandDiagnostic const& diagnostic) {
                                      report(diagnostic.message,
                                             static_cast<std::size_t>(diagnostic.argument), {});
                                  }},
                       item);
        }
    }

    void operator()(UseOfName&& use) {
        enter(use.scope);
        if (current == nullptr) {
            return;
        }
        AnalysedUse analysed;
        analysed.use = std::move(use);
        lookUp(analysed);
        if (analysed.isUnknown()) {
            analysed.suggestion = suggest(analysed);
            reportUnknownName(analysed);
        }
        file.uses.push_back(std::move(analysed));
    }

    void markReachedWildcards() {
        for (EntryReference const& reference : wildcards.finish()) {
            markUsed(reference);
        }
    }

  private:
    void enter(ScopeIndex scope) {
        current = scope < importScopes.size() ? importScopes[scope].get() : nullptr;
        if (current != nullptr) {
            wildcards.enter(scope);
        }
    }

    void add(CommandEntry& parsed) {
        file.commands.back().entries.push_back(describe(parsed));
        if (current != nullptr) {
            addToScope(std::move(parsed.entry));
        }
    }

    void addToScope(lf::import::ImportEntry&& entry) {
        AnalysedCommand& analysed = file.commands.back();
        AnalysedEntry& described = analysed.entries.back();
        EntryReference const reference{file.commands.size() - 1, analysed.entries.size() - 1};
        std::visit(
            Overloaded{[&](ImportScope::Stored const& /*stored*/) {
                           described.outcome = EntryOutcome::Added;
                           file.scopes.at(analysed.command.scope).entries.push_back(reference);
                           if (described.kind == EntryKind::Wildcard) {
                               wildcards.add(described.text, reference);
                           }
                       },
                       [&](ImportScope::Repeated const& repeated) {
                           described.outcome = EntryOutcome::Repeated;
                           described.earlier = repeated.earlier->place;
                       },
                       [&](ImportScope::Refused const& refused) {
                           described.outcome = EntryOutcome::Refused;
                           described.earlier = refused.conflict.value().imported->place;
                           report(refused.message, described.argument, described.earlier);
                       }},
            analysed.command.isDynamic ? current->addDynamic(std::move(entry), reference)
                                       : current->addStatic(std::move(entry), reference));
    }

    void report(resource_core::GenericMsgIDHolder const& message, std::size_t argument,
                std::optional<EntryReference> const& conflict) {
        Diagnostic diagnostic = describe(message.getMsgID());
        diagnostic.command = file.commands.size() - 1;
        diagnostic.argument = argument;
        diagnostic.range = file.commands.back().command.arguments.at(argument).range;
        if (conflict) {
            diagnostic.note = Note{Note::Kind::ConflictsWith, *conflict};
        }
        file.diagnostics.push_back(std::move(diagnostic));
    }

    void lookUp(AnalysedUse& analysed) {
        std::string const& text = analysed.use.name.text;
        auto const resolution = current->resolve(text, mostListedWildcards);
        analysed.name = firstElementsOf(text, resolution.numberOfSegments);
        for (ImportScope::ScopedImport const& found : resolution.imports) {
            analysed.imports.push_back(found.imported->place);
            markUsed(found.imported->place);
        }
        if (analysed.imports.empty() && !analysed.isDotted()) {
            for (ImportScope::ScopedImport const& found : resolution.wildcards) {
                analysed.wildcards.listed.push_back(found.imported->place);
            }
            analysed.wildcards.omitted = wildcards.reach() - analysed.wildcards.listed.size();
        }
    }

    void markUsed(EntryReference const& reference) {
        file.commands.at(reference.command).entries.at(reference.entry).isUsed = true;
    }

    /// The nearest import that introduces the most similar name, if any.
    std::optional<EntryReference> suggest(AnalysedUse const& analysed) const {
        using lf::import::host::mostComparedNames;
        std::vector<std::u16string_view> const names = introducedNames(*current, mostComparedNames);
        lf::import::host::Utf16Text const name(analysed.name);
        auto const nearest = lf::import::host::findNearestSpelling(name, names);
        return nearest ? std::optional(current->find(names[*nearest]).at(0).imported->place)
                       : std::nullopt;
    }

    void reportUnknownName(AnalysedUse const& analysed) {
        Diagnostic diagnostic;
        diagnostic.finding = Finding::UnknownName;
        diagnostic.words = "unknown name '{1}'";
        diagnostic.arguments = {analysed.name};
        diagnostic.range = analysed.use.name.range;
        if (analysed.suggestion) {
            diagnostic.words = "unknown name '{1}'; did you mean '{2}'?";
            diagnostic.arguments.push_back(file.at(*analysed.suggestion).introducedName.value());
            diagnostic.note = Note{Note::Kind::IsMeant, *analysed.suggestion};
        }
        file.diagnostics.push_back(std::move(diagnostic));
    }

    AnalysedFile& file;
    ImportScopes const& importScopes;
    /// Null if commands are only parsed.
    ImportScope* current = nullptr;
    ReachedWildcards wildcards;
    lf::import::Behavior behavior;
};

/// Reports only the outermost of the scopes that are nested too deeply for a list.
std::vector<Diagnostic> findScopesWithoutList(AnalysedFile const& file,
                                              ImportScopes const& importScopes) {
    std::vector<Diagnostic> errors;
    for (ScopeIndex index = 1; index < file.scopes.size(); ++index) {
        Scope const& scope = file.scopes[index].scope;
        if (importScopes[index] == nullptr && importScopes[*scope.parent] != nullptr) {
            errors.push_back({lf::import::Severity::Error,
                              {},
                              "scope '{1}' lies within {2} others with imports: its imports and "
                              "uses are not looked up",
                              {scope.name, std::to_string(deepestListedLevel)},
                              scope.range,
                              {},
                              {},
                              {},
                              Finding::ScopeTooDeep});
        }
    }
    return errors;
}

/// Warnings of imports that no use reaches or that repeat another.
std::vector<Diagnostic> findNeedlessImports(AnalysedFile const& file) {
    std::vector<Diagnostic> warnings;
    for (std::size_t command = 0; command < file.commands.size(); ++command) {
        AnalysedCommand const& analysed = file.commands[command];
        for (AnalysedEntry const& entry : analysed.entries) {
            bool const isRepeated = entry.outcome == EntryOutcome::Repeated;
            if (!isRepeated && (entry.outcome != EntryOutcome::Added || entry.isUsed)) {
                continue;
            }
            Diagnostic warning;
            warning.severity = lf::import::Severity::Warning;
            warning.arguments = {entry.text};
            warning.range = analysed.command.arguments.at(entry.argument).range;
            warning.command = command;
            warning.argument = entry.argument;
            if (isRepeated) {
                warning.finding = Finding::RepeatedImport;
                warning.words = "this scope already imports '{1}'";
                warning.note = Note{Note::Kind::Repeats, entry.earlier.value()};
            } else {
                warning.finding = Finding::UnusedImport;
                warning.words = "no 'use' reaches the import of '{1}'";
            }
            warnings.push_back(std::move(warning));
        }
    }
    return warnings;
}

} // namespace

std::string_view toText(EntryKind kind) noexcept {
    switch (kind) {
    case EntryKind::FullyQualified:
        return "name";
    case EntryKind::Wildcard:
        return "wildcard";
    case EntryKind::Package:
        return "package";
    }
    return {};
}

std::string_view toText(EntryOutcome outcome) noexcept {
    switch (outcome) {
    case EntryOutcome::Parsed:
        return "parsed";
    case EntryOutcome::Added:
        return "added";
    case EntryOutcome::Repeated:
        return "repeated";
    case EntryOutcome::Refused:
        return "refused";
    }
    return {};
}

NoteInWords describe(AnalysedFile const& file, Note const& note) {
    AnalysedEntry const& entry = file.at(note.entry);
    if (note.kind == Note::Kind::IsMeant) {
        return {"'{1}' is imported here", *entry.introducedName, file.rangeOf(note.entry)};
    }
    if (note.kind == Note::Kind::Repeats) {
        return {"'{1}' is imported here", entry.text, file.rangeOf(note.entry)};
    }
    return {"conflicts with '{1}'", entry.text, file.rangeOf(note.entry)};
}

AnalysedFile analyse(SourceFile source, AnalysisOptions const& options) {
    Script script = readScript(source, options.syntax);
    AnalysedFile file{std::move(source), describe(std::move(script.scopes)), {}, {}, {}};
    ImportScopes importScopes;
    if (options.syntax == SourceSyntax::Script) {
        importScopes = makeImportScopes(file.scopes, script.statements);
    }
    Analysis analysis(file, importScopes, options.behavior);
    for (Statement& statement : script.statements) {
        std::visit([&](auto& what) { analysis(std::move(what)); }, statement);
    }
    file.diagnostics = mergeInSourceOrder(std::move(script.problems), std::move(file.diagnostics));
    if (options.syntax == SourceSyntax::Script) {
        analysis.markReachedWildcards();
        file.diagnostics = mergeInSourceOrder(std::move(file.diagnostics),
                                              findScopesWithoutList(file, importScopes));
    }
    if (options.warnsOfUnusedImports) {
        file.diagnostics =
            mergeInSourceOrder(std::move(file.diagnostics), findNeedlessImports(file));
    }
    proposeFixes(file);
    if (options.syntax == SourceSyntax::Script && options.viewsScopes) {
        viewScopes(file, importScopes);
    }
    return file;
}

} // namespace explorer
