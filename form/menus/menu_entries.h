#pragma once

#include "form/export.h"
#include "form/model/info.h"

#include <QIcon>
#include <QKeySequence>

namespace mod_form_qt {

/// What an entry shows beside its text, by role.
using Roles = std::vector<std::pair<Qt::ItemDataRole, QVariant>>;

// Entries of menus, one at a time. What is added to a menu belongs to it; what is created without
// one belongs to the caller.

/// Makes an action and adds it to a menu.
/// \param menu             null: the action stands in no menu
/// \param before           the entry to stand before, null for the end
/// \param id               by which it is found again; a form stores its check state under it
/// \param checkState       1 checked, 0 not checked, negative: it cannot be checked
/// \param groupNo          in a form, checkable actions of one number exclude each other; negative
///                         for none
/// \param shortcut         empty for none
/// \param shortcutContext  a Qt::ShortcutContext, anything else leaves it alone
MOD_FORM_QT_EXPORT QAction* addAction(QMenu* menu, QAction* before, const QString& text,
                                      const MAP_KEY_TYPE& id = {}, int checkState = -1,
                                      int groupNo = -1, const Roles& roles = {},
                                      bool visible = true, bool enabled = true,
                                      const QKeySequence& shortcut = {}, int shortcutContext = -1);
/// As `addAction`, for an action that stands in no menu.
MOD_FORM_QT_EXPORT QAction* createAction(const QString& text, const MAP_KEY_TYPE& id = {},
                                         int checkState = -1, int groupNo = -1,
                                         const Roles& roles = {}, bool visible = true,
                                         bool enabled = true, const QKeySequence& shortcut = {},
                                         int shortcutContext = -1);

/// Makes a separator and adds it to a menu.
/// \param text  the title of the section, where the style shows such
MOD_FORM_QT_EXPORT QAction* addSeparator(QMenu* menu, QAction* before,
                                         const QString& text = QString(),
                                         const MAP_KEY_TYPE& id = {}, const Roles& roles = {},
                                         bool visible = true, bool enabled = true);
/// As `addSeparator`, for a separator that stands in no menu.
MOD_FORM_QT_EXPORT QAction* createSeparator(const QString& text = QString(),
                                            const MAP_KEY_TYPE& id = {}, const Roles& roles = {},
                                            bool visible = true, bool enabled = true);

/// Makes a menu and adds it to another one. It shows all its separators, also at its ends and next
/// to each other.
/// \param parent   null: the menu stands in no other
/// \param before   the entry to stand before, null for the end
/// \param visible  of the entry in the menu above, as is `enabled`
MOD_FORM_QT_EXPORT QMenu* addMenu(QMenu* parent, QAction* before, const QString& text,
                                  const MAP_KEY_TYPE& id = {}, const Roles& roles = {},
                                  bool visible = true, bool enabled = true);
/// As `addMenu`, for a menu that stands in no other.
MOD_FORM_QT_EXPORT QMenu* createMenu(const QString& text, const MAP_KEY_TYPE& id = {},
                                     const Roles& roles = {}, bool visible = true,
                                     bool enabled = true);

/// Makes an entry of a widget, which then belongs to it, and adds it to a menu.
/// \return  null for a null widget
MOD_FORM_QT_EXPORT QWidgetAction* addMenuWidget(QMenu* menu, QAction* before, QWidget* widget,
                                                const MAP_KEY_TYPE& id = {});
/// As `addMenuWidget`, for an entry that stands in no menu.
MOD_FORM_QT_EXPORT QWidgetAction* createMenuWidget(QWidget* widget, const MAP_KEY_TYPE& id = {});

/// Applies what an entry shows: text, icon (a QIcon, QPixmap or QImage), tips and help, font, and
/// what is read out. Other roles have no effect, nor has a null entry. An action, which has no
/// texts to be read out, keeps them as the properties "accessibleName" and "accessibleDescription".
MOD_FORM_QT_EXPORT void setRoles(QAction* action, const Roles& roles);
/// As above. The tips and the font of a menu are those of its entry in the menu above as well.
MOD_FORM_QT_EXPORT void setRoles(QMenu* menu, const Roles& roles);

} // namespace mod_form_qt
