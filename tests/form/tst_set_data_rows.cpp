#include "form/values/list_widgets.h"
#include "tests/form/hand_made_form.h"

#include <QTest>

using namespace mod_form_qt;

namespace {

QDateEdit* addDateRow(HandMadeForm& form, const QString& key, bool withBox)
{
    if (withBox)
        form.put(new QCheckBox(&form.window), E_CHECKBOX, E_DATE, key,
                 A_INVALID_CHECKBOX | A_SKIP_SETDATA);
    auto* edit = form.put(new QDateEdit(&form.window), E_DATE, E_DATE, key,
                          withBox ? A_INVALID_CHECKBOX : A_NONE);
    edit->setProperty("_lastDate", edit->date());
    return edit;
}

} // namespace

class tst_set_data_rows : public QObject
{
    Q_OBJECT

private slots:
    void dateIsShownAndRemembered();
    void absentDateUnchecksItsBox_data();
    void absentDateUnchecksItsBox();
    void absentDateWithoutABoxIsTheLastDay();
    void dateMayBeATextOrADayNumber();
    void listRowsShowAndMarkTheSelection();
    void comboValueThatMatchesNoItemSelectsNothing();
    void emptyCheckComboBoxIsLeftAlone();
    void listRowWithoutListDataKeepsTheValue();
    void listThatShowsSomethingElseIsCorrected();
    void listRowsRaiseEvenAnEqualSelection();
    void menuButtonFollowsItsSelection();
    void pathRowsShowAndStoreThePath();
    void pathRowIsSilentAndShowsThePathAgain();
    void valueButtonsAreClickedWhenTheChangeIsRaised();
    void colourButtonShowsItsColourWithoutAClick();
    void plainButtonsAreSkipped_data();
    void plainButtonsAreSkipped();
    void rowsThatShowNoValueOnlyChangeTheMap_data();
    void rowsThatShowNoValueOnlyChangeTheMap();
    void groupFollowsItsValue();
    void imageFollowsItsValue();
};

void tst_set_data_rows::dateIsShownAndRemembered()
{
    HandMadeForm form;
    auto* edit = addDateRow(form, "a", true);
    auto* box = INFO::checkBoxByKey(&form.map, "a");
    box->setChecked(false);
    edit->setEnabled(false);
    Raised raised;
    raised.listen(edit, &QDateEdit::dateChanged);
    raised.listen(box, &QCheckBox::stateChanged);
    const QDate date(2024, 2, 29);
    QCOMPARE(INFO::setData(&form.map, "a", date, false), 1);
    QCOMPARE(edit->date(), date);
    QCOMPARE(edit->property("_lastDate").toDate(), date);
    QVERIFY(box->isChecked());
    QVERIFY(edit->isEnabled());
    QCOMPARE(form.map["a"], QVariant(date));
    QCOMPARE(raised.count, 0);
    QVERIFY(!INFO::eventBlocked(edit));
}

void tst_set_data_rows::absentDateUnchecksItsBox_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::newRow("invalid date") << QVariant(QDate());
    QTest::newRow("invalid variant") << QVariant();
    QTest::newRow("the stand-in") << QVariant(INFO::dateInvalid);
    QTest::newRow("later than any date") << QVariant(INFO::dateInvalid.addDays(1));
    QTest::newRow("text that is no date") << QVariant("no date");
    QTest::newRow("day beyond the calendar") << QVariant(std::numeric_limits<qlonglong>::max());
}

void tst_set_data_rows::absentDateUnchecksItsBox()
{
    QFETCH(QVariant, value);
    HandMadeForm form;
    auto* edit = addDateRow(form, "a", true);
    auto* box = INFO::checkBoxByKey(&form.map, "a");
    const QDate date(2024, 2, 29);
    INFO::setData(&form.map, "a", date, false);
    INFO::setData(&form.map, "a", value, false);
    QVERIFY(!box->isChecked());
    QVERIFY(!edit->isEnabled());
    QCOMPARE(form.map["a"], QVariant(INFO::dateInvalid));
    QCOMPARE(edit->property("_lastDate").toDate(), date);
}

void tst_set_data_rows::absentDateWithoutABoxIsTheLastDay()
{
    HandMadeForm form;
    auto* edit = addDateRow(form, "a", false);
    INFO::setData(&form.map, "a", QDate(2024, 2, 29), false);
    INFO::setData(&form.map, "a", QDate(), false);
    QCOMPARE(edit->date(), INFO::dateInvalid);
    QVERIFY(edit->isEnabled());
    QCOMPARE(edit->property("_lastDate").toDate(), QDate(2024, 2, 29));
}

