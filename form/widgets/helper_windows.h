#pragma once

#include "form/model/info.h"

#include <QDialog>
#include <QMainWindow>

namespace mod_form_qt::helper {

/// What the windows of forms have in common.
class MainWidgetBase
{
public:
    MainWidgetBase(INFO::MainFlags flags, const INFO& mainRow, QMap<QString, QVariant>* map,
                   QWidget* window);
    virtual ~MainWidgetBase() = default;
    Q_DISABLE_COPY_MOVE(MainWidgetBase)

    const INFO& mainRow() const { return m_mainRow; }

    INFO::MainFlags mainFlags() const { return m_flags; }

    QMap<QString, QVariant>* map() const { return m_map; }

    QWidget* window() const { return m_window; }

private:
    INFO::MainFlags m_flags;
    INFO m_mainRow;
    QMap<QString, QVariant>* m_map;
    QWidget* m_window;
};

/// The window of a form that is a dialog.
class Dialog : public QDialog, public MainWidgetBase
{
    Q_OBJECT

public:
    Dialog(INFO::MainFlags flags, const INFO& mainRow, QMap<QString, QVariant>* map,
           QWidget* parent, Qt::WindowFlags windowFlags);
    ~Dialog() override;

    using QDialog::window;
};

/// The window of a form that is a main window.
class MainWnd : public QMainWindow, public MainWidgetBase
{
    Q_OBJECT

public:
    MainWnd(INFO::MainFlags flags, const INFO& mainRow, QMap<QString, QVariant>* map,
            QWidget* parent, Qt::WindowFlags windowFlags);
    ~MainWnd() override;

    using QMainWindow::window;

    /// Result of the last main window: 1 for accepted, 0 for anything else, -1 while none has
    /// ended.
    inline static int exitCode = -1;
};

} // namespace mod_form_qt::helper
