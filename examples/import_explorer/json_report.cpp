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

Json toJson(AnalysedFile const& file) {
    Json object{{"name", file.source.name()}};
    Json& commands = object["commands"] = Json::array();
    for (AnalysedCommand const& command : file.commands) {
        commands.push_back(toJson(command));
    }
    Json& diagnostics = object["diagnostics"] = Json::array();
    for (Diagnostic const& diagnostic : file.diagnostics) {
        diagnostics.push_back(toJson(diagnostic));
    }
    return object;
}

Json toJson(Summary const& summary) {
    return {{"files", summary.files},         {"commands", summary.commands},
            {"entries", summary.entries()},   {"names", summary.names},
            {"wildcards", summary.wildcards}, {"packages", summary.packages},
            {"errors", summary.errors},       {"warnings", summary.warnings}};
}

class JsonReport final : public IReport {
  public:
    explicit JsonReport(bool packageImports)
        : document{{"schemaVersion", jsonSchemaVersion},
                   {"packageImports", packageImports},
                   {"files", Json::array()},
                   {"failures", Json::array()}} {}

    std::string add(AnalysedFile const& file) override {
        document["files"].push_back(toJson(file));
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
    Json document;
};

} // namespace

std::unique_ptr<IReport> createJsonReport(bool packageImports) {
    return std::make_unique<JsonReport>(packageImports);
}

} // namespace explorer
