#include "form/dialog/dialog_base.h"

#include "form/build/run_window.h"
#include "form/events/form_context.h"
#include "form/values/snapshot.h"

#include <QCheckBox>
#include <QPushButton>

#ifdef __clang__
#include <cstddef>
#include <cstring>
#endif

namespace mod_form_qt {

namespace {

#ifdef __clang__

/// Where the addresses of an object's virtual functions stand, in the order of their declaration.
const char* functionTable(const DialogBase* object)
{
    const char* table = nullptr;
    std::memcpy(&table, static_cast<const void*>(object), sizeof table);
    return table;
}

const char* baseFunctionTable = nullptr; // of the class itself

const void* functionAt(const char* table, std::ptrdiff_t offset)
{
    const void* address = nullptr;
    std::memcpy(&address, table + offset, sizeof address);
    return address;
}

/// The same as below, for a compiler without the extension: it compares the entries of two tables.
template <auto Function>
bool overridden(DialogBase* object)
{
    const auto function = Function;
    // A pointer to a virtual function is the offset of its entry, made odd.
    std::ptrdiff_t oddOffset = 0;
    std::memcpy(&oddOffset, &function, sizeof oddOffset);
    return functionAt(functionTable(object), oddOffset - 1)
        != functionAt(baseFunctionTable, oddOffset - 1);
}

#else

// What a bound member function would call, as a plain address, is an extension of the compiler.
#pragma GCC diagnostic ignored "-Wpedantic"
#pragma GCC diagnostic ignored "-Wpmf-conversions"

/// Tells whether the class of an object overrides a virtual function of the base, without a call
/// of either: the base's may not be called just to find out, and a subclass that does no more than
/// call the base's counts as well.
template <auto Function>
bool overridden(DialogBase* object)
{
    using Address = void (*)();
    return (Address)(object->*Function) != (Address)Function;
}

#endif

} // namespace

DialogBase::DialogBase(QWidget* parent, Qt::WindowFlags windowFlags)
    : QDialog(parent, windowFlags)
{
#ifdef __clang__
    // No subclass has put its own table here yet.
    baseFunctionTable = functionTable(this);
#endif
}

DialogBase::~DialogBase()
{
    disarmForm(this);
}

INFO::Result DialogBase::applyLayout(bool createLayout, const QVariant& title,
                                     const QList<INFO>& rows, INFO::MainFlags flags,
                                     Qt::WindowFlags windowFlags, QMap<QString, QVariant>* map,
                                     QSet<QString>* keys, std::any any, const QVariant& userData)
{
    m_map = map;
    const ContextCallback callback = [this](const CallbackContext& ctx) { return mainFunc(ctx); };
    INFO::Result result = INFO::applyLayout(this, createLayout, title, rows, flags, windowFlags,
                                            map, keys, callback, std::move(any), userData);
    m_ownMap = result.map;
    m_map = map ? map : m_ownMap.data();
    return result;
}

int DialogBase::applyLayoutAndStart(bool createLayout, const QVariant& title,
                                    const QList<INFO>& rows, INFO::MainFlags flags,
                                    Qt::WindowFlags windowFlags, QMap<QString, QVariant>* map,
                                    QSet<QString>* keys, std::any any, const QVariant& userData)
{
    // Of its own: the one that is made while the form is built ends before the dialog runs.
    SNAP_SHOT_MANAGER snapshot;
    if (!flags.testFlag(MF_NO_SNAPSHOT))
        takeFormSnapshot(snapshot, map, rows, flags.testFlag(MF_USE_MAP_VALUES));
    applyLayout(createLayout, title, rows, flags, windowFlags, map, keys, std::move(any), userData);
    const int code = execDialog(this);
    if (code == 0)
        snapshot.restore();
    return code;
}

void DialogBase::setupWindow(const CallbackContext&) { }

int DialogBase::onAccept(const CallbackContext&)
{
    return 1;
}

int DialogBase::onReject(const CallbackContext&)
{
    return 1;
}

int DialogBase::onClose(const CallbackContext&)
{
    return 1;
}

void DialogBase::cleanupWindow(const CallbackContext&) { }

void DialogBase::onHelp(const CallbackContext&) { }

int DialogBase::validateAndStore(const CallbackContext&)
{
    return 1;
}

int DialogBase::processCallback(const CallbackContext&)
{
    return 1;
}

bool DialogBase::accepts(const CallbackContext& ctx)
{
    if (overridden<&DialogBase::onAccept>(this))
        return onAccept(ctx) != 0;
    return !overridden<&DialogBase::validateAndStore>(this) || validateAndStore(ctx) != 0;
}

int DialogBase::mainFunc(const CallbackContext& ctx)
{
    // What a subclass overrides may delete the dialog.
    const QPointer<DialogBase> guard(this);
    switch (ctx.type) {
    case kInit:
        takeForm(ctx);
        if (overridden<&DialogBase::setupWindow>(this))
            setupWindow(ctx);
        return 1;
    case kAccept:
        if (!accepts(ctx))
            return 0;
        if (guard)
            emit signalAccepted(ctx);
        return 1;
    case kReject:
        if (overridden<&DialogBase::onReject>(this) && onReject(ctx) == 0)
            return 0;
        if (guard)
            emit signalRejected(ctx);
        return 1;
    case kClose:
        if (overridden<&DialogBase::onClose>(this) && onClose(ctx) == 0)
            return 0;
        if (guard)
            emit signalClosed(ctx);
        return 1;
    case kCleanup:
        if (overridden<&DialogBase::cleanupWindow>(this))
            cleanupWindow(ctx);
        if (guard)
            emit signalDestroyed(ctx);
        return 1;
    default:
        return otherEvent(ctx);
    }
}

void DialogBase::takeForm(const CallbackContext& ctx)
{
    m_map = ctx.map;
    m_okButton = pushButtonByKey(INFO::objectOKButtonName, E_BUTTON);
    m_cancelButton = pushButtonByKey(INFO::objectCancelButtonName, E_BUTTON);
    m_closeButton = pushButtonByKey(INFO::objectCloseButtonName, E_BUTTON);
    m_helpButton = pushButtonByKey(INFO::objectHelpButtonName, E_BUTTON);
}

int DialogBase::otherEvent(const CallbackContext& ctx)
{
    const QPointer<DialogBase> guard(this);
    if (overridden<&DialogBase::processCallback>(this) && processCallback(ctx) == 0)
        return 0;
    if (guard)
        emit signalCallback(ctx);
    if (guard && ctx.type == kAfterAction && ctx.row.eleType == E_HELP_BUTTON) {
        if (overridden<&DialogBase::onHelp>(this))
            onHelp(ctx);
        if (guard)
            emit signalHelp(ctx);
    }
    return 1;
}

// ---------------------------------------------------------------- looking widgets up

QWidget* DialogBase::widgetByKey(const MAP_KEY_TYPE& key, int index, FindPos pos, Other other,
                                 bool flag) const
{
    return INFO::widgetByKey(m_map, key, index, pos, other, flag);
}

QLabel* DialogBase::labelByKey(const MAP_KEY_TYPE& key, int index, FindPos pos, Other other,
                               bool flag) const
{
    return INFO::labelByKey(m_map, key, index, pos, other, flag);
}

QLineEdit* DialogBase::lineEditByKey(const MAP_KEY_TYPE& key, int index, FindPos pos, Other other,
                                     bool flag) const
{
    return INFO::lineEditByKey(m_map, key, index, pos, other, flag);
}

QLineEdit* DialogBase::lineEditByVar(const QVariant& variable) const
{
    return INFO::lineEditByVar(m_map, variable);
}

QPlainTextEdit* DialogBase::plainTextEditByKey(const MAP_KEY_TYPE& key, int index, FindPos pos,
                                               Other other, bool flag) const
{
    return INFO::plainTextEditByKey(m_map, key, index, pos, other, flag);
}

QPlainTextEdit* DialogBase::plainTextEditByVar(const QVariant& variable) const
{
    return INFO::plainTextEditByVar(m_map, variable);
}

QTextEdit* DialogBase::textEditByKey(const MAP_KEY_TYPE& key, int index, FindPos pos, Other other,
                                     bool flag) const
{
    return INFO::textEditByKey(m_map, key, index, pos, other, flag);
}

QTextEdit* DialogBase::textEditByVar(const QVariant& variable) const
{
    return INFO::textEditByVar(m_map, variable);
}

QDateEdit* DialogBase::dateEditByKey(const MAP_KEY_TYPE& key, int index, FindPos pos, Other other,
                                     bool flag) const
{
    return INFO::dateEditByKey(m_map, key, index, pos, other, flag);
}

QDateEdit* DialogBase::dateEditByVar(const QVariant& variable) const
{
    return INFO::dateEditByVar(m_map, variable);
}

QCheckBox* DialogBase::checkBoxByKey(const MAP_KEY_TYPE& key, int index, FindPos pos, Other other,
                                     bool flag) const
{
    return INFO::checkBoxByKey(m_map, key, index, pos, other, flag);
}

QCheckBox* DialogBase::checkBoxByVar(const QVariant& variable) const
{
    return INFO::checkBoxByVar(m_map, variable);
}

QRadioButton* DialogBase::radioButtonByKey(const MAP_KEY_TYPE& key, int index, FindPos pos,
                                           Other other, bool flag) const
{
    return INFO::radioButtonByKey(m_map, key, index, pos, other, flag);
}

QRadioButton* DialogBase::radioButtonByVar(const QVariant& variable) const
{
    return INFO::radioButtonByVar(m_map, variable);
}

QComboBox* DialogBase::comboBoxByKey(const MAP_KEY_TYPE& key, int index, FindPos pos, Other other,
                                     bool flag) const
{
    return INFO::comboBoxByKey(m_map, key, index, pos, other, flag);
}

QComboBox* DialogBase::comboBoxByVar(const QVariant& variable) const
{
    return INFO::comboBoxByVar(m_map, variable);
}

QComboBox* DialogBase::comboBoxByVar(const T_LISTDATA& variable) const
{
    return INFO::comboBoxByVar(m_map, variable);
}

helper::CheckComboBox* DialogBase::checkComboBoxByKey(const MAP_KEY_TYPE& key, int index,
                                                      FindPos pos, Other other, bool flag) const
{
    return INFO::checkComboBoxByKey(m_map, key, index, pos, other, flag);
}

helper::CheckComboBox* DialogBase::checkComboBoxByVar(const QVariant& variable) const
{
    return INFO::checkComboBoxByVar(m_map, variable);
}

helper::CheckComboBox* DialogBase::checkComboBoxByVar(const T_LISTDATA& variable) const
{
    return INFO::checkComboBoxByVar(m_map, variable);
}

QListWidget* DialogBase::listWidgetByKey(const MAP_KEY_TYPE& key, int index, FindPos pos,
                                         Other other, bool flag) const
{
    return INFO::listWidgetByKey(m_map, key, index, pos, other, flag);
}

QListWidget* DialogBase::listWidgetByVar(const QVariant& variable) const
{
    return INFO::listWidgetByVar(m_map, variable);
}

QListWidget* DialogBase::listWidgetByVar(const T_LISTDATA& variable) const
{
    return INFO::listWidgetByVar(m_map, variable);
}

QSpinBox* DialogBase::spinBoxByKey(const MAP_KEY_TYPE& key, int index, FindPos pos, Other other,
                                   bool flag) const
{
    return INFO::spinBoxByKey(m_map, key, index, pos, other, flag);
}

QSpinBox* DialogBase::spinBoxByVar(const QVariant& variable) const
{
    return INFO::spinBoxByVar(m_map, variable);
}

QDoubleSpinBox* DialogBase::doubleSpinBoxByKey(const MAP_KEY_TYPE& key, int index, FindPos pos,
                                               Other other, bool flag) const
{
    return INFO::doubleSpinBoxByKey(m_map, key, index, pos, other, flag);
}

QDoubleSpinBox* DialogBase::doubleSpinBoxByVar(const QVariant& variable) const
{
    return INFO::doubleSpinBoxByVar(m_map, variable);
}

QPushButton* DialogBase::pushButtonByKey(const MAP_KEY_TYPE& key, int index, FindPos pos,
                                         Other other, bool flag) const
{
    return INFO::pushButtonByKey(m_map, key, index, pos, other, flag);
}

QPushButton* DialogBase::pushButtonByVar(const QVariant& variable) const
{
    return INFO::pushButtonByVar(m_map, variable);
}

QPushButton* DialogBase::pushButtonByVar(const T_LISTDATA& variable) const
{
    return INFO::pushButtonByVar(m_map, variable);
}

} // namespace mod_form_qt
