#include "tests/e2e/program_test.h"
#include "tests/support/app_test.h"

#include <QDir>
#include <QJsonDocument>

#include <algorithm>

using demo_shop::ShopRequest;

namespace {

const QByteArray pdf = "%PDF-1.4 invented";

QString invoiceName(int order)
{
    return QStringLiteral("R-%1.pdf").arg(order);
}

} // namespace

/// What differs from shop to shop: the secrets, and the extension that makes invoices.
class tst_program_shops : public ProgramTest
{
    Q_OBJECT

public:
    using ProgramTest::ProgramTest;

private slots:

    void init() { prepare(); }

    void keepsTheSecretsOfTwoShopsApart();
    void storesTheInvoicesOfTheShop_data();
    void storesTheInvoicesOfTheShop();

private:
    void serveInvoices(int orders);
    static bool typeInto(const LedoraProcess& program, const QString& field, const QString& text);
};

bool tst_program_shops::typeInto(const LedoraProcess& program, const QString& field,
                                 const QString& text)
{
    return !desktop::tabTo(program.pid(), field).isEmpty() && desktop::retype(text);
}

void tst_program_shops::serveInvoices(int orders)
{
    for (int id = 1; id <= orders; ++id) {
        const QString file = QStringLiteral("/wp-json/wc/v3/invoices/%1/pdf").arg(id);
        const QJsonObject link {{QStringLiteral("href"), m_fixture.shop.baseUrl() + file}};
        const QJsonObject invoice {
            {QStringLiteral("number"), QString::number(id)},
            {QStringLiteral("order_number"), QString::number(id)},
            {QStringLiteral("formatted_number"), QFileInfo(invoiceName(id)).baseName()},
            {QStringLiteral("date_created"), QStringLiteral("2024-03-01T10:00:00")},
            {QStringLiteral("_links"), QJsonObject {{QStringLiteral("pdf"), QJsonArray {link}}}}};
        m_fixture.serve(QStringLiteral("/wp-json/wc/v3/orders/%1/invoices").arg(id),
                        QJsonDocument(QJsonArray {invoice}).toJson());
        m_fixture.serve(file,
                        QJsonDocument(QJsonObject {{QStringLiteral("file"),
                                                    QString::fromLatin1(pdf.toBase64())}})
                            .toJson());
    }
}

void tst_program_shops::keepsTheSecretsOfTwoShopsApart()
{
    const QString otherKey = QStringLiteral("ck_other");
    const QString otherSecret = QStringLiteral("cs_other");
    const QByteArray otherAuthorization =
        "Basic " + (otherKey + QLatin1Char(':') + otherSecret).toUtf8().toBase64();
    RunFixture other(m_folder);
    run_setup::serve(m_fixture, run_setup::orders(2, 0));
    run_setup::serve(other, run_setup::orders(3, 0));
    const auto carriedToOther = [&] {
        const QList<ShopRequest> requests = other.shop.requests();
        return !requests.isEmpty()
            && std::ranges::all_of(requests, [&](const ShopRequest& request) {
                   return request.authorization == otherAuthorization;
               });
    };

    LedoraProcess program;
    QVERIFY(startProgram(program));
    QVERIFY(runToQuestion(program));
    QVERIFY(answer(program, QStringLiteral("No|Nein")));
    QVERIFY(allCarried(run_setup::authorization()));
    m_fixture.shop.clearRequests();

    QVERIFY(typeInto(program, QStringLiteral("Webseite:"), other.shop.baseUrl()));
    QVERIFY(typeInto(program, QStringLiteral("API-Key:"), otherKey));
    QVERIFY(typeInto(program, QStringLiteral("API-Secret:"), otherSecret));
    QVERIFY(runToQuestion(program));
    QVERIFY(carriedToOther());
    QCOMPARE(m_fixture.paths(), QStringList());
    QVERIFY(answer(program, QStringLiteral("Yes|Ja")));
    QVERIFY(program.waitForEnd());
    QCOMPARE(m_folder.exported().count('\n'), 2 + 3);

    // A start finds the secrets of the shop that is saved, and the other's are as they were.
    other.shop.clearRequests();
    LedoraProcess atOther;
    QVERIFY(startProgram(atOther));
    QVERIFY(runToQuestion(atOther));
    QVERIFY(answer(atOther, QStringLiteral("Yes|Ja")));
    QVERIFY(atOther.waitForEnd());
    QVERIFY(carriedToOther());

    m_folder.saveOptions(run_setup::completeOptions(m_fixture.shop.baseUrl()));
    LedoraProcess atFirst;
    QVERIFY(startProgram(atFirst));
    QVERIFY(runToQuestion(atFirst));
    QVERIFY(allCarried(run_setup::authorization()));
    QCOMPARE(m_folder.exported().count('\n'), 2 + 2);
}

void tst_program_shops::storesTheInvoicesOfTheShop_data()
{
    QTest::addColumn<bool>("wanted");
    QTest::addColumn<bool>("hostFolder");
    QTest::newRow("into the host's folder") << true << true;
    QTest::newRow("into the user's folder") << true << false;
    QTest::newRow("not if switched off") << false << true;
}

void tst_program_shops::storesTheInvoicesOfTheShop()
{
    QFETCH(bool, wanted);
    QFETCH(bool, hostFolder);
    const QString userFolder = m_folder.path(QStringLiteral("Rechnungen für 2024"));
    const QDir folder(hostFolder ? m_folder.pdfFolder() : userFolder);
    QDir(folder).removeRecursively();
    QVERIFY(QDir().mkpath(folder.path()));
    auto options = run_setup::completeOptions(m_fixture.shop.baseUrl());
    options.insert(QStringLiteral("germanized_use"), !wanted);
    options.insert(QStringLiteral("germanized_pdf_folder"), userFolder);
    layDownSettings(options);
    run_setup::serve(m_fixture, run_setup::orders(2, 0));
    serveInvoices(2);

    LedoraProcess program;
    QVERIFY(startProgram(program));
    QCOMPARE(desktop::content(desktop::fields(program.pid()), QStringLiteral("PDF-Ordner:")),
             folder.path());
    QVERIFY(desktop::click(program.pid(), QStringLiteral("Verwenden")));
    QVERIFY(runToQuestion(program));
    QVERIFY(answer(program, QStringLiteral("Yes|Ja")));
    QVERIFY(program.waitForEnd());
    QVERIFY(program.hasEndedWell());
    QStringList expected;
    if (wanted)
        expected = {invoiceName(1), invoiceName(2)};
    QCOMPARE(folder.entryList(QDir::Files, QDir::Name), expected);
    QCOMPARE(requestsFor("/invoices"), static_cast<int>(expected.size()));
    for (const QString& name : expected) {
        QFile file(folder.filePath(name));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), pdf);
        QVERIFY(m_folder.exported().contains(folder.filePath(name).toUtf8()));
    }
    QCOMPARE(m_folder.exported().count('\n'), 2 + 2);
}

int main(int argc, char** argv)
{
    desktop::enterSession(argv);
    return runAppTest<tst_program_shops>(argc, argv);
}

#include "tst_program_shops.moc"
