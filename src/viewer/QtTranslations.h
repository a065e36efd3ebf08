#pragma once
// Qt's own dialogs (the file and colour dialogs, the buttons of message boxes) speak English
// unless told otherwise, beside an interface that is Japanese throughout. Their Japanese comes
// from Qt's translation package, wherever this Qt keeps its translations.

class QCoreApplication;

// Loads Qt's Japanese catalogue into vApp. False, and nothing changes, when the package isn't
// installed: the dialogs then stay English, which is no reason to stop.
bool InstallQtJapanese(QCoreApplication& vApp);
