#pragma once

#include <QObject>
#include <QString>

#include <set>

namespace mod_form_qt::helper {

/// Keeps the wheel away from widgets without focus, so that it scrolls what is around them.
class DynamicWidgetEventFilter : public QObject
{
    Q_OBJECT

public:
    /// \param classNames  the classes that are guarded; empty guards every class
    explicit DynamicWidgetEventFilter(QObject* parent, std::set<QString> classNames = {});

    bool eventFilter(QObject* object, QEvent* event) override;

private:
    std::set<QString> m_classNames;
};

} // namespace mod_form_qt::helper
