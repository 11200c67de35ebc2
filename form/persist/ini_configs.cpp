#include "form/model/info.h"
#include "form/persist/ini_check.h"

#include <QSettings>

namespace mod_form_qt {

bool INFO::loadIniOptionNames(const QString& fileName, const QString& group, bool,
                              QList<QString>& names, QString& lastName, bool verifyLastName)
{
    names.clear();
    if (canOpenIni(fileName)) {
        QSettings settings(fileName, QSettings::IniFormat);
        settings.beginGroup(group);
        names = settings.childKeys();
    }
    lastName = getDefaultIniMultiOptionName(fileName);
    if (verifyLastName && !names.contains(lastName))
        lastName.clear();
    return true;
}

QString INFO::getDefaultIniMultiOptionName(const QString& fileName)
{
    if (!canOpenIni(fileName))
        return {};
    QSettings settings(fileName, QSettings::IniFormat);
    settings.beginGroup(iniMultiConfGroupNameKey);
    return settings.value(iniMultiConfLastNameKey).toString();
}

void INFO::setDefaultIniMultiOptionName(const QString& fileName, const QString& name)
{
    if (!canOpenIni(fileName))
        return;
    QSettings settings(fileName, QSettings::IniFormat);
    settings.beginGroup(iniMultiConfGroupNameKey);
    settings.setValue(iniMultiConfLastNameKey, name);
}

} // namespace mod_form_qt
