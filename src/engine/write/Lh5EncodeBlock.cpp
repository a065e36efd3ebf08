#include "engine/write/Lh5EncodeBlock.h"

#include <algorithm>
#include <utility>

namespace lh5::encode {

namespace {

// Minimum-redundancy code lengths in place (Moffat and Katajainen): vA holds the counts in
// increasing order and ends up holding each one's code length, longest first.
void MinimumRedundancy(std::vector<quint32>& vA)
{
    const int n = static_cast<int>(vA.size());
    // Left to right: pair the two lightest of the leaves and the nodes made so far, leaving
    // each node's parent index behind.
    vA[0] += vA[1];
    int root = 0;
    int leaf = 2;
    for (int next = 1; next < n - 1; ++next) {
        if (leaf >= n || vA[root] < vA[leaf]) {
            vA[next] = vA[root];
            vA[root++] = static_cast<quint32>(next);
        } else {
            vA[next] = vA[leaf++];
        }
        if (leaf >= n || (root < next && vA[root] < vA[leaf])) {
            vA[next] += vA[root];
            vA[root++] = static_cast<quint32>(next);
        } else {
            vA[next] += vA[leaf++];
        }
    }
    // Right to left: the depth of each node from its parent's.
    vA[n - 2] = 0;
    for (int next = n - 3; next >= 0; --next)
        vA[next] = vA[vA[next]] + 1;
    // Right to left again: leaves take the places the nodes of each depth leave free.
    int available = 1;
    int used = 0;
    quint32 depth = 0;
    int rootAt = n - 2;
    int next = n - 1;
    while (available > 0) {
        while (rootAt >= 0 && vA[rootAt] == depth) {
            ++used;
            --rootAt;
        }
        while (available > used) {
            vA[next--] = depth;
            --available;
        }
        available = 2 * used;
        ++depth;
        used = 0;
    }
}

// Moves leaves up from below vLimit two at a time, keeping the code complete: of two sibling
// leaves too deep, one takes its parent's place and the other hangs beside the deepest leaf that
// still has room below it.
void LimitDepth(std::vector<int>& vPerLength, int vLimit)
{
    for (int len = static_cast<int>(vPerLength.size()) - 1; len > vLimit; --len) {
        while (vPerLength[static_cast<size_t>(len)] > 0) {
            int j = len - 2;
            while (vPerLength[static_cast<size_t>(j)] == 0)
                --j;
            vPerLength[static_cast<size_t>(len)] -= 2;
            vPerLength[static_cast<size_t>(len - 1)] += 1;
            vPerLength[static_cast<size_t>(j + 1)] += 2;
            vPerLength[static_cast<size_t>(j)] -= 1;
        }
    }
}

void PutLength(BitWriter& vBits, int vLength)
{
    if (vLength < 7) {
        vBits.Put(static_cast<quint32>(vLength), 3);
        return;
    }
    // 111, then one 1 for each step past 7, then a 0.
    vBits.Put(7, 3);
    vBits.Put(((1u << (vLength - 7)) - 1) << 1, vLength - 6);
}

int UsedSpan(const Code& vCode)
{
    int n = static_cast<int>(vCode.lengths.size());
    while (n > 0 && vCode.lengths[static_cast<size_t>(n - 1)] == 0)
        --n;
    return n;
}

} // namespace

Code BuildCode(const quint32* vCounts, int vSymbols, int vLimit)
{
    Code code;
    code.lengths.assign(static_cast<size_t>(vSymbols), 0);
    code.bits.assign(static_cast<size_t>(vSymbols), 0);
    std::vector<std::pair<quint32, int>> used;
    for (int s = 0; s < vSymbols; ++s)
        if (vCounts[s] > 0)
            used.emplace_back(vCounts[s], s);
    if (used.size() < 2) {
        code.lone = used.empty() ? 0 : used.front().second;
        return code;
    }
    std::sort(used.begin(), used.end());
    std::vector<quint32> depths(used.size());
    for (size_t i = 0; i < used.size(); ++i)
        depths[i] = used[i].first;
    MinimumRedundancy(depths);

    std::vector<int> perLength(std::max<size_t>(depths.front(), static_cast<size_t>(vLimit)) + 1, 0);
    for (quint32 d : depths)
        ++perLength[d];
    LimitDepth(perLength, vLimit);
    // The rarest symbols take the longest codes.
    size_t i = 0;
    for (int len = vLimit; len >= 1; --len)
        for (int k = 0; k < perLength[static_cast<size_t>(len)]; ++k)
            code.lengths[static_cast<size_t>(used[i++].second)] = static_cast<quint8>(len);

    // Canonical codes: by length, then by symbol.
    std::array<quint32, MaxCodeBits + 2> next{};
    quint32 start = 0;
    for (int len = 1; len <= vLimit; ++len) {
        next[static_cast<size_t>(len)] = start;
        start = (start + static_cast<quint32>(perLength[static_cast<size_t>(len)])) << 1;
    }
    for (int s = 0; s < vSymbols; ++s)
        if (const int len = code.lengths[static_cast<size_t>(s)])
            code.bits[static_cast<size_t>(s)] = static_cast<quint16>(next[static_cast<size_t>(len)]++);
    return code;
}

void BitWriter::Reserve(qsizetype vBytes)
{
    const qsizetype need = pos_ + vBytes + 8;
    if (need > out_.size())
        out_.resize(std::max(out_.size() * 2, need));
}

void BitWriter::Finish()
{
    Reserve(16);
    if (used_ % 8 != 0)
        Put(0, 8 - used_ % 8);
    while (used_ >= 8) {
        used_ -= 8;
        out_[pos_++] = static_cast<char>(acc_ >> used_);
    }
    out_.truncate(pos_);
}

// A table sent as lengths (the code-length code and the distance code): a count of entries,
// then each length; the code-length code alone may skip up to three zero lengths after its third.
void BlockWriter::PutLengthTable(const Code& vCode, int vCountBits, int vSymbols)
{
    if (vCode.lone >= 0) {
        bits_.Put(0, vCountBits);
        bits_.Put(static_cast<quint32>(vCode.lone), vCountBits);
        return;
    }
    const int n = UsedSpan(vCode);
    bits_.Put(static_cast<quint32>(n), vCountBits);
    for (int i = 0; i < n; ++i) {
        PutLength(bits_, vCode.lengths[static_cast<size_t>(i)]);
        if (vSymbols == LengthSymbols && i == 2) {
            int zeros = 0;
            while (zeros < 3 && i + 1 + zeros < n && vCode.lengths[static_cast<size_t>(i + 1 + zeros)] == 0)
                ++zeros;
            bits_.Put(static_cast<quint32>(zeros), 2);
            i += zeros;
        }
    }
}

void BlockWriter::PutLiteralTable(const Code& vLiterals)
{
    if (vLiterals.lone >= 0) {
        // The code-length code is not used; it is sent in its one-symbol form all the same.
        bits_.Put(0, 5);
        bits_.Put(0, 5);
        bits_.Put(0, 9);
        bits_.Put(static_cast<quint32>(vLiterals.lone), 9);
        return;
    }
    // Lengths as entries of the code-length code: 0 one zero, 1 three to eighteen zeros, 2
    // twenty or more, k + 2 length k.
    struct Entry {
        quint8 symbol;
        quint8 extraBits;
        quint16 extra;
    };
    std::vector<Entry> entries;
    std::array<quint32, LengthSymbols> counts{};
    const auto add = [&](int vSymbol, int vExtraBits, int vExtra) {
        entries.push_back({static_cast<quint8>(vSymbol), static_cast<quint8>(vExtraBits),
                           static_cast<quint16>(vExtra)});
        ++counts[static_cast<size_t>(vSymbol)];
    };
    const int n = UsedSpan(vLiterals);
    for (int i = 0; i < n;) {
        if (const int len = vLiterals.lengths[static_cast<size_t>(i)]) {
            add(len + 2, 0, 0);
            ++i;
            continue;
        }
        int run = 0;
        while (i + run < n && vLiterals.lengths[static_cast<size_t>(i + run)] == 0)
            ++run;
        i += run;
        if (run <= 2) {
            for (int k = 0; k < run; ++k)
                add(0, 0, 0);
        } else if (run <= 18) {
            add(1, 4, run - 3);
        } else if (run == 19) {
            add(0, 0, 0);
            add(1, 4, 15);
        } else {
            add(2, 9, run - 20);
        }
    }
    const Code lengthCode = BuildCode(counts.data(), LengthSymbols);
    PutLengthTable(lengthCode, 5, LengthSymbols);
    bits_.Put(static_cast<quint32>(n), 9);
    for (const Entry& e : entries) {
        bits_.Put(lengthCode.bits[e.symbol], lengthCode.lengths[e.symbol]);
        bits_.Put(e.extra, e.extraBits);
    }
}

void BlockWriter::Flush()
{
    if (count_ == 0)
        return;
    const Code literals = BuildCode(literalCounts_.data(), LiteralSymbols);
    const Code distances = BuildCode(distanceCounts_.data(), DistanceSymbols);
    // Tables take a few hundred bytes; no code with its distance takes more than 44 bits.
    bits_.Reserve(4096 + qsizetype(count_) * 6);
    bits_.Put(static_cast<quint32>(count_), 16);
    PutLiteralTable(literals);
    PutLengthTable(distances, 4, DistanceSymbols);
    for (int i = 0; i < count_; ++i) {
        const int s = symbols_[static_cast<size_t>(i)];
        bits_.Put(literals.bits[static_cast<size_t>(s)], literals.lengths[static_cast<size_t>(s)]);
        if (s < 256)
            continue;
        const quint32 d = distances_[static_cast<size_t>(i)];
        const int j = DistanceClass(static_cast<int>(d));
        bits_.Put(distances.bits[static_cast<size_t>(j)], distances.lengths[static_cast<size_t>(j)]);
        if (j > 1)
            bits_.Put(d - (1u << (j - 1)), j - 1);
    }
    count_ = 0;
    literalCounts_.fill(0);
    distanceCounts_.fill(0);
}

void BlockWriter::Finish()
{
    Flush();
    bits_.Finish();
}

} // namespace lh5::encode
