#include "tests/progress/progress_fixture.h"

using namespace mod_progress_qt;

namespace {

/// What stands in the display from top to bottom: L a label, - a line, # the squares, A the button.
QString partsOf(const QWidget& display)
{
    QString parts;
    const QLayout* layout = display.layout();
    for (int index = 0; index < layout->count(); ++index) {
        QLayoutItem* item = layout->itemAt(index);
        QWidget* widget = item->widget();
        if (item->layout())
            parts += '#';
        else if (qobject_cast<QLabel*>(widget))
            parts += 'L';
        else if (qobject_cast<QPushButton*>(widget))
            parts += 'A';
        else
            parts += '-';
    }
    return parts;
}

struct Sample
{
    explicit Sample(const CustomProgressBar::options& opts)
    {
        const auto made = bar.Create(opts);
        widget.reset(made.first);
        abortButton = made.second;
    }

    CustomProgressBar bar;
    std::unique_ptr<QWidget> widget;
    QPushButton* abortButton = nullptr;
};

CustomProgressBar::options withFlags(int flags)
{
    CustomProgressBar::options opts;
    opts.flags = flags;
    opts.text = "first";
    opts.abortText = "Stop";
    return opts;
}

} // namespace

class tst_progress_bar : public QObject
{
    Q_OBJECT

private slots:
    void optionsHaveTheirDefaults();
    void textsAndSheetsHaveTheirValues();
    void flagsHaveTheirBits();
    void stacksItsParts_data();
    void stacksItsParts();
    void linesAreSunkenAndHorizontal();
    void firstLabelShowsTheTextAndOthersNothing();
    void labelsStandLeftAndTopOrCentred_data();
    void labelsStandLeftAndTopOrCentred();
    void labelsAreFixedInSize();
    void labelsWrapWordsAndExpand();
    void squaresHaveTheirNumberAndSize_data();
    void squaresHaveTheirNumberAndSize();
    void squaresAreEmptyAndOutOfReach();
    void rowOfSquaresHasNoMargins();
    void abortButtonIsCentredAndDefault();
    void withoutAbortThereIsNoButton();
    void percentIsComputedIn64Bits_data();
    void percentIsComputedIn64Bits();
    void onlyFiveInvalidPositionsAskForAStep_data();
    void onlyFiveInvalidPositionsAskForAStep();
};

void tst_progress_bar::optionsHaveTheirDefaults()
{
    const CustomProgressBar::options opts;
    QCOMPARE(opts.title, QString());
    QCOMPARE(opts.text, QString());
    QCOMPARE(opts.abortText, QString());
    QCOMPARE(opts.flags, 1048);
    QCOMPARE(opts.buttons, 20);
    QCOMPARE(opts.buttonWidth, 16);
    QCOMPARE(opts.buttonHeight, 8);
    QCOMPARE(opts.repaintDelayMs, 100);
    QCOMPARE(int(CustomProgressBar::nDefaultFlags), 1048);
    QCOMPARE(int(CustomProgressBar::nDefaultButtons), 20);
    QCOMPARE(int(CustomProgressBar::nDefaultButtonWidth), 16);
    QCOMPARE(int(CustomProgressBar::nDefaultButtonHeight), 8);
    QCOMPARE(qint64(CustomProgressBar::repaintDelayMs), 100);
}

void tst_progress_bar::textsAndSheetsHaveTheirValues()
{
    QCOMPARE(CustomProgressBar::defaultSheet1,
             "background-color: rgba(46, 204, 113, 0.4); border: 1px solid; border-color: "
             "rgb(0, 0, 255);");
    QCOMPARE(CustomProgressBar::defaultSheet2,
             "background-color: rgb(255, 255, 255); border: 1px solid;");
    QCOMPARE(CustomProgressBar::defaultAbortText, "Cancel");
}

void tst_progress_bar::flagsHaveTheirBits()
{
    using Bar = CustomProgressBar;
    const QList<int> flags {Bar::kFirstCentred, Bar::kFirstLabel, Bar::kSecondLabel,
                            Bar::kThirdLabel,   Bar::kCanAbort,   Bar::kSecondCentred,
                            Bar::kThirdCentred, Bar::kWrapLabels, Bar::kNoStatusBar,
                            Bar::kNoDialog,     Bar::kSquares};
    for (qsizetype bit = 0; bit < flags.size(); ++bit)
        QCOMPARE(flags.at(bit), 1 << bit);
}

