#include "app/identity.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

void setApplicationIdentity()
{
    QCoreApplication::setOrganizationName(QStringLiteral("halverin Software"));
    QCoreApplication::setApplicationName(QStringLiteral("ledora"));
    QCoreApplication::setApplicationVersion(QStringLiteral("2"));
    QCoreApplication::setOrganizationDomain(QStringLiteral("halverin.example"));
}

void installQtTranslation()
{
    auto* translator = new QTranslator(QCoreApplication::instance());
    if (translator->load(QLocale(), QStringLiteral("qtbase"), QStringLiteral("_"),
                         QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(translator);
    else
        delete translator;
}
