#include "tests/form/form_probe.h"

using namespace mod_form_qt;

namespace {

enum Kind { ExecDialog, OpenDialog, ShowDialog, MainWindow, OwnWindow };

enum Road { Ok, Cancel, CloseButton, Escape, WindowButton, CloseCall };

const QList<QPair<const char*, Kind>> kinds = {
    {"exec", ExecDialog},        {"open", OpenDialog},      {"show", ShowDialog},
    {"main window", MainWindow}, {"own window", OwnWindow},
};

const QList<QPair<const char*, Road>> roads = {
    {"OK", Ok},
    {"Cancel", Cancel},
    {"Close", CloseButton},
    {"Escape", Escape},
    {"window button", WindowButton},
    {"close()", CloseCall},
};

QString eventOf(Road road)
{
    switch (road) {
    case Ok:
        return "kAccept";
    case Cancel:
    case Escape:
        return "kReject";
    default:
        return "kClose";
    }
}

} // namespace

/// Ends forms of every kind on every road.
class tst_closing : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void asksOnceAndCloses_data();
    void asksOnceAndCloses();
    void staysOpenWhenRefused_data();
    void staysOpenWhenRefused();
    void rowIsAskedBeforeTheForm();
    void refusingRowKeepsTheFormFromBeingAsked();
    void invalidFieldKeepsTheFormOpen();
    void ignoresClosingsInsideAClosing_data();
    void ignoresClosingsInsideAClosing();
    void leavesEscapeToAnOpenPopup();
    void leavesReturnToTheButtons();
    void plainWidgetNeitherReactsToEscapeNorCloses();
    void acceptedMainWindowRaisesNothingMore();
    void exitCodeStandsBeforeTheWindowCloses();
    void hiddenDialogIsNotAskedAgain();
    void dialogThatItsCallbackEndsReportsItOnce_data();
    void dialogThatItsCallbackEndsReportsItOnce();
    void hideEndsARunningDialogWithCleanup();
    void cleanupComesBeforeDeletion();
    void destructorRaisesNothing();
    void activationIsReported();
    void mainRowGivenAsACopyIsAskedOnce_data();
    void mainRowGivenAsACopyIsAskedOnce();
    void filterWorksWithItsOwnData();

private:
    void run(Kind kind, const std::function<void(QWidget*)>& act);
    void go(QWidget* window, Road road);

    FormProbe m_probe;
    FormProbe m_buttons;
    QMap<QString, QVariant> m_map;
    std::unique_ptr<QMainWindow> m_ownWindow;
    QPointer<QWidget> m_window;
    std::unique_ptr<QObject> m_context;
};

void tst_closing::initTestCase()
{
    QGuiApplication::setQuitOnLastWindowClosed(false);
}

void tst_closing::init()
{
    m_probe = FormProbe();
    m_buttons = FormProbe();
    m_map.clear();
    m_context = std::make_unique<QObject>();
    endStuckModals(m_context.get());
}

void tst_closing::cleanup()
{
    m_ownWindow.reset();
    delete m_window;
    m_context.reset();
    QCOMPARE(visibleWindows(), QStringList());
}

/// Builds a form, lets \a act work on its shown window and waits for the end of its run, if it has
/// one.
void tst_closing::run(Kind kind, const std::function<void(QWidget*)>& act)
{
    const QList<INFO> rows = closableRows(m_buttons.callback());
    const Callback callback = m_probe.callback();
    if (kind == ExecDialog || kind == MainWindow) {
        onceModal(m_context.get(), [&](QWidget* window) {
            m_window = window;
            act(window);
        });
        if (kind == ExecDialog)
            INFO::createAndExecDialog(nullptr, "Form", rows, {}, {}, &m_map, nullptr, callback);
        else
            INFO::createAndExecMainWindow(nullptr, true, "Form", rows, {}, {}, &m_map, nullptr,
                                          callback);
        return;
    }
    if (kind == OwnWindow) {
        m_ownWindow = std::make_unique<QMainWindow>();
        m_window = m_ownWindow.get();
        const INFO::Result form =
            INFO::getLayout(m_window, true, "", rows, {}, {}, &m_map, nullptr, callback);
        auto* central = new QWidget;
        central->setLayout(form.layout);
        m_ownWindow->setCentralWidget(central);
        m_window->show();
    } else {
        m_window =
            INFO::createAndExecDialog(nullptr, "Form", rows, kind == OpenDialog ? MF_OPEN : MF_SHOW,
                                      {}, &m_map, nullptr, callback)
                .mainWidget;
    }
    QVERIFY(QTest::qWaitForWindowActive(m_window));
    act(m_window);
}

