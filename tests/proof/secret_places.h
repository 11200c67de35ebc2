#pragma once

#include "tests/e2e/desktop.h"

#include <QByteArray>
#include <QMap>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

/// Where a program could leave or show a secret.
namespace secret_places {

/// The ways in which one of \a secrets, or its beginning, can be read out of \a bytes, also behind
/// the escapes of an INI file; empty if there is none.
QStringList search(const QStringList& secrets, const QByteArray& bytes);
/// A text as an INI file holds it inside of an image of a value.
QByteArray iniText(const QString& text);

/// A file of /proc about a process: "cmdline", "environ".
QByteArray ofProcess(qint64 pid, const char* name);
/// Every text on the windows of a process, message boxes included, a line each.
desktop::Outcome shownTexts(qint64 pid);
/// All files below a folder, hidden ones too, with their bytes.
QMap<QString, QByteArray> filesBelow(const QString& folder);
/// Ends a process as nothing can be answered to.
bool kill(qint64 pid);

/// A session bus, for this process's children, on which there is everything that a window needs and
/// no secret service. The bus that was there before comes back with its end.
class BusWithoutSecrets
{
public:
    BusWithoutSecrets();
    ~BusWithoutSecrets();
    Q_DISABLE_COPY_MOVE(BusWithoutSecrets)

    /// Starts it. \return false if something does not answer in time
    bool start();

private:
    QTemporaryDir m_folder;
    QProcess m_bus;
    QProcess m_accessibility;
    QByteArray m_before;
};

} // namespace secret_places
