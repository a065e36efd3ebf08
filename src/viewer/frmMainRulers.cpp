// frmMain: rulers laid over the pages as reading aids.
#include "viewer/frmMain.h"

void frmMain::AddRuler(qint16 vType)
{
    Q_UNUSED(vType);
}

void frmMain::DeleteAllRuler() {}
