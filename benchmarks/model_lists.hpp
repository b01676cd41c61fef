// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The workload's scopes in the reference model.

#include "workload.hpp"

#include <model/list_model.hpp>
#include <support/make_entries.hpp>
#include <support/observed_entries.hpp>

#include <cstddef>
#include <memory>
#include <string>

namespace workload {

/// The model asks the list at distance n 2^n times for a name that nobody imports, in lookups as
/// well as when a name is added.
inline constexpr std::size_t deepestForModel = 16;

/// The list of the innermost scope.
inline std::shared_ptr<model::List const> makeModelLists(Scopes const& scopes) {
    std::shared_ptr<model::List> list;
    for (Imports const& scope : scopes) {
        list = model::createList(list);
        for (std::u16string const& package : scope.packages) {
            list->addStatic(support::describe(support::makePackage(package)));
        }
        for (std::u16string const& name : scope.fullyQualified) {
            list->addStatic(support::describe(support::makeName(name)));
        }
    }
    return list;
}

} // namespace workload
