#include "tests/form/form_fixture.h"

using namespace mod_form_qt;

namespace {

INFO edit(const char* key, std::bitset<256> attr = {}, const QVariant& param = {})
{
    return INFO(E_LINEEDIT, attr, param, {}, key);
}

QList<INFO> in(int opener, QList<INFO> rows, std::bitset<256> attr = {}, const QVariant& param = {},
               const DataVariant& data = {})
{
    rows.prepend(INFO(opener, attr, param, data, "box"));
    rows.append(INFO(E_LAYOUT_END));
    return rows;
}

} // namespace

class tst_layout_rows : public QObject
{
    Q_OBJECT

private slots:
    void everyOpenerMakesItsLayout_data();
    void everyOpenerMakesItsLayout();
    void aColumnPutsTheWidgetsOfARowSideBySide();
    void aHorizontalBoxTakesThemAsTheyCome();
    void aFormLayoutPairsLabelAndField();
    void aFormLayoutBoxesSeveralFields();
    void aFlowTakesEverything();
    void aTitleOrGroupMakesAGroupBox();
    void aGroupIsBoldByItsStyleSheet();
    void marginsAndSpacings_data();
    void marginsAndSpacings();
    void aScrollAreaHoldsTheLayout();
    void uncheckingAGroupHidesWhatIsInIt();
    void anUncheckedGroupStartsEmpty();
    void checkingAGroupLeavesHiddenRowsHidden();
    void setDataOpensAndClosesAGroup();
    void aHiddenLayoutShowsNothing();
    void labelsMoveOutOfHorizontalBoxes();
    void stretchesAndSpacersOfABox();
    void stretchFactors();
    void theStandardButtonsHaveTheirKeys();
    void unbalancedRowsDoNoHarm();
    void tabsHoldTheirPages();
    void theStartPageIsShownAndStaysInTheMap();
    void choosingAPageStoresItsNumber();
    void pagesOfTheCallersOwn();
    void nestedTabs();
    void pagesAreToldOfTheirActivity();
    void timersReportUnderTheirKeys();
    void theMarkerFollowsTheTitle();
    void noLabelWithoutATitle();
    void theTabOrderIsTheOrderOfTheRows();
    void anUntitledInputIsNamedAfterWhatStandsBeforeIt();
    void aScrollingFormWithAFixedSize();
    void keylessRowsShareARecord();
    void rowsInheritThePayload();
    void localesAreInherited();
    void aGroupIsAsWideAsItsTitle();
    void aNullMapMakesOne();
    void aSecondFormReplacesTheFirst();
};

void tst_layout_rows::everyOpenerMakesItsLayout_data()
{
    QTest::addColumn<int>("opener");
    QTest::addColumn<QString>("className");
    QTest::newRow("column") << E_LAYOUT_V << "QVBoxLayout";
    QTest::newRow("row") << E_LAYOUT_H << "QHBoxLayout";
    QTest::newRow("grid") << E_LAYOUT_GRID << "QGridLayout";
    QTest::newRow("form") << E_LAYOUT_FORM << "QFormLayout";
}

void tst_layout_rows::everyOpenerMakesItsLayout()
{
    QFETCH(int, opener);
    QFETCH(QString, className);
    TestForm form;
    form.build(in(opener, {edit("a"), edit("b")}));
    QCOMPARE(form.result.layout->count(), 1);
    QLayout* const layout = form.result.layout->itemAt(0)->layout();
    QCOMPARE(layout->metaObject()->className(), className);
    QVERIFY(layout->indexOf(form.find<QLineEdit>("a")) >= 0);
    QVERIFY(layout->indexOf(form.find<QLineEdit>("b")) >= 0);
}

void tst_layout_rows::aColumnPutsTheWidgetsOfARowSideBySide()
{
    TestForm form;
    form.build({edit("a", {}, "Titel"), edit("b")});
    auto* line = qobject_cast<QHBoxLayout*>(form.result.layout->itemAt(0)->layout());
    QVERIFY(line);
    QCOMPARE(line->contentsMargins(), QMargins());
    QCOMPARE(line->indexOf(INFO::labelByKey(&form.map, "a")), 0);
    QCOMPARE(line->indexOf(form.find<QLineEdit>("a")), 1);
    QCOMPARE(form.result.layout->itemAt(1)->widget(), form.find<QLineEdit>("b"));
}

