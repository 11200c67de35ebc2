#include "form/model/info_option.h"
#include "form/values/data.h"
#include "form/widgets/check_combo_box.h"
#include "form/widgets/message_box.h"

#include <QDir>
#include <QFileInfo>
#include <QLineEdit>
#include <QRegularExpressionValidator>
#include <QTextEdit>

namespace mod_form_qt {

namespace {

using Option = INFO::Option;

/// A field as the checks see it.
struct Field
{
    QWidget* widget = nullptr;
    int type = 0;
    Option option;
    bool hasText = false;
    bool readOnly = false;
    QString text;
    const QValidator* validator = nullptr;
};

Field fieldOf(QWidget* widget)
{
    Field field;
    field.widget = widget;
    field.type = WIDGET_INFO::typeExt(widget);
    field.option = Option(WIDGET_INFO::options(widget));
    if (const auto* line = qobject_cast<QLineEdit*>(widget)) {
        field.hasText = true;
        field.readOnly = line->isReadOnly();
        field.text = line->text().trimmed();
        field.validator = line->validator();
    } else if (const auto* edit = qobject_cast<QTextEdit*>(widget)) {
        field.hasText = true;
        field.readOnly = edit->isReadOnly();
        field.text = (edit->acceptRichText() ? edit->toHtml() : edit->toPlainText()).trimmed();
    }
    return field;
}

/// \return  the message, filled in with the field's name; what %2 and %3 stand for comes from the
///          user, so all is filled in at once
QString message(const Field& field, const QString& key, const QString& value = QString(),
                const QString& limit = QString())
{
    const QString text = INFO::defaultValidationText().value(key);
    const QString name = field.option.value(Option::plainTitleKey).toString();
    if (!text.contains(QLatin1String("%2")))
        return text.arg(name);
    return limit.isNull() ? text.arg(name, value) : text.arg(name, value, limit);
}

QString checkFile(const Field& field, QMap<QString, QVariant>* map)
{
    if (!field.option.value(Option::fileMustExistKey).toBool())
        return {};
    const QString path =
        INFO::DATA<QVariant>(map, WIDGET_INFO::paramName(field.widget), false).value().toString();
    bool exists = true;
    if (field.type == E_BROWSE_FOLDER || field.type == E_BROWSE_FOLDER_BUTTON)
        exists = !path.isEmpty() && QDir(path).exists(path);
    else if (field.type == E_BROWSE_FILE_OPEN || field.type == E_BROWSE_FILE_OPEN_BUTTON)
        exists = QFileInfo::exists(path);
    return exists ? QString() : message(field, Option::fileMustExistKey, path);
}

QString checkRequired(const Field& field)
{
    if (!field.option.value(Option::mandatoryKey).toBool())
        return {};
    bool missing = field.hasText && field.text.isEmpty();
    if (const auto* checks = qobject_cast<helper::CheckComboBox*>(field.widget))
        missing = field.type == E_CHECKCOMBOBOX && !checks->hasChecked();
    else if (const auto* combo = qobject_cast<QComboBox*>(field.widget))
        missing = field.type == E_COMBOBOX && combo->currentIndex() < 0;
    return missing ? message(field, Option::mandatoryKey) : QString();
}

QString checkPattern(const Field& field)
{
    const QString pattern = field.option.regexPattern();
    if (pattern.isEmpty() || !field.hasText)
        return {};
    QRegularExpressionMatch match;
    if (field.option.value(Option::regexPatternWildcardKey).toBool()) {
        match =
            QRegularExpression::fromWildcard(pattern, Option::defaultRegexWildcardCaseSensitivity,
                                             Option::defaultRegexWildcardConversionOptions)
                .match(field.text);
    } else if (const auto* validator =
                   qobject_cast<const QRegularExpressionValidator*>(field.validator)) {
        match = validator->regularExpression().match(field.text, 0, Option::defaultRegexMatchType,
                                                     Option::defaultRegexMatchOptions);
    } else {
        return {};
    }
    return match.hasMatch() ? QString() : message(field, Option::regexPatternKey, field.text);
}

QString checkLength(const Field& field)
{
    if (field.type != E_LINEEDIT && field.type != E_TEXTEDIT && field.type != E_PLAINTEXT)
        return {};
    const QVariant minChars = field.option.value(Option::minCharsKey);
    const QVariant minimum = minChars.isValid() ? minChars : field.option.min();
    const QVariant maxChars = field.option.value(Option::maxCharsKey);
    const QVariant maximum = maxChars.isValid() ? maxChars : field.option.max();
    // A text of exactly the limit is in order, whatever the messages say.
    if (minimum.isValid() && minimum.toInt() > field.text.size())
        return message(field, Option::minKey + "_2", field.text, QString::number(minimum.toInt()));
    if (maximum.isValid() && maximum.toInt() < field.text.size())
        return message(field, Option::maxKey + "_2", field.text, QString::number(maximum.toInt()));
    return {};
}

/// \return  what is wrong with a field, empty if nothing is
QString failureOf(const Field& field, QMap<QString, QVariant>* map)
{
    if (field.readOnly)
        return {};
    QString failure = checkFile(field, map);
    if (!failure.isEmpty() || !field.option.hasValidationRules())
        return failure;
    failure = checkRequired(field);
    if (failure.isEmpty())
        failure = checkPattern(field);
    return failure.isEmpty() ? checkLength(field) : failure;
}

} // namespace

bool INFO::validateInput(QWidget* parent, QMap<QString, QVariant>* map)
{
    QString failure;
    for (const QPointer<QWidget>& widget : WIDGET_INFO::all(map, 0)) {
        // Labels stand in their row's record, with its options, and hold no input.
        if (!widget || !widget->isVisible() || !widget->isEnabled()
            || WIDGET_INFO::type(widget) == E_LABEL)
            continue;
        failure = failureOf(fieldOf(widget), map);
        if (failure.isEmpty())
            continue;
        widget->setFocus(Qt::OtherFocusReason);
        break;
    }
    if (failure.isEmpty())
        return true;
    askUser(QMessageBox::Information, parent, tr("Fehler:"), failure, QMessageBox::Ok);
    return false;
}

} // namespace mod_form_qt
