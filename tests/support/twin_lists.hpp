// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Pairs of equivalent lists, one of the library and one of the model. Both get the same additions
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
    /// Foreign, delegates to a list of the library.
    Delegating,
    /// Foreign, with its own answers.
    Foreign,
};

struct ListMake {
    Maker maker{};
    /// Used for foreign lists only.
    model::ForeignManners manners;

    friend bool operator==(ListMake const&, ListMake const&) = default;
};

std::ostream& operator<<(std::ostream& stream, ListMake const& make);

/// The operation that adds an entry.
enum class Addition : std::uint8_t { Static, Dynamic };

/// A difference between library and model, described by the text.
class Difference : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// A family of lists, numbered from 0 in the order of creation. All operations except size() throw
/// Difference if library and model differ.
class TwinLists {
  public:
    std::size_t size() const { return twins.size(); }

    /// Creates an empty list.
    void create(ListMake const& make, std::optional<std::size_t> parent);

    /// Creates a copy of a list.
    void clone(std::size_t list);

    /// Removes the last list.
    void removeLast();

    /// Adds an entry, which must be moved from if it is stored and unchanged otherwise.
    ///
    /// \returns the result, which must be the same for both.
    std::optional<model::Outcome> add(std::size_t list, Addition addition,
                                      model::Outcome const& entry);

    /// Checks the own entries of a list and records their addresses. After additions, must be
    /// called for a list and all its ancestors before checkAnswers.
    void checkOwnEntries(std::size_t list);

    /// Checks the answers to all questions, looking up \p names, with the ancestors and with
    /// \p otherReach. The entries found must be the stored objects of the right lists.
    void checkAnswers(std::size_t list, std::vector<std::u16string> const& names,
                      model::Reach otherReach) const;

    /// Performs both checks for every list.
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
