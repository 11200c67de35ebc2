#include "tools/form_gallery/gallery_pages.h"

namespace gallery {

PageContext::PageContext(QWidget* owner)
    : m_owner(owner)
{
}

QVariant* PageContext::variable(const QVariant& value)
{
    return &m_variables.emplace_back(value);
}

mod_form_qt::T_LISTDATA* PageContext::list(const mod_form_qt::T_LISTDATA& items)
{
    return &m_lists.emplace_back(items);
}

QString PageContext::file(const QString& name)
{
    return m_folder.filePath(name);
}

} // namespace gallery
