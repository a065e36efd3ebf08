// Writes the sample documents that `make run` opens, so that a newcomer sees the viewer at work:
// multi-page TIFF files whose pages show their numbers, one with an odd page count, and a
// DocuWorks document made from the black and white one, with annotations of every kind added.
#include "SamplePage.h"
#include "common/TiffWriter.h"
#include "document/DocuWorksAnnotationClass.h"
#include "document/DocuWorksClass.h"
#include "document/DocuWorksFileClass.h"
#include "document/XdwApi.h"
#include "engine/XdwEngine.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>

#include <cstdio>

namespace {

// Made through the document library as a script would make it; raises what the library raises.
void WriteAnnotated(const QString& vFrom, const QString& vTo)
{
    QFile::remove(vTo);
    DocuWorksClass docuWorks;
    docuWorks.CreateXdwFromImageFile(vFrom, vTo);
    const auto file = docuWorks.OpenXdw(vTo, 1);
    file->AddTextAnnotation(1, 1200, 1800)->SetProperty(QStringLiteral("Text"), QStringLiteral("確認済み: 見積書を回覧します"));
    file->AddRectAnnotation(1, 1000, 2600, 6000, 3000);
    file->AddLineAnnotation(1, 1000, 6200, 8000, 0);
    file->AddFusenAnnotation(1, 5800, 8600, 4200, 2400)->SetProperty(QStringLiteral("Text"), QStringLiteral("付箋: 2ページ目も確認してください"));
    file->AddDateStampAnnotation(1, 8200, 2700);
    file->AddLinkAnnotation(1, 1200, 12600)->SetProperty(QStringLiteral("Caption"), QStringLiteral("関連資料"));
    file->AddTextAnnotation(2, 1500, 2000)->SetProperty(QStringLiteral("Text"), QStringLiteral("2ページ目の注記"));
    file->SaveDocument();
}

} // namespace

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
    SetXdwApiObject(std::make_shared<XdwEngine>());
    const QString annotated = dir.filePath(QStringLiteral("見本 注記付き.xdw"));
    try {
        WriteAnnotated(dir.filePath(QString::fromUtf8(samples[0].name)), annotated);
    } catch (const std::exception& e) {
        std::fprintf(stderr, "cannot write %s: %s\n", annotated.toLocal8Bit().constData(), e.what());
        return 1;
    }
    std::printf("%s\n", annotated.toLocal8Bit().constData());
    return 0;
}
