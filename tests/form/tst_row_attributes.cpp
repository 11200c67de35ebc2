// Every attribute by its bit: what is true of a row that has it is false of the same row without
// it.

#include "tests/form/form_fixture.h"

using namespace mod_form_qt;

namespace {

using Probe = std::function<bool(TestForm&)>;

struct AttributeCase
{
    const char* name;
    unsigned bit;
    QList<INFO> rows; // the attribute is set on the row of the key "k"
    Probe holds;
    INFO::MainFlags flags = {};
};

INFO row(int type, const DataVariant& data = {}, const QVariant& param = "Titel",
         std::bitset<256> attr = {})
{
    return INFO(type, attr, param, data, "k");
}

template <typename T>
T* input(TestForm& form)
{
    return form.find<T>("k");
}

QList<INFO> inLayout(int opener, const QList<INFO>& rows)
{
    return QList<INFO> {INFO(opener)} + rows + QList<INFO> {INFO(E_LAYOUT_END)};
}

T_LISTDATA fruit()
{
    return items({"Birne", "Apfel", "Zitrone mit einem langen Namen"}, {"Birne"});
}

QGridLayout* grid(TestForm& form)
{
    return form.result.layout->findChild<QGridLayout*>();
}

bool asked(const TestForm& form, CallbackType type)
{
    return std::any_of(form.seen.begin(), form.seen.end(),
                       [type](const SeenEvent& event) { return event.type == type; });
}

// ------------------------------------------------------------------ bits 0 to 31

std::vector<AttributeCase> firstCases()
{
    const QVariantMap spin = {{INFO::Option::spinBoxKey, true}, {INFO::Option::maxKey, 10}};
    const QVariantMap typed = {{INFO::Option::titleKey, "Titel"}};
    return {
        {"A_READONLY",
         0,
         {row(E_LINEEDIT)},
         [](TestForm& f) { return input<QLineEdit>(f)->isReadOnly(); }},
        {"A_GROUP",
         1,
         {row(E_LAYOUT_V, {}, {}), INFO(E_LAYOUT_END)},
         [](TestForm& f) { return input<QGroupBox>(f) != nullptr; }},
        {"A_FLIP_LABEL_BOLD",
         2,
         {row(E_LINEEDIT)},
         [](TestForm& f) { return INFO::labelByKey(&f.map, "k")->text() == "<b>Titel</b>"; }},
        {"A_FLIP_LABEL_BOLD against MF_BOLD_LABELS",
         2,
         {row(E_LINEEDIT)},
         [](TestForm& f) { return INFO::labelByKey(&f.map, "k")->text() == "Titel"; },
         MF_BOLD_LABELS},
        {"A_PWD",
         3,
         {row(E_LINEEDIT)},
         [](TestForm& f) { return input<QLineEdit>(f)->echoMode() == QLineEdit::Password; }},
        {"A_PWD_ECHO",
         4,
         {row(E_LINEEDIT)},
         [](TestForm& f) {
             return input<QLineEdit>(f)->echoMode() == QLineEdit::PasswordEchoOnEdit;
         }},
        {"A_SORTED",
         5,
         {row(E_COMBOBOX, fruit())},
         [](TestForm& f) { return input<QComboBox>(f)->itemText(0) == "Apfel"; }},
        {"A_SORTED in a list",
         5,
         {row(E_LISTBOX, fruit())},
         [](TestForm& f) { return input<QListWidget>(f)->item(0)->text() == "Apfel"; }},
        {"A_MULTISEL",
         6,
         {row(E_LISTBOX, fruit())},
         [](TestForm& f) {
             return input<QListWidget>(f)->selectionMode() != QAbstractItemView::SingleSelection;
         }},
        {"A_CHECKBOX",
         7,
         {row(E_LISTBOX, fruit())},
         [](TestForm& f) {
             return input<QListWidget>(f)->item(0)->data(Qt::CheckStateRole).isValid();
         }},
        {"A_CAN_HIDE_ITEMS",
         8,
         {row(E_LAYOUT_V, 0), INFO(E_LINEEDIT, {}, {}, {}, "inner"), INFO(E_LAYOUT_END)},
         [](TestForm& f) {
             return input<QGroupBox>(f)->isCheckable() && !f.find<QLineEdit>("inner")->isVisible();
         }},
        {"A_MANDATORY",
         9,
         {row(E_LINEEDIT)},
         [](TestForm& f) {
             return INFO::labelByKey(&f.map, "k")->text().endsWith(INFO::mandatoryTextRight)
                 && WIDGET_INFO::options(input<QLineEdit>(f)).toMap().value("required").toBool();
         }},
        {"A_USE_MAP_VALUE",
         10,
         {row(E_LINEEDIT, "zeile")},
         [](TestForm& f) { return input<QLineEdit>(f)->text() == "karte"; }},
        {"A_RICH_TEXT",
         11,
         {row(E_TEXTEDIT, "<b>fett</b>")},
         [](TestForm& f) { return input<QTextEdit>(f)->toPlainText() == "fett"; }},
        {"A_CHECKBUTTON_RIGHT",
         12,
         {row(E_CHECKBOX)},
         [](TestForm& f) { return input<QCheckBox>(f)->layoutDirection() == Qt::RightToLeft; }},
        {"A_FILE_MUST_EXIST",
         13,
         {row(E_BROWSE_FOLDER)},
         [](TestForm& f) {
             return WIDGET_INFO::options(f.widget("k", E_LINEEDIT))
                 .toMap()
                 .value("file_must_exist")
                 .toBool();
         }},
        {"A_HIDE",
         14,
         {row(E_LINEEDIT)},
         [](TestForm& f) {
             return !input<QLineEdit>(f)->isVisible()
                 && !INFO::labelByKey(&f.map, "k")->isVisible();
         }},
        {"A_ADJUST_WIDTH_TO_CONTENTS",
         15,
         {row(E_COMBOBOX, fruit())},
         [](TestForm& f) {
             return input<QComboBox>(f)->sizeAdjustPolicy() == QComboBox::AdjustToContents;
         }},
        {"A_ADJUST_WIDTH_TO_CONTENTS of a list",
         15,
         {row(E_LISTBOX, fruit())},
         [](TestForm& f) {
             auto* list = input<QListWidget>(f);
             return list->minimumWidth() >= list->sizeHintForColumn(0);
         }},
        {"A_CALLBACK_VALIDATOR",
         16,
         {row(E_LINEEDIT)},
         [](TestForm& f) {
             QTest::keyClicks(input<QLineEdit>(f), "a");
             return asked(f, kValidate);
         }},
        {"A_NO_MANDATORY_MARKER",
         17,
         {row(E_LINEEDIT, {}, "Titel", A_MANDATORY)},
         [](TestForm& f) { return INFO::labelByKey(&f.map, "k")->text() == "Titel"; }},
        {"A_USE_BEFORE_EVENT",
         18,
         {row(E_LINEEDIT)},
         [](TestForm& f) {
             QTest::keyClicks(input<QLineEdit>(f), "a");
             return asked(f, kBeforeDataChanged);
         }},
        {"A_USE_BEFORE_EVENT of a button",
         18,
         {row(E_BUTTON)},
         [](TestForm& f) {
             QTest::mouseClick(input<QPushButton>(f), Qt::LeftButton);
             return asked(f, kBeforeAction);
         }},
        {"A_NO_LABEL",
         19,
         {row(E_LINEEDIT)},
         [](TestForm& f) { return INFO::labelByKey(&f.map, "k") == nullptr; }},
        {"A_BUTTON_LABEL_BOLD",
         20,
         {row(E_BUTTON)},
         [](TestForm& f) { return input<QPushButton>(f)->font().weight() == QFont::Bold; }},
        {"A_BUTTON_LABEL_BOLD of a check box",
         20,
         {row(E_CHECKBOX)},
         [](TestForm& f) { return input<QCheckBox>(f)->font().weight() == QFont::Bold; }},
        {"A_ADJUST_HEIGHT_TO_CONTENTS",
         21,
         {row(E_IMAGE, QVariant(QImage(30, 41, QImage::Format_RGB32)))},
         [](TestForm& f) { return input<QWidget>(f)->maximumHeight() == 41; }},
        {"A_ADJUST_WIDTH_TO_CONTENTS of an image",
         15,
         {row(E_IMAGE, QVariant(QImage(43, 41, QImage::Format_RGB32)))},
         [](TestForm& f) { return input<QWidget>(f)->maximumWidth() == 43; }},
        {"A_DONT_USE_MAP_VALUE",
         22,
         {row(E_LINEEDIT, "zeile", "Titel", A_USE_MAP_VALUE)},
         [](TestForm& f) { return input<QLineEdit>(f)->text() == "zeile"; },
         MF_USE_MAP_VALUES},
        {"A_SPINBOX_LINEEDIT_READONLY",
         23,
         {row(E_NUMBER, 1, spin)},
         [](TestForm& f) {
             auto* box = input<QSpinBox>(f);
             return box->findChild<QLineEdit*>()->isReadOnly() && !box->isReadOnly();
         }},
        {"A_AUTO_CORRECT_MINMAX",
         24,
         {row(E_NUMBER, 1, spin)},
         [](TestForm& f) {
             return input<QSpinBox>(f)->correctionMode() == QAbstractSpinBox::CorrectToNearestValue;
         }},
        {"A_IMMEDIATE_DATA_UPDATE",
         25,
         {row(E_NUMBER, 1, spin)},
         [](TestForm& f) {
             input<QSpinBox>(f)->setFocus();
             QTest::keyClick(input<QSpinBox>(f), Qt::Key_Up);
             return f.map.value("k") == 2;
         }},
        {"A_LABEL_WORDWRAP",
         26,
         {row(E_LINEEDIT, {}, typed)},
         [](TestForm& f) { return INFO::labelByKey(&f.map, "k")->wordWrap(); }},
        {"A_STRONG_FOCUS",
         27,
         {row(E_NUMBER, 1, spin)},
         [](TestForm& f) { return input<QSpinBox>(f)->focusPolicy() == Qt::StrongFocus; }},
        {"A_NO_TITLE_SPLIT",
         28,
         {row(E_BUTTON, {}, "a;b")},
         [](TestForm& f) { return input<QPushButton>(f)->text() == "a;b"; }},
        {"A_DEFAULT_BUTTON",
         29,
         {row(E_BUTTON)},
         [](TestForm& f) {
             return input<QPushButton>(f)->isDefault() && input<QPushButton>(f)->autoDefault();
         }},
        {"A_INIT_EMIT",
         30,
         {row(E_LINEEDIT, "a")},
         [](TestForm& f) { return f.count(kAfterDataChanged) == 1; }},
        {"A_INIT_EMIT_VALID",
         31,
         {row(E_DATE, QDate(2024, 1, 1))},
         [](TestForm& f) { return f.count(kAfterDataChanged) == 1; }},
    };
}

// ------------------------------------------------------------------ from bit 60

std::vector<AttributeCase> laterCases()
{
    const INFO first(E_LINEEDIT, {}, {}, {}, "first");
    const INFO second(E_LINEEDIT, {}, {}, {}, "second");
    return {
        {"A_GRID_COLSPAN_ALL", 60,
         inLayout(E_LAYOUT_GRID, {first, second, INFO(E_GRID_NEXT_ROW), row(E_LINEEDIT, {}, {})}),
         [](TestForm& f) {
             return grid(f)->itemAtPosition(1, 1)
                 && grid(f)->itemAtPosition(1, 1)->widget() == input<QLineEdit>(f);
         }},
        {"A_SPINBOX",
         70,
         {row(E_DATE, QDate(2024, 1, 1))},
         [](TestForm& f) { return !input<QDateEdit>(f)->calendarPopup(); }},
        {"A_INVALID_CHECKBOX",
         71,
         {row(E_DATE, INFO::dateInvalid)},
         [](TestForm& f) {
             return input<QCheckBox>(f) && !input<QCheckBox>(f)->isChecked()
                 && !input<QDateEdit>(f)->isEnabled();
         }},
        {"A_SKIP_SETDATA",
         72,
         {row(E_LINEEDIT, "alt")},
         [](TestForm& f) {
             INFO::setData(&f.map, "k", "neu", false);
             return input<QLineEdit>(f)->text() == "alt";
         }},
        {"A_H_ALLOW_SHRINK",
         73,
         {row(E_LINEEDIT)},
         [](TestForm& f) {
             return WIDGET_INFO::options(input<QLineEdit>(f)).toMap().value("minwidth20000") == 0;
         }},
        {"A_RADIOBUTTON_RIGHT",
         74,
         {row(E_RADIOBUTTON)},
         [](TestForm& f) { return input<QRadioButton>(f)->layoutDirection() == Qt::RightToLeft; }},
        {"A_EXCLUDE_LABEL_FROM_HLAYOUT", 75, inLayout(E_LAYOUT_H, {row(E_LINEEDIT)}),
         [](TestForm& f) { return f.result.layout->itemAt(0)->widget() != nullptr; }},
        {"A_SCROLLAREA",
         76,
         {row(E_LAYOUT_V, {}, {}), INFO(E_LAYOUT_END)},
         [](TestForm& f) { return f.window->findChild<QScrollArea*>() != nullptr; }},
        {"A_STRETCH_COLUMN_END",
         77,
         {row(E_LAYOUT_GRID, {}, {}), first, second, INFO(E_LAYOUT_END)},
         [](TestForm& f) { return grid(f)->columnStretch(1) == 1; }},
        {"A_LINEEDIT_UPDATE_ON_FINISH",
         78,
         {row(E_LINEEDIT)},
         [](TestForm& f) {
             QTest::keyClicks(input<QLineEdit>(f), "a");
             const bool waits = f.count(kAfterDataChanged) == 0;
             QTest::keyClick(input<QLineEdit>(f), Qt::Key_Return);
             return waits && f.map.value("k") == "a";
         }},
        {"A_ALLOW_WHEEL",
         79,
         {row(E_COMBOBOX, fruit(), "Titel", A_STRONG_FOCUS)},
         [](TestForm& f) {
             return !qobject_cast<helper::FocusWheelComboBox*>(input<QComboBox>(f));
         }},
        {"A_COMBO_AUTO_WIDTH_FIRST_OPEN",
         150,
         {row(E_COMBOBOX, fruit(), "Titel", A_COMBO_AUTO_WIDTH_COMPACT)},
         [](TestForm& f) {
             return input<QComboBox>(f)->sizeAdjustPolicy()
                 == QComboBox::AdjustToContentsOnFirstShow;
         }},
        {"A_COMBO_AUTO_WIDTH_COMPACT",
         151,
         {row(E_COMBOBOX, fruit())},
         [](TestForm& f) {
             return input<QComboBox>(f)->sizeAdjustPolicy()
                 == QComboBox::AdjustToMinimumContentsLengthWithIcon;
         }},
    };
}

// ------------------------------------------------------------------ numbered groups

std::vector<AttributeCase> numberedCases()
{
    std::vector<AttributeCase> cases;
    for (unsigned n = 1; n <= 10; ++n) {
        const int lines = int(n);
        cases.push_back(
            {"A_HEIGHT", 99 + n, {row(E_TEXTEDIT), row(E_PLAINTEXT)}, [lines](TestForm& f) {
                 auto* edit = input<QTextEdit>(f);
                 const int height =
                     lines * QFontMetrics(edit->document()->defaultFont()).lineSpacing();
                 return edit->minimumHeight() == edit->maximumHeight()
                     && edit->minimumHeight() >= height && edit->minimumHeight() < height + 40
                     && input<QPlainTextEdit>(f)->minimumHeight() >= height;
             }});
        cases.push_back(
            {"A_GROUP_ID",
             139 + n,
             {row(E_CHECKBOX), INFO(E_RADIOBUTTON, attributeBit(139 + n), "b", {}, "b")},
             [](TestForm& f) {
                 return input<QCheckBox>(f)->group()
                     && input<QCheckBox>(f)->group() == f.find<QRadioButton>("b")->group();
             }});
    }
    for (unsigned n = 0; n <= 9; ++n) {
        const int factor = int(n);
        cases.push_back({"A_STRETCH", 120 + n, inLayout(E_LAYOUT_H, {row(E_LINEEDIT, {}, {})}),
                         [factor](TestForm& f) {
                             auto* box =
                                 qobject_cast<QHBoxLayout*>(f.result.layout->itemAt(0)->layout());
                             return box->count() == 2 && box->stretch(1) == factor;
                         }});
        if (factor > 0) {
            cases.push_back(
                {"A_STRETCH_FACTOR", 130 + n, inLayout(E_LAYOUT_H, {row(E_LINEEDIT, {}, {})}),
                 [factor](TestForm& f) {
                     auto* box = qobject_cast<QHBoxLayout*>(f.result.layout->itemAt(0)->layout());
                     return box->stretch(0) == factor;
                 }});
        }
    }
    const std::pair<unsigned, QSizePolicy::Policy> policies[] = {
        {110, QSizePolicy::Expanding},
        {112, QSizePolicy::MinimumExpanding},
        {114, QSizePolicy::Preferred},
        {116, QSizePolicy::Maximum}};
    for (const auto& [bit, policy] : policies) {
        const QSizePolicy::Policy wanted = policy;
        // A widget whose own policy is another.
        cases.push_back({"horizontal policy",
                         bit,
                         {row(bit == 110 ? E_CHECKBOX : E_TEXTEDIT)},
                         [wanted](TestForm& f) {
                             return input<QWidget>(f)->sizePolicy().horizontalPolicy() == wanted;
                         }});
        cases.push_back({"vertical policy",
                         bit + 1,
                         {row(bit == 110 ? E_CHECKBOX : E_TEXTEDIT)},
                         [wanted](TestForm& f) {
                             return input<QWidget>(f)->sizePolicy().verticalPolicy() == wanted;
                         }});
    }
    return cases;
}

} // namespace

