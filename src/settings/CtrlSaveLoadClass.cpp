#include "settings/CtrlSaveLoadClass.h"

#include <QScreen>
#include <QWindow>

#include <cmath>

namespace {

QString GroupOf(const QString& vGroupName)
{
    return vGroupName.isEmpty() ? CtrlSaveLoadClass::DefaultGroup : vGroupName;
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

void CtrlSaveLoadClass::Grouping(const QString& vGroupName, const QString& vControlName)
{
    SDC data = Data();
    const SDC group = data->Exists(vGroupName) && data->Thread(vGroupName) ? data->Thread(vGroupName)
                                                                            : data->CreateThread(vGroupName);
    group->CreateThread(vControlName);
}

void CtrlSaveLoadClass::SaveValue(const QString& vGroupName)
{
    const QString name = GroupOf(vGroupName);
    SDC data = Data();
    // A group that lists names keeps exactly those: the list is taken aside and the group
    // rebuilt from it, so values of controls no longer listed don't linger.
    if (data->Exists(name) && data->Thread(name) && data->Thread(name)->Count() > 0) {
        const QStringList listed = data->Thread(name)->RefDataKey();
        data->Thread(name)->Clear();
        for (const QString& control : listed)
            Grouping(name, control);
    }
    if (!form_)
        return;
    const SDC group = data->Exists(name) && data->Thread(name) ? data->Thread(name) : data->CreateThread(name);
    const SDC geometry = group->CreateThread(QStringLiteral("Form"));
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
    // Values of individual controls are written by the options pages, which bring their types.
}

void CtrlSaveLoadClass::LoadValue(const QString& vGroupName)
{
    const QString name = GroupOf(vGroupName);
    SDC data = Data();
    if (!form_ || !data->Exists(name) || !data->Thread(name) || data->Thread(name)->Count() == 0)
        return;
    const SDC group = data->Thread(name);
    if (!group->Exists(QStringLiteral("Form")) || !group->Thread(QStringLiteral("Form")))
        return;
    const SDC geometry = group->Thread(QStringLiteral("Form"));
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
    // The stored size is the outer one; the frame, where already known, comes off it.
    const QSize frame = form_->frameGeometry().size() - form_->size();
    form_->resize(static_cast<int>(std::lround(width / twips)) - frame.width(),
                  static_cast<int>(std::lround(height / twips)) - frame.height());
}
