#pragma once

#include <QByteArray>
#include <QLocale>
#include <QString>

/// Fills \a text into the bold line that the status label shows.
QString boldMessage(const QString& text);

/// Value of the "Authorization" header for Basic authorisation with the trimmed texts.
QByteArray basicAuthorization(const QString& apiKey, const QString& apiSecret);

/// Figures of a run for its counter line.
struct RunFigures
{
    qint64 bytesReceived = 0; ///< bytes, overstated: a sum of running figures
    qint64 elapsedMs = 0;
    int exportCount = 0; ///< orders
    qint64 pdfCount = 0; ///< files
};

/// Counter line while an answer is on its way.
QString readingLine(const QLocale& locale, const RunFigures& figures);
/// Counter line once an answer is complete.
QString totalsLine(const QLocale& locale, const RunFigures& figures);
