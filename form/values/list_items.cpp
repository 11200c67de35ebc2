#include "form/values/list_items.h"

#include "form/values/list_widgets.h"
#include "form/widgets/check_combo_box.h"

#include <QComboBox>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>

#include <algorithm>

namespace mod_form_qt {

namespace {

int toIndex(const QVariant& stored)
{
    return stored.isValid() ? stored.toInt() : -1;
}

class ComboItems : public Items
{
public:
    explicit ComboItems(QComboBox* box)
        : m_box(box)
    {
    }

    int count() const override { return m_box->count(); }

    int listIndex(int place) const override
    {
        return toIndex(m_box->itemData(place, listIndexRole));
    }

    QVariant value(int place) const override { return m_box->itemData(place); }

    bool isMarked(int place) const override { return place == m_box->currentIndex(); }

    bool isMulti() const override { return false; }

    void setMarks(const std::vector<bool>& marks) override
    {
        const auto first = std::find(marks.begin(), marks.end(), true);
        m_box->setCurrentIndex(first == marks.end() ? -1 : int(first - marks.begin()));
    }

private:
    QComboBox* m_box;
};

class CheckComboItems : public Items
{
public:
    explicit CheckComboItems(helper::CheckComboBox* box)
        : m_box(box)
    {
    }

    int count() const override { return m_box->count(); }

    int listIndex(int place) const override
    {
        return toIndex(m_box->checkItemData(place, listIndexRole));
    }

    QVariant value(int place) const override { return m_box->checkItemData(place); }

    bool isMarked(int place) const override { return m_box->isItemChecked(place); }

    bool isMulti() const override { return true; }

    void setMarks(const std::vector<bool>& marks) override
    {
        for (int place = 0; place < int(marks.size()); ++place) {
            if (m_box->isItemChecked(place) != marks[place])
                m_box->setItemChecked(place, marks[place]);
        }
    }

private:
    helper::CheckComboBox* m_box;
};

class ListItems : public Items
{
public:
    ListItems(QListWidget* list, const std::bitset<256>& attr)
        : m_list(list)
        , m_checkable(isBitSet(attr, A_CHECKBOX))
        , m_multi(isMultiSelection(E_LISTBOX, attr))
    {
    }

    int count() const override { return m_list->count(); }

    int listIndex(int place) const override
    {
        return toIndex(m_list->item(place)->data(listIndexRole));
    }

    QVariant value(int place) const override { return m_list->item(place)->data(Qt::UserRole); }

    bool isMarked(int place) const override
    {
        return m_checkable ? m_list->item(place)->checkState() == Qt::Checked : selected()[place];
    }

    bool isMulti() const override { return m_multi; }

    void setMarks(const std::vector<bool>& marks) override
    {
        if (!m_checkable) {
            select(marks);
            return;
        }
        for (int place = 0; place < int(marks.size()); ++place) {
            if (isMarked(place) != marks[place])
                m_list->item(place)->setCheckState(marks[place] ? Qt::Checked : Qt::Unchecked);
        }
    }

private:
    // All at once: an item alone is looked up among all that are selected.

    const std::vector<bool>& selected() const
    {
        if (m_selected.empty()) {
            m_selected.resize(m_list->count());
            const QItemSelection selection = m_list->selectionModel()->selection();
            for (const QItemSelectionRange& range : selection)
                std::fill(m_selected.begin() + range.top(), m_selected.begin() + range.bottom() + 1,
                          true);
        }
        return m_selected;
    }

    void select(const std::vector<bool>& marks)
    {
        if (marks == selected() || m_list->selectionMode() == QAbstractItemView::NoSelection)
            return;
        const auto index = [this](auto place) { return m_list->model()->index(int(place), 0); };
        QItemSelection selection;
        for (auto from = std::find(marks.begin(), marks.end(), true); from != marks.end();) {
            const auto to = std::find(from, marks.end(), false);
            selection.append(
                QItemSelectionRange(index(from - marks.begin()), index(to - marks.begin() - 1)));
            from = std::find(to, marks.end(), true);
        }
        m_selected.clear();
        m_list->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    }

    QListWidget* m_list;
    mutable std::vector<bool> m_selected; // empty: not known
    bool m_checkable;
    bool m_multi;
};

class MenuItems : public Items
{
public:
    MenuItems(QMenu* menu, const std::bitset<256>& attr)
        : m_multi(isMultiSelection(E_MENU_BUTTON, attr))
    {
        for (QAction* action : menu->actions()) {
            if (action->isCheckable())
                m_actions.push_back(action);
        }
    }

    int count() const override { return int(m_actions.size()); }

    int listIndex(int place) const override
    {
        return toIndex(m_actions[place]->property(listIndexPropertyKey));
    }

    QVariant value(int place) const override { return m_actions[place]->data(); }

    bool isMarked(int place) const override { return m_actions[place]->isChecked(); }

    bool isMulti() const override { return m_multi; }

    void setMarks(const std::vector<bool>& marks) override
    {
        for (int place = 0; place < int(marks.size()); ++place)
            m_actions[place]->setChecked(marks[place]);
    }

private:
    std::vector<QAction*> m_actions;
    bool m_multi;
};

} // namespace

std::unique_ptr<Items> itemsOf(QWidget* widget, const std::bitset<256>& attr)
{
    if (auto* checkCombo = qobject_cast<helper::CheckComboBox*>(widget))
        return std::make_unique<CheckComboItems>(checkCombo);
    if (auto* combo = qobject_cast<QComboBox*>(widget))
        return std::make_unique<ComboItems>(combo);
    if (auto* list = qobject_cast<QListWidget*>(widget))
        return std::make_unique<ListItems>(list, attr);
    const auto* button = qobject_cast<QPushButton*>(widget);
    if (button && button->menu())
        return std::make_unique<MenuItems>(button->menu(), attr);
    return nullptr;
}

} // namespace mod_form_qt
