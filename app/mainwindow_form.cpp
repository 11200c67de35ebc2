#include "app/mainwindow.h"

#include "app/contentfit.h"
#include "app/globals.h"

#include <QCloseEvent>
#include <QLabel>
#include <QPlainTextEdit>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QSpinBox>
#include <QStyle>
#include <QVBoxLayout>

using namespace mod_form_qt;

void MainWindow::buildForm()
{
    const MainFormSource source {*this,       kontenMap,     nSKRDefault,
                                 bHostFolder, csPaypalLabel, csWooCommerceLabel};
    const LegacyCallback formEvent = [](const auto&, const auto&, const auto&, CallbackType type,
                                        const INFO& row, auto*, auto*, const auto*) {
        std::any_cast<MainWindow*>(row.anyData)->runFormEvent(type);
        return 1;
    };
    // The bits 0x4 and 0x4000 have no names that say more here: the window is put into the middle
    // of the screen once it is shown.
    const INFO::MainFlags flags =
        MF_FIXED_SIZE | MF_SCROLLAREA | MF_USE_MAP_VALUES | INFO::MainFlags::fromInt(0x4 | 0x4000);
    const INFO::Result form =
        INFO::getLayout(this, true, QString(), mainFormRows(source, formCallbacks()), flags,
                        F_DIALOG_TITLE_MINMAX_CLOSE, &optionsMap, nullptr, formEvent,
                        static_cast<MainWindow*>(this));

    // A number that is the same as the one typed last is no change for the form, although it is
    // typed for another chart or role now.
    if (QSpinBox* box = kontoBox())
        connect(box, &QSpinBox::valueChanged, this, &MainWindow::storeKontoOfSelection);

    buildOutput();
    auto* layout = new QVBoxLayout(centralWidget());
    // The form comes first up to its own height; what is left over is the log's.
    layout->addLayout(form.layout, 100);
    layout->addWidget(statusLabel);
    layout->addWidget(logEdit, 1);
    layout->addWidget(progressLabel);
    if (auto* area = centralWidget()->findChild<QScrollArea*>()) {
        area->setFrameShape(QFrame::NoFrame); // its groups have frames of their own
        limitToContent(area);
        takeFirstSize(area);
    }
}

void MainWindow::buildOutput()
{
    statusLabel = new QLabel;
    statusLabel->setAccessibleName(tr("Status"));
    statusLabel->setWordWrap(true);
    // A status is a line between two empty ones: so the first one moves nothing.
    statusLabel->setMinimumHeight(3 * statusLabel->fontMetrics().lineSpacing());
    logEdit = new QPlainTextEdit;
    logEdit->setReadOnly(true);
    logEdit->setAccessibleName(tr("Protokoll"));
    logEdit->setMinimumHeight(3 * logEdit->fontMetrics().lineSpacing());
    progressLabel = new QLabel;
    progressLabel->setTextFormat(Qt::PlainText);
    progressLabel->setAccessibleName(tr("Fortschritt"));
}

void MainWindow::takeFirstSize(const QScrollArea* area)
{
    ensurePolished();
    const QSize form = fullSize(area);
    // The window asks for a part of the form only; it is to show the whole form, as far as the
    // screen has room for it beside the window manager's frame.
    QSize wanted = sizeHint() + QSize(0, form.height() - area->sizeHint().height());
    wanted.setWidth(form.width() + centralWidget()->layout()->contentsMargins().left()
                    + centralWidget()->layout()->contentsMargins().right());
    const QSize room = screen()->availableSize() - QSize(16, 40);
    if (wanted.height() > room.height())
        wanted.rwidth() += area->verticalScrollBar()->sizeHint().width()
            + area->style()->pixelMetric(QStyle::PM_ScrollView_ScrollBarSpacing, nullptr, area);
    resize(wanted.boundedTo(room));
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    bClosedInPass = bClosedInPass || bBusy;
    event->accept();
}
