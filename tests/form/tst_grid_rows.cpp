#include "tests/form/form_fixture.h"

using namespace mod_form_qt;

namespace {

INFO edit(const char* key, std::bitset<256> attr = {}, const QVariant& param = {})
{
    return INFO(E_LINEEDIT, attr, param, {}, key);
}

QGridLayout* gridOf(const TestForm& form)
{
    return form.result.layout->findChild<QGridLayout*>();
}

struct Cell
{
    int row = -1;
    int column = -1;
    int rows = -1;
    int columns = -1;

    friend bool operator==(const Cell&, const Cell&) = default;
};

char* toString(const Cell& cell)
{
    return qstrdup(qPrintable(QStringLiteral("row %1, column %2, %3 by %4")
                                  .arg(cell.row)
                                  .arg(cell.column)
                                  .arg(cell.rows)
                                  .arg(cell.columns)));
}

Cell cellOf(QGridLayout* grid, QWidget* widget)
{
    Cell cell;
    grid->getItemPosition(grid->indexOf(widget), &cell.row, &cell.column, &cell.rows,
                          &cell.columns);
    return cell;
}

QList<INFO> inGrid(QList<INFO> rows, std::bitset<256> attr = {})
{
    rows.prepend(INFO(E_LAYOUT_GRID, attr));
    rows.append(INFO(E_LAYOUT_END));
    return rows;
}

} // namespace

class tst_grid_rows : public QObject
{
    Q_OBJECT

private slots:
    void threeWidgetsTakeTheColumnsOneAfterTheOther();
    void aGridColumnMovesAWidgetAndWhatFollows();
    void anEarlierGridColumnDoesNotMoveBack();
    void everyGridColumn_data();
    void everyGridColumn();
    void everyColumnSpan_data();
    void everyColumnSpan();
    void aSpanToTheEndStartsTheColumnsAnew();
    void onlyTheLastWidgetSpansToTheEnd();
    void aPositiveSpanCountsForLabelAndField();
    void onlyNextRowMovesDown();
    void labelAndFieldStandInTwoColumns();
    void aStretchColumnEndStretchesTheLastColumnOfEachRow();
    void anExplicitStretchTakesThePlaceOfTheAutomaticOne();
    void aStretchGoesToTheColumnBeforeTheCurrentOne();
    void aStretchAtTheBeginOfARowGoesToTheLastColumn();
    void aStretchBehindAWidgetStretchesItsColumn();
    void aSpacerTakesACell();
    void nextRowElsewhereHasNoEffect();
    void alignmentsOfWidgetsAndLabels_data();
    void alignmentsOfWidgetsAndLabels();
    void linesKeepTheirLength();
    void aNestedLayoutTakesOneCell();
};

void tst_grid_rows::threeWidgetsTakeTheColumnsOneAfterTheOther()
{
    TestForm form;
    form.build(inGrid({edit("a"), edit("b"), edit("c")}));
    auto* grid = gridOf(form);
    QCOMPARE(cellOf(grid, form.find<QLineEdit>("a")), (Cell {0, 0, 1, 1}));
    QCOMPARE(cellOf(grid, form.find<QLineEdit>("b")), (Cell {0, 1, 1, 1}));
    QCOMPARE(cellOf(grid, form.find<QLineEdit>("c")), (Cell {0, 2, 1, 1}));
}

void tst_grid_rows::aGridColumnMovesAWidgetAndWhatFollows()
{
    TestForm form;
    form.build(inGrid({edit("a"), edit("b", A_GRID_COL5), edit("c")}));
    auto* grid = gridOf(form);
    QCOMPARE(cellOf(grid, form.find<QLineEdit>("a")).column, 0);
    QCOMPARE(cellOf(grid, form.find<QLineEdit>("b")).column, 5);
    QCOMPARE(cellOf(grid, form.find<QLineEdit>("c")).column, 6);
}

void tst_grid_rows::anEarlierGridColumnDoesNotMoveBack()
{
    TestForm form;
    form.build(inGrid({edit("a"), edit("b"), edit("c", A_GRID_COL1)}));
    QCOMPARE(cellOf(gridOf(form), form.find<QLineEdit>("c")).column, 2);
}

void tst_grid_rows::everyGridColumn_data()
{
    QTest::addColumn<int>("column");
    for (int column = 1; column <= 10; ++column)
        QTest::addRow("%d", column) << column;
}

void tst_grid_rows::everyGridColumn()
{
    QFETCH(int, column);
    TestForm form;
    form.build(inGrid({edit("a", attributeBit(unsigned(31 + column)))}));
    QCOMPARE(cellOf(gridOf(form), form.find<QLineEdit>("a")).column, column);
}

void tst_grid_rows::everyColumnSpan_data()
{
    everyGridColumn_data();
}

