#include "viewer/FileDragSource.h"

#include <QApplication>
#include <QDrag>
#include <QMimeData>
#include <QMouseEvent>
#include <QUrl>
#include <QWidget>

FileDragSource::FileDragSource(QWidget* vPicture, std::function<QString()> vPathOf)
    : QObject(vPicture), picture_(vPicture), pathOf_(std::move(vPathOf))
{
    picture_->installEventFilter(this);
}

QMimeData* FileDragSource::DragData(const QString& vPath)
{
    if (vPath.isEmpty())
        return nullptr;
    auto* data = new QMimeData;
    data->setUrls({QUrl::fromLocalFile(vPath)});
    return data;
}

bool FileDragSource::eventFilter(QObject* vWatched, QEvent* vEvent)
{
    if (vWatched != picture_)
        return false;
    if (vEvent->type() == QEvent::MouseButtonPress) {
        const auto* e = static_cast<QMouseEvent*>(vEvent);
        pressed_ = e->button() == Qt::LeftButton;
        pressedAt_ = e->position().toPoint();
    } else if (vEvent->type() == QEvent::MouseButtonRelease) {
        pressed_ = false;
    } else if (vEvent->type() == QEvent::MouseMove && pressed_) {
        const auto* e = static_cast<QMouseEvent*>(vEvent);
        if ((e->position().toPoint() - pressedAt_).manhattanLength() < QApplication::startDragDistance())
            return false;
        pressed_ = false;
        QMimeData* data = DragData(pathOf_());
        if (!data)
            return true;  // nothing shown, nothing to offer
        auto* drag = new QDrag(picture_);
        drag->setMimeData(data);
        drag->setPixmap(picture_->grab());
        drag->exec(Qt::CopyAction, Qt::CopyAction);
        return true;
    }
    return false;
}
