#pragma once
// Character recognition of page pictures, for the document engine's OCR, text-position and
// automatic-rotation operations. Tesseract does the reading; this module turns the document
// library's option words into Tesseract's settings, prepares the picture (noise, skew, areas)
// and gives back words with their boxes in the picture's own pixels.
//
// Safe to call from several threads at once: each call borrows a Tesseract instance of its own
// from a pool kept per language, so the cost of loading the language data is paid once.

#include <QImage>
#include <QRect>
#include <QString>

#include <vector>

namespace ocr {

struct Options {
    // Option words, matched without regard to case; Recognize refuses unknown ones (see
    // OcrSettings.h for the lists).
    QString language = QStringLiteral("JAPANESE");
    QString form = QStringLiteral("AUTO");
    QString column = QStringLiteral("AUTO");
    bool insertSpace = false;   // keep the spaces Tesseract finds between Japanese characters
    bool autoDeskew = true;
    bool halfSizeChar = true;   // full-width letters, digits and signs come back half-width
    QString noiseReduction = QStringLiteral("NONE");
    std::vector<QRect> areas;   // pixels of the page; empty means the whole page
};

struct Word {
    QString text;
    QRect box;        // pixels of the page given to Recognize
    int confidence;   // 0 to 100
};

struct Result {
    // In reading order. Words of a line are joined by one space in text, lines by "\n", areas
    // follow one another in the order given; so text is exactly the words and those separators.
    std::vector<Word> words;
    QString text;
    // Empty on success; otherwise a sentence for the user, and words and text are empty.
    QString error;
};

// True when Tesseract and the data files the language word needs are installed.
bool Available(const QString& vLanguage);

// vDpi is the picture's resolution; Tesseract sizes its expectations of characters by it.
Result Recognize(const QImage& vPage, int vDpi, const Options& vOptions);

// The clockwise turn, 0, 90, 180 or 270, that makes the page's text upright; -1 when the page
// holds too little text to tell, or the orientation data is missing.
int DetectRotation(const QImage& vPage, int vDpi);

} // namespace ocr