void tst_closing::go(QWidget* window, Road road)
{
    switch (road) {
    case Ok:
        return clickButton(m_map, "ok");
    case Cancel:
        return clickButton(m_map, "cancel");
    case CloseButton:
        return clickButton(m_map, "close");
    case Escape:
        return QTest::keyClick(INFO::lineEditByKey(&m_map, "name"), Qt::Key_Escape);
    case WindowButton:
        window->windowHandle()->close();
        return;
    case CloseCall:
        window->close();
        return;
    }
}

void tst_closing::asksOnceAndCloses_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("road");
    for (const auto& [kindName, kind] : kinds) {
        for (const auto& [roadName, road] : roads)
            QTest::addRow("%s, %s", kindName, roadName) << int(kind) << int(road);
    }
}

void tst_closing::asksOnceAndCloses()
{
    QFETCH(int, kind);
    QFETCH(int, road);
    run(Kind(kind), [&](QWidget* window) { go(window, Road(road)); });
    QTRY_VERIFY(!m_window || !m_window->isVisible());
    QTRY_VERIFY(kind == OwnWindow || !m_window);
    QCOMPARE(m_probe.closings(), QStringList({eventOf(Road(road)), "kCleanup"}));
}

void tst_closing::staysOpenWhenRefused_data()
{
    asksOnceAndCloses_data();
}

void tst_closing::staysOpenWhenRefused()
{
    QFETCH(int, kind);
    QFETCH(int, road);
    m_probe.refused = {kAccept, kReject, kClose};
    QStringList asked;
    bool visible = false;
    run(Kind(kind), [&](QWidget* window) {
        go(window, Road(road));
        QCoreApplication::processEvents();
        asked = m_probe.closings();
        visible = window->isVisible();
        m_probe.refused.clear();
        window->close();
    });
    QTRY_VERIFY(!m_window || !m_window->isVisible());
    QVERIFY(visible);
    QCOMPARE(asked, QStringList(eventOf(Road(road))));
    QTRY_COMPARE(m_probe.closings(), QStringList({eventOf(Road(road)), "kClose", "kCleanup"}));
}

void tst_closing::rowIsAskedBeforeTheForm()
{
    QStringList order;
    m_buttons.also = [&](const CallbackContext& ctx) { order << "row " + ctx.row.key; };
    m_probe.also = [&](const CallbackContext& ctx) {
        if (ctx.type == kAccept)
            order << "form " + ctx.row.key;
    };
    run(ExecDialog, [&](QWidget*) { clickButton(m_map, "ok"); });
    QCOMPARE(order.mid(0, 2), QStringList({"row ok", "form ok"}));
    QCOMPARE(m_buttons.closings(), QStringList("kAccept"));
}

void tst_closing::refusingRowKeepsTheFormFromBeingAsked()
{
    m_buttons.refused = {kAccept};
    bool visible = false;
    run(ExecDialog, [&](QWidget* window) {
        clickButton(m_map, "ok");
        visible = window->isVisible();
        clickButton(m_map, "cancel");
    });
    QVERIFY(visible);
    QCOMPARE(m_probe.closings(), QStringList({"kReject", "kCleanup"}));
}

void tst_closing::invalidFieldKeepsTheFormOpen()
{
    const QList<INFO> rows = {
        {E_LINEEDIT, A_MANDATORY, "Name", QVariant(""), "name"},
        {E_OK_BUTTON, A_NONE, "OK", {}, "ok"},
    };
    bool visible = false;
    onceModal(m_context.get(), [&](QWidget* window) {
        onceModal(m_context.get(), [&](QWidget* box) {
            QVERIFY(qobject_cast<QMessageBox*>(box));
            box->close();
        });
        clickButton(m_map, "ok");
        visible = window->isVisible();
        window->close();
    });
    const auto result = INFO::createAndExecDialog(nullptr, "Form", rows, {}, {}, &m_map, nullptr,
                                                  m_probe.callback());
    QVERIFY(visible);
    QCOMPARE(result.code, 0);
    QCOMPARE(m_probe.closings(), QStringList({"kClose", "kCleanup"}));
}

void tst_closing::ignoresClosingsInsideAClosing_data()
{
    QTest::addColumn<int>("kind");
    for (const auto& [name, kind] : kinds)
        QTest::newRow(name) << int(kind);
}

void tst_closing::ignoresClosingsInsideAClosing()
{
    QFETCH(int, kind);
    m_probe.also = [&](const CallbackContext& ctx) {
        if (ctx.type != kReject)
            return;
        ctx.mainWidget->close();
        QTest::keyClick(ctx.mainWidget, Qt::Key_Escape);
        clickButton(m_map, "ok");
        QVERIFY(ctx.mainWidget->isVisible());
    };
    run(Kind(kind), [&](QWidget*) { clickButton(m_map, "cancel"); });
    QTRY_VERIFY(!m_window || !m_window->isVisible());
    QTRY_COMPARE(m_probe.closings(), QStringList({"kReject", "kCleanup"}));
}

