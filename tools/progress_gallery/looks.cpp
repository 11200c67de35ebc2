#include "tools/progress_gallery/looks.h"

#include "progress/mod_progress_qt.h"

#include <QCoreApplication>
#include <QGridLayout>
#include <QGroupBox>

#include <utility>

namespace progress_gallery {

using namespace mod_progress_qt;

namespace {

using Bar = CustomProgressBar;

constexpr int columns = 6;
constexpr int squaresOfASample = 10;
// Room enough for the longest text, and too little for it.
constexpr int wideSample = 320;
constexpr int narrowSample = 220;
constexpr int labels = Bar::kFirstLabel | Bar::kSecondLabel | Bar::kThirdLabel;
constexpr int lookBits = labels | Bar::kFirstCentred | Bar::kSecondCentred | Bar::kThirdCentred
    | Bar::kWrapLabels | Bar::kCanAbort | Bar::kSquares;

QString tr(const char* text)
{
    return QCoreApplication::translate("progress_gallery", text);
}

QString captionOf(int flags)
{
    QStringList bits;
    for (int bit = 1; bit <= Bar::kSquares; bit <<= 1) {
        if (flags & bit)
            bits << QString::number(bit);
    }
    return bits.isEmpty() ? QStringLiteral("0") : bits.join(QStringLiteral(" + "));
}

QList<Look> looksWith(int common)
{
    QList<Look> looks;
    for (int flags = 0; flags < 2 * Bar::kSquares; ++flags) {
        const bool same = (flags & (Bar::kCanAbort | Bar::kSquares)) == common;
        if (same && flags == lookOf(flags))
            looks << Look {flags, captionOf(flags)};
    }
    return looks;
}

} // namespace

int lookOf(int flags)
{
    int look = flags & lookBits;
    if (!(look & Bar::kFirstLabel))
        look &= ~Bar::kFirstCentred;
    if (!(look & Bar::kSecondLabel))
        look &= ~Bar::kSecondCentred;
    if (!(look & Bar::kThirdLabel))
        look &= ~Bar::kThirdCentred;
    if (!(look & labels))
        look &= ~Bar::kWrapLabels;
    return look;
}

QList<Sheet> sheets()
{
    return {
        {tr("Ohne Quadrate, ohne Abbruch"), looksWith(0)},
        {tr("Mit Abbruch"), looksWith(Bar::kCanAbort)},
        {tr("Mit Quadraten"), looksWith(Bar::kSquares)},
        {tr("Mit Quadraten und Abbruch"), looksWith(Bar::kSquares | Bar::kCanAbort)},
    };
}

QWidget* makeSample(int flags, int squares)
{
    auto opts = ProgressDialog::GetStdProgressInfo(true);
    opts.flags = flags;
    opts.buttons = squares;
    opts.text = QStringLiteral("Reading 3 of 6");
    CustomProgressBar bar;
    QWidget* const sample = bar.Create(opts).first;
    bar.setValue({QVariant(), QStringLiteral("invoice_003.pdf"),
                  QStringLiteral("This file holds 12 invoices of November"), 3, 6});
    return sample;
}

QWidget* makeSheet(const Sheet& sheet)
{
    auto* page = new QWidget;
    auto* grid = new QGridLayout(page);
    int place = 0;
    bool wrapped = false;
    for (const Look& look : sheet.looks) {
        // Narrow samples among wide ones would leave gaps.
        if (!std::exchange(wrapped, (look.flags & Bar::kWrapLabels) != 0) && wrapped)
            place = (place + columns - 1) / columns * columns;
        auto* box = new QGroupBox(look.caption);
        auto* layout = new QVBoxLayout(box);
        QWidget* const sample = makeSample(look.flags, squaresOfASample);
        const int width = look.flags & Bar::kWrapLabels ? narrowSample : wideSample;
        sample->setFixedWidth(width);
        if (sample->layout()->hasHeightForWidth())
            sample->setFixedHeight(sample->layout()->totalHeightForWidth(width));
        layout->addWidget(sample);
        grid->addWidget(box, place / columns, place % columns, Qt::AlignLeft | Qt::AlignTop);
        ++place;
    }
    grid->setRowStretch(grid->rowCount(), 1);
    return page;
}

} // namespace progress_gallery
