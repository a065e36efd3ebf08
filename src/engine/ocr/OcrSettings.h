#pragma once
// The document library's OCR option words and what each asks of Tesseract. Users' scripts and
// settings hold these words, so the lists and the refusal texts are fixed: a word is matched
// without regard to case or surrounding blanks, and anything else is refused with a sentence
// naming the words that are accepted.
//
//   language         JAPANESE: the Japanese model, which knows Latin letters too ("jpn");
//                    AUTO: that and the English model, the better of them word by word
//                    ("jpn+eng"); ENGLISH: the English model alone ("eng")
//   form             AUTO, WRITING: laid out by the column word; TABLE: text scattered in cells,
//                    read wherever it is found, whatever the column word says
//   column           AUTO, HORIZONTAL_MULTI: the whole layout analysis, columns found by it;
//                    HORIZONTAL_SINGLE: one block of horizontal lines;
//                    VERTICAL_SINGLE: one block of vertical lines;
//                    VERTICAL_MULTI: the layout analysis, told to expect vertical lines.
//                    Vertical columns add the vertical Japanese model ("jpn_vert").
//   noise reduction  NONE, WEAK, NORMAL, STRONG: specks up to 0, 2, 3 or 4 pixels across at
//                    300 dpi (scaled to the picture's resolution) are taken away

#include "engine/ocr/Ocr.h"

#include <QStringList>

namespace ocr {

enum class Layout { Auto, SingleBlock, SingleVerticalBlock, AutoVertical, Sparse };

struct Settings {
    QString languages;   // Tesseract's language list, "jpn"
    Layout layout = Layout::Auto;
    int noiseLevel = 0;  // 0 none to 3 strong
    QString error;       // the refusal, when a word is unknown
};

Settings Interpret(const Options& vOptions);

// Tesseract's language list for a language word; empty when the word is unknown.
QString LanguagesOf(const QString& vLanguage);

// The largest speck, in pixels across, that a noise level removes at a resolution.
int SpeckSize(int vNoiseLevel, int vDpi);

// The sentences of refusals and failures, for the engine's error texts.
QString MissingDataText(const QString& vLanguages);
QString NoPictureText();
QString TooLargeText();
QString FailedText();

} // namespace ocr
