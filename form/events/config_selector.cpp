#include "form/events/config_selector.h"

#include "form/events/change_flow.h"
#include "form/persist/ini_check.h"
#include "form/widgets/message_box.h"

#include <QInputDialog>
#include <QSettings>
#include <QSignalBlocker>

#include <algorithm>

namespace mod_form_qt {

namespace {

/// A name as it stands in the file: letters and digits, in lower case.
QString cleanedName(const QString& typed)
{
    QString name;
    for (const QChar character : typed) {
        if (character.isLetterOrNumber())
            name += character.toLower();
    }
    return name;
}

/// The configurations of one form. It goes with the list box.
class ConfigSelector : public QObject
{
public:
    ConfigSelector(const std::shared_ptr<FormContext>& form, const INFO::Option& option,
                   QComboBox* list)
        : QObject(list)
        , m_form(form)
        , m_list(list)
        , m_fileName(option.iniFileName())
        , m_group(option.iniGroupName())
        , m_firstName(option.iniSumMapName())
        , m_autoSave(option.value(INFO::Option::iniAutoSaveKey, true).toBool())
    {
    }

    /// \return  false for a form that neither loads nor saves
    bool isStored() const { return !m_fileName.isEmpty() && !m_group.isEmpty(); }

    void fill();
    void switchToSelected();
    void add();
    void remove();

private:
    bool live() const { return m_form->live(); }

    void loadNames(QStringList& names, QString& last) const;

    QString current() const { return m_list->currentData().toString(); }

    void save(const QString& name) const;
    bool wantsToSave(const QString& name) const;

    std::shared_ptr<FormContext> m_form;
    QComboBox* m_list;
    QString m_fileName;
    QString m_group;
    QString m_firstName;
    bool m_autoSave;
};

/// The names in the file, and the one last in use if it is among them.
void ConfigSelector::loadNames(QStringList& names, QString& last) const
{
    INFO::loadIniOptionNames(m_fileName, m_group, false, names, last, false);
    if (m_firstName.contains(QLatin1Char('/')) && canOpenIni(m_fileName)) {
        // It stands deeper in the file, where the others are not looked for.
        QSettings settings(m_fileName, QSettings::IniFormat);
        settings.beginGroup(m_group);
        if (settings.contains(m_firstName))
            names.append(m_firstName);
    }
    if (!names.contains(last))
        last.clear();
}

void ConfigSelector::fill()
{
    QStringList names;
    QString last;
    if (isStored())
        loadNames(names, last);
    if (last.isEmpty()) {
        last = m_firstName;
        if (!names.contains(last))
            names.append(last);
    }
    const QSignalBlocker silent(m_list);
    for (const QString& name : std::as_const(names))
        m_list->addItem(name, name);
    m_list->setCurrentIndex(m_list->findData(last));
}

void ConfigSelector::save(const QString& name) const
{
    INFO::saveMapToIniFile(m_form->map, m_fileName, m_group, false,
                           m_form->saveKeys.first ? &m_form->saveKeys.second : nullptr, name);
}

bool ConfigSelector::wantsToSave(const QString& name) const
{
    if (m_autoSave)
        return true;
    return askUser(
               QMessageBox::Question, m_list->window(), INFO::tr("Einstellung speichern:"),
               INFO::tr("Sollen evtl. Änderungen an der Einstellung '%1' zuvor gesichert werden?")
                   .arg(name),
               QMessageBox::Yes | QMessageBox::No)
        == QMessageBox::Yes;
}

void ConfigSelector::switchToSelected()
{
    const QString chosen = current();
    const QPointer<ConfigSelector> guard(this);
    if (live())
        endEditing(m_form->mainWidget); // it belongs to the configuration that is being left
    if (!guard)
        return;
    QMap<QString, QVariant> loaded;
    if (!live() || !INFO::loadMapFromIniFile(&loaded, m_fileName, m_group, false, chosen))
        return;
    QStringList names;
    QString last;
    loadNames(names, last);
    if (!last.isEmpty()) {
        // The map still holds the values of the configuration that is being left.
        const bool wanted = !names.contains(chosen) || wantsToSave(last);
        if (!guard || !live())
            return; // the form has gone behind the question
        if (wanted)
            save(last);
    }
    INFO::setDefaultIniMultiOptionName(m_fileName, chosen);
    INFO::setData(m_form->map, loaded, false);
}

void ConfigSelector::add()
{
    if (!live())
        return;
    const QPointer<ConfigSelector> guard(this);
    endEditing(m_form->mainWidget);
    if (!guard || !live())
        return;
    if (const QString name = current(); !name.isEmpty()) {
        const bool wanted = wantsToSave(name);
        if (!guard || !live())
            return;
        if (wanted)
            save(name);
    }
    const QString name = cleanedName(QInputDialog::getText(
        m_list->window(), INFO::tr("Neue Einstellung:"), INFO::tr("Name der Einstellung:")));
    if (!guard || !live() || name.isEmpty() || m_list->findData(name) >= 0)
        return;
    const QSignalBlocker silent(m_list);
    m_list->addItem(name, name);
    m_list->setCurrentIndex(m_list->count() - 1);
    INFO::setDefaultIniMultiOptionName(m_fileName, name);
    save(name);
}

void ConfigSelector::remove()
{
    const QString name = current();
    const int index = m_list->currentIndex();
    if (!live() || name.isEmpty() || index < 0)
        return;
    if (m_list->count() <= 1) {
        askUser(QMessageBox::Information, m_list->window(), INFO::tr("Eintrag löschen:"),
                INFO::tr("Es muss ein Eintrag in der Liste existieren."), QMessageBox::Ok);
        return;
    }
    const QPointer<ConfigSelector> guard(this);
    const auto answer =
        askUser(QMessageBox::Question, m_list->window(), INFO::tr("Daten speichern:"),
                INFO::tr("Soll die Einstellung '%1' wirklich gelöscht werden?").arg(name),
                QMessageBox::Yes | QMessageBox::No);
    if (answer != QMessageBox::Yes || !guard || !live())
        return;
    if (canOpenIni(m_fileName)) {
        QSettings settings(m_fileName, QSettings::IniFormat);
        settings.beginGroup(m_group);
        settings.remove(name);
        settings.endGroup();
    }
    const int next = std::max(0, index - 1);
    {
        const QSignalBlocker silent(m_list);
        m_list->removeItem(index);
        m_list->setCurrentIndex(next);
    }
    // By hand, since the index may be the same as before, with another name behind it.
    emit m_list->currentIndexChanged(next);
}

} // namespace

void setUpConfigSelector(const std::shared_ptr<FormContext>& form, const INFO::Option& option,
                         QComboBox* list, QPushButton* add, QPushButton* remove)
{
    auto* selector = new ConfigSelector(form, option, list);
    selector->fill();
    if (!selector->isStored())
        return;
    QObject::connect(list, &QComboBox::currentIndexChanged, selector,
                     &ConfigSelector::switchToSelected);
    QObject::connect(add, &QPushButton::clicked, selector, &ConfigSelector::add);
    QObject::connect(remove, &QPushButton::clicked, selector, &ConfigSelector::remove);
}

} // namespace mod_form_qt
