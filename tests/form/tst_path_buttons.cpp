#include "button_bench.h"

using namespace mod_form_qt;

using Bench = EventBench;

class tst_path_buttons : public QObject
{
    Q_OBJECT

private slots:
    void chosenFolderIsStored();
    void chosenFileIsStored();
    void fileToSaveIsStored();
    void chosenPathIsTakenOnce();
    void refusedPathStays();
    void cancelledDialogKeepsThePath();
    void dialogStartsWhereThePathIs();
    void dialogStartsInTheGivenFolderOtherwise();
    void dialogFiltersFiles();
    void buttonAloneStoresItsPath_data();
    void buttonAloneStoresItsPath();
    void pathOfABoundRowReachesItsVariable();
    void pathRowsWithoutKeysStayApart();
    void buttonBehindItsDialogOpensNoSecondOne_data();
    void buttonBehindItsDialogOpensNoSecondOne();
    void buttonOfADialogThatIsBeingLeftOpensNoSecondOne();
    void otherButtonBehindADialogOpensItsOwn();
    void dialogCanBeAnsweredWhoseButtonIsDisabledMeanwhile_data();
    void dialogCanBeAnsweredWhoseButtonIsDisabledMeanwhile();
};

void tst_path_buttons::chosenFolderIsStored()
{
    const QTemporaryDir folder;
    Bench bench;
    const PathRow row(bench, E_BROWSE_FOLDER, "");
    const Answer<QFileDialog> answer([&folder](QFileDialog* dialog) {
        QCOMPARE(dialog->fileMode(), QFileDialog::Directory);
        dialog->setDirectory(folder.path());
        static_cast<QDialog*>(dialog)->accept();
    });
    row.click();
    QCOMPARE(answer.answered, 1);
    QCOMPARE(row.edit->text(), folder.path());
    QCOMPARE(bench.map.value("path").toString(), folder.path());
    QCOMPARE(bench.events, Bench::told() + Bench::told("kAfterAction"));
    QCOMPARE(bench.lastValue.toString(), folder.path());
}

namespace {

QString makeFile(const QTemporaryDir& folder, const QString& name)
{
    QFile file(folder.filePath(name));
    if (!file.open(QIODevice::WriteOnly))
        return {};
    return file.fileName();
}

std::function<void(QFileDialog*)> choosing(const QString& path)
{
    return [path](QFileDialog* dialog) {
        dialog->selectFile(path);
        dialog->findChild<QDialogButtonBox*>()
            ->button(dialog->acceptMode() == QFileDialog::AcceptSave ? QDialogButtonBox::Save
                                                                     : QDialogButtonBox::Open)
            ->click();
    };
}

} // namespace

void tst_path_buttons::chosenFileIsStored()
{
    const QTemporaryDir folder;
    const QString path = makeFile(folder, "a.txt");
    Bench bench;
    const PathRow row(bench, E_BROWSE_FILE_OPEN, "");
    const Answer<QFileDialog> answer(choosing(path));
    row.click();
    QCOMPARE(answer.answered, 1);
    QCOMPARE(row.edit->text(), path);
    QCOMPARE(bench.map.value("path").toString(), path);
}

void tst_path_buttons::fileToSaveIsStored()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("new.txt");
    Bench bench;
    const PathRow row(bench, E_BROWSE_FILE_SAVE, "");
    const Answer<QFileDialog> answer(choosing(path));
    row.click();
    QCOMPARE(answer.answered, 1);
    QCOMPARE(bench.map.value("path").toString(), path);
    QVERIFY(!QFileInfo::exists(path));
}

void tst_path_buttons::chosenPathIsTakenOnce()
{
    const QTemporaryDir folder;
    const QString path = makeFile(folder, "a.txt");
    Bench bench;
    const PathRow row(bench, E_BROWSE_FILE_OPEN, "", A_USE_BEFORE_EVENT);
    const QSignalSpy changed(row.edit, &QLineEdit::textChanged);
    const Answer<QFileDialog> answer(choosing(path));
    row.click();
    QCOMPARE(changed.size(), 0);
    QCOMPARE(bench.events,
             QStringList({"row kBeforeAction", "main kBeforeAction"}) + Bench::askedAndTold()
                 + Bench::told("kAfterAction"));
}