void tst_set_data_rows::dateMayBeATextOrADayNumber()
{
    HandMadeForm form;
    auto* edit = addDateRow(form, "a", false);
    INFO::setData(&form.map, "a", "2024-02-29", false);
    QCOMPARE(edit->date(), QDate(2024, 2, 29));
    QCOMPARE(form.map["a"], QVariant(QDate(2024, 2, 29)));
    INFO::setData(&form.map, "a", QDate(2023, 1, 2).toJulianDay(), false);
    QCOMPARE(edit->date(), QDate(2023, 1, 2));
}

void tst_set_data_rows::listRowsShowAndMarkTheSelection()
{
    T_LISTDATA bound = letters("ABC");
    HandMadeForm form;
    auto* combo = form.add<QComboBox>(E_COMBOBOX, "combo");
    auto* checks = form.add<helper::CheckComboBox>(E_CHECKCOMBOBOX, "checks");
    auto* list = form.add<QListWidget>(E_LISTBOX, "list", A_MULTISEL);
    Raised raised;
    raised.listen(combo, &QComboBox::currentIndexChanged);
    raised.listen(checks, &helper::CheckComboBox::checkedChanged);
    raised.listen(list, &QListWidget::itemSelectionChanged);
    for (QWidget* widget :
         {static_cast<QWidget*>(combo), static_cast<QWidget*>(checks), static_cast<QWidget*>(list)})
        fillListWidget(widget, letters("ABC"), WIDGET_INFO::flags(widget));
    form.map.insert("combo", QVariant::fromValue(letters("ABC")));
    form.map.insert("checks", QVariant::fromValue(letters("ABC")));
    form.bind("list", &bound);
    const QVariantList two {"c", "a"};
    QCOMPARE(INFO::setData(&form.map, {{"combo", "b"}, {"checks", two}, {"list", two}}, false), 3);
    QCOMPARE(combo->currentText(), "B");
    QCOMPARE(joined(checks->checkedData()), "ac");
    QCOMPARE(joined(selectedValues(list, A_MULTISEL)), "ac");
    QCOMPARE(marks(form.map["combo"]), "B");
    QCOMPARE(marks(form.map["checks"]), "AC");
    QCOMPARE(marks(bound), "AC");
    QVERIFY(INFO::isListDataPtr(form.map["list"]));
    QCOMPARE(raised.count, 0);
}

void tst_set_data_rows::comboValueThatMatchesNoItemSelectsNothing()
{
    HandMadeForm form;
    auto* combo = form.add<QComboBox>(E_COMBOBOX, "a");
    fillListWidget(combo, letters("AB", "A"), {});
    form.map.insert("a", QVariant::fromValue(letters("AB", "A")));
    INFO::setData(&form.map, "a", "x", false);
    QCOMPARE(combo->currentIndex(), -1);
    QCOMPARE(marks(form.map["a"]), "");
}

void tst_set_data_rows::emptyCheckComboBoxIsLeftAlone()
{
    HandMadeForm form;
    auto* checks = form.add<helper::CheckComboBox>(E_CHECKCOMBOBOX, "a");
    form.map.insert("a", QVariant::fromValue(letters("AB", "A")));
    Raised raised;
    raised.listen(checks, &helper::CheckComboBox::checkedChanged);
    QCOMPARE(INFO::setData(&form.map, "a", "b", true), 0);
    QCOMPARE(marks(form.map["a"]), "A");
    QCOMPARE(raised.count, 0);
}

void tst_set_data_rows::listRowWithoutListDataKeepsTheValue()
{
    HandMadeForm form;
    auto* combo = form.add<QComboBox>(E_COMBOBOX, "a");
    fillListWidget(combo, letters("AB", "A"), {});
    form.map.insert("a", "a");
    INFO::setData(&form.map, "a", "b", false);
    QCOMPARE(combo->currentText(), "B");
    QCOMPARE(form.map["a"], QVariant("b"));
}

void tst_set_data_rows::listThatShowsSomethingElseIsCorrected()
{
    HandMadeForm form;
    auto* combo = form.add<QComboBox>(E_COMBOBOX, "a");
    fillListWidget(combo, letters("AB", "B"), {});
    form.map.insert("a", QVariant::fromValue(letters("AB", "B")));
    INFO::selectListCtrlBySelData(&form.map, "a", "a");
    INFO::setData(&form.map, "a", "b", false);
    QCOMPARE(combo->currentText(), "B");
    const QMap<QString, QVariant> before = form.map;
    INFO::setData(&form.map, "a", "b", false);
    QVERIFY(form.map.isSharedWith(before));
}

