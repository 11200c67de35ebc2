#include "form/events/button_actions.h"

#include "button_bench.h"

using namespace mod_form_qt;

namespace {

using Bench = EventBench;

/// Takes the addresses that would leave the program.
class Addresses : public QObject
{
    Q_OBJECT

public:
    QList<QUrl> opened;

    Addresses()
    {
        for (const QString& scheme : schemes())
            QDesktopServices::setUrlHandler(scheme, this, "take");
    }

    ~Addresses() override
    {
        for (const QString& scheme : schemes())
            QDesktopServices::unsetUrlHandler(scheme);
    }

public slots:

    void take(const QUrl& url) { opened.append(url); }

private:
    static QStringList schemes() { return {"file", "http", "https", "ftp"}; }
};

/// A form in a dialog, with one of the buttons that end it.
struct ClosingForm
{
    QDialog* dialog = new QDialog;
    Bench bench;
    QPushButton* button;

    ClosingForm(int eleType, const std::bitset<256>& attr)
    {
        bench.window.reset(dialog);
        new QVBoxLayout(dialog);
        bench.form->mainWidget = dialog;
        bench.form->armed = formArmed(dialog);
        button = wiredButton(bench, eleType, {}, attr, "");
        dialog->open();
    }
};

/// Presses the button of a row behind its own dialog of class T: no second one may come up.
template <typename T>
void opensOneAtATime(int eleType, const QVariant& value)
{
    Bench bench;
    QPushButton* button = wiredButton(bench, eleType, value, A_USE_BEFORE_EVENT);
    QCOMPARE(dialogsOfTwoClicks<T>(button), 1);
    QCOMPARE(bench.events, Bench::askedAndTold("kBeforeAction", "kAfterAction"));
    // Once it has gone the button serves again.
    const Answer<T> answer(rejectDialog);
    click(button);
    QCOMPARE(answer.answered, 1);
}

} // namespace

class tst_button_actions : public QObject
{
    Q_OBJECT

private slots:
    // plain buttons
    void plainButtonsRaiseTheirActions_data();
    void plainButtonsRaiseTheirActions();
    void refusedButtonHasNotActed();
    void disarmedButtonDoesNothing();
    void formMayGoWhenAButtonIsAskedFor();
    // buttons that end the form
    void closingButtonEndsTheDialog_data();
    void closingButtonEndsTheDialog();
    void refusedClosingButtonAsksNothingFurther();
    void refusedClosingHasNotActed();
    // addresses
    void folderIsShown();
    void emptyFolderIsNotShown();
    void addressIsOpened_data();
    void addressIsOpened();
    void addressOfARowWithoutKeyIsItsData();
    void addressOfABoundRowIsItsVariable();
    // colours and fonts
    void chosenColorIsStoredAndShown();
    void refusedColorShowsThePreviousOne();
    void cancelledColorStays();
    void swatchIsAsHighAsTheFont();
    void chosenFontIsStoredAndShown();
    void fontTextNamesFamilyAndSize();
    void colorButtonBehindItsDialogOpensNoSecondOne();
    void fontButtonBehindItsDialogOpensNoSecondOne();
    void colorSetBehindItsDialogIsShownAndTold();
    void dialogsCanBeAnsweredWhoseButtonIsDisabledMeanwhile();
    // under a triggered change
    void triggeredButtonOpensNothing_data();
    void triggeredButtonOpensNothing();
    void triggeredColorShowsTheMap();
    void triggeredFontShowsTheMap();
};

// ------------------------------------------------------------------ plain buttons

void tst_button_actions::plainButtonsRaiseTheirActions_data()
{
    QTest::addColumn<int>("eleType");
    QTest::newRow("button") << E_BUTTON;
    QTest::newRow("help") << E_HELP_BUTTON;
}

void tst_button_actions::plainButtonsRaiseTheirActions()
{
    QFETCH(int, eleType);
    Bench bench;
    QPushButton* silent = wiredButton(bench, eleType, QVariant("payload"), A_NONE, "one");
    click(silent);
    QCOMPARE(bench.events, Bench::told("kAfterAction"));
    QCOMPARE(bench.lastValue.toString(), "payload");
    QCOMPARE(bench.lastWidget.data(), silent);
    bench.events.clear();
    click(wiredButton(bench, eleType, {}, A_USE_BEFORE_EVENT, "two"));
    QCOMPARE(bench.events, Bench::askedAndTold("kBeforeAction", "kAfterAction"));
}

void tst_button_actions::refusedButtonHasNotActed()
{
    Bench bench;
    bench.mainDecides = refusing(kBeforeAction);
    click(wiredButton(bench, E_BUTTON, {}, A_USE_BEFORE_EVENT));
    QCOMPARE(bench.events, QStringList({"row kBeforeAction", "main kBeforeAction"}));
}

