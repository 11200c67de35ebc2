#include "form/events/connect.h"

#include "form/events/change_flow.h"
#include "form/events/connect_inputs.h"
#include "form/events/form_guard.h"
#include "form/values/row_value.h"
#include "form/widgets/check_combo_box.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QDateTimeEdit>
#include <QDoubleSpinBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QTabWidget>
#include <QTextEdit>

#include <algorithm>
#include <array>

namespace mod_form_qt {

namespace {

/// Set on what a closed group has hidden.
constexpr const char* hiddenByGroupPropertyKey = "mod_form_qt_hidden_by_group";
/// Keeps, on the layout of a closed group, the margins that it has when it is open.
constexpr const char* marginsPropertyKey = "mod_form_qt_margins";
/// Holds, on an exclusive group of actions, the one that the choice of another has unchecked.
constexpr const char* replacedActionPropertyKey = "mod_form_qt_replaced";

struct Connector
{
    bool (*fits)(const RowContext& row, QWidget* widget);
    void (*connect)(const RowHandle& row, QWidget* widget, QList<QString>& signalNames);
    bool callersToo; ///< also for a widget that the caller has made
};

template <typename W>
bool isA(const RowContext&, QWidget* widget)
{
    return qobject_cast<W*>(widget) != nullptr;
}

bool isDateSwitch(const RowContext& row, QWidget* widget)
{
    return row.row.eleType == E_DATE && qobject_cast<QCheckBox*>(widget) != nullptr;
}

bool isMenuButton(const RowContext& row, QWidget* widget)
{
    return row.row.eleType == E_MENU_BUTTON && qobject_cast<QPushButton*>(widget) != nullptr;
}

// The first that fits is taken: the special before the general.
constexpr std::array connectors = {
    Connector {isA<QLineEdit>, connectLineEdit, true},
    Connector {isA<QTextEdit>, connectTextEdit, false},
    Connector {isA<QPlainTextEdit>, connectPlainTextEdit, false},
    Connector {isDateSwitch, connectDateSwitch, false},
    Connector {isA<QCheckBox>, connectCheckBox, true},
    Connector {isA<QRadioButton>, connectRadioButton, true},
    Connector {isA<helper::CheckComboBox>, connectCheckComboBox, true},
    Connector {isA<QComboBox>, connectComboBox, true},
    Connector {isA<QListWidget>, connectListWidget, false},
    Connector {isA<QSpinBox>, connectSpinBox, false},
    Connector {isA<QDoubleSpinBox>, connectDoubleSpinBox, false},
    Connector {isA<QDateEdit>, connectDateEdit, false},
    Connector {isA<QDateTimeEdit>, connectDateTimeEdit, false},
    Connector {isMenuButton, connectMenuButton, false},
    Connector {isA<QPushButton>, connectButton, false},
};

/// \return  true for the row of the form itself, which may stand under the key of a timer
bool isMainRow(const RowContext& row)
{
    const INFO& main = row.mainRow();
    return row.row.eleType == main.eleType && row.row.param == main.param
        && row.row.data == main.data;
}

/// The choice of an action of an exclusive group unchecks another, which a refusal has to check
/// again.
void noteReplaced(QAction* action, bool checked)
{
    QActionGroup* group = action->actionGroup();
    if (checked || group == nullptr)
        return;
    const QList<QAction*> actions = group->actions();
    const bool replaced = std::any_of(actions.cbegin(), actions.cend(),
                                      [](const QAction* other) { return other->isChecked(); });
    group->setProperty(replacedActionPropertyKey,
                       replaced ? QVariant::fromValue(QPointer<QObject>(action)) : QVariant());
}

void undoCheck(QAction* action)
{
    const QActionGroup* group = action->actionGroup();
    const auto replaced = group
        ? qobject_cast<QAction*>(
            group->property(replacedActionPropertyKey).value<QPointer<QObject>>().data())
        : nullptr;
    if (replaced)
        replaced->setChecked(true); // which unchecks the other
    else
        action->setChecked(!action->isChecked());
}

void runAction(const RowContext& context, QAction* triggered)
{
    const QPointer<QAction> action(triggered);
    INFO row = context.row;
    if (row.key.isEmpty())
        row.key = action->property(INFO::menuIDKey.toLatin1().constData()).toString();
    const QPointer<QWidget> mainWidget = context.mainWidget();
    QMap<QString, QVariant>* map = context.map();
    const FormGuard form(mainWidget);
    const bool checkable = action->isCheckable();
    const bool checked = action->isChecked();
    QVariant value = action->data();
    if (!value.isValid() && checkable)
        value = checked;

    if (isBitSet(row.attr, A_USE_BEFORE_EVENT)) {
        QVariant result = value;
        const int agreed = BeforeCallBack(row, context.mainRow(), mainWidget, mainWidget, value,
                                          kBeforeAction, map, &result, nullptr);
        if (!form.stands())
            return;
        if (agreed == 0) {
            if (action && checkable)
                undoCheck(action);
            return;
        }
    }
    if (checkable) {
        RowValue target(row, map);
        if (target.exists())
            target.write(checked);
    }
    QVariant ignored = value;
    AfterCallBack(row, context.mainRow(), mainWidget, mainWidget, value, kAfterAction, map,
                  &ignored, nullptr);
}

void tellPage(const std::vector<RowHandle>& pages, int index, QTabWidget* tabs, CallbackType type)
{
    if (index < 0 || index >= static_cast<int>(pages.size()))
        return;
    // Of its own: a callback may take the tab widget down.
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization)
    const RowHandle page = pages[static_cast<std::size_t>(index)];
    if (page == nullptr || !page->live())
        return;
    QVariant ignored(index);
    AfterCallBack(page->row, page->mainRow(), page->mainWidget(),
                  tabs ? tabs->widget(index) : nullptr, index, type, page->map(), &ignored,
                  nullptr);
}

/// The pages of a tab widget and the one that was last the active one.
struct Pages
{
    std::vector<RowHandle> rows;
    int active = -1;
};

void takePage(const RowContext& row, QTabWidget* widget, Pages& pages, int index)
{
    const QPointer<QTabWidget> tabs(widget);
    const FormGuard form(row.mainWidget());
    ValueChange change;
    change.widget = tabs;
    change.value = index;
    change.previous = pages.active;
    change.keyless = !RowValue(row.row, row.map()).exists();
    change.show = [tabs](const QVariant& page) {
        const QSignalBlocker silence(tabs.data());
        if (tabs)
            tabs->setCurrentIndex(page.toInt());
    };
    change.store = [&row](const QVariant& page) {
        RowValue target(row.row, row.map());
        if (target.exists())
            target.write(page);
    };
    offerChange(row.row, row.mainRow(), row.mainWidget(), row.map(), change);
    if (!form.stands() || !tabs)
        return;
    // A callback may have turned the page once more, which has then been reported already.
    const int now = tabs->currentIndex();
    const int before = std::exchange(pages.active, now);
    if (now == before)
        return;
    tellPage(pages.rows, before, tabs, kKillActive);
    if (form.stands())
        tellPage(pages.rows, now, tabs, kSetActive);
}

/// A row whose widget is wired by itself, without a form around it.
RowHandle rowFor(const INFO& row, const INFO& mainRow, const QPointer<QWidget>& mainWidget,
                 QMap<QString, QVariant>* map, QString key)
{
    const auto form = std::make_shared<FormContext>();
    form->mainRow = mainRow;
    form->mainWidget = mainWidget;
    form->map = map;
    form->armed = formArmed(mainWidget);
    form->life = mainWidget.data();
    auto context = std::make_shared<RowContext>(RowContext {form, row});
    if (context->row.key.isEmpty())
        context->row.key = std::move(key);
    return context;
}

void connectAlone(const RowHandle& row, QWidget* widget, QList<QString>& signalNames,
                  void (*connect)(const RowHandle&, QWidget*, QList<QString>&))
{
    if (widget == nullptr)
        return;
    rememberShown(*row, widget);
    connect(row, widget, signalNames);
}

void setItemVisible(QWidget* widget, bool visible)
{
    if (visible) {
        if (widget->property(hiddenByGroupPropertyKey).toBool()) {
            widget->setProperty(hiddenByGroupPropertyKey, QVariant());
            widget->setVisible(true);
        }
        return;
    }
    // A widget that has never been shown is hidden, too, yet not by itself.
    if (widget->isHidden() && widget->testAttribute(Qt::WA_WState_ExplicitShowHide))
        return;
    widget->setProperty(hiddenByGroupPropertyKey, true);
    widget->setVisible(false);
}

void setItemsVisible(const QLayout* layout, bool visible)
{
    for (int index = 0; layout && index < layout->count(); ++index) {
        QLayoutItem* item = layout->itemAt(index);
        if (QWidget* widget = item->widget())
            setItemVisible(widget, visible);
        else
            setItemsVisible(item->layout(), visible);
    }
}

} // namespace

