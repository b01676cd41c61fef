// SPDX-License-Identifier: BSL-1.0

/// \file
/// A small, complete front end: copy it and replace its language by yours.
///
/// A script is a sequence of words. `import` starts a command that ends with its line, `{` and `}`
/// enclose a scope, a word that ends in `?` asks for completion, and any other word uses a name.

#include <host/host.hpp>
#include <import/import.hpp>

#include <algorithm>
#include <cstddef>
#include <fstream>
#include <iostream>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace {

using lf::import::Behavior;
using lf::import::ImportArgumentIndex;
using lf::import::ImportEntry;
using lf::import::Severity;
using namespace lf::import::host;

/// A word and its position, counted from 0, which is this language's kind of place.
struct Word {
    std::string text;
    std::size_t line;
    std::size_t column;
};

using WordScope = Scope<Word>;

struct Script {
    std::vector<std::string> lines;
    std::vector<Word> words;
};

Script readScript(std::istream& stream) {
    static constexpr char const* blanks = " \t\r";
    Script script;
    for (std::string line; std::getline(stream, line); script.lines.push_back(line)) {
        std::size_t begin = line.find_first_not_of(blanks);
        while (begin != std::string::npos) {
            std::size_t const end = std::min(line.find_first_of(blanks, begin), line.size());
            script.words.push_back({line.substr(begin, end - begin), script.lines.size(), begin});
            begin = line.find_first_not_of(blanks, end);
        }
    }
    return script;
}

/// The syntax tree: a node is the position of a word; that of a command is its word `import`.
class SyntaxTree final : public lf::astapi::ISyntaxTree {
  public:
    explicit SyntaxTree(std::vector<Word> const& scriptWords) : words(scriptWords) {}

    std::size_t getNumberOfArguments(lf::astapi::NodeHandle command) const override {
        auto const begin = static_cast<std::size_t>(command);
        std::size_t end = begin + 1;
        while (end < words.size() && words[end].line == words[begin].line) {
            ++end;
        }
        return end - begin - 1;
    }

    lf::astapi::ArgumentNode getArgument(lf::astapi::NodeHandle command,
                                         std::size_t index) const override {
        return {this, command + 1 + index};
    }

    std::u16string getText(lf::astapi::NodeHandle argument) const override {
        return std::u16string(Utf16Text(words.at(static_cast<std::size_t>(argument)).text));
    }

  private:
    std::vector<Word> const& words;
};

constexpr MessageCatalogue catalogue({
    {"InvalidImportArgument", "'{1}' cannot be imported"},
    {"MalformedImportArgumentWarning", "'{1}' has no valid prefix"},
    {"KeywordInImportArgument", "'{2}' in '{1}' is a reserved word"},
    {"KeywordInImportArgumentWarning", "'{2}' in '{1}' is a reserved word"},
    {"ImportArgumentWithoutDot", "an import needs a dot"},
    {"InvalidAliasName", "'{1}' is no name for a package"},
    {"IncorrectNumberOfAlias", "one name must follow 'as'"},
    {"IncorrectNumberOfPackagesForAlias", "one package must stand before 'as'"},
    {"MixedImportType", "import packages and names separately"},
    {"MultipleAsClauses", "there is another 'as'"},
    {"NamespaceWithAlias", "only packages can be renamed"},
    {"PackageRedeclared", "the name of package '{1}' is taken"},
    {"PrecedenceViolation", "'{1}' introduces '{2}', which is taken"},
    {"InvalidPackageFunctionAbbreviation", "a dotted import starts with the name of a package"},
});

/// Reads a script and prints what it finds.
class FrontEnd {
  public:
    explicit FrontEnd(Script const& itsScript) : script(itsScript), tree(itsScript.words) {}

    /// Whether the script has no errors.
    bool check() {
        for (std::size_t index = 0; index < script.words.size(); ++index) {
            Word const& word = script.words[index];
            if (word.text == "import") {
                readImport(index);
                index += tree.getNumberOfArguments(index);
            } else if (word.text == "{") {
                scopes.push_back(std::make_shared<WordScope>(scopes.back()));
            } else if (word.text == "}" && scopes.size() > 1) {
                leaveScope();
            } else if (word.text.ends_with('?')) {
                complete(word);
            } else {
                use(word);
            }
        }
        while (!scopes.empty()) {
            leaveScope();
        }
        return isRight;
    }

