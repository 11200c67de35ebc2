#include "progress/progress_dialog.h"

#include "progress/controller.h"
#include "progress/mailbox.h"
#include "progress/status_update.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDebug>
#include <QKeyEvent>
#include <QMainWindow>
#include <QMessageBox>
#include <QMutexLocker>
#include <QTimerEvent>
#include <QVBoxLayout>

#include <algorithm>
#include <array>
#include <limits>

namespace mod_progress_qt {

namespace {

constexpr int autoValueTotal = 100;
/// Pixels that words have at least before they are wrapped.
constexpr int leastWrapWidth = 320;
/// Milliseconds between two looks into the mailbox; well below what a repaint waits for.
constexpr int mailIntervalMs = 10;

// Connections to slots by function do without; those by text, and other queued calls, need them.
const std::array registered {qRegisterMetaType<ProgressValues>("mod_progress_qt::ProgressValues"),
                             qRegisterMetaType<std::any>("std::any")};

bool isEscape(QEvent* event)
{
    return event->type() == QEvent::KeyPress
        && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape;
}

void addPair(QVBoxLayout& layout, const ProgressDialog::WidgetAndLayout* part)
{
    if (part == nullptr)
        return;
    if (part->first)
        layout.addWidget(part->first);
    if (part->second)
        layout.addLayout(part->second);
}

/// Takes the widgets out of a layout and deletes it.
QList<QWidget*> dismantle(QLayout* layout)
{
    QList<QWidget*> widgets;
    while (QLayoutItem* const item = layout->takeAt(0)) {
        if (item->widget())
            widgets.append(item->widget());
        delete item;
    }
    delete layout;
    return widgets;
}

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
    opts.abortText = CustomProgressBar::defaultAbortText;
    opts.flags =
        flags | CustomProgressBar::kThirdLabel | (canAbort ? int(CustomProgressBar::kCanAbort) : 0);
    return opts;
}

ProgressDialog::options
ProgressDialog::GetStdProgressInfoWithButtons(bool canAbort, const QString& title, int flags)
{
    return GetStdProgressInfo(canAbort, title, flags | CustomProgressBar::kSquares);
}

// -------------------------------------------------------------------- layout

QPushButton* ProgressDialog::createLayout(const Pointer& dialog, const options& opts,
                                          const WidgetAndLayout* before,
                                          const WidgetAndLayout* after)
{
    if (!dialog)
        return nullptr;
    QList<QWidget*> old;
    if (dialog->m_hasLayout) {
        old = dismantle(dialog->layout());
        old.removeAll(dialog->m_display);
        delete dialog->m_display;
    }
    dialog->setWindowTitle(opts.title);
    const auto [display, abortButton] = dialog->m_bar.Create(opts);
    display->layout()->setContentsMargins(0, 0, 0, 0);
    if (opts.flags & CustomProgressBar::kWrapLabels)
        display->setMinimumWidth(leastWrapWidth);
    auto* layout = new QVBoxLayout;
    addPair(*layout, before);
    layout->addWidget(display);
    addPair(*layout, after);
    dialog->setLayout(layout);
    for (QWidget* const widget : std::as_const(old)) {
        if (layout->indexOf(widget) < 0)
            widget->hide();
    }
    dialog->m_display = display;
    dialog->m_hasLayout = true;
    dialog->m_statusText = opts.text;
    return abortButton;
}

void ProgressDialog::createHiddenLikeDialog(QDialog* dialog)
{
    if (dialog == nullptr)
        return;
    dialog->setWindowFlags(Qt::Tool | Qt::FramelessWindowHint);
    dialog->setFixedSize(0, 0);
    dialog->setAttribute(Qt::WA_DontShowOnScreen);
}

QWidget* ProgressDialog::getMainWindow()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget* const window : windows) {
        if (qobject_cast<QMainWindow*>(window))
            return window;
    }
    for (QWidget* const window : windows) {
        // A display is no window that it could be shown for.
        if (qobject_cast<QDialog*>(window) && !qobject_cast<ProgressDialog*>(window))
            return window;
    }
    return nullptr;
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
    if (mail.updates > 0 && !m_stopped)
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

void ProgressDialog::stop()
{
    if (m_stopped)
        return;
    m_stopped = true;
    hide();
}

void ProgressDialog::restoreUiState(int /*code*/)
{
    if (usesStatusBar())
        StatusUpdate::showMessage(QString(), -1);
    // Once: by the time a dialog is destroyed, the next one may have disabled the window again.
    if (std::exchange(m_reenablesMainWindow, false) && m_mainWindow)
        m_mainWindow->setEnabled(m_mainWindowWasEnabled);
    clearOwnShortcut();
}

// -------------------------------------------------------------------- keys and shortcuts

void ProgressDialog::makeShortcut(QWidget* parent, const std::function<void()>& activated)
{
    if (parent == nullptr)
        return;
    m_shortcut = new QShortcut(QKeySequence(Qt::Key_Escape), parent);
    m_shortcut->setContext(Qt::ApplicationShortcut);
    connect(m_shortcut, &QShortcut::activated, this, [this, activated] {
        clearOwnShortcut();
        activated();
        if (showDebug)
            qDebug("ABORT (SHORTCUT)");
    });
}

void ProgressDialog::clearShortCut(const QPointer<QShortcut>& shortcut)
{
    if (!shortcut)
        return;
    shortcut->setEnabled(false);
    shortcut->setParent(nullptr);
    shortcut->deleteLater();
}

void ProgressDialog::clearOwnShortcut()
{
    clearShortCut(m_shortcut);
    m_shortcut.clear();
}

bool ProgressDialog::eventFilter(QObject* object, QEvent* event)
{
    if (!isEscape(event))
        return QDialog::eventFilter(object, event);
    if (!hasFlag(CustomProgressBar::kCanAbort))
        return true;
    clearOwnShortcut();
    if (m_modal)
        emit abortRequested();
    else
        stop();
    return true;
}

bool ProgressDialog::event(QEvent* event)
{
    const bool handled = QDialog::event(event);
    // A window does not grow by itself with text that wraps.
    if (event->type() == QEvent::LayoutRequest && layout() && layout()->hasHeightForWidth())
        resize(width(), qMax(height(), layout()->totalHeightForWidth(width())));
    return handled;
}

void ProgressDialog::closeEvent(QCloseEvent* event)
{
    event->ignore();
}

// -------------------------------------------------------------------- all dialogs

void ProgressDialog::registerInstance(ProgressDialog* dialog)
{
    const QMutexLocker lock(&instancesMutex);
    instances.append(dialog);
}

void ProgressDialog::unregisterInstance(ProgressDialog* dialog)
{
    const QMutexLocker lock(&instancesMutex);
    instances.removeAll(dialog);
}

QList<QPointer<ProgressDialog>> ProgressDialog::all()
{
    const QMutexLocker lock(&instancesMutex);
    return instances;
}

bool ProgressDialog::hasOpenDialogs(QWidget* parent, bool warn, bool abortAll)
{
    // Lets those go that are going away.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents(QEventLoop::AllEvents, 10);

    const QList<QPointer<ProgressDialog>> open = all();
    for (const QPointer<ProgressDialog>& dialog : open) {
        if (!abortAll || !canAbort(dialog))
            continue;
        if (!dialog->m_modal)
            dialog->stop();
        else if (dialog->m_controller)
            dialog->m_controller->abort();
    }
    if (all().isEmpty())
        return false;
    if (warn)
        QMessageBox::information(parent, tr("Info:"), tr("There are active processes running...."),
                                 QMessageBox::Ok);
    return true;
}

} // namespace mod_progress_qt