void connectRowWidget(const RowHandle& row, QWidget* widget, QList<QString>& signalNames)
{
    for (const Connector& connector : connectors) {
        if (row->row.eleType == E_WIDGET && !connector.callersToo)
            continue;
        if (connector.fits(*row, widget)) {
            connectAlone(row, widget, signalNames, connector.connect);
            return;
        }
    }
}

void connectGroup(const RowHandle& row, QGroupBox* group, QLayout* contents,
                  QList<QString>& signalNames)
{
    const QPointer<QGroupBox> box(group);
    const QPointer<QLayout> inner(contents);
    QObject::connect(group, &QGroupBox::clicked, group, [row, box, inner](bool checked) {
        if (!row->live())
            return;
        setGroupContentsVisible(inner, checked);
        takeValue(*row, box, checked, [box, inner](const QVariant& value) {
            if (!box)
                return;
            const QSignalBlocker silence(box.data());
            box->setChecked(value.toBool());
            setGroupContentsVisible(inner, value.toBool());
        });
    });
    signalNames.append(QStringLiteral("clicked"));
}

void connectTabs(const RowHandle& row, QTabWidget* tabs, const std::vector<RowHandle>& pages,
                 QList<QString>& signalNames)
{
    const auto state = std::make_shared<Pages>(Pages {pages, tabs->currentIndex()});
    QObject::connect(tabs, &QTabWidget::currentChanged, tabs, [row, tabs, state](int index) {
        if (row->live())
            takePage(*row, tabs, *state, index);
    });
    signalNames.append(QStringLiteral("currentChanged"));
}

