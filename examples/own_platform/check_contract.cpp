// SPDX-License-Identifier: BSL-1.0

/// \file
/// Tests what the library needs of a platform, whatever language it is. Knows no answer of this one
/// but those it is given:
///
///     check_contract NAME SPECIFIER    a package name and a specifier with versions, both in ASCII
///
/// Exit status 1 when a promise is broken, 2 when the arguments are wrong.

#include <import/import.hpp>

#include <exception>
#include <iostream>
#include <sstream>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

namespace {

using lf::import::Behavior;
using lf::import::ImportArgumentIndex;
using lf::import::InvalidImportEntry;
using Oxtavel::KeldarComponents::GetComponentVersionRangeFactory;
using Oxtavel::KeldarComponents::PackageSpecifier;
using resource_core::BaseMsgID;
using resource_core::GenericMsgIDHolder;
using EmptyHolder = GenericMsgIDHolder::EmptyGenericMsgIDHolder;
using InvalidSpecifier =
    foundation::core::except::Exception<kpm::arguments::InvalidPackageSpecifier, std::exception>;

// Otherwise entries could fail to move, and an addition could fail halfway.
static_assert(std::is_nothrow_move_constructible_v<PackageSpecifier>);
static_assert(std::is_nothrow_move_assignable_v<PackageSpecifier>);
static_assert(std::is_nothrow_move_constructible_v<GenericMsgIDHolder>);
static_assert(std::is_nothrow_move_assignable_v<GenericMsgIDHolder>);

// Otherwise callers could not catch them as what they are.
static_assert(std::is_convertible_v<InvalidSpecifier*, std::exception*>);
static_assert(std::is_convertible_v<EmptyHolder*, std::exception*>);

bool allKept = true;

/// Says whether a promise is kept: \p test answers true, and throws nothing.
template <typename Test>
void expect(std::string_view promise, Test const& test) {
    bool kept = false;
    bool threw = false;
    try {
        kept = test();
    } catch (...) {
        threw = true;
    }
    allKept = allKept && kept;
    std::cout << (kept ? "kept    " : threw ? "THROWS  " : "BROKEN  ") << promise << '\n';
}

template <typename Exception, typename Action>
bool throws(Action const& action) {
    try {
        action();
    } catch (Exception const&) {
        return true;
    }
    return false;
}

PackageSpecifier specifierOf(std::u16string const& text) {
    return {text, GetComponentVersionRangeFactory()};
}

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
    expect("and is written like that", [&] { return specifierOf(name).ToString() == name; });

    auto const written = [&] { return std::u16string(specifierOf(text).ToString()); };
    expect("a specifier reads back from what it writes",
           [&] { return specifierOf(written()).ToString() == written(); });
    expect("a copy is equal", [&] {
        PackageSpecifier const specifier = specifierOf(text);
        return PackageSpecifier(specifier).ToString() == written();
    });
    expect("narrow streams get the same text", [&] {
        std::ostringstream stream;
        stream << specifierOf(text);
        return stream.str() == fl::i18n::ustring_to_utf8(written());
    });
}

void checkRefusals() {
    auto const refuse = [] { specifierOf(u"@"); };
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
    BaseMsgID message{.arguments = {}, .catalogue = "catalogue", .key = "key"};
    message.arguments.emplace_back(std::in_place_type<std::u16string>, u"argument");
    GenericMsgIDHolder const original(message);
    auto const holdsKey = [](GenericMsgIDHolder const& holder) {
        return holder.getMsgID().key == "key";
    };
    auto const isEmpty = [](GenericMsgIDHolder const& holder) {
        return throws<EmptyHolder>([&] { (void)holder.getMsgID(); });
    };

    message.key = "another key";
    expect("a holder has a message of its own", [&] { return holdsKey(original); });
    expect("a new holder is empty", [&] { return isEmpty(GenericMsgIDHolder()); });
    expect("a move takes the message along and leaves an empty holder", [&] {
        GenericMsgIDHolder source(original);
        GenericMsgIDHolder const target(std::move(source));
        return holdsKey(target) && isEmpty(source);
    });
    expect("what happens to a copy happens to no other", [&] {
        GenericMsgIDHolder copy(original);
        copy = GenericMsgIDHolder();
        return isEmpty(copy) && holdsKey(original);
    });
}

void checkConversion() {
    using fl::i18n::ustring_to_utf8;
    expect("ASCII stays as it is", [] { return ustring_to_utf8(u"a.b-c_1 *@") == "a.b-c_1 *@"; });
    expect("ill-formed text becomes something",
           [] { return !ustring_to_utf8(std::u16string(1, char16_t{0xD800})).empty(); });
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: check_contract NAME SPECIFIER\n";
        return 2;
    }
    std::string_view const name = argv[1];
    std::string_view const specifier = argv[2];
    checkWords({name.begin(), name.end()});
    checkSpecifiers({name.begin(), name.end()}, {specifier.begin(), specifier.end()});
    checkRefusals();
    checkMessages();
    checkConversion();
    return allKept ? 0 : 1;
}
