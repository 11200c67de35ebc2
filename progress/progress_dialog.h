#pragma once

#include "progress/custom_progress_bar.h"
#include "progress/export.h"
#include "progress/worker.h"

#include <QDialog>
#include <QEventLoop>
#include <QLayout>
#include <QMutex>
#include <QPointer>
#include <QSharedPointer>
#include <QShortcut>

#include <any>
#include <atomic>
#include <functional>
#include <memory>
#include <type_traits>
#include <utility>

namespace mod_progress_qt {

class Controller;
class Mailbox;
struct Mail;

/// Shows the progress of long work and lets the user abort it: in a dialog, or in the main window's
/// status bar once `StatusUpdate` is set up. createModal() runs the work on a thread of its own,
/// createNonModal() is for work on the GUI thread, which calls setProgress() and asks isStopped().
///
/// The functions that take a dialog tolerate a null pointer: they do nothing and return false,
/// except for isStopped(). Unless said otherwise they belong to the GUI thread.
class MOD_PROGRESS_QT_EXPORT ProgressDialog : public QDialog
{
    Q_OBJECT

public:
    /// Description of a progress display.
    using options = CustomProgressBar::options;
    /// Something of the caller's above or below the display; either part may be null.
    using WidgetAndLayout = std::pair<QWidget*, QLayout*>;
    /// How a dialog is held; the event loop deletes it once nobody holds it any more.
    using Pointer = QSharedPointer<ProgressDialog>;

    /// A dialog without a display. createModal() and createNonModal() make a complete one.
    explicit ProgressDialog(QWidget* parent = nullptr);
    /// Takes the dialog off the list, and restores what it has changed of the main window.
    ~ProgressDialog() override;
    Q_DISABLE_COPY_MOVE(ProgressDialog)

    // ---------------------------------------------------------------- settings

    /// Open dialogs; guarded by `instancesMutex`, see all().
    static inline QList<QPointer<ProgressDialog>> instances;
    /// Guards `instances`.
    static inline QMutex instancesMutex;
    /// Milliseconds after an abort until a modal dialog no longer waits for its work; 0 and below:
    /// it waits for ever.
    static inline int hardInterruptTimeMs = -1;
    /// Milliseconds that events are processed for, at most, after a repaint.
    static inline int eventWaitTimeMs = 50;
    /// Which events are processed then, where the user cannot do anything.
    static inline QEventLoop::ProcessEventsFlags defaultEventsFlagsNoUserInteraction =
        QEventLoop::ExcludeUserInputEvents | QEventLoop::WaitForMoreEvents;
    /// Which events are processed then, where the work may be aborted or the main window is
    /// enabled.
    static inline QEventLoop::ProcessEventsFlags defaultEventsFlagsUserInteraction =
        QEventLoop::WaitForMoreEvents;
    /// setStopped(dialog, false) does not show the dialog.
    static inline bool globalHide = false;
    /// Debug output of destructors and of the abort shortcut.
    static inline std::atomic<bool> showDebug = false;

    // ---------------------------------------------------------------- descriptions

    /// Options with the third label and, if \a canAbort, an abort button.
    /// \param title  of the window; "Processing data..." if empty
    /// \param flags  further bits, see `CustomProgressBar::Flag`
    static options GetStdProgressInfo(bool canAbort, const QString& title = {}, int flags = 0);
    /// As GetStdProgressInfo(), with the row of squares.
    static options GetStdProgressInfoWithButtons(bool canAbort, const QString& title = {},
                                                 int flags = 0);

    // ---------------------------------------------------------------- the two kinds

    /// Opens a display for work that the caller does on the GUI thread, and closes the one before.
    /// If the work may be aborted, the main window is disabled until the dialog is destroyed, that
    /// is in the event loop after the last holder has let go of it.
    /// \param autoValue  each update counts one step, instead of showing its numbers
    static Pointer createNonModal(QWidget* parent, const options& opts, bool autoValue = false,
                                  const WidgetAndLayout* before = nullptr,
                                  const WidgetAndLayout* after = nullptr);

