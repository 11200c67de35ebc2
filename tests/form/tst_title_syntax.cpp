#include "form/mod_form_qt.h"

#include <QTest>

using namespace mod_form_qt;

using Option = INFO::Option;

namespace {

/// \return  "key=value" of all entries, joined by blanks; a value in quotes
QString entriesOf(const Option::Map& map)
{
    QStringList entries;
    for (auto entry = map.cbegin(); entry != map.cend(); ++entry)
        entries << QString("%1='%2'").arg(entry.key(), entry.value().toString());
    return entries.join(' ');
}

} // namespace

class tst_title_syntax : public QObject
{
    Q_OBJECT

private slots:
    void takesOptionsOutOfATitle_data();
    void takesOptionsOutOfATitle();
    void takesNamesInBrackets_data();
    void takesNamesInBrackets();
    void anOpeningSeparatorAloneIsLeftUntouched();
    void aTitleOfNothingButAConstructBecomesEmpty();
    void valuesAreTexts();
    void entriesOfTheMapStayUnlessReplaced();
    void separatorsCanBeOfAnyText();
    void otherCountsOfSeparatorsTakeNothing();
};

void tst_title_syntax::takesOptionsOutOfATitle_data()
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("rest");
    QTest::addColumn<QString>("entries");
    QTest::addColumn<bool>("taken");

    const auto none = QString();
    QTest::newRow("no construct") << "Name"
                                  << "Name" << none << false;
    QTest::newRow("behind the text") << "Name{{minwidth}{120}}"
                                     << "Name"
                                     << "minwidth='120'" << true;
    QTest::newRow("before the text") << "{{min}{1}}Name"
                                     << "Name"
                                     << "min='1'" << true;
    QTest::newRow("inside the text") << "Na{{min}{1}}me"
                                     << "Name"
                                     << "min='1'" << true;
    QTest::newRow("several") << "{{min}{1}}Name{{max}{9}}"
                             << "Name"
                             << "max='9' min='1'" << true;
    QTest::newRow("one key twice") << "{{a}{1}}{{a}{2}}"
                                   << ""
                                   << "a='2'" << true;
    QTest::newRow("key is trimmed") << "{{ a b\t}{1}}x"
                                    << "x"
                                    << "a b='1'" << true;
    QTest::newRow("value is not trimmed") << "{{a}{ 1 }}x"
                                          << "x"
                                          << "a=' 1 '" << true;
    QTest::newRow("empty value") << "{{a}{}}x"
                                 << "x"
                                 << "a=''" << true;
    QTest::newRow("empty key stores nothing") << "{{}{1}}x"
                                              << "x" << none << true;
    QTest::newRow("blank key stores nothing") << "x{{ }{1}}"
                                              << "x" << none << true;
    QTest::newRow("a semicolon in the value") << "x{{a}{1;2}};y"
                                              << "x;y"
                                              << "a='1;2'" << true;
    QTest::newRow("no middle separator") << "x{{a}}y"
                                         << "x{{a}}y" << none << false;
    QTest::newRow("no closing separator") << "x{{a}{1}"
                                          << "x{{a}{1}" << none << false;
    QTest::newRow("only a closing separator") << "x}}"
                                              << "x}}" << none << false;
    QTest::newRow("middle separator before the opening one") << "}{{{a"
                                                             << "}{{{a" << none << false;
    QTest::newRow("an open one behind a taken one") << "{{a}{1}}x{{b"
                                                    << "x{{b"
                                                    << "a='1'" << true;
    QTest::newRow("braces that meet when a construct goes") << "{{{a}{1}}{b}{2}}"
                                                            << "{b}{2}}"
                                                            << "{a='1'" << true;
    QTest::newRow("empty title") << ""
                                 << "" << none << true;
}

void tst_title_syntax::takesOptionsOutOfATitle()
{
    QFETCH(QString, title);
    Option::Map map;
    QTEST(Option::extractVars(Option::varSeps, title, map), "taken");
    QTEST(title, "rest");
    QTEST(entriesOf(map), "entries");
}

void tst_title_syntax::takesNamesInBrackets_data()
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("rest");
    QTest::addColumn<QString>("entries");
    QTest::addColumn<bool>("taken");

    const auto none = QString();
    QTest::newRow("no name") << "Name"
                             << "Name" << none << false;
    QTest::newRow("one") << "Name[s]"
                         << "Name"
                         << "s=''" << true;
    QTest::newRow("several") << "[s]Name[ x;1 ]"
                             << "Name"
                             << "s='' x;1=''" << true;
    QTest::newRow("empty name stores nothing") << "Name[]"
                                               << "Name" << none << true;
    QTest::newRow("closing bracket is missing") << "Name[s"
                                                << "Name[s" << none << false;
    QTest::newRow("closing before opening") << "]Name["
                                            << "]Name[" << none << false;
}

void tst_title_syntax::takesNamesInBrackets()
{
    QFETCH(QString, title);
    Option::Map map;
    QTEST(Option::extractVars(Option::arrSeps, title, map), "taken");
    QTEST(title, "rest");
    QTEST(entriesOf(map), "entries");
}

void tst_title_syntax::anOpeningSeparatorAloneIsLeftUntouched()
{
    QString title = "Betrag {{min";
    Option::Map map;
    QVERIFY(!Option::extractVars(Option::varSeps, title, map));
    QCOMPARE(title, "Betrag {{min");
    QVERIFY(map.isEmpty());
}

void tst_title_syntax::aTitleOfNothingButAConstructBecomesEmpty()
{
    QString title = "{{min}{1}}";
    Option::Map map;
    QVERIFY(Option::extractVars(Option::varSeps, title, map));
    QCOMPARE(title, "");
    QCOMPARE(map.size(), 1);
    QCOMPARE(map["min"], QVariant("1"));
}

void tst_title_syntax::valuesAreTexts()
{
    QString title = "{{min}{1}}[s]";
    Option::Map map;
    Option::extractVars(Option::varSeps, title, map);
    Option::extractVars(Option::arrSeps, title, map);
    QCOMPARE(map["min"].typeId(), int(QMetaType::QString));
    QCOMPARE(map["s"].typeId(), int(QMetaType::QString));
}

void tst_title_syntax::entriesOfTheMapStayUnlessReplaced()
{
    QString title = "{{min}{1}}";
    Option::Map map {{"min", 5}, {"max", 9}};
    Option::extractVars(Option::varSeps, title, map);
    QCOMPARE(entriesOf(map), "max='9' min='1'");
}

void tst_title_syntax::separatorsCanBeOfAnyText()
{
    QString title = "x BEGIN a mid 1 END y";
    Option::Map map;
    QVERIFY(!Option::extractVars({"begin", "mid", "end"}, title, map));
    QVERIFY(Option::extractVars({"BEGIN", "mid", "END"}, title, map));
    QCOMPARE(title, "x  y");
    QCOMPARE(entriesOf(map), "a=' 1 '");
}

void tst_title_syntax::otherCountsOfSeparatorsTakeNothing()
{
    QString title = "[a]";
    Option::Map map;
    QVERIFY(!Option::extractVars({}, title, map));
    QVERIFY(!Option::extractVars({"["}, title, map));
    QCOMPARE(title, "[a]");
    QVERIFY(map.isEmpty());
}

QTEST_APPLESS_MAIN(tst_title_syntax)
#include "tst_title_syntax.moc"
