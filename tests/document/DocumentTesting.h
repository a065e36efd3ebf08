#pragma once
// What the document tests share: the text of what a call raised, and a folder with scripted
// documents in it under a fresh scripted engine.

#include "common/ScriptedEngine.h"
#include "common/TestFiles.h"
#include "support/AppError.h"

#include <QString>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <ostream>

// Readable failures for the texts compared (defined in DocuWorksTest.cpp).
void PrintTo(const QString& vText, std::ostream* vOut);

namespace documenttesting {

// "number : description" of what vCall raised, or "" when it raised nothing.
template <class F>
QString Raised(F vCall)
{
    try {
        vCall();
    } catch (const AppError& e) {
        return e.Message();
    }
    return {};
}

// n characters that take two bytes each on code page 932.
inline QString FullWidth(int vCount)
{
    return QString(vCount, QChar(0x3042));  // あ
}

class DocumentTest : public ::testing::Test {
protected:
    // An empty file (the opening checks that it exists) that the runtime knows as a document of
    // vPages pages; below 0 it doesn't know it.
    QString Script(const QString& vName, int vPages, ScriptedPage vPage = {})
    {
        const QString path = dir.filePath(vName);
        testfiles::WriteBytes(path, {});
        if (vPages >= 0)
            engine->AddDocument(path, vPages, vPage);
        return path;
    }
    QString Touch(const QString& vName)
    {
        const QString path = dir.filePath(vName);
        testfiles::WriteBytes(path, {});
        return path;
    }

    QTemporaryDir dir;
    ScopedScriptedEngine engine;
};

} // namespace documenttesting
