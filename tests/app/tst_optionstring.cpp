#include "app/globals.h"
#include "app/optionstring.h"
#include "form/mod_form_qt.h"
#include "tests/support/start_folder.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTextStream>
#include <QtTest>

using mod_form_qt::INFO;
using mod_form_qt::T_LISTDATA;
using payment_import::KontenMap;
using payment_import::KontenTypen;
using Options = QMap<QString, QVariant>;

namespace {

const QString head = QStringLiteral("export_version|1");

QString hostText(const Options& options)
{
    return optionsToHostText(options, {});
}

T_LISTDATA chartList(int selected)
{
    return {{QString(), selected == 0, QVariant(), {}},
            {QStringLiteral("SKR03"), selected == 3, 3, {}},
            {QStringLiteral("SKR04"), selected == 4, 4, {}}};
}

/// One option of each kind that a user's settings hold.
Options savedOptions()
{
    return {
        {QStringLiteral("mainurl"), QStringLiteral("https://shop.example/wp")},
        {QStringLiteral("germanized_use"), true},
        {QStringLiteral("paypal_use"), false},
        {QStringLiteral("customers_create"), 0},
        {QStringLiteral("server_group_show"), 1},
        {QStringLiteral("date_filter_before"), QDate(2037, 1, 1)},
        {QStringLiteral("skr"), QVariantList {3}},
        {QStringLiteral("kostenstelle1"), QVariantList {QString()}},
        {QStringLiteral("b2c_handling"), QVariantList()},
        {QStringLiteral("buchungs_text_erloes"),
         QStringLiteral("Erlös-<ORDER_NUMBER>-<COMPANY><,><NAME>")},
        {QStringLiteral("def_payment_method_s"), QStringLiteral("giropay;giro\r\nsofort;sofort")},
        {QStringLiteral("start_button"), QVariant()},
    };
}

/// Prints what a later start makes of a saved file; this process would see its own memory.
int printHostText(const QString& iniFile)
{
    Options options;
    INFO::loadMapFromIniFile(&options, iniFile, QStringLiteral("options"), false, QString());
    QFile out;
    return out.open(stdout, QIODevice::WriteOnly) && out.write(hostText(options).toUtf8()) > 0 ? 0
                                                                                               : 1;
}

} // namespace

class tst_optionstring : public QObject
{
    Q_OBJECT

private slots:
    void startsWithTheVersion();
    void writesOptionsInKeyOrder();
    void formsTheValueText_data();
    void formsTheValueText();
    void leavesOutOptionsWithoutAValue();
    void readsBoundRowsThroughTheirPointer();
    void takesTheSelectedValueOfAList();
    void leavesOutSecrets();
    void leavesOutEntriesOfTheEngine();
    void putsTheAccountsAtTheirPlace();
    void writesNoAccountsWithoutTheirKey();
    void ordersRolesByNumber();
    void writesRole35OnlyIfTheTableHasIt();
    void writesAccountsAsTheyStand();
    void takesAccountsFromTheTableNotFromTheOption();
    void isTheSameTwice();
    void isTheSameAfterARestart();
    void emptiesTheSecretsForALogLine();
};

void tst_optionstring::startsWithTheVersion()
{
    QCOMPARE(hostText({}), head);
}

void tst_optionstring::writesOptionsInKeyOrder()
{
    const Options options {{QStringLiteral("b"), 2},
                           {QStringLiteral("a"), QStringLiteral("x")},
                           {QStringLiteral("C"), 3}};
    QCOMPARE(hostText(options), head + QStringLiteral("|C|3|a|x|b|2"));
}

