using namespace mod_form_qt;
using helper::FlowLayout;

namespace {

/// A widget that is as large as asked and counts as shown.
QWidget* block(QLayout& layout, int width, int height)
{
    auto* widget = new QWidget;
    widget->setFixedSize(width, height);
    layout.addWidget(widget);
    widget->show();
    return widget;
}

QList<QRect> geometries(const QLayout& layout)
{
    QList<QRect> list;
    for (int i = 0; i < layout.count(); ++i)
        list << layout.itemAt(i)->geometry();
    return list;
}

struct CountedItem : QSpacerItem
{
    CountedItem()
        : QSpacerItem(10, 10)
    {
        ++living;
    }

    ~CountedItem() override { --living; }

    Q_DISABLE_COPY_MOVE(CountedItem)

    inline static int living = 0;
};

} // namespace

class tst_flow_layout : public QObject
{
    Q_OBJECT

private slots:
    void laysOut_data();
    void laysOut();
    void marginsLieAroundTheItems();
    void measuringMovesNothing();
    void aHiddenWidgetTakesNoRoom();
    void takesTheStylesSpacing();
    void takesTheParentLayoutsSpacing();
    void withoutAParentThereIsNoSpacing();
    void itemsOfALayoutWithoutSpacingDoNotOverlap();
    void setSpacingCountsInBothDirections();
    void keepsTheMarginsUnlessGivenSome();
    void itsSizeIsThatOfTheLargestItem();
    void itsHeightDependsOnItsWidth();
    void givesItemsAwayAndDeletesTheOthers();
    void adoptsALayout();
    void wrapsInAWindow();
};

void tst_flow_layout::laysOut_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<QList<QSize>>("sizes");
    QTest::addColumn<QList<QPoint>>("corners");
    QTest::addColumn<int>("height");

    using Sizes = QList<QSize>;
    using Points = QList<QPoint>;
    QTest::newRow("nothing") << 100 << Sizes() << Points() << 0;
    QTest::newRow("one line") << 100 << Sizes {{30, 10}, {40, 20}} << Points {{0, 0}, {35, 0}}
                              << 20;
    QTest::newRow("a full line") << 75 << Sizes {{30, 10}, {40, 20}} << Points {{0, 0}, {35, 0}}
                                 << 20;
    QTest::newRow("one pixel short")
        << 74 << Sizes {{30, 10}, {40, 20}} << Points {{0, 0}, {0, 17}} << 37;
    QTest::newRow("lines as high as their highest")
        << 100 << Sizes {{50, 10}, {40, 30}, {60, 5}, {60, 8}}
        << Points {{0, 0}, {55, 0}, {0, 37}, {0, 49}} << 57;
    QTest::newRow("too wide, first")
        << 100 << Sizes {{150, 10}, {40, 20}} << Points {{0, 0}, {0, 17}} << 37;
    QTest::newRow("too wide, between")
        << 100 << Sizes {{40, 10}, {150, 10}, {40, 10}} << Points {{0, 0}, {0, 17}, {0, 34}} << 44;
}

void tst_flow_layout::laysOut()
{
    QFETCH(int, width);
    QFETCH(QList<QSize>, sizes);
    QFETCH(QList<QPoint>, corners);
    QFETCH(int, height);
    QWidget host;
    FlowLayout layout(&host, 0, 5, 7);
    QList<QRect> expected;
    for (int i = 0; i < sizes.size(); ++i) {
        block(layout, sizes[i].width(), sizes[i].height());
        expected << QRect(corners[i] + QPoint(1000, 2000), sizes[i]);
    }
    layout.setGeometry(QRect(1000, 2000, width, 500));
    QCOMPARE(geometries(layout), expected);
    QCOMPARE(layout.geometry(), QRect(1000, 2000, width, 500));
    QCOMPARE(layout.heightForWidth(width), height);
}

