#include "form/values/list_widgets.h"
#include "tests/form/hand_made_form.h"

#include <QTest>

using namespace mod_form_qt;

namespace {

/// One of the four kinds of list widgets and the attributes under which several may be selected.
struct Kind
{
    QWidget* widget = nullptr;
    std::bitset<256> attr;
};

Kind make(const QString& name, QWidget* parent)
{
    if (name == "combo")
        return {new QComboBox(parent), {}};
    if (name == "check combo")
        return {new helper::CheckComboBox(parent), {}};
    if (name.startsWith("menu")) {
        auto* button = new QPushButton(parent);
        button->setMenu(new helper::QCheckMenu(button));
        return {button, name.endsWith("several") ? A_MULTISEL : A_NONE};
    }
    auto* list = new QListWidget(parent);
    if (name == "list, checks")
        return {list, A_CHECKBOX};
    return {list, name.endsWith("several") ? A_MULTISEL : A_NONE};
}

void allKinds()
{
    QTest::addColumn<bool>("several");
    QTest::newRow("combo") << false;
    QTest::newRow("check combo") << true;
    QTest::newRow("list") << false;
    QTest::newRow("list, several") << true;
    QTest::newRow("list, checks") << true;
    QTest::newRow("menu") << false;
    QTest::newRow("menu, several") << true;
}

QStringList textsOf(QWidget* widget)
{
    QStringList texts;
    if (auto* box = qobject_cast<QComboBox*>(widget)) {
        for (int place = 0; place < box->count(); ++place)
            texts << box->itemText(place);
    } else if (auto* list = qobject_cast<QListWidget*>(widget)) {
        for (int place = 0; place < list->count(); ++place)
            texts << list->item(place)->text();
    } else if (auto* button = qobject_cast<QPushButton*>(widget)) {
        for (const QAction* action : button->menu()->actions())
            texts << action->text();
    }
    return texts;
}

} // namespace

class tst_list_widgets : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void showsTheItemsAndTheirMarks_data() { allKinds(); }

    void showsTheItemsAndTheirMarks();

    void fillingReplacesWhatWasThere_data() { allKinds(); }

    void fillingReplacesWhatWasThere();

    void marksComeBackItemByItem_data() { allKinds(); }

    void marksComeBackItemByItem();

    void itemsOfEqualValueAreToldApart_data() { allKinds(); }

    void itemsOfEqualValueAreToldApart();

    void sortingShowsTheTextsInOrder_data() { allKinds(); }

    void sortingShowsTheTextsInOrder();

    void aSelectionIsShownByItsValues_data() { allKinds(); }

    void aSelectionIsShownByItsValues();
    void fillingIsSilent_data();
    void fillingIsSilent();
    void aComboBoxWithoutAMarkShowsNothing();
    void ofSeveralMarksInASingleSelectionTheFirstCounts_data();
    void ofSeveralMarksInASingleSelectionTheFirstCounts();
    void furtherRolesAreSetOnTheItem();
    void furtherRolesAreSetOnActions();
    void anAmpersandIsNoMnemonic();
    void aMenuAllowsOneOrSeveral();
    void otherEntriesOfAMenuStay();
    void changedListIsMatchedByValue();
    void valuesThatCannotBeComparedAreMatchedByTheirPlace();
    void aListStartsAtItsFirstMark();
    void tellsListWidgets();

private:
    QScopedPointer<QWidget> m_window;
};

void tst_list_widgets::init()
{
    m_window.reset(new QWidget);
}

void tst_list_widgets::cleanup()
{
    m_window.reset();
}

void tst_list_widgets::showsTheItemsAndTheirMarks()
{
    QFETCH(bool, several);
    const auto [widget, attr] = make(QTest::currentDataTag(), m_window.data());
    fillListWidget(widget, letters("ABC", several ? "AC" : "B"), attr);
    QCOMPARE(textsOf(widget), QStringList({"A", "B", "C"}));
    QCOMPARE(joined(selectedValues(widget, attr)), several ? "ac" : "b");
    fillListWidget(widget, letters("ABC"), attr);
    QCOMPARE(joined(selectedValues(widget, attr)), "");
}

void tst_list_widgets::fillingReplacesWhatWasThere()
{
    const auto [widget, attr] = make(QTest::currentDataTag(), m_window.data());
    fillListWidget(widget, letters("ABC", "C"), attr);
    fillListWidget(widget, letters("XY", "X"), attr);
    QCOMPARE(textsOf(widget), QStringList({"X", "Y"}));
    QCOMPARE(joined(selectedValues(widget, attr)), "x");
    fillListWidget(widget, {}, attr);
    QVERIFY(textsOf(widget).isEmpty());
    QVERIFY(selectedValues(widget, attr).isEmpty());
}

