#include "form/widgets/helper_windows.h"

#include "form/events/form_context.h"

namespace mod_form_qt::helper {

MainWidgetBase::MainWidgetBase(INFO::MainFlags flags, const INFO& mainRow,
                               QMap<QString, QVariant>* map, QWidget* window)
    : m_flags(flags)
    , m_map(map)
    , m_window(window)
{
    m_mainRow = mainRow;
}

Dialog::Dialog(INFO::MainFlags flags, const INFO& mainRow, QMap<QString, QVariant>* map,
               QWidget* parent, Qt::WindowFlags windowFlags)
    : QDialog(parent, windowFlags)
    , MainWidgetBase(flags, mainRow, map, this)
{
    WIDGET_INFO::setType(this, E_DIALOG);
}

Dialog::~Dialog()
{
    disarmForm(this);
}

MainWnd::MainWnd(INFO::MainFlags flags, const INFO& mainRow, QMap<QString, QVariant>* map,
                 QWidget* parent, Qt::WindowFlags windowFlags)
    : QMainWindow(parent, windowFlags)
    , MainWidgetBase(flags, mainRow, map, this)
{
    WIDGET_INFO::setType(this, E_MAINWINDOW);
}

MainWnd::~MainWnd()
{
    disarmForm(this);
}

} // namespace mod_form_qt::helper
