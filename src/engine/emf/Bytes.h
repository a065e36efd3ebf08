#pragma once
// Little-endian reads inside one record. Every metafile number goes through here, so that a
// record can only ever be read within its own bytes: a read past the end answers 0 and marks the
// view as short, and the caller gives up on that record instead of trusting what followed.

#include <QByteArrayView>
#include <QtGlobal>

#include <cstring>

namespace emf {

class Bytes {
public:
    Bytes() = default;
    explicit Bytes(QByteArrayView vData) : data_(vData) {}

    qsizetype size() const { return data_.size(); }
    bool short_() const { return short_read_; }
    bool Has(qint64 vOffset, qint64 vLength) const
    {
        return vOffset >= 0 && vLength >= 0 && vOffset <= data_.size() &&
               vLength <= data_.size() - vOffset;
    }

    quint8 U8(qint64 vOffset) const { return Has(vOffset, 1) ? quint8(data_[vOffset]) : Miss<quint8>(); }
    quint16 U16(qint64 vOffset) const { return Read<quint16>(vOffset); }
    qint16 I16(qint64 vOffset) const { return qint16(Read<quint16>(vOffset)); }
    quint32 U32(qint64 vOffset) const { return Read<quint32>(vOffset); }
    qint32 I32(qint64 vOffset) const { return qint32(Read<quint32>(vOffset)); }
    float F32(qint64 vOffset) const
    {
        const quint32 bits = Read<quint32>(vOffset);
        float f;
        std::memcpy(&f, &bits, sizeof f);
        return f;
    }

    // A sub-range, or an empty view marked short when it does not fit.
    QByteArrayView Slice(qint64 vOffset, qint64 vLength) const
    {
        if (!Has(vOffset, vLength)) {
            short_read_ = true;
            return {};
        }
        return data_.sliced(vOffset, vLength);
    }

private:
    template <typename T>
    T Read(qint64 vOffset) const
    {
        if (!Has(vOffset, sizeof(T)))
            return Miss<T>();
        T v = 0;
        for (size_t i = 0; i < sizeof(T); ++i)
            v = T(v | T(quint8(data_[vOffset + qint64(i)])) << (8 * i));
        return v;
    }
    template <typename T>
    T Miss() const
    {
        short_read_ = true;
        return 0;
    }

    QByteArrayView data_;
    mutable bool short_read_ = false;
};

} // namespace emf
