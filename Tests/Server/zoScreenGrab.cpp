#include <QGuiApplication>
#include <QPixmap>
#include <QScreen>

// zoScreenGrab FILE.png: what is on the screen of DISPLAY.
int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "xcb");
    qputenv("QT_XCB_GL_INTEGRATION", "none");
    const QGuiApplication application(argc, argv);
    return argc == 2 && QGuiApplication::primaryScreen()->grabWindow(0).save(QString::fromLocal8Bit(argv[1]))
               ? 0
               : 1;
}
