#pragma once
// Two small arrows stacked beside a text box, as a spin box has them. The text boxes they serve
// take any text a user types, and each arrow decides for itself what it does with it, so they
// are plain buttons that only say which one was pressed. Holding one down repeats it.

#include <QWidget>

class QToolButton;

class UpDownArrows : public QWidget {
    Q_OBJECT
public:
    explicit UpDownArrows(QWidget* vParent = nullptr);

    QToolButton* UpButton() const { return up_; }
    QToolButton* DownButton() const { return down_; }

Q_SIGNALS:
    void Up();
    void Down();

private:
    QToolButton* up_;
    QToolButton* down_;
};
