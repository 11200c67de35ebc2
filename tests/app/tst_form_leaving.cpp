#include "app/globals.h"
#include "tests/app/form_page.h"
#include "tests/app/run_fixture.h"
#include "tests/app/sample_orders.h"
#include "tests/support/app_test.h"

#include <QDir>
#include <QSessionManager>
#include <QTimer>

using mod_form_qt::INFO;

namespace {

const QString okText = QStringLiteral("Import starten");
const QString cancelText = QStringLiteral("Abbrechen und Beenden");
const QString question = QStringLiteral("Beendet:");

} // namespace

/// The ways to leave the form, and what each leaves behind.
class tst_form_leaving : public QObject
{
    Q_OBJECT

public:
    explicit tst_form_leaving(const StartFolder& folder)
        : m_folder(folder)
        , m_fixture(folder)
    {
    }

private slots:
    void init();

    void leavesNoExportBehind_data();
    void leavesNoExportBehind();
    void handsTheExportOver();
    void aCloseBehindTheHandOverTakesNothingAway();
    void refusesTheHandOverOfAnUnfinishedForm_data();
    void refusesTheHandOverOfAnUnfinishedForm();
    void yesWithAnEmptyFieldLeavesTheFormUsable();
    void closesOnceWhileSavingTakesItsTime();
    void tellsOfAnExportThatCannotGo();
    void cancelFromCodeClosesBetweenPasses();
    void cancelFromCodeClosesAfterThePass();
    void escapeInAFieldLeavesTheForm();
    void escapeInAnOpenListOnlyClosesTheList();
    void keepsTheTextThatIsBeingTyped();

private:
    FormPage form() { return FormPage(*m_fixture.window); }

    /// Calls the callback that no row has, as a click on a button of its own would.
    void callCancel();
    void runOnce();
    static void endSession();

    const StartFolder& m_folder;
    RunFixture m_fixture;
};

void tst_form_leaving::init()
{
    m_fixture.window.reset();
    m_fixture.answers.clear();
    m_fixture.answers.answer(question, QMessageBox::No);
    m_fixture.answers.whenShown(nullptr);
    m_fixture.shop.clearRequests();
    m_fixture.serveOrders(
        {sample::order(1, {sample::productLine(1, 10)}), sample::order(2, {sample::line(2)})});
    m_fixture.start({{QStringLiteral("b2c_handling"), QVariantList {1}}});
    m_fixture.window->show();
    QVERIFY(QTest::qWaitForWindowActive(m_fixture.window.get()));
}

void tst_form_leaving::runOnce()
{
    m_fixture.runToEnd();
    QCOMPARE(m_fixture.answers.titles(), QStringList {question});
    QCOMPARE(m_folder.exportedLines().size(), 2 + 2);
    m_fixture.answers.clear();
    QFile::remove(m_folder.iniFile());
}

void tst_form_leaving::endSession()
{
    // What the desktop sends has no public constructor; nobody looks into it here.
    alignas(QSessionManager) static char bytes[sizeof(QSessionManager)];
    emit qGuiApp->commitDataRequest(reinterpret_cast<QSessionManager&>(bytes));
}

void tst_form_leaving::leavesNoExportBehind_data()
{
    QTest::addColumn<QString>("road");
    QTest::addColumn<bool>("afterARun");
    for (const bool afterARun : {false, true}) {
        const char* when = afterARun ? "after a run" : "before a run";
        QTest::addRow("the button, %s", when) << "button" << afterARun;
        QTest::addRow("Escape, %s", when) << "escape" << afterARun;
        QTest::addRow("the window's button, %s", when) << "window" << afterARun;
        QTest::addRow("end of the session, %s", when) << "session" << afterARun;
    }
}

void tst_form_leaving::leavesNoExportBehind()
{
    QFETCH(QString, road);
    QFETCH(bool, afterARun);
    MainWindow& window = *m_fixture.window;
    if (afterARun)
        runOnce();
    if (road == QLatin1String("button"))
        form().click(cancelText);
    else if (road == QLatin1String("escape"))
        QTest::keyClick(&window, Qt::Key_Escape);
    else if (road == QLatin1String("window"))
        window.close();
    else
        endSession();
    QTRY_VERIFY(!window.isVisible());
    QVERIFY(m_folder.exported().isNull());
    QVERIFY(m_folder.savedOptions().contains(QStringLiteral("buchungs_konten")));
    QVERIFY(!window.outFile.isOpen());
    QVERIFY(!window.runTimer->isActive());
    QCOMPARE(m_fixture.answers.titles(), QStringList());
    // A second closing finds nothing left to do.
    QFile::remove(m_folder.iniFile());
    window.close();
    QCoreApplication::processEvents();
    QVERIFY(!QFile::exists(m_folder.iniFile()));
}

void tst_form_leaving::handsTheExportOver()
{
    runOnce();
    m_fixture.enterCredentials();
    const QByteArray bytes = m_folder.exported();
    form().click(okText);
    QTRY_VERIFY(!m_fixture.window->isVisible());
    QCOMPARE(m_folder.exported(), bytes);
    QVERIFY(!QFile::exists(m_folder.iniFile())); // saving was done at the start
    QCOMPARE(m_fixture.answers.titles(), QStringList());
    m_fixture.window.reset();
    QCOMPARE(m_folder.exported(), bytes);
}

void tst_form_leaving::aCloseBehindTheHandOverTakesNothingAway()
{
    runOnce();
    m_fixture.enterCredentials();
    form().click(okText);
    m_fixture.window->close();
    QTest::keyClick(m_fixture.window.get(), Qt::Key_Escape);
    callCancel();
    m_fixture.window->close();
    QTRY_VERIFY(!m_fixture.window->isVisible());
    QCOMPARE(m_folder.exportedLines().size(), 2 + 2);
    QVERIFY(!QFile::exists(m_folder.iniFile()));
}

