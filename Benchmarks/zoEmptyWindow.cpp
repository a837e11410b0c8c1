// The least that a window of this toolkit takes: an empty main window, in a process that has the libraries that it is told
// to load.

#include <QApplication>
#include <QMainWindow>

#include <cstdio>

#include <dlfcn.h>

int main(int argc, char** argv)
{
    for (int i = 1; i < argc; ++i) {
        if (dlopen(argv[i], RTLD_NOW) == nullptr) {
            std::fprintf(stderr, "%s\n", dlerror());
            return 1;
        }
    }
    int count = 1;
    const QApplication application(count, argv);
    QMainWindow window;
    window.resize(1180, 700);
    window.show();
    return QApplication::exec();
}