  private:
    void readImport(std::size_t command) {
        lf::astapi::ImportCommandView const view{&tree, command};
        for (CommandItem& item : readCommand(view, Behavior::WithPackageImports, Salvage::Yes)) {
            std::visit(Overloaded{[&](CommandEntry& found) {
                                      add(std::move(found.entry),
                                          argumentOf(command, found.importedArgument));
                                  },
                                  [&](CommandDiagnostic const& problem) {
                                      report(problem.severity,
                                             argumentOf(command, problem.argument),
                                             catalogue.format(problem.message.getMsgID()));
                                  }},
                       item);
        }
    }

    Word const& argumentOf(std::size_t command, ImportArgumentIndex argument) const {
        return script.words[command + 1 + static_cast<std::size_t>(argument)];
    }

    void add(ImportEntry&& entry, Word const& place) {
        std::visit(Overloaded{[](WordScope::Stored const&) {},
                              [&](WordScope::Repeated const& repeated) {
                                  report(Severity::Warning, place, "this is imported twice");
                                  show("note", repeated.earlier->place, "here first");
                              },
                              [&](WordScope::Refused const& refused) {
                                  report(Severity::Error, place,
                                         catalogue.format(refused.message.getMsgID()));
                                  if (refused.conflict) {
                                      show("note", refused.conflict->imported->place, "by this");
                                  }
                              }},
                   scopes.back()->addStatic(std::move(entry), place));
    }

    void use(Word const& name) {
        WordScope::Resolution const found = scopes.back()->resolve(name.text);
        uses.add(found);
        for (WordScope::ScopedImport const& each : found.imports) {
            show("is", name, describe(*each.imported));
        }
        for (WordScope::ScopedImport const& each : found.wildcards) {
            show("maybe", name, describe(*each.imported));
        }
        bool const isDotted = name.text.find('.') != std::string::npos;
        if (found.imports.empty() && found.wildcards.empty() && !isDotted) {
            report(Severity::Error, name, "nothing imports '" + name.text + "'" + suggest(name));
        }
    }

    static std::string describe(WordScope::Import const& found) {
        return toUtf8(found.entry) + " of line " + std::to_string(found.place.line + 1);
    }

    std::string suggest(Word const& name) const {
        std::vector<std::u16string_view> const names = visibleNames();
        auto const nearest = findNearestSpelling(Utf16Text(name.text), names);
        return nearest ? "; is it '" + fl::i18n::ustring_to_utf8(names[*nearest]) + "'?" : "";
    }

    void complete(Word const& word) const {
        Utf16Text const typed(std::string_view(word.text).substr(0, word.text.size() - 1));
        std::set<std::u16string_view> candidates;
        for (std::u16string_view const name : visibleNames()) {
            if (name.starts_with(typed.view())) {
                candidates.insert(name);
            }
        }
        for (std::u16string_view const name : candidates) {
            show("completion", word, fl::i18n::ustring_to_utf8(name));
        }
    }

    std::vector<std::u16string_view> visibleNames() const {
        std::vector<std::u16string_view> names;
        for (auto const kind : {ImportKind::Package, ImportKind::FullyQualified}) {
            for (WordScope::ScopedImport const& each : scopes.back()->visible(kind)) {
                names.push_back(introducedNameOf(each.imported->entry));
            }
        }
        return names;
    }

    void leaveScope() {
        for (WordScope::Import const* const unused : uses.unreached(*scopes.back())) {
            report(Severity::Warning, unused->place, "nothing uses this import");
        }
        scopes.pop_back();
    }

    void report(Severity severity, Word const& place, std::string const& words) {
        isRight = isRight && severity != Severity::Error;
        show(severity == Severity::Error ? "error" : "warning", place, words);
        std::cout << "    " << script.lines[place.line] << "\n    "
                  << std::string(place.column, ' ') << std::string(place.text.size(), '^') << '\n';
    }

    static void show(std::string_view kind, Word const& place, std::string const& words) {
        std::cout << place.line + 1 << ':' << place.column + 1 << ": " << kind << ": " << words
                  << '\n';
    }

    Script const& script;
    SyntaxTree tree;
    std::vector<std::shared_ptr<WordScope>> scopes{std::make_shared<WordScope>()};
    UseRecord<Word> uses;
    bool isRight = true;
};

} // namespace

int main(int argc, char** argv) {
    std::ifstream file(argc == 2 ? argv[1] : "");
    if (!file) {
        std::cerr << "usage: front_end SCRIPT\n";
        return 2;
    }
    Script const script = readScript(file);
    return FrontEnd(script).check() ? 0 : 1;
}
