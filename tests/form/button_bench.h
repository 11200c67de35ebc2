#pragma once

#include "event_bench.h"

/// Answers the next dialog of class T as soon as it is there.
template <typename T>
class Answer : public QObject
{
public:
    explicit Answer(std::function<void(T*)> answer)
        : m_answer(std::move(answer))
    {
        QObject::connect(&m_timer, &QTimer::timeout, this, [this] { look(); });
        m_timer.start(5);
    }

    int answered = 0;

private:
    void look()
    {
        auto* dialog = qobject_cast<T*>(QApplication::activeModalWidget());
        if (dialog == nullptr || answered > 0)
            return;
        ++answered;
        m_answer(dialog);
    }

    std::function<void(T*)> m_answer;
    QTimer m_timer;
};

inline void rejectDialog(QDialog* dialog)
{
    dialog->reject();
}

/// Presses a button and disables it while the dialog of class T is open which that opens.
/// \return  whether the dialog could be answered then
template <typename T>
bool answerableBehindDisabled(QPushButton* button)
{
    bool answerable = false;
    const Answer<T> answer([&answerable, button](T* dialog) {
        button->setEnabled(false);
        answerable = dialog->isEnabled();
        button->setEnabled(true);
        dialog->reject();
    });
    button->click();
    return answerable;
}

/// Presses a button, and once more behind the dialog of class T which that opens, as assistive
/// technology can; then ends the dialog.
/// \return  how many stood there
template <typename T>
int dialogsOfTwoClicks(QPushButton* button)
{
    int count = 0;
    QTimer::singleShot(0, button, [&count, button] {
        QTimer::singleShot(0, button, [&count] {
            const QWidgetList windows = QApplication::topLevelWidgets();
            for (QWidget* window : windows) {
                auto* dialog = qobject_cast<T*>(window);
                if (dialog == nullptr || !dialog->isVisible())
                    continue;
                ++count;
                dialog->reject();
            }
        });
        button->click();
    });
    button->click();
    return count;
}

/// A row of one button, wired.
inline QPushButton* wiredButton(EventBench& bench, int eleType,
                                const mod_form_qt::DataVariant& data = {},
                                const std::bitset<256>& attr = mod_form_qt::A_NONE,
                                const char* key = "value", const QVariant& options = {})
{
    auto* button = new QPushButton("Knopf");
    bench.wire(mod_form_qt::INFO(eleType, attr, {}, data, key), {{button, mod_form_qt::E_BUTTON}},
               options);
    return button;
}

/// A path row: label, line edit and button.
struct PathRow
{
    QLineEdit* edit;
    QPushButton* button = new QPushButton("Ändern...");

    PathRow(EventBench& bench, int eleType, const QString& path,
            const std::bitset<256>& attr = mod_form_qt::A_NONE, const QVariant& options = {},
            const char* key = "path")
        : edit(new QLineEdit(path))
    {
        bench.wire(mod_form_qt::INFO(eleType, attr, {}, QVariant(path), key),
                   {{new QLabel("Pfad"), mod_form_qt::E_LABEL},
                    {edit, mod_form_qt::E_LINEEDIT},
                    {button, mod_form_qt::E_BUTTON}},
                   options);
        bench.show();
    }

    void click() const { QTest::mouseClick(button, Qt::LeftButton); }
};

inline void click(QPushButton* button)
{
    QTest::mouseClick(button, Qt::LeftButton);
}
