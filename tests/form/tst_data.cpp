#include "tests/form/hand_made_form.h"

#include <QTest>

using namespace mod_form_qt;

class tst_data : public QObject
{
    Q_OBJECT

private slots:
    void keepsACopyOfAPlainValue();
    void showsTheVariableBehindAPointer();
    void unwrapsAVariantInAVariantOnce();
    void notesTheTypeOfWhatItTook_data();
    void notesTheTypeOfWhatItTook();
    void readsAnEntry();
    void readingMakesNoEntry();
    void nullMapLeavesItEmpty();
    void writesAPlainEntry();
    void writesThroughThePointerThatStaysInTheMap();
    void withoutAnEntryToWriteOnlyItsOwnValueChanges();
    void nullPointerIsEmptyAndIsReplaced();
    void listDataIsReadThroughEitherPointer();
    void listDataIsWrittenThroughEitherPointer();
    void anyValueOfAListPointerIsTheList();
    void whatIsNoListDataIsAnEmptyList();
};

void tst_data::keepsACopyOfAPlainValue()
{
    QVariant source = 1;
    INFO::DATA<QVariant> data(source);
    source = 2;
    QCOMPARE(data.value(), QVariant(1));
    QVERIFY(!data.isPointer());
}

void tst_data::showsTheVariableBehindAPointer()
{
    QVariant variable = 1;
    const INFO::DATA<QVariant> data(QVariant::fromValue(&variable));
    variable = 2;
    QCOMPARE(data.value(), QVariant(2));
    QVERIFY(data.isPointer());
}

void tst_data::unwrapsAVariantInAVariantOnce()
{
    const QVariant inner = "text";
    const QVariant outer(QMetaType::fromType<QVariant>(), &inner);
    QCOMPARE(outer.typeId(), int(QMetaType::QVariant));
    const INFO::DATA<QVariant> data(outer);
    QCOMPARE(data.value().typeId(), int(QMetaType::QString));
    QCOMPARE(data.value(), inner);

    const QVariant twice(QMetaType::fromType<QVariant>(), &outer);
    QCOMPARE(INFO::DATA<QVariant>(twice).value().typeId(), int(QMetaType::QVariant));
}

void tst_data::notesTheTypeOfWhatItTook_data()
{
    static QVariant variable;
    static T_LISTDATA list;
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<int>("type");
    QTest::newRow("number") << QVariant(5) << int(QMetaType::Int);
    QTest::newRow("invalid") << QVariant() << int(QMetaType::UnknownType);
    QTest::newRow("variable") << QVariant::fromValue(&variable) << INFO::VARIANT_PTR_METATYPE;
    QTest::newRow("list") << QVariant::fromValue(list) << INFO::LISTDATA_METATYPE;
    QTest::newRow("list variable") << QVariant::fromValue(&list) << INFO::LISTDATA_PTR_METATYPE;
}

void tst_data::notesTheTypeOfWhatItTook()
{
    QFETCH(QVariant, value);
    QFETCH(int, type);
    QCOMPARE(INFO::DATA<QVariant>(value).metaTypeId(), type);
    QCOMPARE(INFO::DATA<QVariant>(value).isValid(), type != QMetaType::UnknownType);
    QCOMPARE(INFO::DATA<QVariant>().metaTypeId(), -1);
    QVERIFY(!INFO::DATA<QVariant>().isValid());
}

void tst_data::readsAnEntry()
{
    QVariant variable = 7;
    QMap<QString, QVariant> map {{"plain", 5}, {"bound", QVariant::fromValue(&variable)}};
    QCOMPARE(INFO::DATA<QVariant>(&map, "plain", false).value(), QVariant(5));
    QCOMPARE(INFO::DATA<QVariant>(&map, "bound", false).value(), QVariant(7));
}

void tst_data::readingMakesNoEntry()
{
    QMap<QString, QVariant> map {{"a", 1}};
    QVERIFY(!INFO::DATA<QVariant>(&map, "b", false).isValid());
    QVERIFY(!INFO::DATA<T_LISTDATA>(&map, "b", false).isValid());
    INFO::DATA<QVariant>(&map, "b", false).setValue(5);
    QCOMPARE(map.keys(), QStringList("a"));
}

