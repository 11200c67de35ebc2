#pragma once

#include "app/mainwindow.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>

/// The form of a window, as a user sees and uses it: by keyboard and mouse.
class FormPage
{
public:
    explicit FormPage(MainWindow& window)
        : m_window(window)
    {
    }

    QLineEdit* line(const QString& key) const;
    QCheckBox* check(const QString& key) const;
    QDateEdit* date(const QString& key) const;
    QComboBox* combo(const QString& key) const;
    QSpinBox* number(const QString& key) const;
    /// Found by what stands on it; null if there is none.
    QPushButton* button(const QString& text) const;

    /// Types a text in the place of what a field holds.
    void type(const QString& key, const QString& text) const;
    /// Steps through a list with the keyboard to the item with that text.
    /// \return false if there is no such item
    bool choose(const QString& key, const QString& text) const;
    /// Types a number in the place of the one that is there.
    void typeNumber(const QString& key, int value) const;
    void click(const QString& buttonText) const;
    void toggle(const QString& key) const;

private:
    MainWindow& m_window;
};
