#include "tests/form/form_probe.h"

#include <QScrollArea>
#include <QScrollBar>
#include <QtTest/qtestspontaneevent.h>
#include <QWheelEvent>

using namespace mod_form_qt;

namespace {

/// As a mouse does it: an event of the program's own would not go on to the parents.
void turnWheelDown(QWidget* widget)
{
    const QPointF at = widget->rect().center();
    QWheelEvent event(at, widget->mapToGlobal(at), QPoint(), QPoint(0, -120), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&event);
    qApp->notify(widget, &event);
}

QList<INFO> standardRows()
{
    return {
        {E_LINEEDIT, A_NONE, "Name", QVariant(""), "name"},
        {E_LAYOUT_H},
        {E_OK_BUTTON},
        {E_CANCEL_BUTTON},
        {E_CLOSE_BUTTON},
        {E_HELP_BUTTON},
        {E_LAYOUT_END},
    };
}

} // namespace

/// The form inside a dialog that is derived from: its map, its widgets, its layout.
class tst_dialog_form : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void knowsItsStandardButtons();
    void missingButtonsAreNull();
    void looksUpItsWidgets();
    void keepsAMapOfTheEngine();
    void carriesThePayloadToTheCallbacks();
    void installsTheLayout();
    void mainRowsOfTheEntryPoints();
    void wheelOverAnUnfocusedSpinBoxScrollsTheParent();

private:
    QMap<QString, QVariant> m_map;
    std::unique_ptr<QObject> m_context;
};

void tst_dialog_form::initTestCase()
{
    QGuiApplication::setQuitOnLastWindowClosed(false);
}

void tst_dialog_form::init()
{
    m_map.clear();
    m_context = std::make_unique<QObject>();
    endStuckModals(m_context.get());
}

void tst_dialog_form::cleanup()
{
    m_context.reset();
    QCOMPARE(visibleWindows(), QStringList());
}

void tst_dialog_form::knowsItsStandardButtons()
{
    DialogBase dialog;
    QVERIFY(!dialog.okButton());
    dialog.applyLayout(true, "Form", standardRows(), {}, {}, &m_map);
    QCOMPARE(dialog.okButton()->text(), QString("OK"));
    QCOMPARE(dialog.cancelButton()->text(), QString("Abbrechen"));
    QCOMPARE(dialog.closeButton()->text(), QString("Beenden"));
    QCOMPARE(dialog.helpButton()->text(), QString("Hilfe"));
}

void tst_dialog_form::missingButtonsAreNull()
{
    DialogBase dialog;
    dialog.applyLayout(true, "Form", {{E_LINEEDIT, A_NONE, "Name", QVariant(""), "name"}}, {}, {},
                       &m_map);
    QVERIFY(!dialog.okButton());
    QVERIFY(!dialog.helpButton());
}

void tst_dialog_form::looksUpItsWidgets()
{
    QVariant text = "x";
    T_LISTDATA list = {{"Eins", true, 1, {}}};
    DialogBase dialog;
    dialog.applyLayout(true, "Form",
                       {{E_LINEEDIT, A_NONE, "Text", &text, "text"},
                        {E_COMBOBOX, A_NONE, "Liste", &list, "list"},
                        {E_CHECKBOX, A_NONE, "Haken", QVariant(true), 17}},
                       {}, {}, &m_map);
    QCOMPARE(dialog.map(), &m_map);
    QLineEdit* edit = dialog.lineEditByKey("text");
    QVERIFY(edit);
    QCOMPARE(dialog.lineEditByVar(QVariant::fromValue(&text)), edit);
    QCOMPARE(dialog.widgetFromVariantPtr<QLineEdit>(QVariant::fromValue(&text)), edit);
    QCOMPARE(dialog.comboBoxByVar(list), dialog.comboBoxByKey("list"));
    QVERIFY(dialog.comboBoxByKey("list"));
    QCOMPARE(dialog.checkBoxByKey(17)->text(), QString("Haken"));
    QPointer<QWidget> label;
    dialog.lineEditByKey("text", E_LINEEDIT, FIND_POS_ANY, &label);
    QCOMPARE(qobject_cast<QLabel*>(label)->text(), QString("Text"));
    QVERIFY(!dialog.spinBoxByKey("text"));
    QVERIFY(!DialogBase().lineEditByKey("text"));
}

