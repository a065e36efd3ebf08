#pragma once
// Small makers for the controls of the options pages, so that every page has the same look:
// a heading, labels aligned at the left of their fields, list views with their columns.

#include <QBoxLayout>
#include <QFont>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>

namespace optionlayout {

template <class T>
T* Named(QWidget* vParent, const char* vName, int vIndex = -1)
{
    auto* w = new T(vParent);
    w->setObjectName(QString::fromUtf8(vName));
    if (vIndex >= 0)
        w->setProperty("Index", vIndex);
    return w;
}

inline QPushButton* Button(QWidget* vParent, const char* vName, const char* vCaption, int vIndex = -1)
{
    auto* b = Named<QPushButton>(vParent, vName, vIndex);
    b->setText(QString::fromUtf8(vCaption));
    b->setAutoDefault(false);
    return b;
}

inline QLabel* Label(QWidget* vParent, const char* vText)
{
    auto* l = new QLabel(QString::fromUtf8(vText), vParent);
    l->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    return l;
}

// A page: its heading in bold over a line, and the layout its fields go in.
inline QVBoxLayout* Page(QWidget* vPage, const char* vCaption)
{
    auto* v = new QVBoxLayout(vPage);
    v->setContentsMargins(6, 0, 0, 0);
    auto* heading = new QLabel(QString::fromUtf8(vCaption), vPage);
    QFont f = heading->font();
    f.setBold(true);
    f.setPointSizeF(f.pointSizeF() * 1.15);
    heading->setFont(f);
    v->addWidget(heading);
    auto* line = new QFrame(vPage);
    line->setFrameShape(QFrame::HLine);
    line->setFrameShadow(QFrame::Sunken);
    v->addWidget(line);
    return v;
}

// A grid whose first column holds the labels.
inline QGridLayout* Fields(QVBoxLayout* vPage)
{
    auto* g = new QGridLayout;
    g->setHorizontalSpacing(10);
    g->setColumnStretch(2, 1);
    vPage->addLayout(g);
    return g;
}

inline QTreeWidget* ListView(QWidget* vParent, const char* vName, const QStringList& vColumns,
                             const QList<int>& vWidths)
{
    auto* v = Named<QTreeWidget>(vParent, vName);
    v->setRootIsDecorated(false);
    v->setUniformRowHeights(true);
    v->setAllColumnsShowFocus(true);
    v->setHeaderLabels(vColumns);
    for (int c = 0; c < vWidths.size(); ++c)
        v->header()->resizeSection(c, vWidths[c]);
    return v;
}

} // namespace optionlayout
