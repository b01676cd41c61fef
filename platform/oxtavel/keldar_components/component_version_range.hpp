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
    /// The text after the hyphen; empty when there is none.
    std::u16string preRelease;
    /// The text after the plus sign; empty when there is none.
    std::u16string build;

    friend bool operator==(ComponentVersion const&, ComponentVersion const&) = default;
};

/// How accepted versions relate to the version that is written.
enum class VersionRelation {
    /// `*`: every version is accepted and none is written.
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
    /// How accepted versions relate to the written one.
    VersionRelation relation = VersionRelation::Any;
    /// Without numbers when the relation is Any.
    ComponentVersion version;

    friend bool operator==(VersionComparator const&, VersionComparator const&) = default;
};

/// The conditions that a version must meet; none if any version will do.
struct GLEIGEM_PLATFORM_EXPORT ComponentVersionRange {
    /// In the order in which they are written.
    std::vector<VersionComparator> comparators;

    /// The range as it is written: `>=1.2,<2`.
    std::u16string ToString() const;

    friend bool operator==(ComponentVersionRange const&, ComponentVersionRange const&) = default;
};

/// Makes version ranges from text.
class GLEIGEM_PLATFORM_EXPORT IComponentVersionRangeFactory {
  public:
    IComponentVersionRangeFactory() = default;
    IComponentVersionRangeFactory(IComponentVersionRangeFactory const&) = default;
    IComponentVersionRangeFactory& operator=(IComponentVersionRangeFactory const&) = default;
    virtual ~IComponentVersionRangeFactory();

    /// The range that \p text describes.
    ///
    /// \throws foundation::core::except::Exception<kpm::arguments::InvalidPackageSpecifier,
    ///         std::exception> when it describes none.
    virtual ComponentVersionRange Create(std::u16string_view text) const = 0;
};

/// The factory of the whole process, for comma-separated comparators: each `*`, or one to three
/// numbers with optional pre-release and build behind one of `= > >= < <= ^ ~` or nothing. Blanks
/// are not accepted.
GLEIGEM_PLATFORM_EXPORT IComponentVersionRangeFactory const& GetComponentVersionRangeFactory();

} // namespace Oxtavel::KeldarComponents
