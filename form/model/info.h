#pragma once

#include "form/export.h"
#include "form/model/attributes.h"
#include "form/model/callback.h"
#include "form/model/list_data.h"
#include "form/model/map_key_type.h"
#include "form/model/rowtypes.h"
#include "form/model/widget_info.h"

#include <QAction>
#include <QActionGroup>
#include <QButtonGroup>
#include <QCoreApplication>
#include <QDate>
#include <QLayout>
#include <QList>
#include <QMap>
#include <QMenu>
#include <QMetaType>
#include <QPointer>
#include <QSet>
#include <QSharedPointer>
#include <QString>
#include <QTimer>
#include <QVariant>

#include <any>
#include <bitset>
#include <utility>
#include <variant>
#include <vector>

class QCheckBox;
class QComboBox;
class QDateEdit;
class QDateTimeEdit;
class QDoubleSpinBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QMenuBar;
class QPlainTextEdit;
class QPushButton;
class QRadioButton;
class QSpinBox;
class QStatusBar;
class QTabWidget;
class QTextEdit;
class QWidgetAction;

namespace mod_form_qt {

namespace helper {
class CheckComboBox;
} // namespace helper

/// What a row's value can be given as: the widgets of another row (an empty one stands for "no
/// value"), list data, list data in a variable of the caller's, a variable of the caller's, an
/// object such as a menu, or a plain value.
using DataVariant =
    std::variant<WIDGET_INFO, T_LISTDATA, T_LISTDATA*, QVariant*, QObject*, QVariant>;

/// One entry of a menu.
using MenuEntry =
    std::variant<QPointer<QAction>, QPointer<QMenu>, QPointer<QWidgetAction>, std::nullptr_t>;

/// One row of a form description. Its static members are the engine's operations; they take the
/// form data map as a pointer that may be null, and refuse instead of throwing.
class MOD_FORM_QT_EXPORT INFO
{
public:
    Q_DECLARE_TR_FUNCTIONS(mod_form_qt::INFO)

public:
    // ---------------------------------------------------------------- the row

    int eleType = 0; ///< row type, 0 for an empty row that makes nothing
    std::bitset<256> attr; ///< `A_...`
    QVariant param; ///< title as a text, or options as a map
    QVariant data; ///< the value, or a pointer to it
    QString key; ///< name in the form data map
    Callback callback; ///< what the row reports to
    std::any anyData; ///< the caller's; an empty one is inherited from the main row
    QVariant userData; ///< the caller's; only copied

    // Not inline: forms are long lists of rows, and each row would be copied and destroyed in code
    // of its own.

    /// An empty row.
    INFO();
    /// Leaves alone what the data points at.
    ~INFO();
    /// Copies the row; of data that is a pointer, the pointer.
    INFO(const INFO& other);
    /// As the copy; the other row may then only be assigned or destroyed.
    INFO(INFO&& other) noexcept;
    /// As the copy.
    INFO& operator=(const INFO& other);
    /// As the move.
    INFO& operator=(INFO&& other) noexcept;
    /// A row with these members.
    /// \param data  kept as what it is: a plain value, list data, a pointer
    INFO(int eleType, std::bitset<256> attr = {}, const QVariant& param = {},
         const DataVariant& data = {}, MAP_KEY_TYPE key = {}, Callback callback = {},
         std::any anyData = {}, const QVariant& userData = {});

    class Option;

    /// How a form is built and run.
    enum MainFlag : int {
        MF_CREATE_WINDOW = 0x1, ///< make a dialog or main window
        MF_FIXED_SIZE = 0x2, ///< the layout fixes the window's size
        MF_BOLD_LABELS = 0x8, ///< labels are bold
        MF_CREATE_LAYOUT = 0x10, ///< also set window flags on an existing window
        MF_APPLY_TO_WIDGET = 0x20, ///< install the layout on the given widget
        MF_EXEC = 0x40, ///< run the window until it closes
        MF_OPEN = 0x80, ///< show the window, modal to its parent
        MF_SHOW = 0x100, ///< show the window
        MF_MODAL = 0x200, ///< block the whole application
        MF_SCROLLAREA = 0x800, ///< all contents scroll
        MF_WHEEL_GUARD = 0x1000, ///< inputs ignore the wheel unless focused
        MF_PLACE_MAXIMIZED = 0x2000, ///< with `MF_PLACE_CENTER`: maximised
        MF_PLACE_CENTER = 0x4000, ///< in the middle of the screen
        MF_PLACE_RAISE = 0x8000, ///< shown and activated
        MF_STAY_ON_TOP = 0x10000, ///< above other windows
        MF_USE_MAP_VALUES = 0x20000, ///< every row has `A_USE_MAP_VALUE`
        MF_NO_SNAPSHOT = 0x80000, ///< a cancelled form leaves its changes
        MF_LOCAL_EVENT_LOOP = 0x100000, ///< a main window runs in a loop of its own
        MF_SHARED_DELETE_LATER = 0x200000, ///< the caller shares the window
        MF_NO_MARGINS = 0x800000 ///< no margins around the form
    };
    /// Any number of them.
    Q_DECLARE_FLAGS(MainFlags, MainFlag)

