#include "form/mod_form_qt.h"

#include <QTest>

using namespace mod_form_qt;

class tst_row_types : public QObject
{
    Q_OBJECT

private slots:
    void rowTypesHaveTheirNumbers_data();
    void rowTypesHaveTheirNumbers();
    void baseAndExtendedTypesAreTwoRanges_data();
    void baseAndExtendedTypesAreTwoRanges();
    void windowFlagPresets_data();
    void windowFlagPresets();
    void mainFlagsHaveTheirBits_data();
    void mainFlagsHaveTheirBits();
    void callbackKindsHaveTheirNumbersAndNames_data();
    void callbackKindsHaveTheirNumbersAndNames();
    void namesHaveTheirTexts_data();
    void namesHaveTheirTexts();
    void buttonsHaveDefaultTexts_data();
    void buttonsHaveDefaultTexts();
    void otherTypesHaveNoDefaultText();
    void anAbsentDateIsTheLastOfTheYear9999();
    void alignZeroIsNoAlignment();
    void temporaryKeysAreBuiltFromTheirPrefix();
    void cleaningRemovesGeneratedKeysAndObjects();
    void cleaningLeavesPointersUnderOrdinaryKeys();
    void cleaningToleratesANullMap();
};

#define NUMBER(name, number) QTest::newRow(#name) << int(name) << int(number)

void tst_row_types::rowTypesHaveTheirNumbers_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("expected");

    NUMBER(E_LAYOUT_V, 10000);
    NUMBER(E_LAYOUT_H, 10001);
    NUMBER(E_LAYOUT_GRID, 10002);
    NUMBER(E_LAYOUT_FORM, 10003);
    NUMBER(E_LAYOUT_FLOW, 10004);
    NUMBER(E_INSERT_POINT, 11000);
    NUMBER(E_GRID_NEXT_ROW, 11001);
    NUMBER(E_TAB_END, 11002);
    NUMBER(E_LAYOUT_END, 19999);
    NUMBER(E_LINEEDIT, 20000);
    NUMBER(E_TEXTEDIT, 20001);
    NUMBER(E_BUTTON, 20002);
    NUMBER(E_LABEL, 20003);
    NUMBER(E_CHECKBOX, 20004);
    NUMBER(E_LISTBOX, 20005);
    NUMBER(E_COMBOBOX, 20006);
    NUMBER(E_IMAGE, 20007);
    NUMBER(E_WIDGET, 20008);
    NUMBER(E_PLAINTEXT, 20009);
    NUMBER(E_MENUBAR, 20010);
    NUMBER(E_MENU, 20011);
    NUMBER(E_ACTION, 20012);
    NUMBER(E_STATUSBAR, 20014);
    NUMBER(E_TABWIDGET, 20015);
    NUMBER(E_TAB, 20016);
    NUMBER(E_RADIOBUTTON, 20018);
    NUMBER(E_CHECKCOMBOBOX, 20019);
    NUMBER(E_DIALOG, 30000);
    NUMBER(E_MAINWINDOW, 30001);
    NUMBER(E_VLINE, 40000);
    NUMBER(E_HSPACER, 40001);
    NUMBER(E_VSPACER, 40002);
    NUMBER(E_STRETCH, 40003);
    NUMBER(E_HLINE, 40004);
    NUMBER(E_OK_BUTTON, 50000);
    NUMBER(E_CANCEL_BUTTON, 50001);
    NUMBER(E_OPENURL_BUTTON, 50002);
    NUMBER(E_SHOW_FOLDER, 50003);
    NUMBER(E_COLOR_BUTTON, 50004);
    NUMBER(E_FONT_BUTTON, 50005);
    NUMBER(E_NUMBER, 50006);
    NUMBER(E_BROWSE_FOLDER, 50007);
    NUMBER(E_BROWSE_FOLDER_BUTTON, 50008);
    NUMBER(E_BROWSE_FILE_OPEN, 50009);
    NUMBER(E_BROWSE_FILE_OPEN_BUTTON, 50010);
    NUMBER(E_DATE, 50011);
    NUMBER(E_DATETIME, 50012);
    NUMBER(E_BROWSE_FILE_SAVE, 50013);
    NUMBER(E_BROWSE_FILE_SAVE_BUTTON, 50014);
    NUMBER(E_CLOSE_BUTTON, 50015);
    NUMBER(E_MULTICONFIG, 50016);
    NUMBER(E_MENU_BUTTON, 50017);
    NUMBER(E_HELP_BUTTON, 50018);
    NUMBER(E_DATA, 60000);
}

