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

namespace {

/// What the window manager's frame and its bars may take from the screen.
const QSize frameRoom(16, 40);

} // namespace

void MainWindow::buildForm()
{
    const MainFormSource source {*this,       kontenMap,     nSKRDefault,
                                 bHostFolder, csPaypalLabel, csWooCommerceLabel};
    const LegacyCallback formEvent = [](const auto&, const auto&, const auto&, CallbackType type,
                                        const INFO& row, auto*, auto*, const auto*) {
        if (MainWindow* const* window = std::any_cast<MainWindow*>(&row.anyData))
            (*window)->runFormEvent(type);
        return 1;
    };
    // The bit 0x4 has no name and no effect; it belongs to the value that the form is built with.
    const INFO::MainFlags flags = MF_FIXED_SIZE | MF_SCROLLAREA | MF_PLACE_CENTER
        | MF_USE_MAP_VALUES | INFO::MainFlags::fromInt(0x4);
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
    if (auto* area = centralWidget()->findChild<QScrollArea*>())
        fitForm(area);
    if (auto* address = INFO::lineEditByKey(&optionsMap, "mainurl"))
        address->setFocus(); // and not the switch of its group, which a blank would turn off
}

void MainWindow::fitForm(QScrollArea* area)
{
    // In one line with what stands below it; its groups have frames of their own.
    area->setFrameShape(QFrame::NoFrame);
    area->widget()->layout()->setContentsMargins(0, 0, 0, 0);
    area->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    area->setFocusPolicy(Qt::NoFocus); // its fields can be reached, and scroll it
    limitToContent(area);
    takeFirstSize(area);
}

void MainWindow::buildOutput()
{
    statusLabel = new QLabel;
    statusLabel->setAccessibleName(tr("Status"));
    statusLabel->setWordWrap(true);
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
    // Only a polished widget knows its size, and the layouts remember what they were told before.
    const auto widgets = findChildren<QWidget*>();
    for (const QWidget* widget : widgets)
        widget->ensurePolished();
    const auto layouts = findChildren<QLayout*>();
    for (QLayout* layout : layouts)
        layout->invalidate();
    const QSize room = screen()->availableSize() - frameRoom;
    const QSize form = fullSize(area);
    const int status = 3 * statusLabel->fontMetrics().lineSpacing();
    // All that stands around the form, with the least that the log needs.
    const int around = sizeHint().height() - area->sizeHint().height()
        - logEdit->sizeHint().height() + logEdit->minimumHeight();

    // A status is a line between two empty ones. Where there is room for them the first one moves
    // nothing.
    const int left = room.height() - form.height() - around - status;
    if (left >= 0)
        statusLabel->setMinimumHeight(status);
    const QMargins margins = centralWidget()->layout()->contentsMargins();
    // A screen that is scaled by a fraction may take a pixel of what is asked for.
    QSize wanted(form.width() + margins.left() + margins.right() + 1, sizeHint().height() + 1);
    wanted.rheight() += form.height() - area->sizeHint().height();
    if (form.height() + around > room.height())
        wanted.rwidth() += area->verticalScrollBar()->sizeHint().width()
            + area->style()->pixelMetric(QStyle::PM_ScrollView_ScrollBarSpacing, nullptr, area);
    resize(wanted.boundedTo(room));
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    bClosedInPass = bClosedInPass || bBusy;
    event->accept();
}
