#include "tests/fuzz/export_pass.h"

#include "accounting/order_taxes.h"
#include "app/globals.h"
#include "app/mainwindow.h"
#include "tests/fuzz/fuzz_input.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QPlainTextEdit>
#include <QStringDecoder>

namespace {

void require(bool holds, const char* rule)
{
    if (!holds)
        qFatal("%s", rule);
}

bool isJson(const QByteArray& body)
{
    QJsonParseError error;
    QJsonDocument::fromJson(body, &error);
    return error.error == QJsonParseError::NoError;
}

/// The number of cells of each row, as any reader of such tables sees them.
QList<qsizetype> cellCounts(const QString& rows)
{
    QList<qsizetype> counts;
    qsizetype cells = 1;
    bool quoted = false;
    for (const QChar c : rows) {
        if (c == QLatin1Char('"'))
            quoted = !quoted; // a doubled one closes and opens again
        else if (!quoted && c == QLatin1Char(';'))
            ++cells;
        else if (!quoted && c == QLatin1Char('\n'))
            counts.append(std::exchange(cells, 1));
    }
    require(!quoted && cells == 1 && (rows.isEmpty() || rows.endsWith(QLatin1Char('\n'))),
            "The last row does not end.");
    return counts;
}

} // namespace

ExportPass::ExportPass()
{
    const QString hostFile = m_folder.filePath(QStringLiteral("host.txt"));
    QFile file(hostFile);
    require(m_folder.isValid() && file.open(QIODevice::WriteOnly),
            "There is no folder to write to.");
    const QString exportPath = m_folder.filePath(QStringLiteral("export.csv"));
    file.write(QStringLiteral("%1/options.ini\n3\n-\n-\n-\n%2\n0\n-\n-\n")
                   .arg(m_folder.path(), exportPath)
                   .toUtf8());
    file.close();
    startFuzzing(hostFile.toUtf8());
    m_window = std::make_unique<MainWindow>();
    require(m_window->outputFilePath == exportPath, "The window did not take the host's file.");
    mod_form_qt::INFO::setData(&m_window->optionsMap, "mainurl",
                               QStringLiteral("http://shop.example"), false);
    m_window->germanized_use = true;
    // The shop names the invoice files as it likes; below this they can't come to be anywhere.
    m_window->germanized_pdf_folder = QStringLiteral("/dev/null/");
    m_window->germanized_overwrite_pdf = true;
}

ExportPass::~ExportPass() = default;

void ExportPass::run(const ShopAnswers& answers)
{
    for (const QByteArray* body : {&answers.taxes, &answers.orders, &answers.refunds,
                                   &answers.product, &answers.invoices, &answers.file}) {
        if (!isJson(*body))
            return;
    }
    globalTaxRates.clear();
    payment_title_set.clear();
    m_window->productFlags.clear();
    m_window->Reset();
    delete m_window->networkManager;
    m_window->networkManager = new AnswerManager(answers, m_window.get());
    m_window->OnTimer();
    require(!m_window->bError && m_window->csErrorText.isEmpty(), "The pass has failed.");
    checkExport(QJsonDocument::fromJson(answers.orders).array().size());
    m_window->logEdit->clear();
    endAttempt();
}

void ExportPass::checkExport(qsizetype orders) const
{
    require(m_window->iExportCount == orders, "An order is missing.");
    m_window->outStream.flush();
    QFile file(m_window->outputFilePath);
    require(file.open(QIODevice::ReadOnly), "There is no export.");
    QStringDecoder utf8(QStringConverter::Utf8);
    const QString text = utf8(file.readAll());
    require(!utf8.hasError(), "The export is not UTF-8.");
    if (orders == 0) {
        require(text.isEmpty(), "An export of nothing is not empty.");
        return;
    }
    // Keys of the shop stand in the head as they came, whatever they hold.
    QStringEncoder encoder(QStringConverter::Utf8);
    const QString head = m_window->BuildOptionsString() + QLatin1Char('\n')
        + m_window->csvHeaders.join(m_window->csvSeparator) + QLatin1Char('\n');
    const QString written = QString::fromUtf8(QByteArray(encoder(head)));
    require(text.startsWith(written), "The head of the export is not what was found.");
    const QList<qsizetype> counts = cellCounts(text.mid(written.size()));
    for (const qsizetype cells : counts)
        require(cells == m_window->csvHeaders.size(),
                "A row does not have a cell for each column.");
}
