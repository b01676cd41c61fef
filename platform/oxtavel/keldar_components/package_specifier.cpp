// SPDX-License-Identifier: BSL-1.0
#include <oxtavel/keldar_components/package_specifier.hpp>

#include <detail/pieces.hpp>
#include <fl/i18n/ustring_conversions.hpp>
#include <foundation/core/except/exception.hpp>
#include <kpm/arguments/invalid_package_specifier.hpp>
#include <lf/util/identifier.hpp>

#include <ostream>
#include <string_view>

namespace Oxtavel::KeldarComponents {

namespace {

constexpr char16_t rangeSign = u'@';

} // namespace

PackageSpecifier::PackageSpecifier(std::u16string const& text,
                                   IComponentVersionRangeFactory const& factory)
    : name(text, 0, text.find(rangeSign)) {
    bool const isName = allPieces(
        name, u'.', [](std::u16string_view piece) { return lf::util::isValidIdentifier(piece); });
    if (!isName) {
        throw foundation::core::except::Exception<kpm::arguments::InvalidPackageSpecifier,
                                                  std::exception>();
    }
    if (name.size() < text.size()) {
        range = factory.Create(std::u16string_view(text).substr(name.size() + 1));
    }
}

std::u16string PackageSpecifier::ToString() const {
    if (range.comparators.empty()) {
        return name;
    }
    return name + rangeSign + range.ToString();
}

std::ostream& operator<<(std::ostream& stream, PackageSpecifier const& specifier) {
    return stream << fl::i18n::ustring_to_utf8(specifier.ToString());
}

} // namespace Oxtavel::KeldarComponents
