#include "form/mod_form_qt.h"

#include <QtTest>
#include <QtWidgets>

#include <limits>

using namespace mod_form_qt;

namespace {

INFO rowWith(const DataVariant& data)
{
    return INFO(E_LINEEDIT, A_NONE, QVariant(), data);
}

} // namespace

class tst_info_row : public QObject
{
    Q_OBJECT

private slots:
    void aPlainRowIsEmpty();
    void theConstructorFillsTheFieldsInTheirOrder();
    void plainValuesAreHeldAsTheyAre_data();
    void plainValuesAreHeldAsTheyAre();
    void listDataIsHeldInTheRow();
    void pointersAreHeldUnderTheirTypes();
    void widgetsAndMenusAreHeldAsObjects();
    void noDataIsAnInvalidValue();
    void theWidgetsOfAnotherRowAreHeld();
    void copiesAreDeep();
    void copiesOfABoundRowShareTheVariable();
    void typesAreRegisteredByName_data();
    void typesAreRegisteredByName();
    void furtherTypesFitIntoAVariant();
    void aKeyFromANullTextIsEmpty();
    void keysFromNumbersAreTheirDecimalText_data();
    void keysFromNumbersAreTheirDecimalText();
    void keysFromTexts();
    void keysThatAreNoNumberAreZero();
    void aNumberAndItsTextAreTheSameKey();
    void keysAreAssignedFromAllTheirSources();
    void aRowTakesAKeyOfAnyKind();
};

void tst_info_row::aPlainRowIsEmpty()
{
    const INFO row;
    QCOMPARE(row.eleType, 0);
    QVERIFY(row.attr.none());
    QVERIFY(!row.param.isValid());
    QVERIFY(!row.data.isValid());
    QCOMPARE(row.key, "");
    QCOMPARE(row.callback.index(), 0U);
    QVERIFY(!row.anyData.has_value());
    QVERIFY(!row.userData.isValid());
}

void tst_info_row::theConstructorFillsTheFieldsInTheirOrder()
{
    const INFO row(E_NUMBER, A_MANDATORY, "Betrag", 12.5, "amount",
                   ContextCallback([](const CallbackContext&) { return 7; }), std::any(3), "own");
    QCOMPARE(row.eleType, E_NUMBER);
    QCOMPARE(row.attr, A_MANDATORY);
    QCOMPARE(row.param, QVariant("Betrag"));
    QCOMPARE(row.data, QVariant(12.5));
    QCOMPARE(row.key, "amount");
    QCOMPARE(row.callback.index(), 2U);
    QCOMPARE(std::any_cast<int>(row.anyData), 3);
    QCOMPARE(row.userData, QVariant("own"));

    const auto& [eleType, attr, param, data, key, callback, anyData, userData] = row;
    QCOMPARE(&eleType, &row.eleType);
    QCOMPARE(&data, &row.data);
    QCOMPARE(&userData, &row.userData);
}

void tst_info_row::plainValuesAreHeldAsTheyAre_data()
{
    QTest::addColumn<QVariant>("held");
    QTest::addColumn<QVariant>("expected");

    QTest::newRow("0") << rowWith(0).data << QVariant(0);
    QTest::newRow("1") << rowWith(1).data << QVariant(1);
    QTest::newRow("false") << rowWith(false).data << QVariant(false);
    QTest::newRow("double") << rowWith(1.5).data << QVariant(1.5);
    QTest::newRow("literal") << rowWith("text").data << QVariant("text");
    QTest::newRow("text") << rowWith(QString("text")).data << QVariant("text");
    QTest::newRow("date") << rowWith(QDate(2024, 2, 29)).data << QVariant(QDate(2024, 2, 29));
    QTest::newRow("map") << rowWith(QVariantMap {{"a", 1}}).data
                         << QVariant(QVariantMap {{"a", 1}});
    QTest::newRow("invalid value") << rowWith(QVariant()).data << QVariant();
}

void tst_info_row::plainValuesAreHeldAsTheyAre()
{
    QFETCH(QVariant, held);
    QFETCH(QVariant, expected);
    QCOMPARE(held, expected);
    QCOMPARE(held.typeId(), expected.typeId());
}

void tst_info_row::listDataIsHeldInTheRow()
{
    const T_LISTDATA list {{"Eins", true, 1, {{Qt::ToolTipRole, "Tipp"}}}, {"Zwei", false, 2, {}}};
    const INFO row = rowWith(list);
    QCOMPARE(row.data.typeId(), INFO::LISTDATA_METATYPE);
    QVERIFY(INFO::isListData(row.data));
    QVERIFY(row.data.value<T_LISTDATA>() == list);
}