void tst_button_actions::disarmedButtonDoesNothing()
{
    Bench bench;
    QPushButton* button = wiredButton(bench, E_BUTTON);
    disarmForm(bench.window.get());
    click(button);
    QVERIFY(bench.events.isEmpty());
}

void tst_button_actions::formMayGoWhenAButtonIsAskedFor()
{
    Bench bench;
    auto* button = new QPushButton;
    const RowHandle row = bench.place(INFO(E_BUTTON, A_USE_BEFORE_EVENT), {});
    bench.rowDecides = [&bench](const CallbackContext&) {
        bench.window.reset();
        return 1;
    };
    runButtonAction(row, button);
    QCOMPARE(bench.events, QStringList({"row kBeforeAction"}));
    delete button;
}

// ------------------------------------------------------------------ buttons that end the form

void tst_button_actions::closingButtonEndsTheDialog_data()
{
    QTest::addColumn<int>("eleType");
    QTest::addColumn<QString>("question");
    QTest::addColumn<int>("result");
    QTest::newRow("OK") << E_OK_BUTTON << "kAccept" << int(QDialog::Accepted);
    QTest::newRow("cancel") << E_CANCEL_BUTTON << "kReject" << int(QDialog::Rejected);
    QTest::newRow("close") << E_CLOSE_BUTTON << "kClose" << int(QDialog::Rejected);
}

void tst_button_actions::closingButtonEndsTheDialog()
{
    QFETCH(int, eleType);
    QFETCH(QString, question);
    QFETCH(int, result);
    ClosingForm form(eleType, A_USE_BEFORE_EVENT);
    QSignalSpy finished(form.dialog, &QDialog::finished);
    click(form.button);
    QCOMPARE(finished.size(), 1);
    QCOMPARE(finished.at(0).at(0).toInt(), result);
    QVERIFY(!form.dialog->isVisible());
    QCOMPARE(form.bench.events,
             QStringList({"row kBeforeAction", "main kBeforeAction", "row " + question,
                          "main " + question, "row kAfterAction", "main kAfterAction"}));
}

void tst_button_actions::refusedClosingButtonAsksNothingFurther()
{
    ClosingForm form(E_OK_BUTTON, A_USE_BEFORE_EVENT);
    form.bench.rowDecides = refusing(kBeforeAction);
    click(form.button);
    QVERIFY(form.dialog->isVisible());
    QCOMPARE(form.bench.events, QStringList({"row kBeforeAction"}));
}

void tst_button_actions::refusedClosingHasNotActed()
{
    ClosingForm form(E_CLOSE_BUTTON, A_NONE);
    form.bench.mainDecides = refusing(kClose);
    click(form.button);
    QVERIFY(form.dialog->isVisible());
    QCOMPARE(form.bench.events, QStringList({"row kClose", "main kClose"}));
}

// ------------------------------------------------------------------ addresses

void tst_button_actions::folderIsShown()
{
    const Addresses addresses;
    Bench bench;
    const PathRow row(bench, E_SHOW_FOLDER, "/tmp/with #blank");
    row.click();
    QCOMPARE(addresses.opened, QList<QUrl> {QUrl::fromLocalFile("/tmp/with #blank")});
    QCOMPARE(bench.events, Bench::told("kAfterAction"));
}

void tst_button_actions::emptyFolderIsNotShown()
{
    const Addresses addresses;
    Bench bench;
    const PathRow row(bench, E_SHOW_FOLDER, "");
    row.click();
    QVERIFY(addresses.opened.isEmpty());
}

void tst_button_actions::addressIsOpened_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QUrl>("opened");
    QTest::newRow("address") << "https://www.example.com/a?b=c#d"
                             << QUrl("https://www.example.com/a?b=c#d");
    QTest::newRow("without a scheme") << "www.example.com" << QUrl("http://www.example.com");
    QTest::newRow("path") << "/tmp/a #1.html" << QUrl::fromLocalFile("/tmp/a #1.html");
    QTest::newRow("address of a file")
        << "file:///tmp/a%20b.html" << QUrl::fromLocalFile("/tmp/a b.html");
    QTest::newRow("nothing") << "" << QUrl();
}

void tst_button_actions::addressIsOpened()
{
    QFETCH(QString, value);
    QFETCH(QUrl, opened);
    const Addresses addresses;
    Bench bench;
    click(wiredButton(bench, E_OPENURL_BUTTON, QVariant(value)));
    QCOMPARE(addresses.opened, opened.isEmpty() ? QList<QUrl>() : QList<QUrl> {opened});
    QCOMPARE(bench.events, Bench::told("kAfterAction"));
}

