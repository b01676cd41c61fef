// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The contents of an import list, filled by hand: the entries in vectors and their texts in hashed
/// containers, without the checks that decide whether an entry may be added.

#include <import/entries.hpp>

#include <cstddef>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <variant>
#include <vector>

namespace floors {

class DescribedContainers {
  public:
    /// Stores the entry, unless it is dotted and its raw argument is already stored.
    void add(lf::import::ImportEntry&& entry) {
        if (auto* const package = std::get_if<lf::import::PackageImportEntry>(&entry)) {
            addPackage(std::move(*package));
        } else if (auto* const name = std::get_if<lf::import::FullyQualifiedImportEntry>(&entry)) {
            addFullyQualified(std::move(*name));
        } else {
            addWildcard(std::move(std::get<lf::import::WildcardImportEntry>(entry)));
        }
    }

    std::size_t size() const noexcept {
        return fullyQualifiedEntries.size() + wildcardEntries.size() + packageEntries.size();
    }

  private:
    void addPackage(lf::import::PackageImportEntry&& entry) {
        packageIndexByName.emplace(entry.getIntroducedName(), packageEntries.size());
        packageEntries.push_back(std::move(entry));
    }

    void addFullyQualified(lf::import::FullyQualifiedImportEntry&& entry) {
        if (!rawArguments.insert(std::u16string(entry.getRawArgument())).second) {
            return;
        }
        fullyQualifiedIndexByName.try_emplace(std::u16string(entry.getIntroducedName()),
                                              fullyQualifiedEntries.size());
        rootElements.insert(std::u16string(entry.getRootElement()));
        fullyQualifiedEntries.push_back(std::move(entry));
    }

    void addWildcard(lf::import::WildcardImportEntry&& entry) {
        if (!rawArguments.insert(std::u16string(entry.getRawArgument())).second) {
            return;
        }
        rootElements.insert(std::u16string(entry.getRootElement()));
        wildcardEntries.push_back(std::move(entry));
    }

    std::vector<lf::import::FullyQualifiedImportEntry> fullyQualifiedEntries;
    std::vector<lf::import::WildcardImportEntry> wildcardEntries;
    std::vector<lf::import::PackageImportEntry> packageEntries;
    std::unordered_map<std::u16string, std::size_t> packageIndexByName;
    std::unordered_map<std::u16string, std::size_t> fullyQualifiedIndexByName;
    std::unordered_set<std::u16string> rawArguments;
    std::unordered_set<std::u16string> rootElements;
};

} // namespace floors
