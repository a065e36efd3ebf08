#include "store/StructuredDataClass.h"

#include "store/StructuredDataInternal.h"

#include <utility>

using namespace storedetail;

StructuredDataClass::StructuredDataClass() = default;

// Children are released one at a time from a list rather than by recursion, so that a tree of
// thousands of levels (a damaged settings file can hold one) never exhausts the stack.
StructuredDataClass::~StructuredDataClass()
{
    std::vector<SDC> pending;
    auto collect = [&pending](std::vector<Entry>& vEntries) {
        for (Entry& e : vEntries)
            if (e.thread && e.thread.use_count() == 1)
                pending.push_back(std::move(e.thread));
        vEntries.clear();
    };
    collect(entries_);
    while (!pending.empty()) {
        SDC node = std::move(pending.back());
        pending.pop_back();
        collect(node->entries_);
    }
}

QString StructuredDataClass::FoldKey(const QString& vKey)
{
    const QChar* data = vKey.constData();
    const qsizetype n = vKey.size();
    qsizetype i = 0;
    auto folds = [](char16_t c) { return (c >= u'A' && c <= u'Z') || (c >= 0xFF21 && c <= 0xFF3A); };
    while (i < n && !folds(data[i].unicode()))
        ++i;
    if (i == n)
        return vKey;
    QString folded = vKey;
    QChar* out = folded.data();
    for (; i < n; ++i) {
        const char16_t c = out[i].unicode();
        if (folds(c))
            out[i] = QChar(static_cast<char16_t>(c + 0x20));
    }
    return folded;
}

const QString& StructuredDataClass::TypeText(Kind vKind)
{
    switch (vKind) {
    case Kind::Data: return TypeData;
    case Kind::Ref: return TypeRef;
    case Kind::Thread: break;
    }
    return TypeThread;
}

int StructuredDataClass::IndexOfKey(const QString& vKey) const
{
    if (vKey.isEmpty())
        return -1;
    return index_.value(FoldKey(vKey), -1);
}

int StructuredDataClass::IndexOfKeyExact(const QString& vKey) const
{
    const int i = IndexOfKey(vKey);
    return (i >= 0 && entries_[i].key == vKey) ? i : -1;
}

const StructuredDataClass::Entry* StructuredDataClass::EntryAt(qint16 vIndex) const
{
    if (vIndex < 1 || vIndex > Count())
        return nullptr;
    return &entries_[vIndex - 1];
}

const StructuredDataClass::Entry* StructuredDataClass::CurrentEntry() const
{
    if (entries_.empty() || startOfData_ || endOfData_)
        return nullptr;
    return EntryAt(currentNo_);
}

const StructuredDataClass::Entry& StructuredDataClass::EntryOrRaise(const QString& vKey) const
{
    const int i = IndexOfKey(vKey);
    if (i < 0)
        throw AppError(AppError::InvalidArgument);
    return entries_[i];
}

// ---- the lists ------------------------------------------------------------------------------

void StructuredDataClass::Reindex(int vFrom)
{
    for (int i = vFrom; i < static_cast<int>(entries_.size()); ++i)
        index_[FoldKey(entries_[i].key)] = i;
}

void StructuredDataClass::InsertAt(int vIndex, Entry vEntry, const QString& vFolded)
{
    if (entries_.size() >= 32767)
        throw AppError(AppError::Overflow);
    entries_.insert(entries_.begin() + vIndex, std::move(vEntry));
    if (vIndex == static_cast<int>(entries_.size()) - 1)
        index_.insert(vFolded, vIndex);
    else
        Reindex(vIndex);
}

StructuredDataClass::Entry StructuredDataClass::TakeAt(int vIndex)
{
    Entry taken = std::move(entries_[vIndex]);
    entries_.erase(entries_.begin() + vIndex);
    index_.remove(FoldKey(taken.key));
    Reindex(vIndex);
    return taken;
}

// The one way entries go in. A present key is replaced where it stands; when only the case of
// the key differs the entry moves to the end with the new spelling. A "before" or "after" that
// names no entry adds nothing, silently, as callers have always relied on.
void StructuredDataClass::SetItem(Entry vEntry, const QString& vBefore, const QString& vAfter)
{
    const QString folded = FoldKey(vEntry.key);
    const int present = index_.value(folded, -1);
    if (present >= 0) {
        const int count = Count();
        const int p = entries_[present].key == vEntry.key ? present + 1 : 0;  // exact, as DataNo
        int anchor = p;
        bool after = false;
        if (p == count) {
            anchor = p - 1;
            after = true;
        }
        TakeAt(present);
        if (anchor == 0)
            InsertAt(Count(), std::move(vEntry), folded);
        else
            InsertAt(after ? anchor : anchor - 1, std::move(vEntry), folded);
        return;
    }
    if (!vBefore.isEmpty()) {
        const int b = IndexOfKey(vBefore);
        if (b >= 0)
            InsertAt(b, std::move(vEntry), folded);
    } else if (!vAfter.isEmpty()) {
        const int a = IndexOfKey(vAfter);
        if (a >= 0)
            InsertAt(a + 1, std::move(vEntry), folded);
    } else {
        InsertAt(Count(), std::move(vEntry), folded);
    }
}

