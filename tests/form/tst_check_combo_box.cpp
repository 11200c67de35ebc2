#include <QAccessible>

using namespace mod_form_qt;
using helper::CheckComboBox;

namespace {

void fill(CheckComboBox& box)
{
    box.addCheckItem("eins", 1, true);
    box.addCheckItem("zwei", 2, false);
    box.addCheckItem("drei", 3, true);
    box.resize(300, 30);
}

/// Opens the list and waits until it can be used.
bool openList(CheckComboBox& box)
{
    box.show();
    box.showPopup();
    return QTest::qWaitForWindowExposed(box.view()->window());
}

QPoint middleOf(const CheckComboBox& box, int row)
{
    return box.view()->visualRect(box.model()->index(row, 0)).center();
}

bool wheel(QWidget& widget, int angle)
{
    const QPointF middle = widget.rect().center();
    QWheelEvent event(middle, widget.mapToGlobal(middle), QPoint(), QPoint(0, angle), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&widget, &event);
    return event.isAccepted();
}

} // namespace

class tst_check_combo_box : public QObject
{
    Q_OBJECT

private slots:
    void addsAnItem_data();
    void addsAnItem();
    void anIndexOutOfRangeDoesNothing_data();
    void anIndexOutOfRangeDoesNothing();
    void anEmptyBoxHasNothingChecked();
    void listsTheCheckedItemsInTheirOrder();
    void setsDataOfAnItem();
    void reportsAChange_data();
    void reportsAChange();
    void reportsAChangeOfTheModel();
    void silentAdditionsReachTheBox();
    void theClosedBoxShowsTheCheckedTexts();
    void aLongTextIsElided();
    void theCurrentItemIsNotShown();
    void speaksTheCheckedTexts();
    void aClickChecksAndLeavesTheListOpen();
    void theClickThatOpensTheListChecksNothing();
    void aDisabledItemCannotBeClicked();
    void spaceChecksAndLeavesTheListOpen();
    void closingByKeyChangesNothing_data();
    void closingByKeyChangesNothing();
    void opensByKey_data();
    void opensByKey();
    void keysAndWheelLeaveTheClosedBoxAlone();
};

void tst_check_combo_box::addsAnItem_data()
{
    QTest::addColumn<bool>("checked");
    QTest::addColumn<Qt::CheckState>("state");
    QTest::newRow("checked") << true << Qt::Checked;
    QTest::newRow("unchecked") << false << Qt::Unchecked;
}

void tst_check_combo_box::addsAnItem()
{
    QFETCH(bool, checked);
    CheckComboBox box;
    box.addCheckItem("vorher", 1, false);
    box.addCheckItem("neu", QStringLiteral("wert"), checked);

    auto* model = qobject_cast<QStandardItemModel*>(box.model());
    QVERIFY(model);
    QCOMPARE(model->parent(), &box);
    QCOMPARE(box.count(), 2);
    const QStandardItem* item = model->item(1);
    QCOMPARE(item->text(), "neu");
    QCOMPARE(item->flags(), Qt::ItemFlags(48));
    QTEST(item->checkState(), "state");
    QCOMPARE(item->data(256), QVariant("wert"));
    QVERIFY(qobject_cast<QStyledItemDelegate*>(box.itemDelegate()));
}

void tst_check_combo_box::anIndexOutOfRangeDoesNothing_data()
{
    QTest::addColumn<int>("index");
    QTest::newRow("before the first") << -1;
    QTest::newRow("behind the last") << 3;
}

void tst_check_combo_box::anIndexOutOfRangeDoesNothing()
{
    QFETCH(int, index);
    CheckComboBox box;
    fill(box);
    const QSignalSpy spy(&box, &CheckComboBox::checkedChanged);

    box.setItemChecked(index, true, false);
    box.setItemChecked(index, true, true);
    box.setCheckItemData(index, 7, Qt::UserRole, true);

    QCOMPARE(box.checkedIndices(), QList<int>({0, 2}));
    QCOMPARE(box.count(), 3);
    QCOMPARE(spy.size(), 0);
    QVERIFY(!box.isItemChecked(index));
    QVERIFY(!box.checkItemData(index, Qt::UserRole).isValid());
}

