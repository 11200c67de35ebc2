#include "form/events/button_actions.h"
#include "form/events/connect.h"
#include "form/model/info.h"
#include "form/values/data.h"
#include "form/values/list_widgets.h"
#include "form/values/row_value.h"
#include "form/values/show_value.h"
#include "form/values/unchanged_values.h"
#include "form/widgets/check_combo_box.h"
#include "form/widgets/image_widget.h"

#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSet>
#include <QSignalBlocker>
#include <QVarLengthArray>

#include <algorithm>

namespace mod_form_qt {

namespace {

/// What a row's new value has to go through, by row type, beside that of the value rows.
struct RowSets
{
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

struct KnownWidget
{
    QPointer<QWidget> widget;
    bool isLabel = false;
};

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
    void readWidgets();
    void readBound();
    bool holds(const QVariant& value) const;
    bool setInRow();
    bool setValueRow();
    bool setListRow();
    bool setPathRow();
    bool setValueButton();
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
    // What is known of the row. A property is slow to read: none is read twice.
    QVarLengthArray<KnownWidget, 4> m_widgets; // that live
    int m_type = 0; // of one of its inputs, or of its label if it has nothing else
    QVariant m_bound; // the pointer that its widgets keep
};

void RowSetter::readWidgets()
{
    bool typeKnown = false;
    for (const QPointer<QWidget>& widget : WIDGET_INFO::widgets(m_map, m_key).widgets()) {
        if (!widget)
            continue;
        m_widgets.append({widget, WIDGET_INFO::type(widget) == E_LABEL});
        if (m_widgets.last().isLabel || typeKnown)
            continue;
        m_type = WIDGET_INFO::typeExt(widget);
        typeKnown = true;
    }
    if (!typeKnown && !m_widgets.isEmpty())
        m_type = WIDGET_INFO::typeExt(m_widgets.last().widget);
    readBound();
}

void RowSetter::readBound()
{
    // Labels have it only where there is nothing else.
    const bool onlyLabels = std::all_of(m_widgets.cbegin(), m_widgets.cend(),
                                        [](const KnownWidget& w) { return w.isLabel; });
    for (auto index = m_widgets.size(); index-- > 0 && !m_bound.isValid();) {
        const KnownWidget& widget = m_widgets[index];
        if (!widget.isLabel || onlyLabels)
            m_bound = widget.widget->property(boundPropertyKey);
    }
}

bool RowSetter::run()
{
    readWidgets();
    if (m_widgets.isEmpty()) {
        const auto entry = m_map->constFind(m_key);
        // A pointer must not be written through itself.
        if (entry != m_map->constEnd() && INFO::DATA<QVariant>(*entry).isPointer())
            m_value = INFO::DATA<QVariant>(m_value).value();
        return store();
    }
    m_value = INFO::DATA<QVariant>(m_value).value();
    return setInRow();
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
    const int type = m_type;
    if (sets.plainButton.contains(type))
        return false;
    if (isValueRow(type))
        return setValueRow();
    if (sets.list.contains(type))
        return setListRow();
    if (sets.path.contains(type))
        return setPathRow();
    if (sets.valueButton.contains(type))
        return setValueButton();
    if (isLayoutOpener(type))
        return setGroup();
    if (type == E_IMAGE)
        return setImage();
    return store(); // the rest shows no value
}

bool RowSetter::store()
{
    const auto entry = m_map->constFind(m_key);
    if (m_bound.isValid() || entry == m_map->constEnd() || !isSameValue(*entry, m_value))
        storeValue(m_bound, m_map, m_key, m_value);
    return true;
}

/// \return  the row's widgets of class T that may be set
template <typename T>
QList<T*> RowSetter::inputs() const
{
    QList<T*> found;
    for (const KnownWidget& candidate : m_widgets) {
        auto* input = qobject_cast<T*>(candidate.widget.data());
        if (input && !candidate.isLabel && !WIDGET_INFO::isBitSet(input, A_SKIP_SETDATA))
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
    const bool isDate = m_type == E_DATE;
    if (isDate)
        m_value = dateOrInvalid(m_value);
    if (holds(m_value))
        return true;
    for (QWidget* widget : widgets)
        showValue(widget, m_type, m_value, m_map, m_key);
    store();
    for (QWidget* widget : widgets)
        notePending(widget, m_value.isValid() && !(isDate && m_value == INFO::dateInvalid));
    return true;
}

bool RowSetter::setListRow()
{
    bool taken = false;
    for (QWidget* widget : inputs<QWidget>()) {
        const auto* checks = qobject_cast<helper::CheckComboBox*>(widget);
        if (!isListWidget(widget) || (checks && checks->count() == 0))
            continue;
        const std::bitset<256> attr = WIDGET_INFO::flags(widget);
        if (!taken) {
            INFO::selectListCtrlBySelData(m_map, m_key, m_value);
            if (!INFO::setListSelData(m_map, m_key, m_value, isMultiSelection(m_type, attr)))
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

bool RowSetter::setValueButton()
{
    const QList<QPushButton*> buttons = inputs<QPushButton>();
    if (buttons.isEmpty())
        return false;
    store();
    for (QPushButton* button : buttons) {
        if (m_type == E_COLOR_BUTTON)
            showColor(button, m_value);
        else if (m_type == E_FONT_BUTTON)
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
    // Not by INFO::setData: a row without a key of its own has a temporary one.
    QString key;
    bool lives = false;
    for (const QPointer<QWidget>& widget : INFO::boundRow(map, variable).widgets()) {
        if (widget == nullptr)
            continue;
        lives = true;
        key = WIDGET_INFO::paramName(widget);
    }
    if (!lives)
        return false;
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
    UnchangedValues unchanged(map);
    Pending pending;
    int taken = 0;
    for (auto entry = kept.cbegin(); entry != kept.cend(); ++entry) {
        // What has no key stands in one record with all such rows.
        if (entry.key().isEmpty() || isTempKeyName(entry.key()))
            continue;
        if (!emitChange && unchanged.holds(entry.key(), *entry)) {
            ++taken;
            continue;
        }
        if (RowSetter(map, entry.key(), *entry, emitChange ? &pending : nullptr).run())
            ++taken;
        unchanged.forget();
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
