#pragma once

#include "form/mod_form_qt.h"

#include <QApplication>
#include <QMainWindow>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QWindow>

#include <functional>

/// Notes what a form reports, and answers it.
struct FormProbe
{
    QStringList events; ///< names of the kinds, in order
    QStringList keys; ///< keys of the raising rows, as many as events
    QSet<int> refused; ///< the kinds that are answered with 0
    std::function<void(const mod_form_qt::CallbackContext&)> also; ///< runs with every event

    mod_form_qt::Callback callback()
    {
        return mod_form_qt::ContextCallback([this](const mod_form_qt::CallbackContext& ctx) {
            events << mod_form_qt::callbackTypeNames.value(ctx.type);
            keys << ctx.row.key;
            if (also)
                also(ctx);
            return refused.contains(ctx.type) ? 0 : 1;
        });
    }

    /// Of the events those that end a form.
    QStringList closings() const
    {
        QStringList found;
        for (const QString& event : events) {
            if (QStringList {"kAccept", "kReject", "kClose", "kCleanup"}.contains(event))
                found << event;
        }
        return found;
    }
};

/// Calls an action once a modal window is on screen.
inline void onceModal(QObject* context, const std::function<void(QWidget*)>& action)
{
    auto* timer = new QTimer(context);
    QObject::connect(timer, &QTimer::timeout, timer, [timer, action] {
        QWidget* window = QApplication::activeModalWidget();
        if (window == nullptr || !window->isVisible())
            return;
        timer->stop();
        timer->deleteLater();
        action(window);
    });
    timer->start(5);
}

/// Ends whatever runs modally for too long, so that a test fails instead of hanging. Under memcheck
/// on a busy machine a form alone takes many seconds.
inline void endStuckModals(QObject* context)
{
    constexpr int patience = 60 * 1000; // milliseconds
    QTimer::singleShot(patience, context, [] {
        qWarning("A window would not close.");
        while (QWidget* window = QApplication::activeModalWidget()) {
            if (auto* dialog = qobject_cast<QDialog*>(window))
                dialog->done(99);
            else
                delete window;
        }
    });
}

/// The rows of a small form: a text and the three buttons that end it.
inline QList<mod_form_qt::INFO> closableRows(const mod_form_qt::Callback& buttonCallback = {})
{
    using namespace mod_form_qt;
    return {
        {E_LINEEDIT, A_NONE, "Name", QVariant("x"), "name"},
        {E_LAYOUT_H},
        {E_OK_BUTTON, A_NONE, "OK", {}, "ok", buttonCallback},
        {E_CANCEL_BUTTON, A_NONE, "Abbrechen", {}, "cancel", buttonCallback},
        {E_CLOSE_BUTTON, A_NONE, "Beenden", {}, "close", buttonCallback},
        {E_LAYOUT_END},
    };
}

inline void clickButton(const QMap<QString, QVariant>& map, const char* key)
{
    auto* button = mod_form_qt::INFO::pushButtonByKey(&map, key);
    QVERIFY2(button, key);
    QTest::mouseClick(button, Qt::LeftButton);
}

/// \return  the titles of windows that are still on screen
inline QStringList visibleWindows()
{
    QStringList titles;
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (const QWidget* window : windows) {
        if (window->isVisible())
            titles << QString("%1 '%2'").arg(window->metaObject()->className(),
                                             window->windowTitle());
    }
    return titles;
}