    /// What `createLayout` gives back.
    struct Result
    {
        /// 1 for success and for an accepted form, otherwise the result of the dialog or window
        int code = 1;
        QPointer<QWidget> mainWidget; ///< the window, or the widget that holds the form
        QPointer<QLayout> layout; ///< the outermost layout
        /// the form data map; owned by it if the caller gave none
        QSharedPointer<QMap<QString, QVariant>> map;
        QSharedPointer<QWidget> window; ///< set with `MF_SHARED_DELETE_LATER`
    };

    // ---------------------------------------------------------------- constants

    // Inline: whoever includes this header, even for an object that is built before main, finds
    // them initialised.

    // What a value may hold beside plain data. These alone are not inline: to register a type costs
    // every file that does it a second to compile.

    static const int WIDGET_INFO_METATYPE; ///< meta-type id of WIDGET_INFO
    static const int LISTDATA_METATYPE; ///< meta-type id of T_LISTDATA
    static const int LISTDATA_PTR_METATYPE; ///< meta-type id of T_LISTDATA_PTR
    static const int VARIANT_PTR_METATYPE; ///< meta-type id of T_VARIANT_PTR
    static const int VARMAP_SHARED_PTR_METATYPE; ///< meta-type id of T_VARMAP_SHARED_PTR

    /// Default key of the value that holds a whole map in an INI group.
    inline static const QString iniVariantMapKey = QStringLiteral("vmap");
    /// Group of an INI file that remembers the configuration last in use.
    inline static const QString iniMultiConfGroupNameKey = QStringLiteral("default_conf");
    /// Key in that group.
    inline static const QString iniMultiConfLastNameKey = QStringLiteral("name");

    // Prefixes of the engine's own, temporary entries in a form data map.

    /// Before the generated key of a row that is bound to a variable and has no key.
    inline static const QString automatikVarName = QStringLiteral("::mod_form_qt_auto_var:");
    /// Before a row's key: the record of the row's widgets.
    inline static const QString widgetDataVarName = QStringLiteral("::mod_form_qt_widget_data:");
    /// Before a name: objects such as menus and status bars.
    inline static const QString objectDataVarName = QStringLiteral("::mod_form_qt_object_data:");

    // Reserved names in the map.

    /// The menus and menu bars of the form; see `menus`.
    inline static const QString objectMenuKeyName = QStringLiteral("menus");
    /// The status bars of the form; see `statusBars`.
    inline static const QString statusBarKeyName = QStringLiteral("statusbar");
    /// The main widget of the form.
    inline static const QString objectMainKeyName = QStringLiteral("main");
    /// Property of a window whose closing has been decided; its value is the exit code.
    inline static const QString mainWndExitCodeKeyName = QStringLiteral("mainwindow_exitcode");

    // Keys of the standard buttons that have none of their own.

    /// Of an `E_OK_BUTTON`.
    inline static const QString objectOKButtonName =
        QStringLiteral("okbutton_E0DF878092E64FD1B4B186233FF97875");
    /// Of an `E_CANCEL_BUTTON`.
    inline static const QString objectCancelButtonName =
        QStringLiteral("cancelbutton_E0DF878092E64FD1B4B186233FF97875");
    /// Of an `E_CLOSE_BUTTON`.
    inline static const QString objectCloseButtonName =
        QStringLiteral("closebutton_E0DF878092E64FD1B4B186233FF97875");
    /// Of an `E_HELP_BUTTON`.
    inline static const QString objectHelpButtonName =
        QStringLiteral("helpbutton_E0DF878092E64FD1B4B186233FF97875");

    // Names of properties of menus and actions.

    /// The identifier by which an entry is found again.
    inline static const QString menuIDKey = QStringLiteral("menuid");
    /// Number of the group of actions that exclude each other.
    inline static const QString menuGroupNoKey = QStringLiteral("menugroupno");

    /// Stands for an absent date in an `E_DATE` row: the last day that the editor can show.
    inline static const QDate dateInvalid = QDate(9999, 12, 31);
    /// No alignment.
    inline static const Qt::Alignment alignZERO = {};

    /// What marks a mandatory row before its label; empty for nothing.
    inline static const QString mandatoryTextLeft;
    /// What marks a mandatory row behind its label; empty for nothing.
    inline static const QString mandatoryTextRight =
        QStringLiteral("<big><strong style=\"color:red\">*</strong></big>");

    // Settings of the whole program; to be changed before forms are built.

    /// Whether inputs may ignore the wheel without focus at all.
    inline static bool bGlobalWheelGuard = true;
    /// Whether the lists of combo boxes are limited in height.
    inline static bool useLimitExternalComboItems = false;
    /// How many items such a list shows.
    inline static int maxVisibleComboItems = 10;

    // ---------------------------------------------------------------- keys and texts

