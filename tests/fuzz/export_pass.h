#pragma once

#include "tests/fuzz/answer_manager.h"

#include <QTemporaryDir>

#include <memory>

class MainWindow;
class QDir;

/// A window of the program and one pass after the other through it, each over the answers of one
/// attempt.
class ExportPass
{
public:
    ExportPass();
    /// Tells how many of the attempts were passes.
    ~ExportPass();

    /// Takes \a answers through extraction and export, and ends the process if what comes out is
    /// no export. Answers that are no JSON are passed over: the program asks for them again,
    /// slowly, and takes nothing out of them.
    void run(const ShopAnswers& answers);

private:
    void checkExport(const ShopAnswers& answers) const;
    static void checkInvoices(QDir& folder, const QByteArray& answer);

    // On a disk in memory: there are hundreds of exports a second.
    QTemporaryDir m_folder {QStringLiteral("/dev/shm/ledora-fuzz-XXXXXX")};
    std::unique_ptr<MainWindow> m_window;
    long long m_passes = 0;
};
