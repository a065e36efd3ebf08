#pragma once
// What the player needs to know about a BITMAPINFO besides the pixels: where its colour table
// ends, so that a packed bitmap (info and bits in one run, as the 16-bit records carry it) can be
// cut in two.

#include <QByteArrayView>
#include <QtGlobal>

namespace dib {

// Bytes of header, masks and colour table at the start of packed, or -1 when no header is there.
qint64 InfoSize(QByteArrayView vPacked);

// The most pixels a single bitmap may have: a metafile band or picture is far below it, and a
// claimed size above it must not reach an allocation.
inline constexpr qint64 kMaxPixels = qint64(1) << 26;

} // namespace dib
