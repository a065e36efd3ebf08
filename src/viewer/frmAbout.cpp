#include "viewer/frmAbout.h"

#include "support/CommonLibClass.h"
#include "viewer/ChromeIcons.h"

#include <QCoreApplication>
#include <QFont>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QShowEvent>
#include <QVBoxLayout>
#include <QVersionNumber>

namespace {

const QString kCaptionTail = QStringLiteral("のﾊﾞｰｼﾞｮﾝ情報");
const QString kDescription = QStringLiteral(
    "DocuWorks 文書と TIFF ファイルを、タブで切り替えながらページ単位で閲覧するビューアです。");
const QString kDisclaimer = QStringLiteral(
    "本ソフトウェアは現状のまま提供されます。本ソフトウェアの使用によって生じたいかなる損害に"
    "ついても、作者は一切の責任を負いません。");
// The version the build was made as, for a process that hasn't set its own.
const QString kDefaultVersion = QStringLiteral("0.1.0");

QLabel* MakeLabel(const QString& vName, const QString& vText, QWidget* vParent)
{
    auto* label = new QLabel(vText, vParent);
    label->setObjectName(vName);
    label->setWordWrap(true);
    return label;
}

} // namespace

frmAbout::frmAbout(QWidget* vOwner)
    : QDialog(vOwner),
      lblVersion_(MakeLabel(QStringLiteral("lblVersion"), QStringLiteral("Version ") + VersionText(), this)),
      lblTitle_(MakeLabel(QStringLiteral("lblTitle"), ProductTitle, this)),
      lblDescription_(MakeLabel(QStringLiteral("lblDescription"), kDescription, this)),
      lblDisclaimer_(MakeLabel(QStringLiteral("lblDisclaimer"), kDisclaimer, this)),
      cmdOK_(new QPushButton(QStringLiteral("OK"), this))
{
    setObjectName(QStringLiteral("frmAbout"));
    setWindowTitle(ProductTitle + kCaptionTail);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);

    QFont titleFont = lblTitle_->font();
    titleFont.setPointSizeF(titleFont.pointSizeF() * 1.6);
    titleFont.setBold(true);
    lblTitle_->setFont(titleFont);
    QFont smallPrint = lblDisclaimer_->font();
    smallPrint.setPointSizeF(smallPrint.pointSizeF() * 0.9);
    lblDisclaimer_->setFont(smallPrint);

    auto* picture = new QLabel(this);
    picture->setPixmap(ChromeIcon(QStringLiteral("INFO_16")).pixmap(32, 32));
    picture->setAlignment(Qt::AlignTop);

    auto* texts = new QVBoxLayout;
    texts->addWidget(lblTitle_);
    texts->addWidget(lblVersion_);
    texts->addSpacing(8);
    texts->addWidget(lblDescription_);
    texts->addSpacing(8);
    texts->addWidget(lblDisclaimer_);

    auto* top = new QHBoxLayout;
    top->addWidget(picture, 0, Qt::AlignTop);
    top->addLayout(texts, 1);

    cmdOK_->setObjectName(QStringLiteral("cmdOK"));
    cmdOK_->setDefault(true);
    connect(cmdOK_, &QPushButton::clicked, this, &QDialog::accept);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(cmdOK_);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addStretch(1);
    layout->addLayout(buttons);
    setMinimumWidth(360);
}

QString frmAbout::VersionText()
{
    const QVersionNumber version = QVersionNumber::fromString(QCoreApplication::applicationVersion());
    if (version.isNull())
        return kDefaultVersion;
    return QStringLiteral("%1.%2.%3").arg(version.majorVersion()).arg(version.minorVersion()).arg(version.microVersion());
}

void frmAbout::showEvent(QShowEvent* vEvent)
{
    QDialog::showEvent(vEvent);
    if (!vEvent->spontaneous())
        CommonLibClass::CenteringFormOfOwner(this, parentWidget());
}
