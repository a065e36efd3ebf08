#include "settings/StructuredDataClass.h"

#include "support/AppError.h"

#include <utility>

namespace {

const QString kCrLfKey = QStringLiteral("\r\nKey = ");

qint16 Checked16(int vValue)
{
    if (vValue > 32767 || vValue < -32768)
        throw AppError(AppError::Overflow);
    return static_cast<qint16>(vValue);
}

AppError StoreError(const QString& vText) { return AppError(AppError::DataStore, vText); }

AppError MissingThread(const QString& vOperation, const QString& vKey)
{
    return StoreError(QStringLiteral("スレッドに存在しないキーを参照しようとしました。(StructuredDataClass ")
                      + vOperation + QStringLiteral(")") + kCrLfKey + vKey);
}

// A path piece or a swap argument "reads as a number" when it is a whole number.
bool ReadNumber(const QString& vText, int& vNumber)
{
    bool ok = false;
    vNumber = vText.trimmed().toInt(&ok);
    return ok;
}

} // namespace

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

// ---- paths -----------------------------------------------------------------------------------

void StructuredDataClass::SplitPath(const QString& vPath)
{
    pathParts_ = vPath.isEmpty() ? QStringList() : vPath.split(QLatin1Char('\\'));
}

// Pieces 2 to (count - 1) are walked: "\A\B\", "x\A\B\" and "\A\B\y" all mean A then B. A step
// that fails ends the walk quietly with the node reached so far.
template <class Step>
SDC StructuredDataClass::WalkPath(const QString& vPath, const QString& vOperation, Step vStep)
{
    SplitPath(vPath);
    const QStringList parts = pathParts_;
    SDC held = weak_from_this().lock();
    StructuredDataClass* node = this;
    for (qsizetype i = 1; i + 1 < parts.size(); ++i) {
        try {
            if (!node)
                throw AppError(AppError::ObjectNotSet);
            SDC next = vStep(*node, parts[i]);
            held = next;
            node = next.get();
        } catch (const AppError& e) {
            if (e.Number() == AppError::InvalidArgument)
                throw MissingThread(vOperation, parts[i]);
            break;
        }
    }
    return held;
}

SDC StructuredDataClass::ThreadOfPath(const QString& vPath)
{
    return WalkPath(vPath, QStringLiteral("ThreadOfPath"),
                    [](StructuredDataClass& n, const QString& piece) { return n.Thread(piece); });
}

SDC StructuredDataClass::ThreadOfPathForNumber(const QString& vPath)
{
    return WalkPath(vPath, QStringLiteral("ThreadOfPathForNumber"),
                    [](StructuredDataClass& n, const QString& piece) {
                        int number = 0;
                        return ReadNumber(piece, number) ? n.ThreadOfNumber(Checked16(number))
                                                         : n.Thread(piece);
                    });
}

bool StructuredDataClass::ExistsOfPath(const QString& vPath)
{
    SplitPath(vPath);
    StructuredDataClass* node = this;
    for (qsizetype i = 1; i + 1 < pathParts_.size(); ++i) {
        const int at = node->IndexOfKey(pathParts_[i]);
        if (at < 0 || node->entries_[at].kind != Kind::Thread || !node->entries_[at].thread)
            return false;
        node = node->entries_[at].thread.get();
    }
    return true;
}

// A piece that isn't a number passes the existence test by key and then ends the walk: the
// type check reads it as a number, and that failure leaves the answer true.
bool StructuredDataClass::ExistsOfPathForNumber(const QString& vPath)
{
    SplitPath(vPath);
    const QStringList parts = pathParts_;
    StructuredDataClass* node = this;
    for (qsizetype i = 1; i + 1 < parts.size(); ++i) {
        try {
            int number = 0;
            const bool numeric = ReadNumber(parts[i], number);
            if (!(numeric ? node->ExistsOfNo(Checked16(number)) : node->Exists(parts[i])))
                return false;
            if (!numeric)
                throw AppError(AppError::TypeMismatch);
            const Entry* e = node->EntryAt(static_cast<qint16>(number));
            if (e->kind != Kind::Thread || !e->thread)
                return false;
            node = e->thread.get();
        } catch (const AppError& e) {
            if (e.Number() == AppError::InvalidArgument)
                throw MissingThread(QStringLiteral("ThreadOfPath"), parts[i]);
            break;
        }
    }
    return true;
}

SDC StructuredDataClass::CreateThreadOfPath(const QString& vPath, const QString& vKeyMode)
{
    SplitPath(vPath);
    const QStringList parts = pathParts_;
    SDC held = weak_from_this().lock();
    StructuredDataClass* node = this;
    QString key;
    for (qsizetype i = 1; i + 1 < parts.size(); ++i) {
        if (!node)
            throw AppError(AppError::ObjectNotSet);
        if (vKeyMode.isEmpty())
            key = parts[i];
        else if (vKeyMode == QLatin1String("FullPath"))
            key = node->Parent() ? node->ObjectKey() + parts[i] + QLatin1Char('\\')
                                 : QLatin1Char('\\') + parts[i] + QLatin1Char('\\');
        held = node->Exists(key) ? node->Thread(key) : node->CreateThread(key);
        node = held.get();
    }
    return held;
}

