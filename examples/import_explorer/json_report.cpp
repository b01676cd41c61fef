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

Json toJson(AnalysedEntry const& entry) {
    return {{"kind", toText(entry.kind)},
            {"text", entry.text},
            {"introducedName", orNull(entry.introducedName)},
            {"rootElement", orNull(entry.rootElement)},
            {"argument", entry.argument}};
}

Json toJson(AnalysedCommand const& analysed) {
    Json object{{"dynamic", analysed.command.isDynamic}};
    addRange(object, analysed.command.range);
    Json& arguments = object["arguments"] = Json::array();
    for (Word const& argument : analysed.command.arguments) {
        arguments.push_back(toJson(argument));
    }
    Json& entries = object["entries"] = Json::array();
    for (AnalysedEntry const& entry : analysed.entries) {
        entries.push_back(toJson(entry));
    }
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
    return object;
}

Json toJson(Summary const& summary) {
    return {{"files", summary.files},         {"commands", summary.commands},
            {"entries", summary.entries()},   {"names", summary.names},
            {"wildcards", summary.wildcards}, {"packages", summary.packages},
            {"errors", summary.errors},       {"warnings", summary.warnings}};
}

} // namespace

struct JsonReport::Document {
    Json root;
};

JsonReport::JsonReport(bool packageImports) : document(std::make_unique<Document>()) {
    document->root = {{"schemaVersion", jsonSchemaVersion},
                      {"packageImports", packageImports},
                      {"files", Json::array()},
                      {"failures", Json::array()}};
}

JsonReport::~JsonReport() = default;

std::string JsonReport::add(AnalysedFile const& file) {
    Json object{{"name", file.source.name()}};
    Json& commands = object["commands"] = Json::array();
    for (AnalysedCommand const& command : file.commands) {
        commands.push_back(toJson(command));
    }
    Json& diagnostics = object["diagnostics"] = Json::array();
    for (Diagnostic const& diagnostic : file.diagnostics) {
        diagnostics.push_back(toJson(diagnostic));
    }
    document->root["files"].push_back(std::move(object));
    return {};
}

std::string JsonReport::add(LoadFailure const& failure) {
    document->root["failures"].push_back(
        {{"name", failure.name}, {"message", failure.reason}, {"offset", orNull(failure.offset)}});
    return {};
}

std::string JsonReport::finish(Summary const& summary, std::chrono::duration<double>) {
    document->root["summary"] = toJson(summary);
    return document->root.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

} // namespace explorer
