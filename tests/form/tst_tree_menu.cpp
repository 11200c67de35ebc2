#include "tests/form/tree_bench.h"

using namespace mod_form_qt;

using Attributes = QMap<QString, QVariant>;

/// Menus from lines of text.
class tst_tree_menu : public QObject
{
    Q_OBJECT

private slots:
    // lines
    void aLineWithoutAnEndOpensASubmenu();
    void aLineThatEndsIsAnItemAndTheMenuStays();
    void aLoneEndGoesBackToTheRoot();
    void anItemStaysInTheMenu();
    void anItemThatEndsGoesBackToTheRoot();
    void aSeparatorStaysInTheMenu();
    void withoutParsingEachLineIsASubmenu();
    void withoutParsingAnItemKeepsItsText();
    void copiesShareTheMenus();
    void aTitleAloneMakesAMenu();
    // what is put in
    void actionsGoIn();
    void textsOfActionsAreParsedOnRequest();
    void menusGoInAndStayTheCallers();
    void builtMenusGoIn();
    void widgetsGoIn();
    void nothingIsTolerated();
    void aMenuThatHasGoneIsTolerated();
    void theMenuOwnsWhatIsMade();
    // the syntax of texts
    void textsAreParsed_data();
    void textsAreParsed();
    void aCheckedItemOfAGroupFromALine();
    void anItemWithOnlyALetterIsUncheckedAndInNoGroup();
};

void tst_tree_menu::aLineWithoutAnEndOpensASubmenu()
{
    Tree tree;
    tree.build << "a"
               << "b";
    QCOMPARE(tree.entries(), (QStringList {"a>", "-b>"}));
    QCOMPARE(tree.root->title(), "Wurzel");
}

void tst_tree_menu::aLineThatEndsIsAnItemAndTheMenuStays()
{
    Tree tree;
    tree.build << "a"
               << "b\n"
               << "c\n"
               << "d"
               << "e\n";
    QCOMPARE(tree.entries(), (QStringList {"a>", "-b", "-c", "-d>", "--e"}));
}

void tst_tree_menu::aLoneEndGoesBackToTheRoot()
{
    Tree tree;
    tree.build << "a"
               << "b" << TREE_MENU::endl
               << "c\n";
    QCOMPARE(tree.entries(), (QStringList {"a>", "-b>", "c"}));
    tree.build << "d" >> "e" >> TREE_MENU::endl >> "f";
    QCOMPARE(tree.entries().mid(3), (QStringList {"d>", "-e", "f"}));
}

void tst_tree_menu::anItemStaysInTheMenu()
{
    Tree tree;
    tree.build << "a" >> "b" >> "c";
    QCOMPARE(tree.entries(), (QStringList {"a>", "-b", "-c"}));
}

void tst_tree_menu::anItemThatEndsGoesBackToTheRoot()
{
    Tree tree;
    tree.build << "a" >> "b\n" >> "c";
    QCOMPARE(tree.entries(), (QStringList {"a>", "-b", "c"}));
}

void tst_tree_menu::aSeparatorStaysInTheMenu()
{
    Tree tree;
    tree.build << "a"
               << "[s]"
               << "b\n";
    QCOMPARE(tree.entries(), (QStringList {"a>", "-", "-b"}));
    QVERIFY(tree.action("")->isSeparator());
}

void tst_tree_menu::withoutParsingEachLineIsASubmenu()
{
    Tree tree(false);
    tree.build << "a [s]"
               << "b\n"
               << TREE_MENU::endl
               << "{{id}{x}}c";
    QCOMPARE(tree.entries(), (QStringList {"a [s]>", "-b\n>", "{{id}{x}}c>"}));
}

void tst_tree_menu::withoutParsingAnItemKeepsItsText()
{
    Tree tree(false);
    tree.build << "a" >> "b [x]\n" >> "c";
    QCOMPARE(tree.entries(), (QStringList {"a>", "-b [x]\n", "-c"}));
    QVERIFY(!tree.action("b [x]\n")->isCheckable());
}

void tst_tree_menu::copiesShareTheMenus()
{
    Tree tree;
    tree.build << "a";
    TREE_MENU copy = tree.build;
    copy >> "b";
    tree.build >> "c";
    QCOMPARE(tree.entries(), (QStringList {"a>", "-b", "-c"}));
    QCOMPARE(copy.menu(), tree.build.menu());
    // Each goes on by itself.
    copy << TREE_MENU::endl;
    copy >> "d";
    tree.build >> "e";
    QCOMPARE(tree.entries(), (QStringList {"a>", "-b", "-c", "-e", "d"}));
}

