#include "viewer/UpDownArrows.h"

#include <QToolButton>
#include <QVBoxLayout>

namespace {

QToolButton* MakeArrow(Qt::ArrowType vArrow, const QString& vName, QWidget* vParent)
{
    auto* button = new QToolButton(vParent);
    button->setObjectName(vName);
    button->setArrowType(vArrow);
    button->setAutoRepeat(true);
    button->setFocusPolicy(Qt::NoFocus);  // the typing stays in the text box beside
    button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
    button->setFixedWidth(16);
    button->setIconSize(QSize(8, 8));
    return button;
}

} // namespace

UpDownArrows::UpDownArrows(QWidget* vParent)
    : QWidget(vParent),
      up_(MakeArrow(Qt::UpArrow, QStringLiteral("Up"), this)),
      down_(MakeArrow(Qt::DownArrow, QStringLiteral("Down"), this))
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(up_);
    layout->addWidget(down_);
    connect(up_, &QToolButton::clicked, this, &UpDownArrows::Up);
    connect(down_, &QToolButton::clicked, this, &UpDownArrows::Down);
}
