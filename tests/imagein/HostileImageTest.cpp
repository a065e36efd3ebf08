// Image files with bytes changed at random: each is made into pages or refused with a code,
// never crashing, hanging or allocating from a size it was not allowed.
#include "common/TestFiles.h"
#include "common/TiffWriter.h"
#include "engine/FormatError.h"
#include "engine/write/ImagePages.h"
#include "imagein/ImageFixtures.h"

#include <QRandomGenerator>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace imagefixtures;

TEST(HostileImageTest, MutatedFilesAreReadOrRefused)
{
    QTemporaryDir dir;
    ASSERT_TRUE(tiffwriter::Write(dir.filePath("a.tif"), {Bilevel(), Grey()}, tiffwriter::Kind::BilevelG4, 200));
    ASSERT_TRUE(tiffwriter::Write(dir.filePath("b.tif"), {Colour()}, tiffwriter::Kind::RgbDeflate, 200));
    const QStringList files = {dir.filePath("a.tif"), dir.filePath("b.tif"), Save(dir.filePath("c.jpg"), Colour(), "jpeg", 200),
                               Save(dir.filePath("d.png"), Grey(), "png", 200), Save(dir.filePath("e.bmp"), Bilevel(), "bmp", 200)};
    QRandomGenerator random(20261125);
    for (const QString& file : files) {
        const QByteArray original = testfiles::ReadBytes(file);
        for (int round = 0; round < 150; ++round) {
            QByteArray bytes = original;
            for (int n = 1 + random.bounded(4); n > 0; --n)
                bytes[random.bounded(static_cast<int>(qMin<qsizetype>(bytes.size(), 200)))] = static_cast<char>(random.bounded(256));
            const QString path = dir.filePath(QStringLiteral("m") + QFileInfo(file).fileName());
            testfiles::WriteBytes(path, bytes);
            try {
                for (const xdw::Node& page : xdw::PagesFromImage(path, {}, &Pack))
                    EXPECT_EQ(page.kind, 0x1301u);
            } catch (const xdw::FormatError& refused) {
                EXPECT_LT(refused.code, 0);
                EXPECT_FALSE(refused.reason.isEmpty());
            }
        }
    }
}
