// The examples of the guide, compiled and run. What stands between the markers is what the guide
// shows; a test compares the two.

#include "form/mod_form_qt.h"

#include <QtTest>
#include <QtWidgets>

#include <optional>

namespace {

void pressOkIn(QDialog* dialog)
{
    auto* ok = dialog->findChild<QPushButton*>(mod_form_qt::INFO::objectOKButtonName);
    QTest::mouseClick(ok, Qt::LeftButton);
}

/// Answers the next modal dialog once it is shown.
template <typename Answer>
void answer(Answer answer)
{
    auto* timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, timer, [timer, answer] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (dialog == nullptr || !dialog->isVisible())
            return;
        timer->deleteLater();
        timer->stop();
        answer(dialog);
    });
    timer->start(1);
}

//! [first_form]
QString askForName(QWidget* parent)
{
    using namespace mod_form_qt;
    QMap<QString, QVariant> map;
    QList<INFO> rows = {
        INFO(E_LINEEDIT, A_MANDATORY, "Name:", "Muster", "name"),
    };
    rows += INFO::layoutOkHelpCancel();
    const INFO::Result result =
        INFO::createAndExecDialog(parent, "Wer sind Sie?", rows, {}, {}, &map);
    return result.code ? map.value("name").toString() : QString();
}

//! [first_form]

//! [attributes]
QList<mod_form_qt::INFO> signIn()
{
    using namespace mod_form_qt;
    return {
        INFO(E_LAYOUT_GRID, A_GROUP | A_LAYOUT_MARGINS_8, "Anmeldung"),
        INFO(E_LINEEDIT, A_MANDATORY | A_H_EXPAND, "Benutzer:", {}, "user"),
        INFO(E_GRID_NEXT_ROW),
        INFO(E_LINEEDIT, A_MANDATORY | A_PWD, "Passwort:", {}, "password"),
        INFO(E_LAYOUT_END),
    };
}

//! [attributes]

//! [options]
QList<mod_form_qt::INFO> price()
{
    using namespace mod_form_qt;
    using Option = INFO::Option;
    const QVariantMap options = {
        {Option::titleKey, "Preis:"},
        {Option::spinBoxKey, true},
        {Option::minKey, 0},
        {Option::suffixKey, " EUR"},
        // Only for the number, not for its label.
        {Option::buildKey(Option::minWidthKey, E_NUMBER), 120},
    };
    return {
        INFO(E_NUMBER, {}, options, 9.99, "price"),
        // Options may also stand in the title, and further texts behind a semicolon.
        INFO(E_BROWSE_FOLDER, {}, "Ordner{{currentdir}{/tmp}}:;Suchen...", "/tmp", "folder"),
    };
}

//! [options]

//! [callbacks]
QList<mod_form_qt::INFO> withCallbacks(QStringList& log)
{
    using namespace mod_form_qt;
    const auto note = [&log](const CallbackContext& event) {
        log << callbackTypeNames.value(event.type) + " " + event.row.key;
        return 1;
    };
    return {
        INFO(E_LINEEDIT, {}, "Text:", {}, "text", note),
        INFO(E_BUTTON, {}, "Los", {}, "go", note),
    };
}

//! [callbacks]

//! [refusal]
mod_form_qt::INFO onlyEven()
{
    using namespace mod_form_qt;
    const auto even = [](const CallbackContext& event) {
        if (event.type != kBeforeDataChanged)
            return 1;
        const int number = event.value.toInt();
        if (number > 100)
            *event.result = 100; // another value is stored and shown
        return number % 2 == 0 ? 1 : 0; // 0 refuses: the old value comes back
    };
    const QVariantMap spinBox = {{INFO::Option::spinBoxKey, true}};
    return INFO(E_NUMBER, A_USE_BEFORE_EVENT | A_IMMEDIATE_DATA_UPDATE, spinBox, 2, "even", even);
}

//! [refusal]

