#pragma once

#include <QMap>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <QVariant>

/// A folder with everything a start of the program reads and writes: the host's file, the options,
/// the export, the PDF folder.
class StartFolder
{
public:
    StartFolder();

    QString path(const QString& name) const;
    QString hostFile() const;
    QString iniFile() const;
    QString exportFile() const;
    QString pdfFolder() const;

    /// The lines of a complete host's file for this folder, positions 0 to 8.
    QStringList hostLines() const;
    void writeHostFile(const QStringList& lines) const;
    void writeHostFile() const;
    /// Saves \a options as an earlier start of the program would have.
    void saveOptions(const QMap<QString, QVariant>& options) const;
    QMap<QString, QVariant> savedOptions() const;

    /// Bytes of the export; null if there is no such file.
    QByteArray exported() const;
    QList<QByteArray> exportedLines() const;

private:
    QTemporaryDir m_dir;
};
