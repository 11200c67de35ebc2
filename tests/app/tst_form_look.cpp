#include "tests/app/form_page.h"
#include "tests/app/run_fixture.h"
#include "tests/support/app_test.h"

#include <QAccessible>
#include <QGroupBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QToolBar>
#include <QVBoxLayout>

/// How the window looks, and what a screen reader finds in it.
class tst_form_look : public QObject
{
    Q_OBJECT

public:
    explicit tst_form_look(const StartFolder& folder)
        : m_fixture(folder)
    {
    }

private slots:
    void init();

    void showsTheWholeFormWhereTheScreenAllowsIt();
    void givesWhatIsLeftToTheLog();
    void scrollsTheFormInASmallWindow();
    void followsTheFormWhenAGroupIsHidden();
    void standsInTheOrderFormStatusLogCounter();
    void walksTheFieldsInTheirOrder();
    void namesEveryFieldForAScreenReader();
    void readsStatusAndCounterOut();
    void showsNoEmptyToolBar();
    void isAFixedFormInAWindowWithAllButtons();

private:
    /// True once a larger size has been laid out.
    bool showsWholeForm() const
    {
        return m_fixture.window->centralWidget()->width() > area()->widget()->width()
            && !area()->horizontalScrollBar()->isVisible()
            && !area()->verticalScrollBar()->isVisible()
            && area()->height() == area()->widget()->height();
    }

    QScrollArea* area() const { return m_fixture.window->findChild<QScrollArea*>(); }

    RunFixture m_fixture;
};

void tst_form_look::init()
{
    m_fixture.start({{QStringLiteral("mainurl"), QString()}});
    m_fixture.window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_fixture.window.get()));
}

void tst_form_look::showsTheWholeFormWhereTheScreenAllowsIt()
{
    const MainWindow& window = *m_fixture.window;
    const QSize screen = window.screen()->availableSize();
    QVERIFY(window.width() <= screen.width());
    QVERIFY(window.height() <= screen.height());
    // The offscreen screen is 800 x 800, narrower than the form.
    m_fixture.window->resize(1600, 1200);
    QTRY_VERIFY(showsWholeForm());
}

void tst_form_look::givesWhatIsLeftToTheLog()
{
    m_fixture.window->resize(1600, 1000);
    QTRY_VERIFY(showsWholeForm());
    QCoreApplication::processEvents(); // what was asked of the layout on the way
    const int log = m_fixture.window->logEdit->height();
    const int form = area()->height();
    m_fixture.window->resize(1600, 1200);
    QTRY_COMPARE(m_fixture.window->logEdit->height(), log + 200);
    QCOMPARE(area()->height(), form);
}

void tst_form_look::scrollsTheFormInASmallWindow()
{
    m_fixture.window->resize(700, 400);
    QTRY_VERIFY(area()->verticalScrollBar()->isVisible());
    QVERIFY(area()->horizontalScrollBar()->isVisible());
    QVERIFY(m_fixture.window->logEdit->height()
            >= 3 * m_fixture.window->logEdit->fontMetrics().height());
    // What gets the focus by keyboard comes into sight.
    QLineEdit* last = FormPage(*m_fixture.window).line("gm_buchungs_text_versand");
    last->setFocus(Qt::TabFocusReason);
    area()->ensureWidgetVisible(last);
    QVERIFY(!last->visibleRegion().isEmpty());
}

void tst_form_look::followsTheFormWhenAGroupIsHidden()
{
    m_fixture.window->resize(1600, 1200);
    QTRY_VERIFY(showsWholeForm());
    const int before = area()->height();
    QGroupBox* server = nullptr;
    const auto boxes = m_fixture.window->findChildren<QGroupBox*>();
    for (QGroupBox* box : boxes) {
        if (box->isCheckable())
            server = box;
    }
    QVERIFY(server);
    server->setFocus();
    QTest::keyClick(server, Qt::Key_Space);
    QVERIFY(!FormPage(*m_fixture.window).line("mainurl")->isVisible());
    QTRY_VERIFY(area()->height() < before);
    QTRY_COMPARE(area()->height(), area()->widget()->height());
    QTest::keyClick(server, Qt::Key_Space);
    QTRY_COMPARE(area()->height(), before);
}

void tst_form_look::standsInTheOrderFormStatusLogCounter()
{
    const auto* layout = qobject_cast<QVBoxLayout*>(m_fixture.window->centralWidget()->layout());
    QVERIFY(layout);
    QCOMPARE(layout->count(), 4);
    QCOMPARE(layout->itemAt(0)->layout()->itemAt(0)->widget(), area());
    QCOMPARE(layout->itemAt(1)->widget(), m_fixture.window->statusLabel.data());
    QCOMPARE(layout->itemAt(2)->widget(), m_fixture.window->logEdit.data());
    QCOMPARE(layout->itemAt(3)->widget(), m_fixture.window->progressLabel.data());
    QVERIFY(m_fixture.window->logEdit->isReadOnly());
    QCOMPARE(m_fixture.window->progressLabel->textFormat(), Qt::PlainText);
}

