#include "settings/TreeViewSaveLoadClass.h"

#include "settings/DataSaveLoadClass.h"
#include "support/AppError.h"
#include "support/CommonLibClass.h"

#include <QTreeWidget>
#include <QTreeWidgetItemIterator>

namespace {

const QString kText = QStringLiteral("Text");
const QString kImage = QStringLiteral("Image");
const QString kSelectedImage = QStringLiteral("SelectedImage");
const QString kTag = QStringLiteral("Tag");
const QString kExpandedImage = QStringLiteral("ExpandedImage");
const QString kExpanded = QStringLiteral("Expanded");

QString Bool(bool v) { return v ? QStringLiteral("True") : QStringLiteral("False"); }

// The picture numbers are empty while unset, as the Windows control gives them.
QString Number(const QTreeWidgetItem* vNode, int vRole)
{
    const QVariant v = vNode->data(0, vRole);
    return v.isValid() ? QString::number(v.toInt()) : QString();
}

QString LastPiece(const QString& vKey)
{
    const QStringList pieces = vKey.split(QLatin1Char('\\'), Qt::SkipEmptyParts);
    return pieces.isEmpty() ? QString() : pieces.last();
}

// Every node in the control's order: each one before its children.
QList<QTreeWidgetItem*> Nodes(QTreeWidget* vView)
{
    QList<QTreeWidgetItem*> out;
    for (QTreeWidgetItemIterator it(vView); *it; ++it)
        out.append(*it);
    return out;
}

} // namespace

SDC TreeViewSaveLoadClass::TreeData()
{
    if (!treeData_)
        treeData_ = std::make_shared<StructuredDataClass>();
    return treeData_;
}

SDC TreeViewSaveLoadClass::PropertyData()
{
    if (!propertyData_)
        propertyData_ = std::make_shared<StructuredDataClass>();
    return propertyData_;
}

QTreeWidgetItem* TreeViewSaveLoadClass::AddNode(QTreeWidget* vTreeView, QTreeWidgetItem* vParent,
                                                const QString& vKey, const QString& vText)
{
    auto* item = vParent ? new QTreeWidgetItem(vParent) : new QTreeWidgetItem(vTreeView);
    item->setData(0, KeyRole, vKey);
    item->setText(0, vText);
    return item;
}

QTreeWidgetItem* TreeViewSaveLoadClass::FindNode(QTreeWidget* vTreeView, const QString& vKey)
{
    for (QTreeWidgetItem* node : Nodes(vTreeView)) {
        if (node->data(0, KeyRole).toString() == vKey)
            return node;
    }
    return nullptr;
}

QString TreeViewSaveLoadClass::GetFullPathKey(const QTreeWidgetItem* vNode)
{
    QStringList pieces;
    for (const QTreeWidgetItem* n = vNode; n; n = n->parent())
        pieces.prepend(LastPiece(n->data(0, KeyRole).toString()));
    return QLatin1Char('\\') + pieces.join(QLatin1Char('\\')) + QLatin1Char('\\');
}

void TreeViewSaveLoadClass::Save(bool vNamePathMode)
{
    const SDC tree = TreeData();
    const SDC properties = PropertyData();
    tree->Clear();
    properties->Clear();
    if (!treeView_)
        return;
    for (QTreeWidgetItem* node : Nodes(treeView_)) {
        SDC treeNode;
        SDC propertyNode;
        if (vNamePathMode) {
            const QString path = GetFullPathKey(node);
            treeNode = tree->CreateThreadOfPath(path, QStringLiteral("FullPath"));
            propertyNode = properties->CreateThreadOfPath(path, QStringLiteral("FullPath"));
            treeNode->SetName(LastPiece(path));
            propertyNode->SetName(LastPiece(path));
        } else {
            const QString key = node->data(0, KeyRole).toString();
            treeNode = tree->CreateThread(key);
            propertyNode = properties->CreateThread(key);
        }
        propertyNode->AddData(Number(node, ImageRole), kImage);
        propertyNode->AddData(Number(node, SelectedImageRole), kSelectedImage);
        propertyNode->AddData(node->data(0, TagRole).toString(), kTag);
        propertyNode->AddData(Number(node, ExpandedImageRole), kExpandedImage);
        propertyNode->AddData(Bool(node->isExpanded()), kExpanded);
        treeNode->AddData(node->text(0), kText);
    }
}