void tst_list_widgets::marksComeBackItemByItem()
{
    QFETCH(bool, several);
    const auto [widget, attr] = make(QTest::currentDataTag(), m_window.data());
    fillListWidget(widget, letters("ABC", "A"), attr);
    showMarks(widget, letters("ABC", several ? "BC" : "C"), attr);
    QCOMPARE(marks(markedBy(widget, letters("ABC", "A"), attr)), several ? "BC" : "C");
    showMarks(widget, letters("ABC"), attr);
    QCOMPARE(marks(markedBy(widget, letters("ABC", "A"), attr)), "");
}

void tst_list_widgets::itemsOfEqualValueAreToldApart()
{
    T_LISTDATA list = letters("CBA", "A");
    for (ListItem& item : list)
        std::get<2>(item) = "same";
    const auto [widget, attr] = make(QTest::currentDataTag(), m_window.data());
    fillListWidget(widget, list, attr | A_SORTED);
    QCOMPARE(textsOf(widget).first(), "A");
    QCOMPARE(marks(markedBy(widget, list, attr)), "A");
    std::get<1>(list[2]) = false;
    std::get<1>(list[1]) = true;
    showMarks(widget, list, attr);
    QCOMPARE(marks(markedBy(widget, list, attr)), "B");
}

void tst_list_widgets::sortingShowsTheTextsInOrder()
{
    const auto [widget, attr] = make(QTest::currentDataTag(), m_window.data());
    fillListWidget(widget, letters("CAB", "C"), attr | A_SORTED);
    QCOMPARE(textsOf(widget), QStringList({"A", "B", "C"}));
    QCOMPARE(marks(markedBy(widget, letters("CAB"), attr)), "C");
    if (auto* box = qobject_cast<QComboBox*>(widget)) {
        box->model()->sort(0, Qt::DescendingOrder);
        QCOMPARE(marks(markedBy(widget, letters("CAB"), attr)), "C");
    }
}

void tst_list_widgets::aSelectionIsShownByItsValues()
{
    QFETCH(bool, several);
    const auto [widget, attr] = make(QTest::currentDataTag(), m_window.data());
    fillListWidget(widget, letters("ABC", "A"), attr);
    showSelection(widget, {"x", "c", "b"}, attr);
    QCOMPARE(joined(selectedValues(widget, attr)), several ? "bc" : "c");
    showSelection(widget, {"x"}, attr);
    QCOMPARE(joined(selectedValues(widget, attr)), "");
}

void tst_list_widgets::fillingIsSilent_data()
{
    QTest::addColumn<QByteArray>("signal");
    QTest::newRow("combo") << QByteArray(SIGNAL(currentIndexChanged(int)));
    QTest::newRow("check combo") << QByteArray(SIGNAL(checkedChanged()));
    QTest::newRow("list") << QByteArray(SIGNAL(itemSelectionChanged()));
    QTest::newRow("list, checks") << QByteArray(SIGNAL(itemChanged(QListWidgetItem*)));
}

void tst_list_widgets::fillingIsSilent()
{
    QFETCH(QByteArray, signal);
    const auto [widget, attr] = make(QTest::currentDataTag(), m_window.data());
    QSignalSpy heard(widget, signal.constData());
    fillListWidget(widget, letters("ABC", "B"), attr);
    fillListWidget(widget, letters("AC", "C"), attr);
    QCOMPARE(heard.count(), 0);
    showSelection(widget, {"a"}, attr);
    QVERIFY(heard.count() > 0);
}

void tst_list_widgets::aComboBoxWithoutAMarkShowsNothing()
{
    QComboBox box;
    fillListWidget(&box, letters("ABC"), {});
    QCOMPARE(box.currentIndex(), -1);
}

void tst_list_widgets::ofSeveralMarksInASingleSelectionTheFirstCounts_data()
{
    QTest::addColumn<bool>("sorted");
    for (const char* kind : {"combo", "list", "menu"}) {
        QTest::addRow("%s", kind) << false;
        QTest::addRow("%s sorted", kind) << true;
    }
}

void tst_list_widgets::ofSeveralMarksInASingleSelectionTheFirstCounts()
{
    QFETCH(bool, sorted);
    const QString kind = QString(QTest::currentDataTag()).section(' ', 0, 0);
    const Kind made = make(kind, m_window.data());
    // The first of the list data, wherever it is shown.
    fillListWidget(made.widget, letters("CBA", "BA"), sorted ? A_SORTED : A_NONE);
    QCOMPARE(joined(selectedValues(made.widget, made.attr)), "b");
}

void tst_list_widgets::furtherRolesAreSetOnTheItem()
{
    T_LISTDATA list = letters("AB");
    std::get<3>(list[1]) = {{Qt::ToolTipRole, "tip"}, {Qt::ForegroundRole, QColor(Qt::red)}};
    for (const char* kind : {"combo", "check combo", "list"}) {
        const auto [widget, attr] = make(kind, m_window.data());
        fillListWidget(widget, list, attr);
        const auto* box = qobject_cast<QComboBox*>(widget);
        const QAbstractItemModel* model =
            box ? box->model() : qobject_cast<QListWidget*>(widget)->model();
        QCOMPARE(model->index(1, 0).data(Qt::ToolTipRole), QVariant("tip"));
        QCOMPARE(model->index(1, 0).data(Qt::ForegroundRole).value<QColor>(), QColor(Qt::red));
        QVERIFY(!model->index(0, 0).data(Qt::ToolTipRole).isValid());
    }
}

