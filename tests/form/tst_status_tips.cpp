#include "tests/form/form_probe.h"

#include <QStatusBar>
#include <QStatusTipEvent>

using namespace mod_form_qt;

/// What a form does with the status tips of its actions and fields.
class tst_status_tips : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void labelOfABarShowsTheTip();
    void barWithoutLabelShowsTheTipAsMessage();
    void everyBarShowsTheTip();
    void dialogLeavesItsBarsAlone();
    void deletedBarIsPassedOver();

private:
    template <typename Window>
    std::unique_ptr<Window> window()
    {
        auto made = std::make_unique<Window>();
        auto* filter = new INFO::UserEventFilter(made.get());
        filter->setEventData(&m_map, {}, INFO(E_MAINWINDOW), made.get(), false, {});
        made->installEventFilter(filter);
        return made;
    }

    static void tip(QWidget* window, const QString& text)
    {
        QStatusTipEvent event(text);
        QApplication::sendEvent(window, &event);
    }

    QMap<QString, QVariant> m_map;
};

void tst_status_tips::init()
{
    m_map.clear();
}

void tst_status_tips::labelOfABarShowsTheTip()
{
    const auto main = window<QMainWindow>();
    auto* label = new QLabel("alt");
    main->statusBar()->addWidget(label);
    INFO::storeStatusBars(main->statusBar(), &m_map);
    tip(main.get(), "Hinweis");
    QCOMPARE(label->text(), QString("Hinweis"));
    // A message would stand over the label.
    QCOMPARE(main->statusBar()->currentMessage(), QString());
}

void tst_status_tips::barWithoutLabelShowsTheTipAsMessage()
{
    const auto main = window<QMainWindow>();
    INFO::storeStatusBars(main->statusBar(), &m_map);
    tip(main.get(), "Hinweis");
    QCOMPARE(main->statusBar()->currentMessage(), QString("Hinweis"));
}

void tst_status_tips::everyBarShowsTheTip()
{
    const auto main = window<QWidget>();
    QStatusBar one;
    QStatusBar two;
    INFO::storeStatusBars(&one, &m_map);
    INFO::storeStatusBars(&two, &m_map);
    INFO::storeStatusBars(&one, &m_map);
    QCOMPARE(INFO::statusBars(&m_map).size(), 2);
    tip(main.get(), "Hinweis");
    QCOMPARE(one.currentMessage(), QString("Hinweis"));
    QCOMPARE(two.currentMessage(), QString("Hinweis"));
}

void tst_status_tips::dialogLeavesItsBarsAlone()
{
    const auto dialog = window<QDialog>();
    QStatusBar bar;
    INFO::storeStatusBars(&bar, &m_map);
    tip(dialog.get(), "Hinweis");
    QCOMPARE(bar.currentMessage(), QString());
}

void tst_status_tips::deletedBarIsPassedOver()
{
    const auto main = window<QWidget>();
    auto bar = std::make_unique<QStatusBar>();
    INFO::storeStatusBars(bar.get(), &m_map);
    bar.reset();
    QStatusBar other;
    INFO::storeStatusBars(&other, &m_map);
    tip(main.get(), "Hinweis");
    QCOMPARE(other.currentMessage(), QString("Hinweis"));
}

QTEST_MAIN(tst_status_tips)
#include "tst_status_tips.moc"
