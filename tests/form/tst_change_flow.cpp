#include "form/events/change_flow.h"

#include "event_bench.h"

using namespace mod_form_qt;

class tst_change_flow : public QObject
{
    Q_OBJECT

private slots:
    void changeIsAskedForStoredAndTold();
    void withoutTheAttributeNobodyIsAsked();
    void refusalOfTheRowShowsThePreviousValueAndLeavesTheMap();
    void refusalOfTheFormDoesSoAfterTheRowAgreed();
    void refusalIsShownSilently();
    void blockedEventsCallNobodyAndTheChangeProceeds();
    void writtenResultIsStoredAndShown();
    void writtenResultOfAnotherTypeIsShown();
    void setDataWithoutEmitRaisesNoCallback();
    void equalValueIsNoChange();
    void equalValueIsAskedAboutAllTheSame();
    void triggeredChangeCallsBackForAnEqualValue();
    void previousValueIsTheOneBeforeTheWrite();
    void boundRowWritesItsVariable();
    void refusedBoundRowLeavesItsVariable();
    void passedKeyServesARowWithoutOne();
    void ownKeyBeatsThePassedOne();
    void rowWithoutKeyComparesWithTheIncomingValue();
    void rowWithoutKeyTellsItsOwnCallbackInAnyCase();
    void rowWithoutKeyKeepsARefusedValue();
    void nullMapIsTolerated();
    void refusedKeystrokeLeavesTheCursor_data();
    void refusedKeystrokeLeavesTheCursor();
    void formMayGoInACallback_data();
    void formMayGoInACallback();
    void widgetMayGoInACallback();
};

namespace {

using Bench = EventBench;

QLineEdit* wiredEdit(Bench& bench, const std::bitset<256>& attr, const DataVariant& data = {},
                     const char* key = "text")
{
    auto* edit = new QLineEdit(INFO::getBaseValue(INFO(E_LINEEDIT, {}, {}, data).data).toString());
    bench.wire(INFO(E_LINEEDIT, attr, {}, data, key), {{edit, E_LINEEDIT}});
    return edit;
}

} // namespace

void tst_change_flow::changeIsAskedForStoredAndTold()
{
    Bench bench;
    QLineEdit* edit = wiredEdit(bench, A_USE_BEFORE_EVENT);
    bench.rowDecides = [&bench](const CallbackContext& context) {
        const bool stored = bench.map.value("text").toString() == "x";
        return stored == (context.type == kAfterDataChanged) ? 1 : 0;
    };
    QTest::keyClicks(edit, "x");
    QCOMPARE(bench.events, Bench::askedAndTold());
    QCOMPARE(bench.lastValue.toString(), "x");
    QCOMPARE(bench.map.value("text").toString(), "x");
}

void tst_change_flow::withoutTheAttributeNobodyIsAsked()
{
    Bench bench;
    QTest::keyClicks(wiredEdit(bench, A_NONE), "x");
    QCOMPARE(bench.events, Bench::told());
    QCOMPARE(bench.map.value("text").toString(), "x");
}

void tst_change_flow::refusalOfTheRowShowsThePreviousValueAndLeavesTheMap()
{
    Bench bench;
    QLineEdit* edit = wiredEdit(bench, A_USE_BEFORE_EVENT, QVariant("old"));
    bench.rowDecides = refusing(kBeforeDataChanged);
    QTest::keyClicks(edit, "x");
    QCOMPARE(edit->text(), "old");
    QCOMPARE(bench.map.value("text").toString(), "old");
    QCOMPARE(bench.events, QStringList({"row kBeforeDataChanged"}));
}

void tst_change_flow::refusalOfTheFormDoesSoAfterTheRowAgreed()
{
    Bench bench;
    QLineEdit* edit = wiredEdit(bench, A_USE_BEFORE_EVENT, QVariant("old"));
    bench.mainDecides = refusing(kBeforeDataChanged);
    QTest::keyClicks(edit, "x");
    QCOMPARE(edit->text(), "old");
    QCOMPARE(bench.map.value("text").toString(), "old");
    QCOMPARE(bench.events, QStringList({"row kBeforeDataChanged", "main kBeforeDataChanged"}));
}

