#pragma once

#include "tests/form/hand_made_form.h"
#include "tests/support/modal_answers.h"

/// A form to be validated; the message box is answered and recorded.
struct ValidationBench
{
    HandMadeForm form;
    ModalAnswers answers;
    QPointer<QWidget> focus; ///< what had the focus when the box came
    Qt::TextFormat format = Qt::AutoText; ///< of the box

    ValidationBench()
    {
        answers.whenShown([this](QMessageBox& box) {
            focus = form.window.focusWidget();
            format = box.textFormat();
        });
    }

    /// Validates and gives the text of the box, empty if none came.
    QString failure()
    {
        if (!form.window.isVisible() && !form.show())
            return "the window has not come up";
        answers.clear();
        focus.clear();
        const bool accepted = mod_form_qt::INFO::validateInput(&form.window, &form.map);
        if (answers.seen().size() != (accepted ? 0 : 1))
            return "result and boxes disagree";
        if (accepted)
            return {};
        const ModalAnswers::Seen& box = answers.seen().first();
        if (box.title != "Fehler:" || box.icon != QMessageBox::Information
            || box.buttons != QMessageBox::Ok)
            return "unexpected box: " + box.title;
        return box.text;
    }
};

/// The options of a row whose title is "Name".
inline QVariantMap rules(QVariantMap options)
{
    options.insert("plaintitle", "Name");
    return options;
}

inline const QString requiredText =
    "Feld 'Name': Es muss ein Wert eingetragen oder ausgewählt werden.";
