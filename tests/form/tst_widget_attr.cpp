using namespace mod_form_qt;

namespace {

void addAttr(QWidget& widget, const std::bitset<256>& attr, int heightLines = -1)
{
    INFO::addWidgetAttr(&widget, true, {}, attr, heightLines, nullptr, nullptr);
}

template <typename T>
QWidget* make()
{
    return new T;
}

/// A form's state of being changeable, whatever the class calls it.
bool isChangeable(const QWidget& widget)
{
    const QVariant readOnly = widget.property("readOnly");
    return readOnly.isValid() ? !readOnly.toBool() : widget.isEnabled();
}

/// The rows that a combo box shows when it is opened.
int openRows(QComboBox& box)
{
    box.show();
    box.showPopup();
    if (!QTest::qWaitForWindowExposed(box.view()->window()))
        return -1;
    const int height = box.view()->viewport()->height();
    box.hidePopup();
    return height / box.view()->sizeHintForRow(0);
}

QStringList textsOf(const QComboBox& box)
{
    QStringList texts;
    for (int i = 0; i < box.count(); ++i)
        texts << box.itemText(i);
    return texts;
}

} // namespace

class tst_widget_attr : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void readOnly_data();
    void readOnly();
    void readOnlyDisablesOrLocks();
    void comboWidth_data();
    void comboWidth();
    void sortsTheModel();
    void echoMode_data();
    void echoMode();
    void lineEditWidth_data();
    void lineEditWidth();
    void heightInLines_data();
    void heightInLines();
    void heightIsLeftAloneWithoutLines();
    void buttonGroups();
    void ofSeveralGroupsTheHighestCounts();
    void groupsNeedAMap();
    void anyWidgetIsTolerated();
    void listsAreLimitedOnlyWhereSet();
    void limitsTheList_data();
    void limitsTheList();
    void aLimitOfNothingIsNone();
    void showsAndHidesALayout();
    void bitsTravelAsAnArray();
};

void tst_widget_attr::cleanup()
{
    INFO::useLimitExternalComboItems = false;
    INFO::maxVisibleComboItems = 10;
}

void tst_widget_attr::readOnly_data()
{
    QTest::addColumn<QWidget*>("widget");
    QTest::newRow("line edit") << make<QLineEdit>();
    QTest::newRow("text edit") << make<QTextEdit>();
    QTest::newRow("plain text edit") << make<QPlainTextEdit>();
    QTest::newRow("spin box") << make<QSpinBox>();
    QTest::newRow("date edit") << make<QDateEdit>();
    QTest::newRow("combo box") << make<QComboBox>();
    QTest::newRow("check combo box") << make<helper::CheckComboBox>();
    QTest::newRow("list") << make<QListWidget>();
    QTest::newRow("check box") << make<QCheckBox>();
    QTest::newRow("radio button") << make<QRadioButton>();
}

void tst_widget_attr::readOnly()
{
    QFETCH(QWidget*, widget);
    const std::unique_ptr<QWidget> owner(widget);
    addAttr(*widget, ~A_READONLY & A_SORTED);
    QVERIFY(isChangeable(*widget));
    addAttr(*widget, A_READONLY);
    QVERIFY(!isChangeable(*widget));
    // What the caller has locked stays locked.
    addAttr(*widget, A_NONE);
    QVERIFY(!isChangeable(*widget));
}

void tst_widget_attr::readOnlyDisablesOrLocks()
{
    QLineEdit edit;
    QSpinBox spin;
    QPushButton button;
    addAttr(edit, A_READONLY);
    addAttr(spin, A_READONLY);
    addAttr(button, A_READONLY);
    QVERIFY(edit.isEnabled());
    QVERIFY(spin.isEnabled());
    QVERIFY(button.isEnabled());
}

