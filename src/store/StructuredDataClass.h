#pragma once
// The one data structure of the program: a tree of ordered, keyed lists. Settings, command
// tables, tab tables and most work lists are nodes of it. An entry is a string ("DATA"), a
// reference to any object ("REF") or a child node ("THREAD"). Keys are unique within a node and
// compare without regard to case; positions count from 1 and, like counts and levels, are 16-bit
// as they are in the settings files the Windows build shares with us.
//
// Nodes live in std::shared_ptr (make one with std::make_shared<StructuredDataClass>()): a child
// is owned by its parent's entry, and its Parent is a weak link back.

#include "store/AnyRef.h"

#include <QHash>
#include <QString>
#include <QStringList>
#include <memory>
#include <vector>

class StructuredDataClass;
using SDC = std::shared_ptr<StructuredDataClass>;

// The visitor half of Accept: the settings writer and the store itself walk trees this way.
class StoreVisitor {
public:
    virtual ~StoreVisitor() = default;
    virtual void Visit(StructuredDataClass& vSDC) = 0;
};

class StructuredDataClass : public StoreVisitor,
                            public std::enable_shared_from_this<StructuredDataClass> {
public:
    static inline const QString TypeData = QStringLiteral("DATA");
    static inline const QString TypeRef = QStringLiteral("REF");
    static inline const QString TypeThread = QStringLiteral("THREAD");

    StructuredDataClass();
    ~StructuredDataClass() override;
    StructuredDataClass(const StructuredDataClass&) = delete;
    StructuredDataClass& operator=(const StructuredDataClass&) = delete;

    QString Name() const { return name_; }
    void SetName(const QString& v) { name_ = v; }
    QString ObjectKey() const { return objectKey_; }
    void SetObjectKey(const QString& v) { objectKey_ = v; }

    // By key. The getters give "" or null for an absent key; Thread raises 6000 for one.
    qint16 DataNo(const QString& vKey) const;  // exact comparison, 0 when absent
    QString DataType(const QString& vKey) const;
    QString DataKey(const QString& vKey) const;
    QString DataValue(const QString& vKey) const;
    void SetDataValue(const QString& vKey, const QString& vNewValue);
    AnyRef DataReference(const QString& vKey) const;
    void SetDataReference(const QString& vKey, const AnyRef& vObject);
    SDC Thread(const QString& vKey) const;
    void SetThread(const QString& vKey, const SDC& vSDC);
    SDC ThreadOfPath(const QString& vPath);
    SDC ThreadOfPathForNumber(const QString& vPath);

    // By position; the setters take the number as a key, as they always have.
    QString DataTypeOfNumber(qint16 vIndex) const;
    QString DataKeyOfNumber(qint16 vIndex) const;
    QString DataValueOfNumber(qint16 vIndex) const;
    void SetDataValueOfNumber(qint16 vIndex, const QString& vNewValue);
    AnyRef DataReferenceOfNumber(qint16 vIndex) const;
    void SetDataReferenceOfNumber(qint16 vIndex, const AnyRef& vObject);
    SDC ThreadOfNumber(qint16 vIndex) const;
    void SetThreadOfNumber(qint16 vIndex, const SDC& vSDC);

    qint16 Count() const { return static_cast<qint16>(entries_.size()); }
    qint16 DataCount() const;

    // The cursor.
    bool StartOfData() const { return entries_.empty() || startOfData_; }
    void SetStartOfData(bool v) { startOfData_ = v; }
    bool EndOfData() const { return entries_.empty() || endOfData_; }
    void SetEndOfData(bool v) { endOfData_ = v; }
    qint16 CurrentNo() const { return currentNo_; }
    void SetCurrentNo(qint16 v);
    QString CurrentDataType() const;
    QString CurrentDataKey() const;
    QString CurrentDataValue() const;
    void SetCurrentDataValue(const QString& v);
    AnyRef CurrentDataReference() const;
    SDC CurrentThread() const;

    SDC Parent() const { return parent_.lock(); }
    void SetParent(const SDC& v) { parent_ = v; }
    qint16 LevelNo() const { return levelNo_; }
    void SetLevelNo(qint16 v) { levelNo_ = v; }
    QStringList RefDataKey() const;

    // Adding. An empty key becomes Count + 1 as text; the key used is returned, as the original
    // wrote it back into the caller's variable. A present key is replaced in place.
    QString AddData(const QString& vValue, const QString& vKey = {}, const QString& vBefore = {},
                    const QString& vAfter = {});
    QString AddReference(const AnyRef& vObject, const QString& vKey = {},
                         const QString& vBefore = {}, const QString& vAfter = {});
    SDC CreateThread(const QString& vKey = {}, const QString& vBefore = {}, const QString& vAfter = {});
    SDC CreateThreadOfPath(const QString& vPath, const QString& vKeyMode = {});
    void SwapData(const QString& vKey1, const QString& vKey2, const QString& vMode = {});

    QString NextData();
    QString PreviousData();
    QString TopData();
    void AllTopData(StructuredDataClass& vSDC);
    QString BottomData();

    void DeleteData(const QString& vKey);
    void DeleteDataOfNumber(qint16 vIndex);

    QString GetAllDataValue(const QString& vDelimiter = QStringLiteral(","));
    QString GetAllDataKey(const QString& vDelimiter = QStringLiteral(","));

    bool Exists(const QString& vKey) const;
    bool ExistsOfNo(qint16 vIndex) const { return vIndex >= 1 && vIndex <= Count(); }
    bool ExistsOfPath(const QString& vPath);
    bool ExistsOfPathForNumber(const QString& vPath);

    void Accept(StoreVisitor& vObj) { vObj.Visit(*this); }
    void Clear();
    // Copies vThisSDC (this node when null) into vSDC; makes vSDC when it is null and returns it
    // then, else returns null. The destination isn't cleared first.
    SDC Clone(const StructuredDataClass* vThisSDC, SDC& vSDC) const;
    SDC Clone() const;
    QString GetPath(const QString& vPath = {}) const;
    QString GetPathOfKey(const QString& vPath = {}) const;
    SDC DebugList(const StructuredDataClass* vThisSDC = nullptr, SDC vPrintSDC = nullptr) const;

    // Sorting writes the defaults back into the caller's variables, as callers expect.
    void Sort(const QString& vMode, QString& vTarget, QString& vCompareType);
    void Sort(const QString& vMode = {}, const QString& vTarget = {}, const QString& vCompareType = {});
    void SortEx(const QString& vMode, const QString& vKey, QString& vCompareType);
    void SortEx(const QString& vMode, const QString& vKey, const QString& vCompareType = {});

    // Every descendant, depth first, as "REF" entries under their ObjectKey.
    SDC GetThreads();
    qint16 GetNumberOfKey(const QString& vKey) const;  // exact comparison, -1 when absent
    void Visit(StructuredDataClass& vSDC) override;

    // Case folding of keys: ASCII and full-width Latin letters.
    static QString FoldKey(const QString& vKey);

private:
    enum class Kind : quint8 { Data, Ref, Thread };
    struct Entry {
        QString key;
        Kind kind = Kind::Data;
        QString value;
        AnyRef ref;
        SDC thread;
    };

    static const QString& TypeText(Kind vKind);
    int IndexOfKey(const QString& vKey) const;  // 0-based, case ignored; -1 when absent
    int IndexOfKeyExact(const QString& vKey) const;
    const Entry* EntryAt(qint16 vIndex) const;  // 1-based; null when out of range
    const Entry* CurrentEntry() const;
    const Entry& EntryOrRaise(const QString& vKey) const;

    void SetItem(Entry vEntry, const QString& vBefore, const QString& vAfter);
    QString AddEntry(Entry vEntry, const QString& vKey, const QString& vBefore, const QString& vAfter);
    void InsertAt(int vIndex, Entry vEntry, const QString& vFolded);
    Entry TakeAt(int vIndex);
    void Reindex(int vFrom);
    void SetCurrentPosition(int vNo);
    void UpdateDataEnds();
    void AdjustCurrentOnDelete(int vDeleted);
    void RemoveAt(int vIndex);
    void SplitPath(const QString& vPath);
    template <class Step>
    SDC WalkPath(const QString& vPath, const QString& vOperation, Step vStep);
    void SwapItems(int vA, int vB);
    void QuickSortItems(int vLow, int vHigh);
    int CompareItems(int vX, int vY) const;
    QString SortKeyAt(int vIndex) const;
    void RunSort(const QString& vMode, const QString& vTarget, const QString& vCompareType,
                 const QString* vThreadKey);
    void DebugListInto(StructuredDataClass& vPrint) const;
    static void CloneInto(const StructuredDataClass& vSource, StructuredDataClass& vDestination);
    QString JoinAll(const QString& vDelimiter, bool vKeys) const;

    QString name_;
    QString objectKey_;
    std::vector<Entry> entries_;
    QHash<QString, int> index_;  // folded key -> 0-based position
    std::weak_ptr<StructuredDataClass> parent_;
    qint16 levelNo_ = 1;
    qint16 currentNo_ = 1;
    bool endOfData_ = false;
    bool startOfData_ = false;
    bool movedBackward_ = false;
    QStringList pathParts_;
    SDC threadList_;

    // State of one sort run.
    enum class SortTarget : quint8 { Value, Key, Type, None };
    enum class SortCompare : quint8 { String, Integer, None };
    struct SortState {
        bool descending = false;
        SortTarget target = SortTarget::Value;
        SortCompare compare = SortCompare::String;
        const QString* threadKey = nullptr;  // SortEx: compare this value inside each child
    } sort_;
};
