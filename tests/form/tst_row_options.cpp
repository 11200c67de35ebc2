// Every option key, in a row or in the form, by its effect.

#include "tests/form/form_fixture.h"

using namespace mod_form_qt;

using Option = INFO::Option;

namespace {

struct OptionCase
{
    QString key;
    QVariant value;
    INFO row; // of the key "k"; the option is added to its param
    std::function<bool(TestForm&)> holds; // true with the option, false without it
};

INFO row(int type, const DataVariant& data = {}, const QVariantMap& options = {},
         std::bitset<256> attr = {})
{
    return INFO(type, attr, options, data, "k");
}

template <typename T>
T* input(TestForm& form)
{
    return form.find<T>("k");
}

std::vector<OptionCase> sizeCases()
{
    using Check = std::function<bool(QWidget*)>;
    const std::pair<QString, std::pair<int, Check>> properties[] = {
        {Option::minWidthKey, {111, [](QWidget* w) { return w->minimumWidth() == 111; }}},
        {Option::maxWidthKey, {112, [](QWidget* w) { return w->maximumWidth() == 112; }}},
        {Option::minHeightKey, {53, [](QWidget* w) { return w->minimumHeight() == 53; }}},
        {Option::maxHeightKey, {54, [](QWidget* w) { return w->maximumHeight() == 54; }}},
        {Option::fixedWidthKey,
         {115, [](QWidget* w) { return w->minimumWidth() == 115 && w->maximumWidth() == 115; }}},
        {Option::fixedHeightKey,
         {56, [](QWidget* w) { return w->minimumHeight() == 56 && w->maximumHeight() == 56; }}},
        {Option::sizePolicyHKey,
         {int(QSizePolicy::Ignored),
          [](QWidget* w) { return w->sizePolicy().horizontalPolicy() == QSizePolicy::Ignored; }}},
        {Option::sizePolicyVKey,
         {int(QSizePolicy::Ignored),
          [](QWidget* w) { return w->sizePolicy().verticalPolicy() == QSizePolicy::Ignored; }}},
    };
    std::vector<OptionCase> cases;
    for (const auto& [key, effect] : properties) {
        const Check check = effect.second;
        const auto holds = [check](TestForm& form) { return check(input<QLineEdit>(form)); };
        // By base type, by row type, by position.
        cases.push_back({Option::buildKey(key, E_LINEEDIT), effect.first, row(E_NUMBER, 1), holds});
        cases.push_back({Option::buildKey(key, E_NUMBER), effect.first, row(E_NUMBER, 1), holds});
        cases.push_back({Option::buildKey(key, 0), effect.first, row(E_NUMBER, 1), holds});
    }
    return cases;
}

std::vector<OptionCase> inputCases()
{
    const QVariantMap spin = {{Option::spinBoxKey, true}};
    const QVariantMap title = {{Option::titleKey, "Titel"}};
    return {
        {Option::titleKey, "Titel", row(E_LINEEDIT),
         [](TestForm& f) {
             const auto* label = INFO::labelByKey(&f.map, "k");
             return label && label->text() == "Titel";
         }},
        {Option::localeKey, QLocale(QLocale::German), row(E_LINEEDIT),
         [](TestForm& f) { return input<QLineEdit>(f)->locale().language() == QLocale::German; }},
        {Option::maxCharsKey, 3, row(E_LINEEDIT),
         [](TestForm& f) { return input<QLineEdit>(f)->maxLength() == 3; }},
        {Option::regexPatternKey, "[ab]*", row(E_LINEEDIT),
         [](TestForm& f) {
             QTest::keyClicks(input<QLineEdit>(f), "axb");
             return input<QLineEdit>(f)->text() == "ab";
         }},
        {Option::regexPatternOptionsKey, int(QRegularExpression::CaseInsensitiveOption),
         row(E_LINEEDIT, {}, {{Option::regexPatternKey, "[ab]*"}}),
         [](TestForm& f) {
             QTest::keyClicks(input<QLineEdit>(f), "AB");
             return input<QLineEdit>(f)->text() == "AB";
         }},
        {Option::regexPatternWildcardKey, true,
         row(E_LINEEDIT, {}, {{Option::regexPatternKey, "[ab]*"}}),
         [](TestForm& f) { return input<QLineEdit>(f)->validator() == nullptr; }},
        {Option::spinBoxKey, true, row(E_NUMBER, 1),
         [](TestForm& f) { return input<QSpinBox>(f) != nullptr; }},
        {Option::metaTypeKey, int(QMetaType::Int), row(E_NUMBER, "7", spin),
         [](TestForm& f) { return input<QSpinBox>(f) && input<QSpinBox>(f)->value() == 7; }},
        {Option::precisionKey, 4, row(E_NUMBER, 1.5, spin),
         [](TestForm& f) { return input<QDoubleSpinBox>(f)->decimals() == 4; }},
        {Option::groupSepKey, false, row(E_NUMBER, 1, spin),
         [](TestForm& f) { return !input<QSpinBox>(f)->isGroupSeparatorShown(); }},
        {Option::signedDataTypeKey, false, row(E_NUMBER, 1, spin),
         [](TestForm& f) { return input<QSpinBox>(f)->minimum() == 0; }},
        {Option::spinBoxSingleStepKey, 5, row(E_NUMBER, 1, spin),
         [](TestForm& f) { return input<QSpinBox>(f)->singleStep() == 5; }},
        {Option::autoCorrectMinMaxKey, true, row(E_NUMBER, 1, spin),
         [](TestForm& f) {
             return input<QSpinBox>(f)->correctionMode() == QAbstractSpinBox::CorrectToNearestValue;
         }},
        {Option::suffixKey, " kg", row(E_NUMBER, 1, spin),
         [](TestForm& f) { return input<QSpinBox>(f)->suffix() == " kg"; }},
        {Option::prefixKey, "~", row(E_NUMBER, 1.5, spin),
         [](TestForm& f) { return input<QDoubleSpinBox>(f)->prefix() == "~"; }},
        {Option::minKey, "3", row(E_NUMBER, 5, spin),
         [](TestForm& f) { return input<QSpinBox>(f)->minimum() == 3; }},
        {Option::maxKey, 9, row(E_NUMBER, 5, spin),
         [](TestForm& f) { return input<QSpinBox>(f)->maximum() == 9; }},
        {Option::minKey, QDate(2020, 1, 1), row(E_DATE, QDate(2024, 1, 1)),
         [](TestForm& f) { return input<QDateEdit>(f)->minimumDate() == QDate(2020, 1, 1); }},
        {Option::maxKey, QDate(2030, 1, 1), row(E_DATE, QDate(2024, 1, 1)),
         [](TestForm& f) { return input<QDateEdit>(f)->maximumDate() == QDate(2030, 1, 1); }},
        {Option::minKey, QDateTime(QDate(2020, 1, 1), QTime(8, 0)),
         row(E_DATETIME, QDateTime(QDate(2024, 1, 1), QTime(9, 0))),
         [](TestForm& f) {
             return input<QDateTimeEdit>(f)->minimumDateTime()
                 == QDateTime(QDate(2020, 1, 1), QTime(8, 0));
         }},
        {Option::maxKey, QTime(17, 0), row(E_DATETIME, QDateTime(QDate(2024, 1, 1), QTime(9, 0))),
         [](TestForm& f) { return input<QDateTimeEdit>(f)->maximumTime() == QTime(17, 0); }},
        {Option::timerKey, QVariantList {1, "uhr"}, row(E_LABEL),
         [](TestForm& f) { return f.window->findChild<QTimer*>("uhr") != nullptr; }},
        {Option::buildKey(Option::typeAlignKey, E_LINEEDIT), int(Qt::AlignRight), row(E_NUMBER, 1),
         [](TestForm& f) { return f.result.layout->itemAt(0)->alignment() == Qt::AlignRight; }},
        {Option::buildKey(Option::typeAlignKey, E_NUMBER), int(Qt::AlignRight), row(E_NUMBER, 1),
         [](TestForm& f) { return f.result.layout->itemAt(0)->alignment() == Qt::AlignRight; }},
        {Option::buildKey(Option::indexAlignKey, 0), int(Qt::AlignRight),
         row(E_NUMBER, 1, {{Option::buildKey(Option::typeAlignKey, E_NUMBER), 1}}),
         [](TestForm& f) { return f.result.layout->itemAt(0)->alignment() == Qt::AlignRight; }},
        {Option::buildKey(Option::stretchKey, E_NUMBER), 3, row(E_NUMBER, 1),
         [](TestForm& f) {
             return qobject_cast<QVBoxLayout*>(f.result.layout.data())->stretch(0) == 3;
         }},
        {Option::buildKey(Option::stretchKey, E_LINEEDIT), 4,
         row(E_NUMBER, 1, {{Option::buildKey(Option::stretchKey, E_NUMBER), 3}}),
         [](TestForm& f) {
             return qobject_cast<QVBoxLayout*>(f.result.layout.data())->stretch(0) == 4;
         }},
        {Option::buildKey(Option::stretchKey, 0), 5, row(E_NUMBER, 1),
         [](TestForm& f) {
             return qobject_cast<QVBoxLayout*>(f.result.layout.data())->stretch(0) == 5;
         }},
    };
}

} // namespace