void tst_layout_rows::aHorizontalBoxTakesThemAsTheyCome()
{
    TestForm form;
    form.build(in(E_LAYOUT_H, {edit("a", {}, "Titel"), edit("b")}));
    QLayout* const box = form.result.layout->itemAt(0)->layout();
    QCOMPARE(box->count(), 3);
    QCOMPARE(box->itemAt(0)->widget(), INFO::labelByKey(&form.map, "a"));
}

void tst_layout_rows::aFormLayoutPairsLabelAndField()
{
    TestForm form;
    form.build(in(E_LAYOUT_FORM, {edit("a", {}, "Titel"), edit("b")}));
    auto* layout = qobject_cast<QFormLayout*>(form.result.layout->itemAt(0)->layout());
    QCOMPARE(layout->rowCount(), 2);
    QCOMPARE(layout->labelForField(form.find<QLineEdit>("a")), INFO::labelByKey(&form.map, "a"));
    QVERIFY(!layout->labelForField(form.find<QLineEdit>("b")));
}

void tst_layout_rows::aFormLayoutBoxesSeveralFields()
{
    TestForm form;
    form.build(in(E_LAYOUT_FORM,
                  {INFO(E_BROWSE_FOLDER, {}, "Ordner", "/", "a"),
                   INFO(E_BROWSE_FOLDER, A_NO_LABEL, "Ordner", "/", "b")}));
    auto* layout = qobject_cast<QFormLayout*>(form.result.layout->itemAt(0)->layout());
    QCOMPARE(layout->rowCount(), 2);
    auto* field = layout->itemAt(0, QFormLayout::FieldRole)->layout();
    QCOMPARE(field->count(), 2);
    QCOMPARE(layout->itemAt(0, QFormLayout::LabelRole)->widget(), INFO::labelByKey(&form.map, "a"));
    QCOMPARE(layout->itemAt(1, QFormLayout::SpanningRole)->layout()->count(), 2);
}

void tst_layout_rows::aFlowTakesEverything()
{
    TestForm form;
    form.build(in(E_LAYOUT_FLOW,
                  {edit("a", {}, "Titel"), INFO(E_LAYOUT_H), edit("b"), INFO(E_LAYOUT_END)}));
    auto* flow = dynamic_cast<helper::FlowLayout*>(form.result.layout->itemAt(0)->layout());
    QVERIFY(flow);
    QCOMPARE(flow->count(), 3);
    QVERIFY(flow->itemAt(2)->layout());
    QCOMPARE(form.find<QLineEdit>("b")->parentWidget(), form.window.get());
}

void tst_layout_rows::aTitleOrGroupMakesAGroupBox()
{
    TestForm form;
    form.build(in(E_LAYOUT_V, {edit("a")}, {}, "Titel"));
    auto* titled = form.find<QGroupBox>("box");
    QVERIFY(titled);
    QCOMPARE(titled->title(), "Titel");
    QCOMPARE(titled->layout()->contentsMargins(), QMargins());
    QVERIFY(!titled->isCheckable());
    QCOMPARE(form.find<QLineEdit>("a")->parentWidget(), titled);

    TestForm untitled;
    untitled.build(in(E_LAYOUT_V, {edit("a")}, A_GROUP));
    QVERIFY(untitled.find<QGroupBox>("box"));

    TestForm bare;
    bare.build(in(E_LAYOUT_V, {edit("a")}));
    QVERIFY(!bare.window->findChild<QGroupBox*>());
}

