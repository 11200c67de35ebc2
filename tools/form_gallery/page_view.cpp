#include "tools/form_gallery/page_view.h"

#include "tools/form_gallery/describe.h"
#include "tools/form_gallery/page_rows.h"
#include "tools/form_gallery/sample_windows.h"

#include <QLocale>
#include <QTimer>

namespace gallery {

using namespace mod_form_qt;

namespace {

constexpr int longestLog = 500;
constexpr int kindColumn = 0;
constexpr int keyColumn = 1;
constexpr int valueColumn = 2;
constexpr int answerColumn = 3;

void setCell(QStandardItemModel& model, int row, int column, const QString& text)
{
    QStandardItem* item = model.item(row, column);
    if (item == nullptr) {
        item = new QStandardItem;
        model.setItem(row, column, item);
    }
    if (item->text() == text)
        return;
    item->setText(text);
    item->setToolTip(text);
}

/// A standard button has a long key, which nobody has given it.
QString keyText(const INFO& row)
{
    static const QSet<QString> standard {INFO::objectOKButtonName, INFO::objectCancelButtonName,
                                         INFO::objectCloseButtonName, INFO::objectHelpButtonName};
    if (!row.key.isEmpty() && !standard.contains(row.key))
        return row.key;
    const bool ofForm =
        row.eleType == E_WIDGET || row.eleType == E_DIALOG || row.eleType == E_MAINWINDOW;
    return ofForm ? tr("(Formular)") : typeName(row.eleType);
}

QString answerText(bool ofRow, int answer)
{
    if (ofRow)
        return answer == 0 ? tr("Zeile: nein") : tr("Zeile");
    return answer == 0 ? tr("Formular: nein") : tr("Formular");
}

/// A page is no window: it cannot close.
int keepOpen(const CallbackContext& ctx)
{
    return ctx.type == kAccept || ctx.type == kReject || ctx.type == kClose ? 0 : 1;
}

} // namespace

PageView::PageView(const Page& page, QWidget* parent)
    : QWidget(parent)
    , m_form(new QWidget(this))
    , m_context(m_form)
{
    m_mapModel.setHorizontalHeaderLabels({tr("Schlüssel"), tr("Wert")});
    m_log.setHorizontalHeaderLabels({tr("Art"), tr("Schlüssel"), tr("Wert"), tr("Empfänger")});

    const Observer observer = [this](const CallbackContext& ctx, bool ofRow, int answer) {
        log(ctx, ofRow, answer);
    };
    m_context.start = [this, observer](const SampleWindow& sample) {
        return startWindow(sample, window(), observer);
    };
    // Numbers and dates look the same wherever the gallery runs.
    const QVariant options = with({}, {{Option::localeKey, QLocale(QLocale::German)}});
    // The form is on a widget of its own, which can go before the map.
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_form);
    INFO::applyLayout(m_form, false, options, observed(framed(page), observer),
                      page.flags | MF_NO_MARGINS, {}, &m_context.map, nullptr,
                      observed(ContextCallback(keepOpen), false, observer));
    refresh();
}

PageView::~PageView()
{
    // It refers to the map and to bound variables, which would otherwise go first.
    delete m_form;
}

QList<INFO> PageView::framed(const Page& page)
{
    QList<INFO> rows;
    // clang-format off
    rows << open(E_LAYOUT_V, A_SCROLLAREA)
         <<     INFO(E_LABEL, A_NO_TITLE_SPLIT, QStringLiteral("<h2>%1</h2>").arg(page.title))
         <<     note(page.explanation)
         <<     page.rows(m_context)
         <<     INFO(E_STRETCH, {}, {}, 1)
         << end();
    // clang-format on
    return rows;
}

void PageView::showOwnEntries(bool shown)
{
    m_ownEntries = shown;
    refresh();
}

bool PageView::isListed(const QString& key) const
{
    // A variable without a key is a value of the form, whatever its entry is called.
    return m_ownEntries || !INFO::isTempKeyName(key) || key.startsWith(INFO::automatikVarName);
}

void PageView::refresh()
{
    int row = 0;
    for (auto entry = m_context.map.cbegin(); entry != m_context.map.cend(); ++entry) {
        if (!isListed(entry.key()))
            continue;
        setCell(m_mapModel, row, 0, entry.key());
        setCell(m_mapModel, row, 1, valueText(entry.value()));
        ++row;
    }
    m_mapModel.setRowCount(row);
}

void PageView::clearLog()
{
    m_log.setRowCount(0);
}

void PageView::log(const CallbackContext& ctx, bool ofRow, int answer)
{
    const QString kind = callbackTypeNames.value(ctx.type);
    const QString key = keyText(ctx.row);
    const QString answered = answerText(ofRow, answer);
    // A timer would soon push all else out.
    const int repeated = ctx.type == kTimer ? std::max(0, m_log.rowCount() - 4) : m_log.rowCount();
    int row = m_log.rowCount();
    for (int known = repeated; known < m_log.rowCount(); ++known) {
        if (m_log.item(known, kindColumn)->text() == kind
            && m_log.item(known, keyColumn)->text() == key
            && m_log.item(known, answerColumn)->text() == answered)
            row = known;
    }
    setCell(m_log, row, kindColumn, kind);
    setCell(m_log, row, keyColumn, key);
    setCell(m_log, row, valueColumn, valueText(ctx.value));
    setCell(m_log, row, answerColumn, answered);
    if (answer == 0)
        m_log.item(row, answerColumn)->setForeground(QColor("#b00020"));
    if (m_log.rowCount() > longestLog)
        m_log.removeRows(0, m_log.rowCount() - longestLog);
    // The change is complete only when the engine has come back from its callbacks.
    QTimer::singleShot(0, this, &PageView::refresh);
}

} // namespace gallery
