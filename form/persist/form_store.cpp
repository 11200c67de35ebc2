#include "form/events/form_guard.h"
#include "form/model/info_option.h"
#include "form/widgets/message_box.h"

#include <QFileInfo>

namespace mod_form_qt {

namespace {

/// Where a form keeps its values.
struct FormFile
{
    explicit FormFile(const INFO::Option& option)
        : fileName(option.iniFileName())
        , group(option.iniGroupName())
        , sumMapName(option.iniSumMapName().trimmed())
        , separateKeys(option.iniSeparateKeys())
        , multiConf(option.iniUseMultiConf() && !separateKeys)
    {
    }

    bool isSet() const { return !fileName.isEmpty() && !group.isEmpty(); }

    QString fileName;
    QString group;
    QString sumMapName;
    bool separateKeys;
    bool multiConf; // several named configurations
};

/// Settles which configuration is the current one, and remembers one that is new.
void takeCurrentName(FormFile& file)
{
    QList<QString> names;
    QString lastName;
    INFO::loadIniOptionNames(file.fileName, file.group, false, names, lastName, true);
    if (!lastName.isEmpty())
        file.sumMapName = lastName;
    if (!names.contains(file.sumMapName))
        INFO::setDefaultIniMultiOptionName(file.fileName, file.sumMapName);
}

bool wantsToSave(QWidget* parent, const INFO::Option& option)
{
    if (option.value(INFO::Option::iniAutoSaveKey, true).toBool())
        return true;
    return askUser(QMessageBox::Question, parent, INFO::tr("Einstellungen speichern:"),
                   INFO::tr("Sollen evtl. Änderungen zuvor gesichert werden?"),
                   QMessageBox::Yes | QMessageBox::No)
        == QMessageBox::Yes;
}

} // namespace

void INFO::initWidget(QPointer<QWidget> widget, const INFO& mainRow, QMap<QString, QVariant>* map,
                      bool applyTitle)
{
    const Option option = Option::ofParam(mainRow.param);
    if (applyTitle && widget) {
        if (!option.title().isEmpty())
            widget->setWindowTitle(option.title());
        setProps(widget, mainRow.eleType, option);
    }
    FormFile file(option);
    if (map == nullptr || !file.isSet() || !QFileInfo::exists(file.fileName))
        return;
    if (file.multiConf)
        takeCurrentName(file);
    // The stored map replaces the one that is here, and holds none of the engine's entries.
    const QMap<QString, QVariant> before = *map;
    loadMapFromIniFile(map, file.fileName, file.group, file.separateKeys, file.sumMapName);
    for (auto entry = before.cbegin(); entry != before.cend(); ++entry) {
        if (isTempKeyName(entry.key()))
            map->insert(entry.key(), entry.value());
    }
}

void INFO::closeWidget(QWidget* widget, const INFO& mainRow, QMap<QString, QVariant>* map,
                       const std::pair<bool, QSet<QString>>& saveKeys, bool save)
{
    if (map == nullptr)
        return;
    WIDGET_INFO::clean(map);
    if (!save)
        return;
    const Option option = Option::ofParam(mainRow.param);
    FormFile file(option);
    if (!file.isSet())
        return;
    if (file.multiConf) {
        const QString lastName = getDefaultIniMultiOptionName(file.fileName);
        if (!lastName.isEmpty())
            file.sumMapName = lastName;
    }
    // The form and its map may go while the question is open.
    const FormGuard form(widget);
    if (!wantsToSave(widget, option) || !form.stands())
        return;
    saveMapToIniFile(map, file.fileName, file.group, file.separateKeys,
                     saveKeys.first ? &saveKeys.second : nullptr, file.sumMapName);
}

} // namespace mod_form_qt