void tst_layout_rows::aGroupIsBoldByItsStyleSheet()
{
    TestForm form;
    form.build(
        in(E_LAYOUT_V, {INFO(E_CHECKBOX, {}, "Kind", true, "a")}, A_FLIP_LABEL_BOLD, "Titel"));
    QCOMPARE(form.find<QGroupBox>("box")->title(), "Titel");
    QCOMPARE(form.find<QGroupBox>("box")->styleSheet(), "QGroupBox { font-weight: bold; }");
    QVERIFY(!form.find<QCheckBox>("a")->font().bold());

    TestForm button;
    button.build(in(E_LAYOUT_V, {edit("a")}, A_BUTTON_LABEL_BOLD, "Titel"));
    QCOMPARE(button.find<QGroupBox>("box")->styleSheet(), "QGroupBox { font-weight: bold; }");
}

void tst_layout_rows::marginsAndSpacings_data()
{
    QTest::addColumn<int>("opener");
    QTest::addColumn<int>("pixels");
    for (const int opener : {E_LAYOUT_V, E_LAYOUT_H, E_LAYOUT_GRID, E_LAYOUT_FORM, E_LAYOUT_FLOW}) {
        for (int pixels = 0; pixels <= 10; pixels += 2)
            QTest::addRow("%d: %d", opener, pixels) << opener << pixels;
    }
}

void tst_layout_rows::marginsAndSpacings()
{
    QFETCH(int, opener);
    QFETCH(int, pixels);
    const unsigned distance = unsigned(pixels) / 2;
    TestForm form;
    form.build(in(opener, {edit("a"), edit("b")}, attributeBits({160 + distance, 166 + distance})));
    QLayout* const layout = form.result.layout->itemAt(0)->layout();
    QCOMPARE(layout->contentsMargins(), QMargins(pixels, pixels, pixels, pixels));
    QCOMPARE(layout->spacing(), pixels);
}

void tst_layout_rows::aScrollAreaHoldsTheLayout()
{
    TestForm form;
    form.build(in(E_LAYOUT_V, {edit("a")}, A_SCROLLAREA));
    auto* area = form.window->findChild<QScrollArea*>();
    QVERIFY(area);
    QCOMPARE(area->frameShape(), QFrame::NoFrame);
    QVERIFY(area->widgetResizable());
    QCOMPARE(area->horizontalScrollBarPolicy(), Qt::ScrollBarAsNeeded);
    QCOMPARE(area->verticalScrollBarPolicy(), Qt::ScrollBarAsNeeded);
    QCOMPARE(area->sizePolicy().horizontalPolicy(), QSizePolicy::Preferred);
    QCOMPARE(form.find<QLineEdit>("a")->parentWidget(), area->widget());
    QCOMPARE(form.result.layout->itemAt(0)->widget(), area);
}

void tst_layout_rows::uncheckingAGroupHidesWhatIsInIt()
{
    TestForm form;
    form.build(in(E_LAYOUT_GRID,
                  {edit("a", {}, "Titel"), INFO(E_LAYOUT_H), edit("b"), INFO(E_LAYOUT_END)},
                  A_CAN_HIDE_ITEMS, "Gruppe", 1));
    auto* group = form.find<QGroupBox>("box");
    QVERIFY(group->isChecked());
    QVERIFY(form.find<QLineEdit>("a")->isVisible());
    QStyleOptionGroupBox option;
    option.initFrom(group);
    option.subControls = QStyle::SC_GroupBoxCheckBox | QStyle::SC_GroupBoxLabel;
    option.text = group->title();
    const QPoint box =
        group->style()
            ->subControlRect(QStyle::CC_GroupBox, &option, QStyle::SC_GroupBoxCheckBox, group)
            .center();
    QTest::mouseClick(group, Qt::LeftButton, {}, box);
    QVERIFY(!group->isChecked());
    QVERIFY(!form.find<QLineEdit>("a")->isVisible());
    QVERIFY(!form.find<QLineEdit>("b")->isVisible());
    QVERIFY(!INFO::labelByKey(&form.map, "a")->isVisible());
    QCOMPARE(form.map.value("box").toBool(), false);
    QCOMPARE(form.count(kAfterDataChanged), 1);

    QTest::mouseClick(group, Qt::LeftButton, {}, box);
    QVERIFY(form.find<QLineEdit>("a")->isVisible());
    QVERIFY(form.find<QLineEdit>("b")->isVisible());
    QCOMPARE(form.map.value("box").toBool(), true);
}

