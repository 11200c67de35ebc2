#include "tests/form/tree_bench.h"

using namespace mod_form_qt;

using Attributes = QMap<QString, QVariant>;

Q_DECLARE_METATYPE(std::function<QVariant(QAction*)>)
Q_DECLARE_METATYPE(std::function<QVariant(QMenu*)>)

namespace {

using OfAction = std::function<QVariant(QAction*)>;
using OfMenu = std::function<QVariant(QMenu*)>;

/// Writes a picture that an icon can be read from.
QString writePicture(const QTemporaryDir& folder, const QString& name = "bild.png")
{
    QImage picture(16, 16, QImage::Format_RGB32);
    picture.fill(Qt::red);
    picture.save(folder.filePath(name));
    return folder.filePath(name);
}

QString hex(const QString& text)
{
    return QString::fromLatin1(text.toUtf8().toHex());
}

} // namespace

/// What entries of menus from text can be like.
class tst_menu_attributes : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void attributesOfActions_data();
    void attributesOfActions();
    void attributesOfMenus_data();
    void attributesOfMenus();
    void attributesReachBothTheMenuAndItsEntry();
    void iconThatDoesNotExistIsNotSet_data();
    void iconThatDoesNotExistIsNotSet();
    void fontThatCannotBeReadIsNotSet();
    void shortcutContextOutOfRangeIsIgnored_data();
    void shortcutContextOutOfRangeIsIgnored();
    void aHiddenMenuIsNotOpened();

private:
    QTemporaryDir m_folder;
    QString m_picture;
};

void tst_menu_attributes::initTestCase()
{
    m_picture = writePicture(m_folder);
}

void tst_menu_attributes::attributesOfActions_data()
{
    QTest::addColumn<Attributes>("attributes");
    QTest::addColumn<OfAction>("read");
    QTest::addColumn<QVariant>("expected");
    const auto row = [](const char* name, const Attributes& attributes, const QVariant& expected,
                        const OfAction& read) {
        QTest::newRow(name) << attributes << read << expected;
    };
    const QString picture = writePicture(m_folder);
    const QFont font("DejaVu Serif", 17);
    row("checkable", {{"checkable", true}}, true, [](QAction* a) { return a->isCheckable(); });
    row("checked", {{"checkable", true}, {"checked", true}}, true,
        [](QAction* a) { return a->isChecked(); });
    row("checked as a text", {{"checkable", "1"}, {"checked", "0"}}, false,
        [](QAction* a) { return a->isChecked(); });
    row("group", {{"group", "4"}}, 4, [](QAction* a) { return a->property("menugroupno"); });
    row("separator", {{"separator", true}}, true, [](QAction* a) { return a->isSeparator(); });
    row("last", {{"last", true}}, "Neu", [](QAction* a) { return a->text(); });
    row("id", {{"id", "x"}}, "x", [](QAction* a) { return a->property("menuid"); });
    row("tooltip", {{"tooltip", "Tipp"}}, "Tipp", [](QAction* a) { return a->toolTip(); });
    row("statustip", {{"statustip", "Tipp"}}, "Tipp", [](QAction* a) { return a->statusTip(); });
    row("stylesheet", {{"stylesheet", "color: red"}}, "Neu", [](QAction* a) { return a->text(); });
    row("icontext", {{"icontext", "N"}}, "N", [](QAction* a) { return a->iconText(); });
    row("icon", {{"icon", picture}}, false, [](QAction* a) { return a->icon().isNull(); });
    row("icon-hex", {{"icon-hex", hex(picture)}}, false,
        [](QAction* a) { return a->icon().isNull(); });
    row("font", {{"font", font.toString()}}, 17, [](QAction* a) { return a->font().pointSize(); });
    row("keysequence", {{"keysequence", "Ctrl+N"}}, "Ctrl+N",
        [](QAction* a) { return a->shortcut().toString(); });
    row("no keysequence", {{"keysequence", ""}}, true,
        [](QAction* a) { return a->shortcut().isEmpty(); });
    row("visible", {{"visible", false}}, false, [](QAction* a) { return a->isVisible(); });
    row("visible as a text", {{"visible", "true"}}, true,
        [](QAction* a) { return a->isVisible(); });
    row("enabled", {{"enabled", "0"}}, false, [](QAction* a) { return a->isEnabled(); });
    row("unknown", {{"farbe", "rot"}}, "Neu", [](QAction* a) { return a->text(); });
    for (int context = 0; context < 4; ++context) {
        QTest::addRow("shortcutContext %d", context)
            << Attributes {{"shortcutContext", QString::number(context)}}
            << OfAction([](QAction* a) { return int(a->shortcutContext()); }) << QVariant(context);
    }
}

void tst_menu_attributes::attributesOfActions()
{
    QFETCH(Attributes, attributes);
    QFETCH(OfAction, read);
    QAction action("Neu");
    TREE_MENU::setAttr(attributes, nullptr, &action);
    QTEST(read(&action), "expected");
}

