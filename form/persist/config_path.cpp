#include "form/model/info_option.h"
#include "form/widgets/path_chars.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QStandardPaths>

namespace mod_form_qt {

namespace {

QString withoutTrailingSeparator(QString path)
{
    if (path.endsWith(u'/') || path.endsWith(u'\\'))
        path.chop(1);
    return path;
}

/// \param folder  ends in "/"
bool isWritable(const QString& folder)
{
    QFile probe(folder + QStringLiteral("mod_search.test"));
    if (!probe.open(QIODevice::ReadWrite | QIODevice::Truncate))
        return false;
    probe.remove();
    return true;
}

} // namespace

QString INFO::Option::getConfigPath(bool useConfigDir)
{
    if (!useConfigDir) {
        QString program = QCoreApplication::applicationDirPath();
        if (program.isEmpty())
            program = QDir::currentPath();
        program = withoutTrailingSeparator(program) + u'/';
        if (isWritable(program))
            return program;
    }

    QString config = withoutTrailingSeparator(
        QStandardPaths::standardLocations(QStandardPaths::ConfigLocation).value(0));
    removeInvalidPathChars(config, false);
    config += u'/';
    if (!QDir(config).exists())
        QDir().mkpath(config);
    return config;
}

} // namespace mod_form_qt
