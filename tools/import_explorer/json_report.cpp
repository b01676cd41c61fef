// SPDX-License-Identifier: BSL-1.0
#include <import_explorer/json_report.hpp>

#include <import_explorer/message_catalogue.hpp>

#include <nlohmann/json.hpp>

#include <optional>
#include <utility>

namespace explorer {

namespace {

using Json = nlohmann::ordered_json;

template <typename Value>
Json orNull(std::optional<Value> const& value) {
    return value ? Json(*value) : Json();
}

void addRange(Json& object, SourceRange const& range) {
    object["line"] = range.line;
    object["column"] = range.column;
    object["offset"] = range.begin;
    object["length"] = range.end - range.begin;
}

Json toJson(Word const& argument) {
    Json object{{"text", argument.text}};
    addRange(object, argument.range);
    return object;
}

Json toJson(EntryReference const& reference) {
    return {{"command", reference.command}, {"entry", reference.entry}};
}

Json toJson(HiddenEntry const& hidden) {
    return {{"entry", toJson(hidden.entry)}, {"by", toJson(hidden.by)}};
}

Json toJson(AnalysedEntry const& entry);
Json toJson(AnalysedCommand const& analysed);
Json toJson(AnalysedUse const& analysed);
Json toJson(Diagnostic const& diagnostic);

template <typename Element>
Json toJson(std::vector<Element> const& elements) {
    Json array = Json::array();
    for (Element const& element : elements) {
        array.push_back(toJson(element));
    }
    return array;
}

template <typename Element>
Json toJson(Capped<Element> const& elements) {
    return {{"listed", toJson(elements.listed)}, {"omitted", elements.omitted}};
}

Json orNull(std::optional<EntryReference> const& reference) {
    return reference ? toJson(*reference) : Json();
}

Json toJson(AnalysedEntry const& entry) {
    return {{"kind", toText(entry.kind)},
            {"text", entry.text},
            {"introducedName", orNull(entry.introducedName)},
            {"rootElement", orNull(entry.rootElement)},
            {"argument", entry.argument},
            {"outcome", toText(entry.outcome)},
            {"earlier", orNull(entry.earlier)},
            {"used", entry.isUsed}};
}

Json toJson(AnalysedCommand const& analysed) {
    Json object{{"scope", analysed.command.scope}, {"dynamic", analysed.command.isDynamic}};
    addRange(object, analysed.command.range);
    object["arguments"] = toJson(analysed.command.arguments);
    object["entries"] = toJson(analysed.entries);
    return object;
}

Json toJson(AnalysedUse const& analysed) {
    Json object{{"scope", analysed.use.scope}};
    object.update(toJson(analysed.use.name));
    object["name"] = analysed.name;
    object["imports"] = toJson(analysed.imports);
    object["wildcards"] = toJson(analysed.wildcards);
    object["unknown"] = analysed.isUnknown();
    object["suggestion"] = orNull(analysed.suggestion);
    return object;
}

Json toJson(Note const& note) {
    Json object{{"message", fillPlaces(note.words, note.arguments)},
                {"messageArguments", note.arguments}};
    addRange(object, note.range);
    return object;
}

Json toJson(Diagnostic const& diagnostic) {
    bool const isError = diagnostic.severity == lf::import::Severity::Error;
    Json object{{"severity", isError ? "error" : "warning"},
                {"key", diagnostic.key.empty() ? Json() : Json(diagnostic.key)},
                {"message", fillPlaces(diagnostic.words, diagnostic.arguments)},
                {"messageArguments", diagnostic.arguments}};
    addRange(object, diagnostic.range);
    object["command"] = orNull(diagnostic.command);
    object["argument"] = orNull(diagnostic.argument);
    object["note"] = diagnostic.note ? toJson(*diagnostic.note) : Json();
    return object;
}

Json toJson(AnalysedScope const& analysed, ScopeDetail detail) {
    Json object{{"name", analysed.scope.name}, {"parent", orNull(analysed.scope.parent)}};
    addRange(object, analysed.scope.range);
    object["imports"] = toJson(analysed.entries);
    if (detail == ScopeDetail::ImportsAndView) {
        object["inherited"] = analysed.view ? toJson(analysed.view->inherited) : Json();
        object["hidden"] = analysed.view ? toJson(analysed.view->hidden) : Json();
    }
    return object;
}

Json toJson(AnalysedFile const& file, ScopeDetail detail) {
    Json object{{"name", file.source.name()}};
    Json& scopes = object["scopes"] = Json::array();
    for (AnalysedScope const& scope : file.scopes) {
        scopes.push_back(toJson(scope, detail));
    }
    object["commands"] = toJson(file.commands);
    object["uses"] = toJson(file.uses);
    object["diagnostics"] = toJson(file.diagnostics);
    return object;
}

Json toJson(Summary const& summary) {
    return {{"files", summary.files},       {"commands", summary.commands},
            {"uses", summary.uses},         {"entries", summary.entries()},
            {"names", summary.names},       {"wildcards", summary.wildcards},
            {"packages", summary.packages}, {"errors", summary.errors},
            {"warnings", summary.warnings}};
}

class JsonReport final : public IReport {
  public:
    JsonReport(bool packageImports, ScopeDetail chosenDetail)
        : scopeDetail(chosenDetail),
          document{{"schemaVersion", jsonSchemaVersion},
                   {"packageImports", packageImports},
                   {"files", Json::array()},
                   {"failures", Json::array()}} {}

    std::string add(AnalysedFile const& file) override {
        document["files"].push_back(toJson(file, scopeDetail));
        return {};
    }

    std::string add(LoadFailure const& failure) override {
        document["failures"].push_back({{"name", failure.name},
                                        {"message", failure.reason},
                                        {"offset", orNull(failure.offset)}});
        return {};
    }

    std::string finish(Summary const& summary, std::chrono::duration<double>) override {
        document["summary"] = toJson(summary);
        return document.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
    }

  private:
    ScopeDetail scopeDetail;
    Json document;
};

} // namespace

std::unique_ptr<IReport> createJsonReport(bool packageImports, ScopeDetail detail) {
    return std::make_unique<JsonReport>(packageImports, detail);
}

} // namespace explorer
