// The file by which the host tells what it wants.
#include "app/hostconfig.h"
#include "tests/fuzz/fuzz_input.h"

#include <QTextStream>

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    startFuzzing();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    QTextStream text(inputOf(data, size));
    text.setEncoding(QStringConverter::Utf8);
    const HostConfig config = readHostConfig(text);
    if (config.skr && *config.skr != 0 && *config.skr != 3 && *config.skr != 4 && *config.skr != 49)
        qFatal("A chart of accounts that nobody knows was taken.");
    if (config.outputFile && config.outputFile->contains(QLatin1Char('"')))
        qFatal("The path of the export has kept a quote.");
    for (const auto& path : {config.iniPath, config.outputFile, config.pdfFolder}) {
        if (path && (path->contains(QLatin1Char('\n')) || path->contains(QLatin1Char('\r'))))
            qFatal("A path goes over the end of its line.");
    }
    // Each line stands where it does: the last one can't be known without the ones before it.
    if (config.pdfFolder && !(config.firmaKU && config.outputFile && config.skr && config.iniPath))
        qFatal("A line was passed over.");
    return 0;
}
