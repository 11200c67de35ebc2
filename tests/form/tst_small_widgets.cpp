using namespace mod_form_qt;

namespace {

QStringList logged;

void noteLine(QtMsgType, const QMessageLogContext&, const QString& line)
{
    logged << line;
}

/// What a call writes to the log.
QStringList logOf(const std::function<void()>& call)
{
    logged.clear();
    const QtMessageHandler before = qInstallMessageHandler(noteLine);
    call();
    qInstallMessageHandler(before);
    return logged;
}

/// The texts of log lines up to and with their first colon.
QStringList labelsOf(const QStringList& lines)
{
    QStringList labels;
    for (const QString& line : lines)
        labels << line.left(line.indexOf(':') + 1);
    return labels;
}

const QStringList widgetLabels {"class:",
                                "objectName:",
                                "size:",
                                "sizeHint:",
                                "minimumSizeHint:",
                                "minimumSize:",
                                "maximumSize:",
                                "sizePolicy:",
                                "font:",
                                "styleSheet:",
                                "style:",
                                "devicePixelRatioF:",
                                "PM_IndicatorWidth:",
                                "PM_IndicatorHeight:",
                                "PM_CheckBoxLabelSpacing:"};
const QStringList comboLabels {"combo count:",
                               "combo currentIndex:",
                               "combo iconSize:",
                               "combo sizeAdjustPolicy:",
                               "itemView delegate:",
                               "itemView iconSize:",
                               "itemView sizeHintForRow(0):"};
const QStringList viewLabels {
    "view class:",           "view objectName:", "view size:",     "view sizeHint:",
    "view minimumSizeHint:", "view sizePolicy:", "view font:",     "view style:",
    "view styleSheet:",      "view delegate:",   "view iconSize:", "view sizeHintForRow(0):"};

QImage filled(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::red);
    return image;
}

/// The rectangle of the red pixels in what a widget paints.
QRect redPart(QWidget& widget)
{
    const QImage image = widget.grab().toImage();
    QRect part;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y) == QColor(Qt::red))
                part |= QRect(x, y, 1, 1);
        }
    }
    return part;
}

/// An open menu with a checkable and a plain action.
struct OpenMenu
{
    OpenMenu()
    {
        check->setCheckable(true);
        menu.popup(QPoint(50, 50));
    }

    void click(QAction* action)
    {
        QTest::mouseMove(&menu, menu.actionGeometry(action).center());
        menu.setActiveAction(action);
        QTest::mouseClick(&menu, Qt::LeftButton, {}, menu.actionGeometry(action).center());
    }

    helper::QCheckMenu menu;
    QAction* check = menu.addAction("Haken");
    QAction* plain = menu.addAction("Tun");
};

} // namespace

class tst_small_widgets : public QObject
{
    Q_OBJECT

private slots:
    void anImageKeepsItsProportions_data();
    void anImageKeepsItsProportions();
    void anImageHintsAtItsSize();
    void takesAnImageFrom_data();
    void takesAnImageFrom();
    void anUnreadableImageEmptiesTheWidget_data();
    void anUnreadableImageEmptiesTheWidget();
    void anImageSetsTheSizeOfItsWidget();

    void aCheckMenuStaysOpenForChecks();
    void aCheckMenuClosesForAPlainAction();
    void aCheckMenuStaysOpenForKeys_data();
    void aCheckMenuStaysOpenForKeys();
    void aKeyTriggersAPlainAction();

    void removesInvalidPathChars_data();
    void removesInvalidPathChars();
    void removesInvalidPathCharsAgainAndAgain();

    void dumpsAWidget();
    void dumpsAComboBox();
    void dumpsAnItemView();
    void dumpsNoWidget();
    void dumpsNothingWithoutDebugOutput();
};

void tst_small_widgets::anImageKeepsItsProportions_data()
{
    QTest::addColumn<QSize>("image");
    QTest::addColumn<QSize>("widget");
    QTest::addColumn<QRect>("painted");
    QTest::newRow("wide image") << QSize(40, 20) << QSize(80, 80) << QRect(0, 20, 80, 40);
    QTest::newRow("high image") << QSize(20, 40) << QSize(80, 80) << QRect(20, 0, 40, 80);
    QTest::newRow("wide widget") << QSize(10, 10) << QSize(100, 50) << QRect(25, 0, 50, 50);
    QTest::newRow("drawn down") << QSize(200, 100) << QSize(50, 50) << QRect(0, 12, 50, 25);
    QTest::newRow("no image") << QSize(0, 0) << QSize(50, 50) << QRect();
}

