#include "SqlRewrite.h"

#include <QSet>
#include <algorithm>
#include <iterator>
#include <memory>
#include <utility>

#include "SqlTokenizer.h"

namespace tarvin::sql::detail {

namespace {

// ---------------------------------------------------------------------------
// The text as a tree: leaves are tokens; parentheses and CASE ... END are
// groups, so that every rewrite sees one nesting level at a time. Rewrites
// build new groups ("Built") whose opening and closing are written-in text.

struct Node;
using Seq = std::vector<Node>;

struct Node {
    enum Kind { Leaf, Paren, Case, Built };
    Kind kind = Leaf;
    Token tok;    // the leaf, or the opening of a group
    Token close;  // the closing of a group
    // The contents of a group, shared: rewrites make new contents and never
    // change these, so a node copies cheaply.
    std::shared_ptr<const Seq> body;

    const Seq& kids() const;
    void setKids(Seq k) { body = std::make_shared<const Seq>(std::move(k)); }
    bool sig() const { return kind != Leaf || tok.significant(); }
    bool isWord(const char* w) const { return kind == Leaf && tok.isWord(w); }
    bool isOp(const char* o) const { return kind == Leaf && tok.isOp(o); }
    bool isType(TokenType t) const { return kind == Leaf && tok.type == t; }
    bool isName() const { return isType(TokenType::Word) || isType(TokenType::QuotedName); }
    int pos() const { return tok.pos; }
};

const Seq& Node::kids() const {
    static const Seq none;
    return body ? *body : none;
}

Node leafOf(TokenType type, const QString& text, int pos = -1) {
    Node n;
    n.tok = Token{type, text, pos, 0};
    return n;
}
Node raw(const QString& text, int pos = -1) { return leafOf(TokenType::Op, text, pos); }
Node built(const QString& open, Seq kids, const QString& close, int pos = -1) {
    Node n;
    n.kind = Node::Built;
    n.tok = Token{TokenType::Op, open, pos, 0};
    n.close = Token{TokenType::Op, close, -1, 0};
    n.setKids(std::move(kids));
    return n;
}
// A group's opening and closing without its contents (which the caller
// replaces), so that rewriting never copies a subtree only to drop it.
Node shell(const Node& n) {
    Node g;
    g.kind = n.kind;
    g.tok = n.tok;
    g.close = n.close;
    return g;
}
void append(Seq& to, const Seq& from) { to.insert(to.end(), from.begin(), from.end()); }
Seq slice(const Seq& s, int from, int to) {
    from = std::clamp(from, 0, int(s.size()));
    to = std::clamp(to, from, int(s.size()));
    return Seq(s.begin() + from, s.begin() + to);
}

int nextSig(const Seq& s, int i) {
    for (int j = i + 1; j < int(s.size()); ++j)
        if (s[j].sig()) return j;
    return -1;
}
int prevSig(const Seq& s, int i) {
    for (int j = i - 1; j >= 0; --j)
        if (s[j].sig()) return j;
    return -1;
}
int firstSig(const Seq& s) { return nextSig(s, -1); }
int lastSig(const Seq& s) { return prevSig(s, int(s.size())); }
std::vector<int> sigIndexes(const Seq& s) {
    std::vector<int> out;
    for (int i = 0; i < int(s.size()); ++i)
        if (s[i].sig()) out.push_back(i);
    return out;
}

// A part of a list with the blanks around it kept apart.
struct Trim {
    Seq lead, core, trail;
};
Trim trim(const Seq& s) {
    Trim t;
    const int f = firstSig(s);
    if (f < 0) {
        t.lead = s;
        return t;
    }
    const int l = lastSig(s);
    t.lead = slice(s, 0, f);
    t.core = slice(s, f, l + 1);
    t.trail = slice(s, l + 1, int(s.size()));
    return t;
}

// Splits at the top-level leaves for which `isSep` holds; `seps` receives
// the separators.
template <typename Pred>
std::vector<Seq> splitTop(const Seq& s, Pred isSep, Seq* seps = nullptr) {
    std::vector<Seq> parts(1);
    for (const Node& n : s) {
        if (n.kind == Node::Leaf && isSep(n)) {
            if (seps) seps->push_back(n);
            parts.emplace_back();
        } else {
            parts.back().push_back(n);
        }
    }
    return parts;
}
std::vector<Seq> splitCommas(const Seq& s, Seq* seps = nullptr) {
    return splitTop(s, [](const Node& n) { return n.isOp(","); }, seps);
}

QString nameOf(const Node& n) {
    if (n.isType(TokenType::QuotedName)) return n.tok.text.mid(1, n.tok.text.size() - 2).replace(QStringLiteral("\"\""), QStringLiteral("\""));
    return n.tok.text.toUpper();
}

bool isKeyword(const Node& n) {
    static const QSet<QString> kw = {
        QStringLiteral("SELECT"), QStringLiteral("FROM"), QStringLiteral("WHERE"), QStringLiteral("AND"),
        QStringLiteral("OR"), QStringLiteral("NOT"), QStringLiteral("IS"), QStringLiteral("IN"),
        QStringLiteral("LIKE"), QStringLiteral("BETWEEN"), QStringLiteral("ESCAPE"), QStringLiteral("AS"),
        QStringLiteral("DISTINCT"), QStringLiteral("UNIQUE"), QStringLiteral("ALL"), QStringLiteral("ANY"),
        QStringLiteral("SOME"), QStringLiteral("EXISTS"), QStringLiteral("THEN"), QStringLiteral("ELSE"),
        QStringLiteral("WHEN"), QStringLiteral("END"), QStringLiteral("ON"), QStringLiteral("JOIN"),
        QStringLiteral("LEFT"), QStringLiteral("RIGHT"), QStringLiteral("INNER"), QStringLiteral("OUTER"),
        QStringLiteral("FULL"), QStringLiteral("CROSS"), QStringLiteral("GROUP"), QStringLiteral("BY"),
        QStringLiteral("ORDER"), QStringLiteral("HAVING"), QStringLiteral("UNION"), QStringLiteral("INTERSECT"),
        QStringLiteral("MINUS"), QStringLiteral("EXCEPT"), QStringLiteral("ASC"), QStringLiteral("DESC"),
        QStringLiteral("NULLS"), QStringLiteral("PRIOR"), QStringLiteral("SET"), QStringLiteral("VALUES"),
        QStringLiteral("INTO"), QStringLiteral("UPDATE"), QStringLiteral("DELETE"), QStringLiteral("INSERT"),
        QStringLiteral("WITH"), QStringLiteral("FOR"), QStringLiteral("CONNECT"), QStringLiteral("START"),
        QStringLiteral("USING")};
    return n.isType(TokenType::Word) && kw.contains(n.tok.text.toUpper());
}
bool isSetOp(const Node& n) {
    return n.isWord("UNION") || n.isWord("INTERSECT") || n.isWord("MINUS") || n.isWord("EXCEPT");
}

// A text that is a query: SELECT or WITH first, or a parenthesised query
// that stands alone or opens a compound select.
bool isQuery(const Seq& s) {
    const int f = firstSig(s);
    if (f < 0) return false;
    if (s[f].isWord("SELECT") || s[f].isWord("WITH")) return true;
    if (s[f].kind == Node::Paren && isQuery(s[f].kids())) {
        const int g = nextSig(s, f);
        return g < 0 || isSetOp(s[g]);
    }
    return false;
}
bool isSubquery(const Node& n) { return n.kind == Node::Paren && isQuery(n.kids()); }

// PostgreSQL runs a correlated count once per row and cannot estimate it. A
// WHERE condition on a customer's count of supply sources,
//   (SELECT COUNT(1) FROM Y_GDDY WHERE HH=A.HH)>'1'
// (COUNT(*) too, the sides of either = swapped), that a count of 0 fails
// reads the counts kept in y_gddyhz instead (db/postgres/26_supply_counts.sql;
// a customer without a source has no row there):
//   A.HH IN (SELECT hh FROM y_gddyhz WHERE dys>'1')
// whose statistics show the planner how few customers pass. `items` are the
// FROM items the count may name; gives nothing when the condition is another.
Seq sourceCountCondition(const Seq& s, const QSet<QString>& items) {
    const std::vector<int> sg = sigIndexes(s);
    if (sg.size() != 3 || s[sg[1]].kind != Node::Leaf) return {};
    // The count's body: SELECT COUNT ( 1 ) FROM Y_GDDY WHERE HH = q . HH
    auto correlated = [](const Node& n) -> Seq {
        const Seq& b = n.kids();
        const std::vector<int> k = sigIndexes(b);
        if (n.kind != Node::Paren || k.size() != 11) return {};
        auto at = [&](int i) -> const Node& { return b[k[i]]; };
        auto is = [&](int i, const char* name) { return at(i).isName() && nameOf(at(i)) == QLatin1String(name); };
        const std::vector<int> arg = sigIndexes(at(2).kids());
        const Node* one = at(2).kind == Node::Paren && arg.size() == 1 ? &at(2).kids()[arg[0]] : nullptr;
        const bool counted = one && (one->isOp("*") || (one->isType(TokenType::Number) && one->tok.text == QLatin1String("1")));
        if (!at(0).isWord("SELECT") || !is(1, "COUNT") || !counted || !at(3).isWord("FROM") || !is(4, "Y_GDDY") || !at(5).isWord("WHERE"))
            return {};
        const int q = is(6, "HH") && at(7).isOp("=") ? 8 : at(9).isOp("=") && is(10, "HH") ? 6 : -1;
        if (q < 0 || !at(q).isName() || is(q, "Y_GDDY") || !at(q + 1).isOp(".") || !is(q + 2, "HH")) return {};
        return slice(b, k[q], k[q + 2] + 1);
    };
    const int at = !correlated(s[sg[0]]).empty() ? 0 : !correlated(s[sg[2]]).empty() ? 2 : -1;
    if (at < 0) return {};
    const Seq hh = correlated(s[sg[at]]);
    if (!items.contains(nameOf(hh.front()))) return {};
    const Node& lit = s[sg[2 - at]];
    if (!lit.isType(TokenType::Number) && !lit.isType(TokenType::Text)) return {};
    bool ok = false;
    const double v = (lit.isType(TokenType::Text) ? lit.tok.text.mid(1, lit.tok.text.size() - 2) : lit.tok.text).toDouble(&ok);
    if (!ok) return {};
    const double l = at == 0 ? 0 : v, r = at == 0 ? v : 0;
    const Node& op = s[sg[1]];
    const bool zeroPasses = op.isOp("=")                                        ? l == r
                            : op.isOp("<>") || op.isOp("!=") || op.isOp("^=")   ? l != r
                            : op.isOp(">")                                      ? l > r
                            : op.isOp(">=")                                     ? l >= r
                            : op.isOp("<")                                      ? l < r
                            : op.isOp("<=")                                     ? l <= r
                                                                                : true;
    if (zeroPasses) return {};
    Seq out = hh;
    Seq cond{raw(QStringLiteral("SELECT hh FROM y_gddyhz WHERE "))};
    for (int i = 0; i < 3; ++i)
        cond.push_back(i == at ? raw(QStringLiteral("dys")) : s[sg[i]].isOp("^=") ? raw(QStringLiteral("<>")) : s[sg[i]]);
    out.push_back(raw(QStringLiteral(" IN ")));
    out.push_back(built(QStringLiteral("("), cond, QStringLiteral(")"), s[sg[0]].pos()));
    return out;
}
// Groups that belong to the expression at hand (not a nested query).
bool isExprGroup(const Node& n) { return n.kind != Node::Leaf && !isSubquery(n); }

// The column heading Oracle gives an expression without alias: its text in
// upper case without blanks (literals kept as written).
void oracleHeading(const Seq& s, QString& out) {
    for (const Node& n : s) {
        if (n.kind == Node::Leaf) {
            switch (n.tok.type) {
            case TokenType::Space:
            case TokenType::Comment: break;
            case TokenType::Text:
            case TokenType::QuotedName: out += n.tok.text; break;
            case TokenType::Param: out += QLatin1Char(':') + n.tok.text.toUpper(); break;
            default: out += n.tok.text.toUpper();
            }
        } else {
            out += n.tok.text.trimmed().toUpper();
            oracleHeading(n.kids(), out);
            out += n.close.text.trimmed().toUpper();
        }
    }
}

bool hasAlias(const Seq& core) {
    const int l = lastSig(core);
    const int p = prevSig(core, l);
    if (l < 0 || p < 0) return false;
    const Node& last = core[l];
    if (!(last.isType(TokenType::QuotedName) || (last.isType(TokenType::Word) && !isKeyword(last) && !last.isWord("NULL"))))
        return false;
    const Node& prev = core[p];
    if (prev.isWord("AS")) return true;
    if (prev.kind != Node::Leaf) return true;
    switch (prev.tok.type) {
    case TokenType::Number:
    case TokenType::Text:
    case TokenType::Param:
    case TokenType::QuotedName: return true;
    case TokenType::Word: return !isKeyword(prev);
    default: return false;
    }
}

// A column (or all columns) as the select list names it: name[.name],
// name.*, *.
bool isColumn(const Seq& core) {
    const std::vector<int> sg = sigIndexes(core);
    if (sg.size() == 1 && core[sg[0]].isOp("*")) return true;
    for (size_t k = 0; k < sg.size(); ++k) {
        const Node& n = core[sg[k]];
        const bool pseudo = sg.size() == 1 && (n.isWord("SYSDATE") || n.isWord("ROWNUM") || n.isWord("NULL") || n.isWord("USER"));
        const bool ok = k % 2 == 1 ? n.isOp(".") : (n.isName() && !isKeyword(n) && !pseudo) || (k > 0 && k + 1 == sg.size() && n.isOp("*"));
        if (!ok) return false;
    }
    return !sg.empty() && sg.size() % 2 == 1;
}

// Leaves anywhere in the expression (not inside nested queries).
template <typename F>
void visitExpr(const Seq& s, F&& f) {
    for (int i = 0; i < int(s.size()); ++i) {
        if (isExprGroup(s[i]))
            visitExpr(s[i].kids(), f);
        else if (s[i].kind == Node::Leaf)
            f(s, i);
    }
}
bool containsWord(const Seq& s, const char* w) {
    bool found = false;
    visitExpr(s, [&](const Seq& seq, int i) { found = found || seq[i].isWord(w); });
    return found;
}
// Table names or aliases that qualify a column (`a` of `a.hh`).
QSet<QString> qualifiers(const Seq& s) {
    QSet<QString> out;
    visitExpr(s, [&](const Seq& seq, int i) {
        if (!seq[i].isName()) return;
        const int d = nextSig(seq, i);
        if (d < 0 || !seq[d].isOp(".")) return;
        const int p = prevSig(seq, i);
        if (p >= 0 && seq[p].isOp(".")) return;
        out.insert(nameOf(seq[i]));
    });
    return out;
}
Seq withoutMarks(const Seq& s) {
    Seq out;
    for (const Node& n : s) {
        if (n.isType(TokenType::OuterJoin)) continue;
        if (isExprGroup(n)) {
            Node g = shell(n);
            g.setKids(withoutMarks(n.kids()));
            out.push_back(std::move(g));
        } else {
            out.push_back(n);
        }
    }
    return out;
}

// ---------------------------------------------------------------------------

Seq buildTree(const std::vector<Token>& toks) {
    Seq top;
    std::vector<std::pair<Node, Seq>> open;  // groups not yet closed, with their contents so far
    auto current = [&]() -> Seq& { return open.empty() ? top : open.back().second; };
    for (const Token& t : toks) {
        if (t.isOp("(") || t.isWord("CASE")) {
            Node g;
            g.kind = t.isOp("(") ? Node::Paren : Node::Case;
            g.tok = t;
            open.emplace_back(std::move(g), Seq{});
            continue;
        }
        const bool closesCase = t.isWord("END") && !open.empty() && open.back().first.kind == Node::Case;
        if (t.isOp(")") || closesCase) {
            if (open.empty()) throw TranslateError(QStringLiteral(")"), t.pos, QStringLiteral("a closing parenthesis without an opening one"));
            if (t.isOp(")") && open.back().first.kind == Node::Case)
                throw TranslateError(QStringLiteral("case"), open.back().first.tok.pos, QStringLiteral("CASE without END"));
            Node g = std::move(open.back().first);
            g.setKids(std::move(open.back().second));
            open.pop_back();
            g.close = t;
            current().push_back(std::move(g));
            continue;
        }
        Node leaf;
        leaf.tok = t;
        current().push_back(std::move(leaf));
    }
    if (!open.empty()) {
        const Node& g = open.back().first;
        if (g.kind == Node::Case) throw TranslateError(QStringLiteral("case"), g.tok.pos, QStringLiteral("CASE without END"));
        throw TranslateError(QStringLiteral("("), g.tok.pos, QStringLiteral("the parenthesis is not closed"));
    }
    return top;
}

// Writes the tree: the pieces between parameter places, and the parameters.
struct Writer {
    bool engine = true;  // blanks written as plain spaces
    QStringList pieces;
    QStringList params;
    QString cur;