void tst_row_types::rowTypesHaveTheirNumbers()
{
    QFETCH(int, value);
    QTEST(value, "expected");
}

void tst_row_types::baseAndExtendedTypesAreTwoRanges_data()
{
    QTest::addColumn<int>("eleType");
    QTest::addColumn<bool>("base");
    QTest::addColumn<bool>("extended");

    QTest::newRow("0") << 0 << false << false;
    QTest::newRow("19999") << 19999 << false << false;
    QTest::newRow("20000") << 20000 << true << false;
    QTest::newRow("49999") << 49999 << true << false;
    QTest::newRow("50000") << 50000 << false << true;
    QTest::newRow("59999") << 59999 << false << true;
    QTest::newRow("60000") << 60000 << false << false;
}

void tst_row_types::baseAndExtendedTypesAreTwoRanges()
{
    QFETCH(int, eleType);
    QTEST(WIDGET_INFO::isBaseEleType(eleType), "base");
    QTEST(WIDGET_INFO::isExtEleType(eleType), "extended");
}

void tst_row_types::windowFlagPresets_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("expected");

    NUMBER(F_DIALOG_TITLE, 0x2001001);
    NUMBER(F_DIALOG_TITLE_MINMAX, 0x200D001);
    NUMBER(F_DIALOG_TITLE_MINMAX_CLOSE, 0xA00D001);
}

void tst_row_types::windowFlagPresets()
{
    QFETCH(int, value);
    QTEST(value, "expected");
}

void tst_row_types::mainFlagsHaveTheirBits_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("expected");

    NUMBER(MF_CREATE_WINDOW, 0x1);
    NUMBER(MF_FIXED_SIZE, 0x2);
    NUMBER(MF_BOLD_LABELS, 0x8);
    NUMBER(MF_CREATE_LAYOUT, 0x10);
    NUMBER(MF_APPLY_TO_WIDGET, 0x20);
    NUMBER(MF_EXEC, 0x40);
    NUMBER(MF_OPEN, 0x80);
    NUMBER(MF_SHOW, 0x100);
    NUMBER(MF_MODAL, 0x200);
    NUMBER(MF_SCROLLAREA, 0x800);
    NUMBER(MF_WHEEL_GUARD, 0x1000);
    NUMBER(MF_PLACE_MAXIMIZED, 0x2000);
    NUMBER(MF_PLACE_CENTER, 0x4000);
    NUMBER(MF_PLACE_RAISE, 0x8000);
    NUMBER(MF_STAY_ON_TOP, 0x10000);
    NUMBER(MF_USE_MAP_VALUES, 0x20000);
    NUMBER(MF_NO_SNAPSHOT, 0x80000);
    NUMBER(MF_LOCAL_EVENT_LOOP, 0x100000);
    NUMBER(MF_SHARED_DELETE_LATER, 0x200000);
    NUMBER(MF_NO_MARGINS, 0x800000);
    NUMBER(INFO::MainFlags(MF_EXEC | MF_MODAL), 0x240);
}

void tst_row_types::mainFlagsHaveTheirBits()
{
    QFETCH(int, value);
    QTEST(value, "expected");
}

