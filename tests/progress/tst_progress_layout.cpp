#include "tests/progress/progress_fixture.h"

using namespace mod_progress_qt;

namespace {

using Pointer = ProgressDialog::Pointer;

CustomProgressBar::options withFlags(int flags)
{
    CustomProgressBar::options opts;
    opts.flags = flags;
    opts.repaintDelayMs = kForEver;
    return opts;
}

/// A dialog with a display that is not shown.
Pointer dialogWith(int flags)
{
    Pointer dialog(new ProgressDialog);
    ProgressDialog::createLayout(dialog, withFlags(flags));
    return dialog;
}

/// A layout of the caller's with a widget in it, and with another layout with a widget in it.
struct Nested
{
    QPointer<QHBoxLayout> layout = new QHBoxLayout;
    QPointer<QVBoxLayout> inner = new QVBoxLayout;
    QLabel* outerLabel = new QLabel("outer");
    QLabel* innerLabel = new QLabel("inner");
    ProgressDialog::WidgetAndLayout pair {nullptr, layout};

    Nested()
    {
        layout->addWidget(outerLabel);
        layout->addLayout(inner);
        inner->addWidget(innerLabel);
    }
};

} // namespace

class tst_progress_layout : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    void layoutHoldsWhatStandsBeforeAndAfter();
    void layoutReplacesTheOneBefore();
    void layoutSetsTheTitle();
    void wrappedTextAlwaysFits();
    void hiddenLikeDialogIsInvisible();
    void layoutsInsideCanBeUsedAgain();
    void layoutsThatAreNotUsedAgainGoWithTheirWidgetsHidden();
    void widgetMayMoveIntoALayoutInside();
    void layoutReplacesOneOfTheCallers();
    void layoutMayHaveBeenDeleted();
};

void tst_progress_layout::cleanup()
{
    settle();
    QVERIFY(ProgressDialog::instances.isEmpty());
    QVERIFY(QApplication::topLevelWidgets().isEmpty());
    ProgressDialog::globalHide = false;
    ProgressDialog::showDebug = false;
}

void tst_progress_layout::layoutHoldsWhatStandsBeforeAndAfter()
{
    const Pointer dialog(new ProgressDialog);
    auto* above = new QLabel("above");
    auto* aboveLayout = new QHBoxLayout;
    auto* below = new QLabel("below");
    auto* belowLayout = new QHBoxLayout;
    const ProgressDialog::WidgetAndLayout before {above, aboveLayout};
    const ProgressDialog::WidgetAndLayout after {below, belowLayout};
    auto opts = withFlags(16);
    opts.abortText = "Stop";
    const QPushButton* button = ProgressDialog::createLayout(dialog, opts, &before, &after);
    QVERIFY(button);
    QCOMPARE(button->text(), "Stop");
    const QLayout* layout = dialog->layout();
    QVERIFY(qobject_cast<const QVBoxLayout*>(layout));
    QCOMPARE(layout->count(), 5);
    QCOMPARE(layout->itemAt(0)->widget(), above);
    QCOMPARE(layout->itemAt(1)->layout(), aboveLayout);
    QVERIFY(layout->itemAt(2)->widget()->isAncestorOf(button));
    QCOMPARE(layout->itemAt(3)->widget(), below);
    QCOMPARE(layout->itemAt(4)->layout(), belowLayout);
}

void tst_progress_layout::layoutReplacesTheOneBefore()
{
    const Pointer dialog(new ProgressDialog);
    auto* kept = new QLabel("kept");
    auto* dropped = new QLabel("dropped");
    const ProgressDialog::WidgetAndLayout before {kept, nullptr};
    const ProgressDialog::WidgetAndLayout after {dropped, nullptr};
    const QPointer<QPushButton> button =
        ProgressDialog::createLayout(dialog, withFlags(1040), &before, &after);
    QCOMPARE(ProgressDialog::createLayout(dialog, withFlags(2), &before), nullptr);
    QVERIFY(button.isNull());
    dialog->show();
    QVERIFY(kept->isVisible());
    QVERIFY(!dropped->isVisible());
    QCOMPARE(dialog->layout()->count(), 2);
    QVERIFY(squaresOf(*dialog).isEmpty());
    ProgressDialog::setText(dialog, "new");
    QVERIFY(labelsOf(*dialog).contains("new"));
}

void tst_progress_layout::layoutSetsTheTitle()
{
    const Pointer dialog(new ProgressDialog);
    auto opts = withFlags(2);
    opts.title = "Title";
    ProgressDialog::createLayout(dialog, opts);
    QCOMPARE(dialog->windowTitle(), "Title");
}

