#include "app/globals.h"
#include "tests/app/form_page.h"
#include "tests/app/run_fixture.h"
#include "tests/support/app_test.h"

#include <QDialog>
#include <QTextEdit>
#include <QTimer>

namespace {

const QString editText = QStringLiteral("'Zahlmethode (kurz)' bearbeiten");
const QString key = QStringLiteral("def_payment_method_s");

} // namespace

/// The dialogs behind the form's buttons.
class tst_form_dialogs : public QObject
{
    Q_OBJECT

public:
    explicit tst_form_dialogs(const StartFolder& folder)
        : m_fixture(folder)
    {
    }

private slots:
    void init();

    void offersTheBuiltInReplacementsFirst();
    void keepsTheReplacementsOnOk();
    void cancelLeavesTheReplacementsAsTheyWere_data();
    void cancelLeavesTheReplacementsAsTheyWere();
    void okKeepsAnUnchangedTextToo();
    void stripsWhatTheHostSplitsAt_data();
    void stripsWhatTheHostSplitsAt();
    void showsMarkupAsText();
    void tellsTheHostTheReplacements();
    void isWideEnoughAndNamed();
    void asksBeforeTheIdCacheIsDeleted_data();
    void asksBeforeTheIdCacheIsDeleted();

private:
    /// Opens the dialog and calls \a use with it; \a use has to close it.
    void editReplacements(const std::function<void(QDialog&, QTextEdit&)>& use);
    static void press(QDialog& dialog, const QStringList& texts);

    RunFixture m_fixture;
};

void tst_form_dialogs::init()
{
    m_fixture.answers.clear();
    m_fixture.start();
    m_fixture.window->show();
}

void tst_form_dialogs::editReplacements(const std::function<void(QDialog&, QTextEdit&)>& use)
{
    bool used = false;
    QTimer look;
    connect(&look, &QTimer::timeout, this, [&] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (!dialog || used)
            return;
        used = true;
        look.stop();
        auto* edit = dialog->findChild<QTextEdit*>();
        if (edit)
            use(*dialog, *edit);
        else
            dialog->close();
    });
    look.start(5);
    FormPage(*m_fixture.window).click(editText);
    QVERIFY(used);
    QVERIFY(!QApplication::activeModalWidget());
}

void tst_form_dialogs::press(QDialog& dialog, const QStringList& texts)
{
    const auto buttons = dialog.findChildren<QPushButton*>();
    for (QPushButton* button : buttons) {
        if (texts.contains(button->text())) {
            QTest::mouseClick(button, Qt::LeftButton);
            return;
        }
    }
    dialog.close();
    QFAIL("There is no such button.");
}

void tst_form_dialogs::offersTheBuiltInReplacementsFirst()
{
    QString shown;
    editReplacements([&](QDialog& dialog, QTextEdit& edit) {
        shown = edit.toPlainText();
        press(dialog, {QStringLiteral("Abbrechen")});
    });
    QCOMPARE(shown.split(QLatin1Char('\n')).size(), 18);
    QVERIFY(shown.startsWith(QStringLiteral("beliebte zahlungsmethoden;andere\n")));
    QVERIFY(!m_fixture.window->optionsMap.contains(key));
}

void tst_form_dialogs::keepsTheReplacementsOnOk()
{
    editReplacements([](QDialog& dialog, QTextEdit& edit) {
        edit.selectAll();
        QTest::keyClicks(&edit, QStringLiteral("paypal;pp"));
        QTest::keyClick(&edit, Qt::Key_Return);
        QTest::keyClicks(&edit, QStringLiteral("sofort;so"));
        press(dialog, {QStringLiteral("OK")});
    });
    QCOMPARE(m_fixture.window->optionsMap.value(key).toString(),
             QStringLiteral("paypal;pp\nsofort;so"));
    QString shown;
    editReplacements([&](QDialog& dialog, QTextEdit& edit) {
        shown = edit.toPlainText();
        press(dialog, {QStringLiteral("OK")});
    });
    QCOMPARE(shown, QStringLiteral("paypal;pp\nsofort;so"));
}

void tst_form_dialogs::cancelLeavesTheReplacementsAsTheyWere_data()
{
    QTest::addColumn<bool>("byEscape");
    QTest::newRow("the button") << false;
    QTest::newRow("Escape") << true;
}

void tst_form_dialogs::cancelLeavesTheReplacementsAsTheyWere()
{
    QFETCH(bool, byEscape);
    m_fixture.window->optionsMap.insert(key, QStringLiteral("a;b"));
    editReplacements([byEscape](QDialog& dialog, QTextEdit& edit) {
        QTest::keyClicks(&edit, QStringLiteral("neu;n"));
        if (byEscape)
            QTest::keyClick(&edit, Qt::Key_Escape);
        else
            press(dialog, {QStringLiteral("Abbrechen")});
    });
    QCOMPARE(m_fixture.window->optionsMap.value(key).toString(), QStringLiteral("a;b"));
    // The dialog has a form of its own, so the window's stays.
    QVERIFY(m_fixture.window->isVisible());
    QVERIFY(FormPage(*m_fixture.window).line("mainurl"));
}

