#include "tests/form/validation_bench.h"

#include <QPushButton>
#include <QTest>

using namespace mod_form_qt;

class tst_validate : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void aFormWithNoRowsReturnsTrueAndShowsNothing();
    void theFirstFailureIsToldAndGetsTheFocus();
    void fieldsWithoutRulesPass();
    void aRowWithRequiredAndATextOfBlanksOnlyFailsSinceTheTextIsTrimmed();
    void aRichTextQTextEditNeverFailsRequired();
    void theLengthLimitsOfARichTextCountItsHtml();
    void aRowWithMincharsButNoneOfTheSixKeysIsNotCheckedAtAll();
    void aQPlainTextEditWithAPositiveMinimumAlwaysFailsWithAnEmptyText();
    void requiredNeverFailsForAQPlainTextEdit();
    void aQTextEditWithAPatternPassesWhateverItsText();
    void aComboBoxWithoutRequiredAndWithNoSelectionPasses();
    void aDisabledOrHiddenFieldWithRequiredPasses();
    void aReadOnlyFieldWithRequiredPasses();
    void aFieldOnAPageThatIsNotShowingIsNotValidated();
    void labelsAreNoFields();
    void aWidgetThatIsGoneIsPassedOver();
    void aBoxCanBeAnsweredWhoseParentIsDisabledMeanwhile();

private:
    QScopedPointer<ValidationBench> m_bench;
};

void tst_validate::init()
{
    m_bench.reset(new ValidationBench);
}

void tst_validate::cleanup()
{
    m_bench.reset();
    QVERIFY(QApplication::topLevelWidgets().isEmpty());
}

void tst_validate::aFormWithNoRowsReturnsTrueAndShowsNothing()
{
    QCOMPARE(m_bench->failure(), "");
    QVERIFY(INFO::validateInput(&m_bench->form.window, nullptr));
    QVERIFY(m_bench->answers.seen().isEmpty());
}

void tst_validate::theFirstFailureIsToldAndGetsTheFocus()
{
    // The keys would put them in the opposite order.
    auto* good = m_bench->form.add<QLineEdit>(E_LINEEDIT, "c", {}, rules({{"required", true}}));
    auto* first = m_bench->form.add<QLineEdit>(E_LINEEDIT, "b", {}, rules({{"required", true}}));
    m_bench->form.add<QLineEdit>(E_LINEEDIT, "a", {}, {{"required", true}, {"plaintitle", "Last"}});
    good->setText("x");
    QVERIFY(m_bench->form.show());
    good->setFocus();
    QCOMPARE(m_bench->failure(), requiredText);
    QCOMPARE(m_bench->focus.data(), first);
    first->setText("x");
    QVERIFY(m_bench->failure().contains("'Last'"));
}

void tst_validate::fieldsWithoutRulesPass()
{
    m_bench->form.add<QLineEdit>(E_LINEEDIT, "a");
    m_bench->form.add<QLineEdit>(E_LINEEDIT, "b", {}, rules({{"required", false}}));
    QCOMPARE(m_bench->failure(), "");
}

void tst_validate::aRowWithRequiredAndATextOfBlanksOnlyFailsSinceTheTextIsTrimmed()
{
    auto* edit = m_bench->form.add<QLineEdit>(E_LINEEDIT, "a", {}, rules({{"required", true}}));
    edit->setText("  \t ");
    QCOMPARE(m_bench->failure(), requiredText);
    edit->setText(" x ");
    QCOMPARE(m_bench->failure(), "");

    auto* text = m_bench->form.add<QTextEdit>(E_TEXTEDIT, "b", {}, rules({{"required", true}}));
    text->setAcceptRichText(false);
    text->setPlainText(" \n ");
    QCOMPARE(m_bench->failure(), requiredText);
    QCOMPARE(m_bench->focus.data(), text);
}

void tst_validate::aRichTextQTextEditNeverFailsRequired()
{
    auto* edit = m_bench->form.add<QTextEdit>(E_TEXTEDIT, "a", {}, rules({{"required", true}}));
    edit->setAcceptRichText(true);
    QCOMPARE(m_bench->failure(), "");
}

void tst_validate::theLengthLimitsOfARichTextCountItsHtml()
{
    auto* edit = m_bench->form.add<QTextEdit>(E_TEXTEDIT, "a", {},
                                              rules({{"required", true}, {"maxchars", 20}}));
    edit->setAcceptRichText(true);
    edit->setPlainText("short");
    const QString told = m_bench->failure();
    QVERIFY(told.contains("muss kürzer als 20 Zeichen"));
    QVERIFY(told.contains("<html"));
}

void tst_validate::aRowWithMincharsButNoneOfTheSixKeysIsNotCheckedAtAll()
{
    auto* edit = m_bench->form.add<QLineEdit>(E_LINEEDIT, "a", {}, rules({{"minchars", 5}}));
    edit->setText("x");
    QCOMPARE(m_bench->failure(), "");
    auto* checked = m_bench->form.add<QLineEdit>(E_LINEEDIT, "b", {},
                                                 rules({{"minchars", 5}, {"regex_pattern", ""}}));
    checked->setText("x");
    QCOMPARE(m_bench->failure(), "Feld 'Name': Der Text (x) muss länger als 5 Zeichen sein.");
}

