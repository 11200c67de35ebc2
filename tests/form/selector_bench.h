#pragma once

#include "tests/form/form_fixture.h"
#include "tests/form/form_probe.h"
#include "tests/support/modal_answers.h"

#include <QInputDialog>
#include <QSettings>
#include <QTemporaryDir>

inline const QString saveTitle = "Einstellung speichern:";
inline const QString deleteTitle = "Daten speichern:";
inline const QString lastTitle = "Eintrag löschen:";

/// What stands in a file, read as another program would: under its own name the file is answered
/// from memory.
class FileView
{
public:
    explicit FileView(const QString& file)
    {
        static int copies = 0;
        const QString copy = QString("%1.%2").arg(file).arg(++copies);
        QFile::copy(file, copy);
        m_settings = std::make_unique<QSettings>(copy, QSettings::IniFormat);
    }

    /// All that the file holds, by group and name.
    QVariantMap everything() const
    {
        QVariantMap all;
        const QStringList keys = m_settings->allKeys();
        for (const QString& key : keys)
            all.insert(key, m_settings->value(key));
        return all;
    }

    QStringList names(const QString& group = "form") const
    {
        m_settings->beginGroup(group);
        const QStringList keys = m_settings->childKeys();
        m_settings->endGroup();
        return keys;
    }

    QString remembered() const { return m_settings->value("default_conf/name").toString(); }

    /// The text that a configuration holds for the form's one field; "-" without such a one.
    QString text(const QString& name) const
    {
        const QVariantMap map = m_settings->value("form/" + name).toMap();
        return map.value("field", "-").toString();
    }

private:
    std::unique_ptr<QSettings> m_settings;
};

/// A form with one field and a selector of its configurations.
class SelectorForm
{
public:
    explicit SelectorForm(QString file)
        : m_file(std::move(file))
    {
    }

    ~SelectorForm() { m_window.reset(); } // before the map

    Q_DISABLE_COPY_MOVE(SelectorForm)

    /// Builds the form and shows it.
    void open(const QVariantMap& more = {}, const std::bitset<256>& attr = mod_form_qt::A_NONE)
    {
        using namespace mod_form_qt;
        QVariantMap options {{INFO::Option::iniFileNameKey, m_file},
                             {INFO::Option::iniGroupNameKey, "form"},
                             {INFO::Option::iniSumMapNameKey, "erste"},
                             {INFO::Option::iniUseMultiConfKey, true}};
        options.insert(more);
        m_window.reset();
        m_window = std::make_unique<QWidget>();
        const QList<INFO> rows {
            INFO(E_LINEEDIT, A_USE_MAP_VALUE | attr, "Feld:", "Anfang", "field"),
            INFO(E_MULTICONFIG, A_NONE, options), INFO(E_OK_BUTTON)};
        INFO::applyLayout(m_window.get(), true, options, rows, {}, {}, &m_map,
                          m_filtered ? &m_keys : nullptr);
        m_window->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
    }

    QComboBox* list() const { return m_window->findChild<QComboBox*>(); }

    QLineEdit* edit() const { return m_window->findChild<QLineEdit*>(); }

    QString field() const { return edit()->text(); }

    QPushButton* button(const QString& text) const
    {
        const auto buttons = m_window->findChildren<QPushButton*>();
        for (QPushButton* candidate : buttons) {
            if (candidate->text() == text)
                return candidate;
        }
        return nullptr;
    }

    /// Chooses a configuration with the keyboard.
    void choose(const QString& name) const
    {
        QComboBox* box = list();
        box->setFocus();
        const int target = box->findText(name);
        QVERIFY(target >= 0);
        while (box->currentIndex() != target)
            QTest::keyClick(box, box->currentIndex() < target ? Qt::Key_Down : Qt::Key_Up);
    }

    void press(const QString& text) const { QTest::mouseClick(button(text), Qt::LeftButton); }

    /// Calls an action once the name of a new configuration is asked for.
    void onceAskedForAName(const std::function<void(QInputDialog*)>& action)
    {
        auto* timer = new QTimer(&m_life);
        QObject::connect(timer, &QTimer::timeout, timer, [timer, action] {
            auto* dialog = qobject_cast<QInputDialog*>(QApplication::activeModalWidget());
            if (dialog == nullptr || !dialog->isVisible())
                return;
            timer->stop();
            action(dialog);
        });
        timer->start(1);
    }

    /// Presses "+" and types a name; a null text presses Escape.
    void add(const QString& name)
    {
        QString title;
        QString label;
        QString start = "unset";
        onceAskedForAName([&](QInputDialog* dialog) {
            title = dialog->windowTitle();
            label = dialog->labelText();
            auto* input = dialog->findChild<QLineEdit*>();
            start = input->text();
            QCOMPARE(input->echoMode(), QLineEdit::Normal);
            if (name.isNull()) {
                QTest::keyClick(dialog, Qt::Key_Escape);
                return;
            }
            for (const QChar character : name)
                QTest::sendKeyEvent(QTest::Click, input, Qt::Key_unknown, QString(character),
                                    Qt::NoModifier);
            QTest::keyClick(input, Qt::Key_Return);
        });
        press("+");
        QCOMPARE(title, QString("Neue Einstellung:"));
        QCOMPARE(label, QString("Name der Einstellung:"));
        QCOMPARE(start, QString());
    }

    /// The names in the list.
    QStringList names() const
    {
        QStringList texts;
        for (int i = 0; i < list()->count(); ++i) {
            texts << list()->itemText(i);
            if (list()->itemData(i).toString() != list()->itemText(i))
                texts << "other data";
        }
        return texts;
    }

    /// Presses OK, which saves; the form stays on screen.
    void accept() const
    {
        QTest::mouseClick(m_window->findChild<QPushButton*>(mod_form_qt::INFO::objectOKButtonName),
                          Qt::LeftButton);
    }

    QString m_file;
    QMap<QString, QVariant> m_map;
    QSet<QString> m_keys; ///< in force if the form is filtered
    bool m_filtered = false;
    std::unique_ptr<QWidget> m_window;
    QObject m_life; ///< of what waits for a dialog; the window may go before it
};

/// Runs a form on a file of its own.
class SelectorBench : public QObject
{
protected:
    void start()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_file = m_folder->filePath("form.ini");
        m_form = std::make_unique<SelectorForm>(m_file);
        m_answers = std::make_unique<ModalAnswers>();
    }

    void end()
    {
        m_form.reset();
        m_answers.reset();
    }

    void write(const QString& name, const QString& text, const QString& group = "form") const
    {
        const QMap<QString, QVariant> map {{"field", text}};
        mod_form_qt::INFO::saveMapToIniFile(&map, m_file, group, false, nullptr, name);
    }

    void remember(const QString& name) const
    {
        mod_form_qt::INFO::setDefaultIniMultiOptionName(m_file, name);
    }

    /// Configurations "a" and "b", of which "a" is the last one in use.
    void writeTwo() const
    {
        write("a", "A");
        write("b", "B");
        remember("a");
    }

    FileView file() const { return FileView(m_file); }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_file;
    std::unique_ptr<ModalAnswers> m_answers;
    std::unique_ptr<SelectorForm> m_form;
};
