#include "progress/progress_dialog.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QDebug>
#include <QKeyEvent>
#include <QShortcutEvent>

namespace mod_progress_qt {

namespace {

bool isEscape(QEvent* event)
{
    return event->type() == QEvent::KeyPress
        && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape;
}

/// Escape, even where the main window has a shortcut of its own for it. Of several for one key only
/// one is told, each in its turn, and this one would wait for the second key press.
class AbortShortcut : public QShortcut
{
public:
    explicit AbortShortcut(QWidget* parent)
        : QShortcut(QKeySequence(Qt::Key_Escape), parent)
    {
        setContext(Qt::ApplicationShortcut);
        QCoreApplication::instance()->installEventFilter(this);
    }

    bool eventFilter(QObject* object, QEvent* event) override
    {
        if (event->type() != QEvent::Shortcut || object == this || !isEnabled())
            return QShortcut::eventFilter(object, event);
        const auto* const chosen = static_cast<QShortcutEvent*>(event);
        if (!chosen->isAmbiguous() || chosen->key() != key())
            return QShortcut::eventFilter(object, event);
        emit activatedAmbiguously();
        return true;
    }
};

} // namespace

void ProgressDialog::makeShortcut(QWidget* parent, const std::function<void()>& activated)
{
    if (parent == nullptr)
        return;
    m_shortcut = new AbortShortcut(parent);
    const auto act = [this, activated] {
        clearOwnShortcut();
        activated();
        if (showDebug)
            qDebug("ABORT (SHORTCUT)");
    };
    connect(m_shortcut, &QShortcut::activated, this, act);
    connect(m_shortcut, &QShortcut::activatedAmbiguously, this, act);
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

void ProgressDialog::closeEvent(QCloseEvent* event)
{
    event->ignore();
}

} // namespace mod_progress_qt