void TreeViewSaveLoadClass::Load()
{
    if (!treeView_)
        return;
    const SDC tree = TreeData();
    tree->AllTopData(*tree);
    treeView_->clear();
    itemOfThread_.clear();
    tree->Accept(*this);
    itemOfThread_.clear();
}

void TreeViewSaveLoadClass::Visit(StructuredDataClass& vSDC)
{
    // The property thread of a node stands at the same keys as its tree thread.
    QStringList keys;
    for (const StructuredDataClass* n = &vSDC; n->Parent(); n = n->Parent().get())
        keys.prepend(n->ObjectKey());
    SDC properties = PropertyData();
    for (const QString& key : keys)
        properties = properties && properties->Exists(key) ? properties->Thread(key) : nullptr;

    QTreeWidgetItem* parentItem = itemOfThread_.value(&vSDC);
    vSDC.TopData();
    while (!vSDC.EndOfData()) {
        if (vSDC.CurrentDataType() == StructuredDataClass::TypeThread) {
            const SDC child = vSDC.CurrentThread();
            const QString key = vSDC.CurrentDataKey();
            QTreeWidgetItem* item = AddNode(treeView_, parentItem, key, QString());
            itemOfThread_.insert(child.get(), item);
            const SDC own = properties && properties->Exists(key) ? properties->Thread(key) : nullptr;
            if (own) {
                const auto setNumber = [&](const QString& vKey, int vRole) {
                    if (!own->DataValue(vKey).isEmpty())
                        item->setData(0, vRole, own->DataValue(vKey).toInt());
                };
                setNumber(kImage, ImageRole);
                setNumber(kSelectedImage, SelectedImageRole);
                setNumber(kExpandedImage, ExpandedImageRole);
                item->setData(0, TagRole, own->DataValue(kTag));
                if (!own->DataValue(kExpanded).isEmpty())
                    item->setExpanded(own->DataValue(kExpanded) == QLatin1String("True"));
            }
            if (child->Exists(kText))
                item->setText(0, child->DataValue(kText));
            child->Accept(*this);
        }
        vSDC.NextData();
    }
}

void TreeViewSaveLoadClass::FileSave(const QString& vFileName)
{
    DataSaveLoadClass file;
    file.SetData(TreeData());
    file.Save(vFileName, QStringLiteral("TreeView"));
    file.SetData(PropertyData());
    file.Save(vFileName, QStringLiteral("TreeViewProperty"));
}

void TreeViewSaveLoadClass::FileLoad(const QString& vFileName)
{
    DataSaveLoadClass file;
    file.SetData(TreeData());
    file.Load(vFileName, QStringLiteral("TreeView"));
    file.SetData(PropertyData());
    file.Load(vFileName, QStringLiteral("TreeViewProperty"));
}

QTreeWidget* TreeViewSaveLoadClass::View(QTreeWidget* vTreeView) const
{
    QTreeWidget* view = vTreeView ? vTreeView : treeView_.data();
    if (!view)
        CommonLibClass::ErrMsgBox(QStringLiteral("ツリービューの参照が指定されていません。"));
    return view;
}

void TreeViewSaveLoadClass::SaveTreeViewExpanded(QTreeWidget* vTreeView)
{
    QTreeWidget* view = View(vTreeView);
    if (!view)
        return;
    for (QTreeWidgetItem* node : Nodes(view))
        PropertyData()->AddData(Bool(node->isExpanded()), node->data(0, KeyRole).toString());
}

void TreeViewSaveLoadClass::LoadTreeViewExpanded(QTreeWidget* vTreeView)
{
    QTreeWidget* view = View(vTreeView);
    if (!view)
        return;
    const SDC properties = PropertyData();
    properties->TopData();
    while (!properties->EndOfData()) {
        // A key the control doesn't hold is the control's own failure, as with the Windows one.
        QTreeWidgetItem* node = FindNode(view, properties->CurrentDataKey());
        if (!node)
            throw AppError(35601, QStringLiteral("要素が見つかりません。"));
        node->setExpanded(properties->CurrentDataValue() == QLatin1String("True"));
        properties->NextData();
    }
}
