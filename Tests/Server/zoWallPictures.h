#pragma once

#include <zoServerSetup.h>

#include <QFile>
#include <QImage>

// Walls of configurations, for tests of what nodes show.
namespace zoWallPictures
{
inline zoWallSetup read(const QString& text)
{
    zoWallSetup setup;
    QString reason;
    if (!zoServerSetup::read(text, 1.0, setup, reason))
        qWarning("%s", qUtf8Printable(reason));
    return setup;
}

// One of Data/cluster.
inline zoWallSetup sample(const QString& name)
{
    QFile file(QStringLiteral(ZO_DATA_DIR "/cluster/") + name + QStringLiteral(".zhpc"));
    return file.open(QIODevice::ReadOnly) ? read(QString::fromUtf8(file.readAll())) : zoWallSetup();
}

// Kept for a look where ZO_SCREENSHOTS names a folder.
inline void keep(const QImage& image, const QString& name)
{
    const QString folder = qEnvironmentVariable("ZO_SCREENSHOTS");
    if (!folder.isEmpty())
        image.save(folder + QLatin1Char('/') + name + QStringLiteral(".png"));
}
} // namespace zoWallPictures
