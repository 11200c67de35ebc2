#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>

/// The same run in processes of other surroundings. A program that uses this calls runIfAsked first
/// in its main.
namespace property {

/// What a run goes on in.
struct Surroundings
{
    /// Variables of the environment, as LC_ALL and TZ; an absent one is removed.
    QMap<QString, QString> variables;
    /// Name for QLocale::setDefault; empty leaves it to the environment.
    QString defaultLocale;
};

/// What a run has left behind.
struct Outcome
{
    bool ok = false;
    QByteArray bytes; ///< of the export
    /// What numbers look like to the C library and to the toolkit, and the machine's zone, so that
    /// a test can see that the surroundings have arrived: "1234,5 1.234,5 -18000".
    QString surroundings;
    QString problem;
};

/// Runs an export of the shop at \a shopUrl in a process of its own, while the event loop of this
/// one goes on. Invoices go to \a pdfFolder, whose path stands in the export.
Outcome runIn(const Surroundings& surroundings, const QString& shopUrl, const QString& pdfFolder);

/// Makes the run if this process was started for one. \return its status; -1 if it was not
int runIfAsked(int argc, char** argv);

} // namespace property
