// Writes the sample documents that `make run` opens, so that a newcomer sees the viewer at work:
// multi-page TIFF files whose pages show their numbers, one with an odd page count.
#include "SamplePage.h"
#include "common/TiffWriter.h"

#include <QDir>
#include <QGuiApplication>

#include <cstdio>

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    const QString folder = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QStringLiteral("samples");
    if (!QDir().mkpath(folder)) {
        std::fprintf(stderr, "cannot create %s\n", argv[1]);
        return 1;
    }
    const QDir dir(folder);
    struct Sample {
        const char* name;
        int pages;
        tiffwriter::Kind kind;
    } samples[] = {
        {"見本 白黒8ページ.tif", 8, tiffwriter::Kind::BilevelG4},
        {"見本 グレー5ページ.tif", 5, tiffwriter::Kind::GreyLzw},
        {"sample-color-3pages.tif", 3, tiffwriter::Kind::RgbDeflate},
    };
    for (const Sample& s : samples) {
        const QString path = dir.filePath(QString::fromUtf8(s.name));
        QList<QImage> pages;
        for (int page = 1; page <= s.pages; ++page)
            pages.append(DrawSamplePage(page, s.pages));
        if (!tiffwriter::Write(path, pages, s.kind)) {
            std::fprintf(stderr, "cannot write %s\n", path.toLocal8Bit().constData());
            return 1;
        }
        std::printf("%s\n", path.toLocal8Bit().constData());
    }
    return 0;
}
