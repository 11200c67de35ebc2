// A form from its building to its end: order of events, second forms, values that outlive windows.

#include "tests/form/form_fixture.h"

using namespace mod_form_qt;

namespace {

INFO edit(const char* key, std::bitset<256> attr = {}, const QVariant& param = {},
          const DataVariant& data = {})
{
    return INFO(E_LINEEDIT, attr, param, data, key);
}

/// A dialog on the heap whose form records its events.
struct DialogForm
{
    QMap<QString, QVariant> map;
    QStringList log;
    QPointer<QDialog> dialog = new QDialog;
    INFO::Result result;

    void build(const QList<INFO>& rows, const QVariant& title = {}, const QString& name = {})
    {
        result = INFO::applyLayout(dialog, true, title, rows, {}, {}, &map, nullptr,
                                   [this, name](const CallbackContext& event) {
                                       log << name + callbackTypeNames.value(event.type);
                                       return 1;
                                   });
        dialog->show();
        QVERIFY(QTest::qWaitForWindowExposed(dialog));
    }

    ~DialogForm() { delete dialog; }
};

} // namespace

class tst_form_life : public QObject
{
    Q_OBJECT

private slots:
    void theFormStandsBeforeAnythingElseIsTold();
    void anEditInProgressIsTakenBeforeTheFormIsAccepted();
    void anEditInProgressIsTakenBeforeAButtonActs();
    void aRefusedRadioButtonGivesWayToTheOneBefore();
    void aRefusedFirstRadioButtonIsUncheckedAgain();
    void aRefusedCheckBoxOfAGroupGivesWayToTheOneBefore();
    void setDataOfARadioButtonTellsNobody();
    void radioButtonsOutsideOfAGroupAreLeftAlone();
    void aSecondFormIsAskedAlone();
    void aCallbackThatDeletesTheFormEndsItsClosing();
    void aWidgetOfTheCallersIsNeverTakenFromTheMap();
    void aValueBesideAWidgetOfTheCallersIsShownInIt();
    void actionsForgetFormsThatAreGone();
    void aSharedWindowMayDieBeforeItsResult();
    void anInitialEmissionOfADateWithItsCheckBoxComesOnce();
    void anAbsentDateIsInvalidInTheMapFromTheStart();
    void aTextForADateIsNoChange();
    void numbersSavedAsTextsKeepTheirType();
    void refusedNumbersComeBackInTheirLocale();
    void sizesThatAGroupAsksForHold();
    void hiddenLayoutsStayHiddenInAGroupThatOpens();
    void keysOfRowsThatUseTheMapAreCollected();
    void boundDataRowsGetWhatTheFileHolds();
    void cancelRestoresAVariableTakenFromTheMap();
    void aWindowDeletedAtTheStartIsNotAccepted();
    void anExistingDialogGetsItsWindowFlags();
    void noMarginsAroundTheForm();
    void aFixedSize();
    void aMainWindowGetsACentralWidget();
    void nothingIsInstalledOnANullWidget();
    void runningFlagsHaveNoEffectOnAnEmbeddedForm();
    void typedTextIsValidatedButNotWhatCodeSets();
    void pathsAreLimitedAsOtherTexts();
    void ownWidgetsStandInTheTabOrder();
};

void tst_form_life::theFormStandsBeforeAnythingElseIsTold()
{
    TestForm form;
    form.build({edit("a", A_INIT_EMIT), edit("b", A_INIT_EMIT | A_CALLBACK_VALIDATOR, {}, "b"),
                INFO(E_RADIOBUTTON, {}, "c", true, "c"), INFO(E_RADIOBUTTON, {}, "d", true, "d")});
    QStringList told;
    for (const SeenEvent& event : form.seen)
        told << callbackTypeNames.value(event.type) + ' ' + event.key;
    QCOMPARE(told.mid(0, 3),
             (QStringList {"kInit ", "kAfterDataChanged a", "kAfterDataChanged b"}));
    QVERIFY(!form.map.value("c").toBool()); // only one of them can be checked
}

void tst_form_life::anEditInProgressIsTakenBeforeTheFormIsAccepted()
{
    DialogForm form;
    form.build({INFO(E_NUMBER, {}, QVariantMap {{INFO::Option::spinBoxKey, true}}, 7, "n"),
                INFO(E_OK_BUTTON, {}, "&OK")});
    auto* box = INFO::spinBoxByKey(&form.map, "n");
    box->setFocus();
    box->selectAll();
    QTest::keyClicks(box, "42");
    form.log.clear();
    QTest::keyClick(form.dialog, Qt::Key_O, Qt::AltModifier);
    QTRY_VERIFY(!form.dialog->isVisible());
    QCOMPARE(form.log.mid(0, 2), (QStringList {"kAfterDataChanged", "kAccept"}));
    QCOMPARE(form.map.value("n"), 42);
}

