// The LH5 writer judged by the reader: every stream must expand through lh5::Expand to exactly
// the bytes that went in, and real data must pack far tighter than literals alone would.
#include "common/TestFiles.h"
#include "engine/Container.h"
#include "engine/FormatError.h"
#include "engine/Lh5.h"
#include "engine/write/Lh5Encode.h"
#include "lh5enc/Lh5Inputs.h"

#include <QDir>

#include <gtest/gtest.h>

#include <random>

namespace {

testing::AssertionResult RoundTrips(const QByteArray& vData, QByteArray* vStream = nullptr)
{
    const QByteArray stream = lh5::Compress(vData);
    if (vStream)
        *vStream = stream;
    QByteArray back;
    try {
        back = lh5::Expand(stream, vData.size());
    } catch (const xdw::FormatError& e) {
        return testing::AssertionFailure() << vData.size() << " bytes: refused: " << e.reason.toStdString();
    }
    if (back == vData)
        return testing::AssertionSuccess();
    qsizetype at = 0;
    while (at < back.size() && back[at] == vData[at])
        ++at;
    return testing::AssertionFailure() << vData.size() << " bytes: first difference at " << at;
}

QByteArray RandomBytes(qsizetype vSize, unsigned vSeed)
{
    std::mt19937 random(vSeed);
    QByteArray out(vSize, Qt::Uninitialized);
    for (char& c : out)
        c = static_cast<char>(random());
    return out;
}

} // namespace

TEST(Lh5Encode, TinyAndDegenerateInputs)
{
    EXPECT_TRUE(lh5::Compress({}).isEmpty());
    EXPECT_TRUE(RoundTrips(QByteArray("A")));
    EXPECT_TRUE(RoundTrips(QByteArray("AB")));
    // Two codes of one bit each: the code-length code then has a single symbol.
    EXPECT_TRUE(RoundTrips(QByteArray("\x00\x01", 2)));
    EXPECT_TRUE(RoundTrips(QByteArray("\x01\x00\x01\x00", 4)));
    EXPECT_TRUE(RoundTrips(QByteArray("aaa")));
    EXPECT_TRUE(RoundTrips(QByteArray("aaaa")));
    EXPECT_TRUE(RoundTrips(QByteArray("abcabcabc")));
    // Every byte value once: no matches, a literal code of 256 equal lengths.
    QByteArray all(256, '\0');
    for (int i = 0; i < 256; ++i)
        all[i] = static_cast<char>(i);
    EXPECT_TRUE(RoundTrips(all));
    EXPECT_TRUE(RoundTrips(all + all + all));
    // The highest literal and longest match next to each other.
    EXPECT_TRUE(RoundTrips(QByteArray(1, '\xFF') + QByteArray(300, '\xFE')));
}

TEST(Lh5Encode, RunsOfOneByteCostNextToNothing)
{
    for (qsizetype size : {3, 4, 256, 257, 258, 259, 1000, 65536, 1 << 20}) {
        QByteArray stream;
        ASSERT_TRUE(RoundTrips(QByteArray(size, '\0'), &stream));
        EXPECT_LE(stream.size(), 16 + size / 2000) << size;
        ASSERT_TRUE(RoundTrips(QByteArray(size, 'x')));
    }
}

TEST(Lh5Encode, BlocksSplitAtTheirCodeCount)
{
    // Random bytes are all literals, one code a byte: a block holds 65,535 of them.
    for (qsizetype size : {65534, 65535, 65536, 65537, 131070, 131071, 200000}) {
        QByteArray stream;
        ASSERT_TRUE(RoundTrips(RandomBytes(size, static_cast<unsigned>(size)), &stream));
        // Random data cannot shrink; it may only grow by its tables.
        EXPECT_LT(stream.size(), size + size / 100 + 1024) << size;
    }
    // A run makes codes of 256 bytes each: 65,535 of them end a block at 16,776,960 bytes.
    for (qsizetype size : {qsizetype(65535) * 256, qsizetype(65535) * 256 + 1, qsizetype(65535) * 256 + 300})
        EXPECT_TRUE(RoundTrips(QByteArray(size, '\0'))) << size;
}

