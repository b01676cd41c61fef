// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Import lists of the library, each with its twin in the model. Both get the same additions
/// and must give the same answers.

#include <model/list_model.hpp>

#include <import/import_list.hpp>

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <ostream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace support {

/// The kind of a list.
enum class Maker : std::uint8_t {
    /// The library's own.
    Library,
    /// Foreign, around a list of the library.
    Delegating,
    /// Foreign, with answers of its own.
    Foreign,
};

struct ListMake {
    Maker maker{};
    /// Of a foreign list.
    model::ForeignManners manners;

    friend bool operator==(ListMake const&, ListMake const&) = default;
};

std::ostream& operator<<(std::ostream& stream, ListMake const& make);

/// Which of the two operations adds an entry.
enum class Addition : std::uint8_t { Static, Dynamic };

/// Library and model differ. The text says how, and for which lists.
class Difference : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// A family of lists, numbered from 0 in the order of their making. All operations but size() throw
/// Difference where library and model differ.
class TwinLists {
  public:
    std::size_t size() const { return twins.size(); }

    /// Makes an empty list.
    void create(ListMake const& make, std::optional<std::size_t> parent);

    /// Makes a copy of a list.
    void clone(std::size_t list);

    /// Removes the last list.
    void removeLast();

    /// Adds an entry, which must be moved from if it is stored and must be as it was if not.
    ///
    /// \returns what both said.
    std::optional<model::Outcome> add(std::size_t list, Addition addition,
                                      model::Outcome const& entry);

    /// Checks the own entries of a list and notes their addresses. Must come before checkAnswers
    /// for the list and all its ancestors whenever one was added to.
    void checkOwnEntries(std::size_t list);

    /// Checks every question that a list can be asked, with \p names as the names to look up, once
    /// reaching the ancestors and once with \p otherReach. Entries must be the very ones that the
    /// right lists store.
    void checkAnswers(std::size_t list, std::vector<std::u16string> const& names,
                      model::Reach otherReach) const;

    /// Checks all of this for every list.
    void checkAll(std::vector<std::u16string> const& names, model::Reach otherReach);

  private:
    struct Twin {
        ListMake make;
        std::optional<std::size_t> parent;
        std::shared_ptr<lf::import::IImportList> library;
        std::shared_ptr<model::List> model;
    };

    template <typename Entry>
    void checkOwnEntriesOfOneKind(std::size_t list);
    template <typename Entry>
    void checkEntries(std::size_t list, model::Reach reach) const;
    void checkFindPackage(std::size_t list, std::u16string const& name, model::Reach reach) const;
    void checkFindFullyQualified(std::size_t list, std::u16string const& name,
                                 model::Reach reach) const;
    void checkParent(std::size_t list) const;
    void checkCounts(std::size_t list, model::Reach reach) const;

    template <typename Entry>
    Entry const& storedEntry(model::Outcome const* entry) const;
    std::optional<std::size_t> numberOf(model::List const* list) const;
    [[noreturn]] void differ(std::size_t list, std::string const& question,
                             std::string const& fromLibrary, std::string const& fromModel) const;
    std::string describeLists() const;

    std::vector<Twin> twins;
    std::map<model::Outcome const*, void const*> storedEntries; ///< the model's to the library's
};

} // namespace support
