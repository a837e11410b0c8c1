#pragma once

#include <QString>

class QDate;
class QDateTime;
class QTime;

// Day and time as all windows of the host show them: in the short form of the language that it speaks.
class zoHostTime final
{
public:
    zoHostTime() = delete;

    static QString text(const QDateTime& when); // by the clock of this machine
    static QString day(const QDate& date);
    static QString clock(const QTime& time); // with seconds
};
