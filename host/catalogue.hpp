// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// A host's words for the library's messages. A catalogue that is incomplete or wrong does not
/// compile.

#include <host/text.hpp>

#include <import/messages.hpp>
#include <import/platform.hpp>

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace lf::import::host {

/// The words for one message key, with placeholders `{1}`, `{2}` for the arguments of the message.
struct MessageWords {
    /// One of messageKeys.
    std::string_view key;
    /// Not owned. Braces that are not part of a placeholder are copied.
    std::string_view words;
};

namespace detail {

/// The number N of a placeholder `{N}` at the start of \p words, N being one digit.
constexpr std::optional<std::size_t> leadingPlaceholder(std::string_view words) noexcept {
    if (words.size() < 3 || words[0] != '{' || words[1] < '0' || words[1] > '9' ||
        words[2] != '}') {
        return std::nullopt;
    }
    return static_cast<std::size_t>(words[1] - '0');
}

constexpr bool haveArguments(std::string_view words, std::size_t numberOfArguments) noexcept {
    for (; !words.empty(); words.remove_prefix(1)) {
        auto const placeholder = leadingPlaceholder(words);
        if (placeholder && (*placeholder == 0 || *placeholder > numberOfArguments)) {
            return false;
        }
    }
    return true;
}

// Called where a catalogue is wrong. They are not constexpr, so that the compiler's error names the
// fault.
inline void keyIsUnknown() {}

inline void keyHasWordsTwice() {}

inline void keyHasNoWords() {}

inline void placeholderHasNoArgument() {}

} // namespace detail

/// \p words with each placeholder `{N}` replaced by the Nth of \p arguments, counted from 1.
/// Placeholders in arguments, and placeholders without an argument, are copied.
inline std::string fillPlaceholders(std::string_view words,
                                    std::span<std::string const> arguments) {
    std::string text;
    while (!words.empty()) {
        auto const placeholder = detail::leadingPlaceholder(words);
        if (placeholder && *placeholder > 0 && *placeholder <= arguments.size()) {
            text += arguments[*placeholder - 1];
            words.remove_prefix(3);
        } else {
            text += words.front();
            words.remove_prefix(1);
        }
    }
    return text;
}

/// The words of one language for every message key of the library.
///
/// Constructed at compile time. A missing key, an unknown key, a key that occurs twice, and a
/// placeholder for which the messages of a key have no argument do not compile. Immutable, so any
/// number of threads can use it.
class MessageCatalogue {
  public:
    /// A catalogue of \p table, whose texts must live as long as the catalogue:
    /// `MessageCatalogue({{"MixedImportType", "either names or packages"}, ...})`.
    template <std::size_t size>
    // NOLINTNEXTLINE(modernize-avoid-c-arrays): no other type takes its size from a braced list.
    consteval explicit MessageCatalogue(MessageWords const (&table)[size]) {
        for (MessageWords const& entry : table) {
            take(entry);
        }
        for (std::string_view const words : wordsByKey) {
            if (words.data() == nullptr) {
                detail::keyHasNoWords();
            }
        }
    }

    /// The words for messages with this key, as in the table; empty for a key that the library does
    /// not have.
    constexpr std::optional<std::string_view> wordsFor(std::string_view key) const noexcept {
        std::size_t const position = positionOf(key);
        return position < wordsByKey.size() ? std::optional(wordsByKey[position]) : std::nullopt;
    }

    /// \p message in words, in UTF-8. A message with a key that the library does not have is
    /// written as by toUtf8.
    ///
    /// \throws std::bad_alloc, and whatever the host's conversion to UTF-8 throws.
    std::string format(resource_core::BaseMsgID const& message) const {
        auto const words = wordsFor(message.key);
        if (!words) {
            return toUtf8(message);
        }
        std::vector<std::string> arguments;
        for (auto const& argument : message.arguments) {
            arguments.push_back(argumentToUtf8(argument));
        }
        return fillPlaceholders(*words, arguments);
    }

  private:
    static constexpr std::size_t positionOf(std::string_view key) noexcept {
        std::size_t position = 0;
        while (position < messageKeys.size() && messageKeys[position].key != key) {
            ++position;
        }
        return position;
    }

    constexpr void take(MessageWords const& entry) {
        std::size_t const position = positionOf(entry.key);
        if (position == messageKeys.size()) {
            detail::keyIsUnknown();
        } else if (wordsByKey[position].data() != nullptr) {
            detail::keyHasWordsTwice();
        } else if (!detail::haveArguments(entry.words, messageKeys[position].numberOfArguments)) {
            detail::placeholderHasNoArgument();
        } else {
            wordsByKey[position] = entry.words;
        }
    }

    std::array<std::string_view, messageKeys.size()> wordsByKey{};
};

} // namespace lf::import::host
