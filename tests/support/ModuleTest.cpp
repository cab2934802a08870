#include "ModuleTest.h"

#include "data/DataModules.h"
#include "frame/Unit_zt_gobal.h"

namespace tarvin::test {

void ModuleTest::SetUp() {
    db = databaseFor(GetParam());
    CreateDataModules();
    savedGdw_ = Gdw;
    Gdw = QStringLiteral("01");
}

void ModuleTest::TearDown() {
    if (expectNoBoxes) EXPECT_EQ(boxes.texts(), QStringList()) << "no message box expected";
    Gdw = savedGdw_;
    FreeDataModules();
    db.reset();
}

}  // namespace tarvin::test
