#include "form/values/row_value.h"
#include "form/values/unchanged_values.h"

#include <QLineEdit>
#include <QSignalBlocker>
#include <QSignalSpy>
#include <QTest>

using namespace mod_form_qt;

using Map = QMap<QString, QVariant>;

/// Gives built forms the values that they have already.
class tst_unchanged_values : public QObject
{
    Q_OBJECT

private slots:
    void cursorFindsKeysInAnyOrder_data();
    void cursorFindsKeysInAnyOrder();
    void cursorFindsOnlyWhatHasThePrefix();
    void cursorFindsWhatHasBeenWrittenMeanwhile();
    void equalValueLeavesMapAndWidgetAlone();
    void everyValueRowTakesTheValueItHas_data();
    void everyValueRowTakesTheValueItHas();
    void valueOfAnotherTypeIsNotTheSame();
    void otherValuesAmongEqualOnesAreTaken();
    void boundRowWritesItsVariableThoughItsEntryIsEqual();
    void pathRowShowsAnEqualPathAgain();
    void rowsOfOneKeyShowAnEqualValueAgain();
    void noteGoesWithTheRecordsOfTheWidgets();

private:
    void build(const QList<INFO>& rows);

    std::unique_ptr<QWidget> m_window;
    Map m_map;
};

void tst_unchanged_values::build(const QList<INFO>& rows)
{
    m_map.clear();
    m_window = std::make_unique<QWidget>();
    INFO::applyLayout(m_window.get(), false, QVariant(), rows, {}, {}, &m_map);
}

void tst_unchanged_values::cursorFindsKeysInAnyOrder_data()
{
    QTest::addColumn<QStringList>("keys");
    QTest::newRow("all, ascending") << QStringList {"a", "aa", "b", "c", "e"};
    QTest::newRow("with gaps") << QStringList {"a", "c"};
    QTest::newRow("descending") << QStringList {"e", "c", "b", "aa", "a"};
    QTest::newRow("one twice") << QStringList {"b", "b", "c", "c"};
    QTest::newRow("missing before the first") << QStringList {"A", "a", "aa"};
    QTest::newRow("missing between") << QStringList {"c", "d", "e"};
    QTest::newRow("missing behind the last") << QStringList {"e", "f", "g", "a"};
    QTest::newRow("empty") << QStringList {"", "a"};
}

void tst_unchanged_values::cursorFindsKeysInAnyOrder()
{
    QFETCH(QStringList, keys);
    const Map plain {{"a", 1}, {"aa", 2}, {"b", 3}, {"c", 4}, {"e", 5}};
    Map prefixed {{"p", 0}, {"q:a", 6}, {"q:f", 7}, {"o:e", 8}};
    for (auto entry = plain.cbegin(); entry != plain.cend(); ++entry)
        prefixed.insert("p:" + entry.key(), *entry);
    KeyCursor cursor(&plain);
    KeyCursor prefixCursor(&prefixed, "p:");
    for (const QString& key : keys) {
        const KeyCursor::Entry* found = cursor.find(key);
        QCOMPARE(found ? found->value() : QVariant(), plain.value(key));
        found = prefixCursor.find(key);
        QCOMPARE(found ? found->value() : QVariant(), plain.value(key));
        QVERIFY(!found || found->key() == "p:" + key);
    }
}

void tst_unchanged_values::cursorFindsOnlyWhatHasThePrefix()
{
    const Map map {{"p:a", 1}, {"q:b", 2}};
    KeyCursor cursor(&map, "p:");
    QVERIFY(cursor.find("a"));
    QVERIFY(!cursor.find("b"));
    const Map empty;
    QVERIFY(!KeyCursor(&empty, "p:").find("a"));
    QVERIFY(!KeyCursor(&empty).find("a"));
}

void tst_unchanged_values::cursorFindsWhatHasBeenWrittenMeanwhile()
{
    Map map {{"a", 1}, {"c", 3}};
    KeyCursor cursor(&map);
    QVERIFY(cursor.find("a"));
    const Map copy = map; // the next write makes the map another one
    map.insert("b", 2);
    cursor.forget();
    const KeyCursor::Entry* found = cursor.find("b");
    QVERIFY(found);
    QCOMPARE(found->value(), QVariant(2));
    QVERIFY(cursor.find("c"));
}

void tst_unchanged_values::equalValueLeavesMapAndWidgetAlone()
{
    build({INFO(E_LINEEDIT, {}, "Name", "x", "name")});
    auto* edit = INFO::lineEditByKey(&m_map, "name");
    QSignalSpy changed(edit, &QLineEdit::textChanged);
    {
        const QSignalBlocker quiet(edit);
        edit->setText("not yet taken");
    }
    const Map before = m_map;
    QCOMPARE(INFO::setData(&m_map, "name", "x", false), 1);
    QVERIFY(m_map.isSharedWith(before)); // not even copied
    QCOMPARE(edit->text(), "not yet taken");
    QCOMPARE(changed.count(), 0);
}

