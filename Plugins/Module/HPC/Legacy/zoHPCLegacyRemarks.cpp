#include "zoHPCLegacyRemarks.h"

#include "zoHPCLegacyParameters.h"

#include <QHash>
#include <QStringList>

zoHPCLegacyRemarks::zoHPCLegacyRemarks(const zoHPCLegacyParameters& parameters) : m_parameters(parameters) {}

void zoHPCLegacyRemarks::clear()
{
    m_remarks.clear();
    m_entry = 0;
    m_unreadFields = 0;
    m_unreadParameter.clear();
}

void zoHPCLegacyRemarks::add(Kind kind, const QString& text, const QString& aboutParameter)
{
    m_remarks.append({kind, text, aboutParameter});
}

int zoHPCLegacyRemarks::intParameter(const char* name, const char* defaultValue)
{
    const QString text = m_parameters.value(name, defaultValue);
    bool isNumber = false;
    const int value = text.toInt(&isNumber);
    if (!isNumber)
        addInvalidNumber(name, text);
    return value;
}

double zoHPCLegacyRemarks::doubleParameter(const char* name, const char* defaultValue)
{
    const QString text = m_parameters.value(name, defaultValue);
    bool isNumber = false;
    const double value = text.toDouble(&isNumber);
    if (!isNumber)
        addInvalidNumber(name, text);
    return value;
}

void zoHPCLegacyRemarks::setEntry(int entry)
{
    m_entry = entry;
}

int zoHPCLegacyRemarks::intField(const QString& text)
{
    bool isNumber = false;
    const int value = text.toInt(&isNumber);
    if (!isNumber)
        countUnreadField();
    return value;
}

double zoHPCLegacyRemarks::doubleField(const QString& text)
{
    bool isNumber = false;
    const double value = text.toDouble(&isNumber);
    if (!isNumber)
        countUnreadField();
    return value;
}

void zoHPCLegacyRemarks::addUnreadFields()
{
    if (m_unreadFields > 0) {
        add(Kind::UnreadNumber,
            tr("%1 fields of the window layout are missing or no numbers; they were read as 0.")
                .arg(m_unreadFields),
            m_unreadParameter);
    }
}

QList<zoHPCLegacyRemark> zoHPCLegacyRemarks::withPlaces() const
{
    QList<zoHPCLegacyRemark> remarks = m_remarks;
    QStringList parameters;
    for (const zoHPCLegacyRemark& remark : qAsConst(remarks)) {
        if (!remark.parameter.isEmpty())
            parameters << remark.parameter;
    }
    const QHash<QString, zoHPCElementScanner::Place> places = m_parameters.placesOf(parameters);
    for (zoHPCLegacyRemark& remark : remarks) {
        const zoHPCElementScanner::Place place = places.value(remark.parameter);
        remark.line = place.line;
        remark.column = place.column;
    }
    return remarks;
}

void zoHPCLegacyRemarks::addInvalidNumber(const char* name, const QString& text)
{
    add(Kind::UnreadNumber,
        tr("%1 is \"%2\", which is no number; it was read as 0.").arg(QLatin1String(name), text),
        QLatin1String(name));
}

void zoHPCLegacyRemarks::countUnreadField()
{
    if (++m_unreadFields == 1)
        m_unreadParameter = m_parameters.entryName(m_entry);
}
