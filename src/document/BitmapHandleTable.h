#pragma once
// The pictures an engine has handed out, by handle number. A page is rendered into a picture
// that the engine keeps until the caller gives the handle back, as a global memory handle of
// the Windows runtime stays allocated until it is freed; holding them in one table lets us
// count what is still live and find a handle that was never freed.

#include <QImage>
#include <QtGlobal>

#include <map>

class BitmapHandleTable {
public:
    // Keeps vImage and returns its handle: never 0, never one that is still live.
    qint32 Take(QImage vImage);
    // The picture of a live handle, or null. The pointer is good until the handle is freed.
    const QImage* Get(qint32 vHandle) const;
    // False when vHandle isn't live (never given, or freed already).
    bool Free(qint32 vHandle);
    qsizetype LiveCount() const { return static_cast<qsizetype>(images_.size()); }
    // Handles given out over the table's life, freed or not.
    qint64 TakenCount() const { return takenCount_; }

private:
    std::map<qint32, QImage> images_;
    qint32 lastHandle_ = 0;
    qint64 takenCount_ = 0;
};
