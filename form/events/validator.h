#pragma once

#include "form/events/form_context.h"
#include "form/export.h"

#include <QValidator>

namespace mod_form_qt::helper {

/// Puts what is typed into a line edit before the form's callbacks.
class MOD_FORM_QT_EXPORT Validator : public QValidator
{
public:
    /// \param form  main widget of the form
    /// \param edit  the line edit; owns the validator
    /// \param data  the form data map, which outlives the form
    Validator(QWidget* form, QWidget* edit, const INFO& row, const INFO& mainRow,
              QMap<QString, QVariant>* data);

    /// \param input  in/out: a callback may rewrite what was typed
    /// \return       Acceptable, or Invalid if a callback refuses
    State validate(QString& input, int& pos) const override;
    /// Leaves the text as it is: a callback corrects it, if anything does.
    void fixup(QString& input) const override;

private:
    QPointer<QWidget> m_form;
    QPointer<QWidget> m_edit;
    INFO m_row;
    INFO m_mainRow;
    QMap<QString, QVariant>* m_data;
    std::shared_ptr<bool> m_armed;
};

} // namespace mod_form_qt::helper
