#include "tests/form/form_probe.h"

#include <QMessageBox>
#include <QSettings>
#include <QTemporaryDir>

using namespace mod_form_qt;

namespace {

using Option = INFO::Option;

/// Reads a file as another program would: the settings class answers from memory for a file that it
/// has written itself.
QVariant stored(const QString& file, const QString& key)
{
    static int copies = 0;
    const QString copy = QString("%1.%2").arg(file).arg(++copies);
    QFile::copy(file, copy);
    return QSettings(copy, QSettings::IniFormat).value(key);
}

} // namespace

/// How forms load and save their values.
class tst_form_store : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void titleComesFromTheRow_data();
    void titleComesFromTheRow();
    void titleIsLeftAloneUnlessAskedFor();
    void loadsTheWholeMap();
    void loadsSeparateKeys();
    void keepsTemporaryEntriesWhenTheMapIsReplaced();
    void withoutFileOrGroupNothingHappens_data();
    void withoutFileOrGroupNothingHappens();
    void missingFileStoresNoName();
    void firstAcceptingCloseCreatesTheFile();
    void onlyAcceptedFormsAreSaved();
    void forgetsTheWidgetsInAnyCase();
    void savesOnlyTheKeysOfTheFilter();
    void summaryNameIsTrimmed();
    void rememberedConfigurationIsLoadedAndSaved();
    void rememberedNameWithoutConfigurationIsDropped();
    void separateKeysIgnoreTheRememberedName_data();
    void separateKeysIgnoreTheRememberedName();
    void summaryNamesWithSlashesAreFoundAgain_data();
    void summaryNamesWithSlashesAreFoundAgain();
    void whatIsNestedTooDeepIsLeftOut();
    void asksBeforeSaving_data();
    void asksBeforeSaving();
    void nullMapIsTolerated();
    void namesOfConfigurations();
    void rememberedNameIsVerifiedOnRequest();
    void emptyFileNameHasNoConfigurations();
    void runFormLoadsAndSaves();
    void cancelledFormIsNotSaved();
    void callbacksSeeTheLoadedValues();

private:
    INFO mainRow(const QVariantMap& more = {}) const;
    void write(const QString& group, const QString& key, const QVariant& value) const;

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_file;
    QMap<QString, QVariant> m_map;
    std::unique_ptr<QObject> m_context;
};

void tst_form_store::initTestCase()
{
    QGuiApplication::setQuitOnLastWindowClosed(false);
}

void tst_form_store::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_file = m_folder->filePath("form.ini");
    m_map.clear();
    m_context = std::make_unique<QObject>();
    endStuckModals(m_context.get());
}

void tst_form_store::cleanup()
{
    m_context.reset();
    QCOMPARE(visibleWindows(), QStringList());
}

INFO tst_form_store::mainRow(const QVariantMap& more) const
{
    QVariantMap options = {{Option::iniFileNameKey, m_file}, {Option::iniGroupNameKey, "form"}};
    options.insert(more);
    return {E_DIALOG, A_NONE, options};
}

void tst_form_store::write(const QString& group, const QString& key, const QVariant& value) const
{
    QSettings settings(m_file, QSettings::IniFormat);
    settings.beginGroup(group);
    settings.setValue(key, value);
}

void tst_form_store::titleComesFromTheRow_data()
{
    QTest::addColumn<QVariant>("param");
    QTest::addColumn<QString>("title");
    QTest::newRow("text") << QVariant("Titel") << "Titel";
    QTest::newRow("option") << QVariant(QVariantMap {{"title", "Titel"}}) << "Titel";
    QTest::newRow("options without title") << QVariant(QVariantMap {{"x", 1}}) << "alt";
    QTest::newRow("nothing") << QVariant() << "alt";
}

void tst_form_store::titleComesFromTheRow()
{
    QFETCH(QVariant, param);
    QWidget window;
    window.setWindowTitle("alt");
    INFO::initWidget(&window, INFO(E_DIALOG, A_NONE, param), &m_map, true);
    QTEST(window.windowTitle(), "title");
}

