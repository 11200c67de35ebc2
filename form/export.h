#pragma once

/// \file
/// What makes names of the library known outside it.

/// \def MOD_FORM_QT_EXPORT
/// Marks what the shared library shows to its users; all else in it is hidden. Programs need the
/// mark as well: one that is compiled with hidden symbols would otherwise have variables of its own
/// in place of the library's. A static library hides nothing.
#ifdef MOD_FORM_QT_SHARED
#define MOD_FORM_QT_EXPORT __attribute__((visibility("default")))
#else
#define MOD_FORM_QT_EXPORT
#endif
