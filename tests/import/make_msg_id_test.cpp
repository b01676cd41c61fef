// SPDX-License-Identifier: BSL-1.0

#include <import/diagnostics/make_msg_id.hpp>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <type_traits>

namespace lf::import {
namespace {

using message_arguments::ImportArgument;
using message_arguments::ReservedWord;
using resource_core::BaseMsgID;
using resource_core::GenericMsgIDHolder;

template <MessageKeyLiteral key, typename... Arguments>
concept CanBeMadeOf = requires(Arguments... arguments) {
    makeMsgID<key>(arguments...);
};

static_assert(CanBeMadeOf<"KeywordInImportArgument", ImportArgument, ReservedWord>);
static_assert(!CanBeMadeOf<"KeywordInImportArgument", ReservedWord, ImportArgument>,
              "swapped arguments");
static_assert(!CanBeMadeOf<"KeywordInImportArgument", ImportArgument>, "a missing argument");
static_assert(!CanBeMadeOf<"InvalidImportArgument", std::u16string>, "a text without a meaning");
static_assert(!CanBeMadeOf<"ImportArgumentWithoutDot", ImportArgument>, "an argument too many");
static_assert(CanBeMadeOf<"ImportArgumentWithoutDot">);
static_assert(!CanBeMadeOf<"ImportArgumentWithoutDots">, "an unknown key");
static_assert(!CanBeMadeOf<"">, "no key");
static_assert(!std::is_constructible_v<ImportArgument, ReservedWord>, "a text of another kind");

TEST(MakeMsgID, FillsInCatalogueKeyAndArgumentsInOrder) {
    EXPECT_EQ(
        (makeMsgID<"KeywordInImportArgument">(ImportArgument(u"a.for"), ReservedWord(u"for"))),
        (BaseMsgID{{u"a.for", u"for"}, "KELDAR:lang", "KeywordInImportArgument"}));
}

TEST(MakeMsgID, MakesNoArgumentOfNone) {
    EXPECT_TRUE(makeMsgID<"ImportArgumentWithoutDot">().arguments.empty());
}

TEST(MakeMsgID, CopiesTheTexts) {
    auto text = std::make_unique<std::u16string>(100, u'x');
    BaseMsgID const message = makeMsgID<"InvalidImportArgument">(ImportArgument(*text));
    text.reset();
    EXPECT_EQ(std::get<std::u16string>(message.arguments.front()), std::u16string(100, u'x'));
}

TEST(MakeMsgHolder, SurvivesTheHolderItWasCopiedFrom) {
    auto original =
        std::make_unique<GenericMsgIDHolder>(makeMsgHolder<"KeywordInImportArgumentWarning">(
            ImportArgument(u"a.end"), ReservedWord(u"end")));
    GenericMsgIDHolder const copy = *original;
    original.reset();
    EXPECT_EQ(copy.getMsgID(),
              (BaseMsgID{{u"a.end", u"end"}, "KELDAR:lang", "KeywordInImportArgumentWarning"}));
}

} // namespace
} // namespace lf::import
