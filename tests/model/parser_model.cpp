// SPDX-License-Identifier: BSL-1.0
#include "parser_model.hpp"

#include <foundation/core/except/exception.hpp>
#include <kpm/arguments/invalid_package_specifier.hpp>
#include <lf/util/identifier.hpp>
#include <lfu/reserved_words.hpp>
#include <oxtavel/keldar_components/component_version_range.hpp>
#include <oxtavel/keldar_components/package_specifier.hpp>

#include <cstddef>
#include <cstdint>
#include <exception>
#include <optional>
#include <utility>

namespace model {
namespace {

using Oxtavel::KeldarComponents::GetComponentVersionRangeFactory;
using Oxtavel::KeldarComponents::PackageSpecifier;
using InvalidSpecifier =
    foundation::core::except::Exception<kpm::arguments::InvalidPackageSpecifier, std::exception>;

struct Message {
    std::string key;
    std::vector<std::u16string> arguments;
};

enum class ArgumentKind : std::uint8_t {
    FullyQualified,
    Wildcard,
    PackageName,
    VersionedPackage,
    As,
    Rejected,
    Ignored,
};

struct Argument {
    ArgumentKind kind{};
    std::u16string text;
    std::u16string firstSegment;
    std::u16string lastSegment;
    /// Why a rejected argument is rejected, or the warning of a fully qualified one or a wildcard.
    std::optional<Message> message;
};

// Services of the host.

bool isIdentifier(std::u16string const& text) {
    return lf::util::isValidIdentifier(text);
}

bool isReserved(std::u16string const& text) {
    return lfu::isReservedWord(text, 8);
}

PackageSpecifier specifierOf(std::u16string const& text) {
    return {text, GetComponentVersionRangeFactory()};
}

// Classification.

bool contains(std::u16string const& text, char16_t unit) {
    return text.find(unit) != std::u16string::npos;
}

std::vector<std::u16string> segmentsOf(std::u16string const& text) {
    std::vector<std::u16string> segments(1);
    for (char16_t const unit : text) {
        if (unit == u'.') {
            segments.emplace_back();
        } else {
            segments.back() += unit;
        }
    }
    return segments;
}

bool hasBadSegmentBeforeTheLast(std::vector<std::u16string> const& segments) {
    for (std::size_t i = 0; i + 1 < segments.size(); ++i) {
        if (!isIdentifier(segments[i])) {
            return true;
        }
    }
    return false;
}

Argument rejected(std::u16string const& text, std::string key,
                  std::vector<std::u16string> messageArguments) {
    Argument argument;
    argument.kind = ArgumentKind::Rejected;
    argument.text = text;
    argument.message = Message{std::move(key), std::move(messageArguments)};
    return argument;
}

Argument undotted(ArgumentKind kind, std::u16string const& text) {
    Argument argument;
    argument.kind = kind;
    argument.text = text;
    return argument;
}

Argument dotted(ArgumentKind kind, std::u16string const& text,
                std::vector<std::u16string> const& segments) {
    Argument argument;
    argument.kind = kind;
    argument.text = text;
    argument.firstSegment = segments.front();
    argument.lastSegment = segments.back();
    return argument;
}

Argument classifyDottedName(std::u16string const& text) {
    std::vector<std::u16string> const segments = segmentsOf(text);
    std::u16string const& last = segments.back();
    if (hasBadSegmentBeforeTheLast(segments)) {
        return rejected(text, "InvalidImportArgument", {text});
    }
    if (last == u"*") {
        return dotted(ArgumentKind::Wildcard, text, segments);
    }
    if (!isIdentifier(last)) {
        return rejected(text, "InvalidImportArgument", {text});
    }
    if (isReserved(last)) {
        return rejected(text, "KeywordInImportArgument", {text, last});
    }
    return dotted(ArgumentKind::FullyQualified, text, segments);
}

Argument classifyLegacyDottedName(std::u16string const& text) {
    std::vector<std::u16string> const segments = segmentsOf(text);
    std::u16string const& last = segments.back();
    if (last == u"*") {
        Argument argument = dotted(ArgumentKind::Wildcard, text, segments);
        if (hasBadSegmentBeforeTheLast(segments)) {
            argument.message = Message{"MalformedImportArgumentWarning", {text}};
        }
        return argument;
    }
    Argument argument = dotted(ArgumentKind::FullyQualified, text, segments);
    if (isReserved(last)) {
        argument.message = Message{"KeywordInImportArgumentWarning", {text, last}};
    }
    return argument;
}

Argument classifyPlainName(std::u16string const& word) {
    if (!isIdentifier(word)) {
        return rejected(word, "InvalidImportArgument", {word});
    }
    if (isReserved(word)) {
        return rejected(word, "KeywordInImportArgument", {word, word});
    }
    return undotted(ArgumentKind::PackageName, word);
}

Argument classifyVersionedPackage(std::u16string const& text) {
    try {
        specifierOf(text);
    } catch (InvalidSpecifier const&) {
        return rejected(text, "InvalidImportArgument", {text});
    }
    return undotted(ArgumentKind::VersionedPackage, text);
}

Argument classifyArgument(std::u16string const& text) {
    if (text.empty()) {
        return undotted(ArgumentKind::Ignored, text);
    }
    if (contains(text, u'@')) {
        return classifyVersionedPackage(text);
    }
    if (contains(text, u'.')) {
        return classifyDottedName(text);
    }
    if (text == u"as") {
        return undotted(ArgumentKind::As, text);
    }
    return classifyPlainName(text);
}

Argument classifyLegacyArgument(std::u16string const& text) {
    if (text.empty()) {
        return undotted(ArgumentKind::Ignored, text);
    }
    if (text == u".*") {
        return rejected(text, "MalformedImportArgumentWarning", {text});
    }
    if (contains(text, u'.')) {
        return classifyLegacyDottedName(text);
    }
    return rejected(text, "ImportArgumentWithoutDot", {});
}

// The command.

class Command {
  public:
    explicit Command(std::vector<Argument> classified) : arguments(std::move(classified)) {}

