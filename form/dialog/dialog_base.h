#pragma once

#include "form/export.h"
#include "form/model/info.h"

#include <QDialog>
#include <QPushButton>

namespace mod_form_qt {

/// A dialog of the application's that is built from rows. A subclass overrides what it needs and
/// listens to the signals; whoever uses the dialog may listen to them too.
class MOD_FORM_QT_EXPORT DialogBase : public QDialog
{
    Q_OBJECT

    using Other = QPointer<QWidget>*;

public:
    /// An empty dialog; `applyLayout` gives it its form.
    explicit DialogBase(QWidget* parent = nullptr, Qt::WindowFlags windowFlags = {});
    /// From here on nothing of the form calls back any more.
    ~DialogBase() override;
    Q_DISABLE_COPY_MOVE(DialogBase)

    /// Builds a form in this dialog.
    /// \param createLayout  also sets the window flags
    /// \param title         title of the window, or the options of the form
    /// \param map           the form data map, which has to outlive the dialog; null makes one
    /// \param keys          in/out: which keys a form with a file saves; null saves all
    INFO::Result applyLayout(bool createLayout, const QVariant& title, const QList<INFO>& rows,
                             INFO::MainFlags flags = {}, Qt::WindowFlags windowFlags = {},
                             QMap<QString, QVariant>* map = nullptr, QSet<QString>* keys = nullptr,
                             std::any any = {}, const QVariant& userData = {});
    /// Builds a form as above and runs the dialog until it closes. If it was not accepted, map and
    /// bound variables are put back to what they were, unless the flags have `MF_NO_SNAPSHOT`.
    /// \return  the result of the dialog
    int applyLayoutAndStart(bool createLayout, const QVariant& title, const QList<INFO>& rows,
                            INFO::MainFlags flags = {}, Qt::WindowFlags windowFlags = {},
                            QMap<QString, QVariant>* map = nullptr, QSet<QString>* keys = nullptr,
                            std::any any = {}, const QVariant& userData = {});

    /// The form data map; null before a form was built.
    QMap<QString, QVariant>* map() const { return m_map; }

    // The standard buttons; null where the form has none and before it was built.

    /// The form's `E_OK_BUTTON`.
    QPushButton* okButton() const { return m_okButton; }

    /// The form's `E_CANCEL_BUTTON`.
    QPushButton* cancelButton() const { return m_cancelButton; }

    /// The form's `E_CLOSE_BUTTON`.
    QPushButton* closeButton() const { return m_closeButton; }

    /// The form's `E_HELP_BUTTON`.
    QPushButton* helpButton() const { return m_helpButton; }

    // ---------------------------------------------------------------- looking widgets up

    /// \{
    /// As the function of the same name of INFO, in the map of this form.
    QWidget* widgetByKey(const MAP_KEY_TYPE& key, int index = 0, FindPos pos = FIND_POS_ANY,
                         Other other = nullptr, bool flag = false) const;
    QLabel* labelByKey(const MAP_KEY_TYPE& key, int index = E_LABEL, FindPos pos = FIND_POS_ANY,
                       Other other = nullptr, bool flag = false) const;
    QLineEdit* lineEditByKey(const MAP_KEY_TYPE& key, int index = E_LINEEDIT,
                             FindPos pos = FIND_POS_ANY, Other other = nullptr,
                             bool flag = false) const;
    QLineEdit* lineEditByVar(const QVariant& variable) const;
    QPlainTextEdit* plainTextEditByKey(const MAP_KEY_TYPE& key, int index = E_PLAINTEXT,
                                       FindPos pos = FIND_POS_ANY, Other other = nullptr,
                                       bool flag = false) const;
    QPlainTextEdit* plainTextEditByVar(const QVariant& variable) const;
    QTextEdit* textEditByKey(const MAP_KEY_TYPE& key, int index = E_TEXTEDIT,
                             FindPos pos = FIND_POS_ANY, Other other = nullptr,
                             bool flag = false) const;
    QTextEdit* textEditByVar(const QVariant& variable) const;
    QDateEdit* dateEditByKey(const MAP_KEY_TYPE& key, int index = E_DATE,
                             FindPos pos = FIND_POS_ANY, Other other = nullptr,
                             bool flag = false) const;
    QDateEdit* dateEditByVar(const QVariant& variable) const;
    QCheckBox* checkBoxByKey(const MAP_KEY_TYPE& key, int index = E_CHECKBOX,
                             FindPos pos = FIND_POS_ANY, Other other = nullptr,
                             bool flag = false) const;
    QCheckBox* checkBoxByVar(const QVariant& variable) const;
    QRadioButton* radioButtonByKey(const MAP_KEY_TYPE& key, int index = E_RADIOBUTTON,
                                   FindPos pos = FIND_POS_ANY, Other other = nullptr,
                                   bool flag = false) const;
    QRadioButton* radioButtonByVar(const QVariant& variable) const;
    QComboBox* comboBoxByKey(const MAP_KEY_TYPE& key, int index = E_COMBOBOX,
                             FindPos pos = FIND_POS_ANY, Other other = nullptr,
                             bool flag = false) const;
    QComboBox* comboBoxByVar(const QVariant& variable) const;
    QComboBox* comboBoxByVar(const T_LISTDATA& variable) const;
    helper::CheckComboBox* checkComboBoxByKey(const MAP_KEY_TYPE& key, int index = E_CHECKCOMBOBOX,
                                              FindPos pos = FIND_POS_ANY, Other other = nullptr,
                                              bool flag = false) const;
    helper::CheckComboBox* checkComboBoxByVar(const QVariant& variable) const;
    helper::CheckComboBox* checkComboBoxByVar(const T_LISTDATA& variable) const;
    QListWidget* listWidgetByKey(const MAP_KEY_TYPE& key, int index = E_LISTBOX,
                                 FindPos pos = FIND_POS_ANY, Other other = nullptr,
                                 bool flag = false) const;
    QListWidget* listWidgetByVar(const QVariant& variable) const;
    QListWidget* listWidgetByVar(const T_LISTDATA& variable) const;
    QSpinBox* spinBoxByKey(const MAP_KEY_TYPE& key, int index = E_NUMBER,
                           FindPos pos = FIND_POS_ANY, Other other = nullptr,
                           bool flag = false) const;
    QSpinBox* spinBoxByVar(const QVariant& variable) const;
    QDoubleSpinBox* doubleSpinBoxByKey(const MAP_KEY_TYPE& key, int index = E_NUMBER,
                                       FindPos pos = FIND_POS_ANY, Other other = nullptr,
                                       bool flag = false) const;
    QDoubleSpinBox* doubleSpinBoxByVar(const QVariant& variable) const;
    QPushButton* pushButtonByKey(const MAP_KEY_TYPE& key, int index = E_BUTTON,
                                 FindPos pos = FIND_POS_ANY, Other other = nullptr,
                                 bool flag = false) const;
    QPushButton* pushButtonByVar(const QVariant& variable) const;
    QPushButton* pushButtonByVar(const T_LISTDATA& variable) const;

