#include "form/events/button_actions.h"
#include "form/events/connect.h"
#include "form/model/info.h"
#include "form/values/data.h"
#include "form/values/list_widgets.h"
#include "form/values/row_value.h"
#include "form/values/show_value.h"
#include "form/widgets/check_combo_box.h"
#include "form/widgets/image_widget.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSet>
#include <QSignalBlocker>
#include <QTextEdit>

namespace mod_form_qt {

namespace {

/// What a row's new value has to go through, by row type.
struct RowSets
{
    QSet<int> value = {E_NUMBER,    E_DATE,     E_DATETIME, E_TEXTEDIT,
                       E_PLAINTEXT, E_LINEEDIT, E_CHECKBOX, E_RADIOBUTTON};
    QSet<int> valueButton = {
        E_OPENURL_BUTTON,          E_COLOR_BUTTON,           E_FONT_BUTTON, E_BROWSE_FOLDER_BUTTON,
        E_BROWSE_FILE_OPEN_BUTTON, E_BROWSE_FILE_SAVE_BUTTON};
    QSet<int> plainButton = {E_BUTTON,       E_OK_BUTTON,   E_CANCEL_BUTTON,
                             E_CLOSE_BUTTON, E_MULTICONFIG, E_HELP_BUTTON};
    QSet<int> path = {E_SHOW_FOLDER, E_BROWSE_FOLDER, E_BROWSE_FILE_OPEN, E_BROWSE_FILE_SAVE};
    QSet<int> list = {E_CHECKCOMBOBOX, E_COMBOBOX, E_LISTBOX, E_MENU_BUTTON};
};

const RowSets& rowSets()
{
    static const RowSets sets;
    return sets;
}

/// Widgets that raise their change once all values are in.
using Pending = WIDGET_INFO::PendingEmits;

void raise(const Pending& pending)
{
    for (const auto& [widget, immediate, onlyValid] : pending)
        INFO::triggerEmit(widget, onlyValid, immediate);
}

/// Not `==` alone, which takes "05" and 5 for the same.
bool isSame(const QVariant& one, const QVariant& other)
{
    return one.metaType() == other.metaType() && one == other;
}

/// \return  the type of a row by one of its inputs, or by its label if it has nothing else
int rowType(const WIDGET_INFO& row)
{
    int type = 0;
    for (const QPointer<QWidget>& widget : row.widgets()) {
        if (!widget)
            continue;
        type = WIDGET_INFO::typeExt(widget);
        if (WIDGET_INFO::type(widget) != E_LABEL)
            break;
    }
    return type;
}

bool isAlive(const WIDGET_INFO& row)
{
    for (const QPointer<QWidget>& widget : row.widgets()) {
        if (widget)
            return true;
    }
    return false;
}

/// \return  true for an input that is left alone if the map holds the value already. A line edit
/// may
///          also belong to a row that is made to show it in any case
bool isLeftAlone(const QWidget* widget, const QVariant& value)
{
    if (const auto* edit = qobject_cast<const QLineEdit*>(widget))
        return edit->text() == value.toString();
    return qobject_cast<const QAbstractSpinBox*>(widget) || qobject_cast<const QCheckBox*>(widget)
        || qobject_cast<const QRadioButton*>(widget) || qobject_cast<const QTextEdit*>(widget)
        || qobject_cast<const QPlainTextEdit*>(widget);
}

/// \return  true if both the list data and a combo box have selected the item of that value
bool showsOnly(const QComboBox* box, const T_LISTDATA& list, const QVariant& value)
{
    if (box == nullptr || qobject_cast<const helper::CheckComboBox*>(box))
        return false;
    const QVariant shown = box->currentData(listIndexRole);
    const auto index = shown.isValid() ? size_t(shown.toInt()) : list.size();
    return index < list.size() && std::get<1>(list[index]) && std::get<2>(list[index]) == value;
}

/// Gives one row another value.
class RowSetter
{
public:
    RowSetter(QMap<QString, QVariant>* map, const QString& key, const QVariant& value,
              Pending* pending)
        : m_map(map)
        , m_key(key)
        , m_value(value)
        , m_pending(pending)
    {
    }

    /// \return  false if the row does not take values
    bool run();

private:
    bool isUnchanged() const;
    bool holds(const QVariant& value) const;
    bool setInRow();
    bool setValueRow();
    bool setListRow(int type);
    bool setPathRow();
    bool setValueButton(int type);
    bool setGroup();
    bool setImage();
    bool store();
    void notePending(QWidget* widget, bool isValid);
    template <typename T>
    QList<T*> inputs() const;

