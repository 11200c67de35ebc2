#include "tests/form/form_fixture.h"

using namespace mod_form_qt;

namespace {

enum class Locked { no, readOnly, disabled };

/// What is expected of one row type.
struct RowCase
{
    const char* name;
    INFO row; // key "k", title "Titel"
    const char* className; // of the widget that has the value
    int type;
    int pos; // of that widget; the label, if any, is at 0
    QVariant first; // base value in the map once the form stands
    std::function<void(QWidget*)> edit; // as a user does; null where a user cannot
    QVariant edited;
    QVariant set; // given to setData; invalid where nothing changes
    QVariant afterSet;
    Locked locked = Locked::no; // effect of A_READONLY
};

INFO make(int type, const DataVariant& data, const QVariantMap& options = {},
          std::bitset<256> attr = {})
{
    QVariantMap param = options;
    param.insert(INFO::Option::titleKey, QStringLiteral("Titel"));
    return INFO(type, attr, param, data, "k");
}

void click(QWidget* widget)
{
    QTest::mouseClick(widget, Qt::LeftButton, {}, QPoint(8, widget->height() / 2));
}

void typeNumber(QWidget* widget, const QString& digits)
{
    widget->setFocus();
    QTest::keyClick(widget, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(widget, digits);
    QTest::keyClick(widget, Qt::Key_Return);
}

std::vector<RowCase> inputCases()
{
    const T_LISTDATA list = items({"eins", "zwei", "drei"}, {"eins"});
    const QVariantMap spin = {{INFO::Option::spinBoxKey, true}};
    const QDate day(2024, 2, 29);
    const QDateTime moment(day, QTime(12, 30));
    return {
        {"line edit", make(E_LINEEDIT, QStringLiteral("alt")), "QLineEdit", E_LINEEDIT, 1, "alt",
         [](QWidget* w) { retype(w, "neu"); }, "neu", "gesetzt", "gesetzt", Locked::readOnly},
        {"text edit", make(E_TEXTEDIT, QStringLiteral("alt")), "QTextEdit", E_TEXTEDIT, 1, "alt",
         [](QWidget* w) { retype(w, "neu"); }, "neu", "gesetzt", "gesetzt", Locked::readOnly},
        {"plain text", make(E_PLAINTEXT, QStringLiteral("alt")), "QPlainTextEdit", E_PLAINTEXT, 1,
         "alt", [](QWidget* w) { retype(w, "neu"); }, "neu", "gesetzt", "gesetzt",
         Locked::readOnly},
        {"check box", make(E_CHECKBOX, true), "QCheckBox", E_CHECKBOX, 0, true, click, false, true,
         true, Locked::disabled},
        {"radio button", make(E_RADIOBUTTON, false), "QRadioButton", E_RADIOBUTTON, 0, false, click,
         true, false, false, Locked::disabled},
        {"list box", make(E_LISTBOX, list), "QListWidget", E_LISTBOX, 1, QVariantList {"eins"},
         [](QWidget* w) {
             auto* box = qobject_cast<QListWidget*>(w);
             QTest::mouseClick(box->viewport(), Qt::LeftButton, {},
                               box->visualItemRect(box->item(1)).center());
         },
         QVariantList {"zwei"}, "drei", QVariantList {"drei"}, Locked::disabled},
        {"combo box", make(E_COMBOBOX, list), "mod_form_qt::helper::FocusWheelComboBox", E_COMBOBOX,
         1, QVariantList {"eins"}, [](QWidget* w) { QTest::keyClick(w, Qt::Key_Down); },
         QVariantList {"zwei"}, "drei", QVariantList {"drei"}, Locked::disabled},
        {"check combo box", make(E_CHECKCOMBOBOX, list), "mod_form_qt::helper::CheckComboBox",
         E_CHECKCOMBOBOX, 1, QVariantList {"eins"},
         [](QWidget* w) {
             auto* box = qobject_cast<helper::CheckComboBox*>(w);
             box->showPopup();
             QVERIFY(QTest::qWaitForWindowExposed(box->view()->window()));
             const QModelIndex second = box->model()->index(1, 0);
             QTest::mouseClick(box->view()->viewport(), Qt::LeftButton, {},
                               box->view()->visualRect(second).center());
             box->hidePopup();
         },
         QVariantList {"eins", "zwei"}, QVariantList {"drei"}, QVariantList {"drei"},
         Locked::disabled},
        {"menu button", make(E_MENU_BUTTON, list, {}, A_MULTISEL), "QPushButton", E_BUTTON, 0,
         QVariantList {"eins"},
         [](QWidget* w) {
             QMenu* menu = qobject_cast<QPushButton*>(w)->menu();
             menu->popup(w->mapToGlobal(QPoint(0, 0)));
             QVERIFY(QTest::qWaitForWindowExposed(menu));
             const QPoint second = menu->actionGeometry(menu->actions().at(1)).center();
             QTest::mouseMove(menu, second);
             QTest::mouseClick(menu, Qt::LeftButton, {}, second);
             menu->close();
         },
         QVariantList {"eins", "zwei"}, QVariantList {"drei"}, QVariantList {"drei"},
         Locked::disabled},
        {"number as spin box", make(E_NUMBER, 5, spin), "QSpinBox", E_NUMBER, 1, 5,
         [](QWidget* w) { typeNumber(w, "17"); }, 17, 23, 23, Locked::readOnly},
        {"number as double spin box", make(E_NUMBER, 1.5, spin), "QDoubleSpinBox", E_NUMBER, 1, 1.5,
         [](QWidget* w) { typeNumber(w, "2.25"); }, 2.25, 3.75, 3.75, Locked::readOnly},
        {"number as line edit", make(E_NUMBER, 5), "QLineEdit", E_LINEEDIT, 1, 5,
         [](QWidget* w) { retype(w, "17"); }, "17", 23, 23, Locked::readOnly},
        {"date", make(E_DATE, day), "QDateEdit", E_DATE, 1, day,
         [](QWidget* w) {
             w->setFocus();
             qobject_cast<QDateEdit*>(w)->setSelectedSection(QDateTimeEdit::YearSection);
             QTest::keyClick(w, Qt::Key_Up);
             QTest::keyClick(w, Qt::Key_Return);
         },
         QDate(2025, 2, 28), QDate(2020, 1, 2), QDate(2020, 1, 2), Locked::readOnly},
        {"date and time", make(E_DATETIME, moment), "QDateTimeEdit", E_DATETIME, 1, moment,
         [](QWidget* w) {
             w->setFocus();
             qobject_cast<QDateTimeEdit*>(w)->setSelectedSection(QDateTimeEdit::MinuteSection);
             QTest::keyClick(w, Qt::Key_Up);
             QTest::keyClick(w, Qt::Key_Return);
         },
         moment.addSecs(60), moment.addDays(1), moment.addDays(1), Locked::readOnly},
        {"show folder", make(E_SHOW_FOLDER, QStringLiteral("/alt")), "QLineEdit", E_LINEEDIT, 1,
         "/alt", [](QWidget* w) { retype(w, "/neu"); }, "/neu", "/set", "/set", Locked::readOnly},
        {"browse folder", make(E_BROWSE_FOLDER, QStringLiteral("/alt")), "QLineEdit", E_LINEEDIT, 1,
         "/alt", [](QWidget* w) { retype(w, "/neu"); }, "/neu", "/set", "/set", Locked::readOnly},
        {"browse file to open", make(E_BROWSE_FILE_OPEN, QStringLiteral("/alt")), "QLineEdit",
         E_LINEEDIT, 1, "/alt", [](QWidget* w) { retype(w, "/neu"); }, "/neu", "/set", "/set",
         Locked::readOnly},
        {"browse file to save", make(E_BROWSE_FILE_SAVE, QStringLiteral("/alt")), "QLineEdit",
         E_LINEEDIT, 1, "/alt", [](QWidget* w) { retype(w, "/neu"); }, "/neu", "/set", "/set",
         Locked::readOnly},
    };
}

/// Rows that a user cannot edit in place.
std::vector<RowCase> otherCases()
{
    auto* own = new QLineEdit; // owned by the window it is put into
    QImage picture(4, 4, QImage::Format_RGB32);
    picture.fill(Qt::red);
    const auto plain = [](const char* name, const INFO& row, const char* className, int type,
                          int pos, const QVariant& first) {
        return RowCase {name, row, className, type, pos, first, nullptr, {}, {}, {}, Locked::no};
    };
    return {
        plain("button", make(E_BUTTON, {}), "QPushButton", E_BUTTON, 0, {}),
        plain("OK", make(E_OK_BUTTON, {}), "QPushButton", E_BUTTON, 0, {}),
        plain("cancel", make(E_CANCEL_BUTTON, {}), "QPushButton", E_BUTTON, 0, {}),
        plain("close", make(E_CLOSE_BUTTON, {}), "QPushButton", E_BUTTON, 0, {}),
        plain("help", make(E_HELP_BUTTON, {}), "QPushButton", E_BUTTON, 0, {}),
        plain("address", make(E_OPENURL_BUTTON, QStringLiteral("http://a/")), "QPushButton",
              E_BUTTON, 0, "http://a/"),
        plain("folder button", make(E_BROWSE_FOLDER_BUTTON, QStringLiteral("/a")), "QPushButton",
              E_BUTTON, 0, "/a"),
        plain("open button", make(E_BROWSE_FILE_OPEN_BUTTON, QStringLiteral("/a")), "QPushButton",
              E_BUTTON, 0, "/a"),
        plain("save button", make(E_BROWSE_FILE_SAVE_BUTTON, QStringLiteral("/a")), "QPushButton",
              E_BUTTON, 0, "/a"),
        plain("colour", make(E_COLOR_BUTTON, QVariant(QColor(Qt::red))), "QPushButton", E_BUTTON, 1,
              QColor(Qt::red)),
        plain("font", make(E_FONT_BUTTON, QVariant(QFont("Sans", 9))), "QPushButton", E_BUTTON, 1,
              QFont("Sans", 9)),
        plain("label", make(E_LABEL, {}), "QLabel", E_LABEL, 0, {}),
        plain("image", make(E_IMAGE, QVariant(picture)), "mod_form_qt::helper::ImageWidget",
              E_IMAGE, 1, picture),
        plain("caller's widget", make(E_WIDGET, own), "QLineEdit", E_WIDGET, 1,
              QVariant::fromValue<QObject*>(own)),
        plain("tab widget", make(E_TABWIDGET, {}), "QTabWidget", E_TABWIDGET, 0, {}),
        plain("menu bar", make(E_MENUBAR, {}), "QMenuBar", E_MENUBAR, 0, {}),
        plain("status bar", make(E_STATUSBAR, {}), "QStatusBar", E_STATUSBAR, 0, {}),
        plain("horizontal line", make(E_HLINE, 0), "QFrame", E_HLINE, 0, 0),
        plain("vertical line", make(E_VLINE, 0), "QFrame", E_VLINE, 0, 0),
        plain("configurations", make(E_MULTICONFIG, {}), "QGroupBox", E_MULTICONFIG, 0, {}),
        plain("vertical group", make(E_LAYOUT_V, {}), "QGroupBox", E_LAYOUT_V, 0, {}),
        plain("horizontal group", make(E_LAYOUT_H, {}), "QGroupBox", E_LAYOUT_H, 0, {}),
        plain("grid group", make(E_LAYOUT_GRID, {}), "QGroupBox", E_LAYOUT_GRID, 0, {}),
        plain("form group", make(E_LAYOUT_FORM, {}), "QGroupBox", E_LAYOUT_FORM, 0, {}),
        plain("flow group", make(E_LAYOUT_FLOW, {}), "QGroupBox", E_LAYOUT_FLOW, 0, {}),
    };
}

QWidget* valueWidget(const TestForm& form, const RowCase& row)
{
    const WIDGET_INFO made = WIDGET_INFO::widgets(&form.map, "k");
    for (const QPointer<QWidget>& widget : made.widgets()) {
        if (WIDGET_INFO::type(widget) == row.type)
            return widget;
    }
    return nullptr;
}

QVariant shown(QWidget* widget)
{
    QVariant value;
    INFO::getSetData(widget, false, false, value);
    return value;
}

} // namespace

class tst_rows : public QObject
{
    Q_OBJECT

