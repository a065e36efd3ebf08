// Text helpers, and the byte-wise cuts over code page 932.
#include "support/CommonLibClass.h"

#include "support/Cp932.h"

namespace {

// The whole characters of vBytes that lie entirely in the byte range [vFrom, vTo), as text. The
// bytes are walked from the start, so that a trail byte that happens to look like a lead byte is
// never taken for one: a cut at either end drops the half character rather than keep a byte of it.
QString WholeCharactersWithin(const QByteArray& vBytes, qsizetype vFrom, qsizetype vTo)
{
    qsizetype first = -1;
    qsizetype end = 0;
    for (qsizetype i = 0; i < vBytes.size() && i < vTo;) {
        const bool dbcs = Cp932::IsLeadByte(static_cast<unsigned char>(vBytes[i])) && i + 1 < vBytes.size();
        const qsizetype width = dbcs ? 2 : 1;
        if (i >= vFrom && i + width <= vTo) {
            if (first < 0)
                first = i;
            end = i + width;
        }
        i += width;
    }
    if (first < 0)
        return {};
    return Cp932::Decode(QByteArrayView(vBytes).sliced(first, end - first));
}

} // namespace

bool CommonLibClass::IsAlphabet(const QString& vString)
{
    if (vString.isEmpty())
        return false;
    for (QChar c : vString) {
        const char16_t upper = c.toUpper().unicode();
        // Only ASCII letters: "ı" folds to "I" but is no letter of the alphabet meant here.
        if (c.unicode() >= 0x80 || upper < u'A' || upper > u'Z')
            return false;
    }
    return true;
}

QString CommonLibClass::ReplaceString(const QString& vString, const QString& vBeforeString,
                                      const QString& vAfterString, bool vUcase)
{
    // An empty search text finds nothing; Qt would insert the replacement between all characters.
    if (vBeforeString.isEmpty())
        return vString;
    return QString(vString).replace(vBeforeString, vAfterString,
                                    vUcase ? Qt::CaseInsensitive : Qt::CaseSensitive);
}

qsizetype CommonLibClass::CLibLenB(const QString& xString)
{
    return Cp932::ByteLength(xString);
}

QString CommonLibClass::CLibLeftB(const QString& xString, qsizetype pLength)
{
    if (pLength <= 0)
        return {};
    const QByteArray bytes = Cp932::Encode(xString);
    if (pLength >= bytes.size())
        return xString;
    return WholeCharactersWithin(bytes, 0, pLength);
}

QString CommonLibClass::ClibRightB(const QString& xString, qsizetype pLength)
{
    if (pLength <= 0)
        return {};
    const QByteArray bytes = Cp932::Encode(xString);
    if (pLength >= bytes.size())
        return xString;
    return WholeCharactersWithin(bytes, bytes.size() - pLength, bytes.size());
}

QString CommonLibClass::ClibMidB(const QString& xString, qsizetype pStart, qsizetype pLength)
{
    if (pLength == 0)
        return {};
    const QByteArray bytes = Cp932::Encode(xString);
    const qsizetype from = qMax<qsizetype>(pStart, 1) - 1;
    if (from >= bytes.size())
        return {};
    const qsizetype to = pLength < 0 || pLength >= bytes.size() - from ? bytes.size() : from + pLength;
    if (from == 0 && to == bytes.size())
        return xString;
    return WholeCharactersWithin(bytes, from, to);
}
