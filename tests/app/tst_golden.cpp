#include "app/globals.h"
#include "tests/app/golden_case.h"
#include "tests/app/run_fixture.h"
#include "tests/support/app_test.h"

#include "tools/demo_shop/recorded_shop.h"

#include <QDir>
#include <QPlainTextEdit>

#include <algorithm>

namespace {

QString casesFolder()
{
    return QStringLiteral(LEDORA_TEST_DATA "/golden");
}

/// Gives the window the options of a case, and the variables behind its rows the same values.
void takeOptions(MainWindow& window, const QMap<QString, QVariant>& options)
{
    const std::pair<QString, QVariant*> bound[] = {
        {QStringLiteral("mainurl"), &window.mainurl},
        {keyNameAPI, &window.apiKey},
        {keyNameSECRET, &window.apiSecret},
        {QStringLiteral("germanized_use"), &window.germanized_use},
        {QStringLiteral("germanized_overwrite_pdf"), &window.germanized_overwrite_pdf},
        {QStringLiteral("germanized_pdf_folder"), &window.germanized_pdf_folder},
        {QStringLiteral("woocommerce_use"), &window.woocommerce_use},
        {QStringLiteral("paypal_use"), &window.paypal_use},
        {QStringLiteral("date_filter_use"), &window.date_filter_use},
        {QStringLiteral("date_filter_before"), &window.date_filter_before},
        {QStringLiteral("date_filter_after"), &window.date_filter_after},
        {QStringLiteral("id_cache_use"), &window.id_cache_use},
    };
    window.optionsMap = options;
    for (const auto& [key, variable] : bound)
        if (options.contains(key))
            *variable = options.value(key);
}

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Where two exports part, with what stands around it: whole exports are too long for a message.
QString firstDifference(const QByteArray& actual, const QByteArray& expected)
{
    const auto parting =
        std::mismatch(actual.cbegin(), actual.cend(), expected.cbegin(), expected.cend());
    const qsizetype position = parting.first - actual.cbegin();
    const qsizetype from = qMax(qsizetype(0), position - 80);
    return QStringLiteral("byte %1 in line %2\n  actual:   %3\n  expected: %4")
        .arg(QString::number(position), QString::number(actual.left(position).count('\n') + 1),
             QString::fromUtf8(actual.mid(from, 160)), QString::fromUtf8(expected.mid(from, 160)));
}

} // namespace

/// Runs each recorded shop through the whole program and holds what comes out against what was
/// worked out beforehand.
class tst_golden : public QObject
{
    Q_OBJECT

public:
    explicit tst_golden(const StartFolder& folder)
        : m_folder(folder)
    {
    }

private slots:
    void thereAreCases();
    void aRunGivesTheExpectedExport_data();
    void aRunGivesTheExpectedExport();

private:
    const StartFolder& m_folder;
};

void tst_golden::thereAreCases()
{
    QVERIFY2(goldenCaseNames(casesFolder()).size() >= 20, qPrintable(casesFolder()));
}

void tst_golden::aRunGivesTheExpectedExport_data()
{
    QTest::addColumn<QString>("name");
    const QStringList names = goldenCaseNames(casesFolder());
    for (const QString& name : names)
        QTest::newRow(qPrintable(name)) << name;
}

void tst_golden::aRunGivesTheExpectedExport()
{
    QFETCH(QString, name);
    RunFixture fixture(m_folder);
    MainWindow& window = fixture.start();
    const GoldenCase expected = readGoldenCase(casesFolder() + QLatin1Char('/') + name,
                                               fixture.shop.baseUrl(), m_folder.pdfFolder());
    QVERIFY2(expected.problem.isEmpty(), qPrintable(expected.problem));
    const demo_shop::RecordedShop shop(expected.shopFolder);
    QVERIFY2(shop.isValid(), qPrintable(shop.errorString()));
    fixture.shop.setHandler(shop);

    takeOptions(window, expected.options);
    for (const auto& [role, triple] : expected.konten)
        window.kontenMap[role] = triple;
    for (auto it = expected.pdfsBefore.constBegin(); it != expected.pdfsBefore.constEnd(); ++it) {
        QVERIFY(QDir().mkpath(m_folder.pdfFolder()));
        QFile file(m_folder.pdfFolder() + QLatin1Char('/') + it.key());
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(it.value());
    }

    fixture.runToEnd();

    const QByteArray exported = m_folder.exported();
    QVERIFY(!exported.isNull());
    QVERIFY2(exported == expected.expectedExport,
             qPrintable(firstDifference(exported, expected.expectedExport)));
    QCOMPARE(window.logEdit->toPlainText(), expected.expectedLog.join(QLatin1Char('\n')));
    QCOMPARE(QDir(m_folder.pdfFolder()).entryList(QDir::Files | QDir::Hidden, QDir::Name),
             expected.expectedPdfs);
    for (auto it = expected.expectedPdfTexts.constBegin();
         it != expected.expectedPdfTexts.constEnd(); ++it)
        QCOMPARE(contentOf(m_folder.pdfFolder() + QLatin1Char('/') + it.key()), it.value());
    if (!expected.expectedRequests.isEmpty())
        QCOMPARE(fixture.targets(), expected.expectedRequests);
    QCOMPARE(fixture.answers.titles(),
             expected.finished ? QStringList {QStringLiteral("Beendet:")} : QStringList());
}

LEDORA_APP_TEST_MAIN(tst_golden)
#include "tst_golden.moc"
