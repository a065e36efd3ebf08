// The program's entry: the application object does the whole start-up in its constructor.
#include "document/XdwApi.h"
#include "engine/XdwEngine.h"
#include "viewer/MarnoquillClass.h"

#include <QApplication>

#include <memory>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Marnoquill"));
    QApplication::setOrganizationName(QStringLiteral("Ombrelark"));
    QApplication::setApplicationVersion(QStringLiteral(MARNOQUILL_VERSION));
    // DocuWorks files open through our own engine: no runtime of the vendor exists here.
    SetXdwApiObject(std::make_shared<XdwEngine>());
    MarnoquillClass marnoquill(QApplication::arguments());
    if (!marnoquill.MainForm())
        return 1;
    return QApplication::exec();
}
