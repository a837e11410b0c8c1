#include "zoScreenshots.h"

#include <QApplication>
#include <QFont>
#include <QImage>
#include <QSettings>
#include <QStyle>
#include <QStyleFactory>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace
{
// A picture of a wall, as small as a page wants it.
int fit(const char* from, const char* to, int side)
{
    const QImage image(QString::fromLocal8Bit(from));
    if (image.isNull()) {
        std::fprintf(stderr, "zo-screenshots: %s is no picture\n", from);
        return 1;
    }
    const int most = std::min(side, std::max(image.width(), image.height())); // never larger than it is
    const QImage fitted = image.scaled(most, most, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    return fitted.convertToFormat(QImage::Format_RGB888).save(QString::fromLocal8Bit(to)) ? 0 : 1;
}
} // namespace

// zo-screenshots LANGUAGE FOLDER, or --fit PICTURE FILE.png [SIDE]
int main(int argc, char** argv)
{
    if ((argc == 4 || argc == 5) && std::strcmp(argv[1], "--fit") == 0)
        return fit(argv[2], argv[3], argc == 5 ? std::atoi(argv[4]) : 1100);
    if (argc != 3) {
        std::fputs("Usage: zo-screenshots LANGUAGE FOLDER\nSee dev/screenshots.\n", stderr);
        return 2;
    }
    // The same picture everywhere: no settings, no display, no style, scale or zone of whoever runs this.
    const QTemporaryDir home;
    for (const char* variable : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR"})
        qputenv(variable, home.path().toLocal8Bit());
    for (const char* variable : {"QT_SCALE_FACTOR", "QT_FONT_DPI", "QT_STYLE_OVERRIDE", "ZOKE_DATA"})
        qunsetenv(variable);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_ENABLE_HIGHDPI_SCALING", "0");
    qputenv("TZ", "UTC");
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, home.path());
    QCoreApplication::setOrganizationName(QStringLiteral("zo"));
    QCoreApplication::setApplicationName(QStringLiteral("zohost"));
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);

    QApplication application(argc, argv);
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setPalette(QApplication::style()->standardPalette());
    QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 9));
    zoScreenshots screenshots(QString::fromLocal8Bit(argv[1]), QString::fromLocal8Bit(argv[2]));
    return screenshots.takeAll() ? 0 : 1;
}
