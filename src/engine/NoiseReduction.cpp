#include "engine/NoiseReduction.h"

#include "engine/Drawing.h"
#include "engine/Model.h"

#include <QtEndian>

#include <utility>
#include <vector>

namespace xdw {

namespace {

constexpr double MmPerInch = 25.4;

// One connected component seen so far: a union-find node with the box of its pixels and one
// pixel of it to start erasing from.
struct Component {
    int parent = 0;
    int minX = 0, maxX = 0, minY = 0, maxY = 0;
    int seedX = 0, seedY = 0;
};

struct Span {
    int x0 = 0, x1 = 0;   // inclusive
    int label = -1;
};

class Picture {
public:
    explicit Picture(QImage& vImage)
        : image_(vImage), ink_(qGray(vImage.color(1)) < qGray(vImage.color(0)) ? 1 : 0) {}
    int Width() const { return image_.width(); }
    int Height() const { return image_.height(); }
    bool IsBlack(int vX, int vY) const
    {
        return ((image_.constScanLine(vY)[vX >> 3] >> (7 - (vX & 7))) & 1) == ink_;
    }
    void Flip(int vX, int vY) { image_.scanLine(vY)[vX >> 3] ^= uchar(0x80 >> (vX & 7)); }
    // The first x from vX on whose pixel is black (or white), else the width. Whole bytes of
    // the other colour are passed at once: most of a page is white paper.
    int Seek(int vY, int vX, bool vBlack) const
    {
        const uchar* line = image_.constScanLine(vY);
        const uchar other = vBlack == (ink_ == 1) ? 0x00 : 0xFF;
        while (vX < Width()) {
            if ((vX & 7) == 0 && line[vX >> 3] == other)
                vX += 8;
            else if (IsBlack(vX, vY) == vBlack)
                return vX;
            else
                ++vX;
        }
        return Width();
    }

private:
    QImage& image_;
    int ink_;
};

// Removes the components of one colour (black with 8 neighbours, white with 4: the pairing
// under which a black ring keeps its hole closed) whose box fits in vSide, rows from the top.
// Only the components that reach the previous row are kept, renumbered every row, so the table
// never outgrows a row; a component that stops is judged then, and erased by a fill inside its
// box, which costs at most vSide times its pixels.
class SpeckRemover {
public:
    SpeckRemover(Picture& vPicture, bool vBlack, int vSide)
        : picture_(vPicture), black_(vBlack), reach_(vBlack ? 1 : 0), side_(vSide) {}

    void Remove()
    {
        std::vector<Span> previous, current;
        for (int y = 0; y < picture_.Height(); ++y) {
            RowRuns(y, current);
            Join(previous, current, y);
            Finish(previous, y);
            Renumber(current);
            std::swap(previous, current);
        }
        Finish(previous, picture_.Height());
    }

private:
    int Find(int vLabel)
    {
        while (table_[vLabel].parent != vLabel) {
            table_[vLabel].parent = table_[table_[vLabel].parent].parent;   // path halving
            vLabel = table_[vLabel].parent;
        }
        return vLabel;
    }

    void Union(int vA, int vB)
    {
        vA = Find(vA);
        vB = Find(vB);
        if (vA == vB)
            return;
        Component& keep = table_[vA];
        const Component& gone = table_[vB];
        keep.minX = qMin(keep.minX, gone.minX);
        keep.maxX = qMax(keep.maxX, gone.maxX);
        keep.minY = qMin(keep.minY, gone.minY);
        keep.maxY = qMax(keep.maxY, gone.maxY);
        table_[vB].parent = vA;
    }

    bool Matches(int vX, int vY) const { return picture_.IsBlack(vX, vY) == black_; }

    void RowRuns(int vY, std::vector<Span>& vRuns) const
    {
        vRuns.clear();
        for (int x = picture_.Seek(vY, 0, black_); x < picture_.Width();) {
            const int end = picture_.Seek(vY, x, !black_);
            vRuns.push_back({x, end - 1, -1});
            x = picture_.Seek(vY, end, black_);
        }
    }

    // Labels the row's runs from those above that touch them. Two sorted lists of disjoint runs
    // have fewer touching pairs than runs, so the sweep is linear.
    void Join(const std::vector<Span>& vAbove, std::vector<Span>& vRow, int vY)
    {
        size_t first = 0;
        for (Span& run : vRow) {
            while (first < vAbove.size() && vAbove[first].x1 + reach_ < run.x0)
                ++first;
            for (size_t k = first; k < vAbove.size() && vAbove[k].x0 <= run.x1 + reach_; ++k) {
                if (run.label < 0)
                    run.label = vAbove[k].label;
                else
                    Union(run.label, vAbove[k].label);
            }
            if (run.label < 0) {
                run.label = static_cast<int>(table_.size());
                table_.push_back({run.label, run.x0, run.x1, vY, vY, run.x0, vY});
                continue;
            }
            Component& c = table_[Find(run.label)];
            c.minX = qMin(c.minX, run.x0);
            c.maxX = qMax(c.maxX, run.x1);
            c.maxY = vY;
        }
    }

