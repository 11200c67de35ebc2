#pragma once

#include "form/export.h"
#include "form/model/info.h"

#include <QDialog>
#include <QMainWindow>

namespace mod_form_qt::helper {

/// What the windows of forms have in common.
class MOD_FORM_QT_EXPORT MainWidgetBase
{
public:
    /// Notes what the form is built of.
    /// \param window  the window itself
    MainWidgetBase(INFO::MainFlags flags, const INFO& mainRow, QMap<QString, QVariant>* map,
                   QWidget* window);
    /// Leaves the map and the window alone.
    virtual ~MainWidgetBase() = default;
    Q_DISABLE_COPY_MOVE(MainWidgetBase)

    /// Title, options and callback of the form.
    const INFO& mainRow() const { return m_mainRow; }

    /// How the form is built and run.
    INFO::MainFlags mainFlags() const { return m_flags; }

    /// The form data map.
    QMap<QString, QVariant>* map() const { return m_map; }

    /// The window itself.
    QWidget* window() const { return m_window; }

private:
    INFO::MainFlags m_flags;
    INFO m_mainRow;
    QMap<QString, QVariant>* m_map;
    QWidget* m_window;
};

/// The window of a form that is a dialog.
class MOD_FORM_QT_EXPORT Dialog : public QDialog, public MainWidgetBase
{
    Q_OBJECT

public:
    /// An empty dialog, noted as `E_DIALOG`.
    Dialog(INFO::MainFlags flags, const INFO& mainRow, QMap<QString, QVariant>* map,
           QWidget* parent, Qt::WindowFlags windowFlags);
    /// Ends the handlers of the form, see `disarmForm`.
    ~Dialog() override;

    using QDialog::window;
};

/// The window of a form that is a main window.
class MOD_FORM_QT_EXPORT MainWnd : public QMainWindow, public MainWidgetBase
{
    Q_OBJECT

public:
    /// An empty main window, noted as `E_MAINWINDOW`.
    MainWnd(INFO::MainFlags flags, const INFO& mainRow, QMap<QString, QVariant>* map,
            QWidget* parent, Qt::WindowFlags windowFlags);
    /// Ends the handlers of the form, see `disarmForm`.
    ~MainWnd() override;

    using QMainWindow::window;

    /// Result of the last main window: 1 for accepted, 0 for anything else, -1 while none has
    /// ended.
    inline static int exitCode = -1;
};

} // namespace mod_form_qt::helper
