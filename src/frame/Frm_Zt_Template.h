// The base of every screen: its stored look, Enter moving on like Tab, F1
// and Alt+H opening help at the screen's topic, Ctrl+Alt+N naming the
// screen in front.
#pragma once

#include <QDialog>
#include <utility>

class QAbstractButton;

// A control made on `parent` under its component name, the name that help,
// tests and the screen-name key know it by.
template <class T, class... Args>
T* NewControl(QWidget* parent, const char* name, Args&&... args) {
    auto* control = new T(std::forward<Args>(args)..., parent);
    control->setObjectName(QLatin1String(name));
    return control;
}

class TZt_Template_Frm : public QDialog {
    Q_OBJECT
public:
    explicit TZt_Template_Frm(QWidget* parent = nullptr);
    ~TZt_Template_Frm() override;

    // The screens' stored look: a dialogue with the system menu only, in the
    // screens' face. Plain dialogues that skip the key handling take it too.
    static void ApplyScreenLook(QDialog* dialog);

    // The screen in front: the modal screen, else the active window.
    static QWidget* ActiveScreen();

    // The button Escape clicks (none: Escape does nothing, as on the
    // original screens, so typed input is not lost by a stray key).
    void SetCancelButton(QAbstractButton* button) { cancelButton_ = button; }

    // Off: the screen's keys go straight to its controls, and Enter-as-Tab,
    // help and the name key are not offered (the code picker).
    void SetKeyPreview(bool on) { keyPreview_ = on; }
    bool KeyPreview() const { return keyPreview_; }

public slots:
    // Derived screens call the inherited FormShow first in their own.
    virtual void FormShow();

protected:
    // Both see every key of the screen's controls before the control does.
    // Returning true swallows the key.
    virtual bool FormKeyPress(QWidget* control, QKeyEvent* event);
    virtual bool FormKeyDown(QWidget* control, QKeyEvent* event);

    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private slots:
    void ShowHelp();

private:
    QAbstractButton* cancelButton_ = nullptr;
    bool centred_ = false;
    bool keyPreview_ = true;
};
