#include "support/RegistryClass.h"

#include "support/UserFolder.h"

#include <QSettings>

namespace {

const QString kUnnamed = QStringLiteral("@");  // the key's unnamed value, as .reg files write it
const QString kText = QStringLiteral("sz:");
const QString kNumber = QStringLiteral("dword:");

} // namespace

RegistryClass::RegistryClass(const QString& vFileName)
    : fileName_(vFileName.isEmpty() ? UserDataFolder() + QStringLiteral("/Registry.ini") : vFileName)
{
}

QString RegistryClass::Group(const QString& vSubKey) const
{
    QString key = vSubKey;
    key.replace(QLatin1Char('\\'), QLatin1Char('/'));
    while (key.endsWith(QLatin1Char('/')))
        key.chop(1);
    while (key.startsWith(QLatin1Char('/')))
        key.remove(0, 1);
    return key.isEmpty() ? root_ : root_ + QLatin1Char('/') + key;
}

bool RegistryClass::SetValue(const QString& strSubKey, const QString& strValName, const QVariant& varValue)
{
    QSettings file(fileName_, QSettings::IniFormat);
    const bool number = varValue.typeId() == QMetaType::Int || varValue.typeId() == QMetaType::UInt
                        || varValue.typeId() == QMetaType::LongLong || varValue.typeId() == QMetaType::Short;
    const QString stored = number ? kNumber + QString::number(static_cast<qint32>(varValue.toLongLong()))
                                  : kText + varValue.toString();
    file.setValue(Group(strSubKey) + QLatin1Char('/') + (strValName.isEmpty() ? kUnnamed : strValName), stored);
    file.sync();
    return file.status() == QSettings::NoError;
}

QVariant RegistryClass::GetValue(const QString& strSubKey, const QString& strValName, const QVariant& varDefault) const
{
    const QSettings file(fileName_, QSettings::IniFormat);
    const QString key = Group(strSubKey) + QLatin1Char('/') + (strValName.isEmpty() ? kUnnamed : strValName);
    if (!file.contains(key))
        return varDefault;
    const QString stored = file.value(key).toString();
    if (stored.startsWith(kNumber))
        return QVariant(stored.mid(kNumber.size()).toInt());
    return QVariant(stored.startsWith(kText) ? stored.mid(kText.size()) : stored);
}

QStringList RegistryClass::EnumKeys(const QString& strRegSubKey) const
{
    QSettings file(fileName_, QSettings::IniFormat);
    file.beginGroup(Group(strRegSubKey));
    return file.childGroups();
}

SDC RegistryClass::EnumValue(const QString& strRegSubKey) const
{
    QSettings file(fileName_, QSettings::IniFormat);
    file.beginGroup(Group(strRegSubKey));
    auto rows = std::make_shared<StructuredDataClass>();
    for (const QString& name : file.childKeys()) {
        const QString stored = file.value(name).toString();
        const bool number = stored.startsWith(kNumber);
        const SDC row = rows->CreateThread();
        row->AddData(name == kUnnamed ? QStringLiteral("(標準)") : name, QStringLiteral("Name"));
        row->AddData(number ? QStringLiteral("REG_DWORD") : QStringLiteral("REZ_SZ"), QStringLiteral("Type"));
        row->AddData(stored.mid(number ? kNumber.size() : stored.startsWith(kText) ? kText.size() : 0), QStringLiteral("Data"));
    }
    return rows;
}

bool RegistryClass::DeleteKey(const QString& strSubKey, const QString& strKeyName)
{
    QSettings file(fileName_, QSettings::IniFormat);
    const QString group = Group(strSubKey) + QLatin1Char('/') + strKeyName;
    file.beginGroup(group);
    const bool existed = !file.childKeys().isEmpty() || !file.childGroups().isEmpty();
    file.endGroup();
    file.remove(group);
    file.sync();
    return existed && file.status() == QSettings::NoError;
}

bool RegistryClass::DeleteValue(const QString& strSubKey, const QString& strValName)
{
    QSettings file(fileName_, QSettings::IniFormat);
    const QString key = Group(strSubKey) + QLatin1Char('/') + (strValName.isEmpty() ? kUnnamed : strValName);
    const bool existed = file.contains(key);
    file.remove(key);
    file.sync();
    return existed && file.status() == QSettings::NoError;
}