    /// \return  true if `key` starts, case-sensitively, with one of the three prefixes. Such
    ///          entries are never written to and never taken from a file.
    static bool isTempKeyName(const QString& key);
    /// \return  `automatikVarName` with `name` behind it
    static QString buildAutomatikVarKeyForPtr(const QString& name);
    /// \return  `objectDataVarName` with `name` behind it
    static QString buildObjectDataKey(const QString& name);
    /// Removes generated keys and object entries that an earlier form left behind. What stands
    /// under ordinary keys stays and is not followed.
    static void cleanupPointerEntries(QMap<QString, QVariant>* map);

    /// \return  the texts of buttons that bring none of their own, by row type
    static QMap<int, QString> defaultWidgetText();
    /// \return  the text for one row type, empty if there is none
    static QString getDefaultWidgetText(int eleType);
    /// \return  the messages of `validateInput` by option key; "_1" behind the key marks a message
    ///          about a value, "_2" one about a text
    static QMap<QString, QString> defaultValidationText();

    // ---------------------------------------------------------------- kinds of values

    template <typename T>
    class DATA;

    /// A value that holds the type itself and one that points at it differ, here and for the types
    /// that follow; none of these functions looks behind a pointer.
    /// \return  true for list data
    static bool isListData(const QVariant& value);
    /// \return  true for a pointer to list data
    static bool isListDataPtr(const QVariant& value);
    /// \return  true for list data and for a pointer to it
    static bool isListDataOrListDataPtr(const QVariant& value);
    /// \return  true for a pointer to a variant
    static bool isVariantPtr(const QVariant& value);
    /// \return  true for the record of a row's widgets
    static bool isWidgetInfo(const QVariant& value);
    /// \return  true for a map of variants by text
    static bool isVariantMap(const QVariant& value);
    /// \return  true for a QVariantList; a list of texts or of another type is none
    static bool isQVariantListType(const QVariant& value);

    /// \return  the number, also one that a pointer points at, as QVariant::toInt; 0 for what is
    /// none
    static qint32 varToInt32(const QVariant& value);
    /// \return  as varToInt32(), by QVariant::toUInt
    static quint32 varToUInt32(const QVariant& value);
    /// \return  as varToInt32(), by QVariant::toLongLong
    static qint64 varToInt64(const QVariant& value);
    /// \return  as varToInt32(), by QVariant::toULongLong
    static quint64 varToUInt64(const QVariant& value);

    /// Writes list data to the debug log, one line an item.
    static void debugVariantAsListData(const QVariant& value);

    // ---------------------------------------------------------------- list data

    /// What `updateListData` raises when the new items are in.
    enum EleInitEvent {
        NO_INIT_EVENT, ///< nothing
        INIT_EVENT, ///< the row's change, once
        INIT_EVENT_VALID ///< the row's change, once, if something is selected
    };

    /// \return  the value of the first selected item, invalid if none is selected
    static QVariant getSelectedListValue(const T_LISTDATA& list);
    /// \param list  list data or a pointer to it; anything else and null have no selection
    static QVariant getSelectedListValue(const QVariant& list);

    /// \return  the values of the selected items in the order of the items
    static QVariantList getSelectedListValues(const T_LISTDATA& list);
    /// \param list  list data or a pointer to it; anything else and null have no selection
    static QVariantList getSelectedListValues(const QVariant& list);

    /// \return  the values of all items in their order
    static QVariantList getUserDataListValues(const T_LISTDATA& list);
    /// \param list  list data or a pointer to it; anything else and null have no items
    static QVariantList getUserDataListValues(const QVariant& list);

    /// Marks items of a row's list data, in the map or in the variable it is bound to. The widget
    /// is left alone.
    /// \param selection  a value or a list of values; list data counts by its own marks
    /// \param multi      false: at most the first match is marked
    /// \return           false if the key has no list data
    static bool setListSelData(QMap<QString, QVariant>* map, const QString& key,
                               const QVariant& selection, bool multi);

    /// As `setListSelData`.
    /// \param matched  out: the values that were found among the items
    static bool userSelDataToListData(QMap<QString, QVariant>* map, const QString& key,
                                      const QVariant& selection, bool multi,
                                      QList<QVariant>& matched);

    /// Marks items by a selection as it was saved.
    /// \param loaded  a value or a list of values; list data counts by its own marks
    /// \param list    in/out: list data, or a pointer to it, which is then written through
    /// \param multi   true: the marks become exactly those of `loaded`, even if that is empty.
    ///                false: the first of the stored values that an item has is marked; the marks
    ///                stay if there is none
    /// \return        true if `list` is list data and the marks were set
    static bool loadedSelDataToListData(const QVariant& loaded, QVariant& list, bool multi);

