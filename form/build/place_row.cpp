#include "form/build/place_row.h"

#include "form/build/layouts.h"
#include "form/events/connect.h"
#include "form/values/row_value.h"

#include <QAbstractButton>
#include <QBoxLayout>
#include <QFormLayout>
#include <QGridLayout>
#include <QLabel>

namespace mod_form_qt {

namespace {

using Option = INFO::Option;

/// Notes whether a row may be left alone when it is given the value that the map has.
/// \param shared  another row has that key
void notePlain(const PreparedRow& row, bool bound, bool shared, BuildContext& context)
{
    if (shared)
        context.plainKeys.remove(row.row.key);
    else if (!bound && !row.row.key.isEmpty() && isValueRow(row.row.eleType)
             && !row.has(A_SKIP_SETDATA))
        context.plainKeys.insert(row.row.key);
}

/// The widgets that have no place yet.
std::vector<RowWidget> unplaced(const BuiltRow& built)
{
    std::vector<RowWidget> widgets;
    for (const RowWidget& widget : built.widgets) {
        if (!widget.placed)
            widgets.push_back(widget);
    }
    return widgets;
}

bool isLabelOf(const RowWidget& widget, const PreparedRow& row)
{
    return widget.type == E_LABEL && row.row.eleType != E_LABEL;
}

// ---------------------------------------------------------------- the record

WIDGET_INFO& recordOf(const QString& key, QMap<QString, QVariant>* map)
{
    // Rows of one key, such as all those without one, share a record.
    QVariant& entry = (*map)[WIDGET_INFO::buildWidgetDataKey(key)];
    if (!INFO::isWidgetInfo(entry))
        entry = QVariant::fromValue(WIDGET_INFO());
    return *static_cast<WIDGET_INFO*>(entry.data());
}

void record(const PreparedRow& row, const BuiltRow& built, BuildContext& context)
{
    WIDGET_INFO& info = recordOf(row.row.key, context.map());
    const QVariant options = row.option.map();
    const bool bound = INFO::isVariantPtr(row.row.data) || INFO::isListDataPtr(row.row.data);
    notePlain(row, bound, !info.empty(), context);
    bool emits = true; // the first widget that has the value
    int pos = 0;
    for (const RowWidget& widget : built.widgets) {
        const bool label = isLabelOf(widget, row);
        std::bitset<256> attr = row.row.attr;
        if (widget.skipSetData)
            attr |= A_SKIP_SETDATA;
        info.add(widget.widget, widget.type, label ? E_LABEL : row.row.eleType,
                 widget.pos >= 0 ? widget.pos : pos, row.row.key, attr, options,
                 emits && !label && !widget.skipSetData ? &context.pendingEmits : nullptr);
        emits = emits && (label || widget.skipSetData);
        if (bound && !label)
            widget.widget->setProperty(boundPropertyKey, row.row.data);
        if (!label && !row.row.key.isEmpty())
            widget.widget->setObjectName(row.row.key);
        ++pos;
    }
}

// ---------------------------------------------------------------- accessibility

QString genericName(int type)
{
    switch (type) {
    case E_HLINE:
    case E_VLINE:
        return INFO::tr("Trennlinie");
    case E_TABWIDGET:
        return INFO::tr("Registerkarten");
    case E_IMAGE:
        return INFO::tr("Bild");
    case E_MENUBAR:
        return INFO::tr("Menüleiste");
    case E_STATUSBAR:
        return INFO::tr("Statusleiste");
    case E_MULTICONFIG:
        return INFO::tr("Einstellungen");
    default:
        return {};
    }
}

/// What a screen reader calls the widgets of a row. One without a title is taken to belong to what
/// stands before it, as a date does that follows its check box.
QString nameOf(const PreparedRow& row, const OpenLayout* open)
{
    if (!row.plainTitle.isEmpty())
        return row.plainTitle;
    QString generic = genericName(row.row.eleType);
    if (!generic.isEmpty())
        return generic;
    if (open && !open->lastTitle.isEmpty())
        return open->lastTitle;
    return row.row.key;
}

bool isPlainButton(const RowWidget& widget)
{
    return widget.type == E_BUTTON || widget.type == E_CHECKBOX || widget.type == E_RADIOBUTTON;
}

/// Keeps the title of a row for inputs without one that follow it.
void noteTitle(const PreparedRow& row, const BuiltRow& built, OpenLayout& open)
{
    const RowWidget& first = built.widgets.front();
    if (row.plainTitle.isEmpty()) {
        // Some inputs, a list box among them, are called what they show unless a label is theirs.
        if (open.lastLabel && !open.lastLabel->buddy()
            && first.widget->focusPolicy() != Qt::NoFocus)
            open.lastLabel->setBuddy(first.widget);
    } else if (first.type != E_BUTTON || built.widgets.size() > 1) {
        open.lastTitle = row.plainTitle;
        open.lastLabel = row.row.eleType == E_LABEL ? qobject_cast<QLabel*>(first.widget) : nullptr;
    }
}

void setNames(const PreparedRow& row, const BuiltRow& built, BuildContext& context)
{
    const bool mandatory = row.option.value(Option::mandatoryKey).toBool();
    const QString name = nameOf(row, context.top());
    for (const RowWidget& widget : built.widgets) {
        const auto* button = qobject_cast<QAbstractButton*>(widget.widget);
        const QString text = button ? button->text() : QString();
        // A button of its own is called what it says, one beside a field what the field is called.
        const bool alone = row.row.eleType != E_MULTICONFIG;
        if (alone && row.plainTitle.isEmpty() && !text.isEmpty())
            continue;
        if (widget.widget->accessibleName().isEmpty())
            widget.widget->setAccessibleName(name);
        if (isLabelOf(widget, row))
            continue;
        if (mandatory)
            widget.widget->setAccessibleDescription(INFO::tr("Pflichtfeld"));
        else if (button && isPlainButton(widget) && text != name)
            widget.widget->setAccessibleDescription(text);
    }
    if (context.top())
        noteTitle(row, built, *context.top());
}

// ---------------------------------------------------------------- the place

Qt::Alignment alignmentOf(const RowWidget& widget, int index, const PreparedRow& row,
                          const BuildContext& context)
{
    return INFO::align(widget.widget, index, row.option, context.defaultAlign,
                       context.defaultTypeAlign);
}

/// Puts widgets side by side into a box without margins.
/// \return  the largest stretch factor among them
int fillBox(QBoxLayout* box, const std::vector<RowWidget>& widgets, std::size_t first,
            const PreparedRow& row, const BuildContext& context)
{
    box->setContentsMargins(0, 0, 0, 0);
    int largest = 0;
    for (std::size_t i = first; i < widgets.size(); ++i) {
        const int stretch = INFO::stretch(widgets[i].widget, int(i), row.option);
        box->addWidget(widgets[i].widget, stretch, alignmentOf(widgets[i], int(i), row, context));
        largest = std::max(largest, stretch);
    }
    return largest;
}

void placeInForm(QFormLayout* form, const std::vector<RowWidget>& widgets, const PreparedRow& row,
                 const BuildContext& context)
{
    auto* label = widgets.front().type == E_LABEL && widgets.size() > 1
        ? qobject_cast<QLabel*>(widgets.front().widget)
        : nullptr;
    const std::size_t first = label ? 1 : 0;
    if (widgets.size() - first == 1) {
        QWidget* const field = widgets[first].widget;
        if (label)
            form->addRow(label, field);
        else
            form->addRow(field);
        // Not by the widget, for which the layout would be searched from its first row.
        form->itemAt(form->rowCount() - 1,
                     label ? QFormLayout::FieldRole : QFormLayout::SpanningRole)
            ->setAlignment(alignmentOf(widgets[first], int(first), row, context));
        return;
    }
    auto* box = new QHBoxLayout;
    fillBox(box, widgets, first, row, context);
    if (label)
        form->addRow(label, box);
    else
        form->addRow(box);
}

void placeWidgets(const std::vector<RowWidget>& widgets, const PreparedRow& row,
                  BuildContext& context)
{
    if (auto* form = openAs<QFormLayout>(context)) {
        placeInForm(form, widgets, row, context);
        return;
    }
    if (auto* column = openAs<QVBoxLayout>(context); column && widgets.size() > 1) {
        auto* line = new QHBoxLayout;
        const int stretch = fillBox(line, widgets, 0, row, context);
        column->addLayout(line, stretch);
        return;
    }
    for (std::size_t i = 0; i < widgets.size(); ++i) {
        // Only one widget can reach to the last column; a label before it takes one.
        const bool last = i + 1 == widgets.size();
        const int span = row.gridSpan < 0 && !last ? 1 : row.gridSpan;
        addWidgetToLayout(widgets[i].widget, INFO::stretch(widgets[i].widget, int(i), row.option),
                          alignmentOf(widgets[i], int(i), row, context), row.gridColumn, span,
                          context);
    }
}

void setBuddies(const std::vector<RowWidget>& widgets)
{
    for (std::size_t i = 0; i + 1 < widgets.size(); ++i) {
        if (auto* label = qobject_cast<QLabel*>(widgets[i].widget))
            label->setBuddy(widgets[i + 1].widget);
    }
}

void applyProperties(const PreparedRow& row, const BuiltRow& built, BuildContext& context)
{
    const QVariant locale = row.option.value(Option::localeKey);
    int index = 0;
    for (const RowWidget& widget : built.widgets) {
        if (locale.isValid() && widget.widget->locale() != locale.toLocale())
            widget.widget->setLocale(locale.toLocale());
        if (!isLabelOf(widget, row))
            INFO::addWidgetAttr(widget.widget, true, context.form->flags, row.row.attr,
                                row.heightLines, &context.buttonGroups,
                                context.form->mainWidget
                                    ? static_cast<QObject*>(context.form->mainWidget)
                                    : context.outermost);
        INFO::setProps(widget.widget, index++, row.option);
        // The page of a tab widget is hidden by its tab.
        if (row.has(A_HIDE) && widget.type != E_TAB)
            widget.widget->hide();
    }
}

bool raisesNothing(int eleType)
{
    return eleType == E_LABEL || eleType == E_IMAGE || eleType == E_HLINE || eleType == E_VLINE
        || isLayoutOpener(eleType);
}

void wire(const PreparedRow& row, BuiltRow& built, BuildContext& context)
{
    if (built.wired || raisesNothing(row.row.eleType))
        return;
    built.wired = true;
    built.handle = context.share(row);
    QList<QString> signalNames;
    for (const RowWidget& widget : built.widgets) {
        if (!isLabelOf(widget, row))
            connectRowWidget(built.handle, widget.widget, signalNames);
    }
}

} // namespace

void placeRow(const PreparedRow& row, BuiltRow& built, BuildContext& context)
{
    if (built.widgets.empty())
        return;
    record(row, built, context);
    applyProperties(row, built, context);
    setNames(row, built, context);

    const std::vector<RowWidget> widgets = unplaced(built);
    if (!widgets.empty()) {
        placeWidgets(widgets, row, context);
        setBuddies(widgets);
        if (row.stretchBehind >= 0)
            addStretchBehind(row.stretchBehind, context);
    }
    wire(row, built, context);
}

} // namespace mod_form_qt
