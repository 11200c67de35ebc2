#include "tests/progress/progress_fixture.h"

using namespace mod_progress_qt;

namespace {

/// Counts style sheets that are set.
class StyleChanges : public QObject
{
public:
    explicit StyleChanges(const QList<QPushButton*>& watched)
    {
        for (QPushButton* button : watched)
            button->installEventFilter(this);
    }

    bool eventFilter(QObject* /*object*/, QEvent* event) override
    {
        count += event->type() == QEvent::StyleChange ? 1 : 0;
        return false;
    }

    int count = 0;
};

/// A display with all labels and the squares.
struct Sample
{
    explicit Sample(qint64 delay = kForEver, int flags = 1038, int buttons = 20)
    {
        CustomProgressBar::options opts;
        opts.flags = flags;
        opts.text = "first";
        opts.buttons = buttons;
        opts.repaintDelayMs = delay;
        widget.reset(bar.Create(opts).first);
    }

    bool texts(const QVariant& a, const QVariant& b = {}, const QVariant& c = {})
    {
        return bar.setValue({a, b, c, QVariant(), QVariant()});
    }

    bool numbers(const QVariant& current, const QVariant& total = {})
    {
        return bar.setValue({QVariant(), QVariant(), QVariant(), current, total});
    }

    QStringList labels() const { return labelsOf(*widget); }

    int filled() const { return filledSquares(*widget); }

    CustomProgressBar bar;
    std::unique_ptr<QWidget> widget;
};

} // namespace

class tst_progress_bar_timing : public QObject
{
    Q_OBJECT

private slots:
    void firstCallShowsItsTexts();
    void firstCallShowsItsNumbers();
    void textsWithoutNumbersLeaveTheSquares();
    void aTextInsideTheDelayIsLost();
    void aTextAfterACallWithoutAnyIsInsideTheDelay();
    void aTextAfterTheDelayIsShown();
    void aNumberInsideTheDelayIsNotShown();
    void aNumberAfterTheDelayIsShown();
    void labelsAndSquaresWaitEachForThemselves();
    void aShorterDelayIsRaisedTo125();
    void anInvalidTextLeavesItsLabel();
    void anEmptyTextClearsItsLabel();
    void theSameTextIsNotSetAgain();
    void theFirstTextIsRememberedFromTheStart();
    void missingLabelsAreTolerated();
    void deletedWidgetsAreTolerated();
    void squaresFillByThreshold_data();
    void squaresFillByThreshold();
    void percentComesFromClampedValues_data();
    void percentComesFromClampedValues();
    void squaresEmptyAgain();
    void firstResultTellsOfAChange_data();
    void firstResultTellsOfAChange();
    void resultIsFalseInsideTheDelay();
    void resultIsTrueForAnOldTextAfterTheDelay();
    void squaresTimeThatRanOutStaysSoWithoutANumber();
    void squaresTimeStartsAgainWithANumber();
    void labelsTimeDoesNotCountWithoutAText();
    void onlySquaresThatDifferArePainted();
    void theSamePercentageIsNotShownAgain();
};

void tst_progress_bar_timing::firstCallShowsItsTexts()
{
    Sample display;
    QVERIFY(display.texts("a", "b", "c"));
    QCOMPARE(display.labels(), (QStringList {"a", "b", "c"}));
}

void tst_progress_bar_timing::firstCallShowsItsNumbers()
{
    Sample display;
    QVERIFY(display.numbers(1, 2));
    QCOMPARE(display.filled(), 10);
}

void tst_progress_bar_timing::textsWithoutNumbersLeaveTheSquares()
{
    Sample display(0);
    QVERIFY(display.numbers(50));
    QTRY_COMPARE_WITH_TIMEOUT((display.texts("a"), display.labels().first()), "a", kPatience);
    QCOMPARE(display.filled(), 10);
}

void tst_progress_bar_timing::aTextInsideTheDelayIsLost()
{
    Sample display;
    display.texts("a");
    display.texts("b");
    QCOMPARE(display.labels().first(), "a");
}

void tst_progress_bar_timing::aTextAfterACallWithoutAnyIsInsideTheDelay()
{
    Sample display;
    display.numbers(10);
    display.texts("a");
    QCOMPARE(display.labels().first(), "first");
}

void tst_progress_bar_timing::aTextAfterTheDelayIsShown()
{
    Sample display(0);
    display.texts("a");
    QVERIFY(soon([&] { return display.texts("b", "c", "d"); }));
    QCOMPARE(display.labels(), (QStringList {"b", "c", "d"}));
}

void tst_progress_bar_timing::aNumberInsideTheDelayIsNotShown()
{
    Sample display;
    display.numbers(50);
    display.numbers(100);
    QCOMPARE(display.filled(), 10);
}

