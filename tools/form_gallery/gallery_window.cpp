#include "tools/form_gallery/gallery_window.h"

#include "tools/form_gallery/page_rows.h"
#include "tools/form_gallery/page_view.h"
#include "tools/form_gallery/side_tabs.h"

#include <QHeaderView>
#include <QTableView>

namespace gallery {

using namespace mod_form_qt;

namespace {

constexpr int lookAgainAfter = 250;

QTableView* makeTable(QWidget* parent)
{
    auto* table = new QTableView(parent);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setShowGrid(false);
    table->setAlternatingRowColors(true);
    table->setWordWrap(false);
    table->verticalHeader()->hide();
    table->verticalHeader()->setDefaultSectionSize(table->fontMetrics().height() + 6);
    table->horizontalHeader()->setStretchLastSection(true);
    table->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    return table;
}

} // namespace

GalleryWindow::GalleryWindow(QWidget* parent)
    : QWidget(parent)
    , m_form(new QWidget(this))
    , m_mapTable(makeTable(m_form))
    , m_logTable(makeTable(m_form))
{
    const QList<Page> all = pages();
    for (const Page& page : all)
        m_pages << new PageView(page, m_form);

    const auto main = [this](const CallbackContext& ctx) { return react(ctx); };
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_form);
    INFO::applyLayout(m_form, false, QVariant(), rows(), {}, {}, &m_map, nullptr,
                      ContextCallback(main));
    setWindowTitle(tr("Galerie der Formulare"));
    resize(1340, 750);
    takePage();

    // The map tells nobody of a change, and some changes call no callback.
    connect(&m_lookAgain, &QTimer::timeout, this,
            [this] { page(m_map.value("page").toInt())->refresh(); });
    m_lookAgain.start(lookAgainAfter);
}

GalleryWindow::~GalleryWindow()
{
    // It refers to the map, which would otherwise go first.
    delete m_form;
}

int GalleryWindow::pageCount() const
{
    return int(m_pages.size());
}

PageView* GalleryWindow::page(int index) const
{
    return m_pages.value(index);
}

void GalleryWindow::showPage(int index)
{
    if (auto* tabs = WIDGET_INFO::widget<QTabWidget>(&m_map, "page", E_TABWIDGET))
        tabs->setCurrentIndex(index);
}

QList<INFO> GalleryWindow::rows()
{
    const QVariant width = with({}, {{Option::buildKey(Option::minWidthKey, E_WIDGET), 380}});

    QList<INFO> rows;
    // clang-format off
    rows << open(E_LAYOUT_H)
         <<     INFO(E_TABWIDGET, A_STRETCH_FACTOR_2, {}, new SideTabs(m_form), "page");
    const QList<Page> all = pages();
    for (int index = 0; index < all.size(); ++index)
        rows << INFO(E_TAB, A_NONE, all.at(index).title, m_pages.at(index));
    rows <<     INFO(E_TAB_END)
         <<     open(E_LAYOUT_V, A_STRETCH_FACTOR_1)
         <<         INFO(E_LABEL, A_NONE, tr("<b>Datentabelle</b> des Formulars"))
         <<         INFO(E_WIDGET, A_STRETCH_FACTOR_1, width, m_mapTable, "map")
         <<         INFO(E_CHECKBOX, A_NONE, tr("Auch die eigenen Einträge der Engine"), false,
                         "own_entries")
         <<         INFO(E_LABEL, A_NONE, tr("<b>Callbacks</b> in der Reihenfolge, in der sie "
                                             "kommen"))
         <<         INFO(E_WIDGET, A_STRETCH_FACTOR_1, width, m_logTable, "log")
         <<         INFO(E_BUTTON, A_ALIGN_LEFT, tr("Protokoll leeren"), {}, "clear")
         <<     end()
         << end();
    // clang-format on
    return rows;
}

int GalleryWindow::react(const CallbackContext& ctx)
{
    if (ctx.type == kAfterDataChanged && ctx.row.key == "page") {
        takePage();
    } else if (ctx.type == kAfterDataChanged && ctx.row.key == "own_entries") {
        for (PageView* view : std::as_const(m_pages))
            view->showOwnEntries(ctx.value.toBool());
    } else if (ctx.type == kAfterAction && ctx.row.key == "clear") {
        page(m_map.value("page").toInt())->clearLog();
    }
    return 1;
}

void GalleryWindow::takePage()
{
    PageView* const view = page(m_map.value("page").toInt());
    if (view == nullptr)
        return;
    view->refresh();
    m_mapTable->setModel(view->mapModel());
    m_mapTable->setColumnWidth(0, 135);
    m_logTable->setModel(view->logModel());
    m_logTable->setColumnWidth(0, 135);
    m_logTable->setColumnWidth(1, 100);
    m_logTable->setColumnWidth(2, 90);
    disconnect(m_logTable->model(), &QAbstractItemModel::rowsInserted, m_logTable, nullptr);
    connect(m_logTable->model(), &QAbstractItemModel::rowsInserted, m_logTable,
            [table = m_logTable] { table->scrollToBottom(); });
}

} // namespace gallery
