// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The usual design for the same lookups: one hash map per scope, searched from the innermost scope
/// outwards.

#include "workload.hpp"

#include <import/entries.hpp>
#include <import/import_list.hpp>

#include <absl/container/flat_hash_map.h>
#include <absl/hash/hash.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace floors {

/// An import that introduces a name, by its position among the scope's imports of its kind.
struct Introduced {
    enum class Kind : std::uint8_t { Package, FullyQualified };

    Kind kind;
    std::size_t position;
};

/// Allows lookups with a view.
template <typename Hash>
struct TransparentHash : Hash {
    using is_transparent = void;
};

using UnorderedMap =
    std::unordered_map<std::u16string, Introduced, TransparentHash<std::hash<std::u16string_view>>,
                       std::equal_to<>>;

using AbslMap =
    absl::flat_hash_map<std::u16string, Introduced,
                        TransparentHash<absl::Hash<std::u16string_view>>, std::equal_to<>>;

/// Nested scopes, searched from the innermost one. Gives the same answers as import lists.
template <typename Map>
class ScopeMaps {
  public:
    explicit ScopeMaps(workload::Scopes const& imports);

    std::optional<lf::import::FoundImportEntry> findPackage(std::u16string_view name) const;

    std::optional<lf::import::FoundFullyQualifiedName>
    findFullyQualified(std::u16string_view name) const;

  private:
    struct Scope {
        Scope const* parent;
        Map introduced;
        std::vector<lf::import::PackageImportEntry> packages;
        std::vector<lf::import::FullyQualifiedImportEntry> fullyQualified;
    };

    /// The place where \p name is introduced by an import of the kind, in \p scope or an ancestor.
    struct Place {
        Scope const* scope;
        std::size_t position;
    };

    std::optional<Place> find(std::u16string_view name, Introduced::Kind kind) const;

    std::vector<std::unique_ptr<Scope>> scopes; ///< outermost first
};

extern template class ScopeMaps<UnorderedMap>;
extern template class ScopeMaps<AbslMap>;

} // namespace floors