void tst_dialog_form::keepsAMapOfTheEngine()
{
    DialogBase dialog;
    dialog.applyLayout(true, "Form", standardRows());
    QVERIFY(dialog.map());
    QTest::keyClicks(dialog.lineEditByKey("name"), "ab");
    QCOMPARE(dialog.map()->value("name"), QVariant("ab"));
}

void tst_dialog_form::carriesThePayloadToTheCallbacks()
{
    class Payload : public DialogBase
    {
    public:
        int number = 0;
        QVariant user;

    private:
        void setupWindow(const CallbackContext& ctx) override
        {
            number = std::any_cast<int>(ctx.row.anyData);
            user = ctx.row.userData;
        }
    };

    Payload dialog;
    dialog.applyLayout(true, "Form", standardRows(), {}, {}, &m_map, nullptr, 42, "wert");
    QCOMPARE(dialog.number, 42);
    QCOMPARE(dialog.user, QVariant("wert"));
}

void tst_dialog_form::installsTheLayout()
{
    DialogBase dialog;
    const INFO::Result result = dialog.applyLayout(true, "Titel", standardRows(), {}, {}, &m_map);
    QCOMPARE(result.code, 1);
    QCOMPARE(result.mainWidget.data(), &dialog);
    QCOMPARE(dialog.layout(), result.layout.data());
    QVERIFY(dialog.layout());
    QVERIFY(!dialog.isVisible());
}

void tst_dialog_form::mainRowsOfTheEntryPoints()
{
    QWidget panel;
    QList<int> types;
    QStringList keys;
    const Callback callback = ContextCallback([&](const CallbackContext& ctx) {
        if (ctx.type == kInit) {
            types << ctx.row.eleType;
            keys << ctx.row.key;
        }
        return 1;
    });
    delete INFO::createAndExecDialog(nullptr, "", {}, MF_SHOW, {}, &m_map, nullptr, callback)
        .mainWidget;
    onceModal(m_context.get(), [](QWidget* window) { window->close(); });
    INFO::createAndExecMainWindow(nullptr, true, "", {}, {}, {}, &m_map, nullptr, callback);
    INFO::applyLayout(&panel, true, "", {}, {}, {}, &m_map, nullptr, callback);
    QWidget other;
    delete INFO::getLayout(&other, true, "", {}, {}, {}, &m_map, nullptr, callback).layout;
    QVERIFY(!other.layout());
    QCOMPARE(types, QList<int>({E_DIALOG, E_MAINWINDOW, E_WIDGET, E_WIDGET}));
    QCOMPARE(keys, QStringList({"", "", "", ""}));
}

void tst_dialog_form::wheelOverAnUnfocusedSpinBoxScrollsTheParent()
{
    const QVariantMap spin = {{"title", "Zahl"}, {"spinbox", true}};
    const QList<INFO> rows = {
        {E_LINEEDIT, A_NONE, "Text", QVariant(""), "text"},
        {E_NUMBER, A_NONE, spin, QVariant(5), "number"},
        {E_VSPACER, A_NONE, "", QVariant(2000)},
    };
    DialogBase dialog;
    dialog.applyLayout(true, "Form", rows, MF_WHEEL_GUARD | MF_SCROLLAREA, {}, &m_map);
    dialog.resize(300, 200);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    QSpinBox* box = dialog.spinBoxByKey("number");
    dialog.lineEditByKey("text")->setFocus();
    auto* area = dialog.findChild<QScrollArea*>();
    QVERIFY(area);
    const int before = area->verticalScrollBar()->value();
    turnWheelDown(box);
    QTRY_VERIFY(area->verticalScrollBar()->value() > before);
    QCOMPARE(box->value(), 5);

    area->verticalScrollBar()->setValue(0);
    box->setFocus();
    turnWheelDown(box);
    QTRY_COMPARE(box->value(), 4);
}

QTEST_MAIN(tst_dialog_form)
#include "tst_dialog_form.moc"
