// Start and stop of the module: the shared data modules are created when
// the library loads and freed, in the same order, when it unloads.
#pragma once

void Tarvinit_Initialization();
void Tarvinit_Finalization();