    /// Gives a row other items, in the map or the bound variable and in its widget.
    /// \param newData        list data or a pointer to it
    /// \param event          what is raised then
    /// \param keepSelection  what is selected stays so, if the new items still hold it
    /// \param blockSignals   the widget stays silent while it is filled
    /// \return               false if the key has no list row
    static bool updateListData(const QVariant& newData, QMap<QString, QVariant>* map,
                               const QString& key, EleInitEvent event, bool keepSelection = false,
                               bool blockSignals = true, bool = false, bool = false);

    /// Shows a selection in a row's widgets. The map is left alone.
    /// \param selection     a value or a list of values; list data counts by its own marks. What no
    ///                      item has selects nothing
    /// \param blockSignals  the widgets stay silent
    /// \return              false if the row has no list widget
    static bool selectListCtrlBySelData(const QMap<QString, QVariant>* map, const QString& key,
                                        const QVariant& selection, bool blockSignals = true);

    /// Reduces a value to the plain data behind it.
    /// \param value   a value as it stands in a form data map
    /// \param asList  list data gives a list in any case; wins over `single`
    /// \param single  list data with exactly one selected item gives that item's value
    /// \return        of list data the values of the selected items, as a QVariantList that is
    ///                empty if there is none; of a pointer what it points at, through any number
    ///                of pointers; invalid for a null pointer and for pointers that form a ring;
    ///                anything else as it is
    static QVariant getBaseValue(const QVariant& value, bool asList = false, bool single = false);

    /// Reduces the entry `key` of `map`, as above.
    /// \return  invalid also for a null map and a missing key; the map is never changed
    static QVariant getBaseValue(const QMap<QString, QVariant>* map, const QString& key,
                                 bool asList = false, bool single = false);

    /// As above, for a key as a literal. Without this one it would as well be read as the switch of
    /// a single value.
    static QVariant getBaseValue(const QMap<QString, QVariant>* map, const char* key,
                                 bool asList = false, bool single = false)
    {
        return getBaseValue(map, QString::fromUtf8(key), asList, single);
    }

    // ---------------------------------------------------------------- values and widgets

    /// Reads or writes the value of an input widget.
    /// \param set           true: writes `value`, false: reads into it
    /// \param blockSignals  the widget stays silent
    /// \param value         in/out. A widget of another class leaves it as it is
    static void getSetData(QWidget* widget, bool set, bool blockSignals, QVariant& value);

    /// Gives rows of a running form other values.
    /// \param values      by key. Temporary keys are passed over, keys without a row get their
    ///                    entry in the map
    /// \param emitChange  the rows' callbacks are told, after all values are in
    /// \return            the number of keys taken
    static int setData(QMap<QString, QVariant>* map, const QMap<QString, QVariant>& values,
                       bool emitChange);
    /// As above, for one row.
    /// \return  1 if the key was taken, otherwise 0
    static int setData(QMap<QString, QVariant>* map, const MAP_KEY_TYPE& key, const QVariant& value,
                       bool emitChange);

    /// Gives the row that is bound to a variable another text.
    /// \return  false if no row of the form is bound to it
    static bool setTextVariantPtr(QMap<QString, QVariant>* map, QVariant& var, const QString& text,
                                  bool emitChange);
    /// As `setTextVariantPtr`, with a number.
    static bool setDoubleVariantPtr(QMap<QString, QVariant>* map, QVariant& var, double value,
                                    bool emitChange);
    /// As `setTextVariantPtr`, with a checked state.
    static bool setCheckedVariantPtr(QMap<QString, QVariant>* map, QVariant& var, bool checked,
                                     bool emitChange);

    /// While a widget's events are blocked, its changes call no callback.
    static void blockEvent(const QPointer<QWidget>& widget, bool on);
    /// \return  true while the events of the widget are blocked
    static bool eventBlocked(const QPointer<QWidget>& widget);

    /// Blocks a widget's events for a scope. Inside another guard of the same widget it has no
    /// effect of its own.
    class EVENTBLOCK
    {
    public:
        /// Blocks from here on; null has no effect.
        explicit EVENTBLOCK(const QPointer<QWidget>& widget);
        /// Lets the events through again, if this guard has blocked them.
        ~EVENTBLOCK();
        Q_DISABLE_COPY_MOVE(EVENTBLOCK)

    private:
        QPointer<QWidget> m_widget;
        bool m_mine = false;
    };

    // ---------------------------------------------------------------- looking widgets up

