// The store: swapping and sorting entries in place.
#include "store/StructuredDataClass.h"

#include "store/StructuredDataInternal.h"

using namespace storedetail;

#include <utility>

// ---- swapping and sorting ------------------------------------------------------------------

void StructuredDataClass::SwapData(const QString& vKey1, const QString& vKey2, const QString& vMode)
{
    int a = 0;
    int b = 0;
    if (vMode.toUpper() == QLatin1String("NUMBER")) {
        if (!ReadNumber(vKey1, a) || !ReadNumber(vKey2, b) || a < 1 || a > Count() || b < 1 || b > Count())
            return;
    } else {
        a = GetNumberOfKey(vKey1);
        b = GetNumberOfKey(vKey2);
        if (a == -1 || b == -1)
            return;
    }
    SwapItems(a, b);
}

// Two distinct positions trade places; the cursor stays. The original did this by two moves, so
// a position swapped with itself trades places with the next entry, and the last one can't.
void StructuredDataClass::SwapItems(int vA, int vB)
{
    if (vA == vB) {
        if (vA >= Count())
            throw AppError(AppError::InvalidArgument);
        vB = vA + 1;
    }
    std::swap(entries_[vA - 1], entries_[vB - 1]);
    index_[FoldKey(entries_[vA - 1].key)] = vA - 1;
    index_[FoldKey(entries_[vB - 1].key)] = vB - 1;
}

QString StructuredDataClass::SortKeyAt(int vIndex) const
{
    if (sort_.threadKey) {
        const SDC child = ThreadOfNumber(static_cast<qint16>(vIndex));
        if (!child)
            throw AppError(AppError::ObjectNotSet);
        return child->DataValue(*sort_.threadKey);
    }
    const Entry& e = entries_[vIndex - 1];
    switch (sort_.target) {
    case SortTarget::Key: return e.key;
    case SortTarget::Type: return TypeText(e.kind);
    default: break;
    }
    if (e.kind != Kind::Data)  // an object has no value to compare
        throw AppError(AppError::TypeMismatch);
    return e.value;
}

int StructuredDataClass::CompareItems(int vX, int vY) const
{
    if (sort_.target == SortTarget::None)
        return 0;
    const QString x = SortKeyAt(vX);
    const QString y = SortKeyAt(vY);
    int answer = 0;
    if (sort_.compare == SortCompare::Integer && sort_.target != SortTarget::Type) {
        bool okX = false;
        bool okY = false;
        const qint32 nx = x.trimmed().toInt(&okX);
        const qint32 ny = y.trimmed().toInt(&okY);
        if (!okX || !okY)
            throw AppError(AppError::TypeMismatch);
        answer = nx > ny ? 1 : (nx == ny ? 0 : -1);
    } else if (sort_.compare == SortCompare::String || sort_.target == SortTarget::Type) {
        const int c = QString::compare(x, y, Qt::CaseSensitive);
        answer = c > 0 ? 1 : (c == 0 ? 0 : -1);
    }
    return sort_.descending ? -answer : answer;
}

// The pivot is a position, not a value: when a swap moves the entry at vLow, the pivot's value
// changes with it. Sorted results of the Windows build depend on this, so it stays.
void StructuredDataClass::QuickSortItems(int vLow, int vHigh)
{
    if (vHigh - vLow == 1) {
        if (CompareItems(vHigh, vLow) < 0)
            SwapItems(vHigh, vLow);
        return;
    }
    int i = vLow;
    int j = vHigh;
    const int pivot = vLow;
    for (;;) {
        while (i < Count() && CompareItems(i, pivot) < 0)
            ++i;
        while (j > 1 && CompareItems(pivot, j) < 0)
            --j;
        if (i >= j)
            break;
        SwapItems(j, i);
        ++i;
        --j;
    }
    if (vLow < i - 1)
        QuickSortItems(vLow, i - 1);
    if (j + 1 < vHigh)
        QuickSortItems(j + 1, vHigh);
}

void StructuredDataClass::RunSort(const QString& vMode, const QString& vTarget,
                                  const QString& vCompareType, const QString* vThreadKey)
{
    if (Count() < 2)
        return;
    sort_ = SortState();
    sort_.descending = vMode == QLatin1String("DEC");
    sort_.target = vTarget == QLatin1String("Value") ? SortTarget::Value
                 : vTarget == QLatin1String("Key")   ? SortTarget::Key
                 : vTarget == QLatin1String("Type")  ? SortTarget::Type
                                                     : SortTarget::None;
    sort_.compare = vCompareType == QLatin1String("String")    ? SortCompare::String
                  : vCompareType == QLatin1String("Integer")   ? SortCompare::Integer
                                                               : SortCompare::None;
    sort_.threadKey = vThreadKey;
    QuickSortItems(1, Count());
}

void StructuredDataClass::Sort(const QString& vMode, QString& vTarget, QString& vCompareType)
{
    if (vTarget.isEmpty())
        vTarget = QStringLiteral("Value");
    if (vCompareType.isEmpty())
        vCompareType = QStringLiteral("String");
    RunSort(vMode, vTarget, vCompareType, nullptr);
}

void StructuredDataClass::Sort(const QString& vMode, const QString& vTarget, const QString& vCompareType)
{
    QString target = vTarget;
    QString compareType = vCompareType;
    Sort(vMode, target, compareType);
}

void StructuredDataClass::SortEx(const QString& vMode, const QString& vKey, QString& vCompareType)
{
    if (vCompareType.isEmpty())
        vCompareType = QStringLiteral("String");
    RunSort(vMode, QStringLiteral("Value"), vCompareType, &vKey);
}

void StructuredDataClass::SortEx(const QString& vMode, const QString& vKey, const QString& vCompareType)
{
    QString compareType = vCompareType;
    SortEx(vMode, vKey, compareType);
}