Q_DECLARE_METATYPE(OptionCase)

class tst_row_options : public QObject
{
    Q_OBJECT

private slots:
    void hasItsEffect_data();
    void hasItsEffect();
    void laterPassesOfSizesOverrideEarlierOnes();
    void plainKeysOfNumberedOptionsHaveNoEffectOnTheirOwn();
    void theFormsDefaultAlignment();
    void theFormsAlignmentsByType();
    void theFormsPropertiesOfItsWindow();
    void boundsOfEveryNumberType_data();
    void boundsOfEveryNumberType();
    void lineEditNumbersKeepTheirBounds_data();
    void lineEditNumbersKeepTheirBounds();
    void aFileDialogStartsWhereItIsTold();
    void twoDigitYearsShowFour();
};

void tst_row_options::hasItsEffect_data()
{
    QTest::addColumn<OptionCase>("option");
    for (const auto& cases : {sizeCases(), inputCases()}) {
        for (const OptionCase& option : cases)
            QTest::addRow("%s of %d", qPrintable(option.key), option.row.eleType) << option;
    }
}

void tst_row_options::hasItsEffect()
{
    QFETCH(OptionCase, option);
    for (const bool with : {false, true}) {
        INFO row = option.row;
        QVariantMap param = row.param.toMap();
        if (with)
            param.insert(option.key, option.value);
        row.param = param;
        TestForm form;
        form.build({row});
        QVERIFY2(option.holds(form) == with, with ? "with it" : "without it");
    }
}