    /// \{
    /// Finds a widget of the class in the name, null if there is none. "ByKey": in the row of that
    /// key. `index` is a base or extended element type or the widget's position in its row, `pos`
    /// says which of several, `other` gets the row's label or null if it is given, `flag` has no
    /// effect. "ByVar": in the row that is bound to the variable.
    static QWidget* widgetByKey(const QMap<QString, QVariant>* map, const MAP_KEY_TYPE& key,
                                int index = 0, FindPos pos = FIND_POS_ANY,
                                QPointer<QWidget>* other = nullptr, bool flag = false);
    static QLabel* labelByKey(const QMap<QString, QVariant>* map, const MAP_KEY_TYPE& key,
                              int index = E_LABEL, FindPos pos = FIND_POS_ANY,
                              QPointer<QWidget>* other = nullptr, bool flag = false);
    static QLineEdit* lineEditByKey(const QMap<QString, QVariant>* map, const MAP_KEY_TYPE& key,
                                    int index = E_LINEEDIT, FindPos pos = FIND_POS_ANY,
                                    QPointer<QWidget>* other = nullptr, bool flag = false);
    static QLineEdit* lineEditByVar(const QMap<QString, QVariant>* map, const QVariant& variable);
    static QPlainTextEdit* plainTextEditByKey(const QMap<QString, QVariant>* map,
                                              const MAP_KEY_TYPE& key, int index = E_PLAINTEXT,
                                              FindPos pos = FIND_POS_ANY,
                                              QPointer<QWidget>* other = nullptr,
                                              bool flag = false);
    static QPlainTextEdit* plainTextEditByVar(const QMap<QString, QVariant>* map,
                                              const QVariant& variable);
    static QTextEdit* textEditByKey(const QMap<QString, QVariant>* map, const MAP_KEY_TYPE& key,
                                    int index = E_TEXTEDIT, FindPos pos = FIND_POS_ANY,
                                    QPointer<QWidget>* other = nullptr, bool flag = false);
    static QTextEdit* textEditByVar(const QMap<QString, QVariant>* map, const QVariant& variable);
    static QDateEdit* dateEditByKey(const QMap<QString, QVariant>* map, const MAP_KEY_TYPE& key,
                                    int index = E_DATE, FindPos pos = FIND_POS_ANY,
                                    QPointer<QWidget>* other = nullptr, bool flag = false);
    static QDateEdit* dateEditByVar(const QMap<QString, QVariant>* map, const QVariant& variable);
    static QCheckBox* checkBoxByKey(const QMap<QString, QVariant>* map, const MAP_KEY_TYPE& key,
                                    int index = E_CHECKBOX, FindPos pos = FIND_POS_ANY,
                                    QPointer<QWidget>* other = nullptr, bool flag = false);
    static QCheckBox* checkBoxByVar(const QMap<QString, QVariant>* map, const QVariant& variable);
    static QRadioButton* radioButtonByKey(const QMap<QString, QVariant>* map,
                                          const MAP_KEY_TYPE& key, int index = E_RADIOBUTTON,
                                          FindPos pos = FIND_POS_ANY,
                                          QPointer<QWidget>* other = nullptr, bool flag = false);
    static QRadioButton* radioButtonByVar(const QMap<QString, QVariant>* map,
                                          const QVariant& variable);
    static QComboBox* comboBoxByKey(const QMap<QString, QVariant>* map, const MAP_KEY_TYPE& key,
                                    int index = E_COMBOBOX, FindPos pos = FIND_POS_ANY,
                                    QPointer<QWidget>* other = nullptr, bool flag = false);
    static QComboBox* comboBoxByVar(const QMap<QString, QVariant>* map, const QVariant& variable);
    static QComboBox* comboBoxByVar(const QMap<QString, QVariant>* map, const T_LISTDATA& variable);
    static helper::CheckComboBox*
    checkComboBoxByKey(const QMap<QString, QVariant>* map, const MAP_KEY_TYPE& key,
                       int index = E_CHECKCOMBOBOX, FindPos pos = FIND_POS_ANY,
                       QPointer<QWidget>* other = nullptr, bool flag = false);
    static helper::CheckComboBox* checkComboBoxByVar(const QMap<QString, QVariant>* map,
                                                     const QVariant& variable);
    static helper::CheckComboBox* checkComboBoxByVar(const QMap<QString, QVariant>* map,
                                                     const T_LISTDATA& variable);
    static QListWidget* listWidgetByKey(const QMap<QString, QVariant>* map, const MAP_KEY_TYPE& key,
                                        int index = E_LISTBOX, FindPos pos = FIND_POS_ANY,
                                        QPointer<QWidget>* other = nullptr, bool flag = false);
    static QListWidget* listWidgetByVar(const QMap<QString, QVariant>* map,
                                        const QVariant& variable);
    static QListWidget* listWidgetByVar(const QMap<QString, QVariant>* map,
                                        const T_LISTDATA& variable);
    static QSpinBox* spinBoxByKey(const QMap<QString, QVariant>* map, const MAP_KEY_TYPE& key,
                                  int index = E_NUMBER, FindPos pos = FIND_POS_ANY,
                                  QPointer<QWidget>* other = nullptr, bool flag = false);
    static QSpinBox* spinBoxByVar(const QMap<QString, QVariant>* map, const QVariant& variable);
    static QDoubleSpinBox* doubleSpinBoxByKey(const QMap<QString, QVariant>* map,
                                              const MAP_KEY_TYPE& key, int index = E_NUMBER,
                                              FindPos pos = FIND_POS_ANY,
                                              QPointer<QWidget>* other = nullptr,
                                              bool flag = false);
    static QDoubleSpinBox* doubleSpinBoxByVar(const QMap<QString, QVariant>* map,
                                              const QVariant& variable);
    static QPushButton* pushButtonByKey(const QMap<QString, QVariant>* map, const MAP_KEY_TYPE& key,
                                        int index = E_BUTTON, FindPos pos = FIND_POS_ANY,
                                        QPointer<QWidget>* other = nullptr, bool flag = false);
    static QPushButton* pushButtonByVar(const QMap<QString, QVariant>* map,
                                        const QVariant& variable);
    static QPushButton* pushButtonByVar(const QMap<QString, QVariant>* map,
                                        const T_LISTDATA& variable);

