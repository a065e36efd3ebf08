// The store: operations over whole trees (copies, the list of all nodes, the text dump).
#include "store/StructuredDataClass.h"

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
