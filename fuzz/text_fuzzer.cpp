// SPDX-License-Identifier: BSL-1.0

/// \file
/// Interprets bytes as a package specifier, which must survive being printed and parsed again, and
/// as a script of the explorer, whose words must be at the reported places.

#include "input.hpp"

#include <import/platform.hpp>

#include <import_explorer/script_reader.hpp>
#include <import_explorer/source_file.hpp>

#include <algorithm>
#include <exception>
#include <optional>
#include <sstream>
#include <variant>

namespace {

using Oxtavel::KeldarComponents::GetComponentVersionRangeFactory;
using Oxtavel::KeldarComponents::PackageSpecifier;

using InvalidSpecifier =
    foundation::core::except::Exception<kpm::arguments::InvalidPackageSpecifier, std::exception>;

std::optional<PackageSpecifier> readSpecifier(std::u16string const& text) {
    try {
        return PackageSpecifier(text, GetComponentVersionRangeFactory());
    } catch (InvalidSpecifier const&) {
        return std::nullopt;
    }
}

void checkSpecifier(std::u16string const& text) {
    auto const specifier = readSpecifier(text);
    if (!specifier) {
        return;
    }
    std::u16string const written = specifier->ToString();
    fuzz::require(readSpecifier(written) == specifier, "a specifier is parsed as written");
    fuzz::require(written.starts_with(specifier->Name()), "a specifier begins with its name");
    std::ostringstream stream;
    stream << *specifier;
    fuzz::require(stream.str() == fl::i18n::ustring_to_utf8(written),
                  "a specifier is printed as written");
}

/// A script and the bytes that it was read from, including a byte order mark.
class ReadScript {
  public:
    ReadScript(explorer::SourceFile const& source, std::string_view bytes,
               explorer::SourceSyntax syntax)
        : text(bytes), numberOfLines(source.numberOfLines()), script(readScript(source, syntax)) {}

    void check() const {
        for (explorer::Statement const& statement : script.statements) {
            std::visit([this](auto const& itsStatement) { checkStatement(itsStatement); },
                       statement);
        }
        for (std::size_t index = 1; index < script.scopes.size(); ++index) {
            checkRange(script.scopes[index].range);
            fuzz::require(script.scopes[index].parent < index, "a scope follows its parent");
        }
        for (explorer::Diagnostic const& problem : script.problems) {
            checkRange(problem.range);
        }
        bool const areSorted = std::ranges::is_sorted(
            script.problems, {}, [](auto const& problem) { return problem.range.begin; });
        fuzz::require(areSorted, "problems are in source order");
    }

  private:
    void checkRange(explorer::SourceRange const& range) const {
        fuzz::require(range.begin <= range.end && range.end <= text.size(),
                      "a range is within the file");
        fuzz::require(range.line >= 1 && range.line <= numberOfLines, "a line exists in the file");
    }

    void checkWord(explorer::Word const& word) const {
        checkRange(word.range);
        std::string_view const there =
            text.substr(word.range.begin, word.range.end - word.range.begin);
        fuzz::require(there == word.text || there == '"' + word.text + '"',
                      "a word is the text at its place");
    }

    void checkStatement(explorer::ImportCommand const& command) const {
        checkRange(command.range);
        fuzz::require(command.scope < script.scopes.size(), "a command's scope exists");
        for (explorer::Word const& argument : command.arguments) {
            checkWord(argument);
            fuzz::require(command.range.begin < argument.range.begin &&
                              argument.range.end <= command.range.end,
                          "a command contains its arguments");
        }
    }

    void checkStatement(explorer::UseOfName const& use) const {
        checkWord(use.name);
        fuzz::require(use.scope < script.scopes.size(), "the scope of a use exists");
    }

    std::string_view text;
    std::size_t numberOfLines;
    explorer::Script script;
};

void checkScript(std::string const& bytes) {
    auto const file = explorer::makeSourceFile("script", bytes);
    if (auto const* const source = std::get_if<explorer::SourceFile>(&file)) {
        ReadScript(*source, bytes, explorer::SourceSyntax::Script).check();
        ReadScript(*source, bytes, explorer::SourceSyntax::Lines).check();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    for (std::u16string const& line : fuzz::takeLines({data, size})) {
        checkSpecifier(line);
    }
    checkScript(std::string(data, data + size));
    return 0;
}
