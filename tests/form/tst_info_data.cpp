#include "form/mod_form_qt.h"

#include <QTest>

using namespace mod_form_qt;

namespace {

// An object of an application that is built before main uses the engine's constants.
const bool tempKeyKnownBeforeMain = INFO::isTempKeyName("::mod_form_qt_widget_data:x");
const QString sumMapNameBeforeMain = INFO::getDefaultIniSumMapName();

T_LISTDATA listWith(std::initializer_list<bool> selected)
{
    T_LISTDATA list;
    for (const bool on : selected) {
        const int number = int(list.size()) + 1;
        list.push_back({QString("Item %1").arg(number), on, number * 10, {}});
    }
    return list;
}

template <typename T>
QVariant pointerTo(T* variable)
{
    return QVariant::fromValue(variable);
}

} // namespace

class tst_info_data : public QObject
{
    Q_OBJECT

private slots:
    void worksBeforeMain();
    void registersItsTypesByName();
    void listDataComparesByItsItems();
    void tellsKindsApart_data();
    void tellsKindsApart();
    void reducesAValue_data();
    void reducesAValue();
    void plainValuesKeepTheirType_data();
    void plainValuesKeepTheirType();
    void followsPointersToTheirEnd();
    void deadEndsAreInvalid();
    void followsAPointerAtTheTimeOfTheCall();
    void reducesAnEntryOfAMap();
    void missingEntriesAreInvalidAndStayMissing();
    void selectedValues_data();
    void selectedValues();
    void selectedValuesOfAnyVariant();
    void temporaryKeys_data();
    void temporaryKeys();
};

void tst_info_data::worksBeforeMain()
{
    QVERIFY(tempKeyKnownBeforeMain);
    QCOMPARE(sumMapNameBeforeMain, "vmap");
}

void tst_info_data::registersItsTypesByName()
{
    const QList<std::tuple<const char*, int, QMetaType>> types {
        {"mod_form_qt::T_LISTDATA", INFO::LISTDATA_METATYPE, QMetaType::fromType<T_LISTDATA>()},
        {"mod_form_qt::T_LISTDATA_PTR", INFO::LISTDATA_PTR_METATYPE,
         QMetaType::fromType<T_LISTDATA*>()},
        {"mod_form_qt::T_VARIANT_PTR", INFO::VARIANT_PTR_METATYPE,
         QMetaType::fromType<QVariant*>()},
        {"mod_form_qt::T_VARMAP_SHARED_PTR", INFO::VARMAP_SHARED_PTR_METATYPE,
         QMetaType::fromType<QSharedPointer<QMap<QString, QVariant>>>()},
    };
    for (const auto& [name, id, type] : types) {
        QVERIFY(id > 0);
        QCOMPARE(QMetaType::fromName(name).id(), id);
        QCOMPARE(type.id(), id);
    }
}

void tst_info_data::listDataComparesByItsItems()
{
    const QVariant list = QVariant::fromValue(listWith({true, false}));
    QVERIFY(list == QVariant::fromValue(listWith({true, false})));
    QVERIFY(list != QVariant::fromValue(listWith({true, true})));
    QVERIFY(list != QVariant::fromValue(listWith({true})));
}

void tst_info_data::tellsKindsApart_data()
{
    static T_LISTDATA list = listWith({true});
    static QVariant variable = 5;

    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("expected");

    QTest::newRow("list data") << QVariant::fromValue(list) << "list,any list";
    QTest::newRow("pointer to list data") << pointerTo(&list) << "list pointer,any list";
    QTest::newRow("pointer to a value") << pointerTo(&variable) << "pointer";
    QTest::newRow("map") << QVariant(QVariantMap {{"a", 1}}) << "map";
    QTest::newRow("empty map") << QVariant(QVariantMap()) << "map";
    QTest::newRow("list of values") << QVariant(QVariantList {1}) << "values";
    QTest::newRow("list of texts") << QVariant(QStringList {"a"}) << "";
    QTest::newRow("hash") << QVariant(QVariantHash {{"a", 1}}) << "";
    QTest::newRow("text") << QVariant("vmap") << "";
    QTest::newRow("invalid") << QVariant() << "";
}

void tst_info_data::tellsKindsApart()
{
    QFETCH(QVariant, value);
    QStringList kinds;
    if (INFO::isListData(value))
        kinds << "list";
    if (INFO::isListDataPtr(value))
        kinds << "list pointer";
    if (INFO::isListDataOrListDataPtr(value))
        kinds << "any list";
    if (INFO::isVariantPtr(value))
        kinds << "pointer";
    if (INFO::isVariantMap(value))
        kinds << "map";
    if (INFO::isQVariantListType(value))
        kinds << "values";
    QTEST(kinds.join(','), "expected");
}

