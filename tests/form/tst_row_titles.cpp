#include "form/build/prepare_row.h"
#include "form/mod_form_qt.h"

#include <QtTest>
#include <QtWidgets>

using namespace mod_form_qt;

using Option = INFO::Option;

namespace {

const QString star = " <big><strong style=\"color:red\">*</strong></big>";

PreparedRow prepared(const std::bitset<256>& attr, const QVariant& param = QVariant())
{
    return prepareRow(INFO(E_LINEEDIT, attr, param), {});
}

PreparedRow bold(const std::bitset<256>& attr, const QVariant& param)
{
    FormDefaults defaults;
    defaults.boldLabels = true;
    return prepareRow(INFO(E_LINEEDIT, attr, param), defaults);
}

QVariant optionOf(const PreparedRow& row, const QString& key)
{
    return row.option.value(key);
}

} // namespace

class tst_row_titles : public QObject
{
    Q_OBJECT

private slots:
    void optionsAreTakenOutOfTheTitle();
    void aTitleOfNothingButOptionsIsEmpty();
    void anOptionInTheTitleBeatsTheAttribute();
    void theTitleIsSplitAtSemicolons_data();
    void theTitleIsSplitAtSemicolons();
    void withSeveralPartsTheTitleIsTheFirst();
    void labelsAreBoldWhereTheFormSaysSo_data();
    void labelsAreBoldWhereTheFormSaysSo();
    void oneRowCanBeBoldAlone();
    void thePlainTitleHasNoMarkup_data();
    void thePlainTitleHasNoMarkup();
    void mandatoryLabelsAreMarked_data();
    void mandatoryLabelsAreMarked();
    void aMandatoryRowWithAnEmptyTitleShowsNoStar();
    void boldAndMarkedLabels();
    void markupSparesThePlainTextOfALabel();
};

void tst_row_titles::optionsAreTakenOutOfTheTitle()
{
    const PreparedRow row = prepared(A_NONE, "Name{{minwidth}{120}};Mehr{{min}{1}}");
    QCOMPARE(row.texts, QStringList({"Name", "Mehr"}));
    QCOMPARE(row.option.map(),
             QVariantMap(
                 {{"title", "Name"}, {"plaintitle", "Name"}, {"minwidth", "120"}, {"min", "1"}}));
    QCOMPARE(prepared(A_NONE, "Name {{min").label, "Name {{min");
}

void tst_row_titles::aTitleOfNothingButOptionsIsEmpty()
{
    const PreparedRow row = prepared(A_NONE, "{{min}{1}}");
    QCOMPARE(row.texts, QStringList(""));
    QCOMPARE(row.label, "");
    QCOMPARE(row.option.title(), "");
    QCOMPARE(row.option.min(), QVariant("1"));
    QCOMPARE(prepared(A_NONE, "{{title}{Name}}").label, "Name");
}

void tst_row_titles::anOptionInTheTitleBeatsTheAttribute()
{
    QCOMPARE(optionOf(prepared(A_MANDATORY, "Name{{required}{false}}"), "required"),
             QVariant("false"));
}

void tst_row_titles::theTitleIsSplitAtSemicolons_data()
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<QBitArray>("attributes");
    QTest::addColumn<QStringList>("expected");

    const QBitArray none = toBitArray(A_NONE);
    QTest::newRow("one part") << "Pfad" << none << QStringList("Pfad");
    QTest::newRow("two parts") << "Pfad;Wahl..." << none << QStringList({"Pfad", "Wahl..."});
    QTest::newRow("empty parts stay") << ";a;;" << none << QStringList({"", "a", "", ""});
    QTest::newRow("blanks stay") << " a ; b" << none << QStringList({" a ", " b"});
    QTest::newRow("no split") << "Pfad;Wahl..." << toBitArray(A_NO_TITLE_SPLIT)
                              << QStringList("Pfad;Wahl...");
}

void tst_row_titles::theTitleIsSplitAtSemicolons()
{
    QFETCH(QString, title);
    QFETCH(QBitArray, attributes);
    QTEST(prepared(fromBitArray(attributes), title).texts, "expected");
}

void tst_row_titles::withSeveralPartsTheTitleIsTheFirst()
{
    const PreparedRow row = prepared(A_NONE, "Pfad;Wahl...");
    QCOMPARE(row.label, "Pfad");
    QCOMPARE(row.plainTitle, "Pfad");
    QCOMPARE(row.option.title(), "Pfad");
    QCOMPARE(prepared(A_NO_TITLE_SPLIT, "Pfad;Wahl...").option.title(), "Pfad;Wahl...");
}

