// The program's entry: bring up the application. The main window arrives with the viewer.
#include <QApplication>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Marnoquill"));
    QApplication::setOrganizationName(QStringLiteral("Ombrelark"));
    return 0;
}
