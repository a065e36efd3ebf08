#pragma once
// The fixed action names in the order the options dialog lists them, each with the operation it
// reaches. The names are stored in users' settings files, so none may change, not even the
// size captions that look wrong (see the table).

#include <QString>

#include <array>

class ViewerOperations;

struct FixedAction {
    QString Name;
    void (*Run)(ViewerOperations& vForm);  // null for "なし", which does nothing
};

const std::array<FixedAction, 29>& FixedActions();
