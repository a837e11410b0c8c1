#include "zoConfigurationDifference.h"

#include "zoConfigurationCounts.h"

#include <zoFileReader.h>
#include <zoFileText.h>

#include <QStringList>

namespace
{
struct Kind
{
    int zoConfigurationCounts::*count;
    const char* one;
    const char* several;
};

constexpr Kind s_kinds[] = {
    {&zoConfigurationCounts::networks, QT_TRANSLATE_NOOP("zoConfigurationDifference", "1 network"),
     QT_TRANSLATE_NOOP("zoConfigurationDifference", "%1 networks")},
    {&zoConfigurationCounts::nodes, QT_TRANSLATE_NOOP("zoConfigurationDifference", "1 compute node"),
     QT_TRANSLATE_NOOP("zoConfigurationDifference", "%1 compute nodes")},
    {&zoConfigurationCounts::projections, QT_TRANSLATE_NOOP("zoConfigurationDifference", "1 projection"),
     QT_TRANSLATE_NOOP("zoConfigurationDifference", "%1 projections")},
    {&zoConfigurationCounts::displays, QT_TRANSLATE_NOOP("zoConfigurationDifference", "1 display"),
     QT_TRANSLATE_NOOP("zoConfigurationDifference", "%1 displays")},
    {&zoConfigurationCounts::windows, QT_TRANSLATE_NOOP("zoConfigurationDifference", "1 window"),
     QT_TRANSLATE_NOOP("zoConfigurationDifference", "%1 windows")},
    {&zoConfigurationCounts::viewports, QT_TRANSLATE_NOOP("zoConfigurationDifference", "1 viewport"),
     QT_TRANSLATE_NOOP("zoConfigurationDifference", "%1 viewports")},
};

QString counted(const Kind& kind, int count)
{
    return count == 1 ? zoConfigurationDifference::tr(kind.one)
                      : zoConfigurationDifference::tr(kind.several).arg(count);
}
} // namespace

zoConfigurationDifference::zoConfigurationDifference(const QString& text, const QString& fileName)
{
    const zoConfigurationCounts now(text);
    QByteArray bytes;
    const bool isThere =
        !fileName.isEmpty() && zoFileReader::read(fileName, bytes) == zoFileReader::Result::Read;
    const QString saved = QString(zoFileText(bytes).text()).remove(QLatin1Char('\r'));
    m_isNone = isThere && saved == text;
    const zoConfigurationCounts before(saved);

    QStringList held;
    QStringList parts;
    for (const Kind& kind : s_kinds) {
        const int difference = now.*kind.count - before.*kind.count;
        if (now.*kind.count > 0)
            held << counted(kind, now.*kind.count);
        if (difference > 0)
            parts << tr("%1 more").arg(counted(kind, difference));
        else if (difference < 0)
            parts << tr("%1 less").arg(counted(kind, -difference));
    }
    if (fileName.isEmpty())
        m_sentence = held.isEmpty() ? tr("It is empty.") : tr("It has %1.").arg(held.join(tr(", ")));
    else if (!isThere)
        m_sentence = tr("Its file is not there any more.");
    else if (m_isNone)
        m_sentence = tr("It is the same as its file.");
    else if (parts.isEmpty())
        m_sentence = tr("It differs from its file in values only.");
    else
        m_sentence = tr("Against its file: %1.").arg(parts.join(tr(", ")));
}
