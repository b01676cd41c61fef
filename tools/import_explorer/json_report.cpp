// SPDX-License-Identifier: BSL-1.0
#include <import_explorer/json_report.hpp>

#include <import_explorer/json_writer.hpp>

#include <host/catalogue.hpp>

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace explorer {

namespace {

using lf::import::host::fillPlaceholders;

std::optional<std::string> cutIfAny(std::optional<std::string> const& text) {
    return text ? std::optional(cutJsonText(*text)) : std::nullopt;
}

/// Writes one file; each scope, command, use and diagnostic is on its own line.
class FileWriter {
  public:
    FileWriter(JsonWriter& writer, AnalysedFile const& analysedFile, ScopeDetail scopeDetail)
        : json(writer), file(analysedFile), detail(scopeDetail) {}

    void write() {
        json.beginObject(JsonLayout::Lines);
        json.field("name", file.source.name());
        writeArray("scopes", file.scopes, JsonLayout::Lines);
        writeArray("commands", file.commands, JsonLayout::Lines);
        writeArray("uses", file.uses, JsonLayout::Lines);
        writeArray("diagnostics", file.diagnostics, JsonLayout::Lines);
        json.endObject();
    }

  private:
    template <typename Elements>
    void writeArray(std::string_view key, Elements const& elements,
                    JsonLayout layout = JsonLayout::Inline) {
        json.key(key);
        json.beginArray(layout);
        for (auto const& element : elements) {
            write(element);
        }
        json.endArray();
    }

    template <typename Element>
    void writeCapped(std::string_view key, Capped<Element> const& elements) {
        json.key(key);
        json.beginObject();
        writeArray("listed", elements.listed);
        json.field("omitted", elements.omitted);
        json.endObject();
    }

    void writeRange(SourceRange const& range) {
        json.field("line", range.line);
        json.field("column", range.column);
        json.field("offset", range.begin);
        json.field("length", range.end - range.begin);
    }

    void writeOptional(std::string_view key, std::optional<EntryReference> const& reference) {
        json.key(key);
        if (reference) {
            write(*reference);
        } else {
            json.value(nullptr);
        }
    }

    void write(std::string const& text) { json.value(text); }

    void write(EntryReference const& reference) {
        json.beginObject();
        json.field("command", reference.command);
        json.field("entry", reference.entry);
        json.endObject();
    }

    void write(HiddenEntry const& hidden) {
        json.beginObject();
        json.key("entry");
        write(hidden.entry);
        json.key("by");
        write(hidden.by);
        json.endObject();
    }

    void write(AnalysedScope const& analysed) {
        json.beginObject();
        json.field("name", cutJsonText(analysed.scope.name));
        json.field("parent", analysed.scope.parent);
        writeRange(analysed.scope.range);
        writeArray("imports", analysed.entries);
        if (detail == ScopeDetail::ImportsAndView) {
            writeView(analysed.view);
        }
        json.endObject();
    }

    void writeView(std::optional<ScopeView> const& view) {
        if (view) {
            writeCapped("inherited", view->inherited);
            writeCapped("hidden", view->hidden);
        } else {
            json.field("inherited", nullptr);
            json.field("hidden", nullptr);
        }
    }

    void write(AnalysedCommand const& analysed) {
        json.beginObject();
        json.field("scope", analysed.command.scope);
        json.field("dynamic", analysed.command.isDynamic);
        writeRange(analysed.command.range);
        writeArray("arguments", analysed.command.arguments);
        writeArray("entries", analysed.entries);
        json.endObject();
    }

    void write(Word const& argument) {
        json.beginObject();
        json.field("text", cutJsonText(argument.text));
        writeRange(argument.range);
        json.endObject();
    }

    void write(AnalysedEntry const& entry) {
        json.beginObject();
        json.field("kind", toText(entry.kind));
        json.field("text", cutJsonText(entry.text));
        json.field("introducedName", cutIfAny(entry.introducedName));
        json.field("rootElement", cutIfAny(entry.rootElement));
        json.field("argument", entry.argument);
        json.field("outcome", toText(entry.outcome));
        writeOptional("earlier", entry.earlier);
        json.field("used", entry.isUsed);
        json.endObject();
    }

    void write(AnalysedUse const& analysed) {
        json.beginObject();
        json.field("scope", analysed.use.scope);
        json.field("text", cutJsonText(analysed.use.name.text));
        writeRange(analysed.use.name.range);
        json.field("name", cutJsonText(analysed.name));
        writeArray("imports", analysed.imports);
        writeCapped("wildcards", analysed.wildcards);
        json.field("unknown", analysed.isUnknown());
        writeOptional("suggestion", analysed.suggestion);
        json.endObject();
    }

    void write(Diagnostic const& diagnostic) {
        bool const isError = diagnostic.severity == lf::import::Severity::Error;
        std::vector<std::string> const arguments = cutJsonTexts(diagnostic.arguments);
        json.beginObject();
        json.field("severity", isError ? "error" : "warning");
        json.field("key", diagnostic.key.empty() ? std::nullopt : std::optional(diagnostic.key));
        json.field("message", fillPlaceholders(diagnostic.words, arguments));
        writeArray("messageArguments", arguments);
        writeRange(diagnostic.range);
        json.field("command", diagnostic.command);
        json.field("argument", diagnostic.argument);
        json.key("note");
        if (diagnostic.note) {
            write(*diagnostic.note);
        } else {
            json.value(nullptr);
        }
        json.endObject();
    }

    void write(Note const& note) {
        NoteInWords const inWords = describe(file, note);
        std::array const arguments{cutJsonText(inWords.argument)};
        json.beginObject();
        json.field("message", fillPlaceholders(inWords.words, arguments));
        json.key("entry");
        write(note.entry);
        writeRange(inWords.range);
        json.endObject();
    }

    JsonWriter& json;
    AnalysedFile const& file;
    ScopeDetail detail;
};

class JsonReport final : public IReport {
  public:
    JsonReport(ITextSink& sink, bool hasPackageImports, ScopeDetail chosenDetail)
        : json(sink), packageImports(hasPackageImports), scopeDetail(chosenDetail) {}

    void add(AnalysedFile const& file) override {
        beginFiles();
        FileWriter(json, file, scopeDetail).write();
    }

    /// Failures are written after all files.
    void add(LoadFailure const& failure) override { failures.push_back(failure); }

    void finish(Summary const& summary, std::chrono::duration<double> /*time*/) override {
        beginFiles();
        json.endArray();
        json.key("failures");
        json.beginArray(JsonLayout::Lines);
        for (LoadFailure const& failure : failures) {
            write(failure);
        }
        json.endArray();
        json.key("summary");
        write(summary);
        json.endObject();
    }

  private:
    void beginFiles() {
        if (std::exchange(isBegun, true)) {
            return;
        }
        json.beginObject(JsonLayout::Lines);
        json.field("schemaVersion", jsonSchemaVersion);
        json.field("packageImports", packageImports);
        json.key("files");
        json.beginArray(JsonLayout::Lines);
    }

    void write(LoadFailure const& failure) {
        json.beginObject();
        json.field("name", failure.name);
        json.field("message", failure.reason);
        json.field("offset", failure.offset);
        json.endObject();
    }

    void write(Summary const& summary) {
        json.beginObject();
        json.field("files", summary.files);
        json.field("commands", summary.commands);
        json.field("uses", summary.uses);
        json.field("entries", summary.entries());
        json.field("names", summary.names);
        json.field("wildcards", summary.wildcards);
        json.field("packages", summary.packages);
        json.field("errors", summary.errors);
        json.field("warnings", summary.warnings);
        json.endObject();
    }

    JsonWriter json;
    bool packageImports;
    ScopeDetail scopeDetail;
    bool isBegun = false;
    std::vector<LoadFailure> failures;
};

} // namespace

std::unique_ptr<IReport> createJsonReport(ITextSink& sink, bool packageImports,
                                          ScopeDetail detail) {
    return std::make_unique<JsonReport>(sink, packageImports, detail);
}

} // namespace explorer
