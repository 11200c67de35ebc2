#pragma once

#include <QMap>
#include <QMetaType>
#include <QSharedPointer>
#include <QString>
#include <QVariant>

#include <tuple>
#include <utility>
#include <vector>

namespace mod_form_qt {

/// One item of a list row: the shown text, the selection or check state, the item's value, and
/// further data set on the item under the given roles.
using ListItem =
    std::tuple<QString, bool, QVariant, std::vector<std::pair<Qt::ItemDataRole, QVariant>>>;

/// The items of a list box, combo box, check combo box or menu button, in their order.
using T_LISTDATA = std::vector<ListItem>;

/// List data that lives in a variable of the caller's.
using T_LISTDATA_PTR = T_LISTDATA*;

/// A value that lives in a variable of the caller's.
using T_VARIANT_PTR = QVariant*;

/// A form data map that is owned together with others.
using T_VARMAP_SHARED_PTR = QSharedPointer<QMap<QString, QVariant>>;

} // namespace mod_form_qt

Q_DECLARE_METATYPE(mod_form_qt::T_LISTDATA)
Q_DECLARE_METATYPE(mod_form_qt::T_LISTDATA_PTR)
Q_DECLARE_METATYPE(mod_form_qt::T_VARIANT_PTR)
Q_DECLARE_METATYPE(mod_form_qt::T_VARMAP_SHARED_PTR)
