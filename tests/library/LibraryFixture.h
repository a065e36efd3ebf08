#pragma once
// A test with the Linux engine installed behind the document classes, a folder of its own, and
// ways to make images and read pages back.

#include "document/DocuWorksClass.h"
#include "document/DocuWorksFileClass.h"
#include "engine/XdwEngine.h"

#include <QImage>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>

class LibraryTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    QString Path(const QString& vName) const { return dir_.filePath(vName); }
    // Page vPage of the file at vDpi in colour, read through a fresh open.
    QImage Page(const QString& vPath, int vPage, int vDpi);
    int Pages(const QString& vPath);
    QString Text(const QString& vPath, int vPage);
    // The 6300 text an operation raised, or "" when it raised nothing.
    template <typename F>
    static QString Raised(F vOperation);

    std::shared_ptr<XdwEngine> engine_;
    QTemporaryDir dir_;
};

// A page of text strokes and a photograph-like gradient, for round trips.
QImage Strokes(QSize vSize, bool vColour);
double Psnr(const QImage& vA, const QImage& vB);
QString SharedSample(const char* vName);

template <typename F>
QString LibraryTest::Raised(F vOperation)
{
    try {
        vOperation();
    } catch (const std::exception& e) {
        return QString::fromUtf8(e.what());
    }
    return {};
}
