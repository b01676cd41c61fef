// SPDX-License-Identifier: BSL-1.0

#include <import/diagnostics/make_msg_id.hpp>

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace lf::import {
namespace {

using messages::ImportArgument;
using messages::ReservedWord;
using resource_core::BaseMsgID;
using resource_core::GenericMsgIDHolder;

template <auto const& definition, typename... Arguments>
concept CanBeMadeOf = requires(Arguments... arguments) {
    makeMsgID<definition>(arguments...);
};

static_assert(CanBeMadeOf<messages::keywordInImportArgument, ImportArgument, ReservedWord>);
static_assert(!CanBeMadeOf<messages::keywordInImportArgument, ReservedWord, ImportArgument>,
              "swapped arguments");
static_assert(!CanBeMadeOf<messages::keywordInImportArgument, ImportArgument>,
              "a missing argument");
static_assert(!CanBeMadeOf<messages::invalidImportArgument, std::u16string>,
              "a text without a meaning");
static_assert(!CanBeMadeOf<messages::importArgumentWithoutDot, ImportArgument>,
              "an argument too many");
static_assert(CanBeMadeOf<messages::importArgumentWithoutDot>);

TEST(MakeMsgID, FillsInCatalogueKeyAndArgumentsInOrder) {
    EXPECT_EQ((makeMsgID<messages::keywordInImportArgument>(ImportArgument(u"a.for"),
                                                            ReservedWord(u"for"))),
              (BaseMsgID{{u"a.for", u"for"}, "KELDAR:lang", "KeywordInImportArgument"}));
}

TEST(MakeMsgID, MakesNoArgumentOfNone) {
    EXPECT_TRUE(makeMsgID<messages::importArgumentWithoutDot>().arguments.empty());
}

TEST(MakeMsgID, CopiesTheTexts) {
    auto text = std::make_unique<std::u16string>(100, u'x');
    BaseMsgID const message = makeMsgID<messages::invalidImportArgument>(ImportArgument(*text));
    text.reset();
    EXPECT_EQ(std::get<std::u16string>(message.arguments.front()), std::u16string(100, u'x'));
}

TEST(MakeMsgHolder, SurvivesTheHolderItWasCopiedFrom) {
    auto original = std::make_unique<GenericMsgIDHolder>(
        makeMsgHolder<messages::keywordInImportArgumentWarning>(ImportArgument(u"a.end"),
                                                                ReservedWord(u"end")));
    GenericMsgIDHolder const copy = *original;
    original.reset();
    EXPECT_EQ(copy.getMsgID(),
              (BaseMsgID{{u"a.end", u"end"}, "KELDAR:lang", "KeywordInImportArgumentWarning"}));
}

} // namespace
} // namespace lf::import
