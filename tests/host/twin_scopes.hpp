// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Scopes of the host kit, each with a list of the model. Both get the same entries and must give
/// the same answers; a scope's answers also have places.

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

/// Scopes are numbered from 0 in the order of creation. The place of an import consists of the
/// number of its scope and the number of its addition. All operations except create() and size()
/// throw Difference if scope and model differ.
class TwinScopes {
  public:
    struct Place {
        std::size_t scope;
        std::size_t addition;

        friend bool operator==(Place const&, Place const&) = default;
    };

    using Scope = lf::import::host::Scope<Place>;

    std::size_t size() const { return twins.size(); }

    /// Creates an empty scope.
    void create(ListMake const& make, std::optional<std::size_t> parent);

    /// Adds an entry and compares the outcome, including the import that a refused entry conflicts
    /// with.
    ///
    /// \returns the key of a refusal, "repeated" or "stored".
    std::string add(std::size_t number, Addition addition, model::Outcome const& entry);

    /// Compares the stored, visible and hidden imports of every scope.
    void checkScopes();

    /// Compares the imports that every scope finds for a name, and those that it finds for a use of
    /// that name. Call checkScopes first.
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
        importsByEntry; ///< keys are the entries that the model stores
};

} // namespace support