void tst_form_life::anEditInProgressIsTakenBeforeAButtonActs()
{
    TestForm form;
    QVariant atAction;
    form.decide = [&atAction](const CallbackContext& event) {
        if (event.type == kAfterAction)
            atAction = event.map->value("a");
        return 1;
    };
    form.build({edit("a", A_LINEEDIT_UPDATE_ON_FINISH), INFO(E_BUTTON, {}, "Los", {}, "go")});
    QTest::keyClicks(form.find<QLineEdit>("a"), "neu");
    form.find<QPushButton>("go")->click();
    QCOMPARE(atAction, "neu");
}

void tst_form_life::aRefusedRadioButtonGivesWayToTheOneBefore()
{
    TestForm form;
    form.decide = [](const CallbackContext& event) {
        return event.type == kBeforeDataChanged && event.row.key == "b" ? 0 : 1;
    };
    form.build({INFO(E_RADIOBUTTON, {}, "A", true, "a"),
                INFO(E_RADIOBUTTON, A_USE_BEFORE_EVENT, "B", false, "b")});
    QTest::mouseClick(form.find<QRadioButton>("b"), Qt::LeftButton, {}, QPoint(8, 8));
    QVERIFY(!form.find<QRadioButton>("b")->isChecked());
    QVERIFY(form.find<QRadioButton>("a")->isChecked());
    QCOMPARE(form.map.value("a"), true);
    QCOMPARE(form.map.value("b"), false);
}

void tst_form_life::aRefusedFirstRadioButtonIsUncheckedAgain()
{
    TestForm form;
    form.decide = [](const CallbackContext& event) {
        return event.type == kBeforeDataChanged ? 0 : 1;
    };
    form.build({INFO(E_RADIOBUTTON, A_USE_BEFORE_EVENT | A_GROUP_ID1, "A", false, "a"),
                INFO(E_RADIOBUTTON, A_USE_BEFORE_EVENT | A_GROUP_ID1, "B", false, "b")});
    QTest::mouseClick(form.find<QRadioButton>("b"), Qt::LeftButton, {}, QPoint(8, 8));
    QVERIFY(!form.find<QRadioButton>("b")->isChecked());
    QVERIFY(form.find<QRadioButton>("b")->group()->exclusive());
}

void tst_form_life::aRefusedCheckBoxOfAGroupGivesWayToTheOneBefore()
{
    TestForm form;
    form.decide = [](const CallbackContext& event) {
        return event.type == kBeforeDataChanged && event.row.key == "b" ? 0 : 1;
    };
    form.build({INFO(E_CHECKBOX, A_GROUP_ID1, "A", true, "a"),
                INFO(E_CHECKBOX, A_GROUP_ID1 | A_USE_BEFORE_EVENT, "B", false, "b")});
    QTest::mouseClick(form.find<QCheckBox>("b"), Qt::LeftButton, {}, QPoint(8, 8));
    QTRY_VERIFY(form.find<QCheckBox>("a")->isChecked());
    QVERIFY(!form.find<QCheckBox>("b")->isChecked());
    QCOMPARE(form.map.value("a"), true);
    QCOMPARE(form.map.value("b"), false);
}

void tst_form_life::setDataOfARadioButtonTellsNobody()
{
    TestForm form;
    form.build({INFO(E_RADIOBUTTON, {}, "A", true, "a"), INFO(E_RADIOBUTTON, {}, "B", false, "b")});
    form.seen.clear();
    INFO::setData(&form.map, "b", true, false);
    QVERIFY(form.seen.empty());
    QVERIFY(form.find<QRadioButton>("b")->isChecked());
    QCOMPARE(form.map.value("a"), false);
    QCOMPARE(form.map.value("b"), true);
}

void tst_form_life::radioButtonsOutsideOfAGroupAreLeftAlone()
{
    TestForm form;
    form.build({INFO(E_RADIOBUTTON, {}, "A", true, "a"),
                INFO(E_RADIOBUTTON, A_GROUP_ID1, "B", true, "b")});
    QVERIFY(form.find<QRadioButton>("a")->isChecked());
    QVERIFY(form.find<QRadioButton>("b")->isChecked());
    QCOMPARE(form.map.value("a"), true);
}