void tst_closing::leavesEscapeToAnOpenPopup()
{
    run(ShowDialog, [&](QWidget* window) {
        QMenu popup;
        popup.addAction("Eintrag");
        popup.popup(window->mapToGlobal(QPoint()));
        QCOMPARE(QApplication::activePopupWidget(), &popup);
        QTest::keyClick(INFO::lineEditByKey(&m_map, "name"), Qt::Key_Escape);
        popup.close();
    });
    QCOMPARE(m_probe.closings(), QStringList());
}

void tst_closing::leavesReturnToTheButtons()
{
    const QList<INFO> rows = {
        {E_LINEEDIT, A_NONE, "Name", QVariant("x"), "name"},
        {E_OK_BUTTON, A_DEFAULT_BUTTON, "OK", {}, "ok"},
    };
    onceModal(m_context.get(), [&](QWidget*) {
        QTest::keyClick(INFO::lineEditByKey(&m_map, "name"), Qt::Key_Return);
    });
    const auto result = INFO::createAndExecDialog(nullptr, "Form", rows, {}, {}, &m_map, nullptr,
                                                  m_probe.callback());
    QCOMPARE(result.code, 1);
    QCOMPARE(m_probe.closings(), QStringList({"kAccept", "kCleanup"}));
}

void tst_closing::plainWidgetNeitherReactsToEscapeNorCloses()
{
    auto* panel = new QWidget;
    m_window = panel;
    INFO::applyLayout(panel, true, "", closableRows(), {}, {}, &m_map, nullptr, m_probe.callback());
    panel->show();
    QVERIFY(QTest::qWaitForWindowExposed(panel));
    QTest::keyClick(INFO::lineEditByKey(&m_map, "name"), Qt::Key_Escape);
    QCOMPARE(m_probe.closings(), QStringList());
    clickButton(m_map, "ok");
    QCoreApplication::processEvents();
    QCOMPARE(m_probe.closings(), QStringList("kAccept"));
    QVERIFY(panel->isVisible());
    panel->deleteLater();
    QTRY_VERIFY(!m_window);
    QCOMPARE(m_probe.closings(), QStringList({"kAccept", "kCleanup"}));
}

void tst_closing::acceptedMainWindowRaisesNothingMore()
{
    run(OwnWindow, [&](QWidget* window) {
        QPointer<QPushButton> ok = INFO::pushButtonByKey(&m_map, "ok");
        ok->click();
        ok->click();
        QTest::keyClick(window, Qt::Key_Escape);
    });
    QTRY_VERIFY(!m_window->isVisible());
    m_window->close();
    QCoreApplication::processEvents();
    QCOMPARE(m_probe.closings(), QStringList({"kAccept", "kCleanup"}));
    QCOMPARE(m_window->property("mainwindow_exitcode"), QVariant(1));
}

void tst_closing::exitCodeStandsBeforeTheWindowCloses()
{
    helper::MainWnd::exitCode = -1;
    run(OwnWindow, [&](QWidget* window) {
        QVERIFY(!window->property("mainwindow_exitcode").isValid());
        QVERIFY(!window->close());
        QVERIFY(window->isVisible());
        QCOMPARE(window->property("mainwindow_exitcode"), QVariant(0));
        QCOMPARE(helper::MainWnd::exitCode, 0);
    });
    QTRY_VERIFY(!m_window->isVisible());
}

void tst_closing::hiddenDialogIsNotAskedAgain()
{
    QDialog dialog;
    INFO::applyLayout(&dialog, true, "", closableRows(), {}, {}, &m_map, nullptr,
                      m_probe.callback());
    dialog.show();
    clickButton(m_map, "ok");
    QVERIFY(!dialog.isVisible());
    dialog.close();
    QCOMPARE(m_probe.closings(), QStringList({"kAccept", "kCleanup"}));
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
}

void tst_closing::dialogThatItsCallbackEndsReportsItOnce_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<int>("code");
    QTest::newRow("accepted") << "ok" << int(QDialog::Accepted);
    QTest::newRow("rejected") << "cancel" << int(QDialog::Rejected);
    QTest::newRow("closed") << "close" << int(QDialog::Rejected);
}

