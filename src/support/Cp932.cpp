#include "support/Cp932.h"

#include <cerrno>
#include <iconv.h>
#include <stdexcept>

namespace {

// One converter per direction and thread, reset before each use; opening one costs more than
// converting a settings line.
class Converter {
public:
    Converter(const char* vTo, const char* vFrom) : cd_(iconv_open(vTo, vFrom))
    {
        if (cd_ == reinterpret_cast<iconv_t>(-1))
            throw std::runtime_error("iconv has no CP932 converter on this system");
    }
    ~Converter() { iconv_close(cd_); }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    iconv_t Reset()
    {
        iconv(cd_, nullptr, nullptr, nullptr, nullptr);
        return cd_;
    }

private:
    iconv_t cd_;
};

bool IsAscii(const char* vData, qsizetype vSize)
{
    for (qsizetype i = 0; i < vSize; ++i)
        if (static_cast<unsigned char>(vData[i]) >= 0x80)
            return false;
    return true;
}

bool IsAscii(QStringView vText)
{
    for (QChar c : vText)
        if (c.unicode() >= 0x80)
            return false;
    return true;
}

} // namespace

namespace Cp932 {

QByteArray Encode(QStringView vText)
{
    if (IsAscii(vText))
        return vText.toLatin1();

    thread_local Converter converter("CP932", "UTF-16LE");
    iconv_t cd = converter.Reset();

    QByteArray out;
    out.resize(vText.size() * 2);
    char* in = reinterpret_cast<char*>(const_cast<char16_t*>(vText.utf16()));
    size_t inLeft = static_cast<size_t>(vText.size()) * 2;
    char* dst = out.data();
    size_t outLeft = static_cast<size_t>(out.size());
    while (inLeft > 0) {
        if (iconv(cd, &in, &inLeft, &dst, &outLeft) != static_cast<size_t>(-1))
            break;
        if (errno == E2BIG) {  // cannot happen at two bytes per unit, but never write past the end
            const qsizetype used = dst - out.data();
            out.resize(out.size() * 2);
            dst = out.data() + used;
            outLeft = static_cast<size_t>(out.size() - used);
            continue;
        }
        // No place in the code page (or a lone surrogate): one "?" for the whole character.
        const char16_t unit = *reinterpret_cast<const char16_t*>(in);
        size_t skip = 2;
        if (QChar::isHighSurrogate(unit) && inLeft >= 4
            && QChar::isLowSurrogate(*reinterpret_cast<const char16_t*>(in + 2)))
            skip = 4;
        in += skip;
        inLeft -= skip;
        *dst++ = '?';
        --outLeft;
        cd = converter.Reset();
    }
    out.resize(dst - out.data());
    return out;
}

QString Decode(QByteArrayView vBytes)
{
    if (IsAscii(vBytes.data(), vBytes.size()))
        return QString::fromLatin1(vBytes.data(), vBytes.size());

    thread_local Converter converter("UTF-16LE", "CP932");
    iconv_t cd = converter.Reset();

    QString out;
    out.resize(vBytes.size());  // never more units than bytes
    char* in = const_cast<char*>(vBytes.data());
    size_t inLeft = static_cast<size_t>(vBytes.size());
    char* dst = reinterpret_cast<char*>(out.data());
    size_t outLeft = static_cast<size_t>(out.size()) * 2;
    while (inLeft > 0) {
        if (iconv(cd, &in, &inLeft, &dst, &outLeft) != static_cast<size_t>(-1))
            break;
        if (outLeft < 2)  // a replacement below always has room: one unit per byte consumed
            break;
        // EILSEQ or a character cut off at the end: replace one byte and go on behind it.
        ++in;
        --inLeft;
        *reinterpret_cast<char16_t*>(dst) = u'\uFFFD';
        dst += 2;
        outLeft -= 2;
        cd = converter.Reset();
    }
    out.resize((dst - reinterpret_cast<char*>(out.data())) / 2);
    return out;
}

qsizetype ByteLength(QStringView vText)
{
    if (IsAscii(vText))
        return vText.size();
    return Encode(vText).size();
}

} // namespace Cp932
