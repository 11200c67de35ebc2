#include "form/model/info.h"

namespace mod_form_qt {

namespace {

constexpr INFO::MainFlags runModes = MF_EXEC | MF_OPEN | MF_SHOW;

INFO makeMainRow(int eleType, const QVariant& title, Callback callback, std::any any,
                 const QVariant& userData)
{
    return {eleType, {}, title, {}, {}, std::move(callback), std::move(any), userData};
}

} // namespace

INFO::Result INFO::createAndExecDialog(QWidget* parent, const QVariant& title,
                                       const QList<INFO>& rows, MainFlags flags,
                                       Qt::WindowFlags windowFlags, QMap<QString, QVariant>* map,
                                       QSet<QString>* keys, Callback callback, std::any any,
                                       const QVariant& userData)
{
    const bool onlyShown = flags.testAnyFlags(MF_OPEN | MF_SHOW);
    flags |= MF_CREATE_WINDOW | MF_CREATE_LAYOUT;
    if (!onlyShown)
        flags |= MF_EXEC;
    flags &= ~MainFlags(MF_APPLY_TO_WIDGET);
    return createLayout(parent, flags, windowFlags,
                        makeMainRow(E_DIALOG, title, std::move(callback), std::move(any), userData),
                        rows, map, keys);
}

INFO::Result INFO::createAndExecMainWindow(QWidget* parent, bool localLoop, const QVariant& title,
                                           const QList<INFO>& rows, MainFlags flags,
                                           Qt::WindowFlags windowFlags,
                                           QMap<QString, QVariant>* map, QSet<QString>* keys,
                                           Callback callback, std::any any,
                                           const QVariant& userData)
{
    flags |= MF_CREATE_WINDOW | MF_CREATE_LAYOUT | MF_EXEC;
    if (localLoop)
        flags |= MF_LOCAL_EVENT_LOOP;
    flags &= ~MainFlags(MF_APPLY_TO_WIDGET);
    return createLayout(
        parent, flags, windowFlags,
        makeMainRow(E_MAINWINDOW, title, std::move(callback), std::move(any), userData), rows, map,
        keys);
}

INFO::Result INFO::applyLayout(QWidget* widget, bool createLayout, const QVariant& title,
                               const QList<INFO>& rows, MainFlags flags,
                               Qt::WindowFlags windowFlags, QMap<QString, QVariant>* map,
                               QSet<QString>* keys, Callback callback, std::any any,
                               const QVariant& userData)
{
    flags &= ~(runModes | MF_CREATE_WINDOW);
    flags |= MF_APPLY_TO_WIDGET;
    if (createLayout)
        flags |= MF_CREATE_LAYOUT;
    return INFO::createLayout(
        widget, flags, windowFlags,
        makeMainRow(E_WIDGET, title, std::move(callback), std::move(any), userData), rows, map,
        keys);
}

INFO::Result INFO::getLayout(QWidget* widget, bool createLayout, const QVariant& title,
                             const QList<INFO>& rows, MainFlags flags, Qt::WindowFlags windowFlags,
                             QMap<QString, QVariant>* map, QSet<QString>* keys, Callback callback,
                             std::any any, const QVariant& userData)
{
    flags &= ~(runModes | MF_CREATE_WINDOW | MF_APPLY_TO_WIDGET);
    if (createLayout)
        flags |= MF_CREATE_LAYOUT;
    return INFO::createLayout(
        widget, flags, windowFlags,
        makeMainRow(E_WIDGET, title, std::move(callback), std::move(any), userData), rows, map,
        keys);
}

} // namespace mod_form_qt
