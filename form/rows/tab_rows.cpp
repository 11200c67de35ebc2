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
    if (tabs == nullptr) {
        // A null pointer makes nothing; what follows then stands outside of any page.
        if (holdsObject(row.row.data))
            return;
        tabs = new QTabWidget(context.container());
        const QVariant page = context.valueOf(row);
        if (page.isValid() && page.canConvert<int>())
            open.startPage = page.toInt();
    }
    built.handle = context.share(row);
    built.add(tabs, E_TABWIDGET);
    built.wired = true; // once all pages are in

    open.tabs = tabs;
    open.row = built.handle;
    open.depth = qsizetype(context.layouts.size());
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
        context.layouts.push_back({layout, page, {}, nullptr, true, {}});
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
