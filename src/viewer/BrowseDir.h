#pragma once
// The desktop's folder chooser, opened at a start folder. Its object name is "BrowseForFolder",
// so that a test (or an automation tool) finds the dialog while it is up.

#include <QString>

class QWidget;

// The chosen folder, or "" on cancel. vStartFolder blank: wherever the dialog starts by itself.
QString BrowseForFolder(QWidget* vOwner, const QString& vTitle, const QString& vStartFolder);
