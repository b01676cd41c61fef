// SPDX-License-Identifier: BSL-1.0
#include "recorder.hpp"

#include <host_testing/quoted.hpp>

#include <algorithm>
#include <utility>

namespace lf::import::host_testing::recording {
namespace {

bool isDigit(char16_t unit) {
    return unit >= u'0' && unit <= u'9';
}

bool isWordUnit(char16_t unit) {
    return isDigit(unit) || (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z') ||
           unit == u'_';
}

bool isNumber(std::u16string_view text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), isDigit);
}

template <typename Test>
bool arePiecesBetweenDots(std::u16string_view text, Test const& test) {
    std::size_t const dot = text.find(u'.');
    return test(text.substr(0, dot)) &&
           (dot == std::u16string_view::npos || arePiecesBetweenDots(text.substr(dot + 1), test));
}

} // namespace

std::ostream& operator<<(std::ostream& stream, Question const& question) {
    switch (question.service) {
    case Service::FeatureSwitch:
        return stream << "feature switch";
    case Service::Identifier:
        return stream << "identifier " << quoted(question.text);
    case Service::ReservedWord:
        return stream << "reserved word " << quoted(question.text) << " with selector "
                      << question.selector;
    case Service::RangeFactory:
        return stream << "range factory";
    case Service::Specifier:
        return stream << "specifier " << quoted(question.text);
    case Service::SpecifierText:
        return stream << "text of specifier " << quoted(question.text);
    case Service::NumberOfArguments:
        return stream << question.tree << ": number of arguments of " << question.node;
    case Service::Argument:
        return stream << question.tree << ": argument " << question.index << " of "
                      << question.node;
    case Service::ArgumentText:
        return stream << question.tree << ": text of " << question.node;
    }
    return stream;
}

Question featureSwitch() {
    return {.service = Service::FeatureSwitch};
}

Question identifier(std::u16string text) {
    return {.service = Service::Identifier, .text = std::move(text)};
}

Question reservedWord(std::u16string text, int selector) {
    return {.service = Service::ReservedWord, .text = std::move(text), .selector = selector};
}

Question rangeFactory() {
    return {.service = Service::RangeFactory};
}

Question specifier(std::u16string text) {
    return {.service = Service::Specifier, .text = std::move(text)};
}

Question specifierText(std::u16string text) {
    return {.service = Service::SpecifierText, .text = std::move(text)};
}

Question numberOfArguments(std::string tree, lf::astapi::NodeHandle command) {
    return {.service = Service::NumberOfArguments, .tree = std::move(tree), .node = command};
}

Question argument(std::string tree, lf::astapi::NodeHandle command, std::size_t index) {
    return {.service = Service::Argument, .tree = std::move(tree), .node = command, .index = index};
}

Question argumentText(std::string tree, lf::astapi::NodeHandle argument) {
    return {.service = Service::ArgumentText, .tree = std::move(tree), .node = argument};
}

bool isAsciiIdentifier(std::u16string_view text) {
    return !text.empty() && !isDigit(text.front()) &&
           std::all_of(text.begin(), text.end(), isWordUnit);
}

bool isOneOfThreeReservedWords(std::u16string_view text) {
    return text == u"for" || text == u"while" || text == u"end";
}

bool isNameWithOrWithoutNumbers(std::u16string_view text) {
    std::size_t const at = text.find(u'@');
    return arePiecesBetweenDots(text.substr(0, at), isAsciiIdentifier) &&
           (at == std::u16string_view::npos || arePiecesBetweenDots(text.substr(at + 1), isNumber));
}

void Recorder::whenAsked(Service service, std::size_t nth, std::function<void()> action) {
    beforeAnswer = [this, service, nth, action = std::move(action),
                    count = std::size_t{0}]() mutable {
        if (log.back().service == service && ++count == nth) {
            action();
        }
    };
}

void Recorder::ask(Question question) {
    log.push_back(std::move(question));
    beforeAnswer();
}

Recorder& recorder() {
    static Recorder theRecorder;
    return theRecorder;
}

} // namespace lf::import::host_testing::recording
