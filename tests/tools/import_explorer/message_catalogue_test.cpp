// SPDX-License-Identifier: BSL-1.0

#include <import_explorer/message_catalogue.hpp>

#include <import/messages.hpp>

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace explorer {
namespace {

TEST(MessageCatalogue, HasOtherWordsForEachMessageAndUsesAllItsArguments) {
    std::set<std::string_view> seen;
    for (lf::import::MessageKey const& message : lf::import::messageKeys) {
        std::string_view const words = messageCatalogue.wordsFor(message.key).value();
        EXPECT_TRUE(seen.insert(words).second) << message.key;
        std::vector<std::string> arguments;
        for (std::size_t index = 0; index < message.numberOfArguments; ++index) {
            arguments.push_back("<" + std::to_string(index) + ">");
        }
        std::string const filled = lf::import::host::fillPlaceholders(words, arguments);
        for (std::string const& argument : arguments) {
            EXPECT_NE(filled.find(argument), std::string::npos) << message.key;
        }
        EXPECT_EQ(filled.find('{'), std::string::npos)
            << "a placeholder without an argument: " << filled;
    }
    EXPECT_EQ(seen.size(), lf::import::messageKeys.size());
}

} // namespace
} // namespace explorer
