// What an exported order leaves behind, next to the same log lines in a bare text widget, and what
// a pass needs at its peak.

#include "bench/bench_support.h"

#include <QPlainTextEdit>
#include <QTextCursor>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <malloc.h>

namespace {

const int iPages = 500;
const int iDistinctPages = 20;

std::atomic<qint64> heapNow {0};
std::atomic<qint64> heapPeak {0};

void count(qint64 bytes)
{
    const qint64 now = heapNow += bytes;
    if (now > heapPeak)
        heapPeak = now;
}

} // namespace

// The C library's own functions, counted. Qt allocates through malloc as well as through new.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t number, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
void __libc_free(void* memory);

void* malloc(std::size_t size)
{
    void* memory = __libc_malloc(size);
    count(static_cast<qint64>(malloc_usable_size(memory)));
    return memory;
}

void* calloc(std::size_t number, std::size_t size)
{
    void* memory = __libc_calloc(number, size);
    count(static_cast<qint64>(malloc_usable_size(memory)));
    return memory;
}

void* realloc(void* memory, std::size_t size)
{
    count(-static_cast<qint64>(malloc_usable_size(memory)));
    memory = __libc_realloc(memory, size);
    count(static_cast<qint64>(malloc_usable_size(memory)));
    return memory;
}

void free(void* memory)
{
    count(-static_cast<qint64>(malloc_usable_size(memory)));
    __libc_free(memory);
}
}

namespace {

QString logOf(const QList<QByteArray>& pages)
{
    bench::BenchWindow window;
    for (const QByteArray& page : pages)
        PageBench::handlePage(*window, page);
    return window->logEdit->toPlainText();
}

/// Bytes that stay per order after \a pages rounds over \a answers.
double keptPerOrder(const QList<QByteArray>& answers, bool exported)
{
    bench::BenchWindow window;
    window->paypal_use = exported;
    window->woocommerce_use = exported;
    PageBench::handlePage(*window, answers.first());
    const qint64 before = heapNow;
    for (int page = 0; page < iPages; ++page)
        PageBench::handlePage(*window, answers.at(page % answers.size()));
    return static_cast<double>(heapNow - before) / (iPages * 100.0);
}

double bareWidgetPerOrder(const QStringList& pageLogs)
{
    QPlainTextEdit edit;
    edit.setReadOnly(true);
    edit.appendPlainText(pageLogs.first());
    const qint64 before = heapNow;
    for (int page = 0; page < iPages; ++page) {
        // A string of its own each time, as a run would make it.
        const QStringList lines = pageLogs.at(page % pageLogs.size()).split(QLatin1Char('\n'));
        for (const QString& line : lines) {
            edit.moveCursor(QTextCursor::End);
            edit.appendPlainText(line);
        }
    }
    return static_cast<double>(heapNow - before) / (iPages * 100.0);
}

/// Peak of the heap in a pass, in bytes per byte of JSON, the answer itself included.
double peakPerByte(const QList<QByteArray>& answers)
{
    bench::BenchWindow window;
    PageBench::handlePage(*window, answers.first());
    double worst = 0;
    for (const QByteArray& answer : answers) {
        const qint64 before = heapNow;
        heapPeak = before;
        PageBench::handlePage(*window, answer);
        worst = qMax(worst,
                     static_cast<double>(heapPeak - before + answer.size())
                         / static_cast<double>(answer.size()));
    }
    return worst;
}

} // namespace

int main(int, char** argv)
{
    const bench::BenchApplication application(argv[0]);
    const QList<QByteArray> answers = bench::orderPages(iDistinctPages);
    QStringList pageLogs;
    for (const QByteArray& answer : answers)
        pageLogs.append(logOf({answer}));

    const double bare = bareWidgetPerOrder(pageLogs);
    const double kept = keptPerOrder(answers, true);
    bench::report("bare widget with the same log lines, per order", bare, "bytes");
    bench::report("kept per exported order over 500 pages", kept, "bytes");
    bench::report("ratio", kept / bare, "");
    bench::report("kept per skipped order over 500 pages", keptPerOrder(answers, false), "bytes");
    bench::report("peak heap of a pass per byte of JSON", peakPerByte(answers), "bytes");
    return 0;
}
