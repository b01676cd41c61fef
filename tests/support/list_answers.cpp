// SPDX-License-Identifier: BSL-1.0
#include "list_answers.hpp"

#include "make_entries.hpp"
#include "observed_entries.hpp"

#include <optional>
#include <sstream>
#include <utility>

namespace support {

using lf::import::EntryOrigin;
using lf::import::IImportList;
using lf::import::ImportEntry;
using resource_core::GenericMsgIDHolder;
using Reach = IImportList::CheckAncestorList;

namespace {

std::string textOf(auto const& entry) {
    std::ostringstream text;
    text << describe(entry);
    return text.str();
}

char const* textOf(EntryOrigin origin) {
    return origin == EntryOrigin::ThisList ? " here" : " in an ancestor";
}

void appendEntries(auto&& view, Answers& answers) {
    for (auto const& entry : view) {
        answers.push_back(textOf(entry));
    }
}

void appendLookups(IImportList const& list, std::u16string const& name, Reach reach,
                   Answers& answers) {
    auto const package = list.findPackageImportEntry(name, reach);
    answers.push_back(package ? textOf(package->entry) + textOf(package->origin) : "no package");
    auto const dotted = list.findFullyQualifiedImportEntry(name, reach);
    answers.push_back(dotted ? model::quoted(std::u16string(dotted->rawArgument)) +
                                   textOf(dotted->origin)
                             : "no name");
}

void appendAddition(IImportList const& list, ImportEntry entry, Answers& answers) {
    auto const copy = list.clone();
    std::optional<GenericMsgIDHolder> const refusal = copy->addStaticImportEntry(std::move(entry));
    answers.push_back((refusal ? refusal->getMsgID().key : "accepted") + ", then " +
                      std::to_string(copy->getNumberOfEntries(Reach::No)));
}

} // namespace

Answers answersOf(IImportList const& list, std::vector<std::u16string> const& names) {
    Answers answers;
    for (Reach const reach : {Reach::No, Reach::Yes}) {
        appendEntries(list.getFullyQualifiedImportEntries(reach), answers);
        appendEntries(list.getWildcardImportEntries(reach), answers);
        appendEntries(list.getPackageImportEntries(reach), answers);
        answers.push_back(std::to_string(list.getNumberOfEntries(reach)));
        answers.emplace_back(list.isEmpty(reach) ? "empty" : "not empty");
        for (std::u16string const& name : names) {
            appendLookups(list, name, reach, answers);
        }
    }
    for (std::u16string const& name : names) {
        appendAddition(list, makePackage(name), answers);
        appendAddition(list, makeName(name + u".other"), answers);
        appendAddition(list, makeName(u"other." + name), answers);
        appendAddition(list, makeWildcard(name + u".*"), answers);
    }
    return answers;
}

} // namespace support