    /// \}

    /// Finds the widget of class T of the row that is bound to a variable.
    template <typename T>
    static T* widgetFromVariantPtr(const QMap<QString, QVariant>* map, const QVariant& variable)
    {
        return firstOf<T>(boundRow(map, variable));
    }

    /// Finds the widget of class T of the row that is bound to list data.
    template <typename T>
    static T* widgetFromListDataPtr(const QMap<QString, QVariant>* map, const T_LISTDATA& variable)
    {
        return firstOf<T>(boundRow(map, variable));
    }

    /// \return  the widgets of the row that is bound to a variable
    static WIDGET_INFO boundRow(const QMap<QString, QVariant>* map, const QVariant& variable);
    /// \return  the widgets of the row that is bound to list data
    static WIDGET_INFO boundRow(const QMap<QString, QVariant>* map, const T_LISTDATA& variable);

    // ---------------------------------------------------------------- events

    /// Takes a change from a widget: asks the callbacks, stores the value, tells the callbacks.
    /// \param value  the previous value of a row that has no key
    /// \param key    used if the row has none
    /// \return       0 if the change was refused or is none, 1 otherwise
    static int handleChangedValues(const INFO& row, const INFO& mainRow,
                                   QPointer<QWidget> mainWidget, QWidget* widget,
                                   const QVariant& value, QMap<QString, QVariant>* map,
                                   const QString& key);

    /// Raises the change of a widget with the value it has.
    /// \param onlyValid  not for an absent date and a combo box without selection
    /// \param immediate  raises what a row with `A_IMMEDIATE_DATA_UPDATE` listens to
    static void triggerEmit(QObject* object, bool onlyValid, bool immediate);

    /// \{
    /// Lets a widget report to the callbacks and the map.
    /// \param row          the widget's row
    /// \param mainRow      the form's main row
    /// \param mainWidget   the window, or the widget that holds the form
    /// \param widget       null has no effect
    /// \param map          the form data map
    /// \param key          used if the row has none
    /// \param signalNames  out: the names of the signals that were connected are appended
    static void lineEditConnect(const INFO& row, const INFO& mainRow, QPointer<QWidget> mainWidget,
                                QPointer<QLineEdit> widget, QMap<QString, QVariant>* map,
                                QString key, QList<QString>& signalNames);
    static void comboBoxConnect(const INFO& row, const INFO& mainRow, QPointer<QWidget> mainWidget,
                                QPointer<QComboBox> widget, QMap<QString, QVariant>* map,
                                QString key, QList<QString>& signalNames);
    static void checkComboConnect(const INFO& row, const INFO& mainRow,
                                  QPointer<QWidget> mainWidget,
                                  QPointer<helper::CheckComboBox> widget,
                                  QMap<QString, QVariant>* map, QString key,
                                  QList<QString>& signalNames);
    static void checkBoxConnect(const INFO& row, const INFO& mainRow, QPointer<QWidget> mainWidget,
                                QPointer<QCheckBox> widget, QMap<QString, QVariant>* map,
                                QString key, QList<QString>& signalNames);
    static void radioButtonConnect(const INFO& row, const INFO& mainRow,
                                   QPointer<QWidget> mainWidget, QPointer<QRadioButton> widget,
                                   QMap<QString, QVariant>* map, QString key,
                                   QList<QString>& signalNames);
    /// \}

    /// Asks whether a form may close: validation for `kAccept`, then the row, then the main row.
    /// If so, its values are saved where it has a file, and its widget records leave the map.
    /// \param row       the raising row; the main row itself for what the window raises
    /// \param saveKeys  whether only certain keys are saved, and which
    static bool canClose(QWidget* mainWidget, QWidget* widget, CallbackType type, const INFO& row,
                         const INFO& mainRow, QMap<QString, QVariant>* map,
                         const std::pair<bool, QSet<QString>>& saveKeys);
    /// The end of a form that may close: saves its values and forgets its widgets.
    /// \param save  false: only the widget records leave the map
    static void closeWidget(QWidget* widget, const INFO& mainRow, QMap<QString, QVariant>* map,
                            const std::pair<bool, QSet<QString>>& saveKeys, bool save);

    /// Sees to the closing and the key presses of a form's main widget; see events/event_filter.h.
    class UserEventFilter;

    /// Checks the fields of a form and tells the user about the first that fails.
    /// \param parent  of the message
    /// \return        true if all fields are in order
    static bool validateInput(QWidget* parent, QMap<QString, QVariant>* map);