void tst_layout_rows::anUncheckedGroupStartsEmpty()
{
    TestForm form;
    form.map.insert("box", false);
    form.build(in(E_LAYOUT_GRID, {edit("a", {}, "Titel")}, A_CAN_HIDE_ITEMS, "Gruppe", 1),
               MF_USE_MAP_VALUES);
    QVERIFY(!form.find<QGroupBox>("box")->isChecked());
    QVERIFY(form.find<QGroupBox>("box")->isVisible());
    QVERIFY(!form.find<QLineEdit>("a")->isVisible());
}

void tst_layout_rows::checkingAGroupLeavesHiddenRowsHidden()
{
    TestForm form;
    form.build(in(E_LAYOUT_V, {edit("a"), edit("b", A_HIDE)}, A_CAN_HIDE_ITEMS, "Gruppe", 1));
    INFO::setData(&form.map, "box", false, false);
    QVERIFY(!form.find<QLineEdit>("a")->isVisible());
    INFO::setData(&form.map, "box", true, false);
    QVERIFY(form.find<QLineEdit>("a")->isVisible());
    QVERIFY(!form.find<QLineEdit>("b")->isVisible());
}

void tst_layout_rows::setDataOpensAndClosesAGroup()
{
    TestForm form;
    form.build(in(E_LAYOUT_V, {edit("a")}, A_CAN_HIDE_ITEMS, "Gruppe", 1));
    form.seen.clear();
    INFO::setData(&form.map, "box", 0, false);
    QVERIFY(!form.find<QGroupBox>("box")->isChecked());
    QVERIFY(!form.find<QLineEdit>("a")->isVisible());
    QVERIFY(form.seen.empty());
}

void tst_layout_rows::aHiddenLayoutShowsNothing()
{
    TestForm form;
    form.build(in(E_LAYOUT_H, {edit("a", {}, "Titel"), edit("b")}, A_HIDE));
    QVERIFY(!form.find<QLineEdit>("a")->isVisible());
    QVERIFY(!form.find<QLineEdit>("b")->isVisible());
    QVERIFY(!INFO::labelByKey(&form.map, "a")->isVisible());
}

void tst_layout_rows::labelsMoveOutOfHorizontalBoxes()
{
    TestForm form;
    form.build(in(E_LAYOUT_GRID,
                  {INFO(E_LAYOUT_H), edit("a", A_EXCLUDE_LABEL_FROM_HLAYOUT, "Titel"), edit("b"),
                   INFO(E_LAYOUT_END)}));
    auto* grid = form.result.layout->findChild<QGridLayout*>();
    auto* label = qobject_cast<QLabel*>(grid->itemAtPosition(0, 0)->widget());
    QVERIFY(label);
    QCOMPARE(label->text(), "Titel");
    QLayout* const box = grid->itemAtPosition(0, 1)->layout();
    QCOMPARE(box->count(), 2);
    QCOMPARE(box->itemAt(0)->widget(), form.find<QLineEdit>("a"));
}

void tst_layout_rows::stretchesAndSpacersOfABox()
{
    TestForm form;
    form.build(
        in(E_LAYOUT_H,
           {edit("a", A_STRETCH_3), INFO(E_STRETCH, {}, {}, 5), INFO(E_HSPACER, {}, {}, 40),
            INFO(E_VSPACER, {},
                 QVariantMap {{INFO::Option::buildKey(INFO::Option::sizePolicyVKey, E_VSPACER),
                               int(QSizePolicy::Expanding)}},
                 20)}));
    auto* box = qobject_cast<QHBoxLayout*>(form.result.layout->itemAt(0)->layout());
    QCOMPARE(box->count(), 5);
    QCOMPARE(box->stretch(0), 0);
    QCOMPARE(box->stretch(1), 3);
    QCOMPARE(box->stretch(2), 5);
    QCOMPARE(box->itemAt(3)->spacerItem()->sizeHint(), QSize(40, 0));
    QCOMPARE(box->itemAt(3)->spacerItem()->sizePolicy().horizontalPolicy(), QSizePolicy::Minimum);
    QCOMPARE(box->itemAt(4)->spacerItem()->sizeHint(), QSize(0, 20));
    QCOMPARE(box->itemAt(4)->spacerItem()->sizePolicy().verticalPolicy(), QSizePolicy::Expanding);
}

