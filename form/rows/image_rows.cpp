#include "form/rows/row_family.h"
#include "form/widgets/image_widget.h"

namespace mod_form_qt {

namespace {

class ImageRows : public RowFamily
{
public:
    BuiltRow build(const PreparedRow& row, BuildContext& context) const override
    {
        BuiltRow built;
        context.addLabel(row, built);
        auto* image = new helper::ImageWidget(context.container());
        initImage(context.valueOf(row), image, row.row.attr);
        built.add(image, E_IMAGE);
        return built;
    }
};

} // namespace

const RowFamily& imageRows()
{
    return theFamily<ImageRows>();
}

} // namespace mod_form_qt
