#pragma once

#include "tests/app/run_fixture.h"

/// A run that makes every kind of request, and the faults that befall it.
class FaultRun
{
public:
    /// A request that a fault befalls: by what is asked for.
    struct Phase
    {
        const char* name;
        /// Part of the target that belongs to this request alone.
        const char* part;
        /// Page that fails with it.
        int page;
    };

    struct Kind
    {
        const char* name;
        demo_shop::Fault fault;
    };

    static const QList<Phase>& phases();
    static const QList<Kind>& kinds();

    explicit FaultRun(const StartFolder& folder);

    /// Makes a run without faults and remembers what it leaves behind.
    void remember();
    /// Starts afresh, up to the first pass. A shop that is to be silent is given up soon.
    void start();

    /// The request of \a phase is spoilt until the label has announced its second attempt.
    void spoilOneAttempt(const Phase& phase, const demo_shop::Fault& fault);
    /// The request of \a phase is spoilt until its page has failed once.
    void spoilOnePass(const Phase& phase, const demo_shop::Fault& fault);
    /// The request of \a phase is spoilt for good.
    void spoilForGood(const Phase& phase, const demo_shop::Fault& fault);

    /// True if export and invoice files are those of the run without faults.
    bool leftTheSame() const;

    /// Answers that were spoilt since the last start.
    int spoiltAnswers() const { return m_spoilt; }

    qsizetype rememberedLines() const { return m_export.count('\n'); }

    qsizetype rememberedFiles() const { return m_files.size(); }

    RunFixture fixture;

private:
    void spoilWhile(const Phase& phase, const demo_shop::Fault& fault,
                    const std::function<bool()>& condition);
    QMap<QString, QByteArray> invoiceFiles() const;

    QByteArray m_export;
    QMap<QString, QByteArray> m_files;
    int m_spoilt = 0;
};
