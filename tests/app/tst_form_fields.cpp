#include "app/globals.h"
#include "tests/app/form_page.h"
#include "tests/app/run_fixture.h"
#include "tests/support/app_test.h"

#include <QDir>
#include <QGroupBox>

using mod_form_qt::INFO;
using Options = QMap<QString, QVariant>;

/// The fields of the form: what they show at a start, and where an edit goes.
class tst_form_fields : public QObject
{
    Q_OBJECT

public:
    explicit tst_form_fields(const StartFolder& folder)
        : m_folder(folder)
        , m_fixture(folder)
    {
    }

private slots:
    void showsTheDefaultsAtAFirstStart();
    void showsWhatWasSaved();
    void prefersASavedChartToTheHosts_data();
    void prefersASavedChartToTheHosts();
    void savesWhatWasTyped();
    void keepsTheSecretsOutOfSight();
    void showsTheHostsFolderAboveTheSavedOne();
    void leavesTheFolderToTheUserWithoutAHostsFolder();
    void startsWithTheServerGroupHiddenAsSaved();
    void offersARoleThatWasSaved();
    void opensASecondWindowAfterTheFirst();
    void readsAnotherProcessesOptions_data();
    void readsAnotherProcessesOptions();

private:
    FormPage start(const Options& options = {}, const QStringList& hostLines = {});

    const StartFolder& m_folder;
    RunFixture m_fixture;
};

FormPage tst_form_fields::start(const Options& options, const QStringList& hostLines)
{
    MainWindow& window = m_fixture.start(options, hostLines);
    window.show();
    return FormPage(window);
}

void tst_form_fields::showsTheDefaultsAtAFirstStart()
{
    const FormPage form = start({{QStringLiteral("mainurl"), QString()}});
    QCOMPARE(form.line("mainurl")->text(), QString());
    QCOMPARE(form.line("api_key_chain")->text(), QString());
    QVERIFY(!form.check("date_filter_use")->isChecked());
    QCOMPARE(form.date("date_filter_after")->date(), QDate(1970, 1, 1));
    QCOMPARE(form.date("date_filter_before")->date(), QDate(2037, 1, 1));
    QVERIFY(form.check("id_cache_use")->isChecked());
    QVERIFY(!form.check("germanized_use")->isChecked());
    QVERIFY(!form.check("germanized_overwrite_pdf")->isChecked());
    QVERIFY(form.check("paypal_use")->isChecked());
    QVERIFY(form.check("woocommerce_use")->isChecked());
    QVERIFY(!form.check("customers_create")->isChecked());
    QCOMPARE(form.line("gm_buchungs_text_gebuehr")->text(),
             QStringLiteral("Gebühr-<GM_INVOICE_NUMBER_COMPLETE>"));
    QCOMPARE(form.combo("belegdatum")->currentText(), QStringLiteral("Automatisch"));
    QCOMPARE(form.combo("b2c_handling")->currentText(), QString());
    QCOMPARE(form.combo("kostenstelle1")->currentText(), QStringLiteral("Nicht zuordnen"));
    QCOMPARE(form.combo("kostenstelle2")->currentText(), QStringLiteral("Nicht zuordnen"));
    QCOMPARE(form.combo("skr")->currentText(), QStringLiteral("SKR03"));
    QCOMPARE(form.combo("buchungs_typ")->currentIndex(), 0);
    QCOMPARE(m_fixture.window->windowTitle(), QStringLiteral("MainWindow"));
}

