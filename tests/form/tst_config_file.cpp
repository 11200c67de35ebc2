#include "tests/form/selector_bench.h"

using namespace mod_form_qt;
using Option = INFO::Option;

namespace {

/// A configuration with that text in its field.
QVariantMap holding(const QString& text)
{
    return {{"field", text}};
}

} // namespace

/// What the file of a form with several configurations holds after each step.
class tst_config_file : public SelectorBench
{
    Q_OBJECT

private slots:

    void init() { start(); }

    void cleanup() { end(); }

    void savesTheRememberedOneOnAccept();
    void staysInTheWholeMapFormWithSeparateKeys();
    void leavesOtherKeysAloneUnderAFilter();
    void withoutFileOrGroupNothingIsWritten_data();
    void withoutFileOrGroupNothingIsWritten();
    void aFirstNameWithASlashIsOneOfThem();
    void everyStepLeavesTheFileAsItShould();
    void twoFormsOnOneFileShareTheNameLastInUse();

private:
    /// Chooses a configuration with the mouse.
    void pick(const QString& name) const;
};

void tst_config_file::savesTheRememberedOneOnAccept()
{
    write("a", "A");
    write("b", "B");
    remember("a");
    m_form->open();
    m_form->choose("b");
    retype(m_form->edit(), "B2");
    m_form->accept();
    QCOMPARE(file().text("b"), QString("B2"));
    QCOMPARE(file().text("a"), QString("A"));
    QCOMPARE(file().names(), QStringList({"a", "b"}));
}

void tst_config_file::staysInTheWholeMapFormWithSeparateKeys()
{
    writeTwo();
    QSettings(m_file, QSettings::IniFormat).setValue("form/field", "einzeln");
    m_answers->answer(deleteTitle, QMessageBox::Yes);
    m_form->open({{Option::iniSeparateKeysKey, true}});
    QCOMPARE(m_form->field(), QString("einzeln"));

    m_form->choose("b");
    QCOMPARE(m_form->field(), QString("B"));
    QCOMPARE(file().text("a"), QString("einzeln"));
    QCOMPARE(file().remembered(), QString("b"));

    m_form->add("neu");
    QCOMPARE(file().text("neu"), QString("B"));
    QCOMPARE(file().names(), QStringList({"a", "b", "field", "neu"}));

    m_form->press("-");
    QCOMPARE(file().names(), QStringList({"a", "b", "field"}));
    // The key of the field itself is none of the selector's.
    QCOMPARE(file().everything().value("form/field"), QVariant("einzeln"));
}

void tst_config_file::leavesOtherKeysAloneUnderAFilter()
{
    writeTwo();
    m_form->m_filtered = true;
    m_form->open();
    m_form->m_map.insert("other", 5);
    retype(m_form->edit(), "A2");
    m_form->choose("b");
    QCOMPARE(file().everything().value("form/a").toMap(), holding("A2"));
    m_form->add("neu");
    QCOMPARE(file().everything().value("form/neu").toMap(), holding("B"));
}

void tst_config_file::withoutFileOrGroupNothingIsWritten_data()
{
    QTest::addColumn<QString>("missing");
    QTest::newRow("no file") << Option::iniFileNameKey;
    QTest::newRow("no group") << Option::iniGroupNameKey;
}

void tst_config_file::withoutFileOrGroupNothingIsWritten()
{
    QFETCH(QString, missing);
    writeTwo();
    const QMap<QString, QVariant> map {{"field", "R"}};
    for (const char* name : {"wurzel", "zwei"}) // outside of any group
        INFO::saveMapToIniFile(&map, m_file, "", false, nullptr, name);
    const QVariantMap before = file().everything();
    m_answers->answer(deleteTitle, QMessageBox::Yes);
    m_form->open({{missing, ""}});
    QCOMPARE(m_form->names(), QStringList {"erste"});
    bool asked = false;
    m_form->onceAskedForAName([&](QInputDialog* dialog) {
        asked = true;
        dialog->setTextValue("neu");
        dialog->accept();
    });
    m_form->press("+");
    m_form->press("-");
    QVERIFY(!asked);
    QCOMPARE(m_answers->titles(), QStringList());
    QCOMPARE(file().everything(), before);
    QCOMPARE(m_form->field(), QString("Anfang"));
}

