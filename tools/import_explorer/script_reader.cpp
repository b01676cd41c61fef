// SPDX-License-Identifier: BSL-1.0
#include <import_explorer/script_reader.hpp>

#include <import_explorer/utf8.hpp>

#include <algorithm>
#include <string_view>
#include <utility>

namespace explorer {

namespace {

constexpr std::string_view blanks = " \t\r\v\f";

constexpr bool isBlank(char character) noexcept {
    return blanks.find(character) != std::string_view::npos;
}

constexpr bool endsWord(char character) noexcept {
    return isBlank(character) || character == ';';
}

constexpr bool beginsComment(std::string_view text) noexcept {
    return text.starts_with('#') || text.starts_with("//");
}

SourceRange join(SourceRange const& first, SourceRange const& last) {
    return {first.begin, last.end, first.line, first.column};
}

/// Walks through one line and tracks the position in the file.
class LineCursor {
  public:
    LineCursor(std::string_view lineText, std::size_t beginOfLine, std::size_t lineNumber)
        : line(lineText), begin(beginOfLine), number(lineNumber) {}

    std::string_view rest() const { return line.substr(position); }

    void skipBlanks() { take(std::min(rest().find_first_not_of(blanks), rest().size())); }

    /// Advances by \p size bytes.
    SourceRange take(std::size_t size) {
        SourceRange const range{begin + position, begin + position + size, number, column};
        column += countCharacters(line.substr(position, size));
        position += size;
        return range;
    }

  private:
    std::string_view line;
    std::size_t begin;
    std::size_t number;
    std::size_t position = 0;
    std::size_t column = 1;
};

enum class TokenKind {
    Word,
    QuotedText,
    OpeningBrace,
    ClosingBrace,
    Semicolon,
    EndOfLine,
    UnterminatedQuote,
    TextBehindQuote,
};

struct Token {
    TokenKind kind = TokenKind::EndOfLine;
    /// Without quotes.
    std::string_view text;
    /// With quotes.
    SourceRange range;
};

/// Cuts one line of a script into tokens.
class LineLexer {
  public:
    LineLexer(SourceFile const& source, std::size_t lineNumber)
        : cursor(source.line(lineNumber), source.lineBegin(lineNumber), lineNumber),
          lookahead(read()) {}

    Token const& peek() const noexcept { return lookahead; }

    Token take() {
        Token const token = lookahead;
        lookahead = read();
        return token;
    }

  private:
    Token read() {
        cursor.skipBlanks();
        std::string_view const rest = cursor.rest();
        if (rest.empty() || beginsComment(rest)) {
            return make(TokenKind::EndOfLine, 0);
        }
        if (rest.front() == ';') {
            return make(TokenKind::Semicolon, 1);
        }
        return rest.front() == '"' ? readQuotedText(rest) : readWord(rest);
    }

    Token readWord(std::string_view rest) {
        auto const* const end = std::find_if(rest.begin(), rest.end(), endsWord);
        std::string_view const word = rest.substr(0, static_cast<std::size_t>(end - rest.begin()));
        if (word == "{") {
            return make(TokenKind::OpeningBrace, 1);
        }
        return make(word == "}" ? TokenKind::ClosingBrace : TokenKind::Word, word.size());
    }

    Token readQuotedText(std::string_view rest) {
        std::size_t const quote = rest.find('"', 1);
        if (quote == std::string_view::npos) {
            return make(TokenKind::UnterminatedQuote, rest.size());
        }
        if (quote + 1 < rest.size() && !endsWord(rest[quote + 1])) {
            return make(TokenKind::TextBehindQuote, quote + 1);
        }
        Token token = make(TokenKind::QuotedText, quote + 1);
        token.text = rest.substr(1, quote - 1);
        return token;
    }

    Token make(TokenKind kind, std::size_t size) {
        std::string_view const text = cursor.rest().substr(0, size);
        return {kind, text, cursor.take(size)};
    }

    LineCursor cursor;
    Token lookahead;
};

constexpr bool isText(Token const& token) noexcept {
    return token.kind == TokenKind::Word || token.kind == TokenKind::QuotedText;
}

constexpr bool isBadQuote(Token const& token) noexcept {
    return token.kind == TokenKind::UnterminatedQuote || token.kind == TokenKind::TextBehindQuote;
}

constexpr bool endsStatement(Token const& token) noexcept {
    return token.kind == TokenKind::Semicolon || token.kind == TokenKind::EndOfLine ||
           token.kind == TokenKind::ClosingBrace;
}

Word toWord(Token const& token) {
    return {std::string(token.text), token.range};
}

/// Reads the script language. Functions that read a statement, or a part of one, return whether
/// reading can continue on the same line.
class ScriptReader {
  public:
    explicit ScriptReader(SourceFile const& file) : source(file) {}

