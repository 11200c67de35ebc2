#include "tests/app/form_page.h"
#include "tests/app/run_fixture.h"
#include "tests/support/app_test.h"

using namespace payment_import;

namespace {

const QString keySkr = QStringLiteral("skr");
const QString keyTyp = QStringLiteral("buchungs_typ");
const QString keyKonto = QStringLiteral("buchungs_konto");
const QString secondRole = QStringLiteral("Erlöse Inland ermäßigte Steuer");

} // namespace

/// The account editor of the form: one number for the chosen chart and role.
class tst_form_konto : public QObject
{
    Q_OBJECT

public:
    explicit tst_form_konto(const StartFolder& folder)
        : m_folder(folder)
        , m_fixture(folder)
    {
    }

private slots:
    void showsTheAccountOfTheHostsChart_data();
    void showsTheAccountOfTheHostsChart();
    void staysDisabledUntilAChartIsChosen();
    void isDisabledAgainWithoutAChart();
    void changingTheChartKeepsTheEditInItsCell();
    void changesOnlyTheCellOfTheChart_data();
    void changesOnlyTheCellOfTheChart();
    void changesOnlyTheChosenRole();
    void storesTheSameNumberForAnotherChart();
    void showsAnAccountThatIsNotSetAsOneWithoutWritingIt_data();
    void showsAnAccountThatIsNotSetAsOneWithoutWritingIt();
    void keepsWithinItsBounds();
    void anEmptiedAccountStaysAsItWas_data();
    void anEmptiedAccountStaysAsItWas();
    void findsTheEditAtTheNextStart();
    void tellsTheHostTheEdit();

private:
    FormPage start(int nSKR, const QMap<QString, QVariant>& options = {});
    KontenTriple konten(KontenTypen role = ErloesInlandNormal) const;

    const StartFolder& m_folder;
    RunFixture m_fixture;
};

FormPage tst_form_konto::start(int nSKR, const QMap<QString, QVariant>& options)
{
    QStringList lines = m_folder.hostLines();
    lines[1] = QString::number(nSKR);
    MainWindow& window = m_fixture.start(options, lines);
    window.show();
    return FormPage(window);
}

KontenTriple tst_form_konto::konten(KontenTypen role) const
{
    const auto found = m_fixture.window->kontenMap.find(role);
    return found != m_fixture.window->kontenMap.end() ? found->second : KontenTriple();
}

void tst_form_konto::showsTheAccountOfTheHostsChart_data()
{
    QTest::addColumn<int>("nSKR");
    QTest::addColumn<int>("konto");
    QTest::newRow("SKR03") << 3 << 8400;
    QTest::newRow("SKR04") << 4 << 4400;
    QTest::newRow("SKR49") << 49 << 8030;
}

void tst_form_konto::showsTheAccountOfTheHostsChart()
{
    QFETCH(int, nSKR);
    const FormPage form = start(nSKR);
    QVERIFY(form.number(keyKonto)->isEnabled());
    QTEST(form.number(keyKonto)->value(), "konto");
}

void tst_form_konto::staysDisabledUntilAChartIsChosen()
{
    const FormPage form = start(0);
    QCOMPARE(form.combo(keySkr)->currentText(), QString());
    QVERIFY(!form.number(keyKonto)->isEnabled());
    QVERIFY(form.choose(keyTyp, secondRole));
    QVERIFY(!form.number(keyKonto)->isEnabled());
    QVERIFY(form.choose(keySkr, QStringLiteral("SKR04")));
    QVERIFY(form.number(keyKonto)->isEnabled());
    QCOMPARE(form.number(keyKonto)->value(), std::get<1>(konten(ErloesInlandErmaessigt)));
}

void tst_form_konto::isDisabledAgainWithoutAChart()
{
    const FormPage form = start(3);
    const auto before = m_fixture.window->kontenMap;
    QVERIFY(form.choose(keySkr, QString()));
    QVERIFY(!form.number(keyKonto)->isEnabled());
    QVERIFY(m_fixture.window->kontenMap == before);
    QVERIFY(form.choose(keySkr, QStringLiteral("SKR049")));
    QVERIFY(form.number(keyKonto)->isEnabled());
    QCOMPARE(form.number(keyKonto)->value(), 8030);
}

void tst_form_konto::changingTheChartKeepsTheEditInItsCell()
{
    const FormPage form = start(3);
    form.typeNumber(keyKonto, 8401);
    QVERIFY(form.choose(keySkr, QStringLiteral("SKR04")));
    QCOMPARE(form.number(keyKonto)->value(), 4400);
    QCOMPARE(konten(), KontenTriple(8401, 4400, 8030));
    QVERIFY(form.choose(keySkr, QStringLiteral("SKR03")));
    QCOMPARE(form.number(keyKonto)->value(), 8401);
}

void tst_form_konto::changesOnlyTheCellOfTheChart_data()
{
    QTest::addColumn<int>("nSKR");
    QTest::addColumn<QList<int>>("expected");
    QTest::newRow("SKR03") << 3 << QList<int> {1234, 4400, 8030};
    QTest::newRow("SKR04") << 4 << QList<int> {8400, 1234, 8030};
    QTest::newRow("SKR49") << 49 << QList<int> {8400, 4400, 1234};
}

