#include "Frm_Zt_Template.h"

#include "HelpSystem.h"
#include "MessageService.h"
#include "data/MidasQuery.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCheckBox>
#include <QKeyEvent>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QSettings>
#include <QTextEdit>
#include <QTimer>

namespace {

const QString kOperationManual = QStringLiteral("操作手册.HLP");
const QString kUserManual = QStringLiteral("用户手册.HLP");

bool isMultiLineEditor(const QWidget* w) {
    for (const QWidget* p = w; p; p = p->parentWidget()) {
        if (qobject_cast<const QTextEdit*>(p) || qobject_cast<const QPlainTextEdit*>(p)) return true;
        if (p->isWindow()) break;
    }
    return false;
}

QAbstractItemView* gridOf(QWidget* w) {
    for (QWidget* p = w; p; p = p->parentWidget()) {
        if (auto* v = qobject_cast<QAbstractItemView*>(p)) return v;
        if (p->isWindow()) break;
    }
    return nullptr;
}

}  // namespace

void TZt_Template_Frm::ApplyScreenLook(QDialog* dialog) {
    // System menu only: no minimise or maximise box.
    dialog->setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                           Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint);
    QFont face(QStringLiteral("宋体"));
    face.setPixelSize(12);
    face.setStyleHint(QFont::SansSerif);
    dialog->setFont(face);
}

TZt_Template_Frm::TZt_Template_Frm(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("Zt_Template_Frm"));
    setWindowTitle(QStringLiteral("应用界面模板"));
    ApplyScreenLook(this);
    resize(536, 348);
    qApp->installEventFilter(this);
}

TZt_Template_Frm::~TZt_Template_Frm() { qApp->removeEventFilter(this); }

QWidget* TZt_Template_Frm::ActiveScreen() {
    if (QWidget* modal = QApplication::activeModalWidget()) return modal;
    return QApplication::activeWindow();
}

void TZt_Template_Frm::showEvent(QShowEvent* event) {
    if (!centred_) {
        centred_ = true;
        if (QScreen* s = screen()) {
            QRect frame = frameGeometry();
            frame.moveCenter(s->availableGeometry().center());
            move(frame.topLeft());
        }
    }
    // Enter moves on; it must not press a button the toolkit made default.
    for (QPushButton* b : findChildren<QPushButton*>())
        if (!b->isDefault()) b->setAutoDefault(false);
    QDialog::showEvent(event);
    Guard([this] { FormShow(); });
}

bool TZt_Template_Frm::Guard(const std::function<void()>& handler) {
    TCustomMidasDataBase& shdl = TCustomMidasDataBase::ByName();
    bool ownTransaction = false;
    try {
        ownTransaction = !shdl.InTransaction();
    } catch (const std::exception&) {
    }
    QString text;
    try {
        handler();
        return true;
    } catch (const EDatabaseError& e) {
        text = e.message();
    } catch (const std::exception& e) {
        text = QString::fromUtf8(e.what());
    } catch (...) {
        text = QStringLiteral("未知错误");
    }
    // Half a change is not left for a later commit on the connection to
    // pick up.
    try {
        if (ownTransaction && shdl.InTransaction()) shdl.Rollback();
    } catch (const std::exception& e) {
        text += QLatin1Char('\n') + QString::fromUtf8(e.what());
    }
    while (QApplication::overrideCursor()) QApplication::restoreOverrideCursor();
    tarvin::MessageService::show(text, QStringLiteral("系统提示"), QMessageBox::Critical, QMessageBox::Ok, this);
    return false;
}

void TZt_Template_Frm::FormShow() {
    if (tarvin::HelpSystem::helpFile().isEmpty()) tarvin::HelpSystem::setHelpFile(kOperationManual);
    if (QObject* help = findChild<QObject*>(QStringLiteral("BTN_HELP"))) {
        if (auto* button = qobject_cast<QAbstractButton*>(help))
            connect(button, &QAbstractButton::clicked, this, &TZt_Template_Frm::ShowHelp,
                    Qt::UniqueConnection);
        else
            qWarning("BTN_HELP of %s is not a button", qPrintable(objectName()));
    }
}

