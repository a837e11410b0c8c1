#include "zoHPCElementScanner.h"

zoHPCElementScanner::zoHPCElementScanner(const QString& text) : m_text(text), m_reader(text)
{
    m_reader.setNamespaceProcessing(false);
}

bool zoHPCElementScanner::next()
{
    while (!m_reader.atEnd()) {
        int offset = int(m_reader.characterOffset()); // where the next token begins
        const QXmlStreamReader::TokenType token = m_reader.readNext();
        if (token == QXmlStreamReader::EndElement) {
            if (m_opened.isNull())
                m_around.removeLast();
            m_opened = QString();
        }
        if (token != QXmlStreamReader::StartElement)
            continue;
        if (!m_opened.isNull())
            m_around << m_opened;
        m_opened = tag();
        // After a text the reader has the next "<" already.
        if (offset > 0 && offset <= m_text.size() && m_text.at(offset - 1) == QLatin1Char('<'))
            --offset;
        countTo(offset);
        return true;
    }
    return false;
}

QString zoHPCElementScanner::attribute(const QString& name) const
{
    return m_reader.attributes().value(name).toString();
}

void zoHPCElementScanner::countTo(int offset)
{
    for (; m_counted < offset && m_counted < m_text.size(); ++m_counted) {
        ++m_place.column;
        if (m_text.at(m_counted) == QLatin1Char('\n')) {
            ++m_place.line;
            m_place.column = 1;
        }
    }
}
