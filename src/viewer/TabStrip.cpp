#include "viewer/TabStrip.h"

#include <QMouseEvent>
#include <QResizeEvent>
#include <QStyle>
#include <QTimer>
#include <QTabBar>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>
#include <vector>

namespace {

// Qt lays every tab out again whenever one is added, asking each for its size; measuring a
// caption means shaping its text, which made opening a folder of thousands of files slow
// beyond use. A tab's caption never changes here, so each tab is measured once, and the sizes
// are kept by position, beside the tabs, so that asking again costs an index.
class MeasuredTabBar : public QTabBar {
public:
    using QTabBar::QTabBar;

protected:
    QSize tabSizeHint(int vIndex) const override
    {
        return Measured(sizes_, vIndex, [&] { return QTabBar::tabSizeHint(vIndex); });
    }
    QSize minimumTabSizeHint(int vIndex) const override
    {
        return Measured(minimumSizes_, vIndex, [&] { return QTabBar::minimumTabSizeHint(vIndex); });
    }
    void tabInserted(int vIndex) override
    {
        sizes_.insert(sizes_.begin() + vIndex, QSize());
        minimumSizes_.insert(minimumSizes_.begin() + vIndex, QSize());
        QTabBar::tabInserted(vIndex);
    }
    void tabRemoved(int vIndex) override
    {
        sizes_.erase(sizes_.begin() + vIndex);
        minimumSizes_.erase(minimumSizes_.begin() + vIndex);
        QTabBar::tabRemoved(vIndex);
    }
    void changeEvent(QEvent* vEvent) override
    {
        if (vEvent->type() == QEvent::FontChange || vEvent->type() == QEvent::StyleChange) {
            std::fill(sizes_.begin(), sizes_.end(), QSize());
            std::fill(minimumSizes_.begin(), minimumSizes_.end(), QSize());
        }
        QTabBar::changeEvent(vEvent);
    }

private:
    template <typename Measure>
    static QSize Measured(std::vector<QSize>& vSizes, int vIndex, Measure vMeasure)
    {
        // Qt asks during an insertion before telling us of it; such a tab is measured afresh.
        if (vIndex < 0 || static_cast<size_t>(vIndex) >= vSizes.size())
            return vMeasure();
        QSize& size = vSizes[static_cast<size_t>(vIndex)];
        if (!size.isValid())
            size = vMeasure();
        return size;
    }

    mutable std::vector<QSize> sizes_;
    mutable std::vector<QSize> minimumSizes_;
};

} // namespace

TabStrip::TabStrip(QWidget* vParent)
    : QWidget(vParent), bar_(new MeasuredTabBar(this)), client_(new QWidget(this)), closeButton_(new QToolButton(this))
{
    bar_->setObjectName(QStringLiteral("tabBar"));
    // One close button, on the chosen tab: a button on every tab is a widget per tab that Qt
    // places again for all of them on each addition, which a folder of thousands can't afford.
    closeButton_->setObjectName(QStringLiteral("closeButton"));
    closeButton_->setAutoRaise(true);
    closeButton_->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
    closeButton_->setIconSize(QSize(12, 12));
    closeButton_->setFixedSize(16, 16);
    closeButton_->setToolTip(QStringLiteral("閉じる"));
    closeButton_->hide();
    connect(closeButton_, &QToolButton::clicked, this, [this] {
        if (bar_->currentIndex() >= 0)
            Q_EMIT bar_->tabCloseRequested(bar_->currentIndex());
    });
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
        PlaceCloseButton();
        if (!quiet_)
            Q_EMIT SelectionChanged();
    });
    connect(bar_, &QTabBar::tabCloseRequested, this, [this](int vIndex) {
        const QString key = KeyAt(vIndex);
        RemoveTab(key);
        Q_EMIT CloseRequested(key);
    });
}

void TabStrip::BeginBulkAdd() { bulk_ = true; }

void TabStrip::EndBulkAdd()
{
    bulk_ = false;
    RevealBar();
}

// The bar is hidden in place: its room stays, so the pages below don't move while it is away.
void TabStrip::RevealBar()
{
    revealDue_ = false;
    if (bar_->isVisible() || isHidden())
        return;
    bar_->show();
    layout()->setContentsMargins(0, 0, 0, 0);
    layout()->activate();
    PlaceCloseButton();
}

void TabStrip::AddTab(const QString& vKey, const QString& vCaption, const QIcon& vIcon)
{
    if (bulk_ && bar_->isVisible()) {
        layout()->setContentsMargins(0, bar_->height(), 0, 0);
        bar_->hide();
    }
    if (bulk_ && !revealDue_) {
        revealDue_ = true;
        QTimer::singleShot(250, this, [this] {
            if (revealDue_)
                RevealBar();
        });
    }
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
    // The strip deletes the widgets of a tab it removes; the close button moves on instead.
    if (index == buttonIndex_)
        DetachCloseButton();
    bar_->removeTab(index);
    quiet_ = false;
    PlaceCloseButton();
}

void TabStrip::DetachCloseButton()
{
    if (buttonIndex_ >= 0 && buttonIndex_ < bar_->count() && bar_->tabButton(buttonIndex_, QTabBar::RightSide) == closeButton_)
        bar_->setTabButton(buttonIndex_, QTabBar::RightSide, nullptr);
    closeButton_->setParent(this);
    closeButton_->hide();
    buttonIndex_ = -1;
}

void TabStrip::PlaceCloseButton()
{
    const int current = bar_->currentIndex();
    if (current == buttonIndex_ && (current < 0 || bar_->tabButton(current, QTabBar::RightSide) == closeButton_))
        return;
    DetachCloseButton();
    if (current < 0)
        return;
    bar_->setTabButton(current, QTabBar::RightSide, closeButton_);
    closeButton_->show();
    buttonIndex_ = current;
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
