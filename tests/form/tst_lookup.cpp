#include "tests/form/hand_made_form.h"

#include <QTest>

using namespace mod_form_qt;

class tst_lookup : public QObject
{
    Q_OBJECT

private slots:
    void findsEachClassByItsKey();
    void findsNothingOfAnotherClass();
    void findsByTypeOrByPosition();
    void findsTheFirstPositionOnlyIfAsked();
    void handsOutTheRowsLabel();
    void findsARowByItsVariable();
    void findsARowByItsList();
    void findsARowWhoseEntryWasReplaced();
    void findsARowByAPointerToItsVariable();
    void otherVariablesFindNothing();
    void nullMapFindsNothing();
};

void tst_lookup::findsEachClassByItsKey()
{
    HandMadeForm form;
    const auto* map = &form.map;
    auto* label = form.add<QLabel>(E_LABEL, "label");
    auto* line = form.add<QLineEdit>(E_LINEEDIT, "line");
    auto* plain = form.add<QPlainTextEdit>(E_PLAINTEXT, "plain");
    auto* text = form.add<QTextEdit>(E_TEXTEDIT, "text");
    auto* date = form.add<QDateEdit>(E_DATE, "date");
    auto* check = form.add<QCheckBox>(E_CHECKBOX, "check");
    auto* radio = form.add<QRadioButton>(E_RADIOBUTTON, "radio");
    auto* combo = form.add<QComboBox>(E_COMBOBOX, "combo");
    auto* checks = form.add<helper::CheckComboBox>(E_CHECKCOMBOBOX, "checks");
    auto* list = form.add<QListWidget>(E_LISTBOX, "list");
    auto* spin = form.add<QSpinBox>(E_NUMBER, "spin");
    auto* decimal = form.add<QDoubleSpinBox>(E_NUMBER, "double");
    auto* button = form.add<QPushButton>(E_BUTTON, "button");
    QCOMPARE(INFO::labelByKey(map, "label"), label);
    QCOMPARE(INFO::lineEditByKey(map, "line"), line);
    QCOMPARE(INFO::plainTextEditByKey(map, "plain"), plain);
    QCOMPARE(INFO::textEditByKey(map, "text"), text);
    QCOMPARE(INFO::dateEditByKey(map, "date"), date);
    QCOMPARE(INFO::checkBoxByKey(map, "check"), check);
    QCOMPARE(INFO::radioButtonByKey(map, "radio"), radio);
    QCOMPARE(INFO::comboBoxByKey(map, "combo"), combo);
    QCOMPARE(INFO::checkComboBoxByKey(map, "checks"), checks);
    QCOMPARE(INFO::listWidgetByKey(map, "list"), list);
    QCOMPARE(INFO::spinBoxByKey(map, "spin"), spin);
    QCOMPARE(INFO::doubleSpinBoxByKey(map, "double"), decimal);
    QCOMPARE(INFO::pushButtonByKey(map, "button"), button);
    QCOMPARE(INFO::widgetByKey(map, "line"), line);
}

void tst_lookup::findsNothingOfAnotherClass()
{
    HandMadeForm form;
    form.add<QLineEdit>(E_LINEEDIT, "line");
    QVERIFY(!INFO::comboBoxByKey(&form.map, "line"));
    QVERIFY(!INFO::lineEditByKey(&form.map, "missing"));
    QVERIFY(!INFO::widgetByKey(&form.map, "line", 5));
}

void tst_lookup::findsByTypeOrByPosition()
{
    HandMadeForm form;
    auto* edit = form.put(new QLineEdit(&form.window), E_LINEEDIT, E_BROWSE_FOLDER, "7");
    auto* button = form.put(new QPushButton(&form.window), E_BUTTON, E_BROWSE_FOLDER, "7");
    QCOMPARE(INFO::pushButtonByKey(&form.map, 7), button);
    QCOMPARE(INFO::pushButtonByKey(&form.map, 7, E_BROWSE_FOLDER), button);
    QCOMPARE(INFO::pushButtonByKey(&form.map, 7, 1), button);
    QVERIFY(!INFO::pushButtonByKey(&form.map, 7, 0));
    QCOMPARE(INFO::lineEditByKey(&form.map, 7, E_BROWSE_FOLDER), edit);
    QCOMPARE(INFO::widgetByKey(&form.map, 7, 1), button);
}

void tst_lookup::findsTheFirstPositionOnlyIfAsked()
{
    HandMadeForm form;
    form.put(new QLabel(&form.window), E_LABEL, E_LABEL, "a");
    auto* edit = form.put(new QLineEdit(&form.window), E_LINEEDIT, E_LINEEDIT, "a");
    QCOMPARE(INFO::lineEditByKey(&form.map, "a"), edit);
    QVERIFY(!INFO::lineEditByKey(&form.map, "a", E_LINEEDIT, FIND_POS_FIRST));
}

void tst_lookup::handsOutTheRowsLabel()
{
    HandMadeForm form;
    auto* label = form.put(new QLabel(&form.window), E_LABEL, E_LABEL, "a");
    form.put(new QLineEdit(&form.window), E_LINEEDIT, E_LINEEDIT, "a");
    form.add<QLineEdit>(E_LINEEDIT, "b");
    QPointer<QWidget> other;
    INFO::lineEditByKey(&form.map, "a", E_LINEEDIT, FIND_POS_ANY, &other);
    QCOMPARE(other.data(), label);
    INFO::lineEditByKey(&form.map, "b", E_LINEEDIT, FIND_POS_ANY, &other);
    QVERIFY(!other);
}