void tst_form_store::titleIsLeftAloneUnlessAskedFor()
{
    QWidget window;
    const QVariantMap options = {{"title", "Titel"}, {Option::buildKey("minwidth", E_DIALOG), 321}};
    INFO::initWidget(&window, INFO(E_DIALOG, A_NONE, options), &m_map, false);
    QCOMPARE(window.windowTitle(), QString());
    QCOMPARE(window.minimumWidth(), 0);
    INFO::initWidget(&window, INFO(E_DIALOG, A_NONE, options), &m_map, true);
    QCOMPARE(window.windowTitle(), QString("Titel"));
    QCOMPARE(window.minimumWidth(), 321);
}

void tst_form_store::loadsTheWholeMap()
{
    write("form", "vmap", QVariantMap {{"a", 5}, {"b", "Text"}});
    m_map = {{"a", 1}, {"old", 1}};
    INFO::initWidget(nullptr, mainRow(), &m_map, true);
    QCOMPARE(m_map, (QVariantMap {{"a", 5}, {"b", "Text"}}));
}

void tst_form_store::loadsSeparateKeys()
{
    write("form", "a", "neu");
    m_map = {{"a", "alt"}, {"old", 1}};
    INFO::initWidget(nullptr, mainRow({{Option::iniSeparateKeysKey, true}}), &m_map, true);
    QCOMPARE(m_map, (QVariantMap {{"a", "neu"}, {"old", 1}}));
}

void tst_form_store::keepsTemporaryEntriesWhenTheMapIsReplaced()
{
    write("form", "vmap", QVariantMap {{"a", 5}});
    const QString temporary = INFO::objectDataVarName + "menus";
    m_map = {{temporary, 1}, {"old", 1}};
    INFO::initWidget(nullptr, mainRow(), &m_map, true);
    QCOMPARE(m_map, (QVariantMap {{"a", 5}, {temporary, 1}}));
}

void tst_form_store::withoutFileOrGroupNothingHappens_data()
{
    QTest::addColumn<QString>("missing");
    QTest::newRow("no file") << Option::iniFileNameKey;
    QTest::newRow("no group") << Option::iniGroupNameKey;
}

void tst_form_store::withoutFileOrGroupNothingHappens()
{
    QFETCH(QString, missing);
    write("form", "vmap", QVariantMap {{"a", 5}});
    QFile file(m_file);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray before = file.readAll();
    file.close();
    m_map = {{"a", 1}};
    // Asking would hang: no message may come.
    const INFO row = mainRow({{missing, ""}, {Option::iniAutoSaveKey, false}});
    INFO::initWidget(nullptr, row, &m_map, true);
    INFO::closeWidget(nullptr, row, &m_map, {}, true);
    QCOMPARE(m_map, (QVariantMap {{"a", 1}}));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), before);
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files), QStringList("form.ini"));
}

void tst_form_store::missingFileStoresNoName()
{
    INFO::initWidget(nullptr,
                     mainRow({{Option::iniUseMultiConfKey, true}, {"inisummapname", "eins"}}),
                     &m_map, true);
    QVERIFY(!QFile::exists(m_file));
}

void tst_form_store::firstAcceptingCloseCreatesTheFile()
{
    m_map = {{"a", 5}};
    INFO::closeWidget(nullptr, mainRow(), &m_map, {}, true);
    QCOMPARE(stored(m_file, "form/vmap").toMap(), m_map);
}

void tst_form_store::onlyAcceptedFormsAreSaved()
{
    QWidget window;
    m_map = {{"a", 5}};
    for (const CallbackType type : {kReject, kClose}) {
        QVERIFY(INFO::canClose(&window, &window, type, mainRow(), mainRow(), &m_map, {}));
        QVERIFY(!QFile::exists(m_file));
    }
    QVERIFY(INFO::canClose(&window, &window, kAccept, mainRow(), mainRow(), &m_map, {}));
    QVERIFY(QFile::exists(m_file));
}

