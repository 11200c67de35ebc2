#pragma once

#include "form/mod_form_qt.h"

#include <QTemporaryDir>

#include <deque>
#include <functional>

namespace gallery {

inline QString tr(const char* text)
{
    return QCoreApplication::translate("gallery", text);
}

struct SampleWindow;

/// What the rows of a form refer to beside themselves. Has to outlive the form.
class PageContext
{
public:
    /// \param owner  of menus and widgets that the rows bring along
    explicit PageContext(QWidget* owner);
    Q_DISABLE_COPY_MOVE(PageContext)

    /// The form data map. A page may put values in before its form is built.
    QMap<QString, QVariant> map;

    /// Starts one of the sample windows; set by who shows the page.
    /// \return  the result of the window
    std::function<int(const SampleWindow&)> start;

    QWidget* owner() const { return m_owner; }

    /// \return  a variable that a row may be bound to
    QVariant* variable(const QVariant& value);
    /// \return  list data that a row may be bound to
    mod_form_qt::T_LISTDATA* list(const mod_form_qt::T_LISTDATA& items);
    /// \return  path of a file that goes with this
    QString file(const QString& name);

private:
    QWidget* m_owner;
    std::deque<QVariant> m_variables; // their addresses are given away
    std::deque<mod_form_qt::T_LISTDATA> m_lists;
    QTemporaryDir m_folder;
};

/// One page of the gallery.
struct Page
{
    QString title;
    QString explanation; ///< rich text
    QList<mod_form_qt::INFO> (*rows)(PageContext& context);
    mod_form_qt::INFO::MainFlags flags; ///< beside those that every page has
};

/// \return  all pages in the order in which they are shown
QList<Page> pages();

// The rows of each page, by file.

// pages_text.cpp
QList<mod_form_qt::INFO> lineEdits(PageContext& context);
QList<mod_form_qt::INFO> labels(PageContext& context);
QList<mod_form_qt::INFO> textEdits(PageContext& context);
// pages_buttons.cpp
QList<mod_form_qt::INFO> buttons(PageContext& context);
// pages_choice.cpp
QList<mod_form_qt::INFO> checks(PageContext& context);
QList<mod_form_qt::INFO> lists(PageContext& context);
QList<mod_form_qt::INFO> comboBoxes(PageContext& context);
// pages_numbers_dates.cpp
QList<mod_form_qt::INFO> numbers(PageContext& context);
QList<mod_form_qt::INFO> dates(PageContext& context);
// pages_paths_images.cpp
QList<mod_form_qt::INFO> paths(PageContext& context);
QList<mod_form_qt::INFO> images(PageContext& context);
// pages_layouts.cpp
QList<mod_form_qt::INFO> layouts(PageContext& context);
QList<mod_form_qt::INFO> linesAndSpacers(PageContext& context);
QList<mod_form_qt::INFO> grids(PageContext& context);
QList<mod_form_qt::INFO> margins(PageContext& context);
// pages_alignment.cpp
QList<mod_form_qt::INFO> stretches(PageContext& context);
QList<mod_form_qt::INFO> sizePolicies(PageContext& context);
QList<mod_form_qt::INFO> alignments(PageContext& context);
QList<mod_form_qt::INFO> labelAlignments(PageContext& context);
// pages_tabs_menus.cpp
QList<mod_form_qt::INFO> tabs(PageContext& context);
QList<mod_form_qt::INFO> menusAndWindows(PageContext& context);
// pages_menus.cpp
QList<mod_form_qt::INFO> builtMenus(PageContext& context);
// pages_passwords.cpp
QList<mod_form_qt::INFO> passwords(PageContext& context);
// pages_behaviour.cpp
QList<mod_form_qt::INFO> events(PageContext& context);
QList<mod_form_qt::INFO> bindings(PageContext& context);
QList<mod_form_qt::INFO> groupsAndWheel(PageContext& context);
// pages_configs.cpp
QList<mod_form_qt::INFO> configurations(PageContext& context);

} // namespace gallery
