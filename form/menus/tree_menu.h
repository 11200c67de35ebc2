#pragma once

#include "form/export.h"

#include <QMap>
#include <QMenu>
#include <QPointer>
#include <QString>
#include <QVariant>

namespace mod_form_qt {

/// Builds a menu from lines of text. What it makes belongs to the menu it stands in; the root menu
/// belongs to the caller, actions and menus that are put in stay with whoever made them. Copies
/// build on in the same menus.
///
/// A text may say what its entry is like. `{{key}{value}}` is one of the attributes of `setAttr`,
/// and codes in brackets are short for some of them: `[s]` a separator, `[w]` a widget, `[x;1;2]`
/// a checkable entry, here a checked one of group 2.
class MOD_FORM_QT_EXPORT TREE_MENU
{
public:
    /// The line that goes back to the root menu.
    inline static const QString endl = QStringLiteral("\n");

    /// \param parseText     the texts of new entries may hold attributes; without it each line of
    ///                      `<<` opens a submenu
    /// \param parseActions  so may the texts of actions that are put in
    explicit TREE_MENU(const QString& title = QString(), bool parseText = true,
                       bool parseActions = false);

    /// Adds a submenu and goes into it. A line that ends in "\n" and a separator stay in the
    /// current menu instead, as an item of it. `endl` alone goes back to the root.
    TREE_MENU& operator<<(const QString& text);
    /// Adds an item. One whose line ends in "\n" is the last of its menu: what follows stands in
    /// the root again. So does `endl` alone.
    TREE_MENU& operator>>(const QString& text);
    /// Adds an action of the caller's; null adds nothing.
    TREE_MENU& operator<<(QAction* action);
    /// Adds a menu of the caller's and stays where it is; null adds nothing.
    TREE_MENU& operator<<(QMenu* menu);
    /// Adds a widget, which then belongs to the menu; null adds nothing.
    TREE_MENU& operator<<(QWidget* widget);

    /// \return  the root menu, null once it has been deleted
    QMenu* menu() const { return m_root; }

    /// As `menu`.
    operator QMenu*() const { return m_root; }

    /// Takes attributes out of a text.
    /// \param text        in/out: what is understood is removed
    /// \param attributes  out: gets them added. A trailing "\n" is "last", values in braces are
    ///                    texts
    static void parse(QString& text, QMap<QString, QVariant>& attributes);

    /// Applies attributes; unknown ones, and values that make no sense, have no effect.
    /// \param menu    may be null. It is shown, hidden, enabled and disabled by its entry in the
    ///                menu above
    /// \param action  may be null
    static void setAttr(const QMap<QString, QVariant>& attributes, QMenu* menu, QAction* action);

private:
    QAction* newAction(const QString& text, const QMap<QString, QVariant>& attributes) const;

    QPointer<QMenu> m_root;
    QPointer<QMenu> m_current;
    bool m_parseText;
    bool m_parseActions;
};

} // namespace mod_form_qt
