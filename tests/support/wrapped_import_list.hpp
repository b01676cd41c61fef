// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The base class of foreign lists that delegate to a list of the library.

#include <import/export.hpp>
#include <import/import_list.hpp>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

namespace support {

/// Returns the answers of the wrapped list. Exported, since a class derived from it may be.
class GLEIGEM_EXPORT WrappedImportList : public lf::import::IImportList {
  public:
    enum class Question : std::uint8_t {
        FindPackage,
        FindFullyQualified,
        GetFullyQualified,
        GetWildcards,
        GetPackages,
        IsEmpty,
        GetNumberOfEntries,
    };

    WrappedImportList& operator=(WrappedImportList const&) = delete;

    std::optional<resource_core::GenericMsgIDHolder>
    addDynamicImportEntry(lf::import::ImportEntry&& entry) override {
        return inner->addDynamicImportEntry(std::move(entry));
    }

    std::optional<resource_core::GenericMsgIDHolder>
    addStaticImportEntry(lf::import::ImportEntry&& entry) override {
        return inner->addStaticImportEntry(std::move(entry));
    }

    std::optional<lf::import::FoundImportEntry>
    findPackageImportEntry(std::u16string_view name, CheckAncestorList check) const override {
        return ask(Question::FindPackage, check).findPackageImportEntry(name, check);
    }

    std::optional<lf::import::FoundFullyQualifiedName>
    findFullyQualifiedImportEntry(std::u16string_view name,
                                  CheckAncestorList check) const override {
        return ask(Question::FindFullyQualified, check).findFullyQualifiedImportEntry(name, check);
    }

    ranges::any_view<lf::import::FullyQualifiedImportEntry const&, ranges::category::forward>
    getFullyQualifiedImportEntries(CheckAncestorList check) const override {
        return ask(Question::GetFullyQualified, check).getFullyQualifiedImportEntries(check);
    }

    ranges::any_view<lf::import::WildcardImportEntry const&, ranges::category::forward>
    getWildcardImportEntries(CheckAncestorList check) const override {
        return ask(Question::GetWildcards, check).getWildcardImportEntries(check);
    }

    ranges::any_view<lf::import::PackageImportEntry const&, ranges::category::forward>
    getPackageImportEntries(CheckAncestorList check) const override {
        return ask(Question::GetPackages, check).getPackageImportEntries(check);
    }

    std::shared_ptr<IImportList const> getParent() const override { return inner->getParent(); }

    bool isEmpty(CheckAncestorList check) const override {
        return ask(Question::IsEmpty, check).isEmpty(check);
    }

    std::size_t getNumberOfEntries(CheckAncestorList check) const override {
        return ask(Question::GetNumberOfEntries, check).getNumberOfEntries(check);
    }

    ~WrappedImportList() override = default;

  protected:
    /// \param list must not be null.
    explicit WrappedImportList(std::unique_ptr<IImportList> list) : inner(std::move(list)) {}

    /// Wraps a clone of the list that \p other wraps.
    WrappedImportList(WrappedImportList const& other)
        : IImportList(other), inner(other.inner->clone()) {}

    /// The list that answers a question.
    virtual IImportList const& ask(Question /*question*/, CheckAncestorList /*check*/) const {
        return *inner;
    }

  private:
    std::unique_ptr<IImportList> inner;
};

} // namespace support
