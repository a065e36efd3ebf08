#include "support/SplitClass.h"

#include "support/AppError.h"
#include "support/Blanks.h"
#include "support/Cp932.h"
#include "support/LevelAnalyzeClass.h"

#include <limits>

namespace {

const QString DefaultDelimiter = QStringLiteral(",");
const QString CsvDelimiter = QStringLiteral("\",\"");

bool IsWhiteSpace(QChar vChar, bool vNoWideSpace)
{
    return vChar == QLatin1Char('\t') || vChar == QLatin1Char(' ')
        || (!vNoWideSpace && vChar == QChar(0x3000));
}

} // namespace

QString SplitClass::Item(qint16 vIndex) const
{
    if (vIndex < 1 || vIndex > ItemCount())
        return {};
    return items_[vIndex - 1];
}

qint16 SplitClass::ItemCount() const
{
    // Counts are 16-bit everywhere the items are numbered; what lies beyond can't be asked for.
    constexpr qsizetype most = std::numeric_limits<qint16>::max();
    return static_cast<qint16>(qMin(items_.size(), most));
}

QString SplitClass::ItemsString(qint16 vStart, qint16 vEnd, const QString& vDelimiter,
                                bool vTopDelimiter)
{
    if (vStart < 1 || vStart > vEnd || vEnd > ItemCount())
        return {};
    if (vDelimiter != NoDelimiter)
        delimiter_ = vDelimiter;
    else if (delimiter_.isEmpty())
        delimiter_ = DefaultDelimiter;

    // Empty items in front vanish: the delimiter goes only behind text already there.
    QString joined;
    for (qint16 i = vStart; i <= vEnd; ++i) {
        if (joined.isEmpty())
            joined = items_[i - 1];
        else
            joined += delimiter_ + items_[i - 1];
    }
    return vTopDelimiter ? delimiter_ + joined : joined;
}

void SplitClass::SplitWS(const QString& vString, bool vNoWideSpace)
{
    items_.clear();
    QString word;
    bool lastWasSpace = false;
    for (QChar c : vString) {
        if (IsWhiteSpace(c, vNoWideSpace)) {
            if (!lastWasSpace && !word.isEmpty())
                items_.append(word);
            word.clear();
            lastWasSpace = true;
        } else {
            word += c;
            lastWasSpace = false;
        }
    }
    // An empty string gives no item rather than one empty word.
    if (!lastWasSpace && !word.isEmpty())
        items_.append(word);
}

void SplitClass::SplitCSV(const QString& vTextLine)
{
    if (vTextLine.isEmpty())
        return;
    items_.clear();
    const QString line = TrimBlanks(vTextLine);
    // Only the fully quoted form "a","b" is understood; anything else is no line of ours.
    if (line.size() < 2 || !line.startsWith(QLatin1Char('"')) || !line.endsWith(QLatin1Char('"')))
        return;
    SplitD(line.mid(1, line.size() - 2), CsvDelimiter);
}

void SplitClass::ChooseDelimiter(const QString& vDelimiter)
{
    if (!vDelimiter.isEmpty())
        delimiter_ = vDelimiter;
    else if (delimiter_.isEmpty())
        delimiter_ = DefaultDelimiter;
}

QStringList SplitClass::Cut(const QString& vString, const QString& vDelimiter)
{
    if (vString.isEmpty())
        return {};
    return vString.split(vDelimiter, Qt::KeepEmptyParts, Qt::CaseSensitive);
}

void SplitClass::SplitD(const QString& vString, const QString& vDelimiter)
{
    ChooseDelimiter(vDelimiter);
    // Callers feed lines one by one; an empty one keeps the last result readable.
    if (vString.isEmpty())
        return;
    items_ = Cut(vString, delimiter_);
}

void SplitClass::SplitF(const QString& vString, const QList<int>& intNums)
{
    items_.clear();
    // Widths are those of the fixed-column files of the Windows world, counted in cp932 bytes.
    // A width that ends inside a double-byte character leaves each half to the codec, which
    // makes a lone lead byte U+FFFD and reads a trail byte on its own.
    const QByteArray bytes = Cp932::Encode(vString);
    qsizetype position = 0;
    for (int width : intNums) {
        if (width < 0)
            throw AppError(AppError::InvalidArgument);
        const qsizetype take = qMin<qsizetype>(width, bytes.size() - position);
        items_.append(Cp932::Decode(QByteArrayView(bytes).sliced(position, take)));
        position += take;
    }
    items_.append(Cp932::Decode(QByteArrayView(bytes).sliced(position)));
}

void SplitClass::SplitDQ(const QString& vString, const QString& vQuotation, const QString& vDelimiter)
{
    ChooseDelimiter(vDelimiter);
    items_.clear();
    LevelAnalyzeClass analyzer;
    analyzer.AnalyzeString(vString, vQuotation, vQuotation);
    const SDC tree = analyzer.StructurdData();
    tree->AllTopData(*tree);
    level_ = 1;
    tree->Accept(*this);
}

void SplitClass::Visit(StructuredDataClass& vSDC)
{
    while (!vSDC.EndOfData()) {
        const QString type = vSDC.CurrentDataType();
        if (type == StructuredDataClass::TypeData) {
            const QString text = vSDC.CurrentDataValue();
            if (vSDC.LevelNo() == 1) {
                // Outside quotes. Text right behind a quoted stretch still belongs to its item.
                const QStringList pieces = Cut(text, delimiter_);
                for (qsizetype i = 0; i < pieces.size(); ++i) {
                    if (i > 0)
                        items_.append(pieces[i]);
                    else if (pieces[i].isEmpty())
                        continue;
                    else if (level_ >= 2 && !items_.isEmpty())
                        items_.last() += pieces[i];
                    else
                        items_.append(pieces[i]);
                }
            } else if (!items_.isEmpty()) {
                // Inside quotes: whole, delimiters and all, joined to the item being built.
                items_.last() += text;
            } else {
                items_.append(text);
            }
            // Only text moves the level: after a quoted stretch the level must still say
            // "quoted" when the text behind it arrives from the parent node.
            level_ = vSDC.LevelNo();
        } else if (type == StructuredDataClass::TypeThread) {
            if (const SDC child = vSDC.CurrentThread())
                child->Accept(*this);
        }
        vSDC.NextData();
    }
}
