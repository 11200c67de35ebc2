#include "tests/app/form_page.h"

#include <QStyle>
#include <QStyleOptionButton>
#include <QtTest>

using mod_form_qt::INFO;

QLineEdit* FormPage::line(const QString& key) const
{
    return INFO::lineEditByKey(&m_window.optionsMap, key);
}

QCheckBox* FormPage::check(const QString& key) const
{
    return INFO::checkBoxByKey(&m_window.optionsMap, key);
}

QDateEdit* FormPage::date(const QString& key) const
{
    return INFO::dateEditByKey(&m_window.optionsMap, key);
}

QComboBox* FormPage::combo(const QString& key) const
{
    return INFO::comboBoxByKey(&m_window.optionsMap, key);
}

QSpinBox* FormPage::number(const QString& key) const
{
    return INFO::spinBoxByKey(&m_window.optionsMap, key);
}

QPushButton* FormPage::button(const QString& text) const
{
    const auto buttons = m_window.findChildren<QPushButton*>();
    for (QPushButton* candidate : buttons) {
        if (candidate->text() == text)
            return candidate;
    }
    return nullptr;
}

void FormPage::type(const QString& key, const QString& text) const
{
    QLineEdit* edit = line(key);
    edit->setFocus();
    edit->selectAll();
    QTest::keyClick(edit, Qt::Key_Delete);
    // Key by key, with the text of the key: not every key of a German keyboard is in ASCII.
    for (const QChar character : text)
        QTest::sendKeyEvent(QTest::Click, edit, Qt::Key_unknown, QString(character),
                            Qt::NoModifier);
}

bool FormPage::choose(const QString& key, const QString& text) const
{
    QComboBox* box = combo(key);
    box->setFocus();
    QTest::keyClick(box, Qt::Key_Home);
    for (int step = 0; step < box->count() && box->currentText() != text; ++step)
        QTest::keyClick(box, Qt::Key_Down);
    return box->currentText() == text;
}

void FormPage::typeNumber(const QString& key, int value) const
{
    QSpinBox* box = number(key);
    box->setFocus();
    box->selectAll();
    QTest::keyClicks(box, QString::number(value));
}

void FormPage::click(const QString& buttonText) const
{
    QTest::mouseClick(button(buttonText), Qt::LeftButton);
}

void FormPage::toggle(const QString& key) const
{
    // A click beside the text does not count everywhere.
    QCheckBox* box = check(key);
    QStyleOptionButton option;
    option.initFrom(box);
    const QRect mark = box->style()->subElementRect(QStyle::SE_CheckBoxIndicator, &option, box);
    QTest::mouseClick(box, Qt::LeftButton, Qt::NoModifier, mark.center());
}
