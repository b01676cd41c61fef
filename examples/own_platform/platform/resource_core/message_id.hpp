// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Messages without texts, and their holder.

#include <exception>
#include <memory>
#include <string>
#include <variant>
#include <vector>

namespace resource_core {

using MsgArgument = std::variant<std::string, std::u16string>;

struct BaseMsgID {
    std::vector<MsgArgument> arguments;
    std::string catalogue;
    std::string key;
};

/// Holds one message or none. A held message is immutable, so copies share it.
class GenericMsgIDHolder {
  public:
    class EmptyGenericMsgIDHolder : public std::exception {
      public:
        /// Defined in the source file, so that all libraries share the type information.
        char const* what() const noexcept override;
    };

    GenericMsgIDHolder() = default;
    explicit GenericMsgIDHolder(BaseMsgID const& message);

    /// \throws EmptyGenericMsgIDHolder
    BaseMsgID const& getMsgID() const;

  private:
    std::shared_ptr<BaseMsgID const> held; ///< a move leaves the source empty
};

} // namespace resource_core