TEST(Lh5Encode, MatchesReachTheWholeDictionary)
{
    // A random stretch repeated at exactly 8 KiB, just past it, and at every short distance class.
    for (qsizetype gap : {1, 2, 3, 4, 5, 8, 9, 100, 4096, 4097, 8191, 8192, 8193, 9000}) {
        const QByteArray chunk = RandomBytes(gap, static_cast<unsigned>(gap));
        QByteArray stream;
        ASSERT_TRUE(RoundTrips(chunk + chunk + chunk, &stream)) << gap;
        if (gap <= 8192 && gap >= 1000) {
            EXPECT_LT(stream.size(), gap * 5 / 4) << "the repeats should be matches at " << gap;
        }
    }
}

TEST(Lh5Encode, BlankPageBeyondTheReadersRatioStillReads)
{
    // A blank A4 page at 600 dpi packs to a few bytes, more than the reader believes a real stream
    // can expand: the stream must still be one it accepts.
    const QByteArray blank(4960 / 8 * 7016, '\0');
    QByteArray stream;
    EXPECT_TRUE(RoundTrips(blank, &stream));
    EXPECT_LT(stream.size(), blank.size() / 1000);
}

TEST(Lh5Encode, ScannedPagesPackWell)
{
    const QByteArray blank(lh5test::RowBytes * lh5test::PageHeight, '\0');
    QByteArray stream;
    ASSERT_TRUE(RoundTrips(blank, &stream));
    EXPECT_GT(blank.size() / stream.size(), 100);

    for (unsigned seed : {1u, 2u, 3u}) {
        const QByteArray page = lh5test::TextPage(seed);
        ASSERT_TRUE(RoundTrips(page, &stream));
        EXPECT_GT(page.size() / stream.size(), 8) << "text page " << seed << ": " << stream.size();
    }
    // Ink everywhere: every row differs from the one above.
    ASSERT_TRUE(RoundTrips(lh5test::TextPage(4, 2000), &stream));
}

TEST(Lh5Encode, RecordsPackLikeTheVendorsBlocks)
{
    for (qsizetype size : {100, 5000, 1 << 20}) {
        const QByteArray records = lh5test::RecordsLike(size);
        QByteArray stream;
        ASSERT_TRUE(RoundTrips(records, &stream));
        if (size >= 5000) {
            EXPECT_LT(stream.size() * 4, records.size()) << size << " -> " << stream.size();
        }
    }
}

TEST(Lh5Encode, SamplePropertiesRoundTripNoLargerThanTheVendorsOwn)
{
    const QString dir = testfiles::SharedTestData(QStringLiteral("xdw"));
    if (dir.isEmpty())
        GTEST_SKIP() << "no shared test data beside the checkout";
    const QStringList names = QDir(dir).entryList({QStringLiteral("*.xdw"), QStringLiteral("*.xbd")});
    ASSERT_FALSE(names.isEmpty());
    for (const QString& name : names) {
        const xdw::Container file(testfiles::ReadBytes(dir + u'/' + name));
        QByteArray stream;
        EXPECT_TRUE(RoundTrips(file.Properties(), &stream)) << name.toStdString();
        std::cout << "SIZES " << name.toStdString() << " " << file.Properties().size() << " " << stream.size() << " " << file.StoredProperties().size() << std::endl;
        // Within 2 % of what the vendor's writer stored for the same records.
        EXPECT_LE(stream.size(), file.StoredProperties().size() * 51 / 50)
            << name.toStdString() << ": " << stream.size() << " against " << file.StoredProperties().size();
    }
}

TEST(Lh5Encode, SeededRandomInputsRoundTrip)
{
    // Mixtures of noise, runs and copies of earlier stretches at every kind of distance, sized
    // from nothing to a few blocks' worth of codes.
    std::mt19937 random(20261125);
    for (int round = 0; round < 3000; ++round) {
        const qsizetype target = round % 100 == 0 ? 70000 + random() % 70000 : random() % 3000;
        const int alphabet = 1 + static_cast<int>(random() % 256);
        QByteArray data;
        while (data.size() < target) {
            const int piece = 1 + static_cast<int>(random() % 300);
            switch (random() % 4) {
            case 0:
                for (int i = 0; i < piece; ++i)
                    data.append(static_cast<char>(random() % alphabet));
                break;
            case 1:
                data.append(QByteArray(piece, static_cast<char>(random() % alphabet)));
                break;
            default:
                if (data.isEmpty())
                    break;
                const qsizetype back = 1 + random() % std::min<qsizetype>(data.size(), 9000);
                for (int i = 0; i < piece; ++i)
                    data.append(data[data.size() - back]);
            }
        }
        data.truncate(target);
        ASSERT_TRUE(RoundTrips(data)) << "round " << round;
    }
}
