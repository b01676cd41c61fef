// SPDX-License-Identifier: BSL-1.0
#include <import_explorer/reached_wildcards.hpp>

#include <algorithm>
#include <optional>

namespace explorer {

ReachedWildcards::ReachedWildcards(std::span<AnalysedScope const> scopes)
    : lastWithin(scopes.size()) {
    for (ScopeIndex scope = scopes.size(); scope-- > 0;) {
        lastWithin[scope] = std::max(lastWithin[scope], scope);
        if (std::optional<ScopeIndex> const parent = scopes[scope].scope.parent) {
            lastWithin[*parent] = std::max(lastWithin[*parent], lastWithin[scope]);
        }
    }
}

void ReachedWildcards::enter(ScopeIndex scope) {
    auto const isOutside = [&](ScopeIndex other) {
        return scope < other || lastWithin[other] < scope;
    };
    while (!additions.empty() && isOutside(additions.back().scope)) {
        removeLast();
    }
    current = scope;
}

void ReachedWildcards::add(std::string_view text, EntryReference reference) {
    auto const position = holders.try_emplace(std::string(text)).first;
    if (!position->second.empty()) {
        settle(position->second.back());
    }
    position->second.push_back({reference, ++time});
    additions.push_back({current, position});
}

std::size_t ReachedWildcards::reach() {
    lastUse = ++time;
    return holders.size();
}

std::span<EntryReference const> ReachedWildcards::finish() {
    while (!additions.empty()) {
        removeLast();
    }
    return reached;
}

void ReachedWildcards::removeLast() {
    auto const position = additions.back().position;
    additions.pop_back();
    std::vector<Holder>& sameText = position->second;
    settle(sameText.back());
    sameText.pop_back();
    if (sameText.empty()) {
        holders.erase(position);
    } else {
        sameText.back().visibleSince = ++time;
    }
}

void ReachedWildcards::settle(Holder const& holder) {
    if (lastUse > holder.visibleSince) {
        reached.push_back(holder.entry);
    }
}

} // namespace explorer
