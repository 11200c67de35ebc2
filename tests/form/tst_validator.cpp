#include "event_bench.h"

using namespace mod_form_qt;

class tst_validator : public QObject
{
    Q_OBJECT

private slots:
    void typedTextIsPutBeforeRowAndForm();
    void refusalRejectsTheKeystroke();
    void refusalOfTheFormRejectsTheKeystroke();
    void callbackMayRewriteWhatWasTyped();
    void stateIsAcceptableOrInvalid();
    void positionAndFixupChangeNothing();
    void blockedEventsLetEverythingPass();
    void withoutCallbacksEverythingPasses();
    void formThatIsBeingTakenDownIsNotAsked();
};

namespace {

/// A line edit whose input the bench decides on.
QLineEdit* checkedEdit(EventBench& bench)
{
    auto* edit = new QLineEdit;
    const RowHandle row =
        bench.place(INFO(E_LINEEDIT, A_CALLBACK_VALIDATOR, {}, {}, "name"), {{edit, E_LINEEDIT}});
    edit->setValidator(
        new helper::Validator(bench.window.get(), edit, row->row, row->mainRow(), &bench.map));
    return edit;
}

} // namespace

void tst_validator::typedTextIsPutBeforeRowAndForm()
{
    EventBench bench;
    QLineEdit* edit = checkedEdit(bench);
    QTest::keyClicks(edit, "x");
    QCOMPARE(edit->text(), "x");
    QCOMPARE(bench.events.mid(0, 2), QStringList({"row kValidate", "main kValidate"}));
    QCOMPARE(bench.lastValue.toString(), "x");
    QCOMPARE(bench.lastKey, "name");
    QCOMPARE(bench.lastWidget.data(), edit);
}

void tst_validator::refusalRejectsTheKeystroke()
{
    EventBench bench;
    QLineEdit* edit = checkedEdit(bench);
    bench.rowDecides = [](const CallbackContext& context) {
        return context.value.toString().contains(' ') ? 0 : 1;
    };
    QTest::keyClicks(edit, "a b");
    QCOMPARE(edit->text(), "ab");
}

void tst_validator::refusalOfTheFormRejectsTheKeystroke()
{
    EventBench bench;
    QLineEdit* edit = checkedEdit(bench);
    bench.mainDecides = [](const CallbackContext& context) {
        return context.value.toString().contains(' ') ? 0 : 1;
    };
    QTest::keyClicks(edit, "a b");
    QCOMPARE(edit->text(), "ab");
}

void tst_validator::callbackMayRewriteWhatWasTyped()
{
    EventBench bench;
    QLineEdit* edit = checkedEdit(bench);
    bench.rowDecides = [](const CallbackContext& context) {
        *context.result = context.result->toString().toUpper();
        return 1;
    };
    QTest::keyClicks(edit, "abc");
    QCOMPARE(edit->text(), "ABC");
}

void tst_validator::stateIsAcceptableOrInvalid()
{
    EventBench bench;
    const QLineEdit* edit = checkedEdit(bench);
    QString text = "x";
    int pos = 1;
    bench.rowDecides = [](const CallbackContext&) { return 7; };
    QCOMPARE(edit->validator()->validate(text, pos), QValidator::Acceptable);
    bench.rowDecides = [](const CallbackContext& context) {
        *context.result = "rewritten";
        return 0;
    };
    QCOMPARE(edit->validator()->validate(text, pos), QValidator::Invalid);
    QCOMPARE(text, "x");
}

void tst_validator::positionAndFixupChangeNothing()
{
    EventBench bench;
    const QLineEdit* edit = checkedEdit(bench);
    bench.rowDecides = [](const CallbackContext& context) {
        *context.result = "a longer text";
        return 1;
    };
    QString text = "x";
    int pos = 1;
    edit->validator()->validate(text, pos);
    QCOMPARE(text, "a longer text");
    QCOMPARE(pos, 1);
    const QStringList before = bench.events;
    edit->validator()->fixup(text);
    QCOMPARE(text, "a longer text");
    QCOMPARE(bench.events, before);
}

void tst_validator::blockedEventsLetEverythingPass()
{
    EventBench bench;
    QLineEdit* edit = checkedEdit(bench);
    bench.rowDecides = refusing(kValidate);
    const INFO::EVENTBLOCK block(edit);
    QTest::keyClicks(edit, "x");
    QCOMPARE(edit->text(), "x");
    QVERIFY(bench.events.isEmpty());
}

void tst_validator::withoutCallbacksEverythingPasses()
{
    QLineEdit edit;
    edit.setValidator(new helper::Validator(nullptr, &edit, INFO(), INFO(), nullptr));
    QTest::keyClicks(&edit, "x");
    QCOMPARE(edit.text(), "x");
}

void tst_validator::formThatIsBeingTakenDownIsNotAsked()
{
    EventBench bench;
    QLineEdit* edit = checkedEdit(bench);
    disarmForm(bench.window.get());
    edit->setText("late");
    QCOMPARE(edit->text(), "late");
    QVERIFY(bench.events.isEmpty());
}

QTEST_MAIN(tst_validator)
#include "tst_validator.moc"
