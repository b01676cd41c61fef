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

/// A text of a script that takes more bytes is cut at the end of a character, and a mark is put
/// behind it.
inline constexpr std::size_t longestJsonText = 200;

std::string cutJsonText(std::string_view text);
std::vector<std::string> cutJsonTexts(std::vector<std::string> texts);

/// How the elements of an array, or the members of an object, follow each other.
enum class JsonLayout {
    /// Each begins a line of its own.
    Lines,
    /// All in one line, with whatever is in them.
    Inline,
};

/// Writes one JSON document, in UTF-8, in the order of the calls. What is begun is to be ended;
/// within an object each value follows its key. What is not UTF-8 is replaced by U+FFFD.
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
    /// What stands between an element and the one before it.
    void separate();
    void element(std::string_view text);
    void beginLine(std::size_t depth);

    ITextSink& sink;
    std::vector<Level> levels;
    bool followsKey = false;
};

} // namespace explorer