    /// Runs work on a thread of its own and waits for its end in an event loop.
    /// Defined in "progress/create_modal.h".
    /// \tparam Worker  derived from WorkerBase, with its constructor
    /// \param data     for the work to read, see `WorkerBase::data`
    /// \param work     called on the thread; must not be empty, touch widgets or throw. It asks
    ///                 isStopped() in its loop and ends with finalizeWorker(). It outlives this
    ///                 call, and with it what it refers to, after a hard abort, and if the program
    ///                 quits or the parent is destroyed meanwhile
    /// \return         false if the work was aborted, was to be given up as above, or if somebody
    ///                 has deleted the dialog, which then is null; and the dialog with what the
    ///                 work has transferred by now. With true that is what it ended with
    template <typename Worker = WorkerBase>
    static std::pair<bool, Pointer>
    createModal(QWidget* parent, const options& opts, const std::any& data,
                std::function<int(std::type_identity_t<Worker>*)> work,
                const WidgetAndLayout* before = nullptr, const WidgetAndLayout* after = nullptr);

    // ---------------------------------------------------------------- for the work function

    /// Whether the work shall end; also true for null. From any thread.
    static bool isStopped(const WorkerBase* worker);
    /// The end of a work function: hands the result over and closes the dialog.
    /// \return  1 if \a ok and not aborted, else 0; 0 without any effect for null
    static int finalizeWorker(WorkerBase* worker, const std::any& result, bool ok);

    // ---------------------------------------------------------------- for the caller's loop

    /// Shows what is due, see `CustomProgressBar::setValue`. If that gave something to do, events
    /// are processed, which keeps the dialog alive and the abort button working.
    /// \return  false if the dialog is stopped or nothing was due
    static bool setValue(const Pointer& dialog, const ProgressValues& values);
    /// As setValue(), with the text of the first label and both numbers.
    static bool setProgress(const Pointer& dialog, const QVariant& text, qint64 current,
                            qint64 total);
    /// An automatic step: from 1 to 100, and from there to 1 again.
    static bool setProgress(const Pointer& dialog);
    /// As setValue(), with both numbers only.
    static bool setPercent(const Pointer& dialog, qint64 current, qint64 total);
    /// Texts of the labels; an invalid one leaves its label as it is.
    static bool setText(const Pointer& dialog, const QVariant& a, const QVariant& b = {},
                        const QVariant& c = {});
    /// Title of the window.
    /// \return  false for null
    static bool setTitle(const Pointer& dialog, const QString& title);
    /// Starts or ends automatic steps, from 0 on.
    /// \return  false if the dialog is stopped
    static bool setAutoValue(const Pointer& dialog, bool autoValue);
    /// Whether each update counts one step.
    static bool hasAutoValue(const Pointer& dialog);
    /// Hides a stopped dialog, and shows it again unless `globalHide` is set.
    static bool setStopped(const Pointer& dialog, bool stopped);
    /// Whether the caller's loop shall end; also true for null.
    static bool isStopped(const Pointer& dialog);
    /// Whether the user may abort the work.
    static bool canAbort(const Pointer& dialog);
    /// Whether the user may abort the work.
    static bool canAbort(const QPointer<ProgressDialog>& dialog);

    /// The data that the work transferred; empty before.
    const std::any& transferredData() const { return m_data; }

    /// Whether it was made by createModal().
    bool isModalWork() const { return m_modal; }

    /// What aborts its work while createModal() waits for it; null otherwise.
    Controller* controller() const;

    // ---------------------------------------------------------------- all dialogs

    /// The dialogs that are open. From any thread; looking at them belongs to the GUI thread.
    static QList<QPointer<ProgressDialog>> all();
    /// \param warn      tells the user if there are any
    /// \param abortAll  first aborts all that may be aborted; they do not end at once
    /// \return          whether there are any
    static bool hasOpenDialogs(QWidget* parent, bool warn, bool abortAll);
    /// Lists a dialog in `instances`, as the constructor does.
    static void registerInstance(ProgressDialog* dialog);
    /// Takes a dialog off the list; does nothing for one that is not listed.
    static void unregisterInstance(ProgressDialog* dialog);

    // ---------------------------------------------------------------- parts

