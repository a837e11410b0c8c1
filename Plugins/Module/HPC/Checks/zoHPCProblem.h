#pragma once

#include "zoHPCProblemKinds.h"

#include <QString>

#include <functional>
#include <vector>

class QTreeWidgetItem;

// Something in a configuration that keeps pixels dark or shows them wrong, the item it concerns and, where one
// exists, a fix. Holds items: valid until the next change of their trees.
class zoHPCProblem final
{
public:
    using List = std::vector<zoHPCProblem>;
    using Kind = zoHPCProblemKind;

    zoHPCProblem(Kind problemKind, QTreeWidgetItem* concerned, const QString& text);

    // Stable word for the kind, the same in all languages, such as "viewport-without-projection".
    static QString kindName(Kind kind);

    bool hasFix() const { return static_cast<bool>(fix); }
    void setFix(const QString& text, std::function<void()> change);
    // Whether the item is a row of the host tree; otherwise it is one of the display setup.
    bool concernsHost() const; // for tests
    // Whether the fix changes values of the host tree; otherwise it changes those of the display setup.
    bool fixesHosts() const;

    Kind kind;
    QString message;
    QTreeWidgetItem* item;            // not owned
    QTreeWidgetItem* other = nullptr; // the second one of a pair; not owned
    QString fixText;                  // what the fix does, for a button
    // Changes the items' values. To be called once at most, while the item lives; announces nothing beyond
    // what the trees announce themselves.
    std::function<void()> fix;
};
