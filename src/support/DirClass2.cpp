#include "support/DirClass2.h"

qint64 DirClass2::ChangeKbSize(qint64 vSize)
{
    if (vSize <= 0)
        return 0;
    return (vSize + 1023) / 1024;
}
