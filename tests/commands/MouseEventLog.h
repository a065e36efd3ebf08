#pragma once
// Writes every event of a mouse tracker as one line, so that a test compares what happened, and
// in which order, with one list.

#include "commands/clsMouseEvents.h"

#include <QRegularExpression>
#include <QStringList>

#include <ostream>

struct MouseEventLog {
    QStringList lines;

    void Watch(clsMouseEvents& vTracker)
    {
        auto add = [this](const char* vName, int vA, int vB) {
            lines << QStringLiteral("%1 %2 %3").arg(QLatin1String(vName)).arg(vA).arg(vB);
        };
        QObject::connect(&vTracker, &clsMouseEvents::MouseMove, [add](qint32 v) { add("Move", 0, v); });
        QObject::connect(&vTracker, &clsMouseEvents::MouseDown, [add](qint16 b, qint32 v) { add("Down", b, v); });
        QObject::connect(&vTracker, &clsMouseEvents::MouseUp, [add](qint16 b, qint32 v) { add("Up", b, v); });
        QObject::connect(&vTracker, &clsMouseEvents::MouseDblClick, [add](qint16 b, qint32 v) { add("Dbl", b, v); });
        QObject::connect(&vTracker, &clsMouseEvents::MouseWheelRotate, [add](qint16 b, qint32 v) { add("Wheel", b, v); });
        QObject::connect(&vTracker, &clsMouseEvents::OnActionStart, [add](qint32 d) { add("Start", d, 0); });
        QObject::connect(&vTracker, &clsMouseEvents::OnActionMove, [add](qint32 c, qint32 d) { add("Action", c, d); });
        QObject::connect(&vTracker, &clsMouseEvents::OnActionEnd, [add](qint32 c) { add("End", c, 0); });
    }

    // The lines without the plain moves, which most tests don't care about.
    QStringList WithoutMoves() const { return lines.filter(QRegularExpression(QStringLiteral("^(?!Move )"))); }
};

// Readable lines when a comparison fails.
inline void PrintTo(const QString& vText, std::ostream* vOut) { *vOut << '"' << vText.toStdString() << '"'; }