void tst_info_data::reducesAValue_data()
{
    static T_LISTDATA none = listWith({false, false});
    static T_LISTDATA one = listWith({false, true, false});
    static T_LISTDATA two = listWith({true, false, true});

    QTest::addColumn<QVariant>("value");
    QTest::addColumn<bool>("asList");
    QTest::addColumn<bool>("single");
    QTest::addColumn<QVariant>("expected");

    const QVariantList empty;
    const QVariantList values {10, 30};

    struct Case
    {
        const char* name;
        T_LISTDATA* list;
        QVariantList asValues;
        QVariant asSingle;
    };

    for (const Case& row :
         {Case {"none", &none, empty, empty}, Case {"one", &one, QVariantList {20}, 20},
          Case {"two", &two, values, values}}) {
        for (const bool pointer : {false, true}) {
            const QVariant value = pointer ? pointerTo(row.list) : QVariant::fromValue(*row.list);
            const char* kind = pointer ? "pointer" : "list";
            QTest::addRow("%s, %s selected", kind, row.name)
                << value << false << false << QVariant(row.asValues);
            QTest::addRow("%s, %s selected, as list", kind, row.name)
                << value << true << false << QVariant(row.asValues);
            QTest::addRow("%s, %s selected, single", kind, row.name)
                << value << false << true << row.asSingle;
            QTest::addRow("%s, %s selected, as list and single", kind, row.name)
                << value << true << true << QVariant(row.asValues);
        }
    }
}

void tst_info_data::reducesAValue()
{
    QFETCH(QVariant, value);
    QFETCH(bool, asList);
    QFETCH(bool, single);
    QFETCH(QVariant, expected);
    const QVariant base = INFO::getBaseValue(value, asList, single);
    QCOMPARE(base.typeId(), expected.typeId());
    QCOMPARE(base, expected);
}

void tst_info_data::plainValuesKeepTheirType_data()
{
    QTest::addColumn<QVariant>("value");

    QTest::newRow("invalid") << QVariant();
    QTest::newRow("bool") << QVariant(false);
    QTest::newRow("int") << QVariant(-1);
    QTest::newRow("double") << QVariant(1.5);
    QTest::newRow("text") << QVariant("text");
    QTest::newRow("date") << QVariant(QDate(2037, 1, 1));
    QTest::newRow("list") << QVariant(QVariantList {1, "a"});
    QTest::newRow("list of one") << QVariant(QVariantList {1});
    QTest::newRow("texts") << QVariant(QStringList {"a", "b"});
    QTest::newRow("map") << QVariant(QVariantMap {{"a", 1}});
}

void tst_info_data::plainValuesKeepTheirType()
{
    QFETCH(QVariant, value);
    for (const bool asList : {false, true}) {
        for (const bool single : {false, true}) {
            const QVariant base = INFO::getBaseValue(value, asList, single);
            QCOMPARE(base.typeId(), value.typeId());
            QCOMPARE(base, value);
        }
    }
}

void tst_info_data::followsPointersToTheirEnd()
{
    QVariant text = "text";
    QVariant first = pointerTo(&text);
    QVariant second = pointerTo(&first);
    QCOMPARE(INFO::getBaseValue(pointerTo(&text)), QVariant("text"));
    QCOMPARE(INFO::getBaseValue(pointerTo(&second)), QVariant("text"));

    T_LISTDATA list = listWith({true, true});
    QVariant held = QVariant::fromValue(list);
    QVariant pointed = pointerTo(&list);
    const QVariant expected = QVariantList {10, 20};
    QCOMPARE(INFO::getBaseValue(pointerTo(&held)), expected);
    QCOMPARE(INFO::getBaseValue(pointerTo(&pointed)), expected);
}

void tst_info_data::deadEndsAreInvalid()
{
    QVERIFY(!INFO::getBaseValue(pointerTo<QVariant>(nullptr)).isValid());

    QVariant self;
    self = pointerTo(&self);
    QVERIFY(!INFO::getBaseValue(self).isValid());

    QVariant there;
    QVariant back = pointerTo(&there);
    there = pointerTo(&back);
    QVERIFY(!INFO::getBaseValue(there).isValid());

    // A list without items has no selection.
    QCOMPARE(INFO::getBaseValue(pointerTo<T_LISTDATA>(nullptr)), QVariant(QVariantList()));
}

