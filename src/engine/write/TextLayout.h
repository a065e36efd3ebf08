#pragma once
// Text as the vendor lays it out in annotation drawings: one text record per line from the top
// left margin, in the record's font at 300 units per inch, each character advancing by half or
// all of the font height. Text annotations, links, stamps and sticky notes all write their text
// through here, so their boxes and their drawings agree.

#include "engine/write/EmfWriter.h"
#include "engine/write/Tree.h"

#include <QPoint>
#include <QString>
#include <QStringList>

namespace xdw::annot {

QStringList Lines(const QString& vText);
// vText broken so that no line is wider than vWidth logical units in the record's font: after
// the last blank that fits where the line has one, else between any two characters, as Japanese
// text breaks. Line breaks already in the text stay.
QString Wrap(const Node& vRecord, const QString& vText, int vWidth);
// The advance of a line in font heights.
double LineEms(const QString& vLine);
// The font height of a record in 1/100 mm.
double EmHundredths(const Node& vRecord);
// The left and top margins in logical units.
QPoint Margins(const Node& vRecord);
// Lines of text from vAt down, in the record's font and vColor, on a transparent background.
void WriteText(EmfWriter& vOut, const Node& vRecord, const QString& vText, QPoint vAt, quint32 vColor,
               bool vUnderline = false);

} // namespace xdw::annot