    void write(const Seq& s) {
        for (const Node& n : s) write(n);
    }
    void write(const Node& n) {
        if (n.kind != Node::Leaf) {
            cur += n.tok.text;
            write(n.kids());
            cur += n.close.text;
            return;
        }
        const Token& t = n.tok;
        if (t.type == TokenType::Param) {
            pieces << cur;
            cur.clear();
            params << t.text.toUpper();
        } else if (t.type == TokenType::Space && engine) {
            for (QChar c : t.text) cur += c.unicode() < 128 ? c : QLatin1Char(' ');
        } else {
            cur += t.text;
        }
    }
    void finish(Translated& t) {
        pieces << cur;
        t.pieces = pieces;
        t.params = params;
    }
};

// ---------------------------------------------------------------------------

// An aggregate called at the expression's own level (not a window function,
// not inside a nested query).
bool hasAggregate(const Seq& s) {
    static const char* const names[] = {"COUNT", "SUM", "AVG", "MIN", "MAX", "STDDEV", "VARIANCE", "MEDIAN",
                                        "LISTAGG", "WM_CONCAT", "STRING_AGG", "ARRAY_AGG", "BOOL_AND", "BOOL_OR", "EVERY"};
    bool found = false;
    visitExpr(s, [&](const Seq& seq, int i) {
        const int g = nextSig(seq, i);
        if (found || g < 0 || seq[g].kind != Node::Paren) return;
        const int over = nextSig(seq, g);
        if (over >= 0 && seq[over].isWord("OVER")) return;
        found = std::any_of(std::begin(names), std::end(names), [&](const char* n) { return seq[i].isWord(n); });
    });
    return found;
}

class Rewriter {
public:
    explicit Rewriter(Dialect d) : d_(d) {}

