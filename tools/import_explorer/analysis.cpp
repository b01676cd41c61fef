// SPDX-License-Identifier: BSL-1.0
#include <import_explorer/analysis.hpp>

#include <import_explorer/message_catalogue.hpp>
#include <import_explorer/scope_lists.hpp>
#include <import_explorer/spelling.hpp>
#include <import_explorer/syntax_tree.hpp>
#include <import_explorer/utf8.hpp>

#include <import/import.hpp>

#include <memory>
#include <sstream>
#include <type_traits>
#include <unordered_map>
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
        SyntaxTree tree;
        auto const parser = lf::import::createImportArgumentParser(tree.add(command), behavior);
        file.commands.push_back({std::move(command), {}});
        for (lf::import::ParsedImportEntry& parsed : parser->parse()) {
            std::visit([this](auto& result) { add(std::move(result.first), result.second); },
                       parsed);
        }
    }

    void operator()(UseOfName&& use) {
        if (lists == nullptr) {
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

  private:
    /// What visibleWildcards found for a scope when the file had so many wildcards.
    struct Suppliers {
        std::size_t numberOfWildcards = 0;
        Capped<EntryReference> wildcards;
    };

    template <typename Entry>
    void add(Entry&& entry, std::size_t argument) {
        std::vector<AnalysedEntry>& entries = file.commands.back().entries;
        entries.push_back(describeEntry(entry));
        entries.back().argument = argument;
        if (lists != nullptr) {
            addToList(std::forward<Entry>(entry));
        }
    }

    void add(lf::import::InvalidImportEntry&& entry, std::size_t argument) {
        report(entry.getMsgHolder(), argument, std::nullopt);
    }

    void addToList(lf::import::ImportEntry&& entry) {
        AnalysedCommand& analysed = file.commands.back();
        AnalysedEntry& described = analysed.entries.back();
        EntryReference const reference{file.commands.size() - 1, analysed.entries.size() - 1};
        Addition const addition = lists->add(analysed.command.scope, std::move(entry),
                                             analysed.command.isDynamic, reference);
        described.outcome = addition.outcome;
        described.earlier = addition.earlier;
        if (addition.outcome == EntryOutcome::Added) {
            file.scopes.at(analysed.command.scope).entries.push_back(reference);
            numberOfWildcards += described.kind == EntryKind::Wildcard ? 1 : 0;
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
            diagnostic.note =
                Note{"conflicts with '{1}'", {file.at(*conflict).text}, file.rangeOf(*conflict)};
        }
        file.diagnostics.push_back(std::move(diagnostic));
    }

    void lookUp(AnalysedUse& analysed) {
        UseOfName const& use = analysed.use;
        for (std::string_view const name :
             {std::string_view(use.name.text), firstElementOf(use.name.text)}) {
            analysed.name = name;
            analysed.imports = lists->find(use.scope, toUtf16(name));
            if (!analysed.imports.empty()) {
                break;
            }
        }
        for (EntryReference const& reference : analysed.imports) {
            markUsed(reference);
        }
        if (analysed.imports.empty() && !analysed.isDotted()) {
            analysed.wildcards = reachSuppliers(use.scope);
        }
    }

    /// The wildcards that may supply what nothing in \p scope introduces, which are used then.
    Capped<EntryReference> const& reachSuppliers(ScopeIndex scope) {
        auto const [place, isNew] = suppliersByScope.try_emplace(scope);
        Suppliers& suppliers = place->second;
        // Only another wildcard can change which of them a scope sees.
        if (isNew || suppliers.numberOfWildcards != numberOfWildcards) {
            suppliers = {numberOfWildcards, {}};
            for (EntryReference const& reference : lists->visibleWildcards(scope)) {
                markUsed(reference);
                suppliers.wildcards.add(reference);
            }
        }
        return suppliers.wildcards;
    }

    void markUsed(EntryReference const& reference) {
        file.commands.at(reference.command).entries.at(reference.entry).isUsed = true;
    }

    std::optional<EntryReference> suggest(AnalysedUse const& analysed) const {
        std::vector<VisibleName> const visible =
            lists->visibleNames(analysed.use.scope, mostComparedNames);
        std::vector<std::u16string_view> names;
        names.reserve(visible.size());
        for (VisibleName const& candidate : visible) {
            names.push_back(candidate.name);
        }
        auto const nearest = findNearestSpelling(toUtf16(analysed.name), names);
        return nearest ? std::optional(visible.at(*nearest).entry) : std::nullopt;
    }

    void reportUnknownName(AnalysedUse const& analysed) {
        Diagnostic diagnostic;
        diagnostic.words = "unknown name '{1}'";
        diagnostic.arguments = {analysed.name};
        diagnostic.range = analysed.use.name.range;
        if (analysed.suggestion) {
            std::string const meant = file.at(*analysed.suggestion).introducedName.value();
            diagnostic.words = "unknown name '{1}'; did you mean '{2}'?";
            diagnostic.arguments.push_back(meant);
            diagnostic.note =
                Note{"'{1}' is imported here", {meant}, file.rangeOf(*analysed.suggestion)};
        }
        file.diagnostics.push_back(std::move(diagnostic));
    }

    AnalysedFile& file;
    ScopeLists* lists;
    lf::import::Behavior behavior;
    std::size_t numberOfWildcards = 0;
    std::unordered_map<ScopeIndex, Suppliers> suppliersByScope;
};

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
                                {}});
        }
    }
    return warnings;
}

void viewScopes(AnalysedFile& file, ScopeLists const& lists) {
    for (ScopeIndex scope = 0; scope < file.scopes.size(); ++scope) {
        if (file.scopes[scope].level <= deepestViewedLevel) {
            file.scopes[scope].view = lists.view(scope);
        }
    }
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

AnalysedFile analyse(SourceFile source, AnalysisOptions const& options) {
    Script script = readScript(source, options.syntax);
    std::optional<ScopeLists> lists;
    if (options.syntax == SourceSyntax::Script) {
        lists.emplace(script.scopes);
    }
    AnalysedFile file{std::move(source), describe(std::move(script.scopes)), {}, {}, {}};
    Analysis analysis(file, lists ? &*lists : nullptr, options.behavior);
    for (Statement& statement : script.statements) {
        std::visit([&](auto& what) { analysis(std::move(what)); }, statement);
    }
    file.diagnostics = mergeInSourceOrder(std::move(script.problems), std::move(file.diagnostics));
    if (options.warnsOfUnusedImports) {
        file.diagnostics = mergeInSourceOrder(std::move(file.diagnostics), findUnusedImports(file));
    }
    if (lists && options.viewsScopes) {
        viewScopes(file, *lists);
    }
    return file;
}

} // namespace explorer