void tst_progress_layout::wrappedTextAlwaysFits()
{
    const Pointer dialog = dialogWith(2 | 4 | 128);
    dialog->show();
    QVERIFY(ProgressDialog::setText(dialog, QString("some words ").repeated(100)));
    const QLabel* label = dialog->findChildren<QLabel*>().first();
    QTRY_VERIFY(label->height() >= label->heightForWidth(label->width()));
    QVERIFY(dialog->rect().contains(dialog->childrenRect()));
    QVERIFY(dialog->width() < 2000);
}

void tst_progress_layout::hiddenLikeDialogIsInvisible()
{
    QDialog dialog;
    ProgressDialog::createHiddenLikeDialog(&dialog);
    QCOMPARE(int(dialog.windowFlags()), 2059);
    QCOMPARE(dialog.minimumSize(), QSize(0, 0));
    QCOMPARE(dialog.maximumSize(), QSize(0, 0));
    QVERIFY(dialog.testAttribute(Qt::WidgetAttribute(103)));
    QTimer::singleShot(0, &dialog, &QDialog::accept);
    QCOMPARE(dialog.exec(), int(QDialog::Accepted));
}

void tst_progress_layout::layoutsInsideCanBeUsedAgain()
{
    const Pointer dialog(new ProgressDialog);
    const Nested nested;
    ProgressDialog::createLayout(dialog, withFlags(2), &nested.pair);
    dialog->show();
    ProgressDialog::createLayout(dialog, withFlags(2), nullptr, &nested.pair);
    QCOMPARE(dialog->layout()->count(), 2);
    QCOMPARE(dialog->layout()->itemAt(1)->layout(), nested.layout);
    QCOMPARE(nested.layout->count(), 2);
    QVERIFY(nested.outerLabel->isVisible());
    QVERIFY(nested.innerLabel->isVisible());
}

void tst_progress_layout::layoutsThatAreNotUsedAgainGoWithTheirWidgetsHidden()
{
    const Pointer dialog(new ProgressDialog);
    const Nested dropped;
    const Nested kept;
    ProgressDialog::createLayout(dialog, withFlags(2), &dropped.pair, &kept.pair);
    dialog->show();
    ProgressDialog::createLayout(dialog, withFlags(2), &kept.pair);
    QVERIFY(dropped.layout.isNull());
    QVERIFY(dropped.inner.isNull());
    QVERIFY(!dropped.outerLabel->isVisible());
    QVERIFY(!dropped.innerLabel->isVisible());
    QVERIFY(kept.outerLabel->isVisible());
    QVERIFY(kept.innerLabel->isVisible());
}

void tst_progress_layout::widgetMayMoveIntoALayoutInside()
{
    const Pointer dialog(new ProgressDialog);
    auto* label = new QLabel("moves");
    const ProgressDialog::WidgetAndLayout alone {label, nullptr};
    ProgressDialog::createLayout(dialog, withFlags(2), &alone);
    dialog->show();
    auto* row = new QHBoxLayout;
    row->addWidget(label);
    const ProgressDialog::WidgetAndLayout inside {nullptr, row};
    ProgressDialog::createLayout(dialog, withFlags(2), &inside);
    QVERIFY(label->isVisible());
    QCOMPARE(row->itemAt(0)->widget(), label);
}

void tst_progress_layout::layoutReplacesOneOfTheCallers()
{
    const Pointer dialog(new ProgressDialog);
    auto* label = new QLabel("before");
    auto* own = new QHBoxLayout(dialog.data());
    own->addWidget(label);
    own->addStretch();
    const QPointer<QLayout> guard(own);
    ProgressDialog::createLayout(dialog, withFlags(2));
    dialog->show();
    QVERIFY(guard.isNull());
    QVERIFY(!label->isVisible());
    QVERIFY(qobject_cast<QVBoxLayout*>(dialog->layout()));
    QVERIFY(ProgressDialog::setText(dialog, "new"));
    QVERIFY(labelsOf(*dialog).contains("new"));
}

void tst_progress_layout::layoutMayHaveBeenDeleted()
{
    const Pointer dialog = dialogWith(1026);
    delete dialog->layout();
    ProgressDialog::createLayout(dialog, withFlags(2));
    QVERIFY(dialog->layout());
    QVERIFY(squaresOf(*dialog).isEmpty());
}

QTEST_MAIN(tst_progress_layout)
#include "tst_progress_layout.moc"
