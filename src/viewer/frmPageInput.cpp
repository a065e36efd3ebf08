#include "viewer/frmPageInput.h"

#include "support/CommonLibClass.h"
#include "viewer/NumericText.h"
#include "viewer/UpDownArrows.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QShowEvent>
#include <QSlider>
#include <QVBoxLayout>

namespace {

// Pages are 16-bit numbers: a typed number beyond them can't be stepped, and an arrow leaves it.

QPushButton* MakeButton(const QString& vName, const QString& vText, QWidget* vParent)
{
    auto* button = new QPushButton(vText, vParent);
    button->setObjectName(vName);
    button->setAutoDefault(false);
    return button;
}

} // namespace

frmPageInput::frmPageInput(QWidget* vOwner, PreviewFunction vPreview)
    : QDialog(vOwner),
      preview_(std::move(vPreview)),
      txtPageJump_(new QLineEdit(this)),
      slPageJump_(new QSlider(Qt::Horizontal, this)),
      upDown_(new UpDownArrows(this)),
      lblPageJump_(new QLabel(this)),
      cmdOK_(MakeButton(QStringLiteral("cmdOK"), QStringLiteral("OK"), this)),
      cmdCancel_(MakeButton(QStringLiteral("cmdCancel"), QStringLiteral("キャンセル"), this)),
      cmdUpdate_(MakeButton(QStringLiteral("cmdUpdate"), QStringLiteral("表示更新"), this))
{
    setObjectName(QStringLiteral("frmPageInput"));
    setWindowTitle(Caption);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);

    txtPageJump_->setObjectName(QStringLiteral("txtPageJump"));
    txtPageJump_->setAlignment(Qt::AlignRight);
    txtPageJump_->setFixedWidth(txtPageJump_->fontMetrics().horizontalAdvance(QStringLiteral("000000")) + 12);
    slPageJump_->setObjectName(QStringLiteral("slPageJump"));
    slPageJump_->setMinimumWidth(240);
    upDown_->setObjectName(QStringLiteral("UpDown"));
    upDown_->setFixedHeight(txtPageJump_->sizeHint().height());
    lblPageJump_->setObjectName(QStringLiteral("lblPageJump"));
    cmdOK_->setDefault(true);  // Enter in the text box confirms

    auto* pageRow = new QHBoxLayout;
    pageRow->setSpacing(2);
    pageRow->addWidget(txtPageJump_);
    pageRow->addWidget(upDown_);
    pageRow->addSpacing(6);
    pageRow->addWidget(lblPageJump_);
    pageRow->addStretch(1);

    auto* buttonRow = new QHBoxLayout;
    buttonRow->addWidget(cmdUpdate_);
    buttonRow->addStretch(1);
    buttonRow->addWidget(cmdOK_);
    buttonRow->addWidget(cmdCancel_);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(pageRow);
    layout->addWidget(slPageJump_);
    layout->addStretch(1);
    layout->addLayout(buttonRow);
    setMinimumWidth(300);

    connect(cmdOK_, &QPushButton::clicked, this, &frmPageInput::OnOK);
    connect(cmdCancel_, &QPushButton::clicked, this, &frmPageInput::reject);
    connect(cmdUpdate_, &QPushButton::clicked, this, &frmPageInput::OnUpdate);
    // Every value the slider passes is drawn, whether it is dragged, clicked or keyed.
    connect(slPageJump_, &QSlider::valueChanged, this, &frmPageInput::OnSliderChanged);
    connect(upDown_, &UpDownArrows::Up, this, &frmPageInput::OnUp);
    connect(upDown_, &UpDownArrows::Down, this, &frmPageInput::OnDown);
}

void frmPageInput::SetPage(qint16 v)
{
    page_ = v;
    txtPageJump_->setText(QString::number(v));
    settingSlider_ = true;
    slPageJump_->setValue(v);
    settingSlider_ = false;
}

void frmPageInput::SetTotalPage(qint16 v)
{
    totalPage_ = v;
    lblPageJump_->setText(QLatin1Char('/') + QString::number(v));
    if (v < 2) {
        slPageJump_->setVisible(false);
        return;
    }
    settingSlider_ = true;
    slPageJump_->setRange(1, v);
    settingSlider_ = false;
    slPageJump_->setVisible(true);
}

bool frmPageInput::CheckPage(qint16& vPage) const
{
    const std::optional<double> number = WholeNumberOfText(txtPageJump_->text());
    if (!number) {
        CommonLibClass::ErrMsgBox(NotNumericMessage);
        return false;
    }
    if (*number > totalPage_ || *number < 1) {
        CommonLibClass::ErrMsgBox(QStringLiteral("ページは1～") + QString::number(totalPage_) +
                                  QStringLiteral("の範囲で指定してください。"));
        return false;
    }
    vPage = static_cast<qint16>(*number);
    return true;
}

void frmPageInput::OnOK()
{
    qint16 page = 0;
    if (!CheckPage(page))
        return;
    page_ = page;
    cancel_ = false;
    accept();
}

void frmPageInput::reject()
{
    cancel_ = true;
    QDialog::reject();
}

void frmPageInput::OnUpdate()
{
    qint16 page = 0;
    if (CheckPage(page) && preview_)
        preview_(tabNo_, fileName_, page);
}

void frmPageInput::OnSliderChanged(int vValue)
{
    if (settingSlider_)
        return;
    txtPageJump_->setText(QString::number(vValue));
    if (preview_)
        preview_(tabNo_, fileName_, static_cast<qint16>(vValue));
}

void frmPageInput::OnUp()
{
    txtPageJump_->setText(StepNumberText(txtPageJump_->text(), 1, 1, totalPage_));
}

void frmPageInput::OnDown()
{
    txtPageJump_->setText(StepNumberText(txtPageJump_->text(), -1, 1, totalPage_));
}

void frmPageInput::showEvent(QShowEvent* vEvent)
{
    QDialog::showEvent(vEvent);
    if (vEvent->spontaneous())
        return;
    // A new showing starts undecided, over the window that asked.
    cancel_ = false;
    CommonLibClass::CenteringFormOfOwner(this, parentWidget());
    txtPageJump_->setFocus();
    txtPageJump_->selectAll();
}
