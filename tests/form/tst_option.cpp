#include "form/mod_form_qt.h"

#include <QTest>

using namespace mod_form_qt;

using Option = INFO::Option;

class tst_option : public QObject
{
    Q_OBJECT

private slots:
    void keysHaveTheirTexts_data();
    void keysHaveTheirTexts();
    void programWideDefaults();
    void separators();
    void anEmptyMapAndAnEmptyTextGiveNoTitleAndNoOptions_data();
    void anEmptyMapAndAnEmptyTextGiveNoTitleAndNoOptions();
    void ofParamTakesAMapThatHoldsSomething();
    void ofParamTakesATextAsTitle_data();
    void ofParamTakesATextAsTitle();
    void aTextIsTheTitle();
    void aPlainOptionAnswersEmpty();
    void anEmptyMapAnswersLikeAPlainOption();
    void fromAVariantOnlyAMapCounts();
    void textAccessorsReadTheirKey_data();
    void textAccessorsReadTheirKey();
    void valueAccessorsReadTheirKey_data();
    void valueAccessorsReadTheirKey();
    void switchAccessorsReadTheirKey();
    void numberedKeysAreKeyAndNumber();
    void numberedAccessorsReadTheirKey();
    void containsKeyTellsBothFormsApart();
    void mayHaveNumberedNeverOverlooksOne();
    void alignmentsTellWhetherTheyWereFound();
    void settersWriteTheNumberedKey();
    void onlySomeKeysAreValidationRules_data();
    void onlySomeKeysAreValidationRules();
    void copiesShareTheirMap();
    void setValueReturnsACopyThatShares();
    void theSourceMapIsNotShared();
    void readingCreatesNoEntry();
    void removeTakesAnEntryOut();
};

namespace {

#define KEY(name, text)                                                                            \
    {                                                                                              \
        QStringLiteral(#name), Option::name, QStringLiteral(text)                                  \
    }

struct OptionKey
{
    QString name;
    QString value;
    QString text;
};

QList<OptionKey> allKeys()
{
    return {
        KEY(titleKey, "title"),
        KEY(plainTitleKey, "plaintitle"),
        KEY(iniFileNameKey, "inifileName"),
        KEY(iniGroupNameKey, "inigroupname"),
        KEY(iniSeparateKeysKey, "iniseparatekeys"),
        KEY(iniSumMapNameKey, "inisummapname"),
        KEY(iniUseMultiConfKey, "iniusemulticonf"),
        KEY(iniAutoSaveKey, "iniautosave"),
        KEY(currentDirKey, "currentdir"),
        KEY(fileFilterKey, "filefilter"),
        KEY(localeKey, "locale"),
        KEY(indexAlignKey, "indexalign"),
        KEY(typeAlignKey, "typealign"),
        KEY(defaultAlignKey, "defaultalign"),
        KEY(defaultTypeAlignKey, "defaulttypealign"),
        KEY(stretchKey, "stretch"),
        KEY(minWidthKey, "minwidth"),
        KEY(maxWidthKey, "maxwidth"),
        KEY(minHeightKey, "minheight"),
        KEY(maxHeightKey, "maxheight"),
        KEY(fixedWidthKey, "fixedwidth"),
        KEY(fixedHeightKey, "fixedheight"),
        KEY(sizePolicyHKey, "sizepolicyh"),
        KEY(sizePolicyVKey, "sizepolicyv"),
        KEY(fileMustExistKey, "file_must_exist"),
        KEY(minKey, "min"),
        KEY(maxKey, "max"),
        KEY(minCharsKey, "minchars"),
        KEY(maxCharsKey, "maxchars"),
        KEY(mandatoryKey, "required"),
        KEY(regexPatternKey, "regex_pattern"),
        KEY(regexPatternOptionsKey, "regex_pattern_options"),
        KEY(regexPatternWildcardKey, "regex_pattern_wildcard"),
        KEY(metaTypeKey, "metatype"),
        KEY(precisionKey, "precision"),
        KEY(groupSepKey, "groupsep"),
        KEY(signedDataTypeKey, "signed_datatype"),
        KEY(spinBoxKey, "spinbox"),
        KEY(spinBoxSingleStepKey, "spinbox_singlestep"),
        KEY(autoCorrectMinMaxKey, "autocorrect_minmax"),
        KEY(suffixKey, "suffix"),
        KEY(prefixKey, "prefix"),
        KEY(timerKey, "timer"),
    };
}

} // namespace

void tst_option::keysHaveTheirTexts_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("expected");

