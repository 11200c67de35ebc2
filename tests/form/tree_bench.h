#pragma once

#include "form/mod_form_qt.h"

#include <QtTest>
#include <QtWidgets>

/// The menu of a builder, which is deleted with this.
struct Tree
{
    mod_form_qt::TREE_MENU build;
    std::unique_ptr<QMenu> root;

    explicit Tree(bool parseText = true, bool parseActions = false)
        : build("Wurzel", parseText, parseActions)
        , root(build.menu())
    {
    }

    /// All entries with their depth, a submenu with a ">" behind it.
    QStringList entries() const
    {
        QStringList list;
        add(root.get(), 0, list);
        return list;
    }

    /// The first entry of that text, at any depth.
    QAction* action(const QString& text) const
    {
        std::vector<mod_form_qt::MenuEntry> all;
        mod_form_qt::showTree(root.get(), 0, &all);
        return mod_form_qt::findMenuEntry<QAction>(
            all, [&](const QAction& a) { return a.text() == text; });
    }

private:
    static void add(QMenu* menu, int depth, QStringList& list)
    {
        for (QAction* action : menu->actions()) {
            auto* submenu = action->menu<QMenu*>();
            list << QString(depth, '-') + action->text() + (submenu ? ">" : "");
            if (submenu)
                add(submenu, depth + 1, list);
        }
    }
};
