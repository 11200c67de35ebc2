#include "signal_table.h"

using namespace mod_form_qt;
using namespace signal_table;

namespace {

using Bench = EventBench;

/// A widget of the table, wired. A caller's widget stands in the map, as it does in a form.
struct Wired
{
    Bench bench;
    const Wiring& wiring;
    QWidget* widget;
    QStringList names;

    explicit Wired(int index, const std::bitset<256>& more = A_NONE)
        : wiring(wirings().at(size_t(index)).second)
        , widget(wiring.make())
    {
        DataVariant data = wiring.data;
        if (wiring.eleType == E_WIDGET)
            data = static_cast<QObject*>(widget);
        names = bench.wire(INFO(wiring.eleType, wiring.attr | more, {}, data, "value"),
                           {{widget, wiring.widgetType}});
        bench.show();
        widget->setFocus();
    }
};

void addWirings()
{
    QTest::addColumn<int>("index");
    for (size_t index = 0; index < wirings().size(); ++index)
        QTest::newRow(wirings()[index].first) << int(index);
}

} // namespace

class tst_connect : public QObject
{
    Q_OBJECT

private slots:

    // every input
    void namesItsSignal_data() { addWirings(); }

    void namesItsSignal();

    void editReachesTheMapAndTheCallbacks_data() { addWirings(); }

    void editReachesTheMapAndTheCallbacks();

    void editIsAskedAboutWithTheAttribute_data() { addWirings(); }

    void editIsAskedAboutWithTheAttribute();

    void refusedEditLeavesMapAndWidget_data() { addWirings(); }

    void refusedEditLeavesMapAndWidget();

    void formThatIsBeingTakenDownHearsNothing_data() { addWirings(); }

    void formThatIsBeingTakenDownHearsNothing();
    // what differs
    void nothingIsHeardBeforeEditingEnds_data();
    void nothingIsHeardBeforeEditingEnds();
    void boxOpenedAtTheEndOfEditingIsNoSecondEnd();
    void dateSwitchNamesItsSignal();
    void buttonNamesItsSignal();
    void otherClassesOfTheCallersAreLeftAlone();
    void labelsAreLeftAlone();
    void nullWidgetIsLeftAlone();
    void publicConnectsWireByThemselves_data();
    void publicConnectsWireByThemselves();
};

// ------------------------------------------------------------------ every input

void tst_connect::namesItsSignal()
{
    QFETCH(int, index);
    const Wired wired(index);
    QCOMPARE(wired.names, wired.wiring.signalNames);
}

void tst_connect::editReachesTheMapAndTheCallbacks()
{
    QFETCH(int, index);
    Wired wired(index);
    wired.wiring.edit(wired.widget);
    QCOMPARE(wired.bench.value("value"), wired.wiring.stored);
    QCOMPARE(wired.bench.events, Bench::told());
    QCOMPARE(wired.bench.lastKey, "value");
    QCOMPARE(wired.bench.lastWidget.data(), wired.widget);
}

void tst_connect::editIsAskedAboutWithTheAttribute()
{
    QFETCH(int, index);
    QVariant storedWhenAsked; // outlives the form, which asks once more when it goes
    Wired wired(index, A_USE_BEFORE_EVENT);
    wired.bench.mainDecides = [&](const CallbackContext& context) {
        if (context.type == kBeforeDataChanged)
            storedWhenAsked = wired.bench.value("value");
        return 1;
    };
    wired.wiring.edit(wired.widget);
    QCOMPARE(wired.bench.events, Bench::askedAndTold());
    QVERIFY(storedWhenAsked != wired.wiring.stored);
    QCOMPARE(wired.bench.value("value"), wired.wiring.stored);
}

