// SPDX-License-Identifier: BSL-1.0
#include "twin_lists.hpp"

#include "foreign_import_list.hpp"
#include "observed_entries.hpp"

#include <functional>
#include <sstream>
#include <utility>
#include <variant>

namespace support {
namespace {

using lf::import::EntryOrigin;
using lf::import::FullyQualifiedImportEntry;
using lf::import::IImportList;
using lf::import::ImportEntry;
using lf::import::PackageImportEntry;
using lf::import::WildcardImportEntry;
using model::Outcome;
using model::OutcomeKind;
using model::Reach;
using resource_core::GenericMsgIDHolder;

/// The names of the library and the model for the entries of one kind.
template <typename Entry>
struct KindOf;

template <>
struct KindOf<FullyQualifiedImportEntry> {
    static constexpr auto kind = OutcomeKind::FullyQualified;
    static constexpr auto getter = &IImportList::getFullyQualifiedImportEntries;
    static constexpr char const* question = "getFullyQualifiedImportEntries";
};

template <>
struct KindOf<WildcardImportEntry> {
    static constexpr auto kind = OutcomeKind::Wildcard;
    static constexpr auto getter = &IImportList::getWildcardImportEntries;
    static constexpr char const* question = "getWildcardImportEntries";
};

template <>
struct KindOf<PackageImportEntry> {
    static constexpr auto kind = OutcomeKind::Package;
    static constexpr auto getter = &IImportList::getPackageImportEntries;
    static constexpr char const* question = "getPackageImportEntries";
};

/// A found entry, represented by the text that the answer contains.
struct Answer {
    std::u16string_view text;
    char16_t const* address;
    EntryOrigin origin;

    Answer(std::u16string_view answer, EntryOrigin itsOrigin)
        : text(answer), address(answer.data()), origin(itsOrigin) {}

    friend bool operator==(Answer const&, Answer const&) = default;

