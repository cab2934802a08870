// The base of every screen: its stored look, Enter moving on like Tab, F1
// and Alt+H opening help at the screen's topic, Ctrl+Alt+N naming the
// screen in front, and one net under every handler: an error a handler
// raises becomes a message and the screen stays as it was.
#pragma once

#include <QDialog>
#include <functional>
#include <type_traits>
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

    // Runs a handler. An error it raises is shown through the message
    // service with the data layer's text, a transaction it left open on
    // `Shdl` is rolled back, and false is returned; the screen stays open
    // in its mode. Nothing thrown reaches Qt's event loop.
    bool Guard(const std::function<void()>& handler);

    // Connects a control's signal to a handler of this screen under Guard.
    // The handler is a member function (with the signal's arguments or
    // none) or any callable.
    template <class Sender, class Signal, class Handler>
    QMetaObject::Connection Handle(Sender* sender, Signal signal, Handler handler) {
        return connect(sender, signal, this, [this, handler](auto&&... args) {
            Guard([&] { invokeHandler(handler, args...); });
        });
    }

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
    template <class Handler, class... Args>
    void invokeHandler(const Handler& handler, Args&... args) {
        if constexpr (std::is_member_function_pointer_v<Handler>) {
            using Screen = typename MemberOf<Handler>::type;
            auto* self = static_cast<Screen*>(this);
            if constexpr (std::is_invocable_v<Handler, Screen*, Args&...>)
                (self->*handler)(args...);
            else
                (self->*handler)();
        } else if constexpr (std::is_invocable_v<const Handler&, Args&...>) {
            handler(args...);
        } else {
            handler();
        }
    }
    template <class M> struct MemberOf;
    template <class R, class C, class... A> struct MemberOf<R (C::*)(A...)> { using type = C; };

    // The key press being handled: Qt hands the same event on to the
    // control's parents when the control ignores it, possibly after a box
    // the first handling opened has moved the focus. It is acted on once.
    const QEvent* keyInHand_ = nullptr;
    int keyInHandCode_ = 0;
    quint64 keyInHandTime_ = 0;
    int handlingKey_ = 0;
    QAbstractButton* cancelButton_ = nullptr;
    bool centred_ = false;
    bool keyPreview_ = true;
};