void tst_row_options::laterPassesOfSizesOverrideEarlierOnes()
{
    const auto width = [](const QList<int>& numbers) {
        QVariantMap options;
        for (const int number : numbers)
            options.insert(Option::buildKey(Option::minWidthKey, number), 100 + number % 100);
        TestForm form;
        form.build({row(E_NUMBER, 1, options)});
        return form.find<QLineEdit>("k")->minimumWidth();
    };
    // 20000 the base type, 50006 the row type, 0 the position
    QCOMPARE(width({E_LINEEDIT}), 100);
    QCOMPARE(width({E_LINEEDIT, E_NUMBER}), 106);
    QVariantMap all = {{Option::buildKey(Option::minWidthKey, E_LINEEDIT), 101},
                       {Option::buildKey(Option::minWidthKey, E_NUMBER), 102},
                       {Option::buildKey(Option::minWidthKey, 0), 103}};
    TestForm form;
    form.build({row(E_NUMBER, 1, all)});
    QCOMPARE(form.find<QLineEdit>("k")->minimumWidth(), 103);
}

void tst_row_options::plainKeysOfNumberedOptionsHaveNoEffectOnTheirOwn()
{
    TestForm form;
    form.build({row(E_LINEEDIT, {}, {{Option::titleKey, "Titel{{minwidth}{120}}"}})});
    QCOMPARE(form.find<QLineEdit>("k")->minimumWidth(), 0);
    QCOMPARE(WIDGET_INFO::options(form.find<QLineEdit>("k")).toMap().value("minwidth"), "120");
    QCOMPARE(INFO::labelByKey(&form.map, "k")->text(), "Titel");
}

