#pragma once

#include <QJsonValue>
#include <QString>
#include <QStringList>

#include <utility>
#include <vector>

class QDomElement;

// What differs between two configurations, in the order in which it is told, and the words that all
// comparisons share.
class zoDifferences final
{
public:
    // One item or attribute, for scripts. Null where there was nothing, or is nothing any more.
    struct Change
    {
        QString path; // as zoItemPaths has it; that of the former configuration for what is gone
        QJsonValue before;
        QJsonValue after;
    };
    using Changes = std::vector<Change>;

    struct Difference
    {
        QString kind; // a stable word such as "node-added"
        QString text;
        Changes changes; // what this one line tells
    };

    std::vector<Difference> takeList() { return std::move(m_list); }

    void add(const QString& kind, const QString& text, Changes changes);
    // "label: words changed from before to after"
    void addChange(const QString& kind, const QString& label, const QString& words, const QString& before,
                   const QString& after, Changes changes);

    // Of an attribute of the item at the path.
    static Change change(const QString& path, const QString& attribute, const QDomElement& before,
                         const QDomElement& after);
    // The value of an attribute: "on" and "off" for flags, "none" for an empty one.
    static QString shown(const QString& value);
    // A name in quotes; "nothing" for an empty one.
    static QString quoted(const QString& name);
    // Of both elements, sorted, each once.
    static QStringList attributeNames(const QDomElement& before, const QDomElement& after);
    // The keys that are among the others too, in their order.
    static QStringList common(const QStringList& keys, const QStringList& others);

private:
    std::vector<Difference> m_list;
};