void tst_path_buttons::refusedPathStays()
{
    const QTemporaryDir folder;
    const QString path = makeFile(folder, "a.txt");
    Bench bench;
    const PathRow row(bench, E_BROWSE_FILE_OPEN, "old", A_USE_BEFORE_EVENT);
    bench.rowDecides = refusing(kBeforeDataChanged);
    const Answer<QFileDialog> answer(choosing(path));
    row.click();
    QCOMPARE(answer.answered, 1);
    QCOMPARE(row.edit->text(), "old");
    QCOMPARE(bench.map.value("path").toString(), "old");
    QVERIFY(!bench.events.contains("row kAfterAction"));
}

void tst_path_buttons::cancelledDialogKeepsThePath()
{
    Bench bench;
    const PathRow row(bench, E_BROWSE_FOLDER, "old");
    const Answer<QFileDialog> answer(rejectDialog);
    row.click();
    QCOMPARE(answer.answered, 1);
    QCOMPARE(row.edit->text(), "old");
    QCOMPARE(bench.map.value("path").toString(), "old");
    QCOMPARE(bench.events, Bench::told("kAfterAction"));
}

void tst_path_buttons::dialogStartsWhereThePathIs()
{
    const QTemporaryDir folder;
    const QTemporaryDir other;
    const QVariantMap options {{INFO::Option::currentDirKey, other.path()}};
    Bench bench;
    const PathRow row(bench, E_BROWSE_FOLDER, folder.path(), A_NONE, options);
    QString start;
    const Answer<QFileDialog> answer([&start](QFileDialog* dialog) {
        start = dialog->directory().absolutePath();
        dialog->reject();
    });
    row.click();
    QCOMPARE(start, folder.path());
}

void tst_path_buttons::dialogStartsInTheGivenFolderOtherwise()
{
    const QTemporaryDir other;
    const QVariantMap options {{INFO::Option::currentDirKey, other.path()}};
    Bench bench;
    const PathRow row(bench, E_BROWSE_FILE_OPEN, "/no/such/file.txt", A_NONE, options);
    QString start;
    const Answer<QFileDialog> answer([&start](QFileDialog* dialog) {
        start = dialog->directory().absolutePath();
        dialog->reject();
    });
    row.click();
    QCOMPARE(start, other.path());
}

void tst_path_buttons::dialogFiltersFiles()
{
    const QVariantMap options {{INFO::Option::fileFilterKey, "Texte (*.txt);;Alle (*)"}};
    Bench bench;
    const PathRow row(bench, E_BROWSE_FILE_OPEN, "", A_NONE, options);
    QStringList filters;
    const Answer<QFileDialog> answer([&filters](QFileDialog* dialog) {
        filters = dialog->nameFilters();
        dialog->reject();
    });
    row.click();
    QCOMPARE(filters, QStringList({"Texte (*.txt)", "Alle (*)"}));
}

void tst_path_buttons::buttonAloneStoresItsPath_data()
{
    QTest::addColumn<int>("eleType");
    QTest::newRow("folder") << E_BROWSE_FOLDER_BUTTON;
    QTest::newRow("file to open") << E_BROWSE_FILE_OPEN_BUTTON;
    QTest::newRow("file to save") << E_BROWSE_FILE_SAVE_BUTTON;
}

void tst_path_buttons::buttonAloneStoresItsPath()
{
    QFETCH(int, eleType);
    const QTemporaryDir folder;
    const QString file = makeFile(folder, "a.txt");
    const QString chosen = eleType == E_BROWSE_FOLDER_BUTTON ? folder.path()
        : eleType == E_BROWSE_FILE_OPEN_BUTTON               ? file
                                                             : folder.filePath("new.txt");
    Bench bench;
    QPushButton* button = wiredButton(bench, eleType, QVariant("old"), A_USE_BEFORE_EVENT);
    const Answer<QFileDialog> answer([eleType, chosen](QFileDialog* dialog) {
        if (eleType == E_BROWSE_FOLDER_BUTTON) {
            dialog->setDirectory(chosen);
            static_cast<QDialog*>(dialog)->accept();
        } else {
            choosing(chosen)(dialog);
        }
    });
    click(button);
    QCOMPARE(answer.answered, 1);
    QCOMPARE(bench.map.value("value").toString(), chosen);
    QCOMPARE(bench.events,
             QStringList({"row kBeforeAction", "main kBeforeAction"}) + Bench::askedAndTold()
                 + Bench::told("kAfterAction"));
}

void tst_path_buttons::pathOfABoundRowReachesItsVariable()
{
    const QTemporaryDir folder;
    QVariant variable = "old";
    Bench bench;
    QPushButton* button = wiredButton(bench, E_BROWSE_FOLDER_BUTTON, &variable);
    const Answer<QFileDialog> answer([&folder](QFileDialog* dialog) {
        dialog->setDirectory(folder.path());
        static_cast<QDialog*>(dialog)->accept();
    });
    click(button);
    QCOMPARE(variable.toString(), folder.path());
    QVERIFY(INFO::isVariantPtr(bench.map.value("value")));
}

