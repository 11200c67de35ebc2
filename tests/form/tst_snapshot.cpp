#include "tests/form/hand_made_form.h"

#include <QTest>

using namespace mod_form_qt;

class tst_snapshot : public QObject
{
    Q_OBJECT

private slots:
    void restoreBeforeAnySnapshotChangesNothing();
    void restoresTheMap();
    void restoresVariablesAndLists();
    void trackedPointersThatWereNullAtSnapshotTimeAreLeftOut();
    void aManagerWithNoMapStillRestoresItsTrackedVariables();
    void aPointerTrackedAfterTheSnapshotIsNotRestoredUntilTheNextOne();
    void aSecondRestorePutsTheSameStateBack();
    void aNewSnapshotReplacesTheOldOne();
    void wrappedPointersAreTracked();
    void otherWrappedValuesAreIgnored();
    void clearForgetsWhatIsTracked();
    void theDestructorRestoresIfAskedTo_data();
    void theDestructorRestoresIfAskedTo();
    void anExplicitRestoreIsNotRepeatedByTheDestructor();
    void rowsVariablesAreTracked();
    void anotherMapIsNotFilled();
};

void tst_snapshot::restoreBeforeAnySnapshotChangesNothing()
{
    QVariant variable = 1;
    QMap<QString, QVariant> map {{"a", 1}};
    SNAP_SHOT_MANAGER manager(&map);
    manager.trackVariant(&variable);
    QVERIFY(!manager.hasSnapshot());
    map["a"] = 2;
    variable = 2;
    manager.restore();
    QCOMPARE(map["a"], QVariant(2));
    QCOMPARE(variable, QVariant(2));
}

void tst_snapshot::restoresTheMap()
{
    QMap<QString, QVariant> map {{"a", 1}, {"b", 2}};
    const QMap<QString, QVariant> before = map;
    SNAP_SHOT_MANAGER manager(&map);
    manager.snapshot();
    QVERIFY(manager.hasSnapshot());
    map["a"] = 5;
    map.remove("b");
    map["c"] = 3;
    manager.restore();
    QCOMPARE(map, before);
}

void tst_snapshot::restoresVariablesAndLists()
{
    QVariant variable = 1;
    T_LISTDATA list = letters("AB", "A");
    SNAP_SHOT_MANAGER manager;
    manager.trackVariant(&variable);
    manager.trackList(&list);
    manager.snapshot();
    variable = "changed";
    list = letters("XYZ", "Y");
    manager.restore();
    QCOMPARE(variable, QVariant(1));
    QCOMPARE(list, letters("AB", "A"));
}

void tst_snapshot::trackedPointersThatWereNullAtSnapshotTimeAreLeftOut()
{
    QVariant variable = 1;
    SNAP_SHOT_MANAGER manager;
    manager.trackVariant(nullptr);
    manager.trackVariant(&variable);
    manager.trackList(nullptr);
    manager.trackWrappedVariant(QVariant::fromValue(T_VARIANT_PTR(nullptr)));
    manager.trackWrappedList(QVariant::fromValue(T_LISTDATA_PTR(nullptr)));
    manager.snapshot();
    variable = 2;
    manager.restore();
    QCOMPARE(variable, QVariant(1));
}

void tst_snapshot::aManagerWithNoMapStillRestoresItsTrackedVariables()
{
    QVariant variable = 1;
    SNAP_SHOT_MANAGER manager(nullptr);
    manager.trackVariant(&variable);
    manager.snapshot();
    QVERIFY(manager.hasSnapshot());
    variable = 2;
    manager.restore();
    QCOMPARE(variable, QVariant(1));
}

void tst_snapshot::aPointerTrackedAfterTheSnapshotIsNotRestoredUntilTheNextOne()
{
    QVariant variable = 1;
    SNAP_SHOT_MANAGER manager;
    manager.snapshot();
    manager.trackVariant(&variable);
    variable = 2;
    manager.restore();
    QCOMPARE(variable, QVariant(2));
    manager.snapshot();
    variable = 3;
    manager.restore();
    QCOMPARE(variable, QVariant(2));
}

void tst_snapshot::aSecondRestorePutsTheSameStateBack()
{
    QMap<QString, QVariant> map {{"a", 1}};
    SNAP_SHOT_MANAGER manager(&map);
    manager.snapshot();
    for (int round = 2; round < 4; ++round) {
        map["a"] = round;
        manager.restore();
        QCOMPARE(map["a"], QVariant(1));
        QVERIFY(manager.hasSnapshot());
    }
}

