// SPDX-License-Identifier: BSL-1.0
#include <resource_core/message_id.hpp>

#include <support/allocations.hpp>

#include <boost/exception_ptr.hpp>
#include <gtest/gtest.h>

#include <cstddef>
#include <exception>
#include <new>
#include <string>
#include <type_traits>
#include <utility>

namespace {

using resource_core::BaseMsgID;
using resource_core::GenericMsgIDHolder;
using resource_core::MsgArgument;
using Empty = GenericMsgIDHolder::EmptyGenericMsgIDHolder;

BaseMsgID someMessage() {
    return {{MsgArgument(u"a.b"), MsgArgument("narrow"), MsgArgument(std::uint64_t{7})},
            "Catalogue:one",
            "SomeKey"};
}

BaseMsgID otherMessage() {
    return {{}, "Catalogue:two", "OtherKey"};
}

TEST(MsgArgument, HasItsAlternativesInOrder) {
    static_assert(std::is_same_v<std::variant_alternative_t<0, MsgArgument>, std::uint64_t>);
    static_assert(std::is_same_v<std::variant_alternative_t<1, MsgArgument>, std::string>);
    static_assert(std::is_same_v<std::variant_alternative_t<2, MsgArgument>, std::u16string>);
    static_assert(std::variant_size_v<MsgArgument> == 3);
}

TEST(BaseMsgID, IsEqualWhenAllItsFieldsAre) {
    EXPECT_EQ(someMessage(), someMessage());

    BaseMsgID changed = someMessage();
    changed.key = "Somekey";
    EXPECT_NE(changed, someMessage()) << "key";
    changed = someMessage();
    changed.catalogue.clear();
    EXPECT_NE(changed, someMessage()) << "catalogue";
    changed = someMessage();
    std::swap(changed.arguments[0], changed.arguments[1]);
    EXPECT_NE(changed, someMessage()) << "order of the arguments";
    changed = someMessage();
    changed.arguments.pop_back();
    EXPECT_NE(changed, someMessage()) << "number of the arguments";
}

TEST(MsgIDHolder, IsEmptyByDefault) {
    EXPECT_TRUE(GenericMsgIDHolder().isEmpty());
}

TEST(MsgIDHolder, HoldsACopyOfItsMessage) {
    BaseMsgID message = someMessage();
    GenericMsgIDHolder const holder(message);
    message.key = "Changed";
    ASSERT_FALSE(holder.isEmpty());
    EXPECT_EQ(holder.getMsgID(), someMessage());
}

TEST(MsgIDHolder, IsNotMadeFromAMessageByAccident) {
    static_assert(!std::is_convertible_v<BaseMsgID const&, GenericMsgIDHolder>);
    static_assert(std::is_constructible_v<GenericMsgIDHolder, BaseMsgID const&>);
}

TEST(MsgIDHolder, KeepsACopyBeyondTheHolderThatItWasCopiedFrom) {
    GenericMsgIDHolder copy;
    {
        GenericMsgIDHolder const original(someMessage());
        copy = GenericMsgIDHolder(original);
        EXPECT_NE(&copy.getMsgID(), &original.getMsgID());
    }
    EXPECT_EQ(copy.getMsgID(), someMessage());
}

TEST(MsgIDHolder, AllocatesNothingToCopyAnEmptyOne) {
    GenericMsgIDHolder const empty;
    std::size_t const before = support::countAllocations();
    GenericMsgIDHolder copy(empty);
    copy = empty;
    std::size_t const after = support::countAllocations();
    EXPECT_EQ(after, before);
    EXPECT_TRUE(copy.isEmpty());
}

TEST(MsgIDHolder, LeavesTheSourceOfAMoveEmpty) {
    GenericMsgIDHolder source(someMessage());
    BaseMsgID const* const message = &source.getMsgID();
    GenericMsgIDHolder constructed(std::move(source));
    EXPECT_TRUE(source.isEmpty());
    EXPECT_EQ(&constructed.getMsgID(), message) << "taken over, not copied";

    GenericMsgIDHolder assigned(otherMessage());
    assigned = std::move(constructed);
    EXPECT_TRUE(constructed.isEmpty());
    EXPECT_EQ(&assigned.getMsgID(), message);
}

TEST(MsgIDHolder, MovesWithoutThrowing) {
    static_assert(std::is_nothrow_default_constructible_v<GenericMsgIDHolder>);
    static_assert(std::is_nothrow_move_constructible_v<GenericMsgIDHolder>);
    static_assert(std::is_nothrow_move_assignable_v<GenericMsgIDHolder>);
}

TEST(MsgIDHolder, IsAssignedWhateverEitherSideHolds) {
    for (bool const targetIsEmpty : {true, false}) {
        for (bool const sourceIsEmpty : {true, false}) {
            auto target = targetIsEmpty ? GenericMsgIDHolder() : GenericMsgIDHolder(otherMessage());
            auto const source =
                sourceIsEmpty ? GenericMsgIDHolder() : GenericMsgIDHolder(someMessage());
            target = source;
            ASSERT_EQ(target.isEmpty(), sourceIsEmpty);
            if (!sourceIsEmpty) {
                EXPECT_EQ(target.getMsgID(), someMessage());
                EXPECT_EQ(source.getMsgID(), someMessage());
            }
        }
    }
}

TEST(MsgIDHolder, SurvivesAssignmentToItself) {
    GenericMsgIDHolder holder(someMessage());
    GenericMsgIDHolder& same = holder;
    holder = same;
    EXPECT_EQ(holder.getMsgID(), someMessage());
    holder = std::move(same);
    EXPECT_EQ(holder.getMsgID(), someMessage());

    GenericMsgIDHolder empty;
    GenericMsgIDHolder& alsoEmpty = empty;
    empty = alsoEmpty;
    empty = std::move(alsoEmpty);
    EXPECT_TRUE(empty.isEmpty());
}

TEST(MsgIDHolder, IsAsBeforeWhenACopyRunsOutOfMemory) {
    BaseMsgID const message{{MsgArgument(std::uint64_t{1}), MsgArgument(std::string(100, 'n')),
                             MsgArgument(std::u16string(100, u'w'))},
                            std::string(100, 'c'),
                            std::string(100, 'k')};
    GenericMsgIDHolder const source(message);
    GenericMsgIDHolder target(otherMessage());

    std::size_t allowed = 0;
    for (bool done = false; !done; ++allowed) {
        ASSERT_LT(allowed, 10U);
        try {
            support::FailingAllocations const failing(allowed);
            target = source;
            done = true;
        } catch (std::bad_alloc const&) {
            ASSERT_EQ(target.getMsgID(), otherMessage()) << allowed;
        }
    }
    EXPECT_EQ(target.getMsgID(), message);
    EXPECT_GE(allowed, 6U) << "the record, its three parts and the two texts are allocated";
}

TEST(EmptyMsgIDHolder, IsCaughtAsItself) {
    EXPECT_THROW(GenericMsgIDHolder().getMsgID(), Empty);
}

TEST(EmptyMsgIDHolder, IsCaughtAsAStandardException) {
    try {
        GenericMsgIDHolder().getMsgID();
        FAIL() << "nothing was thrown";
    } catch (std::exception const& exception) {
        EXPECT_STREQ(exception.what(), Empty().what());
    }
}

TEST(EmptyMsgIDHolder, IsCopiedByBoost) {
    boost::exception_ptr copy;
    try {
        GenericMsgIDHolder().getMsgID();
    } catch (...) {
        // Boost can only copy exceptions that were thrown with a clone_base.
        EXPECT_NO_THROW(copy = boost::current_exception());
        EXPECT_THROW(throw, boost::exception_detail::clone_base);
    }
    ASSERT_TRUE(copy);
    EXPECT_THROW(boost::rethrow_exception(copy), Empty);
}

TEST(EmptyMsgIDHolder, HasWordsOfItsOwn) {
    EXPECT_STREQ(Empty().what(), "the message holder is empty");
    static_assert(std::is_nothrow_default_constructible_v<Empty>);
    static_assert(std::is_nothrow_copy_constructible_v<Empty>);
}

} // namespace