void tst_change_flow::refusalIsShownSilently()
{
    Bench bench;
    QLineEdit* edit = wiredEdit(bench, A_USE_BEFORE_EVENT, QVariant("old"));
    bench.rowDecides = refusing(kBeforeDataChanged);
    const QSignalSpy changed(edit, &QLineEdit::textChanged);
    QTest::keyClicks(edit, "x");
    QCOMPARE(changed.size(), 1); // the user's
}

void tst_change_flow::blockedEventsCallNobodyAndTheChangeProceeds()
{
    Bench bench;
    QLineEdit* edit = wiredEdit(bench, A_USE_BEFORE_EVENT);
    bench.rowDecides = refusing(kBeforeDataChanged);
    const INFO::EVENTBLOCK block(edit);
    QTest::keyClicks(edit, "x");
    QVERIFY(bench.events.isEmpty());
    QCOMPARE(edit->text(), "x");
    QCOMPARE(bench.map.value("text").toString(), "x");
}

void tst_change_flow::writtenResultIsStoredAndShown()
{
    Bench bench;
    QLineEdit* edit = wiredEdit(bench, A_USE_BEFORE_EVENT);
    bench.rowDecides = [](const CallbackContext& context) {
        if (context.type == kBeforeDataChanged)
            *context.result = context.value.toString().toUpper();
        return 1;
    };
    const QSignalSpy changed(edit, &QLineEdit::textChanged);
    QTest::keyClicks(edit, "x");
    QCOMPARE(edit->text(), "X");
    QCOMPARE(bench.map.value("text").toString(), "X");
    QCOMPARE(bench.lastValue.toString(), "X");
    QCOMPARE(changed.size(), 1);
    QCOMPARE(bench.events, Bench::askedAndTold());
}

void tst_change_flow::writtenResultOfAnotherTypeIsShown()
{
    Bench bench;
    QLineEdit* edit = wiredEdit(bench, A_USE_BEFORE_EVENT | A_LINEEDIT_UPDATE_ON_FINISH);
    bench.rowDecides = [](const CallbackContext& context) {
        if (context.type == kBeforeDataChanged)
            *context.result = context.value.toInt();
        return 1;
    };
    QTest::keyClicks(edit, "05");
    QTest::keyClick(edit, Qt::Key_Return);
    QCOMPARE(edit->text(), "5");
    QCOMPARE(bench.map.value("text"), QVariant(5));
}

void tst_change_flow::setDataWithoutEmitRaisesNoCallback()
{
    Bench bench;
    const QLineEdit* edit = wiredEdit(bench, A_USE_BEFORE_EVENT, QVariant("old"));
    INFO::setData(&bench.map, "text", "new", false);
    QCOMPARE(edit->text(), "new");
    QCOMPARE(bench.map.value("text").toString(), "new");
    QVERIFY(bench.events.isEmpty());
}

void tst_change_flow::equalValueIsNoChange()
{
    Bench bench;
    QLineEdit edit("same");
    bench.map.insert("text", "same");
    const INFO row(E_LINEEDIT, A_NONE, {}, {}, "text", bench.recorder("row", &bench.rowDecides));
    QCOMPARE(INFO::handleChangedValues(row, bench.form->mainRow, bench.window.get(), &edit, "other",
                                       &bench.map, {}),
             0);
    QVERIFY(bench.events.isEmpty());
}

void tst_change_flow::equalValueIsAskedAboutAllTheSame()
{
    Bench bench;
    QLineEdit* edit =
        wiredEdit(bench, A_USE_BEFORE_EVENT | A_LINEEDIT_UPDATE_ON_FINISH, QVariant("same"));
    QTest::keyClick(edit, Qt::Key_Return);
    QCOMPARE(bench.events, QStringList({"row kBeforeDataChanged", "main kBeforeDataChanged"}));
}

void tst_change_flow::triggeredChangeCallsBackForAnEqualValue()
{
    Bench bench;
    QLineEdit* edit = wiredEdit(bench, A_NONE, QVariant("same"));
    INFO::triggerEmit(edit, false, false);
    QCOMPARE(bench.events, Bench::told());
    QCOMPARE(bench.lastValue.toString(), "same");
    QVERIFY(!emitHelper::active);
}

