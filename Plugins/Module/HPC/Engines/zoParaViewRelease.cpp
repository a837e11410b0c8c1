#include "zoParaViewRelease.h"

#include "zoText.h"

#include <QRegularExpression>

bool zoParaViewRelease::read(const QString& text)
{
    static const QRegularExpression pattern(zoText("\\A([0-9]{1,3})\\.([0-9]{1,3})(\\.[0-9]+)?\\z"));
    const QRegularExpressionMatch match = pattern.match(text);
    if (!match.hasMatch())
        return false;
    m_major = match.captured(1).toInt();
    m_minor = match.captured(2).toInt();
    return true;
}
