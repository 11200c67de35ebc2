// Lines of menus: texts with codes, options and nested braces in them.
#include "form/mod_form_qt.h"
#include "tests/fuzz/fuzz_input.h"

using namespace mod_form_qt;

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    startFuzzing();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString text = QString::fromUtf8(inputOf(data, size));
    QString rest = text;
    QMap<QString, QVariant> attributes;
    TREE_MENU::parse(rest, attributes);
    if (rest.size() > text.size())
        qFatal("What is left of a text is longer than the text.");

    TREE_MENU tree(text, true, true);
    tree << text << text + TREE_MENU::endl << TREE_MENU::endl;
    tree >> text >> TREE_MENU::endl;
    for (const QString& line : text.split(QLatin1Char('\n')))
        tree << line;
    delete tree.menu();
    return 0;
}
