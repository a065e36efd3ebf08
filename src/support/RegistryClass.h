#pragma once
// The registry of the Windows build, as a small key-value file of the user's own
// (Registry.ini in the user's folder): roots, keys with "\" between their parts, and named
// values that are text (REG_SZ) or numbers (REG_DWORD). Nothing outside the program reads it; it
// keeps what the program's parts stored there on Windows, in the same shape.

#include "store/StructuredDataClass.h"

#include <QString>
#include <QVariant>

class RegistryClass {
public:
    // The registry's file; by default Registry.ini in the user's folder.
    explicit RegistryClass(const QString& vFileName = {});

    void Select_CLASSES_ROOT() { root_ = QStringLiteral("HKEY_CLASSES_ROOT"); }
    void Select_CURRENT_USER() { root_ = QStringLiteral("HKEY_CURRENT_USER"); }
    void Select_LOCAL_MACHINE() { root_ = QStringLiteral("HKEY_LOCAL_MACHINE"); }
    void Select_USERS() { root_ = QStringLiteral("HKEY_USERS"); }
    void Select_PERFORMANCE_DATA() { root_ = QStringLiteral("HKEY_PERFORMANCE_DATA"); }
    void Select_CURRENT_CONFIG() { root_ = QStringLiteral("HKEY_CURRENT_CONFIG"); }
    void Select_DYN_DATA() { root_ = QStringLiteral("HKEY_DYN_DATA"); }

    // A number is stored as REG_DWORD, anything else as text (REG_SZ). An empty value name is
    // the key's unnamed value.
    bool SetValue(const QString& strSubKey, const QString& strValName, const QVariant& varValue);
    // The stored value (a qint32 for REG_DWORD, a QString for REG_SZ), varDefault when absent.
    QVariant GetValue(const QString& strSubKey, const QString& strValName, const QVariant& varDefault = {}) const;
    // The names of the keys right below strRegSubKey, in order.
    QStringList EnumKeys(const QString& strRegSubKey) const;
    // One row per value: "Name" ("(標準)" for the unnamed one), "Type" ("REZ_SZ" for text, as the
    // Windows build spells it, "REG_DWORD" for numbers), "Data".
    SDC EnumValue(const QString& strRegSubKey) const;
    bool DeleteKey(const QString& strSubKey, const QString& strKeyName);
    bool DeleteValue(const QString& strSubKey, const QString& strValName);

private:
    QString Group(const QString& vSubKey) const;

    QString fileName_;
    QString root_ = QStringLiteral("HKEY_CURRENT_USER");
};