QString StructuredDataClass::AddEntry(Entry vEntry, const QString& vKey, const QString& vBefore,
                                      const QString& vAfter)
{
    const QString key = vKey.isEmpty() ? QString::number(Count() + 1) : vKey;
    vEntry.key = key;
    SetItem(std::move(vEntry), vBefore, vAfter);
    if (!vBefore.isEmpty() || !vAfter.isEmpty())
        SetCurrentPosition(DataNo(key));
    else
        SetCurrentPosition(Count());
    return key;
}

QString StructuredDataClass::AddData(const QString& vValue, const QString& vKey, const QString& vBefore,
                                     const QString& vAfter)
{
    Entry e;
    e.kind = Kind::Data;
    e.value = vValue;
    return AddEntry(std::move(e), vKey, vBefore, vAfter);
}

QString StructuredDataClass::AddReference(const AnyRef& vObject, const QString& vKey,
                                          const QString& vBefore, const QString& vAfter)
{
    Entry e;
    e.kind = Kind::Ref;
    e.ref = vObject;
    return AddEntry(std::move(e), vKey, vBefore, vAfter);
}

SDC StructuredDataClass::CreateThread(const QString& vKey, const QString& vBefore, const QString& vAfter)
{
    const QString key = vKey.isEmpty() ? QString::number(Count() + 1) : vKey;
    const int present = IndexOfKey(key);
    SDC node;
    int remembered = 0;
    if (present >= 0 && entries_[present].kind == Kind::Thread) {
        node = entries_[present].thread;
        remembered = DataNo(key);
    } else {
        node = std::make_shared<StructuredDataClass>();
        remembered = Count() + 1;
    }
    node->name_ = key;
    node->objectKey_ = key;
    node->parent_ = weak_from_this();
    node->levelNo_ = Checked16(levelNo_ + 1);

    Entry e;
    e.key = key;
    e.kind = Kind::Thread;
    e.thread = node;
    SetItem(std::move(e), vBefore, vAfter);
    if (!vBefore.isEmpty() || !vAfter.isEmpty())
        SetCurrentPosition(DataNo(key));
    else
        SetCurrentPosition(remembered);
    return node;
}

// ---- getters and setters by key and by number ------------------------------------------------

qint16 StructuredDataClass::DataNo(const QString& vKey) const
{
    return static_cast<qint16>(IndexOfKeyExact(vKey) + 1);
}

qint16 StructuredDataClass::GetNumberOfKey(const QString& vKey) const
{
    const int i = IndexOfKeyExact(vKey);
    return static_cast<qint16>(i < 0 ? -1 : i + 1);
}

QString StructuredDataClass::DataType(const QString& vKey) const
{
    const int i = IndexOfKey(vKey);
    return i < 0 ? QString() : TypeText(entries_[i].kind);
}

QString StructuredDataClass::DataKey(const QString& vKey) const
{
    const int i = IndexOfKey(vKey);
    return i < 0 ? QString() : entries_[i].key;
}

QString StructuredDataClass::DataValue(const QString& vKey) const
{
    const int i = IndexOfKey(vKey);
    return (i < 0 || entries_[i].kind != Kind::Data) ? QString() : entries_[i].value;
}

AnyRef StructuredDataClass::DataReference(const QString& vKey) const
{
    const int i = IndexOfKey(vKey);
    return (i < 0 || entries_[i].kind != Kind::Ref) ? AnyRef() : entries_[i].ref;
}

SDC StructuredDataClass::Thread(const QString& vKey) const
{
    const int i = IndexOfKey(vKey);
    if (i < 0)
        throw MissingThread(QStringLiteral("Thread"), vKey);
    return entries_[i].kind == Kind::Thread ? entries_[i].thread : nullptr;
}

