#include "app/startchecks.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <array>

namespace {

using Outcome = std::optional<FailedCheck>;

struct StartChecks
{
    Q_DECLARE_TR_FUNCTIONS(MainWindow)
};

QString tr(const char* text)
{
    return StartChecks::tr(text);
}

// An empty path would count as the folder of the program.
bool isFolder(const QString& path)
{
    return !path.isEmpty() && QFileInfo(path).isDir();
}

Outcome checkPdfFolder(const StartSettings& settings)
{
    if (!settings.bGermanized || isFolder(settings.pdfFolder))
        return {};
    return FailedCheck {tr("PDF-Ordner:"),
                        tr("Der Ordner\r\n%1\r\nwurde nicht gefunden.").arg(settings.pdfFolder)};
}

Outcome checkOutputFolder(const StartSettings& settings)
{
    if (!settings.bTxIdOnly)
        return {};
    const QString folder = QFileInfo(settings.outputFilePath).absolutePath();
    if (isFolder(folder))
        return {};
    return FailedCheck {tr("'%1':").arg(settings.csTxIdOnlyLabel),
                        tr("Der Ausgabeordner\r\n%1\r\nwurde nicht gefunden.").arg(folder)};
}

Outcome checkAction(const StartSettings& settings)
{
    if (settings.bWooCommerce || settings.bPaypal || settings.bTxIdOnly)
        return {};
    const QStringList labels = {settings.csPaypalLabel, settings.csWooCommerceLabel,
                                settings.csTxIdOnlyLabel};
    return FailedCheck {tr("Keine Aktion ausgewählt:"),
                        tr("Es muss eine der Einstellungen:\r\n%1\r\naktiviert werden.")
                            .arg(labels.join(QLatin1String("\r\n")))};
}

Outcome checkB2C(const StartSettings& settings)
{
    if (settings.b2c_handling.toInt() != 0)
        return {};
    return FailedCheck {tr("B2C-Einstellung:"),
                        tr("Es muss zuerst unter 'B2C' eine Einstellung ausgewählt werden.")};
}

Outcome checkBelegdatum(const StartSettings& settings)
{
    if (settings.belegdatum.toInt() != 0)
        return {};
    return FailedCheck {
        tr("Belegdatum-Einstellung:"),
        tr("Es muss zuerst unter 'Belegdatum' eine Einstellung ausgewählt werden.")};
}

Outcome checkSkr(const StartSettings& settings)
{
    if (settings.skr.isValid())
        return {};
    return FailedCheck {tr("SKR:"),
                        tr("Es muss zuerst unter 'SKR' ein Kontenrahmen ausgewählt werden.")};
}

constexpr std::array checks = {checkPdfFolder, checkOutputFolder, checkAction,
                               checkB2C,       checkBelegdatum,   checkSkr};

} // namespace

std::optional<FailedCheck> firstFailedCheck(const StartSettings& settings)
{
    for (const auto check : checks) {
        if (Outcome failed = check(settings))
            return failed;
    }
    return {};
}
