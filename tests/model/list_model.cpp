// SPDX-License-Identifier: BSL-1.0
#include "list_model.hpp"

#include <map>
#include <set>
#include <utility>

namespace model {
namespace {

std::vector<Outcome const*> pointersTo(std::vector<Outcome> const& entries) {
    std::vector<Outcome const*> pointers;
    pointers.reserve(entries.size());
    for (Outcome const& entry : entries) {
        pointers.push_back(&entry);
    }
    return pointers;
}

Outcome refusal(std::string key, std::vector<std::u16string> messageArguments) {
    Outcome outcome;
    outcome.kind = OutcomeKind::Invalid;
    outcome.catalogue = "KELDAR:lang";
    outcome.key = std::move(key);
    outcome.messageArguments = std::move(messageArguments);
    return outcome;
}

class ScopeList final : public List {
  public:
    explicit ScopeList(std::shared_ptr<List const> enclosing) : parentList(std::move(enclosing)) {}

    std::optional<Outcome> addDynamic(Outcome const& entry) override {
        if (entry.kind == OutcomeKind::Package) {
            return addPackage(entry, checkDynamicPackage(entry));
        }
        return addDotted(entry);
    }

    std::optional<Outcome> addStatic(Outcome const& entry) override {
        if (entry.kind == OutcomeKind::Package) {
            return addPackage(entry, checkStaticPackage(entry));
        }
        return addDotted(entry);
    }

    std::optional<Found> findPackage(std::u16string const& name, Reach reach) const override {
        if (packageIndexByName.contains(name)) {
            return Found{&packages[packageIndexByName.at(name)], Origin::ThisList};
        }
        if (fullyQualifiedIndexByName.contains(name)) {
            return std::nullopt;
        }
        if (reach != withAncestors) {
            return std::nullopt;
        }
        std::shared_ptr<List const> ancestor = parentList;
        while (ancestor != nullptr) {
            auto const found = ancestor->findPackage(name, withAncestors);
            if (found) {
                return Found{found->entry, Origin::Ancestor};
            }
            ancestor = ancestor->parent();
        }
        return std::nullopt;
    }

    std::optional<Found> findFullyQualified(std::u16string const& name,
                                            Reach reach) const override {
        if (fullyQualifiedIndexByName.contains(name)) {
            return Found{&fullyQualifieds[fullyQualifiedIndexByName.at(name)], Origin::ThisList};
        }
        if (packageIndexByName.contains(name)) {
            return std::nullopt;
        }
        if (reach != withAncestors) {
            return std::nullopt;
        }
        std::shared_ptr<List const> ancestor = parentList;
        while (ancestor != nullptr) {
            auto const found = ancestor->findFullyQualified(name, withAncestors);
            if (found) {
                return Found{found->entry, Origin::Ancestor};
            }
            ancestor = ancestor->parent();
        }
        return std::nullopt;
    }

    std::vector<Outcome const*> entries(OutcomeKind kind, Reach reach) const override {
        std::vector<Outcome const*> result = pointersTo(ownEntries(kind));
        if (reach != withAncestors || parentList == nullptr) {
            return result;
        }
        for (Outcome const* const entry : parentList->entries(kind, withAncestors)) {
            if (!hides(*entry)) {
                result.push_back(entry);
            }
        }
        return result;
    }

    std::shared_ptr<List const> parent() const override { return parentList; }

    std::unique_ptr<List> clone() const override { return std::make_unique<ScopeList>(*this); }

    bool isEmpty(Reach reach) const override {
        if (!fullyQualifieds.empty() || !wildcards.empty() || !packages.empty()) {
            return false;
        }
        return reach != withAncestors || parentList == nullptr ||
               parentList->isEmpty(withAncestors);
    }

    std::size_t numberOfEntries(Reach reach) const override {
        std::size_t const own = fullyQualifieds.size() + wildcards.size() + packages.size();
        if (reach != withAncestors || parentList == nullptr) {
            return own;
        }
        return own + parentList->numberOfEntries(withAncestors);
    }

  private:
    std::vector<Outcome> const& ownEntries(OutcomeKind kind) const {
        if (kind == OutcomeKind::FullyQualified) {
            return fullyQualifieds;
        }
        return kind == OutcomeKind::Wildcard ? wildcards : packages;
    }

    bool hides(Outcome const& entry) const {
        switch (entry.kind) {
        case OutcomeKind::FullyQualified:
            return findPackage(entry.introducedName, thisListOnly).has_value() ||
                   rawArguments.contains(entry.rawArgument);
        case OutcomeKind::Wildcard:
            return rawArguments.contains(entry.rawArgument);
        case OutcomeKind::Package:
            return findPackage(entry.introducedName, thisListOnly).has_value() ||
                   findFullyQualified(entry.introducedName, thisListOnly).has_value();
        case OutcomeKind::Invalid:
            break;
        }
        return false;
    }

    std::optional<Outcome> checkDynamicPackage(Outcome const& entry) const {
        if (findPackage(entry.introducedName, thisListOnly)) {
            return refusal("PackageRedeclared", {entry.specifier});
        }
        if (findFullyQualified(entry.introducedName, thisListOnly)) {
            return refusal("PrecedenceViolation", {entry.specifier, entry.introducedName});
        }
        return std::nullopt;
    }