void tst_button_actions::addressOfARowWithoutKeyIsItsData()
{
    const Addresses addresses;
    Bench bench;
    click(
        wiredButton(bench, E_OPENURL_BUTTON, QVariant("https://www.example.com/help"), A_NONE, ""));
    QCOMPARE(addresses.opened, QList<QUrl> {QUrl("https://www.example.com/help")});
}

void tst_button_actions::addressOfABoundRowIsItsVariable()
{
    const Addresses addresses;
    QVariant variable = "https://www.example.com/one";
    Bench bench;
    QPushButton* button = wiredButton(bench, E_OPENURL_BUTTON, &variable);
    variable = "https://www.example.com/two";
    click(button);
    QCOMPARE(addresses.opened, QList<QUrl> {QUrl("https://www.example.com/two")});
}

// ------------------------------------------------------------------ colours and fonts

namespace {

QColor swatchOf(const QPushButton* button)
{
    return button->icon().pixmap(button->iconSize()).toImage().pixelColor(1, 1);
}

} // namespace

void tst_button_actions::chosenColorIsStoredAndShown()
{
    Bench bench;
    QPushButton* button =
        wiredButton(bench, E_COLOR_BUTTON, QVariant(QColor(Qt::red)), A_USE_BEFORE_EVENT);
    QColor offered;
    const Answer<QColorDialog> answer([&offered](QColorDialog* dialog) {
        offered = dialog->currentColor();
        dialog->setCurrentColor(Qt::blue);
        dialog->accept();
    });
    click(button);
    QCOMPARE(answer.answered, 1);
    QCOMPARE(offered, QColor(Qt::red));
    QCOMPARE(bench.map.value("value").value<QColor>(), QColor(Qt::blue));
    QCOMPARE(swatchOf(button), QColor(Qt::blue));
    QCOMPARE(bench.events,
             QStringList({"row kBeforeAction", "main kBeforeAction"}) + Bench::askedAndTold()
                 + Bench::told("kAfterAction"));
}

void tst_button_actions::refusedColorShowsThePreviousOne()
{
    Bench bench;
    QPushButton* button =
        wiredButton(bench, E_COLOR_BUTTON, QVariant(QColor(Qt::red)), A_USE_BEFORE_EVENT);
    bench.mainDecides = refusing(kBeforeDataChanged);
    const Answer<QColorDialog> answer([](QColorDialog* dialog) {
        dialog->setCurrentColor(Qt::blue);
        dialog->accept();
    });
    click(button);
    QCOMPARE(answer.answered, 1);
    QCOMPARE(bench.map.value("value").value<QColor>(), QColor(Qt::red));
    QCOMPARE(swatchOf(button), QColor(Qt::red));
    QVERIFY(!bench.events.contains("row kAfterAction"));
}

void tst_button_actions::cancelledColorStays()
{
    Bench bench;
    QPushButton* button = wiredButton(bench, E_COLOR_BUTTON, QVariant(QColor(Qt::red)));
    const Answer<QColorDialog> answer(rejectDialog);
    click(button);
    QCOMPARE(answer.answered, 1);
    QCOMPARE(bench.map.value("value").value<QColor>(), QColor(Qt::red));
    QCOMPARE(bench.events, Bench::told("kAfterAction"));
}

void tst_button_actions::swatchIsAsHighAsTheFont()
{
    QPushButton button;
    showColor(&button, QColor(Qt::green));
    const int height = QFontMetrics(button.font()).height();
    QCOMPARE(button.iconSize(), QSize(height, height));
    QCOMPARE(swatchOf(&button), QColor(Qt::green));
    showColor(&button, "#0000ff");
    QCOMPARE(swatchOf(&button), QColor(Qt::blue));
    showColor(&button, QVariant());
    QCOMPARE(swatchOf(&button).alpha(), 0);
}

void tst_button_actions::chosenFontIsStoredAndShown()
{
    Bench bench;
    QFont first = QApplication::font();
    first.setPointSize(11);
    QPushButton* button = wiredButton(bench, E_FONT_BUTTON, QVariant(first));
    QFont second = first;
    second.setPointSize(19);
    QFont offered;
    const Answer<QFontDialog> answer([&](QFontDialog* dialog) {
        offered = dialog->currentFont();
        dialog->setCurrentFont(second);
        dialog->accept();
    });
    click(button);
    QCOMPARE(answer.answered, 1);
    QCOMPARE(offered.pointSize(), 11);
    QCOMPARE(bench.map.value("value").value<QFont>().pointSize(), 19);
    QCOMPARE(button->font().pointSize(), 19);
    QVERIFY2(button->text().endsWith(", 19pt"), qPrintable(button->text()));
    QCOMPARE(bench.events, Bench::told() + Bench::told("kAfterAction"));
}