void tst_check_combo_box::anEmptyBoxHasNothingChecked()
{
    const CheckComboBox box;
    QVERIFY(!box.hasChecked());
    QCOMPARE(box.checkedData(), QList<QVariant>());
    QCOMPARE(box.checkedIndices(), QList<int>());
    QCOMPARE(box.checkedText(), QString());
}

void tst_check_combo_box::listsTheCheckedItemsInTheirOrder()
{
    CheckComboBox box;
    fill(box);
    QVERIFY(box.hasChecked());
    QCOMPARE(box.checkedData(), QList<QVariant>({1, 3}));
    QCOMPARE(box.checkedIndices(), QList<int>({0, 2}));

    box.setItemChecked(1, true);
    QVERIFY(box.isItemChecked(1));
    QCOMPARE(box.checkedData(), QList<QVariant>({1, 2, 3}));

    for (int row = 0; row < 3; ++row)
        box.setItemChecked(row, false);
    QVERIFY(!box.hasChecked());
    QVERIFY(!box.isItemChecked(1));
}

void tst_check_combo_box::setsDataOfAnItem()
{
    CheckComboBox box;
    fill(box);
    box.setCheckItemData(1, QStringLiteral("Hinweis"), Qt::ToolTipRole, true);
    QCOMPARE(box.checkItemData(1, Qt::ToolTipRole), QVariant("Hinweis"));
    QCOMPARE(box.checkItemData(1, Qt::UserRole), QVariant(2));
}

void tst_check_combo_box::reportsAChange_data()
{
    using Change = std::function<void(CheckComboBox&, bool)>;
    const QMap<QByteArray, Change> changes {
        {"check", [](CheckComboBox& box, bool notify) { box.setItemChecked(1, true, notify); }},
        {"data",
         [](CheckComboBox& box, bool notify) { box.setCheckItemData(1, 9, Qt::UserRole, notify); }},
        {"add", [](CheckComboBox& box, bool notify) { box.addCheckItem("x", 9, true, notify); }},
    };
    QTest::addColumn<Change>("change");
    QTest::addColumn<bool>("notify");
    for (auto change = changes.begin(); change != changes.end(); ++change) {
        QTest::newRow((change.key() + ", reported").constData()) << change.value() << true;
        QTest::newRow((change.key() + ", silent").constData()) << change.value() << false;
    }
}

void tst_check_combo_box::reportsAChange()
{
    QFETCH(std::function<void(CheckComboBox&, bool)>, change);
    QFETCH(bool, notify);
    CheckComboBox box;
    fill(box);
    const QSignalSpy spy(&box, &CheckComboBox::checkedChanged);
    change(box, notify);
    QCOMPARE(spy.size(), notify ? 1 : 0);

    // A silent change is over with its call.
    box.setItemChecked(0, false);
    QCOMPARE(spy.size(), notify ? 2 : 1);
}

void tst_check_combo_box::reportsAChangeOfTheModel()
{
    CheckComboBox box;
    fill(box);
    const QSignalSpy spy(&box, &CheckComboBox::checkedChanged);
    box.model()->setData(box.model()->index(1, 0), Qt::Checked, Qt::CheckStateRole);
    QCOMPARE(spy.size(), 1);
    box.setItemChecked(1, true);
    QCOMPARE(spy.size(), 1);
}

void tst_check_combo_box::silentAdditionsReachTheBox()
{
    CheckComboBox box;
    box.addCheckItem("eins", 1, true, false);
    QCOMPARE(box.currentIndex(), 0);
    QCOMPARE(box.view()->model()->rowCount(), 1);
    QCOMPARE(box.checkedText(), "eins");
}

