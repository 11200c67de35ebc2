#include "tests/form/form_probe.h"

using namespace mod_form_qt;

namespace {

/// Notes the calls of its operations and the signals, in order.
class Listening : public DialogBase
{
public:
    QStringList log;
    int answer = 1;

    Listening()
    {
        connect(this, &DialogBase::signalCallback, this, [this](const CallbackContext& ctx) {
            // Activation comes and goes with the windows of the test.
            if (ctx.type != kSetActive && ctx.type != kKillActive)
                log << "signalCallback " + callbackTypeNames.value(ctx.type);
        });
        note(&DialogBase::signalAccepted, "signalAccepted");
        note(&DialogBase::signalRejected, "signalRejected");
        note(&DialogBase::signalClosed, "signalClosed");
        note(&DialogBase::signalHelp, "signalHelp");
        note(&DialogBase::signalDestroyed, "signalDestroyed");
    }

protected:
    int said(const char* operation)
    {
        log << operation;
        return answer;
    }

private:
    void note(void (DialogBase::*signal)(const CallbackContext&), const char* name)
    {
        connect(this, signal, this, [this, name](const CallbackContext&) { log << name; });
    }
};

class WithAccept : public Listening
{
    int onAccept(const CallbackContext&) override { return said("onAccept"); }

    int validateAndStore(const CallbackContext&) override { return said("validateAndStore"); }
};

class WithStore : public Listening
{
    int validateAndStore(const CallbackContext&) override { return said("validateAndStore"); }
};

/// Counts as an override although it does what the base does.
class WithBaseAccept : public WithStore
{
    int onAccept(const CallbackContext& ctx) override
    {
        log << "onAccept";
        return DialogBase::onAccept(ctx);
    }
};

class WithReject : public Listening
{
    int onReject(const CallbackContext&) override { return said("onReject"); }
};

class WithClose : public Listening
{
    int onClose(const CallbackContext&) override { return said("onClose"); }
};

class WithCallback : public Listening
{
    int processCallback(const CallbackContext& ctx) override
    {
        if (ctx.type == kSetActive || ctx.type == kKillActive)
            return 1;
        log << "processCallback " + callbackTypeNames.value(ctx.type);
        return answer;
    }
};

class WithTheRest : public Listening
{
    void setupWindow(const CallbackContext& ctx) override
    {
        log << "setupWindow";
        QCOMPARE(ctx.type, kInit);
        QVERIFY(okButton());
        QVERIFY(lineEditByKey("name"));
    }

    void cleanupWindow(const CallbackContext&) override { log << "cleanupWindow"; }

    void onHelp(const CallbackContext&) override { log << "onHelp"; }
};

QList<INFO> standardRows(const std::bitset<256>& attr = A_NONE)
{
    return {
        {E_LINEEDIT, attr, "Name", QVariant(""), "name"},
        {E_LAYOUT_H},
        {E_OK_BUTTON},
        {E_CANCEL_BUTTON},
        {E_CLOSE_BUTTON},
        {E_HELP_BUTTON},
        {E_LAYOUT_END},
    };
}

const char* buttonKey(int eleType)
{
    static const QMap<int, QByteArray> keys = {
        {E_OK_BUTTON, INFO::objectOKButtonName.toUtf8()},
        {E_CANCEL_BUTTON, INFO::objectCancelButtonName.toUtf8()},
        {E_CLOSE_BUTTON, INFO::objectCloseButtonName.toUtf8()},
        {E_HELP_BUTTON, INFO::objectHelpButtonName.toUtf8()},
    };
    return keys.constFind(eleType)->constData();
}

std::unique_ptr<Listening> make(const QString& which)
{
    if (which == "accept")
        return std::make_unique<WithAccept>();
    if (which == "store")
        return std::make_unique<WithStore>();
    if (which == "reject")
        return std::make_unique<WithReject>();
    return std::make_unique<WithClose>();
}

} // namespace

/// The dialogs that applications derive from.
class tst_dialog_base : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void withoutOverridesOkValidatesSignalsAndCloses();
    void endsByButton_data();
    void endsByButton();
    void overrideAgrees_data();
    void overrideAgrees();
    void overrideRefuses_data();
    void overrideRefuses();
    void overrideThatCallsTheBaseCounts();
    void helpIsSignalledAfterTheCallback();
    void refusedCallbackSilencesTheSignals();
    void otherEventsAreSignalled();
    void setupAndCleanupEncloseTheRun();
    void destructorCallsNothingBack();