void tst_connect::refusedEditLeavesMapAndWidget()
{
    QFETCH(int, index);
    Wired wired(index, A_USE_BEFORE_EVENT);
    const auto shown = [&wired] {
        QVariant value;
        INFO::getSetData(wired.widget, false, false, value);
        if (isListWidget(wired.widget))
            value = selectedValues(wired.widget, wired.wiring.attr);
        return value;
    };
    const QVariant before = shown();
    QVERIFY(before.isValid());
    const QVariant entry = wired.bench.map.value("value");
    wired.bench.mainDecides = refusing(kBeforeDataChanged);
    wired.wiring.edit(wired.widget);
    QVERIFY(wired.bench.events.contains("main kBeforeDataChanged"));
    QVERIFY(!wired.bench.events.contains("row kAfterDataChanged"));
    QCOMPARE(shown(), before);
    QCOMPARE(INFO::getBaseValue(wired.bench.map.value("value")), INFO::getBaseValue(entry));
}

void tst_connect::formThatIsBeingTakenDownHearsNothing()
{
    QFETCH(int, index);
    Wired wired(index, A_USE_BEFORE_EVENT);
    const QVariant before = wired.bench.value("value");
    disarmForm(wired.bench.window.get());
    wired.wiring.edit(wired.widget);
    QVERIFY(wired.bench.events.isEmpty());
    QCOMPARE(wired.bench.value("value"), before);
}

// ------------------------------------------------------------------ what differs

void tst_connect::nothingIsHeardBeforeEditingEnds_data()
{
    QTest::addColumn<int>("index");
    for (size_t index = 0; index < wirings().size(); ++index) {
        if (wirings()[index].second.signalNames.contains("editingFinished"))
            QTest::newRow(wirings()[index].first) << int(index);
    }
}

void tst_connect::nothingIsHeardBeforeEditingEnds()
{
    QFETCH(int, index);
    Wired wired(index);
    const QVariant before = wired.bench.value("value");
    if (qobject_cast<QDateTimeEdit*>(wired.widget))
        pressUp(wired.widget);
    else
        typeSeven(wired.widget);
    QVERIFY(wired.bench.events.isEmpty());
    QCOMPARE(wired.bench.value("value"), before);
    pressReturn(wired.widget);
    QCOMPARE(wired.bench.events, Bench::told());
}

void tst_connect::boxOpenedAtTheEndOfEditingIsNoSecondEnd()
{
    Bench bench;
    auto* box = new QSpinBox;
    bench.wire(INFO(E_NUMBER, A_USE_BEFORE_EVENT, {}, QVariant(0), "number"), {{box, E_NUMBER}});
    bench.show();
    box->setFocus();
    int boxes = 0;
    bench.rowDecides = [&](const CallbackContext& context) {
        if (context.type != kBeforeDataChanged)
            return 1;
        ++boxes;
        QMessageBox message(QMessageBox::Information, "Fehler:", "7", QMessageBox::Ok,
                            bench.window.get());
        QTimer::singleShot(0, &message, [&message] { message.accept(); });
        message.exec();
        return 0;
    };
    typeSevenAndReturn(box);
    QCOMPARE(boxes, 1);
    QCOMPARE(box->value(), 0);
    typeSevenAndReturn(box);
    QCOMPARE(boxes, 2);
}

void tst_connect::dateSwitchNamesItsSignal()
{
    Bench bench;
    const QStringList names = bench.wire(INFO(E_DATE, A_INVALID_CHECKBOX, {}, {}, "date"),
                                         {{new QCheckBox, E_CHECKBOX}, {new QDateEdit, E_DATE}});
    QCOMPARE(names, QStringList({"stateChanged", "editingFinished"}));
}

void tst_connect::buttonNamesItsSignal()
{
    Bench bench;
    auto* button = new QPushButton;
    QCOMPARE(bench.wire(INFO(E_BUTTON), {{button, E_BUTTON}}), QStringList({"clicked"}));
    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(bench.events, Bench::told("kAfterAction"));
}