void tst_check_combo_box::theClosedBoxShowsTheCheckedTexts()
{
    CheckComboBox box;
    fill(box);
    QCOMPARE(box.checkedText(), "eins, drei");

    // An ordinary box with that one text looks the same.
    QComboBox ordinary;
    ordinary.addItem("eins, drei");
    ordinary.resize(box.size());
    QCOMPARE(box.grab().toImage(), ordinary.grab().toImage());

    ordinary.setItemText(0, "zwei");
    box.setItemChecked(0, false);
    box.setItemChecked(1, true);
    box.setItemChecked(2, false);
    QCOMPARE(box.grab().toImage(), ordinary.grab().toImage());

    QComboBox empty;
    empty.setPlaceholderText("nichts");
    empty.resize(box.size());
    box.setPlaceholderText("nichts");
    box.setItemChecked(1, false);
    QCOMPARE(box.grab().toImage(), empty.grab().toImage());
}

void tst_check_combo_box::aLongTextIsElided()
{
    CheckComboBox box;
    box.addCheckItem(QString(200, 'W'), 1, true);
    box.resize(200, 30);
    CheckComboBox longer;
    longer.addCheckItem(QString(300, 'W'), 1, true);
    longer.resize(200, 30);
    QComboBox cut;
    cut.addItem(QString(200, 'W'));
    cut.resize(200, 30);
    QCOMPARE(box.grab().toImage(), longer.grab().toImage());
    QVERIFY(box.grab().toImage() != cut.grab().toImage());
}

void tst_check_combo_box::theCurrentItemIsNotShown()
{
    CheckComboBox box;
    fill(box);
    const QImage before = box.grab().toImage();
    box.setCurrentIndex(1);
    QCOMPARE(box.grab().toImage(), before);
}

void tst_check_combo_box::speaksTheCheckedTexts()
{
    CheckComboBox box;
    fill(box);
    box.setAccessibleName("Zahlen");
    QAccessibleInterface* access = QAccessible::queryAccessibleInterface(&box);
    QVERIFY(access);
    QCOMPARE(access->role(), QAccessible::ComboBox);
    QCOMPARE(access->text(QAccessible::Name), "Zahlen");
    QCOMPARE(access->text(QAccessible::Value), "eins, drei");
    QVERIFY(access->state().expandable);
    QVERIFY(!access->state().expanded);
    QCOMPARE(access->childCount(), 1);
    QCOMPARE(access->child(0)->object(), box.view());
    QCOMPARE(access->indexOfChild(access->child(0)), 0);

    box.setItemChecked(0, false);
    QCOMPARE(access->text(QAccessible::Value), "drei");

    box.show();
    access->actionInterface()->doAction(QAccessibleActionInterface::showMenuAction());
    QVERIFY(access->state().expanded);
    access->actionInterface()->doAction(QAccessibleActionInterface::showMenuAction());
    QVERIFY(!access->state().expanded);
}

void tst_check_combo_box::aClickChecksAndLeavesTheListOpen()
{
    CheckComboBox box;
    fill(box);
    const QSignalSpy spy(&box, &CheckComboBox::checkedChanged);
    QVERIFY(openList(box));

    QTest::mouseClick(box.view()->viewport(), Qt::LeftButton, {}, middleOf(box, 1));
    QCOMPARE(box.checkedIndices(), QList<int>({0, 1, 2}));
    QVERIFY(box.view()->isVisible());

    QTest::mouseClick(box.view()->viewport(), Qt::LeftButton, {}, middleOf(box, 0));
    QCOMPARE(box.checkedIndices(), QList<int>({1, 2}));
    QVERIFY(box.view()->isVisible());
    QCOMPARE(spy.size(), 2);

    // Neither another button nor a drag to another item is a click.
    QTest::mouseClick(box.view()->viewport(), Qt::RightButton, {}, middleOf(box, 0));
    QTest::mousePress(box.view()->viewport(), Qt::LeftButton, {}, middleOf(box, 0));
    QTest::mouseRelease(box.view()->viewport(), Qt::LeftButton, {}, middleOf(box, 1));
    QCOMPARE(box.checkedIndices(), QList<int>({1, 2}));
    QCOMPARE(box.currentIndex(), 0);
    box.hidePopup();
}

void tst_check_combo_box::theClickThatOpensTheListChecksNothing()
{
    CheckComboBox box;
    fill(box);
    box.show();
    QTest::mousePress(&box, Qt::LeftButton, {}, box.rect().center());
    QVERIFY(QTest::qWaitForWindowExposed(box.view()->window()));
    QTest::mouseRelease(box.view()->viewport(), Qt::LeftButton, {}, middleOf(box, 1));
    QCOMPARE(box.checkedIndices(), QList<int>({0, 2}));
    QVERIFY(box.view()->isVisible());
    box.hidePopup();
}