void tst_row_types::callbackKindsHaveTheirNumbersAndNames_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("expected");

    NUMBER(kInit, 0);
    NUMBER(kAccept, 1);
    NUMBER(kReject, 2);
    NUMBER(kClose, 3);
    NUMBER(kBeforeDataChanged, 4);
    NUMBER(kAfterDataChanged, 5);
    NUMBER(kBeforeAction, 6);
    NUMBER(kAfterAction, 7);
    NUMBER(kValidate, 8);
    NUMBER(kTimer, 9);
    NUMBER(kSetActive, 10);
    NUMBER(kKillActive, 11);
    NUMBER(kCleanup, 12);
}

void tst_row_types::callbackKindsHaveTheirNumbersAndNames()
{
    QFETCH(int, value);
    QTEST(value, "expected");
    QCOMPARE(callbackTypeNames.value(CallbackType(value)), QTest::currentDataTag());
    QCOMPARE(callbackTypeNames.size(), 13);
}

#define TEXT(name, text) QTest::newRow(#name) << QString(name) << QString(text)

void tst_row_types::namesHaveTheirTexts_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("expected");

    TEXT(INFO::automatikVarName, "::mod_form_qt_auto_var:");
    TEXT(INFO::widgetDataVarName, "::mod_form_qt_widget_data:");
    TEXT(INFO::objectDataVarName, "::mod_form_qt_object_data:");
    TEXT(INFO::objectMenuKeyName, "menus");
    TEXT(INFO::statusBarKeyName, "statusbar");
    TEXT(INFO::objectMainKeyName, "main");
    TEXT(INFO::mainWndExitCodeKeyName, "mainwindow_exitcode");
    TEXT(INFO::objectOKButtonName, "okbutton_E0DF878092E64FD1B4B186233FF97875");
    TEXT(INFO::objectCancelButtonName, "cancelbutton_E0DF878092E64FD1B4B186233FF97875");
    TEXT(INFO::objectCloseButtonName, "closebutton_E0DF878092E64FD1B4B186233FF97875");
    TEXT(INFO::objectHelpButtonName, "helpbutton_E0DF878092E64FD1B4B186233FF97875");
    TEXT(INFO::iniVariantMapKey, "vmap");
    TEXT(INFO::iniMultiConfGroupNameKey, "default_conf");
    TEXT(INFO::iniMultiConfLastNameKey, "name");
    TEXT(INFO::menuIDKey, "menuid");
    TEXT(INFO::menuGroupNoKey, "menugroupno");
    TEXT(INFO::mandatoryTextLeft, "");
    TEXT(INFO::mandatoryTextRight, "<big><strong style=\"color:red\">*</strong></big>");
    TEXT(WIDGET_INFO::typePropertyKey, "mod_form_qt_type");
    TEXT(WIDGET_INFO::typeExtPropertyKey, "mod_form_qt_type_ext");
    TEXT(WIDGET_INFO::posPropertyKey, "mod_form_qt_pos");
    TEXT(WIDGET_INFO::paramNamePropertyKey, "mod_form_qt_paramName");
    TEXT(WIDGET_INFO::flagsPropertyKey, "mod_form_qt_flags");
    TEXT(WIDGET_INFO::optionsPropertyKey, "mod_form_qt_options");
    TEXT(WIDGET_INFO::blockEventsPropertyKey, "mod_form_qt_blockevent");
}

void tst_row_types::namesHaveTheirTexts()
{
    QFETCH(QString, value);
    QTEST(value, "expected");
}

