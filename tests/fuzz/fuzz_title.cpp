// Titles of rows: texts with options, codes and markup in them, on rows of every kind that shows
// one.
#include "form/build/prepare_row.h"
#include "form/mod_form_qt.h"
#include "tests/fuzz/fuzz_input.h"

#include <QWidget>

using namespace mod_form_qt;

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    startFuzzing();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString text = QString::fromUtf8(inputOf(data, size));
    const PreparedRow row = prepareRow(INFO(E_LINEEDIT, A_MANDATORY, text), {});
    if (row.texts.isEmpty())
        qFatal("A row has lost its title.");

    QWidget window;
    QMap<QString, QVariant> map;
    const QList<INFO> rows {INFO(E_LAYOUT_V, A_GROUP | A_CAN_HIDE_ITEMS, text, {}, "group"),
                            INFO(E_LINEEDIT, A_MANDATORY, text, QString(), "line"),
                            INFO(E_CHECKBOX, A_NONE, text, false, "check"),
                            INFO(E_BUTTON, A_NONE, text),
                            INFO(E_LABEL, A_NONE, text),
                            INFO(E_LAYOUT_END)};
    INFO::applyLayout(&window, true, QString(), rows, {}, {}, &map);
    if (window.layout() == nullptr)
        qFatal("The form was not built.");
    endAttempt();
    return 0;
}
