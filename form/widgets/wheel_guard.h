#pragma once

#include "form/export.h"

#include <QObject>
#include <QString>

#include <set>

namespace mod_form_qt::helper {

/// Keeps the wheel away from widgets without focus, so that it scrolls what is around them.
class MOD_FORM_QT_EXPORT DynamicWidgetEventFilter : public QObject
{
    Q_OBJECT

public:
    /// \param classNames  the classes that are guarded; empty guards every class
    explicit DynamicWidgetEventFilter(QObject* parent, std::set<QString> classNames = {});

    /// \return  true for a wheel event of a guarded widget without focus
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    std::set<QString> m_classNames;
};

} // namespace mod_form_qt::helper