    Script read() && {
        for (std::size_t number = 1; number <= source.numberOfLines(); ++number) {
            LineLexer line(source, number);
            bool goesOn = true;
            while (goesOn && line.peek().kind != TokenKind::EndOfLine) {
                goesOn = readStatement(line);
            }
        }
        reportUnclosedScopes();
        return std::move(script);
    }

  private:
    struct OpenScope {
        ScopeIndex index = 0;
        /// False suppresses the error about a missing end, since the beginning has already been
        /// reported.
        bool isWellFormed = true;
    };

    bool readStatement(LineLexer& line) {
        Token const first = line.take();
        switch (first.kind) {
        case TokenKind::Semicolon:
            return true;
        case TokenKind::ClosingBrace:
            return closeScope(first);
        case TokenKind::OpeningBrace:
            return report(first.range, "expected 'scope' and a name before '{'");
        case TokenKind::UnterminatedQuote:
        case TokenKind::TextBehindQuote:
            return reportBadQuote(first);
        case TokenKind::Word:
            return readStatement(line, first);
        case TokenKind::QuotedText:
        case TokenKind::EndOfLine:
            break;
        }
        return reportUnknownStatement(first);
    }

    bool readStatement(LineLexer& line, Token const& keyword) {
        if (keyword.text == "import") {
            return readImport(line, keyword.range, false);
        }
        if (keyword.text == "dynamic") {
            return readDynamicImport(line, keyword);
        }
        if (keyword.text == "scope") {
            return readScope(line, keyword);
        }
        if (keyword.text == "use") {
            return readUse(line, keyword);
        }
        return reportUnknownStatement(keyword);
    }

    bool readDynamicImport(LineLexer& line, Token const& dynamic) {
        if (line.peek().kind != TokenKind::Word || line.peek().text != "import") {
            return report(dynamic.range, "expected 'import' after 'dynamic'");
        }
        return readImport(line, join(dynamic.range, line.take().range), true);
    }

    bool readImport(LineLexer& line, SourceRange const& keywords, bool isDynamic) {
        ImportCommand command{currentScope(), isDynamic, {}, keywords};
        while (!endsStatement(line.peek())) {
            Token const token = line.take();
            if (isBadQuote(token)) {
                return reportBadQuote(token);
            }
            command.arguments.push_back(toWord(token));
            command.range = join(command.range, token.range);
        }
        script.statements.emplace_back(std::move(command));
        return true;
    }

    bool readUse(LineLexer& line, Token const& keyword) {
        Token const name = line.peek();
        if (isBadQuote(name)) {
            return reportBadQuote(name);
        }
        if (!isText(name)) {
            return report(keyword.range, "expected a name after 'use'");
        }
        line.take();
        if (!endsStatement(line.peek())) {
            return report(line.peek().range, "expected only one name after 'use'");
        }
        script.statements.emplace_back(UseOfName{currentScope(), toWord(name)});
        return true;
    }

    /// Opens a scope even if its beginning is malformed, so that its '}' does not close another
    /// one.
    bool readScope(LineLexer& line, Token const& keyword) {
        std::size_t const problemsBefore = script.problems.size();
        Token name{TokenKind::Word, {}, keyword.range};
        bool hasBrace = false;
        if (isText(line.peek())) {
            name = line.take();
            hasBrace = removeBrace(name);
        }
        hasBrace = hasBrace || takeOpeningBrace(line);
        if (isBadQuote(line.peek())) {
            reportBadQuote(line.peek());
        } else if (name.text.empty()) {
            report(keyword.range, "expected a name after 'scope'");
        } else if (!hasBrace) {
            report(name.range, "expected '{' after the name of the scope");
        }
        Scope scope{std::string(name.text), currentScope(), join(keyword.range, name.range)};
        openScopes.push_back({script.scopes.size(), script.problems.size() == problemsBefore});
        script.scopes.push_back(std::move(scope));
        return hasBrace;
    }

