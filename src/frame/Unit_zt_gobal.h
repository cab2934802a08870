// The session context the host writes before each entry call. Exported as
// data symbols under their own names, in this order, so a host finds them
// by name; the module only reads them.
#pragma once

#include <QString>
#include <cstdint>

#if defined(_WIN32)
#  define TARVIN_EXPORT __declspec(dllexport)
#else
#  define TARVIN_EXPORT __attribute__((visibility("default")))
#endif

extern "C" {
TARVIN_EXPORT extern QString Gczydm;
TARVIN_EXPORT extern QString Gczyxm;
TARVIN_EXPORT extern QString Gxtid;
TARVIN_EXPORT extern QString Gxtname;
TARVIN_EXPORT extern std::int32_t GloginID;
TARVIN_EXPORT extern QString GComputerName;
TARVIN_EXPORT extern QString GIpAddr;
TARVIN_EXPORT extern QString Qqx;
TARVIN_EXPORT extern QString GPath;
TARVIN_EXPORT extern QString Gbm;
TARVIN_EXPORT extern QString Gny;
TARVIN_EXPORT extern QString Gbmmc;
TARVIN_EXPORT extern QString DatabaseName;
TARVIN_EXPORT extern QString ServerName;
TARVIN_EXPORT extern QString GFtpservser;
TARVIN_EXPORT extern QString GHttpserver;
TARVIN_EXPORT extern QString Gdwdm;
TARVIN_EXPORT extern QString Gdw;
TARVIN_EXPORT extern QString Gdwmc;
TARVIN_EXPORT extern QString Cdbh;
TARVIN_EXPORT extern QString ywdm;
TARVIN_EXPORT extern QString Ywxdm;
TARVIN_EXPORT extern QString Cldm;
TARVIN_EXPORT extern QString pgdm;
TARVIN_EXPORT extern QString bsh;
TARVIN_EXPORT extern QString xzlx;
TARVIN_EXPORT extern QString ywxmc;
// Declared with the screening screen in the original; nothing reads it.
TARVIN_EXPORT extern std::int32_t J_NewForWyyd;

// Fill a session variable by name from UTF-8 text: 0 on success, 1 for an
// unknown name. The two integers take the text's decimal value.
TARVIN_EXPORT int tarvin_set_session(const char* name, const char* utf8);
// The variable's value as UTF-8 (valid until the next call from this
// thread); null for an unknown name.
TARVIN_EXPORT const char* tarvin_session(const char* name);
}
