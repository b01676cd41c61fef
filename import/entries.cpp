// SPDX-License-Identifier: BSL-1.0

#include <import/entries.hpp>

#include <import/messages.hpp>

#include <string>
#include <utility>

namespace lf::import {

using Oxtavel::KeldarComponents::GetComponentVersionRangeFactory;
using Oxtavel::KeldarComponents::PackageSpecifier;

PackageImportEntry::PackageImportEntry(PackageSpecifier&& specifier, std::u16string&& name) noexcept
    : packageSpecifier(std::move(specifier)), introducedName(std::move(name)) {}

PackageImportEntry::PackageImportEntry(PackageNameImportArgument&& argument)
    : packageSpecifier(argument.name, GetComponentVersionRangeFactory()),
      introducedName(packageSpecifier.Name()) {}

// The name is copied before the private constructor moves the specifier, so that a failing copy
// leaves the argument unchanged.
PackageImportEntry::PackageImportEntry(VersionedPackageImportArgument&& argument)
    : PackageImportEntry(std::move(argument.specifier), std::u16string(argument.specifier.Name())) {
}

PackageImportEntry::PackageImportEntry(PackageImportEntry&& entry,
                                       PackageNameImportArgument&& alias) noexcept
    : PackageImportEntry(std::move(entry.packageSpecifier), std::move(alias.name)) {}

FullyQualifiedImportEntry::FullyQualifiedImportEntry(std::u16string&& name, std::u16string&& raw,
                                                     std::u16string&& root) noexcept
    : introducedName(std::move(name)), rawArgument(std::move(raw)), rootElement(std::move(root)) {}

FullyQualifiedImportEntry::FullyQualifiedImportEntry(
    FullyQualifiedImportArgument&& argument) noexcept
    : FullyQualifiedImportEntry(std::move(argument.introducedName), std::move(argument.rawArgument),
                                std::move(argument.rootElement)) {}

WildcardImportEntry::WildcardImportEntry(std::u16string&& raw, std::u16string&& root) noexcept
    : rawArgument(std::move(raw)), rootElement(std::move(root)) {}

WildcardImportEntry::WildcardImportEntry(WildcardImportArgument&& argument) noexcept
    : WildcardImportEntry(std::move(argument.rawArgument), std::move(argument.rootElement)) {}

InvalidImportEntry::InvalidImportEntry(InvalidImportArgument&& argument) noexcept
    : msgHolder(std::move(argument.msgHolder)) {}

InvalidImportEntry::InvalidImportEntry(resource_core::BaseMsgID const& message)
    : msgHolder(message) {}

bool InvalidImportEntry::isWarning() const {
    return severityOf(msgHolder.getMsgID().key) == Severity::Warning;
}

bool InvalidImportEntry::holdsMsgWithKey(std::string_view key) const {
    return msgHolder.getMsgID().key == key;
}

} // namespace lf::import