void connectAction(const RowHandle& row, QAction* action, QList<QString>& signalNames)
{
    // An action may live longer than the form, which must not be called, nor held, for ever then.
    QObject* const form = row->form->life ? row->form->life.data() : action;
    QObject::connect(action, &QAction::toggled, form,
                     [action](bool checked) { noteReplaced(action, checked); });
    QObject::connect(action, &QAction::triggered, form, [row, action] {
        if (row->live())
            runAction(*row, action);
    });
    signalNames.append(QStringLiteral("triggered"));
}

void connectTimer(const RowHandle& row, QTimer* timer)
{
    QObject::connect(timer, &QTimer::timeout, timer, [row] {
        if (!row->live())
            return;
        INFO told = row->row;
        if (isMainRow(*row))
            told.callback = Callback(); // else it would run as the row's and as the form's
        const RowValue stored(told, row->map());
        const QVariant value = stored.exists() ? stored.read() : QVariant();
        QVariant ignored = value;
        AfterCallBack(told, row->mainRow(), row->mainWidget(), row->mainWidget(), value, kTimer,
                      row->map(), &ignored, nullptr);
    });
}

void setGroupContentsVisible(QLayout* contents, bool visible)
{
    if (contents == nullptr)
        return;
    setItemsVisible(contents, visible);
    // What is hidden needs no room around it.
    const QVariant kept = contents->property(marginsPropertyKey);
    if (!visible && !kept.isValid()) {
        contents->setProperty(marginsPropertyKey, QVariant::fromValue(contents->contentsMargins()));
        contents->setContentsMargins(0, 0, 0, 0);
    } else if (visible && kept.isValid()) {
        contents->setContentsMargins(kept.value<QMargins>());
        contents->setProperty(marginsPropertyKey, QVariant());
    }
}

void INFO::lineEditConnect(const INFO& row, const INFO& mainRow, QPointer<QWidget> mainWidget,
                           QPointer<QLineEdit> widget, QMap<QString, QVariant>* map, QString key,
                           QList<QString>& signalNames)
{
    connectAlone(rowFor(row, mainRow, mainWidget, map, std::move(key)), widget, signalNames,
                 connectLineEdit);
}

void INFO::comboBoxConnect(const INFO& row, const INFO& mainRow, QPointer<QWidget> mainWidget,
                           QPointer<QComboBox> widget, QMap<QString, QVariant>* map, QString key,
                           QList<QString>& signalNames)
{
    connectAlone(rowFor(row, mainRow, mainWidget, map, std::move(key)), widget, signalNames,
                 connectComboBox);
}

void INFO::checkComboConnect(const INFO& row, const INFO& mainRow, QPointer<QWidget> mainWidget,
                             QPointer<helper::CheckComboBox> widget, QMap<QString, QVariant>* map,
                             QString key, QList<QString>& signalNames)
{
    connectAlone(rowFor(row, mainRow, mainWidget, map, std::move(key)), widget, signalNames,
                 connectCheckComboBox);
}

void INFO::checkBoxConnect(const INFO& row, const INFO& mainRow, QPointer<QWidget> mainWidget,
                           QPointer<QCheckBox> widget, QMap<QString, QVariant>* map, QString key,
                           QList<QString>& signalNames)
{
    connectAlone(rowFor(row, mainRow, mainWidget, map, std::move(key)), widget, signalNames,
                 connectCheckBox);
}

void INFO::radioButtonConnect(const INFO& row, const INFO& mainRow, QPointer<QWidget> mainWidget,
                              QPointer<QRadioButton> widget, QMap<QString, QVariant>* map,
                              QString key, QList<QString>& signalNames)
{
    connectAlone(rowFor(row, mainRow, mainWidget, map, std::move(key)), widget, signalNames,
                 connectRadioButton);
}

} // namespace mod_form_qt
