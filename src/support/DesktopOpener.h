#pragma once
// Hands a file or a folder to the desktop's opener, xdg-open, the way a user's file manager
// would open it. Qt's own openUrl neither says when there is no opener nor sees the opener fail
// afterwards, so the help or the settings folder just never appeared; running the opener here
// lets the caller tell the user what to open by hand.

#include <QString>

#include <functional>

namespace desktopopener {

// The opener found on PATH, "" when there is none.
QString OpenerProgram();

// Starts the opener on vPath. vOnFailure runs at once when there is no opener or it can't be
// started, and later, from the event loop, when the opener ends with an error. The opener may
// run as long as the program it started, and is left running when we quit.
void Open(const QString& vPath, const std::function<void()>& vOnFailure);

} // namespace desktopopener