void tst_snapshot::aNewSnapshotReplacesTheOldOne()
{
    QMap<QString, QVariant> map {{"a", 1}};
    SNAP_SHOT_MANAGER manager(&map);
    manager.snapshot();
    map["a"] = 2;
    manager.snapshot();
    map["a"] = 3;
    manager.restore();
    QCOMPARE(map["a"], QVariant(2));
}

void tst_snapshot::wrappedPointersAreTracked()
{
    QVariant variable = 1;
    T_LISTDATA list = letters("AB", "A");
    SNAP_SHOT_MANAGER manager;
    manager.trackWrappedVariant(QVariant::fromValue(&variable));
    manager.trackWrappedList(QVariant::fromValue(&list));
    manager.snapshot();
    variable = 2;
    list.clear();
    manager.restore();
    QCOMPARE(variable, QVariant(1));
    QCOMPARE(marks(list), "A");
}

void tst_snapshot::otherWrappedValuesAreIgnored()
{
    QVariant variable = 1;
    T_LISTDATA list = letters("AB", "A");
    SNAP_SHOT_MANAGER manager;
    manager.trackWrappedVariant(QVariant::fromValue(&list));
    manager.trackWrappedList(QVariant::fromValue(&variable));
    manager.trackWrappedVariant(5);
    manager.trackWrappedList(QVariant());
    manager.snapshot();
    variable = 2;
    list.clear();
    manager.restore();
    QCOMPARE(variable, QVariant(2));
    QVERIFY(list.empty());
}

void tst_snapshot::clearForgetsWhatIsTracked()
{
    QVariant variable = 1;
    QMap<QString, QVariant> map {{"a", 1}};
    {
        SNAP_SHOT_MANAGER manager(&map);
        manager.trackVariant(&variable);
        manager.snapshot();
        manager.enableAutoRestore(true);
        manager.clear();
        QVERIFY(!manager.hasSnapshot());
        variable = 2;
        map["a"] = 2;
        manager.restore();
        manager.snapshot();
        variable = 3;
        manager.restore();
    }
    QCOMPARE(variable, QVariant(3));
    QCOMPARE(map["a"], QVariant(2));
}

void tst_snapshot::theDestructorRestoresIfAskedTo_data()
{
    QTest::addColumn<bool>("on");
    QTest::addColumn<int>("expected");
    QTest::newRow("asked to") << true << 1;
    QTest::newRow("not asked to") << false << 2;
}

void tst_snapshot::theDestructorRestoresIfAskedTo()
{
    QFETCH(bool, on);
    QVariant variable = 1;
    {
        SNAP_SHOT_MANAGER manager;
        manager.enableAutoRestore(true);
        manager.enableAutoRestore(on);
        manager.trackVariant(&variable);
        manager.snapshot();
        variable = 2;
    }
    QTEST(variable.toInt(), "expected");
}

void tst_snapshot::anExplicitRestoreIsNotRepeatedByTheDestructor()
{
    QVariant variable = 1;
    {
        SNAP_SHOT_MANAGER manager;
        manager.enableAutoRestore(true);
        manager.trackVariant(&variable);
        manager.snapshot();
        manager.restore();
        variable = 2;
    }
    QCOMPARE(variable, QVariant(2));
}

void tst_snapshot::rowsVariablesAreTracked()
{
    QVariant earlier = 1;
    QVariant variable = 1;
    T_LISTDATA list = letters("AB", "A");
    QMap<QString, QVariant> map {{"a", 1}};
    SNAP_SHOT_MANAGER manager;
    manager.trackVariant(&earlier);
    manager.fromData(&map,
                     {INFO(E_LINEEDIT, {}, "One", &variable, "one"),
                      INFO(E_LISTBOX, {}, "Two", &list, "two"),
                      INFO(E_LINEEDIT, {}, "Three", QVariant(3), "three"), INFO()});
    QVERIFY(manager.hasSnapshot());
    earlier = 2;
    variable = 2;
    list.clear();
    map.clear();
    manager.restore();
    QCOMPARE(variable, QVariant(1));
    QCOMPARE(marks(list), "A");
    QCOMPARE(map, (QMap<QString, QVariant> {{"a", 1}}));
    QCOMPARE(earlier, QVariant(2)); // was forgotten
}

void tst_snapshot::anotherMapIsNotFilled()
{
    QMap<QString, QVariant> other {{"b", 2}};
    SNAP_SHOT_MANAGER manager;
    manager.snapshot(); // without a map there is nothing saved of one
    manager.setVarMap(&other);
    other["b"] = 3;
    manager.restore();
    QCOMPARE(other["b"], QVariant(3));
}

QTEST_MAIN(tst_snapshot)
#include "tst_snapshot.moc"
