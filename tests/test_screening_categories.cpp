// The screening table: the rules that tie its parts together (the corpus
// runs every text against expected rows).
#include <QRegularExpression>
#include <gtest/gtest.h>
#include <set>
#include <utility>
#include "data/SqlDialect.h"
#include "screening/Unt_Jc_Kycslb.h"

using namespace Qt::Literals::StringLiterals;
using tarvin::sql::Dialect;
namespace {

// Names as the data layer matches them: without case, each once.
std::string upper(const QStringList& names) {
    QStringList out = names.join(u'\n').toUpper().split(u'\n', Qt::SkipEmptyParts);
    out.removeDuplicates();
    out.sort();
    return out.join(u',').toStdString();
}

TEST(ScreeningCategories, CodesPagesRadiosFiltersAndColumnsHoldTogether) {
    std::set<QString> radios;
    for (int last = 0; const TKycsCategory& c : KycsCategories()) {
        SCOPED_TRACE(c.Code);
        EXPECT_GT(c.Code, std::exchange(last, c.Code)) << "codes ascend, each once";
        EXPECT_EQ(c.Page, std::min(c.Code / 10, 3)) << "a decade per page, the rest on the last";
        EXPECT_TRUE(c.Radio.startsWith(u"Rb_"_s, Qt::CaseInsensitive) && radios.insert(c.Radio.toUpper()).second) << c.Radio.toStdString();
        EXPECT_EQ(KycsCategory(c.Code), &c);
        EXPECT_TRUE(!c.Placeholder || !c.RadioEnabled) << "an unfinished text must not be reachable";
        EXPECT_TRUE(!c.KeepGrid || c.Columns.isEmpty());
        for (const TKycsColumn& col : c.Columns) EXPECT_TRUE(c.Sql.Row.contains(col.Field, Qt::CaseInsensitive)) << col.Field.toStdString();
        for (const QString& f : {c.RequiredFilter, c.ForcedFilter}) EXPECT_TRUE(f.isEmpty() || KycsFilter(f)) << f.toStdString();
    }
    EXPECT_EQ(KycsCategories().back().Page + 1, KycsPages().size());
    for (const TKycsFilter& f : KycsFilters()) {
        QStringList names;
        for (const TKycsParam& p : f.Params) names << p.Name;
        EXPECT_EQ(upper(tarvin::sql::parameterNames(f.Line)), upper(names)) << f.Line.toStdString();
    }
    const TKycsFilter &first = KycsFilters().front(), &last = KycsFilters().back();
    EXPECT_EQ(KycsSqlLines({}, {last.Name, first.Name}), (QStringList{first.Line, last.Line, KycsClosing})) << "the search's order";
}

// Each text leaves its where clause open, binds exactly what its category
// declares and translates for both engines with every filter appended.
TEST(ScreeningCategories, TextsTranslateAndBindWhatTheyDeclare) {
    QStringList all;
    for (const TKycsFilter& f : KycsFilters()) all << f.Name;
    for (const TKycsCategory& c : KycsCategories())
        for (const bool kind : {false, true}) {
            QStringList declared;
            for (const TKycsParam& p : c.Params) declared << (kind || !p.KindOnly ? p.Name : QString());
            const TKycsTexts& t = kind ? c.KindSql : c.Sql;
            for (const QString& text : {t.Row, t.Count}) {
                if (text.isEmpty()) continue;
                SCOPED_TRACE(text.toStdString());
                EXPECT_EQ(upper(tarvin::sql::parameterNames(text)), c.Placeholder ? std::string() : upper(declared)) << "placeholders bind names they lack";
                if (c.Placeholder) continue;
                EXPECT_TRUE(text.contains(QRegularExpression(u"(and|where)\\s*$"_s, QRegularExpression::CaseInsensitiveOption)));
                for (const Dialect d : {Dialect::SQLite, Dialect::PostgreSQL})
                    EXPECT_NO_THROW(tarvin::sql::translate(KycsSqlLines(text, all).join(u'\n'), d));
            }
        }
}
}  // namespace
