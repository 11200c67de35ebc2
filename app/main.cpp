#include "app/identity.h"
#include "app/mainwindow.h"

#include <QApplication>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    setApplicationIdentity();
    installQtTranslation();

    MainWindow window(nullptr);
    window.show();
    return QApplication::exec();
}
