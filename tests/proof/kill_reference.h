#pragma once

#include "tests/support/start_folder.h"

#include "tools/demo_shop/shop_server.h"

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QVariant>

namespace proof {

/// A run that nothing disturbs, page by page: what others are measured with.
struct WholeRun
{
    /// The export after 0, 1, 2 and so on pages, with the names of its folder and shop taken out.
    QList<QByteArray> pages;
    /// The sizes of the same on the disk.
    QList<qint64> sizes;
    /// How many requests were needed for them.
    QList<int> requests;
    /// The options as they are saved, those that name the shop or the folder left out.
    QMap<QString, QVariant> options;
    /// Changes in the folder.
    int fileEvents = 0;

    /// The number of pages in an export, -1 if it is cut inside a page.
    qsizetype pagesIn(const QByteArray& exported) const { return pages.indexOf(exported); }

    /// Options without those that differ from shop to shop and folder to folder.
    static QMap<QString, QVariant> comparable(QMap<QString, QVariant> options);
};

/// Makes that run inside this process.
WholeRun wholeRun(const StartFolder& folder, const demo_shop::ShopServer::Handler& handler);

} // namespace proof