void tst_menu_attributes::attributesOfMenus_data()
{
    QTest::addColumn<Attributes>("attributes");
    QTest::addColumn<OfMenu>("read");
    QTest::addColumn<QVariant>("expected");
    const auto row = [](const char* name, const Attributes& attributes, const QVariant& expected,
                        const OfMenu& read) {
        QTest::newRow(name) << attributes << read << expected;
    };
    const QString picture = writePicture(m_folder);
    const QFont font("DejaVu Serif", 17);
    row("id", {{"id", "x"}}, "x", [](QMenu* m) { return m->property("menuid"); });
    row("tooltip", {{"tooltip", "Tipp"}}, "Tipp", [](QMenu* m) { return m->toolTip(); });
    row("statustip", {{"statustip", "Tipp"}}, "Tipp", [](QMenu* m) { return m->statusTip(); });
    row("stylesheet", {{"stylesheet", "color: red"}}, "color: red",
        [](QMenu* m) { return m->styleSheet(); });
    row("icon", {{"icon", picture}}, false, [](QMenu* m) { return m->icon().isNull(); });
    row("icon-hex", {{"icon-hex", hex(picture)}}, false,
        [](QMenu* m) { return m->icon().isNull(); });
    row("font", {{"font", font.toString()}}, 17, [](QMenu* m) { return m->font().pointSize(); });
    row("visible", {{"visible", false}}, false,
        [](QMenu* m) { return m->menuAction()->isVisible(); });
    row("enabled", {{"enabled", false}}, false,
        [](QMenu* m) { return m->menuAction()->isEnabled(); });
    const Attributes ofActions = {{"checkable", true},   {"checked", true}, {"group", 1},
                                  {"separator", true},   {"icontext", "N"}, {"keysequence", "A"},
                                  {"shortcutContext", 0}};
    row("attributes of actions only", ofActions, "Mehr",
        [](QMenu* m) { return m->menuAction()->isCheckable() ? QString() : m->title(); });
}

void tst_menu_attributes::attributesOfMenus()
{
    QFETCH(Attributes, attributes);
    QFETCH(OfMenu, read);
    QMenu menu("Mehr");
    TREE_MENU::setAttr(attributes, &menu, nullptr);
    QTEST(read(&menu), "expected");
    QVERIFY(!menu.isVisible());
}

void tst_menu_attributes::attributesReachBothTheMenuAndItsEntry()
{
    Tree tree;
    tree.build << "{{id}{more}}{{statustip}{Tipp}}{{font}{DejaVu Serif,17}}Mehr";
    QAction* entry = tree.root->actions().first();
    auto* menu = entry->menu<QMenu*>();
    QCOMPARE(menu->property("menuid"), "more");
    QCOMPARE(entry->property("menuid"), "more");
    QCOMPARE(menu->statusTip(), "Tipp");
    QCOMPARE(entry->statusTip(), "Tipp");
    QCOMPARE(menu->font().pointSize(), 17);
    QCOMPARE(entry->font().pointSize(), 17);
    QCOMPARE(entry->text(), "Mehr");
}

void tst_menu_attributes::iconThatDoesNotExistIsNotSet_data()
{
    QTest::addColumn<Attributes>("attributes");
    const QString gone = m_folder.filePath("fehlt.png");
    QTest::newRow("icon") << Attributes {{"icon", gone}};
    QTest::newRow("icon without a path") << Attributes {{"icon", ""}};
    QTest::newRow("icon-hex") << Attributes {{"icon-hex", hex(gone)}};
    QTest::newRow("icon-hex without a path") << Attributes {{"icon-hex", ""}};
    QTest::newRow("icon-hex that is none") << Attributes {{"icon-hex", "Größe"}};
}

void tst_menu_attributes::iconThatDoesNotExistIsNotSet()
{
    QFETCH(Attributes, attributes);
    const QIcon before(m_picture);
    QAction action(before, "Neu");
    QMenu menu;
    menu.setIcon(before);
    TREE_MENU::setAttr(attributes, &menu, &action);
    QCOMPARE(action.icon().cacheKey(), before.cacheKey());
    QCOMPARE(menu.icon().cacheKey(), before.cacheKey());
}

void tst_menu_attributes::fontThatCannotBeReadIsNotSet()
{
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("QFont::fromString"));
    QAction action("Neu");
    const QFont before("DejaVu Serif", 17);
    action.setFont(before);
    TREE_MENU::setAttr({{"font", "a,b,c,d,e"}}, nullptr, &action);
    QCOMPARE(action.font(), before);
}

void tst_menu_attributes::shortcutContextOutOfRangeIsIgnored_data()
{
    QTest::addColumn<QVariant>("context");
    QTest::newRow("4") << QVariant(4);
    QTest::newRow("4 as a text") << QVariant("4");
    QTest::newRow("-1") << QVariant(-1);
    QTest::newRow("no number") << QVariant("Fenster");
    QTest::newRow("empty") << QVariant("");
}

void tst_menu_attributes::shortcutContextOutOfRangeIsIgnored()
{
    QFETCH(QVariant, context);
    QAction action("Neu");
    action.setShortcutContext(Qt::ApplicationShortcut);
    TREE_MENU::setAttr({{"shortcutContext", context}}, nullptr, &action);
    QCOMPARE(action.shortcutContext(), Qt::ApplicationShortcut);
}

void tst_menu_attributes::aHiddenMenuIsNotOpened()
{
    Tree tree;
    tree.build << "{{visible}{0}}a" << TREE_MENU::endl << "{{visible}{1}}b";
    QVERIFY(!tree.root->actions().at(0)->isVisible());
    QVERIFY(tree.root->actions().at(1)->isVisible());
    for (QAction* entry : tree.root->actions())
        QVERIFY(!entry->menu<QMenu*>()->isVisible());
}

QTEST_MAIN(tst_menu_attributes)
#include "tst_menu_attributes.moc"
