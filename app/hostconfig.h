#pragma once

#include <QString>

#include <optional>
#include <tuple>

class QTextStream;

/// What the host's configuration file says. A value that the file does not give, or gives in a
/// form that counts for nothing, is absent, so that the program's own value stays.
struct HostConfig
{
    std::optional<QString> iniPath;
    /// 3, 4 or 49; 0 for anything else that stood there.
    std::optional<int> skr;
    /// Clearing accounts for SKR03, SKR04, SKR49.
    std::optional<std::tuple<int, int, int>> ebayKonto;
    std::optional<std::tuple<int, int, int>> paypalKonto;
    std::optional<std::tuple<int, int, int>> woocommerceKonto;
    /// Path of the export, without double quotes.
    std::optional<QString> outputFile;
    std::optional<bool> firmaKU;
    /// Folder for invoice PDFs, quotes and all.
    std::optional<QString> pdfFolder;
};

/// Reads the host's lines. They are told apart by position alone, and a line that is empty after
/// cleaning has no position. Nothing is reported: bad lines leave their value absent, or 0 where
/// a number was expected. Stops reading after the last line that has a meaning.
HostConfig readHostConfig(QTextStream& text);
