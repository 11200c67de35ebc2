#pragma once

#include "form/export.h"
#include "form/model/map_key_type.h"

#include <QList>
#include <QMap>
#include <QPointer>
#include <QString>
#include <QVariant>
#include <QWidget>

#include <bitset>
#include <tuple>
#include <vector>

namespace mod_form_qt {

/// Which of a row's widgets a look-up takes.
enum FindPos {
    FIND_POS_FIRST = 0, ///< the one at position 0, if it is of the class and type
    FIND_POS_ANY = 3 ///< the first of the class and type
};

/// The widgets of one row, in the order in which they were made, and what is known of them. All of
/// it tolerates a null map and widgets that have gone.
class MOD_FORM_QT_EXPORT WIDGET_INFO
{
public:
    // Names of the dynamic properties of a form's widgets.

    /// Base element type of the widget, an int.
    inline static const char* const typePropertyKey = "mod_form_qt_type";
    /// Type of the widget's row, an int.
    inline static const char* const typeExtPropertyKey = "mod_form_qt_type_ext";
    /// Position of the widget in its row, an int from 0.
    inline static const char* const posPropertyKey = "mod_form_qt_pos";
    /// Key of the widget's row, a text.
    inline static const char* const paramNamePropertyKey = "mod_form_qt_paramName";
    /// Attributes of the widget's row, a QBitArray of 256.
    inline static const char* const flagsPropertyKey = "mod_form_qt_flags";
    /// Option map of the widget's row.
    inline static const char* const optionsPropertyKey = "mod_form_qt_options";
    /// True while the widget's events are blocked, see `INFO::blockEvent`.
    inline static const char* const blockEventsPropertyKey = "mod_form_qt_blockevent";
    /// Running number of the widget, which orders the widgets of a form.
    inline static const char* const serialPropertyKey = "mod_form_qt_serial";

    /// A widget that is to raise its change once the form stands; whether its changes reach the map
    /// at once; whether only a valid value counts.
    using PendingEmits = std::vector<std::tuple<QPointer<QObject>, bool, bool>>;

    /// Appends a widget and gives it its properties.
    /// \param widget        null is ignored
    /// \param type          base element type
    /// \param typeExt       the row's type, the same as `type` on a plain row
    /// \param pos           position of the widget in its row, from 0
    /// \param paramName     the row's key
    /// \param attr          the row's attributes
    /// \param options       the row's option map
    /// \param pendingEmits  if given, takes a widget that has `A_INIT_EMIT` or `A_INIT_EMIT_VALID`
    void add(QWidget* widget, int type, int typeExt, int pos, const QString& paramName,
             const std::bitset<256>& attr, const QVariant& options, PendingEmits* pendingEmits);

    /// Number of widgets, also of such as have gone since.
    qsizetype size() const { return m_widgets.size(); }

    /// \return  true for a row without widgets
    bool empty() const { return m_widgets.isEmpty(); }

    /// \return  true for an index from 0 to `size` - 1
    bool checkIndex(int index) const { return index >= 0 && index < m_widgets.size(); }

    /// \return  null for an index that does not exist and for a widget that has gone
    QPointer<QWidget> widgetAt(int index) const;

    /// All widgets; null in place of one that has gone.
    const QList<QPointer<QWidget>>& widgets() const& { return m_widgets; }

    /// Of a record that is about to go, so that a loop may run over what a look-up returns.
    QList<QPointer<QWidget>> widgets() && { return std::move(m_widgets); }

    /// \return  true for the same widgets in the same order
    friend bool operator==(const WIDGET_INFO& one, const WIDGET_INFO& other)
    {
        return one.m_widgets == other.m_widgets;
    }

    // What is known of one widget; 0 or empty for a null pointer and a widget of no form.

    /// \return  its base element type
    static int type(const QPointer<QWidget>& widget);
    /// \return  the type of its row
    static int typeExt(const QPointer<QWidget>& widget);
    /// \return  its position in its row, from 0
    static int pos(const QPointer<QWidget>& widget);
    /// \return  the key of its row
    static QString paramName(const QPointer<QWidget>& widget);
    /// \return  the attributes of its row
    static std::bitset<256> flags(const QPointer<QWidget>& widget);
    /// \return  the option map of its row
    static QVariant options(const QPointer<QWidget>& widget);
    /// \return  true if its row has one of these attributes
    static bool isBitSet(const QPointer<QWidget>& widget, const std::bitset<256>& bits);
    /// Notes another base element type; null has no effect.
    static void setType(const QPointer<QWidget>& widget, int type);

    /// \return  true for 20000 to 49999
    static bool isBaseEleType(int eleType);
    /// \return  true for 50000 to 59999
    static bool isExtEleType(int eleType);

    /// \return  the name of the map entry that holds the record of a row's widgets
    static QString buildWidgetDataKey(const QString& key);

    /// \return  the widgets of a row, none if the map does not know it
    static WIDGET_INFO widgets(const QMap<QString, QVariant>* map, const MAP_KEY_TYPE& key);
    /// \return  the widget at that position of a row, null if there is none
    static QPointer<QWidget> widgetAt(const QMap<QString, QVariant>* map, const MAP_KEY_TYPE& key,
                                      int index);
    /// \param type  a base element type, or 0 for every widget
    /// \return      the living widgets of the form, in the order in which they were made
    static QList<QPointer<QWidget>> all(const QMap<QString, QVariant>* map, int type);
    /// Forgets all widgets of the form.
    static void clean(QMap<QString, QVariant>* map);

    /// Finds a row's widget of class T.
    /// \param type   a base or extended element type that the widget has; anything else is the
    ///               widget's position in the row
    /// \param other  out, if given: the row's label or null
    /// \return       null if there is none
    template <typename T>
    static T* widget(const QMap<QString, QVariant>* map, const MAP_KEY_TYPE& key, int type,
                     FindPos pos = FIND_POS_ANY, QPointer<QWidget>* other = nullptr, bool = false)
    {
        return qobject_cast<T*>(find(map, key, type, pos, other, [](QWidget* candidate) {
            return qobject_cast<T*>(candidate) != nullptr;
        }));
    }

private:
    static QWidget* find(const QMap<QString, QVariant>* map, const MAP_KEY_TYPE& key, int type,
                         FindPos pos, QPointer<QWidget>* other, bool (*isOfClass)(QWidget*));

    QList<QPointer<QWidget>> m_widgets;
};

} // namespace mod_form_qt

Q_DECLARE_METATYPE(mod_form_qt::WIDGET_INFO)
