// The prefix codes behind the LH5 writer: complete, within their length limit, canonical, and
// short where counts are skewed. A code that breaks any of these is read wrongly or refused.
#include "engine/write/Lh5EncodeBlock.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

using lh5::encode::BuildCode;
using lh5::encode::Code;

namespace {

// Kraft sum scaled by 2^16: exactly 65536 for a complete code.
quint64 KraftSum(const Code& vCode)
{
    quint64 sum = 0;
    for (quint8 len : vCode.lengths)
        if (len > 0)
            sum += quint64(1) << (16 - len);
    return sum;
}

void ExpectCanonicalPrefixCode(const Code& vCode, int vLimit)
{
    EXPECT_EQ(KraftSum(vCode), 65536u);
    for (size_t a = 0; a < vCode.lengths.size(); ++a) {
        const int la = vCode.lengths[a];
        ASSERT_LE(la, vLimit);
        for (size_t b = a + 1; b < vCode.lengths.size() && la > 0; ++b) {
            const int lb = vCode.lengths[b];
            if (lb == 0)
                continue;
            // Codes as left-aligned 16-bit values: canonical order, and neither a prefix of the other.
            const quint32 ca = quint32(vCode.bits[a]) << (16 - la);
            const quint32 cb = quint32(vCode.bits[b]) << (16 - lb);
            if (la <= lb)
                EXPECT_LT(ca, cb) << a << " and " << b;
            else
                EXPECT_GT(ca, cb) << a << " and " << b;
            const int common = std::min(la, lb);
            EXPECT_NE(ca >> (16 - common), cb >> (16 - common)) << a << " and " << b;
        }
    }
}

} // namespace

TEST(Lh5Code, NoneOrOneSymbolIsSentAlone)
{
    std::vector<quint32> counts(510, 0);
    Code code = BuildCode(counts.data(), 510);
    EXPECT_EQ(code.lone, 0);
    counts[300] = 7;
    code = BuildCode(counts.data(), 510);
    EXPECT_EQ(code.lone, 300);
    EXPECT_EQ(code.lengths[300], 0);
    counts[2] = 1;
    code = BuildCode(counts.data(), 510);
    EXPECT_EQ(code.lone, -1);
    EXPECT_EQ(code.lengths[2], 1);
    EXPECT_EQ(code.lengths[300], 1);
    EXPECT_EQ(code.bits[2], 0);
    EXPECT_EQ(code.bits[300], 1);
}

TEST(Lh5Code, SkewedCountsGetMinimumRedundancyLengths)
{
    const std::vector<quint32> counts{1, 1, 2, 4, 8, 0, 16};
    const Code code = BuildCode(counts.data(), static_cast<int>(counts.size()));
    EXPECT_EQ(code.lengths, (std::vector<quint8>{5, 5, 4, 3, 2, 0, 1}));
    EXPECT_EQ(code.bits, (std::vector<quint16>{30, 31, 14, 6, 2, 0, 0}));
}

TEST(Lh5Code, DeepTreesAreCutToTheLimitAndStayComplete)
{
    // Fibonacci counts make the deepest possible tree: 30 symbols would want 29 bits.
    std::vector<quint32> counts(510, 0);
    quint32 a = 1, b = 1;
    for (int s = 0; s < 30; ++s) {
        counts[static_cast<size_t>(s * 17)] = a;
        const quint32 c = a + b;
        a = b;
        b = c;
    }
    Code code = BuildCode(counts.data(), 510);
    ExpectCanonicalPrefixCode(code, 16);
    // The most frequent symbol keeps the shortest code.
    EXPECT_EQ(code.lengths[29 * 17], 1);
    // The code-length code with its nineteen symbols cut to 7 bits.
    code = BuildCode(counts.data(), 19, 7);
    ExpectCanonicalPrefixCode(code, 7);
}

TEST(Lh5Code, RandomCountsGiveCompleteCanonicalCodes)
{
    std::mt19937 random(7);
    for (int round = 0; round < 200; ++round) {
        const int symbols = round % 2 ? 510 : 14 + round % 6;
        std::vector<quint32> counts(static_cast<size_t>(symbols), 0);
        for (quint32& c : counts)
            if (random() % 3 == 0)
                c = 1 + static_cast<quint32>(random() % (round % 3 == 0 ? 65535 : 40));
        const Code code = BuildCode(counts.data(), symbols);
        if (code.lone >= 0)
            continue;
        ExpectCanonicalPrefixCode(code, 16);
        for (size_t s = 0; s < counts.size(); ++s)
            EXPECT_EQ(counts[s] > 0, code.lengths[s] > 0) << s;
    }
}
