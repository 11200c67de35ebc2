#pragma once

#include "event_bench.h"

/// The inputs that a form listens to, each with the signal it reports by.
namespace signal_table {

using namespace mod_form_qt;

/// One row of the table of signals.
struct Wiring
{
    int eleType = 0;
    std::bitset<256> attr;
    DataVariant data;
    int widgetType = 0;
    std::function<QWidget*()> make;
    QStringList signalNames;
    /// Changes the widget as a user does.
    std::function<void(QWidget*)> edit;
    /// What the map then holds.
    QVariant stored;
};

inline void pressDown(QWidget* widget)
{
    QTest::keyClick(widget, Qt::Key_Down);
}

inline void pressSpace(QWidget* widget)
{
    QTest::keyClick(widget, Qt::Key_Space);
}

inline void typeSeven(QWidget* widget)
{
    QTest::keyClick(widget, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(widget, "7");
}

inline void pressReturn(QWidget* widget)
{
    QTest::keyClick(widget, Qt::Key_Return);
}

inline void typeSevenAndReturn(QWidget* widget)
{
    typeSeven(widget);
    pressReturn(widget);
}

inline QDateTimeEdit* dateEditAt(QDateTimeEdit* edit)
{
    edit->setDisplayFormat("dd.MM.yyyy"); // the first section is the one that keys change
    edit->setDate(QDate(2024, 5, 6));
    edit->setTime(QTime(0, 0));
    return edit;
}

inline void pressUp(QWidget* widget)
{
    QTest::keyClick(widget, Qt::Key_Up);
}

inline void pressUpAndReturn(QWidget* widget)
{
    pressUp(widget);
    pressReturn(widget);
}

template <typename W>
W* listWith(const T_LISTDATA& list, const std::bitset<256>& attr)
{
    auto* widget = new W;
    fillListWidget(widget, list, attr);
    return widget;
}

inline void checkInBox(QWidget* widget, int index)
{
    auto* box = qobject_cast<QComboBox*>(widget);
    box->showPopup();
    QAbstractItemView* view = box->view();
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {},
                      view->visualRect(box->model()->index(index, 0)).center());
    box->hidePopup();
}

using Table = std::vector<std::pair<const char*, Wiring>>;

inline void addTexts(Table& table)
{
    const auto type = [](QWidget* widget) { QTest::keyClicks(widget, "x"); };
    const auto typeAndReturn = [type](QWidget* widget) {
        type(widget);
        pressReturn(widget);
    };
    table.push_back({"line edit",
                     {E_LINEEDIT,
                      A_NONE,
                      QVariant("a"),
                      E_LINEEDIT,
                      [] { return new QLineEdit("a"); },
                      {"textChanged"},
                      type,
                      "ax"}});
    table.push_back({"line edit that reports at its end",
                     {E_LINEEDIT,
                      A_LINEEDIT_UPDATE_ON_FINISH,
                      QVariant("a"),
                      E_LINEEDIT,
                      [] { return new QLineEdit("a"); },
                      {"editingFinished"},
                      typeAndReturn,
                      "ax"}});
    table.push_back({"number as a line edit",
                     {E_NUMBER,
                      A_NONE,
                      QVariant(1),
                      E_LINEEDIT,
                      [] { return new QLineEdit("1"); },
                      {"textChanged"},
                      typeSeven,
                      "7"}});
    table.push_back({"text edit",
                     {E_TEXTEDIT,
                      A_NONE,
                      QVariant(""),
                      E_TEXTEDIT,
                      [] {
                          auto* edit = new QTextEdit;
                          edit->setAcceptRichText(false);
                          return edit;
                      },
                      {"textChanged"},
                      type,
                      "x"}});
    table.push_back({"plain text edit",
                     {E_PLAINTEXT,
                      A_NONE,
                      QVariant(""),
                      E_PLAINTEXT,
                      [] { return new QPlainTextEdit; },
                      {"textChanged"},
                      type,
                      "x"}});
}

inline void addChoices(Table& table)
{
    table.push_back({"check box",
                     {E_CHECKBOX,
                      A_NONE,
                      QVariant(false),
                      E_CHECKBOX,
                      [] { return new QCheckBox; },
                      {"checkStateChanged"},
                      pressSpace,
                      true}});
    table.push_back({"radio button",
                     {E_RADIOBUTTON,
                      A_NONE,
                      QVariant(false),
                      E_RADIOBUTTON,
                      [] { return new QRadioButton; },
                      {"toggled"},
                      pressSpace,
                      true}});
    table.push_back({"combo box",
                     {E_COMBOBOX,
                      A_NONE,
                      letters(3, "a"),
                      E_COMBOBOX,
                      [] { return listWith<QComboBox>(letters(3, "a"), A_NONE); },
                      {"currentIndexChanged"},
                      pressDown,
                      QVariantList {"b"}}});
    table.push_back({"sorted combo box",
                     {E_COMBOBOX,
                      A_SORTED,
                      T_LISTDATA {{"z", true, 1, {}}, {"b", false, 2, {}}, {"a", false, 3, {}}},
                      E_COMBOBOX,
                      [] {
                          return listWith<QComboBox>(
                              {{"z", true, 1, {}}, {"b", false, 2, {}}, {"a", false, 3, {}}},
                              A_SORTED);
                      },
                      {"currentIndexChanged"},
                      [](QWidget* widget) { QTest::keyClick(widget, Qt::Key_Up); },
                      QVariantList {2}}});
    table.push_back({"check combo box",
                     {E_CHECKCOMBOBOX,
                      A_NONE,
                      letters(3, "a"),
                      E_CHECKCOMBOBOX,
                      [] { return listWith<helper::CheckComboBox>(letters(3, "a"), A_NONE); },
                      {"checkedChanged"},
                      [](QWidget* widget) { checkInBox(widget, 2); },
                      QVariantList {"a", "c"}}});
    table.push_back({"list with check boxes",
                     {E_LISTBOX,
                      A_CHECKBOX | A_MULTISEL,
                      letters(3, "b"),
                      E_LISTBOX,
                      [] {
                          auto* list =
                              listWith<QListWidget>(letters(3, "b"), A_CHECKBOX | A_MULTISEL);
                          list->setCurrentRow(0);
                          return list;
                      },
                      {"itemChanged"},
                      pressSpace,
                      QVariantList {"a", "b"}}});
    table.push_back({"list",
                     {E_LISTBOX,
                      A_NONE,
                      letters(3, "b"),
                      E_LISTBOX,
                      [] { return listWith<QListWidget>(letters(3, "b"), A_NONE); },
                      {"itemSelectionChanged"},
                      pressDown,
                      QVariantList {"c"}}});
}

inline void addNumbers(Table& table)
{
    const auto spin = [] { return new QSpinBox; };
    const auto decimal = [] {
        auto* box = new QDoubleSpinBox;
        box->setLocale(QLocale::c());
        return box;
    };
    table.push_back({"spin box at once",
                     {E_NUMBER,
                      A_IMMEDIATE_DATA_UPDATE,
                      QVariant(0),
                      E_NUMBER,
                      spin,
                      {"valueChanged"},
                      typeSeven,
                      7}});
    table.push_back({"spin box",
                     {E_NUMBER,
                      A_NONE,
                      QVariant(0),
                      E_NUMBER,
                      spin,
                      {"editingFinished"},
                      typeSevenAndReturn,
                      7}});
    table.push_back({"decimal spin box at once",
                     {E_NUMBER,
                      A_IMMEDIATE_DATA_UPDATE,
                      QVariant(0.0),
                      E_NUMBER,
                      decimal,
                      {"valueChanged"},
                      typeSeven,
                      7.0}});
    table.push_back({"decimal spin box",
                     {E_NUMBER,
                      A_NONE,
                      QVariant(0.0),
                      E_NUMBER,
                      decimal,
                      {"editingFinished"},
                      typeSevenAndReturn,
                      7.0}});
}

inline void addDates(Table& table)
{
    const QDate first(2024, 5, 6);
    const QDate second(2024, 5, 7);
    const auto date = [] { return dateEditAt(new QDateEdit); };
    const auto moment = [] { return dateEditAt(new QDateTimeEdit); };
    table.push_back({"date at once",
                     {E_DATE,
                      A_IMMEDIATE_DATA_UPDATE,
                      QVariant(first),
                      E_DATE,
                      date,
                      {"dateChanged"},
                      pressUp,
                      second}});
    table.push_back({"date",
                     {E_DATE,
                      A_NONE,
                      QVariant(first),
                      E_DATE,
                      date,
                      {"editingFinished"},
                      pressUpAndReturn,
                      second}});
    table.push_back({"date and time at once",
                     {E_DATETIME,
                      A_IMMEDIATE_DATA_UPDATE,
                      QVariant(first.startOfDay()),
                      E_DATETIME,
                      moment,
                      {"dateChanged"},
                      pressUp,
                      second.startOfDay()}});
    table.push_back({"date and time",
                     {E_DATETIME,
                      A_NONE,
                      QVariant(first.startOfDay()),
                      E_DATETIME,
                      moment,
                      {"editingFinished"},
                      pressUpAndReturn,
                      second.startOfDay()}});
}

inline void addCallers(Table& table)
{
    const auto combo = [] {
        auto* box = new QComboBox;
        box->addItem("one", 1);
        box->addItem("two", 2);
        return box;
    };
    const auto checks = [] {
        auto* box = new helper::CheckComboBox;
        box->addCheckItem("one", 1, true);
        box->addCheckItem("two", 2, false);
        return box;
    };
    table.push_back({"caller's line edit",
                     {E_WIDGET,
                      A_NONE,
                      {},
                      E_WIDGET,
                      [] { return new QLineEdit("a"); },
                      {"textChanged"},
                      [](QWidget* widget) { QTest::keyClicks(widget, "x"); },
                      "ax"}});
    table.push_back({"caller's check box",
                     {E_WIDGET,
                      A_NONE,
                      {},
                      E_WIDGET,
                      [] { return new QCheckBox; },
                      {"checkStateChanged"},
                      pressSpace,
                      true}});
    table.push_back({"caller's radio button",
                     {E_WIDGET,
                      A_NONE,
                      {},
                      E_WIDGET,
                      [] { return new QRadioButton; },
                      {"toggled"},
                      pressSpace,
                      true}});
    table.push_back({"caller's combo box",
                     {E_WIDGET,
                      A_NONE,
                      {},
                      E_WIDGET,
                      combo,
                      {"currentIndexChanged"},
                      pressDown,
                      QVariantList {2}}});
    table.push_back({"caller's check combo box",
                     {E_WIDGET,
                      A_NONE,
                      {},
                      E_WIDGET,
                      checks,
                      {"checkedChanged"},
                      [](QWidget* widget) { checkInBox(widget, 1); },
                      QVariantList {1, 2}}});
}

inline const Table& wirings()
{
    static const Table table = [] {
        Table rows;
        addTexts(rows);
        addChoices(rows);
        addNumbers(rows);
        addDates(rows);
        addCallers(rows);
        return rows;
    }();
    return table;
}

} // namespace signal_table
