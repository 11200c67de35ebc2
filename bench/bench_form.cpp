// What the form engine costs, as multiples of the same widgets in plain Qt.

#include "bench/bench_report.h"
#include "bench/main_form.h"
#include "bench/row_forms.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QScrollArea>
#include <QSignalBlocker>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <malloc.h>
#include <memory>

using namespace bench;
using namespace mod_form_qt;

namespace {

int iRounds = 5;

using Map = QMap<QString, QVariant>;

/// Bytes of the heap that are in use.
double heapInUse()
{
    const struct mallinfo2 heap = mallinfo2();
    return static_cast<double>(heap.uordblks + heap.hblkhd);
}

void expect(bool holds, const char* what)
{
    if (holds)
        return;
    std::fprintf(stderr, "bench_form: the forms differ: %s\n", what);
    std::exit(2);
}

/// Figures of the engine and of plain Qt, measured in turn.
struct Pair
{
    QList<double> engine;
    QList<double> plain;

    double ratio() const
    {
        QList<double> ratios;
        for (qsizetype round = 0; round < engine.size(); ++round)
            ratios.append(engine.at(round) / plain.at(round));
        return median(ratios);
    }
};

// ---------------------------------------------------------------- the main form

struct MainForm
{
    SampleValues sample;
    MainFormValues values = boundValues(sample);
    Map map;
    std::unique_ptr<QMainWindow> window = std::make_unique<QMainWindow>();

    void build(bool byEngine)
    {
        if (byEngine)
            buildByEngine(*window, values, map);
        else
            buildByHand(*window, sample);
    }

    ~MainForm() { window.reset(); } // before the map
};

void show(QWidget& window)
{
    window.resize(1000, 800);
    window.show();
    QCoreApplication::processEvents();
    window.repaint();
}

void compareMainForms()
{
    MainForm engine;
    MainForm plain;
    engine.build(true);
    plain.build(false);
    for (MainForm* form : {&engine, &plain})
        show(*form->window);
    const auto count = [](const MainForm& form) {
        return form.window->findChildren<QWidget*>().size();
    };
    // Their widths differ, since the engine gives the groups a minimum width.
    const auto height = [](const MainForm& form) {
        return form.window->findChild<QScrollArea*>()->widget()->height();
    };
    expect(count(engine) == count(plain), "number of widgets");
    expect(height(engine) == height(plain), "height");
}

struct Times
{
    double build = 0; ///< milliseconds
    double show = 0; ///< milliseconds
};

void addTimes(bool byEngine, Times& sum)
{
    MainForm form;
    sum.build += cpuMilliseconds([&] { form.build(byEngine); });
    sum.show += cpuMilliseconds([&] { show(*form.window); });
}

void benchMainForm(Limits& limits)
{
    compareMainForms();
    Pair build;
    Pair painted;
    const int forms = 40;
    for (int round = 0; round < iRounds; ++round) {
        Times engine;
        Times plain;
        for (int form = 0; form < forms; ++form) {
            addTimes(true, engine);
            addTimes(false, plain);
        }
        build.engine.append(engine.build / forms);
        build.plain.append(plain.build / forms);
        painted.engine.append(engine.show / forms);
        painted.plain.append(plain.show / forms);
    }
    report("main form in plain Qt: build", median(build.plain), "ms");
    report("main form in plain Qt: show and paint", median(painted.plain), "ms");
    limits.report("main form: build", build.ratio(), "plain Qt", 3.0, 1.6);
    limits.report("main form: show and paint", painted.ratio(), "plain Qt", 1.1, 1.0);
}

// ---------------------------------------------------------------- many rows

struct RowForm
{
    Map map;
    QList<QLineEdit*> edits;
    std::unique_ptr<QWidget> window = std::make_unique<QWidget>();

