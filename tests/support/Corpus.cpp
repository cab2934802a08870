#include "Corpus.h"

#include <QFile>
#include <gtest/gtest.h>

#include "Schema.h"
#include "TestDb.h"
#include "data/Connection.h"
#include "screening/Unt_Jc_Kycslb.h"

namespace tarvin::test::corpus {

// The screening entries name their texts; the screening table holds them.
[[maybe_unused]] const bool kScreeningTexts = (useScreeningTexts({&KycsSql, &KycsSqlLines}), true);

const Entry& entry(const QString& id) {
    if (const Entry* e = tarvin::corpus::corpus().find(id)) return *e;
    ADD_FAILURE() << "no corpus entry " << id.toStdString();
    static const Entry none;
    return none;
}

void loadFixture(TestDatabase& db) {
    QFile f(corpusDir() + QStringLiteral("/fixture.sql"));
    ASSERT_TRUE(f.open(QIODevice::ReadOnly)) << f.fileName().toStdString();
    ASSERT_TRUE(db.db().transaction());
    for (const QString& s : tarvin::db::splitStatements(QString::fromUtf8(f.readAll()))) db.exec(s);
    ASSERT_TRUE(db.db().commit());
    tarvin::db::setFixedClock(db.connectionName(), QDateTime(QDate(2024, 4, 15), QTime(10, 0)));
}

void bind(TMidasQuery& q, const Param& p) {
    if (p.type == QLatin1String("missing")) {
        // The screen binds a name the text does not have: the dataset refuses.
        EXPECT_THROW(q.ParamByName(p.name), EDatabaseError) << "parameter " << p.name.toStdString();
        return;
    }
    try {
        tarvin::corpus::bindParam(q, p);
    } catch (const EDatabaseError& e) {
        ADD_FAILURE() << e.what();
    }
}

}  // namespace tarvin::test::corpus
