#include "viewer/AppRulerCtrlClass.h"

#include "settings/SettingsThreads.h"
#include "support/AppError.h"
#include "viewer/NumericText.h"
#include "viewer/PagePane.h"

#include <cmath>

namespace {

const QString kWindowGroup = QStringLiteral("\\ウインドウ\\");
const QString kRuler = QStringLiteral("Ruler");
const QString kType = QStringLiteral("Type");
const QString kTop = QStringLiteral("Top");
const QString kLeft = QStringLiteral("Left");
const QString kMouseX = QStringLiteral("MouseX");
const QString kMouseY = QStringLiteral("MouseY");

// Positions are kept as the text of a 32-bit float, so that a settings dump of the tree reads
// the same as the Windows build's.
QString FloatText(double vValue) { return QString::number(static_cast<float>(vValue), 'g', 7); }
double FloatOf(const QString& vText) { return static_cast<double>(vText.toFloat()); }

int Pixel(double vValue) { return static_cast<int>(std::lround(vValue)); }

} // namespace

AppRulerCtrlClass::AppRulerCtrlClass(QWidget* vForm)
    : QObject(vForm), data_(std::make_shared<StructuredDataClass>()), form_(vForm)
{
}

AppRulerCtrlClass::~AppRulerCtrlClass() { AllDeleteRuler(); }

void AppRulerCtrlClass::ReadSettings(const SDC& vDetailSet)
{
    if (!vDetailSet || !vDetailSet->Exists(kWindowGroup))
        return;
    const SDC group = vDetailSet->Thread(kWindowGroup);
    const qint32 width = Int32OfText(settingsthreads::Setting(group, QStringLiteral("txtRulerWidth"), QStringLiteral("Text")));
    const qint32 color = Int32OfText(settingsthreads::Setting(group, QStringLiteral("picRulerColor"), QStringLiteral("BackColor")));
    SetRulerWidth(width);
    SetRulerColor(color);
}

void AppRulerCtrlClass::SetPane(const QString& vName, PagePane* vPane)
{
    connect(vPane, &PagePane::Painted, this, [this, vPane, vName] {
        if (!dragging_)
            UpdateRuler(vPane, vName);
    });
}

qint16 AppRulerCtrlClass::AddRuler(PagePane* vPane, const QString& vName, int vType)
{
    if (!vPane || (vType != 0 && vType != 1))
        return 0;
    const SDC pane = data_->Exists(vName) ? data_->Thread(vName) : data_->CreateThread(vName);
    const SDC ruler = pane->CreateThread();
    const qint16 index = ruler->ObjectKey().toShort();

    const bool vertical = vType == 1;
    auto* bar = new RulerBar(*this, vPane, vName, index, vertical);
    bar->setObjectName(rulerControl_);
    const QSize bitmap = vPane->BitmapSize();
    if (vertical) {
        ruler->AddData(Vertical, kType);
        ruler->AddData(FloatText(bitmap.width() / 2.0), kLeft);
    } else {
        ruler->AddData(Horizon, kType);
        ruler->AddData(FloatText(bitmap.height() / 2.0), kTop);
    }
    ruler->AddReference(std::make_shared<RulerHandle>(bar), kRuler);
    // Laid out as every paint will lay it, so that it appears where it will stay.
    Lay(*bar, *ruler);
    bar->show();
    return index;
}

void AppRulerCtrlClass::UpdateRuler(PagePane* vPane, const QString& vName)
{
    // Runs inside the pane's paint: nothing here may raise.
    const SDC pane = PaneThread(vName);
    if (!pane || !vPane)
        return;
    for (qint16 i = 1; i <= pane->Count(); ++i) {
        const SDC ruler = pane->ThreadOfNumber(i);
        if (!ruler)
            continue;
        const auto handle = ruler->DataReference(kRuler).As<RulerHandle>();
        if (handle && handle->Bar)
            Lay(*handle->Bar, *ruler);
    }
}

// The bar from its bitmap position: its near edge on that line of the page, as long as the page
// is painted, as thick as the setting says.
void AppRulerCtrlClass::Lay(RulerBar& vBar, const StructuredDataClass& vRuler) const
{
    const PagePane& pane = *vBar.Pane();
    const double scale = pane.PaintScale();
    const QSize bitmap = pane.BitmapSize();
    const int thickness = std::max(0, rulerWidth_);
    QRect place;
    if (vRuler.DataValue(kType) == Vertical) {
        const QPointF at = pane.BitmapToClient(QPointF(FloatOf(vRuler.DataValue(kLeft)), 0));
        place = QRect(Pixel(at.x()), Pixel(at.y()), thickness, Pixel(bitmap.height() * scale));
    } else {
        const QPointF at = pane.BitmapToClient(QPointF(0, FloatOf(vRuler.DataValue(kTop))));
        place = QRect(Pixel(at.x()), Pixel(at.y()), Pixel(bitmap.width() * scale), thickness);
    }
    // Re-laying happens on every paint of the pane; a bar that is already right must not make
    // the pane paint again.
    if (vBar.geometry() != place)
        vBar.setGeometry(place);
    vBar.SetBackColor(ColorOfNumber(rulerColor_));
}