void tst_form_leaving::refusesTheHandOverOfAnUnfinishedForm_data()
{
    QTest::addColumn<QString>("empty");
    QTest::newRow("address") << "mainurl";
    QTest::newRow("key") << "api_key_chain";
    QTest::newRow("secret") << "api_secret_chain";
}

void tst_form_leaving::refusesTheHandOverOfAnUnfinishedForm()
{
    QFETCH(QString, empty);
    m_fixture.enterCredentials();
    form().type(empty, QString());
    form().click(okText);
    QCOMPARE(m_fixture.answers.titles().size(), 1);
    QVERIFY(!m_fixture.answers.seen().first().text.isEmpty());
    QCoreApplication::processEvents();
    QVERIFY(m_fixture.window->isVisible());
    form().type(empty, QStringLiteral("da"));
    form().click(okText);
    QTRY_VERIFY(!m_fixture.window->isVisible());
    QCOMPARE(m_fixture.answers.titles().size(), 1);
}

void tst_form_leaving::yesWithAnEmptyFieldLeavesTheFormUsable()
{
    m_fixture.answers.answer(question, QMessageBox::Yes);
    m_fixture.runToEnd();
    QCOMPARE(m_fixture.answers.titles().size(), 2); // the question, and what is missing
    QVERIFY(m_fixture.window->isVisible());
    QVERIFY(form().button(okText)->isEnabled());
    QVERIFY(form().button(QStringLiteral("Daten vom Server abrufen"))->isEnabled());
    QCOMPARE(m_folder.exportedLines().size(), 2 + 2);
    m_fixture.enterCredentials();
    form().click(okText);
    QTRY_VERIFY(!m_fixture.window->isVisible());
    QCOMPARE(m_folder.exportedLines().size(), 2 + 2);
}

void tst_form_leaving::closesOnceWhileSavingTakesItsTime()
{
    // Without a secret store the box about it opens a loop in which the window is closed again.
    runOnce();
    m_fixture.enterCredentials();
    m_fixture.answers.whenShown([this](QMessageBox&) {
        m_fixture.window->close();
        QTest::keyClick(m_fixture.window.get(), Qt::Key_Escape);
        m_fixture.window->StartTimer();
    });
    m_fixture.window->close();
    QTRY_VERIFY(!m_fixture.window->isVisible());
    const QString title = QStringLiteral("Fehler beim Verschlüsseln:");
    QCOMPARE(m_fixture.answers.titles(), QStringList({title, title}));
    QVERIFY(m_folder.exported().isNull());
    QVERIFY(!m_fixture.window->waitTimer->isActive());
}

void tst_form_leaving::tellsOfAnExportThatCannotGo()
{
    // A folder can't be removed as a file, whoever tries.
    QVERIFY(QDir().mkpath(m_folder.exportFile() + QStringLiteral("/besetzt")));
    form().click(cancelText);
    QCOMPARE(m_fixture.answers.titles(), QStringList {QStringLiteral("Fehler:")});
    QVERIFY(m_fixture.answers.seen().first().text.startsWith(
        QStringLiteral("Die Datei\r\n%1\r\nkann nicht entfernt werden.\r\n")
            .arg(m_folder.exportFile())));
    QTRY_VERIFY(!m_fixture.window->isVisible());
    QVERIFY(QDir(m_folder.exportFile()).removeRecursively());
}

void tst_form_leaving::callCancel()
{
    m_fixture.window->runCancelAction(mod_form_qt::kBeforeAction); // no click yet
    m_fixture.window->runCancelAction(mod_form_qt::kAfterAction);
}

void tst_form_leaving::cancelFromCodeClosesBetweenPasses()
{
    runOnce();
    callCancel();
    QTRY_VERIFY(!m_fixture.window->isVisible());
    QVERIFY(m_folder.exported().isNull());
    QVERIFY(QFile::exists(m_folder.iniFile()));
}

void tst_form_leaving::cancelFromCodeClosesAfterThePass()
{
    m_fixture.window->Reset();
    m_fixture.keepTicksAway();
    m_fixture.during("/products/10", [this] { callCancel(); });
    m_fixture.window->OnTimer();
    QTRY_VERIFY(!m_fixture.window->isVisible());
    QVERIFY(m_folder.exported().isNull());
    QCOMPARE(m_fixture.answers.titles(), QStringList());
}

void tst_form_leaving::escapeInAFieldLeavesTheForm()
{
    form().line("mainurl")->setFocus();
    QTest::keyClick(form().line("mainurl"), Qt::Key_Escape);
    QTRY_VERIFY(!m_fixture.window->isVisible());
}

void tst_form_leaving::escapeInAnOpenListOnlyClosesTheList()
{
    QComboBox* box = form().combo("skr");
    box->showPopup();
    QTRY_VERIFY(QApplication::activePopupWidget());
    QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape);
    QTRY_VERIFY(!QApplication::activePopupWidget());
    QCoreApplication::processEvents();
    QVERIFY(m_fixture.window->isVisible());
}

void tst_form_leaving::keepsTheTextThatIsBeingTyped()
{
    form().type("buchungs_text_gebuehr", QStringLiteral("halb getippt"));
    QVERIFY(form().line("buchungs_text_gebuehr")->hasFocus());
    m_fixture.window->close();
    QTRY_VERIFY(!m_fixture.window->isVisible());
    QCOMPARE(m_folder.savedOptions().value(QStringLiteral("buchungs_text_gebuehr")).toString(),
             QStringLiteral("halb getippt"));
}

LEDORA_APP_TEST_MAIN(tst_form_leaving)

#include "tst_form_leaving.moc"
