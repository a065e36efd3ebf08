#include "engine/write/Lh5Literal.h"

#include <QtGlobal>

namespace lh5 {

namespace {

// Bits most significant first, as the decoder reads them.
class BitWriter {
public:
    void Put(quint32 vValue, int vBits)
    {
        for (int i = vBits - 1; i >= 0; --i) {
            acc_ = static_cast<quint8>((acc_ << 1) | ((vValue >> i) & 1));
            if (++used_ == 8) {
                out_.append(static_cast<char>(acc_));
                acc_ = 0;
                used_ = 0;
            }
        }
    }
    QByteArray Finish()
    {
        if (used_ > 0)
            Put(0, 8 - used_);
        return out_;
    }

private:
    QByteArray out_;
    quint8 acc_ = 0;
    int used_ = 0;
};

} // namespace

QByteArray CompressLiteral(QByteArrayView vData)
{
    // Per block: the code-length code is the single symbol 10 (length 8), so all 256 literals
    // get 8-bit codes equal to their byte; the distance code is the single symbol 0.
    constexpr qsizetype BlockCodes = 0xFFFF;
    BitWriter bits;
    for (qsizetype start = 0; start < vData.size(); start += BlockCodes) {
        const qsizetype n = qMin(BlockCodes, vData.size() - start);
        bits.Put(static_cast<quint32>(n), 16);
        bits.Put(0, 5);
        bits.Put(10, 5);
        bits.Put(256, 9);
        bits.Put(0, 4);
        bits.Put(0, 4);
        for (qsizetype i = 0; i < n; ++i)
            bits.Put(static_cast<quint8>(vData[start + i]), 8);
    }
    return bits.Finish();
}

} // namespace lh5