void tst_form_konto::changesOnlyTheCellOfTheChart()
{
    QFETCH(int, nSKR);
    QFETCH(QList<int>, expected);
    const FormPage form = start(nSKR);
    form.typeNumber(keyKonto, 1234);
    QCOMPARE(konten(), KontenTriple(expected[0], expected[1], expected[2]));
}

void tst_form_konto::changesOnlyTheChosenRole()
{
    const FormPage form = start(3);
    const KontenTriple first = konten();
    QVERIFY(form.choose(keyTyp, secondRole));
    form.typeNumber(keyKonto, 8301);
    QCOMPARE(konten(), first);
    QCOMPARE(std::get<0>(konten(ErloesInlandErmaessigt)), 8301);
}

void tst_form_konto::storesTheSameNumberForAnotherChart()
{
    const FormPage form = start(3);
    form.typeNumber(keyKonto, 1234);
    QVERIFY(form.choose(keySkr, QStringLiteral("SKR04")));
    QCOMPARE(form.number(keyKonto)->value(), 4400);
    form.typeNumber(keyKonto, 1234);
    QCOMPARE(konten(), KontenTriple(1234, 1234, 8030));
}

void tst_form_konto::showsAnAccountThatIsNotSetAsOneWithoutWritingIt_data()
{
    QTest::addColumn<int>("konto");
    QTest::newRow("0") << 0;
    QTest::newRow("-1") << -1;
}

void tst_form_konto::showsAnAccountThatIsNotSetAsOneWithoutWritingIt()
{
    QFETCH(int, konto);
    const QVariantList saved {QStringList {QStringLiteral("2"), QStringLiteral("8300"),
                                           QString::number(konto), QStringLiteral("8020")}};
    const FormPage form = start(3,
                                {{QStringLiteral("buchungs_konten"), saved},
                                 {QStringLiteral("b2c_handling"), QVariantList {1}}});
    QVERIFY(form.choose(keyTyp, secondRole));
    QVERIFY(form.choose(keySkr, QStringLiteral("SKR04")));
    QCOMPARE(form.number(keyKonto)->value(), 1);
    QVERIFY(form.number(keyKonto)->isEnabled());
    QCOMPARE(std::get<1>(konten(ErloesInlandErmaessigt)), konto);
    // Neither leaving the field nor a button that takes what is being edited makes it a choice.
    form.number(keyKonto)->setFocus();
    QTest::keyClick(form.number(keyKonto), Qt::Key_Tab);
    form.number(keyKonto)->setFocus();
    form.click(QStringLiteral("Anhalten"));
    form.line(QStringLiteral("mainurl"))->setFocus();
    QCOMPARE(std::get<1>(konten(ErloesInlandErmaessigt)), konto);
    QVERIFY(form.choose(keySkr, QStringLiteral("SKR03")));
    QCOMPARE(form.number(keyKonto)->value(), 8300);
    QCOMPARE(konten(ErloesInlandErmaessigt), KontenTriple(8300, konto, 8020));
}

void tst_form_konto::keepsWithinItsBounds()
{
    const FormPage form = start(3);
    QCOMPARE(form.number(keyKonto)->minimum(), 1);
    QCOMPARE(form.number(keyKonto)->maximum(), 9999);
    form.typeNumber(keyKonto, 12345);
    QVERIFY(std::get<0>(konten()) <= 9999);
    QVERIFY(std::get<0>(konten()) >= 1);
}

void tst_form_konto::anEmptiedAccountStaysAsItWas_data()
{
    QTest::addColumn<bool>("byClosing");
    QTest::newRow("the field is left") << false;
    QTest::newRow("the window is closed") << true;
}

void tst_form_konto::anEmptiedAccountStaysAsItWas()
{
    QFETCH(bool, byClosing);
    const FormPage form = start(3);
    QVERIFY(QTest::qWaitForWindowActive(m_fixture.window.get()));
    QSpinBox* box = form.number(keyKonto);
    box->setFocus();
    box->selectAll();
    QTest::keyClick(box, Qt::Key_Delete);
    if (byClosing)
        m_fixture.window->close();
    else
        QTest::keyClick(box, Qt::Key_Tab);
    QCOMPARE(box->value(), 8400);
    QCOMPARE(konten(), KontenTriple(8400, 4400, 8030));
    if (byClosing)
        return;
    // A typed 0 is a number, and out of bounds.
    form.typeNumber(keyKonto, 0);
    QTest::keyClick(box, Qt::Key_Tab);
    QCOMPARE(konten(), KontenTriple(1, 4400, 8030));
}

void tst_form_konto::findsTheEditAtTheNextStart()
{
    const FormPage form = start(4);
    form.typeNumber(keyKonto, 4401);
    m_fixture.window->close();
    MainWindow& next = m_fixture.restart();
    QCOMPARE(konten(), KontenTriple(8400, 4401, 8030));
    QCOMPARE(FormPage(next).number(keyKonto)->value(), 4401);
}

void tst_form_konto::tellsTheHostTheEdit()
{
    const FormPage form = start(49);
    form.typeNumber(keyKonto, 8031);
    m_fixture.window->SaveConfig(false);
    const QString options = m_fixture.window->BuildOptionsString();
    QVERIFY(options.contains(QLatin1String("|1_03|8400|1_04|4400|1_49|8031|")));
    QVERIFY(!options.contains(QLatin1String("|35_03|")));
    QVERIFY(options.contains(QLatin1String("|buchungs_konto|8031|")));
}

LEDORA_APP_TEST_MAIN(tst_form_konto)

#include "tst_form_konto.moc"
