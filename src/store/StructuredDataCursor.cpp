// The store: the walking cursor, deleting under it, and joining a node's entries.
#include "store/StructuredDataClass.h"

#include "store/StructuredDataInternal.h"

using namespace storedetail;

// ---- the cursor ------------------------------------------------------------------------------

void StructuredDataClass::SetCurrentNo(qint16 v)
{
    if (v >= 1 && v <= Count())
        currentNo_ = v;
}

void StructuredDataClass::SetCurrentPosition(int vNo)
{
    currentNo_ = Checked16(vNo);
    UpdateDataEnds();
}

void StructuredDataClass::UpdateDataEnds()
{
    startOfData_ = currentNo_ < 1;
    endOfData_ = currentNo_ > Count();
}

QString StructuredDataClass::CurrentDataType() const
{
    const Entry* e = CurrentEntry();
    return e ? TypeText(e->kind) : QString();
}

QString StructuredDataClass::CurrentDataKey() const
{
    const Entry* e = CurrentEntry();
    return e ? e->key : QString();
}

QString StructuredDataClass::CurrentDataValue() const
{
    const Entry* e = CurrentEntry();
    return (e && e->kind == Kind::Data) ? e->value : QString();
}

void StructuredDataClass::SetCurrentDataValue(const QString& v)
{
    const Entry* e = CurrentEntry();
    if (e && e->kind == Kind::Data)
        entries_[currentNo_ - 1].value = v;
}

AnyRef StructuredDataClass::CurrentDataReference() const
{
    const Entry* e = CurrentEntry();
    return (e && e->kind == Kind::Ref) ? e->ref : AnyRef();
}

SDC StructuredDataClass::CurrentThread() const
{
    const Entry* e = CurrentEntry();
    return (e && e->kind == Kind::Thread) ? e->thread : nullptr;
}

// The stored flag, not the count, stops a walk: a fresh empty node still steps once, from 1 to
// 2, as readers of the Windows build's lists have always seen it do.
QString StructuredDataClass::NextData()
{
    if (endOfData_)
        return {};
    const Entry* e = EntryAt(currentNo_);
    QString result = (e && e->kind == Kind::Data) ? e->value : QString();
    currentNo_ = Checked16(currentNo_ + 1);
    movedBackward_ = false;
    UpdateDataEnds();
    return result;
}

QString StructuredDataClass::PreviousData()
{
    if (startOfData_)
        return {};
    const Entry* e = EntryAt(currentNo_);
    QString result = (e && e->kind == Kind::Data) ? e->value : QString();
    currentNo_ = static_cast<qint16>(currentNo_ - 1);
    movedBackward_ = true;
    UpdateDataEnds();
    return result;
}

QString StructuredDataClass::TopData()
{
    currentNo_ = 1;
    endOfData_ = startOfData_ = movedBackward_ = false;
    return CurrentDataValue();
}

QString StructuredDataClass::BottomData()
{
    currentNo_ = Count();
    endOfData_ = startOfData_ = false;
    movedBackward_ = true;
    return CurrentDataValue();
}

void StructuredDataClass::AllTopData(StructuredDataClass& vSDC)
{
    vSDC.TopData();
    for (Entry& e : vSDC.entries_)
        if (e.kind == Kind::Thread && e.thread)
            AllTopData(*e.thread);
}

// ---- deleting --------------------------------------------------------------------------------

// Deleting the entry under the cursor during a forward walk leaves the cursor before it, so
// that the next NextData lands on the entry that moved up.
void StructuredDataClass::AdjustCurrentOnDelete(int vDeleted)
{
    if (movedBackward_ ? currentNo_ > vDeleted : currentNo_ >= vDeleted)
        --currentNo_;
}

void StructuredDataClass::RemoveAt(int vIndex)
{
    AdjustCurrentOnDelete(vIndex + 1);
    TakeAt(vIndex);
    UpdateDataEnds();
}

void StructuredDataClass::DeleteData(const QString& vKey)
{
    const int i = IndexOfKey(vKey);
    if (i >= 0)
        RemoveAt(i);
}

void StructuredDataClass::DeleteDataOfNumber(qint16 vIndex)
{
    if (ExistsOfNo(vIndex))
        RemoveAt(vIndex - 1);
}

void StructuredDataClass::Clear()
{
    for (Entry& e : entries_) {
        if (e.kind == Kind::Thread && e.thread) {
            e.thread->parent_.reset();
            e.thread->Clear();
        }
    }
    entries_.clear();
    index_.clear();
    currentNo_ = 1;
    endOfData_ = startOfData_ = movedBackward_ = false;
}

// ---- joining ---------------------------------------------------------------------------------

QString StructuredDataClass::JoinAll(const QString& vDelimiter, bool vKeys) const
{
    const QString delimiter = vDelimiter.isEmpty() ? QStringLiteral(",") : vDelimiter;
    QString joined;
    bool any = false;
    for (const Entry& e : entries_) {
        if (!vKeys && e.kind != Kind::Data)
            continue;
        if (any)
            joined += delimiter;
        joined += vKeys ? e.key : e.value;
        any = true;
    }
    // An empty store can't be joined: the original cut a negative length here.
    if (!any)
        throw AppError(AppError::InvalidArgument);
    return joined;
}

QString StructuredDataClass::GetAllDataValue(const QString& vDelimiter) { return JoinAll(vDelimiter, false); }
QString StructuredDataClass::GetAllDataKey(const QString& vDelimiter) { return JoinAll(vDelimiter, true); }