void tst_list_widgets::furtherRolesAreSetOnActions()
{
    T_LISTDATA list = letters("A");
    QPixmap pixmap(4, 4);
    pixmap.fill(Qt::red);
    QFont bold;
    bold.setBold(true);
    std::get<3>(list[0]) = {{Qt::ToolTipRole, "tip"},
                            {Qt::StatusTipRole, "status"},
                            {Qt::WhatsThisRole, "what"},
                            {Qt::DecorationRole, QIcon(pixmap)},
                            {Qt::FontRole, bold}};
    const auto [widget, attr] = make("menu", m_window.data());
    fillListWidget(widget, list, attr);
    const QAction* action = qobject_cast<QPushButton*>(widget)->menu()->actions().first();
    QCOMPARE(action->toolTip(), "tip");
    QCOMPARE(action->statusTip(), "status");
    QCOMPARE(action->whatsThis(), "what");
    QVERIFY(!action->icon().isNull());
    QVERIFY(action->font().bold());
    QCOMPARE(action->data(), QVariant("a"));
}

void tst_list_widgets::anAmpersandIsNoMnemonic()
{
    const auto [widget, attr] = make("menu", m_window.data());
    fillListWidget(widget, {{"A & B", false, 1, {}}}, attr);
    QCOMPARE(textsOf(widget), QStringList("A && B"));
}

void tst_list_widgets::aMenuAllowsOneOrSeveral()
{
    for (const bool several : {false, true}) {
        const auto [widget, attr] = make(several ? "menu, several" : "menu", m_window.data());
        fillListWidget(widget, letters("ABC", "A"), attr);
        qobject_cast<QPushButton*>(widget)->menu()->actions().at(1)->trigger();
        QCOMPARE(joined(selectedValues(widget, attr)), several ? "ab" : "b");
    }
}

void tst_list_widgets::otherEntriesOfAMenuStay()
{
    const auto [widget, attr] = make("menu", m_window.data());
    qobject_cast<QPushButton*>(widget)->menu()->addAction("other");
    fillListWidget(widget, letters("AB"), attr);
    fillListWidget(widget, letters("C"), attr);
    QCOMPARE(textsOf(widget), QStringList({"other", "C"}));
}

void tst_list_widgets::changedListIsMatchedByValue()
{
    QComboBox box;
    fillListWidget(&box, letters("ABC", "C"), {});
    QCOMPARE(marks(markedBy(&box, letters("CAB"), {})), "C");
    QCOMPARE(marks(markedBy(&box, letters("C"), {})), "C");
    QCOMPARE(marks(markedBy(&box, letters("AB", "A"), {})), "");
    box.addItem("X", "x");
    box.setCurrentIndex(3);
    QCOMPARE(marks(markedBy(&box, letters("ABCX"), {})), "X");
}

void tst_list_widgets::valuesThatCannotBeComparedAreMatchedByTheirPlace()
{
    struct Opaque
    {
        int number;
    };

    T_LISTDATA list = letters("AB", "B");
    for (ListItem& item : list)
        std::get<2>(item) = QVariant::fromValue(Opaque {int(1)});
    QVERIFY(std::get<2>(list[0]) != std::get<2>(list[0]));
    QComboBox box;
    fillListWidget(&box, list, {});
    QCOMPARE(marks(markedBy(&box, list, {})), "B");
}

void tst_list_widgets::aListStartsAtItsFirstMark()
{
    QListWidget list;
    fillListWidget(&list, letters("ABC", "BC"), A_MULTISEL);
    QCOMPARE(list.currentRow(), 1);
    fillListWidget(&list, letters("ABC"), A_CHECKBOX);
    QCOMPARE(list.currentRow(), 0);
    QVERIFY(list.selectedItems().isEmpty());
    fillListWidget(&list, letters("ABC"), {});
    QCOMPARE(list.currentRow(), -1);
}

void tst_list_widgets::tellsListWidgets()
{
    for (const char* kind : {"combo", "check combo", "list", "menu"})
        QVERIFY(isListWidget(make(kind, m_window.data()).widget));
    QPushButton plain;
    QVERIFY(!isListWidget(&plain));
    QLineEdit edit;
    QVERIFY(!isListWidget(&edit));
    QVERIFY(!isListWidget(nullptr));
    // A menu that the application hangs on a button of another row is not made of list data.
    QPushButton other;
    QMenu menu;
    other.setMenu(&menu);
    other.setProperty(WIDGET_INFO::typeExtPropertyKey, E_BUTTON);
    QVERIFY(!isListWidget(&other));
}

QTEST_MAIN(tst_list_widgets)
#include "tst_list_widgets.moc"