void tst_form_life::aSecondFormIsAskedAlone()
{
    DialogForm form;
    form.build({edit("a")}, QVariantMap {{INFO::Option::timerKey, QVariantList {1, "t"}}}, "1 ");
    QTRY_VERIFY(form.log.contains("1 kTimer"));
    form.build({edit("b")}, {}, "2 ");
    form.log.clear();
    form.dialog->close();
    QCOMPARE(form.log.filter("kClose"), (QStringList {"2 kClose"}));
    QCOMPARE(form.log.filter("1 "), QStringList());
    QVERIFY(form.dialog->findChildren<QTimer*>().isEmpty()
            || !form.dialog->findChildren<QTimer*>().first()->isActive());
}

void tst_form_life::aCallbackThatDeletesTheFormEndsItsClosing()
{
    DialogForm form;
    const auto deletes = [&form](const CallbackContext& event) {
        if (event.type == kAccept)
            delete form.dialog;
        return 1;
    };
    form.build({edit("a"), INFO(E_OK_BUTTON, {}, {}, {}, "ok", deletes)});
    form.log.clear();
    // Not by a click of the mouse: Qt itself goes on with the button it has clicked.
    form.dialog->findChild<QPushButton*>("ok")->click();
    QVERIFY(!form.dialog);
    QVERIFY2(!form.log.contains("kAccept"), qPrintable(form.log.join(", ")));
}

void tst_form_life::aWidgetOfTheCallersIsNeverTakenFromTheMap()
{
    QMap<QString, QVariant> map;
    for (int i = 0; i < 2; ++i) {
        auto* own = new QLineEdit;
        TestForm form;
        form.map = map;
        form.build({INFO(E_WIDGET, A_USE_MAP_VALUE, {}, own, "w")}, MF_USE_MAP_VALUES);
        QCOMPARE(INFO::widgetByKey(&form.map, "w"), own);
        map = form.map; // still holds the pointer when the widget is gone
    }
}

void tst_form_life::aValueBesideAWidgetOfTheCallersIsShownInIt()
{
    auto* own = new QLineEdit;
    auto* action = new QAction("Ansicht");
    action->setCheckable(true);
    auto* tabs = new QTabWidget;
    TestForm form;
    action->setParent(form.window.get());
    form.map = {{"w", "text"}, {"view", true}, {"tabs", 1}};
    form.build({INFO(E_WIDGET, {}, {}, own, "w"),
                INFO(E_MENU, {}, {}, new QMenu(form.window.get())),
                INFO(E_ACTION, {}, {}, action, "view"), INFO(E_TABWIDGET, {}, {}, tabs, "tabs"),
                INFO(E_TAB, {}, "1"), INFO(E_TAB, {}, "2"), INFO(E_TAB_END)},
               MF_USE_MAP_VALUES);
    QCOMPARE(own->text(), "text");
    QVERIFY(action->isChecked());
    QCOMPARE(tabs->currentIndex(), 1);
    QCOMPARE(form.map.value("tabs"), 1);
    QTest::keyClicks(own, "!");
    QCOMPARE(form.map.value("w"), "text!");
}

void tst_form_life::actionsForgetFormsThatAreGone()
{
    QAction action("Los");
    int calls = 0;
    for (int i = 0; i < 3; ++i) {
        QWidget window;
        QMap<QString, QVariant> map;
        INFO::applyLayout(&window, true, QString(),
                          {INFO(E_ACTION, {}, {}, &action, "a",
                                [&calls](const CallbackContext&) { return ++calls; })},
                          {}, {}, &map);
        action.trigger();
    }
    QCOMPARE(calls, 3);
    action.trigger();
    QCOMPARE(calls, 3);
}

void tst_form_life::aSharedWindowMayDieBeforeItsResult()
{
    QMap<QString, QVariant> map;
    auto* parent = new QWidget;
    INFO::Result result = INFO::createLayout(
        parent, MF_CREATE_WINDOW | MF_CREATE_LAYOUT | MF_SHOW | MF_SHARED_DELETE_LATER, {},
        INFO(E_DIALOG), {edit("a")}, &map, nullptr);
    QVERIFY(result.window);
    delete parent;
    QVERIFY(!result.mainWidget);
    result = {}; // must not touch it
}

