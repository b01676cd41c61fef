// SPDX-License-Identifier: BSL-1.0
#include <cppcompat/span.hpp>
#include <fl/i18n/ustring_conversions.hpp>
#include <foundation/core/except/exception.hpp>
#include <kpm/arguments/invalid_package_specifier.hpp>
#include <lf/astapi/import_command_view.hpp>
#include <lf/features/package_imports.hpp>
#include <lf/util/identifier.hpp>
#include <lfu/reserved_words.hpp>
#include <oxtavel/keldar_components/component_version_range.hpp>
#include <oxtavel/keldar_components/package_specifier.hpp>
#include <resource_core/message_id.hpp>
#include <second_platform/host.hpp>

#include <algorithm>
#include <ostream>
#include <stdexcept>
#include <string>
#include <string_view>

using second_platform::host;
using second_platform::Service;

namespace second_platform {

void Host::ask(Service service) {
    if (!questionsUntilFailure) {
        return;
    }
    if (*questionsUntilFailure == 0) {
        questionsUntilFailure.reset();
        ++failures.at(static_cast<std::size_t>(service));
        std::rethrow_exception(failure);
    }
    --*questionsUntilFailure;
}

Host& host() {
    static Host theHost;
    return theHost;
}

} // namespace second_platform

namespace {

bool isNumber(std::u16string_view text) {
    return !text.empty() &&
           std::ranges::all_of(text, [](char16_t unit) { return unit >= u'0' && unit <= u'9'; });
}

unsigned numberOf(std::u16string_view text) {
    if (!isNumber(text) || text.size() > 9) {
        throw foundation::core::except::Exception<kpm::arguments::InvalidPackageSpecifier,
                                                  std::exception>("a number was wanted");
    }
    unsigned number = 0;
    for (char16_t const digit : text) {
        number = 10 * number + (digit - u'0');
    }
    return number;
}

std::u16string textOf(unsigned number) {
    std::string const digits = std::to_string(number);
    return {digits.begin(), digits.end()};
}

} // namespace

namespace lf::util {

bool isValidIdentifier(ConvertibleBasicStringView<char16_t> text) {
    host().ask(Service::Identifier);
    return isNumber(text);
}

} // namespace lf::util

namespace lfu {

bool isReservedWord(std::u16string const& word, int selector) {
    host().ask(Service::ReservedWord);
    if (selector != 8) {
        throw std::invalid_argument("another selector");
    }
    return word == u"13" || word == u"666";
}

} // namespace lfu

namespace lf::features {

bool isPackageImportsFeatureOn() {
    host().ask(Service::FeatureSwitch);
    return host().packageImports;
}

} // namespace lf::features

namespace lf::astapi {

CommandTree::CommandTree(std::vector<std::u16string> argumentTexts)
    : texts(std::move(argumentTexts)) {}

std::uint32_t CommandTree::getNumberOfArguments(NodePath const& /*command*/) const {
    host().ask(Service::SyntaxTree);
    return static_cast<std::uint32_t>(texts.size());
}

ArgumentNode CommandTree::getArgument(NodePath const& command, std::size_t index) const {
    host().ask(Service::SyntaxTree);
    return {shared_from_this(), {command.steps + '/' + std::to_string(index)}};
}

std::u16string const& CommandTree::getText(NodePath const& argument) const {
    host().ask(Service::SyntaxTree);
    return texts.at(std::stoul(argument.steps.substr(argument.steps.rfind('/') + 1)));
}

} // namespace lf::astapi

namespace fl::i18n {

std::string ustring_to_utf8(std::u16string_view text) {
    host().ask(Service::Conversion);
    std::string narrow;
    for (char16_t const unit : text) {
        narrow += unit < 0x80 ? static_cast<char>(unit) : '?';
    }
    return narrow;
}

} // namespace fl::i18n

namespace Oxtavel::KeldarComponents {
namespace {

class RangeFactory final : public IComponentVersionRangeFactory {
  public:
    std::pair<unsigned, unsigned> makeRange(std::u16string_view text) const override {
        auto const dots = text.find(u"..");
        return {numberOf(text.substr(0, dots)),
                numberOf(dots == std::u16string_view::npos ? u"" : text.substr(dots + 2))};
    }
};

} // namespace

IComponentVersionRangeFactory const& GetComponentVersionRangeFactory() {
    host().ask(Service::RangeFactory);
    static RangeFactory const factory;
    return factory;
}

PackageSpecifier::PackageSpecifier(std::u16string const& text,
                                   IComponentVersionRangeFactory const& factory)
    : number(numberOf(std::u16string_view(text).substr(0, text.find(u'@')))) {
    host().ask(Service::Specifier);
    if (auto const at = text.find(u'@'); at != std::u16string::npos) {
        versions = factory.makeRange(std::u16string_view(text).substr(at + 1));
    }
}

std::u16string PackageSpecifier::Name() const {
    host().ask(Service::SpecifierText);
    return textOf(number);
}

std::u16string PackageSpecifier::ToString() const {
    host().ask(Service::SpecifierText);
    return versions
               ? textOf(number) + u'@' + textOf(versions->first) + u".." + textOf(versions->second)
               : textOf(number);
}

std::ostream& operator<<(std::ostream& stream, PackageSpecifier const& specifier) {
    return stream << fl::i18n::ustring_to_utf8(specifier.ToString());
}

} // namespace Oxtavel::KeldarComponents

namespace resource_core {

GenericMsgIDHolder::GenericMsgIDHolder(BaseMsgID const& message) {
    host().ask(Service::Message);
    messages.push_back(message);
}

BaseMsgID const& GenericMsgIDHolder::getMsgID() const {
    if (messages.empty()) {
        throw EmptyGenericMsgIDHolder();
    }
    return messages.front();
}

} // namespace resource_core
