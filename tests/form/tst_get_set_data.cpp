#include "tests/form/hand_made_form.h"

#include <QTest>

using namespace mod_form_qt;

namespace {

/// Makes a widget of one class and tells the signal that it raises on a change.
struct Kind
{
    std::function<QWidget*()> make;
    const char* signal;
};

QMap<QString, Kind> kinds()
{
    const auto rich = [](bool on) -> QWidget* {
        auto* edit = new QTextEdit;
        edit->setAcceptRichText(on);
        return edit;
    };
    return {
        {"QSpinBox", {[]() -> QWidget* { return new QSpinBox; }, SIGNAL(valueChanged(int))}},
        {"QDoubleSpinBox",
         {[]() -> QWidget* { return new QDoubleSpinBox; }, SIGNAL(valueChanged(double))}},
        {"QDateEdit", {[]() -> QWidget* { return new QDateEdit; }, SIGNAL(dateChanged(QDate))}},
        {"QDateTimeEdit",
         {[]() -> QWidget* { return new QDateTimeEdit; }, SIGNAL(dateTimeChanged(QDateTime))}},
        {"QTextEdit", {[rich] { return rich(false); }, SIGNAL(textChanged())}},
        {"QPlainTextEdit",
         {[]() -> QWidget* { return new QPlainTextEdit; }, SIGNAL(textChanged())}},
        {"QLineEdit", {[]() -> QWidget* { return new QLineEdit; }, SIGNAL(textChanged(QString))}},
        {"QCheckBox", {[]() -> QWidget* { return new QCheckBox; }, SIGNAL(stateChanged(int))}},
        {"QRadioButton", {[]() -> QWidget* { return new QRadioButton; }, SIGNAL(toggled(bool))}},
    };
}

/// Notes, when it makes the text of a new value, whether its line edit is silent.
class ObservedSpinBox : public QSpinBox
{
public:
    mutable bool wasInsideBlocked = false;

protected:
    QString textFromValue(int value) const override
    {
        wasInsideBlocked = lineEdit()->signalsBlocked();
        return QSpinBox::textFromValue(value);
    }
};

QVariant readFrom(QWidget* widget)
{
    QVariant value;
    INFO::getSetData(widget, false, false, value);
    return value;
}

void writeTo(QWidget* widget, QVariant value, bool blockSignals = false)
{
    INFO::getSetData(widget, true, blockSignals, value);
}

} // namespace

class tst_get_set_data : public QObject
{
    Q_OBJECT

private slots:
    void readsWhatItWrote_data();
    void readsWhatItWrote();
    void raisesItsChangeUnlessBlocked_data();
    void raisesItsChangeUnlessBlocked();
    void aBlockedSpinBoxIsSilentInsideToo();
    void signalsAreOnlyBlockedForTheWrite();
    void richTextIsReadAndWrittenAsHtml();
    void plainTextEditShowsHtmlAsItIs();
    void aQCheckBoxWithPartialCheckStateReadsAsFalse();
    void otherWidgetsLeaveTheValueAlone();
    void blockedEventsAreAProperty();
    void nestedGuardsEndWithTheOuterOne();
    void aWidgetThatIsGoneIsNotBlocked();
};

void tst_get_set_data::readsWhatItWrote_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QVariant>("written");
    QTest::addColumn<QVariant>("read");
    const QDate date(2024, 2, 29);
    const QDateTime moment(date, QTime(13, 14));
    QTest::newRow("spin box") << "QSpinBox" << QVariant(42) << QVariant(42);
    QTest::newRow("spin box, text") << "QSpinBox" << QVariant("42") << QVariant(42);
    QTest::newRow("decimal spin box") << "QDoubleSpinBox" << QVariant(1.25) << QVariant(1.25);
    QTest::newRow("date") << "QDateEdit" << QVariant(date) << QVariant(date);
    QTest::newRow("date, moment") << "QDateEdit" << QVariant(moment) << QVariant(date);
    QTest::newRow("moment") << "QDateTimeEdit" << QVariant(moment) << QVariant(moment);
    QTest::newRow("text") << "QTextEdit" << QVariant("<b>x</b>") << QVariant("<b>x</b>");
    QTest::newRow("plain text") << "QPlainTextEdit" << QVariant("a\nb") << QVariant("a\nb");
    QTest::newRow("line") << "QLineEdit" << QVariant("abc") << QVariant("abc");
    QTest::newRow("line, number") << "QLineEdit" << QVariant(5) << QVariant("5");
    QTest::newRow("check box on") << "QCheckBox" << QVariant(true) << QVariant(true);
    QTest::newRow("check box, text") << "QCheckBox" << QVariant("true") << QVariant(true);
    QTest::newRow("radio button") << "QRadioButton" << QVariant(true) << QVariant(true);
}

void tst_get_set_data::readsWhatItWrote()
{
    QFETCH(QString, kind);
    QFETCH(QVariant, written);
    QFETCH(QVariant, read);
    const QScopedPointer<QWidget> widget(kinds()[kind].make());
    writeTo(widget.data(), written);
    QCOMPARE(readFrom(widget.data()), read);
    QCOMPARE(readFrom(widget.data()).typeId(), read.typeId());
}

