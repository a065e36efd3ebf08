#include "engine/emf/Records.h"

namespace emf {

PlayResult PlayWmf(QPainter*, const QByteArray&, const QRectF&, const PlayOptions&, QStringList*)
{
    PlayResult result;
    result.ok = false;
    result.error = QStringLiteral("16-bit metafiles are not played yet");
    return result;
}

} // namespace emf
