#include "form/values/list_widgets.h"
#include "tests/form/hand_made_form.h"

#include <QTest>

using namespace mod_form_qt;

class tst_set_data : public QObject
{
    Q_OBJECT

private slots:
    void setDataWithAKeyThatHasNoWidgetOnlyUpdatesTheMap();
    void aRowWhoseWidgetsAreGoneHasOnlyItsEntry();
    void valueRowsShowTheValue_data();
    void valueRowsShowTheValue();
    void writingTheSameValueToAValueRowChangesNothingAndEmitsNothing();
    void aSetDataWithoutEmitChangeRaisesNothing();
    void changesAreRaisedWhenAllValuesAreIn();
    void onlyValidValuesAreRaisedWhereTheRowAsksForIt();
    void temporaryKeysArePassedOver();
    void emptyKeyIsPassedOver();
    void nullMapTakesNothing();
    void theMapMayBeGivenToItself();
    void rowThatSkipsSetDataIsLeftAlone();
    void labelsAreNoInputs();
    void boundRowWritesItsVariable();
    void boundRowWritesAlsoThePlainEntryThatReplacedItsPointer();
    void equalEntryDoesNotHideAStaleVariable();
    void pointerAsValueGivesWhatItPointsAt();
    void numberIsShownInTheRowsLocale();
    void boundVariableIsGivenAnotherValue();
    void unboundVariableIsLeftAlone();
    void keylessRowIsFoundByItsVariable();
};

void tst_set_data::setDataWithAKeyThatHasNoWidgetOnlyUpdatesTheMap()
{
    QVariant variable = 1;
    HandMadeForm form;
    auto* edit = form.add<QLineEdit>(E_LINEEDIT, "other");
    form.map.insert("bound", QVariant::fromValue(&variable));
    form.map.insert("number", "05");
    QCOMPARE(INFO::setData(&form.map, {{"new", 3}, {"bound", 2}, {"number", 5}}, true), 3);
    QCOMPARE(form.map["new"], QVariant(3));
    QCOMPARE(variable, QVariant(2));
    QVERIFY(INFO::isVariantPtr(form.map["bound"]));
    QCOMPARE(form.map["number"].typeId(), int(QMetaType::Int));
    QCOMPARE(edit->text(), "");
}

void tst_set_data::aRowWhoseWidgetsAreGoneHasOnlyItsEntry()
{
    HandMadeForm form;
    delete form.add<QLineEdit>(E_LINEEDIT, "a");
    QCOMPARE(INFO::setData(&form.map, "a", "x", true), 1);
    QCOMPARE(form.map["a"], QVariant("x"));
}

void tst_set_data::valueRowsShowTheValue_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QVariant>("value");
    const QDate date(2024, 2, 29);
    QTest::newRow("line edit") << E_LINEEDIT << QVariant("x");
    QTest::newRow("text edit") << E_TEXTEDIT << QVariant("x");
    QTest::newRow("plain text") << E_PLAINTEXT << QVariant("x");
    QTest::newRow("check box") << E_CHECKBOX << QVariant(true);
    QTest::newRow("radio button") << E_RADIOBUTTON << QVariant(true);
    QTest::newRow("number") << E_NUMBER << QVariant(7);
    QTest::newRow("date") << E_DATE << QVariant(date);
    QTest::newRow("moment") << E_DATETIME << QVariant(QDateTime(date, QTime(1, 2)));
}

