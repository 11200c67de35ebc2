#pragma once

#include "form/build/prepare_row.h"
#include "form/events/form_context.h"

#include <QGroupBox>
#include <QLabel>
#include <QPoint>
#include <QTabWidget>

#include <vector>

namespace mod_form_qt {

/// A layout into which the rows go until it is closed.
struct OpenLayout
{
    QLayout* layout = nullptr;
    QWidget* container = nullptr; ///< parent of the widgets made in it; may be null
    QPoint cell; ///< x the current column, y the current row of a grid
    QLayout* hideAtEnd = nullptr; ///< what is hidden once all contents exist
    bool closedGroup = false; ///< it is hidden until its group is opened
    bool page = false; ///< closed by the next page or the end of the tab widget
    QString lastTitle; ///< what an input without a title of its own is named after
    QPointer<QLabel> lastLabel; ///< the row of its own that this title is, if it is one
};

/// A tab widget whose pages are being filled.
struct OpenTabs
{
    QPointer<QTabWidget> tabs;
    RowHandle row;
    std::vector<RowHandle> pages; ///< by index; null where a page is not the form's
    qsizetype depth = 0; ///< number of layouts that were open before
    int startPage = -1; ///< -1 for none
};

/// A widget that a row has made.
struct RowWidget
{
    QWidget* widget = nullptr;
    int type = 0; ///< base element type
    bool placed = false; ///< stands in another widget or layout already
    bool skipSetData = false; ///< follows another widget of the row
    int pos = -1; ///< position to be noted; -1 for the one in the row
};

/// What a row has made, in the order of its record.
struct BuiltRow
{
    std::vector<RowWidget> widgets;
    RowHandle handle; ///< null for a row that raises nothing
    bool wired = false; ///< the signals have been connected by the row itself

    void add(QWidget* widget, int type) { widgets.push_back({widget, type, false, false, -1}); }
};

/// The state of a form that is being built.
struct BuildContext
{
    std::shared_ptr<FormContext> form;
    FormDefaults defaults;
    Qt::Alignment defaultAlign;
    QMap<int, QFlags<Qt::AlignmentFlag>> defaultTypeAlign;
    QSet<QString> loadedKeys; ///< keys whose values have just come from a file
    QSet<QString> plainKeys; ///< see `notePlainRows`

    std::vector<OpenLayout> layouts;
    std::vector<OpenTabs> tabs;
    QLayout* outermost = nullptr;
    QObject* timerOwner = nullptr; ///< goes with the form; null for one laid out into nothing

    QPointer<QWidget> menuHost; ///< menu bar or button to which the next menu goes
    QPointer<QMenu> menu; ///< menu to which the next action goes
    QSet<const QAction*> reporting; ///< actions of menus that report already

    // What is left to do when all rows are in.
    QMap<int, QPointer<QButtonGroup>> buttonGroups;
    WIDGET_INFO::PendingEmits pendingEmits;
    std::vector<OpenTabs> finishedTabs;
    std::vector<QPointer<QGroupBox>> groupBoxes;
    std::vector<QPointer<QTimer>> timers;
    std::vector<std::pair<QString, QPointer<QAction>>> checkableActions;

    QMap<QString, QVariant>* map() const { return form->map; }

    /// \return  the innermost open layout, null if all have been closed
    OpenLayout* top() { return layouts.empty() ? nullptr : &layouts.back(); }

    /// \return  the parent for new widgets; null for a form that is laid out into nothing
    QWidget* container() { return layouts.empty() ? nullptr : layouts.back().container; }

    /// \return  true if the row's title is to be bold
    bool isBold(const PreparedRow& row) const;
    /// Shares a row with the handlers of its widgets.
    RowHandle share(const PreparedRow& row) const;
    /// \return  the row's value as it stands after binding, without pointers
    QVariant valueOf(const PreparedRow& row) const;

    /// Makes the row's label, if its title and attributes ask for one.
    void addLabel(const PreparedRow& row, BuiltRow& built);
    /// \return  the title's part for a further widget, or `fallback` if it is missing or empty
    static QString partText(const PreparedRow& row, qsizetype part, const QString& fallback);

    /// Closes the innermost layout; hides its contents where its opener asked for it.
    void closeLayout();
    /// Makes the timers that an option map asks for. They report as the row.
    void addTimers(const QVariant& wanted, const INFO& row);
};

/// \return  the layout's parent for rows, or null
template <typename T>
T* openAs(BuildContext& context)
{
    return context.top() ? qobject_cast<T*>(context.top()->layout) : nullptr;
}

} // namespace mod_form_qt
