#include "zoHostTime.h"

#include <QDateTime>
#include <QLocale>

QString zoHostTime::text(const QDateTime& when)
{
    return QLocale().toString(when.toLocalTime(), QLocale::ShortFormat);
}

QString zoHostTime::day(const QDate& date)
{
    return QLocale().toString(date, QLocale::ShortFormat);
}

// The long form has the name of the time zone in it.
QString zoHostTime::clock(const QTime& time)
{
    QString format = QLocale().timeFormat(QLocale::ShortFormat);
    if (!format.contains(QLatin1Char('s')))
        format.replace(QLatin1String("mm"), QLatin1String("mm:ss"));
    return QLocale().toString(time, format);
}
