#pragma once

#include <QByteArrayView>
#include <QString>

namespace mod_form_qt {

/// How deep values of an INI file may be nested in one another. None is written as deep; the
/// toolkit reads each inside the one before, and at some ten thousand the stack is full.
inline constexpr int maxIniDepth = 1000;

/// Tells whether the toolkit can read an INI file without running out of stack or memory. What else
/// may be wrong with one, the toolkit copes with.
/// \param file  its bytes
/// \return      false if a value is nested deeper than `maxIniDepth`, or claims to hold more points
///              than there are bytes for, of which the toolkit would make room for each
bool isIniReadable(QByteArrayView file);

/// Tells whether an INI file may be given to the toolkit, to read it or to write to it, which reads
/// it first.
/// \param fileName  may be that of a file that is missing
/// \return          false if the name is empty, and for what isIniReadable() refuses
bool canOpenIni(const QString& fileName);

} // namespace mod_form_qt
