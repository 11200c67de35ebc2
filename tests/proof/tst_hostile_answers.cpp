#include "app/networkerror.h"
#include "tests/app/export_table.h"
#include "tests/app/run_fixture.h"
#include "tests/app/sample_orders.h"
#include "tests/proof/proof_size.h"
#include "tests/support/app_test.h"

#include <QPlainTextEdit>

namespace {

QString s(const char* text)
{
    return QString::fromUtf8(text);
}

/// A page of two orders, the first of which holds \a fields.
QByteArray pageWith(const QByteArray& fields)
{
    return R"([{"id":1,"status":"completed","line_items":[{"id":11,"total":"1.00"}],)" + fields
        + R"(},{"id":2,"status":"completed","line_items":[{"id":21,"total":"2.00"}]}])";
}

QByteArray times(int count, const QByteArray& text)
{
    return text.repeated(count);
}

const QString ordersPath = QStringLiteral("/wp-json/wc/v3/orders");

} // namespace

/// Answers that follow the rules of JSON, or nearly, and are meant to break who reads them.
class tst_hostile_answers : public QObject
{
    Q_OBJECT

public:
    explicit tst_hostile_answers(const StartFolder& startFolder)
        : folder(startFolder)
    {
    }

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

    void numbersOfAbsurdSizeBecomeText_data();
    void numbersOfAbsurdSizeBecomeText();
    void answersThatAreNoJsonAreRefused_data();
    void answersThatAreNoJsonAreRefused();
    void anAnswerThatIsNoJsonFailsTheRun_data();
    void anAnswerThatIsNoJsonFailsTheRun();
    void deepFieldsLeaveTheRowsAlone_data();
    void deepFieldsLeaveTheRowsAlone();
    void ofEqualKeysTheLastOneCounts();
    void loneSurrogatesLeaveTheExportUtf8_data();
    void loneSurrogatesLeaveTheExportUtf8();
    void controlCharactersStayInTheirCells();
    void keysWithQuotesAndSeparatorsKeepTheRowsInShape();
    void anOrdersOwnColumnCannotStandInForAFixedOne();
    void amountsWithoutLimitLeaveTheOtherOrdersAlone_data();
    void amountsWithoutLimitLeaveTheOtherOrdersAlone();
    void idsBeyondAnIntKeepTheirDigits_data();
    void idsBeyondAnIntKeepTheirDigits();
    void percentMarksStayInTheLog_data();
    void percentMarksStayInTheLog();
    void percentMarksOfTheShopsErrorStayInEveryMessage();

private:
    MainWindow& window() const { return *fixture->window; }

    /// Runs over one page of orders to the end.
    ExportTable run(const QByteArray& orders, const QMap<QString, QVariant>& options = {});
    /// The same for a page that can't be had, without the first two of its three passes.
    void runToFailure();
    /// The failure of a single request that is answered with \a body; empty if it is taken.
    QString failureOf(const QByteArray& body);

    const StartFolder& folder;
    std::unique_ptr<RunFixture> fixture;
    int tried = 0;
};

void tst_hostile_answers::initTestCase()
{
    // The lines of thousands of options would be all that is seen of a failure.
    QLoggingCategory::setFilterRules(s("*.debug=false"));
}

void tst_hostile_answers::init()
{
    fixture = std::make_unique<RunFixture>(folder);
    ++tried;
}

void tst_hostile_answers::cleanup()
{
    fixture.reset();
}

void tst_hostile_answers::cleanupTestCase()
{
    proof::report("hostile: answers tried=" + std::to_string(tried));
}

ExportTable tst_hostile_answers::run(const QByteArray& orders,
                                     const QMap<QString, QVariant>& options)
{
    fixture->serve(ordersPath, orders);
    fixture->start(options);
    fixture->runToEnd();
    return ExportTable(folder.exported());
}

void tst_hostile_answers::runToFailure()
{
    window().Reset();
    window().iPageRetries = iPassesPerPage - 1;
    fixture->tickToEnd();
}

