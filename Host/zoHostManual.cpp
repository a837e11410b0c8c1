#include "zoHostManual.h"

#include <zoPlatform.h>

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

QStringList zoHostManual::folders()
{
    const QDir program(QCoreApplication::applicationDirPath());
    return {QString::fromStdString(zoPlatform::getDataDir()) + QStringLiteral("/manual"),
            QDir::cleanPath(program.absoluteFilePath(QStringLiteral(ZO_INSTALLED_MANUAL_DIR))),
            QStringLiteral(ZO_BUILT_MANUAL_DIR)};
}

QUrl zoHostManual::find(const QString& page, const QString& language)
{
    const QString name = page.section(QLatin1Char('#'), 0, 0);
    const QString anchor = page.section(QLatin1Char('#'), 1);
    const QString base = language.section(QLatin1Char('_'), 0, 0);
    const QStringList all = folders();
    for (const QString& spoken : {language, base, QStringLiteral("en")}) {
        for (const QString& folder : all) {
            const QFileInfo file(QStringLiteral("%1/%2/%3.html").arg(folder, spoken, name));
            if (folder.isEmpty() || spoken.isEmpty() || !file.isFile())
                continue;
            QUrl url = QUrl::fromLocalFile(file.absoluteFilePath());
            url.setFragment(anchor.isEmpty() ? QString() : anchor);
            return url;
        }
    }
    return {};
}
