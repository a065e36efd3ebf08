#include "support/LevelAnalyzeClass.h"

#include "support/AppError.h"

namespace {

// Occurrences one after the other, each search starting behind the last find's first
// character, so that overlapping markers count as often as they could start a stretch.
qsizetype CountOf(const QString& vText, const QString& vMarker)
{
    qsizetype count = 0;
    for (qsizetype at = vText.indexOf(vMarker); at >= 0; at = vText.indexOf(vMarker, at + 1))
        ++count;
    return count;
}

} // namespace

LevelAnalyzeClass::LevelAnalyzeClass() : structurdData_(std::make_shared<StructuredDataClass>()) {}

// The tree isn't emptied here: its child nodes point back weakly, so nothing cycles, and a
// caller that took the tree keeps a whole one.
LevelAnalyzeClass::~LevelAnalyzeClass() = default;

void LevelAnalyzeClass::AnalyzeString(const QString& vTargetString, const QString& vStartString,
                                      const QString& vEndString)
{
    if (!vTargetString.isEmpty())
        targetString_ = vTargetString;
    if (!vStartString.isEmpty())
        startString_ = vStartString;
    if (!vEndString.isEmpty())
        endString_ = vEndString;
    if (targetString_.isEmpty() || startString_.isEmpty() || endString_.isEmpty())
        return;
    if (!MarkersPair())
        return;
    try {
        Build();
    } catch (const std::exception&) {
        // A string this tree can't hold (too many entries or levels for 16-bit numbers, or an
        // end marker before its start) just ends the analysis with what was built.
    }
}

bool LevelAnalyzeClass::MarkersPair() const
{
    if (startString_ == endString_)
        return CountOf(targetString_, startString_) % 2 == 0;
    return CountOf(targetString_, startString_) == CountOf(targetString_, endString_);
}

void LevelAnalyzeClass::Build()
{
    structurdData_->Clear();
    SDC cursor = structurdData_;
    QString buffer;
    auto flush = [&] {
        if (!buffer.isEmpty()) {
            cursor->AddData(buffer);
            buffer.clear();
        }
    };
    auto open = [&] {
        flush();
        cursor = cursor->CreateThread();
    };
    auto close = [&] {
        flush();
        SDC up = cursor->Parent();
        if (!up)
            throw AppError(AppError::ObjectNotSet);
        cursor = std::move(up);
    };

    // Markers are compared with one character at a time, so only one-character markers cut.
    const bool sameMarker = startString_ == endString_;
    bool inside = false;
    for (qsizetype i = 0; i < targetString_.size(); ++i) {
        const QString c(targetString_[i]);
        if (sameMarker && c == startString_) {
            inside ? close() : open();
            inside = !inside;
        } else if (!sameMarker && c == startString_) {
            // A tree that starts with a stretch still starts with (empty) text, so that text and
            // stretches alternate from the first entry on.
            if (i == 0)
                cursor->AddData(QString());
            open();
        } else if (!sameMarker && c == endString_) {
            close();
        } else {
            buffer += targetString_[i];
        }
    }
    cursor->AddData(buffer);
}
