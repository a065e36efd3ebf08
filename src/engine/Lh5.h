#pragma once
// "-lh5-" streams without an archive header, as the properties block, drawings and picture bits
// are stored. Decoding is liblhasa's; this module owns the limits around it: the expected size
// must pass them before anything is allocated, and a stream that ends early or decodes to less
// than it promised is refused rather than padded.

#include <QByteArray>
#include <QByteArrayView>

namespace lh5 {

// Largest expansion any caller may ask for, and the ratio a real stream never exceeds beyond a
// slack: a crafted stream of single-symbol blocks could otherwise claim megabytes per byte. The
// slack is one blank A3 page of 1-bit rows at 600 dpi, which packs to a few hundred bytes.
inline constexpr qint64 MaxExpanded = 128LL * 1024 * 1024;
inline constexpr qint64 MaxRatio = 1024;
inline constexpr qint64 RatioSlack = 16LL * 1024 * 1024;

// The vExpanded bytes the stream decodes to; refuses the file (xdw::FormatError) when the size
// is beyond the limits or the stream does not give exactly that many bytes.
QByteArray Expand(QByteArrayView vStored, qint64 vExpanded);

} // namespace lh5
