#include "Unit_zt_gobal.h"

#include <QByteArray>
#include <cstring>

extern "C" {
QString Gczydm;
QString Gczyxm;
QString Gxtid;
QString Gxtname;
std::int32_t GloginID = 0;
QString GComputerName;
QString GIpAddr;
QString Qqx;
QString GPath;
QString Gbm;
QString Gny;
QString Gbmmc;
QString DatabaseName;
QString ServerName;
QString GFtpservser;
QString GHttpserver;
QString Gdwdm;
QString Gdw;
QString Gdwmc;
QString Cdbh;
QString ywdm;
QString Ywxdm;
QString Cldm;
QString pgdm;
QString bsh;
QString xzlx;
QString ywxmc;
std::int32_t J_NewForWyyd = 0;
}

namespace {

struct Slot {
    const char* name;
    QString* text;
    std::int32_t* number;
};

const Slot kSlots[] = {
    {"Gczydm", &Gczydm, nullptr},
    {"Gczyxm", &Gczyxm, nullptr},
    {"Gxtid", &Gxtid, nullptr},
    {"Gxtname", &Gxtname, nullptr},
    {"GloginID", nullptr, &GloginID},
    {"GComputerName", &GComputerName, nullptr},
    {"GIpAddr", &GIpAddr, nullptr},
    {"Qqx", &Qqx, nullptr},
    {"GPath", &GPath, nullptr},
    {"Gbm", &Gbm, nullptr},
    {"Gny", &Gny, nullptr},
    {"Gbmmc", &Gbmmc, nullptr},
    {"DatabaseName", &DatabaseName, nullptr},
    {"ServerName", &ServerName, nullptr},
    {"GFtpservser", &GFtpservser, nullptr},
    {"GHttpserver", &GHttpserver, nullptr},
    {"Gdwdm", &Gdwdm, nullptr},
    {"Gdw", &Gdw, nullptr},
    {"Gdwmc", &Gdwmc, nullptr},
    {"Cdbh", &Cdbh, nullptr},
    {"ywdm", &ywdm, nullptr},
    {"Ywxdm", &Ywxdm, nullptr},
    {"Cldm", &Cldm, nullptr},
    {"pgdm", &pgdm, nullptr},
    {"bsh", &bsh, nullptr},
    {"xzlx", &xzlx, nullptr},
    {"ywxmc", &ywxmc, nullptr},
    {"J_NewForWyyd", nullptr, &J_NewForWyyd},
};

const Slot* find(const char* name) {
    if (!name) return nullptr;
    for (const Slot& s : kSlots)
        if (std::strcmp(s.name, name) == 0) return &s;
    return nullptr;
}

}  // namespace

extern "C" int tarvin_set_session(const char* name, const char* utf8) {
    const Slot* s = find(name);
    if (!s) return 1;
    const QString value = QString::fromUtf8(utf8 ? utf8 : "");
    if (s->text)
        *s->text = value;
    else
        *s->number = value.trimmed().toInt();
    return 0;
}

extern "C" const char* tarvin_session(const char* name) {
    const Slot* s = find(name);
    if (!s) return nullptr;
    thread_local QByteArray buffer;
    buffer = s->text ? s->text->toUtf8() : QByteArray::number(*s->number);
    return buffer.constData();
}