void tst_flow_layout::marginsLieAroundTheItems()
{
    QWidget host;
    FlowLayout layout(&host, 0, 5, 7);
    layout.setContentsMargins(1, 2, 3, 4);
    block(layout, 50, 10);
    block(layout, 50, 10);
    layout.setGeometry(QRect(0, 0, 109, 100));
    QCOMPARE(geometries(layout), QList<QRect>({{1, 2, 50, 10}, {56, 2, 50, 10}}));
    QCOMPARE(layout.heightForWidth(109), 16);
    layout.setGeometry(QRect(0, 0, 108, 100));
    QCOMPARE(geometries(layout), QList<QRect>({{1, 2, 50, 10}, {1, 19, 50, 10}}));
    QCOMPARE(layout.heightForWidth(108), 33);
    QCOMPARE(layout.minimumSize(), QSize(54, 16));
}

void tst_flow_layout::measuringMovesNothing()
{
    QWidget host;
    FlowLayout layout(&host, 0, 5, 7);
    block(layout, 50, 10);
    block(layout, 50, 10);
    layout.setGeometry(QRect(0, 0, 200, 100));
    const QList<QRect> before = geometries(layout);
    QCOMPARE(layout.heightForWidth(60), 27);
    QCOMPARE(geometries(layout), before);
}

void tst_flow_layout::aHiddenWidgetTakesNoRoom()
{
    QWidget host;
    FlowLayout layout(&host, 0, 5, 7);
    block(layout, 50, 10);
    QWidget* hidden = block(layout, 50, 100);
    QWidget* last = block(layout, 50, 10);
    hidden->hide();
    layout.setGeometry(QRect(0, 0, 200, 100));
    QCOMPARE(last->geometry(), QRect(55, 0, 50, 10));
    QCOMPARE(layout.heightForWidth(200), 10);
}

void tst_flow_layout::takesTheStylesSpacing()
{
    QWidget host;
    const FlowLayout layout(&host);
    QCOMPARE(layout.horizontalSpacing(),
             host.style()->pixelMetric(QStyle::PM_LayoutHorizontalSpacing, nullptr, &host));
    QCOMPARE(layout.verticalSpacing(),
             host.style()->pixelMetric(QStyle::PM_LayoutVerticalSpacing, nullptr, &host));
    QVERIFY(layout.horizontalSpacing() > 0);

    QWidget other;
    const FlowLayout own(&other, -1, 0, 3);
    QCOMPARE(own.horizontalSpacing(), 0);
    QCOMPARE(own.verticalSpacing(), 3);
}

void tst_flow_layout::takesTheParentLayoutsSpacing()
{
    QWidget host;
    QVBoxLayout outer(&host);
    outer.setSpacing(23);
    auto* layout = new FlowLayout;
    outer.addLayout(layout);
    QCOMPARE(layout->horizontalSpacing(), 23);
    QCOMPARE(layout->verticalSpacing(), 23);
}

void tst_flow_layout::withoutAParentThereIsNoSpacing()
{
    const FlowLayout layout;
    QCOMPARE(layout.horizontalSpacing(), -1);
    QCOMPARE(layout.verticalSpacing(), -1);
}

void tst_flow_layout::itemsOfALayoutWithoutSpacingDoNotOverlap()
{
    FlowLayout layout;
    layout.setContentsMargins(0, 0, 0, 0);
    QWidget host;
    for (int i = 0; i < 2; ++i) {
        auto* widget = new QWidget(&host);
        widget->setFixedSize(20, 10);
        widget->show();
        layout.addItem(new QWidgetItem(widget));
    }
    layout.addItem(new QSpacerItem(20, 10));
    layout.setGeometry(QRect(0, 0, 40, 100));
    QCOMPARE(geometries(layout), QList<QRect>({{0, 0, 20, 10}, {20, 0, 20, 10}, {0, 10, 20, 10}}));
}

