#include "progress/progress_dialog.h"

#include <QVBoxLayout>

namespace mod_progress_qt {

namespace {

/// Pixels that words have at least before they are wrapped.
constexpr int leastWrapWidth = 320;

/// What a layout held.
struct Parts
{
    QList<QWidget*> widgets;
    QList<QLayout*> layouts;
};

void addPair(QVBoxLayout& layout, const ProgressDialog::WidgetAndLayout* part)
{
    if (part == nullptr)
        return;
    if (part->first)
        layout.addWidget(part->first);
    if (part->second)
        layout.addLayout(part->second);
}

/// Takes everything out of a layout and deletes it, but not the layouts inside: they belong to the
/// caller, who may want to use them again.
Parts dismantle(QLayout* layout)
{
    Parts parts;
    while (QLayoutItem* const item = layout->takeAt(0)) {
        if (QLayout* const inner = item->layout()) {
            inner->setParent(nullptr);
            parts.layouts.append(inner);
            continue;
        }
        if (item->widget())
            parts.widgets.append(item->widget());
        delete item;
    }
    delete layout;
    return parts;
}

/// All widgets of a layout and of those inside it.
QList<QWidget*> widgetsOf(const QLayout& layout)
{
    QList<QWidget*> widgets;
    for (int index = 0; index < layout.count(); ++index) {
        QLayoutItem* const item = layout.itemAt(index);
        if (item->widget())
            widgets.append(item->widget());
        else if (item->layout())
            widgets.append(widgetsOf(*item->layout()));
    }
    return widgets;
}

/// Hides and deletes what is not used again.
void putAway(Parts parts, const QLayout& used)
{
    for (QLayout* const inner : std::as_const(parts.layouts)) {
        if (inner->parent())
            continue;
        parts.widgets.append(widgetsOf(*inner));
        delete inner;
    }
    for (QWidget* const widget : std::as_const(parts.widgets)) {
        if (used.indexOf(widget) < 0)
            widget->hide();
    }
}

} // namespace

QPushButton* ProgressDialog::createLayout(const Pointer& dialog, const options& opts,
                                          const WidgetAndLayout* before,
                                          const WidgetAndLayout* after)
{
    if (!dialog)
        return nullptr;
    Parts old;
    if (QLayout* const oldLayout = dialog->layout())
        old = dismantle(oldLayout);
    old.widgets.removeAll(dialog->m_display);
    delete dialog->m_display;
    dialog->setWindowTitle(opts.title);
    const auto [display, abortButton] = dialog->m_bar.Create(opts);
    display->layout()->setContentsMargins(0, 0, 0, 0);
    if (opts.flags & CustomProgressBar::kWrapLabels)
        display->setMinimumWidth(leastWrapWidth);
    auto* layout = new QVBoxLayout;
    addPair(*layout, before);
    layout->addWidget(display);
    addPair(*layout, after);
    dialog->setLayout(layout);
    putAway(std::move(old), *layout);
    dialog->m_display = display;
    dialog->m_statusText = opts.text;
    return abortButton;
}

void ProgressDialog::createHiddenLikeDialog(QDialog* dialog)
{
    if (dialog == nullptr)
        return;
    dialog->setWindowFlags(Qt::Tool | Qt::FramelessWindowHint);
    dialog->setFixedSize(0, 0);
    dialog->setAttribute(Qt::WA_DontShowOnScreen);
}

bool ProgressDialog::event(QEvent* event)
{
    const bool handled = QDialog::event(event);
    // A window does not grow by itself with text that wraps.
    if (event->type() == QEvent::LayoutRequest && layout() && layout()->hasHeightForWidth())
        resize(width(), qMax(height(), layout()->totalHeightForWidth(width())));
    return handled;
}

} // namespace mod_progress_qt
