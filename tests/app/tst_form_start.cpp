#include "app/globals.h"
#include "tests/app/form_page.h"
#include "tests/app/run_fixture.h"
#include "tests/app/sample_orders.h"
#include "tests/support/app_test.h"

#include <QDir>
#include <QLabel>
#include <QPlainTextEdit>
#include <QTimer>

using Options = QMap<QString, QVariant>;

namespace {

const QString startText = QStringLiteral("Daten vom Server abrufen");
const QString stopText = QStringLiteral("Anhalten");
const QString question = QStringLiteral("Beendet:");

/// What the start button's checks ask for beyond the defaults.
Options complete(Options more = {})
{
    more.insert(QStringLiteral("b2c_handling"), QVariantList {1});
    return more;
}

} // namespace

/// The buttons that start and stop a run.
class tst_form_start : public QObject
{
    Q_OBJECT

public:
    explicit tst_form_start(const StartFolder& folder)
        : m_folder(folder)
        , m_fixture(folder)
    {
    }

private slots:
    void init();

    void asksForNothingWhileACheckFails_data();
    void asksForNothingWhileACheckFails();
    void runsOnceTheSettingIsMade();
    void savesBeforeItRuns();
    void emptiesTheLog();
    void stopsInTheMiddleOfAPage();
    void stopsWhileARequestIsOpen();
    void restartsOnASecondClickBeforeTheFirstTick();
    void asksTheAddressThatWasTypedLast();
    void sendsTheKeyThatWasTypedLast();
    void ignoresASecondClickWhileItSaves();
    void locksTheButtonsDuringAPass();
    void ignoresTheIdCache();

private:
    FormPage start(const Options& options, const QStringList& hostLines = {});
    /// A run from the click to the end question, by the window's own timers.
    void runByClick(const FormPage& form);

    const StartFolder& m_folder;
    RunFixture m_fixture;
};

void tst_form_start::init()
{
    m_fixture.window.reset();
    m_fixture.answers.clear();
    m_fixture.shop.clearRequests();
    m_fixture.serveOrders({sample::order(1, {sample::productLine(1, 10)}),
                           sample::order(2, {sample::productLine(2, 20)}),
                           sample::order(3, {sample::line(3)})});
}

FormPage tst_form_start::start(const Options& options, const QStringList& hostLines)
{
    MainWindow& window = m_fixture.start(options, hostLines);
    window.show();
    return FormPage(window);
}

void tst_form_start::runByClick(const FormPage& form)
{
    const qsizetype boxes = m_fixture.answers.titles().count(question);
    form.click(startText);
    QTRY_COMPARE_WITH_TIMEOUT(m_fixture.answers.titles().count(question), boxes + 1, 30000);
    QTRY_VERIFY(!m_fixture.window->runTimer->isActive() && !m_fixture.window->bBusy);
}

void tst_form_start::asksForNothingWhileACheckFails_data()
{
    QTest::addColumn<Options>("options");
    QTest::addColumn<int>("nSKR");
    QTest::addColumn<QString>("title");
    QTest::newRow("no chart") << complete() << 0 << "SKR:";
    QTest::newRow("a chart by its name") << complete() << -5 << "SKR:";
    QTest::newRow("no way with consumers") << Options() << 3 << "B2C-Einstellung:";
    QTest::newRow("nothing to export") << complete(
        {{QStringLiteral("paypal_use"), false}, {QStringLiteral("woocommerce_use"), false}})
                                       << 3 << "Keine Aktion ausgewählt:";
    QTest::newRow("no folder for the invoices")
        << complete({{QStringLiteral("germanized_use"), true},
                     {QStringLiteral("germanized_pdf_folder"), QStringLiteral("/gibt/es/nicht")}})
        << 3 << "PDF-Ordner:";
    QTest::newRow("several at once: the first in order")
        << Options {{QStringLiteral("germanized_use"), true},
                    {QStringLiteral("paypal_use"), false},
                    {QStringLiteral("woocommerce_use"), false}}
        << 0 << "PDF-Ordner:";
}

