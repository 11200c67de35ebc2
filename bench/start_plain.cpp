// A window with the same widgets, written by hand. Started by bench_start.
#include "bench/first_paint.h"
#include "bench/main_form_by_hand.h"

#include <QMainWindow>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QMainWindow window;
    bench::buildByHand(window, {});
    const bench::FirstPaint watch(&window);
    window.show();
    return QApplication::exec();
}
