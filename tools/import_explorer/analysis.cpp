// SPDX-License-Identifier: BSL-1.0
#include <import_explorer/analysis.hpp>

#include <import_explorer/message_catalogue.hpp>
#include <import_explorer/scope_lists.hpp>
#include <import_explorer/scope_views.hpp>
#include <import_explorer/spelling.hpp>
#include <import_explorer/syntax_tree.hpp>
#include <import_explorer/utf8.hpp>

#include <import/import.hpp>

#include <algorithm>
#include <iterator>
#include <memory>
#include <span>
#include <sstream>
#include <type_traits>
#include <utility>
#include <variant>

namespace explorer {

namespace {

using fl::i18n::ustring_to_utf8;

template <typename Entry>
std::string render(Entry const& entry) {
    std::ostringstream stream;
    stream << entry;
    return std::move(stream).str();
}

constexpr EntryKind kindOf(lf::import::FullyQualifiedImportEntry const& /*entry*/) noexcept {
    return EntryKind::Name;
}

constexpr EntryKind kindOf(lf::import::WildcardImportEntry const& /*entry*/) noexcept {
    return EntryKind::Wildcard;
}

constexpr EntryKind kindOf(lf::import::PackageImportEntry const& /*entry*/) noexcept {
    return EntryKind::Package;
}

template <typename Entry>
AnalysedEntry describeEntry(Entry const& entry) {
    AnalysedEntry described;
    described.kind = kindOf(entry);
    described.text = render(entry);
    if constexpr (requires { entry.getIntroducedName(); }) {
        described.introducedName = ustring_to_utf8(entry.getIntroducedName());
    }
    if constexpr (requires { entry.getRootElement(); }) {
        described.rootElement = ustring_to_utf8(entry.getRootElement());
    }
    return described;
}

struct ToUtf8 {
    std::string operator()(std::uint64_t value) const { return std::to_string(value); }

    std::string operator()(std::string const& text) const { return text; }