void tst_widget_attr::comboWidth_data()
{
    using Policy = QComboBox::SizeAdjustPolicy;
    QTest::addColumn<std::bitset<256>>("attr");
    QTest::addColumn<Policy>("policy");
    QTest::newRow("none") << A_NONE << QComboBox().sizeAdjustPolicy();
    QTest::newRow("contents") << A_ADJUST_WIDTH_TO_CONTENTS << Policy::AdjustToContents;
    QTest::newRow("first open") << A_COMBO_AUTO_WIDTH_FIRST_OPEN
                                << Policy::AdjustToContentsOnFirstShow;
    QTest::newRow("compact") << A_COMBO_AUTO_WIDTH_COMPACT
                             << Policy::AdjustToMinimumContentsLengthWithIcon;
    QTest::newRow("contents and compact")
        << (A_COMBO_AUTO_WIDTH_FULL_TEXT | A_COMBO_AUTO_WIDTH_COMPACT) << Policy::AdjustToContents;
}

void tst_widget_attr::comboWidth()
{
    QFETCH(std::bitset<256>, attr);
    QComboBox box;
    addAttr(box, attr);
    QTEST(box.sizeAdjustPolicy(), "policy");
    helper::CheckComboBox checkBox;
    addAttr(checkBox, attr);
    QTEST(checkBox.sizeAdjustPolicy(), "policy");
}

void tst_widget_attr::sortsTheModel()
{
    QComboBox box;
    box.addItems({"c", "a", "b"});
    addAttr(box, A_NONE);
    QCOMPARE(textsOf(box), QStringList({"c", "a", "b"}));
    addAttr(box, A_SORTED);
    QCOMPARE(textsOf(box), QStringList({"a", "b", "c"}));

    helper::CheckComboBox checks;
    checks.addCheckItem("c", 3, true);
    checks.addCheckItem("a", 1, false);
    addAttr(checks, A_SORTED);
    QCOMPARE(textsOf(checks), QStringList({"a", "c"}));
    QCOMPARE(checks.checkedData(), QList<QVariant> {QVariant(3)});
    QCOMPARE(checks.checkedIndices(), QList<int>({1}));
}

void tst_widget_attr::echoMode_data()
{
    QTest::addColumn<std::bitset<256>>("attr");
    QTest::addColumn<QLineEdit::EchoMode>("mode");
    QTest::newRow("none") << A_NONE << QLineEdit::Normal;
    QTest::newRow("password") << A_PWD << QLineEdit::Password;
    QTest::newRow("echo on edit") << A_PWD_ECHO << QLineEdit::PasswordEchoOnEdit;
    QTest::newRow("both") << (A_PWD | A_PWD_ECHO) << QLineEdit::Password;
}

void tst_widget_attr::echoMode()
{
    QFETCH(std::bitset<256>, attr);
    QLineEdit edit;
    addAttr(edit, attr);
    QTEST(edit.echoMode(), "mode");
}

void tst_widget_attr::lineEditWidth_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("placeholder");
    QTest::addColumn<QString>("fitted");
    QTest::newRow("text") << "ein langer Text"
                          << "kurz"
                          << "ein langer Text";
    QTest::newRow("placeholder") << ""
                                 << "ein langer Platzhalter"
                                 << "ein langer Platzhalter";
    QTest::newRow("neither") << ""
                             << ""
                             << "";
}

void tst_widget_attr::lineEditWidth()
{
    QFETCH(QString, text);
    QFETCH(QString, placeholder);
    QFETCH(QString, fitted);
    QLineEdit edit(text);
    edit.setPlaceholderText(placeholder);
    edit.setTextMargins(11, 0, 13, 0);
    addAttr(edit, A_NONE);
    QCOMPARE(edit.minimumWidth(), 0);
    addAttr(edit, A_ADJUST_WIDTH_TO_CONTENTS);
    const int frame = edit.style()->pixelMetric(QStyle::PM_DefaultFrameWidth, nullptr, &edit);
    QCOMPARE(edit.minimumWidth(), edit.fontMetrics().horizontalAdvance(fitted) + 24 + frame);
}

