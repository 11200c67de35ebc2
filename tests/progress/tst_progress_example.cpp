#include "tests/progress/progress_fixture.h"

using namespace mod_progress_qt;

namespace {

/// Notes the titles of the dialogs and what their labels and squares have shown.
class Observer : public QObject
{
public:
    Observer()
    {
        connect(&m_timer, &QTimer::timeout, this, &Observer::look);
        m_timer.start(1);
        qApp->installEventFilter(this);
    }

    bool eventFilter(QObject* /*object*/, QEvent* event) override
    {
        // The loop on the GUI thread lets the timer come seldom.
        if (event->type() == QEvent::Paint)
            look();
        return false;
    }

    QStringList titles;
    QSet<QString> texts;
    bool escape = false;

private:
    void look()
    {
        for (const QPointer<ProgressDialog>& dialog : ProgressDialog::all()) {
            if (!dialog)
                continue;
            if (!titles.contains(dialog->windowTitle()))
                titles << dialog->windowTitle();
            for (const QString& text : labelsOf(*dialog))
                texts << text;
            if (escape && dialog->isVisible())
                QTest::keyClick(dialog.data(), Qt::Key_Escape);
        }
        if (StatusUpdate::label)
            texts << StatusUpdate::label->text();
    }

    QTimer m_timer;
};

const QStringList kTitles {"A function on a thread", "A worker of its own class",
                           "A loop on the GUI thread"};

} // namespace

class tst_progress_example : public QObject
{
    Q_OBJECT

private slots:
    void showsTheThreeUses_data();
    void showsTheThreeUses();
    void canBeAborted();
};

void tst_progress_example::showsTheThreeUses_data()
{
    QTest::addColumn<bool>("useStatusBar");
    QTest::newRow("dialogs") << false;
    QTest::newRow("status bar") << true;
}

void tst_progress_example::showsTheThreeUses()
{
    QFETCH(bool, useStatusBar);
    StatusWindow window;
    Observer observer;
    ProgressDialog::Example(&window, useStatusBar, false, 0);
    QCOMPARE(observer.titles, kTitles);
    QVERIFY(observer.texts.contains("invoice_001.pdf"));
    QCOMPARE(window.label->text() != "ready", useStatusBar);
    settle();
    QVERIFY(ProgressDialog::all().isEmpty());
    QVERIFY(window.isEnabled());
}

void tst_progress_example::canBeAborted()
{
    StatusWindow window;
    Observer observer;
    observer.escape = true;
    ProgressDialog::Example(&window, false, false, 0);
    QCOMPARE(observer.titles, kTitles);
    settle();
    QVERIFY(ProgressDialog::all().isEmpty());
    QVERIFY(window.isEnabled());
}

QTEST_MAIN(tst_progress_example)
#include "tst_progress_example.moc"