void tst_small_widgets::anImageKeepsItsProportions()
{
    QFETCH(QSize, image);
    QFETCH(QSize, widget);
    helper::ImageWidget shown;
    shown.resize(widget);
    shown.setImage(filled(image.width(), image.height()));
    QTEST(redPart(shown), "painted");
}

void tst_small_widgets::anImageHintsAtItsSize()
{
    helper::ImageWidget widget;
    QVERIFY(!widget.sizeHint().isValid());
    widget.setImage(filled(30, 20));
    QCOMPARE(widget.sizeHint(), QSize(30, 20));
    QCOMPARE(widget.image(), filled(30, 20));
    widget.setImage(filled(4800, 2400));
    QCOMPARE(widget.sizeHint(), QSize(480, 240));
}

void tst_small_widgets::takesAnImageFrom_data()
{
    static const QTemporaryDir folder;
    static QVariant variable = filled(12, 8);
    const QString file = folder.filePath("bild.png");
    QVERIFY(filled(12, 8).save(file));
    QTest::addColumn<QVariant>("value");
    QTest::newRow("an image") << QVariant(filled(12, 8));
    QTest::newRow("a pixmap") << QVariant(QPixmap::fromImage(filled(12, 8)));
    QTest::newRow("a file") << QVariant(file);
    QTest::newRow("a variable") << QVariant::fromValue(&variable);
}

void tst_small_widgets::takesAnImageFrom()
{
    QFETCH(QVariant, value);
    helper::ImageWidget widget;
    initImage(value, &widget, A_NONE);
    QCOMPARE(widget.image().size(), QSize(12, 8));
    QCOMPARE(widget.image().pixelColor(3, 3), QColor(Qt::red));
    QCOMPARE(widget.minimumSize(), QSize(0, 0));
    initImage(value, nullptr, A_NONE);
}

void tst_small_widgets::anUnreadableImageEmptiesTheWidget_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::newRow("nothing") << QVariant();
    QTest::newRow("missing file") << QVariant("nicht/da.png");
    QTest::newRow("null image") << QVariant(QImage());
}

void tst_small_widgets::anUnreadableImageEmptiesTheWidget()
{
    QFETCH(QVariant, value);
    helper::ImageWidget widget;
    widget.setImage(filled(5, 5));
    initImage(value, &widget, A_ADJUST_WIDTH_TO_CONTENTS | A_ADJUST_HEIGHT_TO_CONTENTS);
    QVERIFY(widget.image().isNull());
    QCOMPARE(widget.maximumWidth(), QWIDGETSIZE_MAX);
}

void tst_small_widgets::anImageSetsTheSizeOfItsWidget()
{
    helper::ImageWidget wide;
    initImage(filled(12, 8), &wide, A_ADJUST_WIDTH_TO_CONTENTS);
    QCOMPARE(wide.minimumSize(), QSize(12, 0));
    QCOMPARE(wide.maximumSize(), QSize(12, QWIDGETSIZE_MAX));
    helper::ImageWidget high;
    initImage(filled(12, 8), &high, A_ADJUST_HEIGHT_TO_CONTENTS);
    QCOMPARE(high.minimumSize(), QSize(0, 8));
    QCOMPARE(high.maximumSize(), QSize(QWIDGETSIZE_MAX, 8));
}

void tst_small_widgets::aCheckMenuStaysOpenForChecks()
{
    OpenMenu open;
    const QSignalSpy spy(open.check, &QAction::triggered);
    open.click(open.check);
    QVERIFY(open.check->isChecked());
    QVERIFY(open.menu.isVisible());
    open.click(open.check);
    QVERIFY(!open.check->isChecked());
    QVERIFY(open.menu.isVisible());
    QCOMPARE(spy.size(), 2);

    open.check->setEnabled(false);
    open.click(open.check);
    QCOMPARE(spy.size(), 2);
}

void tst_small_widgets::aCheckMenuClosesForAPlainAction()
{
    OpenMenu open;
    const QSignalSpy spy(open.plain, &QAction::triggered);
    open.click(open.plain);
    QTRY_VERIFY(!open.menu.isVisible());
    QCOMPARE(spy.size(), 1);
}

void tst_small_widgets::aCheckMenuStaysOpenForKeys_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("space") << int(Qt::Key_Space);
    QTest::newRow("Return") << int(Qt::Key_Return);
    QTest::newRow("Enter") << int(Qt::Key_Enter);
}

