// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The rules of import lists in their most literal form, to compare the library with.
///
/// Written for comparison, not for speed: every question recurses through the chain exactly as the
/// rules say, so that looking up a missing name is exponential in the number of lists. Does not use
/// the library.
///
/// Entries are Outcomes of the three valid kinds; a refusal is an Outcome of the kind Invalid.
/// Their index is 0.

#include "outcome.hpp"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace model {

/// Whether a question includes the ancestors: only if the value is 1.
using Reach = std::int32_t;

inline constexpr Reach thisListOnly = 0;
inline constexpr Reach withAncestors = 1;

/// Where an entry was found.
enum class Origin : std::int32_t { ThisList = 0, Ancestor = 1 };

/// The result of a lookup. The entry is owned by its list and valid until the list is added to.
struct Found {
    Outcome const* entry = nullptr;
    Origin origin{};
};

/// The list of one scope, the library's or foreign. Pointers to entries are valid until their list
/// is added to.
class List {
  public:
    List() = default;
    List& operator=(List const&) = delete;
    virtual ~List() = default;

    /// Stores the entry, skips it or returns why it is refused.
    virtual std::optional<Outcome> addDynamic(Outcome const& entry) = 0;
    virtual std::optional<Outcome> addStatic(Outcome const& entry) = 0;

    virtual std::optional<Found> findPackage(std::u16string const& name, Reach reach) const = 0;
    virtual std::optional<Found> findFullyQualified(std::u16string const& name,
                                                    Reach reach) const = 0;

    /// The visible entries of one of the three valid kinds, in order.
    virtual std::vector<Outcome const*> entries(OutcomeKind kind, Reach reach) const = 0;

    virtual std::shared_ptr<List const> parent() const = 0;
    virtual std::unique_ptr<List> clone() const = 0;
    virtual bool isEmpty(Reach reach) const = 0;
    virtual std::size_t numberOfEntries(Reach reach) const = 0;

  protected:
    List(List const&) = default;
};

/// An empty list that follows the rules; \p parent may be null.
std::unique_ptr<List> createList(std::shared_ptr<List const> parent);

/// How a foreign list treats its parent.
struct ForeignManners {
    /// Whether questions that reach the ancestors are passed on to the parent.
    bool asksParent = true;
    /// Whether getParent returns the parent.
    bool namesParent = true;
    /// The origin that is returned for an own entry.
    Origin ownOrigin = Origin::ThisList;

    friend bool operator==(ForeignManners const&, ForeignManners const&) = default;
};

/// An empty foreign list, which detects no conflicts and hides nothing: it stores every entry, a
/// lookup returns the first entry that introduces the name, and the parent's answers are returned
/// unchanged. \p parent may be null.
std::unique_ptr<List> createForeignList(std::shared_ptr<List const> parent,
                                        ForeignManners const& manners);

} // namespace model
