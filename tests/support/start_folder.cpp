#include "tests/support/start_folder.h"

#include "form/mod_form_qt.h"

#include <QFile>

StartFolder::StartFolder() = default;

QString StartFolder::path(const QString& name) const
{
    return m_dir.filePath(name);
}

QString StartFolder::hostFile() const
{
    return path(QStringLiteral("host.txt"));
}

QString StartFolder::iniFile() const
{
    return path(QStringLiteral("options.ini"));
}

QString StartFolder::exportFile() const
{
    return path(QStringLiteral("output.csv"));
}

QString StartFolder::pdfFolder() const
{
    return path(QStringLiteral("pdf"));
}

QStringList StartFolder::hostLines() const
{
    return {iniFile(),
            QStringLiteral("3"),
            QStringLiteral("1362;1462;707"),
            QStringLiteral("1220;1820;955"),
            QStringLiteral("1361;1461;706"),
            exportFile(),
            QStringLiteral("0"),
            QStringLiteral("-"),
            pdfFolder()};
}

void StartFolder::writeHostFile(const QStringList& lines) const
{
    QFile file(hostFile());
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        qFatal("The host's file can't be written.");
    file.write(lines.join(QLatin1Char('\n')).toUtf8() + '\n');
}

void StartFolder::writeHostFile() const
{
    writeHostFile(hostLines());
}

void StartFolder::saveOptions(const QMap<QString, QVariant>& options) const
{
    mod_form_qt::INFO::saveMapToIniFile(&options, iniFile(), QStringLiteral("options"), false,
                                        nullptr, QString());
}

QMap<QString, QVariant> StartFolder::savedOptions() const
{
    QMap<QString, QVariant> options;
    mod_form_qt::INFO::loadMapFromIniFile(&options, iniFile(), QStringLiteral("options"), false,
                                          QString());
    return options;
}

QByteArray StartFolder::exported() const
{
    QFile file(exportFile());
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray bytes = file.readAll();
    return bytes.isNull() ? QByteArray("") : bytes;
}

QList<QByteArray> StartFolder::exportedLines() const
{
    QList<QByteArray> lines = exported().split('\n');
    if (!lines.isEmpty() && lines.last().isEmpty())
        lines.removeLast();
    return lines;
}
