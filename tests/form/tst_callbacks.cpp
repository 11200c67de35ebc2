#include "form/events/form_context.h"
#include "form/mod_form_qt.h"

#include <QtTest>
#include <QtWidgets>

using namespace mod_form_qt;

class tst_callbacks : public QObject
{
    Q_OBJECT

private slots:
    void unsetCallbackAgrees();
    void functionThatHoldsNothingAgrees();
    void bothKindsOfFunctionAreSet();
    void oldKindGetsAllArguments();
    void newKindGetsAllArguments();
    void rowIsAskedBeforeTheForm();
    void refusalOfTheRowSparesTheForm();
    void refusalOfTheFormCounts();
    void everythingButZeroAgrees();
    void rowAloneDecidesWithoutACallbackOfTheForm();
    void bothGetTheRaisingRow();
    void rowCanAnswerForTheForm();
    void blockedEventsAskNobody();
    void blockedEventsTellNobody();
    void resultsOfTellingAreIgnored();
    void widgetThatTheRowDeletesIsNullForTheForm();
    void formThatTheRowDeletesIsNotAsked();
    void formThatTheRowDeletesIsNotTold();
    void disarmedFormIsNotAsked();
    void everyKindHasItsName();
};

namespace {

Callback noting(QStringList& calls, const QString& name, int result)
{
    return ContextCallback([&calls, name, result](const CallbackContext&) {
        calls.append(name);
        return result;
    });
}

INFO rowWith(const Callback& callback, const char* key = "row")
{
    return INFO(E_LINEEDIT, A_NONE, {}, {}, key, callback);
}

int ask(const INFO& row, const INFO& mainRow, QWidget* mainWidget, QWidget* widget)
{
    return BeforeCallBack(row, mainRow, mainWidget, widget, 1, kBeforeAction, nullptr, nullptr,
                          nullptr);
}

void tell(const INFO& row, const INFO& mainRow, QWidget* mainWidget, QWidget* widget)
{
    AfterCallBack(row, mainRow, mainWidget, widget, 1, kAfterAction, nullptr, nullptr, nullptr);
}

} // namespace

void tst_callbacks::unsetCallbackAgrees()
{
    QVERIFY(!IsCallbackSet(Callback()));
    QCOMPARE(ExecCallBack({}, {}, {}, {}, kInit, INFO(), nullptr, nullptr, nullptr), 1);
    QCOMPARE(ask(INFO(), INFO(), nullptr, nullptr), 1);
}

void tst_callbacks::functionThatHoldsNothingAgrees()
{
    const INFO row;
    QCOMPARE(ExecCallBack(LegacyCallback(), {}, {}, {}, kInit, row, nullptr, nullptr, nullptr), 1);
    QCOMPARE(ExecCallBack(ContextCallback(), {}, {}, {}, kInit, row, nullptr, nullptr, nullptr), 1);
}

void tst_callbacks::bothKindsOfFunctionAreSet()
{
    QVERIFY(IsCallbackSet(ContextCallback([](const CallbackContext&) { return 1; })));
    QVERIFY(IsCallbackSet(LegacyCallback(
        [](const QPointer<QWidget>&, const QPointer<QWidget>&, const QVariant&, CallbackType,
           const INFO&, QMap<QString, QVariant>*, QVariant*, const QVariant*) { return 1; })));
}

void tst_callbacks::oldKindGetsAllArguments()
{
    QWidget window;
    QWidget source;
    QMap<QString, QVariant> map;
    QVariant result = "result";
    const QVariant previous = "previous";
    INFO row;
    row.key = "key";
    bool called = false;
    const LegacyCallback callback =
        [&](const QPointer<QWidget>& mainWidget, const QPointer<QWidget>& widget,
            const QVariant& value, CallbackType type, const INFO& raising,
            QMap<QString, QVariant>* data, QVariant* out, const QVariant* before) {
            called = true;
            return mainWidget == &window && widget == &source && value == QVariant("value")
                    && type == kValidate && raising.key == "key" && data == &map && out == &result
                    && before == &previous
                ? 42
                : 0;
        };
    QCOMPARE(
        ExecCallBack(callback, &window, &source, "value", kValidate, row, &map, &result, &previous),
        42);
    QVERIFY(called);
}

void tst_callbacks::newKindGetsAllArguments()
{
    QWidget window;
    QWidget source;
    QMap<QString, QVariant> map;
    QVariant result = "result";
    const QVariant previous = "previous";
    INFO row;
    row.key = "key";
    const ContextCallback callback = [&](const CallbackContext& context) {
        return context.mainWidget == &window && context.widget == &source
                && context.value == QVariant("value") && context.type == kValidate
                && context.row.key == "key" && context.map == &map && context.result == &result
                && context.previous == &previous
            ? 42
            : 0;
    };
    QCOMPARE(
        ExecCallBack(callback, &window, &source, "value", kValidate, row, &map, &result, &previous),
        42);
}

void tst_callbacks::rowIsAskedBeforeTheForm()
{
    QStringList calls;
    QCOMPARE(
        ask(rowWith(noting(calls, "row", 1)), rowWith(noting(calls, "main", 1)), nullptr, nullptr),
        1);
    QCOMPARE(calls, QStringList({"row", "main"}));
}

void tst_callbacks::refusalOfTheRowSparesTheForm()
{
    QStringList calls;
    QCOMPARE(
        ask(rowWith(noting(calls, "row", 0)), rowWith(noting(calls, "main", 1)), nullptr, nullptr),
        0);
    QCOMPARE(calls, QStringList({"row"}));
}

void tst_callbacks::refusalOfTheFormCounts()
{
    QStringList calls;
    QCOMPARE(
        ask(rowWith(noting(calls, "row", 1)), rowWith(noting(calls, "main", 0)), nullptr, nullptr),
        0);
    QCOMPARE(calls, QStringList({"row", "main"}));
}

