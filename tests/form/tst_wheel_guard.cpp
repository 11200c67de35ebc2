using namespace mod_form_qt;
using Guard = helper::DynamicWidgetEventFilter;

namespace {

/// Turns the wheel over a widget as the window system would, so that the turn goes on to what is
/// around the widget, and the wheel may give a widget the focus.
/// \param accepted  out, if given: whether something took the turn
void turnWheel(QWidget& widget, bool* accepted = nullptr)
{
    const QPointF middle = widget.rect().center();
    QWheelEvent event(middle, widget.mapToGlobal(middle), QPoint(), QPoint(0, -120), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&event);
    qApp->notify(&widget, &event);
    if (accepted != nullptr)
        *accepted = event.isAccepted();
}

/// An input in a window that scrolls, beside another one that has the focus.
class Window
{
public:
    explicit Window(QWidget* input)
        : m_input(input)
    {
        auto* content = new QWidget;
        auto* layout = new QVBoxLayout(content);
        layout->addWidget(&m_other);
        layout->addWidget(m_input);
        layout->addSpacing(2000);
        m_area.setWidget(content);
        m_area.resize(300, 200);
        m_area.show();
    }

    bool start()
    {
        if (!QTest::qWaitForWindowActive(&m_area))
            return false;
        m_other.setFocus();
        return m_other.hasFocus();
    }

    ~Window()
    {
        // Lives here and not on the heap.
        m_other.setParent(nullptr);
    }

    Q_DISABLE_COPY_MOVE(Window)

    int scrolled() const { return m_area.verticalScrollBar()->value(); }

    bool inputHasFocus() const { return m_input->hasFocus(); }

private:
    QScrollArea m_area;
    QLineEdit m_other;
    QWidget* m_input;
};

QSpinBox* spinBox()
{
    auto* box = new QSpinBox;
    box->setValue(50);
    return box;
}

template <typename Box>
Box* comboBox()
{
    auto* box = new Box;
    box->addItems({"a", "b", "c"});
    return box;
}

bool isGuarded(const QWidget& widget)
{
    return widget.focusPolicy() == Qt::StrongFocus && widget.findChild<Guard*>() != nullptr;
}

void addAttr(QWidget& widget, bool guardWheel, INFO::MainFlags flags, const std::bitset<256>& attr)
{
    INFO::addWidgetAttr(&widget, guardWheel, flags, attr, -1, nullptr, nullptr);
}

} // namespace

class tst_wheel_guard : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void anUnguardedInputTakesTheWheel();
    void aGuardedInputLeavesTheWheelToItsSurroundings();
    void aGuardedInputTakesTheWheelWithFocus();
    void theFilterGuardsOnlyTheGivenClasses_data();
    void theFilterGuardsOnlyTheGivenClasses();
    void theFilterLetsOtherEventsPass();
    void aFocusWheelBoxLeavesTheWheelToItsSurroundings();
    void aFocusWheelBoxTakesTheWheelWithFocus();
    void guardsWhereAskedFor_data();
    void guardsWhereAskedFor();
    void guardsInputsWithAValueOnly_data();
    void guardsInputsWithAValueOnly();
    void guardsOnce();
};

void tst_wheel_guard::cleanup()
{
    INFO::bGlobalWheelGuard = true;
}

void tst_wheel_guard::anUnguardedInputTakesTheWheel()
{
    QSpinBox* box = spinBox();
    Window window(box);
    QVERIFY(window.start());
    turnWheel(*box);
    QCOMPARE(box->value(), 49);
    QCOMPARE(window.scrolled(), 0);
}

void tst_wheel_guard::aGuardedInputLeavesTheWheelToItsSurroundings()
{
    QSpinBox* box = spinBox();
    addAttr(*box, true, MF_WHEEL_GUARD, A_NONE);
    Window window(box);
    QVERIFY(window.start());
    turnWheel(*box);
    QCOMPARE(box->value(), 50);
    QVERIFY(!window.inputHasFocus());
    QVERIFY(window.scrolled() > 0);
}

void tst_wheel_guard::aGuardedInputTakesTheWheelWithFocus()
{
    QSpinBox* box = spinBox();
    addAttr(*box, true, MF_WHEEL_GUARD, A_NONE);
    Window window(box);
    QVERIFY(window.start());
    box->setFocus();
    turnWheel(*box);
    QCOMPARE(box->value(), 49);
    QCOMPARE(window.scrolled(), 0);
}

void tst_wheel_guard::theFilterGuardsOnlyTheGivenClasses_data()
{
    QTest::addColumn<std::set<QString>>("classes");
    QTest::addColumn<int>("value");
    QTest::newRow("none given") << std::set<QString>() << 50;
    QTest::newRow("the class is given") << std::set<QString> {"QComboBox", "QSpinBox"} << 50;
    QTest::newRow("another class") << std::set<QString> {"QComboBox"} << 49;
    QTest::newRow("its base class") << std::set<QString> {"QAbstractSpinBox"} << 49;
}

