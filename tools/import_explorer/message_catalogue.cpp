// SPDX-License-Identifier: BSL-1.0
#include <import_explorer/message_catalogue.hpp>

namespace explorer {

// clang-format off
constexpr lf::import::host::MessageCatalogue messageCatalogue({
    {"InvalidImportArgument",
        "'{1}' is neither a dotted name, nor a wildcard, nor a package"},
    {"MalformedImportArgumentWarning",
        "the wildcard '{1}' has no prefix of valid names"},
    {"KeywordInImportArgument",
        "'{1}' cannot be imported: '{2}' is a reserved word"},
    {"KeywordInImportArgumentWarning",
        "'{1}' introduces '{2}', which is a reserved word"},
    {"ImportArgumentWithoutDot",
        "expected a name with a dot, such as 'a.b' or 'a.*', since package imports are off"},
    {"InvalidAliasName",
        "expected a plain name as the alias, found '{1}'"},
    {"IncorrectNumberOfAlias",
        "expected exactly one alias after 'as'"},
    {"IncorrectNumberOfPackagesForAlias",
        "expected exactly one package before 'as'"},
    {"MixedImportType",
        "one command imports either packages or dotted names, not both"},
    {"MultipleAsClauses",
        "expected only one 'as' in a command"},
    {"NamespaceWithAlias",
        "only a package can have an alias, not a dotted name or wildcard"},
    {"PackageRedeclared",
        "this scope already imports a package under the name that '{1}' introduces"},
    {"PrecedenceViolation",
        "'{1}' introduces '{2}', which this scope already imports as something else"},
    {"InvalidPackageFunctionAbbreviation",
        "a dotted import must not begin with the name that a package import introduces"}
});
// clang-format on

} // namespace explorer