    std::vector<Outcome> parse() {
        for (std::size_t i = 0; i < arguments.size(); ++i) {
            if (arguments[i].kind == ArgumentKind::Rejected) {
                outcomes.push_back(invalid(*arguments[i].message, i));
                return outcomes;
            }
        }
        start();
        return outcomes;
    }

  private:
    // Looking: the position of the next argument, arguments.size() when none is left.

    std::size_t next() const {
        std::size_t position = cursor;
        while (position < arguments.size() && arguments[position].kind == ArgumentKind::Ignored) {
            ++position;
        }
        return position;
    }

    bool nothingLeft() const { return next() == arguments.size(); }

    bool nextIs(ArgumentKind kind) const {
        return !nothingLeft() && arguments[next()].kind == kind;
    }

    bool nextIsName() const {
        return nextIs(ArgumentKind::FullyQualified) || nextIs(ArgumentKind::Wildcard);
    }

    bool nextIsPackage() const {
        return nextIs(ArgumentKind::PackageName) || nextIs(ArgumentKind::VersionedPackage);
    }

    // Taking.

    std::size_t consume() {
        std::size_t const position = next();
        cursor = position + 1;
        return position;
    }

    void takeName() {
        std::size_t const position = consume();
        Argument const& argument = arguments[position];
        Outcome outcome;
        outcome.index = position;
        outcome.rawArgument = argument.text;
        outcome.rootElement = argument.firstSegment;
        if (argument.kind == ArgumentKind::Wildcard) {
            outcome.kind = OutcomeKind::Wildcard;
        } else {
            outcome.kind = OutcomeKind::FullyQualified;
            outcome.introducedName = argument.lastSegment;
        }
        outcomes.push_back(outcome);
        if (argument.message) {
            outcomes.push_back(invalid(*argument.message, position));
        }
    }