void tst_grid_rows::everyColumnSpan()
{
    QFETCH(int, column);
    TestForm form;
    form.build(inGrid({edit("a", attributeBit(unsigned(49 + column))), edit("b")}));
    auto* grid = gridOf(form);
    QCOMPARE(cellOf(grid, form.find<QLineEdit>("a")), (Cell {0, 0, 1, column}));
    QCOMPARE(cellOf(grid, form.find<QLineEdit>("b")).column, column);
}

void tst_grid_rows::aSpanToTheEndStartsTheColumnsAnew()
{
    TestForm form;
    form.build(inGrid({edit("a"), edit("b"), edit("c"), INFO(E_GRID_NEXT_ROW),
                       edit("wide", A_GRID_COLSPAN_ALL), INFO(E_GRID_NEXT_ROW), edit("next")}));
    auto* grid = gridOf(form);
    QCOMPARE(cellOf(grid, form.find<QLineEdit>("wide")), (Cell {1, 0, 1, 3}));
    QCOMPARE(cellOf(grid, form.find<QLineEdit>("next")), (Cell {2, 0, 1, 1}));
}

void tst_grid_rows::onlyTheLastWidgetSpansToTheEnd()
{
    TestForm form;
    form.build(inGrid({edit("a"), edit("b"), edit("c"), INFO(E_GRID_NEXT_ROW),
                       edit("wide", A_GRID_COLSPAN_ALL, "Titel")}));
    auto* grid = gridOf(form);
    QCOMPARE(cellOf(grid, INFO::labelByKey(&form.map, "wide")), (Cell {1, 0, 1, 1}));
    QCOMPARE(cellOf(grid, form.find<QLineEdit>("wide")), (Cell {1, 1, 1, 2}));
}

void tst_grid_rows::aPositiveSpanCountsForLabelAndField()
{
    TestForm form;
    form.build(inGrid({edit("a", A_GRID_COLSPAN2, "Titel")}));
    auto* grid = gridOf(form);
    QCOMPARE(cellOf(grid, INFO::labelByKey(&form.map, "a")), (Cell {0, 0, 1, 2}));
    QCOMPARE(cellOf(grid, form.find<QLineEdit>("a")), (Cell {0, 2, 1, 2}));
}

void tst_grid_rows::onlyNextRowMovesDown()
{
    TestForm form;
    form.build(inGrid({edit("a"), edit("b"), INFO(E_GRID_NEXT_ROW), edit("c"),
                       INFO(E_GRID_NEXT_ROW), INFO(E_GRID_NEXT_ROW), edit("d")}));
    auto* grid = gridOf(form);
    QCOMPARE(cellOf(grid, form.find<QLineEdit>("b")).row, 0);
    QCOMPARE(cellOf(grid, form.find<QLineEdit>("c")), (Cell {1, 0, 1, 1}));
    QCOMPARE(cellOf(grid, form.find<QLineEdit>("d")), (Cell {3, 0, 1, 1}));
}

void tst_grid_rows::labelAndFieldStandInTwoColumns()
{
    TestForm form;
    form.build(inGrid({edit("a", {}, "A"), edit("b", {}, "B")}));
    auto* grid = gridOf(form);
    QCOMPARE(cellOf(grid, INFO::labelByKey(&form.map, "a")).column, 0);
    QCOMPARE(cellOf(grid, form.find<QLineEdit>("a")).column, 1);
    QCOMPARE(cellOf(grid, INFO::labelByKey(&form.map, "b")).column, 2);
    QCOMPARE(cellOf(grid, form.find<QLineEdit>("b")).column, 3);
}

void tst_grid_rows::aStretchColumnEndStretchesTheLastColumnOfEachRow()
{
    TestForm form;
    form.build(
        inGrid({edit("a"), edit("b"), INFO(E_GRID_NEXT_ROW), edit("c")}, A_STRETCH_COLUMN_END));
    auto* grid = gridOf(form);
    QCOMPARE(grid->columnStretch(1), 1);
    QCOMPARE(grid->columnStretch(0), 1); // the second row ends with the first column
}

void tst_grid_rows::anExplicitStretchTakesThePlaceOfTheAutomaticOne()
{
    TestForm form;
    form.build(inGrid({edit("a"), INFO(E_STRETCH, {}, {}, 7), edit("b")}, A_STRETCH_COLUMN_END));
    auto* grid = gridOf(form);
    QCOMPARE(grid->columnStretch(0), 7);
    QCOMPARE(grid->columnStretch(1), 0);
}

void tst_grid_rows::aStretchGoesToTheColumnBeforeTheCurrentOne()
{
    TestForm form;
    form.build(inGrid({edit("a"), edit("b"), INFO(E_STRETCH, {}, {}, 3), edit("c")}));
    auto* grid = gridOf(form);
    QCOMPARE(grid->columnStretch(1), 3);
    QCOMPARE(grid->columnStretch(0), 0);
    QCOMPARE(grid->columnStretch(2), 0);
}

