#pragma once
// What the tests of saving and editing share: the real samples when they are beside the
// checkout, and a file read back the way a viewer would read it after a save.

#include "common/TestFiles.h"
#include "engine/FormatError.h"
#include "engine/XdwBuilder.h"
#include "engine/Model.h"
#include "engine/write/Saver.h"

#include <QDir>
#include <QStringList>

namespace writetest {

inline QByteArray Sample(const QString& vName)
{
    const QString dir = testfiles::SharedTestData(QStringLiteral("xdw"));
    return dir.isEmpty() ? QByteArray() : testfiles::ReadBytes(dir + u'/' + vName);
}

inline QStringList SampleNames()
{
    const QString dir = testfiles::SharedTestData(QStringLiteral("xdw"));
    return dir.isEmpty() ? QStringList()
                         : QDir(dir).entryList({QStringLiteral("*.xdw"), QStringLiteral("*.xbd")});
}

// A blank A4 page with one text annotation saying vText.
inline xdwtest::PageSpec Labelled(const QString& vText)
{
    xdwtest::PageSpec page;
    page.annotations.push_back({0x8011, 1000, 2000, 3000, 500, vText, {}, 0});
    return page;
}

// The file as a save would write it, read again from scratch.
inline xdw::Model Reread(const xdw::EditableFile& vFile)
{
    return xdw::Model(xdw::SavedBytes(vFile));
}

// The result code an edit fails with, or 0 when it does not fail.
template <typename F>
qint32 CodeOf(F&& vStep)
{
    try {
        vStep();
    } catch (const xdw::FormatError& e) {
        return e.code;
    }
    return 0;
}

} // namespace writetest

#define SAMPLE_OR_SKIP(var, name)                                          \
    const QByteArray var = writetest::Sample(QStringLiteral(name));        \
    if (var.isEmpty())                                                     \
        GTEST_SKIP() << "no shared test data beside the checkout"
