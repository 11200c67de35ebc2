#include "form/widgets/check_combo_box.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QAccessibleWidget>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScopedValueRollback>
#include <QStandardItem>
#include <QStyledItemDelegate>
#include <QStylePainter>
#include <QWheelEvent>

namespace mod_form_qt::helper {

namespace {

constexpr Qt::ItemFlags checkItemFlags = Qt::ItemIsUserCheckable | Qt::ItemIsEnabled;

/// Shows where the keyboard is: items that cannot be selected would look all the same.
class CheckItemDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        if (option->state & QStyle::State_HasFocus)
            option->state |= QStyle::State_Selected;
    }
};

#if QT_CONFIG(accessibility)
/// The interface of an ordinary combo box would give the current item as the value.
class CheckComboBoxAccess : public QAccessibleWidget
{
public:
    explicit CheckComboBoxAccess(CheckComboBox* box)
        : QAccessibleWidget(box, QAccessible::ComboBox)
    {
    }

    QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Value ? box()->checkedText() : QAccessibleWidget::text(kind);
    }

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.expandable = true;
        state.expanded = listOpen();
        return state;
    }

    int childCount() const override { return 1; }

    QAccessibleInterface* child(int index) const override
    {
        return index == 0 ? QAccessible::queryAccessibleInterface(box()->view()) : nullptr;
    }

    int indexOfChild(const QAccessibleInterface* child) const override
    {
        return child != nullptr && child->object() == box()->view() ? 0 : -1;
    }

    QStringList actionNames() const override
    {
        return QStringList(showMenuAction()) + QAccessibleWidget::actionNames();
    }

    void doAction(const QString& name) override
    {
        if (name != showMenuAction())
            QAccessibleWidget::doAction(name);
        else if (listOpen())
            box()->hidePopup();
        else if (box()->isEnabled())
            box()->showPopup();
    }

private:
    CheckComboBox* box() const { return static_cast<CheckComboBox*>(object()); }

    bool listOpen() const { return box()->view()->isVisible(); }
};

QAccessibleInterface* accessOfCheckComboBox(const QString& className, QObject* object)
{
    auto* box = qobject_cast<CheckComboBox*>(object);
    if (box == nullptr || className != QLatin1String(CheckComboBox::staticMetaObject.className()))
        return nullptr;
    return new CheckComboBoxAccess(box);
}
#endif

} // namespace

CheckComboBox::CheckComboBox(QWidget* parent)
    : QComboBox(parent)
    , m_items(new QStandardItemModel(0, 1, this))
{
#if QT_CONFIG(accessibility)
    static const bool accessInstalled = [] {
        QAccessible::installFactory(accessOfCheckComboBox);
        return true;
    }();
    Q_UNUSED(accessInstalled)
#endif

    setModel(m_items);
    setItemDelegate(new CheckItemDelegate(this));
    // After the list's own filters are there: those would close the list.
    view()->installEventFilter(this);
    view()->viewport()->installEventFilter(this);

    connect(m_items, &QStandardItemModel::itemChanged, this, [this] {
        showChecked();
        if (!m_quiet)
            emit checkedChanged();
    });
    connect(m_items, &QAbstractItemModel::rowsInserted, this, &CheckComboBox::showChecked);
    connect(m_items, &QAbstractItemModel::rowsRemoved, this, &CheckComboBox::showChecked);
    connect(m_items, &QAbstractItemModel::modelReset, this, &CheckComboBox::showChecked);
    connect(m_items, &QAbstractItemModel::layoutChanged, this, &CheckComboBox::showChecked);
}

void CheckComboBox::addCheckItem(const QString& text, const QVariant& value, bool checked,
                                 bool notify)
{
    const QScopedValueRollback quiet(m_quiet, !notify || m_quiet);
    auto* item = new QStandardItem(text);
    item->setFlags(checkItemFlags);
    item->setData(value, Qt::UserRole);
    item->setCheckState(Qt::Unchecked);
    m_items->appendRow(item);
    // Only now, as only an item that is in the model reports a change.
    if (checked)
        item->setCheckState(Qt::Checked);
}

void CheckComboBox::setItemChecked(int index, bool checked, bool notify)
{
    setCheckItemData(index, checked ? Qt::Checked : Qt::Unchecked, Qt::CheckStateRole, notify);
}

bool CheckComboBox::isItemChecked(int index) const
{
    const QStandardItem* item = itemAt(index);
    return item != nullptr && item->checkState() == Qt::Checked;
}

QVariant CheckComboBox::checkItemData(int index, int role) const
{
    const QStandardItem* item = itemAt(index);
    return item != nullptr ? item->data(role) : QVariant();
}

void CheckComboBox::setCheckItemData(int index, const QVariant& value, int role, bool notify)
{
    QStandardItem* item = itemAt(index);
    if (item == nullptr)
        return;
    const QScopedValueRollback quiet(m_quiet, !notify || m_quiet);
    item->setData(value, role);
}

