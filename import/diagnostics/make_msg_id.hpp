// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Makes message identifiers of the kinds that messages.hpp defines, and of no other.

#include <import/messages.hpp>
#include <import/platform.hpp>

#include <algorithm>
#include <concepts>
#include <string>
#include <utility>

namespace lf::import {

/// Messages of the kind \p definition carry arguments of these types.
template <auto& definition, typename... Arguments>
concept Carries = std::convertible_to<decltype(definition), MessageDefinition<Arguments...>>;

/// A message of the kind \p definition: `makeMsgID<messages::keywordInImportArgument>(
/// messages::ImportArgument(argument), messages::ReservedWord(word))`.
///
/// Missing, swapped or plain arguments do not compile, nor does a definition that messageKeys
/// lacks.
template <auto& definition, typename... Arguments>
resource_core::BaseMsgID
makeMsgID(Arguments... arguments) requires Carries<definition, Arguments...> {
    static_assert(std::ranges::find(messageKeys, definition.key, &MessageKey::key) !=
                      messageKeys.end(),
                  "list the definition in messageKeys");
    resource_core::BaseMsgID message{.arguments = {},
                                     .catalogue = std::string(messageCatalogue),
                                     .key = std::string(definition.key)};
    message.arguments.reserve(sizeof...(arguments));
    (message.arguments.emplace_back(std::in_place_type<std::u16string>, arguments.text), ...);
    return message;
}

/// The same, in a holder.
template <auto& definition, typename... Arguments>
resource_core::GenericMsgIDHolder
makeMsgHolder(Arguments... arguments) requires Carries<definition, Arguments...> {
    return resource_core::GenericMsgIDHolder(makeMsgID<definition>(arguments...));
}

} // namespace lf::import