void tst_layout_rows::stretchFactors()
{
    TestForm form;
    form.build(in(E_LAYOUT_H, {edit("a", A_STRETCH_FACTOR_4), edit("b", A_STRETCH_FACTOR_0)}));
    auto* box = qobject_cast<QHBoxLayout*>(form.result.layout->itemAt(0)->layout());
    QCOMPARE(box->stretch(0), 4);
    QCOMPARE(box->stretch(1), 0);
}

void tst_layout_rows::theStandardButtonsHaveTheirKeys()
{
    TestForm form;
    form.build({INFO(E_OK_BUTTON), INFO(E_CANCEL_BUTTON), INFO(E_CLOSE_BUTTON), INFO(E_HELP_BUTTON),
                INFO(E_OK_BUTTON, {}, {}, {}, "eigen")});
    for (const QString& key : {INFO::objectOKButtonName, INFO::objectCancelButtonName,
                               INFO::objectCloseButtonName, INFO::objectHelpButtonName}) {
        QVERIFY(INFO::pushButtonByKey(&form.map, key));
        QVERIFY(!form.map.contains(key));
    }
    QVERIFY(INFO::pushButtonByKey(&form.map, "eigen"));
    QVERIFY(form.map.contains("eigen"));
}

void tst_layout_rows::unbalancedRowsDoNoHarm()
{
    TestForm open;
    open.build({INFO(E_LAYOUT_H), edit("a"), INFO(E_TABWIDGET), INFO(E_TAB, {}, "Seite"),
                INFO(E_LAYOUT_V), edit("b")});
    QVERIFY(open.find<QLineEdit>("a"));
    QVERIFY(open.find<QLineEdit>("b")->isVisible());

    TestForm closed;
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("stands behind the end"));
    closed.build({edit("a"), INFO(E_LAYOUT_END), edit("b")});
    QVERIFY(closed.find<QLineEdit>("a")->isVisible());
    QVERIFY(!closed.find<QLineEdit>("b"));
}

void tst_layout_rows::tabsHoldTheirPages()
{
    TestForm form;
    form.build({INFO(E_TABWIDGET, {}, {}, {}, "tabs"), INFO(E_TAB, {}, "Eins"), edit("a"),
                INFO(E_TAB, {}, "Zwei"), INFO(E_LAYOUT_H), edit("b"), INFO(E_TAB_END), edit("c")});
    auto* tabs = form.find<QTabWidget>("tabs");
    QCOMPARE(tabs->count(), 2);
    QCOMPARE(tabs->tabText(0), "Eins");
    QCOMPARE(tabs->tabText(1), "Zwei");
    QVERIFY(tabs->widget(0)->isAncestorOf(form.find<QLineEdit>("a")));
    QVERIFY(tabs->widget(1)->isAncestorOf(form.find<QLineEdit>("b")));
    QVERIFY(!tabs->isAncestorOf(form.find<QLineEdit>("c")));
    QVERIFY(form.find<QLineEdit>("a")->isVisible());
    QVERIFY(!form.find<QLineEdit>("b")->isVisible());
}

void tst_layout_rows::theStartPageIsShownAndStaysInTheMap()
{
    TestForm form;
    form.build({INFO(E_TABWIDGET, {}, {}, 1, "tabs"), INFO(E_TAB, {}, "Eins"),
                INFO(E_TAB, {}, "Zwei"), INFO(E_TAB_END)});
    QCOMPARE(form.find<QTabWidget>("tabs")->currentIndex(), 1);
    QCOMPARE(form.map.value("tabs"), 1);
    QCOMPARE(form.count(kAfterDataChanged), 0);

    TestForm beyond;
    beyond.build({INFO(E_TABWIDGET, {}, {}, 7, "tabs"), INFO(E_TAB, {}, "Eins"), INFO(E_TAB_END)});
    QCOMPARE(beyond.find<QTabWidget>("tabs")->currentIndex(), 0);
}

