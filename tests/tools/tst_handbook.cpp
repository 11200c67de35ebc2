#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <QTest>

namespace {

const QString kSource = QStringLiteral(LEDORA_TEST_DATA "/../..");

QString textOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/// All chapters, with blanks and line breaks as one blank: a quoted text may be broken anywhere.
QString handbook()
{
    const QDir folder(kSource + QStringLiteral("/docs/handbuch"));
    QString text;
    const QStringList names = folder.entryList({QStringLiteral("*.md")}, QDir::Files, QDir::Name);
    for (const QString& name : names)
        text += textOf(folder.filePath(name)) + QLatin1Char('\n');
    return text.simplified();
}

/// The texts of a source file that go through tr, a line each, with dots for what is filled in.
QStringList userTexts(const QString& source)
{
    static const QRegularExpression call(
        QStringLiteral(R"re(\btr\(\s*((?:"(?:[^"\\]|\\.)*"\s*)+)\))re"));
    static const QRegularExpression literal(QStringLiteral(R"re("((?:[^"\\]|\\.)*)")re"));
    static const QRegularExpression filledIn(QStringLiteral("%[1-9]"));
    QStringList lines;
    for (auto match = call.globalMatch(source); match.hasNext();) {
        QString text;
        const QString written = match.next().captured(1);
        for (auto part = literal.globalMatch(written); part.hasNext();)
            text += part.next().captured(1);
        text.replace(filledIn, QStringLiteral("…"))
            .replace(QStringLiteral("\\r"), QString())
            .replace(QStringLiteral("\\\""), QStringLiteral("\""));
        const QStringList parts = text.split(QStringLiteral("\\n"), Qt::SkipEmptyParts);
        for (const QString& part : parts)
            lines.append(part.simplified());
    }
    return lines;
}

} // namespace

/// The handbook quotes what the program shows, so it has to follow the program.
class tst_handbook : public QObject
{
    Q_OBJECT

private slots:
    void quotesEveryTextOfTheProgram_data();
    void quotesEveryTextOfTheProgram();
    void itsPicturesAreTaken();
    void everyQuotedOptionOfAListIsOne();
};

void tst_handbook::quotesEveryTextOfTheProgram_data()
{
    QTest::addColumn<QString>("path");
    const QDir app(kSource + QStringLiteral("/app"));
    const QStringList names = app.entryList({QStringLiteral("*.cpp")}, QDir::Files, QDir::Name);
    for (const QString& name : names) {
        if (!userTexts(textOf(app.filePath(name))).isEmpty())
            QTest::newRow(qPrintable(name)) << app.filePath(name);
    }
}

void tst_handbook::quotesEveryTextOfTheProgram()
{
    // Read out by a screen reader only; shown in no mode that there is; put together from two.
    static const QSet<QString> notShown {QStringLiteral("Fortschritt"),
                                         QStringLiteral("Der Ausgabeordner"),
                                         QStringLiteral("Beendet. …")};
    static const QString book = handbook();
    QFETCH(QString, path);
    const QStringList texts = userTexts(textOf(path));
    for (const QString& text : texts)
        QVERIFY2(notShown.contains(text) || book.contains(text), qPrintable(text));
}

void tst_handbook::itsPicturesAreTaken()
{
    static const QRegularExpression picture(QStringLiteral("bilder/([A-Za-z0-9-]+)\\.png"));
    QStringList named;
    for (auto match = picture.globalMatch(handbook()); match.hasNext();)
        named.append(match.next().captured(1));
    named.sort();
    named.removeDuplicates();
    QVERIFY(!named.isEmpty());
    QCOMPARE(textOf(kSource + QStringLiteral("/docs/handbuch/bilder.txt"))
                 .split(QLatin1Char('\n'), Qt::SkipEmptyParts),
             named);
    const QString states = textOf(kSource + QStringLiteral("/scripts/screenshots"));
    for (const QString& name : std::as_const(named))
        QVERIFY2(states.contains(QLatin1Char('\n') + name + QLatin1Char(' ')), qPrintable(name));
}

void tst_handbook::everyQuotedOptionOfAListIsOne()
{
    // These go through no tr, so they are told here.
    static const QString book = handbook();
    for (const char* text :
         {"SKR03", "SKR04", "SKR049", "OSS", "Lieferschwelle nicht überschritten",
          "Lieferschwelle überschritten", "Automatisch", "Erstellt", "Abgeschlossen", "Bezahlt"}) {
        const QString quoted = QLatin1Char('`') + QString::fromUtf8(text) + QLatin1Char('`');
        QVERIFY2(book.contains(quoted), text);
        QVERIFY2(textOf(kSource + QStringLiteral("/app/mainform.cpp"))
                     .contains(QLatin1Char('"') + QString::fromUtf8(text) + QLatin1Char('"')),
                 text);
    }
}

QTEST_GUILESS_MAIN(tst_handbook)
#include "tst_handbook.moc"
