// The stored form of each control type: what SaveValue writes under a control's thread and
// LoadValue reads back. Keys and their order are those of the Windows build's files.

#include "settings/ColorSwatch.h"
#include "settings/CtrlSaveLoadClass.h"
#include "support/AppError.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>
#include <QTabBar>
#include <QTreeWidget>

#include <cmath>

namespace {

const QString kText = QStringLiteral("Text");
const QString kType = QStringLiteral("Type");
const QString kValue = QStringLiteral("Value");
const QString kVisible = QStringLiteral("Visible");
const QString kList = QStringLiteral("List");
const QString kListIndex = QStringLiteral("ListIndex");
const QString kStyle = QStringLiteral("Style");
const QString kSelected = QStringLiteral("Selected");
const QString kListItem = QStringLiteral("ListItem");
const QString kSubItem = QStringLiteral("SubItem");
const QString kColumnHeader = QStringLiteral("ColumnHeader");

QString Bool(bool v) { return v ? QStringLiteral("True") : QStringLiteral("False"); }
bool IsTrue(const QString& v) { return v.compare(QLatin1String("True"), Qt::CaseInsensitive) == 0; }

// Numbers in the tree are 16-bit, as the Windows build reads them; anything else is a type error.
qint16 Int16(const QString& vText)
{
    bool ok = false;
    const double v = vText.trimmed().toDouble(&ok);
    if (!ok)
        throw AppError(AppError::TypeMismatch);
    const double whole = std::nearbyint(v);
    if (whole < -32768 || whole > 32767)
        throw AppError(AppError::Overflow);
    return static_cast<qint16>(whole);
}

qint32 Int32(const QString& vText)
{
    bool ok = false;
    const double v = vText.trimmed().toDouble(&ok);
    if (!ok || std::abs(v) > 2147483647.0)
        throw AppError(AppError::TypeMismatch);
    return static_cast<qint32>(std::nearbyint(v));
}

SDC Fresh(const SDC& vParent, const QString& vKey)
{
    const SDC node = vParent->CreateThread(vKey);
    node->Clear();
    return node;
}

SDC Sub(const SDC& vNode, const QString& vKey)
{
    return vNode->Exists(vKey) ? vNode->Thread(vKey) : nullptr;
}

int StyleOf(const QListWidget* vList) { return vList->property("Style").toInt(); }

void SaveItems(const QStringList& vItems, int vIndex, const SDC& vThread)
{
    const SDC list = Fresh(vThread, kList);
    for (const QString& item : vItems)
        list->AddData(item);
    vThread->AddData(QString::number(vIndex), kListIndex);
}

QStringList ComboItems(const QComboBox* vCombo)
{
    QStringList items;
    for (int i = 0; i < vCombo->count(); ++i)
        items.append(vCombo->itemText(i));
    return items;
}

// A column keeps the width in twips it was read with while nobody resized it, so that a width
// the Windows build wrote in odd twips survives a round through whole pixels.
constexpr int kLoadedWidthRole = Qt::UserRole + 2;  // (twips, pixels) as read

QString WidthTwips(const QTreeWidget* vView, int vColumn, double vTwips)
{
    const int pixels = vView->header()->sectionSize(vColumn);
    const QVariant loaded = vView->headerItem()->data(vColumn, kLoadedWidthRole);
    if (loaded.isValid() && loaded.toPoint().y() == pixels)
        return QString::number(loaded.toPoint().x());
    return QString::number(std::lround(pixels * vTwips));
}

void SaveListView(const QTreeWidget* vView, const SDC& vThread, double vTwips)
{
    const SDC items = Fresh(vThread, kListItem);
    const int columns = vView->columnCount();
    for (int i = 0; i < vView->topLevelItemCount(); ++i) {
        const QTreeWidgetItem* item = vView->topLevelItem(i);
        const SDC row = items->CreateThread();
        row->AddData(item->text(0), kText);
        row->AddData(Bool(item->checkState(0) == Qt::Checked), QStringLiteral("Checked"));
        const SDC sub = row->CreateThread(kSubItem);
        for (int c = 1; c < columns; ++c)
            sub->AddData(item->text(c));
    }
    const SDC headers = Fresh(vThread, kColumnHeader);
    const QTreeWidgetItem* head = vView->headerItem();
    for (int c = 0; c < columns; ++c) {
        const SDC column = headers->CreateThread();
        column->AddData(head->data(c, Qt::UserRole).toString(), QStringLiteral("Key"));
        column->AddData(head->text(c), kText);
        column->AddData(WidthTwips(vView, c, vTwips), QStringLiteral("Width"));
        // 0 left, 1 right, 2 centred, as the Windows list view numbers them.
        const Qt::Alignment a = Qt::Alignment(head->textAlignment(c)) & Qt::AlignHorizontal_Mask;
        const int alignment = a == Qt::AlignRight ? 1 : a == Qt::AlignHCenter ? 2 : 0;
        column->AddData(QString::number(alignment), QStringLiteral("Alignment"));
        column->AddData(QString::number(head->data(c, Qt::UserRole + 1).toInt()), QStringLiteral("Icon"));
    }
}

void LoadListView(QTreeWidget* vView, const SDC& vThread, double vTwips)
{
    if (const SDC headers = Sub(vThread, kColumnHeader)) {
        vView->setColumnCount(std::max<int>(1, headers->Count()));
        QTreeWidgetItem* head = vView->headerItem();
        for (qint16 c = 1; c <= headers->Count(); ++c) {
            const SDC column = headers->ThreadOfNumber(c);
            if (!column)
                continue;
            const int at = c - 1;
            head->setData(at, Qt::UserRole, column->DataValue(QStringLiteral("Key")));
            head->setText(at, column->DataValue(kText));
            const qint16 width = Int16(column->DataValue(QStringLiteral("Width")));
            vView->header()->resizeSection(at, static_cast<int>(std::lround(width / vTwips)));
            head->setData(at, kLoadedWidthRole, QPoint(width, vView->header()->sectionSize(at)));
            const qint16 alignment = Int16(column->DataValue(QStringLiteral("Alignment")));
            head->setTextAlignment(at, alignment == 1 ? Qt::AlignRight : alignment == 2 ? Qt::AlignHCenter : Qt::AlignLeft);
            head->setData(at, Qt::UserRole + 1, Int16(column->DataValue(QStringLiteral("Icon"))));
        }
    }
    const SDC items = Sub(vThread, kListItem);
    if (!items)
        return;
    vView->clear();
    for (qint16 i = 1; i <= items->Count(); ++i) {
        const SDC row = items->ThreadOfNumber(i);
        if (!row)
            continue;
        auto* item = new QTreeWidgetItem(vView);
        item->setText(0, row->DataValue(kText));
        // Only a list view with check boxes shows them; elsewhere a check state would draw one.
        if (vView->property("Checkboxes").toBool() && row->Exists(QStringLiteral("Checked")))
            item->setCheckState(0, IsTrue(row->DataValue(QStringLiteral("Checked"))) ? Qt::Checked : Qt::Unchecked);
        if (const SDC sub = Sub(row, kSubItem)) {
            for (qint16 c = 1; c <= sub->Count(); ++c)
                item->setText(c, sub->DataValueOfNumber(c));
        }
    }
}

} // namespace

