// SPDX-License-Identifier: BSL-1.0
#include <import_explorer/message_catalogue.hpp>

#include <import/messages.hpp>

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>

namespace explorer {

namespace {

struct CatalogueEntry {
    std::string_view key;
    std::string_view words;
};

// clang-format off
constexpr std::array catalogue{
    CatalogueEntry{"InvalidImportArgument",
        "'{1}' is neither a dotted name, nor a wildcard, nor a package"},
    CatalogueEntry{"MalformedImportArgumentWarning",
        "the wildcard '{1}' has no prefix of valid names"},
    CatalogueEntry{"KeywordInImportArgument",
        "'{1}' cannot be imported: '{2}' is a reserved word"},
    CatalogueEntry{"KeywordInImportArgumentWarning",
        "'{1}' introduces '{2}', which is a reserved word"},
    CatalogueEntry{"ImportArgumentWithoutDot",
        "expected a name with a dot, such as 'a.b' or 'a.*', since package imports are off"},
    CatalogueEntry{"InvalidAliasName",
        "expected a plain name as the alias, found '{1}'"},
    CatalogueEntry{"IncorrectNumberOfAlias",
        "expected exactly one alias after 'as'"},
    CatalogueEntry{"IncorrectNumberOfPackagesForAlias",
        "expected exactly one package before 'as'"},
    CatalogueEntry{"MixedImportType",
        "one command imports either packages or dotted names, not both"},
    CatalogueEntry{"MultipleAsClauses",
        "expected only one 'as' in a command"},
    CatalogueEntry{"NamespaceWithAlias",
        "only a package can have an alias, not a dotted name or wildcard"},
    CatalogueEntry{"PackageRedeclared",
        "this scope already imports a package under the name that '{1}' introduces"},
    CatalogueEntry{"PrecedenceViolation",
        "'{1}' introduces '{2}', which this scope already imports as something else"},
    CatalogueEntry{"InvalidPackageFunctionAbbreviation",
        "a dotted import must not begin with the name that a package import introduces"},
};

// clang-format on

/// The number N of a place `{N}` at the beginning of \p words.
constexpr std::optional<std::size_t> leadingPlace(std::string_view words) {
    if (words.size() < 3 || words[0] != '{' || words[1] < '1' || words[1] > '9' ||
        words[2] != '}') {
        return std::nullopt;
    }
    return static_cast<std::size_t>(words[1] - '0');
}

/// Whether \p words have the places 1 to \p numberOfArguments, and no others.
constexpr bool hasPlaces(std::string_view words, std::size_t numberOfArguments) {
    std::array<bool, 10> found{};
    for (std::size_t index = 0; index < words.size(); ++index) {
        if (std::optional<std::size_t> const place = leadingPlace(words.substr(index))) {
            found.at(*place) = true;
        }
    }
    for (std::size_t place = 1; place < found.size(); ++place) {
        if (found.at(place) != (place <= numberOfArguments)) {
            return false;
        }
    }
    return true;
}

constexpr bool isInCatalogueOnce(lf::import::MessageKey const& message) {
    return std::count_if(catalogue.begin(), catalogue.end(), [&](CatalogueEntry const& entry) {
               return entry.key == message.key && hasPlaces(entry.words, message.numberOfArguments);
           }) == 1;
}

static_assert(catalogue.size() == lf::import::messageKeys.size());
static_assert(std::all_of(lf::import::messageKeys.begin(), lf::import::messageKeys.end(),
                          isInCatalogueOnce),
              "each message of the library has words, with a place for each of its arguments");

} // namespace

std::string_view wordsFor(std::string_view key) {
    auto const* const found =
        std::find_if(catalogue.begin(), catalogue.end(),
                     [&](CatalogueEntry const& entry) { return entry.key == key; });
    return found == catalogue.end() ? "a problem that has no words in this catalogue"
                                    : found->words;
}

std::string fillPlaces(std::string_view words, std::span<std::string const> arguments) {
    std::string result;
    while (!words.empty()) {
        std::optional<std::size_t> const place = leadingPlace(words);
        if (place && *place <= arguments.size()) {
            result += arguments[*place - 1];
            words.remove_prefix(3);
        } else {
            result += words.front();
            words.remove_prefix(1);
        }
    }
    return result;
}

} // namespace explorer