void AppRulerCtrlClass::MoveRuler(PagePane* vPane, const QString& vName, qint16 vIndex, int vX, int vY)
{
    const SDC ruler = RulerThread(vName, vIndex);
    RulerBar* bar = Ruler(vName, vIndex);
    if (!ruler || !bar || !vPane)
        return;
    // Only the pointer's movement across the ruler counts; the ruler is not held to the page, so
    // it can be pushed out of sight.
    if (ruler->DataValue(kType) == Vertical) {
        const double step = vX - FloatOf(ruler->DataValue(kMouseX));
        const double client = vPane->BitmapToClient(QPointF(FloatOf(ruler->DataValue(kLeft)), 0)).x();
        bar->move(Pixel(client + step), bar->y());
        ruler->AddData(FloatText(vPane->ClientToBitmap(QPointF(bar->x(), 0)).x()), kLeft);
    } else {
        const double step = vY - FloatOf(ruler->DataValue(kMouseY));
        const double client = vPane->BitmapToClient(QPointF(0, FloatOf(ruler->DataValue(kTop)))).y();
        bar->move(bar->x(), Pixel(client + step));
        ruler->AddData(FloatText(vPane->ClientToBitmap(QPointF(0, bar->y())).y()), kTop);
    }
}

void AppRulerCtrlClass::AllDeleteRuler()
{
    for (qint16 p = 1; p <= data_->Count(); ++p) {
        const SDC pane = data_->ThreadOfNumber(p);
        for (qint16 i = 1; pane && i <= pane->Count(); ++i) {
            const SDC ruler = pane->ThreadOfNumber(i);
            if (const auto handle = ruler ? ruler->DataReference(kRuler).As<RulerHandle>() : nullptr)
                delete handle->Bar.data();
        }
        if (pane)
            pane->Clear();
    }
    data_->Clear();
    // A drag cut short by the deletion would otherwise keep every pane from re-laying rulers.
    dragging_ = false;
}

SDC AppRulerCtrlClass::PaneThread(const QString& vName) const
{
    return data_->Exists(vName) ? data_->Thread(vName) : nullptr;
}

SDC AppRulerCtrlClass::RulerThread(const QString& vName, qint16 vIndex) const
{
    const SDC pane = PaneThread(vName);
    const QString key = QString::number(vIndex);
    return pane && pane->Exists(key) ? pane->Thread(key) : nullptr;
}

RulerBar* AppRulerCtrlClass::Ruler(const QString& vName, qint16 vIndex) const
{
    const SDC ruler = RulerThread(vName, vIndex);
    const auto handle = ruler ? ruler->DataReference(kRuler).As<RulerHandle>() : nullptr;
    return handle ? handle->Bar.data() : nullptr;
}

void AppRulerCtrlClass::RulerMouseDown(RulerBar& vBar, QPoint vScreen)
{
    const SDC ruler = RulerThread(vBar.PaneName(), vBar.Index());
    if (!ruler)
        return;
    dragging_ = true;
    ruler->AddData(QString::number(vScreen.x()), kMouseX);
    ruler->AddData(QString::number(vScreen.y()), kMouseY);
}

void AppRulerCtrlClass::RulerMouseMove(RulerBar& vBar, QPoint vScreen)
{
    if (!dragging_)
        return;
    MoveRuler(vBar.Pane(), vBar.PaneName(), vBar.Index(), vScreen.x(), vScreen.y());
    if (const SDC ruler = RulerThread(vBar.PaneName(), vBar.Index())) {
        ruler->AddData(QString::number(vScreen.x()), kMouseX);
        ruler->AddData(QString::number(vScreen.y()), kMouseY);
    }
}

void AppRulerCtrlClass::RulerMouseUp() { dragging_ = false; }

QColor AppRulerCtrlClass::ColorOfNumber(qint32 vColor)
{
    const auto number = static_cast<quint32>(vColor);
    return QColor(int(number & 0xFF), int(number >> 8 & 0xFF), int(number >> 16 & 0xFF));
}
