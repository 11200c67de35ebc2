#pragma once

#include "form/mod_form_qt.h"

#include <QLineEdit>
#include <QWidget>

namespace bench {

/// How the rows of a large form are laid out.
enum class RowLayout { Box, Grid, Form };

QString rowKey(int row);
QString rowText(int row);

/// Builds rows of a label and a line edit into a widget by the form engine.
/// \param map  outlives the widget
void buildRowsByEngine(QWidget& window, RowLayout layout, int rows, QMap<QString, QVariant>& map,
                       mod_form_qt::INFO::MainFlags flags = {});

/// Builds the same rows in plain Qt, with the properties that the engine gives its widgets.
QList<QLineEdit*> buildRowsByHand(QWidget& window, RowLayout layout, int rows);

} // namespace bench
