#include "form/mod_form_qt.h"

#include <QtTest>
#include <QtWidgets>

using namespace mod_form_qt;

using Read = std::function<QVariant(QObject*)>;
Q_DECLARE_METATYPE(Read)

namespace {

QPixmap redPixmap()
{
    QPixmap pixmap(8, 8);
    pixmap.fill(Qt::red);
    return pixmap;
}

QColor colorOf(const QIcon& icon)
{
    return icon.pixmap(8, 8).toImage().pixelColor(4, 4);
}

} // namespace

/// What entries of menus show beside their text.
class tst_menu_roles : public QObject
{
    Q_OBJECT

private slots:
    void rolesOfActions_data();
    void rolesOfActions();
    void rolesOfMenus_data();
    void rolesOfMenus();
    void decorationBecomesTheIcon_data();
    void decorationBecomesTheIcon();
    void otherRolesHaveNoEffect();
    void rolesOfNothingAreTolerated();
    void rolesArriveWithEveryEntry();
};

void tst_menu_roles::rolesOfActions_data()
{
    QTest::addColumn<int>("role");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<Read>("read");
    const auto row = [](const char* name, int role, const QVariant& value,
                        const std::function<QVariant(QAction*)>& read) {
        QTest::newRow(name) << role << value
                            << Read([read](QObject* o) { return read(static_cast<QAction*>(o)); });
    };
    row("DisplayRole", Qt::DisplayRole, "neu", [](QAction* a) { return a->text(); });
    row("ToolTipRole", Qt::ToolTipRole, "neu", [](QAction* a) { return a->toolTip(); });
    row("StatusTipRole", Qt::StatusTipRole, "neu", [](QAction* a) { return a->statusTip(); });
    row("WhatsThisRole", Qt::WhatsThisRole, "neu", [](QAction* a) { return a->whatsThis(); });
    row("FontRole", Qt::FontRole, QFont("DejaVu Serif", 17), [](QAction* a) { return a->font(); });
    row("AccessibleTextRole", Qt::AccessibleTextRole, "neu",
        [](QAction* a) { return a->property("accessibleName"); });
    row("AccessibleDescriptionRole", Qt::AccessibleDescriptionRole, "neu",
        [](QAction* a) { return a->property("accessibleDescription"); });
}

void tst_menu_roles::rolesOfActions()
{
    QFETCH(int, role);
    QFETCH(QVariant, value);
    QFETCH(Read, read);
    QAction action("alt");
    QVERIFY(read(&action) != value);
    setRoles(&action, {{Qt::ItemDataRole(role), value}});
    QCOMPARE(read(&action), value);
}

void tst_menu_roles::rolesOfMenus_data()
{
    QTest::addColumn<int>("role");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<Read>("read");
    const auto row = [](const char* name, int role, const QVariant& value,
                        const std::function<QVariant(QMenu*)>& read) {
        QTest::newRow(name) << role << value
                            << Read([read](QObject* o) { return read(static_cast<QMenu*>(o)); });
    };
    row("DisplayRole", Qt::DisplayRole, "neu", [](QMenu* m) { return m->title(); });
    row("ToolTipRole", Qt::ToolTipRole, "neu", [](QMenu* m) { return m->toolTip(); });
    row("StatusTipRole", Qt::StatusTipRole, "neu", [](QMenu* m) { return m->statusTip(); });
    row("WhatsThisRole", Qt::WhatsThisRole, "neu", [](QMenu* m) { return m->whatsThis(); });
    row("FontRole", Qt::FontRole, 17, [](QMenu* m) { return m->font().pointSize(); });
    row("AccessibleTextRole", Qt::AccessibleTextRole, "neu",
        [](QMenu* m) { return m->accessibleName(); });
    row("AccessibleDescriptionRole", Qt::AccessibleDescriptionRole, "neu",
        [](QMenu* m) { return m->accessibleDescription(); });
    row("status tip of the entry", Qt::StatusTipRole, "neu",
        [](QMenu* m) { return m->menuAction()->statusTip(); });
    row("tool tip of the entry", Qt::ToolTipRole, "neu",
        [](QMenu* m) { return m->menuAction()->toolTip(); });
    row("help of the entry", Qt::WhatsThisRole, "neu",
        [](QMenu* m) { return m->menuAction()->whatsThis(); });
    row("font of the entry", Qt::FontRole, 17,
        [](QMenu* m) { return m->menuAction()->font().pointSize(); });
    row("text of the entry", Qt::DisplayRole, "neu",
        [](QMenu* m) { return m->menuAction()->text(); });
}

void tst_menu_roles::rolesOfMenus()
{
    QFETCH(int, role);
    QFETCH(QVariant, value);
    QFETCH(Read, read);
    QMenu menu("alt");
    QVERIFY(read(&menu) != value);
    const QVariant given = role == Qt::FontRole ? QVariant(QFont("DejaVu Serif", 17)) : value;
    setRoles(&menu, {{Qt::ItemDataRole(role), given}});
    QCOMPARE(read(&menu), value);
}

void tst_menu_roles::decorationBecomesTheIcon_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::newRow("QIcon") << QVariant(QIcon(redPixmap()));
    QTest::newRow("QPixmap") << QVariant(redPixmap());
    QTest::newRow("QImage") << QVariant(redPixmap().toImage());
}

void tst_menu_roles::decorationBecomesTheIcon()
{
    QFETCH(QVariant, value);
    QAction action("a");
    QMenu menu("m");
    setRoles(&action, {{Qt::DecorationRole, value}});
    setRoles(&menu, {{Qt::DecorationRole, value}});
    QCOMPARE(colorOf(action.icon()), QColor(Qt::red));
    QCOMPARE(colorOf(menu.icon()), QColor(Qt::red));
}

void tst_menu_roles::otherRolesHaveNoEffect()
{
    QAction action("a");
    setRoles(&action, {{Qt::CheckStateRole, Qt::Checked}, {Qt::UserRole, 5}});
    QVERIFY(!action.isCheckable());
    QVERIFY(!action.data().isValid());
    QCOMPARE(action.text(), "a");
}

void tst_menu_roles::rolesOfNothingAreTolerated()
{
    setRoles(static_cast<QAction*>(nullptr), {{Qt::DisplayRole, "a"}});
    setRoles(static_cast<QMenu*>(nullptr), {{Qt::DisplayRole, "a"}});
}

void tst_menu_roles::rolesArriveWithEveryEntry()
{
    const Roles roles = {{Qt::DisplayRole, "Rolle"}};
    const std::unique_ptr<QAction> action(createAction("a", {}, -1, -1, roles));
    const std::unique_ptr<QAction> separator(createSeparator("a", {}, roles));
    const std::unique_ptr<QMenu> menu(createMenu("a", {}, roles));
    QCOMPARE(action->text(), "Rolle");
    QCOMPARE(separator->text(), "Rolle");
    QCOMPARE(menu->title(), "Rolle");
}

QTEST_MAIN(tst_menu_roles)
#include "tst_menu_roles.moc"
