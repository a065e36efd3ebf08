// The program's entry: the application object does the whole start-up in its constructor.
#include "document/XdwApi.h"
#include "engine/XdwEngine.h"
#include "viewer/ChromeIcons.h"
#include "viewer/MarnoquillClass.h"
#include "viewer/QtTranslations.h"

#include <QApplication>

#include <memory>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    QApplication::setWindowIcon(ApplicationIcon());
    InstallQtJapanese(app);
    QApplication::setApplicationName(QStringLiteral("Marnoquill"));
    QApplication::setOrganizationName(QStringLiteral("Ombrelark"));
    QApplication::setApplicationVersion(QStringLiteral(MARNOQUILL_VERSION));
    // DocuWorks files open through our own engine: no runtime of the vendor exists here.
    SetXdwApiObject(std::make_shared<XdwEngine>());
    return MarnoquillClass::Serve(QApplication::arguments());
}