void tst_form_store::forgetsTheWidgetsInAnyCase()
{
    const QString record = WIDGET_INFO::buildWidgetDataKey("a");
    m_map = {{"a", 5}, {record, QVariant::fromValue(WIDGET_INFO())}};
    INFO::closeWidget(nullptr, INFO(E_DIALOG), &m_map, {}, false);
    QCOMPARE(m_map, (QVariantMap {{"a", 5}}));
}

void tst_form_store::savesOnlyTheKeysOfTheFilter()
{
    m_map = {{"a", 5}, {"b", 6}};
    INFO::closeWidget(nullptr, mainRow(), &m_map, {true, {"b"}}, true);
    QCOMPARE(stored(m_file, "form/vmap").toMap(), (QVariantMap {{"b", 6}}));
    INFO::closeWidget(nullptr, mainRow(), &m_map, {false, {"b"}}, true);
    QCOMPARE(stored(m_file, "form/vmap").toMap(), m_map);
}

void tst_form_store::summaryNameIsTrimmed()
{
    m_map = {{"a", 5}};
    INFO::closeWidget(nullptr, mainRow({{"inisummapname", "  werte "}}), &m_map, {}, true);
    QCOMPARE(stored(m_file, "form/werte").toMap(), m_map);
    QMap<QString, QVariant> loaded;
    INFO::initWidget(nullptr, mainRow({{"inisummapname", " werte"}}), &loaded, true);
    QCOMPARE(loaded, m_map);
}

void tst_form_store::summaryNamesWithSlashesAreFoundAgain_data()
{
    QTest::addColumn<QString>("name");
    for (const char* name : {"a/b", "a/b/c", "/a", "a//b", "a\\b"})
        QTest::newRow(name) << name;
}

void tst_form_store::summaryNamesWithSlashesAreFoundAgain()
{
    QFETCH(QString, name);
    const QVariantMap values {{"a", 5}};
    m_map = values;
    INFO::closeWidget(nullptr, mainRow({{"inisummapname", name}}), &m_map, {}, true);
    const QString copy = m_file + ".copy"; // which is read and not remembered
    QVERIFY(QFile::copy(m_file, copy));
    m_map = {{"old", 1}};
    INFO::initWidget(nullptr, mainRow({{Option::iniFileNameKey, copy}, {"inisummapname", name}}),
                     &m_map, true);
    QCOMPARE(m_map, values);
}

void tst_form_store::whatIsNestedTooDeepIsLeftOut()
{
    QVariant deep = 7;
    for (int level = 0; level < 64; ++level)
        deep = QVariantList {deep};
    m_map = {{"a", 1}, {"deep", deep}, {"deeper", QVariantList {deep}}};
    INFO::closeWidget(nullptr, mainRow(), &m_map, {}, true);
    QCOMPARE(stored(m_file, "form/vmap").toMap(), (QVariantMap {{"a", 1}, {"deep", deep}}));
}

void tst_form_store::rememberedConfigurationIsLoadedAndSaved()
{
    write("form", "eins", QVariantMap {{"a", 1}});
    write("form", "zwei", QVariantMap {{"a", 2}});
    write("default_conf", "name", "zwei");
    const INFO row = mainRow({{Option::iniUseMultiConfKey, true}, {"inisummapname", "eins"}});
    INFO::initWidget(nullptr, row, &m_map, true);
    QCOMPARE(m_map, (QVariantMap {{"a", 2}}));
    m_map["a"] = 3;
    INFO::closeWidget(nullptr, row, &m_map, {}, true);
    QCOMPARE(stored(m_file, "form/zwei").toMap(), m_map);
    QCOMPARE(stored(m_file, "form/eins").toMap(), (QVariantMap {{"a", 1}}));
}

