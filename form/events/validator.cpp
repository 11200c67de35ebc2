#include "form/events/validator.h"

namespace mod_form_qt::helper {

Validator::Validator(QWidget* form, QWidget* edit, const INFO& row, const INFO& mainRow,
                     QMap<QString, QVariant>* data)
    : QValidator(edit)
    , m_form(form)
    , m_edit(edit)
    , m_row(row)
    , m_mainRow(mainRow)
    , m_data(data)
    , m_armed(formArmed(form))
{
}

QValidator::State Validator::validate(QString& input, int&) const
{
    if (m_armed && !*m_armed)
        return Acceptable;
    // Code that sets a text silently, such as a value that comes back, asks nobody.
    if (m_edit && m_edit->signalsBlocked())
        return Acceptable;
    QVariant text(input);
    if (BeforeCallBack(m_row, m_mainRow, m_form, m_edit, input, kValidate, m_data, &text, nullptr)
        == 0)
        return Invalid;
    input = text.toString();
    return Acceptable;
}

void Validator::fixup(QString&) const { }

} // namespace mod_form_qt::helper
