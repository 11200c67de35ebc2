#pragma once

#include "form/mod_form_qt.h"
#include "form/values/row_value.h"

#include <QVBoxLayout>

/// A form whose rows are made by hand, so that the values can be tested without the builder.
struct HandMadeForm
{
    QMap<QString, QVariant> map;
    QWidget window;
    QVBoxLayout* layout = new QVBoxLayout(&window);

    /// Registers a widget as the next one of a row.
    template <typename W>
    W* put(W* widget, int type, int eleType, const QString& key, const std::bitset<256>& attr = {},
           const QVariantMap& options = {})
    {
        using namespace mod_form_qt;
        layout->addWidget(widget);
        if (window.isVisible())
            widget->show();
        const QString record = WIDGET_INFO::buildWidgetDataKey(key);
        WIDGET_INFO row = WIDGET_INFO::widgets(&map, key);
        row.add(widget, type, eleType, int(row.size()), key, attr, options, nullptr);
        map.insert(record, QVariant::fromValue(row));
        return widget;
    }

    /// Makes and registers the widget of a plain row.
    template <typename W>
    W* add(int eleType, const QString& key, const std::bitset<256>& attr = {},
           const QVariantMap& options = {})
    {
        return put(new W(&window), eleType, eleType, key, attr, options);
    }

    /// Ties a row to a variable, as building it does.
    template <typename T>
    void bind(const QString& key, T* variable)
    {
        using namespace mod_form_qt;
        const QVariant pointer = QVariant::fromValue(variable);
        map.insert(key, pointer);
        const WIDGET_INFO row = WIDGET_INFO::widgets(&map, key);
        for (const QPointer<QWidget>& widget : row.widgets())
            widget->setProperty(boundPropertyKey, pointer);
    }

    /// Shows the window and waits until it is the active one.
    bool show()
    {
        window.show();
        window.activateWindow();
        return QTest::qWaitForWindowActive(&window);
    }
};

/// Counts the changes that widgets raise, and tells whether the last was raised by hand.
struct Raised
{
    int count = 0;
    bool active = false;

    template <typename W, typename Signal>
    Raised& listen(W* widget, Signal signal)
    {
        QObject::connect(widget, signal, widget, [this] {
            ++count;
            active = mod_form_qt::emitHelper::active;
        });
        return *this;
    }
};

/// List data of texts whose values are the texts in lower case.
inline mod_form_qt::T_LISTDATA letters(const QString& texts, const QString& marked = QString())
{
    mod_form_qt::T_LISTDATA list;
    for (const QChar letter : texts)
        list.push_back({QString(letter), marked.contains(letter), QString(letter.toLower()), {}});
    return list;
}

/// The texts of the marked items.
inline QString marks(const mod_form_qt::T_LISTDATA& list)
{
    QString marked;
    for (const auto& [text, selected, value, roles] : list)
        marked += selected ? text : QString();
    return marked;
}

inline QString marks(const QVariant& list)
{
    return marks(mod_form_qt::INFO::DATA<mod_form_qt::T_LISTDATA>(list).value());
}

/// The values of the marked items as one text.
inline QString joined(const QVariantList& values)
{
    QString text;
    for (const QVariant& value : values)
        text += value.toString();
    return text;
}
