#pragma once

#include <QString>

#include <memory>
#include <vector>

class zoHPCTreeItem;

// Option values that the node editor replaced because it cannot show them, since the configuration was read.
class zoHPCReplacedOptions final
{
public:
    // `value` is the one before.
    void note(zoHPCTreeItem* item, const QString& option, const QString& value);
    void clear() { m_options.clear(); }
    bool isEmpty() const { return m_options.empty(); }

    // Gives the items the values of the other side: those that were read, or with a second call those of now. Items
    // that are gone are left out.
    void exchange();

private:
    struct Option
    {
        std::weak_ptr<zoHPCTreeItem> item;
        QString name;
        QString value;
    };

    std::vector<Option> m_options;
};