//! [binding]
struct Settings
{
    QVariant url = "https://shop.example";
    mod_form_qt::T_LISTDATA colours = {{"Rot", true, "red", {}}, {"Blau", false, "blue", {}}};
};

QList<mod_form_qt::INFO> bound(Settings& settings)
{
    using namespace mod_form_qt;
    return {
        INFO(E_LINEEDIT, {}, "Adresse:", &settings.url, "url"),
        INFO(E_COMBOBOX, {}, "Farbe:", &settings.colours, "colour"),
    };
}

//! [binding]

//! [lists]
QVariant favourite(const QMap<QString, QVariant>& map)
{
    using namespace mod_form_qt;
    // In the map stands list data; what is selected in it:
    const QVariantList all = INFO::getBaseValue(&map, "fruit").toList();
    return all.isEmpty() ? QVariant() : all.first();
}

QList<mod_form_qt::INFO> fruit()
{
    using namespace mod_form_qt;
    const T_LISTDATA items = {{"Apfel", false, 1, {}}, {"Birne", true, 2, {}}};
    return {INFO(E_LISTBOX, A_MULTISEL | A_SORTED, "Obst:", items, "fruit")};
}

//! [lists]

//! [validation]
QList<mod_form_qt::INFO> checked()
{
    using namespace mod_form_qt;
    using Option = INFO::Option;
    return {
        INFO(E_LINEEDIT, A_MANDATORY,
             QVariantMap {{Option::titleKey, "PLZ:"}, {Option::regexPatternKey, "^[0-9]{5}$"}}, {},
             "zip"),
        INFO(E_BROWSE_FILE_OPEN, A_FILE_MUST_EXIST, "Datei:", {}, "file"),
        INFO(E_OK_BUTTON),
    };
}

//! [validation]

//! [snapshot]
void changeAndPutBack(QMap<QString, QVariant>& map, QVariant& outside)
{
    using namespace mod_form_qt;
    SNAP_SHOT_MANAGER before(&map);
    before.trackVariant(&outside);
    before.snapshot();

    map["name"] = "neu";
    outside = "neu";

    before.restore();
}

//! [snapshot]

//! [configurations]
int editShops(const QString& file, QMap<QString, QVariant>& map)
{
    using namespace mod_form_qt;
    using Option = INFO::Option;
    const QVariantMap storage = {{Option::titleKey, "Shops"},
                                 {Option::iniFileNameKey, file},
                                 {Option::iniGroupNameKey, "shops"},
                                 {Option::iniSumMapNameKey, "standard"},
                                 {Option::iniUseMultiConfKey, true}};
    QList<INFO> rows = {
        INFO(E_MULTICONFIG, {}, storage),
        INFO(E_LINEEDIT, {}, "Adresse:", {}, "address"),
    };
    rows += INFO::layoutOkHelpCancel();
    return INFO::createAndExecDialog(nullptr, storage, rows, {}, {}, &map).code;
}

//! [configurations]

//! [dialog]
class NameDialog : public mod_form_qt::DialogBase
{
public:
    explicit NameDialog(QMap<QString, QVariant>& map)
    {
        using namespace mod_form_qt;
        QList<INFO> rows = {INFO(E_LINEEDIT, {}, "Name:", {}, "name")};
        rows += INFO::layoutOkHelpCancel();
        applyLayout(true, "Name", rows, {}, {}, &map);
    }

protected:
    int onAccept(const mod_form_qt::CallbackContext& /*event*/) override
    {
        return lineEditByKey("name")->text() == "nein" ? 0 : 1; // 0 keeps it open
    }
};

//! [dialog]

//! [embedding]
void embed(QWidget* page, QMap<QString, QVariant>& map)
{
    using namespace mod_form_qt;
    INFO::applyLayout(page, true, QString(), signIn(), {}, {}, &map);
    // Later, from code; true would also tell the callbacks.
    INFO::setData(&map, "user", "muster", false);
    INFO::lineEditByKey(&map, "password")->setFocus();
}

