// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Creates message identifiers, but only with the keys of messages.hpp.

#include <import/messages.hpp>
#include <import/platform.hpp>

#include <algorithm>
#include <array>
#include <concepts>
#include <cstddef>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>

namespace lf::import {

/// A key as a template argument: `"MixedImportType"`.
template <std::size_t size>
struct MessageKeyLiteral {
    /// With the terminating null.
    std::array<char, size> text{};

    // Implicit, so that a string literal can be the template argument.
    consteval MessageKeyLiteral(char const (&literal)[size]) { // NOLINT
        std::ranges::copy(literal, text.begin());
    }

    constexpr std::string_view view() const noexcept { return {text.data(), size - 1}; }
};

/// The index of \p key in messages, or their number if there is no such key.
template <MessageKeyLiteral key>
inline constexpr auto indexOfMessage = static_cast<std::size_t>(
    std::ranges::find(messageKeys, key.view(), &MessageKey::key) - messageKeys.begin());

/// Whether messages has \p key with arguments of these types.
template <MessageKeyLiteral key, typename... Arguments>
concept Carries =
    indexOfMessage<key> < messageKeys.size() &&
    std::same_as<std::tuple_element_t<indexOfMessage<key>, std::remove_const_t<decltype(messages)>>,
                 MessageDefinition<Arguments...>>;

/// A message with this key: `makeMsgID<"KeywordInImportArgument">(ImportArgument(argument),
/// ReservedWord(word))`.
///
/// Does not compile with an unknown key, or with missing, swapped or untyped arguments.
template <MessageKeyLiteral key, typename... Arguments>
resource_core::BaseMsgID makeMsgID(Arguments... arguments) requires Carries<key, Arguments...> {
    resource_core::BaseMsgID message{.arguments = {},
                                     .catalogue = std::string(messageCatalogue),
                                     .key = std::string(key.view())};
    message.arguments.reserve(sizeof...(arguments));
    (message.arguments.emplace_back(std::in_place_type<std::u16string>, arguments.text), ...);
    return message;
}

/// The same, in a holder.
template <MessageKeyLiteral key, typename... Arguments>
resource_core::GenericMsgIDHolder
makeMsgHolder(Arguments... arguments) requires Carries<key, Arguments...> {
    return resource_core::GenericMsgIDHolder(makeMsgID<key>(arguments...));
}

} // namespace lf::import
