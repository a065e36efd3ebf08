#pragma once
// Makes a small picture the handle for dragging the shown file out of the window: a file manager
// or any other program that takes dropped files gets a copy. With no file shown the drag never
// starts.

#include <QObject>
#include <QPoint>

#include <functional>

class QWidget;
class QMimeData;

class FileDragSource : public QObject {
public:
    // vPathOf gives the file to offer at the moment the drag starts, "" for none.
    FileDragSource(QWidget* vPicture, std::function<QString()> vPathOf);

    // What a drag of vPath carries: the file as a local URL (text/uri-list). Null for "".
    static QMimeData* DragData(const QString& vPath);

protected:
    bool eventFilter(QObject* vWatched, QEvent* vEvent) override;

private:
    QWidget* picture_;
    std::function<QString()> pathOf_;
    QPoint pressedAt_;
    bool pressed_ = false;
};
