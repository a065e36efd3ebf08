#pragma once
// The writing commands of marnoquill-doc: documents made from images, merged documents, OCR and
// attributes. They go through the document classes as a script would, so their checks and
// texts are the library's own; a failure is raised (AppError) for the caller to print.

#include <QStringList>
#include <QTextStream>

class XdwEngine;

namespace docwrite {

struct Options {
    QString compress = QStringLiteral("NORMAL");
    QString fit = QStringLiteral("FITDEF");
    QString language = QStringLiteral("JAPANESE");
};

// create OUT.xdw IMAGE...: every page of every image, in order.
void Create(const QStringList& vPaths, const Options& vOptions);
// merge OUT.xdw IN.xdw...
void Merge(const QStringList& vPaths);
// ocr FILE: recognises every page made from an image, saves, and prints each page's text.
void Ocr(const QString& vPath, const Options& vOptions, QTextStream& vOut);
// attr FILE: every attribute's name; attr FILE NAME: its value; attr FILE NAME VALUE TYPE: sets it.
void Attributes(XdwEngine& vEngine, const QStringList& vArguments, QTextStream& vOut);

} // namespace docwrite
