#include "form/events/close_flow.h"

#include "form/events/change_flow.h"
#include "form/events/form_guard.h"
#include "form/widgets/helper_windows.h"

#include <QDialog>
#include <QMainWindow>
#include <QTimer>

namespace mod_form_qt {

namespace {

/// A form's main row also comes as a copy. It is the only one of its types, but for E_WIDGET: there
/// a row of the form has a widget, without which it makes nothing that could ask for a closing.
bool isMainRow(const INFO& row, const INFO& mainRow)
{
    if (&row == &mainRow || row.eleType == E_DIALOG || row.eleType == E_MAINWINDOW)
        return true;
    return row.eleType == E_WIDGET && row.key.isEmpty() && !row.data.isValid();
}

void endWindow(QWidget* window, bool accepted)
{
    if (auto* dialog = qobject_cast<QDialog*>(window)) {
        if (accepted)
            dialog->accept();
        else
            dialog->reject();
    } else if (qobject_cast<QMainWindow*>(window)) {
        // Before the window closes: the close event that follows is to pass without a question.
        helper::MainWnd::exitCode = accepted ? 1 : 0;
        window->setProperty(INFO::mainWndExitCodeKeyName.toUtf8().constData(),
                            helper::MainWnd::exitCode);
        QTimer::singleShot(0, window, SLOT(close()));
    }
}

} // namespace

bool closingDecided(const QWidget* window)
{
    return qobject_cast<const QMainWindow*>(window)
        && window->property(INFO::mainWndExitCodeKeyName.toUtf8().constData()).isValid();
}

bool closeForm(const std::shared_ptr<FormContext>& form, const INFO& row, QWidget* widget,
               CallbackType type)
{
    // Of its own: a callback may delete the window, and with it whoever holds the one passed in.
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization)
    const std::shared_ptr<FormContext> kept = form;
    if (!kept || !kept->live() || kept->closing)
        return false;
    const QPointer<QWidget> window = kept->mainWidget;
    if (closingDecided(window))
        return false;
    const ClosingGuard guard(kept);
    // A callback may end the dialog itself; that has been reported then.
    const int wanted = type == kAccept ? QDialog::Accepted : QDialog::Rejected;
    bool ended = false;
    const QObject asking;
    if (const auto* dialog = qobject_cast<QDialog*>(window)) {
        QObject::connect(dialog, &QDialog::finished, &asking,
                         [&ended, wanted](int result) { ended = result == wanted; });
    }
    if (type == kAccept)
        endEditing(window);
    if (!kept->live()
        || !INFO::canClose(window, widget, type, row, kept->mainRow, kept->map, kept->saveKeys))
        return false;
    if (window && kept->live() && (!ended || window->isVisible()))
        endWindow(window, type == kAccept);
    return true;
}

bool INFO::canClose(QWidget* mainWidget, QWidget* widget, CallbackType type, const INFO& row,
                    const INFO& mainRow, QMap<QString, QVariant>* map,
                    const std::pair<bool, QSet<QString>>& saveKeys)
{
    const QPointer<QWidget> form = mainWidget;
    const QPointer<QWidget> raising = widget;
    const FormGuard guard(form);
    if (type == kAccept && !validateInput(widget ? widget : mainWidget, map))
        return false;
    const auto refuses = [&](const INFO& asked) {
        return ExecCallBack(asked.callback, form, raising, QVariant(), type, row, map, nullptr,
                            nullptr)
            == 0;
    };
    // A callback may take the form down, and its map with it.
    // The main row's own events would otherwise reach its callback twice.
    if (map && !isMainRow(row, mainRow) && refuses(row))
        return false;
    if (!guard.stands() || refuses(mainRow) || !guard.stands())
        return false;
    closeWidget(form, mainRow, map, saveKeys, type == kAccept);
    return true;
}

} // namespace mod_form_qt
