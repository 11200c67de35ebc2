#include "form/dialog/password_dialogs.h"

#include "form/dialog/password_generator.h"
#include "form/model/info_option.h"
#include "form/widgets/message_box.h"

#include <QApplication>
#include <QClipboard>
#include <QFontDatabase>
#include <QFontInfo>
#include <QFontMetrics>
#include <QKeyEvent>

#include <optional>

namespace mod_form_qt {

namespace {

using Option = INFO::Option;

const char* const pwdKey = "pwd";
const char* const againKey = "pwd_again";
const char* const showKey = "show_pwd";
const char* const generatedKey = "generated_pwd";
const char* const numCharsKey = "numchars";
const char* const optionsKey = "options";
const char* const createKey = "create_pwd";
const char* const setKey = "set_pwd";
const char* const copyKey = "copy_pwd";

/// Nobody types more, and it is drawn anew at each step of the box.
constexpr int maxGeneratedChars = 1000;
/// Digits that fit into a field.
constexpr int visibleChars = 24;

QString tr(const char* text)
{
    return QCoreApplication::translate("mod_form_qt::PasswordDialog", text);
}

/// What a dialog was called with, and the settings of the generator.
struct PasswordForm
{
    QString title;
    QString text;
    bool create;
    bool showOptions;
    int minChars;
    bool allowEmpty;
    QString expected;
    QLineEdit::EchoMode echo;
    int& numPWDChars;
    int& nGenFlags;
    std::optional<QString> accepted {};

    bool generates() const { return create && showOptions; }