void tst_config_file::aFirstNameWithASlashIsOneOfThem()
{
    const QVariantMap options {{Option::iniSumMapNameKey, "shop/erste"}};
    m_form->open(options);
    retype(m_form->edit(), "eins");
    m_form->add("neu");
    retype(m_form->edit(), "zwei");
    m_form->choose("shop/erste");
    QCOMPARE(m_form->field(), QString("eins"));
    retype(m_form->edit(), "drei");
    m_form->choose("neu");
    QCOMPARE(m_form->field(), QString("zwei"));

    m_form->m_map.clear();
    m_form->open(options);
    QCOMPARE(m_form->field(), QString("zwei"));
    m_form->choose("shop/erste");
    QCOMPARE(m_form->field(), QString("drei"));

    m_form->m_map.clear();
    m_form->open(options);
    QCOMPARE(m_form->list()->currentText(), QString("shop/erste"));
    QCOMPARE(m_form->field(), QString("drei"));
    m_answers->answer(deleteTitle, QMessageBox::Yes);
    m_form->press("-");
    QCOMPARE(m_form->names(), QStringList {"neu"});
    QCOMPARE(file().everything().keys(), QStringList({"default_conf/name", "form/neu"}));
}

void tst_config_file::pick(const QString& name) const
{
    QComboBox* box = m_form->list();
    QTest::mouseClick(box, Qt::LeftButton);
    QAbstractItemView* view = box->view();
    QTRY_VERIFY(view->isVisible());
    const QRect item = view->visualRect(box->model()->index(box->findText(name), 0))
                           .intersected(view->viewport()->rect());
    // A click counts only after the time of a double click.
    const auto closedByAClick = [&] {
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, item.center());
        return !view->isVisible();
    };
    QTRY_VERIFY(closedByAClick());
    QCOMPARE(box->currentText(), name);
}

void tst_config_file::everyStepLeavesTheFileAsItShould()
{
    writeTwo();
    m_answers->answer(deleteTitle, QMessageBox::Yes);
    QVariantMap expected {
        {"form/a", holding("A")}, {"form/b", holding("B")}, {"default_conf/name", "a"}};
    m_form->open();
    QCOMPARE(file().everything(), expected);

    pick("b");
    expected["default_conf/name"] = "b";
    QCOMPARE(file().everything(), expected);
    QCOMPARE(m_form->field(), QString("B"));

    retype(m_form->edit(), "B2");
    QCOMPARE(file().everything(), expected);

    m_form->add("neu");
    expected["form/b"] = holding("B2");
    expected["form/neu"] = holding("B2");
    expected["default_conf/name"] = "neu";
    QCOMPARE(file().everything(), expected);

    retype(m_form->edit(), "N2");
    pick("a");
    expected["form/neu"] = holding("N2");
    expected["default_conf/name"] = "a";
    QCOMPARE(file().everything(), expected);
    QCOMPARE(m_form->field(), QString("A"));

    m_form->press("-");
    expected.remove("form/a");
    expected["default_conf/name"] = "b";
    QCOMPARE(file().everything(), expected);
    QCOMPARE(m_form->field(), QString("B2"));

    retype(m_form->edit(), "B3");
    m_form->accept();
    expected["form/b"] = holding("B3");
    QCOMPARE(file().everything(), expected);
    QCOMPARE(m_answers->titles(), QStringList {deleteTitle});
}

void tst_config_file::twoFormsOnOneFileShareTheNameLastInUse()
{
    writeTwo();
    write("a", "OA", "other");
    write("x", "OX", "other");
    SelectorForm other(m_file);
    m_form->open();
    other.open({{Option::iniGroupNameKey, "other"}});
    QCOMPARE(other.names(), QStringList({"a", "x"}));
    QCOMPARE(other.list()->currentText(), QString("a"));
    m_form->choose("b");
    retype(other.edit(), "O2");
    other.accept();
    // The name goes over to the other form, the values of neither do.
    const QVariantMap expected {{"form/a", holding("A")},   {"form/b", holding("B")},
                                {"other/a", holding("OA")}, {"other/x", holding("OX")},
                                {"other/b", holding("O2")}, {"default_conf/name", "b"}};
    QCOMPARE(file().everything(), expected);
}

QTEST_MAIN(tst_config_file)

#include "tst_config_file.moc"
