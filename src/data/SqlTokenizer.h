// Tokens of an Oracle SQL text, as the dialect bridge reads it.
#pragma once

#include <QString>
#include <vector>

namespace tarvin::sql {

enum class TokenType {
    Space,       // blanks, line breaks, U+3000 and other Unicode spaces
    Comment,     // -- to the end of the line (line break included), /* ... */
    Word,        // identifier or keyword
    QuotedName,  // "name" ("" inside)
    Text,        // 'text' ('' inside)
    Number,      // 12, 1.5, .5, 1e3
    Param,       // :name; `text` holds the name as written, without the colon
    OuterJoin,   // (+), spaces inside allowed
    Op           // operators and punctuation: ( ) , ; . || := <= >= <> != ^= ...
};

struct Token {
    TokenType type = TokenType::Op;
    QString text;   // as written (the parameter name for Param)
    int pos = -1;   // character offset in the text; -1 for written-in tokens
    int len = 0;    // characters the token covers in the text

    bool is(TokenType t) const { return type == t; }
    bool isOp(const char* op) const { return type == TokenType::Op && text == QLatin1String(op); }
    // A word compared without regard to case (`kw` upper case).
    bool isWord(const char* kw) const {
        return type == TokenType::Word && text.compare(QLatin1String(kw), Qt::CaseInsensitive) == 0;
    }
    bool significant() const { return type != TokenType::Space && type != TokenType::Comment; }
};

// Splits a text into tokens covering it completely. Strict mode raises
// TranslateError for an unterminated text, quoted name or comment; lenient
// mode lets it run to the end of the text (used where the engine will judge
// the text itself, as Oracle does).
std::vector<Token> tokenize(const QString& sql, bool strict);

}  // namespace tarvin::sql
