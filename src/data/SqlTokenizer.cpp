#include "SqlTokenizer.h"

#include "SqlDialect.h"

namespace tarvin::sql {

namespace {

bool isIdentStart(QChar c) { return c.isLetter() || c == QLatin1Char('_'); }
bool isIdentChar(QChar c) {
    return c.isLetterOrNumber() || c == QLatin1Char('_') || c == QLatin1Char('$') || c == QLatin1Char('#');
}
bool isDigit(QChar c) { return c >= QLatin1Char('0') && c <= QLatin1Char('9'); }

}  // namespace

std::vector<Token> tokenize(const QString& sql, bool strict) {
    std::vector<Token> out;
    const int n = int(sql.size());
    int i = 0;
    auto push = [&](TokenType type, int start, int end, const QString& text) {
        out.push_back(Token{type, text, start, end - start});
    };
    while (i < n) {
        const QChar c = sql[i];
        const int start = i;
        const QChar next = i + 1 < n ? sql[i + 1] : QChar();

        if (c.isSpace()) {
            while (i < n && sql[i].isSpace()) ++i;
            push(TokenType::Space, start, i, sql.mid(start, i - start));
        } else if (c == QLatin1Char('-') && next == QLatin1Char('-')) {
            // The line break belongs to the comment, so that whatever is
            // written after it can never end up inside it.
            while (i < n && sql[i] != QLatin1Char('\n')) ++i;
            if (i < n) ++i;
            QString text = sql.mid(start, i - start);
            if (!text.endsWith(QLatin1Char('\n'))) text += QLatin1Char('\n');
            push(TokenType::Comment, start, i, text);
        } else if (c == QLatin1Char('/') && next == QLatin1Char('*')) {
            const int end = sql.indexOf(QLatin1String("*/"), i + 2);
            if (end < 0) {
                if (strict) throw TranslateError(QStringLiteral("comment"), start, QStringLiteral("the comment is not closed"));
                i = n;
                push(TokenType::Comment, start, i, sql.mid(start) + QStringLiteral("*/"));
            } else {
                i = end + 2;
                push(TokenType::Comment, start, i, sql.mid(start, i - start));
            }
        } else if (c == QLatin1Char('\'') || c == QLatin1Char('"')) {
            ++i;
            bool closed = false;
            while (i < n) {
                if (sql[i] == c) {
                    if (i + 1 < n && sql[i + 1] == c) {
                        i += 2;
                        continue;
                    }
                    ++i;
                    closed = true;
                    break;
                }
                ++i;
            }
            if (!closed && strict) {
                throw TranslateError(c == QLatin1Char('\'') ? QStringLiteral("text") : QStringLiteral("name"), start,
                                     c == QLatin1Char('\'') ? QStringLiteral("the text literal is not closed")
                                                            : QStringLiteral("the quoted name is not closed"));
            }
            push(c == QLatin1Char('\'') ? TokenType::Text : TokenType::QuotedName, start, i, sql.mid(start, i - start));
        } else if (c == QLatin1Char(':') && i + 1 < n && (isIdentChar(next)) && next != QLatin1Char('$') && next != QLatin1Char('#')) {
            i += 1;
            while (i < n && (sql[i].isLetterOrNumber() || sql[i] == QLatin1Char('_'))) ++i;
            push(TokenType::Param, start, i, sql.mid(start + 1, i - start - 1));
        } else if (isIdentStart(c)) {
            while (i < n && isIdentChar(sql[i])) ++i;
            push(TokenType::Word, start, i, sql.mid(start, i - start));
        } else if (isDigit(c) || (c == QLatin1Char('.') && isDigit(next))) {
            while (i < n && isDigit(sql[i])) ++i;
            if (i < n && sql[i] == QLatin1Char('.') && !(i + 1 < n && sql[i + 1] == QLatin1Char('.'))) {
                ++i;
                while (i < n && isDigit(sql[i])) ++i;
            }
            if (i < n && (sql[i] == QLatin1Char('e') || sql[i] == QLatin1Char('E'))) {
                int j = i + 1;
                if (j < n && (sql[j] == QLatin1Char('+') || sql[j] == QLatin1Char('-'))) ++j;
                if (j < n && isDigit(sql[j])) {
                    i = j;
                    while (i < n && isDigit(sql[i])) ++i;
                }
            }
            push(TokenType::Number, start, i, sql.mid(start, i - start));
        } else if (c == QLatin1Char('(')) {
            // Oracle's outer-join mark, blanks allowed inside.
            int j = i + 1;
            while (j < n && sql[j].isSpace()) ++j;
            if (j < n && sql[j] == QLatin1Char('+')) {
                int k = j + 1;
                while (k < n && sql[k].isSpace()) ++k;
                if (k < n && sql[k] == QLatin1Char(')')) {
                    i = k + 1;
                    push(TokenType::OuterJoin, start, i, QStringLiteral("(+)"));
                    continue;
                }
            }
            ++i;
            push(TokenType::Op, start, i, QStringLiteral("("));
        } else {
            static const char* const kTwo[] = {"||", ":=", "<=", ">=", "<>", "!=", "^=", "=>"};
            bool done = false;
            if (i + 1 < n) {
                const QString two = sql.mid(i, 2);
                for (const char* op : kTwo) {
                    if (two == QLatin1String(op)) {
                        i += 2;
                        push(TokenType::Op, start, i, two);
                        done = true;
                        break;
                    }
                }
            }
            if (!done) {
                ++i;
                push(TokenType::Op, start, i, QString(c));
            }
        }
    }
    return out;
}

}  // namespace tarvin::sql