void tst_form_start::asksForNothingWhileACheckFails()
{
    QFETCH(Options, options);
    QFETCH(int, nSKR);
    QFETCH(QString, title);
    QStringList lines = m_folder.hostLines();
    lines[1] = nSKR < 0 ? QStringLiteral("SKR") : QString::number(nSKR);
    const FormPage form = start(options, lines);
    form.click(startText);
    QCOMPARE(m_fixture.answers.titles(), QStringList {title});
    QCOMPARE(m_fixture.answers.seen().first().icon, QMessageBox::Information);
    QVERIFY(!m_fixture.window->waitTimer->isActive());
    QVERIFY(!m_fixture.window->runTimer->isActive());
    QCoreApplication::processEvents();
    QCOMPARE(m_fixture.targets(), QStringList());
    QVERIFY(m_folder.exported().isNull());
    // Nothing was saved either.
    QVERIFY(!m_folder.savedOptions().contains(QStringLiteral("buchungs_konten")));
}

void tst_form_start::runsOnceTheSettingIsMade()
{
    QStringList lines = m_folder.hostLines();
    lines[1] = QStringLiteral("0");
    const FormPage form = start({}, lines);
    form.click(startText);
    QVERIFY(form.choose("b2c_handling", QStringLiteral("Lieferschwelle überschritten")));
    form.click(startText);
    QVERIFY(form.choose("skr", QStringLiteral("SKR04")));
    runByClick(form);
    QCOMPARE(m_fixture.answers.titles(),
             QStringList({QStringLiteral("B2C-Einstellung:"), QStringLiteral("SKR:"), question}));
    QCOMPARE(m_folder.exportedLines().size(), 2 + 3);
    QVERIFY(m_folder.exportedLines().first().contains("|b2c_handling|3|"));
    QVERIFY(m_folder.exportedLines().first().contains("|skr|4"));
    QVERIFY(m_fixture.window->isVisible());
}

void tst_form_start::savesBeforeItRuns()
{
    const FormPage form = start(complete());
    form.type("buchungs_text_gebuehr", QStringLiteral("Gebühr <ORDER_NUMBER>"));
    form.click(startText);
    const Options saved = m_folder.savedOptions();
    QCOMPARE(saved.value(QStringLiteral("buchungs_text_gebuehr")).toString(),
             QStringLiteral("Gebühr <ORDER_NUMBER>"));
    QVERIFY(saved.contains(QStringLiteral("buchungs_konten")));
    QVERIFY(m_fixture.window->waitTimer->isActive());
    QCOMPARE(m_fixture.targets(), QStringList());
}

void tst_form_start::emptiesTheLog()
{
    const FormPage form = start({});
    m_fixture.window->logEdit->appendPlainText(QStringLiteral("von früher"));
    form.click(startText); // a check fails, and the log is empty all the same
    QCOMPARE(m_fixture.answers.titles(), QStringList {QStringLiteral("B2C-Einstellung:")});
    QCOMPARE(m_fixture.window->logEdit->toPlainText(), QString());
}

void tst_form_start::stopsInTheMiddleOfAPage()
{
    const FormPage form = start(complete());
    m_fixture.during("/products/10", [&form] { form.click(stopText); });
    form.click(startText);
    QTRY_VERIFY_WITH_TIMEOUT(m_fixture.showsStatus(QStringLiteral("Angehalten.")), 30000);
    QVERIFY(!m_fixture.window->runTimer->isActive());
    QCOMPARE(m_fixture.countOf(QStringLiteral("/products/20")), 0);
    QVERIFY(form.button(startText)->isEnabled());
    QCOMPARE(m_fixture.answers.titles(), QStringList());
}

void tst_form_start::stopsWhileARequestIsOpen()
{
    const FormPage form = start(complete());
    bool waiting = false;
    m_fixture.during("/v3/orders?", [&] {
        form.click(stopText);
        waiting = m_fixture.showsStatus(QStringLiteral("Anhalten..."));
    });
    form.click(startText);
    QTRY_VERIFY_WITH_TIMEOUT(m_fixture.showsStatus(QStringLiteral("Angehalten.")), 30000);
    QVERIFY(waiting);
    QVERIFY(m_fixture.window->isVisible());
    runByClick(form); // usable again
    QCOMPARE(m_folder.exportedLines().size(), 2 + 3);
}

