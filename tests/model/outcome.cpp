// SPDX-License-Identifier: BSL-1.0
#include "outcome.hpp"

namespace model {

std::ostream& operator<<(std::ostream& stream, Outcome const& outcome) {
    stream << '[' << outcome.index << "] ";
    switch (outcome.kind) {
    case OutcomeKind::FullyQualified:
        return stream << "name " << quoted(outcome.rawArgument) << " root "
                      << quoted(outcome.rootElement) << " introduces "
                      << quoted(outcome.introducedName);
    case OutcomeKind::Wildcard:
        return stream << "wildcard " << quoted(outcome.rawArgument) << " root "
                      << quoted(outcome.rootElement);
    case OutcomeKind::Package:
        return stream << "package " << quoted(outcome.specifier) << " introduces "
                      << quoted(outcome.introducedName);
    case OutcomeKind::Invalid:
        break;
    }
    stream << (outcome.isWarning ? "warning " : "error ") << outcome.catalogue << ' ' << outcome.key
           << '(';
    char const* separator = "";
    for (std::u16string const& argument : outcome.messageArguments) {
        stream << separator << quoted(argument);
        separator = ", ";
    }
    return stream << ')';
}

} // namespace model