void tst_progress_bar::stacksItsParts_data()
{
    QTest::addColumn<int>("flags");
    QTest::addColumn<QString>("parts");
    QTest::newRow("nothing") << 0 << "-";
    QTest::newRow("default") << 1048 << "L-#-A-";
    QTest::newRow("first label") << 2 << "L-";
    QTest::newRow("first and second") << 6 << "L-L-";
    QTest::newRow("first and third") << 10 << "L-L-";
    QTest::newRow("second and third") << 12 << "LL-";
    QTest::newRow("three labels") << 14 << "L-LL-";
    QTest::newRow("squares") << 1024 << "-#-";
    QTest::newRow("abort") << 16 << "-A-";
    QTest::newRow("everything") << 1054 << "L-LL-#-A-";
    QTest::newRow("alignments make no labels") << 97 << "-";
}

void tst_progress_bar::stacksItsParts()
{
    QFETCH(int, flags);
    const Sample display(withFlags(flags));
    QTEST(partsOf(*display.widget), "parts");
    QVERIFY(qobject_cast<QVBoxLayout*>(display.widget->layout()));
}

void tst_progress_bar::linesAreSunkenAndHorizontal()
{
    const Sample display(withFlags(1054));
    int lines = 0;
    for (const QFrame* frame : display.widget->findChildren<QFrame*>()) {
        if (qobject_cast<const QLabel*>(frame))
            continue;
        ++lines;
        QCOMPARE(frame->frameShape(), QFrame::HLine);
        QCOMPARE(frame->frameShadow(), QFrame::Sunken);
    }
    QCOMPARE(lines, 4);
}

void tst_progress_bar::firstLabelShowsTheTextAndOthersNothing()
{
    const Sample display(withFlags(14));
    QCOMPARE(labelsOf(*display.widget), (QStringList {"first", "", ""}));
}

void tst_progress_bar::labelsStandLeftAndTopOrCentred_data()
{
    QTest::addColumn<int>("flags");
    QTest::addColumn<QList<int>>("alignments");
    const int left = 33;
    const int centred = 132;
    QTest::newRow("none") << 14 << QList<int> {left, left, left};
    QTest::newRow("first") << 15 << QList<int> {centred, left, left};
    QTest::newRow("second") << 46 << QList<int> {left, centred, left};
    QTest::newRow("third") << 78 << QList<int> {left, left, centred};
    QTest::newRow("all, wrapped") << 239 << QList<int> {centred, centred, centred};
}

void tst_progress_bar::labelsStandLeftAndTopOrCentred()
{
    QFETCH(int, flags);
    QFETCH(QList<int>, alignments);
    Sample display(withFlags(flags));
    display.bar.setValue({"a", "b", "c", QVariant(), QVariant()});
    display.widget->resize(400, 300);
    display.widget->show();
    const auto labels = display.widget->findChildren<QLabel*>();
    QCOMPARE(labels.size(), alignments.size());
    for (qsizetype index = 0; index < labels.size(); ++index) {
        const QLabel* label = labels.at(index);
        QCOMPARE(int(label->alignment()), alignments.at(index));
        if (flags & CustomProgressBar::kWrapLabels)
            continue;
        // A label of the size of its text has to stand where its text shall.
        const int middle = display.widget->width() / 2;
        if (alignments.at(index) == 132)
            QVERIFY(qAbs(label->geometry().center().x() - middle) <= 1);
        else
            QVERIFY(label->geometry().right() < middle);
    }
}

void tst_progress_bar::labelsAreFixedInSize()
{
    const Sample display(withFlags(14));
    for (const QLabel* label : display.widget->findChildren<QLabel*>()) {
        QCOMPARE(label->sizePolicy().horizontalPolicy(), QSizePolicy::Fixed);
        QCOMPARE(label->sizePolicy().verticalPolicy(), QSizePolicy::Fixed);
        QVERIFY(!label->wordWrap());
    }
}