void tst_row_titles::labelsAreBoldWhereTheFormSaysSo_data()
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<QBitArray>("attributes");
    QTest::addColumn<QString>("expected");

    const QBitArray none = toBitArray(A_NONE);
    QTest::newRow("plain") << "Name" << none << "<b>Name</b>";
    QTest::newRow("empty") << "" << none << "";
    QTest::newRow("flipped") << "Name" << toBitArray(A_FLIP_LABEL_BOLD) << "Name";
    QTest::newRow("no label") << "Name" << toBitArray(A_NO_LABEL) << "Name";
    QTest::newRow("bold already") << "Der <b>Name</b>" << none << "Der <b>Name</b>";
    QTest::newRow("strong already") << "<strong>Name</strong>" << none << "<strong>Name</strong>";
    QTest::newRow("other markup") << "<i>Name</i>" << none << "<b><i>Name</i></b>";
    QTest::newRow("first part") << "Pfad;Wahl" << none << "<b>Pfad</b>";
}

void tst_row_titles::labelsAreBoldWhereTheFormSaysSo()
{
    QFETCH(QString, title);
    QFETCH(QBitArray, attributes);
    const PreparedRow row = bold(fromBitArray(attributes), title);
    QTEST(row.label, "expected");
    QCOMPARE(row.texts, title.split(';'));
    QCOMPARE(row.option.title(), row.texts.first());
}

void tst_row_titles::oneRowCanBeBoldAlone()
{
    QCOMPARE(prepared(A_FLIP_LABEL_BOLD, "Name").label, "<b>Name</b>");
    QCOMPARE(prepared(A_NONE, "Name").label, "Name");
}

void tst_row_titles::thePlainTitleHasNoMarkup_data()
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("expected");

    QTest::newRow("plain") << "Name"
                           << "Name";
    QTest::newRow("markup") << "<i>Ihr</i> <b>Name</b>"
                            << "Ihr Name";
    QTest::newRow("entity") << "<b>a &lt; b</b>"
                            << "a < b";
    QTest::newRow("smaller than") << "a < b"
                                  << "a < b";
    QTest::newRow("ampersand") << "R&D"
                               << "R&D";
}

void tst_row_titles::thePlainTitleHasNoMarkup()
{
    QFETCH(QString, title);
    const std::bitset<256> attr = A_MANDATORY | A_NO_TITLE_SPLIT;
    for (const PreparedRow& row : {prepared(attr, title), bold(attr, title)}) {
        QTEST(row.plainTitle, "expected");
        QTEST(row.option.value(Option::plainTitleKey).toString(), "expected");
    }
}

void tst_row_titles::mandatoryLabelsAreMarked_data()
{
    QTest::addColumn<QBitArray>("attributes");
    QTest::addColumn<QString>("expected");

    QTest::newRow("not mandatory") << toBitArray(A_NONE) << "Name";
    QTest::newRow("mandatory") << toBitArray(A_MANDATORY) << "Name" + star;
    QTest::newRow("no marker") << toBitArray(A_MANDATORY | A_NO_MANDATORY_MARKER) << "Name";
    QTest::newRow("marker only") << toBitArray(A_NO_MANDATORY_MARKER) << "Name";
}

void tst_row_titles::mandatoryLabelsAreMarked()
{
    QFETCH(QBitArray, attributes);
    const PreparedRow row = prepared(fromBitArray(attributes), "Name;Text");
    QTEST(row.label, "expected");
    QCOMPARE(row.texts, QStringList({"Name", "Text"}));
    QCOMPARE(row.option.title(), "Name");
}

void tst_row_titles::aMandatoryRowWithAnEmptyTitleShowsNoStar()
{
    QCOMPARE(prepared(A_MANDATORY, "").label, "");
    QCOMPARE(prepared(A_MANDATORY, ";Text").label, "");
    QCOMPARE(bold(A_MANDATORY, "").label, "");
    QCOMPARE(optionOf(prepared(A_MANDATORY, ""), "required"), QVariant(true));
}

void tst_row_titles::boldAndMarkedLabels()
{
    QCOMPARE(bold(A_MANDATORY, "Name").label, "<b>Name</b>" + star);
}

void tst_row_titles::markupSparesThePlainTextOfALabel()
{
    for (const PreparedRow& row : {bold(A_NONE, "a < b"), prepared(A_MANDATORY, "a < b")})
        QVERIFY(QTextDocumentFragment::fromHtml(row.label).toPlainText().startsWith("a < b"));
    QCOMPARE(prepared(A_NONE, "a < b").label, "a < b");
}

QTEST_MAIN(tst_row_titles)
#include "tst_row_titles.moc"