void tst_grid_rows::aStretchAtTheBeginOfARowGoesToTheLastColumn()
{
    TestForm form;
    form.build(inGrid(
        {edit("a"), edit("b"), edit("c"), INFO(E_GRID_NEXT_ROW), INFO(E_STRETCH, {}, {}, 4)}));
    QCOMPARE(gridOf(form)->columnStretch(2), 4);
}

void tst_grid_rows::aStretchBehindAWidgetStretchesItsColumn()
{
    TestForm form;
    form.build(inGrid({edit("a"), edit("b", A_STRETCH_6), edit("c")}));
    auto* grid = gridOf(form);
    QCOMPARE(grid->columnStretch(1), 6);
    QCOMPARE(cellOf(grid, form.find<QLineEdit>("c")).column, 2);
}

void tst_grid_rows::aSpacerTakesACell()
{
    TestForm form;
    form.build(inGrid({edit("a"), INFO(E_HSPACER, {}, {}, 30), edit("b")}));
    auto* grid = gridOf(form);
    QVERIFY(grid->itemAtPosition(0, 1)->spacerItem());
    QCOMPARE(grid->itemAtPosition(0, 1)->spacerItem()->sizeHint(), QSize(30, 0));
    QCOMPARE(cellOf(grid, form.find<QLineEdit>("b")).column, 2);
}

void tst_grid_rows::nextRowElsewhereHasNoEffect()
{
    TestForm form;
    form.build({edit("a"), INFO(E_GRID_NEXT_ROW), edit("b")});
    QCOMPARE(form.result.layout->indexOf(form.find<QLineEdit>("a")), 0);
    QCOMPARE(form.result.layout->indexOf(form.find<QLineEdit>("b")), 1);
}

void tst_grid_rows::alignmentsOfWidgetsAndLabels_data()
{
    QTest::addColumn<int>("offset");
    QTest::addColumn<int>("value");
    const int values[] = {1, 2, 4, 8, 0x20, 0x40, 0x80, 0x100, 0x84, 0x21};
    for (int i = 0; i < 10; ++i)
        QTest::addRow("%#x", values[i]) << i << values[i];
}

void tst_grid_rows::alignmentsOfWidgetsAndLabels()
{
    QFETCH(int, offset);
    QFETCH(int, value);
    TestForm form;
    form.build(inGrid({edit("widget", attributeBit(unsigned(80 + offset)), "Titel"),
                       edit("label", attributeBit(unsigned(90 + offset)), "Titel")}));
    auto* grid = gridOf(form);
    const auto alignment = [grid](QWidget* widget) {
        return grid->itemAt(grid->indexOf(widget))->alignment().toInt();
    };
    QCOMPARE(alignment(form.find<QLineEdit>("widget")), value);
    QCOMPARE(alignment(INFO::labelByKey(&form.map, "widget")), 0);
    QCOMPARE(alignment(form.find<QLineEdit>("label")), 0);
    QCOMPARE(alignment(INFO::labelByKey(&form.map, "label")), value);
}

void tst_grid_rows::linesKeepTheirLength()
{
    TestForm form;
    form.build(inGrid({INFO(E_HLINE, A_ALIGN_CENTER, {}, 0, "h"), INFO(E_GRID_NEXT_ROW),
                       INFO(E_VLINE, A_ALIGN_CENTER, {}, 0, "v")}));
    auto* grid = gridOf(form);
    const auto alignment = [grid](QWidget* widget) {
        return grid->itemAt(grid->indexOf(widget))->alignment().toInt();
    };
    QCOMPARE(alignment(form.find<QFrame>("h")), int(Qt::AlignVCenter));
    QCOMPARE(alignment(form.find<QFrame>("v")), int(Qt::AlignHCenter));
    QCOMPARE(form.find<QFrame>("h")->frameShape(), QFrame::HLine);
    QCOMPARE(form.find<QFrame>("v")->frameShape(), QFrame::VLine);
    QCOMPARE(form.find<QFrame>("v")->frameShadow(), QFrame::Sunken);
}

void tst_grid_rows::aNestedLayoutTakesOneCell()
{
    TestForm form;
    form.build(
        inGrid({edit("a"), INFO(E_LAYOUT_H), edit("b"), edit("c"), INFO(E_LAYOUT_END), edit("d")}));
    auto* grid = gridOf(form);
    QCOMPARE(cellOf(grid, form.find<QLineEdit>("d")).column, 2);
    auto* inner = grid->itemAtPosition(0, 1)->layout();
    QVERIFY(qobject_cast<QHBoxLayout*>(inner));
    QCOMPARE(inner->indexOf(form.find<QLineEdit>("b")), 0);
    QCOMPARE(inner->indexOf(form.find<QLineEdit>("c")), 1);
}

QTEST_MAIN(tst_grid_rows)
#include "tst_grid_rows.moc"
