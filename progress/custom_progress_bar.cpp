#include "progress/custom_progress_bar.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include <limits>

namespace mod_progress_qt {

const QString CustomProgressBar::defaultSheet1 = QStringLiteral(
    "background-color: rgba(46, 204, 113, 0.4); border: 1px solid; border-color: rgb(0, 0, 255);");
const QString CustomProgressBar::defaultSheet2 =
    QStringLiteral("background-color: rgb(255, 255, 255); border: 1px solid;");
const QString CustomProgressBar::defaultAbortText = tr("Cancel");

namespace {

constexpr int leastSquareSide = 2;

bool hasText(const ProgressValues& values)
{
    return std::get<0>(values).isValid() || std::get<1>(values).isValid()
        || std::get<2>(values).isValid();
}

QFrame* makeLine()
{
    auto* line = new QFrame;
    line->setFrameShape(QFrame::HLine);
    line->setFrameShadow(QFrame::Sunken);
    return line;
}

void addLabel(QVBoxLayout& layout, QLabel* label, bool centred, bool wraps)
{
    const Qt::Alignment alignment =
        centred ? Qt::AlignHCenter | Qt::AlignVCenter : Qt::AlignLeft | Qt::AlignTop;
    label->setAlignment(alignment);
    if (wraps) {
        label->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
        label->setWordWrap(true); // after the policy, to which it adds the height for a width
        layout.addWidget(label);
        return;
    }
    label->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    // Such a label is as wide as its text, so that its place decides where the text stands.
    layout.addWidget(label, 0, alignment);
}

} // namespace

bool asksForStep(const ProgressValues& values)
{
    return !hasText(values) && !std::get<3>(values).isValid() && !std::get<4>(values).isValid();
}

CustomProgressBar::CustomProgressBar(QObject* parent)
    : QObject(parent)
    , m_filledSheet(defaultSheet1)
    , m_emptySheet(defaultSheet2)
{
}

void CustomProgressBar::setOptions(const options& opts)
{
    m_options = opts;
    m_repaintDelayMs = qMax(opts.repaintDelayMs, shortestRepaintDelayMs);
    m_labels = {};
    m_labels[0].shown = opts.text;
    m_squares.clear();
    m_labelsTimer.invalidate();
    m_squaresTimer.invalidate();
    m_lastPercent = -1;
}

std::pair<QWidget*, QPushButton*> CustomProgressBar::Create(const options& opts)
{
    setOptions(opts);
    auto* widget = new QWidget;
    auto* layout = new QVBoxLayout(widget);
    addLabels(*layout);
    if (m_options.flags & kSquares) {
        layout->addWidget(makeLine());
        addSquares(*layout);
    }
    layout->addWidget(makeLine());
    QPushButton* abortButton = nullptr;
    if (m_options.flags & kCanAbort) {
        abortButton = addAbortButton(*layout);
        layout->addWidget(makeLine());
    }
    return {widget, abortButton};
}

void CustomProgressBar::addLabels(QVBoxLayout& layout)
{
    struct Kind
    {
        int present;
        int centred;
    };

    constexpr std::array<Kind, 3> kinds {{{kFirstLabel, kFirstCentred},
                                          {kSecondLabel, kSecondCentred},
                                          {kThirdLabel, kThirdCentred}}};
    const int flags = m_options.flags;
    for (std::size_t index = 0; index < kinds.size(); ++index) {
        const Kind kind = kinds.at(index);
        if (!(flags & kind.present))
            continue;
        auto* label = new QLabel(m_labels.at(index).shown);
        m_labels.at(index).label = label;
        addLabel(layout, label, flags & kind.centred, flags & kWrapLabels);
        if (kind.present == kFirstLabel && flags & (kSecondLabel | kThirdLabel))
            layout.addWidget(makeLine());
    }
}

void CustomProgressBar::addSquares(QVBoxLayout& layout)
{
    auto* row = new QHBoxLayout;
    row->setContentsMargins(0, 0, 0, 0);
    const int count = qMax(m_options.buttons, 1);
    for (int index = 0; index < count; ++index) {
        auto* square = new QPushButton;
        square->setFixedSize(qMax(m_options.buttonWidth, leastSquareSide),
                             qMax(m_options.buttonHeight, leastSquareSide));
        // They only look like buttons: neither keys nor the mouse may reach them.
        square->setFocusPolicy(Qt::NoFocus);
        square->setAutoDefault(false);
        square->setAttribute(Qt::WA_TransparentForMouseEvents);
        square->setStyleSheet(m_emptySheet);
        row->addWidget(square);
        m_squares.append(square);
    }
    layout.addLayout(row);
}

QPushButton* CustomProgressBar::addAbortButton(QVBoxLayout& layout)
{
    auto* button = new QPushButton(m_options.abortText);
    button->setAutoDefault(true);
    button->setDefault(true);
    layout.addWidget(button, 0, Qt::AlignHCenter);
    return button;
}

CustomProgressBar::Due CustomProgressBar::startOrCheck(QElapsedTimer& timer) const
{
    if (timer.isValid())
        return {false, timer.hasExpired(m_repaintDelayMs - 1)};
    timer.start();
    return {true, false};
}

bool CustomProgressBar::setValue(const ProgressValues& values)
{
    const Due labels = startOrCheck(m_labelsTimer);
    const Due squares = startOrCheck(m_squaresTimer);
    const bool anyText = hasText(values);
    const QVariant& current = std::get<3>(values);
    bool changed = false;

    if (labels.first || labels.expired)
        changed = showTexts(values);
    if (current.isValid() && !m_squares.isEmpty() && (squares.first || squares.expired)) {
        const qint64 value = qMax(current.toLongLong(), 0LL);
        const QVariant& total = std::get<4>(values);
        changed =
            showPercent(total.isValid() ? percentOf(value, total.toLongLong()) : value) || changed;
    }

    const bool labelsDue = labels.expired && anyText;
    if (labelsDue)
        m_labelsTimer.restart();
    if (squares.expired && current.isValid())
        m_squaresTimer.restart();
    return labelsDue || squares.expired || changed;
}

bool CustomProgressBar::showTexts(const ProgressValues& values)
{
    const std::array<const QVariant*, 3> texts {&std::get<0>(values), &std::get<1>(values),
                                                &std::get<2>(values)};
    bool changed = false;
    for (std::size_t index = 0; index < texts.size(); ++index) {
        LabelState& state = m_labels.at(index);
        if (!texts.at(index)->isValid() || state.label.isNull())
            continue;
        QString text = texts.at(index)->toString();
        if (text == state.shown)
            continue;
        state.label->setText(text);
        state.shown = std::move(text);
        changed = true;
    }
    return changed;
}

bool CustomProgressBar::showPercent(qint64 percent)
{
    if (percent == m_lastPercent)
        return false;
    bool changed = false;
    const qsizetype count = m_squares.size();
    for (qsizetype number = 1; number <= count; ++number) {
        QPushButton* const square = m_squares.at(number - 1);
        if (square == nullptr)
            continue;
        const QString& sheet = 100 * number / count > percent ? m_emptySheet : m_filledSheet;
        if (square->styleSheet() == sheet)
            continue;
        square->setStyleSheet(sheet);
        changed = true;
    }
    m_lastPercent = percent;
    return changed;
}

qint64 CustomProgressBar::percentOf(qint64 current, qint64 total)
{
    if (total <= 0)
        return 0;
    constexpr qint64 largest = std::numeric_limits<qint64>::max();
    if (current <= largest / 100 && current >= -(largest / 100))
        return current * 100 / total;
    const qint64 hundredth = total / 100;
    if (hundredth > 0)
        return current / hundredth;
    return current > 0 ? largest : -largest;
}

} // namespace mod_progress_qt