private:
    /// Runs a dialog, clicks \a button in it, notes whether it stayed, and closes it.
    int click(Listening& dialog, const QList<INFO>& rows, const char* button);

    QMap<QString, QVariant> m_map;
    QStringList m_log; // of the dialog, up to the click's end
    bool m_stayed = false;
    std::unique_ptr<QObject> m_context;
};

void tst_dialog_base::initTestCase()
{
    QGuiApplication::setQuitOnLastWindowClosed(false);
}

void tst_dialog_base::init()
{
    m_map.clear();
    m_context = std::make_unique<QObject>();
    endStuckModals(m_context.get());
}

void tst_dialog_base::cleanup()
{
    m_context.reset();
    QCOMPARE(visibleWindows(), QStringList());
}

int tst_dialog_base::click(Listening& dialog, const QList<INFO>& rows, const char* button)
{
    onceModal(m_context.get(), [&](QWidget* window) {
        dialog.log.clear();
        clickButton(m_map, button);
        m_stayed = window->isVisible();
        m_log = dialog.log;
        dialog.answer = 1;
        dialog.done(5);
    });
    return dialog.applyLayoutAndStart(true, "Form", rows, {}, {}, &m_map);
}

void tst_dialog_base::withoutOverridesOkValidatesSignalsAndCloses()
{
    Listening dialog;
    int messages = 0;
    onceModal(m_context.get(), [&](QWidget* window) {
        onceModal(m_context.get(), [&](QWidget* box) {
            ++messages;
            box->close();
        });
        clickButton(m_map, buttonKey(E_OK_BUTTON));
        QVERIFY(window->isVisible());
        QCOMPARE(dialog.log.filter("Accepted"), QStringList());
        QTest::keyClicks(INFO::lineEditByKey(&m_map, "name"), "da");
        clickButton(m_map, buttonKey(E_OK_BUTTON));
    });
    const int code =
        dialog.applyLayoutAndStart(true, "Form", standardRows(A_MANDATORY), {}, {}, &m_map);
    QCOMPARE(messages, 1);
    QCOMPARE(code, int(QDialog::Accepted));
    QCOMPARE(dialog.log.count("signalAccepted"), 1);
    QCOMPARE(dialog.log.count("signalDestroyed"), 1);
}

void tst_dialog_base::endsByButton_data()
{
    QTest::addColumn<int>("button");
    QTest::addColumn<QString>("signal");
    QTest::addColumn<int>("code");
    QTest::newRow("OK") << E_OK_BUTTON << "signalAccepted" << 1;
    QTest::newRow("Cancel") << E_CANCEL_BUTTON << "signalRejected" << 0;
    QTest::newRow("Close") << E_CLOSE_BUTTON << "signalClosed" << 0;
}

void tst_dialog_base::endsByButton()
{
    QFETCH(int, button);
    QFETCH(QString, signal);
    Listening dialog;
    onceModal(m_context.get(), [&](QWidget*) {
        dialog.log.clear();
        clickButton(m_map, buttonKey(button));
    });
    QTEST(dialog.applyLayoutAndStart(true, "Form", standardRows(), {}, {}, &m_map), "code");
    const QStringList ends = dialog.log.filter(QRegularExpression("Accep|Rejec|Closed|Destr"));
    QCOMPARE(ends, QStringList({signal, "signalDestroyed"}));
}

void tst_dialog_base::overrideAgrees_data()
{
    QTest::addColumn<QString>("which");
    QTest::addColumn<int>("button");
    QTest::addColumn<QStringList>("log");
    QTest::newRow("onAccept takes over")
        << "accept" << E_OK_BUTTON << QStringList {"onAccept", "signalAccepted"};
    QTest::newRow("validateAndStore")
        << "store" << E_OK_BUTTON << QStringList {"validateAndStore", "signalAccepted"};
    QTest::newRow("onReject") << "reject" << E_CANCEL_BUTTON
                              << QStringList {"onReject", "signalRejected"};
    QTest::newRow("onClose") << "close" << E_CLOSE_BUTTON
                             << QStringList {"onClose", "signalClosed"};
}

