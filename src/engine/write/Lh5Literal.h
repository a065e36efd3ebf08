#pragma once
// A stand-in compressor for saved properties blocks: an "-lh5-" stream whose blocks hold every
// byte as a literal of an 8-bit code. It does not make anything smaller, but every decoder reads
// it, so the saver is complete without a real encoder.

#include <QByteArray>
#include <QByteArrayView>

namespace lh5 {

QByteArray CompressLiteral(QByteArrayView vData);

} // namespace lh5
