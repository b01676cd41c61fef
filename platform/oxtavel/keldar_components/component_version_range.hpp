// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The versions of a package that an import accepts.

#include <gleigem_platform/export.hpp>

#include <string>
#include <string_view>
#include <vector>

namespace Oxtavel::KeldarComponents {

/// One to three numbers, then a pre-release and a build, as in Semantic Versioning 2.0.0. Numbers
/// are kept as digits, so that they can have any size.
struct GLEIGEM_PLATFORM_EXPORT ComponentVersion {
    /// Major, minor, patch; the latter two can be missing.
    std::vector<std::u16string> numbers;
    /// The text after the hyphen; empty if there is none.
    std::u16string preRelease;
    /// The text after the plus sign; empty if there is none.
    std::u16string build;

    friend bool operator==(ComponentVersion const&, ComponentVersion const&) = default;
};

/// The relation of accepted versions to the written version.
enum class VersionRelation {
    /// `*`: accepts every version; none is written.
    Any,
    /// A version without a sign.
    Plain,
    /// `=`
    Equal,
    /// `>`
    Greater,
    /// `>=`
    GreaterOrEqual,
    /// `<`
    Less,
    /// `<=`
    LessOrEqual,
    /// `^`
    Compatible,
    /// `~`
    Approximate,
};

/// One condition of a range.
struct GLEIGEM_PLATFORM_EXPORT VersionComparator {
    /// The relation of accepted versions to the written one.
    VersionRelation relation = VersionRelation::Any;
    /// Has no numbers if the relation is Any.
    ComponentVersion version;

    friend bool operator==(VersionComparator const&, VersionComparator const&) = default;
};

/// The conditions that a version must meet; empty if any version is accepted.
struct GLEIGEM_PLATFORM_EXPORT ComponentVersionRange {
    /// In the order as written.
    std::vector<VersionComparator> comparators;

    /// The range as written: `>=1.2,<2`.
    std::u16string ToString() const;

    friend bool operator==(ComponentVersionRange const&, ComponentVersionRange const&) = default;
};

/// Creates version ranges from text.
class GLEIGEM_PLATFORM_EXPORT IComponentVersionRangeFactory {
  public:
    IComponentVersionRangeFactory() = default;
    IComponentVersionRangeFactory(IComponentVersionRangeFactory const&) = default;
    IComponentVersionRangeFactory& operator=(IComponentVersionRangeFactory const&) = default;
    virtual ~IComponentVersionRangeFactory();

    /// The range that \p text describes.
    ///
    /// \throws foundation::core::except::Exception<kpm::arguments::InvalidPackageSpecifier,
    ///         std::exception> for invalid text.
    virtual ComponentVersionRange Create(std::u16string_view text) const = 0;
};

/// The factory of the whole process, for comma-separated comparators. Each is `*`, or one to three
/// numbers with optional pre-release and build, after one of `= > >= < <= ^ ~` or nothing. Blanks
/// are not accepted.
GLEIGEM_PLATFORM_EXPORT IComponentVersionRangeFactory const& GetComponentVersionRangeFactory();

} // namespace Oxtavel::KeldarComponents