void tst_flow_layout::setSpacingCountsInBothDirections()
{
    QWidget host;
    FlowLayout layout(&host, 0, 5, 7);
    QCOMPARE(layout.spacing(), -1);
    layout.setSpacing(4);
    QCOMPARE(layout.horizontalSpacing(), 4);
    QCOMPARE(layout.verticalSpacing(), 4);
    QCOMPARE(layout.spacing(), 4);
}

void tst_flow_layout::keepsTheMarginsUnlessGivenSome()
{
    QWidget host;
    const QVBoxLayout box;
    QWidget boxHost;
    const QVBoxLayout usual(&boxHost);
    const FlowLayout unchanged(&host, -1, 1, 1);
    QCOMPARE(unchanged.contentsMargins(), usual.contentsMargins());
    QVERIFY(unchanged.contentsMargins() != QMargins());

    const FlowLayout none(0, 1, 1);
    QCOMPARE(none.contentsMargins(), QMargins());
    const FlowLayout nine(9, 1, 1);
    QCOMPARE(nine.contentsMargins(), QMargins(9, 9, 9, 9));
}

void tst_flow_layout::itsSizeIsThatOfTheLargestItem()
{
    QWidget host;
    FlowLayout layout(&host, 3, 5, 7);
    block(layout, 50, 10);
    block(layout, 20, 40);
    QCOMPARE(layout.minimumSize(), QSize(56, 46));
    QCOMPARE(layout.sizeHint(), layout.minimumSize());
}

void tst_flow_layout::itsHeightDependsOnItsWidth()
{
    const FlowLayout layout;
    QVERIFY(layout.hasHeightForWidth());
    QCOMPARE(layout.expandingDirections(), Qt::Orientations());
}

void tst_flow_layout::givesItemsAwayAndDeletesTheOthers()
{
    {
        FlowLayout layout;
        auto* first = new CountedItem;
        auto* second = new CountedItem;
        layout.addItem(first);
        layout.addItem(second);
        QCOMPARE(layout.count(), 2);
        QCOMPARE(layout.itemAt(1), second);
        QCOMPARE(layout.itemAt(2), nullptr);
        QCOMPARE(layout.itemAt(-1), nullptr);
        QCOMPARE(layout.takeAt(2), nullptr);
        QCOMPARE(layout.takeAt(-1), nullptr);
        QCOMPARE(layout.takeAt(0), first);
        delete first;
        QCOMPARE(layout.count(), 1);
        QCOMPARE(CountedItem::living, 1);
    }
    QCOMPARE(CountedItem::living, 0);
}

void tst_flow_layout::adoptsALayout()
{
    QWidget host;
    auto* flow = new FlowLayout(&host, 0, 5, 7);
    QPointer<QHBoxLayout> inner = new QHBoxLayout;
    inner->setContentsMargins(0, 0, 0, 0);
    QWidget* widget = block(*inner, 50, 10);
    block(*flow, 30, 20);
    flow->addItem(inner);
    QCOMPARE(inner->parent(), flow);
    QCOMPARE(widget->parentWidget(), &host);
    widget->show();
    flow->setGeometry(QRect(0, 0, 100, 100));
    QCOMPARE(inner->geometry(), QRect(35, 0, 50, 10));

    delete inner.data();
    QCOMPARE(flow->count(), 1);
    auto* second = new QHBoxLayout;
    const QPointer<QHBoxLayout> gone = second;
    flow->addItem(second);
    delete flow;
    QVERIFY(gone.isNull());
}

void tst_flow_layout::wrapsInAWindow()
{
    QWidget host;
    FlowLayout layout(&host, 0, 5, 7);
    block(layout, 300, 10);
    QWidget* second = block(layout, 300, 10);
    host.resize(700, 100);
    host.show();
    QTRY_COMPARE(second->pos(), QPoint(305, 0));
    host.resize(400, 100);
    QTRY_COMPARE(second->pos(), QPoint(0, 17));
}

QTEST_MAIN(tst_flow_layout)
#include "tst_flow_layout.moc"
