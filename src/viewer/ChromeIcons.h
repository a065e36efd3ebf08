#pragma once
// The pictures of the bars, menus and tabs, asked for by the keys the buttons name them with
// ("FILE02_16", "HELP01_16", ...). The desktop theme supplies them by their standard names
// where it has them; otherwise the program's own small pictures stand in (shipped inside the
// program), so that on a bare machine every button still looks like what it does.

#include <QIcon>
#include <QString>

// The picture for an icon key; vButtonKey, when given, may choose a picture of its own: the two
// page buttons share one icon key, yet a user must tell back from forward at a glance.
QIcon ChromeIcon(const QString& vKey, const QString& vButtonKey = {});

// The program's own icon, for its windows and the desktop entry.
QIcon ApplicationIcon();