void tst_set_data_rows::listRowsRaiseEvenAnEqualSelection()
{
    HandMadeForm form;
    auto* combo = form.add<QComboBox>(E_COMBOBOX, "a");
    fillListWidget(combo, letters("AB", "B"), {});
    form.map.insert("a", QVariant::fromValue(letters("AB", "B")));
    Raised raised;
    raised.listen(combo, &QComboBox::currentIndexChanged);
    INFO::setData(&form.map, "a", "b", true);
    QCOMPARE(raised.count, 1);
    QVERIFY(raised.active);
}

void tst_set_data_rows::menuButtonFollowsItsSelection()
{
    HandMadeForm form;
    auto* button = new QPushButton(&form.window);
    button->setMenu(new helper::QCheckMenu(button));
    form.put(button, E_BUTTON, E_MENU_BUTTON, "a", A_MULTISEL);
    fillListWidget(button, letters("ABC", "A"), A_MULTISEL);
    form.map.insert("a", QVariant::fromValue(letters("ABC", "A")));
    Raised raised;
    raised.listen(button->menu(), &QMenu::triggered);
    INFO::setData(&form.map, "a", QVariantList({"b", "c"}), false);
    QCOMPARE(joined(selectedValues(button, A_MULTISEL)), "bc");
    QCOMPARE(marks(form.map["a"]), "BC");
    QCOMPARE(raised.count, 0);
    INFO::setData(&form.map, "a", "b", true);
    QCOMPARE(marks(form.map["a"]), "B");
    QCOMPARE(raised.count, 1);
}

void tst_set_data_rows::pathRowsShowAndStoreThePath()
{
    for (const int type :
         {E_SHOW_FOLDER, E_BROWSE_FOLDER, E_BROWSE_FILE_OPEN, E_BROWSE_FILE_SAVE}) {
        HandMadeForm form;
        auto* edit = form.put(new QLineEdit(&form.window), E_LINEEDIT, type, "a");
        auto* button = form.put(new QPushButton(&form.window), E_BUTTON, type, "a");
        Raised texts;
        texts.listen(edit, &QLineEdit::textChanged);
        Raised clicks;
        clicks.listen(button, &QPushButton::clicked);
        QCOMPARE(INFO::setData(&form.map, "a", "/tmp/x", false), 1);
        QCOMPARE(edit->text(), "/tmp/x");
        QCOMPARE(form.map["a"], QVariant("/tmp/x"));
        QCOMPARE(texts.count, 0);
        INFO::setData(&form.map, "a", "/tmp/y", true);
        QCOMPARE(texts.count, 1);
        QCOMPARE(clicks.count, 0);
    }
}

void tst_set_data_rows::pathRowIsSilentAndShowsThePathAgain()
{
    HandMadeForm form;
    auto* edit = form.put(new QLineEdit(&form.window), E_LINEEDIT, E_BROWSE_FOLDER, "a");
    form.map.insert("a", "/tmp");
    edit->setText("typed");
    Raised raised;
    raised.listen(edit, &QLineEdit::textChanged);
    INFO::setData(&form.map, "a", "/tmp", false);
    QCOMPARE(edit->text(), "/tmp");
    QCOMPARE(raised.count, 0);
    QVERIFY(!edit->signalsBlocked());
}

void tst_set_data_rows::valueButtonsAreClickedWhenTheChangeIsRaised()
{
    for (const int type : {E_OPENURL_BUTTON, E_COLOR_BUTTON, E_FONT_BUTTON, E_BROWSE_FOLDER_BUTTON,
                           E_BROWSE_FILE_OPEN_BUTTON, E_BROWSE_FILE_SAVE_BUTTON}) {
        HandMadeForm form;
        auto* button = form.put(new QPushButton(&form.window), E_BUTTON, type, "a");
        Raised raised;
        raised.listen(button, &QPushButton::clicked);
        QCOMPARE(INFO::setData(&form.map, "a", "x", false), 1);
        QCOMPARE(raised.count, 0);
        QCOMPARE(form.map["a"], QVariant("x"));
        INFO::setData(&form.map, "a", "y", true);
        QCOMPARE(raised.count, 1);
        QVERIFY(raised.active); // so that no dialog opens
        QCOMPARE(form.map["a"], QVariant("y"));
    }
}

