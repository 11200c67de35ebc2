#include "app/mainwindow.h"

#include "app/globals.h"
#include "credentials/keychain_class.h"

#include "ui_mainwindow.h"

#include <QGuiApplication>
#include <QTimer>

MainWindow::MainWindow(QWidget* parent)
    : QMainWindow(parent)
    , ui(std::make_unique<Ui::MainWindow>())
{
    ui->setupUi(this);
    // Nothing stands in these two, and nobody needs a menu to bring the first one back.
    ui->toolBar->hide();
    ui->toolBar->toggleViewAction()->setVisible(false);
    ui->statusbar->hide();
    keyChain = new KeyChainClass(QStringLiteral("halverin_software.ledora.RestApi"), this);
    QGuiApplication::setQuitOnLastWindowClosed(true);

    csIniPath = QStringLiteral("c:/test/test2.opt");
    csConfigFileName = QStringLiteral("c:/test/wooexport-input.txt");
    outputFilePath = QCoreApplication::applicationDirPath() + QLatin1String("/output.csv");

    takeCommandLine();
    requireHostFile();
    readHostFile();
    removeOldExport();
    restoreSavedState();
    buildForm();
    createTimers();
#if QT_CONFIG(sessionmanager)
    // The end of the desktop session closes the window as its own button does.
    connect(qGuiApp, &QGuiApplication::commitDataRequest, this, &MainWindow::close,
            Qt::DirectConnection);
#endif
}

MainWindow::~MainWindow()
{
    // Before the members: widgets that report while they go must still find the data they show, and
    // nobody is to act on it any more.
    mod_form_qt::disarmForm(this);
    delete takeCentralWidget();
    outFile.close();
    // The process is ended while the last page of an accepted export is on its way.
    if (pageGuard)
        outFile.resize(0);
}

void MainWindow::createTimers()
{
    runTimer = new QTimer(this);
    runTimer->setInterval(iTickMs);
    waitTimer = new QTimer(this);
    // Queued, since a timer does not fire again while a slot of its own is running, and a pass
    // lives in such a slot: only so can a tick arrive while a request is open. A tick that was
    // queued before the timer was stopped is dropped.
    connect(
        runTimer, &QTimer::timeout, this,
        [this] {
            if (runTimer->isActive())
                OnTimer();
        },
        Qt::QueuedConnection);
    connect(waitTimer, &QTimer::timeout, this, &MainWindow::OnWaitTimer);
}

bool MainWindow::getKontoByIndex(payment_import::KontenTypen role, int index, int& konto)
{
    return payment_import::getKontoByIndex(kontenMap, role, index, konto);
}

bool MainWindow::getKontoBySKR(payment_import::KontenTypen role, int skr, int& konto)
{
    return payment_import::getKontoBySKR(kontenMap, role, skr, konto);
}

void MainWindow::upDateKontoByIndex(payment_import::KontenTypen role, int index, int konto)
{
    payment_import::upDateKontoByIndex(kontenMap, role, index, konto);
}

void MainWindow::upDateKontoBySKR(payment_import::KontenTypen role, int skr, int konto)
{
    payment_import::upDateKontoBySKR(kontenMap, role, skr, konto);
}
