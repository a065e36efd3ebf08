// Stands in for the metafile player until it joins the build: every drawing is refused with a
// reason, so pages with drawings fail cleanly instead of showing nothing. Leaves the build as
// soon as the player's folder has its own build file.
#include "engine/emf/EmfPlayer.h"

namespace emf {

bool LooksLikeEmf(const QByteArray&) { return false; }
bool LooksLikeWmf(const QByteArray&) { return false; }

PlayResult Play(QPainter&, const QByteArray&, const QRectF&, const PlayOptions&)
{
    return {false, QStringLiteral("no metafile player in this build"), 0};
}

QStringList Text(const QByteArray&) { return {}; }

} // namespace emf

namespace dib {

QImage Decode(const QByteArray&, const QByteArray&, QString* error)
{
    if (error)
        *error = QStringLiteral("no picture decoder in this build");
    return {};
}

} // namespace dib
