#pragma once

#include <QByteArrayView>
#include <QString>

#include <functional>

namespace mod_form_qt {

/// Calls \a visit with each text that the toolkit's reader of INI files finds in the values of a
/// file, unescaped, and for lists with each element; before any of them becomes a value. A text
/// that stands for a value of another kind begins with `@`.
/// \param file   its bytes
/// \param visit  returns false to end it
/// \return       false if \a visit has returned it
bool visitIniTexts(QByteArrayView file, const std::function<bool(const QString&)>& visit);

} // namespace mod_form_qt
