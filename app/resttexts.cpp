#include "app/resttexts.h"

#include <QCoreApplication>

namespace {

QString tr(const char* text)
{
    return QCoreApplication::translate("MainWindow", text);
}

const qint64 iMsPerMinute = 60000;

} // namespace

QString boldMessage(const QString& text)
{
    return QStringLiteral("<br><b>%1</b><br>").arg(text);
}

QByteArray basicAuthorization(const QString& apiKey, const QString& apiSecret)
{
    const QString credentials = apiKey.trimmed() + QLatin1Char(':') + apiSecret.trimmed();
    const QByteArray value = "Basic " + credentials.toLocal8Bit().toBase64();
    return QString::fromUtf8(value).toLocal8Bit();
}

QString readingLine(const QLocale& locale, const RunFigures& figures)
{
    return tr("Lese %1 Bytes. Zeit %2 min (%3 ms).")
        .arg(locale.formattedDataSize(figures.bytesReceived, 2),
             QString::number(figures.elapsedMs / iMsPerMinute), QString::number(figures.elapsedMs));
}

QString totalsLine(const QLocale& locale, const RunFigures& figures)
{
    return tr("%1 Einträge. Zeit %2 min (%3 ms). Empfangen: %4. PDF-Dateien erstellt: %5.")
        .arg(QString::number(figures.exportCount),
             QString::number(figures.elapsedMs / iMsPerMinute), QString::number(figures.elapsedMs),
             locale.formattedDataSize(figures.bytesReceived, 2), QString::number(figures.pdfCount));
}
