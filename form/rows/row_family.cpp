#include "form/rows/row_family.h"

#include <QHash>

namespace mod_form_qt {

namespace {

using Accessor = const RowFamily& (*)();

const QHash<int, Accessor>& families()
{
    // clang-format off
    static const QHash<int, Accessor> table = {
        {E_LAYOUT_V, layoutRows},
        {E_LAYOUT_H, layoutRows},
        {E_LAYOUT_GRID, layoutRows},
        {E_LAYOUT_FORM, layoutRows},
        {E_LAYOUT_FLOW, layoutRows},
        {E_LAYOUT_END, layoutRows},
        {E_GRID_NEXT_ROW, layoutRows},

        {E_TABWIDGET, tabRows},
        {E_TAB, tabRows},
        {E_TAB_END, tabRows},

        {E_LABEL, textRows},
        {E_LINEEDIT, textRows},
        {E_TEXTEDIT, textRows},
        {E_PLAINTEXT, textRows},

        {E_NUMBER, numberRows},
        {E_DATE, dateRows},
        {E_DATETIME, dateRows},

        {E_CHECKBOX, choiceRows},
        {E_RADIOBUTTON, choiceRows},

        {E_LISTBOX, listRows},
        {E_COMBOBOX, listRows},
        {E_CHECKCOMBOBOX, listRows},
        {E_MENU_BUTTON, listRows},

        {E_BUTTON, buttonRows},
        {E_OK_BUTTON, buttonRows},
        {E_CANCEL_BUTTON, buttonRows},
        {E_CLOSE_BUTTON, buttonRows},
        {E_HELP_BUTTON, buttonRows},
        {E_OPENURL_BUTTON, buttonRows},
        {E_BROWSE_FOLDER_BUTTON, buttonRows},
        {E_BROWSE_FILE_OPEN_BUTTON, buttonRows},
        {E_BROWSE_FILE_SAVE_BUTTON, buttonRows},
        {E_COLOR_BUTTON, buttonRows},
        {E_FONT_BUTTON, buttonRows},

        {E_SHOW_FOLDER, pathRows},
        {E_BROWSE_FOLDER, pathRows},
        {E_BROWSE_FILE_OPEN, pathRows},
        {E_BROWSE_FILE_SAVE, pathRows},

        {E_IMAGE, imageRows},
        {E_WIDGET, widgetRows},
        {E_MULTICONFIG, multiconfigRows},

        {E_MENUBAR, menuRows},
        {E_MENU, menuRows},
        {E_ACTION, menuRows},
        {E_STATUSBAR, menuRows},

        {E_HLINE, spacerRows},
        {E_VLINE, spacerRows},
        {E_HSPACER, spacerRows},
        {E_VSPACER, spacerRows},
        {E_STRETCH, spacerRows},
    };
    // clang-format on
    return table;
}

} // namespace

const RowFamily* familyFor(int eleType)
{
    const auto entry = families().constFind(eleType);
    return entry == families().constEnd() ? nullptr : &(*entry)();
}

} // namespace mod_form_qt
