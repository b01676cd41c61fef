// SPDX-License-Identifier: BSL-1.0
#include "names.hpp"

#include <algorithm>
#include <stdexcept>

namespace workload {

namespace {

constexpr auto words = std::to_array<std::u16string_view>({
    u"add",    u"angle",  u"array",   u"base",   u"block",  u"buffer", u"cache",  u"cell",
    u"chart",  u"clear",  u"color",   u"column", u"copy",   u"count",  u"create", u"data",
    u"date",   u"delta",  u"display", u"error",  u"event",  u"field",  u"file",   u"filter",
    u"find",   u"format", u"frame",   u"get",    u"group",  u"handle", u"image",  u"index",
    u"input",  u"is",     u"item",    u"key",    u"label",  u"layer",  u"line",   u"list",
    u"load",   u"map",    u"matrix",  u"model",  u"name",   u"node",   u"number", u"parse",
    u"path",   u"plot",   u"point",   u"query",  u"random", u"range",  u"read",   u"row",
    u"sample", u"set",    u"signal",  u"size",   u"table",  u"update", u"vector", u"write",
});

// An empty one stands for none. Repeated ones are drawn more often.
constexpr auto classPrefixes = std::to_array<std::u16string_view>(
    {u"", u"", u"", u"Abstract", u"Base", u"Default", u"Simple", u"Http", u"Xml", u"Json"});
constexpr auto classSuffixes = std::to_array<std::u16string_view>(
    {u"", u"", u"Impl", u"Factory", u"Builder", u"Handler", u"Listener", u"Manager", u"Service",
     u"Exception", u"Provider", u"Adapter", u"Test", u"TestCase", u"Configuration", u"Utils"});

std::u16string capitalized(std::u16string_view word) {
    std::u16string text(word);
    text.front() = static_cast<char16_t>(text.front() - u'a' + u'A');
    return text;
}

// One in eight names has four words, one in eight has one word; the others have two or three.
std::size_t drawNumberOfWords(Draws& draws) {
    static constexpr std::array<std::size_t, 8> shares{1, 2, 2, 2, 2, 3, 3, 4};
    return draws.oneOf(shares);
}

std::u16string drawRandomWords(Draws& draws) {
    std::u16string name(drawWord(draws));
    for (std::size_t left = drawNumberOfWords(draws) - 1; left > 0; --left) {
        name += capitalized(drawWord(draws));
    }
    return name;
}

std::u16string drawDigits(Draws& draws, std::size_t count) {
    std::u16string digits(count, u'0');
    std::ranges::generate(digits, [&] { return static_cast<char16_t>(u'0' + draws.below(10)); });
    return digits;
}

std::u16string drawAlike(Draws& draws) {
    std::u16string name = u"Shape" + drawDigits(draws, 4);
    name += u'N' + drawDigits(draws, 4);
    return name += u"Factory";
}

std::u16string drawClassName(Draws& draws) {
    std::u16string name(draws.oneOf(classPrefixes));
    for (std::size_t left = drawNumberOfWords(draws); left > 0; --left) {
        name += capitalized(drawWord(draws));
    }
    return name += draws.oneOf(classSuffixes);
}

} // namespace

std::string_view toString(NameShape shape) {
    switch (shape) {
    case NameShape::RandomWords:
        return "random";
    case NameShape::Alike:
        return "alike";
    case NameShape::ClassNames:
        return "classes";
    }
    throw std::logic_error("a shape of names without a name");
}

std::u16string_view drawWord(Draws& draws) {
    return draws.oneOf(words);
}

std::u16string NameSource::next() {
    for (;;) {
        std::u16string name = draw();
        if (given.insert(name).second) {
            return name;
        }
    }
}

std::vector<std::u16string> NameSource::take(std::size_t count) {
    std::vector<std::u16string> names(count);
    std::ranges::generate(names, [this] { return next(); });
    return names;
}

std::u16string NameSource::draw() {
    switch (shape) {
    case NameShape::RandomWords:
        return drawRandomWords(draws);
    case NameShape::Alike:
        return drawAlike(draws);
    case NameShape::ClassNames:
        return drawClassName(draws);
    }
    throw std::logic_error("a shape of names that is not drawn");
}

} // namespace workload