void tst_data::nullMapLeavesItEmpty()
{
    INFO::DATA<QVariant> data(nullptr, "a", true);
    QVERIFY(!data.isValid());
    data.setValue(1);
    QMap<QString, QVariant> map;
    QVERIFY(!INFO::DATA<QVariant>(&map, "a", false).isValid());
}

void tst_data::writesAPlainEntry()
{
    QMap<QString, QVariant> map {{"a", 1}};
    INFO::DATA<QVariant> data(&map, "a", true);
    data.setValue("two");
    QCOMPARE(map["a"], QVariant("two"));
    QCOMPARE(data.value(), QVariant("two"));
    INFO::DATA<QVariant>(&map, "new", true).setValue(3);
    QCOMPARE(map["new"], QVariant(3));
}

void tst_data::writesThroughThePointerThatStaysInTheMap()
{
    QVariant variable = 1;
    QMap<QString, QVariant> map {{"a", QVariant::fromValue(&variable)}};
    INFO::DATA<QVariant>(&map, "a", true).setValue(2);
    QCOMPARE(variable, QVariant(2));
    QVERIFY(INFO::isVariantPtr(map["a"]));
}

void tst_data::withoutAnEntryToWriteOnlyItsOwnValueChanges()
{
    QVariant source = 1;
    INFO::DATA<QVariant> data(source);
    data.setValue(2);
    QCOMPARE(data.value(), QVariant(2));
    QCOMPARE(source, QVariant(1));
}

void tst_data::nullPointerIsEmptyAndIsReplaced()
{
    QMap<QString, QVariant> map {{"a", QVariant::fromValue(T_VARIANT_PTR(nullptr))},
                                 {"b", QVariant::fromValue(T_LISTDATA_PTR(nullptr))}};
    QVERIFY(!INFO::DATA<QVariant>(&map, "a", false).isPointer());
    QVERIFY(!INFO::DATA<QVariant>(&map, "a", false).value().isValid());
    QVERIFY(INFO::DATA<T_LISTDATA>(&map, "b", false).value().empty());
    INFO::DATA<QVariant>(&map, "a", true).setValue(3);
    QCOMPARE(map["a"], QVariant(3));
}

void tst_data::listDataIsReadThroughEitherPointer()
{
    T_LISTDATA list = letters("AB", "B");
    QVariant variable = QVariant::fromValue(list);
    QCOMPARE(INFO::DATA<T_LISTDATA>(QVariant::fromValue(list)).value(), list);
    QCOMPARE(INFO::DATA<T_LISTDATA>(QVariant::fromValue(&list)).value(), list);
    QCOMPARE(INFO::DATA<T_LISTDATA>(QVariant::fromValue(&variable)).value(), list);
    QVERIFY(INFO::DATA<T_LISTDATA>(QVariant::fromValue(&variable)).isPointer());
}

void tst_data::listDataIsWrittenThroughEitherPointer()
{
    T_LISTDATA list;
    QVariant variable = QVariant::fromValue(list);
    QMap<QString, QVariant> map {{"list", QVariant::fromValue(&list)},
                                 {"variable", QVariant::fromValue(&variable)},
                                 {"plain", QVariant::fromValue(list)}};
    for (const char* key : {"list", "variable", "plain"})
        INFO::DATA<T_LISTDATA>(&map, key, true).setValue(letters("AB", "A"));
    QCOMPARE(marks(list), "A");
    QCOMPARE(marks(variable), "A");
    QCOMPARE(marks(map["plain"]), "A");
    QVERIFY(INFO::isListData(map["plain"]));
    QVERIFY(INFO::isListDataPtr(map["list"]));
    QVERIFY(INFO::isVariantPtr(map["variable"]));
}

void tst_data::anyValueOfAListPointerIsTheList()
{
    T_LISTDATA list = letters("AB", "B");
    INFO::DATA<QVariant> data(QVariant::fromValue(&list));
    QVERIFY(data.isPointer());
    QVERIFY(INFO::isListData(data.value()));
    QCOMPARE(marks(data.value()), "B");
    data.setValue(QVariant::fromValue(letters("AB", "A")));
    QCOMPARE(marks(list), "A");
}

void tst_data::whatIsNoListDataIsAnEmptyList()
{
    QVERIFY(INFO::DATA<T_LISTDATA>(QVariant("a")).value().empty());
    QVERIFY(INFO::DATA<T_LISTDATA>(QVariant()).value().empty());
}

QTEST_MAIN(tst_data)
#include "tst_data.moc"
