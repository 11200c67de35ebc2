#include "tests/form/form_probe.h"

#include <QLoggingCategory>
#include <QMenuBar>
#include <QWidgetAction>

using namespace mod_form_qt;

namespace {

QStringList logged;

void collect(QtMsgType type, const QMessageLogContext&, const QString& text)
{
    if (type == QtDebugMsg)
        logged << text;
}

/// A menu with one entry of every kind; "Mehr" is a submenu that holds "Tief".
std::unique_ptr<QMenu> sampleMenu()
{
    auto menu = std::make_unique<QMenu>("Datei");
    menu->addAction("Neu");
    menu->addSeparator();
    QMenu* more = menu->addMenu("Mehr");
    more->addAction("Tief");
    auto* widget = new QWidgetAction(menu.get());
    widget->setText("Feld");
    menu->addAction(widget);
    return menu;
}

} // namespace

/// How the entries of menus are listed.
class tst_menu_search : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void logsOneLineAnEntry();
    void logsDeeperLevelsWithDashes();
    void logsNothingWithoutDebugOutput();
    void listsEntriesByKindDepthFirst();
    void nullMenuAndNullListAreTolerated();
    void collectsEntriesWithTheMenuTheyStandIn();
    void collectsTheMenusOfAMenuBar();
    void eachEntryIsCollectedOnce_data();
    void eachEntryIsCollectedOnce();
    void passesOverMenusThatHaveGone();
    void storesAMenuOnce();
    void nullMapHasNoMenus();

private:
    QMap<QString, QVariant> m_map;
    QtMessageHandler m_before = nullptr;
};

void tst_menu_search::init()
{
    m_map.clear();
    logged.clear();
    m_before = qInstallMessageHandler(collect);
}

void tst_menu_search::cleanup()
{
    QLoggingCategory::defaultCategory()->setEnabled(QtDebugMsg, true);
    qInstallMessageHandler(m_before);
}

void tst_menu_search::logsOneLineAnEntry()
{
    showTree(sampleMenu().get(), 0, nullptr);
    const QStringList expected = {"[0] Datei (top-menu)", "[0] Neu (action)",
                                  "[0]  (separator)",     "[0] Mehr (menu)",
                                  "[1] -Tief (action)",   "[0] Feld (widgetaction)"};
    QCOMPARE(logged, expected);
}

void tst_menu_search::logsDeeperLevelsWithDashes()
{
    showTree(sampleMenu().get(), 2, nullptr);
    QCOMPARE(logged.value(0), QString("[2] --Neu (action)"));
    QCOMPARE(logged.value(3), QString("[3] ---Tief (action)"));
}

void tst_menu_search::logsNothingWithoutDebugOutput()
{
    QLoggingCategory::defaultCategory()->setEnabled(QtDebugMsg, false);
    std::vector<MenuEntry> entries;
    showTree(sampleMenu().get(), 0, &entries);
    QCOMPARE(logged, QStringList());
    QCOMPARE(entries.size(), std::size_t(6));
}

void tst_menu_search::listsEntriesByKindDepthFirst()
{
    const auto menu = sampleMenu();
    std::vector<MenuEntry> entries;
    showTree(menu.get(), 0, &entries);
    QCOMPARE(entries.size(), std::size_t(6));
    QCOMPARE(std::get<QPointer<QMenu>>(entries[0]).data(), menu.get());
    QCOMPARE(std::get<QPointer<QAction>>(entries[1])->text(), QString("Neu"));
    QVERIFY(std::get<QPointer<QAction>>(entries[2])->isSeparator());
    QCOMPARE(std::get<QPointer<QMenu>>(entries[3])->title(), QString("Mehr"));
    QCOMPARE(std::get<QPointer<QAction>>(entries[4])->text(), QString("Tief"));
    QCOMPARE(std::get<QPointer<QWidgetAction>>(entries[5])->text(), QString("Feld"));
}

void tst_menu_search::nullMenuAndNullListAreTolerated()
{
    std::vector<MenuEntry> entries;
    showTree(nullptr, 0, &entries);
    QVERIFY(entries.empty());
    QCOMPARE(logged, QStringList());
    INFO::collectMenuData(&m_map, nullptr);
}