    const QList<OptionKey> keys = allKeys();
    for (const OptionKey& key : keys)
        QTest::newRow(qPrintable(key.name)) << key.value << key.text;
}

void tst_option::keysHaveTheirTexts()
{
    QFETCH(QString, value);
    QTEST(value, "expected");
}

void tst_option::programWideDefaults()
{
    QCOMPARE(Option::defaultNumberPrecision, 2);
    QCOMPARE(Option::useNumberGrouping, true);
    QCOMPARE(Option::useNumberSpinBox, false);
    QCOMPARE(Option::useAutoCorrectMinMax, false);
    QCOMPARE(Option::defaultRegexPatternOptions, QRegularExpression().patternOptions());
}

void tst_option::separators()
{
    QCOMPARE(Option::varSeps, QStringList({"{{", "}{", "}}"}));
    QCOMPARE(Option::arrSeps, QStringList({"[", "]"}));
    QCOMPARE(Option::pathSep, "|");
    QCOMPARE(Option::titleSeparator, ";");
}

void tst_option::anEmptyMapAndAnEmptyTextGiveNoTitleAndNoOptions_data()
{
    QTest::addColumn<QVariant>("param");

    QTest::newRow("nothing") << QVariant();
    QTest::newRow("empty map") << QVariant(QVariantMap());
    QTest::newRow("empty text") << QVariant(QString(""));
    QTest::newRow("null text") << QVariant(QString());
}

void tst_option::anEmptyMapAndAnEmptyTextGiveNoTitleAndNoOptions()
{
    QFETCH(QVariant, param);
    const INFO row(E_LINEEDIT, A_NONE, param);
    const Option option = Option::ofParam(row.param);
    QCOMPARE(option.title(), "");
    QVERIFY(option.isEmpty());
    QVERIFY(option.map().isEmpty());
}

void tst_option::ofParamTakesAMapThatHoldsSomething()
{
    const QVariantMap map {{"title", "Name"}, {"min", 1}};
    const Option option = Option::ofParam(map);
    QCOMPARE(option.map(), map);
    QCOMPARE(option.title(), "Name");

    const Option untitled = Option::ofParam(QVariantMap {{"min", 1}});
    QCOMPARE(untitled.title(), "");
    QCOMPARE(untitled.map().keys(), QStringList("min"));
}

void tst_option::ofParamTakesATextAsTitle_data()
{
    QTest::addColumn<QVariant>("param");
    QTest::addColumn<QString>("title");

    QTest::newRow("text") << QVariant("Name;Öffnen") << "Name;Öffnen";
    QTest::newRow("number") << QVariant(12) << "12";
    QTest::newRow("bytes") << QVariant(QByteArray("Name")) << "Name";
}

void tst_option::ofParamTakesATextAsTitle()
{
    QFETCH(QVariant, param);
    const Option option = Option::ofParam(param);
    QTEST(option.title(), "title");
    QCOMPARE(option.map().keys(), QStringList("title"));
}

void tst_option::aTextIsTheTitle()
{
    const Option option(QString("Name"));
    QCOMPARE(option.title(), "Name");
    QCOMPARE(option.map(), QVariantMap({{"title", "Name"}}));
}

void tst_option::aPlainOptionAnswersEmpty()
{
    const Option option;
    QCOMPARE(option.title(), "");
    QVERIFY(option.isEmpty());
    QVERIFY(option.map().isEmpty());
    QVERIFY(!option.min().isValid());
    QVERIFY(!option.minWidth(0).isValid());
    QVERIFY(!option.containsKey("min"));
    QVERIFY(!option.mayHaveNumbered("minwidth"));
    QVERIFY(!option.alignByType(E_LABEL).first);
    QVERIFY(!option.hasValidationRules());
    QCOMPARE(option.value("min", 7), QVariant(7));
}

void tst_option::anEmptyMapAnswersLikeAPlainOption()
{
    const Option option {Option::Map()};
    QCOMPARE(option.title(), "");
    QVERIFY(option.isEmpty());
    QVERIFY(!option.metaType().isValid());
    QCOMPARE(option.useSpinBox(), Option::useNumberSpinBox);
    QCOMPARE(option.value("min", 7), QVariant(7));
}

void tst_option::fromAVariantOnlyAMapCounts()
{
    QCOMPARE(Option(QVariant(QVariantMap {{"min", 1}})).min(), QVariant(1));
    QVERIFY(Option(QVariant("Name")).isEmpty());
    QVERIFY(Option(QVariant(5)).isEmpty());
    QVERIFY(Option(QVariant()).isEmpty());
}

