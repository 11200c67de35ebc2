#pragma once

#include "tools/form_gallery/gallery_pages.h"
#include "tools/form_gallery/observer.h"

#include <QStandardItemModel>

namespace gallery {

/// One page as a form of its own, with what is to be seen of its data map and its callbacks.
class PageView : public QWidget
{
    Q_OBJECT

public:
    explicit PageView(const Page& page, QWidget* parent = nullptr);
    ~PageView() override;
    Q_DISABLE_COPY_MOVE(PageView)

    const QMap<QString, QVariant>& map() const { return m_context.map; }

    /// Key and value of each entry of the data map.
    QStandardItemModel* mapModel() { return &m_mapModel; }

    /// Kind, key, value and receiver of each callback, the oldest first.
    QStandardItemModel* logModel() { return &m_log; }

    /// \param shown  whether the engine's own entries are listed as well
    void showOwnEntries(bool shown);
    /// Lists the data map anew.
    void refresh();
    void clearLog();

private:
    QList<mod_form_qt::INFO> framed(const Page& page);
    bool isListed(const QString& key) const;
    void log(const mod_form_qt::CallbackContext& ctx, bool ofRow, int answer);

    QWidget* m_form;
    PageContext m_context;
    QStandardItemModel m_mapModel;
    QStandardItemModel m_log;
    bool m_ownEntries = false;
};

} // namespace gallery