void tst_closing::dialogThatItsCallbackEndsReportsItOnce()
{
    QFETCH(QString, button);
    QFETCH(int, code);
    QDialog dialog;
    for (const bool byCallback : {true, false}) {
        m_probe.also = [&](const CallbackContext& ctx) {
            const bool closing = ctx.type == kAccept || ctx.type == kReject || ctx.type == kClose;
            if (closing && byCallback)
                dialog.done(code);
        };
        INFO::applyLayout(&dialog, true, "", closableRows(), {}, {}, &m_map, nullptr,
                          m_probe.callback());
        const QSignalSpy finished(&dialog, &QDialog::finished);
        dialog.show();
        clickButton(m_map, qPrintable(button));
        QVERIFY(!dialog.isVisible());
        QCOMPARE(finished, QList<QVariantList>({{code}}));
    }
}

void tst_closing::hideEndsARunningDialogWithCleanup()
{
    run(ExecDialog, [](QWidget* window) { window->hide(); });
    QCOMPARE(m_probe.closings(), QStringList("kCleanup"));
}

void tst_closing::cleanupComesBeforeDeletion()
{
    bool fieldStands = false;
    m_probe.also = [&](const CallbackContext& ctx) {
        if (ctx.type == kCleanup)
            fieldStands = ctx.mainWidget && ctx.mainWidget->findChild<QLineEdit*>();
    };
    // Deleted while it is on screen: nobody is asked, but the form still learns of it.
    run(ShowDialog, [&](QWidget* window) { window->deleteLater(); });
    QTRY_VERIFY(!m_window);
    QVERIFY(fieldStands);
    QCOMPARE(m_probe.closings(), QStringList("kCleanup"));
}

void tst_closing::destructorRaisesNothing()
{
    run(ShowDialog, [](QWidget*) {});
    m_probe.events.clear();
    delete m_window;
    QCoreApplication::processEvents();
    QCOMPARE(m_probe.events, QStringList());
}

void tst_closing::activationIsReported()
{
    run(ShowDialog, [&](QWidget* window) {
        QCOMPARE(m_probe.events.count("kSetActive"), 1);
        QCOMPARE(m_probe.events.count("kKillActive"), 0);
        QWidget other;
        other.show();
        other.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&other));
        QTRY_COMPARE(m_probe.events.count("kKillActive"), 1);
        other.close();
        window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window));
        QTRY_COMPARE(m_probe.events.count("kSetActive"), 2);
        window->close();
    });
    QTRY_VERIFY(!m_window);
    QCOMPARE(m_probe.events.mid(m_probe.events.indexOf("kClose")),
             QStringList({"kClose", "kKillActive", "kCleanup"}));
}

void tst_closing::mainRowGivenAsACopyIsAskedOnce_data()
{
    QTest::addColumn<int>("eleType");
    QTest::newRow("dialog") << E_DIALOG;
    QTest::newRow("main window") << E_MAINWINDOW;
    QTest::newRow("widget") << E_WIDGET;
}

void tst_closing::mainRowGivenAsACopyIsAskedOnce()
{
    QFETCH(int, eleType);
    QWidget window;
    const INFO mainRow(eleType, A_NONE, "Form", {}, {}, m_probe.callback());
    const INFO copy = mainRow;
    QVERIFY(INFO::canClose(&window, &window, kClose, copy, mainRow, &m_map, {}));
    QCOMPARE(m_probe.closings(), QStringList("kClose"));

    QWidget field;
    const INFO row(E_WIDGET, A_NONE, "", static_cast<QObject*>(&field), {}, m_buttons.callback());
    QVERIFY(INFO::canClose(&window, &field, kClose, row, mainRow, &m_map, {}));
    QCOMPARE(m_buttons.closings(), QStringList("kClose"));
    // Without a map only the form itself is asked.
    QVERIFY(INFO::canClose(&window, &field, kClose, row, mainRow, nullptr, {}));
    QCOMPARE(m_buttons.closings(), QStringList("kClose"));
    QCOMPARE(m_probe.closings(), QStringList({"kClose", "kClose", "kClose"}));
}

void tst_closing::filterWorksWithItsOwnData()
{
    QDialog dialog;
    auto* filter = new INFO::UserEventFilter(&dialog);
    filter->setEventData(&m_map, {}, INFO(E_DIALOG, A_NONE, "", {}, {}, m_probe.callback()),
                         &dialog, false, {});
    dialog.installEventFilter(filter);
    dialog.show();
    m_probe.refused = {kClose};
    QVERIFY(!dialog.close());
    m_probe.refused.clear();
    QVERIFY(dialog.close());
    QCOMPARE(m_probe.closings(), QStringList({"kClose", "kClose", "kCleanup"}));
}

QTEST_MAIN(tst_closing)
#include "tst_closing.moc"