    void takePackage() {
        std::size_t const position = consume();
        PackageSpecifier const specifier = specifierOf(arguments[position].text);
        Outcome outcome;
        outcome.kind = OutcomeKind::Package;
        outcome.index = position;
        outcome.introducedName = specifier.Name();
        outcome.specifier = specifier.ToString();
        outcomes.push_back(outcome);
    }

    // Reporting.

    static Outcome invalid(Message const& message, std::size_t position) {
        Outcome outcome;
        outcome.kind = OutcomeKind::Invalid;
        outcome.index = position;
        outcome.catalogue = "KELDAR:lang";
        outcome.key = message.key;
        outcome.messageArguments = message.arguments;
        outcome.isWarning = message.key == "MalformedImportArgumentWarning" ||
                            message.key == "KeywordInImportArgumentWarning";
        return outcome;
    }

    void record(Message const& message, std::size_t position) {
        stopped = true;
        outcomes.clear();
        outcomes.push_back(invalid(message, position));
    }

    // The grammar.

    void start() {
        if (nothingLeft()) {
            return;
        }
        if (nextIs(ArgumentKind::As)) {
            record({"IncorrectNumberOfPackagesForAlias", {}}, next());
        } else if (nextIsName()) {
            nameList();
        } else {
            packageList();
        }
    }

    void nameList() {
        takeName();
        while (nextIsName()) {
            takeName();
        }
        endOfNameList();
    }

    void endOfNameList() {
        if (stopped || nothingLeft()) {
            return;
        }
        if (nextIsPackage()) {
            record({"MixedImportType", {}}, next());
        } else {
            record({"NamespaceWithAlias", {}}, next());
        }
    }

    void packageList() {
        takePackage();
        if (nextIs(ArgumentKind::As)) {
            aliasClause();
            return;
        }
        while (nextIsPackage()) {
            takePackage();
        }
        endOfPackageList();
    }

    void endOfPackageList() {
        if (stopped || nothingLeft()) {
            return;
        }
        if (nextIsName()) {
            record({"MixedImportType", {}}, next());
        } else {
            record({"IncorrectNumberOfPackagesForAlias", {}}, next());
        }
    }

    void aliasClause() {
        std::size_t const keyword = consume();
        if (nothingLeft()) {
            record({"IncorrectNumberOfAlias", {}}, keyword);
        } else {
            aliasName();
        }
        endOfAliasClause();
    }

    void aliasName() {
        std::size_t const position = consume();
        Argument const& alias = arguments[position];
        switch (alias.kind) {
        case ArgumentKind::PackageName:
            outcomes.at(0).introducedName = alias.text;
            outcomes.at(0).index = position;
            break;
        case ArgumentKind::As:
            record({"MultipleAsClauses", {}}, position);
            break;
        case ArgumentKind::VersionedPackage:
            record({"InvalidAliasName", {specifierOf(alias.text).ToString()}}, position);
            break;
        default:
            record({"InvalidAliasName", {alias.text}}, position);
            break;
        }
    }

    void endOfAliasClause() {
        if (stopped || nothingLeft()) {
            return;
        }
        if (nextIs(ArgumentKind::As)) {
            record({"MultipleAsClauses", {}}, next());
        } else {
            record({"IncorrectNumberOfAlias", {}}, next());
        }
    }

    std::vector<Argument> arguments;
    std::vector<Outcome> outcomes;
    std::size_t cursor = 0;
    bool stopped = false;
};

} // namespace

std::vector<Outcome> parseCommand(std::vector<std::u16string> const& arguments,
                                  bool packageImportsOn) {
    std::vector<Argument> classified;
    classified.reserve(arguments.size());
    for (std::u16string const& argument : arguments) {
        classified.push_back(packageImportsOn ? classifyArgument(argument)
                                              : classifyLegacyArgument(argument));
    }
    return Command(std::move(classified)).parse();
}

} // namespace model