void tst_info_data::followsAPointerAtTheTimeOfTheCall()
{
    QVariant variable = 1;
    const QVariant pointer = pointerTo(&variable);
    variable = "later";
    QCOMPARE(INFO::getBaseValue(pointer), QVariant("later"));
}

void tst_info_data::reducesAnEntryOfAMap()
{
    QVariant variable = "text";
    const QVariantMap map {{"list", QVariant::fromValue(listWith({false, true}))},
                           {"pointer", pointerTo(&variable)}};
    const QString list = "list";
    QCOMPARE(INFO::getBaseValue(&map, "list"), QVariant(QVariantList {20}));
    QCOMPARE(INFO::getBaseValue(&map, list), QVariant(QVariantList {20}));
    QCOMPARE(INFO::getBaseValue(&map, list, false, true), QVariant(20));
    QCOMPARE(INFO::getBaseValue(&map, list, true, true), QVariant(QVariantList {20}));
    QCOMPARE(INFO::getBaseValue(&map, QString("pointer")), QVariant("text"));
}

void tst_info_data::missingEntriesAreInvalidAndStayMissing()
{
    QVariantMap map;
    QVERIFY(!INFO::getBaseValue(&map, QString("missing")).isValid());
    QVERIFY(map.isEmpty());

    const QVariantMap* none = nullptr;
    QVERIFY(!INFO::getBaseValue(none, QString("missing")).isValid());
}

void tst_info_data::selectedValues_data()
{
    QTest::addColumn<T_LISTDATA>("list");
    QTest::addColumn<QVariantList>("values");
    QTest::addColumn<QVariant>("first");

    QTest::newRow("no items") << T_LISTDATA() << QVariantList() << QVariant();
    QTest::newRow("none selected") << listWith({false, false}) << QVariantList() << QVariant();
    QTest::newRow("one selected") << listWith({false, true}) << QVariantList {20} << QVariant(20);
    QTest::newRow("two selected") << listWith({false, true, true}) << QVariantList {20, 30}
                                  << QVariant(20);
    QTest::newRow("an item without a value")
        << T_LISTDATA {{"text", true, {}, {}}} << QVariantList {QVariant()} << QVariant();
    QTest::newRow("values of several types")
        << T_LISTDATA {{"a", true, "x", {}}, {"b", true, 1.5, {}}} << QVariantList {"x", 1.5}
        << QVariant("x");
}

void tst_info_data::selectedValues()
{
    QFETCH(T_LISTDATA, list);
    QTEST(INFO::getSelectedListValues(list), "values");
    QTEST(INFO::getSelectedListValue(list), "first");
    QTEST(INFO::getSelectedListValues(QVariant::fromValue(list)), "values");
    QTEST(INFO::getSelectedListValue(QVariant::fromValue(list)), "first");
    QTEST(INFO::getSelectedListValues(pointerTo(&list)), "values");
    QTEST(INFO::getSelectedListValue(pointerTo(&list)), "first");
}

void tst_info_data::selectedValuesOfAnyVariant()
{
    for (const QVariant& value : {QVariant(), QVariant("text"), QVariant(QVariantList {1}),
                                  pointerTo<T_LISTDATA>(nullptr)}) {
        QCOMPARE(INFO::getSelectedListValues(value), QVariantList());
        QVERIFY(!INFO::getSelectedListValue(value).isValid());
    }
}

void tst_info_data::temporaryKeys_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<bool>("expected");

    QTest::newRow("automatic") << "::mod_form_qt_auto_var:x" << true;
    QTest::newRow("widgets") << "::mod_form_qt_widget_data:x" << true;
    QTest::newRow("objects") << "::mod_form_qt_object_data:menus" << true;
    QTest::newRow("prefix alone") << "::mod_form_qt_auto_var:" << true;
    QTest::newRow("another case") << "::MOD_form_qt_auto_var:x" << false;
    QTest::newRow("prefix inside") << "x::mod_form_qt_auto_var:" << false;
    QTest::newRow("prefix cut off") << "::mod_form_qt_auto_var" << false;
    QTest::newRow("another prefix of its kind") << "::mod_form_qt_other:" << false;
    QTest::newRow("plain") << "mainurl" << false;
    QTest::newRow("empty") << "" << false;
}

void tst_info_data::temporaryKeys()
{
    QFETCH(QString, key);
    QTEST(INFO::isTempKeyName(key), "expected");
}

QTEST_GUILESS_MAIN(tst_info_data)

#include "tst_info_data.moc"