void tst_form_fields::showsWhatWasSaved()
{
    const FormPage form = start({
        {QStringLiteral("mainurl"), QString()}, // nothing is asked of the secret store
        {QStringLiteral("date_filter_use"), true},
        {QStringLiteral("date_filter_after"), QDate(2026, 3, 1)},
        {QStringLiteral("date_filter_before"), QDate(2026, 3, 31)},
        {QStringLiteral("id_cache_use"), false},
        {QStringLiteral("germanized_use"), true},
        {QStringLiteral("germanized_pdf_folder"), m_folder.path(QStringLiteral("eigene"))},
        {QStringLiteral("germanized_overwrite_pdf"), true},
        {QStringLiteral("buchungs_text_versand"), QStringLiteral("Paket | <NAME>")},
        {QStringLiteral("paypal_use"), false},
        {QStringLiteral("woocommerce_use"), false},
        {QStringLiteral("customers_create"), true},
        {QStringLiteral("belegdatum"), QVariantList {3}},
        {QStringLiteral("b2c_handling"), QVariantList {2}},
        {QStringLiteral("kostenstelle1"), QVariantList {QStringLiteral("PRODUCT_NAME")}},
        {QStringLiteral("kostenstelle2"), QVariantList {QStringLiteral("PAYMENT_METHOD_S")}},
        {QStringLiteral("skr"), QVariantList {49}},
        {QStringLiteral("buchungs_typ"), QVariantList {31}},
    });
    QVERIFY(form.check("date_filter_use")->isChecked());
    QCOMPARE(form.date("date_filter_after")->date(), QDate(2026, 3, 1));
    QCOMPARE(form.date("date_filter_before")->date(), QDate(2026, 3, 31));
    QVERIFY(!form.check("id_cache_use")->isChecked());
    QVERIFY(form.check("germanized_use")->isChecked());
    QVERIFY(form.check("germanized_overwrite_pdf")->isChecked());
    QCOMPARE(form.line("germanized_pdf_folder")->text(), m_folder.path(QStringLiteral("eigene")));
    QCOMPARE(form.line("buchungs_text_versand")->text(), QStringLiteral("Paket | <NAME>"));
    QVERIFY(!form.check("paypal_use")->isChecked());
    QVERIFY(!form.check("woocommerce_use")->isChecked());
    QVERIFY(form.check("customers_create")->isChecked());
    QCOMPARE(form.combo("belegdatum")->currentText(), QStringLiteral("Abgeschlossen"));
    QCOMPARE(form.combo("b2c_handling")->currentText(),
             QStringLiteral("Lieferschwelle nicht überschritten"));
    QCOMPARE(form.combo("kostenstelle1")->currentText(), QStringLiteral("Produktname"));
    QCOMPARE(form.combo("kostenstelle2")->currentText(), QStringLiteral("Zahlmethode (kurz)"));
    QCOMPARE(form.combo("skr")->currentText(), QStringLiteral("SKR049"));
    QCOMPARE(selectedValue(m_fixture.window->optionsMap, QStringLiteral("buchungs_typ")),
             QVariant(31));
    // What the run reads is what the fields show.
    QCOMPARE(m_fixture.window->date_filter_after.toDate(), QDate(2026, 3, 1));
    QVERIFY(m_fixture.window->germanized_use.toBool());
    QVERIFY(!m_fixture.window->paypal_use.toBool());
}

void tst_form_fields::prefersASavedChartToTheHosts_data()
{
    QTest::addColumn<QVariant>("saved");
    QTest::addColumn<QString>("shown");
    QTest::newRow("another chart") << QVariant(QVariantList {4}) << "SKR04";
    QTest::newRow("no chart") << QVariant(QVariantList {QVariant()}) << "SKR03";
    QTest::newRow("an empty selection") << QVariant(QVariantList {}) << "SKR03";
    QTest::newRow("a chart that does not exist") << QVariant(QVariantList {7}) << "SKR03";
}

void tst_form_fields::prefersASavedChartToTheHosts()
{
    QFETCH(QVariant, saved);
    const FormPage form = start({{QStringLiteral("skr"), saved}});
    QTEST(form.combo("skr")->currentText(), "shown");
}

void tst_form_fields::savesWhatWasTyped()
{
    const FormPage form = start({{QStringLiteral("mainurl"), QString()}});
    QVERIFY(QTest::qWaitForWindowActive(m_fixture.window.get()));
    form.type("mainurl", QStringLiteral(" https://laden.example/ "));
    form.toggle("date_filter_use");
    form.toggle("paypal_use");
    form.type("buchungs_text_erloes", QStringLiteral("Verkauf äöü <NAME>"));
    QVERIFY(form.choose("b2c_handling", QStringLiteral("OSS")));
    QVERIFY(form.choose("kostenstelle2", QStringLiteral("Zahlmethode")));
    form.date("date_filter_after")->setFocus();
    QTest::keyClick(form.date("date_filter_after"), Qt::Key_Up);
    const QDate stepped = form.date("date_filter_after")->date();
    QVERIFY(stepped != QDate(1970, 1, 1));

    m_fixture.window->close();
    QTRY_VERIFY(!m_fixture.window->isVisible());
    const FormPage next(m_fixture.restart());
    QCOMPARE(next.line("mainurl")->text(), QStringLiteral(" https://laden.example/ "));
    QVERIFY(next.check("date_filter_use")->isChecked());
    QVERIFY(!next.check("paypal_use")->isChecked());
    QCOMPARE(next.line("buchungs_text_erloes")->text(), QStringLiteral("Verkauf äöü <NAME>"));
    QCOMPARE(next.combo("b2c_handling")->currentText(), QStringLiteral("OSS"));
    QCOMPARE(next.combo("kostenstelle2")->currentText(), QStringLiteral("Zahlmethode"));
    QCOMPARE(next.date("date_filter_after")->date(), stepped);
}

void tst_form_fields::keepsTheSecretsOutOfSight()
{
    const FormPage form = start();
    for (const char* key : {"api_key_chain", "api_secret_chain"})
        QCOMPARE(form.line(key)->echoMode(), QLineEdit::Password);
    form.type("api_key_chain", QStringLiteral("ck_typed"));
    QVERIFY(form.line("api_key_chain")->displayText() != QLatin1String("ck_typed"));
    QCOMPARE(m_fixture.window->apiKey.toString(), QStringLiteral("ck_typed"));
}

