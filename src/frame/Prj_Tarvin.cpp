// The plug-in library a host loads by name. Its exports are the session
// variables (Unit_zt_gobal) and the entry functions, pulled in whole from
// the module's static library; this unit only releases the session texts
// when the library unloads.
#include "Unit_zt_gobal.h"

namespace {
struct SessionRelease {
    ~SessionRelease() { tarvin::session::releaseAll(); }
} release;
}  // namespace
