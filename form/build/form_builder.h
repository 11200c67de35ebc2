#pragma once

#include "form/rows/build_context.h"
#include "form/values/snapshot.h"

namespace mod_form_qt {

/// Builds one form, step by step in the order of its public functions.
class FormBuilder
{
public:
    FormBuilder(QWidget* parent, INFO::MainFlags flags, Qt::WindowFlags windowFlags,
                const INFO& mainRow, QMap<QString, QVariant>* map, QSet<QString>* keys);

    /// Normalises the rows, clears the map of an earlier form, takes the snapshot.
    void takeRows(const QList<INFO>& rows);
    /// Makes or dresses the window, loads its values, opens the outermost layout.
    void makeWindow();

    const QList<INFO>& rows() const { return m_rows; }

    void addRow(const INFO& row);
    /// Installs the layout; tabs, menus, groups and timers get what needs all rows.
    void finish();
    /// Tells the form that it stands, and runs its window.
    INFO::Result run();

private:
    void collectData();
    void loadValues();
    QWidget* contentWidget();
    void openOutermost();
    void makeFilter();
    void installLayout();
    void replaceOldForm() const;
    void finishTabs();
    void groupActions() const;
    void fitGroupBoxes() const;
    bool installs() const;

    QWidget* m_parent;
    Qt::WindowFlags m_windowFlags;
    QSet<QString>* m_keys;
    QList<INFO> m_rows;
    QList<INFO> m_boundRows; // rows that live in a variable of the caller's
    SNAP_SHOT_MANAGER m_snapshot;
    BuildContext m_context;
    QWidget* m_content = nullptr; // holds the rows, if it is not the main widget itself
    INFO::UserEventFilter* m_filter = nullptr;
    INFO::Result m_result;
};

} // namespace mod_form_qt
