#pragma once
// Writing "-lh5-" streams without an archive header, the form the properties block, drawings and
// picture bits are saved in. Saving a scanned document pushes tens of megabytes of rows through
// here, so the match finder trades a little size for speed: bounded hash chains and one step of
// lazy matching, with Huffman codes built per block from that block's own counts.

#include <QByteArray>
#include <QByteArrayView>

namespace lh5 {

// A stream that lh5::Expand(stream, vData.size()) turns back into exactly vData. Empty data
// gives an empty stream: the expanded size is stored beside it, and nothing is read for 0.
QByteArray Compress(QByteArrayView vData);

} // namespace lh5
