#include "ModuleTest.h"

#include "data/DataModules.h"
#include "frame/Unit_zt_gobal.h"

namespace tarvin::test {

namespace {
// The session texts screens read and tests set.
const std::vector<QString*> kSession{&Gdw, &Gdwmc, &Gczydm, &Gczyxm, &Gbm, &Cdbh, &ywdm, &Ywxdm};
}  // namespace

void ModuleTest::SetUp() {
    db = databaseFor(GetParam());
    CreateDataModules();
    for (QString* s : kSession) savedSession_.push_back(*s);
    Gdw = QStringLiteral("01");
}

void ModuleTest::TearDown() {
    if (expectNoBoxes) EXPECT_EQ(boxes.texts(), QStringList()) << "no message box expected";
    for (size_t i = 0; i < savedSession_.size(); ++i) *kSession[i] = savedSession_[i];
    FreeDataModules();
    db.reset();
}

}  // namespace tarvin::test