void tst_get_set_data::raisesItsChangeUnlessBlocked_data()
{
    QTest::addColumn<QVariant>("value");
    const QDate date(2024, 2, 29);
    QTest::newRow("QSpinBox") << QVariant(42);
    QTest::newRow("QDoubleSpinBox") << QVariant(1.25);
    QTest::newRow("QDateEdit") << QVariant(date);
    QTest::newRow("QDateTimeEdit") << QVariant(QDateTime(date, QTime(1, 2)));
    QTest::newRow("QTextEdit") << QVariant("x");
    QTest::newRow("QPlainTextEdit") << QVariant("x");
    QTest::newRow("QLineEdit") << QVariant("x");
    QTest::newRow("QCheckBox") << QVariant(true);
    QTest::newRow("QRadioButton") << QVariant(true);
}

void tst_get_set_data::raisesItsChangeUnlessBlocked()
{
    QFETCH(QVariant, value);
    const Kind kind = kinds()[QTest::currentDataTag()];
    const QScopedPointer<QWidget> loud(kind.make());
    QSignalSpy heard(loud.data(), kind.signal);
    writeTo(loud.data(), value, false);
    QVERIFY(!heard.isEmpty());

    const QScopedPointer<QWidget> quiet(kind.make());
    QSignalSpy unheard(quiet.data(), kind.signal);
    writeTo(quiet.data(), value, true);
    QVERIFY(unheard.isEmpty());
    QCOMPARE(readFrom(quiet.data()), value);
}

void tst_get_set_data::aBlockedSpinBoxIsSilentInsideToo()
{
    ObservedSpinBox box;
    writeTo(&box, 42, true);
    QVERIFY(box.wasInsideBlocked);
    writeTo(&box, 43, false);
    QVERIFY(!box.wasInsideBlocked);
}

void tst_get_set_data::signalsAreOnlyBlockedForTheWrite()
{
    QSpinBox box;
    writeTo(&box, 42, true);
    QVERIFY(!box.signalsBlocked());
    QVERIFY(!box.findChild<QLineEdit*>()->signalsBlocked());
}

void tst_get_set_data::richTextIsReadAndWrittenAsHtml()
{
    QTextEdit edit;
    edit.setAcceptRichText(true);
    writeTo(&edit, "<b>x</b>");
    QCOMPARE(edit.toPlainText(), "x");
    QVERIFY(readFrom(&edit).toString().contains("<html"));
    QVERIFY(readFrom(&edit).toString().contains("font-weight"));
}

void tst_get_set_data::plainTextEditShowsHtmlAsItIs()
{
    QPlainTextEdit edit;
    writeTo(&edit, "<b>x</b>");
    QCOMPARE(edit.toPlainText(), "<b>x</b>");
}

void tst_get_set_data::aQCheckBoxWithPartialCheckStateReadsAsFalse()
{
    QCheckBox box;
    box.setTristate(true);
    box.setCheckState(Qt::PartiallyChecked);
    QCOMPARE(readFrom(&box), QVariant(false));
    box.setCheckState(Qt::Checked);
    QCOMPARE(readFrom(&box), QVariant(true));
    writeTo(&box, false);
    QCOMPARE(box.checkState(), Qt::Unchecked);
}

void tst_get_set_data::otherWidgetsLeaveTheValueAlone()
{
    QLabel label("text");
    QVariant value = 5;
    INFO::getSetData(&label, false, true, value);
    QCOMPARE(value, QVariant(5));
    INFO::getSetData(&label, true, true, value);
    QCOMPARE(label.text(), "text");
    INFO::getSetData(nullptr, false, true, value);
    QCOMPARE(value, QVariant(5));
}

void tst_get_set_data::blockedEventsAreAProperty()
{
    QWidget widget;
    QVERIFY(!INFO::eventBlocked(&widget));
    INFO::blockEvent(&widget, true);
    QVERIFY(INFO::eventBlocked(&widget));
    QCOMPARE(widget.property("mod_form_qt_blockevent"), QVariant(true));
    INFO::blockEvent(&widget, false);
    QVERIFY(!INFO::eventBlocked(&widget));
    QVERIFY(!widget.property("mod_form_qt_blockevent").isValid());
}

void tst_get_set_data::nestedGuardsEndWithTheOuterOne()
{
    QWidget widget;
    {
        const INFO::EVENTBLOCK outer(&widget);
        {
            const INFO::EVENTBLOCK inner(&widget);
            QVERIFY(INFO::eventBlocked(&widget));
        }
        QVERIFY(INFO::eventBlocked(&widget));
    }
    QVERIFY(!INFO::eventBlocked(&widget));
}

void tst_get_set_data::aWidgetThatIsGoneIsNotBlocked()
{
    QPointer<QWidget> widget = new QWidget;
    INFO::blockEvent(widget, true);
    const INFO::EVENTBLOCK guard(widget);
    delete widget;
    QVERIFY(!INFO::eventBlocked(widget));
    INFO::blockEvent(widget, true);
    const INFO::EVENTBLOCK none {QPointer<QWidget>()};
}

QTEST_MAIN(tst_get_set_data)
#include "tst_get_set_data.moc"