void tst_form_start::restartsOnASecondClickBeforeTheFirstTick()
{
    const FormPage form = start(complete());
    form.click(startText);
    form.click(startText);
    QTRY_VERIFY(m_fixture.window->runTimer->isActive());
    QVERIFY(form.button(startText)->isEnabled()); // no pass has begun yet
    form.click(startText);
    QTRY_COMPARE_WITH_TIMEOUT(m_fixture.answers.titles(), QStringList {question}, 30000);
    QCOMPARE(m_folder.exportedLines().size(), 2 + 3);
    QCOMPARE(m_fixture.countOf(QStringLiteral("/v3/orders?")), 1);
}

void tst_form_start::asksTheAddressThatWasTypedLast()
{
    const FormPage form = start(complete());
    runByClick(form);
    RunFixture other(m_folder); // for its shop alone
    other.serveOrders({sample::order(9, {sample::line(9)})});
    form.type("mainurl", other.shop.baseUrl());
    m_fixture.shop.clearRequests();
    form.click(startText);
    QTRY_VERIFY_WITH_TIMEOUT(
        other.countOf(QStringLiteral("/v3/orders?")) == 1 && !m_fixture.window->bBusy, 30000);
    QTRY_VERIFY_WITH_TIMEOUT(
        m_folder.exported().contains("\n9;") || m_folder.exportedLines().size() == 3, 30000);
    QCOMPARE(m_fixture.targets(), QStringList());
}

void tst_form_start::sendsTheKeyThatWasTypedLast()
{
    // Without a secret store each attempt to save them is told, and the run goes on.
    const FormPage form = start(complete());
    const auto authorization = [this] {
        return m_fixture.shop.requests().isEmpty() ? QByteArray()
                                                   : m_fixture.shop.requests().last().authorization;
    };
    form.type("api_key_chain", QStringLiteral("ck_one"));
    form.type("api_secret_chain", QStringLiteral("cs_one"));
    runByClick(form);
    QCOMPARE(authorization(), "Basic " + QByteArray("ck_one:cs_one").toBase64());
    form.type("api_key_chain", QStringLiteral("ck_two"));
    runByClick(form);
    QCOMPARE(authorization(), "Basic " + QByteArray("ck_two:cs_one").toBase64());
    form.type("api_secret_chain", QString());
    runByClick(form);
    QCOMPARE(authorization(), "Basic " + QByteArray("ck_two:").toBase64());
}

void tst_form_start::ignoresASecondClickWhileItSaves()
{
    // Without a secret store the boxes about it hold the saving up.
    const FormPage form = start(complete());
    form.type("api_key_chain", QStringLiteral("ck"));
    int clicks = 0;
    m_fixture.answers.whenShown([&](QMessageBox& box) {
        if (box.windowTitle() == QStringLiteral("Fehler beim Verschlüsseln:") && clicks++ == 0)
            emit form.button(startText)->clicked(false);
    });
    form.click(startText);
    m_fixture.answers.whenShown(nullptr);
    QCOMPARE(clicks, 1); // one secret, one saving
    QTRY_COMPARE_WITH_TIMEOUT(m_fixture.answers.titles().count(question), 1, 30000);
    QCOMPARE(m_folder.exportedLines().size(), 2 + 3);
}

void tst_form_start::locksTheButtonsDuringAPass()
{
    const FormPage form = start(complete());
    bool locked = false;
    m_fixture.during("/products/10", [&] {
        locked = !form.button(startText)->isEnabled()
            && !form.button(QStringLiteral("Import starten"))->isEnabled()
            && form.button(stopText)->isEnabled();
    });
    runByClick(form);
    QVERIFY(locked);
    QVERIFY(form.button(startText)->isEnabled());
    QVERIFY(form.button(QStringLiteral("Import starten"))->isEnabled());
}

void tst_form_start::ignoresTheIdCache()
{
    const FormPage form = start(complete({{QStringLiteral("id_cache_use"), true}}));
    runByClick(form);
    QList<QByteArray> rows = m_folder.exportedLines().mid(1);
    form.toggle("id_cache_use");
    QVERIFY(!m_fixture.window->id_cache_use.toBool());
    runByClick(form);
    QCOMPARE(m_folder.exportedLines().mid(1), rows);
    QCOMPARE(rows.size(), 1 + 3);
    QVERIFY(importHash.empty());
}

LEDORA_APP_TEST_MAIN(tst_form_start)

#include "tst_form_start.moc"