//! [embedding]

//! [menus]
QMenu* viewMenu(QWidget* owner)
{
    using namespace mod_form_qt;
    TREE_MENU view("&Ansicht");
    view >> "{{id}{bigger}}{{keysequence}{Ctrl++}}&Größer";
    view >> "[s]";
    view << "&Raster"; // a submenu, and into it
    view >> "{{id}{grid}}&Zeigen[x;1]"; // checked
    view >> "{{id}{fine}}&Fein[x;1;1]"; // of group 1, whose items exclude each other
    view >> "{{id}{coarse}}&Grob[x;0;1]\n"; // the last one: back to the top
    view >> "{{id}{reset}}&Zurücksetzen";
    // What is in the menu belongs to it, the menu itself to you.
    view.menu()->setParent(owner, view.menu()->windowFlags());
    return view;
}

QList<mod_form_qt::INFO> withMenu(QMenu* view)
{
    using namespace mod_form_qt;
    return {INFO(E_MENUBAR), INFO(E_MENU, {}, {}, view), INFO(E_PLAINTEXT, {}, {}, {}, "text")};
}

//! [menus]

//! [menu_entries]
void addRecent(QMap<QString, QVariant>& map, const QString& path,
               const std::function<void(const QString&)>& open)
{
    using namespace mod_form_qt;
    std::vector<PlacedMenuEntry> entries;
    INFO::collectMenuData(&map, &entries);
    auto* reset = findMenuDataByID<QAction>(entries, "reset");
    if (reset == nullptr || findMenuDataByUserData<QAction>(entries, path))
        return;
    auto* menu = qobject_cast<QMenu*>(reset->parent());
    const Roles roles = {{Qt::ToolTipRole, path}};
    QAction* recent = addAction(menu, reset, QFileInfo(path).fileName(), {}, -1, -1, roles);
    recent->setData(path);
    // The form stands already and does not know of it.
    QObject::connect(recent, &QAction::triggered, menu, [open, path] { open(path); });
}

//! [menu_entries]

//! [passwords]
/// \return  the new password, empty for none; nothing if the user has cancelled
std::optional<QString> changePassword(QWidget* parent, const QString& current)
{
    using namespace mod_form_qt;
    QString pwd;
    if (!current.isEmpty() && !checkPWD(parent, {}, {}, pwd, false, current))
        return std::nullopt;
    // With a generator, of 8 characters or more, or empty.
    if (!createPWD(parent, "Neues Passwort:", {}, pwd, true, 8, true))
        return std::nullopt;
    return pwd;
}

//! [passwords]

QString fileText(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/// The examples of this file by name.
QMap<QString, QString> compiledExamples()
{
    QMap<QString, QString> examples;
    const QStringList parts =
        fileText(QStringLiteral(LEDORA_TEST_DATA "/../form/tst_guide.cpp")).split("//! [");
    for (qsizetype i = 1; i + 1 < parts.size(); i += 2) {
        const qsizetype end = parts.at(i).indexOf("]\n");
        examples.insert(parts.at(i).left(end), parts.at(i).mid(end + 2).trimmed());
    }
    return examples;
}

/// The examples of the guide by name.
QMap<QString, QString> shownExamples()
{
    QMap<QString, QString> examples;
    static const QRegularExpression block("<!-- example: (\\w+) -->\\s*```cpp\n(.*?)```",
                                          QRegularExpression::DotMatchesEverythingOption);
    const QString guide = fileText(QStringLiteral(LEDORA_TEST_DATA "/../../form/README.md"));
    for (auto match = block.globalMatch(guide); match.hasNext();) {
        const QRegularExpressionMatch found = match.next();
        examples.insert(found.captured(1), found.captured(2).trimmed());
    }
    return examples;
}

} // namespace

using namespace mod_form_qt;