void tst_set_data::valueRowsShowTheValue()
{
    QFETCH(int, type);
    QFETCH(QVariant, value);
    HandMadeForm form;
    QWidget* widget = nullptr;
    switch (type) {
    case E_LINEEDIT:
        widget = form.add<QLineEdit>(type, "a");
        break;
    case E_TEXTEDIT:
        widget = form.add<QTextEdit>(type, "a");
        break;
    case E_PLAINTEXT:
        widget = form.add<QPlainTextEdit>(type, "a");
        break;
    case E_CHECKBOX:
        widget = form.add<QCheckBox>(type, "a");
        break;
    case E_RADIOBUTTON:
        widget = form.add<QRadioButton>(type, "a");
        break;
    case E_NUMBER:
        widget = form.add<QSpinBox>(type, "a");
        break;
    case E_DATE:
        widget = form.add<QDateEdit>(type, "a");
        break;
    default:
        widget = form.add<QDateTimeEdit>(type, "a");
    }
    if (auto* edit = qobject_cast<QTextEdit*>(widget))
        edit->setAcceptRichText(false);
    QCOMPARE(INFO::setData(&form.map, "a", value, false), 1);
    QVariant shown;
    INFO::getSetData(widget, false, false, shown);
    QCOMPARE(shown, value);
    QCOMPARE(form.map["a"], value);
}

void tst_set_data::writingTheSameValueToAValueRowChangesNothingAndEmitsNothing()
{
    QVariant variable = 5;
    HandMadeForm form;
    auto* edit = form.add<QLineEdit>(E_LINEEDIT, "plain");
    auto* box = form.add<QSpinBox>(E_NUMBER, "bound");
    form.bind("bound", &variable);
    form.map.insert("plain", "x");
    edit->setText("not yet taken");
    Raised raised;
    raised.listen(edit, &QLineEdit::textChanged);
    raised.listen(box, &QSpinBox::editingFinished);
    const QMap<QString, QVariant> before = form.map;
    for (const bool emitChange : {false, true})
        QCOMPARE(INFO::setData(&form.map, {{"plain", "x"}, {"bound", 5}}, emitChange), 2);
    QCOMPARE(raised.count, 0);
    QCOMPARE(edit->text(), "not yet taken");
    QCOMPARE(form.map, before);
    QVERIFY(form.map.isSharedWith(before)); // not even copied
}

void tst_set_data::aSetDataWithoutEmitChangeRaisesNothing()
{
    HandMadeForm form;
    auto* edit = form.add<QLineEdit>(E_LINEEDIT, "a");
    Raised raised;
    raised.listen(edit, &QLineEdit::textChanged);
    INFO::setData(&form.map, "a", "x", false);
    QCOMPARE(edit->text(), "x");
    QCOMPARE(raised.count, 0);
}

void tst_set_data::changesAreRaisedWhenAllValuesAreIn()
{
    HandMadeForm form;
    auto* first = form.add<QLineEdit>(E_LINEEDIT, "a");
    auto* last = form.add<QSpinBox>(E_NUMBER, "z", A_IMMEDIATE_DATA_UPDATE);
    QStringList seen;
    connect(first, &QLineEdit::textChanged, first, [&] {
        seen << first->text() + last->text() + form.map["z"].toString()
                + (emitHelper::active ? "!" : "");
    });
    connect(last, &QSpinBox::valueChanged, last, [&] { seen << last->text(); });
    QCOMPARE(INFO::setData(&form.map, {{"a", "x"}, {"z", 3}}, true), 2);
    QCOMPARE(seen, QStringList({"x33!", "3"}));
    QVERIFY(!emitHelper::active);
}

void tst_set_data::onlyValidValuesAreRaisedWhereTheRowAsksForIt()
{
    HandMadeForm form;
    auto* combo = form.add<QComboBox>(E_COMBOBOX, "combo", A_INIT_EMIT_VALID);
    auto* date = form.add<QDateEdit>(E_DATE, "date", A_INIT_EMIT_VALID);
    auto* edit = form.add<QLineEdit>(E_LINEEDIT, "edit", A_INIT_EMIT_VALID);
    fillListWidget(combo, letters("AB", "A"), {});
    form.map.insert("combo", QVariant::fromValue(letters("AB", "A")));
    form.map.insert("edit", "x");
    Raised raised;
    raised.listen(combo, &QComboBox::currentIndexChanged);
    raised.listen(date, &QDateEdit::editingFinished);
    raised.listen(edit, &QLineEdit::textChanged);
    INFO::setData(&form.map, {{"combo", "no such value"}, {"date", QDate()}, {"edit", QVariant()}},
                  true);
    QCOMPARE(raised.count, 0);
    QCOMPARE(edit->text(), "");
    INFO::setData(&form.map, {{"combo", "b"}, {"date", QDate(2024, 1, 1)}, {"edit", "y"}}, true);
    QCOMPARE(raised.count, 3);
}