void tst_info_row::pointersAreHeldUnderTheirTypes()
{
    T_LISTDATA list;
    const INFO listRow = rowWith(&list);
    QCOMPARE(listRow.data.typeId(), INFO::LISTDATA_PTR_METATYPE);
    QCOMPARE(listRow.data.value<T_LISTDATA_PTR>(), &list);

    QVariant variable;
    const INFO variableRow = rowWith(&variable);
    QCOMPARE(variableRow.data.typeId(), INFO::VARIANT_PTR_METATYPE);
    QCOMPARE(variableRow.data.value<T_VARIANT_PTR>(), &variable);

    const INFO nullRow = rowWith(static_cast<QVariant*>(nullptr));
    QCOMPARE(nullRow.data.typeId(), INFO::VARIANT_PTR_METATYPE);
    QVERIFY(!nullRow.data.value<T_VARIANT_PTR>());
}

void tst_info_row::widgetsAndMenusAreHeldAsObjects()
{
    QMenu menu;
    QLineEdit edit;
    const INFO menuRow = rowWith(&menu);
    QCOMPARE(menuRow.data.typeId(), int(QMetaType::QObjectStar));
    QCOMPARE(menuRow.data.value<QObject*>(), &menu);
    QCOMPARE(menuRow.data.value<QMenu*>(), &menu);
    QCOMPARE(rowWith(&edit).data.value<QWidget*>(), &edit);
}

void tst_info_row::noDataIsAnInvalidValue()
{
    QVERIFY(!rowWith({}).data.isValid());
    QVERIFY(!rowWith(WIDGET_INFO()).data.isValid());
    QVERIFY(!INFO(E_LINEEDIT).data.isValid());
}

void tst_info_row::theWidgetsOfAnotherRowAreHeld()
{
    QLineEdit edit;
    WIDGET_INFO widgets;
    widgets.add(&edit, E_LINEEDIT, E_LINEEDIT, 0, "a", A_NONE, {}, nullptr);
    const INFO row = rowWith(widgets);
    QCOMPARE(row.data.typeId(), INFO::WIDGET_INFO_METATYPE);
    QVERIFY(row.data.value<WIDGET_INFO>() == widgets);
}

void tst_info_row::copiesAreDeep()
{
    int calls = 0;
    const INFO row(E_COMBOBOX, A_SORTED, QVariantMap {{"title", "Art"}},
                   T_LISTDATA {{"Eins", true, 1, {}}}, "kind",
                   ContextCallback([&calls](const CallbackContext&) { return ++calls; }),
                   std::any(QString("payload")), 5);
    INFO copy = row;
    copy.eleType = E_LISTBOX;
    copy.attr = A_NONE;
    copy.param = "other";
    auto list = copy.data.value<T_LISTDATA>();
    std::get<bool>(list.front()) = false;
    copy.data = QVariant::fromValue(list);
    copy.key = "other";
    copy.callback = {};
    std::any_cast<QString&>(copy.anyData) = "other";
    copy.userData = 6;

    INFO assigned;
    assigned = row;
    for (const INFO& original : {row, assigned}) {
        QCOMPARE(original.eleType, E_COMBOBOX);
        QCOMPARE(original.attr, A_SORTED);
        QCOMPARE(original.param, QVariant(QVariantMap {{"title", "Art"}}));
        QVERIFY(std::get<bool>(original.data.value<T_LISTDATA>().front()));
        QCOMPARE(original.key, "kind");
        QCOMPARE(original.callback.index(), 2U);
        QCOMPARE(std::any_cast<QString>(original.anyData), "payload");
        QCOMPARE(original.userData, QVariant(5));
    }
    QCOMPARE(calls, 0);
}

void tst_info_row::copiesOfABoundRowShareTheVariable()
{
    QVariant variable = 1;
    const INFO row = rowWith(&variable);
    const INFO copy = row;
    *copy.data.value<T_VARIANT_PTR>() = 2;
    QCOMPARE(variable, QVariant(2));
}

void tst_info_row::typesAreRegisteredByName_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<int>("typeId");

    QTest::newRow("mod_form_qt::T_WIDGET_INFO")
        << INFO::WIDGET_INFO_METATYPE << QMetaType::fromType<WIDGET_INFO>().id();
    QTest::newRow("mod_form_qt::T_LISTDATA")
        << INFO::LISTDATA_METATYPE << QMetaType::fromType<std::vector<ListItem>>().id();
    QTest::newRow("mod_form_qt::T_LISTDATA_PTR")
        << INFO::LISTDATA_PTR_METATYPE << QMetaType::fromType<std::vector<ListItem>*>().id();
    QTest::newRow("mod_form_qt::T_VARIANT_PTR")
        << INFO::VARIANT_PTR_METATYPE << QMetaType::fromType<QVariant*>().id();
    QTest::newRow("mod_form_qt::T_VARMAP_SHARED_PTR")
        << INFO::VARMAP_SHARED_PTR_METATYPE
        << QMetaType::fromType<QSharedPointer<QMap<QString, QVariant>>>().id();
}

void tst_info_row::typesAreRegisteredByName()
{
    QFETCH(int, id);
    QVERIFY(id > QMetaType::User);
    QTEST(id, "typeId");
    QCOMPARE(QMetaType::fromName(QTest::currentDataTag()).id(), id);
}