    // Judges the components of the row above that reach no further.
    void Finish(const std::vector<Span>& vAbove, int vY)
    {
        for (const Span& run : vAbove) {
            const int root = Find(run.label);
            Component& c = table_[root];
            if (c.maxY >= vY)
                continue;   // goes on below, or judged already
            c.maxY = vY;    // marks it judged; its box is no longer needed
            const bool small = c.maxX - c.minX < side_ && vY - 1 - c.minY < side_;
            const bool enclosed = black_
                || (c.minX > 0 && c.maxX < picture_.Width() - 1 && c.minY > 0 && vY < picture_.Height());
            if (small && enclosed)
                Erase(c, vY - 1);
        }
    }

    void Erase(const Component& vComponent, int vMaxY)
    {
        stack_.assign(1, {vComponent.seedX, vComponent.seedY});
        while (!stack_.empty()) {
            const auto [x, y] = stack_.back();
            stack_.pop_back();
            if (x < vComponent.minX || x > vComponent.maxX || y < vComponent.minY || y > vMaxY
                || !Matches(x, y))
                continue;
            picture_.Flip(x, y);
            for (int dy = -1; dy <= 1; ++dy)
                for (int dx = -1; dx <= 1; ++dx)
                    if ((dx || dy) && (reach_ || !dx || !dy))
                        stack_.emplace_back(x + dx, y + dy);
        }
    }

    // Keeps only the components the row's runs belong to.
    void Renumber(std::vector<Span>& vRow)
    {
        std::vector<int> renumbered(table_.size(), -1);
        std::vector<Component> kept;
        kept.reserve(vRow.size());
        for (Span& run : vRow) {
            const int root = Find(run.label);
            if (renumbered[static_cast<size_t>(root)] < 0) {
                renumbered[static_cast<size_t>(root)] = static_cast<int>(kept.size());
                kept.push_back(table_[static_cast<size_t>(root)]);
                kept.back().parent = static_cast<int>(kept.size()) - 1;
            }
            run.label = renumbered[static_cast<size_t>(root)];
        }
        table_ = std::move(kept);
    }

    Picture& picture_;
    const bool black_;
    const int reach_;
    const int side_;
    std::vector<Component> table_;
    std::vector<std::pair<int, int>> stack_;   // pixels still to look at while erasing
};

} // namespace

const QStringList& NoiseLevelNames()
{
    static const QStringList names{QStringLiteral("NONE"), QStringLiteral("NORMAL"),
                                   QStringLiteral("WEAK"), QStringLiteral("STRONG")};
    return names;
}

bool IsBilevel(const QImage& vImage)
{
    return vImage.format() == QImage::Format_Mono || vImage.format() == QImage::Format_MonoLSB;
}

bool IsBilevelPage(const Model& vModel, int vIndex)
{
    if (vIndex < 0 || vIndex >= static_cast<int>(vModel.Pages().size()))
        return false;
    const Page& page = vModel.Pages()[static_cast<size_t>(vIndex)];
    if (!page.HasContent())
        return false;
    const QByteArrayView fields = vModel.DrawingOf(page.placements.front());
    if (KindOf(fields) != static_cast<int>(DrawingKind::Dib))
        return false;
    const Drawing drawing = ReadDrawing(fields);
    // biBitCount of the BITMAPINFOHEADER
    return drawing.dibInfo.size() >= 16 && qFromLittleEndian<quint16>(drawing.dibInfo.constData() + 14) == 1;
}

int SpeckSide(int vLevel, int vDpi)
{
    static constexpr double MaxSpeckMm[] = {0.0, 0.2, 0.1, 0.3};
    if (vLevel <= NoiseNone || vLevel > NoiseStrong)
        return 0;
    return qMax(1, qRound(MaxSpeckMm[vLevel] * vDpi / MmPerInch));
}

QImage ReduceNoise(const QImage& vBilevel, int vLevel)
{
    if (!IsBilevel(vBilevel) || vLevel < NoiseNone || vLevel > NoiseStrong)
        return {};
    QImage out = vBilevel.convertToFormat(QImage::Format_Mono);
    if (out.colorCount() < 2)
        return {};
    const int side = SpeckSide(vLevel, qRound(out.dotsPerMeterX() * MmPerInch / 1000.0));
    if (side == 0)
        return out;
    Picture picture(out);
    SpeckRemover(picture, true, side).Remove();
    SpeckRemover(picture, false, side).Remove();
    return out;
}

} // namespace xdw