void tst_layout_rows::choosingAPageStoresItsNumber()
{
    TestForm form;
    form.build({INFO(E_TABWIDGET, {}, {}, 0, "tabs"), INFO(E_TAB, {}, "Eins"),
                INFO(E_TAB, {}, "Zwei"), INFO(E_TAB_END)});
    auto* bar = form.find<QTabWidget>("tabs")->tabBar();
    QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(1).center());
    QCOMPARE(form.map.value("tabs"), 1);
    QCOMPARE(form.count(kAfterDataChanged), 1);
}

void tst_layout_rows::pagesOfTheCallersOwn()
{
    auto* page = new QLabel("Seite");
    QWidget* none = nullptr;
    TestForm form;
    form.build({INFO(E_TABWIDGET, {}, {}, {}, "tabs"), INFO(E_TAB, {}, "Eins", page),
                INFO(E_TAB, {}, "Keine", none), INFO(E_TAB, {}, "Zwei"), edit("a"),
                INFO(E_TAB_END)});
    auto* tabs = form.find<QTabWidget>("tabs");
    QCOMPARE(tabs->count(), 2);
    QCOMPARE(tabs->widget(0), page);
    QVERIFY(tabs->widget(1)->isAncestorOf(form.find<QLineEdit>("a")));
}

void tst_layout_rows::nestedTabs()
{
    TestForm form;
    form.build({INFO(E_TABWIDGET, {}, {}, {}, "outer"), INFO(E_TAB, {}, "A"),
                INFO(E_TABWIDGET, {}, {}, {}, "inner"), INFO(E_TAB, {}, "B"), edit("b"),
                INFO(E_TAB_END), edit("a"), INFO(E_TAB, {}, "C"), edit("c"), INFO(E_TAB_END)});
    auto* outer = form.find<QTabWidget>("outer");
    auto* inner = form.find<QTabWidget>("inner");
    QCOMPARE(outer->count(), 2);
    QCOMPARE(inner->count(), 1);
    QVERIFY(outer->widget(0)->isAncestorOf(inner));
    QVERIFY(inner->isAncestorOf(form.find<QLineEdit>("b")));
    QVERIFY(!inner->isAncestorOf(form.find<QLineEdit>("a")));
    QVERIFY(outer->widget(0)->isAncestorOf(form.find<QLineEdit>("a")));
    QVERIFY(outer->widget(1)->isAncestorOf(form.find<QLineEdit>("c")));
}

void tst_layout_rows::pagesAreToldOfTheirActivity()
{
    TestForm form;
    form.build({INFO(E_TABWIDGET, {}, {}, 0, "tabs"), INFO(E_TAB, {}, "Eins", {}, "p1"),
                INFO(E_TAB, {}, "Zwei", {}, "p2"), INFO(E_TAB_END)});
    form.seen.clear();
    auto* bar = form.find<QTabWidget>("tabs")->tabBar();
    QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(1).center());
    QStringList told;
    for (const SeenEvent& event : form.seen)
        told << callbackTypeNames.value(event.type) + ' ' + event.key;
    QVERIFY2(told.contains("kKillActive p1"), qPrintable(told.join(", ")));
    QVERIFY2(told.contains("kSetActive p2"), qPrintable(told.join(", ")));
}

void tst_layout_rows::timersReportUnderTheirKeys()
{
    TestForm form;
    form.build({INFO(E_LABEL, {},
                     QVariantMap {{INFO::Option::timerKey, QVariantList {1, "zeile"}},
                                  {INFO::Option::titleKey, "Titel"}})},
               {},
               QVariantMap {{INFO::Option::timerKey,
                             QVariantList {QVariantList {1, "eins"}, QVariantList {2, "zwei"},
                                           QVariantList {}}}});
    QList<int> intervals;
    for (const QTimer* timer : form.window->findChildren<QTimer*>())
        intervals << timer->interval();
    std::sort(intervals.begin(), intervals.end());
    QCOMPARE(intervals, (QList<int> {1, 1, 2, 250}));
    const auto told = [&form](const QString& key) {
        return std::any_of(form.seen.begin(), form.seen.end(), [&key](const SeenEvent& event) {
            return event.type == kTimer && event.key == key;
        });
    };
    QTRY_VERIFY(told("eins") && told("zwei") && told("zeile") && told(""));
}

