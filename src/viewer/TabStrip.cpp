#include "viewer/TabStrip.h"

#include <QMouseEvent>
#include <QResizeEvent>
#include <QTabBar>
#include <QVBoxLayout>

TabStrip::TabStrip(QWidget* vParent) : QWidget(vParent), bar_(new QTabBar(this)), client_(new QWidget(this))
{
    bar_->setObjectName(QStringLiteral("tabBar"));
    bar_->setTabsClosable(true);
    bar_->setMovable(false);  // tabs keep the order in which they were added
    bar_->setExpanding(false);
    bar_->setUsesScrollButtons(true);
    bar_->setElideMode(Qt::ElideMiddle);
    client_->setObjectName(QStringLiteral("tabClient"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(bar_);
    layout->addWidget(client_, 1);
    bar_->installEventFilter(this);
    client_->installEventFilter(this);

    connect(bar_, &QTabBar::currentChanged, this, [this](int) {
        if (!quiet_)
            Q_EMIT SelectionChanged();
    });
    connect(bar_, &QTabBar::tabCloseRequested, this, [this](int vIndex) {
        const QString key = KeyAt(vIndex);
        RemoveTab(key);
        Q_EMIT CloseRequested(key);
    });
}

void TabStrip::AddTab(const QString& vKey, const QString& vCaption, const QIcon& vIcon)
{
    quiet_ = true;
    const int index = bar_->addTab(vIcon, vCaption);
    bar_->setTabData(index, vKey);
    bar_->setTabToolTip(index, vCaption);
    quiet_ = false;
}

// Quietly: the window runs its own selection handling after a removal, once, rather than once
// for every tab that passes under the selection while several close.
void TabStrip::RemoveTab(const QString& vKey)
{
    const int index = IndexOfKey(vKey);
    if (index < 0)
        return;
    quiet_ = true;
    bar_->removeTab(index);
    quiet_ = false;
}

int TabStrip::Count() const { return bar_->count(); }

QString TabStrip::KeyAt(int vIndex) const { return bar_->tabData(vIndex).toString(); }

int TabStrip::IndexOfKey(const QString& vKey) const
{
    for (int i = 0; i < bar_->count(); ++i)
        if (KeyAt(i) == vKey)
            return i;
    return -1;
}

QString TabStrip::SelectedKey() const { return bar_->currentIndex() < 0 ? QString() : KeyAt(bar_->currentIndex()); }

int TabStrip::SelectedIndex() const { return bar_->currentIndex(); }

void TabStrip::SetSelectedKey(const QString& vKey)
{
    const int index = IndexOfKey(vKey);
    if (index < 0 || index == bar_->currentIndex())
        return;
    quiet_ = true;
    bar_->setCurrentIndex(index);
    quiet_ = false;
}

QString TabStrip::CaptionOfKey(const QString& vKey) const
{
    const int index = IndexOfKey(vKey);
    return index < 0 ? QString() : bar_->tabText(index);
}

void TabStrip::SetPanel(QWidget* vPanel)
{
    panel_ = vPanel;
    if (!panel_)
        return;
    if (panel_->parentWidget() != client_)
        panel_->setParent(client_);
    panel_->setGeometry(client_->rect());
}

bool TabStrip::eventFilter(QObject* vWatched, QEvent* vEvent)
{
    if (vWatched == client_ && vEvent->type() == QEvent::Resize && panel_)
        panel_->setGeometry(client_->rect());
    if (vWatched == bar_ && vEvent->type() == QEvent::MouseButtonPress) {
        auto* e = static_cast<QMouseEvent*>(vEvent);
        const int index = bar_->tabAt(e->position().toPoint());
        const int button = e->button() == Qt::LeftButton ? 1 : e->button() == Qt::RightButton ? 2 : 0;
        // A left click on another tab changes the selection, which draws it; only a click on the
        // chosen tab itself needs reporting, as a request to draw it again.
        if (button == 1 && index != bar_->currentIndex())
            return QWidget::eventFilter(vWatched, vEvent);
        if (index >= 0 && button != 0) {
            if (button == 2) {
                // A right click chooses the tab as well, as the left one does.
                quiet_ = true;
                bar_->setCurrentIndex(index);
                quiet_ = false;
            }
            const QString key = KeyAt(index);
            const QPoint at = bar_->mapTo(this, e->position().toPoint());
            QMetaObject::invokeMethod(this, [this, key, button, at] { Q_EMIT TabClicked(key, button, at); },
                                      Qt::QueuedConnection);
        }
    }
    return QWidget::eventFilter(vWatched, vEvent);
}