class tst_guide : public QObject
{
    Q_OBJECT

private slots:
    void theGuideShowsWhatIsCompiled_data();
    void theGuideShowsWhatIsCompiled();
    void allCodeOfTheGuideIsCompiled();
    void aFirstForm();
    void attributesSayWhatARowLooksLike();
    void optionsSayWhatItAccepts();
    void callbacksArriveInTheirOrder();
    void aRefusalBringsTheOldValueBack();
    void boundRowsWriteThroughTheirPointers();
    void listsGiveTheirSelection();
    void validationKeepsTheFormOpen();
    void aSnapshotPutsEverythingBack();
    void severalConfigurationsInOneFile();
    void aDialogOfItsOwnClass();
    void aFormInAPage();
    void aMenuReportsToItsForm();
    void entriesOfAMenuAreFoundAgain();
    void aPasswordIsChanged();
    void aPasswordIsNotChanged();
};

void tst_guide::theGuideShowsWhatIsCompiled_data()
{
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QString>("compiled");
    const QMap<QString, QString> shown = shownExamples();
    const QMap<QString, QString> compiled = compiledExamples();
    QVERIFY(compiled.size() >= 11);
    for (auto example = compiled.begin(); example != compiled.end(); ++example)
        QTest::newRow(qPrintable(example.key())) << shown.value(example.key()) << example.value();
}

void tst_guide::theGuideShowsWhatIsCompiled()
{
    QFETCH(QString, shown);
    QFETCH(QString, compiled);
    QCOMPARE(shown, compiled);
}

void tst_guide::allCodeOfTheGuideIsCompiled()
{
    const QString guide = fileText(QStringLiteral(LEDORA_TEST_DATA "/../../form/README.md"));
    QCOMPARE(guide.count("```cpp"), shownExamples().size());
    QCOMPARE(shownExamples().keys(), compiledExamples().keys());
}

void tst_guide::aFirstForm()
{
    answer([](QDialog* dialog) {
        auto* name = dialog->findChild<QLineEdit*>("name");
        QTest::keyClicks(name, "mann");
        pressOkIn(dialog);
    });
    QCOMPARE(askForName(nullptr), "Mustermann");

    answer([](QDialog* dialog) { QTest::keyClick(dialog, Qt::Key_Escape); });
    QCOMPARE(askForName(nullptr), "");
}

void tst_guide::attributesSayWhatARowLooksLike()
{
    QWidget window;
    QMap<QString, QVariant> map;
    INFO::applyLayout(&window, true, QString(), signIn(), {}, {}, &map);
    QCOMPARE(INFO::lineEditByKey(&map, "password")->echoMode(), QLineEdit::Password);
    QVERIFY(INFO::labelByKey(&map, "user")->text().endsWith(INFO::mandatoryTextRight));
    QCOMPARE(window.findChild<QGroupBox*>()->title(), "Anmeldung");
}

void tst_guide::optionsSayWhatItAccepts()
{
    QWidget window;
    QMap<QString, QVariant> map;
    INFO::applyLayout(&window, true, QString(), price(), {}, {}, &map);
    auto* box = INFO::doubleSpinBoxByKey(&map, "price");
    QCOMPARE(box->suffix(), " EUR");
    QCOMPARE(box->minimum(), 0.0);
    QCOMPARE(box->minimumWidth(), 120);
    QCOMPARE(INFO::labelByKey(&map, "price")->minimumWidth(), 0);
    QCOMPARE(INFO::labelByKey(&map, "folder")->text(), "Ordner:");
    QCOMPARE(INFO::pushButtonByKey(&map, "folder")->text(), "Suchen...");
}

