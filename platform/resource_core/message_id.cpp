// SPDX-License-Identifier: BSL-1.0
#include <resource_core/message_id.hpp>

#include <boost/exception/enable_current_exception.hpp>

#include <utility>

namespace resource_core {

namespace {

/// A copy of \p argument that copies its alternative. If copying a string throws, the copy
/// constructor of std::variant in libstdc++ 12 destroys a string that was never constructed.
MsgArgument copyOf(MsgArgument const& argument) {
    return std::visit(
        []<typename Value>(Value const& value) {
            return MsgArgument(std::in_place_type<Value>, value);
        },
        argument);
}

BaseMsgID copyOf(BaseMsgID const& message) {
    BaseMsgID copy{.arguments = {}, .catalogue = message.catalogue, .key = message.key};
    copy.arguments.reserve(message.arguments.size());
    for (MsgArgument const& argument : message.arguments) {
        copy.arguments.push_back(copyOf(argument));
    }
    return copy;
}

} // namespace

GenericMsgIDHolder::EmptyGenericMsgIDHolder::~EmptyGenericMsgIDHolder() = default;

char const* GenericMsgIDHolder::EmptyGenericMsgIDHolder::what() const noexcept {
    return "the message holder is empty";
}

GenericMsgIDHolder::GenericMsgIDHolder(BaseMsgID const& message)
    : msgID(std::make_unique<BaseMsgID>(copyOf(message))) {}

GenericMsgIDHolder::GenericMsgIDHolder(GenericMsgIDHolder const& other)
    : msgID(other.isEmpty() ? nullptr : std::make_unique<BaseMsgID>(copyOf(*other.msgID))) {}

GenericMsgIDHolder& GenericMsgIDHolder::operator=(GenericMsgIDHolder const& other) {
    GenericMsgIDHolder copy(other);
    return *this = std::move(copy);
}

void GenericMsgIDHolder::throwEmpty() {
    throw boost::enable_current_exception(EmptyGenericMsgIDHolder());
}

} // namespace resource_core
