// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Scopes of the host kit, each with a list of the model beside it: both are told the same, and
/// what the scope says with places must be what the model says without.

#include <model/list_model.hpp>
#include <support/twin_lists.hpp>

#include <host/scope.hpp>

#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace support {

/// Scopes are numbered from 0 in the order of their making, and an import's place is the number of
/// its scope with that of its addition. All operations but size() throw Difference where scope and
/// model differ.
class TwinScopes {
  public:
    struct Place {
        std::size_t scope;
        std::size_t addition;

        friend bool operator==(Place const&, Place const&) = default;
    };

    using Scope = lf::import::host::Scope<Place>;

    std::size_t size() const { return twins.size(); }

    /// Makes an empty scope.
    void create(ListMake const& make, std::optional<std::size_t> parent);

    /// Adds an entry and compares what became of it, the other party of a refusal included.
    ///
    /// \returns the key of a refusal, "repeated" or "stored".
    std::string add(std::size_t number, Addition addition, model::Outcome const& entry);

    /// Compares what every scope stores, sees and hides.
    void checkScopes();

    /// Compares what every scope finds under a name, alone and at the start of a dotted name. Must
    /// come after checkScopes.
    void checkName(std::u16string const& name) const;

  private:
    using Import = Scope::Import;
    using Imports = std::vector<Scope::ScopedImport>;

    struct Twin {
        ListMake make;
        std::optional<std::size_t> parent;
        std::shared_ptr<Scope> scope;
        std::shared_ptr<model::List> model;
    };

    void checkOwnImports(std::size_t number);
    void checkVisible(std::size_t number) const;
    void checkHidden(std::size_t number) const;
    std::optional<Scope::ScopedImport> expectedConflict(std::size_t number,
                                                        model::Outcome const& entry,
                                                        model::Outcome const& refusal) const;
    Import const* expectedHider(Twin const& twin, model::Outcome const& hidden) const;
    Imports expectedImports(std::size_t number, std::u16string const& name) const;
    Imports expectedVisible(std::size_t number, model::OutcomeKind kind) const;
    Scope::ScopedImport importOf(std::size_t asking, model::Outcome const* entry) const;

    std::vector<Twin> twins;
    std::size_t numberOfAdditions = 0;
    std::map<model::Outcome const*, Import const*>
        importsByEntry; ///< of the model's stored entries
};

} // namespace support
