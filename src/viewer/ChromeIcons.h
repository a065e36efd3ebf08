#pragma once
// The pictures of the bars, menus and tabs, asked for by the keys the buttons name them with
// ("FILE02_16", "HELP01_16", ...). The desktop theme supplies them where it has one; otherwise
// the widget style's own pictures stand in, so that no key ever comes back without a picture.

#include <QIcon>
#include <QString>

QIcon ChromeIcon(const QString& vKey);
