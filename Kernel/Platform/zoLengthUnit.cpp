#include "zoLengthUnit.h"

namespace
{
zoLengthUnit& current()
{
    static zoLengthUnit s_unit = zoLengthUnit::of(QString());
    return s_unit;
}
} // namespace

const std::vector<zoLengthUnit>& zoLengthUnit::all()
{
    static const std::vector<zoLengthUnit> s_units = {
        {"mm", 1.0}, {"cm", 10.0}, {"m", 1000.0}, {"in", 25.4}, {"ft", 304.8}};
    return s_units;
}

zoLengthUnit zoLengthUnit::of(const QString& symbol)
{
    for (const zoLengthUnit& unit : all()) {
        if (unit.symbol() == symbol)
            return unit;
    }
    return all().front();
}

zoLengthUnit zoLengthUnit::shown()
{
    return current();
}

void zoLengthUnit::setShown(const zoLengthUnit& unit)
{
    current() = unit;
}

QString zoLengthUnit::text(double millimetres, int digits) const
{
    return QString::number(millimetres / m_millimetres, 'g', digits) + QLatin1Char(' ') + symbol();
}
