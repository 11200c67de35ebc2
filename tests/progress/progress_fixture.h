#pragma once

#include "progress/mod_progress_qt.h"

#include <QtTest>
#include <QtWidgets>

#include <functional>
#include <mutex>
#include <semaphore> // unlike QSemaphore known to the thread sanitizer

/// Long enough for anything to happen on a busy machine.
constexpr int kPatience = 60000;
/// A repaint delay that does not pass during a test.
constexpr qint64 kForEver = 3600000;

/// Deletes what waits to be deleted, and handles what has been posted.
inline void settle()
{
    for (int round = 0; round < 3; ++round) {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
    }
}

/// Waits until a condition holds that changes something by being asked, so that QTRY_VERIFY, which
/// asks once more at the end, will not do.
inline bool soon(const std::function<bool()>& condition)
{
    return QTest::qWaitFor(condition, kPatience);
}

/// Calls \a action from the event loop as soon as \a ready holds.
inline void whenever(const std::function<bool()>& ready, const std::function<void()>& action)
{
    auto* timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, timer, [timer, ready, action] {
        if (!ready())
            return;
        timer->stop();
        timer->deleteLater();
        action();
    });
    timer->start(1);
}

/// Runs \a action as a program runs, in the main loop. Once a program was told to quit, no other
/// loop waits any more, not even those of later tests; this one leaves it as it was.
inline void inMainLoop(const std::function<void()>& action)
{
    QTimer::singleShot(0, qApp, [&action] {
        action();
        QCoreApplication::exit();
    });
    QCoreApplication::exec();
}

/// The only open dialog, or null.
inline mod_progress_qt::ProgressDialog* theDialog()
{
    const auto open = mod_progress_qt::ProgressDialog::all();
    return open.size() == 1 ? open.first().data() : nullptr;
}

/// Calls \a action once a dialog that is run modally is on the screen.
inline void onceModal(const std::function<void(mod_progress_qt::ProgressDialog&)>& action)
{
    using mod_progress_qt::ProgressDialog;
    const auto running = [] {
        return qobject_cast<ProgressDialog*>(QApplication::activeModalWidget());
    };
    whenever([running] { return running() && running()->isVisible(); },
             [running, action] { action(*running()); });
}

inline QPushButton* abortButtonOf(const QWidget& window)
{
    const auto buttons = window.findChildren<QPushButton*>();
    for (QPushButton* button : buttons) {
        if (button->isDefault())
            return button;
    }
    return nullptr;
}

inline void pressOn(QWidget* button)
{
    QVERIFY(button);
    QTest::mousePress(button, Qt::LeftButton);
}

inline QList<QPushButton*> squaresOf(const QWidget& window)
{
    QList<QPushButton*> squares = window.findChildren<QPushButton*>();
    squares.removeIf([](const QPushButton* button) { return button->isDefault(); });
    return squares;
}

inline int filledSquares(const QWidget& window)
{
    int filled = 0;
    for (const QPushButton* square : squaresOf(window))
        filled += square->styleSheet() == mod_progress_qt::CustomProgressBar::defaultSheet1 ? 1 : 0;
    return filled;
}

/// Texts of the labels from top to bottom.
inline QStringList labelsOf(const QWidget& window)
{
    QStringList texts;
    for (const QLabel* label : window.findChildren<QLabel*>())
        texts << label->text();
    return texts;
}

/// Collects what is written to the log, from any thread, for as long as it lives.
class Messages
{
public:
    Messages() { m_before = qInstallMessageHandler(take); }

    ~Messages() { qInstallMessageHandler(m_before); }
    Q_DISABLE_COPY_MOVE(Messages)

    static QStringList all()
    {
        const std::lock_guard lock(s_mutex);
        return s_all;
    }

    static void clear()
    {
        const std::lock_guard lock(s_mutex);
        s_all.clear();
    }

private:
    static void take(QtMsgType /*type*/, const QMessageLogContext& /*context*/,
                     const QString& message)
    {
        // The platform's complaints about what it cannot do.
        if (message.startsWith(QLatin1String("This plugin does not support")))
            return;
        const std::lock_guard lock(s_mutex);
        s_all << message;
    }

    static inline std::mutex s_mutex;
    static inline QStringList s_all;
    QtMessageHandler m_before;
};

/// A main window whose status bar shows progress.
class StatusWindow : public QMainWindow
{
public:
    StatusWindow()
    {
        using mod_progress_qt::StatusUpdate;
        label = new QLabel("ready");
        bar = new QProgressBar;
        bar->setFixedWidth(StatusUpdate::barWidth);
        statusBar()->addWidget(label);
        statusBar()->addWidget(bar);
        bar->hide();
        StatusUpdate::label = label;
        StatusUpdate::progress = bar;
        StatusUpdate::active = true;
        show();
        activateWindow();
    }

    ~StatusWindow() override
    {
        using mod_progress_qt::StatusUpdate;
        StatusUpdate::active = false;
        StatusUpdate::label.clear();
        StatusUpdate::progress.clear();
    }

    QLabel* label;
    QProgressBar* bar;
};
