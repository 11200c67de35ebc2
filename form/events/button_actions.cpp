#include "form/events/button_actions.h"

#include "form/events/change_flow.h"
#include "form/events/close_flow.h"
#include "form/events/form_guard.h"
#include "form/model/info_option.h"
#include "form/values/row_value.h"
#include "form/values/trigger_emit.h"
#include "form/widgets/answerable.h"

#include <QColorDialog>
#include <QDesktopServices>
#include <QDialog>
#include <QFileDialog>
#include <QFileInfo>
#include <QFontDialog>
#include <QFontInfo>
#include <QLineEdit>
#include <QPixmap>
#include <QPushButton>
#include <QSignalBlocker>
#include <QUrl>

#include <algorithm>
#include <array>
#include <optional>

namespace mod_form_qt {

namespace {

/// A click on the button of a row, as the action for it sees it.
struct Click
{
    RowHandle row;
    QPointer<QPushButton> button;
    FormGuard form;

    bool stands() const { return row->live() && form.stands(); }
};

/// \return  false if the action was refused
using Action = bool (*)(const Click& click);

/// \return  what the row's value is at the moment
QVariant valueOf(const RowContext& row)
{
    const RowValue stored(row.row, row.map());
    return INFO::getBaseValue(stored.exists() ? stored.read() : row.row.data);
}

INFO::Option optionsOf(const Click& click)
{
    const INFO::Option prepared(WIDGET_INFO::options(click.button.data()));
    return prepared.isEmpty() ? INFO::Option::ofParam(click.row->row.param) : prepared;
}

bool wasRefused(ChangeOutcome outcome)
{
    return outcome == ChangeOutcome::Refused;
}

// ------------------------------------------------------------------ closing

bool closeAs(const Click& click, CallbackType type)
{
    return closeForm(click.row->form, click.row->row, click.button, type);
}

bool acceptForm(const Click& click)
{
    return closeAs(click, kAccept);
}

bool rejectForm(const Click& click)
{
    return closeAs(click, kReject);
}

bool shutForm(const Click& click)
{
    return closeAs(click, kClose);
}

// ------------------------------------------------------------------ paths

/// \return  the line edit in front of a button of the same row, null for a button that stands alone
QLineEdit* pathEdit(const Click& click)
{
    const QList<QPointer<QWidget>> widgets =
        WIDGET_INFO::widgets(click.row->map(), WIDGET_INFO::paramName(click.button.data()))
            .widgets();
    const auto index = widgets.indexOf(QPointer<QWidget>(click.button));
    if (index < 1 || WIDGET_INFO::typeExt(widgets.at(index - 1)) != click.row->row.eleType)
        return nullptr;
    return qobject_cast<QLineEdit*>(widgets.at(index - 1).data());
}

QString pathOf(const Click& click)
{
    const QLineEdit* edit = pathEdit(click);
    return edit ? edit->text() : valueOf(*click.row).toString();
}

/// Where a dialog starts. A file that is yet to be saved may be named, in a folder that exists.
QString startPath(const Click& click, bool forSaving)
{
    const QString path = pathOf(click);
    const QFileInfo file(path);
    const bool exists = file.exists() || (forSaving && file.absoluteDir().exists());
    return !path.isEmpty() && exists ? path : optionsOf(click).currentDir();
}

ChangeOutcome offerPath(const Click& click, const QString& path)
{
    if (QLineEdit* edit = pathEdit(click)) {
        const QSignalBlocker silence(edit);
        edit->setText(path);
        return offerInput(*click.row, edit);
    }
    return offerValue(*click.row, click.button, path, [](const QVariant&) {});
}

/// \param ask  shows the dialog; gets the place to start at
/// \return     false if the path that was chosen is refused
template <typename Ask>
bool choosePath(const Click& click, bool forSaving, Ask ask)
{
    if (emitHelper::active)
        return !wasRefused(offerPath(click, valueOf(*click.row).toString()));
    const QString path = ask(startPath(click, forSaving), optionsOf(click));
    if (!click.stands() || !click.button || path.isEmpty())
        return true;
    return !wasRefused(offerPath(click, path));
}

QString dialogTitle(const INFO::Option& options)
{
    return options.value(INFO::Option::plainTitleKey).toString();
}

bool browseFolder(const Click& click)
{
    return choosePath(click, false, [&click](const QString& start, const INFO::Option& options) {
        return QFileDialog::getExistingDirectory(click.button, dialogTitle(options), start);
    });
}

bool browseFileOpen(const Click& click)
{
    return choosePath(click, false, [&click](const QString& start, const INFO::Option& options) {
        return QFileDialog::getOpenFileName(click.button, dialogTitle(options), start,
                                            options.fileFilter());
    });
}

bool browseFileSave(const Click& click)
{
    return choosePath(click, true, [&click](const QString& start, const INFO::Option& options) {
        return QFileDialog::getSaveFileName(click.button, dialogTitle(options), start,
                                            options.fileFilter());
    });
}

// ------------------------------------------------------------------ addresses

void open(const QUrl& url)
{
    if (!emitHelper::active && url.isValid() && !url.isEmpty())
        QDesktopServices::openUrl(url);
}

bool showFolder(const Click& click)
{
    open(QUrl::fromLocalFile(pathOf(click)));
    return true;
}

/// The value may just have been set by code, which wants the callbacks to know.
bool openUrl(const Click& click)
{
    const QVariant value = valueOf(*click.row);
    if (emitHelper::active)
        return !wasRefused(offerValue(*click.row, click.button, value, [](const QVariant&) {}));
    const QUrl url = QUrl::fromUserInput(value.toString());
    open(url.isLocalFile() ? QUrl::fromLocalFile(url.toLocalFile()) : url);
    return true;
}

// ------------------------------------------------------------------ colours and fonts

bool offerShown(const Click& click, const QVariant& value,
                void (*show)(QPushButton*, const QVariant&))
{
    show(click.button, value);
    const QPointer<QPushButton> button = click.button;
    return !wasRefused(
        offerValue(*click.row, click.button, value, [button, show](const QVariant& other) {
            if (button)
                show(button, other);
        }));
}

bool chooseColor(const Click& click)
{
    const QVariant value = valueOf(*click.row);
    if (emitHelper::active)
        return offerShown(click, value, showColor);
    const QColor color =
        QColorDialog::getColor(value.value<QColor>(), click.button, dialogTitle(optionsOf(click)));
    if (!click.stands() || !click.button || !color.isValid())
        return true;
    return offerShown(click, color, showColor);
}

bool chooseFont(const Click& click)
{
    const QVariant value = valueOf(*click.row);
    if (emitHelper::active)
        return offerShown(click, value, showFont);
    bool chosen = false;
    const QFont font = QFontDialog::getFont(&chosen, value.value<QFont>(), click.button,
                                            dialogTitle(optionsOf(click)));
    if (!click.stands() || !click.button || !chosen)
        return true;
    return offerShown(click, font, showFont);
}

struct RowAction
{
    int eleType;
    Action run;
    bool opensDialog = false;
};

// A row of another type is a plain button: its callbacks are all there is to it.
constexpr std::array rowActions = {
    RowAction {E_OK_BUTTON, acceptForm},
    RowAction {E_CANCEL_BUTTON, rejectForm},
    RowAction {E_CLOSE_BUTTON, shutForm},
    RowAction {E_BROWSE_FOLDER, browseFolder, true},
    RowAction {E_BROWSE_FOLDER_BUTTON, browseFolder, true},
    RowAction {E_BROWSE_FILE_OPEN, browseFileOpen, true},
    RowAction {E_BROWSE_FILE_OPEN_BUTTON, browseFileOpen, true},
    RowAction {E_BROWSE_FILE_SAVE, browseFileSave, true},
    RowAction {E_BROWSE_FILE_SAVE_BUTTON, browseFileSave, true},
    RowAction {E_SHOW_FOLDER, showFolder},
    RowAction {E_OPENURL_BUTTON, openUrl},
    RowAction {E_COLOR_BUTTON, chooseColor, true},
    RowAction {E_FONT_BUTTON, chooseFont, true},
};

/// \return  null for a plain button
const RowAction* actionOf(const INFO& row)
{
    const auto* found =
        std::find_if(rowActions.begin(), rowActions.end(),
                     [&row](const RowAction& action) { return action.eleType == row.eleType; });
    return found == rowActions.end() ? nullptr : found;
}

bool runAction(const Click& click)
{
    const RowAction* action = actionOf(click.row->row);
    if (action == nullptr)
        return true;
    std::optional<AnswerableDialogs> answerable;
    if (action->opensDialog)
        answerable.emplace(click.button);
    return action->run(click);
}

/// True while the dialog of an earlier click is open. Assistive technology can press the button
/// behind it, and a second one would come up over the first.
bool isDialogOpen(const INFO& row, const QPushButton* button)
{
    const RowAction* action = actionOf(row);
    if (action == nullptr || !action->opensDialog)
        return false;
    const auto dialogs = button->findChildren<QDialog*>(QString(), Qt::FindDirectChildrenOnly);
    // Modal until its loop has ended, which is after it is hidden.
    return std::any_of(dialogs.begin(), dialogs.end(),
                       [](const QDialog* dialog) { return dialog->isModal(); });
}

} // namespace

void runButtonAction(const RowHandle& handle, QPushButton* button)
{
    if (!handle->live())
        return;
    // What code sets meanwhile opens nothing, and the callbacks are to know.
    if (!emitHelper::active && isDialogOpen(handle->row, button))
        return;
    const Click click {handle, button, FormGuard(handle->mainWidget())};
    const RowContext& row = *handle;
    if (!emitHelper::active)
        endEditing(row.mainWidget());
    if (!click.stands() || !click.button)
        return;
    if (isBitSet(row.row.attr, A_USE_BEFORE_EVENT)) {
        const QVariant value = valueOf(row);
        QVariant result = value;
        if (BeforeCallBack(row.row, row.mainRow(), row.mainWidget(), button, value, kBeforeAction,
                           row.map(), &result, nullptr)
            == 0)
            return;
    }
    // A callback may have deleted the button, or the whole form.
    if (!click.stands() || !click.button)
        return;
    if (!runAction(click) || !click.stands())
        return;
    const QVariant value = valueOf(row);
    QVariant ignored = value;
    AfterCallBack(row.row, row.mainRow(), row.mainWidget(), click.button, value, kAfterAction,
                  row.map(), &ignored, nullptr);
}

void showColor(QPushButton* button, const QVariant& color)
{
    const int height = QFontMetrics(button->font()).height();
    QPixmap swatch(height, height);
    const auto fill = color.value<QColor>();
    swatch.fill(fill.isValid() ? fill : QColor(Qt::transparent));
    button->setIcon(swatch);
    button->setIconSize(swatch.size());
}

void showFont(QPushButton* button, const QVariant& font)
{
    const auto shown = font.value<QFont>();
    // A font may have its size in pixels.
    const int size = shown.pointSize() > 0 ? shown.pointSize() : QFontInfo(shown).pointSize();
    button->setFont(shown);
    button->setText(QStringLiteral("%1, %2pt").arg(shown.family(), QString::number(size)));
}

} // namespace mod_form_qt
