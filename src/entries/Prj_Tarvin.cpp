// The plug-in library a host loads by name. Its exports are the session
// variables (Unit_zt_gobal, pulled in whole from the module's static
// library) and the entry functions below: each creates its screen, does its
// one extra step, shows it modally and frees it whatever happens.
#include <QApplication>
#include <QBoxLayout>
#include <QPushButton>
#include <memory>

#include "alarms/Frm_Jc_Bjsz.h"
#include "alarms/Frm_Jc_Bjtx.h"
#include "frame/MessageService.h"
#include "frame/Unit_zt_gobal.h"
#include "metering/Frm_Jc_Jlyccl.h"
#include "planning/Frm_Jc_Jhbp.h"
#include "planning/Frm_Jc_Jhbz.h"
#include "screening/Frm_Jc_Kycssz.h"
#include "Unt_Tarvinit.h"

#if defined(_WIN32) && !defined(_WIN64)
#  define TARVIN_STDCALL __stdcall
#else
#  define TARVIN_STDCALL
#endif

namespace {

// Load and unload of the library. The session texts are released by their
// own destructors when the library unloads.
struct Lifetime {
    Lifetime() { Tarvinit_Initialization(); }
    ~Lifetime() { Tarvinit_Finalization(); }
} lifetime;

// An error must not unwind through the C ABI into a host written in any
// language: it is shown as the host's own error handling would show it.
template <class Screen, class Step>
void showScreen(QPointer<Screen>& global, Step step) {
    try {
        std::unique_ptr<Screen> screen(new Screen(nullptr));
        global = screen.get();
        step(*screen);
        screen->exec();
    } catch (const std::exception& e) {
        tarvin::MessageService::show(QString::fromUtf8(e.what()), QStringLiteral("错误"),
                                     QMessageBox::Critical);
    }
}

template <class Screen>
void showScreen(QPointer<Screen>& global) {
    showScreen(global, [](Screen&) {});
}

}  // namespace

extern "C" {

// Opened from the menu the screen only searches and prints: the print
// button takes the confirm button's place, which keeps its room hidden.
TARVIN_EXPORT void TARVIN_STDCALL show_jc_kykhjs(std::int32_t) {
    showScreen(Jc_Kycssz_Frm, [](TJc_Kycssz_Frm& s) {
        for (QBoxLayout* row : s.findChildren<QBoxLayout*>())
            if (row->indexOf(s.Bbtn_Qr) >= 0 && row->indexOf(s.Bbtn_Dy) >= 0) {
                row->removeWidget(s.Bbtn_Dy);
                row->insertWidget(row->indexOf(s.Bbtn_Qr), s.Bbtn_Dy);
            }
        QSizePolicy keep = s.Bbtn_Qr->sizePolicy();
        keep.setRetainSizeWhenHidden(true);
        s.Bbtn_Qr->setSizePolicy(keep);
        s.Bbtn_Qr->hide();
    });
}

TARVIN_EXPORT void TARVIN_STDCALL show_jc_bjsz(std::int32_t) { showScreen(Jc_Bjsz_Frm); }

TARVIN_EXPORT void TARVIN_STDCALL show_jc_jlyccl(std::int32_t) { showScreen(Jc_Jlyccl_Frm); }

// One plan screen for both plan types; the type is its caption and filter.
TARVIN_EXPORT void TARVIN_STDCALL show_jc_njhbz(std::int32_t) {
    showScreen(Jc_Jhbz_Frm, [](TJc_Jhbz_Frm& s) { s.Jhlx = QStringLiteral("年计划"); });
}

TARVIN_EXPORT void TARVIN_STDCALL show_jc_yjhbz(std::int32_t) {
    showScreen(Jc_Jhbz_Frm, [](TJc_Jhbz_Frm& s) { s.Jhlx = QStringLiteral("月计划"); });
}

TARVIN_EXPORT void TARVIN_STDCALL show_jc_jhbp(std::int32_t) { showScreen(Jc_Jhbp_Frm); }

// The list is bound and open before the screen shows, so it comes up with
// the operator's open alarms.
TARVIN_EXPORT void TARVIN_STDCALL show_jc_bjtx(std::int32_t) {
    showScreen(Jc_Bjtx_Frm, [](TJc_Bjtx_Frm& s) {
        s.Mqry_Bj->Close();
        s.Mqry_Bj->ParamByName(QStringLiteral("dw")).SetAsString(Gdw);
        s.Mqry_Bj->ParamByName(QStringLiteral("czydm")).SetAsString(Gczydm);
        s.Mqry_Bj->Open();
    });
}

}
