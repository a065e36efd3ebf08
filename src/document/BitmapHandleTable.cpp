#include "document/BitmapHandleTable.h"

#include <limits>

qint32 BitmapHandleTable::Take(QImage vImage)
{
    // Numbers go up and are not reused soon, so that a handle freed by mistake and then used
    // again finds nothing instead of somebody else's picture.
    do {
        lastHandle_ = lastHandle_ == std::numeric_limits<qint32>::max() ? 1 : lastHandle_ + 1;
    } while (images_.contains(lastHandle_));
    images_.emplace(lastHandle_, std::move(vImage));
    ++takenCount_;
    return lastHandle_;
}

const QImage* BitmapHandleTable::Get(qint32 vHandle) const
{
    const auto it = images_.find(vHandle);
    return it == images_.end() ? nullptr : &it->second;
}

bool BitmapHandleTable::Free(qint32 vHandle)
{
    return images_.erase(vHandle) > 0;
}