void tst_button_actions::fontTextNamesFamilyAndSize()
{
    QPushButton button;
    showFont(&button, QFont("DejaVu %2 Sans", 13));
    QCOMPARE(button.text(), "DejaVu %2 Sans, 13pt");
    QCOMPARE(button.font().pointSize(), 13);
    QFont pixels;
    pixels.setPixelSize(20);
    showFont(&button, pixels);
    QVERIFY2(!button.text().contains("-1"), qPrintable(button.text()));
}

void tst_button_actions::colorButtonBehindItsDialogOpensNoSecondOne()
{
    opensOneAtATime<QColorDialog>(E_COLOR_BUTTON, QColor(Qt::red));
}

void tst_button_actions::fontButtonBehindItsDialogOpensNoSecondOne()
{
    opensOneAtATime<QFontDialog>(E_FONT_BUTTON, QApplication::font());
}

void tst_button_actions::colorSetBehindItsDialogIsShownAndTold()
{
    Bench bench;
    QPushButton* button = wiredButton(bench, E_COLOR_BUTTON, QVariant(QColor(Qt::red)));
    QStringList events;
    const Answer<QColorDialog> answer([&](QColorDialog* dialog) {
        INFO::setData(&bench.map, "value", QColor(Qt::blue), true);
        events = bench.events;
        dialog->reject();
    });
    click(button);
    QCOMPARE(answer.answered, 1);
    QCOMPARE(swatchOf(button), QColor(Qt::blue));
    QCOMPARE(events, Bench::told() + Bench::told("kAfterAction"));
}

void tst_button_actions::dialogsCanBeAnsweredWhoseButtonIsDisabledMeanwhile()
{
    Bench colors;
    const QVariant red = QColor(Qt::red);
    QVERIFY(answerableBehindDisabled<QColorDialog>(wiredButton(colors, E_COLOR_BUTTON, red)));
    Bench fonts;
    const QVariant font = QApplication::font();
    QVERIFY(answerableBehindDisabled<QFontDialog>(wiredButton(fonts, E_FONT_BUTTON, font)));
}

// ------------------------------------------------------------------ under a triggered change

void tst_button_actions::triggeredButtonOpensNothing_data()
{
    QTest::addColumn<int>("eleType");
    QTest::addColumn<QVariant>("value");
    QTest::newRow("address") << E_OPENURL_BUTTON << QVariant("https://www.example.com");
    QTest::newRow("colour") << E_COLOR_BUTTON << QVariant(QColor(Qt::red));
    QTest::newRow("font") << E_FONT_BUTTON << QVariant(QApplication::font());
    QTest::newRow("folder") << E_BROWSE_FOLDER_BUTTON << QVariant("/tmp");
    QTest::newRow("file to open") << E_BROWSE_FILE_OPEN_BUTTON << QVariant("/tmp/a");
    QTest::newRow("file to save") << E_BROWSE_FILE_SAVE_BUTTON << QVariant("/tmp/a");
}

void tst_button_actions::triggeredButtonOpensNothing()
{
    QFETCH(int, eleType);
    QFETCH(QVariant, value);
    const Addresses addresses;
    Bench bench;
    QPushButton* button = wiredButton(bench, eleType, value);
    const Answer<QDialog> answer(rejectDialog); // so that a dialog fails the test, not hangs it
    INFO::triggerEmit(button, false, false);
    QCOMPARE(answer.answered, 0);
    QVERIFY(addresses.opened.isEmpty());
    QCOMPARE(bench.events, Bench::told() + Bench::told("kAfterAction"));
    QCOMPARE(bench.map.value("value"), value);
}

void tst_button_actions::triggeredColorShowsTheMap()
{
    Bench bench;
    QPushButton* button = wiredButton(bench, E_COLOR_BUTTON, QVariant(QColor(Qt::red)));
    INFO::setData(&bench.map, "value", QColor(Qt::blue), true);
    QCOMPARE(swatchOf(button), QColor(Qt::blue));
    QVERIFY(bench.events.contains("main kAfterAction"));
}

void tst_button_actions::triggeredFontShowsTheMap()
{
    Bench bench;
    QPushButton* button = wiredButton(bench, E_FONT_BUTTON, QVariant(QApplication::font()));
    QFont font = QApplication::font();
    font.setPointSize(17);
    INFO::setData(&bench.map, "value", font, true);
    QVERIFY2(button->text().endsWith(", 17pt"), qPrintable(button->text()));
    QCOMPARE(button->font().pointSize(), 17);
}

QTEST_MAIN(tst_button_actions)
#include "tst_button_actions.moc"