bool TZt_Template_Frm::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyRelease && handlingKey_ == 0) keyInHand_ = nullptr;
    if (event->type() != QEvent::KeyPress || !keyPreview_) return false;
    auto* control = qobject_cast<QWidget*>(watched);
    if (!control || control->window() != this || !isVisible()) return false;
    // The same press travelling on to a parent: handled where it arrived.
    auto* key = static_cast<QKeyEvent*>(event);
    // The address alone is not enough: a later press may reuse it (a
    // modifier's press before the key's, without a release between).
    if (event == keyInHand_ && key->key() == keyInHandCode_ && key->timestamp() == keyInHandTime_) return false;
    // A key ignored by a control travels on to its parents; act once, where
    // it first arrives.
    QWidget* focus = QApplication::focusWidget();
    if (focus ? control != focus : control != this) return false;
    keyInHand_ = event;
    keyInHandCode_ = key->key();
    keyInHandTime_ = key->timestamp();
    bool swallow = false;
    ++handlingKey_;
    Guard([&] {
        const bool down = FormKeyDown(control, key);
        const bool press = FormKeyPress(control, key);
        swallow = down || press;
    });
    --handlingKey_;
    return swallow;
}

bool TZt_Template_Frm::FormKeyDown(QWidget*, QKeyEvent* event) {
    const Qt::KeyboardModifiers mods = event->modifiers() & ~Qt::KeypadModifier;
    if (event->key() == Qt::Key_F1) ShowHelp();
    if (event->key() == Qt::Key_H && mods == Qt::AltModifier &&
        findChild<QObject*>(QStringLiteral("BTN_HELP")))
        ShowHelp();
    if (event->key() == Qt::Key_N && (mods & Qt::AltModifier) && (mods & Qt::ControlModifier)) {
        QWidget* front = ActiveScreen();
        tarvin::MessageService::show(QStringLiteral("当前窗口名:") + (front ? front : this)->objectName(),
                                     QStringLiteral("提示信息"), QMessageBox::Information,
                                     QMessageBox::Ok, this);
    }
    return false;
}

bool TZt_Template_Frm::FormKeyPress(QWidget* control, QKeyEvent* event) {
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) return false;
    if (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier)) return false;
    if (isMultiLineEditor(control)) return false;
    if (QAbstractItemView* grid = gridOf(control)) {
        QCoreApplication::postEvent(grid, new QKeyEvent(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier));
        return false;
    }
    // A focused push button is pressed by Enter, as on the original screens.
    if (auto* b = qobject_cast<QAbstractButton*>(control);
        b && !qobject_cast<QCheckBox*>(b) && !qobject_cast<QRadioButton*>(b)) {
        b->click();
        return true;
    }
    // After the key press has finished, so the control still gets its Enter.
    QTimer::singleShot(0, this, [this] { focusNextChild(); });
    return false;
}

void TZt_Template_Frm::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && event->modifiers() == Qt::NoModifier) {
        if (cancelButton_ && cancelButton_->isEnabled()) cancelButton_->click();
        event->accept();
        return;
    }
    QDialog::keyPressEvent(event);
}

void TZt_Template_Frm::ShowHelp() {
    QWidget* front = ActiveScreen();
    const QString name = (front ? front : this)->objectName();
    const QString upper = name.toUpper();
    QSettings ini(QCoreApplication::applicationDirPath() + QStringLiteral("/dlyx.INI"),
                  QSettings::IniFormat);
    QString file;
    // "Zk_" against the upper-cased name never matches; kept as the
    // original tests it, so such screens get the operation manual.
    if (upper.contains(QLatin1String("GY_")) || upper.contains(QLatin1String("Zk_"))) {
        file = ini.value(QStringLiteral("Common/Userbook")).toString();
        if (file.isEmpty()) file = kUserManual;
    } else {
        file = ini.value(QStringLiteral("Common/HelpFile")).toString();
        if (file.isEmpty()) file = kOperationManual;
    }
    tarvin::HelpSystem::setHelpFile(file);
    tarvin::HelpSystem::showTopic(name);
}
