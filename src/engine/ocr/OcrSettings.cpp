#include "engine/ocr/OcrSettings.h"

#include <QtGlobal>

#include <algorithm>
#include <array>

namespace ocr {

namespace {

struct Word {
    const char* word;
    int value;
};

constexpr std::array<Word, 3> kLanguages{{{"AUTO", 0}, {"JAPANESE", 1}, {"ENGLISH", 2}}};
constexpr std::array<Word, 3> kForms{{{"AUTO", 0}, {"WRITING", 0}, {"TABLE", 1}}};
constexpr std::array<Word, 5> kColumns{{{"AUTO", static_cast<int>(Layout::Auto)},
                                        {"HORIZONTAL_SINGLE", static_cast<int>(Layout::SingleBlock)},
                                        {"HORIZONTAL_MULTI", static_cast<int>(Layout::Auto)},
                                        {"VERTICAL_SINGLE", static_cast<int>(Layout::SingleVerticalBlock)},
                                        {"VERTICAL_MULTI", static_cast<int>(Layout::AutoVertical)}}};
constexpr std::array<Word, 4> kNoise{{{"NONE", 0}, {"WEAK", 1}, {"NORMAL", 2}, {"STRONG", 3}}};

// Pixels across at 300 dpi of the largest speck each noise level takes away: a full stop or the
// dot of an i at 10 points is about 5, so even the strongest level leaves them.
constexpr std::array<int, 4> kSpeckAt300{0, 2, 3, 4};

template <size_t N>
int Find(const std::array<Word, N>& vWords, const QString& vGiven)
{
    const QString given = vGiven.trimmed();
    for (const Word& w : vWords) {
        if (given.compare(QLatin1String(w.word), Qt::CaseInsensitive) == 0)
            return w.value;
    }
    return -1;
}

template <size_t N>
QString Refusal(const char* vWhat, const std::array<Word, N>& vWords, const QString& vGiven)
{
    QStringList names;
    for (const Word& w : vWords)
        names.append(QLatin1String(w.word));
    return QStringLiteral("OCRの%1は%2の何れかを指定してください。(%3)")
        .arg(QString::fromUtf8(vWhat), names.join(u','), vGiven);
}

} // namespace

QString LanguagesOf(const QString& vLanguage)
{
    switch (Find(kLanguages, vLanguage)) {
    case 0: return QStringLiteral("jpn+eng");
    // The Japanese model reads Latin words as well; adding the English one read the same test
    // pages no better at half as much time again.
    case 1: return QStringLiteral("jpn");
    case 2: return QStringLiteral("eng");
    default: return {};
    }
}

Settings Interpret(const Options& vOptions)
{
    Settings s;
    s.languages = LanguagesOf(vOptions.language);
    if (s.languages.isEmpty()) {
        s.error = Refusal("言語", kLanguages, vOptions.language);
        return s;
    }
    const int form = Find(kForms, vOptions.form);
    if (form < 0) {
        s.error = Refusal("書式", kForms, vOptions.form);
        return s;
    }
    const int column = Find(kColumns, vOptions.column);
    if (column < 0) {
        s.error = Refusal("段組", kColumns, vOptions.column);
        return s;
    }
    s.noiseLevel = Find(kNoise, vOptions.noiseReduction);
    if (s.noiseLevel < 0) {
        s.error = Refusal("ノイズ除去", kNoise, vOptions.noiseReduction);
        return s;
    }
    s.layout = static_cast<Layout>(column);
    const bool vertical = s.layout == Layout::SingleVerticalBlock || s.layout == Layout::AutoVertical;
    if (vertical && s.languages.startsWith(QLatin1String("jpn")))
        s.languages.prepend(QStringLiteral("jpn_vert+"));
    if (form == 1)
        s.layout = Layout::Sparse;
    return s;
}

int SpeckSize(int vNoiseLevel, int vDpi)
{
    const int level = std::clamp(vNoiseLevel, 0, static_cast<int>(kSpeckAt300.size()) - 1);
    if (level == 0)
        return 0;
    return std::max(1, qRound(kSpeckAt300[static_cast<size_t>(level)] * vDpi / 300.0));
}

QString MissingDataText(const QString& vLanguages)
{
    return QStringLiteral("OCRに必要なTesseractの言語データがありません。(%1)")
        .arg(vLanguages.split(u'+').join(QStringLiteral(", ")));
}

QString NoPictureText()
{
    return QStringLiteral("OCRするページの画像がありません。");
}

QString TooLargeText()
{
    return QStringLiteral("OCRするページの画像が大きすぎます。");
}

QString FailedText()
{
    return QStringLiteral("OCRに失敗しました。");
}

} // namespace ocr