void tst_row_options::theFormsDefaultAlignment()
{
    TestForm form;
    form.build({row(E_LINEEDIT)}, {}, QVariantMap {{Option::defaultAlignKey, int(Qt::AlignRight)}});
    QCOMPARE(form.result.layout->itemAt(0)->alignment(), Qt::AlignRight);
}

void tst_row_options::theFormsAlignmentsByType()
{
    const QMap<int, QFlags<Qt::AlignmentFlag>> byType = {{E_LINEEDIT, Qt::AlignLeft},
                                                         {E_NUMBER, Qt::AlignRight}};
    const QVariantMap options = {{Option::defaultAlignKey, int(Qt::AlignHCenter)},
                                 {Option::defaultTypeAlignKey, QVariant::fromValue(byType)}};
    TestForm form;
    form.build({row(E_NUMBER, 1), INFO(E_LINEEDIT), INFO(E_CHECKBOX, {}, "c")}, {}, options);
    QCOMPARE(form.result.layout->itemAt(0)->alignment(), Qt::AlignRight); // the row type first
    QCOMPARE(form.result.layout->itemAt(1)->alignment(), Qt::AlignLeft);
    QCOMPARE(form.result.layout->itemAt(2)->alignment(), Qt::AlignHCenter);
}

void tst_row_options::theFormsPropertiesOfItsWindow()
{
    TestForm form;
    form.build({row(E_LINEEDIT)}, {},
               QVariantMap {{Option::titleKey, "Fenster"},
                            {Option::buildKey(Option::minWidthKey, E_WIDGET), 321}});
    QCOMPARE(form.window->windowTitle(), "Fenster");
    QCOMPARE(form.window->minimumWidth(), 321);
}

void tst_row_options::boundsOfEveryNumberType_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<int>("min");
    QTest::addColumn<int>("max");
    const int lowest = std::numeric_limits<int>::min();
    const int highest = std::numeric_limits<int>::max();
    QTest::newRow("bool") << QVariant(true) << 0 << 1;
    QTest::newRow("short") << QVariant::fromValue<short>(1) << -32768 << 32767;
    QTest::newRow("ushort") << QVariant::fromValue<ushort>(1) << 0 << 65535;
    QTest::newRow("int") << QVariant(1) << lowest << highest;
    QTest::newRow("uint") << QVariant(1U) << 0 << highest;
    QTest::newRow("long") << QVariant::fromValue(1L) << lowest << highest;
    QTest::newRow("ulong") << QVariant::fromValue(1UL) << 0 << highest;
    QTest::newRow("long long") << QVariant(1LL) << lowest << highest;
    QTest::newRow("uint beyond int") << QVariant(4000000000U) << 0 << highest;
}

