#include "form/events/validator.h"
#include "form/rows/input_limits.h"
#include "form/rows/row_family.h"

#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRegularExpressionValidator>
#include <QTextEdit>

namespace mod_form_qt {

using Option = INFO::Option;

void limitInput(QLineEdit* edit, const PreparedRow& row, const BuildContext& context)
{
    const QVariant maxChars = row.option.value(Option::maxCharsKey);
    if (maxChars.isValid())
        edit->setMaxLength(maxChars.toInt());

    const QString pattern = row.option.regexPattern();
    if (!pattern.isEmpty() && !row.option.value(Option::regexPatternWildcardKey).toBool()) {
        const QVariant options = row.option.value(Option::regexPatternOptionsKey);
        const QRegularExpression expression(
            pattern,
            options.isValid() ? QRegularExpression::PatternOptions::fromInt(options.toInt())
                              : Option::defaultRegexPatternOptions);
        edit->setValidator(new QRegularExpressionValidator(expression, edit));
    }

    const INFO& mainRow = context.form->mainRow;
    if (row.has(A_CALLBACK_VALIDATOR) && edit->validator() == nullptr
        && (IsCallbackSet(row.row.callback) || IsCallbackSet(mainRow.callback))) {
        auto* validator =
            new helper::Validator(context.form->mainWidget, edit, row.row, mainRow, context.map());
        validator->setParent(edit);
        edit->setValidator(validator);
    }
}

namespace {

class TextRows : public RowFamily
{
public:
    BuiltRow build(const PreparedRow& row, BuildContext& context) const override
    {
        BuiltRow built;
        if (row.row.eleType == E_LABEL) {
            auto* label = new QLabel(row.label, context.container());
            label->setWordWrap(row.has(A_LABEL_WORDWRAP));
            built.add(label, E_LABEL);
            return built;
        }
        context.addLabel(row, built);
        built.add(input(row, context), row.row.eleType);
        return built;
    }

private:
    static QWidget* input(const PreparedRow& row, BuildContext& context)
    {
        const QString text = context.valueOf(row).toString();
        QWidget* const parent = context.container();
        if (row.row.eleType == E_PLAINTEXT)
            return new QPlainTextEdit(text, parent);
        if (row.row.eleType == E_TEXTEDIT)
            return textEdit(text, row.has(A_RICH_TEXT), parent);
        auto* edit = new QLineEdit(parent);
        // Before its validator: the first value is not typed, so nobody is asked about it.
        edit->setText(text);
        limitInput(edit, row, context);
        return edit;
    }

    static QWidget* textEdit(const QString& text, bool rich, QWidget* parent)
    {
        auto* edit = new QTextEdit(parent);
        edit->setAcceptRichText(rich);
        if (rich)
            edit->setHtml(text);
        else
            edit->setPlainText(text);
        return edit;
    }
};

} // namespace

const RowFamily& textRows()
{
    return theFamily<TextRows>();
}

} // namespace mod_form_qt
