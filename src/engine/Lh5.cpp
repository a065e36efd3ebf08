#include "engine/Lh5.h"

#include "engine/FormatError.h"

#include <lha_decoder.h>

#include <cstring>
#include <memory>

namespace lh5 {

namespace {

struct Input {
    QByteArrayView bytes;
    qsizetype pos = 0;
};

size_t Feed(void* vBuffer, size_t vLength, void* vUser)
{
    auto* in = static_cast<Input*>(vUser);
    const size_t left = static_cast<size_t>(in->bytes.size() - in->pos);
    const size_t n = vLength < left ? vLength : left;
    std::memcpy(vBuffer, in->bytes.data() + in->pos, n);
    in->pos += static_cast<qsizetype>(n);
    return n;
}

struct FreeDecoder {
    void operator()(LHADecoder* vDecoder) const { lha_decoder_free(vDecoder); }
};

LHADecoderType* Lh5Type()
{
    static char name[] = "-lh5-";
    static LHADecoderType* type = lha_decoder_for_name(name);
    return type;
}

} // namespace

QByteArray Expand(QByteArrayView vStored, qint64 vExpanded)
{
    if (vExpanded < 0 || vExpanded > MaxExpanded
        || vExpanded > MaxRatio * vStored.size() + RatioSlack)
        xdw::Refuse(QStringLiteral("compressed data claims %1 bytes").arg(vExpanded));
    QByteArray out;
    if (vExpanded == 0)
        return out;
    Input in{vStored};
    std::unique_ptr<LHADecoder, FreeDecoder> decoder(
        lha_decoder_new(Lh5Type(), Feed, &in, static_cast<size_t>(vExpanded)));
    if (!decoder)
        xdw::Refuse(QStringLiteral("no decoder for compressed data"));
    out.resize(static_cast<qsizetype>(vExpanded));
    auto* dst = reinterpret_cast<uint8_t*>(out.data());
    size_t done = 0;
    const size_t want = static_cast<size_t>(vExpanded);
    while (done < want) {
        const size_t n = lha_decoder_read(decoder.get(), dst + done, want - done);
        if (n == 0)
            break;
        done += n;
    }
    if (done != want)
        xdw::Refuse(QStringLiteral("compressed data ends after %1 of %2 bytes").arg(done).arg(want));
    return out;
}

} // namespace lh5
