#include "library/LibraryFixture.h"

#include "common/TestFiles.h"
#include "document/XdwApi.h"
#include "support/AppError.h"

#include <QPainter>

#include <cmath>

void LibraryTest::SetUp()
{
    ASSERT_TRUE(dir_.isValid());
    engine_ = std::make_shared<XdwEngine>();
    SetXdwApiObject(engine_);
}

void LibraryTest::TearDown()
{
    SetXdwApiObject(nullptr);
}

QImage LibraryTest::Page(const QString& vPath, int vPage, int vDpi)
{
    DocuWorksClass docuWorks;
    const auto file = docuWorks.OpenXdw(vPath, 1);
    const qint32 handle = file->ConvertPageToImageHandle(vPage, vDpi, 1);
    QImage page = engine_->HandleImage(handle)->copy();
    docuWorks.GlobalFree(handle);
    return page;
}

int LibraryTest::Pages(const QString& vPath)
{
    DocuWorksClass docuWorks;
    const auto file = docuWorks.OpenXdw(vPath, 1);
    file->GetDocumentInformation();
    return file->Pages();
}

QString LibraryTest::Text(const QString& vPath, int vPage)
{
    DocuWorksClass docuWorks;
    return docuWorks.OpenXdw(vPath, 1)->GetPageTextToMemory(vPage);
}

QImage Strokes(QSize vSize, bool vColour)
{
    QImage image(vSize, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    if (vColour) {
        QLinearGradient sky(0, 0, vSize.width(), vSize.height());
        sky.setColorAt(0, QColor(30, 90, 200));
        sky.setColorAt(1, QColor(250, 200, 60));
        painter.fillRect(QRect(QPoint(), vSize / 2), sky);
    }
    painter.setPen(QPen(Qt::black, 3));
    for (int y = vSize.height() / 2 + 10; y < vSize.height() - 10; y += 25)
        painter.drawLine(20, y, vSize.width() - 20 - (y % 97), y);
    painter.end();
    return image;
}

double Psnr(const QImage& vA, const QImage& vB)
{
    const QImage a = vA.convertToFormat(QImage::Format_RGB32), b = vB.convertToFormat(QImage::Format_RGB32);
    if (a.size() != b.size())
        return 0;
    double sum = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x) {
            const QRgb p = a.pixel(x, y), q = b.pixel(x, y);
            for (int shift : {0, 8, 16}) {
                const double d = double((p >> shift) & 0xFF) - double((q >> shift) & 0xFF);
                sum += d * d;
            }
        }
    const double mse = sum / (3.0 * a.width() * a.height());
    return mse == 0 ? 99 : 10 * std::log10(255.0 * 255.0 / mse);
}

QString SharedSample(const char* vName)
{
    const QString dir = testfiles::SharedTestData(QStringLiteral("xdw"));
    return dir.isEmpty() ? QString() : dir + u'/' + QLatin1StringView(vName);
}