void tst_form_store::rememberedNameWithoutConfigurationIsDropped()
{
    write("form", "zwei", QVariantMap {{"a", 2}});
    write("default_conf", "name", "weg");
    const INFO row = mainRow({{Option::iniUseMultiConfKey, true}, {"inisummapname", "eins"}});
    INFO::initWidget(nullptr, row, &m_map, true);
    QCOMPARE(m_map, QVariantMap());
    QCOMPARE(stored(m_file, "default_conf/name").toString(), QString("eins"));
}

void tst_form_store::separateKeysIgnoreTheRememberedName_data()
{
    QTest::addColumn<QString>("remembered");
    QTest::newRow("of a configuration") << "zwei";
    QTest::newRow("of none") << "weg";
}

void tst_form_store::separateKeysIgnoreTheRememberedName()
{
    QFETCH(QString, remembered);
    const QVariantMap one {{"a", 1}};
    const QVariantMap two {{"a", 2}};
    write("form", "eins", one);
    write("form", "zwei", two);
    write("form", "a", "einzeln");
    write("default_conf", "name", remembered);
    const INFO row = mainRow({{Option::iniUseMultiConfKey, true},
                              {Option::iniSeparateKeysKey, true},
                              {"inisummapname", "eins"}});
    INFO::initWidget(nullptr, row, &m_map, true);
    // Passed over is what stands under the name of the row.
    QCOMPARE(m_map, (QVariantMap {{"a", "einzeln"}, {"zwei", two}}));
    QCOMPARE(stored(m_file, "default_conf/name"), QVariant(remembered));
    m_map = {{"a", "anders"}};
    INFO::closeWidget(nullptr, row, &m_map, {}, true);
    QCOMPARE(stored(m_file, "form/a").toString(), QString("anders"));
    QCOMPARE(stored(m_file, "form/eins").toMap(), one);
    QCOMPARE(stored(m_file, "form/zwei").toMap(), two);
    QCOMPARE(stored(m_file, "default_conf/name"), QVariant(remembered));
}

void tst_form_store::asksBeforeSaving_data()
{
    QTest::addColumn<int>("answer");
    QTest::addColumn<bool>("saved");
    QTest::newRow("yes") << int(QMessageBox::Yes) << true;
    QTest::newRow("no") << int(QMessageBox::No) << false;
    QTest::newRow("Escape") << 0 << false;
}

void tst_form_store::asksBeforeSaving()
{
    QFETCH(int, answer);
    QWidget window;
    m_map = {{"a", 5}};
    const INFO row = mainRow({{Option::iniAutoSaveKey, false}});
    bool asked = false;
    onceModal(m_context.get(), [&](QWidget* modal) {
        auto* box = qobject_cast<QMessageBox*>(modal);
        QVERIFY(box);
        asked = true;
        QCOMPARE(box->windowTitle(), QString("Einstellungen speichern:"));
        QCOMPARE(box->text(), QString("Sollen evtl. Änderungen zuvor gesichert werden?"));
        QCOMPARE(box->standardButtons(), QMessageBox::Yes | QMessageBox::No);
        QCOMPARE(box->parentWidget(), &window);
        if (answer)
            box->button(QMessageBox::StandardButton(answer))->click();
        else
            QTest::keyClick(box, Qt::Key_Escape);
    });
    QVERIFY(INFO::canClose(&window, &window, kAccept, row, row, &m_map, {}));
    QVERIFY(asked);
    QTEST(QFile::exists(m_file), "saved");
}

void tst_form_store::nullMapIsTolerated()
{
    INFO::initWidget(nullptr, mainRow(), nullptr, true);
    INFO::closeWidget(nullptr, mainRow(), nullptr, {}, true);
    QVERIFY(!QFile::exists(m_file));
}

