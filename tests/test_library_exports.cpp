// The plug-in seen as a host sees it: loaded by file name, every export
// found by name, session variables filled and read through the C functions.
#include <gtest/gtest.h>

#include <QProcess>
#include <QRegularExpression>
#include <QString>
#include <dlfcn.h>

namespace {

const char* const kSession[] = {
    "Gczydm", "Gczyxm", "Gxtid", "Gxtname", "GloginID", "GComputerName", "GIpAddr",
    "Qqx", "GPath", "Gbm", "Gny", "Gbmmc", "DatabaseName", "ServerName", "GFtpservser",
    "GHttpserver", "Gdwdm", "Gdw", "Gdwmc", "Cdbh", "ywdm", "Ywxdm", "Cldm", "pgdm",
    "bsh", "xzlx", "ywxmc", "J_NewForWyyd"};

struct Library {
    void* handle = dlopen(TARVIN_LIB_DIR "/libPrj_Tarvin.so", RTLD_NOW | RTLD_LOCAL);
    ~Library() { if (handle) dlclose(handle); }
    template <class T>
    T sym(const char* name) const { return reinterpret_cast<T>(dlsym(handle, name)); }
};

using SetFn = int (*)(const char*, const char*);
using GetFn = const char* (*)(const char*);

TEST(LibraryExports, EverySessionVariableIsADataSymbolReachableByName) {
    Library lib;
    ASSERT_NE(lib.handle, nullptr) << dlerror();
    for (const char* name : kSession) EXPECT_NE(lib.sym<void*>(name), nullptr) << name;
}

TEST(LibraryExports, EntryFunctionsAreFoundByName) {
    Library lib;
    ASSERT_NE(lib.handle, nullptr) << dlerror();
    for (const char* name : {"show_jc_bjsz", "show_jc_bjtx", "show_jc_jlyccl", "show_jc_kykhjs", "show_jc_njhbz", "show_jc_yjhbz",
                             "show_jc_jhbp", "tarvin_set_session", "tarvin_session"})
        EXPECT_NE(lib.sym<void*>(name), nullptr) << name;
    // Only the interface is exported: the module's classes stay inside.
    EXPECT_EQ(lib.sym<void*>("_Z22Tarvinit_Initializationv"), nullptr);
}

// The workflow functions are imports of the plug-in, bound when it loads:
// without the workflow library the module does not load at all.
TEST(LibraryExports, WorkflowFunctionsAreImportedFromTheWorkflowLibrary) {
    QProcess p;
    p.start(QStringLiteral("readelf"), {QStringLiteral("-W"), QStringLiteral("-d"), QStringLiteral("--dyn-syms"),
                                        QStringLiteral(TARVIN_LIB_DIR "/libPrj_Tarvin.so")});
    ASSERT_TRUE(p.waitForFinished(30000));
    const QString out = QString::fromUtf8(p.readAllStandardOutput());
    EXPECT_TRUE(out.contains(QStringLiteral("(NEEDED)             Shared library: [libPrj_zt_pubfun.so]")));
    for (const char* name : {"getsysdate", "tryfristywx", "fristywx", "lcsend", "SendGzdMess"})
        EXPECT_TRUE(out.contains(QRegularExpression(QStringLiteral("UND %1\\b").arg(QLatin1String(name)))))
            << name << " is not an import";
}

TEST(LibraryExports, SessionIsFilledAndReadByNameInUtf8) {
    Library lib;
    ASSERT_NE(lib.handle, nullptr) << dlerror();
    auto set = lib.sym<SetFn>("tarvin_set_session");
    auto get = lib.sym<GetFn>("tarvin_session");
    ASSERT_TRUE(set && get);

    EXPECT_EQ(set("Gczyxm", "张三"), 0);
    EXPECT_STREQ(get("Gczyxm"), "张三");
    // The text lands in the exported variable itself, as a host writing it
    // directly would see.
    EXPECT_EQ(*lib.sym<QString*>("Gczyxm"), QString::fromUtf8("张三"));

    EXPECT_EQ(set("GloginID", "4711"), 0);
    EXPECT_EQ(*lib.sym<std::int32_t*>("GloginID"), 4711);
    EXPECT_STREQ(get("GloginID"), "4711");

    EXPECT_EQ(set("Gdw", nullptr), 0);
    EXPECT_STREQ(get("Gdw"), "");

    EXPECT_NE(set("gdw", "01"), 0) << "names are exact";
    EXPECT_NE(set("Nonsense", "x"), 0);
    EXPECT_EQ(get("Nonsense"), nullptr);
}

}  // namespace
