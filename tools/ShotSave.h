#pragma once
// Saves a grab of a widget into the screenshot folder and prints where, once the window has
// painted what is pending.

#include <QApplication>
#include <QDir>
#include <QWidget>

#include <cstdio>

inline void SaveShot(QWidget* vWidget, const QDir& vFolder, const char* vName)
{
    QApplication::processEvents();
    const QString path = vFolder.filePath(QString::fromLatin1(vName));
    if (vWidget->grab().save(path))
        std::printf("%s\n", path.toLocal8Bit().constData());
}
