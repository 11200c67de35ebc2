#pragma once

#include "form/model/info.h"

#include <QTimer>

class QTableView;

namespace gallery {

class PageView;

/// All pages, and beside them the data map and the callbacks of the page in front. A form as well.
class GalleryWindow : public QWidget
{
    Q_OBJECT

public:
    explicit GalleryWindow(QWidget* parent = nullptr);
    ~GalleryWindow() override;
    Q_DISABLE_COPY_MOVE(GalleryWindow)

    int pageCount() const;
    PageView* page(int index) const;
    void showPage(int index);

private:
    QList<mod_form_qt::INFO> rows();
    int react(const mod_form_qt::CallbackContext& ctx);
    void takePage();

    QMap<QString, QVariant> m_map;
    QWidget* m_form;
    QList<PageView*> m_pages;
    QTableView* m_mapTable;
    QTableView* m_logTable;
    QTimer m_lookAgain;
};

} // namespace gallery
