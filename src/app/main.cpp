// The program's entry: the application object does the whole start-up in its constructor.
#include "viewer/ChromeIcons.h"
#include "viewer/MarnoquillClass.h"
#include "viewer/QtTranslations.h"

#include <QApplication>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    QApplication::setWindowIcon(ApplicationIcon());
    InstallQtJapanese(app);
    QApplication::setApplicationName(QStringLiteral("Marnoquill"));
    QApplication::setOrganizationName(QStringLiteral("Ombrelark"));
    QApplication::setApplicationVersion(QStringLiteral(MARNOQUILL_VERSION));
    return MarnoquillClass::Serve(QApplication::arguments());
}