void CtrlSaveLoadClass::SaveControl(QWidget* vControl, const QString& vType, const SDC& vThread) const
{
    if (auto* edit = qobject_cast<QLineEdit*>(vControl)) {
        vThread->AddData(edit->text(), kText);
        vThread->AddData(vType, kType);
    } else if (auto* combo = qobject_cast<QComboBox*>(vControl)) {
        vThread->AddData(vType, kType);
        if (TextOnly())
            vThread->AddData(combo->currentText(), kText);
        else
            SaveItems(ComboItems(combo), combo->currentIndex(), vThread);
    } else if (auto* list = qobject_cast<QListWidget*>(vControl)) {
        vThread->AddData(vType, kType);
        vThread->AddData(QString::number(StyleOf(list)), kStyle);
        if (TextOnly()) {
            if (list->currentRow() >= 0)
                vThread->AddData(list->item(list->currentRow())->text(), kText);
            return;
        }
        QStringList items;
        for (int i = 0; i < list->count(); ++i)
            items.append(list->item(i)->text());
        SaveItems(items, list->currentRow(), vThread);
        if (StyleOf(list) == 1) {
            const SDC selected = Fresh(vThread, kSelected);
            for (int i = 0; i < list->count(); ++i)
                selected->AddData(Bool(list->item(i)->checkState() == Qt::Checked));
        }
    } else if (auto* check = qobject_cast<QCheckBox*>(vControl)) {
        // 0 unchecked, 1 checked, 2 grey: Qt numbers grey and checked the other way round.
        const Qt::CheckState state = check->checkState();
        vThread->AddData(state == Qt::Checked ? QStringLiteral("1") : state == Qt::PartiallyChecked ? QStringLiteral("2")
                                                                                                 : QStringLiteral("0"),
                         kValue);
        vThread->AddData(vType, kType);
    } else if (auto* option = qobject_cast<QRadioButton*>(vControl)) {
        vThread->AddData(Bool(option->isChecked()), kValue);
        vThread->AddData(vType, kType);
    } else if (qobject_cast<QGroupBox*>(vControl)) {
        vThread->AddData(Bool(!vControl->isHidden()), kVisible);
        vThread->AddData(vType, kType);
    } else if (auto* tabs = qobject_cast<QTabBar*>(vControl)) {
        vThread->AddData(QString::number(tabs->currentIndex() + 1), QStringLiteral("SelectedItem.Index"));
        vThread->AddData(vType, kType);
    } else if (auto* view = qobject_cast<QTreeWidget*>(vControl)) {
        vThread->AddData(vType, kType);
        SaveListView(view, vThread, TwipsPerPixel(vControl));
    } else if (auto* swatch = qobject_cast<ColorSwatch*>(vControl)) {
        vThread->AddData(Bool(!vControl->isHidden()), kVisible);
        vThread->AddData(QString::number(swatch->BackColor()), QStringLiteral("BackColor"));
        vThread->AddData(vType, kType);
    }
}

