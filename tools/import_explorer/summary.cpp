// SPDX-License-Identifier: BSL-1.0
#include <import_explorer/summary.hpp>

namespace explorer {

void Summary::count(AnalysedFile const& file) {
    ++files;
    commands += file.commands.size();
    uses += file.uses.size();
    for (AnalysedCommand const& command : file.commands) {
        for (AnalysedEntry const& entry : command.entries) {
            if (entry.outcome == EntryOutcome::Refused) {
                continue;
            }
            switch (entry.kind) {
            case EntryKind::FullyQualified:
                ++names;
                break;
            case EntryKind::Wildcard:
                ++wildcards;
                break;
            case EntryKind::Package:
                ++packages;
                break;
            }
        }
    }
    for (Diagnostic const& diagnostic : file.diagnostics) {
        ++(diagnostic.severity == lf::import::Severity::Error ? errors : warnings);
    }
}

void Summary::count(LoadFailure const&) {
    ++errors;
}

} // namespace explorer
