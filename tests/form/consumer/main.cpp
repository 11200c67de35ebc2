#include <QApplication>
#include <QLineEdit>
#include <QSpinBox>

#include <cstdio>
#include <form/mod_form_qt.h>

using namespace mod_form_qt;

namespace {

int failures = 0;

void expect(bool holds, const char* what)
{
    if (holds)
        return;
    std::fprintf(stderr, "failed: %s\n", what);
    ++failures;
}

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    QMap<QString, QVariant> map {{"name", "Anna"}};
    int changes = 0;
    const ContextCallback count = [&changes](const CallbackContext& event) {
        changes += event.type == kAfterDataChanged ? 1 : 0;
        return 1;
    };

    QWidget window;
    const QList<INFO> rows = {
        INFO(E_LAYOUT_GRID, A_GROUP, "Person"),
        INFO(E_LINEEDIT, A_USE_MAP_VALUE, "Name:", QVariant(), "name"),
        INFO(E_NUMBER, A_NONE, QVariantMap {{"title", "Alter:"}, {"spinbox", true}}, 30, "age"),
        INFO(E_LAYOUT_END),
    };
    INFO::applyLayout(&window, true, QVariant(), rows, {}, {}, &map, nullptr, count);

    const auto* name = INFO::lineEditByKey(&map, "name");
    const auto* age = INFO::spinBoxByKey(&map, "age");
    expect(name && name->text() == QLatin1String("Anna"), "the form takes the map's value");
    expect(age && age->value() == 30, "the form takes the row's value");

    expect(INFO::setData(&map, {{"name", "Berta"}, {"age", 31}}, true) == 2, "two values are set");
    expect(name && name->text() == QLatin1String("Berta"), "the text is shown");
    expect(age && age->value() == 31, "the number is shown");
    expect(map.value("name") == QVariant("Berta"), "the text is in the map");
    expect(changes == 2, "the callback hears of both changes");
    return failures == 0 ? 0 : 1;
}
