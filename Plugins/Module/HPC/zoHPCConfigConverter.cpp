#include "zoHPCConfigConverter.h"

zoHPCConfigConverter::zoHPCConfigConverter() = default;

zoHPCConfigConverter::~zoHPCConfigConverter() = default;

QString zoHPCConfigConverter::convert(const QString& legacyText)
{
    m_document = QDomDocument();
    m_clusterElement = m_document.createElement(QStringLiteral("cluster"));
    m_masterElement = m_document.createElement(QStringLiteral("master"));
    m_networkElement = m_document.createElement(QStringLiteral("network"));
    m_displayElement = m_document.createElement(QStringLiteral("display"));
    m_masterElement.appendChild(m_networkElement);
    m_clusterElement.appendChild(m_masterElement);
    m_clusterElement.appendChild(m_displayElement);
    m_document.appendChild(m_clusterElement);
    Q_UNUSED(legacyText)
    return m_document.toString(1);
}
