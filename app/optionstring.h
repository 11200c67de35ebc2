#pragma once

#include "accounting/payment_import.h"

#include <QMap>
#include <QString>
#include <QVariant>

/// Forms the settings into the one text that the host reads as the first line of the export:
/// "export_version|1", then "|key|value" for each option in key order, and at the place of the key
/// "buchungs_konten" three fields for each booking role. Secrets and the form engine's own entries
/// are left out. Never fails.
QString optionsToHostText(const QMap<QString, QVariant>& options,
                          const payment_import::KontenMap& konten);

/// The text of one option for the host; \a value is a plain value or a list of selected values.
QString optionText(const QVariant& value);

/// A text without the marks at which the host splits the option string into fields.
QString withoutFieldMark(QString text);

/// The options with empty secrets, as they may be saved.
QMap<QString, QVariant> withoutSecrets(QMap<QString, QVariant> options);

/// The options as they may be shown in a debug line: without secrets, and with what variables and
/// lists hold in place of pointers.
QMap<QString, QVariant> shownOptions(const QMap<QString, QVariant>& options);