    QMap<QString, QVariant>* m_map;
    const QString& m_key;
    QVariant m_value;
    Pending* m_pending;
    WIDGET_INFO m_row;
    QVariant m_bound;
};

bool RowSetter::run()
{
    m_row = WIDGET_INFO::widgets(m_map, m_key);
    if (m_pending == nullptr && isUnchanged())
        return true;
    m_bound = boundPointer(m_row);
    if (!isAlive(m_row)) {
        const auto entry = m_map->constFind(m_key);
        // A pointer must not be written through itself.
        if (entry != m_map->constEnd() && INFO::DATA<QVariant>(*entry).isPointer())
            m_value = INFO::DATA<QVariant>(m_value).value();
        return store();
    }
    m_value = INFO::DATA<QVariant>(m_value).value();
    return setInRow();
}

/// Tells whether a row can be left alone. Most keys of a form are given the value they have, and to
/// read a property of a widget takes longer than all of this.
bool RowSetter::isUnchanged() const
{
    const auto entry = m_map->constFind(m_key);
    if (entry == m_map->constEnd())
        return false;
    if (m_row.empty())
        return isSame(*entry, m_value);
    const QWidget* input = m_row.widgets().constLast();
    if (input == nullptr)
        return false;
    const T_LISTDATA* list = findList(*entry, nullptr, QString());
    const auto* variable = INFO::isVariantPtr(*entry) ? entry->value<T_VARIANT_PTR>() : nullptr;
    const bool unchanged = list
        ? showsOnly(qobject_cast<const QComboBox*>(input), *list, m_value)
        : isSame(variable ? *variable : *entry, m_value) && isLeftAlone(input, m_value);
    if (!unchanged)
        return false;
    // A variable may be behind a plain entry that has replaced the pointer to it.
    static const QByteArray boundProperty(boundPropertyKey);
    return variable || INFO::isListDataPtr(*entry)
        || !input->dynamicPropertyNames().contains(boundProperty);
}

/// \return  true if both the map and the row's variable have that value
bool RowSetter::holds(const QVariant& value) const
{
    const auto entry = m_map->constFind(m_key);
    return entry != m_map->constEnd() && INFO::DATA<QVariant>(*entry).value() == value
        && (!m_bound.isValid() || INFO::DATA<QVariant>(m_bound).value() == value);
}

bool RowSetter::setInRow()
{
    const RowSets& sets = rowSets();
    const int type = rowType(m_row);
    if (sets.plainButton.contains(type))
        return false;
    if (sets.value.contains(type))
        return setValueRow();
    if (sets.list.contains(type))
        return setListRow(type);
    if (sets.path.contains(type))
        return setPathRow();
    if (sets.valueButton.contains(type))
        return setValueButton(type);
    if (isLayoutOpener(type))
        return setGroup();
    if (type == E_IMAGE)
        return setImage();
    return store(); // the rest shows no value
}

bool RowSetter::store()
{
    const auto entry = m_map->constFind(m_key);
    if (m_bound.isValid() || entry == m_map->constEnd() || !isSame(*entry, m_value))
        storeValue(m_bound, m_map, m_key, m_value);
    return true;
}

/// \return  the row's widgets of class T that may be set
template <typename T>
QList<T*> RowSetter::inputs() const
{
    QList<T*> found;
    for (const QPointer<QWidget>& widget : m_row.widgets()) {
        auto* input = qobject_cast<T*>(widget.data());
        if (input && WIDGET_INFO::type(widget) != E_LABEL
            && !WIDGET_INFO::isBitSet(widget, A_SKIP_SETDATA))
            found.append(input);
    }
    return found;
}

void RowSetter::notePending(QWidget* widget, bool isValid)
{
    if (m_pending == nullptr)
        return;
    const bool onlyValid = WIDGET_INFO::isBitSet(widget, A_INIT_EMIT_VALID);
    if (isValid || !onlyValid)
        m_pending->emplace_back(widget, WIDGET_INFO::isBitSet(widget, A_IMMEDIATE_DATA_UPDATE),
                                onlyValid);
}

bool RowSetter::setValueRow()
{
    const QList<QWidget*> widgets = inputs<QWidget>();
    if (widgets.isEmpty())
        return false;
    const bool isDate = rowType(m_row) == E_DATE;
    if (isDate)
        m_value = dateOrInvalid(m_value);
    if (holds(m_value))
        return true;
    for (QWidget* widget : widgets)
        showValue(widget, m_value, m_map, m_key);
    store();
    for (QWidget* widget : widgets)
        notePending(widget, m_value.isValid() && !(isDate && m_value == INFO::dateInvalid));
    return true;
}

bool RowSetter::setListRow(int type)
{
    bool taken = false;
    for (QWidget* widget : inputs<QWidget>()) {
        const auto* checks = qobject_cast<helper::CheckComboBox*>(widget);
        if (!isListWidget(widget) || (checks && checks->count() == 0))
            continue;
        const std::bitset<256> attr = WIDGET_INFO::flags(widget);
        if (!taken) {
            INFO::selectListCtrlBySelData(m_map, m_key, m_value);
            if (!INFO::setListSelData(m_map, m_key, m_value, isMultiSelection(type, attr)))
                store();
        }
        taken = true;
        notePending(widget, !selectedValues(widget, attr).isEmpty());
    }
    return taken;
}

bool RowSetter::setPathRow()
{
    const QList<QLineEdit*> edits = inputs<QLineEdit>();
    if (edits.isEmpty())
        return false;
    for (QLineEdit* edit : edits) {
        const QSignalBlocker quiet(edit);
        const QString path = m_value.toString();
        if (edit->text() != path)
            edit->setText(path);
    }
    store();
    for (QLineEdit* edit : edits)
        notePending(edit, m_value.isValid());
    return true;
}

bool RowSetter::setValueButton(int type)
{
    const QList<QPushButton*> buttons = inputs<QPushButton>();
    if (buttons.isEmpty())
        return false;
    store();
    for (QPushButton* button : buttons) {
        if (type == E_COLOR_BUTTON)
            showColor(button, m_value);
        else if (type == E_FONT_BUTTON)
            showFont(button, m_value);
        notePending(button, m_value.isValid());
    }
    return true;
}

bool RowSetter::setGroup()
{
    const QList<QGroupBox*> groups = inputs<QGroupBox>();
    for (QGroupBox* group : groups) {
        if (!group->isCheckable())
            continue;
        const QSignalBlocker quiet(group);
        group->setChecked(m_value.toBool());
        setGroupContentsVisible(group->layout(), m_value.toBool());
    }
    store();
    for (QGroupBox* group : groups)
        notePending(group, m_value.isValid());
    return true;
}

bool RowSetter::setImage()
{
    const QList<helper::ImageWidget*> images = inputs<helper::ImageWidget>();
    if (images.isEmpty())
        return false;
    store();
    for (helper::ImageWidget* image : images)
        initImage(m_value, image, WIDGET_INFO::flags(image));
    return true;
}

bool setBoundRow(QMap<QString, QVariant>* map, const QVariant& variable, const QVariant& value,
                 bool emitChange)
{
    const WIDGET_INFO row = INFO::boundRow(map, variable);
    if (!isAlive(row))
        return false;
    // Not by INFO::setData: a row without a key of its own has a temporary one.
    QString key;
    for (const QPointer<QWidget>& widget : row.widgets()) {
        if (widget)
            key = WIDGET_INFO::paramName(widget);
    }
    Pending pending;
    RowSetter(map, key, value, emitChange ? &pending : nullptr).run();
    raise(pending);
    return true;
}

} // namespace

int INFO::setData(QMap<QString, QVariant>* map, const QMap<QString, QVariant>& values,
                  bool emitChange)
{
    if (map == nullptr)
        return 0;
    // The values may be those of the map itself.
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization)
    const QMap<QString, QVariant> kept = values;
    Pending pending;
    int taken = 0;
    for (auto entry = kept.cbegin(); entry != kept.cend(); ++entry) {
        // What has no key stands in one record with all such rows.
        if (entry.key().isEmpty() || isTempKeyName(entry.key()))
            continue;
        RowSetter setter(map, entry.key(), *entry, emitChange ? &pending : nullptr);
        if (setter.run())
            ++taken;
    }
    raise(pending);
    return taken;
}

int INFO::setData(QMap<QString, QVariant>* map, const MAP_KEY_TYPE& key, const QVariant& value,
                  bool emitChange)
{
    return setData(map, QMap<QString, QVariant> {{key.toString(), value}}, emitChange);
}

bool INFO::setTextVariantPtr(QMap<QString, QVariant>* map, QVariant& var, const QString& text,
                             bool emitChange)
{
    return setBoundRow(map, var, text, emitChange);
}

bool INFO::setDoubleVariantPtr(QMap<QString, QVariant>* map, QVariant& var, double value,
                               bool emitChange)
{
    return setBoundRow(map, var, value, emitChange);
}

bool INFO::setCheckedVariantPtr(QMap<QString, QVariant>* map, QVariant& var, bool checked,
                                bool emitChange)
{
    return setBoundRow(map, var, checked, emitChange);
}

} // namespace mod_form_qt
