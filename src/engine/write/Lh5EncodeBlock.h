#pragma once
// The Huffman side of writing "-lh5-" streams. The match finder hands over literals and matches;
// they are kept until a block is full (the block header counts its codes in 16 bits), then the
// block's three prefix codes are built from its own counts and sent ahead of the codes. Apart from
// the match finder so that the code building can be checked on its own.

#include <QByteArray>
#include <QtAlgorithms>
#include <QtGlobal>

#include <array>
#include <vector>

namespace lh5::encode {

// The stream's alphabets: 256 bytes then match lengths 3-256; distance classes 0-13; and the
// code that sends the lengths of the literal code.
inline constexpr int LiteralSymbols = 510;
inline constexpr int DistanceSymbols = 14;
inline constexpr int LengthSymbols = 19;
inline constexpr int MaxCodeBits = 16;
inline constexpr int MinMatch = 3;
inline constexpr int MaxMatch = 256;
// Bytes back a match may reach: the decoder's 8 KiB dictionary.
inline constexpr int MaxDistance = 8192;
inline constexpr int BlockCodes = 0xFFFF;

// A prefix code for one table. With two or more symbols in use the lengths form a complete code
// of at most vLimit bits; with one, lone holds it and every length is 0 (the table is then sent
// in its one-symbol form and its symbol costs no bits); with none, lone is 0.
struct Code {
    std::vector<quint8> lengths;
    std::vector<quint16> bits;
    int lone = -1;
};
Code BuildCode(const quint32* vCounts, int vSymbols, int vLimit = MaxCodeBits);

// Bits most significant first, straight into a byte array that grows as blocks need it.
class BitWriter {
public:
    explicit BitWriter(QByteArray& vOut) : out_(vOut) {}
    // Room for vBytes more bytes, so Put can write without checking.
    void Reserve(qsizetype vBytes);
    // vCount <= 32 bits of vValue; vValue holds no bits above them.
    void Put(quint32 vValue, int vCount)
    {
        acc_ = (acc_ << vCount) | vValue;
        used_ += vCount;
        if (used_ >= 32) {
            used_ -= 32;
            const auto word = static_cast<quint32>(acc_ >> used_);
            auto* p = reinterpret_cast<quint8*>(out_.data()) + pos_;
            p[0] = static_cast<quint8>(word >> 24);
            p[1] = static_cast<quint8>(word >> 16);
            p[2] = static_cast<quint8>(word >> 8);
            p[3] = static_cast<quint8>(word);
            pos_ += 4;
        }
    }
    // Pads the last byte with zero bits and trims the array to what was written.
    void Finish();

private:
    QByteArray& out_;
    qsizetype pos_ = 0;
    quint64 acc_ = 0;
    int used_ = 0;
};

class BlockWriter {
public:
    // vCodes: the most codes a block will hold, at most BlockCodes; fewer for short data.
    BlockWriter(QByteArray& vOut, qsizetype vCodes)
        : bits_(vOut), limit_(static_cast<int>(vCodes)), symbols_(static_cast<size_t>(vCodes)),
          distances_(static_cast<size_t>(vCodes))
    {
    }
    void Literal(quint8 vByte)
    {
        symbols_[count_] = vByte;
        ++literalCounts_[vByte];
        if (++count_ == limit_)
            Flush();
    }
    // vDistance: how far back the copy starts; 1 repeats the byte just written.
    void Match(int vLength, int vDistance)
    {
        const int symbol = vLength - MinMatch + 256;
        const int d = vDistance - 1;
        symbols_[count_] = static_cast<quint16>(symbol);
        distances_[count_] = static_cast<quint16>(d);
        ++literalCounts_[symbol];
        ++distanceCounts_[DistanceClass(d)];
        if (++count_ == limit_)
            Flush();
    }
    // Sends what is kept and ends the stream on a byte boundary.
    void Finish();

    static int DistanceClass(int vD) { return vD == 0 ? 0 : 32 - qCountLeadingZeroBits(quint32(vD)); }

private:
    void Flush();
    void PutLengthTable(const Code& vCode, int vCountBits, int vSymbols);
    void PutLiteralTable(const Code& vLiterals);

    BitWriter bits_;
    int count_ = 0;
    int limit_;
    std::vector<quint16> symbols_;
    std::vector<quint16> distances_;
    std::array<quint32, LiteralSymbols> literalCounts_{};
    std::array<quint32, DistanceSymbols> distanceCounts_{};
};

} // namespace lh5::encode
