// SPDX-License-Identifier: BSL-1.0
#include <import_explorer/sarif_report.hpp>

#include <import_explorer/edits.hpp>
#include <import_explorer/fixes.hpp>
#include <import_explorer/json_writer.hpp>
#include <import_explorer/utf8.hpp>

#include <host/catalogue.hpp>

#include <import/messages.hpp>

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace explorer {

namespace {

using lf::import::host::fillPlaceholders;

/// Limits the fixes of a file, which can be long: at least this many, and one per so many bytes.
constexpr std::size_t leastFixes = 10;
constexpr std::size_t bytesForEachFix = 4;

/// \p path as a relative or absolute URI reference, percent-encoded where necessary.
std::string toUri(std::string_view path) {
    constexpr std::string_view plain =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~/";
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string uri = path.starts_with('/') ? "file://" : "";
    for (char const letter : path) {
        if (plain.find(letter) != std::string_view::npos) {
            uri += letter;
        } else {
            auto const byte = static_cast<unsigned char>(letter);
            uri += {'%', digits[byte / 16U], digits[byte % 16U]};
        }
    }
    return uri;
}

/// Escapes \p text for a message, in which braces and links have a meaning.
std::string escapeMessage(std::string_view text) {
    std::string escaped;
    escaped.reserve(text.size());
    for (std::size_t index = 0; index < text.size(); ++index) {
        char const letter = text[index];
        if (letter == '{' || letter == '}') {
            escaped += letter;
        } else if (text.substr(index).starts_with("](")) {
            escaped += '\\';
        }
        escaped += letter;
    }
    return escaped;
}

void writeMessage(JsonWriter& json, std::string_view text, std::string_view key = "message") {
    json.key(key);
    json.beginObject();
    json.field("text", escapeMessage(text));
    json.endObject();
}

void writeFile(JsonWriter& json, std::string_view uri) {
    json.key("artifactLocation");
    json.beginObject();
    json.field("uri", uri);
    json.endObject();
}

/// Writes the results of one file.
class ResultWriter {
  public:
    ResultWriter(JsonWriter& writer, AnalysedFile const& analysedFile)
        : json(writer),
          file(analysedFile),
          uri(toUri(analysedFile.source.name())),
          fixesLeft(leastFixes + analysedFile.source.size() / bytesForEachFix) {}

    void write(Diagnostic const& diagnostic) {
        bool const isError = diagnostic.severity == lf::import::Severity::Error;
        json.beginObject();
        json.field("ruleId", diagnostic.key.empty() ? toText(diagnostic.finding)
                                                    : std::string_view(diagnostic.key));
        json.field("level", isError ? "error" : "warning");
        writeMessage(json, fillPlaceholders(diagnostic.words, cutJsonTexts(diagnostic.arguments)));
        json.key("locations");
        json.beginArray();
        json.beginObject();
        writePlace(diagnostic.range);
        json.endObject();
        json.endArray();
        if (diagnostic.note) {
            write(describe(file, *diagnostic.note));
        }
        if (diagnostic.fix && fixesLeft > 0) {
            --fixesLeft;
            write(*diagnostic.fix);
        }
        json.endObject();
    }

  private:
    void write(NoteInWords const& note) {
        std::array const arguments{cutJsonText(note.argument)};
        json.key("relatedLocations");
        json.beginArray();
        json.beginObject();
        writeMessage(json, fillPlaceholders(note.words, arguments));
        writePlace(note.range);
        json.endObject();
        json.endArray();
    }

    void write(Fix const& fix) {
        std::array const arguments{cutJsonText(fix.alias)};
        json.key("fixes");
        json.beginArray();
        json.beginObject();
        writeMessage(json, fillPlaceholders(wordsFor(fix), arguments), "description");
        json.key("artifactChanges");
        json.beginArray();
        json.beginObject();
        writeFile(json, uri);
        json.key("replacements");
        json.beginArray();
        for (Edit const& edit : editsFor(file, fix)) {
            write(edit);
        }
        json.endArray();
        json.endObject();
        json.endArray();
        json.endObject();
        json.endArray();
    }

    void write(Edit const& edit) {
        json.beginObject();
        writeRegion("deletedRegion", edit.removed);
        if (!edit.inserted.empty()) {
            json.key("insertedContent");
            json.beginObject();
            json.field("text", edit.inserted);
            json.endObject();
        }
        json.endObject();
    }

    void writePlace(SourceRange const& range) {
        json.key("physicalLocation");
        json.beginObject();
        writeFile(json, uri);
        writeRegion("region", range);
        json.endObject();
    }

    /// If the range includes the end of its line, it ends at the beginning of the next line.
    void writeRegion(std::string_view name, SourceRange const& range) {
        std::string_view const text = file.source.text(range);
        json.key(name);
        json.beginObject();
        json.field("startLine", range.line);
        json.field("startColumn", range.column);
        if (text.ends_with('\n') || text.ends_with('\r')) {
            json.field("endLine", range.line + 1);
            json.field("endColumn", 1);
        } else {
            json.field("endColumn", range.column + countCharacters(text));
        }
        json.endObject();
    }

    JsonWriter& json;
    AnalysedFile const& file;
    std::string uri;
    /// Limited, since a fix can be longer than the text that it changes.
    std::size_t fixesLeft;
};

class SarifReport final : public IReport {
  public:
    explicit SarifReport(ITextSink& sink) : json(sink) {}

    void add(AnalysedFile const& file) override {
        beginResults();
        ResultWriter writer(json, file);
        for (Diagnostic const& diagnostic : file.diagnostics) {
            writer.write(diagnostic);
        }
    }

    /// Failures are written after all results.
    void add(LoadFailure const& failure) override { failures.push_back(failure); }

    void finish(Summary const& /*summary*/, std::chrono::duration<double> /*time*/) override {
        beginResults();
        json.endArray();
        writeInvocation();
        json.endObject();
        json.endArray();
        json.endObject();
    }

  private:
    void beginResults() {
        if (std::exchange(isBegun, true)) {
            return;
        }
        json.beginObject(JsonLayout::Lines);
        json.field("$schema", "https://json.schemastore.org/sarif-2.1.0.json");
        json.field("version", "2.1.0");
        json.key("runs");
        json.beginArray(JsonLayout::Lines);
        json.beginObject(JsonLayout::Lines);
        writeTool();
        json.field("columnKind", "unicodeCodePoints");
        writeLineEnds();
        json.key("results");
        json.beginArray(JsonLayout::Lines);
    }

    /// The line ends that SourceFile recognises.
    void writeLineEnds() {
        json.key("newlineSequences");
        json.beginArray();
        for (char const* const end : {"\r\n", "\n", "\r"}) {
            json.value(end);
        }
        json.endArray();
    }

    void writeTool() {
        json.key("tool");
        json.beginObject(JsonLayout::Lines);
        json.key("driver");
        json.beginObject(JsonLayout::Lines);
        json.field("name", "import_explorer");
        json.field("version", IMPORT_EXPLORER_NUMBER);
        json.key("rules");
        json.beginArray(JsonLayout::Lines);
        for (lf::import::MessageKey const& message : lf::import::messageKeys) {
            writeRule(message.key);
        }
        for (Finding const finding : findings) {
            writeRule(toText(finding));
        }
        json.endArray();
        json.endObject();
        json.endObject();
    }

    void writeRule(std::string_view id) {
        json.beginObject();
        json.field("id", id);
        json.endObject();
    }

    void writeInvocation() {
        json.key("invocations");
        json.beginArray(JsonLayout::Lines);
        json.beginObject(JsonLayout::Lines);
        json.field("executionSuccessful", failures.empty());
        json.key("toolExecutionNotifications");
        json.beginArray(JsonLayout::Lines);
        for (LoadFailure const& failure : failures) {
            write(failure);
        }
        json.endArray();
        json.endObject();
        json.endArray();
    }

    void write(LoadFailure const& failure) {
        json.beginObject();
        json.field("level", "error");
        writeMessage(json, failure.reason);
        json.key("locations");
        json.beginArray();
        json.beginObject();
        json.key("physicalLocation");
        json.beginObject();
        writeFile(json, toUri(failure.name));
        if (failure.offset) {
            json.key("region");
            json.beginObject();
            json.field("byteOffset", *failure.offset);
            json.field("byteLength", 1);
            json.endObject();
        }
        json.endObject();
        json.endObject();
        json.endArray();
        json.endObject();
    }

    JsonWriter json;
    bool isBegun = false;
    std::vector<LoadFailure> failures;
};

} // namespace

std::unique_ptr<IReport> createSarifReport(ITextSink& sink) {
    return std::make_unique<SarifReport>(sink);
}

} // namespace explorer