Q_DECLARE_METATYPE(AttributeCase)

class tst_row_attributes : public QObject
{
    Q_OBJECT

private slots:
    void hasItsEffect_data();
    void hasItsEffect();
    void severalOfAGroupLetTheHighestWin();
    void laterSizePoliciesWin();
    void anInitialEmissionOfAnAbsentDateIsLeftOut();
};

void tst_row_attributes::hasItsEffect_data()
{
    QTest::addColumn<AttributeCase>("attribute");
    for (const auto& cases : {firstCases(), laterCases(), numberedCases()}) {
        for (const AttributeCase& attribute : cases)
            QTest::addRow("%u: %s", attribute.bit, attribute.name) << attribute;
    }
}

void tst_row_attributes::hasItsEffect()
{
    QFETCH(AttributeCase, attribute);
    for (const bool with : {false, true}) {
        QList<INFO> rows = attribute.rows;
        for (INFO& row : rows) {
            if (with && row.key == "k")
                row.attr |= attributeBit(attribute.bit);
        }
        TestForm form;
        form.map.insert("k", "karte");
        form.build(rows, attribute.flags);
        QVERIFY2(attribute.holds(form) == with, with ? "with it" : "without it");
    }
}

void tst_row_attributes::severalOfAGroupLetTheHighestWin()
{
    TestForm form;
    form.build(inLayout(E_LAYOUT_GRID, {row(E_LINEEDIT, {}, {}, A_GRID_COL2 | A_GRID_COL4)}));
    QCOMPARE(grid(form)->itemAtPosition(0, 4)->widget(), input<QLineEdit>(form));
}

void tst_row_attributes::laterSizePoliciesWin()
{
    TestForm form;
    form.build({row(E_LINEEDIT, {}, {}, A_H_EXPAND | A_H_PREFERRED)});
    QCOMPARE(input<QLineEdit>(form)->sizePolicy().horizontalPolicy(), QSizePolicy::Preferred);
}

void tst_row_attributes::anInitialEmissionOfAnAbsentDateIsLeftOut()
{
    TestForm form;
    form.build({row(E_COMBOBOX, items({"a"}), "Titel", A_INIT_EMIT_VALID)});
    QCOMPARE(form.count(kAfterDataChanged), 0);
    TestForm unconditional;
    unconditional.build({row(E_COMBOBOX, items({"a"}), "Titel", A_INIT_EMIT)});
    QCOMPARE(unconditional.count(kAfterDataChanged), 1);
}

QTEST_MAIN(tst_row_attributes)
#include "tst_row_attributes.moc"
