#pragma once

#include "form/mod_form_qt.h"

#include <QtTest>
#include <QtWidgets>

#include <functional>
#include <memory>

/// One event as a callback saw it.
struct SeenEvent
{
    mod_form_qt::CallbackType type;
    QString key;
    int eleType;
    QVariant value;
    bool fromMain;
};

/// A form in a window of its own, with a record of what its callbacks were told.
class TestForm
{
public:
    using Map = QMap<QString, QVariant>;

    Map map;
    std::vector<SeenEvent> seen;
    /// Decides on each event of the main callback; unset agrees.
    std::function<int(const mod_form_qt::CallbackContext&)> decide;
    mod_form_qt::INFO::Result result;
    std::unique_ptr<QWidget> window = std::make_unique<QWidget>();

    /// Builds the rows into the window and shows it.
    void build(const QList<mod_form_qt::INFO>& rows, mod_form_qt::INFO::MainFlags flags = {},
               const QVariant& title = {})
    {
        result = mod_form_qt::INFO::applyLayout(window.get(), true, title, rows, flags, {}, &map,
                                                nullptr, recorder(true));
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
    }

    /// A callback that records.
    mod_form_qt::Callback recorder(bool fromMain = false)
    {
        return mod_form_qt::ContextCallback(
            [this, fromMain](const mod_form_qt::CallbackContext& context) {
                seen.push_back(
                    {context.type, context.row.key, context.row.eleType, context.value, fromMain});
                return decide && fromMain ? decide(context) : 1;
            });
    }

    /// \return  how often the main callback was told of a kind of event
    int count(mod_form_qt::CallbackType type) const
    {
        return int(std::count_if(seen.begin(), seen.end(), [type](const SeenEvent& event) {
            return event.fromMain && event.type == type;
        }));
    }

    template <typename T>
    T* find(const QString& key) const
    {
        return window->findChild<T*>(key);
    }

    QWidget* widget(const QString& key, int type) const
    {
        return mod_form_qt::WIDGET_INFO::widget<QWidget>(&map, key, type);
    }

    ~TestForm() { window.reset(); } // before the map
};

/// List data from texts, each being its value as well; the one named is selected.
inline mod_form_qt::T_LISTDATA items(const QStringList& texts, const QStringList& selected = {})
{
    mod_form_qt::T_LISTDATA list;
    for (const QString& text : texts)
        list.push_back({text, selected.contains(text), text, {}});
    return list;
}

/// Replaces the text of an input as a user does: select all, type.
inline void retype(QWidget* widget, const QString& text)
{
    widget->setFocus();
    QTest::keyClick(widget, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(widget, text);
}
