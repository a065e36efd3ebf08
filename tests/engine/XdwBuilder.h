#pragma once
// Writes DocuWorks files the way the vendor's software lays them out, so that tests and
// benchmarks can make documents of any shape: records, drawings, entries, one or more saves,
// the properties block plain or LH5-compressed (literal codes only, which every decoder reads).

#include <QByteArray>
#include <QImage>
#include <QString>

#include <initializer_list>
#include <vector>

namespace xdwtest {

// One element with a one-byte tag and its length in the writer's form.
QByteArray Tlv(quint8 vTag, const QByteArray& vValue);
// A long-form context tag (9F ...) for attribute numbers above 30.
QByteArray LongTlv(quint32 vNumber, const QByteArray& vValue, quint8 vClassBits = 0x80);
// Shortest big-endian two's complement.
QByteArray Int(qint64 vValue);
QByteArray Numbers(std::initializer_list<qint64> vValues);
// An LH5 stream of vData in blocks of literal codes.
QByteArray Lh5Literal(const QByteArray& vData);
quint32 Check(const QByteArray& vBytes);
// One record: depth, kind, then its attributes as they are.
QByteArray Record(int vDepth, quint32 vKind, const QByteArray& vAttributes);

struct Annotation {
    quint32 kind = 0x8011;
    qint64 x = 0, y = 0, width = 0, height = 0;
    QString text;              // stored as %Text in cp932 when not empty
    QByteArray drawing;        // a drawing field list (attribute 7); empty for none
    int rotation = 0;
};

struct PageSpec {
    qint64 width = 21000, height = 29700;
    QByteArray content;        // the page content's drawing field list; empty for a blank page
    std::vector<Annotation> annotations;
};

// The field list of a drawing: kind, data, sizes, compressed with LH5 when vCompress.
QByteArray DrawingFields(int vKind, const QByteArray& vData, qint64 vWidth, qint64 vHeight,
                         bool vCompress);
QByteArray Jpeg(const QImage& vImage);
// A JPEG page content drawing of the page size.
QByteArray JpegContent(const QImage& vImage, qint64 vWidth, qint64 vHeight);

// The records of a standalone document (root C013) holding vPages. With vEntries, page content
// drawings go into entries appended there and the records refer to them, as printed documents
// keep their pages.
QByteArray DocumentRecords(const std::vector<PageSpec>& vPages, int vBaseDepth = 0,
                           std::vector<QByteArray>* vEntries = nullptr);
// A binder (root C014) of documents.
QByteArray BinderRecords(const std::vector<std::vector<PageSpec>>& vDocuments);

struct FileOptions {
    int generation = 7;
    bool compress = true;      // 63 (LH5) or 62 (plain) properties
    quint32 rootKind = 0xC013;
    std::vector<QByteArray> entries;   // raw entry bodies, listed by the trailer
    bool breakCheck = false;           // write a wrong check value
    bool contentInEntries = false;     // Document(): page drawings in entries
};

FileOptions Options(int vGeneration, bool vCompress, quint32 vRootKind = 0xC013, bool vBreakCheck = false);

// A whole file of one segment.
QByteArray File(const QByteArray& vRecords, const FileOptions& vOptions = {});
QByteArray Document(const std::vector<PageSpec>& vPages, const FileOptions& vOptions = {});

} // namespace xdwtest
