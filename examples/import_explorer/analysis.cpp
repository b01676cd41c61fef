// SPDX-License-Identifier: BSL-1.0
#include <import_explorer/analysis.hpp>

#include <import_explorer/message_catalogue.hpp>
#include <import_explorer/syntax_tree.hpp>

#include <import/import.hpp>

#include <memory>
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

AnalysedEntry describe(lf::import::FullyQualifiedImportEntry const& entry) {
    return {EntryKind::Name, render(entry), ustring_to_utf8(entry.getIntroducedName()),
            ustring_to_utf8(entry.getRootElement()), 0};
}

AnalysedEntry describe(lf::import::WildcardImportEntry const& entry) {
    return {EntryKind::Wildcard, render(entry), std::nullopt,
            ustring_to_utf8(entry.getRootElement()), 0};
}

AnalysedEntry describe(lf::import::PackageImportEntry const& entry) {
    return {EntryKind::Package, render(entry), ustring_to_utf8(entry.getIntroducedName()),
            std::nullopt, 0};
}

struct ToUtf8 {
    std::string operator()(std::uint64_t value) const { return std::to_string(value); }

    std::string operator()(std::string const& text) const { return text; }

    std::string operator()(std::u16string const& text) const { return ustring_to_utf8(text); }
};

Diagnostic describe(resource_core::BaseMsgID const& message) {
    Diagnostic diagnostic{
        lf::import::severityOf(message.key), message.key, wordsFor(message.key), {}, {}, {}, {}};
    for (resource_core::MsgArgument const& argument : message.arguments) {
        diagnostic.arguments.push_back(std::visit(ToUtf8(), argument));
    }
    return diagnostic;
}

/// Collects what becomes of a file's commands, one after the other.
class Analysis {
  public:
    explicit Analysis(AnalysedFile& target, lf::import::Behavior chosen)
        : file(target), behavior(chosen) {}

    void operator()(ImportCommand&& command) {
        SyntaxTree tree;
        auto const parser = lf::import::createImportArgumentParser(tree.add(command), behavior);
        file.commands.push_back({std::move(command), {}});
        for (lf::import::ParsedImportEntry const& parsed : parser->parse()) {
            std::visit([this](auto const& result) { add(result.first, result.second); }, parsed);
        }
    }

    void operator()(UseOfName&&) const noexcept {}

  private:
    template <typename Entry>
    void add(Entry const& entry, std::size_t argument) {
        file.commands.back().entries.push_back(describe(entry));
        file.commands.back().entries.back().argument = argument;
    }

    void add(lf::import::InvalidImportEntry const& entry, std::size_t argument) {
        Diagnostic diagnostic = describe(entry.getMsgHolder().getMsgID());
        diagnostic.command = file.commands.size() - 1;
        diagnostic.argument = argument;
        diagnostic.range = file.commands.back().command.arguments.at(argument).range;
        file.diagnostics.push_back(std::move(diagnostic));
    }

    AnalysedFile& file;
    lf::import::Behavior behavior;
};

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

AnalysedFile analyse(SourceFile source, SourceSyntax syntax, lf::import::Behavior behavior) {
    Script script = readScript(source, syntax);
    AnalysedFile file{std::move(source), {}, {}};
    Analysis analysis(file, behavior);
    for (Statement& statement : script.statements) {
        std::visit([&](auto& what) { analysis(std::move(what)); }, statement);
    }
    file.diagnostics = mergeInSourceOrder(std::move(script.problems), std::move(file.diagnostics));
    return file;
}

} // namespace explorer