void tst_progress_bar::labelsWrapWordsAndExpand()
{
    const Sample display(withFlags(142));
    display.widget->resize(300, 300);
    display.widget->show();
    for (const QLabel* label : display.widget->findChildren<QLabel*>()) {
        QCOMPARE(label->sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
        QVERIFY(label->wordWrap());
        QVERIFY(label->width() > 250);
    }
}

void tst_progress_bar::squaresHaveTheirNumberAndSize_data()
{
    QTest::addColumn<int>("buttons");
    QTest::addColumn<QSize>("wanted");
    QTest::addColumn<int>("count");
    QTest::addColumn<QSize>("size");
    QTest::newRow("default") << 20 << QSize(16, 8) << 20 << QSize(16, 8);
    QTest::newRow("others") << 3 << QSize(40, 30) << 3 << QSize(40, 30);
    QTest::newRow("none is one") << 0 << QSize(16, 8) << 1 << QSize(16, 8);
    QTest::newRow("fewer than none is one") << -5 << QSize(16, 8) << 1 << QSize(16, 8);
    QTest::newRow("too small") << 2 << QSize(1, 0) << 2 << QSize(2, 2);
}

void tst_progress_bar::squaresHaveTheirNumberAndSize()
{
    QFETCH(int, buttons);
    QFETCH(QSize, wanted);
    QFETCH(QSize, size);
    auto opts = withFlags(1024);
    opts.buttons = buttons;
    opts.buttonWidth = wanted.width();
    opts.buttonHeight = wanted.height();
    const Sample display(opts);
    const auto squares = squaresOf(*display.widget);
    QTEST(int(squares.size()), "count");
    for (const QPushButton* square : squares) {
        QCOMPARE(square->minimumSize(), size);
        QCOMPARE(square->maximumSize(), size);
    }
}

void tst_progress_bar::squaresAreEmptyAndOutOfReach()
{
    const Sample display(withFlags(1024));
    for (const QPushButton* square : squaresOf(*display.widget)) {
        QCOMPARE(square->text(), "");
        QCOMPARE(square->styleSheet(), CustomProgressBar::defaultSheet2);
        QCOMPARE(square->focusPolicy(), Qt::NoFocus);
        QVERIFY(square->testAttribute(Qt::WA_TransparentForMouseEvents));
    }
}

void tst_progress_bar::rowOfSquaresHasNoMargins()
{
    const Sample display(withFlags(1024));
    const auto* row = display.widget->findChild<QHBoxLayout*>();
    QVERIFY(row);
    QCOMPARE(row->contentsMargins(), QMargins());
}

void tst_progress_bar::abortButtonIsCentredAndDefault()
{
    const Sample display(withFlags(16));
    QVERIFY(display.abortButton);
    QCOMPARE(display.abortButton->text(), "Stop");
    QVERIFY(display.abortButton->autoDefault());
    QVERIFY(display.abortButton->isDefault());
    display.widget->resize(400, 100);
    display.widget->show();
    QVERIFY(qAbs(display.abortButton->geometry().center().x() - 200) <= 1);
}

void tst_progress_bar::withoutAbortThereIsNoButton()
{
    const Sample display(withFlags(1024 | 14));
    QCOMPARE(display.abortButton, nullptr);
    QCOMPARE(abortButtonOf(*display.widget), nullptr);
}

void tst_progress_bar::percentIsComputedIn64Bits_data()
{
    QTest::addColumn<qint64>("current");
    QTest::addColumn<qint64>("total");
    QTest::addColumn<qint64>("percent");
    const qint64 largest = std::numeric_limits<qint64>::max();
    QTest::newRow("half") << qint64(1) << qint64(2) << qint64(50);
    QTest::newRow("rounded down") << qint64(2) << qint64(3) << qint64(66);
    QTest::newRow("beyond 32 bits") << qint64(3000000000) << qint64(6000000000) << qint64(50);
    QTest::newRow("more than all") << qint64(5) << qint64(2) << qint64(250);
    QTest::newRow("nothing of nothing") << qint64(0) << qint64(0) << qint64(0);
    QTest::newRow("something of nothing") << qint64(7) << qint64(0) << qint64(0);
    QTest::newRow("total below zero") << qint64(7) << qint64(-3) << qint64(0);
    QTest::newRow("the product does not fit") << largest << largest << qint64(100);
    QTest::newRow("neither does the result") << largest << qint64(1) << largest;
}

void tst_progress_bar::percentIsComputedIn64Bits()
{
    QFETCH(qint64, current);
    QFETCH(qint64, total);
    QTEST(CustomProgressBar::percentOf(current, total), "percent");
}

void tst_progress_bar::onlyFiveInvalidPositionsAskForAStep_data()
{
    QTest::addColumn<QVariantList>("values");
    QTest::addColumn<bool>("step");
    QTest::newRow("all invalid") << QVariantList {{}, {}, {}, {}, {}} << true;
    QTest::newRow("first") << QVariantList {"", {}, {}, {}, {}} << false;
    QTest::newRow("second") << QVariantList {{}, "", {}, {}, {}} << false;
    QTest::newRow("third") << QVariantList {{}, {}, "", {}, {}} << false;
    QTest::newRow("current") << QVariantList {{}, {}, {}, 0, {}} << false;
    QTest::newRow("total") << QVariantList {{}, {}, {}, {}, 0} << false;
}

void tst_progress_bar::onlyFiveInvalidPositionsAskForAStep()
{
    QFETCH(QVariantList, values);
    QTEST(asksForStep({values.at(0), values.at(1), values.at(2), values.at(3), values.at(4)}),
          "step");
}

QTEST_MAIN(tst_progress_bar)
#include "tst_progress_bar.moc"
