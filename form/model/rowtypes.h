#pragma once

#include <Qt>

namespace mod_form_qt {

// What a row of a form can be.

// Openers of a layout; the row's data is the checked state of a checkable group.
inline constexpr int E_LAYOUT_V = 10000; ///< opens a QVBoxLayout
inline constexpr int E_LAYOUT_H = 10001; ///< opens a QHBoxLayout
inline constexpr int E_LAYOUT_GRID = 10002; ///< opens a QGridLayout
inline constexpr int E_LAYOUT_FORM = 10003; ///< opens a QFormLayout
inline constexpr int E_LAYOUT_FLOW = 10004; ///< opens a helper::FlowLayout

// Rows without a widget.
inline constexpr int E_INSERT_POINT =
    11000; ///< where `INFO::insertLayout` puts rows; makes nothing
inline constexpr int E_GRID_NEXT_ROW = 11001; ///< in a grid: column 0 of the next row
inline constexpr int E_TAB_END = 11002; ///< closes the tab page and its tab widget
inline constexpr int E_LAYOUT_END = 19999; ///< closes the innermost layout

// Base element types.
inline constexpr int E_LINEEDIT = 20000; ///< QLineEdit; a text
inline constexpr int E_TEXTEDIT = 20001; ///< QTextEdit; a text, HTML with `A_RICH_TEXT`
inline constexpr int E_BUTTON = 20002; ///< QPushButton
inline constexpr int E_LABEL = 20003; ///< QLabel, which shows the title
inline constexpr int E_CHECKBOX = 20004; ///< QCheckBox; a bool
inline constexpr int E_LISTBOX = 20005; ///< QListWidget; list data
inline constexpr int E_COMBOBOX = 20006; ///< QComboBox; list data
inline constexpr int E_IMAGE = 20007; ///< helper::ImageWidget; an image or the path of one
inline constexpr int E_WIDGET =
    20008; ///< a widget of the caller's; as main row: the widget to fill
inline constexpr int E_PLAINTEXT = 20009; ///< QPlainTextEdit; a text
inline constexpr int E_MENUBAR = 20010; ///< the menu bar, the caller's if its data is one
inline constexpr int E_MENU = 20011; ///< a QMenu of the caller's
inline constexpr int E_ACTION = 20012; ///< a QAction of the caller's
inline constexpr int E_STATUSBAR = 20014; ///< a status bar, the caller's if its data is one
inline constexpr int E_TABWIDGET = 20015; ///< opens a QTabWidget, the caller's if its data is one
inline constexpr int E_TAB = 20016; ///< starts a page of the tab widget
inline constexpr int E_RADIOBUTTON = 20018; ///< QRadioButton; a bool
inline constexpr int E_CHECKCOMBOBOX = 20019; ///< helper::CheckComboBox; list data

// Main rows.
inline constexpr int E_DIALOG = 30000; ///< the form is a dialog
inline constexpr int E_MAINWINDOW = 30001; ///< the form is a main window

// Lines and spaces.
inline constexpr int E_VLINE = 40000; ///< a vertical line
inline constexpr int E_HSPACER = 40001; ///< a space; its width in pixels
inline constexpr int E_VSPACER = 40002; ///< a space; its height in pixels
inline constexpr int E_STRETCH = 40003; ///< a stretch; its factor
inline constexpr int E_HLINE = 40004; ///< a horizontal line

// Extended element types: rows made of widgets of the base types.
inline constexpr int E_OK_BUTTON = 50000; ///< accepts the form
inline constexpr int E_CANCEL_BUTTON = 50001; ///< rejects the form
inline constexpr int E_OPENURL_BUTTON = 50002; ///< opens a URL; its text
inline constexpr int E_SHOW_FOLDER = 50003; ///< a path and a button that shows that folder
inline constexpr int E_COLOR_BUTTON = 50004; ///< lets the user choose a colour; a QColor
inline constexpr int E_FONT_BUTTON = 50005; ///< lets the user choose a font; a QFont
inline constexpr int E_NUMBER = 50006; ///< a number, in a line edit or a spin box
inline constexpr int E_BROWSE_FOLDER = 50007; ///< a folder's path and a button to choose it
inline constexpr int E_BROWSE_FOLDER_BUTTON = 50008; ///< that button alone
inline constexpr int E_BROWSE_FILE_OPEN = 50009; ///< a path to read from and a button to choose it
inline constexpr int E_BROWSE_FILE_OPEN_BUTTON = 50010; ///< that button alone
inline constexpr int E_DATE = 50011; ///< QDateEdit; a QDate
inline constexpr int E_DATETIME = 50012; ///< QDateTimeEdit; a QDateTime
inline constexpr int E_BROWSE_FILE_SAVE = 50013; ///< a path to write to and a button to choose it
inline constexpr int E_BROWSE_FILE_SAVE_BUTTON = 50014; ///< that button alone
inline constexpr int E_CLOSE_BUTTON = 50015; ///< closes the form without an answer
inline constexpr int E_MULTICONFIG = 50016; ///< the user's choice among named configurations
inline constexpr int E_MENU_BUTTON = 50017; ///< a button with a menu of check marks; list data
inline constexpr int E_HELP_BUTTON = 50018; ///< asks for help

/// An entry of the form data map without a widget.
inline constexpr int E_DATA = 60000;

/// \return  true for a type that opens a layout
constexpr bool isLayoutOpener(int eleType)
{
    return eleType >= E_LAYOUT_V && eleType <= E_LAYOUT_FLOW;
}

/// Flags of a window with a title and no buttons in its frame.
inline constexpr Qt::WindowFlags F_DIALOG_TITLE =
    Qt::Window | Qt::WindowTitleHint | Qt::CustomizeWindowHint;
/// Flags of a window with a title, "minimise" and "maximise".
inline constexpr Qt::WindowFlags F_DIALOG_TITLE_MINMAX =
    F_DIALOG_TITLE | Qt::WindowMinimizeButtonHint | Qt::WindowMaximizeButtonHint;
/// Flags of a window with a title, "minimise", "maximise" and "close".
inline constexpr Qt::WindowFlags F_DIALOG_TITLE_MINMAX_CLOSE =
    F_DIALOG_TITLE_MINMAX | Qt::WindowCloseButtonHint;

} // namespace mod_form_qt
