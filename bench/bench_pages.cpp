// What a page of 100 orders costs, as multiples of P: parsing it with QJsonDocument::fromJson.

#include "bench/bench_support.h"
#include "tools/demo_shop/shop_server.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QJsonDocument>
#include <QProcess>
#include <QSemaphore>
#include <QThread>
#include <QTimer>

#include <cstdio>

namespace {

const int iPages = 40;
const int iRounds = 5;

/// The pages from a server in a thread of its own, as from another machine.
class PageThread : public QThread
{
public:
    explicit PageThread(QList<QByteArray> pages)
        : m_pages(std::move(pages))
    {
    }

    /// Released once baseUrl is known.
    QSemaphore ready;
    QString baseUrl;

protected:
    void run() override
    {
        demo_shop::ShopServer server([this](const demo_shop::ShopRequest& request) {
            demo_shop::ShopAnswer answer;
            const int page = request.queryValue(QStringLiteral("page")).toInt();
            if (request.path.endsWith(QLatin1String("/taxes")))
                answer.body = page == 1 ? R"([{"id":1,"rate":"19.0000"}])" : "[]";
            else
                answer.body = page <= m_pages.size() ? m_pages.at(page - 1) : QByteArray("[]");
            return answer;
        });
        server.setRecording(false);
        server.listen();
        baseUrl = server.baseUrl();
        ready.release();
        exec();
    }

private:
    QList<QByteArray> m_pages;
};

double parsing(const QList<QByteArray>& pages)
{
    return bench::milliseconds([&] {
               for (const QByteArray& page : pages)
                   QJsonDocument::fromJson(page);
           })
        / static_cast<double>(pages.size());
}

double exporting(const QList<QByteArray>& pages)
{
    bench::BenchWindow window;
    PageBench::handlePage(*window, pages.first());
    return bench::milliseconds([&] {
               for (const QByteArray& page : pages)
                   PageBench::handlePage(*window, page);
           })
        / static_cast<double>(pages.size());
}

double running(const QList<QByteArray>& pages, const QString& baseUrl)
{
    bench::BenchWindow window;
    window->mainurl = baseUrl;
    window->show();
    window->OnTimer(); // taxes, connection, header
    return bench::milliseconds([&] {
               for (qsizetype page = 1; page < pages.size(); ++page)
                   window->OnTimer();
           })
        / static_cast<double>(pages.size() - 1);
}

/// Notes how long the event loop is away at most.
class Heartbeat
{
public:
    Heartbeat()
    {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] {
            m_longestMs = qMax(m_longestMs, double(m_since.nsecsElapsed()) / 1e6);
            m_since.start();
        });
        m_since.start();
        m_timer.start(0);
    }

    double longestMs() const { return m_longestMs; }

private:
    QTimer m_timer;
    QElapsedTimer m_since;
    double m_longestMs = 0;
};

/// The longest time for which a click would have to wait while pages are worked on. There are no
/// failed requests, so none of the pauses between attempts is in it.
double longestGap(const QList<QByteArray>& pages, const QString& baseUrl)
{
    bench::BenchWindow window;
    window->mainurl = baseUrl;
    window->show();
    window->OnTimer(); // taxes, connection, header
    QEventLoop loop;
    qsizetype left = pages.size() - 1;
    QTimer passes;
    QObject::connect(&passes, &QTimer::timeout, &passes, [&] {
        passes.stop();
        window->OnTimer();
        if (--left > 0)
            passes.start(0);
        else
            loop.quit();
    });
    passes.start(0);
    const Heartbeat heartbeat;
    loop.exec();
    return heartbeat.longestMs();
}

/// The same pages through Python's json and csv modules; -1 without Python.
double flattenedByPython(const QList<QByteArray>& pages)
{
    QTemporaryDir dir;
    for (qsizetype i = 0; i < pages.size(); ++i) {
        QFile file(dir.filePath(QStringLiteral("%1.json").arg(i)));
        if (!file.open(QIODevice::WriteOnly))
            return -1;
        file.write(pages.at(i));
    }
    QProcess python;
    python.start(QStringLiteral("python3"),
                 {QStringLiteral(LEDORA_BENCH_DIR "/flatten.py"), dir.path(),
                  QString::number(pages.size())});
    if (!python.waitForFinished(120000) || python.exitCode() != 0)
        return -1;
    return python.readAllStandardOutput().trimmed().toDouble();
}

} // namespace

int main(int argc, char** argv)
{
    const bench::BenchApplication application(argv[0]);
    // Few are enough under a profiler.
    const int count = argc > 1 ? QByteArray(argv[1]).toInt() : iPages;
    const QList<QByteArray> pages = bench::orderPages(qMax(2, count));
    PageThread server(pages);
    server.start();
    server.ready.acquire();

    QList<double> parse;
    QList<double> export_;
    QList<double> run;
    QList<double> python;
    QList<double> gap;
    for (int round = 0; round < iRounds; ++round) {
        const double p = parsing(pages);
        parse.append(p);
        export_.append(exporting(pages) / p);
        run.append(running(pages, server.baseUrl) / p);
        gap.append(longestGap(pages, server.baseUrl) / p);
        python.append(flattenedByPython(pages) / p);
    }
    bench::report("page size", static_cast<double>(pages.first().size()) / 1000.0, "kB");
    bench::report("P: parsing one page", bench::median(parse), "ms");
    bench::Limits limits;
    limits.report("answer's bytes to page in the file, log hidden", bench::median(export_), "P",
                  3.0, 1.9);
    limits.report("request on loopback to page in the file, log visible", bench::median(run), "P",
                  4.5, 2.4);
    limits.report("longest time away from the event loop", bench::median(gap), "P", 6.0, 2.5);
    bench::report("Python's json and csv flattening the same pages", bench::median(python), "P");
    server.quit();
    server.wait();
    return limits.exitStatus();
}