void tst_layout_rows::theMarkerFollowsTheTitle()
{
    TestForm form;
    form.build({edit("a", A_MANDATORY, "Titel"), edit("b", A_MANDATORY),
                edit("c", A_MANDATORY | A_NO_MANDATORY_MARKER, "Titel"),
                INFO(E_CHECKBOX, A_MANDATORY, "Titel", true, "d")});
    QCOMPARE(INFO::labelByKey(&form.map, "a")->text(), "Titel " + INFO::mandatoryTextRight);
    QVERIFY(!INFO::labelByKey(&form.map, "b"));
    QCOMPARE(INFO::labelByKey(&form.map, "c")->text(), "Titel");
    QCOMPARE(form.find<QCheckBox>("d")->text(), "Titel");
}

void tst_layout_rows::noLabelWithoutATitle()
{
    TestForm form;
    form.build({edit("a"), edit("b", A_NO_LABEL, "Titel"),
                INFO(E_CHECKBOX, A_NO_LABEL, "Titel", true, "c")});
    QVERIFY(!INFO::labelByKey(&form.map, "a"));
    QVERIFY(!INFO::labelByKey(&form.map, "b"));
    QCOMPARE(form.find<QCheckBox>("c")->text(), "Titel");
}

void tst_layout_rows::theTabOrderIsTheOrderOfTheRows()
{
    TestForm form;
    form.build({edit("a"), INFO(E_LAYOUT_GRID, {}, "Gruppe"), edit("b"), INFO(E_LAYOUT_H),
                edit("c"), INFO(E_LAYOUT_END), INFO(E_LAYOUT_END),
                INFO(E_TABWIDGET, {}, {}, {}, "t"), INFO(E_TAB, {}, "Seite"), edit("d"),
                INFO(E_TAB_END), edit("e")});
    form.find<QLineEdit>("a")->setFocus();
    QStringList order;
    for (int i = 0; i < 6; ++i) {
        QWidget* const focus = form.window->focusWidget();
        QVERIFY(focus);
        order << (qobject_cast<QTabBar*>(focus) ? QStringLiteral("t") : focus->objectName());
        QTest::keyClick(focus, Qt::Key_Tab);
    }
    QCOMPARE(order, (QStringList {"a", "b", "c", "t", "d", "e"}));
}

void tst_layout_rows::anUntitledInputIsNamedAfterWhatStandsBeforeIt()
{
    TestForm form;
    form.build({INFO(E_CHECKBOX, {}, "Datumsfilter von:", true, "use"),
                INFO(E_DATE, {}, {}, QDate(2024, 1, 1), "from"), INFO(E_LABEL, {}, "Typ:"),
                INFO(E_LAYOUT_H), INFO(E_COMBOBOX, A_NO_LABEL, {}, items({"a"}), "typ"),
                INFO(E_LAYOUT_END)});
    QCOMPARE(form.find<QDateEdit>("from")->accessibleName(), "Datumsfilter von:");
    QCOMPARE(form.find<QComboBox>("typ")->accessibleName(), "Typ:");
    TestForm bare;
    bare.build({edit("schluessel")});
    QCOMPARE(bare.find<QLineEdit>("schluessel")->accessibleName(), "schluessel");
}

