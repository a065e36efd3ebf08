#pragma once
// Cuts a string into a numbered list of strings: at white space, as a quoted CSV line, at a
// delimiter, at fixed byte widths, or at a delimiter outside quotes. The list stays until the
// next cut, so a caller splits once and then reads the items by number. Bad input never raises:
// an item that isn't there is "".

#include "store/StructuredDataClass.h"

#include <QList>
#include <QString>
#include <QStringList>

class SplitClass : public StoreVisitor {
public:
    // The word ItemsString takes for "no delimiter given".
    static inline const QString NoDelimiter = QStringLiteral("Nothing");

    QString Item(qint16 vIndex) const;
    qint16 ItemCount() const;
    QString ItemsString(qint16 vStart, qint16 vEnd, const QString& vDelimiter = NoDelimiter,
                        bool vTopDelimiter = false);

    void SplitWS(const QString& vString, bool vNoWideSpace = false);
    void SplitCSV(const QString& vTextLine);
    void SplitD(const QString& vString, const QString& vDelimiter = {});
    // Widths count bytes of code page 932; a negative width raises 5.
    void SplitF(const QString& vString, const QList<int>& intNums);
    void SplitDQ(const QString& vString, const QString& vQuotation, const QString& vDelimiter = {});
    void Visit(StructuredDataClass& vSDC) override;

    // The delimiter the last SplitD, SplitDQ or ItemsString left behind.
    QString Delimiter() const { return delimiter_; }

private:
    void ChooseDelimiter(const QString& vDelimiter);
    static QStringList Cut(const QString& vString, const QString& vDelimiter);

    QStringList items_;
    QString delimiter_;
    qint16 level_ = 1;  // level of the text handled last while visiting; 2 and up is quoted
};
