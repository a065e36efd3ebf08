#pragma once
// A document or binder held as something to change, and its saving. A file saved again keeps
// every byte it had and gains one segment at its end (its entries that are new, the whole record
// tree, a trailer listing every entry in effect), as the vendor's software saves; a new file is
// a header and one such segment. The bytes go to a temporary file beside the target that is
// renamed over it only once complete, so a save that fails leaves the target as it was.
//
// Failures throw xdw::FormatError with a code of XdwResult, as the readers do.

#include "engine/Container.h"
#include "engine/write/Tree.h"

#include <QByteArray>
#include <QString>

#include <memory>
#include <vector>

namespace xdw {

struct EditableFile {
    int generation = 7;
    quint32 rootKind = KindDocument;
    Node root;
    // The file as it was loaded or last saved, and its reader for the entries it holds; both
    // empty for a file not yet saved. Its entries keep their numbers, 0 up.
    QByteArray base;
    std::shared_ptr<const Container> baseContainer;
    // Entries added since, numbered after the base's.
    std::vector<QByteArray> added;

    qint64 EntryCount() const;
    // The body of entry vNumber; a number the file does not have refuses it as damaged.
    QByteArray EntryBody(qint64 vNumber) const;
    // Adds an entry and gives its number.
    qint64 AddEntry(const QByteArray& vBody);
};

// From the file's bytes, or from a file: FileNotFound, NoPermission, FileInUse (another program
// holds it locked) or the reader's refusal.
EditableFile LoadEditable(const QByteArray& vBytes);
EditableFile LoadEditable(const QString& vPath);

// The bytes a save writes: the base followed by one new segment, or a whole new file.
QByteArray SavedBytes(const EditableFile& vFile);

// Writes vFile to vPath. A file with a base may go over an existing file (its own, normally);
// a new file refuses an existing path with FileExists. Afterwards vFile's base is what was
// written, so the next save appends again. Failures: DiskFull, NoPermission, FileInUse,
// WriteFault; the target is then untouched.
void Save(EditableFile& vFile, const QString& vPath);

} // namespace xdw