    /// \}

    /// Finds the widget of class T of the row that is bound to a variable.
    template <typename T>
    T* widgetFromVariantPtr(const QVariant& variable) const
    {
        return INFO::widgetFromVariantPtr<T>(m_map, variable);
    }

    /// Finds the widget of class T of the row that is bound to list data.
    template <typename T>
    T* widgetFromListDataPtr(const T_LISTDATA& variable) const
    {
        return INFO::widgetFromListDataPtr<T>(m_map, variable);
    }

signals:
    /// Everything that is none of the other signals.
    void signalCallback(const mod_form_qt::CallbackContext& ctx);
    /// The dialog has been accepted and is about to close.
    void signalAccepted(const mod_form_qt::CallbackContext& ctx);
    /// The dialog has been cancelled and is about to close.
    void signalRejected(const mod_form_qt::CallbackContext& ctx);
    /// The dialog is about to close without an answer.
    void signalClosed(const mod_form_qt::CallbackContext& ctx);
    /// The help button was clicked; `signalCallback` comes before.
    void signalHelp(const mod_form_qt::CallbackContext& ctx);
    /// The dialog has closed, its widgets still stand.
    void signalDestroyed(const mod_form_qt::CallbackContext& ctx);

protected:
    // What a subclass may override. Only what it overrides is ever called.

    /// The form has been built.
    virtual void setupWindow(const CallbackContext& ctx);
    /// The dialog is to be accepted, and its fields are valid; in place of `validateAndStore`.
    /// \return  0 keeps the dialog open
    virtual int onAccept(const CallbackContext& ctx);
    /// The dialog is to be cancelled.
    /// \return  0 keeps the dialog open
    virtual int onReject(const CallbackContext& ctx);
    /// The dialog is to be closed without an answer.
    /// \return  0 keeps the dialog open
    virtual int onClose(const CallbackContext& ctx);
    /// The dialog has closed.
    virtual void cleanupWindow(const CallbackContext& ctx);
    /// The help button was clicked.
    virtual void onHelp(const CallbackContext& ctx);
    /// The dialog is to be accepted, and its fields are valid; not called if `onAccept` is
    /// overridden.
    /// \return  0 keeps the dialog open
    virtual int validateAndStore(const CallbackContext& ctx);
    /// Anything else has happened.
    /// \return  0 refuses a change or an action; the signals then stay silent
    virtual int processCallback(const CallbackContext& ctx);

private:
    int mainFunc(const CallbackContext& ctx);
    bool accepts(const CallbackContext& ctx);
    void takeForm(const CallbackContext& ctx);
    int otherEvent(const CallbackContext& ctx);

    QMap<QString, QVariant>* m_map = nullptr;
    QSharedPointer<QMap<QString, QVariant>> m_ownMap; // keeps a map that the engine has made
    QPointer<QPushButton> m_okButton;
    QPointer<QPushButton> m_cancelButton;
    QPointer<QPushButton> m_closeButton;
    QPointer<QPushButton> m_helpButton;
};

} // namespace mod_form_qt
