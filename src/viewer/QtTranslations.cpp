#include "viewer/QtTranslations.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QTranslator>

bool InstallQtJapanese(QCoreApplication& vApp)
{
    // Japanese whatever the user's locale: the rest of the program knows no other language.
    auto* translator = new QTranslator(&vApp);
    if (!translator->load(QStringLiteral("qtbase_ja"), QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        delete translator;
        return false;
    }
    return QCoreApplication::installTranslator(translator);
}