void tst_guide::callbacksArriveInTheirOrder()
{
    QStringList log;
    QWidget window;
    QMap<QString, QVariant> map;
    INFO::applyLayout(&window, true, QString(), withCallbacks(log), {}, {}, &map);
    window.show();
    QTest::keyClicks(INFO::lineEditByKey(&map, "text"), "ab");
    QTest::mouseClick(INFO::pushButtonByKey(&map, "go"), Qt::LeftButton);
    QCOMPARE(log,
             (QStringList {"kAfterDataChanged text", "kAfterDataChanged text", "kAfterAction go"}));
}

void tst_guide::aRefusalBringsTheOldValueBack()
{
    QWidget window;
    QMap<QString, QVariant> map;
    INFO::applyLayout(&window, true, QString(), {onlyEven()}, {}, {}, &map);
    window.show();
    auto* box = INFO::spinBoxByKey(&map, "even");
    box->setFocus();
    QTest::keyClick(box, Qt::Key_Up);
    QCOMPARE(box->value(), 2);
    QCOMPARE(map.value("even"), 2);
    box->selectAll();
    QTest::keyClicks(box, "402");
    QTRY_COMPARE(map.value("even"), 100);
    QCOMPARE(box->value(), 100);
}

void tst_guide::boundRowsWriteThroughTheirPointers()
{
    Settings settings;
    QMap<QString, QVariant> map;
    QWidget window;
    INFO::applyLayout(&window, true, QString(), bound(settings), {}, {}, &map);
    window.show();
    QTest::keyClicks(INFO::lineEditByKey(&map, "url"), "/a");
    QCOMPARE(settings.url, "https://shop.example/a");
    QTest::keyClick(INFO::comboBoxByKey(&map, "colour"), Qt::Key_Down);
    QCOMPARE(INFO::getSelectedListValue(settings.colours), "blue");
}

void tst_guide::listsGiveTheirSelection()
{
    QWidget window;
    QMap<QString, QVariant> map;
    INFO::applyLayout(&window, true, QString(), fruit(), {}, {}, &map);
    QCOMPARE(favourite(map), 2);
}

void tst_guide::validationKeepsTheFormOpen()
{
    QStringList messages;
    answer([&messages](QDialog* dialog) {
        answer([&messages](QDialog* box) {
            messages << qobject_cast<QMessageBox*>(box)->text();
            box->accept();
        });
        pressOkIn(dialog);
        QVERIFY(dialog->isVisible());
        dialog->reject();
    });
    QMap<QString, QVariant> map;
    INFO::createAndExecDialog(nullptr, "Prüfung", checked(), {}, {}, &map);
    QCOMPARE(messages,
             (QStringList {"Feld 'PLZ:': Es muss ein Wert eingetragen oder ausgewählt werden."}));
}

void tst_guide::aSnapshotPutsEverythingBack()
{
    QMap<QString, QVariant> map = {{"name", "alt"}};
    QVariant outside = "alt";
    changeAndPutBack(map, outside);
    QCOMPARE(map.value("name"), "alt");
    QCOMPARE(outside, "alt");
}

void tst_guide::severalConfigurationsInOneFile()
{
    const QTemporaryDir folder;
    const QString file = folder.filePath("shops.ini");
    QMap<QString, QVariant> map;
    answer([](QDialog* dialog) {
        QTest::keyClicks(dialog->findChild<QLineEdit*>("address"), "eins");
        pressOkIn(dialog);
    });
    QCOMPARE(editShops(file, map), 1);

    map.clear();
    QString shown;
    QStringList names;
    answer([&](QDialog* dialog) {
        shown = dialog->findChild<QLineEdit*>("address")->text();
        auto* list = dialog->findChild<QComboBox*>();
        for (int i = 0; i < list->count(); ++i)
            names << list->itemText(i);
        QTest::keyClick(dialog, Qt::Key_Escape);
    });
    QCOMPARE(editShops(file, map), 0);
    QCOMPARE(shown, "eins");
    QCOMPARE(names, QStringList {"standard"});
}