void tst_tree_menu::aTitleAloneMakesAMenu()
{
    const TREE_MENU menu("Titel", true, true);
    const std::unique_ptr<QMenu> root(menu);
    QCOMPARE(root->title(), "Titel");
    QVERIFY(root->isEmpty());
    QVERIFY(!root->parent());
}

void tst_tree_menu::actionsGoIn()
{
    Tree tree;
    QAction action("b [x]");
    tree.build << "a" << &action;
    QCOMPARE(tree.entries(), (QStringList {"a>", "-b [x]"}));
    QVERIFY(!action.isCheckable());
}

void tst_tree_menu::textsOfActionsAreParsedOnRequest()
{
    Tree tree(true, true);
    QAction action("{{id}{raster}}Raster[x;1;3]");
    tree.build << "a" << &action << "b\n";
    QCOMPARE(tree.entries(), (QStringList {"a>", "-Raster", "-b"}));
    QVERIFY(action.isChecked());
    QCOMPARE(action.property("menuid"), "raster");
    QCOMPARE(action.property("menugroupno"), 3);
}

void tst_tree_menu::menusGoInAndStayTheCallers()
{
    QMenu other("fremd");
    {
        Tree tree;
        tree.build << "a" << &other >> "b";
        QCOMPARE(tree.entries(), (QStringList {"a>", "-fremd>", "-b"}));
    }
    QCOMPARE(other.title(), "fremd");
}

void tst_tree_menu::builtMenusGoIn()
{
    Tree tree;
    Tree inner;
    inner.build >> "x";
    tree.build << "a" << inner.build;
    QCOMPARE(tree.entries(), (QStringList {"a>", "-Wurzel>", "--x"}));
}

void tst_tree_menu::widgetsGoIn()
{
    QPointer<QSpinBox> box = new QSpinBox;
    {
        Tree tree;
        tree.build << "a" << box.data();
        auto* action = qobject_cast<QWidgetAction*>(
            tree.root->actions().first()->menu<QMenu*>()->actions().first());
        QVERIFY(action);
        QCOMPARE(action->defaultWidget(), box.data());
    }
    QVERIFY(box.isNull());
}

void tst_tree_menu::nothingIsTolerated()
{
    Tree tree(true, true);
    tree.build << static_cast<QAction*>(nullptr) << static_cast<QMenu*>(nullptr)
               << static_cast<QWidget*>(nullptr);
    QVERIFY(tree.root->isEmpty());
    TREE_MENU::setAttr({{"id", "x"}, {"visible", false}, {"font", "Sans,9"}}, nullptr, nullptr);
}

void tst_tree_menu::aMenuThatHasGoneIsTolerated()
{
    QAction action("b");
    QMenu menu;
    QWidget widget;
    TREE_MENU build("Wurzel", true, true);
    delete build.menu();
    build << "a"
          << "b\n"
          << TREE_MENU::endl
          << &action << &menu << &widget;
    build >> "c" >> "d\n" >> TREE_MENU::endl;
    QVERIFY(!build.menu());
    QVERIFY(action.associatedObjects().isEmpty());
}

void tst_tree_menu::theMenuOwnsWhatIsMade()
{
    auto tree = std::make_unique<Tree>();
    tree->build << "a" >> "b";
    const QPointer<QMenu> submenu = tree->root->actions().first()->menu<QMenu*>();
    const QPointer<QAction> item = tree->action("b");
    QVERIFY(submenu && item);
    tree.reset();
    QVERIFY(submenu.isNull());
    QVERIFY(item.isNull());
}