    // ---------------------------------------------------------------- building

    /// Builds a form, and a window for it, and runs it, as the flags say.
    /// \param parent       parent of the new window, or the widget that the form is for
    /// \param windowFlags  none stands for `F_DIALOG_TITLE` where window flags are called for
    /// \param mainRow      title, options and callback of the whole form
    /// \param map          the form data map, which has to outlive the form; null makes one
    /// \param keys         in/out: which keys a form with a file saves; null saves all. The keys of
    ///                     rows that take their value from the map are added
    static Result createLayout(QWidget* parent, MainFlags flags, Qt::WindowFlags windowFlags,
                               const INFO& mainRow, const QList<INFO>& rows,
                               QMap<QString, QVariant>* map, QSet<QString>* keys);

    /// Rewrites rows before they are built: moves labels out of horizontal boxes, ends the rows of
    /// grids with a stretch where they ask for it.
    static void NormalizeLayout(QList<INFO>& rows);

    /// Puts rows in the place of the placeholder of that key.
    /// \return  nonzero on success, 0 if there is no such placeholder
    static int insertLayout(QList<INFO>& target, const QList<INFO>& rows, const MAP_KEY_TYPE& key);

    /// \return  the rows of a strip with OK, help and cancel
    static QList<INFO> layoutOkHelpCancel();
    /// \return  the rows of a strip with OK, help, a link and cancel, with these texts
    static QList<INFO> createOKHelpLinkCancel(const QString& ok, const QString& help,
                                              const QString& link, const QString& cancel);

    /// Applies sizes and size policies of an option map to a widget.
    /// \param index  the widget's position in its row
    static void setProps(QWidget* widget, int index, const Option& option);
    /// \param byType  alignments by element type, for what the option does not settle
    /// \return        the alignment of a widget in its cell
    static Qt::Alignment align(QWidget* widget, int index, const Option& option,
                               Qt::Alignment fallback,
                               const QMap<int, QFlags<Qt::AlignmentFlag>>& byType);
    /// \return  the stretch factor of a widget in its layout, 0 if there is none
    static int stretch(QWidget* widget, int index, const Option& option);
    /// Applies attributes to a widget, by its class.
    /// \param guardWheel   the wheel guard may be installed
    /// \param heightLines  height of a text edit in lines, -1 for none
    /// \param groups       in/out: button groups by number, made on first use; may be null
    /// \param groupParent  owner of new groups
    static void addWidgetAttr(QWidget* widget, bool guardWheel, MainFlags flags,
                              const std::bitset<256>& attr, int heightLines,
                              QMap<int, QPointer<QButtonGroup>>* groups, QObject* groupParent);

    /// Gives a window its title and properties and loads its saved values.
    /// \param applyTitle  false: title and properties are left alone
    static void initWidget(QPointer<QWidget> widget, const INFO& mainRow,
                           QMap<QString, QVariant>* map, bool applyTitle);

    // Build and run a form. The main row is made of title (or options), callback, any and userData.

    /// Makes a dialog and runs it until it closes.
    static Result createAndExecDialog(QWidget* parent, const QVariant& title,
                                      const QList<INFO>& rows, MainFlags flags = {},
                                      Qt::WindowFlags windowFlags = {},
                                      QMap<QString, QVariant>* map = nullptr,
                                      QSet<QString>* keys = nullptr, Callback callback = {},
                                      std::any any = {}, const QVariant& userData = {});
    /// Makes a main window and runs it until it closes.
    /// \param localLoop  runs in an event loop of its own rather than the application's
    static Result createAndExecMainWindow(QWidget* parent, bool localLoop, const QVariant& title,
                                          const QList<INFO>& rows, MainFlags flags = {},
                                          Qt::WindowFlags windowFlags = {},
                                          QMap<QString, QVariant>* map = nullptr,
                                          QSet<QString>* keys = nullptr, Callback callback = {},
                                          std::any any = {}, const QVariant& userData = {});
    /// Builds a form and installs it on a widget.
    /// \param createLayout  also sets window flags if the widget is a window
    static Result applyLayout(QWidget* widget, bool createLayout, const QVariant& title,
                              const QList<INFO>& rows, MainFlags flags = {},
                              Qt::WindowFlags windowFlags = {},
                              QMap<QString, QVariant>* map = nullptr, QSet<QString>* keys = nullptr,
                              Callback callback = {}, std::any any = {},
                              const QVariant& userData = {});
    /// Builds a form for a widget, whose layout the caller installs.
    static Result getLayout(QWidget* widget, bool createLayout, const QVariant& title,
                            const QList<INFO>& rows, MainFlags flags = {},
                            Qt::WindowFlags windowFlags = {},
                            QMap<QString, QVariant>* map = nullptr, QSet<QString>* keys = nullptr,
                            Callback callback = {}, std::any any = {},
                            const QVariant& userData = {});

