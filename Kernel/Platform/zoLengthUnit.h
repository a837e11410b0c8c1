#pragma once

#include <zoKernelExport.h>

#include <QString>

#include <vector>

// A unit in which lengths are shown. Documents hold millimetres whatever it is.
class ZO_KERNEL_EXPORT zoLengthUnit final
{
public:
    // All that a person may choose; the first is the one without a choice.
    static const std::vector<zoLengthUnit>& all();
    // By its symbol; millimetres for any other text.
    static zoLengthUnit of(const QString& symbol);

    // What pictures and texts for a person use from now on, for the whole process; millimetres at first.
    static zoLengthUnit shown();
    static void setShown(const zoLengthUnit& unit);

    QString symbol() const { return QLatin1String(m_symbol); } // "mm", the same in all languages
    double millimetres() const { return m_millimetres; }       // of one unit
    // A length in mm as number and symbol, with at most `digits` significant digits, such as "5.52 m".
    QString text(double millimetres, int digits = 6) const;

    bool operator==(const zoLengthUnit& other) const { return symbol() == other.symbol(); }
    bool operator!=(const zoLengthUnit& other) const { return !(*this == other); }

private:
    zoLengthUnit(const char* symbol, double millimetres) : m_symbol(symbol), m_millimetres(millimetres) {}

    const char* m_symbol;
    double m_millimetres;
};
