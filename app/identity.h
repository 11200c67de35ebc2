#pragma once

/// Names the application to Qt: organisation, name, version, domain. Call it once, after the
/// application object exists and before the first window.
void setApplicationIdentity();

/// Loads Qt's own texts (Yes, No, Cancel) in the desktop's language, and in that only: the
/// translation also holds parser and file messages, which a log should show untranslated elsewhere.
void installQtTranslation();
