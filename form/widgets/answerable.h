#pragma once

#include <QDialog>

namespace mod_form_qt {

/// Lets a dialog be answered although its parent is disabled while it is open: the toolkit would
/// take the dialog along. From then on nobody can disable the dialog itself either.
void keepAnswerable(QDialog* dialog);

/// Does that for each dialog a widget becomes the parent of while this object lives. For those that
/// the toolkit makes by itself and shows at once.
class AnswerableDialogs : public QObject
{
public:
    explicit AnswerableDialogs(QWidget* parentOfDialogs);

    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace mod_form_qt