void tst_lookup::findsARowByItsVariable()
{
    QList<QVariant> variables(12);
    HandMadeForm form;
    int next = 0;
    const auto bound = [&](auto* widget, int type) {
        const QString key = QString::number(next);
        form.put(widget, type, type, key);
        form.bind(key, &variables[next++]);
        return widget;
    };
    auto* line = bound(new QLineEdit, E_LINEEDIT);
    auto* plain = bound(new QPlainTextEdit, E_PLAINTEXT);
    auto* text = bound(new QTextEdit, E_TEXTEDIT);
    auto* date = bound(new QDateEdit, E_DATE);
    auto* check = bound(new QCheckBox, E_CHECKBOX);
    auto* radio = bound(new QRadioButton, E_RADIOBUTTON);
    auto* combo = bound(new QComboBox, E_COMBOBOX);
    auto* checks = bound(new helper::CheckComboBox, E_CHECKCOMBOBOX);
    auto* list = bound(new QListWidget, E_LISTBOX);
    auto* spin = bound(new QSpinBox, E_NUMBER);
    auto* decimal = bound(new QDoubleSpinBox, E_NUMBER);
    auto* button = bound(new QPushButton, E_BUTTON);
    const auto* map = &form.map;
    QCOMPARE(INFO::lineEditByVar(map, variables[0]), line);
    QCOMPARE(INFO::plainTextEditByVar(map, variables[1]), plain);
    QCOMPARE(INFO::textEditByVar(map, variables[2]), text);
    QCOMPARE(INFO::dateEditByVar(map, variables[3]), date);
    QCOMPARE(INFO::checkBoxByVar(map, variables[4]), check);
    QCOMPARE(INFO::radioButtonByVar(map, variables[5]), radio);
    QCOMPARE(INFO::comboBoxByVar(map, variables[6]), combo);
    QCOMPARE(INFO::checkComboBoxByVar(map, variables[7]), checks);
    QCOMPARE(INFO::listWidgetByVar(map, variables[8]), list);
    QCOMPARE(INFO::spinBoxByVar(map, variables[9]), spin);
    QCOMPARE(INFO::doubleSpinBoxByVar(map, variables[10]), decimal);
    QCOMPARE(INFO::pushButtonByVar(map, variables[11]), button);
    QVERIFY(!INFO::comboBoxByVar(map, variables[0]));
}

void tst_lookup::findsARowByItsList()
{
    std::array<T_LISTDATA, 4> lists;
    HandMadeForm form;
    auto* combo = form.add<QComboBox>(E_COMBOBOX, "0");
    auto* checks = form.add<helper::CheckComboBox>(E_CHECKCOMBOBOX, "1");
    auto* list = form.add<QListWidget>(E_LISTBOX, "2");
    auto* button = form.put(new QPushButton(&form.window), E_BUTTON, E_MENU_BUTTON, "3");
    for (int index = 0; index < 4; ++index)
        form.bind(QString::number(index), &lists[index]);
    QCOMPARE(INFO::comboBoxByVar(&form.map, lists[0]), combo);
    QCOMPARE(INFO::checkComboBoxByVar(&form.map, lists[1]), checks);
    QCOMPARE(INFO::listWidgetByVar(&form.map, lists[2]), list);
    QCOMPARE(INFO::pushButtonByVar(&form.map, lists[3]), button);
    QVERIFY(!INFO::comboBoxByVar(&form.map, lists[2]));
}

void tst_lookup::findsARowWhoseEntryWasReplaced()
{
    QVariant variable;
    HandMadeForm form;
    auto* edit = form.add<QLineEdit>(E_LINEEDIT, "a");
    form.bind("a", &variable);
    form.map.insert("a", "plain");
    QCOMPARE(INFO::lineEditByVar(&form.map, variable), edit);
}

void tst_lookup::findsARowByAPointerToItsVariable()
{
    QVariant variable;
    HandMadeForm form;
    auto* edit = form.add<QLineEdit>(E_LINEEDIT, "a");
    form.bind("a", &variable);
    const QVariant pointer = QVariant::fromValue(&variable);
    QCOMPARE(INFO::lineEditByVar(&form.map, pointer), edit);
    QCOMPARE(INFO::widgetFromVariantPtr<QWidget>(&form.map, pointer), edit);
}

void tst_lookup::otherVariablesFindNothing()
{
    QVariant variable = "x";
    const QVariant equal = "x";
    HandMadeForm form;
    form.add<QLineEdit>(E_LINEEDIT, "a");
    form.bind("a", &variable);
    QVERIFY(!INFO::lineEditByVar(&form.map, equal));
    QVERIFY(!INFO::lineEditByVar(&form.map, QVariant()));
    QVERIFY(INFO::boundRow(&form.map, equal).empty());
}

void tst_lookup::nullMapFindsNothing()
{
    const QVariant variable;
    const T_LISTDATA list;
    QVERIFY(!INFO::lineEditByKey(nullptr, "a"));
    QVERIFY(!INFO::lineEditByVar(nullptr, variable));
    QVERIFY(!INFO::comboBoxByVar(nullptr, list));
}

QTEST_MAIN(tst_lookup)
#include "tst_lookup.moc"
