// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Foreign lists, such as a host may use in a chain.

#include <model/list_model.hpp>
#include <support/wrapped_import_list.hpp>

#include <import/import_list.hpp>

#include <cstddef>
#include <exception>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace support {

/// Delegates to another list and counts the questions it is asked. Lists that answer some questions
/// differently derive from it.
class DelegatingImportList : public WrappedImportList {
  public:
    /// Thrown by a list that no longer answers.
    class NoAnswer : public std::exception {};

    /// The number of questions by kind and reach.
    using QuestionCounts = std::map<std::pair<Question, CheckAncestorList>, std::size_t>;

    /// \param list must not be null.
    explicit DelegatingImportList(std::unique_ptr<IImportList> list);

    QuestionCounts const& questions() const { return counts; }

    /// From now on, \p action runs after a question is counted and before it is answered.
    void beforeAnswers(std::function<void()> action) { beforeAnswer = std::move(action); }

    /// From now on, every question is counted and then throws NoAnswer.
    void stopAnswering() {
        beforeAnswers([] { throw NoAnswer(); });
    }

    std::unique_ptr<IImportList> clone() const override;

  private:
    IImportList const& ask(Question question, CheckAncestorList check) const override;

    std::function<void()> beforeAnswer;
    mutable QuestionCounts counts;
};

/// A foreign list with its own answers; see model::createForeignList.
class ForeignImportList final : public lf::import::IImportList {
  public:
    ForeignImportList(std::shared_ptr<IImportList const> enclosing,
                      model::ForeignManners const& itsManners);

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
    bool asksParent(CheckAncestorList check) const;

    std::vector<lf::import::FullyQualifiedImportEntry> fullyQualifiedEntries;
    std::vector<lf::import::WildcardImportEntry> wildcardEntries;
    std::vector<lf::import::PackageImportEntry> packageEntries;
    std::shared_ptr<IImportList const> parent;
    model::ForeignManners manners;
};

} // namespace support