QString tst_hostile_answers::failureOf(const QByteArray& body)
{
    fixture->serve(s("/x"), body);
    fixture->start();
    window().Reset();
    try {
        QJsonDocument answer;
        window().executeRequest(QUrl(fixture->shop.baseUrl() + s("/x")), &answer, 1);
    } catch (const NetworkError& failure) {
        return QString::fromUtf8(failure.what());
    }
    return {};
}

void tst_hostile_answers::numbersOfAbsurdSizeBecomeText_data()
{
    QTest::addColumn<QByteArray>("number");
    QTest::addColumn<QString>("cell");
    const auto row = [](const char* number, const char* cell) {
        QTest::newRow(number) << QByteArray(number) << s(cell);
    };
    row("9223372036854775807", "9223372036854775807");
    row("-9223372036854775808", "-9223372036854775808");
    row("9223372036854775808", "9223372036854776000");
    row("1e21", "1e+21");
    row("1e308", "1e+308");
    row("-1.7976931348623157e308", "-1.7976931348623157e+308");
    row("0.1000000000000000055511151231257827", "0.1");
    row("1e-300", "1e-300");
    QTest::newRow("300 digits") << times(300, "9") << s("1e+300");
    QTest::newRow("100,000 digits behind the point")
        << QByteArray("0." + times(100000, "3")) << s("0.3333333333333333");
}

void tst_hostile_answers::numbersOfAbsurdSizeBecomeText()
{
    QFETCH(QByteArray, number);
    QFETCH(QString, cell);
    const ExportTable table = run(pageWith("\"x\":" + number));
    QCOMPARE(table.problem(), QString());
    QCOMPARE(table.column(s("x")), QStringList({cell, QString()}));
    QCOMPARE(table.column(s("line_items_total")), QStringList({s("1.00"), s("2.00")}));
}

void tst_hostile_answers::answersThatAreNoJsonAreRefused_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QString>("reason");
    const int deep = 1000000;
    QTest::newRow("a million arrays")
        << times(deep, "[") + times(deep, "]") << s("too deeply nested");
    QTest::newRow("a million objects")
        << times(deep, R"({"a":)") + "1" + times(deep, "}") << s("too deeply nested");
    QTest::newRow("a million arrays left open") << times(deep, "[") << s("too deeply nested");
    QTest::newRow("a million arrays in an order")
        << pageWith("\"x\":" + times(deep, "[") + times(deep, "]")) << s("too deeply nested");
    QTest::newRow("number beyond all bounds") << QByteArray("[1e400]") << s("illegal number");
    QTest::newRow("a million digits") << "[" + times(deep, "9") + "]" << s("illegal number");
    QTest::newRow("not a number") << QByteArray("[NaN]") << s("illegal number");
    QTest::newRow("byte that is no text") << QByteArray("[\"\xff\"]") << s("invalid UTF8 string");
    QTest::newRow("overlong slash") << QByteArray("[\"\xc0\xaf\"]") << s("invalid UTF8 string");
    QTest::newRow("surrogate as bytes")
        << QByteArray("[\"\xed\xa0\x80\"]") << s("invalid UTF8 string");
    QTest::newRow("character cut off") << QByteArray("[\"\xe2\x82\"]") << s("invalid UTF8 string");
    QTest::newRow("beyond the last character")
        << QByteArray("[\"\xf4\x90\x80\x80\"]") << s("invalid UTF8 string");
    QTest::newRow("escape that is none") << QByteArray(R"(["\u12g4"])") << s("invalid escape");
    QTest::newRow("zero bytes behind") << QByteArray("[]\0\0", 4) << s("garbage at the end");
    QTest::newRow("UTF-16") << QByteArray("\xff\xfe[\0]\0", 6) << s("illegal value");
}

void tst_hostile_answers::answersThatAreNoJsonAreRefused()
{
    QFETCH(QByteArray, body);
    QFETCH(QString, reason);
    const QString failure = failureOf(body);
    QVERIFY2(failure.startsWith(s("Netzwerkfehler nach 1 Versuchen: JSON-Parse-Fehler: ")),
             qPrintable(failure));
    QVERIFY2(failure.contains(reason), qPrintable(failure));
}

