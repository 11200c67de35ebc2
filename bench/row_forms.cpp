#include "bench/row_forms.h"

#include <QBitArray>
#include <QFormLayout>
#include <QGridLayout>
#include <QLabel>
#include <QVBoxLayout>

using namespace mod_form_qt;

namespace bench {

namespace {

QString rowTitle(int row)
{
    return QStringLiteral("Feld %1:").arg(row);
}

QLayout* makeLayout(RowLayout layout, QWidget* parent)
{
    switch (layout) {
    case RowLayout::Grid:
        return new QGridLayout(parent);
    case RowLayout::Form:
        return new QFormLayout(parent);
    default:
        return new QVBoxLayout(parent);
    }
}

int openerOf(RowLayout layout)
{
    switch (layout) {
    case RowLayout::Grid:
        return E_LAYOUT_GRID;
    case RowLayout::Form:
        return E_LAYOUT_FORM;
    default:
        return E_LAYOUT_V;
    }
}

void addRow(QLayout* layout, int row, QLabel* label, QLineEdit* edit)
{
    if (auto* grid = qobject_cast<QGridLayout*>(layout)) {
        grid->addWidget(label, row, 0);
        grid->addWidget(edit, row, 1);
    } else if (auto* form = qobject_cast<QFormLayout*>(layout)) {
        form->addRow(label, edit);
    } else if (auto* box = qobject_cast<QVBoxLayout*>(layout)) {
        auto* line = new QHBoxLayout;
        line->addWidget(label);
        line->addWidget(edit);
        box->addLayout(line);
    }
}

/// What each widget of a row has in common.
struct RowProperties
{
    QString key;
    QBitArray flags;
    QVariant options;
};

void setProperties(QWidget* widget, int type, int pos, const RowProperties& row)
{
    static qlonglong serial = 0;
    widget->setProperty(WIDGET_INFO::typePropertyKey, type);
    widget->setProperty(WIDGET_INFO::typeExtPropertyKey, type);
    widget->setProperty(WIDGET_INFO::posPropertyKey, pos);
    widget->setProperty(WIDGET_INFO::paramNamePropertyKey, row.key);
    widget->setProperty(WIDGET_INFO::flagsPropertyKey, row.flags);
    widget->setProperty(WIDGET_INFO::optionsPropertyKey, row.options);
    widget->setProperty(WIDGET_INFO::serialPropertyKey, ++serial);
}

} // namespace

QString rowKey(int row)
{
    return QStringLiteral("feld_%1").arg(row);
}

QString rowText(int row)
{
    return QStringLiteral("Wert %1").arg(row);
}

void buildRowsByEngine(QWidget& window, RowLayout layout, int rows, QMap<QString, QVariant>& map,
                       INFO::MainFlags flags)
{
    QList<INFO> description;
    description.reserve(2 * rows + 2);
    description.append(INFO(openerOf(layout)));
    for (int row = 0; row < rows; ++row) {
        description.append(INFO(E_LINEEDIT, A_NONE, rowTitle(row), rowText(row), rowKey(row)));
        if (layout == RowLayout::Grid)
            description.append(INFO(E_GRID_NEXT_ROW));
    }
    description.append(INFO(E_LAYOUT_END));
    const Callback agree = ContextCallback([](const CallbackContext&) { return 1; });
    INFO::applyLayout(&window, false, QVariant(), description, flags, {}, &map, nullptr, agree);
}

QList<QLineEdit*> buildRowsByHand(QWidget& window, RowLayout layout, int rows)
{
    auto* outermost = new QVBoxLayout(&window);
    QLayout* const rowLayout = makeLayout(layout, nullptr);
    outermost->addLayout(rowLayout);
    QList<QLineEdit*> edits;
    edits.reserve(rows);
    RowProperties properties;
    properties.flags = QBitArray(256);
    for (int row = 0; row < rows; ++row) {
        const QString title = rowTitle(row);
        properties.key = rowKey(row);
        properties.options =
            QVariantMap {{QStringLiteral("plaintitle"), title}, {QStringLiteral("title"), title}};
        auto* label = new QLabel(title, &window);
        auto* edit = new QLineEdit(rowText(row), &window);
        label->setBuddy(edit);
        setProperties(label, E_LABEL, 0, properties);
        setProperties(edit, E_LINEEDIT, 1, properties);
        addRow(rowLayout, row, label, edit);
        edits.append(edit);
    }
    return edits;
}

} // namespace bench
