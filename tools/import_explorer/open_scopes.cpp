// SPDX-License-Identifier: BSL-1.0
#include <import_explorer/open_scopes.hpp>

#include <algorithm>

namespace explorer {

OpenScopes::OpenScopes(std::span<AnalysedScope const> scopes) : lastWithin(scopes.size()) {
    for (ScopeIndex scope = scopes.size(); scope-- > 0;) {
        lastWithin[scope] = std::max(lastWithin[scope], scope);
        if (std::optional<ScopeIndex> const parent = scopes[scope].scope.parent) {
            lastWithin[*parent] = std::max(lastWithin[*parent], lastWithin[scope]);
        }
    }
}

void OpenScopes::enter(ScopeIndex scope) {
    auto const isOutside = [&](ScopeIndex other) {
        return scope < other || lastWithin[other] < scope;
    };
    while (!open.empty() && isOutside(open.back().scope)) {
        leave();
    }
    current = scope;
}

void OpenScopes::leaveAll() {
    while (!open.empty()) {
        leave();
    }
}

void OpenScopes::add(AnalysedEntry const& entry, EntryReference reference) {
    if (open.empty() || open.back().scope != current) {
        open.push_back({current, additions.size(), introducers.size(), wildcards.size()});
    }
    if (entry.introducedName) {
        introducers.push_back(reference);
    }
    if (entry.kind == EntryKind::Package) {
        push(packagesByName, *entry.introducedName, entry.kind, reference);
        return;
    }
    Holders::value_type const& place = push(dottedByText, entry.text, entry.kind, reference);
    pushFirst(dottedByRoot, *entry.rootElement, reference);
    if (entry.kind == EntryKind::Wildcard) {
        wildcards.push_back({reference, &place});
    } else {
        pushFirst(namesByName, *entry.introducedName, reference);
    }
}

std::optional<Origin> OpenScopes::findPackage(std::string_view name) const {
    return innermost(packagesByName, name);
}

std::optional<Origin> OpenScopes::findName(std::string_view name) const {
    return innermost(namesByName, name);
}

std::optional<Origin> OpenScopes::findDotted(std::string_view text) const {
    return innermost(dottedByText, text);
}

std::optional<Origin> OpenScopes::findRoot(std::string_view root) const {
    return innermost(dottedByRoot, root);
}

std::optional<EntryReference> OpenScopes::own(std::optional<Origin> const& origin) const {
    return origin && origin->scope == current ? std::optional(origin->entry) : std::nullopt;
}

Capped<EntryReference> OpenScopes::reachWildcards() {
    lastReach = ++time;
    Capped<EntryReference> result;
    std::size_t end = wildcards.size();
    for (auto scope = open.rbegin();
         scope != open.rend() && result.listed.size() < mostListedWildcards; ++scope) {
        for (std::size_t index = scope->firstWildcard;
             index < end && result.listed.size() < mostListedWildcards; ++index) {
            auto const& [entry, place] = wildcards[index];
            if (place->second.back().origin.entry == entry) {
                result.listed.push_back(entry);
            }
        }
        end = scope->firstWildcard;
    }
    result.omitted = visibleWildcards - result.listed.size();
    return result;
}

std::optional<Origin> OpenScopes::innermost(Holders const& holders, std::string_view key) {
    auto const found = holders.find(key);
    return found == holders.end() ? std::nullopt : std::optional(found->second.back().origin);
}

OpenScopes::Holders::value_type& OpenScopes::push(Holders& holders, std::string_view key,
                                                  EntryKind kind, EntryReference reference) {
    Holders::value_type& place = *holders.try_emplace(std::string(key)).first;
    if (kind == EntryKind::Wildcard) {
        if (place.second.empty()) {
            ++visibleWildcards;
        } else {
            settle(place.second.back());
        }
    }
    place.second.push_back({{current, reference}, ++time});
    additions.push_back({&holders, &place, kind});
    return place;
}

void OpenScopes::pushFirst(Holders& holders, std::string_view key, EntryReference reference) {
    if (!own(innermost(holders, key))) {
        push(holders, key, EntryKind::Name, reference);
    }
}

void OpenScopes::pop() {
    auto const [holders, place, kind] = additions.back();
    additions.pop_back();
    std::vector<Holder>& others = place->second;
    if (kind == EntryKind::Wildcard) {
        settle(others.back());
    }
    others.pop_back();
    if (others.empty()) {
        holders->erase(holders->find(place->first));
        visibleWildcards -= kind == EntryKind::Wildcard ? 1 : 0;
    } else {
        others.back().visibleSince = ++time;
    }
}

void OpenScopes::leave() {
    while (additions.size() > open.back().firstAdded) {
        pop();
    }
    introducers.resize(open.back().firstIntroducer);
    wildcards.resize(open.back().firstWildcard);
    open.pop_back();
}

void OpenScopes::settle(Holder& wildcard) {
    if (lastReach > wildcard.visibleSince) {
        reached.push_back(wildcard.origin.entry);
        // Once is enough.
        wildcard.visibleSince = time;
    }
}

} // namespace explorer