void StructuredDataClass::SetDataValue(const QString& vKey, const QString& vNewValue)
{
    if (EntryOrRaise(vKey).kind != Kind::Data)
        throw StoreError(QStringLiteral("データタイプ以外は設定できません。(StructuredDataClass DataValue)"));
    Entry e;
    e.key = vKey;
    e.value = vNewValue;
    SetItem(std::move(e), {}, {});
}

void StructuredDataClass::SetDataReference(const QString& vKey, const AnyRef& vObject)
{
    if (EntryOrRaise(vKey).kind != Kind::Ref)
        throw StoreError(QStringLiteral("参照タイプ以外は設定できません。(StructuredDataClass DataReference)"));
    Entry e;
    e.key = vKey;
    e.kind = Kind::Ref;
    e.ref = vObject;
    SetItem(std::move(e), {}, {});
}

// The attached node takes this node's level, not one more: callers that want a child which
// round-trips through the settings file use CreateThread.
void StructuredDataClass::SetThread(const QString& vKey, const SDC& vSDC)
{
    if (EntryOrRaise(vKey).kind != Kind::Thread)
        throw StoreError(QStringLiteral("スレッドタイプ以外は設定できません。(StructuredDataClass Thread)"));
    if (vSDC) {
        vSDC->parent_ = weak_from_this();
        vSDC->levelNo_ = levelNo_;
        vSDC->name_ = vKey;
    }
    Entry e;
    e.key = vKey;
    e.kind = Kind::Thread;
    e.thread = vSDC;
    SetItem(std::move(e), {}, {});
}

QString StructuredDataClass::DataTypeOfNumber(qint16 vIndex) const
{
    const Entry* e = EntryAt(vIndex);
    return e ? TypeText(e->kind) : QString();
}

QString StructuredDataClass::DataKeyOfNumber(qint16 vIndex) const
{
    const Entry* e = EntryAt(vIndex);
    return e ? e->key : QString();
}

QString StructuredDataClass::DataValueOfNumber(qint16 vIndex) const
{
    const Entry* e = EntryAt(vIndex);
    return (e && e->kind == Kind::Data) ? e->value : QString();
}

AnyRef StructuredDataClass::DataReferenceOfNumber(qint16 vIndex) const
{
    const Entry* e = EntryAt(vIndex);
    return (e && e->kind == Kind::Ref) ? e->ref : AnyRef();
}

SDC StructuredDataClass::ThreadOfNumber(qint16 vIndex) const
{
    const Entry* e = EntryAt(vIndex);
    if (!e)
        throw MissingThread(QStringLiteral("ThreadOfNumber"), QString::number(vIndex));
    return e->kind == Kind::Thread ? e->thread : nullptr;
}

// The number setters look the number up as a key. Where keys were generated and nothing was
// deleted the two agree; callers rely on exactly that.
void StructuredDataClass::SetDataValueOfNumber(qint16 vIndex, const QString& vNewValue)
{
    SetDataValue(QString::number(vIndex), vNewValue);
}

void StructuredDataClass::SetDataReferenceOfNumber(qint16 vIndex, const AnyRef& vObject)
{
    const QString key = QString::number(vIndex);
    if (EntryOrRaise(key).kind != Kind::Ref)
        throw StoreError(QStringLiteral("参照タイプ以外は設定できません。(StructuredDataClass DataReferenceOfNumber)"));
    Entry e;
    e.key = key;
    e.kind = Kind::Ref;
    e.ref = vObject;
    SetItem(std::move(e), {}, {});
}

void StructuredDataClass::SetThreadOfNumber(qint16 vIndex, const SDC& vSDC)
{
    const QString key = QString::number(vIndex);
    if (EntryOrRaise(key).kind != Kind::Thread)
        throw StoreError(QStringLiteral("スレッドタイプ以外は設定できません。(StructuredDataClass ThreadOfNumber)"));
    if (vSDC) {
        vSDC->parent_ = parent_;
        vSDC->levelNo_ = levelNo_;
    }
    Entry e;
    e.key = key;
    e.kind = Kind::Thread;
    e.thread = vSDC;
    SetItem(std::move(e), {}, {});
}

qint16 StructuredDataClass::DataCount() const
{
    int n = 0;
    for (const Entry& e : entries_)
        n += e.kind == Kind::Data ? 1 : 0;
    return static_cast<qint16>(n);
}

QStringList StructuredDataClass::RefDataKey() const
{
    QStringList keys;
    keys.reserve(static_cast<qsizetype>(entries_.size()));
    for (const Entry& e : entries_)
        keys.append(e.key);
    return keys;
}

bool StructuredDataClass::Exists(const QString& vKey) const { return IndexOfKey(vKey) >= 0; }
