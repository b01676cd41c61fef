// SPDX-License-Identifier: BSL-1.0
#include <import_explorer/diagnostic.hpp>

#include <algorithm>
#include <iterator>
#include <utility>

namespace explorer {

std::string_view toText(Finding finding) noexcept {
    switch (finding) {
    case Finding::ScriptProblem:
        return "ScriptProblem";
    case Finding::UnknownName:
        return "UnknownName";
    case Finding::UnusedImport:
        return "UnusedImport";
    case Finding::RepeatedImport:
        return "RepeatedImport";
    case Finding::ScopeTooDeep:
        return "ScopeTooDeep";
    }
    return {};
}

std::vector<Diagnostic> mergeInSourceOrder(std::vector<Diagnostic> first,
                                           std::vector<Diagnostic> second) {
    if (second.empty()) {
        return first;
    }
    std::vector<Diagnostic> merged;
    merged.reserve(first.size() + second.size());
    std::merge(std::make_move_iterator(first.begin()), std::make_move_iterator(first.end()),
               std::make_move_iterator(second.begin()), std::make_move_iterator(second.end()),
               std::back_inserter(merged), [](Diagnostic const& left, Diagnostic const& right) {
                   return left.range.begin < right.range.begin;
               });
    return merged;
}

} // namespace explorer
