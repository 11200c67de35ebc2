#include "form/widgets/dump_widget.h"

#include <QAbstractItemDelegate>
#include <QAbstractItemView>
#include <QComboBox>
#include <QDebug>
#include <QLoggingCategory>
#include <QStyle>

namespace mod_form_qt::helper {

namespace {

QString className(const QObject* object)
{
    return object == nullptr ? QStringLiteral("nullptr")
                             : QString::fromUtf8(object->metaObject()->className());
}

template <typename T>
void entry(const char* label, const T& value)
{
    qDebug().noquote() << label << value;
}

void dumpCombo(const QComboBox& box)
{
    entry("combo count:", box.count());
    entry("combo currentIndex:", box.currentIndex());
    entry("combo iconSize:", box.iconSize());
    entry("combo sizeAdjustPolicy:", box.sizeAdjustPolicy());
    if (const QAbstractItemView* view = box.view()) {
        entry("itemView delegate:", className(view->itemDelegate()));
        entry("itemView iconSize:", view->iconSize());
        entry("itemView sizeHintForRow(0):", view->sizeHintForRow(0));
    }
}

void dumpView(const QAbstractItemView* view)
{
    if (view == nullptr) {
        qDebug("view nullptr");
        return;
    }
    entry("view class:", className(view));
    entry("view objectName:", view->objectName());
    entry("view size:", view->size());
    entry("view sizeHint:", view->sizeHint());
    entry("view minimumSizeHint:", view->minimumSizeHint());
    entry("view sizePolicy:", view->sizePolicy());
    entry("view font:", view->font().toString());
    entry("view style:", className(view->style()));
    entry("view styleSheet:", view->styleSheet());
    entry("view delegate:", className(view->itemDelegate()));
    entry("view iconSize:", view->iconSize());
    entry("view sizeHintForRow(0):", view->sizeHintForRow(0));
}

void dumpAnyWidget(const QWidget& widget)
{
    const QStyle* style = widget.style();
    entry("class:", className(&widget));
    entry("objectName:", widget.objectName());
    entry("size:", widget.size());
    entry("sizeHint:", widget.sizeHint());
    entry("minimumSizeHint:", widget.minimumSizeHint());
    entry("minimumSize:", widget.minimumSize());
    entry("maximumSize:", widget.maximumSize());
    entry("sizePolicy:", widget.sizePolicy());
    entry("font:", widget.font().toString());
    entry("styleSheet:", widget.styleSheet());
    entry("style:", className(style));
    entry("devicePixelRatioF:", widget.devicePixelRatioF());
    entry("PM_IndicatorWidth:", style->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, &widget));
    entry("PM_IndicatorHeight:", style->pixelMetric(QStyle::PM_IndicatorHeight, nullptr, &widget));
    entry("PM_CheckBoxLabelSpacing:",
          style->pixelMetric(QStyle::PM_CheckBoxLabelSpacing, nullptr, &widget));
}

} // namespace

void DumpWidgetDebug(const QString& label, QWidget* widget)
{
    if (!QLoggingCategory::defaultCategory()->isDebugEnabled())
        return;
    qDebug("----");
    qDebug().noquote() << label;
    if (widget == nullptr) {
        qDebug("nullptr");
        return;
    }
    dumpAnyWidget(*widget);
    if (const auto* box = qobject_cast<QComboBox*>(widget)) {
        dumpCombo(*box);
        dumpView(box->view());
    } else if (const auto* view = qobject_cast<QAbstractItemView*>(widget)) {
        dumpView(view);
    }
}

} // namespace mod_form_qt::helper