void tst_optionstring::formsTheValueText_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("text");
    const auto row = [](const char* name, const QVariant& value, const char* text) {
        QTest::newRow(name) << value << QString::fromUtf8(text);
    };
    row("true", true, "1");
    row("false", false, "0");
    row("a number", 8400, "8400");
    row("a negative number", -1, "-1");
    row("a number with decimals", 0.5, "0.5");
    row("a date", QDate(2037, 1, 1), "2037-01-01");
    row("no date", QDate(), "");
    row("a text", QStringLiteral("Erlös <NAME>"), "Erlös <NAME>");
    row("an empty text", QString(""), "");
    row("a null text", QString(), "");
    row("blanks stay", QStringLiteral("  a  "), "  a  ");
    row("DOS line ends", QStringLiteral("a;b\r\nc;d\r\n"), "a;b~c;d~");
    row("line feeds", QStringLiteral("a;b\nc;d"), "a;b~c;d");
    row("carriage returns alone", QStringLiteral("a\rb"), "ab");
    row("the field mark", QStringLiteral("a|[]b|[]"), "ab");
    row("a single bar", QStringLiteral("a|b"), "a|b");
    row("parts of the field mark", QStringLiteral("a|[b[]c|"), "a|[b[]c|");
    row("the line mark", QStringLiteral("a~b"), "a~b");
    row("a list of one", QVariantList {3}, "3");
    row("a list of two", QVariantList {4, 3}, "4");
    row("an empty list", QVariantList(), "");
    row("a list with a text", QVariantList {QStringLiteral("PRODUCT_NAME")}, "PRODUCT_NAME");
    row("a list with a bool", QVariantList {true}, "true");
    row("a list with the field mark", QVariantList {QStringLiteral("a|[]b")}, "ab");
    row("a list keeps line ends", QVariantList {QStringLiteral("a\r\nb")}, "a\r\nb");
    row("a list with an invalid value", QVariantList {QVariant()}, "");
    row("a list of texts", QStringList({QStringLiteral("x|[]y"), QStringLiteral("z")}), "xy");
    row("an empty list of texts", QStringList(), "");
    row("a value without a text", QVariantMap {{QStringLiteral("a"), 1}}, "");
}

void tst_optionstring::formsTheValueText()
{
    QFETCH(QVariant, value);
    QFETCH(QString, text);
    QCOMPARE(optionText(value), text);
    QCOMPARE(hostText({{QStringLiteral("key"), value}}), head + QStringLiteral("|key|") + text);
}

void tst_optionstring::leavesOutOptionsWithoutAValue()
{
    QVariant unset;
    const Options options {{QStringLiteral("a"), QVariant()},
                           {QStringLiteral("b"), QVariant::fromValue(&unset)},
                           {QStringLiteral("c"), QVariant::fromValue<QVariant*>(nullptr)},
                           {QStringLiteral("d"), 1}};
    QCOMPARE(hostText(options), head + QStringLiteral("|d|1"));
}

void tst_optionstring::readsBoundRowsThroughTheirPointer()
{
    QVariant bound = false;
    const Options options {{QStringLiteral("germanized_use"), QVariant::fromValue(&bound)}};
    QCOMPARE(hostText(options), head + QStringLiteral("|germanized_use|0"));
    bound = true;
    QCOMPARE(hostText(options), head + QStringLiteral("|germanized_use|1"));
}

void tst_optionstring::takesTheSelectedValueOfAList()
{
    const QString key = QStringLiteral("skr");
    QCOMPARE(hostText({{key, QVariant::fromValue(chartList(4))}}), head + QStringLiteral("|skr|4"));
    // The empty item is selected and has no value; the field stays, with an empty text.
    QCOMPARE(hostText({{key, QVariant::fromValue(chartList(0))}}), head + QStringLiteral("|skr|"));
    QCOMPARE(hostText({{key, QVariant::fromValue(chartList(7))}}), head + QStringLiteral("|skr|"));
    T_LISTDATA owned = chartList(3);
    QCOMPARE(hostText({{key, QVariant::fromValue(&owned)}}), head + QStringLiteral("|skr|3"));
}

void tst_optionstring::leavesOutSecrets()
{
    QVariant bound = QStringLiteral("cs_bound");
    const Options options {{QStringLiteral("api_key_chain"), QStringLiteral("ck_secret")},
                           {QStringLiteral("api_secret_chain"), QVariant::fromValue(&bound)},
                           {QStringLiteral("api_key"), QStringLiteral("public")}};
    QCOMPARE(hostText(options), head + QStringLiteral("|api_key|public"));
}

void tst_optionstring::leavesOutEntriesOfTheEngine()
{
    const Options options {{INFO::automatikVarName + QStringLiteral("a"), 1},
                           {INFO::widgetDataVarName + QStringLiteral("b"), 2},
                           {INFO::objectDataVarName, 3},
                           {INFO::automatikVarName.toUpper(), 4},
                           {QStringLiteral("x") + INFO::automatikVarName, 5}};
    QCOMPARE(hostText(options),
             head + QStringLiteral("|::MOD_FORM_QT_AUTO_VAR:|4|x::mod_form_qt_auto_var:|5"));
}

