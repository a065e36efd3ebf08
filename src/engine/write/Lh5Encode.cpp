#include "engine/write/Lh5Encode.h"

#include "engine/Lh5.h"
#include "engine/write/Lh5EncodeBlock.h"

#include <QtEndian>
#include <QtMath>

#include <algorithm>
#include <vector>

namespace lh5 {

namespace {

using namespace encode;

// Tables for long data; short data (most drawings and record blocks) gets smaller ones, since
// clearing them would cost more than compressing it.
constexpr int HashBits = 15;
// Twice the reach, so that the slot of a position still within reach is never reused.
constexpr int ChainSlots = 2 * MaxDistance;
constexpr qint32 Nowhere = -2 * ChainSlots;

// Search effort, set on scanned pages and record blocks: deeper chains bought a percent of size
// for half again the time. Chains are cut after ChainDepth candidates (a quarter of that when the
// match in hand is already GoodLength long); a match of LazyBelow bytes or more is taken without
// asking whether one starting a byte later is longer.
constexpr int ChainDepth = 16;
constexpr int GoodLength = 16;
constexpr int LazyBelow = 32;
// Of a match longer than this only the last few positions go into the chains. What lies inside it
// is reachable at its older place, and the blank stretches of a page would otherwise cost an
// insertion a byte and fill the chains with positions that all match the same way.
constexpr int InsertWithin = 32;
constexpr int InsertTail = 4;
// Three bytes from far back cost about what three literals cost, and spoil the distance code.
constexpr int FarForThree = 4096;

// Positions are 32-bit; longer data is taken in pieces whose matches stay inside them.
constexpr qsizetype PieceBytes = qsizetype(1) << 30;

int MatchLength(const quint8* vA, const quint8* vB, int vLimit)
{
    int n = 0;
    for (; n + 8 <= vLimit; n += 8) {
        const quint64 diff = qFromLittleEndian<quint64>(vA + n) ^ qFromLittleEndian<quint64>(vB + n);
        if (diff != 0)
            return n + qCountTrailingZeroBits(diff) / 8;
    }
    while (n < vLimit && vA[n] == vB[n])
        ++n;
    return n;
}

class Matcher {
public:
    Matcher(const quint8* vData, int vSize, BlockWriter& vOut)
        : data_(vData), size_(vSize), out_(vOut),
          hashBits_(std::clamp(32 - static_cast<int>(qCountLeadingZeroBits(quint32(vSize))), 8, HashBits)),
          chainMask_(static_cast<int>(std::min<quint32>(qNextPowerOfTwo(quint32(vSize)), ChainSlots)) - 1),
          head_(size_t(1) << hashBits_, Nowhere), prev_(size_t(chainMask_) + 1, Nowhere)
    {
    }
    void Run();

private:
    quint32 Hash(int vAt) const
    {
        const quint32 v = quint32(data_[vAt]) << 16 | quint32(data_[vAt + 1]) << 8 | data_[vAt + 2];
        return (v * 0x9E3779B1u) >> (32 - hashBits_);
    }
    void Insert(int vAt)
    {
        const quint32 h = Hash(vAt);
        prev_[static_cast<size_t>(vAt & chainMask_)] = head_[h];
        head_[h] = vAt;
    }
    int Longest(int vAt, int vBeat, int& vDistance) const;

    const quint8* data_;
    int size_;
    BlockWriter& out_;
    int hashBits_;
    int chainMask_;
    std::vector<qint32> head_;
    std::vector<qint32> prev_;
};

// The longest match for vAt (already inserted) that is longer than vBeat, or 0.
int Matcher::Longest(int vAt, int vBeat, int& vDistance) const
{
    const int limit = std::min(MaxMatch, size_ - vAt);
    int best = vBeat;
    if (best >= limit)
        return 0;
    const quint8* here = data_ + vAt;
    int chain = vBeat >= GoodLength ? ChainDepth / 4 : ChainDepth;
    int found = 0;
    for (int cand = prev_[static_cast<size_t>(vAt & chainMask_)];
         vAt - cand <= MaxDistance && chain-- > 0; cand = prev_[static_cast<size_t>(cand & chainMask_)]) {
        const quint8* there = data_ + cand;
        // The byte that would make it longer first: most candidates fail there.
        if (there[best] != here[best] || there[0] != here[0] || there[1] != here[1])
            continue;
        const int len = MatchLength(there, here, limit);
        if (len > best) {
            best = found = len;
            vDistance = vAt - cand;
            if (len == limit)
                break;
        }
    }
    return found;
}

void Matcher::Run()
{
    // Each position is looked at once; a match found there waits one position in case the next
    // one starts a longer match, and is then sent or replaced by its first byte as a literal.
    int held = 0;
    int heldDistance = 0;
    bool pending = false;
    int at = 0;
    while (at < size_) {
        int len = 0;
        int distance = 0;
        if (at + MinMatch <= size_) {
            Insert(at);
            if (held < LazyBelow) {
                len = Longest(at, std::max(held, MinMatch - 1), distance);
                if (len == MinMatch && distance > FarForThree)
                    len = 0;
            }
        }
        if (pending && held >= MinMatch && len <= held) {
            out_.Match(held, heldDistance);
            const int end = at - 1 + held;
            const int from = held > InsertWithin ? end - InsertTail : at + 1;
            for (int q = from; q < end && q + MinMatch <= size_; ++q)
                Insert(q);
            at = end;
            pending = false;
            held = 0;
            continue;
        }
        if (pending)
            out_.Literal(data_[at - 1]);
        pending = true;
        held = len;
        heldDistance = distance;
        ++at;
    }
    if (pending) {
        if (held >= MinMatch)
            out_.Match(held, heldDistance);
        else
            out_.Literal(data_[size_ - 1]);
    }
}

} // namespace

QByteArray Compress(QByteArrayView vData)
{
    QByteArray out;
    if (vData.isEmpty())
        return out;
    BlockWriter blocks(out, std::min<qsizetype>(vData.size(), BlockCodes));
    const auto* bytes = reinterpret_cast<const quint8*>(vData.data());
    for (qsizetype at = 0; at < vData.size(); at += PieceBytes) {
        const auto size = static_cast<int>(std::min(PieceBytes, vData.size() - at));
        Matcher(bytes + at, size, blocks).Run();
    }
    blocks.Finish();
    // Blank pages pack to next to nothing, and the reader takes a stream that expands beyond
    // its ratio for a crafted one; zero bytes past the last code are never read.
    const qint64 least = (vData.size() - RatioSlack + MaxRatio - 1) / MaxRatio;
    if (out.size() < least)
        out.append(static_cast<qsizetype>(least - out.size()), '\0');
    return out;
}

} // namespace lh5
