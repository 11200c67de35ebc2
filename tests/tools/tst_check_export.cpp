#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

namespace {

constexpr int kPatience = 60000;

struct Outcome
{
    int status = -1;
    QString findings;
    QString trouble;
};

Outcome check(const QStringList& arguments)
{
    QProcess process;
    process.start(QStringLiteral(LEDORA_TEST_DATA "/../../tools/check_export/check_export"),
                  arguments);
    if (!process.waitForFinished(kPatience) || process.exitStatus() != QProcess::NormalExit)
        return {-1, {}, process.errorString()};
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

QString goldenPath(const QString& name)
{
    return QStringLiteral(LEDORA_TEST_DATA "/golden/%1/expected.csv").arg(name);
}

QByteArray golden(const QString& name)
{
    QFile file(goldenPath(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Replaces the first place of a text, which has to be there.
QByteArray spoilt(const QString& name, const QByteArray& from, const QByteArray& to)
{
    QByteArray data = golden(name);
    const qsizetype at = data.indexOf(from);
    return at < 0 ? QByteArray() : data.replace(at, from.size(), to);
}

} // namespace

/// Runs the checker over exports that are known to be right, and over copies that are not.
class tst_check_export : public QObject
{
    Q_OBJECT

private slots:
    void everyGoldenExportIsGood_data();
    void everyGoldenExportIsGood();
    void aFaultIsNamedWithLineColumnAndCause_data();
    void aFaultIsNamedWithLineColumnAndCause();
    void aFileCutInsideALineIsNoticed();
    void aFileThatIsNoTextIsNoticed();
    void aNoteIsNoFault_data();
    void aNoteIsNoFault();
    void aMissingInvoiceIsNoticedOnRequestOnly();
    void manyFindingsAreCutOff();
    void wrongUseIsToldFromFaults();

private:
    QString written(const QByteArray& data) const;

    QTemporaryDir m_folder;
};

QString tst_check_export::written(const QByteArray& data) const
{
    QFile file(m_folder.filePath(QStringLiteral("export.csv")));
    if (!file.open(QIODevice::WriteOnly) || file.write(data) != data.size())
        return {};
    return file.fileName();
}

void tst_check_export::everyGoldenExportIsGood_data()
{
    QTest::addColumn<QString>("path");
    const QStringList names = QDir(QStringLiteral(LEDORA_TEST_DATA "/golden"))
                                  .entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    for (const QString& name : names) {
        if (QFile::exists(goldenPath(name)))
            QTest::newRow(qPrintable(name)) << goldenPath(name);
    }
}

void tst_check_export::everyGoldenExportIsGood()
{
    QFETCH(QString, path);
    const Outcome outcome = check({path});
    QVERIFY2(outcome.status == 0, qPrintable(outcome.findings + outcome.trouble));
    const QString word =
        QFile(path).size() == 0 ? QStringLiteral("empty: ") : QStringLiteral("good: ");
    QVERIFY2(outcome.findings.contains(path + QStringLiteral(": ") + word),
             qPrintable(outcome.findings));
}

void tst_check_export::aFaultIsNamedWithLineColumnAndCause_data()
{
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<QString>("finding");
    const QString shop = QStringLiteral("recordings-germanized");
    const QString fees = QStringLiteral("two-refunds-one-fee");
    const auto row = [](const char* name, const QByteArray& data, const char* finding) {
        QTest::newRow(name) << data << QString::fromUtf8(finding);
    };

    row("byte order mark", "\xef\xbb\xbf" + golden(shop),
        "line 1: the file begins with a byte order");
    row("carriage returns", golden(shop).replace("\n", "\r\n"),
        "line 1: the line ends with a carria");
    row("other encoding", spoilt(shop, "ß", "\xdf"), "line 3: byte 3171 is no UTF-8");
    row("no option string", "id;total\n1;2\n",
        "line 1, column export_version: the line is no option");
    row("other version", spoilt(shop, "version|1", "version|2"),
        "line 1, column export_version: \"2\" is a version");
    row("account gone", spoilt(shop, "|1_04|4400", ""),
        "line 1, column 1_49: the accounts are not");
    row("role gone", spoilt(shop, "|2_03|8300|2_04|4300|2_49|8026", ""),
        "line 1, column 2_03: the account is missing");
    row("account no number", spoilt(shop, "1_04|4400", "1_04|x"),
        "line 1, column 1_04: \"x\" is no");
    row("no accounts", "export_version|1|paypal_use|1\n", "column 1_03: the table of accounts");
    row("switch", spoilt(shop, "paypal_use|1", "paypal_use|ja"),
        "line 1, column paypal_use: \"ja\" is neither 0 nor 1");
    row("date of an option", spoilt(shop, "1970-01-01", "01.01.1970"),
        "line 1, column date_filter_after: \"01.01.1970\" is no date");
    row("secret", spoilt(shop, "|b2c_handling", "|api_key_chain|ck_1|b2c_handling"),
        "line 1, column api_key_chain: a secret of the shop stands in the export");
    row("options out of order",
        spoilt(shop, "|paypal_use|1|server_group_show|1", "|server_group_show|1|paypal_use|1"),
        "line 1, column paypal_use: the option stands behind \"server_group_show\"");
    row("option twice", spoilt(shop, "|paypal_use|1", "|paypal_use|1|paypal_use|1"),
        "line 1, column paypal_use: the option stands here twice");
    row("option without value", spoilt(shop, "woocommerce_use|1\n", "woocommerce_use\n"),
        "line 1, column woocommerce_use: the option has no value");

    row("column gone", spoilt(shop, "\"is_refund\";", ""),
        "line 2, column is_refund: the column is m");
    row("columns swapped",
        spoilt(shop, "\"refund_id\";\"refund_date\"", "\"refund_date\";\"refund_id\""),
        "line 2, column refund_id: the column is not in its place");
    row("no invoice columns",
        spoilt(QStringLiteral("recordings-all"), "germanized_use|0", "germanized_use|1"),
        "line 2, column gm_number: the column is missing");
    row("line columns out of order",
        spoilt(shop, "\"line_items_id\";\"line_items_name\"",
               "\"line_items_name\";\"line_items_id\""),
        "line 2, column line_items_id: the column stands behind \"line_items_name\"");
    row("names not quoted", spoilt(shop, "\"billing_address_1\"", "billing_address_1"),
        "line 2: the line does not hold quoted column names");

    row("too few cells", spoilt(shop, ";Hamburg;", ";"),
        "line 3: 69 cells, and there are 70 columns");
    row("separator not quoted", spoilt(shop, "\"Tinte königsblau; 50 ml\"", "Tinte; 50 ml"),
        "line 5: 71 cells, and there are 70 columns");
    row("quote in a bare cell", spoilt(shop, ";Notizheft A5 liniert;", ";Notiz\"heft;"),
        "line 3, column line_items_name: a quote stands in a cell that is not quoted");
    row("text behind the quotes", spoilt(shop, "50 ml\";", "50 ml\"x;"),
        "line 5, column line_items_name: text stands behind the closing quote");
    row("quotes not closed", golden(QStringLiteral("woocommerce-only")).append("\"5;bacs\n"),
        "line 8, column id: the quoted cell is not closed");
    row("behind a cell of two lines", golden(QStringLiteral("quoting")).append("x\n"),
        "line 7: 1 cells, and there are");

    row("decimal comma", spoilt(shop, ";2.71;0;-1;", ";2,71;0;-1;"),
        "line 4, column paypal_fee: \"2,71\" is no number (with a comma");
    row("time", spoilt(shop, "2026-01-09T03:15:00", "09.01.2026 03:15"),
        "line 3, column date_completed: \"09.01.2026 03:15\" is no time");
    row("id", spoilt(QStringLiteral("second-page"), "\n2;", "\n2x;"),
        "line 4, column id: \"2x\" is no whole number");
    row("product flag", spoilt(shop, ";0;0;1;31;", ";0;ja;1;31;"),
        "line 3, column line_items_downloadable: \"ja\" is neither 0 nor 1");
    row("flags of a refund", spoilt(shop, ";;0;-1;;;1\n", ";;0;-1;;x;1\n"),
        "line 3, column refund_flags: \"x\" stands in a column that is always empty");
    row("error flag", spoilt(shop, ";;0;-1;;;1\n", ";;0;-1;;;2\n"),
        "line 3, column errors: \"2\" is no flag");
    row("refund switch", spoilt(shop, ";;0;-1;;;1\n", ";;2;-1;;;1\n"),
        "line 3, column is_refund: \"2\" is neither 0 nor 1");
    row("id without a refund", spoilt(shop, ";;0;-1;;;1\n", ";;0;7;;;1\n"),
        "line 3, column refund_id: an order's own row has -1 here");
    row("refund without an id", spoilt(QStringLiteral("refund-mirror"), "1;90;2026", "1;-1;2026"),
        "line 5, column refund_id: \"-1\" is no id of a refund");
    row("date without a refund",
        spoilt(QStringLiteral("refunds-by-lines"), ";0;-1;;;\n", ";0;-1;2026-01-01T10:00:00;;\n"),
        "line 3, column refund_date: an order's own row has no date of a refund");
    row("fee in a second row", spoilt(fees, "5.00;0.95;;;;0", "5.00;0.95;;;1;0"),
        "line 4, column paypal_fee: only the first row");
    row("fee in a second refund", spoilt(fees, "-5.00;-0.95;;;;1", "-5.00;-0.95;;;1;1"),
        "line 6, column paypal_fee: a second refund row carries a fee");
    row("cells of one order differ", spoilt(shop, "Dortmund", "Dresden"),
        "line 5, column billing_city: the cell differs from the order's first row");
    row("invoice no PDF", spoilt(shop, "R26-00001.pdf", "R26-00001.txt"),
        "line 3, column gm_invoice_filename: \"@PDF@/R26-00001.txt\" names no PDF file");
    row("invoice without a file", spoilt(shop, ";@PDF@/R26-00001.pdf;", ";;"),
        "line 3, column gm_number: there is an invoice, and its file is not named");
}

void tst_check_export::aFaultIsNamedWithLineColumnAndCause()
{
    QFETCH(QByteArray, data);
    QFETCH(QString, finding);
    QVERIFY2(!data.isEmpty(), "the text to spoil is not there");
    const QString path = written(data);
    const Outcome outcome = check({path});
    QCOMPARE(outcome.trouble, QString());
    QCOMPARE(outcome.status, 1);
    QVERIFY2(outcome.findings.contains(finding), qPrintable(outcome.findings));
    QVERIFY(outcome.findings.startsWith(path + QStringLiteral(": line ")));
}

void tst_check_export::aFileCutInsideALineIsNoticed()
{
    // Cut at the end of a line a file looks like one with fewer orders; nothing can tell then.
    const QByteArray whole = golden(QStringLiteral("quoting"));
    QVERIFY(whole.size() > 1000);
    for (qsizetype size = 1; size < whole.size(); size += 89) {
        const Outcome outcome = check({written(whole.left(size))});
        QVERIFY2(outcome.status == 1,
                 qPrintable(QString::number(size) + outcome.findings + outcome.trouble));
    }
}

void tst_check_export::aFileThatIsNoTextIsNoticed()
{
    const Outcome outcome = check({written(QByteArray(2000, '\0'))});
    QCOMPARE(outcome.trouble, QString());
    QCOMPARE(outcome.status, 1);
    QVERIFY2(outcome.findings.contains(QStringLiteral("no option string")),
             qPrintable(outcome.findings));
}

void tst_check_export::aNoteIsNoFault_data()
{
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<QString>("finding");
    const QString shop = QStringLiteral("recordings-germanized");
    const QByteArray whole = golden(shop);
    QTest::newRow("unknown chart")
        << spoilt(shop, "skr|3", "skr|5") << "line 1, column skr: note: \"5\" is not on the list";
    QTest::newRow("order twice in a row")
        << spoilt(shop, whole.split('\n').value(2) + '\n',
                  whole.split('\n').value(2) + '\n' + whole.split('\n').value(2) + '\n')
        << "line 4, column id: note: a row of order 31 stands here twice: drop one of the two";
    QTest::newRow("order twice")
        << whole + whole.split('\n').value(2) + '\n'
        << "line 69, column id: note: order 31 was already there in line 3: drop one of the two";
    QTest::newRow("payment not asked for")
        << spoilt(QStringLiteral("woocommerce-only"), "woocommerce_use|1", "woocommerce_use|0")
        << "line 3, column payment_method: note: the order is here although woocommerce_use is 0";
    QTest::newRow("other status") << spoilt(
        shop, ";completed;20.70;",
        ";processing;20.70;") << "line 3, column status: note: \"processing\" was not asked for";
    QTest::newRow("quoted without need") << spoilt(shop, ";Hamburg;", ";\"Hamburg\";")
                                         << "line 3, column billing_city: note: the cell is quoted";
    QTest::newRow("unknown rate") << golden(QStringLiteral("two-lines-with-fee-and-shipping-part"))
                                  << "line 6, column line_items_tax_rate: note: the line bears tax";
    QTest::newRow("column twice") << golden(QStringLiteral("columns-from-first-order"))
                                  << "line 2, column x_y: note: the column stands here twice";
    QTest::newRow("no line columns") << golden(QStringLiteral("first-order-without-lines"))
                                     << "line 2: note: there are no columns of order lines";
}

void tst_check_export::aNoteIsNoFault()
{
    QFETCH(QByteArray, data);
    QFETCH(QString, finding);
    const QString path = written(data);
    const Outcome outcome = check({path});
    QVERIFY2(outcome.status == 0, qPrintable(outcome.findings + outcome.trouble));
    QVERIFY2(outcome.findings.contains(finding), qPrintable(outcome.findings));
    const Outcome strict = check({QStringLiteral("--strict"), path});
    QCOMPARE(strict.status, 1);
    QVERIFY2(strict.findings.contains(QString(finding).remove(QStringLiteral("note: "))),
             qPrintable(strict.findings));
}

void tst_check_export::aMissingInvoiceIsNoticedOnRequestOnly()
{
    const QByteArray folder = QFile::encodeName(m_folder.path());
    const QString path =
        written(golden(QStringLiteral("invoices-overwrite")).replace("@PDF@", folder));
    QCOMPARE(check({path}).status, 0);
    const Outcome outcome = check({QStringLiteral("--files"), path});
    QCOMPARE(outcome.status, 1);
    QVERIFY2(
        outcome.findings.contains(QStringLiteral("line 3, column gm_invoice_filename: the file")),
        qPrintable(outcome.findings));
    const QString name = outcome.findings.section(QLatin1Char('"'), 1, 1);
    QFile invoice(name);
    QVERIFY2(name.startsWith(m_folder.path()) && invoice.open(QIODevice::WriteOnly),
             qPrintable(name));
    invoice.close();
    const Outcome present = check({QStringLiteral("--files"), path});
    QVERIFY2(present.status == 0, qPrintable(present.findings));
}

void tst_check_export::manyFindingsAreCutOff()
{
    const Outcome outcome =
        check({written(golden(QStringLiteral("second-page")).replace(";completed;", ";offen;x;"))});
    QCOMPARE(outcome.status, 1);
    QVERIFY2(outcome.findings.contains(QStringLiteral("1 more findings are not shown")),
             qPrintable(outcome.findings.right(300)));
    QVERIFY(outcome.findings.endsWith(QStringLiteral(": 101 faults\n")));
}

void tst_check_export::wrongUseIsToldFromFaults()
{
    const Outcome nothing = check({});
    QCOMPARE(nothing.status, 2);
    QVERIFY2(nothing.trouble.contains(QStringLiteral("usage: check_export")),
             qPrintable(nothing.trouble));
    const Outcome missing = check({m_folder.filePath(QStringLiteral("missing.csv"))});
    QCOMPARE(missing.status, 2);
    QVERIFY2(missing.trouble.contains(QStringLiteral("missing.csv")), qPrintable(missing.trouble));
    const Outcome folder = check({m_folder.path()});
    QCOMPARE(folder.status, 2);
}

QTEST_GUILESS_MAIN(tst_check_export)
#include "tst_check_export.moc"
