// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// A valid table of words. Each macro introduces one fault.

#ifdef WITHOUT_A_KEY
#define LAST_WORDS
#else
#define LAST_WORDS                                                                                 \
    { "InvalidPackageFunctionAbbreviation", "abbreviated" }
#endif

#ifndef SOME_KEY
#define SOME_KEY "MixedImportType"
#endif

#ifndef SOME_WORDS
#define SOME_WORDS "mixed"
#endif

#define WORDS                                                                                      \
    {"InvalidImportArgument", "'{1}' is invalid"},                                                 \
        {"MalformedImportArgumentWarning", "'{1}' is malformed"},                                  \
        {"KeywordInImportArgument", "'{2}' in '{1}', {{2}}"},                                      \
        {"KeywordInImportArgumentWarning", "no placeholder is needed"},                            \
        {"ImportArgumentWithoutDot", "no dot"}, {"InvalidAliasName", "bad alias '{1}'"},           \
        {"IncorrectNumberOfAlias", "aliases"}, {"IncorrectNumberOfPackagesForAlias", "packages"},  \
        {SOME_KEY, SOME_WORDS}, {"MultipleAsClauses", "as, as"},                                   \
        {"NamespaceWithAlias", "no alias"}, {"PackageRedeclared", "'{1}' again"},                  \
        {"PrecedenceViolation", "'{2}' by '{1}'"}, LAST_WORDS