void tst_optionstring::putsTheAccountsAtTheirPlace()
{
    const Options options {{QStringLiteral("a"), 1},
                           {QStringLiteral("buchungs_konten"), QVariantList {QStringList()}},
                           {QStringLiteral("buchungs_konto"), 7},
                           {QStringLiteral("z"), 2}};
    const KontenMap konten {{KontenTypen(1), {8400, 4400, 8030}}};
    QCOMPARE(optionsToHostText(options, konten),
             head + QStringLiteral("|a|1|1_03|8400|1_04|4400|1_49|8030|buchungs_konto|7|z|2"));
}

void tst_optionstring::writesNoAccountsWithoutTheirKey()
{
    const KontenMap konten {{KontenTypen(1), {8400, 4400, 8030}}};
    QCOMPARE(optionsToHostText({{QStringLiteral("a"), 1}}, konten), head + QStringLiteral("|a|1"));
}

void tst_optionstring::ordersRolesByNumber()
{
    const KontenMap konten {{KontenTypen(10), {1, 2, 3}}, {KontenTypen(2), {4, 5, 6}}};
    QCOMPARE(optionsToHostText({{QStringLiteral("buchungs_konten"), QVariantList()}}, konten),
             head + QStringLiteral("|2_03|4|2_04|5|2_49|6|10_03|1|10_04|2|10_49|3"));
}

void tst_optionstring::writesRole35OnlyIfTheTableHasIt()
{
    KontenMap konten;
    payment_import::InitDefaultKonten(konten, 0, false, {1, 2, 3}, {4, 5, 6}, {7, 8, 9});
    const Options options {{QStringLiteral("buchungs_konten"), QVariantList()}};
    const QString text = optionsToHostText(options, konten);
    QCOMPARE(text.count(QLatin1Char('|')), 1 + 36 * 3 * 2);
    QVERIFY(text.contains(QLatin1String("|34_49|8000|36_03|0|")));
    payment_import::upDateKontoByIndex(konten, KontenTypen(35), 1, 4185);
    QVERIFY(optionsToHostText(options, konten)
                .contains(QLatin1String("|34_49|8000|35_03|-1|35_04|4185|35_49|-1|36_03|0|")));
}

void tst_optionstring::writesAccountsAsTheyStand()
{
    const KontenMap konten {{KontenTypen(18), {-1, 0, 2147483647}}};
    QCOMPARE(optionsToHostText({{QStringLiteral("buchungs_konten"), QVariant()}}, konten),
             head + QStringLiteral("|18_03|-1|18_04|0|18_49|2147483647"));
}

void tst_optionstring::takesAccountsFromTheTableNotFromTheOption()
{
    const QVariantList saved {QStringList({QStringLiteral("1"), QStringLiteral("9999"),
                                           QStringLiteral("9999"), QStringLiteral("9999")})};
    const KontenMap konten {{KontenTypen(1), {1, 2, 3}}};
    QCOMPARE(optionsToHostText({{QStringLiteral("buchungs_konten"), saved}}, konten),
             head + QStringLiteral("|1_03|1|1_04|2|1_49|3"));
}

void tst_optionstring::isTheSameTwice()
{
    const Options options = savedOptions();
    QCOMPARE(hostText(options), hostText(options));
}

void tst_optionstring::isTheSameAfterARestart()
{
    const StartFolder folder;
    folder.saveOptions(savedOptions());
    QProcess later;
    later.start(QCoreApplication::applicationFilePath(),
                {QStringLiteral("--host-text"), folder.iniFile()});
    QVERIFY(later.waitForFinished(30000));
    QCOMPARE(later.exitCode(), 0);
    QCOMPARE(QString::fromUtf8(later.readAllStandardOutput()), hostText(savedOptions()));
}

void tst_optionstring::emptiesTheSecretsForALogLine()
{
    const Options options {{keyNameAPI, QStringLiteral("ck_secret")}, {QStringLiteral("a"), 1}};
    const Options shown = withoutSecrets(options);
    QCOMPARE(shown, (Options {{keyNameAPI, QString()}, {QStringLiteral("a"), 1}}));
}

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == QLatin1String("--host-text"))
        return printHostText(arguments.value(2));
    tst_optionstring test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_optionstring.moc"