    // ---------------------------------------------------------------- menus and status bars

    /// Notes a top-level menu or menu bar of a form; one that is noted already stays once.
    static void storeMenu(QObject* menu, QMap<QString, QVariant>* map);
    /// \return  the menus and menu bars that were noted; null for one that has gone
    static QList<QPointer<QObject>> menus(const QMap<QString, QVariant>* map);
    /// Lists the entries of all menus of a form, each with the menu it stands in.
    static void collectMenuData(const QMap<QString, QVariant>* map,
                                std::vector<std::pair<MenuEntry, QPointer<QMenu>>>* out);
    /// Notes a status bar of a form; one that is noted already stays once.
    static void storeStatusBars(QStatusBar* bar, QMap<QString, QVariant>* map);
    /// \return  the status bars that were noted; null for one that has gone
    static QList<QPointer<QStatusBar>> statusBars(const QMap<QString, QVariant>* map);

    // ---------------------------------------------------------------- storage

    /// \return  `iniVariantMapKey`
    static QString getDefaultIniSumMapName();

    /// Stores a map in a group of an INI file and leaves the file's other groups alone. List data
    /// is stored by its selection, a pointer by what it points at. Temporary entries and values
    /// that could not be read back are left out.
    /// \param map           null does nothing
    /// \param fileName      the file; it and its folder are created as needed. Empty does nothing
    /// \param group         the group's name
    /// \param separateKeys  false: the map is one value under `sumMapName`, which it replaces, even
    ///                      with an empty map. true: each entry has a key of its own, and keys that
    ///                      are in the group already stay; entries with a "/" in their key go to a
    ///                      subgroup, from which they are not read back
    /// \param keys          if not null, only entries whose key it holds are stored
    /// \param sumMapName    empty stands for `iniVariantMapKey`
    ///
    /// A failure of any kind is silent: the save then has no effect.
    static void saveMapToIniFile(const QMap<QString, QVariant>* map, const QString& fileName,
                                 const QString& group, bool separateKeys = false,
                                 const QSet<QString>* keys = nullptr,
                                 const QString& sumMapName = QString());

    /// Reads back what `saveMapToIniFile` has stored.
    /// \param map           out. With `separateKeys` false the stored map replaces it, otherwise
    ///                      the stored entries are added to it. Values stored under keys of their
    ///                      own may come back as texts
    /// \param separateKeys  as at the save; the key `sumMapName` is then passed over
    /// \param sumMapName    empty stands for `iniVariantMapKey`
    /// \return              true if the attempt ran, which includes a missing or unreadable file,
    ///                      group or key: `map` is then untouched. false for a null map, an empty
    ///                      file name, after an exception, and for a file that no stack or memory
    ///                      could hold, to which nothing is saved either
    static bool loadMapFromIniFile(QMap<QString, QVariant>* map, const QString& fileName,
                                   const QString& group, bool separateKeys = false,
                                   const QString& sumMapName = QString());

    /// Writes a map as bytes, as `saveMapToIniFile` would write it to a file: big-endian, with a
    /// magic number and a version, so that another machine or program can read it.
    /// \param out   out: replaced
    /// \param keys  if not null, only entries whose key it holds are written
    /// \return      false if a value could not be written
    static bool variantMapToByteArray(const QMap<QString, QVariant>& map, QByteArray& out,
                                      const QSet<QString>* keys);

    /// Reads back what `variantMapToByteArray` has written. The bytes may be damaged in any way.
    /// \param map  out: untouched for bytes that are no such image, otherwise replaced; empty for
    /// an
    ///             image that is damaged
    /// \return     true if at least one entry was read, thus false for the image of an empty map
    static bool byteArrayToVariantMap(const QByteArray& in, QMap<QString, QVariant>& map);

    /// The configurations in a group of a file.
    /// \param names           out: their names, sorted
    /// \param lastName        out: the one last in use, empty if none is remembered
    /// \param verifyLastName  empties a remembered name that the group does not hold
    /// \return                true
    static bool loadIniOptionNames(const QString& fileName, const QString& group, bool,
                                   QList<QString>& names, QString& lastName, bool verifyLastName);
    /// \return  the configuration last in use, empty if none is remembered
    static QString getDefaultIniMultiOptionName(const QString& fileName);
    /// Remembers the configuration last in use. A failure is silent.
    static void setDefaultIniMultiOptionName(const QString& fileName, const QString& name);

private:
    template <typename T>
    static T* firstOf(const WIDGET_INFO& row)
    {
        for (const QPointer<QWidget>& widget : row.widgets()) {
            if (auto* found = qobject_cast<T*>(widget.data()))
                return found;
        }
        return nullptr;
    }
};

Q_DECLARE_OPERATORS_FOR_FLAGS(INFO::MainFlags)

using enum INFO::MainFlag;

} // namespace mod_form_qt

Q_DECLARE_METATYPE(QFlags<Qt::AlignmentFlag>)
Q_DECLARE_METATYPE(Qt::CheckState)
