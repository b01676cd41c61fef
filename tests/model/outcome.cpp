// SPDX-License-Identifier: BSL-1.0
#include "outcome.hpp"

#include <array>
#include <cstdio>

namespace model {

std::string quoted(std::u16string const& text) {
    std::string result = "\"";
    for (char16_t const unit : text) {
        bool const isPlain = unit >= 0x20 && unit < 0x7F && unit != u'"' && unit != u'\\';
        if (isPlain) {
            result += static_cast<char>(unit);
        } else {
            std::array<char, 8> escape{};
            std::snprintf(escape.data(), escape.size(), "\\u%04X", static_cast<unsigned>(unit));
            result += escape.data();
        }
    }
    return result + "\"";
}

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