void tst_menu_search::collectsEntriesWithTheMenuTheyStandIn()
{
    const auto menu = sampleMenu();
    INFO::storeMenu(menu.get(), &m_map);
    std::vector<std::pair<MenuEntry, QPointer<QMenu>>> entries;
    INFO::collectMenuData(&m_map, &entries);
    QCOMPARE(entries.size(), std::size_t(6));
    QVERIFY(entries[0].second.isNull());
    QCOMPARE(entries[1].second.data(), menu.get());
    QCOMPARE(entries[3].second.data(), menu.get());
    QCOMPARE(entries[4].second.data(), std::get<QPointer<QMenu>>(entries[3].first).data());
    QCOMPARE(entries[5].second.data(), menu.get());
}

void tst_menu_search::collectsTheMenusOfAMenuBar()
{
    QMenuBar bar;
    bar.addMenu("Eins")->addAction("a");
    bar.addMenu("Zwei")->addAction("b");
    INFO::storeMenu(&bar, &m_map);
    std::vector<std::pair<MenuEntry, QPointer<QMenu>>> entries;
    INFO::collectMenuData(&m_map, &entries);
    const QStringList expected = {"[0] Eins (top-menu)", "[0] a (action)", "[0] Zwei (top-menu)",
                                  "[0] b (action)"};
    QCOMPARE(logged, expected);
    QCOMPARE(entries.size(), std::size_t(4));
}

void tst_menu_search::eachEntryIsCollectedOnce_data()
{
    QTest::addColumn<QStringList>("order");
    QTest::newRow("bar first") << QStringList {"bar", "menu"};
    QTest::newRow("menu first") << QStringList {"menu", "bar"};
    QTest::newRow("submenu as well") << QStringList {"bar", "submenu", "menu"};
}

void tst_menu_search::eachEntryIsCollectedOnce()
{
    QFETCH(QStringList, order);
    const auto menu = sampleMenu();
    QMenuBar bar;
    bar.addMenu(menu.get());
    const QMap<QString, QObject*> objects {
        {"bar", &bar}, {"menu", menu.get()}, {"submenu", menu->actions().at(2)->menu<QMenu*>()}};
    for (const QString& name : order)
        INFO::storeMenu(objects.value(name), &m_map);
    std::vector<std::pair<MenuEntry, QPointer<QMenu>>> entries;
    INFO::collectMenuData(&m_map, &entries);
    QCOMPARE(entries.size(), std::size_t(6));
    QCOMPARE(logged.size(), 6);
}

void tst_menu_search::passesOverMenusThatHaveGone()
{
    auto gone = sampleMenu();
    INFO::storeMenu(gone.get(), &m_map);
    gone.reset();
    QMenu other("Rest");
    INFO::storeMenu(&other, &m_map);
    std::vector<std::pair<MenuEntry, QPointer<QMenu>>> entries;
    INFO::collectMenuData(&m_map, &entries);
    QCOMPARE(entries.size(), std::size_t(1));
    QCOMPARE(std::get<QPointer<QMenu>>(entries[0].first).data(), &other);
}

void tst_menu_search::storesAMenuOnce()
{
    QMenu one;
    QMenu two;
    INFO::storeMenu(&one, &m_map);
    INFO::storeMenu(&two, &m_map);
    INFO::storeMenu(&one, &m_map);
    INFO::storeMenu(nullptr, &m_map);
    const QList<QPointer<QObject>> expected = {&one, &two};
    QCOMPARE(INFO::menus(&m_map), expected);
    QCOMPARE(m_map.keys(), QStringList("::mod_form_qt_object_data:menus"));
}

void tst_menu_search::nullMapHasNoMenus()
{
    QMenu menu;
    INFO::storeMenu(&menu, nullptr);
    INFO::storeStatusBars(nullptr, nullptr);
    QVERIFY(INFO::menus(nullptr).isEmpty());
    QVERIFY(INFO::statusBars(nullptr).isEmpty());
}

QTEST_MAIN(tst_menu_search)
#include "tst_menu_search.moc"
