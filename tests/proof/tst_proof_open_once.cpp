#include "tests/app/form_page.h"
#include "tests/app/run_fixture.h"
#include "tests/support/app_test.h"

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QTimer>

namespace {

/// Dialogs and boxes that are on screen, by their titles.
QStringList openTitles()
{
    QStringList titles;
    for (const QWidget* widget : QApplication::topLevelWidgets()) {
        if (widget->isVisible() && qobject_cast<const QDialog*>(widget))
            titles.append(widget->windowTitle());
    }
    return titles;
}

} // namespace

/// What opens a dialog comes a second time while that one is open.
class tst_proof_open_once : public QObject
{
    Q_OBJECT

public:
    explicit tst_proof_open_once(const StartFolder& folder)
        : m_fixture(folder)
    {
    }

private slots:
    void init();
    void aButtonBehindItsDialogOpensNoSecondOne_data();
    void aButtonBehindItsDialogOpensNoSecondOne();
    void theEndOfTheSessionBehindABoxOfTheSavingShowsNoSecondOne();
    void cancellingBehindTheBoxOfAFileThatStaysShowsNoSecondOne();
    void cancellingBehindARefusedHandOverKeepsTheExport();

private:
    RunFixture m_fixture;
};

void tst_proof_open_once::init()
{
    m_fixture.window.reset();
    m_fixture.answers.clear();
    m_fixture.answers.whenShown(nullptr);
    m_fixture.start({{QStringLiteral("b2c_handling"), QVariantList {1}}});
    m_fixture.window->show();
}

void tst_proof_open_once::aButtonBehindItsDialogOpensNoSecondOne_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("title");
    QTest::newRow("cache") << "Löschen"
                           << "ID-Cache löschen";
    QTest::newRow("replacements") << "'Zahlmethode (kurz)' bearbeiten"
                                  << "'Zahlmethode (kurz)' bearbeiten:";
    QTest::newRow("folder") << "Ändern..."
                            << "PDF-Ordner:";
}

void tst_proof_open_once::aButtonBehindItsDialogOpensNoSecondOne()
{
    QFETCH(QString, button);
    QFETCH(QString, title);
    QPushButton* pressed = FormPage(*m_fixture.window).button(button);
    m_fixture.answers.hold(title);
    QStringList open;
    QTimer::singleShot(0, this, [&] {
        QTimer::singleShot(0, this, [&] {
            open = openTitles();
            for (QWidget* widget : QApplication::topLevelWidgets()) {
                if (widget->isVisible() && qobject_cast<QDialog*>(widget))
                    widget->hide();
            }
        });
        // As assistive technology does it, which does not go by what blocks what.
        pressed->click();
    });
    pressed->click();
    QCOMPARE(open, QStringList {title});
    QCOMPARE(openTitles(), QStringList());
    // Once it has gone the button serves again.
    bool again = false;
    QTimer::singleShot(0, this, [&] {
        again = openTitles() == QStringList {title};
        if (QWidget* dialog = QApplication::activeModalWidget())
            dialog->hide();
    });
    pressed->click();
    QVERIFY(again);
}

void tst_proof_open_once::theEndOfTheSessionBehindABoxOfTheSavingShowsNoSecondOne()
{
    // Without a secret service each of the two secrets brings the box up, one after the other.
    const QString title = QStringLiteral("Fehler beim Verschlüsseln:");
    m_fixture.enterCredentials();
    qsizetype most = 0;
    bool closed = false;
    m_fixture.answers.whenShown([&](QMessageBox&) {
        most = qMax(most, openTitles().count(title));
        if (!closed) {
            closed = true;
            m_fixture.window->close(); // saves too
        }
    });
    FormPage(*m_fixture.window).button(QStringLiteral("Daten vom Server abrufen"))->click();
    QVERIFY(closed);
    QCOMPARE(most, 1);
    QTRY_VERIFY(!m_fixture.window->isVisible());
    QCOMPARE(openTitles(), QStringList());
    QVERIFY(m_fixture.folder.savedOptions().contains(QStringLiteral("buchungs_konten")));
}

void tst_proof_open_once::cancellingBehindTheBoxOfAFileThatStaysShowsNoSecondOne()
{
    const QString title = QStringLiteral("Fehler:");
    const QString blocked = m_fixture.folder.exportFile();
    QVERIFY(QDir().mkpath(blocked + QStringLiteral("/besetzt")));
    qsizetype most = 0;
    bool cancelled = false;
    m_fixture.answers.whenShown([&](QMessageBox&) {
        most = qMax(most, openTitles().count(title));
        if (!cancelled) {
            cancelled = true;
            m_fixture.window->runCancelAction(mod_form_qt::kAfterAction);
        }
    });
    m_fixture.window->close();
    QVERIFY(QDir(blocked).removeRecursively());
    QVERIFY(cancelled);
    QCOMPARE(most, 1);
    QTRY_VERIFY(!m_fixture.window->isVisible());
}

void tst_proof_open_once::cancellingBehindARefusedHandOverKeepsTheExport()
{
    // The hand-over is refused for want of the secrets.
    m_fixture.window->Reset();
    bool cancelled = false;
    m_fixture.answers.whenShown([&](QMessageBox&) {
        cancelled = true;
        m_fixture.window->runCancelAction(mod_form_qt::kAfterAction);
    });
    m_fixture.okButton()->click();
    QVERIFY(cancelled);
    QVERIFY(m_fixture.window->isVisible());
    QVERIFY(m_fixture.window->outFile.isOpen());
    QVERIFY(QFile::exists(m_fixture.folder.exportFile()));
}

LEDORA_APP_TEST_MAIN(tst_proof_open_once)

#include "tst_proof_open_once.moc"
