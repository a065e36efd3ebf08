#pragma once
// The invisible accelerator control of the main window. It holds the registered key
// combinations and, while at least one is registered, watches every key press that reaches the
// owner's window while that window is the active one: an application-wide event filter stands
// in for a keyboard hook. A press fires on its way down, and each auto-repeat fires again; the
// dispatcher's running flag is what keeps a slow action from piling up.

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QWidget>

#include <functional>
#include <vector>

class QKeyEvent;

class ctlAccelerator : public QObject {
    Q_OBJECT
public:
    // What a hit does. The application registers type 0 only; the others act on a target as the
    // control always could: 1 clicks a button, 2 and 3 trigger a menu item (a QAction), 4 sends a
    // system command (the identifier: 0xF020 minimise, 0xF030 maximise, 0xF060 close, 0xF120
    // restore) to a window.
    enum : qint32 {
        AccelEvent = 0,
        AccelButton = 1,
        AccelMenu = 2,
        AccelMenuItem = 3,
        AccelSystem = 4,
    };

    struct Record {
        qint32 AccelType = AccelEvent;
        qint32 Shift = 0;       // 1 Shift, 2 Ctrl, 4 Alt, added up
        qint16 Keycode = 0;
        QPointer<QObject> Target;
        qint32 TargetId = 0;
        qint32 Reserved = 0;
        QString Key;
    };

    // Type 0 hits: the record's key, mask and code. Setting vCancel keeps the key press from the
    // window; left alone, the key goes on only to a focused text box.
    using Handler =
        std::function<void(const QString& vKey, qint32 vShift, qint16 vKeycode, bool& vCancel)>;

    explicit ctlAccelerator(QWidget* vOwner, QObject* vParent = nullptr);
    ~ctlAccelerator() override;

    void SetHandler(Handler vHandler) { handler_ = std::move(vHandler); }

    // Refused, quietly, when the key is registered already, the code is 0 or the combination is
    // taken by another key. The first record starts the watch.
    void Add(const QString& vKey, qint32 vShift, qint16 vKeycode, qint32 vAccelType = AccelEvent,
             QObject* vTarget = nullptr, qint32 vTargetId = 0);
    // The last record's removal ends the watch.
    void Remove(const QString& vKey);

    qint16 Keycode(const QString& vKey) const;
    qint32 Shift(const QString& vKey) const;

    // Records count from 1.
    int Count() const { return static_cast<int>(records_.size()); }
    const Record& RecordOfNumber(int vNo) const { return records_.at(vNo - 1); }
    // The record registered for a combination, 0 when none is.
    int RecordNumber(qint32 vShift, qint16 vKeycode) const;
    bool Watching() const { return watching_; }

    // One key press of the owner's window, as the filter hands it on; true when it is consumed.
    bool KeyDown(qint32 vShift, qint16 vKeycode);

protected:
    bool eventFilter(QObject* vWatched, QEvent* vEvent) override;

private:
    static QString PropertyName(qint32 vShift, qint16 vKeycode);
    static bool FocusTakesText();
    int IndexOfKey(const QString& vKey) const;
    bool OwnerIsActive(QObject* vReceiver) const;
    bool Perform(const Record& vRecord);
    void Watch(bool vOn);

    QPointer<QWidget> owner_;
    Handler handler_;
    std::vector<Record> records_;
    // "vuaccel" + mask + code -> record number: the look-up from a pressed combination.
    QHash<QString, int> properties_;
    bool watching_ = false;
    bool busy_ = false;
};