    static void addRows(const std::vector<RowCase>& cases)
    {
        QTest::addColumn<RowCase>("row");
        for (const RowCase& row : cases)
            QTest::newRow(row.name) << row;
    }

    static std::vector<RowCase> allCases()
    {
        std::vector<RowCase> cases = inputCases();
        const std::vector<RowCase> others = otherCases();
        cases.insert(cases.end(), others.begin(), others.end());
        return cases;
    }

private slots:

    void makesItsWidgetWithItsProperties_data() { addRows(allCases()); }

    void makesItsWidgetWithItsProperties();

    void hasItsFirstValue_data() { addRows(allCases()); }

    void hasItsFirstValue();

    void takesWhatTheUserEnters_data() { addRows(inputCases()); }

    void takesWhatTheUserEnters();

    void takesWhatSetDataBrings_data() { addRows(inputCases()); }

    void takesWhatSetDataBrings();

    void isLockedWhenReadOnly_data() { addRows(inputCases()); }

    void isLockedWhenReadOnly();

    void startsHidden_data() { addRows(allCases()); }

    void startsHidden();

    void hasANameRoleAndStateForScreenReaders_data() { addRows(allCases()); }

    void hasANameRoleAndStateForScreenReaders();
    void buttonsBringTheirTexts_data();
    void buttonsBringTheirTexts();
    void rowsThatMakeNothing_data();
    void rowsThatMakeNothing();
    void aDataRowIsOnlyAnEntryOfTheMap();
};

Q_DECLARE_METATYPE(RowCase)

void tst_rows::makesItsWidgetWithItsProperties()
{
    QFETCH(RowCase, row);
    TestForm form;
    row.row.attr |= A_NO_MANDATORY_MARKER;
    form.build({row.row});
    QWidget* const widget = valueWidget(form, row);
    QVERIFY(widget);
    QCOMPARE(widget->metaObject()->className(), row.className);
    QCOMPARE(WIDGET_INFO::type(widget), row.type);
    QCOMPARE(WIDGET_INFO::typeExt(widget), row.row.eleType);
    QCOMPARE(WIDGET_INFO::pos(widget), row.pos);
    QCOMPARE(WIDGET_INFO::paramName(widget), "k");
    QCOMPARE(widget->objectName(), "k");
    QCOMPARE(WIDGET_INFO::flags(widget), row.row.attr);
    QCOMPARE(WIDGET_INFO::options(widget).toMap().value(INFO::Option::titleKey), "Titel");
    QCOMPARE(WIDGET_INFO::options(widget).toMap().value(INFO::Option::plainTitleKey), "Titel");
    QCOMPARE(widget->window(), form.window.get());
    if (row.pos == 1) {
        auto* label = qobject_cast<QLabel*>(WIDGET_INFO::widgetAt(&form.map, "k", 0).data());
        QVERIFY(label);
        QCOMPARE(label->text(), "Titel");
        QCOMPARE(label->buddy(), widget);
        QCOMPARE(WIDGET_INFO::typeExt(label), E_LABEL);
    }
}

void tst_rows::hasItsFirstValue()
{
    QFETCH(RowCase, row);
    TestForm form;
    form.build({row.row});
    QCOMPARE(INFO::getBaseValue(&form.map, "k"), row.first);
    const QVariant value = shown(valueWidget(form, row));
    if (value.isValid() && row.row.eleType != E_WIDGET)
        QCOMPARE(value, row.first);
}

void tst_rows::takesWhatTheUserEnters()
{
    QFETCH(RowCase, row);
    TestForm form;
    form.build({row.row});
    row.edit(valueWidget(form, row));
    QTRY_COMPARE(INFO::getBaseValue(&form.map, "k"), row.edited);
    const CallbackType told = row.row.eleType == E_MENU_BUTTON ? kAfterAction : kAfterDataChanged;
    QVERIFY(form.count(told) > 0);
    QCOMPARE(form.seen.back().key, "k");
    QCOMPARE(form.seen.back().eleType, row.row.eleType);
}

void tst_rows::takesWhatSetDataBrings()
{
    QFETCH(RowCase, row);
    TestForm form;
    form.build({row.row});
    form.seen.clear();
    QCOMPARE(INFO::setData(&form.map, "k", row.set, false), 1);
    QCOMPARE(INFO::getBaseValue(&form.map, "k"), row.afterSet);
    const QVariant value = shown(valueWidget(form, row));
    if (value.isValid())
        QCOMPARE(value, row.afterSet);
    QVERIFY(form.seen.empty());
}

void tst_rows::isLockedWhenReadOnly()
{
    QFETCH(RowCase, row);
    row.row.attr |= A_READONLY;
    TestForm form;
    form.build({row.row});
    QWidget* const widget = valueWidget(form, row);
    if (row.locked == Locked::disabled) {
        QVERIFY(!widget->isEnabled());
    } else {
        QVERIFY(widget->isEnabled());
        QCOMPARE(widget->property("readOnly"), true);
        if (row.row.eleType != E_CHECKBOX && row.edit)
            row.edit(widget);
        QCOMPARE(INFO::getBaseValue(&form.map, "k"), row.first);
    }
}

void tst_rows::startsHidden()
{
    QFETCH(RowCase, row);
    row.row.attr |= A_HIDE;
    TestForm form;
    form.build({INFO(E_LABEL, {}, "Nachbar"), row.row, INFO(E_LAYOUT_END)});
    const WIDGET_INFO made = WIDGET_INFO::widgets(&form.map, "k");
    for (const QPointer<QWidget>& widget : made.widgets())
        QVERIFY2(!widget->isVisible(), widget->metaObject()->className());
}

void tst_rows::hasANameRoleAndStateForScreenReaders()
{
    QFETCH(RowCase, row);
    row.row.attr |= A_MANDATORY;
    row.row.param = QVariantMap {{INFO::Option::titleKey, "Ein <b>Titel</b>"}};
    if (row.row.eleType == E_NUMBER)
        row.row.param = QVariantMap {{INFO::Option::titleKey, "Ein <b>Titel</b>"},
                                     {INFO::Option::spinBoxKey, row.type == E_NUMBER}};
    TestForm form;
    form.build({row.row});
    const WIDGET_INFO made = WIDGET_INFO::widgets(&form.map, "k");
    for (const QPointer<QWidget>& widget : made.widgets()) {
        QAccessibleInterface* const reader = QAccessible::queryAccessibleInterface(widget);
        QVERIFY(reader);
        const QString name = reader->text(QAccessible::Name);
        QVERIFY2(!name.isEmpty(), widget->metaObject()->className());
        QVERIFY2(!name.contains('<') && !name.contains('*'), qPrintable(name));
        QVERIFY(reader->role() != QAccessible::NoRole);
        QVERIFY(!reader->state().invalid);
        QCOMPARE(bool(reader->state().invisible), !widget->isVisible());
        QCOMPARE(bool(reader->state().disabled), !widget->isEnabled());
    }
    if (QWidget* const widget = valueWidget(form, row); row.row.eleType != E_MULTICONFIG)
        QCOMPARE(widget->accessibleDescription(), "Pflichtfeld");
}

void tst_rows::buttonsBringTheirTexts_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("text");
    const QMap<int, QString> texts = INFO::defaultWidgetText();
    for (auto entry = texts.begin(); entry != texts.end(); ++entry)
        QTest::addRow("%d", entry.key()) << entry.key() << entry.value();
}