    ~RowForm()
    {
        // Each widget that goes would else look through all the events of the others.
        QCoreApplication::removePostedEvents(nullptr);
        window.reset(); // before the map
    }
};

struct Cost
{
    double time = 0; ///< milliseconds
    double memory = 0; ///< bytes
};

Cost costOfRows(bool byEngine, RowLayout layout, int rows)
{
    RowForm form;
    Cost cost;
    const double before = heapInUse();
    cost.time = cpuMilliseconds([&] {
        if (byEngine)
            buildRowsByEngine(*form.window, layout, rows, form.map);
        else
            buildRowsByHand(*form.window, layout, rows);
    });
    cost.memory = heapInUse() - before;
    return cost;
}

void compareRows(RowLayout layout)
{
    RowForm engine;
    RowForm plain;
    buildRowsByEngine(*engine.window, layout, 1, engine.map);
    buildRowsByHand(*plain.window, layout, 1);
    const auto label = [](const RowForm& form) { return form.window->findChild<QLabel*>(); };
    const auto edit = [](const RowForm& form) { return form.window->findChild<QLineEdit*>(); };
    expect(label(engine)->dynamicPropertyNames() == label(plain)->dynamicPropertyNames()
               && edit(engine)->dynamicPropertyNames() == edit(plain)->dynamicPropertyNames(),
           "names of properties");
    const char* const options = WIDGET_INFO::optionsPropertyKey;
    expect(label(engine)->property(options) == label(plain)->property(options)
               && edit(engine)->property(options) == edit(plain)->property(options),
           "options");
    expect(engine.window->sizeHint() == plain.window->sizeHint(), "size");
}

void benchRowsIn(Limits& limits, RowLayout layout, const char* name)
{
    compareRows(layout);
    constexpr int iSmall = 1000;
    constexpr int iLarge = 10000;
    Pair small;
    Pair large;
    Pair memory;
    Pair growth; // of the engine and of plain Qt
    for (int round = 0; round < iRounds; ++round) {
        std::array<double, 2> smallTimes {};
        const int forms = 5;
        for (int form = 0; form < forms; ++form) {
            smallTimes[0] += costOfRows(true, layout, iSmall).time / forms;
            smallTimes[1] += costOfRows(false, layout, iSmall).time / forms;
        }
        const Cost engine = costOfRows(true, layout, iLarge);
        const Cost plain = costOfRows(false, layout, iLarge);
        small.engine.append(smallTimes[0]);
        small.plain.append(smallTimes[1]);
        large.engine.append(engine.time);
        large.plain.append(plain.time);
        memory.engine.append(engine.memory / iLarge);
        memory.plain.append(plain.memory / iLarge);
        growth.engine.append(engine.time / smallTimes[0]);
        growth.plain.append(plain.time / smallTimes[1]);
    }
    std::printf("rows in a %s\n", name);
    report("  plain Qt: 1,000 rows", median(small.plain), "ms");
    report("  plain Qt: 10,000 rows", median(large.plain), "ms");
    report("  plain Qt: 10,000 rows against 1,000", median(growth.plain), "times");
    report("  plain Qt: memory of a row", median(memory.plain), "bytes");
    limits.report("  1,000 rows", small.ratio(), "plain Qt", 2.5, 1.5);
    limits.report("  10,000 rows", large.ratio(), "plain Qt", 2.5, 1.5);
    limits.report("  10,000 rows against 1,000", median(growth.engine), "times", 11.0, 10.0);
    limits.report("  memory of a row", memory.ratio(), "plain Qt", 1.5, 1.5);
}

// ---------------------------------------------------------------- keystrokes

/// Milliseconds of one keystroke; every second one takes back what the last has typed.
double timeOfKeystroke(QLineEdit* edit)
{
    const int pairs = 500;
    const auto type = [edit](int key, const QString& text) {
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text);
        QKeyEvent release(QEvent::KeyRelease, key, Qt::NoModifier, text);
        QCoreApplication::sendEvent(edit, &press);
        QCoreApplication::sendEvent(edit, &release);
    };
    const double time = cpuMilliseconds([&] {
        for (int pair = 0; pair < pairs; ++pair) {
            type(Qt::Key_X, QStringLiteral("x"));
            type(Qt::Key_Backspace, QString());
        }
    });
    QCoreApplication::processEvents();
    return time / (2 * pairs);
}

void benchKeystrokes(Limits& limits)
{
    RowForm small;
    RowForm large;
    buildRowsByEngine(*small.window, RowLayout::Box, 10, small.map, INFO::MF_SCROLLAREA);
    buildRowsByEngine(*large.window, RowLayout::Box, 10000, large.map, INFO::MF_SCROLLAREA);
    auto* smallEdit = INFO::lineEditByKey(&small.map, rowKey(5));
    auto* largeEdit = INFO::lineEditByKey(&large.map, rowKey(5));
    for (RowForm* form : {&large, &small})
        show(*form->window);
    QCoreApplication::processEvents();
    timeOfKeystroke(smallEdit);

    QList<double> times;
    QList<double> ratios;
    for (int round = 0; round < iRounds; ++round) {
        times.append(timeOfKeystroke(smallEdit));
        ratios.append(timeOfKeystroke(largeEdit) / times.constLast());
    }
    QKeyEvent key(QEvent::KeyPress, Qt::Key_X, Qt::NoModifier, QStringLiteral("x"));
    QCoreApplication::sendEvent(largeEdit, &key);
    expect(large.map.value(rowKey(5)) == largeEdit->text(), "a key does not reach the map");
    report("a keystroke among 10 rows", 1000 * median(times), "us");
    limits.report("a keystroke among 10,000 rows", median(ratios), "times", 1.5, 1.1);
}

