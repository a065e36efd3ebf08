#include "engine/ocr/TextBuilder.h"

#include <algorithm>
#include <utility>

namespace ocr {

namespace {

char32_t First(const QString& vText)
{
    const auto points = vText.toUcs4();
    return points.isEmpty() ? 0 : points.front();
}

char32_t Last(const QString& vText)
{
    const auto points = vText.toUcs4();
    return points.isEmpty() ? 0 : points.back();
}

} // namespace

bool IsJapanese(char32_t vCh)
{
    return (vCh >= 0x3000 && vCh <= 0x30FF)      // ideographic punctuation, hiragana, katakana
        || (vCh >= 0x31F0 && vCh <= 0x31FF)      // small katakana for Ainu
        || (vCh >= 0x3400 && vCh <= 0x4DBF)      // kanji, extension A
        || (vCh >= 0x4E00 && vCh <= 0x9FFF)      // kanji
        || (vCh >= 0xF900 && vCh <= 0xFAFF)      // compatibility kanji
        || (vCh >= 0xFF01 && vCh <= 0xFF9F)      // full-width forms, half-width katakana
        || (vCh >= 0x20000 && vCh <= 0x2FA1F);   // kanji of the supplementary planes
}

QString HalfWidth(const QString& vText)
{
    QString out = vText;
    for (QChar& c : out) {
        if (c.unicode() >= 0xFF01 && c.unicode() <= 0xFF5E)
            c = QChar(static_cast<char16_t>(c.unicode() - 0xFEE0));
    }
    return out;
}

TextBuilder::TextBuilder(bool vInsertSpace, bool vHalfWidth)
    : insertSpace_(vInsertSpace), halfWidth_(vHalfWidth)
{
}

void TextBuilder::Add(const QString& vText, const QRect& vBox, int vConfidence, bool vLineStart)
{
    const QString text = halfWidth_ ? HalfWidth(vText) : vText;
    if (text.trimmed().isEmpty())
        return;
    const bool newLine = vLineStart || broken_;
    broken_ = false;
    if (result_.words.empty()) {
        result_.words.push_back({text, vBox, vConfidence});
        result_.text = text;
        return;
    }
    if (newLine) {
        result_.text += u'\n';
    } else if (!insertSpace_ && (IsJapanese(Last(result_.words.back().text)) || IsJapanese(First(text)))) {
        Word& previous = result_.words.back();
        previous.text += text;
        previous.box = previous.box.united(vBox);
        previous.confidence = std::min(previous.confidence, vConfidence);
        result_.text += text;
        return;
    } else {
        result_.text += u' ';
    }
    result_.words.push_back({text, vBox, vConfidence});
    result_.text += text;
}

Result TextBuilder::Take()
{
    broken_ = false;
    return std::exchange(result_, Result{});
}

} // namespace ocr
