#pragma once
// Page edits on an editable file: pages counted from 1 over the whole file, a binder's documents
// one after another. Pages carried between files bring the entries their records refer to and
// get fresh ids in the document that takes them, so ids and the page list's count stay true.
// A bad page number or position fails with InvalidArg (xdw::FormatError), the tree unchanged.

#include "engine/write/Saver.h"

#include <vector>

namespace xdw {

// An empty standalone document of generation 7 or 10: no pages yet, not saved yet.
EditableFile NewDocument(int vGeneration = 7);

int PageCount(const EditableFile& vFile);

// Puts every page of vSource before page vPosition of vTarget (count + 1 appends to the last
// document). vSource may be vTarget itself.
void InsertPages(EditableFile& vTarget, int vPosition, const EditableFile& vSource);
// Refuses (InvalidOperation) to take the only page of a document: a document has pages.
void DeletePage(EditableFile& vFile, int vPage);
// A new document of the same generation holding a copy of the page.
EditableFile ExtractPage(const EditableFile& vFile, int vPage);
// Turns the page clockwise by 90, 180 or 270 degrees: the page's size, its placements' boxes
// and the drawings' own turn inside them. Other angles are InvalidArg.
void RotatePage(EditableFile& vFile, int vPage, int vDegree);
// A new document of the first file's generation with the pages of all, in order; an empty list
// is InvalidArg.
EditableFile MergeFiles(const std::vector<const EditableFile*>& vFiles);

} // namespace xdw