void tst_form_look::walksTheFieldsInTheirOrder()
{
    const FormPage form(*m_fixture.window);
    QList<QWidget*> expected = {form.line("mainurl"),
                                form.line("api_key_chain"),
                                form.line("api_secret_chain"),
                                form.check("date_filter_use"),
                                form.date("date_filter_after"),
                                form.date("date_filter_before"),
                                form.check("id_cache_use"),
                                form.button(QStringLiteral("Löschen")),
                                form.check("germanized_use"),
                                form.line("germanized_pdf_folder"),
                                form.check("germanized_overwrite_pdf"),
                                form.line("buchungs_text_erloes"),
                                form.line("gm_buchungs_text_erloes"),
                                form.line("buchungs_text_gebuehr"),
                                form.line("gm_buchungs_text_gebuehr"),
                                form.line("buchungs_text_versand"),
                                form.line("gm_buchungs_text_versand"),
                                form.check("paypal_use"),
                                form.check("woocommerce_use"),
                                form.check("customers_create"),
                                form.button(QStringLiteral("'Zahlmethode (kurz)' bearbeiten")),
                                form.combo("belegdatum"),
                                form.combo("b2c_handling"),
                                form.combo("kostenstelle1"),
                                form.combo("kostenstelle2"),
                                form.combo("skr"),
                                form.combo("buchungs_typ"),
                                form.number("buchungs_konto"),
                                form.button(QStringLiteral("Daten vom Server abrufen")),
                                form.button(QStringLiteral("Anhalten")),
                                form.button(QStringLiteral("Hilfe")),
                                form.button(QStringLiteral("Import starten")),
                                form.button(QStringLiteral("Abbrechen und Beenden")),
                                m_fixture.window->logEdit};
    QVERIFY(!expected.contains(nullptr));
    QList<QWidget*> walked;
    QWidget* widget = expected.first();
    do {
        if (expected.contains(widget))
            walked.append(widget);
        widget = widget->nextInFocusChain();
    } while (widget != expected.first());
    QCOMPARE(walked, expected);
}

void tst_form_look::namesEveryFieldForAScreenReader()
{
    const auto widgets = m_fixture.window->centralWidget()->findChildren<QWidget*>();
    int fields = 0;
    for (QWidget* widget : widgets) {
        if (widget->focusPolicy() == Qt::NoFocus || !widget->isVisible()
            || qobject_cast<QScrollArea*>(widget) || widget->parentWidget()->inherits("QComboBox")
            || widget->parentWidget()->inherits("QAbstractSpinBox"))
            continue;
        QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(widget);
        QVERIFY(accessible);
        const QString name = accessible->text(QAccessible::Name);
        QVERIFY2(!name.isEmpty(),
                 qPrintable(widget->metaObject()->className() + QLatin1Char(' ')
                            + widget->objectName()));
        QVERIFY2(!name.contains(QLatin1Char('<')), qPrintable(name));
        ++fields;
    }
    QVERIFY(fields >= 34);
}

void tst_form_look::readsStatusAndCounterOut()
{
    m_fixture.window->StartTimer();
    QTRY_VERIFY(m_fixture.showsStatus(QStringLiteral("Gestartet.")));
    m_fixture.window->runTimer->stop();
    m_fixture.window->onDownloadProgress(5, 5);
    const auto described = [](QWidget* widget) {
        QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(widget);
        return accessible->text(QAccessible::Name) + QLatin1String(": ")
            + accessible->text(QAccessible::Description);
    };
    QCOMPARE(described(m_fixture.window->statusLabel), QStringLiteral("Status: Gestartet."));
    QCOMPARE(described(m_fixture.window->progressLabel),
             QStringLiteral("Fortschritt: ") + m_fixture.window->progressLabel->text());
    QVERIFY(!m_fixture.window->progressLabel->text().isEmpty());
    QCOMPARE(
        QAccessible::queryAccessibleInterface(m_fixture.window->logEdit)->text(QAccessible::Name),
        QStringLiteral("Protokoll"));
}

void tst_form_look::showsNoEmptyToolBar()
{
    auto* bar = m_fixture.window->findChild<QToolBar*>();
    QVERIFY(bar);
    QVERIFY(!bar->isVisible());
    QVERIFY(!bar->toggleViewAction()->isVisible());
}

void tst_form_look::isAFixedFormInAWindowWithAllButtons()
{
    QCOMPARE(area()->widget()->layout()->sizeConstraint(), QLayout::SetFixedSize);
    QCOMPARE(m_fixture.window->windowFlags() & mod_form_qt::F_DIALOG_TITLE_MINMAX_CLOSE,
             mod_form_qt::F_DIALOG_TITLE_MINMAX_CLOSE);
}

LEDORA_APP_TEST_MAIN(tst_form_look)

#include "tst_form_look.moc"