    QList<INFO> rows() const;
    QList<INFO> generatorRows() const;
    int react(const CallbackContext& event);

private:
    void showFields(const CallbackContext& event) const;
    void showEcho(const CallbackContext& event) const;
    void generate(const CallbackContext& event);
    int afterAction(const CallbackContext& event);
    QString complaint(const QString& pwd, const QString& again) const;
    int accept(const CallbackContext& event);
};

QString textOf(const CallbackContext& event, const char* key)
{
    const QLineEdit* edit = INFO::lineEditByKey(event.map, key);
    return edit ? edit->text() : QString();
}

int pointSize(const QFont& font)
{
    // The size may be given in pixels.
    return font.pointSize() > 0 ? font.pointSize() : QFontInfo(font).pointSize();
}

// ---------------------------------------------------------------- rows

QList<INFO> PasswordForm::generatorRows() const
{
    T_LISTDATA classes;
    const QList<PasswordClass> all = passwordClasses();
    for (const PasswordClass& characters : all)
        classes.push_back(
            {characters.label, (nGenFlags & characters.bit) != 0, characters.bit, {}});
    const QVariantMap numChars = {
        {Option::titleKey, tr("Anzahl Zeichen:")},
        {Option::spinBoxKey, true},
        {Option::minKey, 0},
        {Option::maxKey, maxGeneratedChars},
        {Option::groupSepKey, false},
    };
    // clang-format off
    return {
        {E_LAYOUT_V, A_NONE, tr("Passwortgenerator:")},
        {E_LINEEDIT, A_READONLY, {}, "", generatedKey},
        {E_LAYOUT_H},
        {E_NUMBER, A_IMMEDIATE_DATA_UPDATE, numChars, numPWDChars, numCharsKey},
        {E_MENU_BUTTON, A_MULTISEL, tr("Auswahl"), classes, optionsKey},
        {E_STRETCH, {}, {}, 1},
        {E_LAYOUT_END},
        {E_LAYOUT_H},
        {E_BUTTON, A_NONE, tr("Erzeugen"), {}, createKey},
        {E_BUTTON, A_NONE, tr("Verwenden"), {}, setKey},
        {E_BUTTON, A_NONE, tr("Zwischenablage"), {}, copyKey},
        {E_LAYOUT_END},
        {E_LAYOUT_END},
    };
    // clang-format on
}

QList<INFO> PasswordForm::rows() const
{
    const QString hint = allowEmpty ? tr("<br>Eine Leereingabe löscht das Passwort.") : QString();
    // Braces of the caller's are no options of the row. The label reads markup.
    QString shown = text;
    shown.replace(QLatin1String("{{"), QLatin1String("&#123;&#123;"));
    const QString label = tr("<b><big>%1%2</b></big>").arg(shown, hint);
    QList<INFO> all = {
        {E_LAYOUT_GRID},
        // A text of the caller's may hold a semicolon.
        {E_LINEEDIT, A_USE_BEFORE_EVENT | A_NO_TITLE_SPLIT, label, "", pwdKey},
    };
    if (create) {
        all << INFO(E_GRID_NEXT_ROW)
            << INFO(E_LINEEDIT, A_USE_BEFORE_EVENT, tr("Passwortwiederholung:"), "", againKey);
    }
    if (showOptions) {
        all << INFO(E_GRID_NEXT_ROW)
            << INFO(E_CHECKBOX, A_GRID_COL1, tr("Passwort zeigen"), false, showKey);
    }
    all << INFO(E_LAYOUT_END);
    if (generates())
        all << generatorRows();
    all << INFO(E_LAYOUT_H) << INFO(E_STRETCH, {}, {}, 1) << INFO(E_OK_BUTTON, A_DEFAULT_BUTTON)
        << INFO(E_CANCEL_BUTTON) << INFO(E_LAYOUT_END);
    return all;
}

// ---------------------------------------------------------------- events

/// Letters that are easily taken for each other differ in a font of fixed pitch.
void PasswordForm::showFields(const CallbackContext& event) const
{
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setStyleHint(QFont::Monospace);
    font.setFixedPitch(true);
    for (const char* key : {pwdKey, againKey, generatedKey}) {
        QLineEdit* edit = INFO::lineEditByKey(event.map, key);
        if (edit == nullptr)
            continue;
        font.setPointSize(pointSize(edit->font()) + 2);
        edit->setFont(font);
        edit->setMinimumWidth(QFontMetrics(font).horizontalAdvance(QString(visibleChars, u'0')));
    }
}

void PasswordForm::showEcho(const CallbackContext& event) const
{
    const bool shown = INFO::getBaseValue(event.map, showKey).toBool();
    for (const char* key : {pwdKey, againKey}) {
        if (QLineEdit* edit = INFO::lineEditByKey(event.map, key))
            edit->setEchoMode(shown ? QLineEdit::Normal : echo);
    }
}

void PasswordForm::generate(const CallbackContext& event)
{
    const int length = INFO::getBaseValue(event.map, numCharsKey).toInt();
    int flags = 0;
    const QVariantList selected = INFO::getBaseValue(event.map, optionsKey).toList();
    for (const QVariant& bit : selected)
        flags |= bit.toInt();
    INFO::setData(event.map, generatedKey, drawPassword(length, passwordAlphabet(flags)), false);
    numPWDChars = length;
    nGenFlags = flags;
}

int PasswordForm::afterAction(const CallbackContext& event)
{
    const QString& key = event.row.key;
    if (key == QLatin1String(createKey) || key == QLatin1String(optionsKey)) {
        generate(event);
    } else if (key == QLatin1String(setKey)) {
        const QString generated = textOf(event, generatedKey);
        INFO::setData(event.map, {{pwdKey, generated}, {againKey, generated}}, false);
        // The default button takes it, as if the user had confirmed.
        QCoreApplication::postEvent(event.mainWidget,
                                    new QKeyEvent(QEvent::KeyPress, Qt::Key_Enter, Qt::NoModifier));
    } else if (key == QLatin1String(copyKey)) {
        QGuiApplication::clipboard()->setText(textOf(event, generatedKey));
    }
    return 1;
}

/// \return  what is wrong with the password, empty if nothing is
QString PasswordForm::complaint(const QString& pwd, const QString& again) const
{
    if (!create)
        return expected.isEmpty() || pwd == expected ? QString() : tr("Falsches Passwort.");
    QString message;
    if (pwd != again)
        message += tr("Die eingebebenen Passwörter sind unterschiedlich.\r\n");
    if (pwd.size() < minChars && !(allowEmpty && pwd.isEmpty()))
        message += tr("Das Passwort muss minimal %1 Zeichen enthalten.").arg(minChars);
    return message;
}

int PasswordForm::accept(const CallbackContext& event)
{
    const QString pwd = textOf(event, pwdKey);
    const QString message = complaint(pwd, textOf(event, againKey));
    if (!message.isEmpty()) {
        askUser(QMessageBox::Information, event.mainWidget, tr("Fehler:"), message,
                QMessageBox::Ok);
        return 0;
    }
    accepted = pwd;
    return 1;
}

int PasswordForm::react(const CallbackContext& event)
{
    const QString& key = event.row.key;
    switch (event.type) {
    case kInit:
        showFields(event);
        showEcho(event);
        return 1;
    case kBeforeDataChanged:
        if (event.value.toString() == event.value.toString().trimmed())
            return 1;
        QApplication::beep();
        return 0;
    case kAfterDataChanged:
        if (key == QLatin1String(numCharsKey))
            generate(event);
        else if (key == QLatin1String(showKey))
            showEcho(event);
        return 1;
    case kAfterAction:
        return afterAction(event);
    case kAccept:
        return accept(event);
    default:
        return 1;
    }
}

} // namespace

int checkCreatePWD(QWidget* parent, QString title, QString text, QString& pwd, bool create,
                   bool showOptions, int minChars, bool allowEmpty, const QString& expected,
                   QLineEdit::EchoMode echo)
{
    // The settings of the generator hold until the program ends.
    static int numPWDChars = 10;
    static int nGenFlags = 15;
    if (title.isEmpty())
        title = create ? tr("Passwort festlegen/ändern:") : tr("Passwortabfrage:");
    if (text.isEmpty())
        text = create ? tr("Legen Sie ein Passwort fest:") : tr("Geben Sie das Passwort ein:");

    PasswordForm form {std::move(title), std::move(text), create, showOptions, minChars,
                       allowEmpty,       expected,        echo,   numPWDChars, nGenFlags};
    const ContextCallback callback = [&form](const CallbackContext& event) {
        return form.react(event);
    };
    const INFO mainRow(E_DIALOG, A_NONE, form.title, {}, {}, callback);
    QMap<QString, QVariant> map;
    const INFO::Result result =
        INFO::createLayout(parent, MF_CREATE_WINDOW | MF_CREATE_LAYOUT | MF_EXEC, F_DIALOG_TITLE,
                           mainRow, form.rows(), &map, nullptr);
    if (result.code == 0)
        return 0;
    if (form.accepted)
        pwd = *form.accepted;
    return 1;
}

int checkPWD(QWidget* parent, QString title, QString text, QString& pwd, bool showOptions,
             const QString& expected, QLineEdit::EchoMode echo)
{
    return checkCreatePWD(parent, std::move(title), std::move(text), pwd, false, showOptions, 6,
                          false, expected, echo);
}

int createPWD(QWidget* parent, QString title, QString text, QString& pwd, bool showOptions,
              int minChars, bool allowEmpty, QLineEdit::EchoMode echo)
{
    return checkCreatePWD(parent, std::move(title), std::move(text), pwd, true, showOptions,
                          minChars, allowEmpty, QString(), echo);
}

} // namespace mod_form_qt