void tst_form_life::anInitialEmissionOfADateWithItsCheckBoxComesOnce()
{
    for (const auto& [attr, date, expected] :
         {std::tuple(A_INIT_EMIT, QDate(2024, 1, 1), 1),
          std::tuple(A_INIT_EMIT_VALID, QDate(2024, 1, 1), 1),
          std::tuple(A_INIT_EMIT_VALID, INFO::dateInvalid, 0)}) {
        TestForm form;
        form.build({INFO(E_DATE, attr | A_INVALID_CHECKBOX, {}, date, "d")});
        QCOMPARE(form.count(kAfterDataChanged), expected);
    }
}

void tst_form_life::anAbsentDateIsInvalidInTheMapFromTheStart()
{
    QVariant bound = QDate();
    TestForm form;
    form.build({INFO(E_DATE, A_INVALID_CHECKBOX, {}, QDate(), "d"),
                INFO(E_DATE, A_INVALID_CHECKBOX, {}, &bound, "e")});
    QCOMPARE(form.map.value("d"), INFO::dateInvalid);
    QCOMPARE(bound, INFO::dateInvalid);
}

void tst_form_life::aTextForADateIsNoChange()
{
    TestForm form;
    form.build({INFO(E_DATE, {}, {}, "2024-02-29", "text"),
                INFO(E_DATE, {}, {}, QDate(2024, 2, 29).toJulianDay(), "day"), edit("z")});
    QCOMPARE(form.find<QDateEdit>("text")->date(), QDate(2024, 2, 29));
    QCOMPARE(form.find<QDateEdit>("day")->date(), QDate(2024, 2, 29));
    form.seen.clear();
    form.find<QDateEdit>("text")->setFocus();
    QTest::keyClick(form.window->focusWidget(), Qt::Key_Tab);
    QTest::keyClick(form.window->focusWidget(), Qt::Key_Tab);
    form.find<QLineEdit>("z")->setFocus();
    QCOMPARE(form.count(kAfterDataChanged), 0);
}

void tst_form_life::numbersSavedAsTextsKeepTheirType()
{
    QVariant bound = 3;
    const QVariantMap spin = {{INFO::Option::spinBoxKey, true}};
    TestForm form;
    form.map = {{"plain", "5"}, {"bound", "6"}};
    form.build({INFO(E_NUMBER, {}, spin, 3, "plain"), INFO(E_NUMBER, {}, spin, &bound, "bound")},
               MF_USE_MAP_VALUES);
    QVERIFY(form.find<QSpinBox>("plain"));
    QCOMPARE(form.find<QSpinBox>("plain")->value(), 5);
    QCOMPARE(form.find<QSpinBox>("bound")->value(), 6);
    QCOMPARE(bound.typeId(), int(QMetaType::Int));
}

void tst_form_life::refusedNumbersComeBackInTheirLocale()
{
    TestForm form;
    form.decide = [](const CallbackContext& event) {
        return event.type == kBeforeDataChanged ? 0 : 1;
    };
    form.build(
        {INFO(E_NUMBER, A_USE_BEFORE_EVENT,
              QVariantMap {{INFO::Option::localeKey, QLocale(QLocale::German, QLocale::Germany)}},
              1234.5, "n")});
    auto* edit = form.find<QLineEdit>("n");
    QCOMPARE(edit->text(), "1234,5");
    edit->setFocus();
    edit->end(false);
    QTest::keyClick(edit, Qt::Key_Backspace);
    QCOMPARE(edit->text(), "1234,5");
}

void tst_form_life::sizesThatAGroupAsksForHold()
{
    const auto group = [](const char* option, int value) {
        TestForm form;
        form.build({INFO(E_LAYOUT_V, {},
                         QVariantMap {{INFO::Option::titleKey, "Titel"},
                                      {QString(option) + "10000", value}},
                         {}, "box"),
                    edit("a"), INFO(E_LAYOUT_END)});
        auto* box = form.find<QGroupBox>("box");
        return QSize(box->minimumWidth(), box->maximumWidth());
    };
    QCOMPARE(group("minwidth", 500).width(), 500);
    QCOMPARE(group("fixedwidth", 30), QSize(30, 30));
}

void tst_form_life::hiddenLayoutsStayHiddenInAGroupThatOpens()
{
    TestForm form;
    form.build({INFO(E_LAYOUT_V, A_CAN_HIDE_ITEMS, "Gruppe", 1, "box"), INFO(E_LAYOUT_H, A_HIDE),
                edit("a"), INFO(E_LAYOUT_END), edit("b"), INFO(E_LAYOUT_END)});
    INFO::setData(&form.map, "box", false, false);
    INFO::setData(&form.map, "box", true, false);
    QVERIFY(!form.find<QLineEdit>("a")->isVisible());
    QVERIFY(form.find<QLineEdit>("b")->isVisible());
}