    Seq statement(const Seq& s, Translated::Kind& kind, QStringList& outputs);

private:
    // `named`: the select list names columns that are read by name (the
    // statement's own, a derived table's), not a subquery's value.
    Seq query(const Seq& s, bool allowLimit, bool named);
    Seq member(const Seq& s, bool allowLimit, bool inCompound, bool named);
    Seq select(const Seq& s, bool allowLimit, bool named);
    Node subquery(const Node& n, bool named);
    Seq expr(const Seq& s);
    Node paren(const Node& n);
    int function(const Seq& in, int i, int g, Seq& out);
    int sysdate(const Seq& in, int i, Seq& out);
    Seq wrapAggregates(const Seq& s);
    Seq concatenations(const Seq& s);
    Seq block(const Seq& s, QStringList& outputs);
    Seq update(const Seq& s);
    Seq remove(const Seq& s);
    Seq insert(const Seq& s);

    QString textType() const { return d_ == Dialect::PostgreSQL ? QStringLiteral("VARCHAR") : QStringLiteral("TEXT"); }

    Dialect d_;
    int derivedAliases_ = 0;
    // PostgreSQL: where the select list being rewritten may take a call of
    // jc_pjdlbd from the month figures, the joins those calls add to its
    // FROM; null elsewhere (other clauses, nested selects).
    std::vector<Seq>* swingJoins_ = nullptr;
    int swingAliases_ = 0;
};

// ---------------------------------------------------------------- queries

Seq Rewriter::query(const Seq& s, bool allowLimit, bool named) {
    const int f = firstSig(s);
    if (f >= 0 && s[f].isWord("WITH")) {
        Seq out = slice(s, 0, f + 1);
        int i = f + 1;
        for (; i < int(s.size()); ++i) {
            if (s[i].isWord("SELECT")) break;
            out.push_back(isSubquery(s[i]) ? subquery(s[i], true) : s[i]);
        }
        append(out, query(slice(s, i, int(s.size())), allowLimit, named));
        return out;
    }

    std::vector<Seq> members(1);
    std::vector<Seq> ops;
    for (int i = 0; i < int(s.size()); ++i) {
        const Node& n = s[i];
        if (!isSetOp(n)) {
            members.back().push_back(n);
            continue;
        }
        Seq op;
        op.push_back(n.isWord("MINUS") ? leafOf(TokenType::Word, QStringLiteral("EXCEPT"), n.pos()) : n);
        const int j = nextSig(s, i);
        if (j >= 0 && s[j].isWord("ALL")) {
            append(op, slice(s, i + 1, j + 1));
            i = j;
        }
        ops.push_back(std::move(op));
        members.emplace_back();
    }
    if (members.size() == 1) return member(s, allowLimit, false, named);
    Seq out;
    for (size_t k = 0; k < members.size(); ++k) {
        if (k > 0) append(out, ops[k - 1]);
        append(out, member(members[k], false, true, named));
    }
    return out;
}

Seq Rewriter::member(const Seq& s, bool allowLimit, bool inCompound, bool named) {
    const int f = firstSig(s);
    if (f < 0) return s;
    if (isSubquery(s[f])) {
        Seq out = slice(s, 0, f);
        const Seq rest = expr(slice(s, f + 1, int(s.size())));
        if (inCompound && d_ == Dialect::SQLite) {
            // SQLite takes no parentheses around the members of a compound.
            const Seq inner = query(s[f].kids(), false, named);
            for (const Node& n : inner)
                if (n.isWord("ORDER"))
                    throw TranslateError(QStringLiteral("union"), n.pos(), QStringLiteral("ORDER BY inside a member of a compound select"));
            append(out, inner);
        } else {
            out.push_back(subquery(s[f], named));
        }
        append(out, rest);
        return out;
    }
    if (s[f].isWord("SELECT")) return select(s, allowLimit, named);
    return expr(s);
}

namespace clause {
enum Key { None, Select, From, Where, GroupBy, Having, OrderBy, ConnectBy, StartWith, ForUpdate };
}

Seq Rewriter::select(const Seq& s, bool allowLimit, bool named) {
    // A nested select collects its own figures joins; the outer one's
    // collection resumes when this one is written.
    struct Resume {
        std::vector<Seq>*& at;
        std::vector<Seq>* const was;
        ~Resume() { at = was; }
    } resume{swingJoins_, std::exchange(swingJoins_, nullptr)};
    struct Clause {
        clause::Key key = clause::None;
        Seq head;
        Seq body;
    };
    const int f = firstSig(s);
    Seq prefix = slice(s, 0, f);
    std::vector<Clause> clauses;
    for (int i = f; i < int(s.size()); ++i) {
        const Node& n = s[i];
        clause::Key key = clause::None;
        int headEnd = i;
        auto followedBy = [&](const char* w) {
            const int j = nextSig(s, i);
            if (j >= 0 && s[j].isWord(w)) {
                headEnd = j;
                return true;
            }
            return false;
        };
        if (i == f) key = clause::Select;
        else if (n.isWord("FROM")) key = clause::From;
        else if (n.isWord("WHERE")) key = clause::Where;
        else if (n.isWord("HAVING")) key = clause::Having;
        else if (n.isWord("GROUP") && followedBy("BY")) key = clause::GroupBy;
        else if (n.isWord("ORDER") && followedBy("BY")) key = clause::OrderBy;
        else if (n.isWord("CONNECT") && followedBy("BY")) key = clause::ConnectBy;
        else if (n.isWord("START") && followedBy("WITH")) key = clause::StartWith;
        else if (n.isWord("FOR") && followedBy("UPDATE")) key = clause::ForUpdate;
        if (key == clause::None) {
            clauses.back().body.push_back(n);
            continue;
        }
        if (key == clause::ConnectBy || key == clause::StartWith)
            throw TranslateError(QStringLiteral("connect by"), n.pos(), QStringLiteral("hierarchical queries are not translated"));
        if (key == clause::ForUpdate && d_ == Dialect::SQLite)
            throw TranslateError(QStringLiteral("for update"), n.pos(), QStringLiteral("SQLite has no row locks"));
        clauses.push_back(Clause{key, slice(s, i, headEnd + 1), {}});
        i = headEnd;
    }
    auto find = [&](clause::Key k) -> Clause* {
        for (Clause& c : clauses)
            if (c.key == k) return &c;
        return nullptr;
    };
    Clause* sel = find(clause::Select);
    Clause* from = find(clause::From);
    Clause* where = find(clause::Where);

    // FROM items.
    struct Item {
        Trim part;
        QString name;  // alias, or the table's own name
        bool derived = false;
        bool complex = false;  // ANSI joins or anything else
        bool marked = false;
        bool rejected = false;  // a WHERE condition drops its missing rows
        std::vector<Seq> conds;
        QSet<int> deps;
        int markPos = -1;
    };
    std::vector<Item> items;
    Seq fromCommas;
    if (from) {
        for (const Seq& part : splitCommas(from->body, &fromCommas)) {
            Item it;
            it.part = trim(part);
            const Seq& c = it.part.core;
            const std::vector<int> sg = sigIndexes(c);
            size_t k = 0;
            if (!sg.empty() && isSubquery(c[sg[0]])) {
                it.derived = true;
                k = 1;
            } else if (!sg.empty() && c[sg[0]].isName()) {
                it.name = nameOf(c[sg[0]]);
                k = 1;
                while (k + 1 < sg.size() && c[sg[k]].isOp(".") && c[sg[k + 1]].isName()) {
                    it.name = nameOf(c[sg[k + 1]]);
                    k += 2;
                }
            } else {
                it.complex = true;
            }
            if (!it.complex && k < sg.size() && c[sg[k]].isWord("AS")) ++k;
            if (!it.complex && k < sg.size() && c[sg[k]].isName() && !isKeyword(c[sg[k]])) {
                it.name = nameOf(c[sg[k]]);
                ++k;
            }
            if (k < sg.size()) it.complex = true;
            items.push_back(std::move(it));
        }
    }
    auto itemNamed = [&](const QString& name) {
        for (int k = 0; k < int(items.size()); ++k)
            if (!items[k].name.isEmpty() && items[k].name == name) return k;
        return -1;
    };

    // WHERE conjuncts, split at the top-level AND (not the AND of BETWEEN).
    struct Conj {
        Seq sep;  // blanks and the AND before the conjunct
        Seq core;
        bool removed = false;
    };
    auto splitAnd = [](const Seq& body, Seq& trail) {
        std::vector<Seq> parts(1);
        Seq ands;
        bool between = false;
        for (const Node& n : body) {
            if (n.isWord("BETWEEN")) between = true;
            if (n.isWord("AND")) {
                if (between) {
                    between = false;
                } else {
                    ands.push_back(n);
                    parts.emplace_back();
                    continue;
                }
            }
            parts.back().push_back(n);
        }
        std::vector<Conj> out;
        Seq pendingSep;
        for (size_t k = 0; k < parts.size(); ++k) {
            Trim t = trim(parts[k]);
            Conj c;
            c.sep = pendingSep;
            append(c.sep, t.lead);
            c.core = t.core;
            out.push_back(std::move(c));
            pendingSep = t.trail;
            if (k < ands.size()) pendingSep.push_back(ands[k]);
        }
        trail = pendingSep;
        return out;
    };
    std::vector<Conj> conjs;
    Seq whereTrail;
    if (where) {
        std::vector<Conj> raw = splitAnd(where->body, whereTrail);
        // A parenthesised list of conditions with outer-join marks is
        // opened up, so that each condition finds its place.
        for (Conj& c : raw) {
            const std::vector<int> sg = sigIndexes(c.core);
            bool hasMark = false;
            visitExpr(c.core, [&](const Seq& seq, int i) { hasMark = hasMark || seq[i].isType(TokenType::OuterJoin); });
            if (hasMark && sg.size() == 1 && c.core[sg[0]].kind == Node::Paren && !isSubquery(c.core[sg[0]])) {
                const Seq& inner = c.core[sg[0]].kids();
                bool topOr = false;
                for (const Node& n : inner) topOr = topOr || n.isWord("OR");
                if (!topOr) {
                    Seq innerTrail;
                    std::vector<Conj> sub = splitAnd(inner, innerTrail);
                    Seq sep = c.sep;
                    append(sep, sub[0].sep);
                    sub[0].sep = sep;
                    for (Conj& x : sub) conjs.push_back(std::move(x));
                    continue;
                }
            }
            conjs.push_back(std::move(c));
        }
    }

    // rownum and (+) conditions.
    int limit = -1;
    int rownumPos = -1;
    int firstMarkPos = -1;
    for (Conj& c : conjs) {
        const std::vector<int> sg = sigIndexes(c.core);
        if (sg.size() == 3 && c.core[sg[0]].isWord("ROWNUM")) {
            const Node& op = c.core[sg[1]];
            const Node& num = c.core[sg[2]];
            bool ok = false;
            const int n = num.isType(TokenType::Number) ? num.tok.text.toInt(&ok) : 0;
            if (ok && (op.isOp("=") || op.isOp("<=") || op.isOp("<"))) {
                const int lim = op.isOp("=") ? (n == 1 ? 1 : 0) : op.isOp("<=") ? std::max(n, 0) : std::max(n - 1, 0);
                limit = limit < 0 ? lim : std::min(limit, lim);
                rownumPos = c.core[sg[0]].pos();
                c.removed = true;
                continue;
            }
        }
        struct Mark {
            int pos;
            QString table;
            bool column;
        };
        std::vector<Mark> marks;
        visitExpr(c.core, [&](const Seq& seq, int i) {
            if (!seq[i].isType(TokenType::OuterJoin)) return;
            Mark m{seq[i].pos(), QString(), false};
            const int col = prevSig(seq, i);
            if (col >= 0 && seq[col].isName()) {
                m.column = true;
                const int dot = prevSig(seq, col);
                const int q = dot >= 0 && seq[dot].isOp(".") ? prevSig(seq, dot) : -1;
                if (q >= 0 && seq[q].isName()) m.table = nameOf(seq[q]);
            }
            marks.push_back(m);
        });
        if (marks.empty()) continue;
        if (firstMarkPos < 0) firstMarkPos = marks.front().pos;
        if (containsWord(c.core, "OR"))
            throw TranslateError(QStringLiteral("(+)"), marks.front().pos, QStringLiteral("an outer-join mark inside OR"));
        int target = -1;
        for (const Mark& m : marks) {
            if (!m.column) throw TranslateError(QStringLiteral("(+)"), m.pos, QStringLiteral("the outer-join mark does not follow a column"));
            if (m.table.isEmpty())
                throw TranslateError(QStringLiteral("(+)"), m.pos, QStringLiteral("the marked column does not name its table"));
            const int k = itemNamed(m.table);
            if (k < 0 || items[k].complex)
                throw TranslateError(QStringLiteral("(+)"), m.pos, QStringLiteral("the marked table %1 is not a plain item of the FROM list").arg(m.table));
            if (target >= 0 && target != k)
                throw TranslateError(QStringLiteral("(+)"), m.pos, QStringLiteral("outer-join marks on two tables in one condition"));
            target = k;
        }
        Item& it = items[target];
        it.marked = true;
        if (it.markPos < 0) it.markPos = marks.front().pos;
        it.conds.push_back(withoutMarks(c.core));
        for (const QString& q : qualifiers(c.core)) {
            const int k = itemNamed(q);
            if (k >= 0 && k != target) it.deps.insert(k);
        }
        c.removed = true;
    }
    if (firstMarkPos >= 0 && (!from || std::any_of(items.begin(), items.end(), [](const Item& it) { return it.complex; })))
        throw TranslateError(QStringLiteral("(+)"), firstMarkPos, QStringLiteral("outer-join marks beside explicit joins"));
    for (const Item& it : items)
        if (it.marked && it.deps.isEmpty())
            throw TranslateError(QStringLiteral("(+)"), it.markPos, QStringLiteral("the outer-joined table %1 has no join condition with another table").arg(it.name));
    // An outer-joined table that a WHERE comparison constrains loses its
    // missing rows there anyway (a comparison with NULL is never true), so
    // it is joined inner, as Oracle plans it: PostgreSQL then estimates
    // the condition from its statistics instead of guessing it on the
    // optional side of an outer join.
    for (const Conj& c : conjs) {
        if (c.removed) continue;
        const std::vector<int> sg = sigIndexes(c.core);
        if (sg.size() < 5 || !c.core[sg[0]].isName() || !c.core[sg[1]].isOp(".") || !c.core[sg[2]].isName()) continue;
        const Node& op = c.core[sg[3]];
        if (!(op.isOp("=") || op.isOp("<") || op.isOp(">") || op.isOp("<=") || op.isOp(">=") || op.isOp("<>") || op.isOp("!=")))
            continue;
        bool plain = true;
        for (size_t k = 4; k < sg.size(); ++k) {
            const Node& n = c.core[sg[k]];
            plain = plain && n.kind != Node::Paren && !n.isWord("NULL") && !n.isWord("IS") && !n.isWord("OR") &&
                    !n.isWord("NVL") && !n.isWord("COALESCE") && !n.isWord("DECODE") && !n.isWord("CASE");
        }
        const int k = itemNamed(nameOf(c.core[sg[0]]));
        if (plain && k >= 0 && items[k].marked) items[k].rejected = true;
    }

    const Seq* selectBody = sel ? &sel->body : nullptr;
    if (limit >= 0) {
        if (!allowLimit)
            throw TranslateError(QStringLiteral("rownum"), rownumPos, QStringLiteral("rownum in a member of a compound select"));
        if (find(clause::GroupBy) || find(clause::Having))
            throw TranslateError(QStringLiteral("rownum"), rownumPos, QStringLiteral("rownum together with GROUP BY"));
        if (selectBody) {
            const int d = firstSig(*selectBody);
            if (limit > 1 && d >= 0 && ((*selectBody)[d].isWord("DISTINCT") || (*selectBody)[d].isWord("UNIQUE")))
                throw TranslateError(QStringLiteral("rownum"), rownumPos, QStringLiteral("rownum together with DISTINCT"));
            const Seq& b = *selectBody;
            for (int i = 0; i < int(b.size()); ++i) {
                static const char* const aggs[] = {"COUNT", "SUM", "AVG", "MIN", "MAX"};
                const int g = nextSig(b, i);
                if (g < 0 || b[g].kind != Node::Paren) continue;
                for (const char* a : aggs)
                    if (b[i].isWord(a))
                        throw TranslateError(QStringLiteral("rownum"), rownumPos, QStringLiteral("rownum together with an aggregate"));
            }
        }
    }

    // Rewritten FROM.
    Seq fromOut;
    std::vector<Seq> cores;
    const bool anyMarked = std::any_of(items.begin(), items.end(), [](const Item& it) { return it.marked; });
    if (from) {
        for (Item& it : items) {
            Seq c = it.part.core;
            if (it.derived) {
                const int g = firstSig(c);
                c[g] = subquery(c[g], true);
                if (d_ == Dialect::PostgreSQL && it.name.isEmpty()) {
                    // PostgreSQL wants a name for every derived table.
                    c.push_back(raw(QStringLiteral(" ")));
                    c.push_back(leafOf(TokenType::Word, QStringLiteral("tarvin_d%1").arg(++derivedAliases_)));
                }
            } else if (it.complex) {
                c = expr(c);
            }
            cores.push_back(std::move(c));
        }
        if (!anyMarked) {
            for (size_t k = 0; k < items.size(); ++k) {
                if (k > 0) fromOut.push_back(fromCommas[k - 1]);
                append(fromOut, items[k].part.lead);
                append(fromOut, cores[k]);
                append(fromOut, items[k].part.trail);
            }
        } else {
            // An outer-joined table comes after every table its conditions
            // name; the others keep their order.
            std::vector<int> order;
            QSet<int> placed;
            std::vector<int> waiting;
            auto ready = [&](int k) {
                for (int dep : items[k].deps)
                    if (!placed.contains(dep)) return false;
                return true;
            };
            auto place = [&](int k) {
                order.push_back(k);
                placed.insert(k);
                for (bool again = true; again;) {
                    again = false;
                    for (auto w = waiting.begin(); w != waiting.end(); ++w) {
                        if (ready(*w)) {
                            const int x = *w;
                            waiting.erase(w);
                            order.push_back(x);
                            placed.insert(x);
                            again = true;
                            break;
                        }
                    }
                }
            };
            for (int k = 0; k < int(items.size()); ++k) {
                if (!items[k].marked || (!order.empty() && ready(k)))
                    place(k);
                else
                    waiting.push_back(k);
            }
            if (!waiting.empty() || order.empty() || items[order.front()].marked)
                throw TranslateError(QStringLiteral("(+)"), items[waiting.empty() ? order.front() : waiting.front()].markPos,
                                     QStringLiteral("the outer joins cannot be ordered"));
            append(fromOut, items.front().part.lead);
            for (size_t k = 0; k < order.size(); ++k) {
                const Item& it = items[order[k]];
                if (k > 0) fromOut.push_back(raw(it.marked && !it.rejected ? QStringLiteral(" LEFT JOIN ") : QStringLiteral(" INNER JOIN ")));
                append(fromOut, cores[order[k]]);
                if (k == 0) continue;
                fromOut.push_back(raw(QStringLiteral(" ON ")));
                if (!it.marked) {
                    fromOut.push_back(raw(QStringLiteral("1=1")));
                    continue;
                }
                for (size_t j = 0; j < it.conds.size(); ++j) {
                    if (j > 0) fromOut.push_back(raw(QStringLiteral(" AND ")));
                    append(fromOut, expr(it.conds[j]));
                }
            }
            append(fromOut, items.back().part.trail);
        }
    }

    // Rewritten WHERE: the conditions that stay.
    Seq whereOut;
    bool whereKept = false;
    if (where) {
        // The counts of supply sources a condition of the WHERE itself (no
        // OR around it) may read from the kept counts.
        QSet<QString> counted;
        const bool anyOr = std::any_of(where->body.begin(), where->body.end(), [](const Node& n) { return n.isWord("OR"); });
        if (from && d_ == Dialect::PostgreSQL && !anyOr)
            for (const Item& it : items)
                if (!it.complex && !it.derived && !it.name.isEmpty()) counted.insert(it.name);
        bool first = true;
        for (size_t k = 0; k < conjs.size(); ++k) {
            const Conj& c = conjs[k];
            if (c.removed) continue;
            append(whereOut, first ? conjs.front().sep : c.sep);
            const Seq kept = counted.isEmpty() ? Seq{} : sourceCountCondition(c.core, counted);
            append(whereOut, kept.empty() ? expr(c.core) : kept);
            first = false;
        }
        whereKept = !first;
        append(whereOut, whereTrail);
    }

    // Rewritten select list. Where columns are read by name, an expression
    // without alias gets Oracle's heading, so that a field has the same
    // name on every engine (COUNT(*), not count).
    Seq selectOut;
    std::vector<Seq> swingJoins;
    if (sel && from && d_ == Dialect::PostgreSQL && !find(clause::GroupBy) && !find(clause::Having) && !find(clause::ForUpdate) &&
        !hasAggregate(sel->body))
        swingJoins_ = &swingJoins;
    if (sel) {
        const Seq& b = sel->body;
        int start = 0;
        const int d = firstSig(b);
        if (d >= 0 && (b[d].isWord("DISTINCT") || b[d].isWord("UNIQUE") || b[d].isWord("ALL"))) {
            append(selectOut, slice(b, 0, d));
            selectOut.push_back(b[d].isWord("UNIQUE") ? leafOf(TokenType::Word, QStringLiteral("DISTINCT"), b[d].pos()) : b[d]);
            start = d + 1;
        }
        Seq commas;
        const std::vector<Seq> list = splitCommas(slice(b, start, int(b.size())), &commas);
        for (size_t k = 0; k < list.size(); ++k) {
            if (k > 0) selectOut.push_back(commas[k - 1]);
            const Trim t = trim(list[k]);
            Seq core = expr(t.core);
            if (named && !t.core.empty() && !hasAlias(t.core) && !isColumn(t.core)) {
                QString heading;
                oracleHeading(t.core, heading);
                core.push_back(raw(QStringLiteral(" AS ")));
                core.push_back(leafOf(TokenType::QuotedName, QLatin1Char('"') + heading.replace(QLatin1Char('"'), QStringLiteral("\"\"")) + QLatin1Char('"')));
            }
            append(selectOut, t.lead);
            append(selectOut, core);
            append(selectOut, t.trail);
        }
    }
    swingJoins_ = nullptr;
    if (!swingJoins.empty()) {
        Seq blanks;
        while (!fromOut.empty() && !fromOut.back().sig()) {
            blanks.insert(blanks.begin(), fromOut.back());
            fromOut.pop_back();
        }
        if (!anyMarked && items.size() > 1) {
            // A join binds to the last item of a comma list only, and its ON
            // may name any item: the list becomes one join.
            Seq product;
            for (size_t k = 0; k < items.size(); ++k) {
                if (k > 0) product.push_back(raw(QStringLiteral(" CROSS JOIN ")));
                if (items[k].complex)
                    product.push_back(built(QStringLiteral("("), cores[k], QStringLiteral(")")));
                else
                    append(product, cores[k]);
            }
            fromOut = items.front().part.lead;
            fromOut.push_back(built(QStringLiteral("("), product, QStringLiteral(")")));
        }
        for (const Seq& j : swingJoins) append(fromOut, j);
        append(fromOut, blanks);
    }

    Seq out = prefix;
    int forAt = -1;
    for (const Clause& c : clauses) {
        switch (c.key) {
        case clause::Select:
            append(out, c.head);
            append(out, selectOut);
            break;
        case clause::From:
            append(out, c.head);
            append(out, fromOut);
            break;
        case clause::Where:
            if (whereKept) {
                append(out, c.head);
                append(out, whereOut);
            } else {
                // The whole WHERE went into joins or LIMIT: one run of
                // blanks stays where it stood.
                while (!out.empty() && !out.back().sig()) out.pop_back();
                append(out, whereTrail);
            }
            break;
        case clause::ForUpdate:
            forAt = int(out.size());
            append(out, c.head);
            append(out, c.body);
            break;
        default:
            append(out, c.head);
            append(out, expr(c.body));
        }
    }
    if (limit >= 0) {
        if (forAt >= 0) {
            out.insert(out.begin() + forAt, raw(QStringLiteral("LIMIT %1 ").arg(limit)));
        } else {
            const int l = lastSig(out);
            out.insert(out.begin() + l + 1, raw(QStringLiteral(" LIMIT %1").arg(limit)));
        }
    }
    return out;
}

// ------------------------------------------------------------ expressions

Node Rewriter::paren(const Node& n) {
    if (isQuery(n.kids())) return subquery(n, false);
    Node g = shell(n);
    g.setKids(expr(n.kids()));
    return g;
}

Node Rewriter::subquery(const Node& n, bool named) {
    Node g = shell(n);
    g.setKids(query(n.kids(), true, named));
    return g;
}

Seq Rewriter::expr(const Seq& in) {
    Seq out;
    for (int i = 0; i < int(in.size()); ++i) {
        const Node& n = in[i];
        if (n.kind == Node::Paren) {
            out.push_back(paren(n));
            continue;
        }
        if (n.kind != Node::Leaf) {
            Node g = shell(n);
            g.setKids(expr(n.kids()));
            out.push_back(std::move(g));
            continue;
        }
        const Token& t = n.tok;
        switch (t.type) {
        case TokenType::Text:
            // Oracle keeps no empty texts: '' is null.
            out.push_back(t.text == QLatin1String("''") ? leafOf(TokenType::Word, QStringLiteral("NULL"), t.pos) : n);
            break;
        case TokenType::OuterJoin:
            throw TranslateError(QStringLiteral("(+)"), t.pos, QStringLiteral("an outer-join mark outside the WHERE conditions of a comma join"));
        case TokenType::Op:
            out.push_back(t.text == QLatin1String("^=") ? raw(QStringLiteral("<>"), t.pos) : n);
            break;
        case TokenType::Word: {
            const int p = prevSig(in, i);
            const bool qualified = p >= 0 && in[p].isOp(".");
            if (!qualified && t.isWord("ROWNUM"))
                throw TranslateError(QStringLiteral("rownum"), t.pos, QStringLiteral("rownum is translated only as a condition rownum=1 or rownum<=N of a select"));
            if (!qualified && t.isWord("SYSDATE")) {
                i = sysdate(in, i, out);
                break;
            }
            const int g = nextSig(in, i);
            if (!qualified && g >= 0 && in[g].kind == Node::Paren) {
                i = function(in, i, g, out);
                break;
            }
            out.push_back(n);
            break;
        }
        default: out.push_back(n);
        }
    }
    if (d_ == Dialect::SQLite) out = wrapAggregates(out);
    return concatenations(out);
}

// Oracle functions the engines lack or spell differently. `g` is the
// argument group after the name at `i`; returns the index of the last node
// consumed.
int Rewriter::function(const Seq& in, int i, int g, Seq& out) {
    const Node& name = in[i];
    const QString fn = name.tok.text.toUpper();
    const Seq gap = slice(in, i + 1, g);
    Node args = paren(in[g]);
    std::vector<Seq> list;
    for (const Seq& a : splitCommas(args.kids())) list.push_back(trim(a).core);
    const int nargs = (list.size() == 1 && list[0].empty()) ? 0 : int(list.size());
    auto wrong = [&](const QString& construct) {
        return TranslateError(construct, name.pos(), QStringLiteral("%1 with %2 arguments is not translated").arg(name.tok.text).arg(nargs));
    };
    auto inParens = [](const Seq& s) { return built(QStringLiteral("("), s, QStringLiteral(")")); };

    if (fn == QLatin1String("NVL")) {
        if (nargs != 2) throw wrong(QStringLiteral("nvl"));
        out.push_back(leafOf(TokenType::Word, QStringLiteral("COALESCE"), name.pos()));
    } else if (fn == QLatin1String("INSTR")) {
        if (nargs != 2) throw wrong(QStringLiteral("instr"));
        out.push_back(d_ == Dialect::PostgreSQL ? leafOf(TokenType::Word, QStringLiteral("strpos"), name.pos()) : name);
    } else if (fn == QLatin1String("TO_NUMBER")) {
        if (nargs != 1) throw wrong(QStringLiteral("to_number"));
        out.push_back(built(QStringLiteral("CAST("), list[0], QStringLiteral(" AS NUMERIC)"), name.pos()));
        return g;
    } else if (fn == QLatin1String("NVL2")) {
        if (nargs != 3) throw wrong(QStringLiteral("nvl2"));
        Seq k{inParens(list[0]), raw(QStringLiteral(" IS NOT NULL THEN "))};
        append(k, list[1]);
        k.push_back(raw(QStringLiteral(" ELSE ")));
        append(k, list[2]);
        out.push_back(built(QStringLiteral("CASE WHEN "), k, QStringLiteral(" END"), name.pos()));
        return g;
    } else if (fn == QLatin1String("JC_PJDLBD") && swingJoins_ && nargs == 4) {
        // PostgreSQL would run the routine's look-ups once per row; the
        // customer-month's figures come by a join of its select instead
        // (tarvin_pjdlbd in db/postgres/30_routines.sql).
        const QString f = QStringLiteral("tarvin_f%1").arg(++swingAliases_);
        swingJoins_->push_back(Seq{raw(QStringLiteral(" LEFT JOIN b_ydlhz %1 ON %1.hh = ").arg(f)), inParens(list[0]),
                                   raw(QStringLiteral(" AND %1.ny = ").arg(f)), inParens(list[1])});
        Seq k{raw(QStringLiteral("%1.zdl, %1.pjdl, ").arg(f))};
        append(k, args.kids());
        out.push_back(built(QStringLiteral("tarvin_pjdlbd("), k, QStringLiteral(")"), name.pos()));
        return g;
    } else if (fn == QLatin1String("DECODE")) {
        if (nargs < 3) throw wrong(QStringLiteral("decode"));
        // decode matches a null with a null, as = does not.
        const Seq& e = list[0];
        Seq k;
        int a = 1;
        for (; a + 1 < nargs; a += 2) {
            const Seq& s = list[a];
            const std::vector<int> sg = sigIndexes(s);
            k.push_back(raw(QStringLiteral(" WHEN ")));
            if (sg.size() == 1 && s[sg[0]].isWord("NULL")) {
                k.push_back(inParens(e));
                k.push_back(raw(QStringLiteral(" IS NULL")));
            } else if (sg.size() == 1 && (s[sg[0]].isType(TokenType::Number) || s[sg[0]].isType(TokenType::Text))) {
                k.push_back(inParens(e));
                k.push_back(raw(QStringLiteral(" = ")));
                append(k, s);
            } else {
                Seq c{inParens(e), raw(QStringLiteral(" = ")), inParens(s), raw(QStringLiteral(" OR (")), inParens(e),
                      raw(QStringLiteral(" IS NULL AND ")), inParens(s), raw(QStringLiteral(" IS NULL)"))};
                k.push_back(inParens(c));
            }
            k.push_back(raw(QStringLiteral(" THEN ")));
            append(k, list[a + 1]);
        }
        if (a < nargs) {
            k.push_back(raw(QStringLiteral(" ELSE ")));
            append(k, list[a]);
        }
        out.push_back(built(QStringLiteral("CASE"), k, QStringLiteral(" END"), name.pos()));
        return g;
    } else {
        out.push_back(name);
    }
    append(out, gap);
    out.push_back(std::move(args));
    return g;
}

// sysdate, and sysdate plus or minus a number of days (a number, a
// parameter, a parenthesised expression, or a product or quotient of them).
int Rewriter::sysdate(const Seq& in, int i, Seq& out) {
    const int p = prevSig(in, i);
    if (p >= 0 && (in[p].isOp("-") || in[p].isOp("+")))
        throw TranslateError(QStringLiteral("sysdate"), in[i].pos(), QStringLiteral("date arithmetic with sysdate on the right is not translated"));
    Node cur = raw(QStringLiteral("tarvin_sysdate()"), in[i].pos());
    int end = i;
    for (;;) {
        const int op = nextSig(in, end);
        if (op < 0 || !(in[op].isOp("+") || in[op].isOp("-"))) break;
        auto factor = [&](int k) {
            if (k < 0) return false;
            const Node& f = in[k];
            return f.isType(TokenType::Number) || f.isType(TokenType::Param) || f.kind == Node::Paren;
        };
        int k = nextSig(in, op);
        if (!factor(k))
            throw TranslateError(QStringLiteral("sysdate"), in[op].pos(), QStringLiteral("only a number of days is added to or taken from sysdate"));
        int termEnd = k;
        for (;;) {
            const int m = nextSig(in, termEnd);
            if (m < 0 || !(in[m].isOp("*") || in[m].isOp("/"))) break;
            const int f = nextSig(in, m);
            if (!factor(f)) break;
            termEnd = f;
        }
        const Seq term = expr(slice(in, k, termEnd + 1));
        Seq kids{cur};
        const bool minus = in[op].isOp("-");
        if (minus && termEnd == k && in[k].isType(TokenType::Number)) {
            kids.push_back(raw(QStringLiteral(", -")));
            append(kids, term);
        } else if (minus) {
            kids.push_back(raw(QStringLiteral(", -(")));
            append(kids, term);
            kids.push_back(raw(QStringLiteral(")")));
        } else {
            kids.push_back(raw(QStringLiteral(", ")));
            append(kids, term);
        }
        cur = built(QStringLiteral("tarvin_date_add("), kids, QStringLiteral(")"), in[i].pos());
        end = termEnd;
    }
    out.push_back(cur);
    return end;
}

// SQLite: an aggregate (and jc_pjdlbd) as CAST(... AS NUMERIC), which
// carries numeric affinity, so that a text bound against it compares as a
// number as in Oracle. Not inside arithmetic, where the cast would change
// a real into an integer.
Seq Rewriter::wrapAggregates(const Seq& s) {
    Seq out;
    for (int i = 0; i < int(s.size()); ++i) {
        const Node& n = s[i];
        const bool candidate = n.isWord("COUNT") || n.isWord("SUM") || n.isWord("AVG") || n.isWord("JC_PJDLBD");
        const int g = candidate ? nextSig(s, i) : -1;
        if (g < 0 || s[g].kind != Node::Paren) {
            out.push_back(n);
            continue;
        }
        auto arithmetic = [&](int k) {
            return k >= 0 && (s[k].isOp("+") || s[k].isOp("-") || s[k].isOp("*") || s[k].isOp("/") || s[k].isOp("."));
        };
        const int after = nextSig(s, g);
        if (arithmetic(prevSig(s, i)) || arithmetic(after) || (after >= 0 && s[after].isWord("OVER"))) {
            out.push_back(n);
            continue;
        }
        out.push_back(built(QStringLiteral("CAST("), slice(s, i, g + 1), QStringLiteral(" AS NUMERIC)"), n.pos()));
        i = g;
    }
    return out;
}

// a || b: Oracle takes a null operand as the empty text, and the empty
// result as null. `||` has the rank of + and -, left to right; * and /
// bind closer.
Seq Rewriter::concatenations(const Seq& s) {
    if (std::none_of(s.begin(), s.end(), [](const Node& n) { return n.isOp("||"); })) return s;
    const std::vector<int> sg = sigIndexes(s);
    const int n = int(sg.size());
    auto at = [&](int k) -> const Node& { return s[sg[k]]; };
    // End (exclusive, in significant positions) of a factor or operand
    // starting at k; -1 when none starts there.
    auto factor = [&](int k) {
        while (k < n && (at(k).isOp("+") || at(k).isOp("-"))) ++k;
        if (k >= n) return -1;
        const Node& x = at(k);
        if (x.kind != Node::Leaf) return k + 1;
        if (x.isType(TokenType::Number) || x.isType(TokenType::Text) || x.isType(TokenType::Param)) return k + 1;
        if (x.isType(TokenType::QuotedName) || (x.isType(TokenType::Word) && !isKeyword(x))) {
            ++k;
            while (k + 1 < n && at(k).isOp(".") && (at(k + 1).isName() || at(k + 1).isOp("*"))) k += 2;
            if (k < n && at(k).kind == Node::Paren) ++k;
            return k;
        }
        return -1;
    };
    auto operand = [&](int k) {
        int e = factor(k);
        while (e > 0 && e < n && (at(e).isOp("*") || at(e).isOp("/"))) {
            const int m = factor(e + 1);
            if (m < 0) break;
            e = m;
        }
        return e;
    };
    auto nodes = [&](int from, int to) { return slice(s, sg[from], sg[to - 1] + 1); };

    Seq out;
    int copied = 0;  // index in s up to which s has been copied
    for (int k = 0; k < n;) {
        int e = operand(k);
        if (e < 0) {
            ++k;
            continue;
        }
        std::vector<std::pair<int, int>> ops{{k, e}};
        std::vector<int> opAt;
        while (e < n && (at(e).isOp("||") || at(e).isOp("+") || at(e).isOp("-"))) {
            const int m = operand(e + 1);
            if (m < 0) break;
            opAt.push_back(e);
            ops.push_back({e + 1, m});
            e = m;
        }
        if (std::none_of(opAt.begin(), opAt.end(), [&](int o) { return at(o).isOp("||"); })) {
            k = e;
            continue;
        }
        // Rebuild the chain left to right.
        Seq cur = nodes(ops[0].first, ops[0].second);
        std::vector<Seq> parts;
        auto finish = [&]() {
            if (parts.empty()) return;
            Seq kids;
            for (size_t j = 0; j < parts.size(); ++j) {
                if (j > 0) kids.push_back(raw(QStringLiteral("||")));
                const std::vector<int> psg = sigIndexes(parts[j]);
                if (psg.size() == 1 && parts[j][psg[0]].isType(TokenType::Text)) {
                    append(kids, parts[j]);
                } else {
                    kids.push_back(built(QStringLiteral("COALESCE(CAST("), parts[j], QStringLiteral(" AS %1),'')").arg(textType())));
                }
            }
            cur = Seq{built(QStringLiteral("NULLIF("), kids, QStringLiteral(",'')"))};
            parts.clear();
        };
        for (size_t j = 0; j < opAt.size(); ++j) {
            const Seq next = nodes(ops[j + 1].first, ops[j + 1].second);
            if (at(opAt[j]).isOp("||")) {
                if (parts.empty()) parts.push_back(cur);
                parts.push_back(next);
            } else {
                finish();
                append(cur, slice(s, sg[ops[j].second - 1] + 1, sg[ops[j + 1].first]));
                append(cur, next);
            }
        }
        finish();
        append(out, slice(s, copied, sg[k]));
        append(out, cur);
        copied = sg[e - 1] + 1;
        k = e;
    }
    append(out, slice(s, copied, int(s.size())));
    for (const Node& x : out)
        if (x.isOp("||")) throw TranslateError(QStringLiteral("||"), x.pos(), QStringLiteral("an operand of || is missing"));
    return out;
}

// ------------------------------------------------------------- statements

// An anonymous block of procedure calls and assignments to output
// parameters, run as one SELECT whose columns are the values.
Seq Rewriter::block(const Seq& s, QStringList& outputs) {
    const int f = firstSig(s);
    if (s[f].isWord("DECLARE")) throw TranslateError(QStringLiteral("block"), s[f].pos(), QStringLiteral("a block with declarations is not translated"));
    int e = -1;
    for (int i = lastSig(s); i > f; i = prevSig(s, i)) {
        if (s[i].isWord("END")) {
            e = i;
            break;
        }
        if (!s[i].isOp(";") && !s[i].isOp("/")) break;
    }
    if (e < 0) throw TranslateError(QStringLiteral("block"), s[f].pos(), QStringLiteral("the block does not end with END"));

    std::vector<Seq> columns;
    bool calls = false;
    for (const Seq& stmt : splitTop(slice(s, f + 1, e), [](const Node& n) { return n.isOp(";"); })) {
        const Seq core = trim(stmt).core;
        const std::vector<int> sg = sigIndexes(core);
        if (sg.empty() || (sg.size() == 1 && core[sg[0]].isWord("NULL"))) continue;
        const Node& first = core[sg[0]];
        // A call: name[.name] with or without arguments.
        auto callable = [&](const Seq& c, const std::vector<int>& csg) {
            size_t k = 0;
            if (csg.empty() || !c[csg[0]].isName() || isKeyword(c[csg[0]])) return false;
            ++k;
            while (k + 1 < csg.size() && c[csg[k]].isOp(".") && c[csg[k + 1]].isName()) k += 2;
            if (k < csg.size() && c[csg[k]].kind == Node::Paren) ++k;
            return k == csg.size();
        };
        auto asCall = [&](Seq c) {
            if (c[lastSig(c)].kind != Node::Paren) c.push_back(raw(QStringLiteral("()")));
            return expr(c);
        };
        if (first.isType(TokenType::Param) && sg.size() > 2 && core[sg[1]].isOp(":=")) {
            if (calls)
                throw TranslateError(QStringLiteral("block"), first.pos(), QStringLiteral("an assignment after a procedure call"));
            const QString out = first.tok.text.toUpper();
            if (outputs.contains(out))
                throw TranslateError(QStringLiteral("block"), first.pos(), QStringLiteral("the parameter %1 is assigned twice").arg(first.tok.text));
            const Seq value = slice(core, sg[2], int(core.size()));
            const std::vector<int> vsg = sigIndexes(value);
            const bool bareName = callable(value, vsg) && value[vsg.back()].kind != Node::Paren &&
                                  !value[vsg.back()].isWord("SYSDATE") && !value[vsg.back()].isWord("NULL") &&
                                  !value[vsg.back()].isWord("USER");
            columns.push_back(bareName ? asCall(value) : expr(value));
            outputs << out;
        } else if (callable(core, sg)) {
            calls = true;
            columns.push_back(asCall(core));
        } else {
            throw TranslateError(QStringLiteral("block"), first.pos(),
                                 QStringLiteral("only procedure calls and assignments to output parameters are translated"));
        }
    }
    for (const Seq& c : columns) {
        visitExpr(c, [&](const Seq& seq, int i) {
            if (seq[i].isType(TokenType::Param) && outputs.contains(seq[i].tok.text.toUpper()))
                throw TranslateError(QStringLiteral("block"), seq[i].pos(),
                                     QStringLiteral("the output parameter %1 is also read in the block").arg(seq[i].tok.text));
        });
    }
    Seq out{raw(QStringLiteral("SELECT "))};
    if (columns.empty()) out.push_back(raw(QStringLiteral("NULL")));
    for (size_t k = 0; k < columns.size(); ++k) {
        if (k > 0) out.push_back(raw(QStringLiteral(", ")));
        append(out, columns[k]);
    }
    return out;
}

// The alias of an UPDATE or DELETE target: SQLite wants AS before it.
void aliasWithAs(Seq& out, const Seq& s, int from, int to, Dialect d) {
    const std::vector<int> sg = sigIndexes(slice(s, from, to));
    size_t k = 0;
    std::vector<int> abs;
    for (int i : sg) abs.push_back(from + i);
    if (!abs.empty() && s[abs[0]].isName()) {
        k = 1;
        while (k + 1 < abs.size() && s[abs[k]].isOp(".") && s[abs[k + 1]].isName()) k += 2;
    }
    const bool bareAlias = k + 1 == abs.size() && s[abs[k]].isName() && !isKeyword(s[abs[k]]);
    for (int i = from; i < to; ++i) {
        if (bareAlias && d == Dialect::SQLite && i == abs[k]) out.push_back(raw(QStringLiteral("AS ")));
        out.push_back(s[i]);
    }
}

Seq Rewriter::update(const Seq& s) {
    const int u = firstSig(s);
    int set = -1, where = -1;
    for (int i = u + 1; i < int(s.size()); ++i) {
        if (set < 0 && s[i].isWord("SET")) set = i;
        else if (set >= 0 && s[i].isWord("WHERE")) {
            where = i;
            break;
        }
    }
    if (set < 0) return expr(s);
    Seq out = slice(s, 0, u + 1);
    aliasWithAs(out, s, u + 1, set, d_);
    out.push_back(s[set]);
    // Targets are written without their qualifier (c.x = ... becomes x = ...).
    Seq body;
    Seq commas;
    const std::vector<Seq> assignments = splitCommas(slice(s, set + 1, where < 0 ? int(s.size()) : where), &commas);
    for (size_t k = 0; k < assignments.size(); ++k) {
        if (k > 0) body.push_back(commas[k - 1]);
        const Seq& a = assignments[k];
        const std::vector<int> sg = sigIndexes(a);
        if (sg.size() > 3 && a[sg[0]].isName() && a[sg[1]].isOp(".") && a[sg[2]].isName() && a[sg[3]].isOp("=")) {
            append(body, slice(a, 0, sg[0]));
            append(body, slice(a, sg[2], int(a.size())));
        } else {
            append(body, a);
        }
    }
    append(out, expr(body));
    if (where >= 0) {
        out.push_back(s[where]);
        append(out, expr(slice(s, where + 1, int(s.size()))));
    }
    return out;
}

Seq Rewriter::remove(const Seq& s) {
    const int d = firstSig(s);
    Seq out = slice(s, 0, d + 1);
    int t = nextSig(s, d);
    if (t >= 0 && s[t].isWord("FROM")) {
        append(out, slice(s, d + 1, t + 1));
    } else {
        // Oracle lets FROM out.
        out.push_back(raw(QStringLiteral(" FROM")));
        t = d;
    }
    int where = -1;
    for (int i = t + 1; i < int(s.size()); ++i)
        if (s[i].isWord("WHERE")) {
            where = i;
            break;
        }
    const int end = where < 0 ? int(s.size()) : where;
    aliasWithAs(out, s, t + 1, end, d_);
    if (where >= 0) {
        out.push_back(s[where]);
        append(out, expr(slice(s, where + 1, int(s.size()))));
    }
    return out;
}

Seq Rewriter::insert(const Seq& s) {
    for (int i = 0; i < int(s.size()); ++i) {
        if (s[i].isWord("SELECT") || s[i].isWord("WITH")) {
            Seq out = expr(slice(s, 0, i));
            append(out, query(slice(s, i, int(s.size())), true, false));
            return out;
        }
    }
    return expr(s);
}

Seq Rewriter::statement(const Seq& tree, Translated::Kind& kind, QStringList& outputs) {
    const int f = firstSig(tree);
    if (f < 0) {
        kind = Translated::Kind::Statement;
        return tree;
    }
    if (tree[f].isWord("BEGIN") || tree[f].isWord("DECLARE")) {
        kind = Translated::Kind::Call;
        return block(tree, outputs);
    }
    // One statement; its closing semicolon goes.
    Seq s = tree;
    const int l = lastSig(s);
    if (s[l].isOp(";")) s.erase(s.begin() + l);
    for (const Node& n : s)
        if (n.isOp(";")) throw TranslateError(QStringLiteral("statement"), n.pos(), QStringLiteral("more than one statement in the text"));

    const Node& head = s[f];
    if (head.isWord("COMMIT")) {
        const int w = nextSig(s, f);
        if (w >= 0 && (!s[w].isWord("WORK") || nextSig(s, w) >= 0))
            throw TranslateError(QStringLiteral("commit"), s[w].pos(), QStringLiteral("only a plain COMMIT is translated"));
        kind = Translated::Kind::Commit;
        return Seq{raw(QStringLiteral("COMMIT"))};
    }
    if (head.isWord("SELECT") || head.isWord("WITH") || isSubquery(head)) {
        kind = Translated::Kind::Query;
        return query(s, true, true);
    }
    kind = Translated::Kind::Statement;
    if (head.isWord("UPDATE")) return update(s);
    if (head.isWord("DELETE")) return remove(s);
    if (head.isWord("INSERT")) return insert(s);
    return expr(s);
}

}  // namespace

Translated translateForEngine(const QString& oracleSql, Dialect dialect) {
    const Seq tree = buildTree(tokenize(oracleSql, true));
    Rewriter rw(dialect);
    Translated t;
    const Seq out = rw.statement(tree, t.kind, t.outputs);
    Writer w;
    w.write(out);
    w.finish(t);
    return t;
}

Translated splitOracle(const QString& oracleSql) {
    const std::vector<Token> toks = tokenize(oracleSql, false);
    Translated t;
    Writer w;
    w.engine = false;
    const Token* first = nullptr;
    for (size_t i = 0; i < toks.size(); ++i) {
        const Token& tok = toks[i];
        if (!first && tok.significant()) first = &tok;
        Node n;
        n.tok = tok;
        w.write(n);
        if (tok.type == TokenType::Param) {
            size_t j = i + 1;
            while (j < toks.size() && !toks[j].significant()) ++j;
            if (j < toks.size() && toks[j].isOp(":=")) t.outputs << tok.text.toUpper();
        }
    }
    w.finish(t);
    t.kind = Translated::Kind::Statement;
    if (first) {
        if (first->isWord("SELECT") || first->isWord("WITH") || first->isOp("(")) t.kind = Translated::Kind::Query;
        else if (first->isWord("BEGIN") || first->isWord("DECLARE")) t.kind = Translated::Kind::Call;
        else if (first->isWord("COMMIT")) t.kind = Translated::Kind::Commit;
    }
    if (t.kind != Translated::Kind::Call) t.outputs.clear();
    return t;
}

}  // namespace tarvin::sql::detail
