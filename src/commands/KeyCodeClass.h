#pragma once
// Key strings and the virtual-key codes behind them. A binding is stored as text, "Ctrl + Shift +
// A"; the accelerator compares numbers, a modifier mask and a key code. The code numbers are the
// Windows build's, so a settings file moves between the two unchanged. The names and codes of
// the last twelve rows are those of a Japanese 106-key keyboard.

#include "store/StructuredDataClass.h"

#include <QString>

class KeyCodeClass {
public:
    // The modifier bits of a mask, added up.
    enum : qint32 { MaskShift = 1, MaskCtrl = 2, MaskAlt = 4 };

    KeyCodeClass();

    // Code in decimal -> name, in the order of the key drop-down of the options dialog.
    SDC KeyName() const { return keyName_; }
    // Name -> code in decimal.
    SDC Keycode() const { return keycode_; }

    // A plain text search for the three modifier words; case matters, as the words are written
    // by the options page only.
    static qint32 GetMaskCode(const QString& vKeyString);
    // The trimmed text after the last "+", looked up by name; 0 when it is no key of the table.
    // "Num +" therefore gives 0 and is never registered.
    qint16 GetKeyCode(const QString& vKeyString) const;
    // Modifiers in the order Shift, Ctrl, Alt, then the name; "" for a code without a name.
    // Knows the modifier keys themselves too, which the tables lack.
    QString GetKeyCodeString(qint16 vKeycode, qint32 vMask) const;

    // The form the options page writes: "Ctrl + ", "Shift + ", "Alt + " in that order, then the
    // key name. This is the form that key strings stored in settings files have.
    static QString ShortCutKeyString(qint32 vMask, const QString& vKeyName);

private:
    SDC keyName_;
    SDC keycode_;
};