void tst_form_life::keysOfRowsThatUseTheMapAreCollected()
{
    const QList<INFO> rows = {edit("used", A_USE_MAP_VALUE), edit("plain"),
                              edit("never", A_DONT_USE_MAP_VALUE),
                              INFO(E_DATA, A_DONT_USE_MAP_VALUE, {}, 1, "skipped")};
    const auto keys = [&rows](INFO::MainFlags flags) {
        QWidget window;
        QMap<QString, QVariant> map;
        QSet<QString> collected = {"given"};
        INFO::applyLayout(&window, true, QString(), rows, flags, {}, &map, &collected);
        return collected;
    };
    QCOMPARE(keys({}), (QSet<QString> {"given", "used"}));
    QCOMPARE(keys(MF_USE_MAP_VALUES), (QSet<QString> {"given", "used", "plain"}));
}

void tst_form_life::boundDataRowsGetWhatTheFileHolds()
{
    QTemporaryDir folder;
    const QString file = folder.filePath("form.ini");
    const QMap<QString, QVariant> stored = {{"v", 42}, {"w", 43}};
    INFO::saveMapToIniFile(&stored, file, "group");
    QVariant v = 1;
    QVariant w = 1;
    TestForm form;
    form.build({INFO(E_DATA, {}, {}, &v, "v"), edit("w", {}, {}, &w)}, {},
               QVariantMap {{INFO::Option::iniFileNameKey, file},
                            {INFO::Option::iniGroupNameKey, "group"}});
    QCOMPARE(v, 42);
    QCOMPARE(w, 43);
    QVERIFY(INFO::isVariantPtr(form.map.value("v")));
}

void tst_form_life::cancelRestoresAVariableTakenFromTheMap()
{
    QVariant variable = "alt";
    QMap<QString, QVariant> map = {{"k", QVariant::fromValue<QVariant*>(&variable)}};
    QTimer::singleShot(0, qApp, [] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        QTest::keyClicks(dialog->findChild<QLineEdit*>("k"), "!");
        QTest::keyClick(dialog, Qt::Key_Escape);
    });
    const INFO::Result result =
        INFO::createAndExecDialog(nullptr, "Titel", {edit("k", A_USE_MAP_VALUE)}, {}, {}, &map);
    QCOMPARE(result.code, 0);
    QCOMPARE(variable, "alt");
}

void tst_form_life::aWindowDeletedAtTheStartIsNotAccepted()
{
    QVariant variable = "alt";
    QMap<QString, QVariant> map;
    const INFO::Result result =
        INFO::createAndExecDialog(nullptr, "Titel", {edit("k", {}, {}, &variable)}, {}, {}, &map,
                                  nullptr, [&variable](const CallbackContext& event) {
                                      if (event.type == kInit) {
                                          variable = "neu";
                                          delete event.mainWidget;
                                      }
                                      return 1;
                                  });
    QCOMPARE(result.code, 0);
    QCOMPARE(variable, "alt");
}

void tst_form_life::anExistingDialogGetsItsWindowFlags()
{
    QMap<QString, QVariant> map;
    QDialog plain;
    INFO::applyLayout(&plain, true, QString(), {edit("a")}, {}, {}, &map);
    QCOMPARE(plain.windowFlags() & F_DIALOG_TITLE, F_DIALOG_TITLE);
    QVERIFY(!(plain.windowFlags() & Qt::WindowMaximizeButtonHint));
    QDialog given;
    INFO::applyLayout(&given, true, QString(), {edit("a")}, {}, F_DIALOG_TITLE_MINMAX_CLOSE, &map);
    QVERIFY(given.windowFlags() & Qt::WindowCloseButtonHint);
    QDialog untouched;
    const Qt::WindowFlags before = untouched.windowFlags();
    INFO::applyLayout(&untouched, false, QString(), {edit("a")}, {}, F_DIALOG_TITLE_MINMAX_CLOSE,
                      &map);
    QCOMPARE(untouched.windowFlags(), before);

    QDialog visible;
    visible.show();
    INFO::applyLayout(&visible, true, QString(), {edit("a")}, {}, {}, &map);
    QVERIFY(visible.isVisible());
}

