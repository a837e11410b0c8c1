#include "zoHPCNumberedName.h"

#include "zoText.h"

#include <QRegularExpression>

#include <algorithm>

namespace
{
bool isDigit(QChar c)
{
    return c.unicode() >= '0' && c.unicode() <= '9';
}
} // namespace

zoHPCNumberedName::zoHPCNumberedName(const QString& name) : m_name(name)
{
    const bool isPlain = std::all_of(m_name.cbegin(), m_name.cend(),
                                     [](QChar c) { return c.unicode() >= 0x20 && c.unicode() < 0x7f; });
    if (isPlain) {
        int start = m_name.size();
        while (start > 0 && isDigit(m_name.at(start - 1)))
            --start;
        if (start > 0 && start < m_name.size()) {
            m_prefix = QStringView(m_name).left(start);
            m_digits = QStringView(m_name).mid(start);
        }
        return;
    }
    // Line ends decide here: a dot does not match them, and "$" matches before the last one.
    static const QRegularExpression pattern(zoText("^(.*[^0-9])([0-9]+)$"));
    const QRegularExpressionMatch match = pattern.match(m_name);
    if (match.hasMatch()) {
        m_prefix = QStringView(m_name).mid(match.capturedStart(1), match.capturedLength(1));
        m_digits = QStringView(m_name).mid(match.capturedStart(2), match.capturedLength(2));
    }
}

int zoHPCNumberedName::number() const
{
    return m_digits.toString().toInt();
}

QString zoHPCNumberedName::name(int offset) const
{
    QString text = QString::number(qint64(number()) + offset);
    // At most twelve zeros.
    if (m_digits.startsWith(QLatin1Char('0')) && text.size() < m_digits.size())
        text = (zoText("000000000000") + text).right(int(m_digits.size()));
    return m_prefix.toString() + text;
}

bool zoHPCNumberedName::isCountable() const
{
    return !m_digits.isEmpty() && name(0) == m_name;
}
