#pragma once

#include "app/mainwindow.h"

#include "bench/bench_report.h"

#include <QByteArray>
#include <QList>
#include <QTemporaryDir>

#include <memory>

class QApplication;

/// Opens the window's inner steps to the benchmarks, which measure a page without its request.
class PageBench
{
public:
    /// From an answer's bytes to the page in the file, as a pass does it.
    static void handlePage(MainWindow& window, const QByteArray& answer);
};

namespace bench {

/// Pages of 100 invented orders each that need no further request: no refunds, products known.
QList<QByteArray> orderPages(int pages);

/// An application, a folder and a window that is ready to export; the log is hidden unless shown.
class BenchWindow
{
public:
    BenchWindow();
    ~BenchWindow();

    MainWindow& operator*() { return *m_window; }

    MainWindow* operator->() { return m_window.get(); }

    /// Path of the export.
    QString exportFile() const;

private:
    QTemporaryDir m_dir;
    std::unique_ptr<MainWindow> m_window;
};

/// The application, started with a host's file as a host would; make it first of all in main.
class BenchApplication
{
public:
    explicit BenchApplication(char* program);
    ~BenchApplication();

private:
    QTemporaryDir m_dir;
    QByteArray m_hostFile;
    char* m_arguments[3];
    int m_count = 2;
    std::unique_ptr<QApplication> m_application;
};

} // namespace bench
