#pragma once

#include <Qt>

namespace mod_form_qt {

// What a row of a form can be.

/// Openers of a layout; the row's data is the checked state of a checkable group.
inline constexpr int E_LAYOUT_V = 10000;
inline constexpr int E_LAYOUT_H = 10001;
inline constexpr int E_LAYOUT_GRID = 10002;
inline constexpr int E_LAYOUT_FORM = 10003;
inline constexpr int E_LAYOUT_FLOW = 10004;

/// Rows without a widget.
inline constexpr int E_INSERT_POINT = 11000;
inline constexpr int E_GRID_NEXT_ROW = 11001;
inline constexpr int E_TAB_END = 11002;
inline constexpr int E_LAYOUT_END = 19999;

/// Base element types.
inline constexpr int E_LINEEDIT = 20000;
inline constexpr int E_TEXTEDIT = 20001;
inline constexpr int E_BUTTON = 20002;
inline constexpr int E_LABEL = 20003;
inline constexpr int E_CHECKBOX = 20004;
inline constexpr int E_LISTBOX = 20005;
inline constexpr int E_COMBOBOX = 20006;
inline constexpr int E_IMAGE = 20007;
inline constexpr int E_WIDGET = 20008;
inline constexpr int E_PLAINTEXT = 20009;
inline constexpr int E_MENUBAR = 20010;
inline constexpr int E_MENU = 20011;
inline constexpr int E_ACTION = 20012;
inline constexpr int E_STATUSBAR = 20014;
inline constexpr int E_TABWIDGET = 20015;
inline constexpr int E_TAB = 20016;
inline constexpr int E_RADIOBUTTON = 20018;
inline constexpr int E_CHECKCOMBOBOX = 20019;

/// Main rows.
inline constexpr int E_DIALOG = 30000;
inline constexpr int E_MAINWINDOW = 30001;

/// Lines and spaces.
inline constexpr int E_VLINE = 40000;
inline constexpr int E_HSPACER = 40001;
inline constexpr int E_VSPACER = 40002;
inline constexpr int E_STRETCH = 40003;
inline constexpr int E_HLINE = 40004;

/// Extended element types: rows made of widgets of the base types.
inline constexpr int E_OK_BUTTON = 50000;
inline constexpr int E_CANCEL_BUTTON = 50001;
inline constexpr int E_OPENURL_BUTTON = 50002;
inline constexpr int E_SHOW_FOLDER = 50003;
inline constexpr int E_COLOR_BUTTON = 50004;
inline constexpr int E_FONT_BUTTON = 50005;
inline constexpr int E_NUMBER = 50006;
inline constexpr int E_BROWSE_FOLDER = 50007;
inline constexpr int E_BROWSE_FOLDER_BUTTON = 50008;
inline constexpr int E_BROWSE_FILE_OPEN = 50009;
inline constexpr int E_BROWSE_FILE_OPEN_BUTTON = 50010;
inline constexpr int E_DATE = 50011;
inline constexpr int E_DATETIME = 50012;
inline constexpr int E_BROWSE_FILE_SAVE = 50013;
inline constexpr int E_BROWSE_FILE_SAVE_BUTTON = 50014;
inline constexpr int E_CLOSE_BUTTON = 50015;
inline constexpr int E_MULTICONFIG = 50016;
inline constexpr int E_MENU_BUTTON = 50017;
inline constexpr int E_HELP_BUTTON = 50018;

/// An entry of the form data map without a widget.
inline constexpr int E_DATA = 60000;

/// \return  true for a type that opens a layout
constexpr bool isLayoutOpener(int eleType)
{
    return eleType >= E_LAYOUT_V && eleType <= E_LAYOUT_FLOW;
}

/// Window flags for the usual kinds of windows: a title; a title, "minimise" and "maximise"; all
/// these and "close".
inline constexpr Qt::WindowFlags F_DIALOG_TITLE =
    Qt::Window | Qt::WindowTitleHint | Qt::CustomizeWindowHint;
inline constexpr Qt::WindowFlags F_DIALOG_TITLE_MINMAX =
    F_DIALOG_TITLE | Qt::WindowMinimizeButtonHint | Qt::WindowMaximizeButtonHint;
inline constexpr Qt::WindowFlags F_DIALOG_TITLE_MINMAX_CLOSE =
    F_DIALOG_TITLE_MINMAX | Qt::WindowCloseButtonHint;

} // namespace mod_form_qt