void tst_wheel_guard::theFilterGuardsOnlyTheGivenClasses()
{
    QFETCH(std::set<QString>, classes);
    QFETCH(int, value);
    QSpinBox* box = spinBox();
    box->setFocusPolicy(Qt::StrongFocus);
    box->installEventFilter(new Guard(box, classes));
    Window window(box);
    QVERIFY(window.start());
    turnWheel(*box);
    QCOMPARE(box->value(), value);
}

void tst_wheel_guard::theFilterLetsOtherEventsPass()
{
    QSpinBox box;
    box.setValue(50);
    box.installEventFilter(new Guard(&box));
    box.show();
    QTest::keyClick(&box, Qt::Key_Up);
    QCOMPARE(box.value(), 51);
}

void tst_wheel_guard::aFocusWheelBoxLeavesTheWheelToItsSurroundings()
{
    auto* box = comboBox<helper::FocusWheelComboBox>();
    Window window(box);
    QVERIFY(window.start());
    turnWheel(*box);
    QCOMPARE(box->currentIndex(), 0);
    QVERIFY(!window.inputHasFocus());
    QVERIFY(window.scrolled() > 0);
}

void tst_wheel_guard::aFocusWheelBoxTakesTheWheelWithFocus()
{
    auto* box = comboBox<helper::FocusWheelComboBox>();
    Window window(box);
    QVERIFY(window.start());
    box->setFocus();
    turnWheel(*box);
    QCOMPARE(box->currentIndex(), 1);
    QCOMPARE(window.scrolled(), 0);
}

void tst_wheel_guard::guardsWhereAskedFor_data()
{
    QTest::addColumn<bool>("guardWheel");
    QTest::addColumn<bool>("global");
    QTest::addColumn<bool>("ofForm");
    QTest::addColumn<bool>("ofRow");
    QTest::addColumn<bool>("allowed");
    QTest::addColumn<bool>("guarded");
    QTest::newRow("not asked for") << true << true << false << false << false << false;
    QTest::newRow("asked for by the row") << true << true << false << true << false << true;
    QTest::newRow("asked for by the form") << true << true << true << false << false << true;
    QTest::newRow("allowed by the row") << true << true << true << true << true << false;
    QTest::newRow("switched off for all forms, form asks")
        << true << false << true << false << false << false;
    QTest::newRow("switched off for all forms, row asks")
        << true << false << false << true << false << true;
    QTest::newRow("switched off by the caller") << false << true << true << true << false << false;
}

void tst_wheel_guard::guardsWhereAskedFor()
{
    QFETCH(bool, guardWheel);
    QFETCH(bool, global);
    QFETCH(bool, ofForm);
    QFETCH(bool, ofRow);
    QFETCH(bool, allowed);
    INFO::bGlobalWheelGuard = global;
    QDoubleSpinBox box;
    addAttr(box, guardWheel, ofForm ? INFO::MainFlags(MF_WHEEL_GUARD) : INFO::MainFlags(),
            (ofRow ? A_STRONG_FOCUS : A_NONE) | (allowed ? A_ALLOW_WHEEL : A_NONE));
    QTEST(isGuarded(box), "guarded");
    QCOMPARE(box.focusPolicy() == Qt::StrongFocus, isGuarded(box));
}

void tst_wheel_guard::guardsInputsWithAValueOnly_data()
{
    QTest::addColumn<QWidget*>("widget");
    QTest::addColumn<bool>("guarded");
    QTest::newRow("spin box") << static_cast<QWidget*>(new QSpinBox) << true;
    QTest::newRow("double spin box") << static_cast<QWidget*>(new QDoubleSpinBox) << true;
    QTest::newRow("combo box") << static_cast<QWidget*>(new QComboBox) << true;
    QTest::newRow("guarded combo box")
        << static_cast<QWidget*>(new helper::FocusWheelComboBox) << true;
    QTest::newRow("check combo box") << static_cast<QWidget*>(new helper::CheckComboBox) << true;
    QTest::newRow("date") << static_cast<QWidget*>(new QDateEdit) << true;
    QTest::newRow("date and time") << static_cast<QWidget*>(new QDateTimeEdit) << true;
    QTest::newRow("text") << static_cast<QWidget*>(new QTextEdit) << false;
    QTest::newRow("slider") << static_cast<QWidget*>(new QSlider) << false;
}

void tst_wheel_guard::guardsInputsWithAValueOnly()
{
    QFETCH(QWidget*, widget);
    const std::unique_ptr<QWidget> owner(widget);
    addAttr(*widget, true, MF_WHEEL_GUARD, A_NONE);
    QTEST(isGuarded(*widget), "guarded");
}

void tst_wheel_guard::guardsOnce()
{
    QSpinBox box;
    addAttr(box, true, MF_WHEEL_GUARD, A_NONE);
    addAttr(box, true, MF_WHEEL_GUARD, A_NONE);
    QCOMPARE(box.findChildren<Guard*>().size(), 1);
}

QTEST_MAIN(tst_wheel_guard)
#include "tst_wheel_guard.moc"
