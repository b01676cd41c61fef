// SPDX-License-Identifier: BSL-1.0
#include <resource_core/message_id.hpp>

#include <boost/exception/enable_current_exception.hpp>

#include <utility>

namespace resource_core {

GenericMsgIDHolder::EmptyGenericMsgIDHolder::~EmptyGenericMsgIDHolder() = default;

char const* GenericMsgIDHolder::EmptyGenericMsgIDHolder::what() const noexcept {
    return "the message holder is empty";
}

GenericMsgIDHolder::GenericMsgIDHolder(BaseMsgID const& message)
    : msgID(std::make_unique<BaseMsgID>(message)) {}

GenericMsgIDHolder::GenericMsgIDHolder(GenericMsgIDHolder const& other)
    : msgID(other.isEmpty() ? nullptr : std::make_unique<BaseMsgID>(*other.msgID)) {}

GenericMsgIDHolder& GenericMsgIDHolder::operator=(GenericMsgIDHolder const& other) {
    GenericMsgIDHolder copy(other);
    return *this = std::move(copy);
}

void GenericMsgIDHolder::throwEmpty() {
    throw boost::enable_current_exception(EmptyGenericMsgIDHolder());
}

} // namespace resource_core
