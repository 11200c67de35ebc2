#include "form/rows/row_family.h"
#include "form/rows/row_objects.h"

#include <QTabWidget>
#include <QVBoxLayout>

namespace mod_form_qt {

namespace {

/// Closes the open page with whatever is still open in it.
void finishPage(BuildContext& context)
{
    const OpenTabs& open = context.tabs.back();
    while (qsizetype(context.layouts.size()) > open.depth)
        context.closeLayout();
}

void openTabs(const PreparedRow& row, BuildContext& context, BuiltRow& built)
{
    auto* tabs = objectOf<QTabWidget>(row.row.data);
    OpenTabs open;
    QVariant page = valueBeside(row, context);
    open.depth = qsizetype(context.layouts.size());
    if (tabs == nullptr) {
        if (holdsObject(row.row.data)) {
            // A null pointer makes nothing, but its pages and its end still belong to it.
            context.tabs.push_back(open);
            return;
        }
        tabs = new QTabWidget(context.container());
        page = context.valueOf(row);
    } else if (context.container() && tabs->parentWidget() != context.container()) {
        tabs->setParent(context.container());
    }
    if (page.isValid() && page.canConvert<int>())
        open.startPage = page.toInt();
    built.handle = context.share(row);
    built.add(tabs, E_TABWIDGET);
    built.wired = true; // once all pages are in

    open.tabs = tabs;
    open.row = built.handle;
    context.tabs.push_back(open);
}

void startPage(const PreparedRow& row, BuildContext& context, BuiltRow& built)
{
    if (context.tabs.empty())
        return;
    finishPage(context);
    OpenTabs& open = context.tabs.back();
    if (open.tabs == nullptr)
        return;

    auto* page = objectOf<QWidget>(row.row.data);
    const bool given = page != nullptr;
    if (!given) {
        if (holdsObject(row.row.data))
            return;
        page = new QWidget;
        auto* layout = new QVBoxLayout(page);
        OpenLayout content;
        content.layout = layout;
        content.container = page;
        content.page = true;
        context.layouts.push_back(content);
    }
    const int index = open.tabs->addTab(page, row.texts.first());
    if (row.has(A_HIDE))
        open.tabs->setTabVisible(index, false);
    built.handle = context.share(row);
    built.widgets.push_back({page, E_TAB, true, false, -1});
    built.wired = true;
    open.pages.resize(std::size_t(index) + 1);
    open.pages[std::size_t(index)] = built.handle;
}

void endTabs(BuildContext& context)
{
    if (context.tabs.empty())
        return;
    finishPage(context);
    context.finishedTabs.push_back(context.tabs.back());
    context.tabs.pop_back();
}

class TabRows : public RowFamily
{
public:
    BuiltRow build(const PreparedRow& row, BuildContext& context) const override
    {
        BuiltRow built;
        if (row.row.eleType == E_TABWIDGET)
            openTabs(row, context, built);
        else if (row.row.eleType == E_TAB)
            startPage(row, context, built);
        else
            endTabs(context);
        return built;
    }
};

} // namespace

const RowFamily& tabRows()
{
    return theFamily<TabRows>();
}

} // namespace mod_form_qt