void tst_check_combo_box::aDisabledItemCannotBeClicked()
{
    CheckComboBox box;
    fill(box);
    qobject_cast<QStandardItemModel*>(box.model())->item(1)->setEnabled(false);
    QVERIFY(openList(box));
    QTest::mouseClick(box.view()->viewport(), Qt::LeftButton, {}, middleOf(box, 1));
    QVERIFY(!box.isItemChecked(1));
    QVERIFY(box.view()->isVisible());
    box.hidePopup();
}

void tst_check_combo_box::spaceChecksAndLeavesTheListOpen()
{
    CheckComboBox box;
    fill(box);
    QVERIFY(openList(box));
    QTest::keyClick(box.view(), Qt::Key_Down);
    QTest::keyClick(box.view(), Qt::Key_Space);
    QCOMPARE(box.checkedIndices(), QList<int>({0, 1, 2}));
    QTest::keyClick(box.view(), Qt::Key_Space);
    QTest::keyClick(box.view(), Qt::Key_Up);
    QTest::keyClick(box.view(), Qt::Key_Space);
    QCOMPARE(box.checkedIndices(), QList<int>({2}));
    QVERIFY(box.view()->isVisible());
    box.hidePopup();
}

void tst_check_combo_box::closingByKeyChangesNothing_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::newRow("Return") << int(Qt::Key_Return) << Qt::KeyboardModifiers();
    QTest::newRow("F4") << int(Qt::Key_F4) << Qt::KeyboardModifiers();
    QTest::newRow("Escape") << int(Qt::Key_Escape) << Qt::KeyboardModifiers();
    QTest::newRow("Alt and up") << int(Qt::Key_Up) << Qt::KeyboardModifiers(Qt::AltModifier);
    QTest::newRow("Alt and down") << int(Qt::Key_Down) << Qt::KeyboardModifiers(Qt::AltModifier);
}

void tst_check_combo_box::closingByKeyChangesNothing()
{
    QFETCH(int, key);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    CheckComboBox box;
    fill(box);
    const QSignalSpy current(&box, &QComboBox::currentIndexChanged);
    QVERIFY(openList(box));
    QTest::keyClick(box.view(), Qt::Key_Down);
    QTest::keyClick(box.view(), Qt::Key(key), modifiers);
    QTRY_VERIFY(!box.view()->isVisible());
    QCOMPARE(box.checkedIndices(), QList<int>({0, 2}));
    QCOMPARE(current.size(), 0);
}

void tst_check_combo_box::opensByKey_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("space") << int(Qt::Key_Space);
    QTest::newRow("F4") << int(Qt::Key_F4);
    QTest::newRow("down") << int(Qt::Key_Down);
}

void tst_check_combo_box::opensByKey()
{
    QFETCH(int, key);
    CheckComboBox box;
    fill(box);
    box.show();
    QTest::keyClick(&box, Qt::Key(key));
    QVERIFY(box.view()->isVisible());
    QCOMPARE(box.checkedIndices(), QList<int>({0, 2}));
    box.hidePopup();
}

void tst_check_combo_box::keysAndWheelLeaveTheClosedBoxAlone()
{
    CheckComboBox box;
    fill(box);
    box.show();
    box.setFocus();
    const QSignalSpy current(&box, &QComboBox::currentIndexChanged);
    QTest::keyClicks(&box, "zd");
    QTest::keyClick(&box, Qt::Key_End);
    QTest::keyClick(&box, Qt::Key_PageDown);
    QVERIFY(!wheel(box, -120));
    QCOMPARE(box.currentIndex(), 0);
    QCOMPARE(current.size(), 0);
    QCOMPARE(box.checkedIndices(), QList<int>({0, 2}));
    QVERIFY(!box.view()->isVisible());
}

QTEST_MAIN(tst_check_combo_box)
#include "tst_check_combo_box.moc"
