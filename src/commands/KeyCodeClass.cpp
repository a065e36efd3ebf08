#include "commands/KeyCodeClass.h"

#include <QStringList>

#include <utility>
#include <vector>

namespace {

using Row = std::pair<QString, qint16>;

// The 109 keys a binding may name, in drop-down order.
const std::vector<Row>& Rows()
{
    static const std::vector<Row> rows = [] {
        std::vector<Row> r;
        r.reserve(109);
        for (int i = 0; i <= 9; ++i)
            r.emplace_back(QString::number(i), qint16(48 + i));
        for (int i = 0; i < 26; ++i)
            r.emplace_back(QString(QChar(u'A' + i)), qint16(65 + i));
        const std::vector<Row> named = {
            {"Back", 8},        {"Cancel", 3},     {"Capital", 20},      {"Clear", 12},
            {"Delete", 46},     {"Down", 40},      {"End", 35},          {"Escape", 27},
            {"Execute", 43},    {"Help", 47},      {"Home", 36},         {"Insert", 45},
            {"LButton", 1},     {"Left", 37},      {"MButton", 4},       {"PageDown", 34},
            {"PageUp", 33},     {"Pause", 19},     {"Print", 42},        {"RButton", 2},
            {"Return", 13},     {"Right", 39},     {"ScrollLock", 145},  {"Select", 41},
            {"Separator", 108}, {"PrintScreen", 44}, {"Space", 32},      {"Tab", 9},
            {"Up", 38},         {"Numlock", 144},  {"Num .", 110},       {"Num +", 107},
            {"Num -", 109},     {"Num *", 106},    {"Num /", 111}};
        r.insert(r.end(), named.begin(), named.end());
        for (int i = 0; i <= 9; ++i)
            r.emplace_back(QStringLiteral("Num ") + QString::number(i), qint16(96 + i));
        for (int i = 1; i <= 16; ++i)
            r.emplace_back(QStringLiteral("F") + QString::number(i), qint16(111 + i));
        const std::vector<Row> japanese = {
            {"@", 192}, {"[", 219}, {";", 187}, {":", 186}, {"]", 221}, {",", 188},
            {".", 190}, {"/", 191}, {"BackSlash", 226}, {"-", 189}, {"^", 222}, {"\\", 220}};
        r.insert(r.end(), japanese.begin(), japanese.end());
        return r;
    }();
    return rows;
}

}  // namespace

KeyCodeClass::KeyCodeClass()
    : keyName_(std::make_shared<StructuredDataClass>()),
      keycode_(std::make_shared<StructuredDataClass>())
{
    for (const auto& [name, code] : Rows()) {
        keyName_->AddData(name, QString::number(code));
        keycode_->AddData(QString::number(code), name);
    }
}

qint32 KeyCodeClass::GetMaskCode(const QString& vKeyString)
{
    qint32 mask = 0;
    if (vKeyString.contains(QLatin1String("Shift")))
        mask += MaskShift;
    if (vKeyString.contains(QLatin1String("Ctrl")))
        mask += MaskCtrl;
    if (vKeyString.contains(QLatin1String("Alt")))
        mask += MaskAlt;
    return mask;
}

qint16 KeyCodeClass::GetKeyCode(const QString& vKeyString) const
{
    const QString name = vKeyString.split(u'+').last().trimmed();
    if (name.isEmpty() || !keycode_->Exists(name))
        return 0;
    return static_cast<qint16>(keycode_->DataValue(name).toInt());
}

QString KeyCodeClass::GetKeyCodeString(qint16 vKeycode, qint32 vMask) const
{
    QString name;
    switch (vKeycode) {
    case 16: name = QStringLiteral("Shift"); break;
    case 17: name = QStringLiteral("Ctrl"); break;
    case 18: name = QStringLiteral("Alt"); break;
    default: name = keyName_->DataValue(QString::number(vKeycode)); break;
    }
    if (name.isEmpty())
        return {};
    QString text;
    if (vMask & MaskShift)
        text += QStringLiteral("Shift + ");
    if (vMask & MaskCtrl)
        text += QStringLiteral("Ctrl + ");
    if (vMask & MaskAlt)
        text += QStringLiteral("Alt + ");
    return text + name;
}

QString KeyCodeClass::ShortCutKeyString(qint32 vMask, const QString& vKeyName)
{
    QString text;
    if (vMask & MaskCtrl)
        text += QStringLiteral("Ctrl + ");
    if (vMask & MaskShift)
        text += QStringLiteral("Shift + ");
    if (vMask & MaskAlt)
        text += QStringLiteral("Alt + ");
    return text + vKeyName;
}
