#include "zoScreenshots.h"

#include <QApplication>
#include <QFont>
#include <QImage>
#include <QPalette>
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

// As desktops have it for the night.
QPalette darkPalette()
{
    QPalette palette(QColor(0x31, 0x36, 0x3b), QColor(0x23, 0x26, 0x29));
    const QColor text(0xee, 0xee, 0xee);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
                                           QPalette::BrightText, QPalette::ToolTipText})
        palette.setColor(role, text);
    palette.setColor(QPalette::Base, QColor(0x1b, 0x1e, 0x20));
    palette.setColor(QPalette::AlternateBase, QColor(0x23, 0x26, 0x29));
    palette.setColor(QPalette::Highlight, QColor(0x2a, 0x82, 0xda));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, QColor(0x6c, 0xb8, 0xff));
    palette.setColor(QPalette::PlaceholderText, QColor(0x9a, 0x9a, 0x9a));
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, QColor(0x8a, 0x8a, 0x8a));
    return palette;
}
} // namespace

// zo-screenshots LANGUAGE FOLDER [dark], or --fit PICTURE FILE.png [SIDE]
int main(int argc, char** argv)
{
    if ((argc == 4 || argc == 5) && std::strcmp(argv[1], "--fit") == 0)
        return fit(argv[2], argv[3], argc == 5 ? std::atoi(argv[4]) : 1100);
    const bool isDark = argc == 4 && std::strcmp(argv[3], "dark") == 0;
    if (argc != 3 && !isDark) {
        std::fputs("Usage: zo-screenshots LANGUAGE FOLDER [dark]\nSee dev/screenshots.\n", stderr);
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
    QApplication::setPalette(isDark ? darkPalette() : QApplication::style()->standardPalette());
    QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 9));
    zoScreenshots screenshots(QString::fromLocal8Bit(argv[1]), QString::fromLocal8Bit(argv[2]));
    return screenshots.takeAll() ? 0 : 1;
}