void tst_tree_menu::textsAreParsed_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("left");
    QTest::addColumn<Attributes>("attributes");
    const auto checkable = [](bool checked, int group) {
        return Attributes {{"checkable", true}, {"checked", checked}, {"group", group}};
    };
    QTest::newRow("plain") << "Neu"
                           << "Neu" << Attributes();
    QTest::newRow("end") << "Neu\n"
                         << "Neu" << Attributes {{"last", true}};
    QTest::newRow("two ends") << "Neu\n\n"
                              << "Neu\n"
                              << Attributes {{"last", true}};
    QTest::newRow("end inside") << "N\neu"
                                << "N\neu" << Attributes();
    QTest::newRow("attributes") << "{{id}{x}}Neu{{tooltip}{Ein; Tipp}}"
                                << "Neu" << Attributes {{"id", "x"}, {"tooltip", "Ein; Tipp"}};
    QTest::newRow("brackets in an attribute") << "Neu{{tooltip}{[x]}}"
                                              << "Neu" << Attributes {{"tooltip", "[x]"}};
    QTest::newRow("unclosed attribute") << "{{id}{x}Neu"
                                        << "{{id}{x}Neu" << Attributes();
    QTest::newRow("end and attribute") << "Neu{{id}{x}}\n"
                                       << "Neu" << Attributes {{"id", "x"}, {"last", true}};
    QTest::newRow("separator") << "[s]"
                               << "" << Attributes {{"separator", true}};
    QTest::newRow("capital") << "[S]"
                             << "" << Attributes {{"separator", true}};
    QTest::newRow("blanks") << "Teil[ s ]"
                            << "Teil" << Attributes {{"separator", true}};
    QTest::newRow("separator with fields") << "[s;1]"
                                           << "" << Attributes {{"separator", true}};
    QTest::newRow("widget") << "Feld[w]"
                            << "Feld" << Attributes {{"widget", true}};
    QTest::newRow("checked item of group 2") << "Neu[x;1;2]"
                                             << "Neu" << checkable(true, 2);
    QTest::newRow("capital with fields") << "Neu[X ; 1 ; 2 ]"
                                         << "Neu" << checkable(true, 2);
    QTest::newRow("code of a letter only") << "Neu[x]"
                                           << "Neu" << checkable(false, -1);
    QTest::newRow("no group") << "Neu[x;1]"
                              << "Neu" << checkable(true, -1);
    QTest::newRow("empty fields") << "Neu[x;;]"
                                  << "Neu" << checkable(false, 0);
    QTest::newRow("empty group") << "Neu[x;1;]"
                                 << "Neu" << checkable(true, 0);
    QTest::newRow("group that is no number") << "Neu[x;1;a]"
                                             << "Neu" << checkable(true, 0);
    QTest::newRow("group below 0") << "Neu[x;1;-3]"
                                   << "Neu" << checkable(true, -3);
    QTest::newRow("empty check state") << "Neu[x;;4]"
                                       << "Neu" << checkable(false, 4);
    QTest::newRow("not checked") << "Neu[x;0;0]"
                                 << "Neu" << checkable(false, 0);
    QTest::newRow("any number checks") << "Neu[x;-7]"
                                       << "Neu" << checkable(true, -1);
    QTest::newRow("no number") << "Neu[x;ja]"
                               << "Neu" << checkable(false, -1);
    QTest::newRow("more fields") << "Neu[x;1;2;3]"
                                 << "Neu" << checkable(true, 2);
    QTest::newRow("unknown code") << "Neu[alt]"
                                  << "Neu" << Attributes();
    QTest::newRow("begins with the field separator") << "Neu[;x]"
                                                     << "Neu" << Attributes();
    QTest::newRow("empty code") << "Neu[]"
                                << "Neu" << Attributes();
    QTest::newRow("unclosed code") << "Neu[x"
                                   << "Neu[x" << Attributes();
    QTest::newRow("unopened code") << "Neu]x"
                                   << "Neu]x" << Attributes();
    QTest::newRow("unopened before a code") << "N]eu[x]"
                                            << "N]eu" << checkable(false, -1);
    QTest::newRow("several codes")
        << "a[w]b[x]c"
        << "abc"
        << Attributes {{"widget", true}, {"checkable", true}, {"checked", false}, {"group", -1}};
    QTest::newRow("the later of two codes holds") << "Neu[x;1;2][x;0;1]"
                                                  << "Neu" << checkable(false, 1);
    QTest::newRow("also if it is the first again") << "[x;1;2][x;0;1][x;1;2]"
                                                   << "" << checkable(true, 2);
    QTest::newRow("empty") << ""
                           << "" << Attributes();
}

void tst_tree_menu::textsAreParsed()
{
    QFETCH(QString, text);
    Attributes attributes;
    TREE_MENU::parse(text, attributes);
    QTEST(text, "left");
    QTEST(attributes, "attributes");
}

void tst_tree_menu::aCheckedItemOfAGroupFromALine()
{
    Tree tree;
    tree.build << "a[x;1;2]\n";
    tree.build >> "b[x;1;2]";
    for (const char* text : {"a", "b"}) {
        const QAction* action = tree.action(text);
        QVERIFY2(action, text);
        QVERIFY(action->isCheckable());
        QVERIFY(action->isChecked());
        QCOMPARE(action->property("menugroupno"), QVariant(2));
    }
}

void tst_tree_menu::anItemWithOnlyALetterIsUncheckedAndInNoGroup()
{
    Tree tree;
    tree.build >> "a[x]";
    tree.build << "b[x]\n";
    for (const char* text : {"a", "b"}) {
        const QAction* action = tree.action(text);
        QVERIFY2(action, text);
        QVERIFY(action->isCheckable());
        QVERIFY(!action->isChecked());
        QCOMPARE(action->property("menugroupno"), QVariant(-1));
    }
}

QTEST_MAIN(tst_tree_menu)
#include "tst_tree_menu.moc"