    /// The first top-level `QMainWindow`, otherwise the first top-level dialog that shows no
    /// progress; or null.
    static QWidget* getMainWindow();
    /// Makes a dialog invisible that can still run a modal loop.
    static void createHiddenLikeDialog(QDialog* dialog);
    /// Ends a shortcut. To be called even by what it triggers.
    static void clearShortCut(const QPointer<QShortcut>& shortcut);
    /// Puts the display into the dialog, in place of the layout that is there. Widgets of that
    /// layout that are not in the new one are hidden and stay children of the dialog; layouts
    /// inside it that are not used again are deleted.
    /// \return  the abort button, or null
    static QPushButton* createLayout(const Pointer& dialog, const options& opts,
                                     const WidgetAndLayout* before = nullptr,
                                     const WidgetAndLayout* after = nullptr);
    /// Clears the status bar, unless nothing came since it was last cleared, enables the main
    /// window again if it was, ends the abort shortcut.
    /// \param code  has no effect
    void restoreUiState(int code);

    /// Shows the three uses, one after the other: two modal runs and a non-modal loop.
    /// \param useStatusBar  shows them in the status bar, where that is set up
    static void Example(QWidget* parent, bool useStatusBar, bool, long long);

    /// Closes the dialog, once it has taken all that the work has sent.
    void done(int result) override;

    /// As setValue(), but processes no events.
    Q_SLOT void updateProgressSlot(const mod_progress_qt::ProgressValues& values);
    /// Keeps data for transferredData().
    Q_SLOT void transferDataSlot(const std::any& result);

signals:
    /// The user wants the work of createModal() to end.
    void abortRequested();

protected:
    /// Lets the window grow with text that wraps.
    bool event(QEvent* event) override;
    /// Escape aborts the work if it may be aborted, and never closes the dialog otherwise.
    bool eventFilter(QObject* object, QEvent* event) override;
    /// Ignored: the frame of the window does not close it.
    void closeEvent(QCloseEvent* event) override;
    /// Looks for what the work has sent.
    void timerEvent(QTimerEvent* event) override;

private:
    static Pointer make(QWidget* parent, const options& opts);
    static void closeFirstNonModal();

    // The steps of createNonModal.
    void disableMainWindow();
    QWidget* showNonModal();
    void makeStopShortcut(QWidget* parent);

    // The steps of createModal.
    static Pointer prepareModal(QWidget* parent, const options& opts, const WidgetAndLayout* before,
                                const WidgetAndLayout* after);
    static bool runModal(Pointer& dialog, Controller* controller, WorkerBase* worker,
                         QThread* thread);
    void connectWorker(WorkerBase* worker);
    void connectAbort(Controller* controller);
    void waitForEnd(Controller* controller);
    void waitWithoutDialog(Controller* controller);
    void makeAbortShortcut(QWidget* parent, Controller* controller);

    bool usesStatusBar() const;
    bool hasFlag(CustomProgressBar::Flag flag) const;
    void stop();
    void clearStatusBar();
    void makeShortcut(QWidget* parent, const std::function<void()>& activated);
    void clearOwnShortcut();
    bool showValues(const ProgressValues& values, bool asStep, qint64 steps);
    bool updateProgress(const ProgressValues& values);
    void read(const Mail& mail);
    Q_INVOKABLE void readMail();

    bool m_modal = true;
    CustomProgressBar m_bar;
    bool m_autoValue = false;
    int m_autoCounter = 0;
    bool m_stopped = false;
    QPointer<QWidget> m_mainWindow;
    bool m_mainWindowWasEnabled = true;
    bool m_reenablesMainWindow = false;
    QPointer<QShortcut> m_shortcut;
    QPointer<Controller> m_controller;
    std::any m_data;

    QPointer<QWidget> m_display;
    QPointer<QPushButton> m_abortButton;
    // Nobody waits for the work any more.
    bool m_done = false;
    // What the status bar shows of this dialog.
    QString m_statusText;
    int m_statusPercent = -1;
    bool m_statusIsCleared = false;
    std::shared_ptr<Mailbox> m_mailbox;
    int m_mailTimer = 0;
};

} // namespace mod_progress_qt
