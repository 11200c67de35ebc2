#include "form/model/rowtypes.h"

#include "form/model/info.h"

namespace mod_form_qt {

QMap<int, QString> INFO::defaultWidgetText()
{
    static const QMap<int, QString> texts {
        {E_SHOW_FOLDER, tr("Öffnen...")},
        {E_OK_BUTTON, tr("OK")},
        {E_CANCEL_BUTTON, tr("Abbrechen")},
        {E_HELP_BUTTON, tr("Hilfe")},
        {E_OPENURL_BUTTON, tr("Hilfe")},
        {E_COLOR_BUTTON, tr("Farbe ändern...")},
        {E_FONT_BUTTON, tr("Schrift ändern...")},
        {E_BROWSE_FOLDER, tr("Ändern...")},
        {E_BROWSE_FOLDER_BUTTON, tr("Ändern...")},
        {E_BROWSE_FILE_OPEN, tr("Ändern...")},
        {E_BROWSE_FILE_OPEN_BUTTON, tr("Ändern...")},
        {E_BROWSE_FILE_SAVE, tr("Ändern...")},
        {E_BROWSE_FILE_SAVE_BUTTON, tr("Ändern...")},
        {E_CLOSE_BUTTON, tr("Beenden")},
    };
    return texts;
}

QString INFO::getDefaultWidgetText(int eleType)
{
    return defaultWidgetText().value(eleType);
}

QString INFO::buildAutomatikVarKeyForPtr(const QString& name)
{
    return automatikVarName + name;
}

QString INFO::buildObjectDataKey(const QString& name)
{
    return objectDataVarName + name;
}

void INFO::cleanupPointerEntries(QMap<QString, QVariant>* map)
{
    if (map == nullptr)
        return;
    map->removeIf([](std::pair<const QString&, QVariant&> entry) {
        return entry.first.startsWith(automatikVarName)
            || entry.first.startsWith(objectDataVarName);
    });
}

} // namespace mod_form_qt
