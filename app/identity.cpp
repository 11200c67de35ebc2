#include "app/identity.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

void setApplicationIdentity()
{
    QCoreApplication::setOrganizationName(QStringLiteral("halverin Software"));
    QCoreApplication::setApplicationName(QStringLiteral("ledora"));
    QCoreApplication::setApplicationVersion(QStringLiteral("2"));
    QCoreApplication::setOrganizationDomain(QStringLiteral("halverin.example"));
    // What the desktop finds the entry and the icon of the window by.
    QGuiApplication::setDesktopFileName(QStringLiteral("com.example.halverin.ledora"));
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