void tst_guide::aDialogOfItsOwnClass()
{
    QMap<QString, QVariant> map;
    NameDialog dialog(map);
    dialog.show();
    auto* name = dialog.lineEditByKey("name");
    QTest::keyClicks(name, "nein");
    pressOkIn(&dialog);
    QVERIFY(dialog.isVisible());
    QTest::keyClicks(name, "!");
    pressOkIn(&dialog);
    QVERIFY(!dialog.isVisible());
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
}

void tst_guide::aFormInAPage()
{
    QWidget page;
    QMap<QString, QVariant> map;
    embed(&page, map);
    QCOMPARE(INFO::lineEditByKey(&map, "user")->text(), "muster");
    QCOMPARE(map.value("user"), "muster");
}

void tst_guide::aMenuReportsToItsForm()
{
    QMainWindow window;
    QMap<QString, QVariant> map;
    QMenu* menu = viewMenu(&window);
    QStringList acted;
    const auto note = [&acted](const CallbackContext& event) {
        if (event.type == kAfterAction)
            acted << event.row.key;
        return 1;
    };
    INFO::applyLayout(&window, true, QString(), withMenu(menu), {}, {}, &map, nullptr, note);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QTest::keyClick(INFO::plainTextEditByKey(&map, "text"), Qt::Key_Plus, Qt::ControlModifier);
    auto* grid = menu->actions().at(2)->menu<QMenu*>();
    grid->actions().at(2)->trigger();
    QCOMPARE(acted, (QStringList {"bigger", "coarse"}));
    QCOMPARE(map.value("coarse"), true);
    QVERIFY(!grid->actions().at(1)->isChecked());
    QCOMPARE(menu->actions().size(), 4);
}

void tst_guide::entriesOfAMenuAreFoundAgain()
{
    QMainWindow window;
    QMap<QString, QVariant> map;
    QMenu* menu = viewMenu(&window);
    QStringList acted;
    const auto note = [&acted](const CallbackContext& event) {
        if (event.type == kAfterAction)
            acted << event.row.key;
        return 1;
    };
    INFO::applyLayout(&window, true, QString(), withMenu(menu), {}, {}, &map, nullptr, note);
    QStringList opened;
    for (const char* path : {"/tmp/a.txt", "/tmp/b.txt", "/tmp/a.txt"})
        addRecent(map, path, [&opened](const QString& chosen) { opened << chosen; });
    QStringList texts;
    for (const QAction* action : menu->actions().mid(3))
        texts << action->text();
    QCOMPARE(texts, (QStringList {"a.txt", "b.txt", "&Zurücksetzen"}));
    QCOMPARE(menu->actions().at(3)->toolTip(), "/tmp/a.txt");
    menu->actions().at(4)->trigger();
    menu->actions().at(5)->trigger();
    // As the guide says, the form is told only of the entries that it was built with.
    QCOMPARE(opened, QStringList("/tmp/b.txt"));
    QCOMPARE(acted, QStringList("reset"));
}

void tst_guide::aPasswordIsChanged()
{
    answer([](QDialog* dialog) {
        answer([](QDialog* second) {
            for (const char* key : {"pwd", "pwd_again"})
                QTest::keyClicks(second->findChild<QLineEdit*>(key), "noch-geheimer");
            pressOkIn(second);
        });
        QTest::keyClicks(dialog->findChild<QLineEdit*>("pwd"), "geheim");
        pressOkIn(dialog);
    });
    QCOMPARE(changePassword(nullptr, "geheim"), std::optional<QString>("noch-geheimer"));

    answer([](QDialog* dialog) { pressOkIn(dialog); });
    QCOMPARE(changePassword(nullptr, ""), std::optional<QString>(""));
}

void tst_guide::aPasswordIsNotChanged()
{
    answer([](QDialog* dialog) { QTest::keyClick(dialog, Qt::Key_Escape); });
    QVERIFY(!changePassword(nullptr, "geheim"));
}

QTEST_MAIN(tst_guide)
#include "tst_guide.moc"
