// SPDX-License-Identifier: BSL-1.0
#include <host/catalogue.hpp>

#include "catalogue_words.hpp"

#include <import/argument_parser.hpp>

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <variant>
#include <vector>

namespace lf::import::host {
namespace {

// CMakeLists.txt tests variants of catalogue_words.hpp that must not compile.
constexpr MessageCatalogue catalogue({WORDS});

TEST(MessageCatalogue, HasTheWordsOfEveryKey) {
    for (MessageKey const& message : messageKeys) {
        ASSERT_TRUE(catalogue.wordsFor(message.key)) << message.key;
    }
    EXPECT_EQ(catalogue.wordsFor("PackageRedeclared"), "'{1}' again");
    EXPECT_EQ(catalogue.wordsFor("Packageredeclared"), std::nullopt);
    EXPECT_EQ(catalogue.wordsFor(""), std::nullopt);
}

TEST(MessageCatalogue, PutsTheArgumentsOfAMessageInPlace) {
    std::vector<std::u16string> const command{u"größe.while"};
    auto const parser = createImportArgumentParser(command, Behavior::WithPackageImports);
    auto const& diagnostic =
        std::get<std::pair<InvalidImportEntry, ImportArgumentIndex>>(parser->parse().at(0)).first;
    EXPECT_EQ(catalogue.format(diagnostic.getMsgHolder().getMsgID()),
              "'while' in 'größe.while', {while}");
}

TEST(MessageCatalogue, ShowsMessagesOfOthersAsTheyAre) {
    EXPECT_EQ(catalogue.format({{std::u16string(u"x")}, "other", "key"}), "other:key(\"x\")");
}

struct FillRow {
    std::string words;
    std::string filled;
    char const* why;
};

TEST(FillPlaceholders, TakesArgumentsAsTheyAre) {
    std::array<std::string, 2> const arguments{"one", "{1}{2}"};
    std::array const rows{
        FillRow{"", "", "an empty text"},
        FillRow{"no placeholder", "no placeholder", "text is copied"},
        FillRow{"{1}", "one", "only a placeholder"},
        FillRow{"{1}, {1}", "one, one", "a repeated placeholder"},
        FillRow{"{2}!", "{1}{2}!", "placeholders in arguments are copied"},
        FillRow{"{0}{3}{9}", "{0}{3}{9}", "placeholders without an argument are copied"},
        FillRow{"{1", "{1", "an incomplete placeholder"},
        FillRow{"{ 1}{x}{12}{}", "{ 1}{x}{12}{}", "braces that form no placeholder"},
        FillRow{"{{1}}", "{one}", "braces around a placeholder"},
    };
    for (auto const& [words, filled, why] : rows) {
        EXPECT_EQ(fillPlaceholders(words, arguments), filled) << why;
    }
}

} // namespace
} // namespace lf::import::host