    friend std::ostream& operator<<(std::ostream& stream, Answer const& answer) {
        return stream << model::quoted(std::u16string(answer.text)) << " at "
                      << static_cast<void const*>(answer.address) << ", origin "
                      << static_cast<std::int32_t>(answer.origin);
    }
};

template <typename Value>
std::string asText(Value const& value) {
    std::ostringstream stream;
    stream << std::boolalpha << value;
    return stream.str();
}

template <typename Value>
std::string asText(std::optional<Value> const& value) {
    return value ? asText(*value) : "nothing";
}

template <typename Entry>
std::string asText(std::vector<Entry const*> const& entries) {
    std::ostringstream stream;
    for (Entry const* const entry : entries) {
        stream << '\n' << describe(*entry) << " at " << static_cast<void const*>(entry);
    }
    return stream.str();
}

std::string lookup(char const* operation, std::u16string const& name, Reach reach) {
    return operation + ("(" + model::quoted(name)) + ", " + std::to_string(reach) + ")";
}

std::string question(char const* operation, Reach reach) {
    return operation + ("(" + std::to_string(reach)) + ")";
}

IImportList::CheckAncestorList asCheck(Reach reach) {
    return static_cast<IImportList::CheckAncestorList>(reach);
}

Outcome emptied(Outcome const& entry) {
    Outcome empty;
    empty.kind = entry.kind;
    return empty;
}

std::optional<Outcome> describeRefusal(std::optional<GenericMsgIDHolder> const& refusal) {
    if (!refusal) {
        return std::nullopt;
    }
    return describe(lf::import::InvalidImportEntry(refusal->getMsgID()));
}

} // namespace

std::ostream& operator<<(std::ostream& stream, ListMake const& make) {
    switch (make.maker) {
    case Maker::Library:
        return stream << "ImportList";
    case Maker::Delegating:
        return stream << "DelegatingImportList";
    case Maker::Foreign:
        break;
    }
    return stream << "ForeignImportList that " << (make.manners.asksParent ? "asks" : "ignores")
                  << " its parent and " << (make.manners.namesParent ? "names" : "denies")
                  << " it, own origin " << static_cast<std::int32_t>(make.manners.ownOrigin);
}

void TwinLists::create(ListMake const& make, std::optional<std::size_t> parent) {
    Twin const enclosing = parent ? twins.at(*parent) : Twin();
    Twin twin{.make = make, .parent = parent, .library = nullptr, .model = nullptr};
    switch (make.maker) {
    case Maker::Library:
        twin.library = lf::import::createImportList(enclosing.library);
        twin.model = model::createList(enclosing.model);
        break;
    case Maker::Delegating:
        twin.library =
            std::make_shared<DelegatingImportList>(lf::import::createImportList(enclosing.library));
        twin.model = model::createList(enclosing.model);
        break;
    case Maker::Foreign:
        twin.library = std::make_shared<ForeignImportList>(enclosing.library, make.manners);
        twin.model = model::createForeignList(enclosing.model, make.manners);
        break;
    }
    twins.push_back(std::move(twin));
}

void TwinLists::clone(std::size_t list) {
    Twin const& source = twins.at(list);
    twins.push_back({.make = source.make,
                     .parent = source.parent,
                     .library = source.library->clone(),
                     .model = source.model->clone()});
}

void TwinLists::removeLast() {
    twins.pop_back();
}

std::optional<Outcome> TwinLists::add(std::size_t list, Addition addition, Outcome const& entry) {
    Twin const& twin = twins.at(list);
    bool const isStatic = addition == Addition::Static;
    char const* const operation = isStatic ? "addStaticImportEntry" : "addDynamicImportEntry";
    std::size_t const countBefore = twin.model->numberOfEntries(model::thisListOnly);
    std::optional<Outcome> expected =
        isStatic ? twin.model->addStatic(entry) : twin.model->addDynamic(entry);
    bool const isStored = twin.model->numberOfEntries(model::thisListOnly) > countBefore;

    ImportEntry handedOver = makeEntry(entry);
    std::optional<Outcome> const actual =
        describeRefusal(isStatic ? twin.library->addStaticImportEntry(std::move(handedOver))
                                 : twin.library->addDynamicImportEntry(std::move(handedOver)));
    if (actual != expected) {
        differ(list, operation + (" of " + asText(entry)), asText(actual), asText(expected));
    }
    Outcome const left = std::visit([](auto const& kept) { return describe(kept); }, handedOver);
    Outcome const expectedLeft = isStored ? emptied(entry) : entry;
    if (left != expectedLeft) {
        differ(list, operation + (" leaves of " + asText(entry)), asText(left),
               asText(expectedLeft));
    }
    return expected;
}

void TwinLists::checkOwnEntries(std::size_t list) {
    checkOwnEntriesOfOneKind<FullyQualifiedImportEntry>(list);
    checkOwnEntriesOfOneKind<WildcardImportEntry>(list);
    checkOwnEntriesOfOneKind<PackageImportEntry>(list);
}

template <typename Entry>
void TwinLists::checkOwnEntriesOfOneKind(std::size_t list) {
    Twin const& twin = twins.at(list);
    std::vector<Outcome const*> const expected =
        twin.model->entries(KindOf<Entry>::kind, model::thisListOnly);
    std::vector<Entry const*> actual;
    bool areEqual = true;
    for (Entry const& entry :
         std::invoke(KindOf<Entry>::getter, *twin.library, asCheck(model::thisListOnly))) {
        std::size_t const position = actual.size();
        actual.push_back(&entry);
        areEqual = areEqual && position < expected.size() && describe(entry) == *expected[position];
        if (areEqual) {
            storedEntries[expected[position]] = &entry;
        }
    }
    if (!areEqual || actual.size() != expected.size()) {
        std::string fromModel;
        for (Outcome const* const entry : expected) {
            fromModel += '\n' + asText(*entry);
        }
        differ(list, question(KindOf<Entry>::question, model::thisListOnly), asText(actual),
               fromModel);
    }
}

void TwinLists::checkAnswers(std::size_t list, std::vector<std::u16string> const& names,
                             Reach otherReach) const {
    checkParent(list);
    for (Reach const reach : {model::withAncestors, otherReach}) {
        checkCounts(list, reach);
        checkEntries<FullyQualifiedImportEntry>(list, reach);
        checkEntries<WildcardImportEntry>(list, reach);
        checkEntries<PackageImportEntry>(list, reach);
        for (std::u16string const& name : names) {
            checkFindPackage(list, name, reach);
            checkFindFullyQualified(list, name, reach);
        }
    }
}

void TwinLists::checkAll(std::vector<std::u16string> const& names, Reach otherReach) {
    storedEntries.clear();
    for (std::size_t list = 0; list < size(); ++list) {
        checkOwnEntries(list);
    }
    for (std::size_t list = 0; list < size(); ++list) {
        checkAnswers(list, names, otherReach);
    }
}

template <typename Entry>
void TwinLists::checkEntries(std::size_t list, Reach reach) const {
    Twin const& twin = twins[list];
    std::vector<Entry const*> expected;
    for (Outcome const* const entry : twin.model->entries(KindOf<Entry>::kind, reach)) {
        expected.push_back(&storedEntry<Entry>(entry));
    }
    std::vector<Entry const*> actual;
    for (Entry const& entry : std::invoke(KindOf<Entry>::getter, *twin.library, asCheck(reach))) {
        actual.push_back(&entry);
    }
    if (actual != expected) {
        differ(list, question(KindOf<Entry>::question, reach), asText(actual), asText(expected));
    }
}

void TwinLists::checkFindPackage(std::size_t list, std::u16string const& name, Reach reach) const {
    std::optional<Answer> expected;
    if (auto const found = twins[list].model->findPackage(name, reach)) {
        expected.emplace(storedEntry<PackageImportEntry>(found->entry).getIntroducedName(),
                         static_cast<EntryOrigin>(found->origin));
    }
    std::optional<Answer> actual;
    if (auto const found = twins[list].library->findPackageImportEntry(name, asCheck(reach))) {
        actual.emplace(found->entry.getIntroducedName(), found->origin);
    }
    if (actual != expected) {
        differ(list, lookup("findPackageImportEntry", name, reach), asText(actual),
               asText(expected));
    }
}

void TwinLists::checkFindFullyQualified(std::size_t list, std::u16string const& name,
                                        Reach reach) const {
    std::optional<Answer> expected;
    if (auto const found = twins[list].model->findFullyQualified(name, reach)) {
        expected.emplace(storedEntry<FullyQualifiedImportEntry>(found->entry).getRawArgument(),
                         static_cast<EntryOrigin>(found->origin));
    }
    std::optional<Answer> actual;
    if (auto const found =
            twins[list].library->findFullyQualifiedImportEntry(name, asCheck(reach))) {
        actual.emplace(found->rawArgument, found->origin);
    }
    if (actual != expected) {
        differ(list, lookup("findFullyQualifiedImportEntry", name, reach), asText(actual),
               asText(expected));
    }
}

void TwinLists::checkParent(std::size_t list) const {
    std::shared_ptr<model::List const> const expected = twins[list].model->parent();
    std::optional<std::size_t> const number = numberOf(expected.get());
    IImportList const* const expectedInLibrary = number ? twins[*number].library.get() : nullptr;
    std::shared_ptr<IImportList const> const actual = twins[list].library->getParent();
    if (actual.get() != expectedInLibrary) {
        differ(list, "getParent", asText(static_cast<void const*>(actual.get())),
               asText(static_cast<void const*>(expectedInLibrary)));
    }
}

void TwinLists::checkCounts(std::size_t list, Reach reach) const {
    Twin const& twin = twins[list];
    bool const isEmpty = twin.library->isEmpty(asCheck(reach));
    if (isEmpty != twin.model->isEmpty(reach)) {
        differ(list, question("isEmpty", reach), asText(isEmpty), asText(!isEmpty));
    }
    std::size_t const count = twin.library->getNumberOfEntries(asCheck(reach));
    std::size_t const expectedCount = twin.model->numberOfEntries(reach);
    if (count != expectedCount) {
        differ(list, question("getNumberOfEntries", reach), asText(count), asText(expectedCount));
    }
}

template <typename Entry>
Entry const& TwinLists::storedEntry(Outcome const* entry) const {
    return *static_cast<Entry const*>(storedEntries.at(entry));
}

std::optional<std::size_t> TwinLists::numberOf(model::List const* list) const {
    for (std::size_t number = 0; number < twins.size(); ++number) {
        if (twins[number].model.get() == list) {
            return number;
        }
    }
    return std::nullopt;
}

void TwinLists::differ(std::size_t list, std::string const& question,
                       std::string const& fromLibrary, std::string const& fromModel) const {
    throw Difference("list " + std::to_string(list) + ", " + question + "\nlibrary: " +
                     fromLibrary + "\nmodel: " + fromModel + "\n" + describeLists());
}

std::string TwinLists::describeLists() const {
    std::ostringstream stream;
    for (std::size_t number = 0; number < twins.size(); ++number) {
        Twin const& twin = twins[number];
        stream << "list " << number << " is a " << twin.make;
        if (twin.parent) {
            stream << ", parent " << *twin.parent;
        }
        stream << '\n';
        for (OutcomeKind const kind :
             {OutcomeKind::FullyQualified, OutcomeKind::Wildcard, OutcomeKind::Package}) {
            for (Outcome const* const entry : twin.model->entries(kind, model::thisListOnly)) {
                stream << "    " << *entry << '\n';
            }
        }
    }
    return stream.str();
}

} // namespace support
