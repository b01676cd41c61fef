// SPDX-License-Identifier: BSL-1.0
#include <oxtavel/keldar_components/component_version_range.hpp>

#include <detail/pieces.hpp>
#include <foundation/core/except/exception.hpp>
#include <kpm/arguments/invalid_package_specifier.hpp>

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <utility>

namespace Oxtavel::KeldarComponents {

namespace {

constexpr char16_t comparatorSeparator = u',';
constexpr char16_t numberSeparator = u'.';
constexpr char16_t preReleaseSign = u'-';
constexpr char16_t buildSign = u'+';
constexpr std::size_t maximalNumbers = 3;
constexpr std::u16string_view anyVersion = u"*";

struct RelationSign {
    std::u16string_view sign;
    VersionRelation relation;
};

/// Signs precede their own prefixes. The last one is empty, so that every text matches.
constexpr auto relationSigns = std::to_array<RelationSign>({
    {u">=", VersionRelation::GreaterOrEqual},
    {u">", VersionRelation::Greater},
    {u"<=", VersionRelation::LessOrEqual},
    {u"<", VersionRelation::Less},
    {u"=", VersionRelation::Equal},
    {u"^", VersionRelation::Compatible},
    {u"~", VersionRelation::Approximate},
    {u"", VersionRelation::Plain},
});

constexpr bool isDigit(char16_t unit) noexcept {
    return unit >= u'0' && unit <= u'9';
}

constexpr bool isIdentifierUnit(char16_t unit) noexcept {
    return isDigit(unit) || (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z') ||
           unit == u'-';
}

bool isAllDigits(std::u16string_view text) {
    return std::all_of(text.begin(), text.end(), isDigit);
}

bool hasLeadingZero(std::u16string_view digits) {
    return digits.size() > 1 && digits.front() == u'0';
}

bool isNumber(std::u16string_view text) {
    return !text.empty() && isAllDigits(text) && !hasLeadingZero(text);
}

bool isBuildIdentifier(std::u16string_view text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), isIdentifierUnit);
}

bool isPreReleaseIdentifier(std::u16string_view text) {
    return isBuildIdentifier(text) && !(isAllDigits(text) && hasLeadingZero(text));
}

/// Splits \p text at the first \p sign. There is no second part without a sign, and an empty one if
/// nothing follows the sign.
std::pair<std::u16string_view, std::optional<std::u16string_view>> cut(std::u16string_view text,
                                                                       char16_t sign) {
    auto const position = text.find(sign);
    if (position == std::u16string_view::npos) {
        return {text, std::nullopt};
    }
    return {text.substr(0, position), text.substr(position + 1)};
}

std::optional<std::vector<std::u16string>> parseNumbers(std::u16string_view text) {
    std::vector<std::u16string> numbers;
    bool const areNumbers = allPieces(text, numberSeparator, [&](std::u16string_view piece) {
        if (numbers.size() == maximalNumbers || !isNumber(piece)) {
            return false;
        }
        numbers.emplace_back(piece);
        return true;
    });
    return areNumbers ? std::optional(std::move(numbers)) : std::nullopt;
}

std::optional<ComponentVersion> parseVersion(std::u16string_view text) {
    // The build is cut off first, since it may contain the sign of the pre-release.
    auto const [release, build] = cut(text, buildSign);
    auto const [core, preRelease] = cut(release, preReleaseSign);
    if ((preRelease && !allPieces(*preRelease, numberSeparator, isPreReleaseIdentifier)) ||
        (build && !allPieces(*build, numberSeparator, isBuildIdentifier))) {
        return std::nullopt;
    }
    auto numbers = parseNumbers(core);
    if (!numbers) {
        return std::nullopt;
    }
    return ComponentVersion{std::move(*numbers), std::u16string(preRelease.value_or(u"")),
                            std::u16string(build.value_or(u""))};
}

std::optional<VersionComparator> parseComparator(std::u16string_view text) {
    if (text == anyVersion) {
        return VersionComparator{};
    }
    auto const& sign =
        *std::find_if(relationSigns.begin(), relationSigns.end(),
                      [&](RelationSign const& each) { return text.starts_with(each.sign); });
    auto version = parseVersion(text.substr(sign.sign.size()));
    if (!version) {
        return std::nullopt;
    }
    return VersionComparator{sign.relation, std::move(*version)};
}

void append(ComponentVersion const& version, std::u16string& text) {
    for (std::size_t index = 0; index < version.numbers.size(); ++index) {
        if (index != 0) {
            text += numberSeparator;
        }
        text += version.numbers[index];
    }
    if (!version.preRelease.empty()) {
        text += preReleaseSign;
        text += version.preRelease;
    }
    if (!version.build.empty()) {
        text += buildSign;
        text += version.build;
    }
}

void append(VersionComparator const& comparator, std::u16string& text) {
    if (comparator.relation == VersionRelation::Any) {
        text += anyVersion;
        return;
    }
    auto const& sign =
        *std::find_if(relationSigns.begin(), relationSigns.end(), [&](RelationSign const& each) {
            return each.relation == comparator.relation;
        });
    text += sign.sign;
    append(comparator.version, text);
}

class ComponentVersionRangeFactory final : public IComponentVersionRangeFactory {
  public:
    ComponentVersionRange Create(std::u16string_view text) const override {
        ComponentVersionRange range;
        bool const isRange = allPieces(text, comparatorSeparator, [&](std::u16string_view piece) {
            auto comparator = parseComparator(piece);
            if (comparator) {
                range.comparators.push_back(std::move(*comparator));
            }
            return comparator.has_value();
        });
        if (!isRange) {
            throw foundation::core::except::Exception<kpm::arguments::InvalidPackageSpecifier,
                                                      std::exception>();
        }
        return range;
    }
};

} // namespace

IComponentVersionRangeFactory::~IComponentVersionRangeFactory() = default;

std::u16string ComponentVersionRange::ToString() const {
    std::u16string text;
    for (std::size_t index = 0; index < comparators.size(); ++index) {
        if (index != 0) {
            text += comparatorSeparator;
        }
        append(comparators[index], text);
    }
    return text;
}

IComponentVersionRangeFactory const& GetComponentVersionRangeFactory() {
    static ComponentVersionRangeFactory const factory;
    return factory;
}

} // namespace Oxtavel::KeldarComponents