void tst_connect::otherClassesOfTheCallersAreLeftAlone()
{
    Bench bench;
    for (QWidget* widget : std::initializer_list<QWidget*> {
             new QSpinBox, new QTextEdit, new QPushButton, new QListWidget, new QDateEdit})
        QCOMPARE(bench.wire(INFO(E_WIDGET), {{widget, E_WIDGET}}), QStringList());
}

void tst_connect::labelsAreLeftAlone()
{
    Bench bench;
    QCOMPARE(bench.wire(INFO(E_LABEL), {{new QLabel("Text"), E_LABEL}}), QStringList());
}

void tst_connect::nullWidgetIsLeftAlone()
{
    Bench bench;
    const RowHandle row = bench.place(INFO(E_LINEEDIT), {});
    QStringList names;
    connectRowWidget(row, nullptr, names);
    QVERIFY(names.isEmpty());
    INFO::lineEditConnect(INFO(E_LINEEDIT), INFO(), {}, {}, nullptr, {}, names);
    QVERIFY(names.isEmpty());
}

namespace {

using PublicConnect = std::function<void(const INFO&, const INFO&, QWidget*, QWidget*,
                                         QMap<QString, QVariant>*, QStringList&)>;

/// Wraps one of the five public functions, all of which get the key apart from the row.
template <typename W>
PublicConnect publicConnect(void (*connect)(const INFO&, const INFO&, QPointer<QWidget>,
                                            QPointer<W>, QMap<QString, QVariant>*, QString,
                                            QList<QString>&))
{
    return [connect](const INFO& row, const INFO& mainRow, QWidget* mainWidget, QWidget* widget,
                     QMap<QString, QVariant>* map, QStringList& names) {
        connect(row, mainRow, mainWidget, qobject_cast<W*>(widget), map, "value", names);
    };
}

const std::vector<std::pair<const char*, PublicConnect>>& publicConnects()
{
    static const std::vector<std::pair<const char*, PublicConnect>> all {
        {"line edit", publicConnect(&INFO::lineEditConnect)},
        {"check box", publicConnect(&INFO::checkBoxConnect)},
        {"radio button", publicConnect(&INFO::radioButtonConnect)},
        {"combo box", publicConnect(&INFO::comboBoxConnect)},
        {"check combo box", publicConnect(&INFO::checkComboConnect)}};
    return all;
}

} // namespace

void tst_connect::publicConnectsWireByThemselves_data()
{
    QTest::addColumn<int>("index");
    for (size_t index = 0; index < publicConnects().size(); ++index)
        QTest::newRow(publicConnects()[index].first) << int(index);
}

void tst_connect::publicConnectsWireByThemselves()
{
    QFETCH(int, index);
    const auto& [name, connect] = publicConnects().at(size_t(index));
    const auto wiring =
        std::find_if(wirings().begin(), wirings().end(),
                     [wanted = name](const auto& row) { return qstrcmp(row.first, wanted) == 0; });
    QVERIFY(wiring != wirings().end());

    Bench bench;
    const std::unique_ptr<QWidget> widget(wiring->second.make());
    INFO row(wiring->second.eleType, A_USE_BEFORE_EVENT, {}, wiring->second.data);
    row.callback = bench.recorder("row", &bench.rowDecides);
    bench.map.insert("value", row.data);
    QStringList names;
    connect(row, bench.form->mainRow, bench.window.get(), widget.get(), &bench.map, names);
    QCOMPARE(names, wiring->second.signalNames);
    widget->show();
    QVERIFY(QTest::qWaitForWindowExposed(widget.get()));
    wiring->second.edit(widget.get());
    QCOMPARE(bench.events, Bench::askedAndTold());
    QCOMPARE(bench.value("value"), wiring->second.stored);
    disarmForm(bench.window.get());
    bench.events.clear();
    wiring->second.edit(widget.get());
    QVERIFY(bench.events.isEmpty());
}

QTEST_MAIN(tst_connect)
#include "tst_connect.moc"
