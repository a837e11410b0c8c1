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

    enum class Severity {
        Error,   // nobody means that: something stays dark, shows the wrong thing or is not read
        Warning, // most likely a mistake, but there are walls for which it is right
        Note     // right, and good to know
    };

    zoHPCProblem(Kind problemKind, QTreeWidgetItem* concerned, const QString& text);

    // How many there are; their numbers are the kinds.
    static int kindCount();
    // Stable word for the kind, the same in all languages, such as "viewport-without-projection".
    static QString kindName(Kind kind);
    static Severity severityOf(Kind kind);
    // "error", "warning" or "note", the same in all languages.
    static QString severityName(Severity severity);
    // The attribute that problems of the kind are about; empty for several or none.
    static QString attributeOf(Kind kind);
    // What the manual calls it, in English.
    static QString titleOf(Kind kind);

    Severity severity() const { return severityOf(kind); }
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
    bool addsRows = false; // the fix does, to the display setup; a session that runs does not take them
    // Changes the items' values. To be called once at most, while the item lives; announces nothing beyond
    // what the trees announce themselves.
    std::function<void()> fix;
};
