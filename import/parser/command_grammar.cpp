// SPDX-License-Identifier: BSL-1.0

// The grammar of a command without rejected arguments:
//
//   command      = [ name-list | package-list | package alias-clause ]
//   name-list    = name { name }
//   package-list = package { package }
//   alias-clause = "as" plain-name
//
// Each production reports violations of its own rules; the first violation is the result of the
// whole command.

#include <import/parser/import_argument_parser.hpp>

#include <import/diagnostics/make_msg_id.hpp>

#include <cstddef>
#include <string>
#include <utility>
#include <variant>

namespace lf::import {

namespace {

// The argument instead of an alias, as the user wrote it.
std::u16string rejectedAliasText(ParsedImportArgument const& argument) {
    if (auto const* const name = std::get_if<FullyQualifiedImportArgument>(&argument)) {
        return name->rawArgument;
    }
    if (auto const* const wildcard = std::get_if<WildcardImportArgument>(&argument)) {
        return wildcard->rawArgument;
    }
    return std::u16string(std::get<VersionedPackageImportArgument>(argument).specifier.ToString());
}

} // namespace

void ImportArgumentParser::parseCommand() {
    switch (peek()) {
    case Kind::Name:
        return parseNameList();
    case Kind::Package:
        return parsePackageList();
    case Kind::AliasKeyword:
        return recordError(makeMsgID<"IncorrectNumberOfPackagesForAlias">(), nextIndex());
    case Kind::NothingLeft:
        return;
    }
}

void ImportArgumentParser::parseNameList() {
    do {
        takeName();
    } while (peek() == Kind::Name);
    expectEndOfNameList();
}

void ImportArgumentParser::parsePackageList() {
    takePackage();
    if (peek() == Kind::AliasKeyword) {
        return parseAliasClause();
    }
    while (peek() == Kind::Package) {
        takePackage();
    }
    expectEndOfPackageList();
}

void ImportArgumentParser::parseAliasClause() {
    std::size_t const keyword = consume();
    if (isFinished()) {
        recordError(makeMsgID<"IncorrectNumberOfAlias">(), keyword);
    } else {
        parseAliasName();
    }
    expectEndOfAliasClause();
}

void ImportArgumentParser::parseAliasName() {
    std::size_t const index = consume();
    ParsedImportArgument& argument = arguments[index];
    if (auto* const alias = std::get_if<PackageNameImportArgument>(&argument)) {
        renameThePackage(std::move(*alias), index);
    } else if (std::holds_alternative<AsClauseImportArgument>(argument)) {
        recordError(makeMsgID<"MultipleAsClauses">(), index);
    } else {
        recordError(makeMsgID<"InvalidAliasName">(
                        message_arguments::RejectedAlias(rejectedAliasText(argument))),
                    index);
    }
}

void ImportArgumentParser::expectEndOfNameList() {
    if (isFinished()) {
        return;
    }
    recordError(peek() == Kind::Package ? makeMsgID<"MixedImportType">()
                                        : makeMsgID<"NamespaceWithAlias">(),
                nextIndex());
}

void ImportArgumentParser::expectEndOfPackageList() {
    if (isFinished()) {
        return;
    }
    recordError(peek() == Kind::Name ? makeMsgID<"MixedImportType">()
                                     : makeMsgID<"IncorrectNumberOfPackagesForAlias">(),
                nextIndex());
}

void ImportArgumentParser::expectEndOfAliasClause() {
    if (isFinished()) {
        return;
    }
    recordError(peek() == Kind::AliasKeyword ? makeMsgID<"MultipleAsClauses">()
                                             : makeMsgID<"IncorrectNumberOfAlias">(),
                nextIndex());
}

} // namespace lf::import