void tst_rows::buttonsBringTheirTexts()
{
    QFETCH(int, type);
    QFETCH(QString, text);
    QVariant data;
    if (type == E_COLOR_BUTTON)
        data = QColor(Qt::red);
    TestForm form;
    form.build({INFO(type, {}, {}, data, "ohne"), INFO(type, {}, "Eigener;Text", data, "mit")});
    const auto* own = INFO::pushButtonByKey(&form.map, "mit");
    const bool labelled = type == E_SHOW_FOLDER || type == E_BROWSE_FOLDER
        || type == E_BROWSE_FILE_OPEN || type == E_BROWSE_FILE_SAVE || type == E_COLOR_BUTTON;
    if (type == E_FONT_BUTTON)
        return; // shows its font
    QCOMPARE(INFO::pushButtonByKey(&form.map, "ohne")->text(), text);
    QCOMPARE(own->text(), labelled ? "Text" : "Eigener");
}

void tst_rows::rowsThatMakeNothing_data()
{
    QTest::addColumn<int>("type");
    for (const int type : {0, E_INSERT_POINT, E_GRID_NEXT_ROW, E_TAB_END, 20013, 20017, 12345})
        QTest::addRow("%d", type) << type;
    QTest::newRow("page outside of a tab widget") << E_TAB;
}

void tst_rows::rowsThatMakeNothing()
{
    QFETCH(int, type);
    TestForm form;
    form.build({INFO(type, {}, "Titel", {}, "k"), INFO(E_LINEEDIT, {}, {}, "x", "danach")});
    QVERIFY(WIDGET_INFO::widgets(&form.map, "k").empty());
    QVERIFY(INFO::lineEditByKey(&form.map, "danach"));
}

void tst_rows::aDataRowIsOnlyAnEntryOfTheMap()
{
    TestForm form;
    form.build({INFO(E_DATA, {}, {}, 42, "k")});
    QCOMPARE(form.map.value("k"), 42);
    QVERIFY(WIDGET_INFO::widgets(&form.map, "k").empty());
}

QTEST_MAIN(tst_rows)
#include "tst_rows.moc"
