#include "progress/mailbox.h"
#include "tests/progress/progress_fixture.h"

#include <thread>

using namespace mod_progress_qt;

namespace {

class Reader : public QObject
{
    Q_OBJECT

public:
    Q_INVOKABLE void readMail() { ++calls; }

    int calls = 0;
};

const QVariant none;

} // namespace

class tst_mailbox : public QObject
{
    Q_OBJECT

private slots:
    void isEmptyAtFirst();
    void textsAreMergedEachByItself();
    void numbersAreMergedTogether();
    void textsDoNotTouchNumbers();
    void stepsAreCounted();
    void latestOfStepAndNumberCounts();
    void latestDataCounts();
    void takingEmptiesIt();
    void readerIsCalledOnceUntilItRests();
    void readerDoesNotRestWhileMailIsWaiting();
    void afterClosingNothingIsKept();
    void nothingIsLostBetweenThreads();
};

void tst_mailbox::isEmptyAtFirst()
{
    Reader reader;
    Mailbox mailbox(&reader);
    QVERIFY(mailbox.take().isEmpty());
}

void tst_mailbox::textsAreMergedEachByItself()
{
    Reader reader;
    Mailbox mailbox(&reader);
    mailbox.put(ProgressValues {"a", "b", none, none, none});
    mailbox.put(ProgressValues {none, "B", "C", none, none});
    const Mail mail = mailbox.take();
    QCOMPARE(mail.updates, 2);
    QCOMPARE(std::get<0>(mail.values), "a");
    QCOMPARE(std::get<1>(mail.values), "B");
    QCOMPARE(std::get<2>(mail.values), "C");
    QVERIFY(!std::get<3>(mail.values).isValid());
    QVERIFY(!mail.stepIsLatest);
}

void tst_mailbox::numbersAreMergedTogether()
{
    Reader reader;
    Mailbox mailbox(&reader);
    mailbox.put(ProgressValues {none, none, none, 5, 10});
    mailbox.put(ProgressValues {none, none, none, 7, none});
    const Mail mail = mailbox.take();
    QCOMPARE(std::get<3>(mail.values), 7);
    QVERIFY(!std::get<4>(mail.values).isValid()); // 7 percent, not 7 of 10
}

void tst_mailbox::textsDoNotTouchNumbers()
{
    Reader reader;
    Mailbox mailbox(&reader);
    mailbox.put(ProgressValues {"a", none, none, 5, 10});
    mailbox.put(ProgressValues {"b", none, none, none, 3});
    const Mail mail = mailbox.take();
    QCOMPARE(std::get<0>(mail.values), "b");
    QCOMPARE(std::get<3>(mail.values), 5);
    QCOMPARE(std::get<4>(mail.values), 10);
}

void tst_mailbox::stepsAreCounted()
{
    Reader reader;
    Mailbox mailbox(&reader);
    mailbox.put(ProgressValues {});
    mailbox.put(ProgressValues {"a", none, none, none, none});
    mailbox.put(ProgressValues {});
    const Mail mail = mailbox.take();
    QCOMPARE(mail.updates, 3);
    QCOMPARE(mail.steps, 2);
    QVERIFY(mail.stepIsLatest);
    QCOMPARE(std::get<0>(mail.values), "a");
}

void tst_mailbox::latestOfStepAndNumberCounts()
{
    Reader reader;
    Mailbox mailbox(&reader);
    mailbox.put(ProgressValues {});
    mailbox.put(ProgressValues {none, none, none, 5, 10});
    QVERIFY(!mailbox.take().stepIsLatest);
    mailbox.put(ProgressValues {none, none, none, 5, 10});
    mailbox.put(ProgressValues {});
    mailbox.put(ProgressValues {"a", none, none, none, none});
    QVERIFY(mailbox.take().stepIsLatest);
}

void tst_mailbox::latestDataCounts()
{
    Reader reader;
    Mailbox mailbox(&reader);
    mailbox.put(std::any(1));
    mailbox.put(std::any(2));
    const Mail mail = mailbox.take();
    QCOMPARE(std::any_cast<int>(mail.data.value()), 2);
    QCOMPARE(mail.updates, 0);
    mailbox.put(std::any());
    QVERIFY(!mailbox.take().isEmpty()); // something empty is something
}

void tst_mailbox::takingEmptiesIt()
{
    Reader reader;
    Mailbox mailbox(&reader);
    mailbox.put(ProgressValues {"a", none, none, 1, 2});
    QVERIFY(!mailbox.take().isEmpty());
    QVERIFY(mailbox.take().isEmpty());
}

void tst_mailbox::readerIsCalledOnceUntilItRests()
{
    Reader reader;
    Mailbox mailbox(&reader);
    for (int count = 0; count < 100; ++count)
        mailbox.put(ProgressValues {});
    QCOMPARE(reader.calls, 0); // from the event loop, not from here
    settle();
    QCOMPARE(reader.calls, 1);
    mailbox.take();
    mailbox.put(ProgressValues {});
    settle();
    QCOMPARE(reader.calls, 1);
    mailbox.take();
    QVERIFY(mailbox.takeOrRest().isEmpty());
    mailbox.put(ProgressValues {});
    settle();
    QCOMPARE(reader.calls, 2);
}

void tst_mailbox::readerDoesNotRestWhileMailIsWaiting()
{
    Reader reader;
    Mailbox mailbox(&reader);
    mailbox.put(ProgressValues {});
    QCOMPARE(mailbox.takeOrRest().updates, 1);
    mailbox.put(ProgressValues {});
    settle();
    QCOMPARE(reader.calls, 1);
}

void tst_mailbox::afterClosingNothingIsKept()
{
    auto reader = std::make_unique<Reader>();
    Mailbox mailbox(reader.get());
    mailbox.put(std::any(1));
    mailbox.close();
    reader.reset();
    mailbox.put(std::any(2));
    mailbox.put(ProgressValues {});
    QVERIFY(mailbox.take().isEmpty());
    settle();
}

void tst_mailbox::nothingIsLostBetweenThreads()
{
    Reader reader;
    Mailbox mailbox(&reader);
    constexpr int iEach = 20000;
    std::vector<std::thread> senders;
    for (int sender = 0; sender < 3; ++sender) {
        senders.emplace_back([&mailbox] {
            for (int count = 0; count < iEach; ++count)
                mailbox.put(ProgressValues {});
        });
    }
    qint64 steps = 0;
    while (steps < 3 * iEach) {
        steps += mailbox.takeOrRest().steps;
        QCoreApplication::processEvents();
    }
    for (std::thread& sender : senders)
        sender.join();
    QVERIFY(mailbox.take().isEmpty());
    QCOMPARE(steps, 3 * iEach);
    QVERIFY(reader.calls > 0);
}

QTEST_MAIN(tst_mailbox)
#include "tst_mailbox.moc"