void tst_change_flow::previousValueIsTheOneBeforeTheWrite()
{
    Bench bench;
    QVariant variable = "old";
    QLineEdit* edit = wiredEdit(bench, A_USE_BEFORE_EVENT, &variable);
    QStringList previous;
    bench.rowDecides = [&previous](const CallbackContext& context) {
        previous.append(context.previous->toString());
        return 1;
    };
    edit->selectAll();
    QTest::keyClicks(edit, "x");
    QCOMPARE(previous, QStringList({"old", "old"}));
}

void tst_change_flow::boundRowWritesItsVariable()
{
    Bench bench;
    QVariant variable = "old";
    QLineEdit* edit = wiredEdit(bench, A_NONE, &variable);
    edit->selectAll();
    QTest::keyClicks(edit, "x");
    QCOMPARE(variable.toString(), "x");
    QVERIFY(INFO::isVariantPtr(bench.map.value("text")));

    bench.map.insert("text", "plain"); // the entry lost the pointer, the row has not
    QTest::keyClicks(edit, "y");
    QCOMPARE(variable.toString(), "xy");
    QCOMPARE(bench.map.value("text").toString(), "xy");
    QCOMPARE(bench.lastPrevious.toString(), "x");
}

void tst_change_flow::refusedBoundRowLeavesItsVariable()
{
    Bench bench;
    QVariant variable = "old";
    QLineEdit* edit = wiredEdit(bench, A_USE_BEFORE_EVENT, &variable);
    bench.rowDecides = refusing(kBeforeDataChanged);
    QTest::keyClicks(edit, "x");
    QCOMPARE(edit->text(), "old");
    QCOMPARE(variable.toString(), "old");
}

void tst_change_flow::passedKeyServesARowWithoutOne()
{
    Bench bench;
    QLineEdit edit("new");
    QCOMPARE(INFO::handleChangedValues(INFO(E_LINEEDIT), bench.form->mainRow, bench.window.get(),
                                       &edit, {}, &bench.map, "passed"),
             1);
    QCOMPARE(bench.map.value("passed").toString(), "new");
}

void tst_change_flow::ownKeyBeatsThePassedOne()
{
    Bench bench;
    QLineEdit edit("new");
    const INFO row(E_LINEEDIT, A_NONE, {}, {}, "own");
    QCOMPARE(INFO::handleChangedValues(row, bench.form->mainRow, bench.window.get(), &edit, {},
                                       &bench.map, "passed"),
             1);
    QCOMPARE(bench.map.value("own").toString(), "new");
    QVERIFY(!bench.map.contains("passed"));
}

void tst_change_flow::rowWithoutKeyComparesWithTheIncomingValue()
{
    Bench bench;
    QLineEdit edit("shown");
    const auto handle = [&](const QVariant& incoming) {
        return INFO::handleChangedValues(INFO(E_LINEEDIT), bench.form->mainRow, bench.window.get(),
                                         &edit, incoming, &bench.map, {});
    };
    QCOMPARE(handle("shown"), 0);
    QVERIFY(bench.events.isEmpty());
    QCOMPARE(handle("other"), 1);
    QCOMPARE(bench.events, QStringList({"main kAfterDataChanged"}));
    QCOMPARE(bench.lastPrevious.toString(), "other");
    QVERIFY(bench.map.isEmpty());
}

void tst_change_flow::rowWithoutKeyTellsItsOwnCallbackInAnyCase()
{
    Bench bench;
    QLineEdit edit("shown");
    const INFO row(E_LINEEDIT, A_NONE, {}, {}, {}, bench.recorder("row", &bench.rowDecides));
    QCOMPARE(INFO::handleChangedValues(row, bench.form->mainRow, bench.window.get(), &edit, "shown",
                                       &bench.map, {}),
             1);
    QCOMPARE(bench.events, Bench::told());
}

void tst_change_flow::rowWithoutKeyKeepsARefusedValue()
{
    Bench bench;
    QLineEdit edit("shown");
    bench.rowDecides = refusing(kBeforeDataChanged);
    const INFO row(E_LINEEDIT, A_USE_BEFORE_EVENT, {}, {}, {},
                   bench.recorder("row", &bench.rowDecides));
    QCOMPARE(INFO::handleChangedValues(row, bench.form->mainRow, bench.window.get(), &edit,
                                       "before", &bench.map, {}),
             0);
    QCOMPARE(edit.text(), "shown");
}

