// SPDX-License-Identifier: BSL-1.0

#include <import/parser/import_argument_parser.hpp>

#include <import/parser/classification.hpp>
#include <import/parser/in_place.hpp>

#include <algorithm>
#include <array>
#include <cassert>
#include <cstddef>
#include <tuple>
#include <utility>
#include <variant>

namespace lf::import {

using Oxtavel::KeldarComponents::GetComponentVersionRangeFactory;
using Oxtavel::KeldarComponents::PackageSpecifier;

IImportArgumentParser::~IImportArgumentParser() = default;

namespace {

ImportArgumentParser::Classifier classifierFor(Behavior behavior) {
    bool const withPackageImports = behavior == Behavior::FollowFeatureSwitch
                                        ? lf::features::isPackageImportsFeatureOn()
                                        : behavior != Behavior::WithoutPackageImports;
    return withPackageImports ? classifyArgument : classifyLegacyArgument;
}

template <typename Entry, typename... Arguments>
void append(std::vector<ParsedImportEntry>& entries, ImportArgumentIndex index,
            Arguments&&... arguments) {
    entries.emplace_back(
        std::in_place_type<std::pair<Entry, ImportArgumentIndex>>, std::piecewise_construct,
        std::forward_as_tuple(std::forward<Arguments>(arguments)...), std::forward_as_tuple(index));
}

template <typename Entry, typename Record>
void appendWithWarning(std::vector<ParsedImportEntry>& entries, ImportArgumentIndex index,
                       Record& record) {
    append<Entry>(entries, index, std::move(record));
    // NOLINTNEXTLINE(bugprone-use-after-move): the entry does not take the warning.
    if (record.warning) {
        append<InvalidImportEntry>(entries, index, record.warning->getMsgID());
    }
}

} // namespace

std::unique_ptr<IImportArgumentParser>
createImportArgumentParser(cppcompat::span<const std::u16string> arguments, Behavior behavior) {
    return std::make_unique<ImportArgumentParser>(arguments, classifierFor(behavior));
}

std::unique_ptr<IImportArgumentParser>
createImportArgumentParser(lf::astapi::ImportCommandView command, Behavior behavior) {
    return std::make_unique<ImportArgumentParser>(command, classifierFor(behavior));
}

ImportArgumentParser::ImportArgumentParser(cppcompat::span<const std::u16string> texts,
                                           Classifier classify) {
    arguments.reserve(texts.size());
    for (std::u16string const& text : texts) {
        arguments.emplace_back(InPlace{[&] { return classify(text); }});
    }
}

// The limit for reserving memory according to a tree from which no text has been read yet.
constexpr std::size_t mostReserved = 4'096;

// The tree may change while it is read, so the loop asks for the current count each time.
ImportArgumentParser::ImportArgumentParser(lf::astapi::ImportCommandView command,
                                           Classifier classify) {
    assert(command.tree != nullptr && "a command view has a tree");
    arguments.reserve(
        std::min<std::size_t>(command.tree->getNumberOfArguments(command.node), mostReserved));
    for (std::size_t index = 0; index < command.tree->getNumberOfArguments(command.node); ++index) {
        lf::astapi::ArgumentNode const argument = command.tree->getArgument(command.node, index);
        arguments.emplace_back(
            InPlace{[&] { return classify(argument.tree->getText(argument.node)); }});
    }
}

std::vector<ParsedImportEntry>& ImportArgumentParser::parse() {
    assert(cursor == 0 && entries.empty() && "a parser parses once");
    auto const rejected = std::ranges::find_if(arguments, [](auto const& argument) {
        return std::holds_alternative<InvalidImportArgument>(argument);
    });
    if (rejected != arguments.end()) {
        auto const index = static_cast<ImportArgumentIndex>(rejected - arguments.begin());
        append<InvalidImportEntry>(entries, index,
                                   std::get<InvalidImportArgument>(*rejected).msgHolder.getMsgID());
    } else {
        entries.reserve(arguments.size());
        parseCommand();
    }
    return entries;
}

std::size_t ImportArgumentParser::nextIndex() const noexcept {
    std::size_t index = cursor;
    while (index < arguments.size() && std::holds_alternative<IgnoredArgument>(arguments[index])) {
        ++index;
    }
    return index;
}

ImportArgumentParser::Kind ImportArgumentParser::peek() const noexcept {
    // Indexed by alternative of ParsedImportArgument. The last two, rejected and ignored, are never
    // next.
    static constexpr std::array kinds{Kind::Name,       Kind::Name,         Kind::Package,
                                      Kind::Package,    Kind::AliasKeyword, Kind::NothingLeft,
                                      Kind::NothingLeft};
    static_assert(kinds.size() == std::variant_size_v<ParsedImportArgument>);
    std::size_t const index = nextIndex();
    return index < arguments.size() ? kinds[arguments[index].index()] : Kind::NothingLeft;
}

bool ImportArgumentParser::isFinished() const noexcept {
    return stopped || peek() == Kind::NothingLeft;
}

std::size_t ImportArgumentParser::consume() noexcept {
    std::size_t const index = nextIndex();
    cursor = index + 1;
    return index;
}

void ImportArgumentParser::takeName() {
    std::size_t const index = consume();
    ParsedImportArgument& argument = arguments[index];
    if (auto* const name = std::get_if<FullyQualifiedImportArgument>(&argument)) {
        appendWithWarning<FullyQualifiedImportEntry>(entries, index, *name);
    } else {
        appendWithWarning<WildcardImportEntry>(entries, index,
                                               std::get<WildcardImportArgument>(argument));
    }
}

// Unlike the public constructor, which must leave the record unchanged, this moves its text into
// the entry if the package descriptor library gives the package the same name.
PackageImportEntry ImportArgumentParser::makePackageEntry(PackageNameImportArgument&& argument) {
    PackageSpecifier specifier(argument.name, GetComponentVersionRangeFactory());
    std::u16string name = specifier.Name() == argument.name ? std::move(argument.name)
                                                            : std::u16string(specifier.Name());
    return {std::move(specifier), std::move(name)};
}

void ImportArgumentParser::takePackage() {
    std::size_t const index = consume();
    ParsedImportArgument& argument = arguments[index];
    if (auto* const package = std::get_if<PackageNameImportArgument>(&argument)) {
        auto const entry = [&] { return makePackageEntry(std::move(*package)); };
        append<PackageImportEntry>(entries, index, InPlace{entry});
    } else {
        append<PackageImportEntry>(entries, index,
                                   std::move(std::get<VersionedPackageImportArgument>(argument)));
    }
}

void ImportArgumentParser::renameThePackage(PackageNameImportArgument&& alias,
                                            ImportArgumentIndex index) {
    using PackageAndIndex = std::pair<PackageImportEntry, ImportArgumentIndex>;
    PackageImportEntry renamed(std::move(std::get<PackageAndIndex>(entries.front()).first),
                               std::move(alias));
    entries.clear();
    append<PackageImportEntry>(entries, index, std::move(renamed));
}

void ImportArgumentParser::recordError(resource_core::BaseMsgID const& message,
                                       ImportArgumentIndex index) {
    stopped = true;
    entries.clear();
    append<InvalidImportEntry>(entries, index, message);
}

} // namespace lf::import