void tst_option::textAccessorsReadTheirKey_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<int>("accessor");

    const char* const keys[] = {"title",         "prefix",       "suffix",
                                "regex_pattern", "inigroupname", "inisummapname",
                                "currentdir",    "filefilter",   "inifileName"};
    int accessor = 0;
    for (const char* key : keys)
        QTest::newRow(key) << QString(key) << accessor++;
}

void tst_option::textAccessorsReadTheirKey()
{
    using Accessor = QString (Option::*)() const;
    static const Accessor accessors[] = {
        &Option::title,        &Option::prefix,       &Option::suffix,
        &Option::regexPattern, &Option::iniGroupName, &Option::iniSumMapName,
        &Option::currentDir,   &Option::fileFilter,   &Option::iniFileName};
    QFETCH(QString, key);
    QFETCH(int, accessor);
    const Option option(Option::Map {{key, "found"}});
    for (int other = 0; other < 9; ++other)
        QCOMPARE((option.*accessors[other])(), other == accessor ? "found" : "");
}

void tst_option::valueAccessorsReadTheirKey_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<int>("accessor");

    const char* const keys[] = {"metatype", "min", "max", "signed_datatype", "spinbox_singlestep"};
    int accessor = 0;
    for (const char* key : keys)
        QTest::newRow(key) << QString(key) << accessor++;
}

void tst_option::valueAccessorsReadTheirKey()
{
    using Accessor = QVariant (Option::*)() const;
    static const Accessor accessors[] = {&Option::metaType, &Option::min, &Option::max,
                                         &Option::isSignedDataType, &Option::spinBoxSingleStep};
    QFETCH(QString, key);
    QFETCH(int, accessor);
    const Option option(Option::Map {{key, 3}});
    for (int other = 0; other < 5; ++other) {
        const QVariant value = (option.*accessors[other])();
        QCOMPARE(value, other == accessor ? QVariant(3) : QVariant());
    }
}

void tst_option::switchAccessorsReadTheirKey()
{
    QVERIFY(Option(Option::Map {{"iniusemulticonf", true}}).iniUseMultiConf());
    QVERIFY(!Option(Option::Map {{"iniusemulticonf", false}}).iniUseMultiConf());
    QVERIFY(!Option().iniUseMultiConf());
    QVERIFY(Option(Option::Map {{"iniseparatekeys", true}}).iniSeparateKeys());
    QVERIFY(!Option().iniSeparateKeys());
    QVERIFY(Option(Option::Map {{"spinbox", true}}).useSpinBox());
    QVERIFY(Option(Option::Map {{"spinbox", "true"}}).useSpinBox());
    QVERIFY(!Option(Option::Map {{"spinbox", "false"}}).useSpinBox());
    QVERIFY(!Option().useSpinBox());
}

void tst_option::numberedKeysAreKeyAndNumber()
{
    QCOMPARE(Option::buildKey("minwidth", E_LINEEDIT), "minwidth20000");
    QCOMPARE(Option::buildKey("minwidth", 0), "minwidth0");
    QCOMPARE(Option::buildKey("a%1", -3), "a%1-3");
}

void tst_option::numberedAccessorsReadTheirKey()
{
    const Option option(Option::Map {{"minwidth20000", 1},
                                     {"sizepolicyh20000", 2},
                                     {"sizepolicyv20000", 3},
                                     {"minwidth", 4},
                                     {"stretch1", 5}});
    QCOMPARE(option.minWidth(20000), QVariant(1));
    QCOMPARE(option.sizePolicyH(20000), QVariant(2));
    QCOMPARE(option.sizePolicyV(20000), QVariant(3));
    QCOMPARE(option.numbered("stretch", 1), QVariant(5));
    QVERIFY(!option.minWidth(0).isValid());
    QVERIFY(!option.sizePolicyH(0).isValid());
    QVERIFY(!option.numbered("stretch", 11).isValid());
}

void tst_option::containsKeyTellsBothFormsApart()
{
    const Option option(Option::Map {{"minwidth", 1}, {"maxwidth2", 2}, {"min", QVariant()}});
    QVERIFY(option.containsKey("minwidth"));
    QVERIFY(!option.containsKey("minwidth", 2, true));
    QVERIFY(!option.containsKey("maxwidth", 2, false));
    QVERIFY(option.containsKey("maxwidth", 2, true));
    QVERIFY(option.containsKey("min"));
}