QString StructuredDataClass::GetPath(const QString& vPath) const
{
    const SDC parent = Parent();
    return parent ? parent->GetPath(name_ + QLatin1Char('\\') + vPath) : QLatin1Char('\\') + vPath;
}

QString StructuredDataClass::GetPathOfKey(const QString& vPath) const
{
    const SDC parent = Parent();
    return parent ? parent->GetPathOfKey(objectKey_ + QLatin1Char('\\') + vPath)
                  : QLatin1Char('\\') + vPath;
}

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

// ---- whole-tree operations -----------------------------------------------------------------

void StructuredDataClass::CloneInto(const StructuredDataClass& vSource, StructuredDataClass& vDestination)
{
    for (const Entry& e : vSource.entries_) {
        vDestination.name_ = vSource.name_;
        vDestination.objectKey_ = vSource.objectKey_;
        vDestination.levelNo_ = vSource.levelNo_;
        vDestination.currentNo_ = vSource.currentNo_;
        vDestination.endOfData_ = vSource.endOfData_;
        vDestination.startOfData_ = vSource.startOfData_;
        switch (e.kind) {
        case Kind::Data: vDestination.AddData(e.value, e.key); break;
        case Kind::Ref: vDestination.AddReference(e.ref, e.key); break;
        case Kind::Thread: {
            const SDC child = vDestination.CreateThread(e.key);
            if (e.thread)
                CloneInto(*e.thread, *child);
            break;
        }
        }
    }
}

SDC StructuredDataClass::Clone(const StructuredDataClass* vThisSDC, SDC& vSDC) const
{
    const bool made = !vSDC;
    if (made)
        vSDC = std::make_shared<StructuredDataClass>();
    CloneInto(vThisSDC ? *vThisSDC : *this, *vSDC);
    return made ? vSDC : nullptr;
}

SDC StructuredDataClass::Clone() const
{
    SDC copy;
    return Clone(nullptr, copy);
}

SDC StructuredDataClass::GetThreads()
{
    threadList_ = std::make_shared<StructuredDataClass>();
    AllTopData(*this);
    Accept(*this);
    return threadList_;
}

void StructuredDataClass::Visit(StructuredDataClass& vSDC)
{
    if (!threadList_)
        threadList_ = std::make_shared<StructuredDataClass>();
    while (!vSDC.EndOfData()) {
        if (const SDC child = vSDC.CurrentThread()) {
            threadList_->AddReference(child, child->ObjectKey());
            child->Accept(*this);
        }
        vSDC.NextData();
    }
}

void StructuredDataClass::DebugListInto(StructuredDataClass& vPrint) const
{
    auto flag = [](bool v) { return v ? QStringLiteral("True") : QStringLiteral("False"); };
    auto line = [](const QString& label, const QString& value) {
        return label + QStringLiteral(" = [") + value + QLatin1Char(']');
    };
    vPrint.AddData(QString(80, QLatin1Char('-')));
    vPrint.AddData(line(QStringLiteral("Name         "), name_));
    vPrint.AddData(line(QStringLiteral("ObjectKey    "), objectKey_));
    vPrint.AddData(line(QStringLiteral("CurrentNo    "), QString::number(currentNo_)));
    vPrint.AddData(line(QStringLiteral("EndOfData    "), flag(endOfData_)));
    vPrint.AddData(line(QStringLiteral("StartOfData  "), flag(startOfData_)));
    vPrint.AddData(line(QStringLiteral("Count        "), QString::number(Count())));
    vPrint.AddData(line(QStringLiteral("DataCount    "), QString::number(DataCount())));
    vPrint.AddData(line(QStringLiteral("LevelNo      "), QString::number(levelNo_)));
    for (int i = 1; i <= Count(); ++i) {
        const Entry& e = entries_[i - 1];
        if (e.kind == Kind::Thread) {
            if (e.thread)
                e.thread->DebugListInto(vPrint);
            continue;
        }
        const QString n = QStringLiteral("%1").arg(i, 2);
        vPrint.AddData(QString(14, QLatin1Char('-')));
        if (e.kind == Kind::Data)
            vPrint.AddData(line(QStringLiteral("DataValue(") + n + QLatin1Char(')'), e.value));
        vPrint.AddData(line(QStringLiteral("DataType (") + n + QLatin1Char(')'), TypeText(e.kind)));
        vPrint.AddData(line(QStringLiteral("DataKey  (") + n + QLatin1Char(')'), e.key));
    }
}

SDC StructuredDataClass::DebugList(const StructuredDataClass* vThisSDC, SDC vPrintSDC) const
{
    if (!vPrintSDC)
        vPrintSDC = std::make_shared<StructuredDataClass>();
    (vThisSDC ? *vThisSDC : *this).DebugListInto(*vPrintSDC);
    vPrintSDC->TopData();
    return vPrintSDC;
}
