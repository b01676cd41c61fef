// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// A list of another make that one library defines and others know.

#include <import/export.hpp>
#include <import/import_list.hpp>

#include <memory>

namespace identity {

/// Passes everything on to a list of the library.
class GLEIGEM_EXPORT ForeignList final : public lf::import::IImportList {
  public:
    ForeignList();
    ForeignList(ForeignList const& other);
    ForeignList& operator=(ForeignList const&) = delete;
    ~ForeignList() override;

    std::optional<resource_core::GenericMsgIDHolder>
    addDynamicImportEntry(lf::import::ImportEntry&& entry) override;
    std::optional<resource_core::GenericMsgIDHolder>
    addStaticImportEntry(lf::import::ImportEntry&& entry) override;
    std::optional<lf::import::FoundImportEntry>
    findPackageImportEntry(std::u16string_view name, CheckAncestorList check) const override;
    std::optional<lf::import::FoundFullyQualifiedName>
    findFullyQualifiedImportEntry(std::u16string_view name, CheckAncestorList check) const override;
    ranges::any_view<lf::import::FullyQualifiedImportEntry const&, ranges::category::forward>
    getFullyQualifiedImportEntries(CheckAncestorList check) const override;
    ranges::any_view<lf::import::WildcardImportEntry const&, ranges::category::forward>
    getWildcardImportEntries(CheckAncestorList check) const override;
    ranges::any_view<lf::import::PackageImportEntry const&, ranges::category::forward>
    getPackageImportEntries(CheckAncestorList check) const override;
    std::shared_ptr<IImportList const> getParent() const override;
    std::unique_ptr<IImportList> clone() const override;
    bool isEmpty(CheckAncestorList check) const override;
    std::size_t getNumberOfEntries(CheckAncestorList check) const override;

  private:
    std::unique_ptr<IImportList> inner;
};

} // namespace identity