void tst_set_data_rows::colourButtonShowsItsColourWithoutAClick()
{
    HandMadeForm form;
    auto* button = form.put(new QPushButton(&form.window), E_BUTTON, E_COLOR_BUTTON, "colour");
    auto* font = form.put(new QPushButton(&form.window), E_BUTTON, E_FONT_BUTTON, "font");
    INFO::setData(&form.map, {{"colour", QColor(Qt::red)}, {"font", QFont("Sans", 23)}}, false);
    QVERIFY(!button->icon().isNull());
    const QImage swatch = button->icon().pixmap(button->iconSize()).toImage();
    QCOMPARE(swatch.pixelColor(swatch.width() / 2, swatch.height() / 2), QColor(Qt::red));
    QCOMPARE(font->font().pointSize(), 23);
}

void tst_set_data_rows::plainButtonsAreSkipped_data()
{
    QTest::addColumn<int>("type");
    QTest::newRow("button") << E_BUTTON;
    QTest::newRow("ok") << E_OK_BUTTON;
    QTest::newRow("cancel") << E_CANCEL_BUTTON;
    QTest::newRow("close") << E_CLOSE_BUTTON;
    QTest::newRow("configurations") << E_MULTICONFIG;
    QTest::newRow("help") << E_HELP_BUTTON;
}

void tst_set_data_rows::plainButtonsAreSkipped()
{
    QFETCH(int, type);
    HandMadeForm form;
    auto* button = form.put(new QPushButton(&form.window), E_BUTTON, type, "a");
    Raised raised;
    raised.listen(button, &QPushButton::clicked);
    QCOMPARE(INFO::setData(&form.map, "a", "x", true), 0);
    QVERIFY(!form.map.contains("a"));
    QCOMPARE(raised.count, 0);
}

void tst_set_data_rows::rowsThatShowNoValueOnlyChangeTheMap_data()
{
    QTest::addColumn<int>("type");
    for (const int type : {E_WIDGET, E_MENUBAR, 20013, E_STATUSBAR, E_TABWIDGET, E_TAB, 20017,
                           E_VLINE, E_HLINE, E_LABEL, E_MENU, E_ACTION})
        QTest::addRow("%d", type) << type;
}

void tst_set_data_rows::rowsThatShowNoValueOnlyChangeTheMap()
{
    QFETCH(int, type);
    HandMadeForm form;
    auto* edit = form.put(new QLineEdit("own", &form.window), type, type, "a");
    Raised raised;
    raised.listen(edit, &QLineEdit::textChanged);
    QCOMPARE(INFO::setData(&form.map, "a", "x", true), 1);
    QCOMPARE(form.map["a"], QVariant("x"));
    QCOMPARE(edit->text(), "own");
    QCOMPARE(raised.count, 0);
}

void tst_set_data_rows::groupFollowsItsValue()
{
    HandMadeForm form;
    auto* group = form.put(new QGroupBox(&form.window), E_LAYOUT_V, E_LAYOUT_V, "a");
    auto* inner = new QVBoxLayout(group);
    auto* edit = new QLineEdit(group);
    inner->addWidget(edit);
    group->setCheckable(true);
    Raised raised;
    raised.listen(group, &QGroupBox::clicked);
    raised.listen(group, &QGroupBox::toggled);
    INFO::setData(&form.map, "a", false, false);
    QVERIFY(!group->isChecked());
    QVERIFY(edit->isHidden());
    QCOMPARE(form.map["a"], QVariant(false));
    QCOMPARE(raised.count, 0);
    INFO::setData(&form.map, "a", true, true);
    QVERIFY(group->isChecked());
    QVERIFY(!edit->isHidden());
    QCOMPARE(raised.count, 1);
}

void tst_set_data_rows::imageFollowsItsValue()
{
    HandMadeForm form;
    auto* widget = form.add<helper::ImageWidget>(E_IMAGE, "a", A_ADJUST_WIDTH_TO_CONTENTS);
    QImage image(17, 5, QImage::Format_RGB32);
    image.fill(Qt::red);
    INFO::setData(&form.map, "a", image, true);
    QCOMPARE(widget->image(), image);
    QCOMPARE(widget->width(), 17);
    QCOMPARE(form.map["a"].value<QImage>(), image);
}

QTEST_MAIN(tst_set_data_rows)
#include "tst_set_data_rows.moc"
