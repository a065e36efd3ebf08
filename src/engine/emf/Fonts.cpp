#include "engine/emf/Fonts.h"

#include "support/Cp932.h"

namespace emf {

namespace {

bool Japanese(int vCharset) { return vCharset == 128 || vCharset == 1; }

// What cp1252 puts in 0x80 to 0x9F, where Latin-1 has control characters. 0 marks the five
// bytes the code page leaves undefined; they read as themselves.
constexpr char16_t kCp1252High[32] = {
    0x20AC, 0, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0, 0x017D, 0,
    0, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0, 0x017E, 0x0178,
};

} // namespace

QStringList FontFamilies(const QString& vFace, int vCharset)
{
    // "ＭＳ ゴシック" and "MS Gothic" are one face: fold the full-width letters and drop the spaces
    // and the "@" of the vertical-writing faces.
    QString key = vFace.normalized(QString::NormalizationForm_KC).remove(u' ').toLower();
    if (key.startsWith(u'@'))
        key.remove(0, 1);
    // The fixed-pitch faces lay Latin letters in half-width cells; a proportional stand-in would
    // leave gaps after narrow letters, so they get the fixed-pitch Japanese fonts.
    static const QStringList kSansFixed{QStringLiteral("Noto Sans Mono CJK JP"), QStringLiteral("IPAGothic")};
    static const QStringList kSerifFixed{QStringLiteral("IPAMincho"), QStringLiteral("Noto Serif CJK JP")};
    static const QStringList kSans{QStringLiteral("Noto Sans CJK JP"), QStringLiteral("IPAPGothic"),
                                   QStringLiteral("IPAGothic")};
    static const QStringList kSerif{QStringLiteral("Noto Serif CJK JP"), QStringLiteral("IPAPMincho"),
                                    QStringLiteral("IPAMincho")};
    QStringList families;
    if (!vFace.isEmpty())
        families << vFace;
    const bool fixed = key == u"msゴシック" || key == u"msgothic" || key == u"ms明朝" || key == u"msmincho";
    if (key.contains(u"明朝") || key.contains(u"mincho"))
        return families + (fixed ? kSerifFixed : kSerif);
    if (key.contains(u"ゴシック") || key.contains(u"gothic") || key.contains(u"meiryo") ||
        key.contains(u"メイリオ") || Japanese(vCharset))
        return families + (fixed ? kSansFixed : kSans);
    // A Latin face that is not installed still needs a font that has kana and kanji behind it.
    return families + QStringList{QStringLiteral("serif")} + kSans;
}

QString DecodeNarrow(QByteArrayView vBytes, int vCharset)
{
    if (Japanese(vCharset))
        return Cp932::Decode(vBytes);
    QString text(vBytes.size(), Qt::Uninitialized);
    for (qsizetype i = 0; i < vBytes.size(); ++i) {
        const auto b = static_cast<unsigned char>(vBytes[i]);
        const char16_t high = b >= 0x80 && b < 0xA0 ? kCp1252High[b - 0x80] : 0;
        text[i] = QChar(high ? high : char16_t(b));
    }
    return text;
}

QString DecodeNarrow(QByteArrayView vBytes, int vCharset, const QList<double>& vPerByte,
                     QList<double>* vPerUnit)
{
    if (vPerByte.size() < vBytes.size())
        return DecodeNarrow(vBytes, vCharset);
    QString text;
    for (qsizetype i = 0; i < vBytes.size();) {
        const bool pair = Japanese(vCharset) && i + 1 < vBytes.size() &&
                          Cp932::IsLeadByte(static_cast<unsigned char>(vBytes[i]));
        const int bytes = pair ? 2 : 1;
        const QString c = DecodeNarrow(vBytes.sliced(i, bytes), vCharset);
        const double width = vPerByte[i] + (pair ? vPerByte[i + 1] : 0);
        for (qsizetype k = 0; k < c.size(); ++k)
            *vPerUnit << (k == 0 ? width : 0.0);
        text += c;
        i += bytes;
    }
    return text;
}

} // namespace emf