void tst_layout_rows::aScrollingFormWithAFixedSize()
{
    QMainWindow window;
    QMap<QString, QVariant> map;
    const INFO::Result result = INFO::getLayout(&window, true, QString(), {edit("a")},
                                                MF_SCROLLAREA | MF_FIXED_SIZE, {}, &map);
    QVERIFY(result.layout);
    QVERIFY(!result.layout->parent());
    QVERIFY(!window.centralWidget());
    auto* area = qobject_cast<QScrollArea*>(result.layout->itemAt(0)->widget());
    QVERIFY(area);
    QVERIFY(area->widgetResizable());
    QCOMPARE(area->widget()->layout()->sizeConstraint(), QLayout::SetFixedSize);
    delete result.layout;
}

void tst_layout_rows::keylessRowsShareARecord()
{
    TestForm form;
    form.build({edit(""), edit("", {}, "Titel"), edit("a")});
    QCOMPARE(WIDGET_INFO::widgets(&form.map, "").size(), 3);
    QCOMPARE(WIDGET_INFO::all(&form.map, 0).size(), 4);
    QCOMPARE(WIDGET_INFO::all(&form.map, E_LINEEDIT).size(), 3);
}

void tst_layout_rows::rowsInheritThePayload()
{
    int inherited = 0;
    int own = 0;
    const auto read = [](int& into) {
        return ContextCallback([&into](const CallbackContext& context) {
            into = std::any_cast<int>(context.row.anyData);
            return 1;
        });
    };
    QWidget window;
    QMap<QString, QVariant> map;
    INFO::applyLayout(&window, true, QString(),
                      {INFO(E_BUTTON, {}, "A", {}, "a", read(inherited)),
                       INFO(E_BUTTON, {}, "B", {}, "b", read(own), 2)},
                      {}, {}, &map, nullptr, {}, 1);
    window.show();
    QTest::mouseClick(INFO::pushButtonByKey(&map, "a"), Qt::LeftButton);
    QTest::mouseClick(INFO::pushButtonByKey(&map, "b"), Qt::LeftButton);
    QCOMPARE(inherited, 1);
    QCOMPARE(own, 2);
}

void tst_layout_rows::localesAreInherited()
{
    const QLocale german(QLocale::German, QLocale::Germany);
    const QLocale english(QLocale::English, QLocale::UnitedStates);
    TestForm form;
    form.build({INFO(E_NUMBER, {}, {}, 1.5, "a"),
                INFO(E_NUMBER, {}, QVariantMap {{INFO::Option::localeKey, english}}, 1.5, "b"),
                INFO(E_DATE, {}, {}, QDate(2024, 2, 29), "c")},
               {}, QVariantMap {{INFO::Option::localeKey, german}});
    QCOMPARE(form.find<QLineEdit>("a")->text(), "1,5");
    QCOMPARE(form.find<QLineEdit>("b")->text(), "1.5");
    QCOMPARE(form.find<QDateEdit>("c")->text(), "29.02.2024");
}

void tst_layout_rows::aGroupIsAsWideAsItsTitle()
{
    const QString title(80, 'W');
    TestForm form;
    form.build(in(E_LAYOUT_V, {edit("a")}, {}, title));
    auto* group = form.find<QGroupBox>("box");
    QVERIFY(group->minimumWidth() >= group->fontMetrics().horizontalAdvance(title));
}

void tst_layout_rows::aNullMapMakesOne()
{
    QWidget window;
    INFO::applyLayout(&window, true, QString(), {edit("a")});
    window.show();
    // The result is gone; the form still takes what is typed.
    auto* field = window.findChild<QLineEdit*>("a");
    retype(field, "neu");
    const auto map = window.property("mod_form_qt_map").value<T_VARMAP_SHARED_PTR>();
    QVERIFY(map);
    QCOMPARE(map->value("a"), "neu");
}

void tst_layout_rows::aSecondFormReplacesTheFirst()
{
    TestForm form;
    form.build({edit("a")});
    QPointer<QLineEdit> first = form.find<QLineEdit>("a");
    form.build({edit("b")});
    QVERIFY(!first);
    QTRY_VERIFY(form.find<QLineEdit>("b")->isVisible());
    QVERIFY(WIDGET_INFO::widgets(&form.map, "a").empty());
}

QTEST_MAIN(tst_layout_rows)
#include "tst_layout_rows.moc"
