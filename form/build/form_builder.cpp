#include "form/build/form_builder.h"

#include "form/build/place_row.h"
#include "form/build/run_window.h"
#include "form/events/connect.h"
#include "form/events/event_filter.h"
#include "form/rows/row_family.h"
#include "form/values/row_value.h"
#include "form/values/unchanged_values.h"
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

/// A number that was saved as a text comes back as the type that its row had before.
void keepNumberType(PreparedRow& row, const QVariant& before, QMap<QString, QVariant>* map)
{
    const QMetaType type = before.metaType();
    RowValue stored(row.row, map);
    QVariant now = stored.exists() ? stored.read() : row.row.data;
    const bool wasNumber = before.canConvert<double>() && before.typeId() != QMetaType::QString;
    if (!wasNumber || now.typeId() != QMetaType::QString || row.option.metaType().isValid()
        || !now.convert(type))
        return;
    stored.write(now);
    if (!INFO::isVariantPtr(row.row.data))
        row.row.data = now;
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
    form.stands = false;
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
        takeFormSnapshot(m_snapshot, map, m_rows,
                         m_context.form->flags.testFlag(MF_USE_MAP_VALUES));
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
        if (row.eleType == E_DATA && !row.key.isEmpty())
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
    makeFilter();
    openOutermost();
}

void FormBuilder::makeFilter()
{
    const FormContext& form = *m_context.form;
    if (form.mainWidget == nullptr)
        return;
    m_filter = new INFO::UserEventFilter(form.mainWidget);
    m_context.form->life = m_filter;
    m_context.timerOwner = m_filter;
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
    // The variables that such rows are bound to get what was loaded; all others when they are
    // built.
    for (INFO row : std::as_const(m_rows)) {
        const bool bound = INFO::isVariantPtr(row.data) || INFO::isListDataPtr(row.data);
        if (row.eleType != E_DATA || !bound || !loaded.contains(row.key))
            continue;
        form.map->insert(row.key, loaded.take(row.key));
        bindRow(row, form.map, false, m_context.loadedKeys);
        m_boundRows.append(row);
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
    OpenLayout open;
    open.layout = layout;
    open.container = contentWidget();
    m_context.layouts.push_back(open);
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
    const QVariant before = row.eleType == E_NUMBER ? INFO::getBaseValue(row.data) : QVariant();
    bindRow(ready.row, m_context.map(), m_context.form->flags.testFlag(MF_USE_MAP_VALUES),
            m_context.loadedKeys);
    if (before.isValid())
        keepNumberType(ready, before, m_context.map());
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
    notePlainRows(m_context.plainKeys, form.map);
    INFO timerRow = form.mainRow;
    timerRow.callback = {}; // as the main row's it runs in any case
    m_context.addTimers(INFO::Option::ofParam(form.mainRow.param).value(INFO::Option::timerKey),
                        timerRow);
    if (m_filter) {
        m_filter->setForm(m_context.form);
        form.mainWidget->installEventFilter(m_filter);
    }
}

/// A form that is installed on a widget takes the place of an earlier one, with its handlers.
void FormBuilder::replaceOldForm() const
{
    constexpr const char* filterPropertyKey = "mod_form_qt_filter";
    QWidget* const main = m_context.form->mainWidget;
    const auto old = main->property(filterPropertyKey).value<QPointer<QObject>>();
    if (auto* filter = dynamic_cast<INFO::UserEventFilter*>(old.data())) {
        main->removeEventFilter(filter);
        filter->setForm(nullptr);
        for (QTimer* timer : filter->findChildren<QTimer*>())
            timer->stop();
        filter->deleteLater(); // it may be the one that is calling
    }
    main->setProperty(filterPropertyKey, QVariant::fromValue(QPointer<QObject>(m_filter)));
    // A widget has one layout. The old one goes with what is in it.
    if (main->layout() && !qobject_cast<QMainWindow*>(main))
        QWidget().setLayout(main->layout());
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

    replaceOldForm();
    QWidget* target = form.mainWidget;
    if (auto* window = qobject_cast<QMainWindow*>(target)) {
        target = form.flags.testFlag(MF_SCROLLAREA) ? new QWidget(window) : m_content;
        window->setCentralWidget(target);
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
        // The group lets two checked ones stand until one of them is chosen; the first counts.
        if (group->checkedAction())
            (*action)->setChecked(false);
        group->addAction(*action);
    }
}

void FormBuilder::fitGroupBoxes() const
{
    // Inner ones first: what they need is part of what the outer ones need.
    for (size_t left = m_context.groupBoxes.size(); left > 0; --left) {
        const QPointer<QGroupBox>& box = m_context.groupBoxes[left - 1];
        const bool shrinks = box && WIDGET_INFO::isBitSet(box.data(), A_H_ALLOW_SHRINK);
        if (box == nullptr || box->title().isEmpty() || shrinks)
            continue;
        box->ensurePolished(); // a bold title is wider
        const QStyle* style = box->style();
        int title = box->fontMetrics().horizontalAdvance(box->title());
        if (box->isCheckable())
            title += style->pixelMetric(QStyle::PM_IndicatorWidth)
                + style->pixelMetric(QStyle::PM_CheckBoxLabelSpacing);
        const int around = 2
            * (style->pixelMetric(QStyle::PM_DefaultFrameWidth)
               + style->pixelMetric(QStyle::PM_LayoutLeftMargin));
        const int fitting = std::max(title, box->layout()->minimumSize().width()) + around;
        // Sizes that the row asks for hold.
        box->setMinimumWidth(std::min(std::max(fitting, box->minimumWidth()), box->maximumWidth()));
    }
}

INFO::Result FormBuilder::run()
{
    // The form may be gone when its window has run; what is needed then is held here.
    const std::shared_ptr<FormContext> form = m_context.form;
    const bool hadWindow = form->mainWidget != nullptr;
    if (hadWindow)
        prepareWindow(*form, m_result);
    form->stands = true;
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
    else if (hadWindow)
        m_result.code = 0; // a callback has deleted it
    if (ran && m_result.code == 0)
        m_snapshot.restore();
    else if (ran && m_result.code > 0)
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