void tst_path_buttons::pathRowsWithoutKeysStayApart()
{
    const QTemporaryDir folder;
    Bench bench;
    const PathRow first(bench, E_BROWSE_FOLDER, "first", A_NONE, {}, "");
    const PathRow second(bench, E_BROWSE_FOLDER, "second", A_NONE, {}, "");
    QPushButton* alone = wiredButton(bench, E_BROWSE_FOLDER_BUTTON, {}, A_NONE, "");
    const auto choose = [&folder](QFileDialog* dialog) {
        dialog->setDirectory(folder.path());
        static_cast<QDialog*>(dialog)->accept();
    };
    {
        const Answer<QFileDialog> answer(choose);
        second.click();
    }
    QCOMPARE(first.edit->text(), "first");
    QCOMPARE(second.edit->text(), folder.path());
    second.edit->setText("second");
    const Answer<QFileDialog> answer(choose);
    click(alone);
    QCOMPARE(answer.answered, 1);
    QCOMPARE(second.edit->text(), "second");
}

void tst_path_buttons::buttonBehindItsDialogOpensNoSecondOne_data()
{
    QTest::addColumn<int>("eleType");
    QTest::newRow("folder") << E_BROWSE_FOLDER;
    QTest::newRow("file to open") << E_BROWSE_FILE_OPEN;
    QTest::newRow("file to save") << E_BROWSE_FILE_SAVE;
    QTest::newRow("folder, button alone") << E_BROWSE_FOLDER_BUTTON;
    QTest::newRow("file to open, button alone") << E_BROWSE_FILE_OPEN_BUTTON;
    QTest::newRow("file to save, button alone") << E_BROWSE_FILE_SAVE_BUTTON;
}

void tst_path_buttons::buttonBehindItsDialogOpensNoSecondOne()
{
    QFETCH(int, eleType);
    Bench bench;
    const PathRow row(bench, eleType, "old", A_USE_BEFORE_EVENT);
    QCOMPARE(dialogsOfTwoClicks<QFileDialog>(row.button), 1);
    QCOMPARE(bench.events, Bench::askedAndTold("kBeforeAction", "kAfterAction"));
    QCOMPARE(bench.map.value("path").toString(), "old");
    // Once it has gone the button serves again.
    const Answer<QFileDialog> answer(rejectDialog);
    row.click();
    QCOMPARE(answer.answered, 1);
}

void tst_path_buttons::buttonOfADialogThatIsBeingLeftOpensNoSecondOne()
{
    Bench bench;
    const PathRow row(bench, E_BROWSE_FOLDER, "old");
    int second = 0;
    const Answer<QFileDialog> answer([&row, &second](QFileDialog* dialog) {
        dialog->reject();
        QTimer::singleShot(0, row.button, [&second] {
            if (QWidget* open = QApplication::activeModalWidget()) {
                ++second;
                open->close();
            }
        });
        row.button->click();
    });
    row.click();
    QCoreApplication::processEvents();
    QCOMPARE(answer.answered, 1);
    QCOMPARE(second, 0);
    QCOMPARE(bench.events, Bench::told("kAfterAction"));
}

void tst_path_buttons::otherButtonBehindADialogOpensItsOwn()
{
    Bench bench;
    const PathRow first(bench, E_BROWSE_FOLDER, "", A_NONE, {}, "one");
    const PathRow second(bench, E_BROWSE_FOLDER, "", A_NONE, {}, "two");
    const Answer<QFileDialog> answer([&second](QFileDialog* dialog) {
        const Answer<QFileDialog> inner(rejectDialog);
        second.button->click();
        QCOMPARE(inner.answered, 1);
        dialog->reject();
    });
    first.click();
    QCOMPARE(answer.answered, 1);
}

void tst_path_buttons::dialogCanBeAnsweredWhoseButtonIsDisabledMeanwhile_data()
{
    buttonBehindItsDialogOpensNoSecondOne_data();
}

void tst_path_buttons::dialogCanBeAnsweredWhoseButtonIsDisabledMeanwhile()
{
    QFETCH(int, eleType);
    Bench bench;
    const PathRow row(bench, eleType, "old");
    QVERIFY(answerableBehindDisabled<QFileDialog>(row.button));
}

QTEST_MAIN(tst_path_buttons)
#include "tst_path_buttons.moc"