void CtrlSaveLoadClass::LoadControl(QWidget* vControl, const SDC& vThread) const
{
    const auto has = [&](const QString& vKey) { return vThread->Exists(vKey); };
    const auto value = [&](const QString& vKey) { return vThread->DataValue(vKey); };
    if (auto* edit = qobject_cast<QLineEdit*>(vControl)) {
        if (has(kText))
            edit->setText(value(kText));
    } else if (auto* combo = qobject_cast<QComboBox*>(vControl)) {
        if (const SDC list = Sub(vThread, kList)) {
            combo->clear();
            for (qint16 i = 1; i <= list->Count(); ++i)
                combo->addItem(list->DataValueOfNumber(i));
        }
        if (has(kListIndex))
            combo->setCurrentIndex(Int16(value(kListIndex)));
        if (has(kText)) {
            // A text not in the list selects nothing; an editable box shows it all the same.
            combo->setCurrentIndex(combo->findText(value(kText), Qt::MatchExactly));
            if (combo->isEditable())
                combo->setEditText(value(kText));
        }
    } else if (auto* list = qobject_cast<QListWidget*>(vControl)) {
        if (const SDC items = Sub(vThread, kList)) {
            list->clear();
            for (qint16 i = 1; i <= items->Count(); ++i)
                list->addItem(items->DataValueOfNumber(i));
        }
        const SDC selected = Sub(vThread, kSelected);
        for (int i = 0; selected && StyleOf(list) == 1 && i < list->count(); ++i) {
            list->item(i)->setFlags(list->item(i)->flags() | Qt::ItemIsUserCheckable);
            list->item(i)->setCheckState(IsTrue(selected->DataValueOfNumber(static_cast<qint16>(i + 1)))
                                             ? Qt::Checked : Qt::Unchecked);
        }
        if (has(kListIndex))
            list->setCurrentRow(Int16(value(kListIndex)));
        if (has(kText)) {
            const QList<QListWidgetItem*> found = list->findItems(value(kText), Qt::MatchExactly);
            list->setCurrentRow(found.isEmpty() ? -1 : list->row(found.first()));
        }
    } else if (auto* check = qobject_cast<QCheckBox*>(vControl)) {
        if (has(kValue)) {
            const qint16 v = Int16(value(kValue));
            check->setCheckState(v == 1 ? Qt::Checked : v == 2 ? Qt::PartiallyChecked : Qt::Unchecked);
        }
    } else if (auto* option = qobject_cast<QRadioButton*>(vControl)) {
        if (has(kValue)) {
            // An exclusive button refuses to be switched off directly; the stored "False" must win.
            const bool exclusive = option->autoExclusive();
            option->setAutoExclusive(false);
            option->setChecked(IsTrue(value(kValue)));
            option->setAutoExclusive(exclusive);
        }
    } else if (qobject_cast<QGroupBox*>(vControl)) {
        if (has(kVisible))
            vControl->setVisible(IsTrue(value(kVisible)));
    } else if (auto* tabs = qobject_cast<QTabBar*>(vControl)) {
        if (has(QStringLiteral("SelectedItem.Index")))
            tabs->setCurrentIndex(Int16(value(QStringLiteral("SelectedItem.Index"))) - 1);
    } else if (auto* view = qobject_cast<QTreeWidget*>(vControl)) {
        LoadListView(view, vThread, TwipsPerPixel(vControl));
    } else if (auto* swatch = qobject_cast<ColorSwatch*>(vControl)) {
        if (has(kVisible))
            vControl->setVisible(IsTrue(value(kVisible)));
        if (has(QStringLiteral("BackColor")))
            swatch->SetBackColor(Int32(value(QStringLiteral("BackColor"))));
    }
}