void tst_unchanged_values::everyValueRowTakesTheValueItHas_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QVariant>("other");
    QTest::newRow("line edit") << E_LINEEDIT << QVariant("x") << QVariant("y");
    QTest::newRow("empty line edit") << E_LINEEDIT << QVariant(QString()) << QVariant("y");
    QTest::newRow("plain text") << E_PLAINTEXT << QVariant("x") << QVariant("y");
    QTest::newRow("text edit") << E_TEXTEDIT << QVariant("x") << QVariant("y");
    QTest::newRow("check box") << E_CHECKBOX << QVariant(true) << QVariant(false);
    QTest::newRow("radio button") << E_RADIOBUTTON << QVariant(true) << QVariant(false);
    QTest::newRow("number") << E_NUMBER << QVariant(7) << QVariant(8);
    QTest::newRow("date") << E_DATE << QVariant(QDate(2024, 2, 29)) << QVariant(QDate(2024, 3, 1));
}

void tst_unchanged_values::everyValueRowTakesTheValueItHas()
{
    QFETCH(int, type);
    QFETCH(QVariant, value);
    QFETCH(QVariant, other);
    build({INFO(type, {}, "Title", value, "a")});
    const Map before = m_map;
    QVERIFY(UnchangedValues(&m_map).holds("a", value));
    QCOMPARE(INFO::setData(&m_map, "a", value, false), 1);
    QVERIFY(m_map.isSharedWith(before));
    QVERIFY(!UnchangedValues(&m_map).holds("a", other));
    QCOMPARE(INFO::setData(&m_map, "a", other, false), 1);
    QCOMPARE(m_map["a"], other);
    QVERIFY(UnchangedValues(&m_map).holds("a", other));
}

void tst_unchanged_values::valueOfAnotherTypeIsNotTheSame()
{
    build({INFO(E_LINEEDIT, {}, "Name", "05", "name")});
    QVERIFY(!UnchangedValues(&m_map).holds("name", 5));
    QVERIFY(!UnchangedValues(&m_map).holds("name", QVariant()));
    QVERIFY(!UnchangedValues(&m_map).holds("missing", "05"));
}

void tst_unchanged_values::otherValuesAmongEqualOnesAreTaken()
{
    QList<INFO> rows;
    Map values;
    for (int row = 0; row < 30; ++row) {
        const QString key = QString::number(row);
        rows.append(INFO(E_LINEEDIT, {}, "Row", "old", key));
        values.insert(key, row % 3 == 0 ? "new" : "old");
    }
    values.insert("without a row", "new");
    build(rows);
    QCOMPARE(INFO::setData(&m_map, values, false), 31);
    for (int row = 0; row < 30; ++row) {
        const QString key = QString::number(row);
        QCOMPARE(m_map[key], values[key]);
        QCOMPARE(INFO::lineEditByKey(&m_map, key)->text(), values[key].toString());
    }
    QCOMPARE(m_map["without a row"], QVariant("new"));
}

void tst_unchanged_values::boundRowWritesItsVariableThoughItsEntryIsEqual()
{
    QVariant variable = "x";
    build({INFO(E_LINEEDIT, {}, "Plain", "x", "another"),
           INFO(E_LINEEDIT, {}, "Name", &variable, "name")});
    QVERIFY(UnchangedValues(&m_map).holds("name", "x"));
    m_map.insert("name", "y"); // in place of the pointer
    QVERIFY(!UnchangedValues(&m_map).holds("name", "y"));
    QCOMPARE(INFO::setData(&m_map, "name", "y", false), 1);
    QCOMPARE(variable, QVariant("y"));
}

void tst_unchanged_values::pathRowShowsAnEqualPathAgain()
{
    build({INFO(E_BROWSE_FOLDER, {}, "Folder", "/x", "folder")});
    auto* edit = INFO::lineEditByKey(&m_map, "folder");
    {
        const QSignalBlocker quiet(edit);
        edit->setText("not yet taken");
    }
    QCOMPARE(INFO::setData(&m_map, "folder", "/x", false), 1);
    QCOMPARE(edit->text(), "/x");
}

void tst_unchanged_values::rowsOfOneKeyShowAnEqualValueAgain()
{
    for (const bool pathFirst : {true, false}) {
        const INFO path(E_BROWSE_FOLDER, {}, "Folder", "/x", "folder");
        const INFO text(E_LINEEDIT, {}, "Text", "/x", "folder");
        build(pathFirst ? QList<INFO> {path, text, text} : QList<INFO> {text, path});
        const WIDGET_INFO row = WIDGET_INFO::widgets(&m_map, "folder");
        QList<QLineEdit*> edits;
        for (const QPointer<QWidget>& widget : row.widgets()) {
            if (auto* edit = qobject_cast<QLineEdit*>(widget.data()))
                edits.append(edit);
        }
        for (QLineEdit* edit : edits) {
            const QSignalBlocker quiet(edit);
            edit->setText("not yet taken");
        }
        INFO::setData(&m_map, "folder", "/x", false);
        QCOMPARE(INFO::lineEditByKey(&m_map, "folder")->text(), pathFirst ? "/x" : "not yet taken");
        QVERIFY(edits.size() > 1);
    }
}

void tst_unchanged_values::noteGoesWithTheRecordsOfTheWidgets()
{
    build({INFO(E_LINEEDIT, {}, "Name", "x", "name")});
    WIDGET_INFO::clean(&m_map);
    INFO::cleanupPointerEntries(&m_map);
    QCOMPARE(m_map, (Map {{"name", "x"}}));
}

QTEST_MAIN(tst_unchanged_values)
#include "tst_unchanged_values.moc"
