#include "progress/progress_dialog.h"

#include "progress/controller.h"
#include "progress/mailbox.h"
#include "progress/status_update.h"

#include <QCoreApplication>
#include <QDebug>
#include <QTimerEvent>

#include <algorithm>
#include <array>
#include <limits>

namespace mod_progress_qt {

namespace {

constexpr int autoValueTotal = 100;
/// Milliseconds between two looks into the mailbox; well below what a repaint waits for.
constexpr int mailIntervalMs = 10;

// Connections to slots by function do without; those by text, and other queued calls, need them.
const std::array registered {qRegisterMetaType<ProgressValues>("mod_progress_qt::ProgressValues"),
                             qRegisterMetaType<std::any>("std::any")};

int asPercent(const ProgressValues& values)
{
    const qint64 current = std::get<3>(values).toLongLong();
    const qint64 total = std::get<4>(values).toLongLong();
    const qint64 percent = total > 0 ? CustomProgressBar::percentOf(current, total) : current;
    using Limits = std::numeric_limits<int>;
    return int(std::clamp<qint64>(percent, Limits::min(), Limits::max()));
}

} // namespace

ProgressDialog::ProgressDialog(QWidget* parent)
    : QDialog(parent)
    , m_mailbox(std::make_shared<Mailbox>(this))
{
    installEventFilter(this);
    setWindowFlag(Qt::WindowCloseButtonHint, false);
    registerInstance(this);
}

ProgressDialog::~ProgressDialog()
{
    m_mailbox->close();
    unregisterInstance(this);
    restoreUiState(-1);
    if (showDebug)
        qDebug("virtual mod_progress_qt::ProgressDialog::~ProgressDialog()");
}

ProgressDialog::Pointer ProgressDialog::make(QWidget* parent, const options& opts)
{
    auto* made = new ProgressDialog(parent);
    if (parent) {
        // A parent takes its children with it, but this one belongs to those who hold the pointer.
        connect(parent, &QObject::destroyed, made,
                [made] { made->setParent(nullptr, made->windowFlags()); });
    }
    made->setWindowTitle(opts.title);
    made->m_bar.setOptions(opts);
    made->m_statusText = opts.text;
    made->m_mainWindow = getMainWindow();
    // Somebody may delete it all the same, and then it is not to be deleted again.
    return Pointer(made, [mailbox = made->m_mailbox](ProgressDialog* dialog) {
        if (!mailbox->isClosed())
            dialog->deleteLater();
    });
}

bool ProgressDialog::hasFlag(CustomProgressBar::Flag flag) const
{
    return (m_bar.currentOptions().flags & flag) != 0;
}

bool ProgressDialog::usesStatusBar() const
{
    return StatusUpdate::isInForce(m_bar.currentOptions().flags);
}

// -------------------------------------------------------------------- descriptions

ProgressDialog::options ProgressDialog::GetStdProgressInfo(bool canAbort, const QString& title,
                                                           int flags)
{
    options opts;
    opts.title = title.isEmpty() ? tr("Processing data...") : title;
    // `CustomProgressBar::defaultAbortText` once more, as that was made before any program can have
    // asked for a translation.
    opts.abortText = CustomProgressBar::tr("Cancel");
    opts.flags =
        flags | CustomProgressBar::kThirdLabel | (canAbort ? int(CustomProgressBar::kCanAbort) : 0);
    return opts;
}

ProgressDialog::options
ProgressDialog::GetStdProgressInfoWithButtons(bool canAbort, const QString& title, int flags)
{
    return GetStdProgressInfo(canAbort, title, flags | CustomProgressBar::kSquares);
}

// -------------------------------------------------------------------- values

bool ProgressDialog::setValue(const Pointer& dialog, const ProgressValues& values)
{
    if (!dialog || dialog->m_stopped)
        return false;
    const bool asStep = dialog->m_autoValue || asksForStep(values);
    if (!dialog->showValues(values, asStep, asStep ? 1 : 0))
        return false;
    const bool mayAct = dialog->hasFlag(CustomProgressBar::kCanAbort)
        || dialog->hasFlag(CustomProgressBar::kNoDialog);
    QCoreApplication::processEvents(mayAct ? defaultEventsFlagsUserInteraction
                                           : defaultEventsFlagsNoUserInteraction,
                                    eventWaitTimeMs);
    return true;
}

bool ProgressDialog::setProgress(const Pointer& dialog, const QVariant& text, qint64 current,
                                 qint64 total)
{
    return setValue(dialog, {text, QVariant(), QVariant(), current, total});
}

bool ProgressDialog::setProgress(const Pointer& dialog)
{
    return setValue(dialog, {});
}

bool ProgressDialog::setPercent(const Pointer& dialog, qint64 current, qint64 total)
{
    return setValue(dialog, {QVariant(), QVariant(), QVariant(), current, total});
}

bool ProgressDialog::setText(const Pointer& dialog, const QVariant& a, const QVariant& b,
                             const QVariant& c)
{
    return setValue(dialog, {a, b, c, QVariant(), QVariant()});
}

bool ProgressDialog::showValues(const ProgressValues& values, bool asStep, qint64 steps)
{
    if (steps > 0)
        m_autoCounter = int((m_autoCounter + steps - 1) % autoValueTotal + 1);
    if (!asStep)
        return updateProgress(values);
    return updateProgress({std::get<0>(values), std::get<1>(values), std::get<2>(values),
                           m_autoCounter, autoValueTotal});
}

bool ProgressDialog::updateProgress(const ProgressValues& values)
{
    if (!usesStatusBar())
        return m_bar.setValue(values);
    if (std::get<0>(values).isValid())
        m_statusText = std::get<0>(values).toString();
    if (std::get<3>(values).isValid())
        m_statusPercent = asPercent(values);
    StatusUpdate::showMessage(m_statusText, m_statusPercent);
    m_statusIsCleared = false;
    // What has been posted is only shown if events are processed.
    return true;
}

void ProgressDialog::updateProgressSlot(const ProgressValues& values)
{
    if (m_stopped)
        return;
    const bool asStep = m_autoValue || asksForStep(values);
    showValues(values, asStep, asStep ? 1 : 0);
}

void ProgressDialog::transferDataSlot(const std::any& result)
{
    m_data = result;
}

// -------------------------------------------------------------------- mail

void ProgressDialog::readMail()
{
    read(m_mailbox->take());
    // More is likely to come soon, and to be waited for is cheaper than to be called each time.
    if (m_mailTimer == 0)
        m_mailTimer = startTimer(mailIntervalMs);
}

void ProgressDialog::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_mailTimer) {
        QDialog::timerEvent(event);
        return;
    }
    const Mail mail = m_mailbox->takeOrRest();
    if (mail.isEmpty())
        killTimer(std::exchange(m_mailTimer, 0));
    else
        read(mail);
}

