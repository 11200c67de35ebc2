#include "app/hostconfig.h"

#include <QStringList>
#include <QTextStream>

#include <array>

namespace {

/// "a;b;c" -> three numbers; absent unless there are exactly three parts. A part that is no number,
/// or too large for an int, is 0.
std::optional<std::tuple<int, int, int>> readTriple(const QString& line)
{
    const QStringList parts = line.split(QLatin1Char(';'), Qt::KeepEmptyParts);
    if (parts.size() != 3)
        return std::nullopt;
    return std::tuple {parts[0].toInt(), parts[1].toInt(), parts[2].toInt()};
}

void assignTriple(std::optional<std::tuple<int, int, int>>& target, const QString& line)
{
    if (const auto triple = readTriple(line))
        target = triple;
}

int knownSkr(int number)
{
    return number == 3 || number == 4 || number == 49 ? number : 0;
}

using LineReader = void (*)(HostConfig&, const QString& line);

// Position in the file -> what the line there means.
constexpr std::array<LineReader, 9> lineReaders {
    [](HostConfig& config, const QString& line) { config.iniPath = line; },
    [](HostConfig& config, const QString& line) { config.skr = knownSkr(line.toInt()); },
    [](HostConfig& config, const QString& line) { assignTriple(config.ebayKonto, line); },
    [](HostConfig& config, const QString& line) { assignTriple(config.paypalKonto, line); },
    [](HostConfig& config, const QString& line) { assignTriple(config.woocommerceKonto, line); },
    [](HostConfig& config, const QString& line) {
        config.outputFile = QString(line).remove(QLatin1Char('"'));
    },
    [](HostConfig& config, const QString& line) { config.firmaKU = line.toInt() != 0; },
    [](HostConfig&, const QString&) { /* counts, means nothing */ },
    // With any quotes it contains: the host gives this folder bare.
    [](HostConfig& config, const QString& line) { config.pdfFolder = line; },
};

} // namespace

HostConfig readHostConfig(QTextStream& text)
{
    HostConfig config;
    QString line;
    for (std::size_t position = 0; position < lineReaders.size() && text.readLineInto(&line);) {
        const QString cleaned = line.remove(QLatin1Char('\r')).trimmed();
        if (cleaned.isEmpty())
            continue;
        lineReaders[position](config, cleaned);
        ++position;
    }
    return config;
}
