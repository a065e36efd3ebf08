#pragma once
// The picture box that shows a colour and is clicked to change it. Its colour is kept as the
// Windows colour number (red in the low byte), because that is the number the settings file
// stores and the Windows build reads.

#include <QFrame>

class ColorSwatch : public QFrame {
    Q_OBJECT
public:
    explicit ColorSwatch(QWidget* vParent = nullptr);

    qint32 BackColor() const { return backColor_; }
    void SetBackColor(qint32 vColor);

    // Windows colour number <-> QColor.
    static QColor ToColor(qint32 vColor);
    static qint32 FromColor(const QColor& vColor);

Q_SIGNALS:
    void clicked();

protected:
    void mouseReleaseEvent(QMouseEvent* vEvent) override;

private:
    qint32 backColor_ = 0;
};
