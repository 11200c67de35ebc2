#include <QApplication>
#include <QLabel>

#include <cstdio>
#include <progress/mod_progress_qt.h>

using namespace mod_progress_qt;

namespace {

int failures = 0;

void expect(bool holds, const char* what)
{
    if (holds)
        return;
    std::fprintf(stderr, "failed: %s\n", what);
    ++failures;
}

class Doubler : public WorkerBase
{
public:
    using WorkerBase::WorkerBase;

    void doWork() override
    {
        ProgressDialog::finalizeWorker(this, 2 * std::any_cast<int>(data()), true);
    }
};

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);

    const auto opts = ProgressDialog::GetStdProgressInfoWithButtons(true, "Working");
    const auto modal = ProgressDialog::createModal<Doubler>(nullptr, opts, 21, {});
    expect(modal.first, "the work completes");
    expect(std::any_cast<int>(modal.second->transferredData()) == 42, "its result is transferred");

    const auto dialog = ProgressDialog::createNonModal(nullptr, opts);
    expect(ProgressDialog::setText(dialog, {}, {}, "text"), "a text is shown");
    expect(dialog->findChild<QLabel*>()->text() == QLatin1String("text"), "it is that text");
    expect(!ProgressDialog::isStopped(dialog), "nobody has stopped it");

    expect(ProgressDialog::GetStdProgressInfo(true).abortText == QLatin1String("Cancel"),
           "texts are English");
    expect(installTranslation(QLocale(QLocale::German)), "the translation is in the library");
    expect(ProgressDialog::GetStdProgressInfo(true).abortText == QLatin1String("Abbrechen"),
           "texts are German once the program asks for it");
    return failures == 0 ? 0 : 1;
}
