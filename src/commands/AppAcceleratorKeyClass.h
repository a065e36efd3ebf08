#pragma once
// The main window's key bindings: the accelerator control and the list of key strings
// registered on it from the settings, so that they can be lifted again. The window builds one
// with itself as the owner and a handler that looks the key string up in CommandList and runs
// the action found; it calls SetAcceleratorKey at start-up and after the options dialog has
// saved, and RemoveAcceleratorKey around an automation call of an action.

#include "commands/ctlAccelerator.h"
#include "store/StructuredDataClass.h"

#include <QStringList>

#include <functional>

class AppAcceleratorKeyClass {
public:
    using KeyHandler = std::function<void(const QString& vKeyString)>;

    // vOnKey receives the registered key string of each hit, "Ctrl + Shift + A" as the options
    // page wrote it. The key press goes on to the focused control afterwards.
    AppAcceleratorKeyClass(QWidget* vOwner, KeyHandler vOnKey);

    // Lifts the present registrations and registers every key string of the list on the
    // keyboard page of vDetailSet. A string that names no key is skipped without a word. A group
    // without its list (only a hand-edited file has one) raises 6000 from the store, or 91 when
    // the entry is there but is no list.
    void SetAcceleratorKey(const StructuredDataClass& vDetailSet);
    void RemoveAcceleratorKey();

    const QStringList& RegisteredKeys() const { return registered_; }
    ctlAccelerator& ctlAccelerator1() { return accelerator_; }

private:
    ctlAccelerator accelerator_;
    QStringList registered_;
};
