// SPDX-License-Identifier: BSL-1.0
#include <import_explorer/json_writer.hpp>

#include <import_explorer/display_width.hpp>
#include <import_explorer/utf8.hpp>

#include <nlohmann/json.hpp>

#include <string>

namespace explorer {

namespace {

constexpr std::size_t indentation = 2;

std::string quote(std::string_view text) {
    using Json = nlohmann::json;
    return Json(text).dump(-1, ' ', false, Json::error_handler_t::replace);
}

} // namespace

std::string cutJsonText(std::string_view text) {
    if (text.size() <= longestJsonText) {
        return std::string(text);
    }
    std::size_t size = longestJsonText;
    while (size > 0 && isContinuationByte(text[size])) {
        --size;
    }
    return std::string(text.substr(0, size)).append(cutMark);
}

std::vector<std::string> cutJsonTexts(std::vector<std::string> texts) {
    for (std::string& text : texts) {
        text = cutJsonText(text);
    }
    return texts;
}

void JsonWriter::key(std::string_view name) {
    separate();
    sink.write(quote(name));
    sink.write(": ");
    followsKey = true;
}

void JsonWriter::value(std::string_view text) {
    element(quote(text));
}

void JsonWriter::write(std::size_t number) {
    element(std::to_string(number));
}

void JsonWriter::begin(char opening, char closing, JsonLayout layout) {
    separate();
    sink.write({&opening, 1});
    levels.push_back({layout, closing, true});
}

void JsonWriter::end() {
    Level const level = levels.back();
    levels.pop_back();
    if (level.layout == JsonLayout::Lines && !level.isEmpty) {
        beginLine(levels.size());
    }
    sink.write({&level.closing, 1});
    if (levels.empty()) {
        sink.write("\n");
    }
}

void JsonWriter::separate() {
    if (followsKey) {
        followsKey = false;
        return;
    }
    if (levels.empty()) {
        return;
    }
    Level& level = levels.back();
    bool const hasLines = level.layout == JsonLayout::Lines;
    if (!level.isEmpty) {
        sink.write(hasLines ? "," : ", ");
    }
    level.isEmpty = false;
    if (hasLines) {
        beginLine(levels.size());
    }
}

void JsonWriter::element(std::string_view text) {
    separate();
    sink.write(text);
}

void JsonWriter::beginLine(std::size_t depth) {
    sink.write("\n" + std::string(depth * indentation, ' '));
}

} // namespace explorer