// ---------------------------------------------------------------- values

/// Microseconds for each value that a form of so many rows has already, most of it in the caches.
double timeOfSameValue(int rows)
{
    RowForm form;
    buildRowsByEngine(*form.window, RowLayout::Box, rows, form.map);
    Map values;
    for (int row = 0; row < rows; ++row)
        values.insert(rowKey(row), rowText(row));
    const int times = 100;
    return 1000 / (1.0 * times * rows) * cpuMilliseconds([&] {
               for (int time = 0; time < times; ++time)
                   INFO::setData(&form.map, values, false);
           });
}

void benchValues(Limits& limits)
{
    const int rows = 10000;
    RowForm engine;
    RowForm plain;
    buildRowsByEngine(*engine.window, RowLayout::Box, rows, engine.map);
    plain.edits = buildRowsByHand(*plain.window, RowLayout::Box, rows);

    Pair set;
    QList<double> unchanged;
    for (int round = 0; round < iRounds; ++round) {
        Map values;
        QStringList texts;
        for (int row = 0; row < rows; ++row) {
            texts.append(QStringLiteral("Wert %1 der Runde %2").arg(row).arg(round));
            values.insert(rowKey(row), texts.constLast());
        }
        set.engine.append(cpuMilliseconds([&] { INFO::setData(&engine.map, values, false); }));
        set.plain.append(cpuMilliseconds([&] {
            for (int row = 0; row < rows; ++row) {
                const QSignalBlocker quiet(plain.edits.at(row));
                plain.edits.at(row)->setText(texts.at(row));
            }
        }));
        unchanged.append(cpuMilliseconds([&] { INFO::setData(&engine.map, values, false); })
                         / rows);
        expect(INFO::lineEditByKey(&engine.map, rowKey(7))->text() == plain.edits.at(7)->text(),
               "a value that was set");
    }
    report("plain Qt: set a value", 1000 * median(set.plain) / rows, "us");
    limits.report("set 10,000 values", set.ratio(), "plain Qt", 4.0, 2.0);
    report("set a value that is there already, in 100 rows", timeOfSameValue(100), "us");
    limits.report("set a value that is there already, in 10,000 rows", 1000 * median(unchanged),
                  "us", 1.0, 1.0);
}

// ---------------------------------------------------------------- what stays behind

void benchLeftovers(Limits& limits)
{
    double early = 0;
    for (int form = 1; form <= 1000; ++form) {
        {
            MainForm built;
            built.build(true);
        }
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
        if (form == 100)
            early = heapInUse();
    }
    // A leak of the smallest block by each form would be 28 kB.
    limits.report("heap after 1,000 main forms beyond that after 100", (heapInUse() - early) / 1000,
                  "kB", 8.0, 0.0);
}

struct Part
{
    const char* name;
    void (*run)(Limits& limits);
};

// clang-format off
const std::array parts {
    Part {"main", benchMainForm},
    Part {"box", [](Limits& limits) { benchRowsIn(limits, RowLayout::Box, "vertical box"); }},
    Part {"grid", [](Limits& limits) { benchRowsIn(limits, RowLayout::Grid, "grid"); }},
    Part {"form", [](Limits& limits) { benchRowsIn(limits, RowLayout::Form, "form layout"); }},
    Part {"keys", benchKeystrokes},
    Part {"values", benchValues},
    Part {"leftovers", benchLeftovers},
};
// clang-format on

} // namespace

/// Arguments, for a profiler: the name of the part to be run alone, the number of rounds.
int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // What the system takes to hand out the memory of the last form once more is not measured.
    mallopt(M_TRIM_THRESHOLD, 1 << 30);
    mallopt(M_MMAP_THRESHOLD, 1 << 30);
    const QApplication application(argc, argv);
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    if (argc > 2)
        iRounds = qMax(1, QByteArray(argv[2]).toInt());
    Limits limits;
    bool known = false;
    for (const Part& part : parts) {
        if (argc > 1 && qstrcmp(part.name, argv[1]) != 0)
            continue;
        known = true;
        part.run(limits);
    }
    if (!known) {
        std::fprintf(stderr, "bench_form: there is no part %s\n", argv[1]);
        return 2;
    }
    return limits.exitStatus();
}