void tst_set_data::temporaryKeysArePassedOver()
{
    QMap<QString, QVariant> map;
    const QString temporary = INFO::buildAutomatikVarKeyForPtr("1");
    QCOMPARE(INFO::setData(&map, {{temporary, 1}, {"a", 2}}, false), 1);
    QCOMPARE(map, (QMap<QString, QVariant> {{"a", 2}}));
}

void tst_set_data::emptyKeyIsPassedOver()
{
    HandMadeForm form;
    auto* edit = form.add<QLineEdit>(E_LINEEDIT, "");
    QCOMPARE(INFO::setData(&form.map, "", "x", true), 0);
    QCOMPARE(edit->text(), "");
    QVERIFY(!form.map.contains(""));
}

void tst_set_data::nullMapTakesNothing()
{
    QCOMPARE(INFO::setData(nullptr, "a", 1, true), 0);
}

void tst_set_data::theMapMayBeGivenToItself()
{
    QVariant variable = 1;
    HandMadeForm form;
    auto* edit = form.add<QLineEdit>(E_LINEEDIT, "a");
    form.bind("a", &variable);
    form.map.insert("plain", 2);
    QCOMPARE(INFO::setData(&form.map, form.map, true), 2);
    QCOMPARE(variable, QVariant(1));
    QCOMPARE(form.map["plain"], QVariant(2));
    QVERIFY(edit);
}

void tst_set_data::rowThatSkipsSetDataIsLeftAlone()
{
    HandMadeForm form;
    auto* edit = form.add<QLineEdit>(E_LINEEDIT, "a", A_SKIP_SETDATA);
    edit->setText("own");
    form.map.insert("a", "own");
    QCOMPARE(INFO::setData(&form.map, "a", "x", true), 0);
    QCOMPARE(edit->text(), "own");
    QCOMPARE(form.map["a"], QVariant("own"));
}

void tst_set_data::labelsAreNoInputs()
{
    HandMadeForm form;
    auto* label = form.put(new QLabel("Title", &form.window), E_LABEL, E_LABEL, "a");
    auto* edit = form.put(new QLineEdit(&form.window), E_LINEEDIT, E_LINEEDIT, "a");
    QCOMPARE(INFO::setData(&form.map, "a", "x", true), 1);
    QCOMPARE(label->text(), "Title");
    QCOMPARE(edit->text(), "x");
}

void tst_set_data::boundRowWritesItsVariable()
{
    QVariant variable = "old";
    HandMadeForm form;
    auto* edit = form.add<QLineEdit>(E_LINEEDIT, "a");
    form.bind("a", &variable);
    QCOMPARE(INFO::setData(&form.map, "a", "new", false), 1);
    QCOMPARE(variable, QVariant("new"));
    QCOMPARE(edit->text(), "new");
    QCOMPARE(form.map["a"], QVariant::fromValue(&variable));
}

void tst_set_data::boundRowWritesAlsoThePlainEntryThatReplacedItsPointer()
{
    QVariant variable = "old";
    HandMadeForm form;
    auto* edit = form.add<QLineEdit>(E_LINEEDIT, "a");
    form.bind("a", &variable);
    form.map.insert("a", "replaced");
    INFO::setData(&form.map, "a", "new", false);
    QCOMPARE(variable, QVariant("new"));
    QCOMPARE(form.map["a"], QVariant("new"));
    QCOMPARE(edit->text(), "new");
}

