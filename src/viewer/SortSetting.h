#pragma once
// The window's choice of order for files opened together: whether to sort, by name or by the
// time of last change, and which way. Both bulk opens read it the same way.

#include "store/StructuredDataClass.h"

struct SortSetting {
    bool On = false;
    bool ByName = true;
    bool Ascending = true;

    // From the "\ウインドウ\" group (null when absent: no sorting). A group without
    // chkWindowSort raises the store's error, as every reader of that group does.
    static SortSetting Read(const SDC& vWindowGroup);
};
