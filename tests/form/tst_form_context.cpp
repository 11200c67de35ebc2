#include "form/events/form_context.h"

using namespace mod_form_qt;

namespace {

/// Stands for a handler of a form: notes what the flag says when a child of the window dies.
class DyingChild : public QWidget
{
public:
    DyingChild(QWidget* parent, bool& armedAtTheEnd)
        : QWidget(parent)
        , m_armed(formArmed(parent))
        , m_armedAtTheEnd(armedAtTheEnd)
    {
    }

    ~DyingChild() override { m_armedAtTheEnd = *m_armed; }

    Q_DISABLE_COPY_MOVE(DyingChild)

private:
    std::shared_ptr<bool> m_armed;
    bool& m_armedAtTheEnd;
};

INFO someRow()
{
    INFO row;
    row.eleType = E_DIALOG;
    row.key = QStringLiteral("fenster");
    row.param = QStringLiteral("Titel");
    return row;
}

} // namespace

class tst_form_context : public QObject
{
    Q_OBJECT

private slots:
    void formsOfOneWidgetShareAFlag();
    void aFlagOutlivesItsWidget();
    void thereIsNoFlagWithoutAWidget();
    void aContextWithoutAFlagIsLive();
    void aDialogKeepsItsForm();
    void aMainWindowKeepsItsForm();
    void theRowOfAWindowIsACopy();
    void childrenOutliveTheFormOfADialog();
    void childrenOutliveTheFormOfAMainWindow();
    void noMainWindowHasEndedYet();
};

void tst_form_context::formsOfOneWidgetShareAFlag()
{
    QWidget one;
    QWidget other;
    const std::shared_ptr<bool> first = formArmed(&one);
    QVERIFY(*first);
    QCOMPARE(formArmed(&one), first);
    QVERIFY(formArmed(&other) != first);

    disarmForm(&one);
    QVERIFY(!*first);
    QVERIFY(!*formArmed(&one));
    QVERIFY(*formArmed(&other));
}

void tst_form_context::aFlagOutlivesItsWidget()
{
    auto widget = std::make_unique<QWidget>();
    const std::shared_ptr<bool> armed = formArmed(widget.get());
    disarmForm(widget.get());
    widget.reset();
    QVERIFY(!*armed);
}

void tst_form_context::thereIsNoFlagWithoutAWidget()
{
    QCOMPARE(formArmed(nullptr), nullptr);
    disarmForm(nullptr);

    // Nothing to disarm: the widget holds no form, and a later one starts armed.
    QWidget widget;
    disarmForm(&widget);
    QVERIFY(*formArmed(&widget));
}

void tst_form_context::aContextWithoutAFlagIsLive()
{
    FormContext form;
    QVERIFY(form.live());
    QWidget widget;
    form.armed = formArmed(&widget);
    QVERIFY(form.live());
    disarmForm(&widget);
    QVERIFY(!form.live());
}

void tst_form_context::aDialogKeepsItsForm()
{
    QMap<QString, QVariant> map;
    QWidget parent;
    const auto flags = INFO::MainFlags(MF_EXEC).setFlag(MF_MODAL);
    helper::Dialog dialog(flags, someRow(), &map, &parent, F_DIALOG_TITLE_MINMAX_CLOSE);
    QCOMPARE(WIDGET_INFO::type(&dialog), E_DIALOG);
    QCOMPARE(dialog.mainFlags(), flags);
    QCOMPARE(dialog.mainRow().key, "fenster");
    QCOMPARE(dialog.map(), &map);
    QCOMPARE(dialog.window(), &dialog);
    QCOMPARE(static_cast<helper::MainWidgetBase&>(dialog).window(), &dialog);
    QCOMPARE(dialog.parentWidget(), &parent);
    QCOMPARE(dialog.windowFlags() & F_DIALOG_TITLE_MINMAX_CLOSE, F_DIALOG_TITLE_MINMAX_CLOSE);
}

void tst_form_context::aMainWindowKeepsItsForm()
{
    QMap<QString, QVariant> map;
    helper::MainWnd window(INFO::MainFlags(MF_SHOW), someRow(), &map, nullptr,
                           F_DIALOG_TITLE_MINMAX);
    QCOMPARE(WIDGET_INFO::type(&window), E_MAINWINDOW);
    QCOMPARE(window.mainFlags(), INFO::MainFlags(MF_SHOW));
    QCOMPARE(window.mainRow().param, QVariant("Titel"));
    QCOMPARE(window.map(), &map);
    QCOMPARE(static_cast<helper::MainWidgetBase&>(window).window(), &window);
    QCOMPARE(window.windowFlags() & F_DIALOG_TITLE_MINMAX, F_DIALOG_TITLE_MINMAX);
}

void tst_form_context::theRowOfAWindowIsACopy()
{
    INFO row = someRow();
    const helper::Dialog dialog({}, row, nullptr, nullptr, {});
    row.key.clear();
    QCOMPARE(dialog.mainRow().key, "fenster");
}

void tst_form_context::childrenOutliveTheFormOfADialog()
{
    bool armed = true;
    {
        helper::Dialog dialog({}, someRow(), nullptr, nullptr, {});
        new DyingChild(&dialog, armed);
    }
    QVERIFY(!armed);
}

void tst_form_context::childrenOutliveTheFormOfAMainWindow()
{
    bool armed = true;
    {
        helper::MainWnd window({}, someRow(), nullptr, nullptr, {});
        new DyingChild(&window, armed);
    }
    QVERIFY(!armed);
}

void tst_form_context::noMainWindowHasEndedYet()
{
    QCOMPARE(helper::MainWnd::exitCode, -1);
}

QTEST_MAIN(tst_form_context)
#include "tst_form_context.moc"