    std::optional<Outcome> checkStaticPackage(Outcome const& entry) const {
        if (findPackage(entry.introducedName, thisListOnly)) {
            return refusal("PackageRedeclared", {entry.specifier});
        }
        if (findFullyQualified(entry.introducedName, thisListOnly)) {
            return refusal("PrecedenceViolation", {entry.specifier, entry.introducedName});
        }
        if (rootElements.contains(entry.introducedName)) {
            return refusal("InvalidPackageFunctionAbbreviation", {});
        }
        return std::nullopt;
    }

    std::optional<Outcome> addPackage(Outcome const& entry, std::optional<Outcome> diagnostic) {
        if (diagnostic) {
            return diagnostic;
        }
        packages.push_back(entry);
        packageIndexByName.emplace(entry.introducedName, packages.size() - 1);
        return std::nullopt;
    }

    std::optional<Outcome> addDotted(Outcome const& entry) {
        return entry.kind == OutcomeKind::FullyQualified ? addFullyQualified(entry)
                                                         : addWildcard(entry);
    }

    std::optional<Outcome> addFullyQualified(Outcome const& entry) {
        if (rawArguments.contains(entry.rawArgument)) {
            return std::nullopt;
        }
        if (findPackage(entry.introducedName, thisListOnly)) {
            return refusal("PrecedenceViolation", {entry.rawArgument, entry.introducedName});
        }
        if (findPackage(entry.rootElement, withAncestors)) {
            return refusal("InvalidPackageFunctionAbbreviation", {});
        }
        fullyQualifieds.push_back(entry);
        rawArguments.insert(entry.rawArgument);
        if (!fullyQualifiedIndexByName.contains(entry.introducedName)) {
            fullyQualifiedIndexByName[entry.introducedName] = fullyQualifieds.size() - 1;
        }
        rootElements.insert(entry.rootElement);
        return std::nullopt;
    }

    std::optional<Outcome> addWildcard(Outcome const& entry) {
        if (rawArguments.contains(entry.rawArgument)) {
            return std::nullopt;
        }
        if (findPackage(entry.rootElement, withAncestors)) {
            return refusal("InvalidPackageFunctionAbbreviation", {});
        }
        wildcards.push_back(entry);
        rawArguments.insert(entry.rawArgument);
        rootElements.insert(entry.rootElement);
        return std::nullopt;
    }

    std::vector<Outcome> fullyQualifieds;
    std::vector<Outcome> wildcards;
    std::vector<Outcome> packages;
    std::map<std::u16string, std::size_t> packageIndexByName;
    std::map<std::u16string, std::size_t> fullyQualifiedIndexByName;
    std::set<std::u16string> rawArguments;
    std::set<std::u16string> rootElements;
    std::shared_ptr<List const> parentList;
};

class ForeignList final : public List {
  public:
    ForeignList(std::shared_ptr<List const> enclosing, ForeignManners const& itsManners)
        : parentList(std::move(enclosing)), manners(itsManners) {}

    std::optional<Outcome> addDynamic(Outcome const& entry) override {
        entriesOf[entry.kind].push_back(entry);
        return std::nullopt;
    }

    std::optional<Outcome> addStatic(Outcome const& entry) override { return addDynamic(entry); }

    std::optional<Found> findPackage(std::u16string const& name, Reach reach) const override {
        for (Outcome const* const entry : ownEntries(OutcomeKind::Package)) {
            if (entry->introducedName == name) {
                return Found{entry, manners.ownOrigin};
            }
        }
        return asksParent(reach) ? parentList->findPackage(name, reach) : std::nullopt;
    }

    std::optional<Found> findFullyQualified(std::u16string const& name,
                                            Reach reach) const override {
        for (Outcome const* const entry : ownEntries(OutcomeKind::FullyQualified)) {
            if (entry->introducedName == name) {
                return Found{entry, manners.ownOrigin};
            }
        }
        return asksParent(reach) ? parentList->findFullyQualified(name, reach) : std::nullopt;
    }

    std::vector<Outcome const*> entries(OutcomeKind kind, Reach reach) const override {
        std::vector<Outcome const*> result = ownEntries(kind);
        if (asksParent(reach)) {
            for (Outcome const* const entry : parentList->entries(kind, reach)) {
                result.push_back(entry);
            }
        }
        return result;
    }

    std::shared_ptr<List const> parent() const override {
        return manners.namesParent ? parentList : nullptr;
    }

    std::unique_ptr<List> clone() const override { return std::make_unique<ForeignList>(*this); }

    bool isEmpty(Reach reach) const override { return numberOfEntries(reach) == 0; }

    std::size_t numberOfEntries(Reach reach) const override {
        std::size_t count = 0;
        for (auto const& [kind, own] : entriesOf) {
            count += own.size();
        }
        return asksParent(reach) ? count + parentList->numberOfEntries(reach) : count;
    }

  private:
    std::vector<Outcome const*> ownEntries(OutcomeKind kind) const {
        return entriesOf.contains(kind) ? pointersTo(entriesOf.at(kind))
                                        : std::vector<Outcome const*>();
    }

    bool asksParent(Reach reach) const {
        return manners.asksParent && reach == withAncestors && parentList != nullptr;
    }

    std::map<OutcomeKind, std::vector<Outcome>> entriesOf;
    std::shared_ptr<List const> parentList;
    ForeignManners manners;
};

} // namespace

std::unique_ptr<List> createList(std::shared_ptr<List const> parent) {
    return std::make_unique<ScopeList>(std::move(parent));
}

std::unique_ptr<List> createForeignList(std::shared_ptr<List const> parent,
                                        ForeignManners const& manners) {
    return std::make_unique<ForeignList>(std::move(parent), manners);
}

} // namespace model
