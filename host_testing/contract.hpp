// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Tests whether a platform, for any language, meets the requirements of the library. Needs no test
/// framework.

#include <import/import.hpp>

#include <cstdint>
#include <exception>
#include <ostream>
#include <sstream>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

namespace lf::import::host_testing {

/// The result of checking a promise.
enum class PromiseOutcome : std::uint8_t {
    /// The platform keeps the promise.
    Kept,
    /// The platform gives another answer.
    Broken,
    /// The platform throws an unexpected exception.
    Threw,
};

/// A promise that a platform makes to the library.
struct CheckedPromise {
    /// A sentence. Points to a string literal.
    std::string_view promise;
    /// The result of the check.
    PromiseOutcome outcome;

    /// Whether the platform keeps the promise.
    bool isKept() const noexcept { return outcome == PromiseOutcome::Kept; }

    /// Prints one line, without a line feed: `BROKEN  the empty text is no identifier`.
    friend std::ostream& operator<<(std::ostream& stream, CheckedPromise const& checked) {
        return stream << (checked.outcome == PromiseOutcome::Kept     ? "kept    "
                          : checked.outcome == PromiseOutcome::Broken ? "BROKEN  "
                                                                      : "THROWS  ")
                      << checked.promise;
    }
};

namespace detail {

class ContractCheck {
  public:
    using InvalidSpecifier =
        foundation::core::except::Exception<kpm::arguments::InvalidPackageSpecifier,
                                            std::exception>;
    using PackageSpecifier = Oxtavel::KeldarComponents::PackageSpecifier;
    using Holder = resource_core::GenericMsgIDHolder;
    using EmptyHolder = Holder::EmptyGenericMsgIDHolder;

    // Otherwise entries could fail to move, and an addition could fail halfway.
    static_assert(std::is_nothrow_move_constructible_v<PackageSpecifier>);
    static_assert(std::is_nothrow_move_assignable_v<PackageSpecifier>);
    static_assert(std::is_nothrow_move_constructible_v<Holder>);
    static_assert(std::is_nothrow_move_assignable_v<Holder>);

    // Otherwise handlers for std::exception would not catch them.
    static_assert(std::is_convertible_v<InvalidSpecifier*, std::exception*>);
    static_assert(std::is_convertible_v<EmptyHolder*, std::exception*>);

    void checkWords(std::u16string const& name) {
        using lf::util::isValidIdentifier;
        expect("the empty text is no identifier", [] { return !isValidIdentifier(u""); });
        expect("a star is no identifier", [] { return !isValidIdentifier(u"*"); });
        expect("the name of a package is an identifier", [&] { return isValidIdentifier(name); });
        expect("and not reserved", [&] { return !lfu::isReservedWord(name, 8); });
    }

    void checkSpecifiers(std::u16string const& name, std::u16string const& text) {
        expect("a package without versions introduces the name by which it is imported",
               [&] { return std::u16string(specifierOf(name).Name()) == name; });
        expect("and is written like that",
               [&] { return std::u16string(specifierOf(name).ToString()) == name; });
        expect("a specifier reads back from what it writes", [&] {
            return written(specifierOf(written(specifierOf(text)))) == written(specifierOf(text));
        });
        expect("a copy is equal", [&] {
            PackageSpecifier const specifier = specifierOf(text);
            return written(PackageSpecifier(specifier)) == written(specifier);
        });
        expect("narrow streams get the same text", [&] {
            PackageSpecifier const specifier = specifierOf(text);
            std::ostringstream stream;
            stream << specifier;
            return stream.str() == fl::i18n::ustring_to_utf8(written(specifier));
        });
    }

    void checkRefusals() {
        auto const refuse = [] { (void)specifierOf(u"@"); };
        expect("'@' is refused by the exception for that",
               [&] { return throws<InvalidSpecifier>(refuse); });
        expect("which is a std::exception", [&] { return throws<std::exception>(refuse); });
        expect("and which the library catches", [] {
            std::vector<std::u16string> const command{u"@"};
            auto const parser = createImportArgumentParser(command, Behavior::WithPackageImports);
            return std::holds_alternative<std::pair<InvalidImportEntry, ImportArgumentIndex>>(
                parser->parse().at(0));
        });
    }

    void checkMessages() {
        resource_core::BaseMsgID message{.arguments = {}, .catalogue = "catalogue", .key = "key"};
        message.arguments.emplace_back(std::in_place_type<std::u16string>, u"argument");
        Holder const original(message);

        message.key = "another key";
        expect("a holder has a message of its own", [&] { return holdsKey(original); });
        expect("a new holder is empty", [] { return isEmpty(Holder()); });
        expect("a move takes the message along and leaves an empty holder", [&] {
            Holder source(original);
            Holder const target(std::move(source));
            // NOLINTNEXTLINE(bugprone-use-after-move): the moved-from holder is tested.
            return holdsKey(target) && isEmpty(source);
        });
        expect("what happens to a copy happens to no other", [&] {
            Holder copy(original);
            copy = Holder();
            return isEmpty(copy) && holdsKey(original);
        });
    }

    void checkConversion() {
        using fl::i18n::ustring_to_utf8;
        expect("ASCII stays as it is",
               [] { return ustring_to_utf8(u"a.b-c_1 *@") == "a.b-c_1 *@"; });
        expect("ill-formed text becomes something",
               [] { return !ustring_to_utf8(std::u16string(1, char16_t{0xD800})).empty(); });
    }

    std::vector<CheckedPromise> takePromises() && { return std::move(promises); }

  private:
    /// Records whether \p test returns true, returns false or throws.
    template <typename Test>
    void expect(std::string_view promise, Test const& test) {
        auto outcome = PromiseOutcome::Threw;
        try {
            outcome = test() ? PromiseOutcome::Kept : PromiseOutcome::Broken;
        } catch (...) { // NOLINT(bugprone-empty-catch): the outcome records it.
        }
        promises.push_back({promise, outcome});
    }

    template <typename Exception, typename Action>
    static bool throws(Action const& action) {
        try {
            action();
        } catch (Exception const&) {
            return true;
        }
        return false;
    }

    static PackageSpecifier specifierOf(std::u16string const& text) {
        return {text, Oxtavel::KeldarComponents::GetComponentVersionRangeFactory()};
    }

    static std::u16string written(PackageSpecifier const& specifier) {
        return std::u16string(specifier.ToString());
    }

    static bool holdsKey(Holder const& holder) { return holder.getMsgID().key == "key"; }

    static bool isEmpty(Holder const& holder) {
        return throws<EmptyHolder>([&] { (void)holder.getMsgID(); });
    }

    std::vector<CheckedPromise> promises;
};

} // namespace detail

/// Calls the services of the platform and reports for each promise whether it is kept.
///
/// Knows only these arguments of the language, and cannot check everything: for example, the
/// platform must ensure that a service always gives the same answer to the same question.
///
/// \param packageName the name of a package; must be an identifier of the language.
/// \param specifier a specifier with versions.
/// \throws std::bad_alloc, and whatever the constructor of the host's message holder throws.
inline std::vector<CheckedPromise> checkContract(std::u16string const& packageName,
                                                 std::u16string const& specifier) {
    detail::ContractCheck check;
    check.checkWords(packageName);
    check.checkSpecifiers(packageName, specifier);
    check.checkRefusals();
    check.checkMessages();
    check.checkConversion();
    return std::move(check).takePromises();
}

} // namespace lf::import::host_testing
