#pragma once
// Copies a tree view into two trees of the store and back: TreeData mirrors the nodes and their
// texts, PropertyData holds each node's pictures, tag and open state. The options dialog builds
// its page tree from such a pair, and the pair can be kept as two sections of a settings file.
//
// The tree view is a QTreeWidget; a node's Key, Image, SelectedImage, ExpandedImage and Tag
// live in the item's data under the roles below, since Qt items have no such properties.

#include "store/StructuredDataClass.h"

#include <QHash>
#include <QPointer>
#include <QString>

class QTreeWidget;
class QTreeWidgetItem;

class TreeViewSaveLoadClass : public StoreVisitor {
public:
    enum NodeRole : int {
        KeyRole = 0x0100,  // Qt::UserRole
        ImageRole,
        SelectedImageRole,
        ExpandedImageRole,
        TagRole,
    };

    SDC TreeData();
    void SetTreeData(SDC v) { treeData_ = std::move(v); }
    SDC PropertyData();
    void SetPropertyData(SDC v) { propertyData_ = std::move(v); }
    void SetTreeView(QTreeWidget* v) { treeView_ = v; }

    void Load();
    void Save(bool vNamePathMode);
    static QString GetFullPathKey(const QTreeWidgetItem* vNode);
    void Visit(StructuredDataClass& vSDC) override;
    void FileLoad(const QString& vFileName);
    void FileSave(const QString& vFileName);
    void SaveTreeViewExpanded(QTreeWidget* vTreeView);
    void LoadTreeViewExpanded(QTreeWidget* vTreeView);

    // A node as the Windows control adds one: under vParent (top level when null), by key.
    static QTreeWidgetItem* AddNode(QTreeWidget* vTreeView, QTreeWidgetItem* vParent,
                                    const QString& vKey, const QString& vText);
    static QTreeWidgetItem* FindNode(QTreeWidget* vTreeView, const QString& vKey);

private:
    QTreeWidget* View(QTreeWidget* vTreeView) const;

    SDC treeData_;
    SDC propertyData_;
    QPointer<QTreeWidget> treeView_;
    QHash<const StructuredDataClass*, QTreeWidgetItem*> itemOfThread_;  // during Load only
};
