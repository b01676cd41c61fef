// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// GoogleTest matchers for what the library and the host kit return. They take entries, messages,
/// elements of parse results, results of additions, and the imports of a Scope; a test reads
/// `EXPECT_THAT(*list, ImportsName("circle"))` or
/// `EXPECT_THAT(list->addStaticImportEntry(std::move(entry)), IsRefusedWith("PackageRedeclared"))`.
///
/// Texts are UTF-8. Your tests must link GoogleTest themselves.

#include <host_testing/describe.hpp>
#include <host_testing/printers.hpp>

#include <host/scope.hpp>
#include <host/text.hpp>

#include <import/import_list.hpp>
#include <import/platform.hpp>

#include <gmock/gmock.h>

#include <concepts>
#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace lf::import::host_testing {

/// One of messageKeys: any other text does not compile.
class KnownKey {
  public:
    /// The key with this text.
    // NOLINTNEXTLINE(google-explicit-constructor): keys are passed as literals.
    consteval KnownKey(char const* literal) : key(host::detail::keyOf(literal)) {}

    /// The key.
    constexpr std::string_view text() const noexcept { return key; }

  private:
    std::string_view key;
};

namespace detail {

/// `which is about a.b`, `which is error MixedImportType()` or `which is about no entry`.
template <typename Value>
std::string explain(Value const& value) {
    std::string text = "which is about no entry";
    visitSubject(value, [&]<typename Subject>(Subject const& subject) {
        text = (host::ValidEntry<Subject> ? "which imports " : "which is ") + describe(subject);
    });
    return text;
}

inline bool findsName(IImportList const& list, std::string_view name) {
    constexpr auto yes = IImportList::CheckAncestorList::Yes;
    host::Utf16Text const text(name);
    return list.findPackageImportEntry(text, yes).has_value() ||
           list.findFullyQualifiedImportEntry(text, yes).has_value();
}

class ImportsNameMatcher {
  public:
    using is_gtest_matcher = void;

    explicit ImportsNameMatcher(std::string expected) : name(std::move(expected)) {}

    template <typename Value>
    bool MatchAndExplain(Value const& value, testing::MatchResultListener* listener) const {
        if constexpr (std::derived_from<Value, IImportList>) {
            *listener << "which sees " << joined(describeVisible(value));
            return findsName(value, name);
        } else if constexpr (requires { value.getList(); }) {
            return MatchAndExplain(*value.getList(), listener);
        } else {
            *listener << explain(value);
            return introduces(value);
        }
    }

    void DescribeTo(std::ostream* stream) const { *stream << "imports the name " << name; }

    void DescribeNegationTo(std::ostream* stream) const {
        *stream << "does not import the name " << name;
    }

  private:
    template <typename Value>
    bool introduces(Value const& value) const {
        bool result = false;
        host::Utf16Text const text(name);
        visitSubject(value, [&](auto const& subject) {
            if constexpr (requires { subject.getIntroducedName(); }) {
                result = subject.getIntroducedName() == text.view();
            }
        });
        return result;
    }

    std::string name;
};

class IsImportMatcher {
  public:
    using is_gtest_matcher = void;

    explicit IsImportMatcher(std::string expected) : text(std::move(expected)) {}

    template <typename Value>
    bool MatchAndExplain(Value const& value, testing::MatchResultListener* listener) const {
        bool result = false;
        visitSubject(value, [&]<typename Subject>(Subject const& subject) {
            result = host::ValidEntry<Subject> && describe(subject) == text;
        });
        *listener << explain(value);
        return result;
    }

    void DescribeTo(std::ostream* stream) const { *stream << "is the import " << text; }

    void DescribeNegationTo(std::ostream* stream) const { *stream << "is not the import " << text; }

  private:
    std::string text;
};

class IsRefusedWithMatcher {
  public:
    using is_gtest_matcher = void;

    explicit IsRefusedWithMatcher(std::string_view expected) : key(expected) {}

    IsRefusedWithMatcher(std::string_view expected, std::vector<std::string> expectedArguments)
        : key(expected), arguments(std::move(expectedArguments)), comparesArguments(true) {}

    template <typename Value>
    bool MatchAndExplain(Value const& value, testing::MatchResultListener* listener) const {
        bool result = false;
        visitSubject(value, [&]<typename Subject>(Subject const& subject) {
            if constexpr (std::same_as<Subject, resource_core::BaseMsgID>) {
                result = matches(subject);
            }
        });
        *listener << explain(value);
        return result;
    }

    void DescribeTo(std::ostream* stream) const { *stream << "is refused with " << expectation(); }

    void DescribeNegationTo(std::ostream* stream) const {
        *stream << "is not refused with " << expectation();
    }

  private:
    bool matches(resource_core::BaseMsgID const& message) const {
        if (message.catalogue != messageCatalogue || message.key != key) {
            return false;
        }
        std::vector<std::string> actual;
        for (auto const& argument : message.arguments) {
            actual.push_back(host::argumentToUtf8(argument));
        }
        return !comparesArguments || actual == arguments;
    }

    std::string expectation() const {
        return comparesArguments ? key + " about " + joined(arguments) : key;
    }

    std::string key;
    std::vector<std::string> arguments;
    bool comparesArguments = false;
};

class AtArgumentMatcher {
  public:
    using is_gtest_matcher = void;

    explicit AtArgumentMatcher(ImportArgumentIndex expected) : index(expected) {}

    template <typename Value>
    bool MatchAndExplain(Value const& value, testing::MatchResultListener* listener) const {
        ImportArgumentIndex const actual = std::visit(
            [](auto const& held) {
                if constexpr (requires { held.second; }) {
                    return held.second;
                } else {
                    return held.argument;
                }
            },
            value);
        *listener << "which is at argument " << actual;
        return actual == index;
    }

    void DescribeTo(std::ostream* stream) const { *stream << "is at argument " << index; }

    void DescribeNegationTo(std::ostream* stream) const {
        *stream << "is not at argument " << index;
    }

  private:
    ImportArgumentIndex index;
};

} // namespace detail

/// Matches an entry that introduces \p name, whatever it is wrapped in, and an IImportList or a
/// Scope in which a lookup finds the name, in enclosing scopes, too.
inline detail::ImportsNameMatcher ImportsName(std::string name) {
    return detail::ImportsNameMatcher(std::move(name));
}

/// Matches a valid entry that is written as \p text: `matrix@^2.1 as m`.
inline detail::IsImportMatcher IsImport(std::string text) {
    return detail::IsImportMatcher(std::move(text));
}

/// Matches a diagnostic, whether error or warning, and the result of an addition, if the message
/// has this key.
inline detail::IsRefusedWithMatcher IsRefusedWith(KnownKey key) {
    return detail::IsRefusedWithMatcher(key.text());
}

/// As above, with exactly these arguments.
inline detail::IsRefusedWithMatcher IsRefusedWith(KnownKey key,
                                                  std::vector<std::string> arguments) {
    return {key.text(), std::move(arguments)};
}

/// Matches an element of what a parser or readCommand returns that names this argument.
inline detail::AtArgumentMatcher AtArgument(ImportArgumentIndex index) {
    return detail::AtArgumentMatcher(index);
}

} // namespace lf::import::host_testing
