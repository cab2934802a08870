#include "Unt_Tarvinit.h"

#include "data/DataModules.h"

// Queries bind to the host's `Shdl` connection by name at their first use,
// so the modules can be created before the host has opened it.
void Tarvinit_Initialization() { CreateDataModules(); }

void Tarvinit_Finalization() { FreeDataModules(); }
