// SPDX-License-Identifier: BSL-1.0

#include <fl/i18n/ustring_conversions.hpp>
#include <kpm/arguments/invalid_package_specifier.hpp>
#include <lf/astapi/import_command_view.hpp>
#include <lf/features/package_imports.hpp>
#include <lf/util/identifier.hpp>
#include <lfu/reserved_words.hpp>
#include <oxtavel/keldar_components/component_version_range.hpp>
#include <oxtavel/keldar_components/package_specifier.hpp>
#include <resource_core/message_id.hpp>

#include <algorithm>
#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using InvalidSpecifier =
    foundation::core::except::Exception<kpm::arguments::InvalidPackageSpecifier, std::exception>;

/// The pieces of \p text between separators; one piece more than there are separators.
std::vector<std::u16string_view> split(std::u16string_view text, char16_t separator) {
    std::vector<std::u16string_view> pieces;
    for (std::size_t end = 0; (end = text.find(separator)) != std::u16string_view::npos;) {
        pieces.push_back(text.substr(0, end));
        text.remove_prefix(end + 1);
    }
    pieces.push_back(text);
    return pieces;
}

bool consistsOf(std::u16string_view text, char16_t first, char16_t last) {
    return !text.empty() &&
           std::ranges::all_of(text, [=](char16_t unit) { return first <= unit && unit <= last; });
}

/// `3` or `3+`.
bool isEdition(std::u16string_view text) {
    return consistsOf(text.ends_with(u'+') ? text.substr(0, text.size() - 1) : text, u'0', u'9');
}

} // namespace

bool lf::util::isValidIdentifier(ConvertibleBasicStringView<char16_t> text) {
    return std::ranges::all_of(
        split(text, u'-'), [](std::u16string_view word) { return consistsOf(word, u'a', u'z'); });
}

bool lfu::isReservedWord(std::u16string const& word, int /*selector*/) {
    return word == u"let" || word == u"then" || word == u"use";
}

bool lf::features::isPackageImportsFeatureOn() {
    return true;
}

std::string fl::i18n::ustring_to_utf8(std::u16string_view text) {
    std::string narrow;
    for (char16_t const unit : text) {
        narrow += unit < 0x80 ? static_cast<char>(unit) : '?';
    }
    return narrow;
}

namespace lf::astapi {

SyntaxTree::SyntaxTree(std::u16string_view script) {
    for (std::u16string_view const line : split(script, u'\n')) {
        if (!line.empty()) {
            lines.push_back(split(line, u' '));
        }
    }
}

std::vector<ImportCommandView> SyntaxTree::commands() const {
    std::vector<ImportCommandView> all;
    for (std::size_t line = 0; line < lines.size(); ++line) {
        all.push_back({this, {line, 0}});
    }
    return all;
}

std::size_t SyntaxTree::getNumberOfArguments(Node command) const {
    return lines.at(command.line).size() - 1;
}

ArgumentNode SyntaxTree::getArgument(Node command, std::size_t index) const {
    return {this, {command.line, index + 1}};
}

std::u16string_view SyntaxTree::getText(Node argument) const {
    return lines.at(argument.line).at(argument.word);
}

} // namespace lf::astapi

namespace Oxtavel::KeldarComponents {

IComponentVersionRangeFactory const& GetComponentVersionRangeFactory() {
    static IComponentVersionRangeFactory const factory;
    return factory;
}

PackageSpecifier::PackageSpecifier(std::u16string text,
                                   IComponentVersionRangeFactory const& /*factory*/)
    : asWritten(std::move(text)) {
    std::u16string_view const name = Name();
    bool const wantsAny = name == ToString();
    if (!lf::util::isValidIdentifier(name) ||
        !(wantsAny || isEdition(ToString().substr(name.size() + 1)))) {
        throw InvalidSpecifier();
    }
}

std::ostream& operator<<(std::ostream& stream, PackageSpecifier const& specifier) {
    return stream << fl::i18n::ustring_to_utf8(specifier.ToString());
}

} // namespace Oxtavel::KeldarComponents

namespace resource_core {

GenericMsgIDHolder::GenericMsgIDHolder(BaseMsgID const& message)
    : held(std::make_shared<BaseMsgID const>(message)) {}

BaseMsgID const& GenericMsgIDHolder::getMsgID() const {
    if (!held) {
        throw EmptyGenericMsgIDHolder();
    }
    return *held;
}

char const* GenericMsgIDHolder::EmptyGenericMsgIDHolder::what() const noexcept {
    return "no message is held";
}

} // namespace resource_core

char const* InvalidSpecifier::what() const noexcept {
    return "not a package with editions";
}
