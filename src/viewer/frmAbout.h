#pragma once
// The version box: the product's name, its version and two short notices, centred on the window
// that asked for it.

#include <QDialog>

class QLabel;
class QPushButton;

class frmAbout : public QDialog {
    Q_OBJECT
public:
    static inline const QString ProductTitle = QStringLiteral("Marnoquill");

    explicit frmAbout(QWidget* vOwner = nullptr);

    // "major.minor.revision": the application's version, with the parts it leaves out as 0.
    static QString VersionText();

    QLabel* lblVersion() const { return lblVersion_; }
    QLabel* lblTitle() const { return lblTitle_; }
    QLabel* lblDescription() const { return lblDescription_; }
    QLabel* lblDisclaimer() const { return lblDisclaimer_; }
    QPushButton* cmdOK() const { return cmdOK_; }

protected:
    void showEvent(QShowEvent* vEvent) override;

private:
    QLabel* lblVersion_;
    QLabel* lblTitle_;
    QLabel* lblDescription_;
    QLabel* lblDisclaimer_;
    QPushButton* cmdOK_;
};
