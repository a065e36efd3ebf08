#include "settings/OuterSize.h"

#include <QEvent>
#include <QPointer>
#include <QWidget>

namespace outersize {
namespace {

const QString kWatchName = QStringLiteral("outersize::FrameWatch");

// Watches one window until its frame is known, then gives it its outer size and goes.
class FrameWatch : public QObject {
public:
    FrameWatch(QWidget* vWindow, QSize vOuter) : QObject(vWindow), window_(vWindow), outer_(vOuter)
    {
        setObjectName(kWatchName);
        vWindow->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject* vWatched, QEvent* vEvent) override
    {
        const QEvent::Type type = vEvent->type();
        if (vWatched != window_ || (type != QEvent::Move && type != QEvent::Resize && type != QEvent::Show
                                    && type != QEvent::WindowActivate))
            return false;
        const QSize frame = window_->frameGeometry().size() - window_->size();
        if (window_->size() != outer_) {
            deleteLater();  // sized otherwise since: that size stands
        } else if (!frame.isNull()) {
            window_->removeEventFilter(this);
            window_->resize(outer_ - frame);
            deleteLater();
        } else if (type == QEvent::WindowActivate) {
            deleteLater();
        }
        return false;
    }

private:
    QPointer<QWidget> window_;
    QSize outer_;
};

}  // namespace

void RestoreOuterSize(QWidget* vWindow, QSize vOuter)
{
    if (!vWindow)
        return;
    // A window restored twice keeps the later size only.
    for (QObject* earlier : vWindow->findChildren<QObject*>(kWatchName, Qt::FindDirectChildrenOnly))
        delete earlier;
    const QSize frame = vWindow->frameGeometry().size() - vWindow->size();
    if (!vWindow->isWindow() || !frame.isNull() || vWindow->testAttribute(Qt::WA_WState_Created)) {
        vWindow->resize(vOuter - frame);
        return;
    }
    vWindow->resize(vOuter);
    new FrameWatch(vWindow, vOuter);
}

}  // namespace outersize
