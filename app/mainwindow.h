#pragma once

#include "accounting/order_lines.h"
#include "accounting/payment_import.h"
#include "app/csvrow.h"
#include "app/mainform.h"
#include "app/orderscan.h"
#include "app/pagestate.h"
#include "app/resttexts.h"
#include "app/startchecks.h"

#include <QElapsedTimer>
#include <QEventLoopLocker>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QMainWindow>
#include <QMap>
#include <QPointer>
#include <QTextStream>
#include <QVariant>

#include <memory>
#include <optional>

class KeyChainClass;
class QLabel;
class QNetworkAccessManager;
class QNetworkReply;
class QPlainTextEdit;
class QPushButton;
class QScrollArea;
class QSpinBox;
class QTimer;
class QUrl;
struct HostConfig;

namespace Ui {
class MainWindow;
} // namespace Ui

/// A stop request of a run.
enum CancelType {
    CancelNone = 0,
    CancelStop = 1,
    CancelRestart = 2,
    CancelClose = 3,
};

/// The tool's one window: reads what the host wants, fetches the shop's orders and writes the
/// export.
class MainWindow : public QMainWindow, public MainFormValues
{
    Q_OBJECT

public:
    /// Reads the host's file named on the command line and everything that earlier starts saved.
    /// Ends the process with status 0, after a message, if there is no such file.
    explicit MainWindow(QWidget* parent = nullptr);
    ~MainWindow() override;

    // --- Booking accounts -------------------------------------------------------------------

    /// Account of a role by index (0, 1, 2 for SKR03, SKR04, SKR49); -1 for an unknown role.
    /// \return false, \a konto untouched, if there is no such index
    bool getKontoByIndex(payment_import::KontenTypen role, int index, int& konto);
    /// The same by chart: 3, 4 or 49.
    bool getKontoBySKR(payment_import::KontenTypen role, int skr, int& konto);
    /// Sets one cell and creates the role if needed; an unknown index changes nothing.
    void upDateKontoByIndex(payment_import::KontenTypen role, int index, int konto);
    /// The same by chart: 3, 4 or 49.
    void upDateKontoBySKR(payment_import::KontenTypen role, int skr, int konto);

    // --- Options ----------------------------------------------------------------------------

    /// All settings as the one text that the host reads.
    QString BuildOptionsString();
    /// Moves the secrets to the secret store and writes the options to the INI file.
    /// \param stop  also asks a running pass to stop
    void SaveConfig(bool stop);

    // --- Run --------------------------------------------------------------------------------

    /// Starts a run, or restarts it once the pass that is under way has ended.
    void StartTimer();
    /// Asks the pass under way to stop; between passes nothing happens.
    void StopTimer(CancelType type);
    /// Waits for the end of a pass, then prepares the run and starts it.
    void OnWaitTimer();
    /// Puts the run's state back to its beginning and empties the export.
    void Reset();
    /// Enables or disables the buttons that start a run and hand over the export.
    void EnableStartButtons(bool enable);
    /// One tick: a pass over one page of orders, or the end of the run.
    void OnTimer();

    // --- Requests ---------------------------------------------------------------------------

    /// GET with Basic authorisation; waits for the answer in a nested event loop.
    /// \param url      complete address, query included
    /// \param doc      receives the parsed answer; with a null pointer the body is not looked at
    /// \param retries  attempts in all, with growing pauses that freeze the window
    /// \return         body of the last answer
    /// \throws NetworkError once the attempts are used up
    QByteArray executeRequest(QUrl const& url, QJsonDocument* doc, int retries);
    /// Counts a reply's progress and shows the counter line.
    void onDownloadProgress(qint64 bytesReceived, qint64 bytesTotal);

    // --- Closing ----------------------------------------------------------------------------

    /// Leaves the export for the host, while the form closes the window. A pass under way still
    /// writes its page.
    void acceptForm();
    /// Gives the export up: no file is left for the host, the options are saved. Once a window.
    void abandonExport();
    /// Ends a run and closes the window without an export. No row calls it: it is for a cancel
    /// button that a host's form may bring. Acts on `kAfterAction` only.
    void runCancelAction(mod_form_qt::CallbackType type);

    // --- Data of the window -----------------------------------------------------------------

    /// Attempts that each request of a run gets.
    static constexpr int iRequestRetries = 3;
    /// Pace of a run, in milliseconds: a page a tick.
    static constexpr int iTickMs = 1000;

    /// Path of the export.
    QString outputFilePath;
    /// Folder of the invoice files; ends in a slash during a run.
    QString pdfFolderPath;
    /// The saved options, and the form's data.
    QMap<QString, QVariant> optionsMap;
    payment_import::KontenMap kontenMap;
    QPointer<KeyChainClass> keyChain;
    /// The host's PDF folder exists and stands above the saved one.
    bool bHostFolder = false;

    /// A mode that no row switches on.
    QVariant bTxIdOnly = false;

    QString csPaypalLabel;
    QString csWooCommerceLabel;
    QString csTxIdOnlyLabel;

    QPointer<QLabel> statusLabel;
    QPointer<QPlainTextEdit> logEdit;
    QPointer<QLabel> progressLabel;
    QPointer<QNetworkAccessManager> networkManager;

