#include "engine/emf/EmfPlayer.h"
#include "engine/emf/Records.h"

#include <QPainter>

namespace emf {

namespace {

constexpr quint32 kEmfSignature = 0x464D4520;   // " EMF" at byte 40
constexpr quint32 kPlaceableKey = 0x9AC6CDD7;

} // namespace

bool LooksLikeEmf(const QByteArray& bytes)
{
    const Bytes b(bytes);
    const quint32 headerSize = b.U32(4), total = b.U32(48);
    return b.size() >= 88 && b.U32(0) == 1 && b.U32(40) == kEmfSignature && headerSize >= 88 &&
           headerSize <= total && total <= quint32(b.size());
}

bool LooksLikeWmf(const QByteArray& bytes)
{
    const Bytes b(bytes);
    const qint64 at = b.U32(0) == kPlaceableKey ? 22 : 0;
    const quint16 type = b.U16(at), words = b.U16(at + 2), version = b.U16(at + 4);
    return b.Has(at, 18) && (type == 1 || type == 2) && words == 9 && (version == 0x300 || version == 0x100);
}

PlayResult Play(QPainter& painter, const QByteArray& bytes, const QRectF& target, const PlayOptions& options)
{
    if (LooksLikeWmf(bytes))
        return PlayWmf(&painter, bytes, target, options, nullptr);
    PlayResult result;
    const Bytes b(bytes);
    const std::optional<Frame> frame = LooksLikeEmf(bytes) ? EmfFrame(b, options.mapping) : std::nullopt;
    if (!frame) {
        result.ok = false;
        result.error = QStringLiteral("not a metafile: no enhanced or 16-bit metafile header");
        return result;
    }
    Gdi gdi(&painter, target, *frame, options);
    return PlayEmf(gdi, b);
}

QStringList Text(const QByteArray& bytes)
{
    QStringList texts;
    if (LooksLikeWmf(bytes)) {
        PlayWmf(nullptr, bytes, QRectF(0, 0, 1000, 1000), {}, &texts);
        return texts;
    }
    const Bytes b(bytes);
    const std::optional<Frame> frame = LooksLikeEmf(bytes) ? EmfFrame(b, Mapping::Page) : std::nullopt;
    if (!frame)
        return texts;
    Gdi gdi(nullptr, QRectF(0, 0, 1000, 1000), *frame, {});
    PlayEmf(gdi, b);
    return gdi.texts;
}

} // namespace emf
