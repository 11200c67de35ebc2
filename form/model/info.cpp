#include "form/model/info.h"

namespace mod_form_qt {

namespace {

/// Turns what a row was given into its `data`.
struct ToVariant
{
    QVariant operator()(const WIDGET_INFO& widgets) const
    {
        // What `{}` selects; stored as it is, it would stand in the form data map as a value.
        return widgets.empty() ? QVariant() : QVariant::fromValue(widgets);
    }

    QVariant operator()(const QVariant& value) const { return value; }

    template <typename T>
    QVariant operator()(const T& value) const
    {
        return QVariant::fromValue(value);
    }
};

} // namespace

// Here, beside the constructor, so that no linker leaves the registration out of a program that has
// rows.
const int INFO::WIDGET_INFO_METATYPE = qRegisterMetaType<WIDGET_INFO>("mod_form_qt::T_WIDGET_INFO");
const int INFO::LISTDATA_METATYPE = qRegisterMetaType<T_LISTDATA>("mod_form_qt::T_LISTDATA");
const int INFO::LISTDATA_PTR_METATYPE =
    qRegisterMetaType<T_LISTDATA_PTR>("mod_form_qt::T_LISTDATA_PTR");
const int INFO::VARIANT_PTR_METATYPE =
    qRegisterMetaType<T_VARIANT_PTR>("mod_form_qt::T_VARIANT_PTR");
const int INFO::VARMAP_SHARED_PTR_METATYPE =
    qRegisterMetaType<T_VARMAP_SHARED_PTR>("mod_form_qt::T_VARMAP_SHARED_PTR");

INFO::INFO() = default;
INFO::~INFO() = default;
INFO::INFO(const INFO& other) = default;
INFO::INFO(INFO&& other) noexcept = default;
INFO& INFO::operator=(const INFO& other) = default;
INFO& INFO::operator=(INFO&& other) noexcept = default;

INFO::INFO(int type, std::bitset<256> attributes, const QVariant& titleOrOptions,
           const DataVariant& value,
           MAP_KEY_TYPE name, // NOLINT(performance-unnecessary-value-param): as in the header
           Callback report, std::any payload, const QVariant& extra)
    : eleType(type)
    , attr(attributes)
    , param(titleOrOptions)
    , data(std::visit(ToVariant(), value))
    , key(name.toString())
    , callback(std::move(report))
    , anyData(std::move(payload))
    , userData(extra)
{
}

} // namespace mod_form_qt
