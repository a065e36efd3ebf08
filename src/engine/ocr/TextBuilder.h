#pragma once
// Words as Tesseract gives them, one by one in reading order, made into the result's words and
// text. Tesseract sees a space wherever characters stand apart and wherever the script changes,
// where Japanese writing has none: "第 1 章", "の 第". Unless the user asks for those spaces,
// words that meet beside a Japanese character become one word; spaces between Latin words stay.

#include "engine/ocr/Ocr.h"

namespace ocr {

// Characters written without spaces between them: kana, kanji, and the full-width forms and
// punctuation set among them.
bool IsJapanese(char32_t vCh);

// Full-width letters, digits and signs as their ASCII selves.
QString HalfWidth(const QString& vText);

class TextBuilder {
public:
    TextBuilder(bool vInsertSpace, bool vHalfWidth);

    // vLineStart: the word begins a line of text.
    void Add(const QString& vText, const QRect& vBox, int vConfidence, bool vLineStart);
    // The next word begins a new line, whatever Tesseract says: the areas of one page.
    void BreakLine() { broken_ = true; }

    Result Take();

private:
    bool insertSpace_;
    bool halfWidth_;
    bool broken_ = false;
    Result result_;
};

} // namespace ocr