void tst_form_fields::showsTheHostsFolderAboveTheSavedOne()
{
    // The fixture clears the folder before it writes the host's file.
    QStringList lines = m_folder.hostLines();
    lines[8] = m_folder.path(QStringLiteral("vom_host"));
    QDir().mkpath(lines[8]);
    const FormPage form =
        start({{QStringLiteral("germanized_pdf_folder"), QStringLiteral("/anderswo")}}, lines);
    QVERIFY(m_fixture.window->bHostFolder);
    QLineEdit* field = form.line("germanized_pdf_folder");
    QCOMPARE(field->text(), lines[8]);
    QVERIFY(field->isReadOnly());
    QTest::keyClicks(field, QStringLiteral("x"));
    QCOMPARE(field->text(), lines[8]);
    QCOMPARE(m_fixture.window->germanized_pdf_folder.toString(), lines[8]);
}

void tst_form_fields::leavesTheFolderToTheUserWithoutAHostsFolder()
{
    const FormPage form =
        start({{QStringLiteral("germanized_pdf_folder"), QStringLiteral("/anderswo")}});
    QVERIFY(!m_fixture.window->bHostFolder);
    QCOMPARE(form.line("germanized_pdf_folder")->text(), QStringLiteral("/anderswo"));
    QVERIFY(!form.line("germanized_pdf_folder")->isReadOnly());
    form.type("germanized_pdf_folder", m_folder.path(QStringLiteral("neu")));
    QCOMPARE(m_fixture.window->germanized_pdf_folder.toString(),
             m_folder.path(QStringLiteral("neu")));
}

void tst_form_fields::startsWithTheServerGroupHiddenAsSaved()
{
    const FormPage form = start({{QStringLiteral("server_group_show"), false}});
    QVERIFY(!form.line("mainurl")->isVisible());
    QVERIFY(form.check("germanized_use")->isVisible());
    const auto boxes = m_fixture.window->findChildren<QGroupBox*>();
    int checkable = 0;
    for (const QGroupBox* box : boxes)
        checkable += box->isCheckable() ? 1 : 0;
    QCOMPARE(boxes.size(), 4);
    QCOMPARE(checkable, 1);
}

void tst_form_fields::offersARoleThatWasSaved()
{
    const QVariantList saved {QStringList {QStringLiteral("35"), QStringLiteral("8193"),
                                           QStringLiteral("-1"), QStringLiteral("-1")}};
    QCOMPARE(start().combo("buchungs_typ")->count(), 36);
    QCOMPARE(start({{QStringLiteral("buchungs_konten"), saved}}).combo("buchungs_typ")->count(),
             37);
}

void tst_form_fields::opensASecondWindowAfterTheFirst()
{
    const FormPage first = start();
    first.type("mainurl", QStringLiteral("https://eins.example"));
    m_fixture.window->close();
    QTRY_VERIFY(!m_fixture.window->isVisible());
    const FormPage second = start();
    second.type("mainurl", QStringLiteral("https://zwei.example"));
    QCOMPARE(m_fixture.window->mainurl.toString(), QStringLiteral("https://zwei.example"));
    // The callbacks are made once and must serve this window.
    QVERIFY(second.choose("skr", QStringLiteral("SKR04")));
    QCOMPARE(second.number("buchungs_konto")->value(), 4400);
}

void tst_form_fields::readsAnotherProcessesOptions_data()
{
    QTest::addColumn<QVariant>("bad");
    QTest::newRow("list data") << QVariant::fromValue(mod_form_qt::T_LISTDATA {});
    QTest::newRow("a pointer") << QVariant::fromValue(&m_fixture);
}

void tst_form_fields::readsAnotherProcessesOptions()
{
    // One value that no file can hold must not cost the others.
    QFETCH(QVariant, bad);
    const FormPage form = start();
    form.type("mainurl", QStringLiteral("https://laden.example"));
    m_fixture.window->optionsMap.insert(QStringLiteral("schlecht"), bad);
    m_fixture.window->SaveConfig(false);
    const QString copy = m_folder.path(QStringLiteral("copy_%1.ini").arg(QTest::currentDataTag()));
    QFile::remove(copy);
    QVERIFY(QFile::copy(m_folder.iniFile(), copy)); // under its own name it comes from memory
    Options read;
    INFO::loadMapFromIniFile(&read, copy, QStringLiteral("options"), false, QString());
    QCOMPARE(read.value(QStringLiteral("mainurl")).toString(),
             QStringLiteral("https://laden.example"));
    QVERIFY(read.size() > 30);
}

LEDORA_APP_TEST_MAIN(tst_form_fields)

#include "tst_form_fields.moc"
