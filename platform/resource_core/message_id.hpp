// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Message identifiers, which report a problem without wording, and their holder.

#include <gleigem_platform/export.hpp>

#include <cstdint>
#include <exception>
#include <memory>
#include <string>
#include <variant>
#include <vector>

namespace resource_core {

/// A value to insert into the text of a message. The order of the alternatives is fixed.
using MsgArgument = std::variant<std::uint64_t, std::string, std::u16string>;

/// Identifies one message of one catalogue. The order of the fields is fixed.
struct GLEIGEM_PLATFORM_EXPORT BaseMsgID {
    /// In the order in which the text of the message uses them.
    std::vector<MsgArgument> arguments;
    /// The catalogue that has the text.
    std::string catalogue;
    /// The message within its catalogue.
    std::string key;

    friend bool operator==(BaseMsgID const&, BaseMsgID const&) = default;
};

/// Owns one message identifier or none. Copies are deep; a moved-from holder is empty.
class GLEIGEM_PLATFORM_EXPORT GenericMsgIDHolder {
  public:
    /// Thrown when an empty holder is asked for its message identifier.
    class GLEIGEM_PLATFORM_EXPORT EmptyGenericMsgIDHolder : public std::exception {
      public:
        EmptyGenericMsgIDHolder() noexcept = default;
        EmptyGenericMsgIDHolder(EmptyGenericMsgIDHolder const&) noexcept = default;
        EmptyGenericMsgIDHolder& operator=(EmptyGenericMsgIDHolder const&) noexcept = default;
        ~EmptyGenericMsgIDHolder() override;

        /// A short description. Points to a string literal.
        char const* what() const noexcept override;
    };

    /// Holds nothing.
    GenericMsgIDHolder() noexcept = default;

    /// Holds a copy of \p message.
    explicit GenericMsgIDHolder(BaseMsgID const& message);

    /// Holds a copy of what \p other holds; a copy of an empty holder allocates nothing.
    GenericMsgIDHolder(GenericMsgIDHolder const& other);

    /// Takes what \p other holds and leaves it empty.
    GenericMsgIDHolder(GenericMsgIDHolder&& other) noexcept = default;

    /// Like the copy constructor. If it throws, this holder is unchanged.
    GenericMsgIDHolder& operator=(GenericMsgIDHolder const& other);

    /// Like the move constructor. Self-assignment changes nothing.
    GenericMsgIDHolder& operator=(GenericMsgIDHolder&& other) noexcept = default;

    ~GenericMsgIDHolder() = default;

    /// Whether there is no message identifier.
    bool isEmpty() const noexcept { return msgID == nullptr; }

    /// The message identifier. The reference is valid until the holder is changed, moved or
    /// destroyed.
    ///
    /// \throws EmptyGenericMsgIDHolder if there is none; boost::current_exception can copy it.
    BaseMsgID const& getMsgID() const {
        if (isEmpty()) {
            throwEmpty();
        }
        return *msgID;
    }

  private:
    [[noreturn]] static void throwEmpty();

    std::unique_ptr<BaseMsgID> msgID;
};

} // namespace resource_core
