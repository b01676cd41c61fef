// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Writes JSON piece by piece.

#include <import_explorer/text_sink.hpp>

#include <concepts>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace explorer {

/// Longer texts of a script are truncated at the end of a character, and an ellipsis is appended.
inline constexpr std::size_t longestJsonText = 200;

std::string cutJsonText(std::string_view text);
std::vector<std::string> cutJsonTexts(std::vector<std::string> texts);

/// Layout of the elements of an array or the members of an object.
enum class JsonLayout {
    /// Each on its own line.
    Lines,
    /// All on one line, including everything nested.
    Inline,
};

/// Writes one JSON document, in UTF-8, in the order of the calls. Calls to begin and end must
/// match; in an object, each value must follow its key. Bytes that are not UTF-8 are replaced by
/// U+FFFD.
class JsonWriter {
  public:
    explicit JsonWriter(ITextSink& target) noexcept : sink(target) {}

    void beginObject(JsonLayout layout = JsonLayout::Inline) { begin('{', '}', layout); }

    void endObject() { end(); }

    void beginArray(JsonLayout layout = JsonLayout::Inline) { begin('[', ']', layout); }

    void endArray() { end(); }

    void key(std::string_view name);

    void value(std::string_view text);

    void value(char const* text) { value(std::string_view(text)); }

    void value(std::integral auto number) { write(static_cast<std::size_t>(number)); }

    void value(std::nullptr_t /*null*/) { element("null"); }

    void value(bool truth) { element(truth ? "true" : "false"); }

    template <typename Value>
    void value(std::optional<Value> const& optional) {
        if (optional) {
            value(*optional);
        } else {
            value(nullptr);
        }
    }

    template <typename Value>
    void field(std::string_view name, Value const& content) {
        key(name);
        value(content);
    }

  private:
    struct Level {
        JsonLayout layout = JsonLayout::Inline;
        char closing = '}';
        bool isEmpty = true;
    };

    void begin(char opening, char closing, JsonLayout layout);
    void end();
    void write(std::size_t number);
    /// Writes the separator between an element and the previous one.
    void separate();
    void element(std::string_view text);
    void beginLine(std::size_t depth);

    ITextSink& sink;
    std::vector<Level> levels;
    bool followsKey = false;
};

} // namespace explorer
