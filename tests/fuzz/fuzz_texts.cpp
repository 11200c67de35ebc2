// Titles of rows and lines of menus: texts with variables, codes and markup in them.
#include "form/build/prepare_row.h"
#include "form/mod_form_qt.h"
#include "tests/fuzz/fuzz_input.h"

using namespace mod_form_qt;

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    startFuzzing(argc, argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString text = QString::fromUtf8(inputOf(data, size));

    const PreparedRow row = prepareRow(INFO(E_LINEEDIT, A_MANDATORY, text), {});
    if (row.texts.isEmpty())
        qFatal("A row has lost its title.");

    QString rest = text;
    QMap<QString, QVariant> attributes;
    TREE_MENU::parse(rest, attributes);
    if (rest.size() > text.size())
        qFatal("What is left of a text is longer than the text.");

    TREE_MENU tree(text, true, true);
    tree << text << text + TREE_MENU::endl << TREE_MENU::endl;
    tree >> text >> TREE_MENU::endl;
    delete tree.menu();
    return 0;
}
