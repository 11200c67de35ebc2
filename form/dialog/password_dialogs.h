#pragma once

#include "form/export.h"

#include <QLineEdit>
#include <QString>

class QWidget;

namespace mod_form_qt {

/// Modal dialog that asks for a known password. It is clear text from end to end: nothing is
/// stored, hashed or encrypted, and no blanks can be typed at either end of it. The field starts
/// empty, whatever `pwd` holds.
/// \param title        of the window; empty for a common one
/// \param text         what is asked for, simple markup; empty for a common text
/// \param pwd          out: the password that was accepted; unchanged if none was
/// \param showOptions  the password can be shown
/// \param expected     what is accepted; empty accepts anything
/// \param echo         how the field shows what is typed, unless the user has it shown
/// \return             not 0 if the dialog was accepted
MOD_FORM_QT_EXPORT int checkPWD(QWidget* parent, QString title, QString text, QString& pwd,
                                bool showOptions = false, const QString& expected = QString(),
                                QLineEdit::EchoMode echo = QLineEdit::Password);

/// Modal dialog in which the user sets a password, which is typed twice; else as checkPWD().
/// \param title        of the window; empty for a common one
/// \param text         what is asked for, simple markup; empty for a common text
/// \param pwd          out: the password that was accepted; unchanged if none was
/// \param showOptions  the password can be shown and generated. The generator starts as it was last
///                     used in this run of the program
/// \param minChars     length that it has at least
/// \param allowEmpty   an empty one is accepted as well; it is to delete the password
/// \param echo         how the fields show what is typed, unless the user has it shown
/// \return             not 0 if the dialog was accepted
MOD_FORM_QT_EXPORT int createPWD(QWidget* parent, QString title, QString text, QString& pwd,
                                 bool showOptions = true, int minChars = 6, bool allowEmpty = false,
                                 QLineEdit::EchoMode echo = QLineEdit::Password);

/// checkPWD() and createPWD() in one, whose parameters are those of the same names.
/// \param create  true: sets a password, to which `minChars` and `allowEmpty` apply. false: asks
///                for `expected`
/// \return        not 0 if the dialog was accepted
MOD_FORM_QT_EXPORT int checkCreatePWD(QWidget* parent, QString title, QString text, QString& pwd,
                                      bool create, bool showOptions, int minChars, bool allowEmpty,
                                      const QString& expected, QLineEdit::EchoMode echo);

} // namespace mod_form_qt
