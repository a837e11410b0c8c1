#pragma once

#include <QCoreApplication>
#include <QString>

// Numbers of things in words: "1 node", "6 nodes".
class zoAssistantCounts final
{
    Q_DECLARE_TR_FUNCTIONS(zoAssistantCounts)

public:
    zoAssistantCounts() = delete;

    static QString nodes(int count);
    static QString gateways(int count);
    static QString windows(int count);
    static QString problems(int count);
    static QString pagesPrinted(int count);
};
