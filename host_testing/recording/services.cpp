// SPDX-License-Identifier: BSL-1.0

// The services of a host. Each asks the recorder for its answer.

#include "recorder.hpp"

#include <fl/i18n/ustring_conversions.hpp>
#include <foundation/core/except/exception.hpp>
#include <kpm/arguments/invalid_package_specifier.hpp>
#include <lf/features/package_imports.hpp>
#include <lf/util/identifier.hpp>
#include <lfu/reserved_words.hpp>
#include <oxtavel/keldar_components/component_version_range.hpp>
#include <oxtavel/keldar_components/package_specifier.hpp>

#include <exception>
#include <ostream>
#include <string>
#include <string_view>

namespace recording = lf::import::host_testing::recording;
using recording::recorder;

namespace lf::util {

bool isValidIdentifier(ConvertibleBasicStringView<char16_t> text) {
    std::u16string_view const view = text;
    recorder().ask(recording::identifier(std::u16string(view)));
    return recorder().isIdentifier(view);
}

} // namespace lf::util

namespace lfu {

bool isReservedWord(std::u16string const& word, int selector) {
    recorder().ask(recording::reservedWord(word, selector));
    return recorder().isReserved(word);
}

} // namespace lfu

namespace lf::features {

bool isPackageImportsFeatureOn() {
    recorder().ask(recording::featureSwitch());
    return recorder().isFeatureOn;
}

void setPackageImportsFeature(bool on) {
    recorder().isFeatureOn = on;
}

} // namespace lf::features

namespace Oxtavel::KeldarComponents {
namespace {

/// Stores the text of a range as its only number.
class RangeFactory final : public IComponentVersionRangeFactory {
  public:
    ComponentVersionRange Create(std::u16string_view text) const override {
        VersionComparator comparator;
        comparator.version.numbers.emplace_back(text);
        return {{comparator}};
    }
};

std::u16string textOf(std::u16string const& name, ComponentVersionRange const& range) {
    return range.comparators.empty() ? name : name + u"@" + range.ToString();
}

} // namespace

IComponentVersionRangeFactory::~IComponentVersionRangeFactory() = default;

std::u16string ComponentVersionRange::ToString() const {
    return comparators.at(0).version.numbers.at(0);
}

IComponentVersionRangeFactory const& GetComponentVersionRangeFactory() {
    recorder().ask(recording::rangeFactory());
    static RangeFactory const factory;
    return factory;
}

PackageSpecifier::PackageSpecifier(std::u16string const& text,
                                   IComponentVersionRangeFactory const& factory) {
    recorder().ask(recording::specifier(text));
    if (!recorder().isSpecifier(text)) {
        throw foundation::core::except::Exception<kpm::arguments::InvalidPackageSpecifier,
                                                  std::exception>();
    }
    auto const at = text.find(u'@');
    name = recorder().packageName(text.substr(0, at));
    if (at != std::u16string::npos) {
        range = factory.Create(std::u16string_view(text).substr(at + 1));
    }
}

std::u16string PackageSpecifier::ToString() const {
    std::u16string text = textOf(name, range);
    recorder().ask(recording::specifierText(text));
    return text;
}

std::ostream& operator<<(std::ostream& stream, PackageSpecifier const& specifier) {
    return stream << fl::i18n::ustring_to_utf8(specifier.ToString());
}

} // namespace Oxtavel::KeldarComponents