void tst_set_data::equalEntryDoesNotHideAStaleVariable()
{
    QVariant variable = "old";
    HandMadeForm form;
    auto* edit = form.add<QLineEdit>(E_LINEEDIT, "a");
    form.bind("a", &variable);
    form.map.insert("a", "loaded");
    INFO::setData(&form.map, "a", "loaded", false);
    QCOMPARE(variable, QVariant("loaded"));
    QCOMPARE(edit->text(), "loaded");
}

void tst_set_data::pointerAsValueGivesWhatItPointsAt()
{
    QVariant source = "source's";
    QVariant variable = "old";
    HandMadeForm form;
    auto* edit = form.add<QLineEdit>(E_LINEEDIT, "a");
    form.bind("a", &variable);
    INFO::setData(&form.map, "a", QVariant::fromValue(&source), false);
    QCOMPARE(variable, QVariant("source's"));
    QCOMPARE(edit->text(), "source's");
}

void tst_set_data::numberIsShownInTheRowsLocale()
{
    HandMadeForm form;
    auto* german =
        form.add<QLineEdit>(E_NUMBER, "german", {}, {{"locale", QLocale(QLocale::German)}});
    auto* english = form.add<QLineEdit>(E_NUMBER, "english", {},
                                        {{"locale", QLocale(QLocale::English)}, {"precision", 3}});
    INFO::setData(&form.map, {{"german", 1234.5}, {"english", 0.1256}}, false);
    QCOMPARE(german->text(), "1234,5");
    QCOMPARE(english->text(), "0.126");
    QCOMPARE(form.map["german"], QVariant(1234.5));
    INFO::setData(&form.map, {{"german", "7,50"}, {"english", 12345}}, false);
    QCOMPARE(german->text(), "7,50");
    QCOMPARE(english->text(), "12345");
}

void tst_set_data::boundVariableIsGivenAnotherValue()
{
    QVariant text;
    QVariant number;
    QVariant on;
    HandMadeForm form;
    auto* edit = form.add<QLineEdit>(E_LINEEDIT, "text");
    auto* spin = form.add<QDoubleSpinBox>(E_NUMBER, "number");
    auto* check = form.add<QCheckBox>(E_CHECKBOX, "on");
    form.bind("text", &text);
    form.bind("number", &number);
    form.bind("on", &on);
    Raised raised;
    raised.listen(edit, &QLineEdit::textChanged);
    raised.listen(check, &QCheckBox::stateChanged);
    QVERIFY(INFO::setTextVariantPtr(&form.map, text, "x", false));
    QVERIFY(INFO::setDoubleVariantPtr(&form.map, number, 1.5, false));
    QVERIFY(INFO::setCheckedVariantPtr(&form.map, on, true, true));
    QCOMPARE(text, QVariant("x"));
    QCOMPARE(number, QVariant(1.5));
    QCOMPARE(on, QVariant(true));
    QCOMPARE(edit->text(), "x");
    QCOMPARE(spin->value(), 1.5);
    QVERIFY(check->isChecked());
    QCOMPARE(raised.count, 1);
}

void tst_set_data::unboundVariableIsLeftAlone()
{
    QVariant variable = "own";
    HandMadeForm form;
    form.add<QLineEdit>(E_LINEEDIT, "a");
    QVERIFY(!INFO::setTextVariantPtr(&form.map, variable, "x", true));
    QVERIFY(!INFO::setTextVariantPtr(nullptr, variable, "x", true));
    QCOMPARE(variable, QVariant("own"));
}

void tst_set_data::keylessRowIsFoundByItsVariable()
{
    QVariant variable = "own";
    HandMadeForm form;
    const QString key = INFO::buildAutomatikVarKeyForPtr("1");
    auto* edit = form.add<QLineEdit>(E_LINEEDIT, key);
    form.bind(key, &variable);
    QVERIFY(INFO::setTextVariantPtr(&form.map, variable, "x", false));
    QCOMPARE(edit->text(), "x");
    QCOMPARE(variable, QVariant("x"));
    QVERIFY(INFO::isVariantPtr(form.map[key]));
}

QTEST_MAIN(tst_set_data)
#include "tst_set_data.moc"
