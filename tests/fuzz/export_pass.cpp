#include "tests/fuzz/export_pass.h"

#include "accounting/order_taxes.h"
#include "app/globals.h"
#include "app/invoicedata.h"
#include "app/mainwindow.h"
#include "tests/fuzz/fuzz_input.h"
#include "tests/fuzz/sample_answers.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QPlainTextEdit>
#include <QStringDecoder>

#include <algorithm>
#include <cstdio>

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

/// The cells of each row as they are written, quotes included, as any reader of such tables sees
/// them.
QList<QStringList> cellsOf(const QString& rows)
{
    QList<QStringList> cells;
    QStringList row;
    qsizetype begin = 0;
    bool quoted = false;
    for (qsizetype i = 0; i < rows.size(); ++i) {
        const QChar c = rows[i];
        if (c == QLatin1Char('"'))
            quoted = !quoted; // a doubled one closes and opens again
        if (quoted || (c != QLatin1Char(';') && c != QLatin1Char('\n')))
            continue;
        row.append(rows.mid(begin, i - begin));
        begin = i + 1;
        if (c == QLatin1Char('\n'))
            cells.append(std::exchange(row, {}));
    }
    require(!quoted && begin == rows.size() && row.isEmpty(), "The last row does not end.");
    return cells;
}

/// Whether a file of an invoice would come to lie where the shop likes, and not in its folder.
bool leavesFolder(const QByteArray& invoices)
{
    const QJsonArray array = QJsonDocument::fromJson(invoices).array();
    return std::any_of(array.begin(), array.end(), [](const QJsonValue& invoice) {
        return readInvoice(invoice.toObject()).formattedNumber.contains(QLatin1Char('/'));
    });
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
    m_window->germanized_overwrite_pdf = true;
}

ExportPass::~ExportPass()
{
    std::fprintf(stderr, "stat::passes: %lld\n", m_passes);
}

void ExportPass::run(const ShopAnswers& answers)
{
    for (const QByteArray* body : {&answers.taxes, &answers.orders, &answers.refunds,
                                   &answers.product, &answers.invoices, &answers.file}) {
        if (!isJson(*body))
            return;
    }
    ++m_passes;
    globalTaxRates.clear();
    payment_title_set.clear();
    m_window->productFlags.clear();
    m_window->Reset();
    QDir invoices(m_folder.filePath(QStringLiteral("invoices")));
    invoices.mkpath(QStringLiteral("."));
    // The shop names these files as it likes; below the other folder none can come to be.
    m_window->pdfFolderPath = leavesFolder(answers.invoices) ? QStringLiteral("/dev/null/")
                                                             : invoices.path() + QLatin1Char('/');
    delete m_window->networkManager;
    m_window->networkManager = new AnswerManager(answers, m_window.get());
    m_window->OnTimer();
    require(!m_window->bError && m_window->csErrorText.isEmpty(), "The pass has failed.");
    checkExport(answers);
    checkInvoices(invoices, answers.file);
    m_window->logEdit->clear();
    endAttempt();
}

void ExportPass::checkExport(const ShopAnswers& answers) const
{
    const qsizetype orders = QJsonDocument::fromJson(answers.orders).array().size();
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
    const qsizetype isRefund = m_window->csvHeaders.indexOf(QStringLiteral("\"is_refund\""));
    qsizetype ownRows = 0;
    qsizetype refundRows = 0;
    for (const QStringList& row : cellsOf(text.mid(written.size()))) {
        require(row.size() == m_window->csvHeaders.size(),
                "A row does not have a cell for each column.");
        if (row[isRefund] == QLatin1String("1"))
            ++refundRows;
        else
            ++ownRows;
    }
    if (answers.orders != sample_answers::order)
        return;
    require(ownRows == sample_answers::orderRows, "A line of the order is missing.");
    require(refundRows == 0 || !QJsonDocument::fromJson(answers.refunds).array().isEmpty(),
            "There is a refund of which the shop told nothing.");
}

void ExportPass::checkInvoices(QDir& folder, const QByteArray& answer)
{
    const QByteArray bytes = readInvoiceFile(QJsonDocument::fromJson(answer).object());
    const auto files = folder.entryInfoList(QDir::Files | QDir::Hidden);
    for (const QFileInfo& info : files) {
        QFile file(info.filePath());
        require(file.open(QIODevice::ReadOnly) && !bytes.isEmpty() && file.readAll() == bytes,
                "The file of an invoice is not what the shop sent.");
    }
    if (!files.isEmpty())
        folder.removeRecursively();
}
