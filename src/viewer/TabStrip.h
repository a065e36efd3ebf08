#pragma once
// The tab strip over the page area: a keyed list of tabs ("T" and the tab number) with icons and
// a close button on the chosen tab, and below it the client area that holds the selected tab's
// panel. There is one set of page panes for all tabs, so the panel is not per tab: the window
// puts whichever pane the layout needs into the client area.

#include <QIcon>
#include <QWidget>

class QTabBar;
class QToolButton;

class TabStrip : public QWidget {
    Q_OBJECT
public:
    explicit TabStrip(QWidget* vParent = nullptr);

    void AddTab(const QString& vKey, const QString& vCaption, const QIcon& vIcon);
    void RemoveTab(const QString& vKey);
    int Count() const;
    QString KeyAt(int vIndex) const;  // 0-based
    int IndexOfKey(const QString& vKey) const;
    QString SelectedKey() const;
    int SelectedIndex() const;
    void SetSelectedKey(const QString& vKey);
    QString CaptionOfKey(const QString& vKey) const;

    // Many tabs added in a row (a folder of thousands). Qt lays every tab out again at each
    // addition while the bar is shown, which makes such a read grow with the square of the tabs;
    // meanwhile the bar is laid out only a few times a second, when the event loop gets a turn.
    void BeginBulkAdd();
    void EndBulkAdd();

    // The client area: the panel is resized with it, and only one panel is shown at a time.
    QWidget* ClientArea() const { return client_; }
    void SetPanel(QWidget* vPanel);
    QWidget* Panel() const { return panel_; }
    QTabBar* Bar() const { return bar_; }

Q_SIGNALS:
    // A click on a tab: its key, the button (1 left, 2 right) and the position in the strip.
    void TabClicked(const QString& vKey, int vButton, const QPoint& vPosition);
    void SelectionChanged();
    // The tab's own close button; the tab is already gone, quietly, when this is delivered.
    void CloseRequested(const QString& vKey);

protected:
    bool eventFilter(QObject* vWatched, QEvent* vEvent) override;

private:
    void PlaceCloseButton();
    void DetachCloseButton();
    void RevealBar();

    QTabBar* bar_;
    QWidget* client_;
    QToolButton* closeButton_;
    int buttonIndex_ = -1;  // the tab that carries the close button
    QWidget* panel_ = nullptr;
    bool quiet_ = false;  // no selection signal while tabs are added or removed by code
    bool bulk_ = false;
    bool revealDue_ = false;
};