    QTimer* runTimer = nullptr;
    QTimer* waitTimer = nullptr;

    // State of a run; Reset puts it back.
    bool bBusy = false;
    int iPage = 1;
    bool bFinished = false;
    bool bHeaderWritten = false;
    int iExportCount = 0;
    int iPageRetries = 0;
    CancelType iCancelType = CancelNone;
    qint64 iBytesReceived = 0;
    qint64 iPdfCount = 0;
    QStringList csvHeaders;
    QElapsedTimer runClock;

    // State of a pass.
    bool bError = false;
    QString csErrorText;
    QString csBaseUrl;

    QFile outFile;
    QTextStream outStream;
    const QChar csvSeparator = QLatin1Char(';');
    /// Product id -> virtual, downloadable. Kept for the life of the window.
    QMap<int, std::pair<bool, bool>> productFlags;

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    /// Measures the steps of a pass without its request.
    friend class PageBench;

    /// What an order's invoices add to its rows.
    struct InvoiceCells
    {
        QString number;
        QString orderNumber;
        QString formattedNumber;
        QString fileNames;
        QString dateCreated;
    };

    /// The cell of the account table that the form edits.
    struct KontoCell
    {
        payment_import::KontenTypen role;
        int skr; ///< 3, 4 or 49
    };

    /// An order on its way into the export.
    struct OrderWork
    {
        OrderScan scan;
        QList<LineRecord> lineList;
        InvoiceCells invoices;
        bool feeDone = false;
    };

    // Start
    void takeCommandLine();
    void requireHostFile();
    void readHostFile();
    void takeHostConfig(const HostConfig& config);
    void removeOldExport();
    void restoreSavedState();
    void restoreSecrets();
    void takeHostFolder();
    void createTimers();

    // Form
    void buildForm();
    void buildOutput();
    void fitForm(QScrollArea* area);
    void takeFirstSize(const QScrollArea* area);
    static MainFormCallbacks formCallbacks();
    void runStartAction(mod_form_qt::CallbackType type);
    void runStopAction(mod_form_qt::CallbackType type);
    void runSkrChange(mod_form_qt::CallbackType type);
    void runKontoChange(mod_form_qt::CallbackType type);
    void runEditPaymentMethods(mod_form_qt::CallbackType type);
    void runDeleteIdCache(mod_form_qt::CallbackType type);
    void runFormEvent(mod_form_qt::CallbackType type);
    StartSettings startSettings() const;
    std::optional<KontoCell> selectedCell() const;
    QSpinBox* kontoBox() const;
    QPushButton* okButton() const;
    void showKontoOfSelection();
    void storeKontoOfSelection();

    // Requests
    struct Reply
    {
        QByteArray body;
        std::optional<QString> error; ///< absent if the request succeeded
    };

    Reply waitForReply(const QUrl& url);
    QNetworkReply* sendRequest(const QUrl& url);
    RunFigures runFigures() const;
    QString mainUrlText() const;

    // Run
    void showStatus(const QString& text);
    void endRun();
    void showWaiting();
    void resetState();
    void openExport();
    bool attachExport(QIODevice::OpenMode mode);

    // Pass
    bool takeBaseUrl();
    PageState beginPass();
    void loadTaxRates();
    QJsonArray fetchOrders();
    void exportOrders(const QJsonArray& orders, QTextStream& pageBuffer);
    void commitPage(const QString& page);
    void rollBack(const PageState& before, const std::runtime_error& failure);
    void writeWhole(const QString& page);
    void endPass();
    void endOfClosedPass();
    bool isStopWanted() const;

    // Export
    void exportOrder(const QJsonObject& order, QTextStream& pageBuffer);
    void addHeaderColumns(const OrderWork& work);
    void writeHeader(QTextStream& pageBuffer);
    bool isExported(const OrderScan& scan) const;
    void writeRows(OrderWork& work, QTextStream& pageBuffer);
    QStringList lineRow(const QStringList& baseRow, OrderWork& work, qsizetype line,
                        int& productId);
    void setRefundFields(QStringList& row, const LineRecord& record);
    void setInvoiceFields(QStringList& row, const InvoiceCells& cells);
    std::pair<bool, bool> flagsOfProduct(int productId);
    void setField(const QString& value, QStringList& row, const QString& column);
    void logOrder(const OrderScan& scan);
    void flushLog();

    // Refunds and invoices
    void addRefunds(OrderWork& work);
    InvoiceCells fetchInvoices(int orderId);
    void fetchInvoiceFile(const QString& href, const QString& path);

    // Closing
    void removeExport();

    std::unique_ptr<Ui::MainWindow> ui;
    ColumnLookup columnLookup;
    QString csPendingLog;

    /// The window is being closed without an export; nothing may write to it any more.
    bool bGivenUp = false;
    /// The export was handed over.
    bool bAccepted = false;
    /// The start button's action is under way.
    bool bStarting = false;
    /// The export is being given up, which may show boxes and wait for the secret store.
    bool bClosing = false;
    /// The window was closed while a pass was under way, which then ends the program.
    bool bClosedInPass = false;
    /// Keeps the program alive while the last page of an accepted export is written.
    std::optional<QEventLoopLocker> pageGuard;
};
