#include "bench/bench_support.h"

#include "tools/demo_shop/invented_shop.h"

#include <QApplication>
#include <QFile>
#include <QJsonArray>
#include <QJsonObject>
#include <QLoggingCategory>

namespace {

QByteArray hostFilePath;

QJsonArray fetchPage(const demo_shop::InventedShop& shop, int page)
{
    demo_shop::ShopRequest request;
    request.path = QStringLiteral("/wp-json/wc/v3/orders");
    request.query.addQueryItem(QStringLiteral("per_page"), QStringLiteral("100"));
    request.query.addQueryItem(QStringLiteral("status"), QStringLiteral("completed, refunded"));
    request.query.addQueryItem(QStringLiteral("page"), QString::number(page));
    request.query.addQueryItem(QStringLiteral("orderby"), QStringLiteral("date"));
    request.query.addQueryItem(QStringLiteral("order"), QStringLiteral("asc"));
    request.baseUrl = QStringLiteral("http://127.0.0.1");
    return QJsonDocument::fromJson(shop(request).body).array();
}

bool needsNoRequest(const QJsonObject& order)
{
    return order.value(QLatin1String("refunds")).toArray().isEmpty()
        && order.value(QLatin1String("status")).toString() != QLatin1String("refunded");
}

} // namespace

void PageBench::handlePage(MainWindow& window, const QByteArray& answer)
{
    QString page;
    QTextStream pageBuffer(&page);
    window.exportOrders(QJsonDocument::fromJson(answer).array(), pageBuffer);
    pageBuffer.flush();
    window.commitPage(page);
    window.flushLog();
}

namespace bench {

QList<QByteArray> orderPages(int pages)
{
    const demo_shop::InventedShop shop(1000000);
    QList<QByteArray> answers;
    QJsonArray orders;
    for (int page = 1; answers.size() < pages; ++page) {
        const QJsonArray fetched = fetchPage(shop, page);
        for (const QJsonValue& order : fetched) {
            if (needsNoRequest(order.toObject()))
                orders.append(order);
            if (orders.size() < 100)
                continue;
            answers.append(QJsonDocument(orders).toJson(QJsonDocument::Compact));
            orders = {};
        }
    }
    return answers.mid(0, pages);
}

BenchWindow::BenchWindow()
{
    QFile host(QFile::decodeName(hostFilePath));
    if (!host.open(QIODevice::WriteOnly))
        qFatal("The host's file can't be written.");
    const QString lines = m_dir.filePath(QStringLiteral("options.ini"))
        + QStringLiteral("\n3\n1;2;3\n1;2;3\n1;2;3\n") + exportFile() + QStringLiteral("\n0\n");
    host.write(lines.toUtf8());
    host.close();
    m_window = std::make_unique<MainWindow>(nullptr);
    m_window->Reset();
    // The invented shop's products are few; all are known here.
    for (int id = 0; id < 2000; ++id)
        m_window->productFlags.insert(id, {false, false});
}

BenchWindow::~BenchWindow() = default;

QString BenchWindow::exportFile() const
{
    return m_dir.filePath(QStringLiteral("output.csv"));
}

BenchApplication::BenchApplication(char* program)
    : m_hostFile(QFile::encodeName(m_dir.filePath(QStringLiteral("host.txt"))))
    , m_arguments {program, m_hostFile.data(), nullptr}
    , m_application(std::make_unique<QApplication>(m_count, m_arguments))
{
    hostFilePath = m_hostFile;
    // As on a user's machine, where nobody reads debug lines.
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
}

BenchApplication::~BenchApplication() = default;

} // namespace bench
