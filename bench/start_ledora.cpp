// The program itself, up to its first painted window. Started by bench_start.
#include "app/identity.h"
#include "app/mainwindow.h"

#include "bench/first_paint.h"

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    setApplicationIdentity();
    installQtTranslation();

    MainWindow window(nullptr);
    const bench::FirstPaint watch(&window);
    window.show();
    return QApplication::exec();
}