void tst_small_widgets::aCheckMenuStaysOpenForKeys()
{
    QFETCH(int, key);
    OpenMenu open;
    open.menu.setActiveAction(open.check);
    QTest::keyClick(&open.menu, Qt::Key(key));
    QVERIFY(open.check->isChecked());
    QVERIFY(open.menu.isVisible());
    QTest::keyClick(&open.menu, Qt::Key_Escape);
    QVERIFY(!open.menu.isVisible());
}

void tst_small_widgets::aKeyTriggersAPlainAction()
{
    OpenMenu open;
    const QSignalSpy spy(open.plain, &QAction::triggered);
    open.menu.setActiveAction(open.plain);
    QTest::keyClick(&open.menu, Qt::Key_Return);
    QTRY_COMPARE(spy.size(), 1);
    QVERIFY(!open.menu.isVisible());
}

void tst_small_widgets::removesInvalidPathChars_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("isFileName");
    QTest::addColumn<QString>("cleaned");
    QTest::addColumn<int>("removed");
    QTest::newRow("backslash in a path") << "C:\\dir" << false << "C:/dir" << 0;
    QTest::newRow("each character in a path") << "a*b?c\"d<e>f|g" << false << "abcdefg" << 6;
    QTest::newRow("slashes and colons of a path") << "C:/a\\b:c" << false << "C:/a/b:c" << 0;
    QTest::newRow("each character in a file name")
        << "a\\b/c:d*e?f\"g<h>i|j" << true << "abcdefghij" << 9;
    QTest::newRow("twice the same") << "**a**" << true << "a" << 4;
    QTest::newRow("what else looks like a pattern")
        << "[a-z]^(b).+$" << true << "[a-z]^(b).+$" << 0;
    QTest::newRow("empty") << "" << false << "" << 0;
}

void tst_small_widgets::removesInvalidPathChars()
{
    QFETCH(QString, text);
    QFETCH(bool, isFileName);
    QTEST(removeInvalidPathChars(text, isFileName), "removed");
    QTEST(text, "cleaned");
}

void tst_small_widgets::removesInvalidPathCharsAgainAndAgain()
{
    for (int i = 0; i < 2; ++i) {
        QString path = "a:b*";
        QCOMPARE(removeInvalidPathChars(path, false), 1);
        QString name = "a:b*";
        QCOMPARE(removeInvalidPathChars(name, true), 2);
    }
}

void tst_small_widgets::dumpsAWidget()
{
    QPushButton button("Knopf");
    button.setObjectName("knopf");
    const QStringList lines = logOf([&button] { helper::DumpWidgetDebug("Beispiel", &button); });
    QCOMPARE(lines.mid(0, 2), QStringList({"----", "Beispiel"}));
    QCOMPARE(labelsOf(lines.mid(2)), widgetLabels);
    QVERIFY(lines.contains("class: QPushButton"));
    QVERIFY(lines.contains("objectName: knopf"));
    QVERIFY(lines.contains(QString("PM_IndicatorWidth: %1")
                               .arg(button.style()->pixelMetric(QStyle::PM_IndicatorWidth))));
}

void tst_small_widgets::dumpsAComboBox()
{
    QComboBox box;
    box.addItems({"a", "b"});
    const QStringList lines = logOf([&box] { helper::DumpWidgetDebug("Beispiel", &box); });
    QCOMPARE(labelsOf(lines.mid(2)), widgetLabels + comboLabels + viewLabels);
    QVERIFY(lines.contains("combo count: 2"));
    QVERIFY(lines.contains("combo currentIndex: 0"));
}

void tst_small_widgets::dumpsAnItemView()
{
    QListWidget view;
    const QStringList lines = logOf([&view] { helper::DumpWidgetDebug("Beispiel", &view); });
    QCOMPARE(labelsOf(lines.mid(2)), widgetLabels + viewLabels);
    QVERIFY(lines.contains("view class: QListWidget"));
    QVERIFY(lines.contains("view sizeHintForRow(0): -1"));
}

void tst_small_widgets::dumpsNoWidget()
{
    QCOMPARE(logOf([] { helper::DumpWidgetDebug("Beispiel", nullptr); }),
             QStringList({"----", "Beispiel", "nullptr"}));
}

void tst_small_widgets::dumpsNothingWithoutDebugOutput()
{
    QLoggingCategory::setFilterRules("default.debug=false");
    QComboBox box;
    const QStringList lines = logOf([&box] { helper::DumpWidgetDebug("Beispiel", &box); });
    QLoggingCategory::setFilterRules({});
    // Nor is anything asked of the widget: to ask for its list would have made one.
    QVERIFY(box.findChild<QAbstractItemView*>() == nullptr);
    QCOMPARE(lines, QStringList());
}

QTEST_MAIN(tst_small_widgets)
#include "tst_small_widgets.moc"