bool CheckComboBox::hasChecked() const
{
    return !checkedIndices().isEmpty();
}

QList<QVariant> CheckComboBox::checkedData() const
{
    QList<QVariant> values;
    const QList<int> rows = checkedIndices();
    for (const int row : rows)
        values << checkItemData(row);
    return values;
}

QList<int> CheckComboBox::checkedIndices() const
{
    QList<int> rows;
    for (int row = 0; row < m_items->rowCount(); ++row) {
        if (isItemChecked(row))
            rows << row;
    }
    return rows;
}

QString CheckComboBox::checkedText() const
{
    QStringList texts;
    const QList<int> rows = checkedIndices();
    for (const int row : rows)
        texts << itemText(row);
    return texts.join(QStringLiteral(", "));
}

QStandardItem* CheckComboBox::itemAt(int index) const
{
    // QStandardItemModel::item makes no check of its own against a row of -1 in every version.
    return index >= 0 && index < m_items->rowCount() ? m_items->item(index) : nullptr;
}

void CheckComboBox::showChecked()
{
    update();
#if QT_CONFIG(accessibility)
    if (isVisible()) {
        QAccessibleValueChangeEvent changed(this, checkedText());
        QAccessible::updateAccessibility(&changed);
    }
#endif
}

void CheckComboBox::toggle(const QModelIndex& index)
{
    constexpr Qt::ItemFlags needed = checkItemFlags;
    if (index.isValid() && (index.flags() & needed) == needed)
        setItemChecked(index.row(), !isItemChecked(index.row()));
}

bool CheckComboBox::eventFilter(QObject* object, QEvent* event)
{
    if (object == view()->viewport()) {
        switch (event->type()) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick:
        case QEvent::MouseButtonRelease:
            if (listMouseEvent(static_cast<QMouseEvent*>(event)))
                return true;
            break;
        default:
            break;
        }
    } else if (object == view() && event->type() == QEvent::ShortcutOverride) {
        // The list would take Return here already, and select the item that the keyboard is at.
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            event->accept();
            return true;
        }
    } else if (object == view() && event->type() == QEvent::KeyPress) {
        if (listKeyPress(static_cast<QKeyEvent*>(event)))
            return true;
    }
    return QComboBox::eventFilter(object, event);
}

bool CheckComboBox::listMouseEvent(QMouseEvent* event)
{
    const QModelIndex index = view()->indexAt(event->position().toPoint());
    if (event->type() != QEvent::MouseButtonRelease) {
        m_pressed = event->button() == Qt::LeftButton ? index : QModelIndex();
        if (index.isValid())
            view()->setCurrentIndex(index);
        return index.isValid();
    }
    // The release that ends the click by which the list was opened is none of an item.
    if (event->button() == Qt::LeftButton && m_pressed.isValid() && index == m_pressed)
        toggle(index);
    m_pressed = QModelIndex();
    return true;
}

bool CheckComboBox::listKeyPress(QKeyEvent* event)
{
    const bool alt = event->modifiers() & Qt::AltModifier;
    switch (event->key()) {
    case Qt::Key_Space:
    case Qt::Key_Select:
        toggle(view()->currentIndex());
        return true;
    case Qt::Key_Up:
    case Qt::Key_Down:
        if (!alt)
            return false;
        [[fallthrough]];
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_F4:
        hidePopup();
        return true;
    default:
        return false;
    }
}

void CheckComboBox::paintEvent(QPaintEvent*)
{
    QStylePainter painter(this);
    painter.setPen(palette().color(QPalette::Text));

    QStyleOptionComboBox option;
    initStyleOption(&option);
    option.currentIcon = {};
    QString text = checkedText();
    if (text.isEmpty() && !placeholderText().isEmpty()) {
        option.palette.setBrush(QPalette::ButtonText, option.palette.placeholderText());
        text = placeholderText();
    }
    painter.drawComplexControl(QStyle::CC_ComboBox, option);

    const QRect field =
        style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this);
    // Styles keep a pixel free on both sides.
    option.currentText = option.fontMetrics.elidedText(text, Qt::ElideRight, field.width() - 2);
    painter.drawControl(QStyle::CE_ComboBoxLabel, option);
}

void CheckComboBox::keyPressEvent(QKeyEvent* event)
{
    // Nothing reaches the base class: its keys would go through the items one by one, without a
    // visible effect.
    switch (event->key()) {
    case Qt::Key_Space:
    case Qt::Key_Select:
    case Qt::Key_F4:
    case Qt::Key_Up:
    case Qt::Key_Down:
        showPopup();
        event->accept();
        break;
    default:
        event->ignore();
        break;
    }
}

void CheckComboBox::wheelEvent(QWheelEvent* event)
{
    event->ignore();
}

} // namespace mod_form_qt::helper
