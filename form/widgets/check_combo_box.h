#pragma once

#include "form/export.h"

#include <QComboBox>
#include <QList>
#include <QStandardItemModel>
#include <QVariant>

namespace mod_form_qt::helper {

/// A combo box whose items carry check marks. Closed, it shows the texts of the checked items;
/// while its list is open, a click or the space bar checks an item and leaves the list open. Which
/// item is the current one has no meaning.
class MOD_FORM_QT_EXPORT CheckComboBox : public QComboBox
{
    Q_OBJECT

public:
    /// A box without items.
    explicit CheckComboBox(QWidget* parent = nullptr);

    /// Appends an item.
    /// \param value   stored under `Qt::UserRole`
    /// \param notify  false: `checkedChanged` is not emitted for the change
    void addCheckItem(const QString& text, const QVariant& value, bool checked, bool notify = true);

    /// An index out of range has no effect.
    void setItemChecked(int index, bool checked, bool notify = true);
    /// \return  false for an index out of range
    bool isItemChecked(int index) const;

    /// \return  the item's data, invalid for an index out of range
    QVariant checkItemData(int index, int role = Qt::UserRole) const;
    /// An index out of range has no effect.
    void setCheckItemData(int index, const QVariant& value, int role = Qt::UserRole,
                          bool notify = true);

    /// \return  true if at least one item is checked
    bool hasChecked() const;
    /// \return  the `Qt::UserRole` data of the checked items, in their order
    QList<QVariant> checkedData() const;
    /// \return  the rows of the checked items, ascending
    QList<int> checkedIndices() const;
    /// \return  the texts of the checked items, joined with ", "
    QString checkedText() const;

    /// Takes the clicks and keys in the open list.
    bool eventFilter(QObject* object, QEvent* event) override;

signals:
    /// An item was checked, unchecked or changed otherwise.
    void checkedChanged();

protected:
    /// Shows the texts of the checked items.
    void paintEvent(QPaintEvent* event) override;
    /// The space bar, F4 and the arrows up and down open the list; other keys have no effect.
    void keyPressEvent(QKeyEvent* event) override;
    /// Leaves the wheel to what is around the box.
    void wheelEvent(QWheelEvent* event) override;

private:
    QStandardItem* itemAt(int index) const;
    void showChecked();
    void toggle(const QModelIndex& index);
    bool listMouseEvent(QMouseEvent* event);
    bool listKeyPress(QKeyEvent* event);

    QStandardItemModel* m_items;
    QPersistentModelIndex m_pressed; // the item under a mouse button that is down
    bool m_quiet = false; // changes are not reported
};

} // namespace mod_form_qt::helper
