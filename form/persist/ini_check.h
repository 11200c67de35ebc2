#pragma once

#include <QByteArrayView>
#include <QString>

namespace mod_form_qt {

/// How deep values of an INI file may be nested in one another. None is written as deep; the
/// toolkit reads each inside the one before, and at some ten thousand the stack is full.
inline constexpr int maxIniDepth = 1000;

/// Tells whether the toolkit can read an INI file without running out of stack, memory or patience.
/// What else may be wrong with one, the toolkit copes with. A type of the program's own is read by
/// its own operators.
/// \param file  its bytes
/// \return      false if a value is nested deeper than `maxIniDepth`, claims to hold points or
///              rectangles that are not there, or a million elements that are not there, or makes a
///              region of other regions
bool isIniReadable(QByteArrayView file);

/// Tells whether an INI file may be given to the toolkit, to read it or to write to it, which reads
/// it first.
/// \param fileName  may be that of a file that is missing
/// \return          false if the name is empty, and for what isIniReadable() refuses
bool canOpenIni(const QString& fileName);

} // namespace mod_form_qt
