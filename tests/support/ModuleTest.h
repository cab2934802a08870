// A screen test's world: a fresh database behind `Shdl` on the engine under
// test, the module's shared data modules created on it, the session's unit
// set (every session text a test changes given back afterwards), and every
// message box recorded (a test that expects none says so by
// leaving `boxes` empty; TearDown checks it).
#pragma once

#include <memory>
#include <vector>

#include "ScreenHarness.h"
#include "TestDb.h"

namespace tarvin::test {

class ModuleTest : public EngineTest {
protected:
    void SetUp() override;
    void TearDown() override;

    std::unique_ptr<TestDatabase> db;
    ScriptedMessages boxes;
    // Cleared by a test that shows boxes on purpose and reads them itself.
    bool expectNoBoxes = true;

private:
    std::vector<QString> savedSession_;
};

}  // namespace tarvin::test
