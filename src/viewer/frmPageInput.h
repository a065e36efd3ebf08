#pragma once
// The page jump: the user types a page or drags the slider, sees the page at once through the
// preview call, and confirms or cancels. Nothing here moves the tab's page; the window reads
// Page and Cancel after exec() returns and decides.

#include <QDialog>

#include <functional>

class QLabel;
class QLineEdit;
class QPushButton;
class QSlider;
class UpDownArrows;

class frmPageInput : public QDialog {
    Q_OBJECT
public:
    using PreviewFunction = std::function<void(qint32 vTabNo, const QString& vFileName, qint16 vPage)>;

    static inline const QString Caption = QStringLiteral("ページ指定");
    static inline const QString NotNumericMessage = QStringLiteral("ページは数字で指定してください。");

    frmPageInput(QWidget* vOwner, PreviewFunction vPreview);

    void SetTabNo(qint32 v) { tabNo_ = v; }
    void SetFileName(const QString& v) { fileName_ = v; }
    qint16 Page() const { return page_; }    // the page last confirmed
    void SetPage(qint16 v);                  // also fills the text box and the slider
    qint16 TotalPage() const { return totalPage_; }
    void SetTotalPage(qint16 v);             // below 2 the slider is hidden
    bool Cancel() const { return cancel_; }

    QLineEdit* txtPageJump() const { return txtPageJump_; }
    QSlider* slPageJump() const { return slPageJump_; }
    UpDownArrows* UpDown() const { return upDown_; }
    QLabel* lblPageJump() const { return lblPageJump_; }
    QPushButton* cmdOK() const { return cmdOK_; }
    QPushButton* cmdCancel() const { return cmdCancel_; }
    QPushButton* cmdUpdate() const { return cmdUpdate_; }

    // Escape and the window's close box are a cancel as well.
    void reject() override;

protected:
    void showEvent(QShowEvent* vEvent) override;

private:
    // The typed page when it is a number from 1 to TotalPage; otherwise the user is told why not.
    bool CheckPage(qint16& vPage) const;
    void OnOK();
    void OnUpdate();
    void OnSliderChanged(int vValue);
    void OnUp();
    void OnDown();

    PreviewFunction preview_;
    qint32 tabNo_ = 0;
    QString fileName_;
    qint16 page_ = 0;
    qint16 totalPage_ = 0;
    bool cancel_ = false;
    bool settingSlider_ = false;  // a slider moved by SetPage is no preview request

    QLineEdit* txtPageJump_;
    QSlider* slPageJump_;
    UpDownArrows* upDown_;
    QLabel* lblPageJump_;
    QPushButton* cmdOK_;
    QPushButton* cmdCancel_;
    QPushButton* cmdUpdate_;
};