    std::string operator()(std::u16string const& text) const { return ustring_to_utf8(text); }
};

Diagnostic describe(resource_core::BaseMsgID const& message) {
    Diagnostic diagnostic;
    diagnostic.severity = lf::import::severityOf(message.key);
    diagnostic.key = message.key;
    diagnostic.words = wordsFor(message.key);
    for (resource_core::MsgArgument const& argument : message.arguments) {
        diagnostic.arguments.push_back(std::visit(ToUtf8(), argument));
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

std::string_view firstElementOf(std::string_view name) {
    return name.substr(0, name.find('.'));
}

/// Collects what becomes of a file's statements, one after the other.
class Analysis {
  public:
    /// \param lists where the entries go, or null.
    Analysis(AnalysedFile& target, ScopeLists* scopeLists, lf::import::Behavior chosen)
        : file(target), lists(scopeLists), behavior(chosen) {}

    void operator()(ImportCommand&& command) {
        bool const isListed = enter(command.scope);
        SyntaxTree tree;
        auto const parser = lf::import::createImportArgumentParser(tree.add(command), behavior);
        std::vector<lf::import::ParsedImportEntry> parsed = parser->parse();
        file.commands.push_back({std::move(command), {}});
        file.commands.back().entries.reserve(parsed.size());
        for (lf::import::ParsedImportEntry& each : parsed) {
            std::visit([&](auto& result) { add(std::move(result.first), result.second, isListed); },
                       each);
        }
    }

    void operator()(UseOfName&& use) {
        if (!enter(use.scope)) {
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
        for (EntryReference const& reference : lists->reachedWildcards()) {
            markUsed(reference);
        }
    }

  private:
    /// Whether there is a list for \p scope, which is asked from now on.
    bool enter(ScopeIndex scope) {
        if (lists == nullptr || lists->listOf(scope) == nullptr) {
            return false;
        }
        lists->enter(scope);
        return true;
    }

    template <typename Entry>
    void add(Entry&& entry, std::size_t argument, bool isListed) {
        std::vector<AnalysedEntry>& entries = file.commands.back().entries;
        entries.push_back(describeEntry(entry));
        entries.back().argument = argument;
        if (isListed) {
            addToList(std::forward<Entry>(entry));
        }
    }

    void add(lf::import::InvalidImportEntry&& entry, std::size_t argument, bool /*isListed*/) {
        report(entry.getMsgHolder(), argument, std::nullopt);
    }

    void addToList(lf::import::ImportEntry&& entry) {
        AnalysedCommand& analysed = file.commands.back();
        AnalysedEntry& described = analysed.entries.back();
        EntryReference const reference{file.commands.size() - 1, analysed.entries.size() - 1};
        Addition const addition =
            lists->add(std::move(entry), analysed.command.isDynamic, described, reference);
        described.outcome = addition.outcome;
        described.earlier = addition.earlier;
        if (addition.outcome == EntryOutcome::Added) {
            file.scopes.at(analysed.command.scope).entries.push_back(reference);
        }
        if (addition.refusal) {
            report(*addition.refusal, described.argument, addition.earlier);
        }
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
        UseOfName const& use = analysed.use;
        for (std::string_view const name :
             {std::string_view(use.name.text), firstElementOf(use.name.text)}) {
            analysed.name = name;
            analysed.imports = lists->find(name);
            if (!analysed.imports.empty()) {
                break;
            }
        }
        for (EntryReference const& reference : analysed.imports) {
            markUsed(reference);
        }
        if (analysed.imports.empty() && !analysed.isDotted()) {
            analysed.wildcards = lists->reachWildcards();
        }
    }

    void markUsed(EntryReference const& reference) {
        file.commands.at(reference.command).entries.at(reference.entry).isUsed = true;
    }

    /// What the most similar name is here, the nearest of them first.
    std::optional<EntryReference> suggest(AnalysedUse const& analysed) const {
        std::span<EntryReference const> named = lists->named();
        named = named.last(std::min(named.size(), mostComparedNames));
        std::vector<std::string_view> names;
        std::transform(named.rbegin(), named.rend(), std::back_inserter(names),
                       [this](EntryReference const& reference) -> std::string_view {
                           return file.at(reference).introducedName.value();
                       });
        auto const nearest = findNearestSpelling(analysed.name, names);
        return nearest ? std::optional(lists->find(names.at(*nearest)).at(0)) : std::nullopt;
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
    ScopeLists* lists;
    lf::import::Behavior behavior;
};

/// Of scopes that lie too deep for a list, only the outermost are reported.
std::vector<Diagnostic> findScopesWithoutList(AnalysedFile const& file, ScopeLists const& lists) {
    std::vector<Diagnostic> errors;
    for (ScopeIndex index = 1; index < file.scopes.size(); ++index) {
        Scope const& scope = file.scopes[index].scope;
        if (lists.listOf(index) == nullptr && lists.listOf(*scope.parent) != nullptr) {
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

std::vector<Diagnostic> findUnusedImports(AnalysedFile const& file) {
    std::vector<Diagnostic> warnings;
    for (std::size_t command = 0; command < file.commands.size(); ++command) {
        AnalysedCommand const& analysed = file.commands[command];
        for (AnalysedEntry const& entry : analysed.entries) {
            if (entry.outcome != EntryOutcome::Added || entry.isUsed) {
                continue;
            }
            warnings.push_back({lf::import::Severity::Warning,
                                {},
                                "no 'use' reaches the import of '{1}'",
                                {entry.text},
                                analysed.command.arguments.at(entry.argument).range,
                                command,
                                entry.argument,
                                {},
                                Finding::UnusedImport});
        }
    }
    return warnings;
}

} // namespace

std::string_view toText(EntryKind kind) noexcept {
    switch (kind) {
    case EntryKind::Name:
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
    return {"conflicts with '{1}'", entry.text, file.rangeOf(note.entry)};
}

AnalysedFile analyse(SourceFile source, AnalysisOptions const& options) {
    Script script = readScript(source, options.syntax);
    AnalysedFile file{std::move(source), describe(std::move(script.scopes)), {}, {}, {}};
    std::optional<ScopeLists> lists;
    if (options.syntax == SourceSyntax::Script) {
        lists.emplace(file.scopes, script.statements);
    }
    Analysis analysis(file, lists ? &*lists : nullptr, options.behavior);
    for (Statement& statement : script.statements) {
        std::visit([&](auto& what) { analysis(std::move(what)); }, statement);
    }
    file.diagnostics = mergeInSourceOrder(std::move(script.problems), std::move(file.diagnostics));
    if (lists) {
        analysis.markReachedWildcards();
        file.diagnostics =
            mergeInSourceOrder(std::move(file.diagnostics), findScopesWithoutList(file, *lists));
    }
    if (options.warnsOfUnusedImports) {
        file.diagnostics = mergeInSourceOrder(std::move(file.diagnostics), findUnusedImports(file));
    }
    if (lists && options.viewsScopes) {
        viewScopes(file, *lists);
    }
    return file;
}

} // namespace explorer
