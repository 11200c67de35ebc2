#pragma once

#include "accounting/payment_import.h"

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QVariant>

/// One whole run with everything that must come out of it; see tests/data/golden/README.md.
struct GoldenCase
{
    /// Folder with the recorded answers.
    QString shopFolder;
    /// The whole options map at the start of the run.
    QMap<QString, QVariant> options;
    /// Accounts that differ from the defaults.
    payment_import::KontenMap konten;
    /// Files that lie in the PDF folder before the run, name to content.
    QMap<QString, QByteArray> pdfsBefore;

    QByteArray expectedExport;
    QStringList expectedPdfs;
    QMap<QString, QByteArray> expectedPdfTexts;
    QStringList expectedLog;
    /// Empty if the case does not say.
    QStringList expectedRequests;
    /// The run ends with the question whether to import.
    bool finished = false;

    /// Why the case can't be read; empty if it can.
    QString problem;
};

/// Names of all cases below \a root, sorted.
QStringList goldenCaseNames(const QString& root);

/// Reads the case in \a folder, its placeholders filled in.
/// \param shop  address of the server without a slash at its end
/// \param pdfs  the PDF folder without a slash at its end
GoldenCase readGoldenCase(const QString& folder, const QString& shop, const QString& pdfs);