void tst_widget_attr::heightInLines_data()
{
    QTest::addColumn<QWidget*>("widget");
    QTest::addColumn<int>("lines");
    QTest::newRow("rich, one") << make<QTextEdit>() << 1;
    QTest::newRow("rich, ten") << make<QTextEdit>() << 10;
    QTest::newRow("plain, one") << make<QPlainTextEdit>() << 1;
    QTest::newRow("plain, ten") << make<QPlainTextEdit>() << 10;
}

void tst_widget_attr::heightInLines()
{
    QFETCH(QWidget*, widget);
    QFETCH(int, lines);
    const std::unique_ptr<QWidget> owner(widget);
    auto* frame = qobject_cast<QFrame*>(widget);
    auto* rich = qobject_cast<QTextEdit*>(widget);
    QTextDocument* text =
        rich ? rich->document() : qobject_cast<QPlainTextEdit*>(widget)->document();
    QFont font = text->defaultFont();
    font.setPointSize(19);
    text->setDefaultFont(font);
    text->setDocumentMargin(6);

    addAttr(*widget, A_NONE, lines);

    const QMargins margins = frame->contentsMargins();
    const int expected = lines * QFontMetrics(font).lineSpacing() + 2 * frame->frameWidth()
        + margins.top() + margins.bottom() + 12;
    QCOMPARE(widget->minimumHeight(), expected);
    QCOMPARE(widget->maximumHeight(), expected);
}

void tst_widget_attr::heightIsLeftAloneWithoutLines()
{
    QTextEdit edit;
    addAttr(edit, A_NONE, -1);
    addAttr(edit, A_NONE, 0);
    QCOMPARE(edit.maximumHeight(), QWIDGETSIZE_MAX);
    QLineEdit line;
    addAttr(line, A_NONE, 5);
    QCOMPARE(line.maximumHeight(), QWIDGETSIZE_MAX);
}

void tst_widget_attr::buttonGroups()
{
    QObject parent;
    QMap<int, QPointer<QButtonGroup>> groups;
    QRadioButton a;
    QRadioButton b;
    QCheckBox c;
    QRadioButton lonely;
    QPushButton button;
    const auto add = [&](QWidget& widget, const std::bitset<256>& attr) {
        INFO::addWidgetAttr(&widget, true, {}, attr, -1, &groups, &parent);
    };
    add(a, A_GROUP_ID1);
    add(b, A_GROUP_ID1);
    add(c, A_GROUP_ID10);
    add(lonely, A_NONE);
    add(button, A_GROUP_ID2);

    QCOMPARE(groups.keys(), QList<int>({1, 10}));
    QCOMPARE(groups[1]->buttons(), QList<QAbstractButton*>({&a, &b}));
    QCOMPARE(groups[1]->parent(), &parent);
    QCOMPARE(c.group(), groups[10].data());
    QCOMPARE(lonely.group(), nullptr);
    QCOMPARE(button.group(), nullptr);
    // Numbers that are given by the group.
    QCOMPARE(groups[1]->id(&a), -2);
    QCOMPARE(groups[1]->id(&b), -3);
}

void tst_widget_attr::ofSeveralGroupsTheHighestCounts()
{
    QObject parent;
    QMap<int, QPointer<QButtonGroup>> groups;
    QRadioButton button;
    INFO::addWidgetAttr(&button, true, {}, A_GROUP_ID3 | A_GROUP_ID7, -1, &groups, &parent);
    QCOMPARE(groups.keys(), QList<int>({7}));
}

void tst_widget_attr::groupsNeedAMap()
{
    QRadioButton button;
    addAttr(button, A_GROUP_ID1);
    QCOMPARE(button.group(), nullptr);
}

void tst_widget_attr::anyWidgetIsTolerated()
{
    INFO::addWidgetAttr(nullptr, true, MF_WHEEL_GUARD, ~A_NONE, 5, nullptr, nullptr);
    QLabel label;
    addAttr(label, ~A_NONE, 5);
    QVERIFY(label.isEnabled());
    QCOMPARE(label.maximumHeight(), QWIDGETSIZE_MAX);
}