void tst_callbacks::everythingButZeroAgrees()
{
    QStringList calls;
    QCOMPARE(ask(rowWith(noting(calls, "row", -7)), rowWith(noting(calls, "main", 12)), nullptr,
                 nullptr),
             1);
    QCOMPARE(calls.size(), 2);
}

void tst_callbacks::rowAloneDecidesWithoutACallbackOfTheForm()
{
    QStringList calls;
    QCOMPARE(ask(rowWith(noting(calls, "row", 5)), INFO(), nullptr, nullptr), 1);
    QCOMPARE(ask(rowWith(noting(calls, "row", 0)), INFO(), nullptr, nullptr), 0);
}

void tst_callbacks::bothGetTheRaisingRow()
{
    QStringList keys;
    const Callback note = ContextCallback([&keys](const CallbackContext& context) {
        keys.append(context.row.key);
        return 1;
    });
    ask(rowWith(note, "raising"), rowWith(note, "form"), nullptr, nullptr);
    tell(rowWith(note, "raising"), rowWith(note, "form"), nullptr, nullptr);
    QCOMPARE(keys, QStringList({"raising", "raising", "raising", "raising"}));
}

void tst_callbacks::rowCanAnswerForTheForm()
{
    QVariant seen;
    const Callback answer = ContextCallback([](const CallbackContext& context) {
        *context.result = "from the row";
        return 1;
    });
    const Callback look = ContextCallback([&seen](const CallbackContext& context) {
        seen = *context.result;
        return 1;
    });
    QVariant result;
    BeforeCallBack(rowWith(answer), rowWith(look), nullptr, nullptr, {}, kBeforeDataChanged,
                   nullptr, &result, nullptr);
    QCOMPARE(seen.toString(), "from the row");
    QCOMPARE(result.toString(), "from the row");
}

void tst_callbacks::blockedEventsAskNobody()
{
    QStringList calls;
    QWidget widget;
    const INFO row = rowWith(noting(calls, "row", 0));
    const INFO main = rowWith(noting(calls, "main", 0));
    {
        const INFO::EVENTBLOCK block(&widget);
        QCOMPARE(ask(row, main, nullptr, &widget), 1);
        QVERIFY(calls.isEmpty());
    }
    QCOMPARE(ask(row, main, nullptr, &widget), 0);
}

void tst_callbacks::blockedEventsTellNobody()
{
    QStringList calls;
    QWidget widget;
    const INFO row = rowWith(noting(calls, "row", 1));
    const INFO main = rowWith(noting(calls, "main", 1));
    {
        const INFO::EVENTBLOCK block(&widget);
        tell(row, main, nullptr, &widget);
        QVERIFY(calls.isEmpty());
    }
    tell(row, main, nullptr, &widget);
    QCOMPARE(calls, QStringList({"row", "main"}));
}

void tst_callbacks::resultsOfTellingAreIgnored()
{
    QStringList calls;
    tell(rowWith(noting(calls, "row", 0)), rowWith(noting(calls, "main", 0)), nullptr, nullptr);
    QCOMPARE(calls, QStringList({"row", "main"}));
}

void tst_callbacks::widgetThatTheRowDeletesIsNullForTheForm()
{
    QWidget window;
    auto* widget = new QWidget(&window);
    const Callback remove = ContextCallback([](const CallbackContext& context) {
        delete context.widget.data();
        return 1;
    });
    int calls = 0;
    const Callback look = ContextCallback([&calls](const CallbackContext& context) {
        calls += context.widget ? 100 : 1;
        return 1;
    });
    QCOMPARE(ask(rowWith(remove), rowWith(look), &window, widget), 1);
    tell(rowWith(remove), rowWith(look), &window, new QWidget(&window));
    QCOMPARE(calls, 2);
}

void tst_callbacks::formThatTheRowDeletesIsNotAsked()
{
    QStringList calls;
    const Callback remove = ContextCallback([](const CallbackContext& context) {
        delete context.mainWidget.data();
        return 1;
    });
    QCOMPARE(ask(rowWith(remove), rowWith(noting(calls, "main", 1)), new QWidget, nullptr), 0);
    QVERIFY(calls.isEmpty());
}

void tst_callbacks::formThatTheRowDeletesIsNotTold()
{
    QStringList calls;
    const Callback remove = ContextCallback([](const CallbackContext& context) {
        delete context.mainWidget.data();
        return 1;
    });
    tell(rowWith(remove), rowWith(noting(calls, "main", 1)), new QWidget, nullptr);
    QVERIFY(calls.isEmpty());
}

void tst_callbacks::disarmedFormIsNotAsked()
{
    QStringList calls;
    QWidget window;
    const Callback disarm = ContextCallback([](const CallbackContext& context) {
        disarmForm(context.mainWidget);
        return 1;
    });
    QCOMPARE(ask(rowWith(disarm), rowWith(noting(calls, "main", 1)), &window, nullptr), 0);
    QVERIFY(calls.isEmpty());
}

void tst_callbacks::everyKindHasItsName()
{
    const QStringList names {"kInit",
                             "kAccept",
                             "kReject",
                             "kClose",
                             "kBeforeDataChanged",
                             "kAfterDataChanged",
                             "kBeforeAction",
                             "kAfterAction",
                             "kValidate",
                             "kTimer",
                             "kSetActive",
                             "kKillActive",
                             "kCleanup"};
    QCOMPARE(callbackTypeNames.size(), names.size());
    for (int kind = 0; kind < names.size(); ++kind)
        QCOMPARE(callbackTypeNames.value(CallbackType(kind)), names.at(kind));
}

QTEST_MAIN(tst_callbacks)
#include "tst_callbacks.moc"
