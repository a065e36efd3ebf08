#include "settings/CtrlSaveLoadClass.h"

#include "settings/ColorSwatch.h"
#include "settings/OuterSize.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>
#include <QTabBar>
#include <QTreeWidget>

#include <cmath>

namespace {

QString GroupOf(const QString& vGroupName)
{
    return vGroupName.isEmpty() ? CtrlSaveLoadClass::DefaultGroup : vGroupName;
}

SDC ThreadOrNull(const SDC& vNode, const QString& vKey)
{
    return vNode && vNode->Exists(vKey) ? vNode->Thread(vKey) : nullptr;
}

// A stored measure is used only when it is a number above 0: a window saved at the very left
// or top edge, or on a screen to the left, comes back where the window manager puts it.
bool ReadMeasure(const SDC& vForm, const QString& vKey, double& vTwips)
{
    bool ok = false;
    const double v = vForm->DataValue(vKey).trimmed().toDouble(&ok);
    if (!ok || !(v > 0))
        return false;
    vTwips = v;
    return true;
}

// The controls a form holds, in the order they were made; Qt's own helpers ("qt_...") and
// unnamed widgets are no controls of the form.
QList<QWidget*> Controls(QWidget* vForm)
{
    QList<QWidget*> out;
    for (QWidget* w : vForm->findChildren<QWidget*>()) {
        const QString name = w->objectName();
        if (!name.isEmpty() && !name.startsWith(QLatin1String("qt_")))
            out.append(w);
    }
    return out;
}

} // namespace

SDC CtrlSaveLoadClass::Data()
{
    if (!data_)
        data_ = std::make_shared<StructuredDataClass>();
    return data_;
}

double CtrlSaveLoadClass::TwipsPerPixel(const QWidget* vForm)
{
    const int dpi = vForm ? vForm->logicalDpiX() : 96;
    return 1440.0 / (dpi > 0 ? dpi : 96);
}

// In the order the Windows build asks a control for its interface; ColorSwatch is a QFrame, as
// QLabel is, so only a group box counts as a frame.
QString CtrlSaveLoadClass::TypeOf(const QWidget* vControl)
{
    if (qobject_cast<const QLineEdit*>(vControl))
        return QStringLiteral("TextBox");
    if (qobject_cast<const QComboBox*>(vControl))
        return QStringLiteral("ComboBox");
    if (qobject_cast<const QListWidget*>(vControl))
        return QStringLiteral("ListBox");
    if (qobject_cast<const QCheckBox*>(vControl))
        return QStringLiteral("CheckBox");
    if (qobject_cast<const QRadioButton*>(vControl))
        return QStringLiteral("OptionButton");
    if (qobject_cast<const QGroupBox*>(vControl))
        return QStringLiteral("Frame");
    if (qobject_cast<const QTabBar*>(vControl))
        return QStringLiteral("TabStrip");
    if (qobject_cast<const QTreeWidget*>(vControl))
        return QStringLiteral("ListView");
    if (qobject_cast<const ColorSwatch*>(vControl))
        return QStringLiteral("PictureBox");
    return {};
}

int CtrlSaveLoadClass::ControlIndex(const QWidget* vControl)
{
    const QVariant index = vControl->property("Index");
    return index.isValid() ? index.toInt() : -1;
}

void CtrlSaveLoadClass::Grouping(const QString& vGroupName, const QString& vControlName)
{
    SDC data = Data();
    const SDC group = ThreadOrNull(data, vGroupName) ? data->Thread(vGroupName) : data->CreateThread(vGroupName);
    group->CreateThread(vControlName);
}

void CtrlSaveLoadClass::SaveValue(const QString& vGroupName)
{
    const QString name = GroupOf(vGroupName);
    SDC data = Data();
    // A group that lists names keeps exactly those: the list is taken aside and the group
    // rebuilt from it, so values of controls no longer listed don't linger.
    bool listed = false;
    if (const SDC group = ThreadOrNull(data, name); group && group->Count() > 0) {
        const QStringList names = group->RefDataKey();
        group->Clear();
        for (const QString& control : names)
            Grouping(name, control);
        listed = true;
    }
    if (!form_)
        return;
    const SDC group = ThreadOrNull(data, name) ? data->Thread(name) : data->CreateThread(name);
    SaveGeometry(group);
    for (QWidget* control : Controls(form_)) {
        const QString type = TypeOf(control);
        if (type.isEmpty())
            continue;
        const QString key = control->objectName();
        if (listed && !group->Exists(key))
            continue;
        SDC thread = ThreadOrNull(group, key) ? group->Thread(key) : group->CreateThread(key);
        if (const int index = ControlIndex(control); index >= 0) {
            const QString sub = QString::number(index);
            thread = ThreadOrNull(thread, sub) ? thread->Thread(sub) : thread->CreateThread(sub);
        }
        SaveControl(control, type, thread);
    }
}

void CtrlSaveLoadClass::LoadValue(const QString& vGroupName)
{
    const SDC group = ThreadOrNull(Data(), GroupOf(vGroupName));
    if (!form_ || !group || group->Count() == 0)
        return;
    LoadGeometry(group);
    for (QWidget* control : Controls(form_)) {
        const QString type = TypeOf(control);
        SDC thread = type.isEmpty() ? nullptr : ThreadOrNull(group, control->objectName());
        if (const int index = ControlIndex(control); thread && index >= 0)
            thread = ThreadOrNull(thread, QString::number(index));
        if (thread)
            LoadControl(control, thread);
    }
}

void CtrlSaveLoadClass::SaveGeometry(const SDC& vGroup)
{
    const SDC geometry = vGroup->CreateThread(QStringLiteral("Form"));
    const double twips = TwipsPerPixel(form_);
    auto put = [&](const QString& vKey, int vPixels) {
        geometry->AddData(QString::number(std::lround(vPixels * twips)), vKey);
    };
    put(QStringLiteral("Top"), form_->pos().y());
    put(QStringLiteral("Left"), form_->pos().x());
    // The outer size, frame included, as the Windows build keeps it; a window whose frame the
    // desktop hasn't told yet counts as frameless.
    put(QStringLiteral("Height"), form_->frameGeometry().height());
    put(QStringLiteral("Width"), form_->frameGeometry().width());
}

void CtrlSaveLoadClass::LoadGeometry(const SDC& vGroup)
{
    const SDC geometry = ThreadOrNull(vGroup, QStringLiteral("Form"));
    if (!geometry)
        return;
    const double twips = TwipsPerPixel(form_);
    double top = form_->pos().y() * twips;
    double left = form_->pos().x() * twips;
    double height = form_->frameGeometry().height() * twips;
    double width = form_->frameGeometry().width() * twips;
    ReadMeasure(geometry, QStringLiteral("Top"), top);
    ReadMeasure(geometry, QStringLiteral("Left"), left);
    ReadMeasure(geometry, QStringLiteral("Height"), height);
    ReadMeasure(geometry, QStringLiteral("Width"), width);
    form_->move(static_cast<int>(std::lround(left / twips)), static_cast<int>(std::lround(top / twips)));
    outersize::RestoreOuterSize(form_, QSize(static_cast<int>(std::lround(width / twips)),
                                             static_cast<int>(std::lround(height / twips))));
}
