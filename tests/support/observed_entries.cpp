// SPDX-License-Identifier: BSL-1.0
#include "observed_entries.hpp"

#include "make_entries.hpp"

#include <cstddef>
#include <memory>
#include <utility>
#include <variant>

namespace support {

using lf::import::FullyQualifiedImportEntry;
using lf::import::InvalidImportEntry;
using lf::import::PackageImportEntry;
using lf::import::ParsedImportEntry;
using lf::import::WildcardImportEntry;
using model::Outcome;
using model::OutcomeKind;

Outcome describe(FullyQualifiedImportEntry const& entry) {
    Outcome outcome;
    outcome.kind = OutcomeKind::FullyQualified;
    outcome.introducedName = entry.getIntroducedName();
    outcome.rawArgument = entry.getRawArgument();
    outcome.rootElement = entry.getRootElement();
    return outcome;
}

Outcome describe(WildcardImportEntry const& entry) {
    Outcome outcome;
    outcome.kind = OutcomeKind::Wildcard;
    outcome.rawArgument = entry.getRawArgument();
    outcome.rootElement = entry.getRootElement();
    return outcome;
}

Outcome describe(PackageImportEntry const& entry) {
    Outcome outcome;
    outcome.kind = OutcomeKind::Package;
    outcome.introducedName = entry.getIntroducedName();
    outcome.specifier = entry.getPackageSpecifier().ToString();
    return outcome;
}

Outcome describe(InvalidImportEntry const& entry) {
    resource_core::BaseMsgID const& message = entry.getMsgHolder().getMsgID();
    Outcome outcome;
    outcome.kind = OutcomeKind::Invalid;
    outcome.catalogue = message.catalogue;
    outcome.key = message.key;
    for (resource_core::MsgArgument const& argument : message.arguments) {
        outcome.messageArguments.push_back(std::get<std::u16string>(argument));
    }
    outcome.isWarning = entry.isWarning();
    return outcome;
}

lf::import::ImportEntry makeEntry(Outcome const& entry) {
    if (entry.kind == OutcomeKind::Package) {
        return makePackage(entry.specifier, entry.introducedName);
    }
    if (entry.kind == OutcomeKind::Wildcard) {
        return WildcardImportEntry(
            lf::import::WildcardImportArgument{entry.rootElement, entry.rawArgument, {}});
    }
    return FullyQualifiedImportEntry(lf::import::FullyQualifiedImportArgument{
        entry.rootElement, entry.introducedName, entry.rawArgument, {}});
}

namespace {

/// One command; its arguments are the nodes 0, 1, 2, ...
class CommandTree final : public lf::astapi::ISyntaxTree {
  public:
    explicit CommandTree(std::vector<std::u16string> const& argumentTexts) : texts(argumentTexts) {}

    std::size_t getNumberOfArguments(lf::astapi::NodeHandle) const override { return texts.size(); }

    lf::astapi::ArgumentNode getArgument(lf::astapi::NodeHandle, std::size_t index) const override {
        return {this, index};
    }

    std::u16string getText(lf::astapi::NodeHandle argument) const override {
        return texts.at(static_cast<std::size_t>(argument));
    }

  private:
    std::vector<std::u16string> const& texts;
};

} // namespace

std::vector<Outcome> observe(std::vector<ParsedImportEntry> const& entries) {
    std::vector<Outcome> outcomes;
    outcomes.reserve(entries.size());
    for (ParsedImportEntry const& entry : entries) {
        outcomes.push_back(std::visit(
            [](auto const& pair) {
                Outcome outcome = describe(pair.first);
                outcome.index = pair.second;
                return outcome;
            },
            entry));
    }
    return outcomes;
}

std::vector<Outcome> parseTexts(std::vector<std::u16string> const& arguments,
                                lf::import::Behavior behavior) {
    return observe(lf::import::createImportArgumentParser(arguments, behavior)->parse());
}

std::vector<Outcome> parseTree(std::vector<std::u16string> const& arguments,
                               lf::import::Behavior behavior) {
    CommandTree const tree(arguments);
    lf::astapi::ImportCommandView const command{&tree, 0};
    return observe(lf::import::createImportArgumentParser(command, behavior)->parse());
}

} // namespace support