void tst_form_store::namesOfConfigurations()
{
    QList<QString> names = {"alt"};
    QString last = "alt";
    QVERIFY(INFO::loadIniOptionNames(m_file, "form", false, names, last, false));
    QCOMPARE(names, QStringList());
    QCOMPARE(last, QString());

    write("form", "b", QVariantMap());
    write("form", "a", 1);
    write("other", "c", 1);
    INFO::setDefaultIniMultiOptionName(m_file, "b");
    QVERIFY(INFO::loadIniOptionNames(m_file, "form", false, names, last, true));
    QCOMPARE(names, QStringList({"a", "b"}));
    QCOMPARE(last, QString("b"));
    QCOMPARE(stored(m_file, "default_conf/name").toString(), QString("b"));
    QCOMPARE(INFO::getDefaultIniMultiOptionName(m_file), QString("b"));
}

void tst_form_store::rememberedNameIsVerifiedOnRequest()
{
    write("default_conf", "name", "weg");
    QList<QString> names;
    QString last;
    INFO::loadIniOptionNames(m_file, "form", false, names, last, false);
    QCOMPARE(last, QString("weg"));
    INFO::loadIniOptionNames(m_file, "form", false, names, last, true);
    QCOMPARE(last, QString());
}

void tst_form_store::emptyFileNameHasNoConfigurations()
{
    INFO::setDefaultIniMultiOptionName("", "x");
    QCOMPARE(INFO::getDefaultIniMultiOptionName(""), QString());
    QList<QString> names;
    QString last;
    QVERIFY(INFO::loadIniOptionNames("", "form", false, names, last, true));
    QCOMPARE(names, QStringList());
}

void tst_form_store::runFormLoadsAndSaves()
{
    write("form", "vmap", QVariantMap {{"name", "geladen"}});
    QString shown;
    onceModal(m_context.get(), [&](QWidget*) {
        QLineEdit* edit = INFO::lineEditByKey(&m_map, "name");
        shown = edit->text();
        edit->end(false);
        QTest::keyClicks(edit, "!");
        clickButton(m_map, "ok");
    });
    const auto result =
        INFO::createAndExecDialog(nullptr, mainRow().param, closableRows(), {}, {}, &m_map);
    QCOMPARE(result.code, 1);
    QCOMPARE(shown, QString("geladen"));
    QCOMPARE(stored(m_file, "form/vmap").toMap().value("name"), QVariant("geladen!"));
}

void tst_form_store::cancelledFormIsNotSaved()
{
    write("form", "vmap", QVariantMap {{"name", "geladen"}});
    m_map = {{"name", "vorher"}};
    onceModal(m_context.get(), [&](QWidget*) {
        QTest::keyClicks(INFO::lineEditByKey(&m_map, "name"), "!");
        clickButton(m_map, "cancel");
    });
    INFO::createAndExecDialog(nullptr, mainRow().param, closableRows(), {}, {}, &m_map);
    QCOMPARE(stored(m_file, "form/vmap").toMap(), (QVariantMap {{"name", "geladen"}}));
    // Also what was loaded is gone: the map is as it was before the form.
    QCOMPARE(m_map, (QVariantMap {{"name", "vorher"}}));
}

void tst_form_store::callbacksSeeTheLoadedValues()
{
    write("form", "vmap", QVariantMap {{"name", "geladen"}});
    QVariant bound = "alt";
    const QList<INFO> rows = {{E_LINEEDIT, A_NONE, "Name", &bound, "name"},
                              {E_DATA, A_NONE, "", QVariant(7), "data"}};
    QVariant seen;
    const Callback callback = ContextCallback([&](const CallbackContext& ctx) {
        if (ctx.type == kInit)
            seen = ctx.map->value("data");
        return 1;
    });
    auto result = INFO::createAndExecDialog(nullptr, mainRow().param, rows, MF_SHOW, {}, &m_map,
                                            nullptr, callback);
    QCOMPARE(bound, QVariant("geladen"));
    QCOMPARE(seen, QVariant(7)); // the file does not hold it
    delete result.mainWidget;
}

QTEST_MAIN(tst_form_store)
#include "tst_form_store.moc"