void tst_form_life::noMarginsAroundTheForm()
{
    TestForm form;
    form.build({edit("a")}, MF_NO_MARGINS);
    QCOMPARE(form.result.layout->contentsMargins(), QMargins());
    TestForm usual;
    usual.build({edit("a")});
    QVERIFY(usual.result.layout->contentsMargins() != QMargins());
}

void tst_form_life::aFixedSize()
{
    TestForm form;
    form.build({edit("a")}, MF_FIXED_SIZE);
    QCOMPARE(form.window->minimumSize(), form.window->maximumSize());
}

void tst_form_life::aMainWindowGetsACentralWidget()
{
    for (const INFO::MainFlags flags : {INFO::MainFlags(), INFO::MainFlags(MF_SCROLLAREA)}) {
        QMainWindow window;
        QMap<QString, QVariant> map;
        INFO::applyLayout(&window, true, QString(), {edit("a")}, flags, {}, &map);
        QVERIFY(window.centralWidget());
        QVERIFY(window.centralWidget()->isAncestorOf(INFO::lineEditByKey(&map, "a")));
        QCOMPARE(window.centralWidget()->findChild<QScrollArea*>() != nullptr,
                 flags.testFlag(MF_SCROLLAREA));
    }
}

void tst_form_life::nothingIsInstalledOnANullWidget()
{
    QMap<QString, QVariant> map;
    const INFO::Result result =
        INFO::applyLayout(nullptr, true, QString(), {edit("a", {}, "Titel")}, {}, {}, &map);
    QVERIFY(!result.mainWidget);
    QVERIFY(result.layout);
    QVERIFY(!result.layout->parent());
    QWidget later;
    later.setLayout(result.layout);
    later.show();
    QTest::keyClicks(later.findChild<QLineEdit*>("a"), "neu");
    QCOMPARE(map.value("a"), "neu");
}

void tst_form_life::runningFlagsHaveNoEffectOnAnEmbeddedForm()
{
    const INFO::MainFlags running = MF_EXEC | MF_OPEN | MF_SHOW | MF_CREATE_WINDOW;
    QMap<QString, QVariant> map;
    QDialog dialog;
    INFO::applyLayout(&dialog, true, QString(), {edit("a")}, running, {}, &map);
    QVERIFY(!dialog.isVisible());
    QCOMPARE(INFO::lineEditByKey(&map, "a")->window(), &dialog);
    QDialog other;
    const INFO::Result result = INFO::getLayout(&other, true, QString(), {edit("a")},
                                                running | MF_APPLY_TO_WIDGET, {}, &map);
    QVERIFY(!other.isVisible());
    QVERIFY(!other.layout());
    delete result.layout;
}

void tst_form_life::typedTextIsValidatedButNotWhatCodeSets()
{
    TestForm form;
    form.decide = [](const CallbackContext& event) {
        if (event.type == kValidate)
            *event.result = event.value.toString().toUpper();
        return 1;
    };
    form.build({edit("a", A_CALLBACK_VALIDATOR, {}, "abc")});
    auto* field = form.find<QLineEdit>("a");
    QCOMPARE(field->text(), "abc");
    QCOMPARE(form.count(kValidate), 0);
    INFO::setData(&form.map, "a", "xyz", false);
    QCOMPARE(field->text(), "xyz");
    QCOMPARE(form.count(kValidate), 0);
    QTest::keyClicks(field, "q");
    QCOMPARE(field->text(), "XYZQ");
    QCOMPARE(form.map.value("a"), "XYZQ");
}

void tst_form_life::pathsAreLimitedAsOtherTexts()
{
    TestForm form;
    form.build({INFO(
        E_BROWSE_FOLDER, {},
        QVariantMap {{INFO::Option::regexPatternKey, "[a-z]*"}, {INFO::Option::maxCharsKey, 3}}, "",
        "p")});
    auto* field = INFO::lineEditByKey(&form.map, "p");
    QTest::keyClicks(field, "a1bcd");
    QCOMPARE(field->text(), "abc");
}

void tst_form_life::ownWidgetsStandInTheTabOrder()
{
    auto* own = new QLineEdit;
    own->setObjectName("own");
    TestForm form;
    form.build({edit("a"), INFO(E_WIDGET, {}, {}, own), edit("z")});
    form.find<QLineEdit>("a")->setFocus();
    QTest::keyClick(form.window->focusWidget(), Qt::Key_Tab);
    QCOMPARE(form.window->focusWidget(), own);
}

QTEST_MAIN(tst_form_life)
#include "tst_form_life.moc"