    /// `name{`, without a blank between, is a name and a brace.
    static bool removeBrace(Token& name) {
        if (name.kind != TokenKind::Word || !name.text.ends_with('{')) {
            return false;
        }
        name.text.remove_suffix(1);
        --name.range.end;
        return true;
    }

    static bool takeOpeningBrace(LineLexer& line) {
        return line.peek().kind == TokenKind::OpeningBrace &&
               line.take().kind == TokenKind::OpeningBrace;
    }

    bool closeScope(Token const& brace) {
        if (openScopes.empty()) {
            report(brace.range, "'}' closes no scope");
        } else {
            openScopes.pop_back();
        }
        return true;
    }

    void reportUnclosedScopes() {
        std::vector<Diagnostic> others = std::exchange(script.problems, {});
        for (OpenScope const& open : openScopes) {
            if (open.isWellFormed) {
                Scope const& scope = script.scopes[open.index];
                report(scope.range, "scope '{1}' is never closed: expected '}'", {scope.name});
            }
        }
        script.problems = mergeInSourceOrder(std::move(script.problems), std::move(others));
    }

    ScopeIndex currentScope() const noexcept {
        return openScopes.empty() ? 0 : openScopes.back().index;
    }

    bool reportUnknownStatement(Token const& token) {
        return report(token.range,
                      "unknown statement '{1}': expected 'import', 'dynamic import', 'scope', "
                      "'use' or '}'",
                      {std::string(token.text)});
    }

    bool reportBadQuote(Token const& token) {
        return report(token.range, token.kind == TokenKind::UnterminatedQuote
                                       ? "quoted text is not closed: expected '\"'"
                                       : "expected a blank after the quoted text");
    }

    /// Returns false, so that the caller can skip the rest of the line.
    bool report(SourceRange const& range, std::string_view words,
                std::vector<std::string> arguments = {}) {
        script.problems.push_back({lf::import::Severity::Error,
                                   {},
                                   words,
                                   std::move(arguments),
                                   range,
                                   {},
                                   {},
                                   {},
                                   Finding::ScriptProblem});
        return false;
    }

    SourceFile const& source;
    Script script;
    std::vector<OpenScope> openScopes;
};

std::string_view withoutComment(std::string_view line) {
    bool isWordStart = true;
    for (std::size_t index = 0; index < line.size(); ++index) {
        if (isWordStart && beginsComment(line.substr(index))) {
            return line.substr(0, index);
        }
        isWordStart = isBlank(line[index]);
    }
    return line;
}

std::string_view withoutTrailingBlanks(std::string_view line) {
    return line.substr(0, line.find_last_not_of(blanks) + 1);
}

std::string_view commandPartOf(std::string_view line) {
    line = withoutTrailingBlanks(withoutComment(line));
    if (line.ends_with(';')) {
        line.remove_suffix(1);
    }
    return withoutTrailingBlanks(line);
}

std::optional<ImportCommand> readCommandLine(SourceFile const& source, std::size_t number) {
    constexpr std::string_view keyword = "import";
    std::string_view const whole = source.line(number);
    std::size_t const start = whole.find_first_not_of(blanks);
    if (start == std::string_view::npos || !whole.substr(start).starts_with(keyword)) {
        return std::nullopt;
    }
    LineCursor cursor(commandPartOf(whole), source.lineBegin(number), number);
    auto const takeWord = [&] {
        cursor.skipBlanks();
        std::size_t const size =
            std::min(cursor.rest().find_first_of(blanks), cursor.rest().size());
        std::string text(cursor.rest().substr(0, size));
        return Word{std::move(text), cursor.take(size)};
    };
    Word const first = takeWord();
    if (first.text != keyword) {
        return std::nullopt;
    }
    ImportCommand command{0, false, {}, first.range};
    while (!cursor.rest().empty()) {
        command.arguments.push_back(takeWord());
        command.range = join(command.range, command.arguments.back().range);
    }
    return command;
}

Script readLines(SourceFile const& source) {
    Script script;
    for (std::size_t number = 1; number <= source.numberOfLines(); ++number) {
        if (std::optional<ImportCommand> command = readCommandLine(source, number)) {
            script.statements.emplace_back(std::move(*command));
        }
    }
    return script;
}

} // namespace

Script readScript(SourceFile const& source, SourceSyntax syntax) {
    return syntax == SourceSyntax::Script ? ScriptReader(source).read() : readLines(source);
}

} // namespace explorer