void tst_validate::aQPlainTextEditWithAPositiveMinimumAlwaysFailsWithAnEmptyText()
{
    auto* edit = m_bench->form.add<QPlainTextEdit>(E_PLAINTEXT, "a", {}, rules({{"min", 3}}));
    edit->setPlainText("long enough");
    QCOMPARE(m_bench->failure(), "Feld 'Name': Der Text () muss länger als 3 Zeichen sein.");
    QCOMPARE(m_bench->focus.data(), edit);
}

void tst_validate::requiredNeverFailsForAQPlainTextEdit()
{
    m_bench->form.add<QPlainTextEdit>(E_PLAINTEXT, "a", {},
                                      rules({{"required", true}, {"regex_pattern", "[0-9]"}}));
    QCOMPARE(m_bench->failure(), "");
}

void tst_validate::aQTextEditWithAPatternPassesWhateverItsText()
{
    auto* edit =
        m_bench->form.add<QTextEdit>(E_TEXTEDIT, "a", {}, rules({{"regex_pattern", "^[0-9]$"}}));
    edit->setAcceptRichText(false);
    edit->setPlainText("letters");
    QCOMPARE(m_bench->failure(), "");
}

void tst_validate::aComboBoxWithoutRequiredAndWithNoSelectionPasses()
{
    auto* combo =
        m_bench->form.add<QComboBox>(E_COMBOBOX, "a", {}, rules({{"min", 1}, {"required", false}}));
    combo->addItem("A");
    combo->setCurrentIndex(-1);
    QCOMPARE(m_bench->failure(), "");
}

void tst_validate::aDisabledOrHiddenFieldWithRequiredPasses()
{
    auto* edit = m_bench->form.add<QLineEdit>(E_LINEEDIT, "a", {}, rules({{"required", true}}));
    QCOMPARE(m_bench->failure(), requiredText);
    edit->setEnabled(false);
    QCOMPARE(m_bench->failure(), "");
    edit->setEnabled(true);
    edit->hide();
    QCOMPARE(m_bench->failure(), "");
}

void tst_validate::aReadOnlyFieldWithRequiredPasses()
{
    auto* edit = m_bench->form.add<QLineEdit>(E_LINEEDIT, "a", {}, rules({{"required", true}}));
    auto* text =
        m_bench->form.add<QTextEdit>(E_TEXTEDIT, "b", {}, rules({{"required", true}, {"min", 1}}));
    text->setAcceptRichText(false);
    edit->setReadOnly(true);
    text->setReadOnly(true);
    QCOMPARE(m_bench->failure(), "");
    text->setReadOnly(false);
    QCOMPARE(m_bench->failure(), requiredText);
}

void tst_validate::aFieldOnAPageThatIsNotShowingIsNotValidated()
{
    auto* tabs = new QTabWidget;
    m_bench->form.layout->addWidget(tabs);
    auto* page = new QWidget;
    auto* edit = m_bench->form.add<QLineEdit>(E_LINEEDIT, "a", {}, rules({{"required", true}}));
    tabs->addTab(new QWidget, "one");
    tabs->addTab(page, "two");
    (new QVBoxLayout(page))->addWidget(edit);
    QCOMPARE(m_bench->failure(), "");
    tabs->setCurrentIndex(1);
    QCOMPARE(m_bench->failure(), requiredText);
}

void tst_validate::labelsAreNoFields()
{
    const QVariantMap options = rules({{"min", 3}});
    m_bench->form.put(new QLabel("Name"), E_LABEL, E_LINEEDIT, "a", {}, options);
    auto* edit = m_bench->form.put(new QLineEdit("abcd"), E_LINEEDIT, E_LINEEDIT, "a", {}, options);
    QCOMPARE(m_bench->failure(), "");
    edit->setText("a");
    QVERIFY(m_bench->failure().contains("(a)"));
}

void tst_validate::aWidgetThatIsGoneIsPassedOver()
{
    delete m_bench->form.add<QLineEdit>(E_LINEEDIT, "a", {}, rules({{"required", true}}));
    QCOMPARE(m_bench->failure(), "");
}

void tst_validate::aBoxCanBeAnsweredWhoseParentIsDisabledMeanwhile()
{
    m_bench->form.add<QLineEdit>(E_LINEEDIT, "a", {}, rules({{"required", true}}));
    auto* button = new QPushButton(&m_bench->form.window);
    QVERIFY(m_bench->form.show());
    bool answerable = false;
    m_bench->answers.whenShown([&](QMessageBox& box) {
        button->setEnabled(false);
        answerable = box.isEnabled() && box.button(QMessageBox::Ok)->isEnabled();
        button->setEnabled(true);
    });
    QVERIFY(!INFO::validateInput(button, &m_bench->form.map));
    QVERIFY(answerable);
}

QTEST_MAIN(tst_validate)
#include "tst_validate.moc"
