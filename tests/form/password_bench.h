#pragma once

#include "form/mod_form_qt.h"
#include "tests/form/form_probe.h"

#include <QtTest>
#include <QtWidgets>

// The dialogs that ask for passwords, run as they are and answered from timers.

using User = std::function<void(QDialog&)>;

/// A call of one of the functions, with all that can be given to it.
struct Call
{
    bool create = true;
    bool showOptions = true;
    int minChars = 6;
    bool allowEmpty = false;
    QString expected = {};
    QLineEdit::EchoMode echo = QLineEdit::Password;
    QString title = {};
    QString text = {};
};

struct Outcome
{
    int code;
    QString pwd;
};

inline QLineEdit* field(const QDialog& dialog, const char* key)
{
    return dialog.findChild<QLineEdit*>(key);
}

inline QPushButton* button(const QDialog& dialog, const QString& key)
{
    return dialog.findChild<QPushButton*>(key);
}

inline void click(const QDialog& dialog, const QString& key)
{
    QTest::mouseClick(button(dialog, key), Qt::LeftButton);
}

inline void pressOk(const QDialog& dialog)
{
    click(dialog, mod_form_qt::INFO::objectOKButtonName);
}

inline void type(const QDialog& dialog, const char* key, const QString& text)
{
    QLineEdit* edit = field(dialog, key);
    edit->setFocus();
    edit->selectAll();
    QTest::keyClick(edit, Qt::Key_Delete);
    QTest::keyClicks(edit, text);
}

inline void typeBoth(const QDialog& dialog, const QString& text)
{
    type(dialog, "pwd", text);
    type(dialog, "pwd_again", text);
}

inline void setLength(const QDialog& dialog, int length)
{
    auto* box = dialog.findChild<QSpinBox*>("numchars");
    box->setFocus();
    box->selectAll();
    QTest::keyClicks(box, QString::number(length));
}

/// The labels of the classes that are selected.
inline QStringList selected(const QDialog& dialog)
{
    QStringList labels;
    for (const QAction* action : button(dialog, "options")->menu()->actions()) {
        if (action->isChecked())
            labels << action->text();
    }
    return labels;
}

/// Selects classes as a user does, and no others.
inline void select(const QDialog& dialog, const QStringList& labels)
{
    QMenu* menu = button(dialog, "options")->menu();
    menu->popup({0, 0});
    for (QAction* action : menu->actions()) {
        if (action->isChecked() == labels.contains(action->text()))
            continue;
        menu->setActiveAction(action);
        QTest::keyClick(menu, Qt::Key_Space);
    }
    menu->close();
}

inline const QStringList allClasses {"Zahlen", "Spezielle Zeichen", "Kleinbuchstaben",
                                     "Großbuchstaben"};

/// The label in front of a field.
inline QString labelOf(const QDialog& dialog, const char* key)
{
    for (const QLabel* label : dialog.findChildren<QLabel*>()) {
        if (label->buddy() == field(dialog, key))
            return label->text();
    }
    return {};
}

/// Runs the dialogs.
class PasswordBench : public QObject
{
protected:
    /// Confirms the next message and notes it. The window that it belongs to stays open.
    void answerBox(QWidget* owner)
    {
        auto* timer = new QTimer(owner);
        connect(timer, &QTimer::timeout, owner, [this, timer, owner] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (box == nullptr || !box->isVisible())
                return;
            timer->stop();
            m_messages << box->windowTitle() << box->text();
            QCOMPARE(box->parentWidget(), owner);
            box->button(QMessageBox::Ok)->click();
        });
        timer->start(1);
    }

    /// Calls what runs a dialog, and lets the user at it.
    int answered(const User& user, const std::function<int()>& dialog)
    {
        m_asked = false;
        QObject life;
        endStuckModals(&life);
        onceModal(&life, [&](QWidget* window) {
            const QPointer<QDialog> guard = qobject_cast<QDialog*>(window);
            QVERIFY(guard);
            m_asked = true;
            user(*guard);
            // Whatever the user did not end. What has been posted to the dialog comes first.
            if (guard)
                QTimer::singleShot(0, guard, [guard] {
                    if (guard->isVisible())
                        guard->reject();
                });
        });
        return dialog();
    }

    /// As above, with a password that the caller has from before.
    Outcome run(const Call& call, const User& user)
    {
        QString pwd = "vorher";
        const int code = answered(user, [&] {
            return mod_form_qt::checkCreatePWD(nullptr, call.title, call.text, pwd, call.create,
                                               call.showOptions, call.minChars, call.allowEmpty,
                                               call.expected, call.echo);
        });
        return {code, pwd};
    }

    QStringList m_messages; ///< title and text of each message
    bool m_asked = false; ///< the user has been at the dialog
};