void tst_progress_bar_timing::aNumberAfterTheDelayIsShown()
{
    Sample display(0);
    display.numbers(50);
    QVERIFY(soon([&] { return display.numbers(100); }));
    QCOMPARE(display.filled(), 20);
}

void tst_progress_bar_timing::labelsAndSquaresWaitEachForThemselves()
{
    Sample display(0);
    display.numbers(50);
    // Restarts the time of the squares alone.
    QVERIFY(soon([&] { return display.numbers(60); }));
    QVERIFY(display.bar.setValue({"a", {}, {}, 100, {}}));
    QCOMPARE(display.labels().first(), "a");
}

void tst_progress_bar_timing::aShorterDelayIsRaisedTo125()
{
    for (const qint64 delay : {-1, 0, 100, 124}) {
        Sample display(delay);
        QElapsedTimer since;
        since.start();
        display.texts("a");
        QVERIFY(soon([&] { return display.texts("b"); }));
        QVERIFY(since.elapsed() >= 125);
    }
}

void tst_progress_bar_timing::anInvalidTextLeavesItsLabel()
{
    Sample display;
    display.texts(QVariant(), "b", QVariant());
    QCOMPARE(display.labels(), (QStringList {"first", "b", ""}));
}

void tst_progress_bar_timing::anEmptyTextClearsItsLabel()
{
    Sample display;
    QVERIFY(display.texts(""));
    QCOMPARE(display.labels().first(), "");
}

void tst_progress_bar_timing::theSameTextIsNotSetAgain()
{
    Sample display(0);
    display.texts("a");
    auto* label = display.widget->findChildren<QLabel*>().first();
    label->setText("by somebody else");
    QVERIFY(soon([&] { return display.texts("a"); }));
    QCOMPARE(label->text(), "by somebody else");
}

void tst_progress_bar_timing::theFirstTextIsRememberedFromTheStart()
{
    Sample display;
    QVERIFY(!display.texts("first"));
}

void tst_progress_bar_timing::missingLabelsAreTolerated()
{
    Sample display(kForEver, 4);
    QVERIFY(display.texts("a", "b", "c"));
    QCOMPARE(display.labels(), QStringList("b"));
}

void tst_progress_bar_timing::deletedWidgetsAreTolerated()
{
    Sample display;
    delete display.widget->findChildren<QLabel*>().first();
    delete squaresOf(*display.widget).first();
    QVERIFY(display.bar.setValue({"a", "b", "c", 100, {}}));
    QCOMPARE(display.labels(), (QStringList {"b", "c"}));
    QCOMPARE(display.filled(), 19);

    display.widget.reset();
    CustomProgressBar never;
    QVERIFY(!never.setValue({"a", "b", "c", 100, {}}));
}

void tst_progress_bar_timing::squaresFillByThreshold_data()
{
    QTest::addColumn<int>("buttons");
    QTest::addColumn<int>("percent");
    QTest::addColumn<int>("filled");
    QTest::newRow("20, 0") << 20 << 0 << 0;
    QTest::newRow("20, just below the first") << 20 << 4 << 0;
    QTest::newRow("20, the first") << 20 << 5 << 1;
    QTest::newRow("20, 99") << 20 << 99 << 19;
    QTest::newRow("20, all") << 20 << 100 << 20;
    QTest::newRow("20, more than all") << 20 << 250 << 20;
    // 100 * 1 / 3 is 33, 100 * 2 / 3 is 66
    QTest::newRow("3, 32") << 3 << 32 << 0;
    QTest::newRow("3, 33") << 3 << 33 << 1;
    QTest::newRow("3, 66") << 3 << 66 << 2;
    QTest::newRow("1, 99") << 1 << 99 << 0;
    // The thresholds of the first squares are 0.
    QTest::newRow("200, 0") << 200 << 0 << 1;
    QTest::newRow("200, 1") << 200 << 1 << 3;
}

void tst_progress_bar_timing::squaresFillByThreshold()
{
    QFETCH(int, buttons);
    QFETCH(int, percent);
    Sample display(kForEver, 1024, buttons);
    display.numbers(percent);
    QTEST(display.filled(), "filled");
    // From the left.
    const auto squares = squaresOf(*display.widget);
    for (qsizetype index = 1; index < squares.size(); ++index) {
        if (squares.at(index)->styleSheet() == CustomProgressBar::defaultSheet1)
            QCOMPARE(squares.at(index - 1)->styleSheet(), CustomProgressBar::defaultSheet1);
    }
}