void ProgressDialog::read(const Mail& mail)
{
    if (mail.data)
        transferDataSlot(*mail.data);
    // Work that nobody waits for any more has nothing to show.
    if (mail.updates > 0 && !m_stopped && !m_done)
        showValues(mail.values, m_autoValue || mail.stepIsLatest,
                   m_autoValue ? mail.updates : mail.steps);
}

void ProgressDialog::done(int result)
{
    // The worker has sent this before it finished.
    read(m_mailbox->take());
    m_done = true;
    QDialog::done(result);
}

// -------------------------------------------------------------------- state

bool ProgressDialog::setTitle(const Pointer& dialog, const QString& title)
{
    if (!dialog)
        return false;
    dialog->setWindowTitle(title);
    return true;
}

bool ProgressDialog::setAutoValue(const Pointer& dialog, bool autoValue)
{
    if (!dialog || dialog->m_stopped)
        return false;
    dialog->m_autoValue = autoValue;
    dialog->m_autoCounter = 0;
    return true;
}

bool ProgressDialog::hasAutoValue(const Pointer& dialog)
{
    return dialog && dialog->m_autoValue;
}

bool ProgressDialog::setStopped(const Pointer& dialog, bool stopped)
{
    if (!dialog)
        return false;
    dialog->m_stopped = stopped;
    dialog->setVisible(!stopped && !globalHide);
    return true;
}

bool ProgressDialog::isStopped(const Pointer& dialog)
{
    return !dialog || dialog->m_stopped;
}

bool ProgressDialog::canAbort(const Pointer& dialog)
{
    return dialog && dialog->hasFlag(CustomProgressBar::kCanAbort);
}

bool ProgressDialog::canAbort(const QPointer<ProgressDialog>& dialog)
{
    return dialog && dialog->hasFlag(CustomProgressBar::kCanAbort);
}

Controller* ProgressDialog::controller() const
{
    return m_controller;
}

void ProgressDialog::stop()
{
    if (m_stopped)
        return;
    m_stopped = true;
    hide();
}

void ProgressDialog::clearStatusBar()
{
    StatusUpdate::showMessage(QString(), -1);
    m_statusIsCleared = true;
}

void ProgressDialog::restoreUiState(int /*code*/)
{
    // Each once: by the time a dialog is destroyed, the next one may show something in the status
    // bar, or have disabled the window again.
    if (usesStatusBar() && !m_statusIsCleared)
        clearStatusBar();
    if (std::exchange(m_reenablesMainWindow, false) && m_mainWindow)
        m_mainWindow->setEnabled(m_mainWindowWasEnabled);
    clearOwnShortcut();
}

} // namespace mod_progress_qt
