#pragma once
// A binder's documents as editable things: put a document in at a position, read its name, take
// a copy of it out as a file of its own, take it away. Positions count from 1; a bad one, or a
// file that is no binder, fails with InvalidArg (xdw::FormatError).

#include "engine/write/Saver.h"

#include <QString>

namespace xdw {

// An empty binder of generation 7 or 10, not saved yet.
EditableFile NewBinder(int vGeneration = 7);

int DocumentCount(const EditableFile& vBinder);

// Puts a copy of the document vDocument before document vPosition (count + 1 appends), under
// vName, with the entries it refers to.
void InsertDocument(EditableFile& vBinder, int vPosition, const EditableFile& vDocument, const QString& vName);
QString DocumentName(const EditableFile& vBinder, int vPosition);
// A standalone document of the binder's generation.
EditableFile ExtractDocument(const EditableFile& vBinder, int vPosition);
void DeleteDocument(EditableFile& vBinder, int vPosition);

} // namespace xdw
