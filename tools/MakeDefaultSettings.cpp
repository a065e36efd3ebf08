// Turns the readable source of the shipped settings file (UTF-8, LF, notes allowed) into the file
// itself: code page 932, CR LF, with the section head and its line count, written by the same
// writer that saves a user's settings. Reading the source through the real reader first means a
// slip in the source (a missing TAB, a stray level) stops the build instead of shipping.
//
//     marnoquill_default_settings <source.txt> <Marnoquill.ini>

#include "settings/DataSaveLoadClass.h"
#include "support/AppError.h"
#include "support/Cp932.h"

#include <QFile>

#include <cstdio>

namespace {

const QString kLabel = QStringLiteral("DetailSet");

int Fail(const QString& vText)
{
    std::fprintf(stderr, "marnoquill_default_settings: %s\n", qPrintable(vText));
    return 1;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3)
        return Fail(QStringLiteral("usage: marnoquill_default_settings <source> <output>"));
    const QString sourcePath = QString::fromLocal8Bit(argv[1]);
    const QString outputPath = QString::fromLocal8Bit(argv[2]);

    QFile source(sourcePath);
    if (!source.open(QIODevice::ReadOnly))
        return Fail(sourcePath + QStringLiteral(": ") + source.errorString());
    QString text = QString::fromUtf8(source.readAll());
    text.remove(QLatin1Char('\r'));

    // A character the code page lacks would be saved as "?" without a word: refuse it here.
    const QStringList lines = text.split(QLatin1Char('\n'));
    for (qsizetype i = 0; i < lines.size(); ++i) {
        if (Cp932::Decode(Cp932::Encode(lines[i])) != lines[i])
            return Fail(QStringLiteral("%1:%2: not representable in code page 932").arg(sourcePath).arg(i + 1));
    }

    auto tree = std::make_shared<StructuredDataClass>();
    DataSaveLoadClass io;
    io.SetData(tree);
    try {
        io.LoadString(lines.join(QStringLiteral("\r\n")), kLabel);
        if (tree->Count() == 0)
            return Fail(sourcePath + QStringLiteral(": no section ") + kLabel);
        // Save merges into an existing file; the shipped one holds this section alone.
        QFile::remove(outputPath);
        io.Save(outputPath, kLabel);
    } catch (const AppError& e) {
        return Fail(sourcePath + QStringLiteral(": ") + e.Description());
    }
    return 0;
}
