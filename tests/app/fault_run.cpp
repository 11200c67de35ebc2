#include "tests/app/fault_run.h"

#include "tests/app/many_orders.h"

#include <QDir>
#include <QLabel>
#include <QLoggingCategory>
#include <QNetworkAccessManager>

using demo_shop::Fault;
using demo_shop::ShopRequest;

namespace {

// Short for a test, yet longer than a busy machine needs for an answer on loopback.
const int iTimeoutMs = 1000;

Fault fault(Fault::Kind kind, int status = 500)
{
    Fault made;
    made.kind = kind;
    made.status = status;
    return made;
}

QJsonObject invoice(const QString& number, const QString& href)
{
    const QJsonArray pdf {QJsonObject {{QStringLiteral("href"), href}}};
    return {{QStringLiteral("number"), number},
            {QStringLiteral("formatted_number"), QLatin1String("RE-") + number},
            {QStringLiteral("_links"), QJsonObject {{QStringLiteral("pdf"), pdf}}}};
}

} // namespace

const QList<FaultRun::Phase>& FaultRun::phases()
{
    static const QList<Phase> list {
        {"taxes", "/taxes?per_page=100&page=1&", 1},
        {"first page", "refunded&page=1&", 1},
        {"second page", "refunded&page=2&", 2},
        {"refund", "/orders/101/refunds", 2},
        {"product", "/products/11", 1},
        {"invoice", "/orders/3/invoices", 1},
        {"invoice file", "/file/103", 2},
    };
    return list;
}

const QList<FaultRun::Kind>& FaultRun::kinds()
{
    static const QList<Kind> list {
        {"500", fault(Fault::Status, 500)},
        {"503", fault(Fault::Status, 503)},
        {"401", fault(Fault::Status, 401)},
        {"closed before the head", fault(Fault::DropBeforeHeaders)},
        {"closed inside the body", fault(Fault::DropInsideBody)},
        {"half a document", fault(Fault::CutJson)},
        {"a page for people", fault(Fault::Html)},
        {"empty body", fault(Fault::EmptyBody)},
        {"a notice before the JSON", fault(Fault::LeadingNotice)},
        {"wrong length", fault(Fault::WrongLength)},
        {"silence", fault(Fault::Silence)},
    };
    return list;
}

FaultRun::FaultRun(const StartFolder& folder)
    : fixture(folder)
{
    // A hundred runs would drown what matters in debug lines.
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    fixture.serveTaxes(
        {QJsonObject {{QStringLiteral("id"), 3}, {QStringLiteral("rate"), QStringLiteral("19")}}});
    QJsonArray orders = sample::manyOrders(103);
    orders[1] = sample::order(2, {sample::productLine(2, 11), sample::line(3)},
                              sample::fee(QStringLiteral("0.69")));
    orders[100] = sample::order(101, {sample::line(101)},
                                {{QStringLiteral("status"), QStringLiteral("refunded")}});
    fixture.serveOrders(orders);
    const QJsonObject refund = sample::refund(
        901, {sample::line(101, {{QStringLiteral("total"), QStringLiteral("-10.00")}})},
        {{QStringLiteral("amount"), QStringLiteral("10.00")}});
    fixture.serve(QStringLiteral("/wp-json/wc/v3/orders/101/refunds"),
                  sample::json(QJsonArray {refund}));
    for (const int id : {3, 103}) {
        const QString number = QString::number(id);
        const QString file = QLatin1String("/file/") + number;
        fixture.serve(QStringLiteral("/wp-json/wc/v3/orders/%1/invoices").arg(id),
                      sample::json(QJsonArray {invoice(number, fixture.shop.baseUrl() + file)}));
        const QByteArray pdf = "%PDF-1.4 " + number.toLatin1() + QByteArray(2000, 'x');
        fixture.serve(file, R"({"file":")" + pdf.toBase64() + R"("})");
    }
}

void FaultRun::start()
{
    fixture.shop.setFaultPlan({});
    fixture.shop.clearRequests();
    fixture.answers.clear();
    m_spoilt = 0;
    fixture.start({{QStringLiteral("germanized_use"), true},
                   {QStringLiteral("germanized_pdf_folder"), fixture.folder.pdfFolder()}});
    fixture.window->Reset();
    fixture.keepTicksAway();
}

void FaultRun::remember()
{
    start();
    fixture.tickToEnd();
    m_export = fixture.folder.exported();
    m_files = invoiceFiles();
}

void FaultRun::spoilWhile(const Phase& phase, const Fault& spoilt,
                          const std::function<bool()>& condition)
{
    if (spoilt.kind == Fault::Silence)
        fixture.window->networkManager->setTransferTimeout(iTimeoutMs);
    fixture.shop.setFaultPlan(
        [this, part = QByteArray(phase.part), spoilt, condition](const ShopRequest& request) {
            if (!request.rawTarget.contains(part) || !condition())
                return Fault {};
            ++m_spoilt;
            return spoilt;
        });
}

void FaultRun::spoilOneAttempt(const Phase& phase, const Fault& spoilt)
{
    // Not by number of request: the toolkit itself repeats one whose connection broke early.
    spoilWhile(phase, spoilt, [this] {
        return !fixture.window->statusLabel->text().contains(QLatin1String("Wiederholung 1/3"));
    });
}

void FaultRun::spoilOnePass(const Phase& phase, const Fault& spoilt)
{
    spoilWhile(phase, spoilt, [this] { return fixture.window->iPageRetries == 0; });
}

void FaultRun::spoilForGood(const Phase& phase, const Fault& spoilt)
{
    spoilWhile(phase, spoilt, [] { return true; });
}

bool FaultRun::leftTheSame() const
{
    return fixture.folder.exported() == m_export && invoiceFiles() == m_files;
}

QMap<QString, QByteArray> FaultRun::invoiceFiles() const
{
    QMap<QString, QByteArray> files;
    const QDir dir(fixture.folder.pdfFolder());
    for (const QString& name : dir.entryList(QDir::Files)) {
        QFile file(dir.filePath(name));
        if (file.open(QIODevice::ReadOnly))
            files.insert(name, file.readAll());
    }
    return files;
}
