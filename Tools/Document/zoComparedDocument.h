#pragma once

#include <QDomElement>
#include <QHash>
#include <QString>
#include <QStringList>

// One of two configuration documents that are compared: its root, and the paths of its items.
class zoComparedDocument final
{
public:
    explicit zoComparedDocument(const QDomElement& root);

    const QDomElement& root() const { return m_root; }
    // Of all items of the tag, in the order of the document; tiles and planes that projections generate have none.
    QStringList paths(const QString& tag) const { return m_paths.value(tag); }

private:
    QDomElement m_root;
    QHash<QString, QStringList> m_paths;
};
