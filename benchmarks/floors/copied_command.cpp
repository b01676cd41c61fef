// SPDX-License-Identifier: BSL-1.0
#include "floors/copied_command.hpp"

#include <stdexcept>
#include <string_view>
#include <tuple>
#include <utility>
#include <variant>

namespace floors {

using namespace lf::import;
using Oxtavel::KeldarComponents::GetComponentVersionRangeFactory;
using Oxtavel::KeldarComponents::PackageSpecifier;

namespace {

using Records = std::vector<ParsedImportArgument>;

void expect(bool answer) {
    if (!answer) {
        throw std::logic_error("an argument of the workload is not what it should be");
    }
}

// Asks the platform about every segment before the last one.
std::u16string_view lastSegment(std::u16string_view text) {
    for (auto dot = text.find(u'.'); dot != std::u16string_view::npos; dot = text.find(u'.')) {
        expect(lf::util::isValidIdentifier(text.substr(0, dot)));
        text = text.substr(dot + 1);
    }
    return text;
}

void copyFullyQualified(Records& records, std::u16string const& text, bool isLegacy) {
    std::u16string_view const last = lastSegment(text);
    expect(isLegacy || lf::util::isValidIdentifier(last));
    auto& record = std::get<FullyQualifiedImportArgument>(
        records.emplace_back(std::in_place_type<FullyQualifiedImportArgument>));
    record.introducedName = last;
    expect(!lfu::isReservedWord(record.introducedName, 8));
    record.rootElement = std::u16string_view(text).substr(0, text.find(u'.'));
    record.rawArgument = text;
}

void copyWildcard(Records& records, std::u16string const& text) {
    expect(lastSegment(text) == u"*");
    auto& record = std::get<WildcardImportArgument>(
        records.emplace_back(std::in_place_type<WildcardImportArgument>));
    record.rootElement = std::u16string_view(text).substr(0, text.find(u'.'));
    record.rawArgument = text;
}

// Stored as a specifier from the start, so that the name is not copied more often than the entry
// needs.
void copySpecifier(Records& records, std::u16string const& text) {
    records.emplace_back(
        VersionedPackageImportArgument{PackageSpecifier(text, GetComponentVersionRangeFactory())});
}

void copyPackage(Records& records, std::u16string const& text) {
    expect(lf::util::isValidIdentifier(text));
    expect(!lfu::isReservedWord(text, 8));
    copySpecifier(records, text);
}

// Creates the entry of a record.
struct ToEntry {
    std::vector<ParsedImportEntry>& entries;
    ImportArgumentIndex index;

    void operator()(FullyQualifiedImportArgument& record) const {
        append<FullyQualifiedImportEntry>(record);
    }

    void operator()(WildcardImportArgument& record) const { append<WildcardImportEntry>(record); }

    void operator()(VersionedPackageImportArgument& record) const {
        append<PackageImportEntry>(record);
    }

    template <typename Other>
    void operator()(Other& /*record*/) const {
        expect(false);
    }

  private:
    template <typename Entry, typename Record>
    void append(Record& record) const {
        entries.emplace_back(std::in_place_type<std::pair<Entry, ImportArgumentIndex>>,
                             std::piecewise_construct, std::forward_as_tuple(std::move(record)),
                             std::forward_as_tuple(index));
    }
};

} // namespace

CopiedCommand::CopiedCommand(cppcompat::span<std::u16string const> texts, Form form) {
    arguments.reserve(texts.size());
    for (std::u16string const& text : texts) {
        switch (form) {
        case Form::FullyQualified:
        case Form::LegacyFullyQualified:
            copyFullyQualified(arguments, text, form == Form::LegacyFullyQualified);
            break;
        case Form::Wildcard:
            copyWildcard(arguments, text);
            break;
        case Form::Package:
            copyPackage(arguments, text);
            break;
        case Form::VersionedPackage:
            copySpecifier(arguments, text);
            break;
        }
    }
}

std::vector<ParsedImportEntry> const& CopiedCommand::copyEntries() {
    entries.reserve(arguments.size());
    for (ImportArgumentIndex index = 0; index < arguments.size(); ++index) {
        std::visit(ToEntry{entries, index}, arguments[index]);
    }
    return entries;
}

} // namespace floors