void tst_option::mayHaveNumberedNeverOverlooksOne()
{
    const Option option(Option::Map {
        {"a", 0}, {"minwidth", 1}, {"minwidth0", 2}, {"stretch50006", 3}, {"title", "x"}});
    QVERIFY(option.mayHaveNumbered("minwidth"));
    QVERIFY(option.mayHaveNumbered("stretch"));
    QVERIFY(!option.mayHaveNumbered("maxwidth"));
    QVERIFY(!option.mayHaveNumbered("title"));
    QVERIFY(!option.mayHaveNumbered("typealign"));
}

void tst_option::alignmentsTellWhetherTheyWereFound()
{
    const Option option(
        Option::Map {{"typealign20003", 33},
                     {"indexalign1", QVariant::fromValue(Qt::AlignRight)},
                     {"typealign1", QVariant::fromValue(Qt::Alignment(Qt::AlignTop))},
                     {"typealign2", "132"},
                     {"typealign3", 0}});
    QCOMPARE(option.alignByType(E_LABEL),
             std::make_pair(true, Qt::Alignment(Qt::AlignLeft | Qt::AlignTop)));
    QCOMPARE(option.alignByIndex(1), std::make_pair(true, Qt::Alignment(Qt::AlignRight)));
    QCOMPARE(option.alignByType(1), std::make_pair(true, Qt::Alignment(Qt::AlignTop)));
    QCOMPARE(option.alignByType(2), std::make_pair(true, Qt::Alignment(Qt::AlignCenter)));
    QCOMPARE(option.alignByType(3), std::make_pair(true, Qt::Alignment()));
    QCOMPARE(option.alignByType(4), std::make_pair(false, Qt::Alignment()));
    QCOMPARE(option.alignByIndex(2), std::make_pair(false, Qt::Alignment()));
}

void tst_option::settersWriteTheNumberedKey()
{
    Option option;
    option.setSizePolicyH(1, QSizePolicy::Expanding);
    option.setSizePolicyV(2, QSizePolicy::Maximum);
    option.setAlignByType(E_LABEL, Qt::AlignCenter);
    QCOMPARE(option.map(),
             QVariantMap({{"sizepolicyh1", 7}, {"sizepolicyv2", 4}, {"typealign20003", 0x84}}));
}

void tst_option::onlySomeKeysAreValidationRules_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<bool>("expected");

    const QSet<QString> rules {"min",
                               "max",
                               "required",
                               "regex_pattern",
                               "regex_pattern_options",
                               "regex_pattern_wildcard"};
    const QList<OptionKey> keys = allKeys();
    for (const OptionKey& key : keys)
        QTest::newRow(qPrintable(key.text)) << key.text << rules.contains(key.text);
}

void tst_option::onlySomeKeysAreValidationRules()
{
    QFETCH(QString, key);
    QTEST(Option(Option::Map {{key, 1}}).hasValidationRules(), "expected");
}

void tst_option::copiesShareTheirMap()
{
    Option option(Option::Map {{"min", 1}});
    Option copy = option;
    copy.setValue("max", 9);
    QCOMPARE(option.max(), QVariant(9));
    option.remove("min");
    QVERIFY(!copy.min().isValid());
}

void tst_option::setValueReturnsACopyThatShares()
{
    Option option;
    Option copy = option.setValue("min", 1);
    QCOMPARE(copy.min(), QVariant(1));
    copy.setValue("min", 2);
    QCOMPARE(option.min(), QVariant(2));
    QCOMPARE(Option().setValue("a", 1).setValue("b", 2).map(), QVariantMap({{"a", 1}, {"b", 2}}));
}

void tst_option::theSourceMapIsNotShared()
{
    const QVariant param = QVariantMap {{"min", 1}};
    Option first = Option::ofParam(param);
    Option second = Option::ofParam(param);
    first.setValue("min", 2);
    QCOMPARE(second.min(), QVariant(1));
    QCOMPARE(param.toMap().value("min"), QVariant(1));
}

void tst_option::readingCreatesNoEntry()
{
    const Option option(Option::Map {{"other", 1}});
    option.title();
    option.iniFileName();
    option.min();
    option.useSpinBox();
    option.iniSeparateKeys();
    option.minWidth(1);
    option.numbered("stretch", 1);
    option.alignByType(1);
    option.alignByIndex(1);
    option.value("missing", 5);
    option.hasValidationRules();
    QCOMPARE(option.map().keys(), QStringList("other"));
}

void tst_option::removeTakesAnEntryOut()
{
    Option option(Option::Map {{"min", 1}, {"max", 2}});
    option.remove("min");
    option.remove("missing");
    QCOMPARE(option.map().keys(), QStringList("max"));
    Option plain;
    plain.remove("min");
    QVERIFY(plain.isEmpty());
}

QTEST_APPLESS_MAIN(tst_option)
#include "tst_option.moc"
