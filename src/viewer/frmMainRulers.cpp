// frmMain: rulers laid over the pages as reading aids. One page has the rulers of "Main"; a
// spread gets each new ruler on both halves, which then move apart independently.
#include "viewer/frmMain.h"

#include "viewer/AppRulerCtrlClass.h"
#include "viewer/TabStrip.h"

void frmMain::AddRuler(qint16 vType)
{
    if (!rulers_ || tabMain_->Count() < 1)
        return;
    if (windowState_->DataValue(QStringLiteral("DOUBLE_DISP")) == QLatin1String("1")) {
        rulers_->SetRulerControl(QStringLiteral("leadRuler"));
        rulers_->AddRuler(LEAD(4), QStringLiteral("Main"), vType);
    } else {
        rulers_->SetRulerControl(QStringLiteral("leadRulerL"));
        rulers_->AddRuler(LEAD(2), QStringLiteral("Left"), vType);
        rulers_->SetRulerControl(QStringLiteral("leadRulerR"));
        rulers_->AddRuler(LEAD(3), QStringLiteral("Right"), vType);
    }
}

void frmMain::DeleteAllRuler()
{
    if (rulers_ && tabMain_->Count() >= 1)
        rulers_->AllDeleteRuler();
}
