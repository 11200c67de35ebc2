#pragma once

#include "form/model/info.h"

#include <bitset>
#include <memory>
#include <vector>

namespace mod_form_qt {

/// The items of a list widget by their place in it.
class Items
{
public:
    Items() = default;
    virtual ~Items() = default;
    Q_DISABLE_COPY_MOVE(Items)

    virtual int count() const = 0;
    /// \return  index in the list data, -1 for an item that the form has not made
    virtual int listIndex(int place) const = 0;
    virtual QVariant value(int place) const = 0;
    virtual bool isMarked(int place) const = 0;
    virtual bool isMulti() const = 0;
    virtual void setMarks(const std::vector<bool>& marks) = 0;
};

/// \return  the items of a list widget; null for a widget that is none
std::unique_ptr<Items> itemsOf(QWidget* widget, const std::bitset<256>& attr);

} // namespace mod_form_qt
