#pragma once
// Every message box of the program goes through one presenter, so that a test (or anything else
// that must not block on a modal box) can put its own in place and see what a user would have
// seen. The presenter installed at start is the real one, a QMessageBox.

#include <QString>

class MessagePresenter {
public:
    // What the box is about; the icon follows from it.
    enum class Kind { Question, Error, Warning, Information, Plain };

    // The button sets and answers keep the numbers the message box constants of the original
    // toolkit had, so that a caller that compares numbers reads the same.
    enum class Buttons { Ok = 0, YesNoCancel = 3, YesNo = 4 };
    enum class Answer { Ok = 1, Cancel = 2, Yes = 6, No = 7 };

    struct Message {
        Kind kind = Kind::Plain;
        QString title;
        QString text;
        Buttons buttons = Buttons::Ok;
    };

    virtual ~MessagePresenter() = default;

    // Shows the message and gives back the button the user chose.
    virtual Answer Present(const Message& vMessage) = 0;

    // The process-wide presenter. Install does not take ownership: the caller keeps the new one
    // alive until it installs the previous one again (see ScopedPresenter). Installing nullptr
    // brings back the QMessageBox presenter. Returns the presenter that was current.
    static MessagePresenter& Current();
    static MessagePresenter* Install(MessagePresenter* vPresenter);
};

// The real boxes: modal, over the active window, with the icon of the kind.
class QMessageBoxPresenter : public MessagePresenter {
public:
    Answer Present(const Message& vMessage) override;
};

// Puts a presenter in place for a scope and restores the one before it.
class ScopedPresenter {
public:
    explicit ScopedPresenter(MessagePresenter& vPresenter)
        : previous_(MessagePresenter::Install(&vPresenter)) {}
    ~ScopedPresenter() { MessagePresenter::Install(previous_); }
    ScopedPresenter(const ScopedPresenter&) = delete;
    ScopedPresenter& operator=(const ScopedPresenter&) = delete;

private:
    MessagePresenter* previous_;
};
