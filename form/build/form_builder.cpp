#include "form/build/form_builder.h"

#include "form/build/place_row.h"
#include "form/build/run_window.h"
#include "form/events/connect.h"
#include "form/events/event_filter.h"
#include "form/rows/row_family.h"
#include "form/values/row_value.h"
#include "form/widgets/helper_windows.h"

#include <QActionGroup>
#include <QLoggingCategory>
#include <QScrollArea>
#include <QSignalBlocker>
#include <QStyle>
#include <QVBoxLayout>

namespace mod_form_qt {

namespace {

/// The key under which a standard button without one is found.
QString standardKey(int eleType)
{
    switch (eleType) {
    case E_OK_BUTTON:
        return INFO::objectOKButtonName;
    case E_CANCEL_BUTTON:
        return INFO::objectCancelButtonName;
    case E_CLOSE_BUTTON:
        return INFO::objectCloseButtonName;
    case E_HELP_BUTTON:
        return INFO::objectHelpButtonName;
    default:
        return {};
    }
}

bool makesNothing(const INFO& row)
{
    return row.eleType == 0 || row.eleType == E_INSERT_POINT || row.eleType == E_DATA;
}

} // namespace

FormBuilder::FormBuilder(QWidget* parent, INFO::MainFlags flags, Qt::WindowFlags windowFlags,
                         const INFO& mainRow, QMap<QString, QVariant>* map, QSet<QString>* keys)
    : m_parent(parent)
    , m_windowFlags(windowFlags)
    , m_keys(keys)
{
    m_context.form = std::make_shared<FormContext>();
    FormContext& form = *m_context.form;
    form.mainRow = mainRow;
    form.flags = withOneRunMode(flags);
    form.owner = map ? QSharedPointer<QMap<QString, QVariant>>(map, [](auto*) {})
                     : QSharedPointer<QMap<QString, QVariant>>::create();
    form.map = form.owner.data();
    m_result.map = form.owner;

    const INFO::Option option = INFO::Option::ofParam(mainRow.param);
    m_context.defaultAlign =
        Qt::Alignment::fromInt(option.value(INFO::Option::defaultAlignKey).toInt());
    m_context.defaultTypeAlign = option.value(INFO::Option::defaultTypeAlignKey)
                                     .value<QMap<int, QFlags<Qt::AlignmentFlag>>>();
    m_context.defaults.boldLabels = flags.testFlag(MF_BOLD_LABELS);
    m_context.defaults.locale = option.value(INFO::Option::localeKey);
    m_context.defaults.anyData = mainRow.anyData;
}

bool FormBuilder::installs() const
{
    return m_context.form->flags.testFlag(MF_CREATE_WINDOW)
        || m_context.form->flags.testFlag(MF_APPLY_TO_WIDGET);
}

void FormBuilder::takeRows(const QList<INFO>& rows)
{
    QMap<QString, QVariant>* const map = m_context.map();
    m_rows = rows;
    INFO::NormalizeLayout(m_rows);
    WIDGET_INFO::clean(map);
    INFO::cleanupPointerEntries(map);
    if (!m_context.form->flags.testFlag(MF_NO_SNAPSHOT))
        m_snapshot.fromData(map, m_rows);
    collectData();
}

void FormBuilder::collectData()
{
    FormContext& form = *m_context.form;
    form.saveKeys.first = m_keys != nullptr;
    if (m_keys)
        form.saveKeys.second = *m_keys;
    const bool all = form.flags.testFlag(MF_USE_MAP_VALUES);
    for (const INFO& row : std::as_const(m_rows)) {
        if (isBitSet(row.attr, A_DONT_USE_MAP_VALUE))
            continue;
        if (!row.key.isEmpty() && (all || isBitSet(row.attr, A_USE_MAP_VALUE)))
            form.saveKeys.second.insert(row.key);
        if (row.eleType == E_DATA)
            form.map->insert(row.key, row.data);
    }
    if (m_keys)
        *m_keys = form.saveKeys.second;
}

void FormBuilder::makeWindow()
{
    FormContext& form = *m_context.form;
    if (form.flags.testFlag(MF_CREATE_WINDOW)) {
        const Qt::WindowFlags windowFlags = m_windowFlags ? m_windowFlags : F_DIALOG_TITLE;
        if (form.mainRow.eleType == E_MAINWINDOW)
            form.mainWidget =
                new helper::MainWnd(form.flags, form.mainRow, form.map, m_parent, windowFlags);
        else
            form.mainWidget =
                new helper::Dialog(form.flags, form.mainRow, form.map, m_parent, windowFlags);
    } else {
        form.mainWidget = m_parent;
        const bool window =
            qobject_cast<QDialog*>(m_parent) || qobject_cast<QMainWindow*>(m_parent);
        if (window && form.flags.testFlag(MF_CREATE_LAYOUT)) {
            const bool visible = m_parent->isVisible();
            m_parent->setWindowFlags(m_windowFlags ? m_windowFlags : F_DIALOG_TITLE);
            if (visible)
                m_parent->show(); // the call above hides the window
        }
    }
    form.armed = formArmed(form.mainWidget);
    m_result.mainWidget = form.mainWidget;
    if (form.mainWidget) {
        // The window keeps a map alive that nobody else may own any more once this returns.
        form.mainWidget->setProperty("mod_form_qt_map", QVariant::fromValue(form.owner));
        form.map->insert(INFO::buildObjectDataKey(INFO::objectMainKeyName),
                         QVariant::fromValue(QPointer<QObject>(form.mainWidget)));
    }
    loadValues();
    openOutermost();
}

void FormBuilder::loadValues()
{
    FormContext& form = *m_context.form;
    QMap<QString, QVariant> loaded;
    INFO::initWidget(form.mainWidget, form.mainRow, &loaded, true);
    if (loaded.isEmpty())
        return;
    m_context.loadedKeys = QSet<QString>(loaded.keyBegin(), loaded.keyEnd());
    if (!INFO::Option::ofParam(form.mainRow.param).iniSeparateKeys()) {
        // A whole map replaces what was there, but for what no file can hold.
        QSet<QString> kept;
        for (const INFO& row : std::as_const(m_rows)) {
            if (row.eleType == E_DATA)
                kept.insert(row.key);
        }
        erase_if(*form.map, [&kept](const auto& entry) {
            return !INFO::isTempKeyName(entry.key()) && !kept.contains(entry.key());
        });
    }
    form.map->insert(loaded);
}

QWidget* FormBuilder::contentWidget()
{
    const FormContext& form = *m_context.form;
    if (form.flags.testFlag(MF_SCROLLAREA))
        return m_content = new QWidget(form.mainWidget);
    if (installs() && qobject_cast<QMainWindow*>(form.mainWidget.data()))
        return m_content = new QWidget(form.mainWidget);
    return form.mainWidget;
}

void FormBuilder::openOutermost()
{
    auto* layout = new QVBoxLayout;
    if (m_context.form->flags.testFlag(MF_NO_MARGINS))
        layout->setContentsMargins(0, 0, 0, 0);
    m_context.outermost = layout;
    m_context.layouts.push_back({layout, contentWidget(), {}, nullptr, false, {}});
}

void FormBuilder::addRow(const INFO& row)
{
    if (makesNothing(row))
        return;
    const RowFamily* const family = familyFor(row.eleType);
    if (family == nullptr)
        return;
    if (m_context.layouts.empty()) {
        qWarning("mod_form_qt: a row of type %d stands behind the end of the outermost layout",
                 row.eleType);
        return;
    }
    PreparedRow ready = prepareRow(row, m_context.defaults);
    bindRow(ready.row, m_context.map(), m_context.form->flags.testFlag(MF_USE_MAP_VALUES),
            m_context.loadedKeys);
    if (INFO::isVariantPtr(ready.row.data) || INFO::isListDataPtr(ready.row.data))
        m_boundRows.append(ready.row);
    // After binding: a key that is given by the engine gets no value of its own.
    if (ready.row.key.isEmpty())
        ready.row.key = standardKey(row.eleType);

    BuiltRow built = family->build(ready, m_context);
    placeRow(ready, built, m_context);
    m_context.addTimers(ready.option.value(INFO::Option::timerKey), ready.row);
}

void FormBuilder::finish()
{
    while (!m_context.tabs.empty()) {
        while (qsizetype(m_context.layouts.size()) > m_context.tabs.back().depth)
            m_context.closeLayout();
        m_context.finishedTabs.push_back(m_context.tabs.back());
        m_context.tabs.pop_back();
    }
    while (!m_context.layouts.empty())
        m_context.closeLayout();

    installLayout();
    finishTabs();
    groupActions();
    fitGroupBoxes();

    FormContext& form = *m_context.form;
    INFO timerRow = form.mainRow;
    timerRow.callback = {}; // as the main row's it runs in any case
    m_context.addTimers(INFO::Option::ofParam(form.mainRow.param).value(INFO::Option::timerKey),
                        timerRow);
    if (form.mainWidget) {
        auto* filter = new INFO::UserEventFilter(form.mainWidget);
        filter->setForm(m_context.form);
        form.mainWidget->installEventFilter(filter);
    }
}

void FormBuilder::installLayout()
{
    const FormContext& form = *m_context.form;
    QLayout* layout = m_context.outermost;
    if (form.flags.testFlag(MF_FIXED_SIZE))
        layout->setSizeConstraint(QLayout::SetFixedSize);

    if (form.flags.testFlag(MF_SCROLLAREA)) {
        m_content->setLayout(layout);
        auto* area = new QScrollArea(form.mainWidget);
        area->setWidgetResizable(true);
        area->setWidget(m_content);
        layout = new QVBoxLayout;
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(area);
    }
    m_result.layout = layout;
    if (!installs() || form.mainWidget == nullptr)
        return;

    QWidget* target = form.mainWidget;
    if (auto* window = qobject_cast<QMainWindow*>(target)) {
        target = form.flags.testFlag(MF_SCROLLAREA) ? new QWidget(window) : m_content;
        window->setCentralWidget(target);
    } else if (target->layout()) {
        // A widget has one layout. The old one goes with what is in it.
        QWidget().setLayout(target->layout());
    }
    target->setLayout(layout);
}

void FormBuilder::finishTabs()
{
    // Only now: the first page of a tab widget becomes the current one when it is added, which
    // would overwrite the start page in the map.
    for (const OpenTabs& tabs : m_context.finishedTabs) {
        if (tabs.tabs == nullptr)
            continue;
        if (tabs.startPage >= 0 && tabs.startPage < tabs.tabs->count()) {
            const QSignalBlocker silent(tabs.tabs);
            tabs.tabs->setCurrentIndex(tabs.startPage);
        }
        QList<QString> signalNames;
        connectTabs(tabs.row, tabs.tabs, tabs.pages, signalNames);
    }
}

void FormBuilder::groupActions() const
{
    std::vector<std::pair<MenuEntry, QPointer<QMenu>>> entries;
    INFO::collectMenuData(m_context.map(), &entries);
    QMap<int, QActionGroup*> groups;
    const QByteArray property = INFO::menuGroupNoKey.toUtf8();
    for (const auto& [entry, menu] : entries) {
        const auto* action = std::get_if<QPointer<QAction>>(&entry);
        if (action == nullptr || *action == nullptr || !(*action)->isCheckable()
            || (*action)->actionGroup())
            continue;
        const QVariant number = (*action)->property(property.constData());
        if (!number.isValid() || number.toInt() < 0)
            continue;
        QActionGroup*& group = groups[number.toInt()];
        if (group == nullptr)
            group = new QActionGroup(m_context.form->mainWidget
                                         ? static_cast<QObject*>(m_context.form->mainWidget)
                                         : m_context.outermost);
        group->addAction(*action);
    }
}

void FormBuilder::fitGroupBoxes() const
{
    for (const QPointer<QGroupBox>& box : m_context.groupBoxes) {
        if (box == nullptr || box->title().isEmpty())
            continue;
        const QStyle* style = box->style();
        int title = box->fontMetrics().horizontalAdvance(box->title());
        if (box->isCheckable())
            title += style->pixelMetric(QStyle::PM_IndicatorWidth)
                + style->pixelMetric(QStyle::PM_CheckBoxLabelSpacing);
        const int around = 2
            * (style->pixelMetric(QStyle::PM_DefaultFrameWidth)
               + style->pixelMetric(QStyle::PM_LayoutLeftMargin));
        box->setMinimumWidth(std::max(title, box->layout()->minimumSize().width()) + around);
    }
}

INFO::Result FormBuilder::run()
{
    // The form may be gone when its window has run; what is needed then is held here.
    const std::shared_ptr<FormContext> form = m_context.form;
    if (form->mainWidget)
        prepareWindow(*form, m_result);
    ExecCallBack(form->mainRow.callback, form->mainWidget, form->mainWidget, QVariant(), kInit,
                 form->mainRow, form->map, nullptr, nullptr);
    for (const auto& [object, immediate, onlyValid] : m_context.pendingEmits) {
        if (object)
            INFO::triggerEmit(object, onlyValid, immediate);
    }
    for (const QPointer<QTimer>& timer : m_context.timers) {
        if (timer)
            timer->start();
    }
    const bool ran = form->flags.testFlag(MF_EXEC);
    if (form->mainWidget)
        m_result.code = runWindow(*form);
    if (ran && m_result.code == 0)
        m_snapshot.restore();
    else if (ran)
        keepAccepted(form->map, m_boundRows, m_context.checkableActions);
    return m_result;
}

INFO::Result INFO::createLayout(QWidget* parent, MainFlags flags, Qt::WindowFlags windowFlags,
                                const INFO& mainRow, const QList<INFO>& rows,
                                QMap<QString, QVariant>* map, QSet<QString>* keys)
{
    FormBuilder form(parent, flags, windowFlags, mainRow, map, keys);
    form.takeRows(rows);
    form.makeWindow();
    for (const INFO& row : form.rows())
        form.addRow(row);
    form.finish();
    return form.run();
}

} // namespace mod_form_qt