void tst_row_types::buttonsHaveDefaultTexts_data()
{
    QTest::addColumn<int>("eleType");
    QTest::addColumn<QString>("expected");

    QTest::newRow("show folder") << E_SHOW_FOLDER << "Öffnen...";
    QTest::newRow("ok") << E_OK_BUTTON << "OK";
    QTest::newRow("cancel") << E_CANCEL_BUTTON << "Abbrechen";
    QTest::newRow("help") << E_HELP_BUTTON << "Hilfe";
    QTest::newRow("open a URL") << E_OPENURL_BUTTON << "Hilfe";
    QTest::newRow("colour") << E_COLOR_BUTTON << "Farbe ändern...";
    QTest::newRow("font") << E_FONT_BUTTON << "Schrift ändern...";
    QTest::newRow("folder") << E_BROWSE_FOLDER << "Ändern...";
    QTest::newRow("folder, button alone") << E_BROWSE_FOLDER_BUTTON << "Ändern...";
    QTest::newRow("file to open") << E_BROWSE_FILE_OPEN << "Ändern...";
    QTest::newRow("file to open, button alone") << E_BROWSE_FILE_OPEN_BUTTON << "Ändern...";
    QTest::newRow("file to save") << E_BROWSE_FILE_SAVE << "Ändern...";
    QTest::newRow("file to save, button alone") << E_BROWSE_FILE_SAVE_BUTTON << "Ändern...";
    QTest::newRow("close") << E_CLOSE_BUTTON << "Beenden";
}

void tst_row_types::buttonsHaveDefaultTexts()
{
    QFETCH(int, eleType);
    QTEST(INFO::getDefaultWidgetText(eleType), "expected");
    QTEST(INFO::defaultWidgetText().value(eleType), "expected");
}

void tst_row_types::otherTypesHaveNoDefaultText()
{
    QCOMPARE(INFO::defaultWidgetText().size(), 14);
    QCOMPARE(INFO::getDefaultWidgetText(E_BUTTON), "");
    QCOMPARE(INFO::getDefaultWidgetText(0), "");
}

void tst_row_types::anAbsentDateIsTheLastOfTheYear9999()
{
    QCOMPARE(INFO::dateInvalid, QDate(9999, 12, 31));
}

void tst_row_types::alignZeroIsNoAlignment()
{
    QCOMPARE(int(INFO::alignZERO), 0);
}

void tst_row_types::temporaryKeysAreBuiltFromTheirPrefix()
{
    QCOMPARE(INFO::buildAutomatikVarKeyForPtr("7"), "::mod_form_qt_auto_var:7");
    QCOMPARE(INFO::buildObjectDataKey("menus"), "::mod_form_qt_object_data:menus");
    QCOMPARE(WIDGET_INFO::buildWidgetDataKey("name"), "::mod_form_qt_widget_data:name");
    QVERIFY(INFO::isTempKeyName(INFO::buildAutomatikVarKeyForPtr("")));
    QVERIFY(INFO::isTempKeyName(INFO::buildObjectDataKey("")));
    QVERIFY(INFO::isTempKeyName(WIDGET_INFO::buildWidgetDataKey("")));
}

void tst_row_types::cleaningRemovesGeneratedKeysAndObjects()
{
    QMap<QString, QVariant> map {{"::mod_form_qt_auto_var:1", 1},
                                 {"::mod_form_qt_object_data:menus", 2},
                                 {"::mod_form_qt_widget_data:name", 3},
                                 {"mod_form_qt_auto_var:1", 4},
                                 {"name", 5}};
    INFO::cleanupPointerEntries(&map);
    QCOMPARE(map.keys(),
             QStringList({"::mod_form_qt_widget_data:name", "mod_form_qt_auto_var:1", "name"}));
}

void tst_row_types::cleaningLeavesPointersUnderOrdinaryKeys()
{
    QVariant variable = 5;
    QMap<QString, QVariant> map {{"bound", QVariant::fromValue(&variable)},
                                 {"::mod_form_qt_auto_var:1", QVariant::fromValue(&variable)}};
    INFO::cleanupPointerEntries(&map);
    QCOMPARE(map.keys(), QStringList("bound"));
    QCOMPARE(map["bound"].value<T_VARIANT_PTR>(), &variable);
    QCOMPARE(variable, QVariant(5));
}

void tst_row_types::cleaningToleratesANullMap()
{
    INFO::cleanupPointerEntries(nullptr);
    WIDGET_INFO::clean(nullptr);
}

QTEST_APPLESS_MAIN(tst_row_types)
#include "tst_row_types.moc"