void tst_hostile_answers::anAnswerThatIsNoJsonFailsTheRun_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::newRow("a million arrays")
        << pageWith("\"x\":" + times(1000000, "[") + times(1000000, "]"));
    QTest::newRow("number beyond all bounds") << pageWith("\"x\":1e400");
    QTest::newRow("byte that is no text") << pageWith("\"x\":\"\xff\"");
}

void tst_hostile_answers::anAnswerThatIsNoJsonFailsTheRun()
{
    QFETCH(QByteArray, body);
    fixture->serve(ordersPath, body);
    fixture->start();
    runToFailure();
    QVERIFY(window().bError);
    QCOMPARE(folder.exported(), QByteArray());
    QCOMPARE(fixture->answers.titles(), QStringList {s("Fehler:")});
}

void tst_hostile_answers::deepFieldsLeaveTheRowsAlone_data()
{
    QTest::addColumn<QByteArray>("fields");
    const QByteArray arrays = times(900, "[") + times(900, "]");
    const QByteArray objects = times(900, R"({"a":)") + "1" + times(900, "}");
    for (const char* key : {"x", "billing", "meta_data", "tax_lines", "shipping_lines"}) {
        const QByteArray begin = '"' + QByteArray(key) + "\":";
        QTest::addRow("arrays in %s", key) << QByteArray(begin + arrays);
        QTest::addRow("objects in %s", key) << QByteArray(begin + objects);
    }
}

void tst_hostile_answers::deepFieldsLeaveTheRowsAlone()
{
    QFETCH(QByteArray, fields);
    const ExportTable table = run(pageWith(fields));
    QCOMPARE(table.problem(), QString());
    QVERIFY(!window().bError);
    QCOMPARE(table.column(s("line_items_total")), QStringList({s("1.00"), s("2.00")}));
}

void tst_hostile_answers::ofEqualKeysTheLastOneCounts()
{
    const ExportTable table = run(R"([{"id":1,"id":7,"number":"a","number":"b","line_items":[],)"
                                  R"("line_items":[{"id":11,"total":"1.00","total":"3.00"}]}])");
    QCOMPARE(table.problem(), QString());
    QCOMPARE(table.column(s("id")), QStringList {s("7")});
    QCOMPARE(table.column(s("number")), QStringList {s("b")});
    QCOMPARE(table.column(s("line_items_total")), QStringList {s("3.00")});
    QCOMPARE(table.headers().count(s("id")), 1);
}

void tst_hostile_answers::loneSurrogatesLeaveTheExportUtf8_data()
{
    QTest::addColumn<QByteArray>("escaped");
    QTest::addColumn<QString>("cell");
    const QString lost(QChar::ReplacementCharacter);
    QTest::newRow("first half") << QByteArray(R"(\ud800)") << lost;
    QTest::newRow("second half") << QByteArray(R"(\udc00)") << lost;
    QTest::newRow("halves swapped") << QByteArray(R"(\udc00\ud800)") << QString(lost + lost);
    QTest::newRow("between letters") << QByteArray(R"(a\ud800b)") << QString('a' + lost + 'b');
    QTest::newRow("before a separator") << QByteArray(R"(\ud800;)") << QString(lost + ';');
    QTest::newRow("a pair") << QByteArray(R"(\ud83d\ude00)") << s("😀");
}

void tst_hostile_answers::loneSurrogatesLeaveTheExportUtf8()
{
    QFETCH(QByteArray, escaped);
    QFETCH(QString, cell);
    const ExportTable table = run(pageWith("\"x\":\"" + escaped + "\",\"billing\":{\"last_name\":\""
                                           + escaped + "\"},\"z" + escaped + "\":\"last\""));
    QCOMPARE(table.problem(), QString());
    QCOMPARE(table.cell(0, s("x")), cell);
    QCOMPARE(table.cell(0, s("billing_last_name")), cell);
    QCOMPARE(table.cell(0, 'z' + cell), s("last"));
    QCOMPARE(table.column(s("line_items_total")), QStringList({s("1.00"), s("2.00")}));
}

