// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Messages whose plain values are floating-point numbers, and a holder that stores them in a
/// sequence.

#include <exception>
#include <string>
#include <variant>
#include <vector>

namespace resource_core {

using MsgArgument = std::variant<double, std::string, std::u16string>;

struct BaseMsgID {
    std::vector<MsgArgument> arguments;
    std::string catalogue;
    std::string key;
};

class GenericMsgIDHolder {
  public:
    class EmptyGenericMsgIDHolder : public std::exception {
      public:
        char const* what() const noexcept override { return "nothing held"; }
    };

    GenericMsgIDHolder() = default;
    explicit GenericMsgIDHolder(BaseMsgID const& message);

    BaseMsgID const& getMsgID() const;

  private:
    std::vector<BaseMsgID> messages; ///< one or none
};

} // namespace resource_core
