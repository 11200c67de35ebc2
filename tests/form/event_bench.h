#pragma once

#include "form/events/connect.h"
#include "form/events/form_context.h"
#include "form/mod_form_qt.h"
#include "form/values/list_widgets.h"

#include <QtTest>
#include <QtWidgets>

#include <functional>
#include <memory>

/// Rows whose widgets are made and wired by hand, in a window of their own, with a record of what
/// the callbacks were told.
class EventBench
{
public:
    using Map = QMap<QString, QVariant>;
    using Context = mod_form_qt::CallbackContext;
    using Widgets = QList<std::pair<QWidget*, int>>;

    Map map;
    /// "row" or "main" and the name of the event, in the order of the calls.
    QStringList events;
    /// What the last callback was told of.
    QVariant lastValue;
    QVariant lastPrevious;
    QString lastKey;
    QPointer<QWidget> lastWidget;
    /// Decide on events; unset agrees.
    std::function<int(const Context&)> rowDecides;
    std::function<int(const Context&)> mainDecides;
    std::unique_ptr<QWidget> window = std::make_unique<QWidget>();
    std::shared_ptr<mod_form_qt::FormContext> form = std::make_shared<mod_form_qt::FormContext>();

    EventBench()
    {
        new QVBoxLayout(window.get());
        form->mainRow = mod_form_qt::INFO(mod_form_qt::E_DIALOG);
        form->mainRow.callback = recorder(QStringLiteral("main"), &mainDecides);
        form->mainWidget = window.get();
        form->map = &map;
        form->armed = mod_form_qt::formArmed(window.get());
    }

    ~EventBench() { window.reset(); } // before the map

    Q_DISABLE_COPY_MOVE(EventBench)

    mod_form_qt::Callback recorder(const QString& who, std::function<int(const Context&)>* decides)
    {
        return mod_form_qt::ContextCallback([this, who, decides](const Context& context) {
            events.append(who + QLatin1Char(' ')
                          + mod_form_qt::callbackTypeNames.value(context.type));
            lastValue = context.value;
            lastPrevious = context.previous ? *context.previous : QVariant();
            lastKey = context.row.key;
            lastWidget = context.widget;
            const std::function<int(const Context&)> decide = *decides;
            return decide ? decide(context) : 1;
        });
    }

    /// Notes the row's widgets and, with its data, its value.
    mod_form_qt::RowHandle place(mod_form_qt::INFO row, const Widgets& widgets,
                                 const QVariant& options = {})
    {
        using namespace mod_form_qt;
        if (!IsCallbackSet(row.callback))
            row.callback = recorder(QStringLiteral("row"), &rowDecides);
        if (!row.key.isEmpty())
            map.insert(row.key, row.data);
        const QString recordKey = WIDGET_INFO::buildWidgetDataKey(row.key);
        auto record = map.value(recordKey).value<WIDGET_INFO>();
        int pos = 0;
        for (const auto& [widget, type] : widgets) {
            record.add(widget, type, type == E_LABEL ? E_LABEL : row.eleType, pos++, row.key,
                       row.attr, options, nullptr);
            window->layout()->addWidget(widget);
        }
        map.insert(recordKey, QVariant::fromValue(record));
        return std::make_shared<const RowContext>(RowContext {form, row});
    }

    /// Places and wires a row.
    /// \return  the names of the signals
    QStringList wire(const mod_form_qt::INFO& row, const Widgets& widgets,
                     const QVariant& options = {})
    {
        const mod_form_qt::RowHandle handle = place(row, widgets, options);
        QStringList names;
        for (const auto& [widget, type] : widgets)
            connectRowWidget(handle, widget, names);
        return names;
    }

    void show()
    {
        window->show();
        window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window.get()));
    }

    QVariant value(const QString& key) const { return mod_form_qt::INFO::getBaseValue(&map, key); }

    /// The calls for a change that is asked for first.
    static QStringList askedAndTold(const QString& before = QStringLiteral("kBeforeDataChanged"),
                                    const QString& after = QStringLiteral("kAfterDataChanged"))
    {
        return {"row " + before, "main " + before, "row " + after, "main " + after};
    }

    static QStringList told(const QString& after = QStringLiteral("kAfterDataChanged"))
    {
        return {"row " + after, "main " + after};
    }
};

/// Refuses one kind of event.
inline std::function<int(const EventBench::Context&)> refusing(mod_form_qt::CallbackType type)
{
    return [type](const EventBench::Context& context) { return context.type == type ? 0 : 1; };
}

/// Items with the texts and values a, b, c and so on; those named are selected.
inline mod_form_qt::T_LISTDATA letters(int count, const QString& selected = {})
{
    mod_form_qt::T_LISTDATA list;
    for (int index = 0; index < count; ++index) {
        const QString text(QChar('a' + index));
        list.push_back({text, selected.contains(text), text, {}});
    }
    return list;
}