void tst_change_flow::nullMapIsTolerated()
{
    Bench bench;
    bench.form->map = nullptr;
    QLineEdit* edit = wiredEdit(bench, A_USE_BEFORE_EVENT);
    QTest::keyClicks(edit, "x");
    QCOMPARE(bench.events, Bench::askedAndTold());
    QTest::keyClick(edit, Qt::Key_Backspace); // back to the first value, and yet a change
    QCOMPARE(bench.events.size(), 8);
    QCOMPARE(bench.lastPrevious.toString(), "x");
}

void tst_change_flow::refusedKeystrokeLeavesTheCursor_data()
{
    QTest::addColumn<int>("eleType");
    QTest::newRow("line edit") << E_LINEEDIT;
    QTest::newRow("text edit") << E_TEXTEDIT;
    QTest::newRow("plain text edit") << E_PLAINTEXT;
}

void tst_change_flow::refusedKeystrokeLeavesTheCursor()
{
    QFETCH(int, eleType);
    Bench bench;
    QWidget* widget = nullptr;
    if (eleType == E_LINEEDIT)
        widget = new QLineEdit("abcdef");
    else if (eleType == E_TEXTEDIT)
        widget = new QTextEdit("abcdef");
    else
        widget = new QPlainTextEdit("abcdef");
    if (auto* text = qobject_cast<QTextEdit*>(widget))
        text->setAcceptRichText(false);
    bench.wire(INFO(eleType, A_USE_BEFORE_EVENT, {}, QVariant("abcdef"), "text"),
               {{widget, eleType}});
    bench.rowDecides = [](const CallbackContext& context) {
        return context.value.toString().contains('!') ? 0 : 1;
    };
    QTest::keyClick(widget, Qt::Key_Home);
    QTest::keyClick(widget, Qt::Key_Right);
    QTest::keyClicks(widget, "!");
    QCOMPARE(bench.map.value("text").toString(), "abcdef");
    QTest::keyClicks(widget, "x");
    // Behind the place of the refused character, neither at the start nor at the end.
    QCOMPARE(bench.map.value("text").toString(), "abxcdef");
}

void tst_change_flow::formMayGoInACallback_data()
{
    QTest::addColumn<int>("type");
    QTest::newRow("when asked") << int(kBeforeDataChanged);
    QTest::newRow("when told") << int(kAfterDataChanged);
}

void tst_change_flow::formMayGoInACallback()
{
    QFETCH(int, type);
    Bench bench;
    QLineEdit edit("new");
    bench.rowDecides = [&bench, type](const CallbackContext& context) {
        if (context.type == type)
            bench.window.reset();
        return 1;
    };
    const INFO row(E_LINEEDIT, A_USE_BEFORE_EVENT, {}, {}, "text",
                   bench.recorder("row", &bench.rowDecides));
    INFO::handleChangedValues(row, bench.form->mainRow, bench.window.get(), &edit, {}, &bench.map,
                              {});
    QVERIFY(bench.window == nullptr);
    const bool asked = type == kBeforeDataChanged;
    QCOMPARE(bench.map.contains("text"), !asked);
    QCOMPARE(bench.events,
             asked ? QStringList({"row kBeforeDataChanged"})
                   : QStringList({"row kBeforeDataChanged", "main kBeforeDataChanged",
                                  "row kAfterDataChanged"}));
}

void tst_change_flow::widgetMayGoInACallback()
{
    Bench bench;
    auto* edit = new QLineEdit("new");
    bench.rowDecides = [&edit](const CallbackContext&) {
        delete edit;
        edit = nullptr;
        return 1;
    };
    const INFO row(E_LINEEDIT, A_USE_BEFORE_EVENT, {}, {}, "text",
                   bench.recorder("row", &bench.rowDecides));
    QCOMPARE(INFO::handleChangedValues(row, bench.form->mainRow, bench.window.get(), edit, {},
                                       &bench.map, {}),
             1);
    QCOMPARE(bench.map.value("text").toString(), "new"); // agreed to is agreed to
}

QTEST_MAIN(tst_change_flow)
#include "tst_change_flow.moc"