void tst_dialog_base::overrideAgrees()
{
    QFETCH(QString, which);
    QFETCH(int, button);
    QFETCH(QStringList, log);
    const auto dialog = make(which);
    click(*dialog, standardRows(), buttonKey(button));
    QVERIFY(!m_stayed);
    QCOMPARE(m_log.mid(0, 2), log);
}

void tst_dialog_base::overrideRefuses_data()
{
    overrideAgrees_data();
}

void tst_dialog_base::overrideRefuses()
{
    QFETCH(QString, which);
    QFETCH(int, button);
    QFETCH(QStringList, log);
    const auto dialog = make(which);
    dialog->answer = 0;
    click(*dialog, standardRows(), buttonKey(button));
    QVERIFY(m_stayed);
    QCOMPARE(m_log, log.mid(0, 1)); // and no signal
}

void tst_dialog_base::overrideThatCallsTheBaseCounts()
{
    WithBaseAccept dialog;
    click(dialog, standardRows(), buttonKey(E_OK_BUTTON));
    QCOMPARE(m_log.mid(0, 2), QStringList({"onAccept", "signalAccepted"}));
}

void tst_dialog_base::helpIsSignalledAfterTheCallback()
{
    Listening plain;
    click(plain, standardRows(), buttonKey(E_HELP_BUTTON));
    QVERIFY(m_stayed);
    QCOMPARE(m_log, QStringList({"signalCallback kAfterAction", "signalHelp"}));

    WithTheRest helping;
    click(helping, standardRows(), buttonKey(E_HELP_BUTTON));
    QCOMPARE(m_log, QStringList({"signalCallback kAfterAction", "onHelp", "signalHelp"}));
}

void tst_dialog_base::refusedCallbackSilencesTheSignals()
{
    WithCallback dialog;
    dialog.answer = 0;
    click(dialog, standardRows(), buttonKey(E_HELP_BUTTON));
    QCOMPARE(m_log, QStringList("processCallback kAfterAction"));

    WithCallback agreeing;
    click(agreeing, standardRows(), buttonKey(E_HELP_BUTTON));
    QCOMPARE(
        m_log,
        QStringList({"processCallback kAfterAction", "signalCallback kAfterAction", "signalHelp"}));
}

void tst_dialog_base::otherEventsAreSignalled()
{
    Listening dialog;
    dialog.applyLayout(true, "Form", standardRows(), {}, {}, &m_map);
    QTest::keyClicks(dialog.lineEditByKey("name"), "a");
    QCOMPARE(dialog.log, QStringList("signalCallback kAfterDataChanged"));
}

void tst_dialog_base::setupAndCleanupEncloseTheRun()
{
    WithTheRest dialog;
    onceModal(m_context.get(), [&](QWidget*) {
        QCOMPARE(dialog.log.value(0), QString("setupWindow"));
        clickButton(m_map, buttonKey(E_CANCEL_BUTTON));
    });
    dialog.applyLayoutAndStart(true, "Form", standardRows(), {}, {}, &m_map);
    QCOMPARE(dialog.log.count("setupWindow"), 1);
    QCOMPARE(dialog.log.count("cleanupWindow"), 1);
    QVERIFY(dialog.log.indexOf("signalRejected") < dialog.log.indexOf("cleanupWindow"));
    QCOMPARE(dialog.log.indexOf("signalDestroyed"), dialog.log.indexOf("cleanupWindow") + 1);
}

void tst_dialog_base::destructorCallsNothingBack()
{
    auto dialog = std::make_unique<Listening>();
    QStringList after;
    connect(dialog.get(), &DialogBase::signalCallback, m_context.get(),
            [&](const CallbackContext& ctx) { after << callbackTypeNames.value(ctx.type); });
    connect(dialog.get(), &DialogBase::signalDestroyed, m_context.get(),
            [&](const CallbackContext&) { after << "destroyed"; });
    dialog->applyLayout(true, "Form", standardRows(), {}, {}, &m_map);
    dialog->show();
    QVERIFY(QTest::qWaitForWindowActive(dialog.get()));
    QTest::keyClicks(dialog->lineEditByKey("name"), "a");
    after.clear();
    dialog.reset();
    QCoreApplication::processEvents();
    QCOMPARE(after, QStringList());
}

QTEST_MAIN(tst_dialog_base)
#include "tst_dialog_base.moc"