void tst_progress_bar_timing::percentComesFromClampedValues_data()
{
    QTest::addColumn<QVariant>("current");
    QTest::addColumn<QVariant>("total");
    QTest::addColumn<int>("filled");
    QTest::newRow("half") << QVariant(1) << QVariant(2) << 10;
    QTest::newRow("below zero") << QVariant(-50) << QVariant(100) << 0;
    QTest::newRow("of zero") << QVariant(50) << QVariant(0) << 0;
    QTest::newRow("of less than zero") << QVariant(50) << QVariant(-100) << 0;
    QTest::newRow("without a total") << QVariant(50) << QVariant() << 10;
    QTest::newRow("below zero without a total") << QVariant(-50) << QVariant() << 0;
    QTest::newRow("as text") << QVariant("3") << QVariant("6") << 10;
    QTest::newRow("beyond 32 bits") << QVariant(3000000000LL) << QVariant(4000000000LL) << 15;
    QTest::newRow("total alone") << QVariant() << QVariant(1) << 0;
}

void tst_progress_bar_timing::percentComesFromClampedValues()
{
    QFETCH(QVariant, current);
    QFETCH(QVariant, total);
    Sample display;
    display.numbers(current, total);
    QTEST(display.filled(), "filled");
}

void tst_progress_bar_timing::squaresEmptyAgain()
{
    Sample display(0);
    display.numbers(100);
    QCOMPARE(display.filled(), 20);
    QTRY_COMPARE_WITH_TIMEOUT((display.numbers(10), display.filled()), 2, kPatience);
}

void tst_progress_bar_timing::firstResultTellsOfAChange_data()
{
    QTest::addColumn<QVariant>("text");
    QTest::addColumn<QVariant>("current");
    QTest::addColumn<bool>("result");
    QTest::newRow("nothing") << QVariant() << QVariant() << false;
    QTest::newRow("the text it has") << QVariant("first") << QVariant() << false;
    QTest::newRow("a new text") << QVariant("a") << QVariant() << true;
    QTest::newRow("a percentage that fills no square") << QVariant() << QVariant(4) << false;
    QTest::newRow("a percentage") << QVariant() << QVariant(5) << true;
}

void tst_progress_bar_timing::firstResultTellsOfAChange()
{
    QFETCH(QVariant, text);
    QFETCH(QVariant, current);
    Sample display;
    QTEST(display.bar.setValue({text, {}, {}, current, {}}), "result");
}

void tst_progress_bar_timing::resultIsFalseInsideTheDelay()
{
    Sample display;
    display.texts("a");
    QVERIFY(!display.bar.setValue({"b", "c", "d", 10, 20}));
}

void tst_progress_bar_timing::resultIsTrueForAnOldTextAfterTheDelay()
{
    Sample display(0, 14); // no squares
    display.texts("a");
    QVERIFY(soon([&] { return display.texts("a"); }));
}

void tst_progress_bar_timing::squaresTimeThatRanOutStaysSoWithoutANumber()
{
    Sample display(1000);
    display.texts("a");
    QVERIFY(soon([&] { return display.texts("b"); }));
    // The labels' time has started again, that of the squares has not.
    QVERIFY(display.texts("c"));
    QVERIFY(display.texts("d"));
}

void tst_progress_bar_timing::squaresTimeStartsAgainWithANumber()
{
    Sample display(1000);
    display.numbers(10);
    QElapsedTimer since;
    since.start();
    QVERIFY(soon([&] { return display.numbers(20); }));
    QVERIFY(since.restart() >= 990);
    const bool again = display.numbers(30);
    if (since.elapsed() < 1000)
        QVERIFY(!again);
}

void tst_progress_bar_timing::labelsTimeDoesNotCountWithoutAText()
{
    Sample display(1000, 14); // no squares, whose time starts with each number nevertheless
    display.numbers(10);
    QElapsedTimer since;
    since.start();
    QVERIFY(soon([&] { return display.numbers(20); }));
    since.restart();
    const bool again = display.numbers(30);
    if (since.elapsed() < 1000)
        QVERIFY(!again);
    QVERIFY(display.texts("a"));
}

void tst_progress_bar_timing::onlySquaresThatDifferArePainted()
{
    Sample display(0);
    display.widget->show();
    display.numbers(50);
    const StyleChanges changes(squaresOf(*display.widget));
    QVERIFY(soon([&] { return display.numbers(60); }));
    QCOMPARE(display.filled(), 12);
    QCOMPARE(changes.count, 2);
}

void tst_progress_bar_timing::theSamePercentageIsNotShownAgain()
{
    Sample display(0);
    display.numbers(50);
    const auto squares = squaresOf(*display.widget);
    squares.first()->setStyleSheet("color: red");
    QVERIFY(soon([&] { return display.numbers(50); }));
    QCOMPARE(squares.first()->styleSheet(), "color: red");
    QVERIFY(soon([&] { return display.numbers(51); }));
    QCOMPARE(squares.first()->styleSheet(), CustomProgressBar::defaultSheet1);
}

QTEST_MAIN(tst_progress_bar_timing)
#include "tst_progress_bar_timing.moc"