void tst_form_dialogs::okKeepsAnUnchangedTextToo()
{
    QVERIFY(!m_fixture.window->optionsMap.contains(key));
    editReplacements([](QDialog& dialog, QTextEdit&) { press(dialog, {QStringLiteral("OK")}); });
    QCOMPARE(m_fixture.window->optionsMap.value(key).toString().split(QLatin1Char('\n')).size(),
             18);
}

void tst_form_dialogs::stripsWhatTheHostSplitsAt_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("kept");
    QTest::newRow("both marks") << "a~b|[]c;d|e"
                                << "abc;d|e";
    QTest::newRow("a mark around the other") << "a|~[]b"
                                             << "ab";
    QTest::newRow("a mark in a mark") << "a||[][]b"
                                      << "ab";
}

void tst_form_dialogs::stripsWhatTheHostSplitsAt()
{
    QFETCH(QString, typed);
    editReplacements([&typed](QDialog& dialog, QTextEdit& edit) {
        edit.selectAll();
        QTest::keyClicks(&edit, typed);
        press(dialog, {QStringLiteral("OK")});
    });
    QTEST(m_fixture.window->optionsMap.value(key).toString(), "kept");
}

void tst_form_dialogs::showsMarkupAsText()
{
    const QString text = QStringLiteral("<b>fett</b>;&amp;");
    m_fixture.window->optionsMap.insert(key, text);
    editReplacements([](QDialog& dialog, QTextEdit&) { press(dialog, {QStringLiteral("OK")}); });
    QCOMPARE(m_fixture.window->optionsMap.value(key).toString(), text);
}

void tst_form_dialogs::tellsTheHostTheReplacements()
{
    editReplacements([](QDialog& dialog, QTextEdit& edit) {
        edit.selectAll();
        QTest::keyClicks(&edit, QStringLiteral("a;b"));
        QTest::keyClick(&edit, Qt::Key_Return);
        QTest::keyClicks(&edit, QStringLiteral("c;d"));
        press(dialog, {QStringLiteral("OK")});
    });
    QVERIFY(m_fixture.window->BuildOptionsString().contains(
        QLatin1String("|def_payment_method_s|a;b~c;d|")));
}

void tst_form_dialogs::isWideEnoughAndNamed()
{
    int width = 0;
    QString title;
    QStringList buttons;
    editReplacements([&](QDialog& dialog, QTextEdit&) {
        width = dialog.minimumWidth();
        title = dialog.windowTitle();
        const auto found = dialog.findChildren<QPushButton*>();
        for (const QPushButton* button : found)
            buttons << button->text();
        press(dialog, {QStringLiteral("Abbrechen")});
    });
    QCOMPARE(width, 640);
    QCOMPARE(title, editText + QLatin1Char(':'));
    QCOMPARE(
        buttons,
        QStringList({QStringLiteral("OK"), QStringLiteral("Abbrechen"), QStringLiteral("Hilfe")}));
}

void tst_form_dialogs::asksBeforeTheIdCacheIsDeleted_data()
{
    QTest::addColumn<bool>("yes");
    QTest::newRow("Yes") << true;
    QTest::newRow("No") << false;
}

void tst_form_dialogs::asksBeforeTheIdCacheIsDeleted()
{
    QFETCH(bool, yes);
    const QString title = QStringLiteral("ID-Cache löschen");
    m_fixture.answers.answer(title, yes ? QMessageBox::Yes : QMessageBox::No);
    const FormPage form(*m_fixture.window);
    form.click(QStringLiteral("Löschen"));
    QCOMPARE(m_fixture.answers.titles(), QStringList {title});
    const auto& box = m_fixture.answers.seen().first();
    QCOMPARE(box.text, QStringLiteral("Sollten die 0 Einträge gelöscht werden?"));
    QCOMPARE(box.icon, QMessageBox::Question);
    QCOMPARE(box.buttons, QMessageBox::Yes | QMessageBox::No);

    // Nothing of the program fills it; the answer counts all the same.
    importHash.insert(7);
    form.click(QStringLiteral("Löschen"));
    QCOMPARE(m_fixture.answers.seen().last().text,
             QStringLiteral("Sollten die 1 Einträge gelöscht werden?"));
    QCOMPARE(importHash.empty(), yes);
    importHash.clear();
}

LEDORA_APP_TEST_MAIN(tst_form_dialogs)

#include "tst_form_dialogs.moc"