void tst_row_options::boundsOfEveryNumberType()
{
    QFETCH(QVariant, value);
    QFETCH(int, min);
    QFETCH(int, max);
    TestForm form;
    form.build({row(E_NUMBER, value, {{Option::spinBoxKey, true}})});
    auto* box = form.find<QSpinBox>("k");
    QVERIFY(box);
    QCOMPARE(box->minimum(), min);
    QCOMPARE(box->maximum(), max);
    QCOMPARE(box->value(), int(std::min<qint64>(value.toLongLong(), max)));
    QVERIFY(box->isEnabled());

    TestForm real;
    real.build({row(E_NUMBER, 1.0, {{Option::spinBoxKey, true}})});
    QCOMPARE(real.find<QDoubleSpinBox>("k")->maximum(), std::numeric_limits<double>::max());
    QCOMPARE(real.find<QDoubleSpinBox>("k")->minimum(), std::numeric_limits<double>::lowest());
}

void tst_row_options::lineEditNumbersKeepTheirBounds_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QVariantMap>("options");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("shown");
    const QVariantMap correct = {{Option::autoCorrectMinMaxKey, true}};
    QTest::newRow("letters") << QVariant(5) << correct << "1x2"
                             << "12";
    QTest::newRow("minus where none may be") << QVariant(5U) << correct << "-3"
                                             << "3";
    QTest::newRow("beyond short") << QVariant::fromValue<short>(5) << correct << "99999"
                                  << "32767";
    QTest::newRow("below the minimum")
        << QVariant(5) << QVariantMap {{Option::autoCorrectMinMaxKey, true}, {Option::minKey, 10}}
        << "3"
        << "10";
    QTest::newRow("beyond 64 bits") << QVariant(5ULL) << correct << "99999999999999999999"
                                    << "18446744073709551615";
    QTest::newRow("unsigned 64 bits") << QVariant(5ULL) << correct << "18446744073709551610"
                                      << "18446744073709551610";
    QTest::newRow("decimals") << QVariant(1.5) << correct << "2.123"
                              << "2.12";
    QTest::newRow("a maximum as text")
        << QVariant(1.5)
        << QVariantMap {{Option::autoCorrectMinMaxKey, true}, {Option::maxKey, "9.5"}} << "9.9"
        << "9.50";
}

void tst_row_options::lineEditNumbersKeepTheirBounds()
{
    QFETCH(QVariant, value);
    QFETCH(QVariantMap, options);
    QFETCH(QString, typed);
    QFETCH(QString, shown);
    TestForm form;
    form.build({row(E_NUMBER, value, options)});
    auto* edit = form.find<QLineEdit>("k");
    edit->setFocus();
    edit->selectAll();
    QTest::keyClicks(edit, typed);
    QTest::keyClick(edit, Qt::Key_Return);
    QCOMPARE(edit->text(), shown);
    QCOMPARE(form.map.value("k").toString(), shown);
}

void tst_row_options::aFileDialogStartsWhereItIsTold()
{
    TestForm form;
    const QString folder = QDir::tempPath();
    form.build({row(E_BROWSE_FILE_OPEN, "",
                    {{Option::currentDirKey, folder}, {Option::fileFilterKey, "Texte (*.txt)"}})});
    QString started;
    QStringList filters;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
        auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        if (dialog == nullptr)
            return;
        timer.stop();
        started = dialog->directory().absolutePath();
        filters = dialog->nameFilters();
        dialog->reject();
    });
    timer.start(1);
    QTest::mouseClick(INFO::pushButtonByKey(&form.map, "k"), Qt::LeftButton);
    QCOMPARE(started, folder);
    QCOMPARE(filters, (QStringList {"Texte (*.txt)"}));
}

void tst_row_options::twoDigitYearsShowFour()
{
    const QLocale locale(QLocale::English, QLocale::UnitedStates);
    QVERIFY(locale.dateFormat(QLocale::ShortFormat).count('y') < 4);
    TestForm form;
    form.build({row(E_DATE, QDate(2024, 2, 29), {{Option::localeKey, locale}})});
    QVERIFY(form.find<QDateEdit>("k")->text().contains("2024"));
}

QTEST_MAIN(tst_row_options)
#include "tst_row_options.moc"