void tst_hostile_answers::controlCharactersStayInTheirCells()
{
    const ExportTable table =
        run(pageWith(R"("x":"a\u0000b\u0001\t\r\nc\u2028\ufeff","billing":{"email":"\u0000\n"})"));
    QCOMPARE(table.problem(), QString());
    QCOMPARE(table.cell(0, s("x")), QString::fromUtf16(u"a\0b\u0001\t\r\nc\u2028\ufeff", 10));
    QCOMPARE(table.cell(0, s("billing_email")), QString::fromUtf16(u"\0\n", 2));
    QCOMPARE(table.rowCount(), 2);
}

void tst_hostile_answers::keysWithQuotesAndSeparatorsKeepTheRowsInShape()
{
    // Names of columns stand as they came; the host looks for those that it knows.
    const ExportTable table = run(
        pageWith(R"("a\"b":"1","c;d":"2","\"":"3",";":"4","%1":"5","":"6","e\"":{"f;\"g":"7"})"));
    QCOMPARE(table.problem(), QString());
    QCOMPARE(table.cell(0, s("a\"b")), s("1"));
    QCOMPARE(table.cell(0, s("c;d")), s("2"));
    QCOMPARE(table.cell(0, s("\"")), s("3"));
    QCOMPARE(table.cell(0, s(";")), s("4"));
    QCOMPARE(table.cell(0, s("%1")), s("5"));
    QCOMPARE(table.cell(0, s("")), s("6"));
    QCOMPARE(table.cell(0, s("e\"_f;\"g")), s("7"));
    QCOMPARE(table.column(s("line_items_total")), QStringList({s("1.00"), s("2.00")}));
}

void tst_hostile_answers::anOrdersOwnColumnCannotStandInForAFixedOne()
{
    // Of equal names the first is filled, here with what the run knows, and every row stays whole.
    const ExportTable table = run(pageWith(R"("is_refund":"1","refund_id":"77","errors":"9")"));
    QCOMPARE(table.problem(), QString());
    QCOMPARE(table.column(s("is_refund")), QStringList({s("0"), s("0")}));
    QCOMPARE(table.column(s("refund_id")), QStringList({s("-1"), s("-1")}));
    QCOMPARE(table.column(s("errors")), QStringList({QString(), QString()}));
}

void tst_hostile_answers::amountsWithoutLimitLeaveTheOtherOrdersAlone_data()
{
    QTest::addColumn<QByteArray>("amount");
    for (const char* amount : {"1e308", R"("1e308")", R"("nan")", R"("inf")", R"("-inf")",
                               R"("1e999")", R"("1,5")", R"("0x10")", "true", "null", "[]", "{}"})
        QTest::newRow(amount) << QByteArray(amount);
}

void tst_hostile_answers::amountsWithoutLimitLeaveTheOtherOrdersAlone()
{
    QFETCH(QByteArray, amount);
    const QByteArray line = R"({"id":51,"total":)" + amount + R"(,"total_tax":)" + amount + "}";
    fixture->serve(s("/wp-json/wc/v3/orders/1/refunds"),
                   R"([{"id":5,"amount":)" + amount + R"(,"line_items":[)" + line + ',' + line
                       + R"(]},{"id":6,"line_items":[)" + line + "]}]");
    const QByteArray tax = R"({"id":1,"total":)" + amount + "}";
    const ExportTable table = run(pageWith(
        R"("refunds":[{"id":5}],"shipping_lines":[{"total":)" + amount + R"(,"total_tax":)" + amount
        + R"(,"taxes":[)" + tax + R"(]}],"tax_lines":[{"rate_id":1,"rate_percent":)" + amount
        + R"(}],"meta_data":[{"key":"_ppcp_paypal_fees","value":{"paypal_fee":{"value":)" + amount
        + "}}}]"));
    QCOMPARE(table.problem(), QString());
    QVERIFY(!window().bError);
    QCOMPARE(window().iExportCount, 2);
    QVERIFY(table.rowCount() >= 3);
    QCOMPARE(table.column(s("id")).last(), s("2"));
    QCOMPARE(table.column(s("line_items_total")).last(), s("2.00"));
}

void tst_hostile_answers::idsBeyondAnIntKeepTheirDigits_data()
{
    QTest::addColumn<QByteArray>("id");
    QTest::addColumn<QString>("cell");
    QTest::newRow("just beyond") << QByteArray("2147483648") << s("2147483648");
    QTest::newRow("twice as long") << QByteArray("4294967301") << s("4294967301");
    QTest::newRow("the longest") << QByteArray("9223372036854775807") << s("9223372036854775807");
    QTest::newRow("a text") << QByteArray(R"("99999999999")") << s("99999999999");
    QTest::newRow("a fraction") << QByteArray("1.5") << s("1.5");
    QTest::newRow("without limit") << QByteArray("1e300") << s("1e+300");
}

void tst_hostile_answers::idsBeyondAnIntKeepTheirDigits()
{
    QFETCH(QByteArray, id);
    QFETCH(QString, cell);
    const ExportTable table =
        run(R"([{"id":)" + id + R"(,"refunds":[{}],"line_items":[{"id":)" + id + R"(,"product_id":)"
            + id + R"(,"taxes":[{"id":)" + id + R"(}]}]}])");
    QCOMPARE(table.problem(), QString());
    QVERIFY(!window().bError);
    QCOMPARE(table.column(s("id")), QStringList {cell});
    QCOMPARE(table.column(s("line_items_id")), QStringList {cell});
    QCOMPARE(table.column(s("line_items_product_id")), QStringList {cell});
}

void tst_hostile_answers::percentMarksStayInTheLog_data()
{
    QTest::addColumn<QString>("text");
    for (const char* text :
         {"%1", "%2 %1", "%8", "%n", "%%", "%L1", "100%", "%1%2%3%4%5%6%7%8%9", "%99"})
        QTest::newRow(text) << s(text);
}

void tst_hostile_answers::percentMarksStayInTheLog()
{
    QFETCH(QString, text);
    const QJsonObject billing {{s("email"), text}, {s("last_name"), text}};
    const QJsonObject order = sample::order(7, {sample::line(1)},
                                            {{s("billing"), billing},
                                             {s("payment_method_title"), text},
                                             {s("payment_method"), text},
                                             {s("status"), text}});
    const ExportTable table = run(sample::json({order}));
    QCOMPARE(window().logEdit->toPlainText(),
             s("Zähler: 1, ID: 7, Datum: 05.01.2026:09:15:00, Email: ") + text + s(", Name: ")
                 + text + s(", Type: ") + text + s(" (") + text + s("), Status: ") + text);
    QCOMPARE(table.cell(0, s("billing_email")), text);
}

void tst_hostile_answers::percentMarksOfTheShopsErrorStayInEveryMessage()
{
    // An address with such marks, as a user may type it, comes back in the text of each failure.
    const QString marks = s("/%1%2%3 %n");
    fixture->start({{s("germanized_use"), false}});
    mod_form_qt::INFO::setData(&window().optionsMap, "mainurl", fixture->shop.baseUrl() + marks,
                               false);
    fixture->shop.setHandler([](const demo_shop::ShopRequest&) {
        demo_shop::ShopAnswer answer;
        answer.status = 500;
        return answer;
    });
    runToFailure();
    QCOMPARE(fixture->answers.titles(), QStringList {s("Fehler:")});
    const QString box = fixture->answers.seen().first().text;
    QVERIFY2(box.startsWith(s("Export auf Seite 1 nach 3 Versuchen fehlgeschlagen:\n"
                              "Netzwerkfehler nach 3 Versuchen: ")),
             qPrintable(box));
    const QUrl address(fixture->shop.baseUrl() + marks + s("/wp-json/wc/v3/taxes"));
    QCOMPARE(box.count(address.toString()), 2);
    QVERIFY(fixture->showsStatus(s("Beendet. Fehler: ") + window().csErrorText + '.'));
}

LEDORA_APP_TEST_MAIN(tst_hostile_answers)

#include "tst_hostile_answers.moc"
