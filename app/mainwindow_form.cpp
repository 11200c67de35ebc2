// A stop-gap: the window's few widgets until the settings form stands in their place. What the form
// will bind and raise is wired here to the same functions.

#include "app/mainwindow.h"

#include "app/globals.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

void MainWindow::buildForm()
{
    bindOptions();

    statusLabel = new QLabel;
    statusLabel->setAccessibleName(tr("Status"));
    statusLabel->setWordWrap(true);
    logEdit = new QPlainTextEdit;
    logEdit->setReadOnly(true);
    logEdit->setAccessibleName(tr("Protokoll"));
    progressLabel = new QLabel;
    progressLabel->setTextFormat(Qt::PlainText);
    progressLabel->setAccessibleName(tr("Fortschritt"));

    auto* layout = new QVBoxLayout(centralWidget());
    layout->addWidget(buildStrip());
    layout->addWidget(statusLabel);
    layout->addWidget(logEdit, 1);
    layout->addWidget(progressLabel);
    resize(900, 600);
}

void MainWindow::bindOptions()
{
    const std::pair<QString, QVariant*> bound[] = {
        {QStringLiteral("mainurl"), &mainurl},
        {keyNameAPI, &apiKey},
        {keyNameSECRET, &apiSecret},
        {QStringLiteral("germanized_use"), &germanized_use},
        {QStringLiteral("germanized_overwrite_pdf"), &germanized_overwrite_pdf},
        {QStringLiteral("germanized_pdf_folder"), &germanized_pdf_folder},
        {QStringLiteral("woocommerce_use"), &woocommerce_use},
        {QStringLiteral("paypal_use"), &paypal_use},
        {QStringLiteral("date_filter_use"), &date_filter_use},
        {QStringLiteral("date_filter_before"), &date_filter_before},
        {QStringLiteral("date_filter_after"), &date_filter_after},
        {QStringLiteral("id_cache_use"), &id_cache_use},
    };
    for (const auto& [key, variable] : bound) {
        const auto saved = optionsMap.constFind(key);
        if (saved != optionsMap.constEnd())
            *variable = *saved;
        else
            optionsMap.insert(key, *variable);
    }
}

QWidget* MainWindow::buildStrip()
{
    auto* strip = new QWidget;
    startButton = new QPushButton(tr("Daten vom Server abrufen"));
    startButton->setObjectName(QStringLiteral("start_button"));
    okButton = new QPushButton(tr("Import starten"));
    okButton->setObjectName(QStringLiteral("ok_button"));
    connect(startButton, &QPushButton::clicked, this, &MainWindow::fnc_start);
    connect(okButton, &QPushButton::clicked, this, &MainWindow::acceptForm);

    auto* layout = new QHBoxLayout(strip);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(startButton);
    layout->addWidget(okButton);
    layout->addStretch();
    return strip;
}

void MainWindow::fnc_start()
{
    if (logEdit)
        logEdit->clear();
    SaveConfig(false);
    StartTimer();
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    if (bClosing) {
        event->ignore();
        return;
    }
    if (!bAccepted)
        abandonExport();
    bClosedInPass = bClosedInPass || bBusy;
    event->accept();
}

void MainWindow::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        close();
    else
        QMainWindow::keyPressEvent(event);
}