void tst_widget_attr::listsAreLimitedOnlyWhereSet()
{
    INFO::maxVisibleComboItems = 4;
    QComboBox free;
    addAttr(free, A_NONE);
    QCOMPARE(free.maxVisibleItems(), QComboBox().maxVisibleItems());
    QCOMPARE(free.styleSheet(), QString());

    INFO::useLimitExternalComboItems = true;
    QComboBox limited;
    addAttr(limited, A_NONE);
    QCOMPARE(limited.maxVisibleItems(), 4);
    helper::CheckComboBox checks;
    addAttr(checks, A_NONE);
    QCOMPARE(checks.maxVisibleItems(), 4);
}

void tst_widget_attr::limitsTheList_data()
{
    QTest::addColumn<QString>("sheet");
    QTest::newRow("no style sheet") << "";
    QTest::newRow("declarations") << "color: red";
    QTest::newRow("closed declarations") << "color: red;";
    QTest::newRow("rules") << "QComboBox { color: red; }";
}

void tst_widget_attr::limitsTheList()
{
    QFETCH(QString, sheet);
    QComboBox box;
    for (int i = 0; i < 20; ++i)
        box.addItem(QString::number(i));
    box.setStyleSheet(sheet);
    // A style that lays the list over the box and shows what fits on the screen.
    QVERIFY(openRows(box) > 12);

    helper::setupLimitedPopup(&box, 5);
    const QString limited = box.styleSheet();
    helper::setupLimitedPopup(&box, 5);
    QCOMPARE(box.styleSheet(), limited);
    QCOMPARE(openRows(box), 5);
    if (!sheet.isEmpty()) {
        box.ensurePolished();
        QCOMPARE(box.palette().color(QPalette::Text), QColor(Qt::red));
    }
}

void tst_widget_attr::aLimitOfNothingIsNone()
{
    QComboBox box;
    helper::setupLimitedPopup(&box, 0);
    QCOMPARE(box.maxVisibleItems(), QComboBox().maxVisibleItems());
    QCOMPARE(box.styleSheet(), QString());
    helper::setupLimitedPopup(nullptr, 5);
}

void tst_widget_attr::showsAndHidesALayout()
{
    QWidget host;
    QVBoxLayout outer(&host);
    auto* inner = new QHBoxLayout;
    auto* near = new QLabel;
    auto* far = new QLabel;
    auto* outside = new QLabel(&host);
    outer.addWidget(near);
    outer.addSpacing(5);
    outer.addLayout(inner);
    inner->addWidget(far);

    setLayoutVisible(&outer, false);
    QVERIFY(near->isHidden());
    QVERIFY(far->isHidden());
    host.show();
    QVERIFY(!near->isVisible());
    QVERIFY(!far->isVisible());
    QVERIFY(outside->isVisible());

    setLayoutVisible(inner, true);
    QVERIFY(!near->isVisible());
    QVERIFY(far->isVisible());
    setLayoutVisible(&outer, true);
    QVERIFY(near->isVisible());
    setLayoutVisible(nullptr, true);
}

void tst_widget_attr::bitsTravelAsAnArray()
{
    const std::bitset<256> bits = A_READONLY | A_GROUP_ID1 | attributeBit(255);
    const QBitArray array = toBitArray(bits);
    QCOMPARE(array.size(), 256);
    QCOMPARE(array.count(true), 3);
    QVERIFY(array.testBit(0) && array.testBit(140) && array.testBit(255));
    QVERIFY(fromBitArray(array) == bits);
    QVERIFY(fromBitArray(QBitArray(255, true)).none());
    QVERIFY(fromBitArray(QBitArray(257, true)).none());
    QVERIFY(fromBitArray(QBitArray()).none());
}

QTEST_MAIN(tst_widget_attr)
#include "tst_widget_attr.moc"
