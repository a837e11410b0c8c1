#include "zoAvailableMemory.h"

#include <QFile>

qint64 zoAvailableMemory::bytes()
{
    QFile file(QStringLiteral("/proc/meminfo"));
    if (!file.open(QIODevice::ReadOnly))
        return -1;
    const QList<QByteArray> lines = file.readAll().split('\n');
    for (const QByteArray& line : lines) {
        // "MemAvailable:   12345678 kB"
        if (!line.startsWith("MemAvailable:"))
            continue;
        bool ok = false;
        const qint64 kibibytes = line.simplified().split(' ').value(1).toLongLong(&ok);
        return ok ? kibibytes * 1024 : -1;
    }
    return -1;
}
