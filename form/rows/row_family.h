#pragma once

#include "form/rows/build_context.h"

namespace mod_form_qt {

/// Makes the widgets of some row types. Placing and wiring them is not its business, except for
/// what only it can know.
class RowFamily
{
public:
    virtual ~RowFamily() = default;

    /// \param row  prepared and bound
    virtual BuiltRow build(const PreparedRow& row, BuildContext& context) const = 0;
};

/// \return  who makes rows of that type; null for a type that makes nothing
const RowFamily* familyFor(int eleType);

// One of each, in a file of the same name.
const RowFamily& buttonRows();
const RowFamily& choiceRows();
const RowFamily& dateRows();
const RowFamily& imageRows();
const RowFamily& layoutRows();
const RowFamily& listRows();
const RowFamily& menuRows();
const RowFamily& multiconfigRows();
const RowFamily& numberRows();
const RowFamily& pathRows();
const RowFamily& spacerRows();
const RowFamily& tabRows();
const RowFamily& textRows();
const RowFamily& widgetRows();

/// Defines the accessor of a family that keeps no state.
template <typename Family>
const RowFamily& theFamily()
{
    static const Family family;
    return family;
}

} // namespace mod_form_qt