void tst_info_row::furtherTypesFitIntoAVariant()
{
    QAction action;
    QTimer timer;
    QStatusBar bar;
    QTabWidget tabs;
    QMenuBar menuBar;
    using Alignments = QMap<int, QFlags<Qt::AlignmentFlag>>;
    const Alignments alignments {{E_LABEL, Qt::AlignRight}};
    QCOMPARE(QVariant::fromValue(alignments).value<Alignments>(), alignments);
    QCOMPARE(QVariant::fromValue(QPointer<QObject>(&timer)).value<QPointer<QObject>>(), &timer);
    QCOMPARE(QVariant::fromValue(QPointer<QAction>(&action)).value<QPointer<QAction>>(), &action);
    QCOMPARE(QVariant::fromValue(QPointer<QTimer>(&timer)).value<QPointer<QTimer>>(), &timer);
    QCOMPARE(QVariant::fromValue(QPointer<QStatusBar>(&bar)).value<QPointer<QStatusBar>>(), &bar);
    const QList<QPointer<QObject>> objects {&timer, &action};
    QCOMPARE(QVariant::fromValue(objects).value<QList<QPointer<QObject>>>(), objects);
    const QList<QPointer<QStatusBar>> bars {&bar};
    QCOMPARE(QVariant::fromValue(bars).value<QList<QPointer<QStatusBar>>>(), bars);
    QCOMPARE(QVariant::fromValue(&action).value<QAction*>(), &action);
    QCOMPARE(QVariant::fromValue(&menuBar).value<QMenuBar*>(), &menuBar);
    QCOMPARE(QVariant::fromValue(&bar).value<QStatusBar*>(), &bar);
    QCOMPARE(QVariant::fromValue(&tabs).value<QTabWidget*>(), &tabs);
    QCOMPARE(QVariant::fromValue(Qt::Checked).value<Qt::CheckState>(), Qt::Checked);
    QCOMPARE(QVariant::fromValue(Qt::Alignment(Qt::AlignTop)).value<Qt::Alignment>(),
             Qt::Alignment(Qt::AlignTop));
}

void tst_info_row::aKeyFromANullTextIsEmpty()
{
    const MAP_KEY_TYPE key(static_cast<const char*>(nullptr));
    QVERIFY(key.isEmpty());
    QCOMPARE(key.toString(), "");
    QVERIFY(MAP_KEY_TYPE().isEmpty());
}

void tst_info_row::keysFromNumbersAreTheirDecimalText_data()
{
    QTest::addColumn<qlonglong>("number");
    QTest::addColumn<QString>("text");

    QTest::newRow("-1") << -1LL << "-1";
    QTest::newRow("0") << 0LL << "0";
    QTest::newRow("lowest") << std::numeric_limits<qlonglong>::min() << "-9223372036854775808";
    QTest::newRow("highest") << std::numeric_limits<qlonglong>::max() << "9223372036854775807";
}

void tst_info_row::keysFromNumbersAreTheirDecimalText()
{
    QFETCH(qlonglong, number);
    const MAP_KEY_TYPE key(number);
    QTEST(key.toString(), "text");
    QCOMPARE(key.toInt64(), number);
}

void tst_info_row::keysFromTexts()
{
    QCOMPARE(MAP_KEY_TYPE("größe").toString(), "größe");
    QCOMPARE(MAP_KEY_TYPE(QString("größe")).toString(), "größe");
    QCOMPARE(MAP_KEY_TYPE("").toString(), "");
    QCOMPARE(MAP_KEY_TYPE("007").toInt64(), 7);
}

void tst_info_row::keysThatAreNoNumberAreZero()
{
    QCOMPARE(MAP_KEY_TYPE("name").toInt64(), 0);
    QCOMPARE(MAP_KEY_TYPE().toInt64(), 0);
    QCOMPARE(MAP_KEY_TYPE("9223372036854775808").toInt64(), 0);
}

void tst_info_row::aNumberAndItsTextAreTheSameKey()
{
    QVERIFY(MAP_KEY_TYPE(12) == MAP_KEY_TYPE("12"));
    QVERIFY(!(MAP_KEY_TYPE(12) == MAP_KEY_TYPE("012")));
    QVERIFY(MAP_KEY_TYPE(10) < MAP_KEY_TYPE(9));
}

void tst_info_row::keysAreAssignedFromAllTheirSources()
{
    MAP_KEY_TYPE key;
    key = "text";
    QCOMPARE(key.toString(), "text");
    key = QString("other");
    QCOMPARE(key.toString(), "other");
    key = 5LL;
    QCOMPARE(key.toString(), "5");
    key = 0;
    QCOMPARE(key.toString(), "0");
    key = MAP_KEY_TYPE(-3);
    QCOMPARE(key.toString(), "-3");
}

void tst_info_row::aRowTakesAKeyOfAnyKind()
{
    QCOMPARE(INFO(E_LINEEDIT, A_NONE, "", {}, 7).key, "7");
    QCOMPARE(INFO(E_LINEEDIT, A_NONE, "", {}, QString("name")).key, "name");
    QCOMPARE(INFO(E_LINEEDIT, A_NONE, "", {}, MAP_KEY_TYPE("name")).key, "name");
}

QTEST_MAIN(tst_info_row)
#include "tst_info_row.moc"
