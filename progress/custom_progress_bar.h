#pragma once

#include "progress/export.h"

#include <QElapsedTimer>
#include <QLabel>
#include <QList>
#include <QPointer>
#include <QPushButton>
#include <QString>
#include <QVariant>

#include <array>
#include <tuple>
#include <utility>

class QVBoxLayout;

namespace mod_progress_qt {

/// What a display is to show: text of the first, second and third label, current value, total. An
/// invalid variant leaves its position as it is; all five invalid ask for an automatic step.
using ProgressValues = std::tuple<QVariant, QVariant, QVariant, QVariant, QVariant>;

/// \return  true if all five positions are invalid
MOD_PROGRESS_QT_EXPORT bool asksForStep(const ProgressValues& values);

/// The widgets inside a progress dialog, and what is shown in them. Repaints are kept apart by a
/// delay: what comes earlier is not shown, and is not made up for later. GUI thread only.
class MOD_PROGRESS_QT_EXPORT CustomProgressBar : public QObject
{
    Q_OBJECT

public:
    /// Third label, abort button and squares.
    static constexpr int nDefaultFlags = 1048;
    /// Number of squares.
    static constexpr int nDefaultButtons = 20;
    static constexpr int nDefaultButtonWidth = 16; ///< pixels
    static constexpr int nDefaultButtonHeight = 8; ///< pixels
    /// Least time between repaints, in milliseconds, where nothing else is asked for.
    static constexpr qint64 repaintDelayMs = 100;
    /// Milliseconds; a shorter delay is raised to this.
    static constexpr qint64 shortestRepaintDelayMs = 125;

    /// Style sheet of a filled square.
    static const QString defaultSheet1;
    /// Style sheet of an empty square.
    static const QString defaultSheet2;
    /// Text of the abort button in English, "Cancel"; `ProgressDialog::GetStdProgressInfo` gives it
    /// in the language of the application.
    static const QString defaultAbortText;

    /// Bits of `options::flags`.
    enum Flag : int {
        kFirstCentred = 1, ///< the first label is centred
        kFirstLabel = 2, ///< shows `options::text`
        kSecondLabel = 4, ///< the second label, empty at first
        kThirdLabel = 8, ///< the third label, empty at first
        kCanAbort = 16, ///< abort button and Escape
        kSecondCentred = 32, ///< the second label is centred
        kThirdCentred = 64, ///< the third label is centred
        kWrapLabels = 128, ///< labels wrap words and take the whole width
        kNoStatusBar = 256, ///< the status bar is not used, even if it is set up
        kNoDialog = 512, ///< in the status bar: no dialog at all, the main window stays enabled
        kSquares = 1024 ///< the row of squares that fill
    };

    /// Description of a progress display.
    struct options
    {
        QString title; ///< of the window
        QString text; ///< of the first label
        QString abortText; ///< of the abort button
        int flags = nDefaultFlags; ///< bits of `Flag`
        int buttons = nDefaultButtons; ///< number of squares; at least 1 is made
        int buttonWidth = nDefaultButtonWidth; ///< pixels, at least 2
        int buttonHeight = nDefaultButtonHeight; ///< pixels, at least 2
        qint64 repaintDelayMs = CustomProgressBar::repaintDelayMs; ///< milliseconds
    };

    /// A display without widgets and with the default options.
    explicit CustomProgressBar(QObject* parent = nullptr);

    /// Takes the description without making widgets, for a display that has none.
    void setOptions(const options& opts);

    /// What the display was last described by.
    const options& currentOptions() const { return m_options; }

    /// Makes the widgets.
    /// \return  the widget, which belongs to the caller, and in it the abort button or null
    std::pair<QWidget*, QPushButton*> Create(const options& opts);

    /// Shows what is due.
    /// \return  true if a label or a square was changed, or if a time has run out: that of the
    ///          labels with a label position valid, or that of the squares
    bool setValue(const ProgressValues& values);

    /// A share of a positive total in per cent, rounded towards 0; above 100 if current is above
    /// total. Products that do not fit into 64 bits are computed less exactly.
    static qint64 percentOf(qint64 current, qint64 total);

private:
    struct Due
    {
        bool first = false; ///< the timer has only been started by this call
        bool expired = false;
    };

    struct LabelState
    {
        QPointer<QLabel> label;
        QString shown;
    };

    Due startOrCheck(QElapsedTimer& timer) const;
    bool showTexts(const ProgressValues& values);
    bool showPercent(qint64 percent);
    void addLabels(QVBoxLayout& layout);
    void addSquares(QVBoxLayout& layout);
    QPushButton* addAbortButton(QVBoxLayout& layout);

    QElapsedTimer m_labelsTimer;
    QElapsedTimer m_squaresTimer;
    std::array<LabelState, 3> m_labels;
    QList<QPointer<QPushButton>> m_squares;
    QString m_filledSheet;
    QString m_emptySheet;
    qint64 m_repaintDelayMs = shortestRepaintDelayMs;
    qint64 m_lastPercent = -1;
    options m_options;
};

} // namespace mod_progress_qt
